#pragma once

#include "tools/mapgen/Example.h"

/// A facade of 504 RGB lights, one in each window, on two controllers of four ports.
Example facadeExample();
