#include "tools/mapgen/RingLayout.h"

#include <cmath>

namespace RingLayout {

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kGoldenAngle = 2.39996322972865332; // pi * (3 - sqrt(5))
constexpr int kSkipped = 27;                         // seeds of the open middle
constexpr double kSpread = 25.2;

} // namespace

QPointF floret(int arm, int step)
{
    // Seeds that are 21 apart stand almost behind one another: those are an arm. Round the ring the
    // arms follow in steps of 8 seeds, for 8 golden angles are almost a whole number of turns.
    const int seed = (arm * 8) % kArms + step * kArms;
    const double angle = seed * kGoldenAngle - kPi / 2.0;
    const double radius = kSpread * std::sqrt(seed + kSkipped);
    return {kMiddle + radius * std::cos(angle), kMiddle + radius * std::sin(angle)};
}

} // namespace RingLayout
