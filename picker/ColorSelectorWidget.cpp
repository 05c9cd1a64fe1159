#include "picker/ColorSelectorWidget.h"

#include <QEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <cmath>

namespace VelaColorPickerLib {

namespace {

constexpr int kNotch = 120; // eighths of a degree

} // namespace

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
    return {fontMetrics().height() * 14, fontMetrics().height() * 11};
}

QSize ColorSelectorWidget::minimumSizeHint() const
{
    return {fontMetrics().height() * 7, fontMetrics().height() * 5};
}

double ColorSelectorWidget::markerRadius() const
{
    return fontMetrics().height() / 2.0;
}

QRect ColorSelectorWidget::markerRect(const QPoint& pixel) const
{
    const int reach = static_cast<int>(std::ceil(markerRadius())) + 2;
    return QRect(pixel, QSize(1, 1)).adjusted(-reach, -reach, reach, reach);
}

void ColorSelectorWidget::paintFocusFrame(QPainter* painter) const
{
    // Two tones: one of them shows on any colour.
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(QPen(palette().color(QPalette::Base), 1.0));
    painter->drawRect(rect().adjusted(2, 2, -3, -3));
    painter->setPen(QPen(palette().color(QPalette::Highlight), 2.0));
    painter->drawRect(rect().adjusted(1, 1, -1, -1));
}

void ColorSelectorWidget::turnWheel(int notches, Qt::KeyboardModifiers /*modifiers*/)
{
    emit zoomStepped(notches);
}

void ColorSelectorWidget::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::EnabledChange || event->type() == QEvent::FontChange) {
        update();
    }
}

void ColorSelectorWidget::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    moveTo(event->pos());
}

void ColorSelectorWidget::mouseMoveEvent(QMouseEvent* event)
{
    if ((event->buttons() & Qt::LeftButton) == 0) {
        event->ignore();
        return;
    }
    moveTo(event->pos());
}

void ColorSelectorWidget::wheelEvent(QWheelEvent* event)
{
    const QPoint angle = event->angleDelta();
    m_wheelAngle += std::abs(angle.x()) > std::abs(angle.y()) ? angle.x() : angle.y();
    const int notches = m_wheelAngle / kNotch;
    m_wheelAngle -= notches * kNotch;
    if (notches != 0) {
        turnWheel(notches, event->modifiers());
    }
    event->accept();
}

void ColorSelectorWidget::keyPressEvent(QKeyEvent* event)
{
    const int step = event->modifiers().testFlag(Qt::ShiftModifier) ? coarseSteps() : 1;
    const bool isDown = event->modifiers().testFlag(Qt::ControlModifier);
    switch (event->key()) {
    case Qt::Key_Left:
        moveBy(-step, 0);
        break;
    case Qt::Key_Right:
        moveBy(step, 0);
        break;
    case Qt::Key_Up:
        moveBy(0, -step);
        break;
    case Qt::Key_Down:
        moveBy(0, step);
        break;
    case Qt::Key_PageUp:
        moveBy(0, -coarseSteps());
        break;
    case Qt::Key_PageDown:
        moveBy(0, coarseSteps());
        break;
    case Qt::Key_Home:
        moveToEnd(isDown ? 0 : -1, isDown ? -1 : 0);
        break;
    case Qt::Key_End:
        moveToEnd(isDown ? 0 : 1, isDown ? 1 : 0);
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

} // namespace VelaColorPickerLib
