#include "picker/ColorSelectorWidget.h"

#include "picker/ColorTrack.h"

#include <QFontMetrics>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>

namespace VelaColorPickerLib {

ColorSelectorWidget::ColorSelectorWidget(QWidget* parent)
    : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::CrossCursor);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

QSize ColorSelectorWidget::sizeHint() const
{
    const int line = fontMetrics().height();
    return {14 * line, 12 * line};
}

QSize ColorSelectorWidget::minimumSizeHint() const
{
    const int line = fontMetrics().height();
    return {6 * line, 5 * line};
}

void ColorSelectorWidget::paintOverField(QPainter* /*painter*/) {}

void ColorSelectorWidget::refreshField()
{
    m_field = QImage();
    update();
}

double ColorSelectorWidget::markerRadius() const
{
    return fontMetrics().height() / 2.0;
}

QRect ColorSelectorWidget::markerRect() const
{
    const int reach = static_cast<int>(markerRadius()) + 3;
    return QRect(markerPixel(), QSize(1, 1)).adjusted(-reach, -reach, reach, reach);
}

void ColorSelectorWidget::paintEvent(QPaintEvent* event)
{
    const QSize pixels = size() * devicePixelRatioF();
    if (m_field.size() != pixels) {
        m_field = paintField(pixels);
        m_field.setDevicePixelRatio(devicePixelRatioF());
    }
    QPainter painter(this);
    const qreal ratio = devicePixelRatioF();
    for (const QRect& rect : event->region()) {
        painter.drawImage(QRectF(rect), m_field,
                          QRectF(QPointF(rect.topLeft()) * ratio, QSizeF(rect.size()) * ratio));
    }
    painter.save();
    paintOverField(&painter);
    painter.restore();
    painter.translate(0.5, 0.5);
    paintMarkerRings(&painter, markerPixel(), markerRadius(), false);
    painter.resetTransform();
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2.0));
        painter.drawRect(QRectF(rect()).adjusted(1.0, 1.0, -1.0, -1.0));
    }
}

void ColorSelectorWidget::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    moveToPixel(event->pos());
}

void ColorSelectorWidget::mouseMoveEvent(QMouseEvent* event)
{
    if ((event->buttons() & Qt::LeftButton) == 0) {
        event->ignore();
        return;
    }
    moveToPixel(event->pos());
}

void ColorSelectorWidget::keyPressEvent(QKeyEvent* event)
{
    const bool large = event->modifiers().testFlag(Qt::ShiftModifier);
    switch (event->key()) {
    case Qt::Key_Left:
        moveBySteps(-1, 0, large);
        break;
    case Qt::Key_Right:
        moveBySteps(1, 0, large);
        break;
    case Qt::Key_Up:
        moveBySteps(0, -1, large);
        break;
    case Qt::Key_Down:
        moveBySteps(0, 1, large);
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

} // namespace VelaColorPickerLib
