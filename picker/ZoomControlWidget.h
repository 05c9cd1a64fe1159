#pragma once

#include <QWidget>

class QLabel;
class QToolButton;

namespace VelaColorPickerLib {

/// The zoom buttons, with the level between them.
class ZoomControlWidget final : public QWidget
{
    Q_OBJECT
public:
    /// For the levels 1..`levels`.
    explicit ZoomControlWidget(int levels, QWidget* parent = nullptr);

    int level() const { return m_level; }
    /// Limited to the levels; emits nothing. A button that leads past them is disabled.
    void setLevel(int level);

signals:
    void zoomOutClicked();
    void zoomInClicked();

private:
    QToolButton* makeButton(const char* objectName, const char* icon);

    int m_levels;
    int m_level = 0; // none yet
    QToolButton* m_zoomOut;
    QLabel* m_label;
    QToolButton* m_zoomIn;
};

} // namespace VelaColorPickerLib
