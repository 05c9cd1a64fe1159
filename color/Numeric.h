#pragma once

#include <QtGlobal>

#include <cmath>
#include <limits>

// Checked narrowing. A plain cast of a NaN, an infinity or a value out of range is undefined in
// C++, and such values come out of files; every narrowing of a double goes through one of these.

/// `v` truncated towards zero; NaN, infinities and values that do not fit give the most negative
/// integer.
inline qint32 truncI32(double v)
{
    if (!(v > -2147483649.0 && v < 2147483648.0)) {
        return std::numeric_limits<qint32>::min();
    }
    return static_cast<qint32>(v);
}

/// As truncI32, for 64 bits.
inline qint64 truncI64(double v)
{
    if (!(v >= -9223372036854775808.0 && v < 9223372036854775808.0)) {
        return std::numeric_limits<qint64>::min();
    }
    return static_cast<qint64>(v);
}

/// `v` truncated towards zero; NaN, infinities, values of -1 and below and values above 4294967295
/// give 0.
inline quint32 truncU32(double v)
{
    if (!(v > -1.0 && v < 4294967296.0)) {
        return 0;
    }
    return static_cast<quint32>(v);
}

/// `v` truncated towards zero to a signed 64-bit integer, of which the low 32 bits are kept: a
/// small negative value wraps to a large one. NaN, infinities and values that do not fit in 64
/// bits give 0.
inline quint32 wrapU32(double v)
{
    if (!(v >= -9223372036854775808.0 && v < 9223372036854775808.0)) {
        return 0;
    }
    return static_cast<quint32>(static_cast<quint64>(static_cast<qint64>(v)));
}

/// `v` limited to `low`..`high` and truncated; NaN gives 0, which must lie in that range.
inline qint32 limitI32(double v, qint32 low, qint32 high)
{
    if (std::isnan(v)) {
        return 0;
    }
    if (v <= low) {
        return low;
    }
    if (v >= high) {
        return high;
    }
    return static_cast<qint32>(v);
}
