#include "picker/HsbTintsAndShadesWidget.h"

#include <QPainter>

namespace VelaColorPickerLib {

namespace {

constexpr int kWheelSteps = 5; // of the arrow keys, a notch

} // namespace

HsbTintsAndShadesWidget::HsbTintsAndShadesWidget(QWidget* parent)
    : GradientColorSelectorWidget(parent)
{
    setAccessibleName(tr("Tints and shades"));
    setAccessibleDescription(tr("Saturation across, brightness down from full to black"));
    setToolTip(tr("Drag the marker to a tint or a shade of the hue: saturation across, brightness "
                  "down. The wheel changes the brightness, with Shift the saturation."));
}

QPointF HsbTintsAndShadesWidget::pointOf(const Hsb& hsb) const
{
    return {hsb.saturation, 1.0 - hsb.brightness};
}

Hsb HsbTintsAndShadesWidget::hsbAt(const QPointF& point, const Hsb& hsb) const
{
    return {hsb.hue, point.x(), 1.0 - point.y()};
}

QPointF HsbTintsAndShadesWidget::keyStep() const
{
    return {1.0 / 255.0, 1.0 / 255.0};
}

QImage HsbTintsAndShadesWidget::fieldImage(const QSize& pixels, double ratio, const Hsb& hsb) const
{
    return tintsAndShadesImage(pixels, ratio, hsb.hue);
}

bool HsbTintsAndShadesWidget::isSameField(const Hsb& a, const Hsb& b) const
{
    return a.hue == b.hue;
}

void HsbTintsAndShadesWidget::turnWheel(int notches, Qt::KeyboardModifiers modifiers)
{
    if (modifiers.testFlag(Qt::ShiftModifier)) {
        moveBy(notches * kWheelSteps, 0);
    } else {
        moveBy(0, -notches * kWheelSteps);
    }
}

void HsbTintsAndShadesWidget::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    if (!isEnabled()) {
        painter.fillRect(rect(), palette().window());
        painter.setOpacity(0.4);
    }
    painter.setClipRect(rect());
    painter.setWorldTransform(unitToWidget());
    paintField(&painter);
    painter.resetTransform();
    paintMarker(&painter);
    if (hasFocus()) {
        paintFocusFrame(&painter);
    }
}

} // namespace VelaColorPickerLib
