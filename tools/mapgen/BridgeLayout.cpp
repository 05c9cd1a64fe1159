#include "tools/mapgen/BridgeLayout.h"

#include <cmath>

namespace BridgeLayout {

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kFirstArch = 292.0;
constexpr double kArchPitch = 174.0;
constexpr double kRingOffset = 8.0; // the lights sit in the middle of the ring of voussoirs

} // namespace

double archMiddle(int arch)
{
    return kFirstArch + arch * kArchPitch;
}

double pierMiddle(int pier)
{
    return archMiddle(pier) + kArchPitch / 2;
}

double towerMiddle(int tower)
{
    return tower == 0 ? 168.0 : kWidth - 168.0;
}

QPointF archLight(int arch, int index)
{
    constexpr double kFirst = 30.0; // degrees; below it the piers' lights begin
    const double angle =
        (kFirst + (180.0 - 2 * kFirst) * index / (kLightsPerArch - 1)) * kPi / 180.0;
    return {archMiddle(arch) - (kArchHalfWidth + kRingOffset) * std::cos(angle),
            kSpringing - (kArchRise + kRingOffset) * std::sin(angle)};
}

QPointF pierLight(int pier, int index)
{
    return {pierMiddle(pier), 442.0 + 33.0 * index};
}

QPointF towerLight(int tower, int level, int side)
{
    return {towerMiddle(tower) + (side == 0 ? -16.0 : 16.0), 192.0 + 36.0 * level};
}

QPointF crownLight(int tower, int index)
{
    return {towerMiddle(tower) - 27.0 + 18.0 * index, 158.0};
}

QPointF towerFootLight(int tower, int side)
{
    return {towerMiddle(tower) + (side == 0 ? -16.0 : 16.0), 452.0};
}

QPointF roadLight(int index)
{
    constexpr double kFirst = 218.0;
    return {kFirst + (kWidth - 2 * kFirst) * index / (kRoadLights - 1), 326.0};
}

QPointF lamp(int index)
{
    return {archMiddle(0) + kArchPitch / 2 * index, 258.0};
}

QPointF flood(int quay, int index)
{
    const double x = 26.0 + 40.0 * index;
    return {quay == 0 ? x : kWidth - x, 500.0};
}

QPointF buoy(int garland, int index)
{
    const double x = 60.0 + 40.0 * index;
    return {x, 600.0 + 44.0 * garland + 11.0 * std::sin(x / kWidth * 3.0 * kPi + 1.3 * garland)};
}

} // namespace BridgeLayout
