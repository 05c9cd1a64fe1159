#pragma once

#include <QColor>

namespace VelaColorPickerLib {

/// The white chart's screen colour of a temperature (kelvin) and tint at full brightness, both
/// limited to what the chart shows. Unlike WhiteChart::screenColor it remembers nothing, so that a
/// track may ask for thousands of whites.
QColor chartWhite(int cct, int tint);

} // namespace VelaColorPickerLib
