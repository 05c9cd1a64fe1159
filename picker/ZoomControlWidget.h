#pragma once

#include <QWidget>

class QLabel;
class QToolButton;

namespace VelaColorPickerLib {

/// The buttons that zoom out and in, with the level between them.
class ZoomControlWidget final : public QWidget
{
    Q_OBJECT
public:
    explicit ZoomControlWidget(QWidget* parent = nullptr);

    /// Shows `level` of `levels`, and disables the button that would leave them.
    void setLevel(int level, int levels);

signals:
    void zoomOut();
    void zoomIn();

private:
    QToolButton* m_out;
    QLabel* m_label;
    QToolButton* m_in;
};

} // namespace VelaColorPickerLib
