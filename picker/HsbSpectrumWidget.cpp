#include "picker/HsbSpectrumWidget.h"

#include <QPainter>
#include <QRegion>

namespace VelaColorPickerLib {

namespace {

constexpr int kFrameReach = 3; // what the frame's two lines take on either side

} // namespace

HsbSpectrumWidget::HsbSpectrumWidget(QWidget* parent)
    : GradientColorSelectorWidget(parent)
{
    setAccessibleName(tr("Spectrum"));
    setAccessibleDescription(tr("Hue across, saturation down"));
    setToolTip(tr("Drag the marker to a hue (across) and a saturation (down). The wheel zooms; "
                  "arrow keys move the marker, with Shift in large steps."));
}

QSize HsbSpectrumWidget::sizeHint() const
{
    return {fontMetrics().height() * 26, fontMetrics().height() * 17};
}

QPointF HsbSpectrumWidget::pointOf(const Hsb& hsb) const
{
    return {hsb.hue, hsb.saturation};
}

Hsb HsbSpectrumWidget::hsbAt(const QPointF& point, const Hsb& hsb) const
{
    return {point.x(), point.y(), hsb.brightness};
}

QPointF HsbSpectrumWidget::keyStep() const
{
    return {1.0 / 360.0, 1.0 / 255.0};
}

QImage HsbSpectrumWidget::fieldImage(const QSize& pixels, double ratio, const Hsb& hsb) const
{
    return spectrumImage(pixels, ratio, hsb.brightness);
}

bool HsbSpectrumWidget::isSameField(const Hsb& a, const Hsb& b) const
{
    return a.brightness == b.brightness;
}

QRegion HsbSpectrumWidget::zoomFrame() const
{
    const QRect frame = unitToWidget().mapRect(m_zoomArea).toAlignedRect();
    const QRect outer = frame.adjusted(-kFrameReach, -kFrameReach, kFrameReach, kFrameReach);
    const QRect inner = frame.adjusted(kFrameReach, kFrameReach, -kFrameReach, -kFrameReach);
    return QRegion(outer).subtracted(inner);
}

void HsbSpectrumWidget::setZoomArea(QRectF rect)
{
    if (rect == m_zoomArea) {
        return;
    }
    const QRegion before = zoomFrame();
    m_zoomArea = rect;
    update(before + zoomFrame());
}

void HsbSpectrumWidget::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    if (!isEnabled()) {
        painter.fillRect(rect(), palette().window());
        painter.setOpacity(0.4);
    }
    painter.setClipRect(rect());
    painter.setWorldTransform(unitToWidget());
    paintField(&painter);
    if (!m_zoomArea.isEmpty()) {
        painter.setBrush(Qt::NoBrush);
        for (const QPen& line : {QPen(Qt::black, 3.0), QPen(Qt::white, 1.0)}) {
            QPen pen(line);
            pen.setCosmetic(true);
            pen.setJoinStyle(Qt::MiterJoin);
            painter.setPen(pen);
            painter.drawRect(m_zoomArea);
        }
    }
    painter.resetTransform();
    paintMarker(&painter);
    if (hasFocus()) {
        paintFocusFrame(&painter);
    }
}

} // namespace VelaColorPickerLib
