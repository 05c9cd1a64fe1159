#include "color/ColorProfile.h"
#include "color/ColorUtils.h"
#include "color/FixtureTable.h"
#include "color/ModeTable.h"
#include "color/ProfileTable.h"
#include "color/VelaColor.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int kDriveCount = 16; // more than any layout has channels

enum Mode : int {
    SingleChannel = 9,
    NominalRgba = 14,
    NominalRgbw = 15,
    Crest2 = 16,
    Dune3 = 18,
    Dune2 = 19,
    Crest2Swapped = 20,
    Crest4 = 22
};

int knownProfile(int profileId)
{
    return profileId >= 0 && profileId < FixtureTable::kProfileCount ? profileId : 0;
}

bool isRgbOrHsv(const VelaColor& color)
{
    return color.spec() == VelaColor::Rgb || color.spec() == VelaColor::Hsv;
}

/// Whether the fixture takes the colour's own components as they are.
bool isDirect(const VelaColor& color, bool tintweave, int profileId, const ModeRecord& mode)
{
    if (color.spec() == VelaColor::Nchannel) {
        return mode.sameInOut && static_cast<quint32>(profileId) == color.profileId();
    }
    if (isRgbOrHsv(color)) {
        return mode.rgbIn || (mode.sameInOut && tintweave);
    }
    return false;
}

/// Integer luma of 8-bit components, 0..255.
int gray8(const VelaColor& rgb)
{
    return (11 * rgb.red8() + 16 * rgb.green8() + 5 * rgb.blue8()) / 32;
}

void copyChannels(const VelaColor& color, int channelCount, double* drives)
{
    double list[VelaColor::kMaxChannels + 1]; // alpha first
    color.channelsF(list);
    std::copy_n(list + 1, std::min(channelCount, VelaColor::kMaxChannels), drives);
}

void grayDrives(const VelaColor& color, int mode, double* drives)
{
    const double gray = gray8(color.toRgb(true)) / 255.0;
    drives[0] = gray;
    if (mode == Dune3 || mode == Dune2) {
        drives[1] = gray;
    }
    if (mode == Dune3) {
        drives[2] = gray;
    }
}

/// Warm and cool by the colour's place along the white locus.
void warmCoolDrives(const VelaColor& color, double* drives)
{
    const double x = color.smallX();
    double warm = 1.0;
    double cool = 1.0;
    if (x > 0.45766) {
        cool = 0.0;
    } else if (x < 0.3123) {
        warm = 0.0;
    } else if (x > 0.38177) {
        cool = (0.45766 - x) / 0.07589;
    } else {
        warm = (x - 0.3123) / 0.06947;
    }
    const VelaColor rgb = color.toRgb(true);
    drives[0] = rgb.red8() / 255.0 * warm;
    drives[1] = rgb.blue8() / 255.0 * cool;
}

void twoWhiteDrives(const VelaColor& color, bool direct, int channelCount, int mode, double* drives)
{
    if (direct && color.spec() == VelaColor::Nchannel) {
        copyChannels(color, channelCount, drives);
    } else if (direct) {
        color.getRgbF(&drives[0], &drives[1], &drives[2]);
    } else if (isRgbOrHsv(color)) {
        const VelaColor rgb = color.toRgb(true);
        const int half = rgb.green8() / 2;
        drives[0] = std::max(rgb.red8(), half) / 255.0;
        drives[1] = std::max(rgb.blue8(), half) / 255.0;
    } else {
        warmCoolDrives(color, drives);
    }
    if (mode == Crest2Swapped) {
        std::swap(drives[0], drives[1]);
    }
}

/// The two whites next to the colour's temperature; halfway between them both are full.
void fourWhiteDrives(const VelaColor& color, double* drives)
{
    constexpr int kLamps = 4;
    constexpr int kKelvin[kLamps] = {2200, 3000, 4000, 6500};
    VelaColor source = color;
    if (isRgbOrHsv(color)) {
        const int gray = gray8(color.toRgb(true));
        source.setRgb8(gray, gray, gray, color.alpha8(), static_cast<int>(color.profileId()));
    }
    const VelaColor xyY = source.toYxy(0, -1, -1);
    int t = 0;
    int tint = 0;
    ColorUtils::xyToCctTint(xyY.smallX(), xyY.smallY(), &t, &tint);

    const int above = static_cast<int>(std::upper_bound(kKelvin, kKelvin + kLamps, t) - kKelvin);
    const int lo = std::max(above - 1, 0);
    const int hi = std::min(above, kLamps - 1);
    drives[lo] = 1.0;
    drives[hi] = 1.0;
    if (lo == hi) {
        drives[lo] *= xyY.capY();
        return;
    }
    const int half = (kKelvin[hi] - kKelvin[lo]) / 2;
    const int middle = kKelvin[lo] + half;
    const auto fraction = [half](int kelvin) {
        return static_cast<double>(static_cast<float>(kelvin) / static_cast<float>(half));
    };
    if (t < middle) {
        drives[hi] = fraction(t - kKelvin[lo]);
    } else if (t > middle) {
        drives[lo] = fraction(kKelvin[hi] - t);
    }
    drives[lo] *= xyY.capY();
    drives[hi] *= xyY.capY();
}

