#pragma once

class Light;

/// The array form of a group that effects walk: a row is one step in time, a column one light of
/// that step. An entry of a row may be null; a row without lights has count 0 and may be null.
/// Owned, with its arrays, by the group that built it.
struct GroupLayout
{
    int rows = 0;
    int total = 0; // sum of the counts
    int* counts = nullptr;
    Light*** lights = nullptr;
};
