#pragma once

#include <QColor>

class VelaColor;

/// The colour that stands for `color` on the screen: Rgb and Hsv as they are, alpha at 8 bits; Yxy
/// and Nchannel through the white chart; opaque black for an invalid colour.
QColor toDisplayQColor(const VelaColor& color);
