#include "picker/HsbSpectrumZoomWidget.h"

#include <algorithm>
#include <array>

namespace VelaColorPickerLib {

namespace {

constexpr int kMaxHue = 359;
constexpr int kMaxLevel = 255;
constexpr double kTurn = 360.0;

/// From one cell to the next.
struct Steps
{
    int hue;        // degrees
    int saturation; // of 255
};

constexpr std::array<Steps, ColorZoomWidget::kLevels> kSteps = {
    {{13, 9}, {11, 8}, {9, 7}, {8, 6}, {7, 5}, {6, 4}, {5, 3}, {3, 2}, {2, 1}}};

const Steps& stepsOf(int level)
{
    return kSteps[static_cast<std::size_t>(level - 1)];
}

} // namespace

HsbSpectrumZoomWidget::HsbSpectrumZoomWidget(QWidget* parent)
    : ColorZoomWidget(parent)
{
    setAccessibleName(tr("Zoomed spectrum"));
    setAccessibleDescription(tr("Colors near the chosen one, hue from left to right, saturation "
                                "from top to bottom"));
    setToolTip(tr("Click a color near the chosen one; double-click to put it in the middle. The "
                  "wheel zooms."));
}

void HsbSpectrumZoomWidget::setHsb(int hue, int saturation, int brightness, double alpha)
{
    hue = std::clamp(hue, 0, kMaxHue);
    saturation = std::clamp(saturation, 0, kMaxLevel);
    brightness = std::clamp(brightness, 0, kMaxLevel);
    const bool centerMoves = hue != m_hue || saturation != m_saturation;
    if (centerMoves || brightness != m_brightness) {
        m_hue = hue;
        m_saturation = saturation;
        m_brightness = brightness;
        refreshField();
    }
    m_alpha = alpha;
    setMarkerCell({0, 0});
    if (centerMoves) {
        emit centerColorChanged(m_hue / kTurn, m_saturation / static_cast<double>(kMaxLevel),
                                m_brightness / static_cast<double>(kMaxLevel), 1.0 - m_alpha);
        emit zoomAreaChanged(zoomArea());
    }
}

int HsbSpectrumZoomWidget::hueOf(int column) const
{
    return std::clamp(m_hue + column * stepsOf(level()).hue, 0, kMaxHue);
}

int HsbSpectrumZoomWidget::saturationOf(int row) const
{
    return std::clamp(m_saturation + row * stepsOf(level()).saturation, 0, kMaxLevel);
}

VelaColor HsbSpectrumZoomWidget::colorOfCell(int column, int row) const
{
    VelaColor color = VelaColor::fromHsv(hueOf(column), saturationOf(row), m_brightness);
    color.setAlphaF(m_alpha);
    return color;
}

QColor HsbSpectrumZoomWidget::cellColor(int column, int row) const
{
    return VelaColor::fromHsv(hueOf(column), saturationOf(row), m_brightness).toQColor(true);
}

QRectF HsbSpectrumZoomWidget::zoomArea() const
{
    constexpr double kCells = kGridSize;
    const Steps& steps = stepsOf(level());
    const QSizeF size(kCells * steps.hue / kTurn, kCells * steps.saturation / kMaxLevel);
    const QPointF center(m_hue / kTurn, m_saturation / static_cast<double>(kMaxLevel));
    const QRectF area(center - QPointF(size.width() / 2.0, size.height() / 2.0), size);
    return area.intersected(QRectF(0.0, 0.0, 1.0, 1.0));
}

void HsbSpectrumZoomWidget::chooseCell(int column, int row)
{
    setMarkerCell({column, row});
    emit colorChanged(colorOfCell(markerCell().x(), markerCell().y()));
}

void HsbSpectrumZoomWidget::centerOnCell(int column, int row)
{
    const VelaColor color = colorOfCell(column, row);
    setHsb(hueOf(column), saturationOf(row), m_brightness, m_alpha);
    emit colorChanged(color);
}

} // namespace VelaColorPickerLib
