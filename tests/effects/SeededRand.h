#pragma once

#include <cstdlib>

// Effects seed rand() with the wall clock. Here every such seed is noted, and a fixed one taken,
// so that a test knows what is drawn next. For the one source file of a test program.

namespace {

constexpr unsigned int kSeed = 4711;
int seedings = 0;
unsigned int lastSeed = 0;

/// Starts the numbers anew, as an effect's seeding does.
void reseed(unsigned int seed = kSeed)
{
    srandom(seed); // rand() draws from the same state
}

} // namespace

extern "C" void srand(unsigned int seed) noexcept
{
    ++seedings;
    lastSeed = seed;
    reseed();
}
