#include "picker/ColorZoomWidget.h"

#include <QPainter>

#include <algorithm>
#include <array>

namespace VelaColorPickerLib {

namespace {

constexpr int kLargestGrid = 63;

constexpr std::array<ColorZoomWidget::Steps, ColorZoomWidget::kLevels> kSteps = {
    {{13, 9}, {11, 8}, {9, 7}, {8, 6}, {7, 5}, {6, 4}, {5, 3}, {3, 2}, {2, 1}}};

int oddCount(int count)
{
    return std::clamp(count, 1, kLargestGrid) | 1;
}

/// The first pixel of part `index` of `count` of a length.
int edge(int index, int count, int length)
{
    return index * length / count;
}

int partAt(int pixel, int count, int length)
{
    int index = std::clamp(pixel, 0, std::max(length - 1, 0)) * count / std::max(length, 1);
    while (index + 1 < count && edge(index + 1, count, length) <= pixel) {
        ++index; // the division rounds down once more than `edge` does
    }
    return index;
}

} // namespace

ColorZoomWidget::ColorZoomWidget(QWidget* parent)
    : ColorSelectorWidget(parent)
{}

ColorZoomWidget::Steps ColorZoomWidget::stepsOfLevel(int level)
{
    return kSteps[static_cast<std::size_t>(std::clamp(level, 1, kLevels) - 1)];
}

void ColorZoomWidget::setLevel(int level)
{
    const int limitedLevel = std::clamp(level, 1, kLevels);
    if (limitedLevel == m_level) {
        return;
    }
    m_level = limitedLevel;
    refreshCells();
    emit zoomAreaChanged(zoomArea());
}

void ColorZoomWidget::setGridSize(const QSize& size)
{
    const QSize odd(oddCount(size.width()), oddCount(size.height()));
    if (odd == m_gridSize) {
        return;
    }
    m_gridSize = odd;
    m_selected = limited(m_selected);
    refreshCells();
    emit zoomAreaChanged(zoomArea());
}

QPoint ColorZoomWidget::limited(const QPoint& cell) const
{
    const QPoint last = lastCell();
    return {std::clamp(cell.x(), -last.x(), last.x()), std::clamp(cell.y(), -last.y(), last.y())};
}

QRect ColorZoomWidget::cellRect(const QPoint& cell) const
{
    const QPoint index = cell + lastCell();
    const int left = edge(index.x(), m_gridSize.width(), width());
    const int top = edge(index.y(), m_gridSize.height(), height());
    return {left, top, edge(index.x() + 1, m_gridSize.width(), width()) - left,
            edge(index.y() + 1, m_gridSize.height(), height()) - top};
}

QPoint ColorZoomWidget::cellAt(const QPoint& pixel) const
{
    return QPoint(partAt(pixel.x(), m_gridSize.width(), width()),
                  partAt(pixel.y(), m_gridSize.height(), height())) -
           lastCell();
}

QSize ColorZoomWidget::sizeHint() const
{
    return {fontMetrics().height() * 16, fontMetrics().height() * 14};
}

QRect ColorZoomWidget::markedRect() const
{
    return cellRect(m_selected).adjusted(-2, -2, 2, 2);
}

void ColorZoomWidget::mark(const QPoint& cell, const VelaColor& color)
{
    m_color = color;
    if (cell != m_selected) {
        update(markedRect());
        m_selected = cell;
        update(markedRect());
    }
}

void ColorZoomWidget::refreshCells()
{
    m_field = QImage();
    update();
}

void ColorZoomWidget::paintCells(const QSize& pixels)
{
    m_field = QImage(pixels, QImage::Format_RGB32);
    m_field.setDevicePixelRatio(devicePixelRatioF());
    QPainter painter(&m_field);
    const QPoint last = lastCell();
    for (int row = -last.y(); row <= last.y(); ++row) {
        for (int column = -last.x(); column <= last.x(); ++column) {
            QColor color = cellColor({column, row}).toQColor(true);
            color.setAlpha(255);
            painter.fillRect(cellRect({column, row}), color);
        }
    }
}

void ColorZoomWidget::paintEvent(QPaintEvent* /*event*/)
{
    const QSize pixels = (QSizeF(size()) * devicePixelRatioF()).toSize();
    if (m_field.size() != pixels) {
        paintCells(pixels);
    }
    QPainter painter(this);
    if (!isEnabled()) {
        painter.fillRect(rect(), palette().window());
        painter.setOpacity(0.4);
    }
    painter.drawImage(0, 0, m_field);
    const QRect cell = cellRect(m_selected);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(Qt::black);
    painter.drawRect(cell.adjusted(-1, -1, 0, 0));
    painter.setPen(Qt::white);
    painter.drawRect(cell.adjusted(0, 0, -1, -1));
    painter.setPen(Qt::black);
    painter.drawRect(cell.adjusted(1, 1, -2, -2));
    if (hasFocus()) {
        paintFocusFrame(&painter);
    }
}

} // namespace VelaColorPickerLib
