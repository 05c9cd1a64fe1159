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

/// As widenF for what is known to lie in 0.0..1.0.
inline quint32 widenUnit(double v)
{
    return static_cast<quint32>(static_cast<qint64>(v * kComponentMax + 0.5));
}

/// 0..0xFFFFFFFF to 0.0..1.0: `v / kComponentMax` to the last bit, for every v, by the head of its
/// series v (2^-32 + 2^-64 + 2^-96 + ...), several times as fast as the division.
constexpr double componentF(quint32 v)
{
    constexpr double kTail = 0x1p-64 + 0x1p-96;
    const double d = static_cast<double>(v);
    return d * 0x1p-32 + d * kTail;
}

/// False for NaN.
constexpr bool isUnit(double v)
{
    return v >= 0.0 && v <= 1.0;
}
