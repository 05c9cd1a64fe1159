#pragma once

#include <QtGlobal>

#include <cmath>

/// Hues in degrees that run on past the ends of the wheel. Closed forms of adding and subtracting
/// 360.0 step by step: they end for any number of turns, and let what isn't finite pass.
namespace HueWheel {

/// `hue` less as many turns as leave it no longer above 360.0; 360.0 itself stays, and a greater
/// multiple of 360 becomes 360.
inline double dropAbove360(double hue)
{
    if (!(hue > 360.0) || std::isinf(hue)) {
        return hue;
    }
    const double rest = std::fmod(hue, 360.0);
    return rest == 0.0 ? 360.0 : rest;
}

/// `hue` plus as many turns as leave it no longer below 0.0; a negative multiple of 360 becomes 0.
/// A hue just below 0.0 comes out as 360.0, to which the sum rounds.
inline double raiseBelow0(double hue)
{
    if (!(hue < 0.0) || std::isinf(hue)) {
        return hue;
    }
    const double rest = std::fmod(hue, 360.0);
    return rest == 0.0 ? 0.0 : rest + 360.0;
}

/// The hue as VelaColor::setHsv16 takes it, which refuses 65536 and above: the same place on the
/// wheel. -1, which means achromatic, and other negative hues stay as they are.
inline qint32 settable(qint32 hue)
{
    return hue > 0 ? hue % 360 : hue;
}

} // namespace HueWheel
