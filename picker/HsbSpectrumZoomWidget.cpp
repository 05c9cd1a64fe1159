#include "picker/HsbSpectrumZoomWidget.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>

namespace VelaColorPickerLib {

namespace {

constexpr int kLastHue = 359;
constexpr int kLastSaturation = 255;

} // namespace

HsbSpectrumZoomWidget::HsbSpectrumZoomWidget(QWidget* parent)
    : ColorZoomWidget(parent)
{
    setAccessibleName(tr("Zoomed spectrum"));
    setAccessibleDescription(tr("Colors around the chosen one: hue across, saturation down"));
    setToolTip(tr("Click a color to choose it, double-click it to bring it into the middle. The "
                  "wheel zooms; arrow keys go from color to color."));
    m_hsb.brightness = 1.0;
    mark({0, 0}, cellColor({0, 0}));
    m_told = color();
}

HsbSpectrumZoomWidget::Center HsbSpectrumZoomWidget::cellCenter(const QPoint& cell) const
{
    return {std::clamp(m_center.hue + cell.x() * steps().hue, 0, kLastHue),
            std::clamp(m_center.saturation + cell.y() * steps().saturation, 0, kLastSaturation)};
}

VelaColor HsbSpectrumZoomWidget::cellColor(const QPoint& cell) const
{
    const Center at = cellCenter(cell);
    VelaColor color = VelaColor::fromHsv(at.hue, at.saturation, m_value);
    color.setAlpha32(m_alpha);
    return color;
}

QRectF HsbSpectrumZoomWidget::zoomArea() const
{
    const QSizeF cell(steps().hue / 360.0, steps().saturation / 255.0);
    const QSizeF size(cell.width() * gridSize().width(), cell.height() * gridSize().height());
    const QPointF center(m_center.hue / 360.0, m_center.saturation / 255.0);
    const QRectF area(center.x() - size.width() / 2.0, center.y() - size.height() / 2.0,
                      size.width(), size.height());
    return area.intersected(QRectF(0.0, 0.0, 1.0, 1.0));
}

void HsbSpectrumZoomWidget::setColor(const VelaColor& color)
{
    if (!color.isValid()) {
        return;
    }
    m_hsb.take(color);
    m_alpha = color.alpha32();
    const Center chosen = cellCenter(selectedCell());
    const Center center = {m_hsb.hueDegrees(), m_hsb.saturation8()};
    if (m_hsb.brightness8() != m_value) {
        m_value = m_hsb.brightness8();
        refreshCells();
    }
    if (chosen.hue == center.hue && chosen.saturation == center.saturation) {
        mark(selectedCell(), color);
    } else {
        mark({0, 0}, color);
        moveCenter(center);
    }
    tellCenter();
}

void HsbSpectrumZoomWidget::moveCenter(const Center& center)
{
    if (center.hue == m_center.hue && center.saturation == m_center.saturation) {
        return;
    }
    m_center = center;
    refreshCells();
    emit zoomAreaChanged(zoomArea());
    tellCenter();
}

void HsbSpectrumZoomWidget::tellCenter()
{
    const VelaColor center = cellColor({0, 0});
    if (center != m_told) {
        m_told = center;
        emit centerColorChanged(m_center.hue / 360.0, m_center.saturation / 255.0, m_value / 255.0,
                                center.alphaF());
    }
}

void HsbSpectrumZoomWidget::choose(const QPoint& cell)
{
    const VelaColor chosen = cellColor(cell);
    m_hsb.take(chosen);
    mark(cell, chosen);
    emit colorChanged(chosen);
}

void HsbSpectrumZoomWidget::centerChosen()
{
    const Center center = cellCenter(selectedCell());
    mark({0, 0}, color());
    moveCenter(center);
}

void HsbSpectrumZoomWidget::moveTo(const QPoint& pixel)
{
    choose(cellAt(pixel));
}

void HsbSpectrumZoomWidget::moveBy(int columns, int rows)
{
    const QPoint target = selectedCell() + QPoint(columns, rows);
    const QPoint cell = limited(target);
    if (target != cell) {
        moveCenter(cellCenter(target - cell));
    }
    choose(cell);
}

void HsbSpectrumZoomWidget::moveToEnd(int columns, int rows)
{
    const QPoint last = lastCell();
    choose(limited(selectedCell() + QPoint(2 * last.x() * columns, 2 * last.y() * rows)));
}

void HsbSpectrumZoomWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    choose(cellAt(event->pos()));
    centerChosen();
}

void HsbSpectrumZoomWidget::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        centerChosen();
        break;
    default:
        ColorZoomWidget::keyPressEvent(event);
    }
}

} // namespace VelaColorPickerLib
