#include "picker/HsbField.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace VelaColorPickerLib {

namespace {

using Triple = std::array<double, 3>;

/// How much each primary has in the pure colour of a hue.
Triple purePrimaries(double hue)
{
    const double sixths = (hue - std::floor(hue)) * 6.0;
    const auto share = [sixths](double center) {
        const double away = std::abs(sixths - center);
        return std::clamp(2.0 - std::min(away, 6.0 - away), 0.0, 1.0);
    };
    return {share(0.0), share(2.0), share(4.0)};
}

QRgb pixel(const Triple& pure, double saturation, double brightness)
{
    std::array<int, 3> levels{};
    for (std::size_t i = 0; i < levels.size(); ++i) {
        const double level = brightness * (1.0 - saturation * (1.0 - pure[i]));
        levels[i] = static_cast<int>(std::lround(255.0 * level));
    }
    return qRgb(levels[0], levels[1], levels[2]);
}

/// Where a pixel's middle lies between the first pixel's and the last one's.
double place(int index, int count)
{
    return count > 1 ? static_cast<double>(index) / (count - 1) : 0.0;
}

} // namespace

QColor hsbColor(double hue, double saturation, double brightness)
{
    return QColor(pixel(purePrimaries(hue), saturation, brightness));
}

QImage spectrumImage(const QSize& size, double brightness)
{
    QImage image(size, QImage::Format_RGB32);
    std::vector<Triple> pure;
    for (int x = 0; x < size.width(); ++x) {
        pure.push_back(purePrimaries(place(x, size.width())));
    }
    for (int y = 0; y < size.height(); ++y) {
        auto* const line = reinterpret_cast<QRgb*>(image.scanLine(y));
        const double saturation = place(y, size.height());
        for (int x = 0; x < size.width(); ++x) {
            line[x] = pixel(pure[static_cast<std::size_t>(x)], saturation, brightness);
        }
    }
    return image;
}

QImage tintsAndShadesImage(const QSize& size, double hue)
{
    QImage image(size, QImage::Format_RGB32);
    const Triple pure = purePrimaries(hue);
    for (int y = 0; y < size.height(); ++y) {
        auto* const line = reinterpret_cast<QRgb*>(image.scanLine(y));
        const double brightness = 1.0 - place(y, size.height());
        for (int x = 0; x < size.width(); ++x) {
            line[x] = pixel(pure, place(x, size.width()), brightness);
        }
    }
    return image;
}

} // namespace VelaColorPickerLib
