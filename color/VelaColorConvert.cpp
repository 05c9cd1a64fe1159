#include "color/ColorUtils.h"
#include "color/Numeric.h"
#include "color/ProfileTable.h"
#include "color/VelaColor.h"

#include <algorithm>

VelaColor VelaColor::toRgb(bool clip) const
{
    switch (m_spec) {
    case Hsv:
        return hsvToRgb();
    case Yxy:
        return solvedToRgb(m_form.yxy, 0, clip, 0);
    case Nchannel:
        return solvedToRgb(toYxy(0, -1, -1).m_form.yxy,
                           m_tintweave ? 0 : static_cast<int>(m_profileId), clip, ownPrimarySet());
    case Rgb:
    case Invalid:
        break;
    }
    return *this;
}

VelaColor VelaColor::hsvToRgb() const
{
    VelaColor result;
    result.m_spec = Rgb;
    result.m_profileId = m_profileId;
    result.m_alpha = m_alpha;
    const HsvForm& hsv = m_form.hsv;
    if (hsv.saturation == 0) {
        result.m_form.rgb = {hsv.value, hsv.value, hsv.value};
        return result;
    }
    // Read as unsigned: of the negative hues only these two stand for a colour.
    const quint32 hue = static_cast<quint32>(hsv.hue);
    const bool isRed = hue == 0xFFFFFFFFU || hue == 0xFFFFFFFEU || hue == 36000;
    const double h = isRed ? 0.0 : hue / 6000.0;
    const int sector = truncI32(h);
    const double f = h - sector;
    const double s = componentF(hsv.saturation);
    const double v = componentF(hsv.value);
    const quint32 top = widenF(v);
    const quint32 p = widenF((1.0 - s) * v);
    const quint32 slope = widenF(sector % 2 != 0 ? (1.0 - f * s) * v : (1.0 - (1.0 - f) * s) * v);
    switch (sector) {
    case 0:
        result.m_form.rgb = {top, slope, p};
        break;
    case 1:
        result.m_form.rgb = {slope, top, p};
        break;
    case 2:
        result.m_form.rgb = {p, top, slope};
        break;
    case 3:
        result.m_form.rgb = {p, slope, top};
        break;
    case 4:
        result.m_form.rgb = {slope, p, top};
        break;
    case 5:
        result.m_form.rgb = {top, p, slope};
        break;
    default: // no hue of the circle: black
        break;
    }
    return result;
}

VelaColor VelaColor::solvedToRgb(const YxyForm& target, int profile, bool clip,
                                 int primarySet) const
{
    quint16 levels[kMaxChannels] = {};
    ColorUtils::solveToLevels({target.capY, target.x, target.y}, levels, 1, profile, 0, clip,
                              primarySet);
    VelaColor result;
    result.setRgb16(levels[0], levels[1], levels[2]);
    result.m_alpha = m_alpha;
    result.m_profileId = m_profileId;
    return result;
}

VelaColor VelaColor::toHsv() const
{
    if (m_spec == Hsv || m_spec == Invalid) {
        return *this;
    }
    const RgbForm rgb = readRgb();
    const double r = componentF(rgb.red);
    const double g = componentF(rgb.green);
    const double b = componentF(rgb.blue);
    const double max = std::max({r, g, b});
    const double delta = max - std::min({r, g, b});

    VelaColor result;
    result.m_spec = Hsv;
    result.m_profileId = m_profileId;
    result.m_alpha = m_alpha;
    result.m_form.hsv = {kAchromatic, 0, widenF(max)};
    if (qFuzzyCompare(delta + 1.0, 1.0)) {
        return result;
    }
    double hue = 0.0;
    if (qFuzzyCompare(r, max)) {
        hue = (g - b) / delta;
    } else if (qFuzzyCompare(g, max)) {
        hue = (b - r) / delta + 2.0;
    } else if (qFuzzyCompare(b, max)) {
        hue = (r - g) / delta + 4.0;
    }
    hue *= 60.0;
    if (hue < 0.0) {
        hue += 360.0;
    }
    result.m_form.hsv.hue = truncI32(hue * 100.0 + 0.5);
    result.m_form.hsv.saturation = widenF(delta / max);
    return result;
}

