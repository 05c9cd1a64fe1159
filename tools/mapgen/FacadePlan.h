#pragma once

#include <QImage>

/// Draws the facade at night with its lights off.
QImage facadePlan();
