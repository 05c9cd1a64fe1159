#pragma once

#include "tools/mapgen/ShowEffect.h"

/// Writes a show as the program itself saves it: no declaration, one element a line, the effects
/// of a timeline by ascending priority.
class ShowWriter
{
public:
    /// The text of the show file of `root`, whose times are written as they stand.
    static QString text(const ShowEffect& root);
};
