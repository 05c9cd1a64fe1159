#pragma once

#include <QtGlobal>

// How components of 8 bits, 16 bits and 0.0..1.0 become 32 bits and back: exact, with no rounding
// on the way down.

constexpr double kComponentMax = 4294967295.0;

/// 0..255 to 0..0xFFFFFFFF; other values wrap.
constexpr quint32 widen8(quint32 v)
{
    return ((v << 8U) | v) * 0x10001U;
}

/// 0..65535 to 0..0xFFFFFFFF; other values wrap.
constexpr quint32 widen16(quint32 v)
{
    return v * 0x10001U;
}

/// 0.0..1.0 to 0..0xFFFFFFFF; values outside are limited, NaN gives 0.
inline quint32 widenF(double v)
{
    const double scaled = v * kComponentMax + 0.5;
    if (!(scaled > 0.0)) {
        return 0;
    }
    if (scaled >= kComponentMax) {
        return 0xFFFFFFFFU;
    }
    return static_cast<quint32>(static_cast<qint64>(scaled));
}

/// 0..0xFFFFFFFF to 0.0..1.0.
constexpr double componentF(quint32 v)
{
    return static_cast<double>(v) / kComponentMax;
}

/// False for NaN.
constexpr bool isUnit(double v)
{
    return v >= 0.0 && v <= 1.0;
}
