#pragma once

#include <QPointF>

/// Where everything of the bridge stands, in pixels of its plan.
namespace BridgeLayout {

constexpr int kWidth = 1280;
constexpr int kHeight = 760;

constexpr int kArches = 5;
constexpr int kLightsPerArch = 13;
constexpr int kPiers = kArches - 1; // between the arches; the towers carry the outer ends
constexpr int kLightsPerPier = 3;
constexpr int kTowers = 2;
constexpr int kTowerLevels = 4;
constexpr int kTowerSides = 2;
constexpr int kCrownLights = 4;
constexpr int kRoadLights = 48;
constexpr int kLamps = 9;
constexpr int kFloodsPerQuay = 3;
constexpr int kGarlands = 2;
constexpr int kBuoys = 30; // of either garland

constexpr double kParapetTop = 312.0;
constexpr double kDeck = 340.0;
constexpr double kSpringing = 480.0;
constexpr double kArchHalfWidth = 70.0;
constexpr double kArchRise = 112.0;
constexpr double kWater = 545.0;
constexpr double kPierWidth = 34.0;
constexpr double kTowerHalfWidth = 36.0;
constexpr double kTowerTop = 150.0;

double archMiddle(int arch);
double pierMiddle(int pier);
double towerMiddle(int tower);

// The centres of the lights.
QPointF archLight(int arch, int index);             ///< along the ring, from its left springing
QPointF pierLight(int pier, int index);             ///< from the top
QPointF towerLight(int tower, int level, int side); ///< level from the top
QPointF crownLight(int tower, int index);           ///< from the left
QPointF towerFootLight(int tower, int side);
QPointF roadLight(int index);         ///< from the left
QPointF lamp(int index);              ///< from the left
QPointF flood(int quay, int index);   ///< 0 the left quay, 1 the right one
QPointF buoy(int garland, int index); ///< from the left

} // namespace BridgeLayout
