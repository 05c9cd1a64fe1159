#pragma once

#include "map/Light.h"

/// Brings the light that comes a few places behind `end` into the cache: pictures give each light a
/// colour that it has not shown before.
inline void prefetchBehind(Light* const* lights, int count, int end)
{
    constexpr int kAhead = 8;
    if (end + kAhead < count) {
        Light::prefetchForChange(lights[end + kAhead]);
    }
}

/// Asks `at(i)` for each of `count` lights in order and calls `paint(value, first, n)` for each
/// stretch of neighbours of equal value: lights of one colour are painted together for less.
template <typename At, typename Paint>
void forEachRun(int count, At at, Paint paint)
{
    if (count <= 0) {
        return;
    }
    int first = 0;
    auto value = at(0);
    for (int i = 1; i < count; ++i) {
        const auto next = at(i);
        if (!(next == value)) {
            paint(value, first, i - first);
            value = next;
            first = i;
        }
    }
    paint(value, first, count - first);
}
