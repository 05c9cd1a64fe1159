#include "picker/ColorZoomWidget.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QRegion>
#include <QWheelEvent>

#include <algorithm>

namespace VelaColorPickerLib {

namespace {

constexpr int kReach = ColorZoomWidget::kGridSize / 2;
constexpr int kWheelStep = 120; // eighths of a degree

/// Where cell `index`, 0..kGridSize, begins along a side of `length` pixels.
int edge(int index, int length)
{
    return index * length / ColorZoomWidget::kGridSize;
}

int cellOf(int pixel, int length)
{
    int index = 0;
    while (index < ColorZoomWidget::kGridSize - 1 && edge(index + 1, length) <= pixel) {
        ++index;
    }
    return index - kReach;
}

} // namespace

ColorZoomWidget::ColorZoomWidget(QWidget* parent)
    : ColorSelectorWidget(parent)
{}

void ColorZoomWidget::setLevel(int level)
{
    level = std::clamp(level, 1, kLevels);
    if (level == m_level) {
        return;
    }
    m_level = level;
    refreshField();
    emit levelChanged(m_level);
    emit zoomAreaChanged(zoomArea());
}

QPoint ColorZoomWidget::markerPixel() const
{
    const auto middle = [](int cell, int length) {
        const int index = cell + kReach;
        return (edge(index, length) + edge(index + 1, length)) / 2;
    };
    return {middle(m_markerCell.x(), width()), middle(m_markerCell.y(), height())};
}

void ColorZoomWidget::setMarkerCell(const QPoint& cell)
{
    const QRegion before(markerRect());
    m_markerCell = {std::clamp(cell.x(), -kReach, kReach), std::clamp(cell.y(), -kReach, kReach)};
    update(before + markerRect());
}

QPoint ColorZoomWidget::cellAt(const QPoint& pixel) const
{
    return {cellOf(pixel.x(), width()), cellOf(pixel.y(), height())};
}

QImage ColorZoomWidget::paintField(const QSize& size) const
{
    QImage field(size, QImage::Format_RGB32);
    QPainter painter(&field);
    for (int row = -kReach; row <= kReach; ++row) {
        const int top = edge(row + kReach, size.height());
        const int bottom = edge(row + kReach + 1, size.height());
        for (int column = -kReach; column <= kReach; ++column) {
            const int left = edge(column + kReach, size.width());
            const int right = edge(column + kReach + 1, size.width());
            painter.fillRect(QRect(left, top, right - left, bottom - top), cellColor(column, row));
        }
    }
    return field;
}

void ColorZoomWidget::moveToPixel(const QPoint& pixel)
{
    const QPoint cell = cellAt(pixel);
    chooseCell(cell.x(), cell.y());
}

void ColorZoomWidget::moveBySteps(int right, int down, bool large)
{
    const int cells = large ? kReach : 1;
    const QPoint cell = m_markerCell + QPoint(right, down) * cells;
    if (std::abs(cell.x()) > kReach || std::abs(cell.y()) > kReach) {
        // Beyond the edge the grid follows.
        centerOnCell(m_markerCell.x() + right, m_markerCell.y() + down);
        return;
    }
    chooseCell(cell.x(), cell.y());
}

void ColorZoomWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    const QPoint cell = cellAt(event->pos());
    centerOnCell(cell.x(), cell.y());
}

void ColorZoomWidget::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Home:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        centerOnCell(m_markerCell.x(), m_markerCell.y());
        break;
    case Qt::Key_PageUp:
        setLevel(m_level + 1);
        break;
    case Qt::Key_PageDown:
        setLevel(m_level - 1);
        break;
    default:
        ColorSelectorWidget::keyPressEvent(event);
    }
}

void ColorZoomWidget::wheelEvent(QWheelEvent* event)
{
    m_wheelAngle += event->angleDelta().y();
    const int steps = m_wheelAngle / kWheelStep;
    m_wheelAngle -= steps * kWheelStep;
    setLevel(m_level + steps);
    event->accept();
}

} // namespace VelaColorPickerLib
