#include "effects/PictureSampler.h"

#include "color/Numeric.h"

#include <algorithm>
#include <cmath>

namespace {

/// Whether the pixels around `v` have 32-bit numbers.
bool isWithin(double v)
{
    return std::abs(v) < 2147483647.0; // false for NaN
}

/// The number of the pixel at or before `v`; a negative whole `v` gives the one below it.
int pixelBefore(double v)
{
    return v >= 0.0 ? truncI32(v) : truncI32(v) - 1;
}

/// The bits `shift`.. of the mean. The order of the operations decides the last bit, and with it
/// now and then a whole level.
QRgb meanOf(QRgb p00, QRgb p01, QRgb p10, QRgb p11, double fx, double fy, unsigned shift)
{
    const auto level = [shift](QRgb pixel) {
        return static_cast<double>((pixel >> shift) & 0xFFU);
    };
    const double sum = level(p01) * (1 - fx) * fy + level(p00) * (1 - fx) * (1 - fy) +
                       level(p10) * fx * (1 - fy) + level(p11) * fx * fy;
    return (truncU32(sum) & 0xFFU) << shift;
}

} // namespace

PictureSample PictureSampler::smooth(double x, double y) const
{
    PictureSample sample;
    if (!isWithin(x) || !isWithin(y)) {
        sample.rgb = m_surroundings;
        sample.alpha = 1.0 - transparencyOf(m_surroundings);
        return sample;
    }
    const int x0 = pixelBefore(x);
    const int y0 = pixelBefore(y);
    const double fx = x - x0;
    const double fy = y - y0;
    const QRgb p00 = pixelOrSurroundings(x0, y0);
    const QRgb p01 = pixelOrSurroundings(x0, y0 + 1);
    const QRgb p10 = pixelOrSurroundings(x0 + 1, y0);
    const QRgb p11 = pixelOrSurroundings(x0 + 1, y0 + 1);
    sample.rgb = 0xFF000000U | meanOf(p00, p01, p10, p11, fx, fy, 16U) |
                 meanOf(p00, p01, p10, p11, fx, fy, 8U) | meanOf(p00, p01, p10, p11, fx, fy, 0U);
    const double covered = (1 - fx) * transparencyOf(p01) * fy +
                           (1 - fx) * transparencyOf(p00) * (1 - fy) +
                           transparencyOf(p10) * fx * (1 - fy) + transparencyOf(p11) * fx * fy;
    sample.alpha = std::max(0.0, 1.0 - covered); // rounding may pass 1
    return sample;
}

PictureSample PictureSampler::plain(double x, double y) const
{
    PictureSample sample;
    sample.isOutside = true;
    if (!isWithin(x) || !isWithin(y)) {
        return sample;
    }
    const int x0 = pixelBefore(x);
    const int y0 = pixelBefore(y);
    if (m_pixels.contains(x0, y0)) {
        const QRgb pixel = m_pixels.at(x0, y0);
        sample.rgb = pixel | 0xFF000000U;
        sample.alpha = 1.0 - transparencyOf(pixel);
        sample.isOutside = false;
    }
    return sample;
}
