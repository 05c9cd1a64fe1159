#pragma once

#include "tools/mapgen/Example.h"

/// The example "mixed": a bridge lit by fixtures of ten kinds on controllers of three.
Example bridgeExample();