/// Pulls a mix towards one pure emitter where the target is close to a primary of Generic RGB,
/// whatever the fixture.
void snapToPrimary(const ColorUtils::XyY& target, int channels, double* drives)
{
    constexpr double kReach = 0.05; // in u'v'
    constexpr double kSquaredReach = 0.0025;
    const QPointF uv = ColorUtils::xyToUv(target.x, target.y);
    int primary = 0;
    for (const QPointF& generic : ProfileTable::instance().genericPrimariesUv()) {
        const QPointF way = uv - generic;
        const double squared = QPointF::dotProduct(way, way);
        if (squared < kSquaredReach) {
            const double w = std::sqrt(squared) / kReach;
            for (int k = 0; k < channels; ++k) {
                drives[k] *= w;
            }
            drives[primary] += target.Y * (1.0 - w);
            return;
        }
        ++primary;
    }
}

void solvedDrives(const VelaColor& color, bool tintweave, int profileId, const ModeRecord& mode,
                  double* drives)
{
    const bool nominal = mode.id == NominalRgba || mode.id == NominalRgbw || !tintweave;
    const int primarySet = nominal ? 1 : 0;
    ColorUtils::XyY target;
    if (color.spec() == VelaColor::Yxy) {
        target = {color.capY(), color.smallX(), color.smallY()};
    } else {
        // An id beyond the table would enter a record of its own; id 0 has the same values.
        const int own = knownProfile(static_cast<int>(color.profileId()));
        const ColorProfile* const record = ProfileTable::instance().profile(
            own, static_cast<int>(color.channelLayout()), primarySet);
        ColorUtils::channelDrivesToXyY(color, *record, &target, ColorUtils::curveOfProfile(own));
    }
    ColorUtils::solve(target, drives, mode.layout, profileId, true, primarySet);
    snapToPrimary(target, ColorUtils::channelCount(mode.layout), drives);
}

} // namespace

void ColorUtils::mapToChannels(const VelaColor& color, bool tintweave, int channelCount,
                               int byteWidth, quint8* out, int curveDirect, int curveSolved,
                               TintweaveProfileID profileId, int mode)
{
    const ModeRecord& record = ModeTable::instance().mode(mode);
    const int profile = knownProfile(profileId);
    const bool direct = isDirect(color, tintweave, profile, record);
    const bool isYxy = color.spec() == VelaColor::Yxy;
    bool solved = false;

    double drives[kDriveCount] = {};
    switch (record.id) {
    case SingleChannel:
    case Dune3:
    case Dune2:
        grayDrives(color, record.id, drives);
        break;
    case Crest2:
    case Crest2Swapped:
        twoWhiteDrives(color, direct, channelCount, record.id, drives);
        break;
    default:
        if (record.id == Crest4 && !direct) {
            fourWhiteDrives(color, drives);
        } else if (direct && color.spec() == VelaColor::Nchannel) {
            copyChannels(color, channelCount, drives);
        } else if (direct && !tintweave) {
            color.getRgbF(&drives[0], &drives[1], &drives[2]);
        } else {
            solvedDrives(color, tintweave, profile, record, drives);
            solved = !isYxy;
        }
        break;
    }

    const bool formula = isYxy || solved;
    const int curveId = formula ? curveSolved : curveDirect;
    const int kind = formula ? QuantizeFormula : QuantizeTables;
    const int first = std::min(channelCount, kDriveCount);
    writeChannels(first, byteWidth, drives, out, curveId, kind, tintweave);
    for (int done = first; done < channelCount; ++done) { // further channels are dark
        const double dark = 0.0;
        writeChannels(1, byteWidth, &dark, out + done * byteWidth, curveId, kind, tintweave);
    }
}
