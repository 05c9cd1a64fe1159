#pragma once

#include <QtGlobal>

#include <vector>

/// When sparkles start and how they decay. A level is 0 at rest and 1000 for a fresh sparkle.
/// Numbers from a file that leave no range to draw from give 0; a number is drawn all the same.
namespace SparkleBursts {

constexpr qint32 kFresh = 1000;
/// Sparkles that one burst starts at most, whatever density a file asks for.
constexpr int kMostInBurst = 100000;

/// Seeds rand() with the milliseconds of the wall clock, 0..999.
void seed();
/// Milliseconds before the first burst, below 1000 / density.
quint32 drawFirstWait(qint32 density);
/// Milliseconds before any later burst, below 1000.0 / timeConstant.
quint32 drawWait(double timeConstant);
/// Sets none to `density` levels fresh, which may hit one twice. There must be a level.
void burst(std::vector<qint32>& levels, qint32 density);
/// Lets every level fall by rate x elapsedMs / 10 in whole numbers, taken unsigned, down to 0.
void decay(std::vector<qint32>& levels, qint32 rate, qint64 elapsedMs);

} // namespace SparkleBursts
