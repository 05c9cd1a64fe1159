#pragma once

#include "tools/mapgen/Example.h"

/// A ring of 252 RGB lights, a sculpture, on two controllers of two ports.
Example ringExample();