VelaColor::YxyForm VelaColor::drivesToYxy(int layout, int profile, int curve, int primarySet) const
{
    const ColorProfile* const record =
        ProfileTable::instance().profile(profile, layout, primarySet);
    ColorUtils::XyY xyY;
    ColorUtils::channelDrivesToXyY(*this, *record, &xyY, curve);
    return {xyY.Y, xyY.x, xyY.y};
}

VelaColor VelaColor::toYxy(int layout, int profile, int curve) const
{
    if (m_spec == Yxy || m_spec == Invalid) {
        return *this;
    }
    const int usedLayout = layout == 0 ? static_cast<int>(m_channelLayout) : layout;
    const int usedProfile = profile == -1 ? static_cast<int>(m_profileId) : profile;
    const int usedCurve = curve == -1 ? ColorUtils::curveOfProfile(usedProfile) : curve;
    const YxyForm form = m_spec == Hsv
                             ? hsvToRgb().drivesToYxy(usedLayout, usedProfile, usedCurve, 0)
                             : drivesToYxy(usedLayout, usedProfile, usedCurve, ownPrimarySet());
    VelaColor result;
    result.setYxyF(form.capY, form.x, form.y, alphaF(), usedProfile);
    result.m_channelLayout = static_cast<quint32>(usedLayout);
    return result;
}

VelaColor VelaColor::toNchannel(int layout, int profile, int curve, int primarySet) const
{
    const int ownProfile = static_cast<int>(m_profileId);
    const int ownLayout = static_cast<int>(m_channelLayout);
    if (m_spec == Nchannel && layout == ownLayout && profile == ownProfile &&
        primarySet == ownPrimarySet()) {
        return *this;
    }
    const int usedProfile = profile == -1 || profile == -2 ? ownProfile : profile;
    const int usedCurve = curve == -1 ? ColorUtils::curveOfProfile(usedProfile) : curve;
    const int ownCurve = ColorUtils::curveOfProfile(ownProfile);

    YxyForm target = {0.0, 0.0, 0.0};
    quint32 solvedFromYxy = 0;
    switch (m_spec) {
    case Yxy:
        target = m_form.yxy;
        solvedFromYxy = 1;
        break;
    case Nchannel:
        solvedFromYxy = m_form.nchannel.fromYxy;
        if (ownProfile != 0) {
            target = drivesToYxy(ownLayout, ownProfile, ownCurve, ownPrimarySet());
            break;
        }
        Q_FALLTHROUGH(); // the generic profile stands for no fixture: its RGB is what is meant
    case Hsv: {
        const VelaColor rgb = toRgb(true);
        target = rgb.drivesToYxy(static_cast<int>(rgb.m_channelLayout), ownProfile, ownCurve,
                                 primarySet);
        break;
    }
    case Rgb:
    case Invalid:
        target = drivesToYxy(ownLayout, ownProfile, ownCurve, primarySet);
        break;
    }

    quint16 levels[kMaxChannels] = {};
    ColorUtils::solveToLevels({target.capY, target.x, target.y}, levels, layout, usedProfile,
                              usedCurve, true, primarySet);
    quint32 components[kMaxChannels + 1] = {m_alpha};
    std::transform(levels, levels + kMaxChannels, components + 1, widen16);
    VelaColor result;
    result.storeChannels(components, 1 + ColorUtils::channelCount(layout), true,
                         static_cast<quint32>(layout), static_cast<quint32>(usedProfile),
                         primarySet == 0);
    result.m_form.nchannel.fromYxy = solvedFromYxy;
    return result;
}

VelaColor VelaColor::convertTo(quint32 spec, int layout, int profile, int primarySet) const
{
    switch (spec) {
    case Rgb:
        return toRgb(true);
    case Hsv:
        return toHsv();
    case Yxy:
        return toYxy(layout, profile, -1);
    case Nchannel:
        return toNchannel(layout, profile, -1, primarySet);
    default:
        return VelaColor();
    }
}
