#include "picker/ColorIntensity.h"

#include "color/VelaColor.h"

#include <QList>

#include <algorithm>

namespace VelaColorPickerLib {

namespace {

VelaColor scaledChannels(const VelaColor& color, double intensity)
{
    QList<double> levels; // alpha first
    quint32 layout = 0;
    quint32 profile = 0;
    bool tintweave = false;
    color.channelsF(&levels, &layout, &profile, &tintweave);
    const double highest = intensityOf(color);
    for (int i = 1; i < levels.size(); ++i) {
        levels[i] = highest > 0.0 ? std::min(1.0, levels[i] / highest * intensity) : intensity;
    }
    VelaColor scaled = color;
    scaled.setNchannelF(levels, layout, profile, tintweave);
    scaled.setFromYxy(color.fromYxy());
    scaled.setAlpha32(color.alpha32());
    return scaled;
}

} // namespace

double intensityOf(const VelaColor& color)
{
    switch (color.spec()) {
    case VelaColor::Rgb:
    case VelaColor::Hsv:
        return color.valueF();
    case VelaColor::Yxy:
        return std::clamp(color.capY(), 0.0, 1.0);
    case VelaColor::Nchannel: {
        quint32 highest = 0;
        for (int i = 0; i < color.channelCount(); ++i) {
            highest = std::max(highest, color.channel32(i));
        }
        return static_cast<double>(highest) / 4294967295.0;
    }
    case VelaColor::Invalid:
        break;
    }
    return 0.0;
}

VelaColor withIntensity(const VelaColor& color, double intensity)
{
    intensity = intensity > 0.0 ? std::min(intensity, 1.0) : 0.0; // NaN too
    if (color.spec() == VelaColor::Yxy) {
        VelaColor scaled = color;
        scaled.setCapY(intensity);
        return scaled;
    }
    if (color.spec() == VelaColor::Nchannel) {
        return scaledChannels(color, intensity);
    }
    double hue = -1.0;
    double saturation = 0.0;
    double value = 0.0;
    color.getHsvF(&hue, &saturation, &value);
    VelaColor scaled = color;
    scaled.setHsvF(std::max(hue, 0.0), saturation, intensity, 1.0,
                   static_cast<int>(color.profileId()));
    if (color.spec() != VelaColor::Hsv) {
        scaled = scaled.toRgb(false);
        scaled.setTintweave(color.tintweave());
    }
    scaled.setAlpha32(color.alpha32());
    return scaled;
}

} // namespace VelaColorPickerLib
