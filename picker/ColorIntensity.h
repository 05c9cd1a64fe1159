#pragma once

class VelaColor;

namespace VelaColorPickerLib {

/// How bright a colour is driven, 0..1: the value of an RGB or HSV colour, Y of a Yxy colour, the
/// highest channel of an Nchannel colour; 0 for an invalid colour.
double intensityOf(const VelaColor& color);
/// `color` at `intensity` (limited to 0..1) with its hue and saturation, its chromaticity or the
/// proportions of its channels; spec, alpha and profile stay. From black that is a grey, or all
/// channels alike. An invalid colour gives a grey in RGB.
VelaColor withIntensity(const VelaColor& color, double intensity);

} // namespace VelaColorPickerLib
