#include "color/ColorUtils.h"
#include "color/Curve.h"
#include "color/Numeric.h"

#include <cmath>

namespace {

constexpr double kNormalMax = 65516.0; // the fitted curve ends short of 65535
constexpr double kTungstenMax = 65535.0;

double unitOf(float level, double max)
{
    if (static_cast<double>(level) > max) {
        return 1.0;
    }
    return level > 0.0F ? static_cast<double>(level) / max : 0.0;
}

// The inverses below are in single precision throughout: the fixtures' own arithmetic.

// What is rounded down below is never negative, so that a plain truncation does it.

/// The positive root of a pair, limited to `max` and rounded; 0 where none is positive.
int chosenRoot(float r1, float r2, float max)
{
    float root = 0.0F;
    if (r1 > 0.0F) {
        root = r1;
    } else if (r2 > 0.0F) {
        root = r2;
    }
    return static_cast<int>((root > max ? max : root) + 0.5F);
}

int quadraticRoot(float a, float b, float c, float x, float max)
{
    const float s = std::sqrt(b * b - 4.0F * a * (c - x));
    return chosenRoot((s - b) / (2.0F * a), (-b - s) / (2.0F * a), max);
}

quint16 delinearizeNormal16(quint16 linear)
{
    if (linear == 0) {
        return 0;
    }
    const float x = linear;
    const float s = std::sqrt(0.0043425467F - (-0.065865F - x) * 5.7e-5F);
    return static_cast<quint16>(
        chosenRoot((s - 0.065898F) / 2.85e-5F, (-0.065898F - s) / 2.85e-5F, 65535.0F));
}

quint8 delinearizeNormal8(quint16 linear)
{
    if (linear == 0) {
        return 0;
    }
    const float x = linear;
    const float s = std::sqrt(286.82813F - (-0.065865F - x) * 3.764812F);
    return static_cast<quint8>(
        chosenRoot((s - 16.936F) / 1.882406F, (-16.936F - s) / 1.882406F, 255.0F));
}

constexpr quint16 kTungstenIdentityEnd = 4;
constexpr quint16 kTungstenLowEnd = 321;

/// Both widths end at 255: the fixtures of this curve read 16 bits in the range of 8.
quint16 delinearizeTungsten16(quint16 linear)
{
    if (linear <= kTungstenIdentityEnd) {
        return linear;
    }
    const float x = linear;
    if (linear <= kTungstenLowEnd) {
        return static_cast<quint8>(quadraticRoot(3.359e-6F, -0.0039F, 4.339F, x, 255.0F));
    }
    return static_cast<quint16>(quadraticRoot(1.9829e-5F, -0.325303F, 1573.0F, x, 255.0F));
}

quint8 delinearizeTungsten8(quint16 linear)
{
    if (linear <= kTungstenIdentityEnd) {
        return static_cast<quint8>(linear);
    }
    const float x = linear;
    if (linear <= kTungstenLowEnd) {
        return static_cast<quint8>(quadraticRoot(0.221829F, -1.002F, 4.339F, x, 255.0F));
    }
    return static_cast<quint8>(quadraticRoot(1.31F, -83.603F, 1573.0F, x, 255.0F));
}

quint16 level16(int curveId, quint16 linear)
{
    switch (curveId) {
    case 1:
        return delinearizeNormal16(linear);
    case 2:
        return delinearizeTungsten16(linear);
    default:
        return linear;
    }
}

quint8 level8(int curveId, quint16 linear)
{
    switch (curveId) {
    case 1:
        return delinearizeNormal8(linear);
    case 2:
        return delinearizeTungsten8(linear);
    default:
        return static_cast<quint8>((linear + 128) / 257); // floor(linear / 257.0 + 0.5) for each
    }
}

quint16 rounded16(double drive)
{
    return static_cast<quint16>(limitI32(drive * 65535.0 + 0.5, 0, 65535));
}

quint16 truncated16(double drive)
{
    return static_cast<quint16>(limitI32(drive * 65535.0, 0, 65535));
}

/// High byte first; returns the place behind.
quint8* putLevel(quint16 level, quint8* bytes)
{
    bytes[0] = static_cast<quint8>(level >> 8U);
    bytes[1] = static_cast<quint8>(level & 0xFFU);
    return bytes + 2;
}

const quint8* narrowTable(const Curve* curve, bool forward)
{
    if (curve == nullptr) {
        return nullptr;
    }
    return forward ? curve->lut8() : curve->reverse8();
}

} // namespace

namespace ColorUtils {

void lut8Lookup(const Curve* curve, quint8 value, quint8* out, bool forward)
{
    const quint8* const table = narrowTable(curve, forward);
    *out = table != nullptr ? table[value] : value;
}

void lut16Lookup(const Curve* curve, quint16 value, quint16* out)
{
    const quint16* const table = curve != nullptr ? curve->lut16() : nullptr;
    *out = table != nullptr ? table[value] : value;
}

double linearizeNormal(quint16 level)
{
    const double x = level;
    return unitOf(static_cast<float>(1.674e-18 * x * x * x * x - 2.11838e-13 * x * x * x +
                                     1.4257e-5 * x * x + 0.065828 * x - 4.8488e-5),
                  kNormalMax);
}

double linearizeTungsten(quint16 level)
{
    const double x = level;
    const double x2 = x * x;
    const double x3 = x2 * x;
    const double x4 = x2 * x2;
    return unitOf(static_cast<float>(3.7684e-29 * (x4 * x3) - 9.555e-24 * (x3 * x3) +
                                     1.045e-18 * (x4 * x) - 6.1689e-14 * x4 + 2.031e-9 * x3 -
                                     1.6217e-5 * x2 - 9.38789e-10 * x - 4.64192e-16),
                  kTungstenMax);
}

void delinearize16(int curveId, const quint16* in, quint16* out, int count)
{
    for (int i = 0; i < count; ++i) {
        out[i] = level16(curveId, in[i]);
    }
}

void delinearize8(int curveId, const quint16* in, quint8* out, int count)
{
    for (int i = 0; i < count; ++i) {
        out[i] = level8(curveId, in[i]);
    }
}

void quantize(int count, const double* drives, quint16* out, int curveId, int kind)
{
    if (kind == QuantizeFormula) {
        for (int i = 0; i < count; ++i) {
            out[i] = level16(curveId, rounded16(drives[i]));
        }
        return;
    }
    const Curve* const table = curve(curveId);
    for (int i = 0; i < count; ++i) {
        lut16Lookup(table, truncated16(drives[i]), &out[i]);
    }
}

void writeChannels(int count, int width, const double* drives, quint8* bytes, int curveId, int kind,
                   bool forward)
{
    if (width != 1 && width != 2) {
        return;
    }
    if (kind == QuantizeFormula) {
        for (int i = 0; i < count; ++i) {
            const quint16 linear = rounded16(drives[i]);
            if (width == 1) {
                *bytes++ = level8(curveId, linear);
            } else {
                bytes = putLevel(level16(curveId, linear), bytes);
            }
        }
        return;
    }
    const Curve* const table = curve(curveId);
    if (width == 1) {
        const quint8* const narrow = narrowTable(table, forward);
        for (int i = 0; i < count; ++i) {
            const int value = limitI32(drives[i] * 255.0 + 0.5, 0, 255);
            bytes[i] = narrow != nullptr ? narrow[value] : static_cast<quint8>(value);
        }
        return;
    }
    for (int i = 0; i < count; ++i) {
        quint16 level = 0;
        lut16Lookup(table, truncated16(drives[i]), &level);
        bytes = putLevel(level, bytes);
    }
}

} // namespace ColorUtils
