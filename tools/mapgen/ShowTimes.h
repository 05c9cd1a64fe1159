#pragma once

#include "tools/mapgen/ShowEffect.h"

/// Works out `begin` and `end` of every effect of `timeline` from its rules, nested timelines
/// first, and of the timeline itself: 0 to the latest end. False when a link names no effect of
/// the same timeline, or links close on themselves; the times are then worth nothing.
[[nodiscard]] bool resolveTimes(ShowEffect* timeline);
