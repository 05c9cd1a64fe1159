#pragma once

#include <QImage>

/// Draws the bridge over its river at night with its lights off.
QImage bridgePlan();
