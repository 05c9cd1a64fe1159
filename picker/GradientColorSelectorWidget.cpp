#include "picker/GradientColorSelectorWidget.h"

#include <QKeyEvent>
#include <QRegion>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace VelaColorPickerLib {

namespace {

constexpr double kSmallStep = 1.0 / 360.0;
constexpr double kLargeStep = 10.0 / 360.0;
constexpr double kWheelStep = 3.0 / 360.0; // for each notch
constexpr double kNotch = 120.0;           // eighths of a degree

double limited(double value)
{
    return value > 0.0 ? std::min(value, 1.0) : 0.0; // NaN too
}

} // namespace

GradientColorSelectorWidget::GradientColorSelectorWidget(QWidget* parent)
    : ColorSelectorWidget(parent)
{}

void GradientColorSelectorWidget::setHsb(double hue, double saturation, double brightness,
                                         double alpha)
{
    const QRegion before(markerRect());
    m_hue = limited(hue);
    m_saturation = limited(saturation);
    m_brightness = limited(brightness);
    m_alpha = limited(alpha);
    valuesChanged();
    update(before + markerRect());
}

void GradientColorSelectorWidget::valuesChanged() {}

void GradientColorSelectorWidget::select(double hue, double saturation, double brightness)
{
    setHsb(hue, saturation, brightness, m_alpha);
    emit colorChanged(VelaColor::fromHsvF(m_hue, m_saturation, m_brightness, m_alpha));
}

QPoint GradientColorSelectorWidget::markerPixel() const
{
    const QPointF place = markerPlace();
    return {static_cast<int>(std::lround(place.x() * std::max(width() - 1, 0))),
            static_cast<int>(std::lround(place.y() * std::max(height() - 1, 0)))};
}

QPointF GradientColorSelectorWidget::placeOf(const QPoint& pixel) const
{
    return {static_cast<double>(pixel.x()) / std::max(width() - 1, 1),
            static_cast<double>(pixel.y()) / std::max(height() - 1, 1)};
}

void GradientColorSelectorWidget::moveToPixel(const QPoint& pixel)
{
    moveToPlace(placeOf(pixel));
}

void GradientColorSelectorWidget::moveBySteps(int right, int down, bool large)
{
    const double step = large ? kLargeStep : kSmallStep;
    moveToPlace(markerPlace() + QPointF(right * step, down * step));
}

void GradientColorSelectorWidget::keyPressEvent(QKeyEvent* event)
{
    const QPointF place = markerPlace();
    switch (event->key()) {
    case Qt::Key_Home:
        moveToPlace({0.0, place.y()});
        break;
    case Qt::Key_End:
        moveToPlace({1.0, place.y()});
        break;
    case Qt::Key_PageUp:
        moveToPlace({place.x(), 0.0});
        break;
    case Qt::Key_PageDown:
        moveToPlace({place.x(), 1.0});
        break;
    default:
        ColorSelectorWidget::keyPressEvent(event);
    }
}

void GradientColorSelectorWidget::wheelEvent(QWheelEvent* event)
{
    event->accept();
    const QPoint angle = event->angleDelta();
    QPointF turned(-angle.x(), -angle.y());
    if (event->modifiers().testFlag(Qt::ShiftModifier) && angle.x() == 0) {
        turned = QPointF(angle.y(), 0.0);
    }
    if (!turned.isNull()) {
        moveToPlace(markerPlace() + turned / kNotch * kWheelStep);
    }
}

} // namespace VelaColorPickerLib
