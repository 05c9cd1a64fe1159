#pragma once

#include "color/VelaColor.h"
#include "engine/Effect.h"

#include <QHash>

class Group;
class Light;
struct GroupLayout;

/// Paints the whole map in two colours, by a set of selected lights that it keeps itself. Reaches
/// the outputs only; neither gid nor transparency is looked at.
class SelectionEffect : public Effect
{
    Q_OBJECT
    Q_PROPERTY(VelaColor m_fgColor READ fgColor WRITE setFgColor)
    Q_PROPERTY(VelaColor m_bgColor READ bgColor WRITE setBgColor)
public:
    SelectionEffect(MapModel* model, quint64 gid, QDomElement* element);

    QDomElement toXml(QDomDocument doc) const override;
    int typeId() const override { return 17; }
    quint32 cycleTime() const override { return 1000; }
    /// Enters every light of the map as not selected and ends a walk.
    bool compile() override;
    void updateLights() override;
    void fromXml(QDomElement* element) override;

    /// Colour of the selected lights. Setting it compiles, which clears the selection.
    const VelaColor& fgColor() const { return m_fgColor; }
    void setFgColor(const VelaColor& color);
    /// Colour of all others. Setting it compiles, which clears the selection.
    const VelaColor& bgColor() const { return m_bgColor; }
    void setBgColor(const VelaColor& color);

public slots:
    void handleNewLight(qulonglong uid);
    void handleUpdatedLight(qulonglong uid);
    void handleDeletedLight(qulonglong uid);
    void handleClearedMap();
    void setLightSelected(qulonglong uid, bool s);
    void setGroupSelected(qulonglong uid, bool s);
    void setControllerSelected(qulonglong uid, bool s);
    /// Walks the rows of the group, one row a frame, from its second row on.
    void highlightGroup(qulonglong uid);
    void clearSelection();
    void selectAll();

signals:
    void lightSelectionChanged(qulonglong uid, bool s);

private:
    void enterLights();
    void highlightNextRow();
    void selectEvery(bool s);
    QHash<quint64, Light*> allLights() const;

    VelaColor m_fgColor = Qt::red;
    VelaColor m_bgColor = Qt::black;
    QHash<quint64, bool> m_selected;
    // The map's lights as compile() met them, shared with it, until the first use enters them: a
    // show may hold thousands of selections. Only the keys may be used.
    QHash<quint64, Light*> m_unentered;
    bool m_highlightActive = false;
    const GroupLayout* m_highlightLayout = nullptr; // not owned
    qint32 m_highlightRow = 0;
};
