#include "picker/Hsb.h"

#include "color/ColorScale.h"
#include "color/Numeric.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace VelaColorPickerLib {

namespace {

/// How far each of red, green and blue falls from the brightness at full saturation, as a share of
/// it: with k, a component is (1 - k s) v, which is what `VelaColor` computes from HSV.
using Falls = std::array<double, 3>;

Falls fallsOf(double hue)
{
    // In the hundredths of a degree in which a colour holds its hue.
    const double h = (truncI32(hue * 36000.0 + 0.5) % 36000) / 6000.0;
    const int sector = truncI32(h);
    const double f = h - sector;
    const double slope = sector % 2 != 0 ? f : 1.0 - f;
    switch (sector) {
    case 0:
        return {0.0, slope, 1.0};
    case 1:
        return {slope, 0.0, 1.0};
    case 2:
        return {1.0, 0.0, slope};
    case 3:
        return {1.0, slope, 0.0};
    case 4:
        return {slope, 1.0, 0.0};
    default:
        return {0.0, 1.0, slope};
    }
}

quint32 component8(double fall, double saturation, double value)
{
    return widenUnit((1.0 - fall * saturation) * value) >> 24U;
}

QRgb pixelOf(const Falls& falls, double saturation, double value)
{
    return 0xFF000000U | component8(falls[0], saturation, value) << 16U |
           component8(falls[1], saturation, value) << 8U | component8(falls[2], saturation, value);
}

/// The places, 0..1, of a row or column of pixels.
std::vector<double> places(int count, double ratio)
{
    const double last = std::max(count / ratio - 1.0, 1.0);
    std::vector<double> result;
    result.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        result.push_back(std::clamp(((i + 0.5) / ratio - 0.5) / last, 0.0, 1.0));
    }
    return result;
}

/// As a colour holds it.
double held(double v)
{
    return componentF(widenF(v));
}

int topByte(double v)
{
    return static_cast<int>(widenF(v) >> 24U);
}

} // namespace

void Hsb::take(const VelaColor& color)
{
    double h = -1.0;
    double s = 0.0;
    double b = 0.0;
    color.getHsvF(&h, &s, &b);
    brightness = b;
    if (isUnit(h)) {
        hue = h;
        saturation = s;
    } else if (b > 0.0) {
        saturation = s;
    }
}

int Hsb::hueDegrees() const
{
    return std::clamp(static_cast<int>(std::lround(hue * 360.0)), 0, 359);
}

int Hsb::saturation8() const
{
    return topByte(saturation);
}

int Hsb::brightness8() const
{
    return topByte(brightness);
}

bool operator==(const Hsb& a, const Hsb& b)
{
    return a.hue == b.hue && a.saturation == b.saturation && a.brightness == b.brightness;
}

QImage spectrumImage(const QSize& pixels, double ratio, double brightness)
{
    QImage image(pixels, QImage::Format_RGB32);
    std::vector<Falls> columns;
    columns.reserve(static_cast<std::size_t>(image.width()));
    for (const double hue : places(image.width(), ratio)) {
        columns.push_back(fallsOf(hue));
    }
    const double value = held(brightness);
    const std::vector<double> saturations = places(image.height(), ratio);
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        const double saturation = held(saturations[static_cast<std::size_t>(y)]);
        for (const Falls& falls : columns) {
            *line++ = pixelOf(falls, saturation, value);
        }
    }
    image.setDevicePixelRatio(ratio);
    return image;
}

QImage tintsAndShadesImage(const QSize& pixels, double ratio, double hue)
{
    QImage image(pixels, QImage::Format_RGB32);
    const Falls falls = fallsOf(hue);
    std::vector<double> saturations = places(image.width(), ratio);
    std::transform(saturations.cbegin(), saturations.cend(), saturations.begin(), held);
    const std::vector<double> downward = places(image.height(), ratio);
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        const double value = held(1.0 - downward[static_cast<std::size_t>(y)]);
        for (const double saturation : saturations) {
            *line++ = pixelOf(falls, saturation, value);
        }
    }
    image.setDevicePixelRatio(ratio);
    return image;
}

} // namespace VelaColorPickerLib
