#pragma once

#include "sim/SimDialog.h"
#include "sim/SimLight.h"

#include <QColor>
#include <QHash>
#include <QList>
#include <QtGlobal>

#include <optional>
#include <vector>

class MapModel;
class QGraphicsPixmapItem;
class QGraphicsScene;
class QPixmap;
class QVBoxLayout;
class SimView;

/// The simulation window: the plan picture of the map and a small shape for each of its lights,
/// which shows the light's colour. It draws the lights that the model has when it is made: another
/// map takes another window.
///
/// A window that is re-parented while it is visible is hidden in passing. Whoever does that blocks
/// this object's signals meanwhile: a hide event then neither reports nor accepts.
class LightSim : public SimDialog
{
    Q_OBJECT
public:
    /// `name` becomes the object name where it is neither null nor empty. The lights of `model` may
    /// go before this window does, but not before its last redraw: pause it first.
    LightSim(MapModel* model, QWidget* parent, const char* name);
    ~LightSim() override;

    /// While paused, updateLights() does nothing.
    void setPaused(bool on) { m_paused = on; }
    /// The ground around and below the plan.
    void setBackground(const QColor& color);

signals:
    /// False: the window was hidden.
    void simStateChanged(bool b);

public slots:
    /// To be called in each frame, between the effects and the reset of the lights. Takes the
    /// lights' colours in every (refresh count + 1)-th call.
    void updateLights();
    void zoomIn();
    void zoomOut();
    /// Scales the scene to the view. Only the first call on a visible view does anything.
    void zoomFit();
    /// Calls of updateLights() to pass over between two redraws; below 1 is taken as 1.
    void setRefreshCount(int c);

protected slots:
    void hideEvent(QHideEvent* e) override;
    void showEvent(QShowEvent* e) override;

private:
    struct LightShape
    {
        int shape = 0; // 0 ellipse, else rectangle
        double width = 10.0;
        double height = 10.0;
    };

    void measureExtents(const QList<Light*>& lights);
    QPixmap loadPlan() const;
    void buildScene(const QList<Light*>& lights);
    void zoomTo(double factor);

    qint32 m_refreshCount = 0;
    qint32 m_refreshCounter = 0;
    QGraphicsScene* m_scene = nullptr;
    QVBoxLayout* m_layout = nullptr;
    SimView* m_view = nullptr;
    bool m_paused = false;
    MapModel* m_model = nullptr;                      // not owned
    std::vector<std::optional<SimLight>> m_simLights; // all set; side by side for the frame's walk
    QHash<int, LightShape> m_shapes;                  // by fixture code; nothing fills it yet
    double m_zoomFactor = 20.0;                       // 20.0 shows the scene at scale 1
    bool m_fitted = false;
    double m_minX = 10000000.0;
    double m_minY = 10000000.0;
    double m_maxX = 0.0;
    double m_maxY = 0.0;
};
