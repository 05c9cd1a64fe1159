#pragma once

#include <QImage>

/// Draws the ring from the front, as it hangs over its square at night, with its lights off.
QImage ringPlan();
