#pragma once

#include "tools/mapgen/FacadeShow.h"

/// A minute and a half in which every type of effect has its place.
ShowEffect facadeRevue(const FacadeGroups& groups);
