#include "color/ColorProfile.h"
#include "color/ColorUtils.h"
#include "color/Numeric.h"
#include "color/VelaColor.h"

#include <algorithm>

namespace {

/// Fills `drives`; returns how many the colour has.
int readDrives(const VelaColor& color, double (&drives)[VelaColor::kMaxChannels])
{
    switch (color.spec()) {
    case VelaColor::Rgb:
    case VelaColor::Hsv:
        color.getRgbF(&drives[0], &drives[1], &drives[2]);
        return 3;
    case VelaColor::Nchannel: {
        double list[VelaColor::kMaxChannels + 1];
        color.channelsF(list);
        const double* const channels = list + 1;
        if (ColorUtils::channelCount(static_cast<int>(color.channelLayout())) == 2) {
            drives[0] = channels[0];
            drives[1] = 0.0; // such a fixture's profile has its second white in the third place
            drives[2] = channels[1];
            return 3;
        }
        std::copy(channels, channels + VelaColor::kMaxChannels, drives);
        return color.channelCount();
    }
    case VelaColor::Yxy:
    case VelaColor::Invalid:
        break;
    }
    return 0;
}

double linearDrive(double drive, int curveId)
{
    switch (curveId) {
    case 1:
        return ColorUtils::linearizeNormal(
            static_cast<quint16>(limitI32(drive * 65535.0, 0, 65535)));
    case 2:
        return ColorUtils::linearizeTungsten(
            static_cast<quint16>(limitI32(drive * 65535.0, 0, 65535)));
    default:
        return drive;
    }
}

} // namespace

void ColorUtils::channelDrivesToXyY(const VelaColor& color, const ColorProfile& profile, XyY* out,
                                    int curveId)
{
    *out = XyY();
    if (color.isBlack()) {
        return;
    }
    double drives[VelaColor::kMaxChannels] = {};
    const int count =
        std::min({readDrives(color, drives), profile.X.size(), profile.Y.size(), profile.Z.size()});
    double sumX = 0.0;
    double sumY = 0.0;
    double sumZ = 0.0;
    for (int i = 0; i < count; ++i) {
        const double drive = linearDrive(drives[i], curveId);
        sumX += drive * profile.X.at(i);
        sumY += drive * profile.Y.at(i);
        sumZ += drive * profile.Z.at(i);
        out->Y = std::max(out->Y, drive);
    }
    out->x = sumX / (sumX + sumY + sumZ); // 0/0, a NaN, where nothing adds up
    out->y = sumY / (sumX + sumY + sumZ);
}
