#include "picker/HsbSpectrumWidget.h"

#include "picker/HsbField.h"

#include <QPainter>
#include <QTransform>

namespace VelaColorPickerLib {

HsbSpectrumWidget::HsbSpectrumWidget(QWidget* parent)
    : GradientColorSelectorWidget(parent)
{
    setAccessibleName(tr("Spectrum"));
    setAccessibleDescription(tr("Hue from left to right, saturation from top to bottom, at the "
                                "brightness of the color"));
    setToolTip(tr("Drag the marker to a hue and a saturation. The arrow keys move it, with Shift "
                  "by more; the wheel goes up and down, with Shift along the hues. The frame is "
                  "what the zoomed view shows."));
}

void HsbSpectrumWidget::setZoomArea(const QRectF& rect)
{
    if (rect == m_zoomArea) {
        return;
    }
    const QRect before = zoomFrame();
    m_zoomArea = rect;
    update(before);
    update(zoomFrame());
}

/// In pixels, with the width of its pen.
QRect HsbSpectrumWidget::zoomFrame() const
{
    const QTransform toPixels = QTransform::fromScale(width(), height());
    return toPixels.mapRect(m_zoomArea).toAlignedRect().adjusted(-2, -2, 2, 2);
}

QImage HsbSpectrumWidget::paintField(const QSize& size) const
{
    return spectrumImage(size, brightness());
}

void HsbSpectrumWidget::paintOverField(QPainter* painter)
{
    if (m_zoomArea.isNull()) {
        return;
    }
    painter->setClipRect(rect());
    painter->setTransform(QTransform::fromScale(width(), height()), true);
    painter->setBrush(Qt::NoBrush);
    for (const QPen& pen : {QPen(Qt::black, 3.0), QPen(Qt::white, 1.0)}) {
        QPen line = pen;
        line.setCosmetic(true);
        line.setJoinStyle(Qt::MiterJoin);
        painter->setPen(line);
        painter->drawRect(m_zoomArea);
    }
}

QPointF HsbSpectrumWidget::markerPlace() const
{
    return {hue(), saturation()};
}

void HsbSpectrumWidget::moveToPlace(const QPointF& place)
{
    select(place.x(), place.y(), brightness());
}

void HsbSpectrumWidget::valuesChanged()
{
    if (brightness() != m_fieldBrightness) {
        m_fieldBrightness = brightness();
        refreshField();
    }
}

} // namespace VelaColorPickerLib
