#include "editor/TypeBox.h"

#include <QItemSelectionModel>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QStylePainter>
#include <QTableWidget>
#include <QWheelEvent>

TypeBox::TypeBox(QTableWidget* table)
    : QComboBox(table->viewport())
    , m_table(table)
{
    // No size policy of its own: setting one builds the list that drops down, which must wait for
    // the first click, since there are as many boxes as effects.
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::ClickFocus); // tab leads past the table, not through its rows
}

void TypeBox::wheelEvent(QWheelEvent* event)
{
    event->ignore();
}

void TypeBox::paintEvent(QPaintEvent* /*event*/)
{
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    if (currentIndex() < 0) {
        option.currentText = placeholderText();
    }
    if (isEnabled() && (underMouse() || hasFocus())) {
        painter.drawComplexControl(QStyle::CC_ComboBox, option);
        painter.drawControl(QStyle::CE_ComboBoxLabel, option);
        return;
    }
    const QModelIndex index = m_table->indexAt(geometry().center());
    const bool isSelected = m_table->selectionModel()->isSelected(index);
    const QPalette::ColorRole role = isSelected ? QPalette::HighlightedText : QPalette::Text;
    const int margin = style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1;
    const int side = fontMetrics().height() / 2;
    QRect text = rect().adjusted(margin, 0, -side - 2 * margin, 0);
    style()->drawItemText(
        &painter, text, Qt::AlignLeft | Qt::AlignVCenter, palette(), isEnabled(),
        fontMetrics().elidedText(option.currentText, Qt::ElideRight, text.width()), role);
    QStyleOption arrow;
    arrow.initFrom(this);
    arrow.rect = QRect(rect().right() - side - margin, (height() - side) / 2, side, side);
    arrow.palette.setColor(QPalette::ButtonText, palette().color(role));
    arrow.palette.setColor(QPalette::WindowText, palette().color(role));
    painter.setOpacity(0.5); // the names are to be read, not the arrows
    painter.drawPrimitive(QStyle::PE_IndicatorArrowDown, arrow);
}
