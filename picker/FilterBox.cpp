#include "picker/FilterBox.h"

#include <QKeyEvent>
#include <QShowEvent>

namespace VelaWidgetsLib {

FilterBox::FilterBox(QWidget* parent)
    : QLineEdit(parent)
{
    setClearButtonEnabled(true);
    setPlaceholderText(tr("Filter"));
    setAccessibleName(tr("Filter"));
}

void FilterBox::showEvent(QShowEvent* event)
{
    QLineEdit::showEvent(event);
    if (!event->spontaneous()) {
        emit showed();
    }
}

void FilterBox::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && !text().isEmpty()) {
        clear();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

} // namespace VelaWidgetsLib
