#include "effects/WhiteLevels.h"

#include "color/Numeric.h"

#include <algorithm>

namespace {
constexpr quint32 kFull = 255;
constexpr quint32 kAllWarm = 510;
} // namespace

VelaColor WhiteLevels::color() const
{
    quint32 red = warm;
    quint32 green = cool;
    if (inputType == 0) {
        // Unsigned on purpose: a temperature outside of 0..510 wraps, and counts as full.
        const quint32 t = static_cast<quint32>(temperature);
        const double factor = intensity / 100.0;
        red = truncU32(std::min(t, kFull) * factor);
        green = truncU32(std::min(kAllWarm - t, kFull) * factor);
    }
    return VelaColor(qRgb(static_cast<int>(red & kFull), static_cast<int>(green & kFull),
                          static_cast<int>(red & kFull)));
}
