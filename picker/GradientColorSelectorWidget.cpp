#include "picker/GradientColorSelectorWidget.h"

#include "picker/ColorTrack.h"

#include <QLineF>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace VelaColorPickerLib {

namespace {

double limited(double v)
{
    return v > 0.0 ? std::min(v, 1.0) : 0.0; // NaN too
}

} // namespace

GradientColorSelectorWidget::GradientColorSelectorWidget(QWidget* parent)
    : ColorSelectorWidget(parent)
{
    m_hsb.brightness = 1.0;
    setMouseTracking(true);
}

VelaColor GradientColorSelectorWidget::color() const
{
    return VelaColor::fromHsvF(m_hsb.hue, m_hsb.saturation, m_hsb.brightness, m_alpha);
}

void GradientColorSelectorWidget::setColor(const VelaColor& color)
{
    if (!color.isValid()) {
        return;
    }
    Hsb hsb = m_hsb;
    hsb.take(color);
    m_alpha = color.alphaF();
    display(hsb);
}

void GradientColorSelectorWidget::select(double hue, double saturation, double brightness)
{
    display({limited(hue), limited(saturation), limited(brightness)});
    emit colorChanged(color());
}

void GradientColorSelectorWidget::display(const Hsb& hsb)
{
    if (hsb == m_hsb) {
        return;
    }
    const QPoint oldMarker = markerPixel();
    const bool isSame = isSameField(m_hsb, hsb);
    m_hsb = hsb;
    if (!isSame) {
        m_field = QImage();
        update();
    } else if (markerPixel() != oldMarker) {
        update(markerRect(oldMarker));
        update(markerRect(markerPixel()));
    }
}

QTransform GradientColorSelectorWidget::unitToWidget() const
{
    return QTransform::fromScale(std::max(width() - 1, 1), std::max(height() - 1, 1));
}

QPointF GradientColorSelectorWidget::pointAt(const QPoint& pixel) const
{
    return unitToWidget().inverted().map(QPointF(pixel));
}

QPoint GradientColorSelectorWidget::pixelOf(const QPointF& point) const
{
    return unitToWidget().map(point).toPoint();
}

QPoint GradientColorSelectorWidget::markerPixel() const
{
    return pixelOf(pointOf(m_hsb));
}

bool GradientColorSelectorWidget::isOnMarker(const QPoint& pixel) const
{
    return QLineF(markerPixel(), pixel).length() <= markerRadius();
}

void GradientColorSelectorWidget::paintField(QPainter* painter)
{
    const QSize pixels = (QSizeF(size()) * devicePixelRatioF()).toSize();
    if (m_field.size() != pixels) {
        m_field = fieldImage(pixels, devicePixelRatioF(), m_hsb);
    }
    painter->drawImage(unitToWidget().inverted().mapRect(QRectF(rect())), m_field);
}

void GradientColorSelectorWidget::paintMarker(QPainter* painter) const
{
    paintMarkerRings(painter, markerPixel() + QPointF(0.5, 0.5), markerRadius(), false);
}

void GradientColorSelectorWidget::selectPoint(const QPointF& point)
{
    const Hsb hsb = hsbAt({limited(point.x()), limited(point.y())}, m_hsb);
    select(hsb.hue, hsb.saturation, hsb.brightness);
}

void GradientColorSelectorWidget::moveTo(const QPoint& pixel)
{
    selectPoint(pointAt(pixel));
}

void GradientColorSelectorWidget::moveBy(int columns, int rows)
{
    selectPoint(pointOf(m_hsb) + QPointF(columns * keyStep().x(), rows * keyStep().y()));
}

void GradientColorSelectorWidget::moveToEnd(int columns, int rows)
{
    selectPoint(pointOf(m_hsb) + QPointF(columns, rows));
}

void GradientColorSelectorWidget::mouseMoveEvent(QMouseEvent* event)
{
    if (event->buttons() == Qt::NoButton) {
        const Qt::CursorShape shape =
            isOnMarker(event->pos()) ? Qt::SizeAllCursor : Qt::CrossCursor;
        if (cursor().shape() != shape) {
            setCursor(shape);
        }
    }
    ColorSelectorWidget::mouseMoveEvent(event);
}

} // namespace VelaColorPickerLib
