#include "tools/mapgen/FacadeLayout.h"

#include <algorithm>
#include <cmath>

namespace FacadeLayout {

namespace {

constexpr double kPitch = 36.0;
constexpr double kFirstColumn = 96.0;
constexpr double kBayGap = 18.0;
constexpr double kTopFloor = 124.0;
constexpr double kTierGap = 8.0;

} // namespace

QPointF window(int column, int floor)
{
    const int gaps = (column >= firstColumn(1) ? 1 : 0) + (column >= firstColumn(2) ? 1 : 0);
    const int fromTop = kFloors - 1 - floor;
    const int tiersAbove = fromTop / kFloorsPerTier;
    return {kFirstColumn + column * kPitch + gaps * kBayGap,
            kTopFloor + fromTop * kPitch + tiersAbove * kTierGap};
}

int firstColumn(int bay)
{
    constexpr int kFirst[kBays + 1] = {0, kWingColumns, kColumns - kWingColumns, kColumns};
    return kFirst[bay];
}

int ring(int column, int floor)
{
    const double across = (column - (kColumns - 1) / 2.0) / (kColumns / 2.0);
    const double up = (floor - (kFloors - 1) / 2.0) / (kFloors / 2.0);
    const double distance = std::sqrt((across * across + up * up) / 2.0);
    return std::min(static_cast<int>(distance * kRings), kRings - 1);
}

} // namespace FacadeLayout
