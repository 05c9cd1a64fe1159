#pragma once

#include <QLineEdit>

namespace VelaWidgetsLib {

/// A line that filters what stands below it. `textChanged` tells each change; Escape clears the
/// text where there is one and is left to the window where there is none.
class FilterBox : public QLineEdit
{
    Q_OBJECT
public:
    explicit FilterBox(QWidget* parent = nullptr);

signals:
    /// The box has come on show: a filter that was kept can be put back.
    void showed();

protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace VelaWidgetsLib
