#pragma once

#include <QColor>
#include <QImage>
#include <QSize>

/// The fields of hue, saturation and brightness, as plain 8-bit pictures. Conversion as of HSV by
/// A. R. Smith, "Color gamut transform pairs" (1978).
namespace VelaColorPickerLib {

/// The colour of a hue in turns, and saturation and brightness, each 0..1.
QColor hsbColor(double hue, double saturation, double brightness);
/// Hue 0..1 from left to right, saturation 0..1 from top to bottom, at a brightness of 0..1.
QImage spectrumImage(const QSize& size, double brightness);
/// Saturation 0..1 from left to right, brightness 1..0 from top to bottom.
QImage tintsAndShadesImage(const QSize& size, double hue);

} // namespace VelaColorPickerLib
