#pragma once

#include <QPointF>

/// Where everything of the facade stands, in pixels of its plan. The lights sit in its windows.
namespace FacadeLayout {

constexpr int kColumns = 28;
constexpr int kFloors = 18;
constexpr int kFloorsPerTier = 6;
constexpr int kTiers = kFloors / kFloorsPerTier;
constexpr int kWingColumns = 9; // of either wing; the pavilion between them holds the rest
constexpr int kBays = 3;
constexpr int kRings = 10;

constexpr int kWidth = 1200;
constexpr int kHeight = 860;
constexpr double kWallLeft = 70.0;
constexpr double kWallRight = 1130.0;
constexpr double kPavilionLeft = 411.0;
constexpr double kPavilionRight = 789.0;
constexpr double kRoof = 96.0;
constexpr double kGround = 804.0;

/// The centre of the window in `column`, from the left, on `floor`, from the ground, both from 0.
QPointF window(int column, int floor);
/// The first column of a bay: 0 west wing, 1 pavilion, 2 east wing; that of bay 3 is one behind.
int firstColumn(int bay);
/// Oval rings about the middle of the facade, 0 the innermost to kRings - 1.
int ring(int column, int floor);

} // namespace FacadeLayout
