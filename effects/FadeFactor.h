#pragma once

#include <algorithm>

/// What is left of a fade of `fadeMs` with `leftMs` to go: 1.0 at its start to 0.0 at its end.
/// Times with a fraction can give a little more than the whole, which no mix of colours takes, and
/// times from a file anything: the factor is held within 0..1, and is 1.0 where it is no number.
inline double fadeFactor(double leftMs, double fadeMs)
{
    return std::max(0.0, std::min(1.0, leftMs / fadeMs));
}
