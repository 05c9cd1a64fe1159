#pragma once

#include "color/VelaColor.h"

#include <QImage>
#include <QSize>

namespace VelaColorPickerLib {

/// Hue, saturation and brightness of what a view shows, each 0..1.
struct Hsb
{
    double hue = 0.0;
    double saturation = 0.0;
    double brightness = 0.0;

    /// Takes those of a colour. What the colour does not tell stays: the hue of a grey, the
    /// saturation of black.
    void take(const VelaColor& color);
    /// Degrees, 0..359.
    int hueDegrees() const;
    /// 0..255
    int saturation8() const;
    int brightness8() const;
};

bool operator==(const Hsb& a, const Hsb& b);

/// Hue across, saturation down, at one brightness: each pixel as `VelaColor::toQColor` of its hue
/// and saturation, the outermost ones those of 0 and 1. `pixels` is the size of the image, of which
/// `ratio` make one of the widget.
QImage spectrumImage(const QSize& pixels, double ratio, double brightness);

/// Saturation across, brightness down from 1 to 0, of one hue.
QImage tintsAndShadesImage(const QSize& pixels, double ratio, double hue);

} // namespace VelaColorPickerLib
