#include "color/ColorUtils.h"
#include "color/VelaColor.h"

namespace {

// What absolute colours are mixed in: the calibrated RGBW fixture, nominal primaries.
constexpr int kMixLayout = 3;
constexpr int kMixProfile = 6;
constexpr int kMixPrimarySet = 1;

int layoutChannels(const VelaColor& color)
{
    return ColorUtils::channelCount(static_cast<int>(color.channelLayout()));
}

} // namespace

/// Converts both to channels that can be mixed one by one; neither call is for two colours that
/// are both RGB-like.
void VelaColor::toCommonChannels(VelaColor* first, VelaColor* second)
{
    if (first->m_spec != Nchannel && second->m_spec != Nchannel) {
        *first = first->toNchannel(kMixLayout, kMixProfile, -1, kMixPrimarySet);
        *second = second->toNchannel(kMixLayout, kMixProfile, -1, kMixPrimarySet);
        return;
    }
    const auto follow = [](VelaColor* color, const VelaColor& other) {
        if (color->m_spec != Nchannel || layoutChannels(*color) < layoutChannels(other)) {
            *color =
                color->toNchannel(static_cast<int>(other.m_channelLayout),
                                  static_cast<int>(other.m_profileId), -1, other.ownPrimarySet());
        }
    };
    follow(first, *second);
    follow(second, *first);
}

VelaColor interpolate(const VelaColor& a, const VelaColor& b, double t)
{
    if (a.isRgbLike() && b.isRgbLike()) {
        const double aa = a.alphaF();
        const double ab = b.alphaF();
        const VelaColor::RgbForm first = a.readRgb();
        const VelaColor::RgbForm second = b.readRgb();
        if (t == 0.0) {
            return VelaColor::fromRgbF(componentF(first.red) * aa, componentF(first.green) * aa,
                                       componentF(first.blue) * aa, aa);
        }
        if (t == 1.0) {
            return VelaColor::fromRgbF(componentF(second.red) * ab, componentF(second.green) * ab,
                                       componentF(second.blue) * ab, ab);
        }
        const auto mix = [=](quint32 from, quint32 to) {
            return componentF(from) * (1.0 - t) * aa + componentF(to) * t * ab;
        };
        return VelaColor::fromRgbF(mix(first.red, second.red), mix(first.green, second.green),
                                   mix(first.blue, second.blue), (1.0 - t) * aa + t * ab);
    }

    VelaColor first = a;
    VelaColor second = b;
    VelaColor::toCommonChannels(&first, &second);
    const int channels = first.channelCount();
    if (channels != second.channelCount()) {
        return first;
    }
    double from[VelaColor::kMaxChannels + 1];
    double to[VelaColor::kMaxChannels + 1];
    double mixed[VelaColor::kMaxChannels + 1];
    first.channelsF(from);
    second.channelsF(to);
    const double aa = from[0];
    const double ab = to[0];
    if (t == 0.0) {
        mixed[0] = aa;
    } else if (t == 1.0) {
        mixed[0] = ab;
    } else {
        mixed[0] = (1.0 - t) * aa + t * ab;
    }
    for (int i = 1; i <= channels; ++i) {
        if (t == 0.0) {
            mixed[i] = from[i] * aa;
        } else if (t == 1.0) {
            mixed[i] = to[i] * ab;
        } else {
            mixed[i] = (1.0 - t) * from[i] * aa + t * to[i] * ab;
        }
    }
    const VelaColor& like = t <= 1.0 - t ? first : second;
    VelaColor result;
    result.storeChannelsF(mixed, channels + 1, like.m_channelLayout, like.m_profileId,
                          like.m_tintweave);
    return result;
}

VelaColor composite(const VelaColor& top, const VelaColor& bottom)
{
    if (top.m_alpha == 0xFFFFFFFFU) {
        return top;
    }
    if (top.m_alpha == 0) {
        return bottom;
    }
    const double at = top.alphaF();
    const double rest = 1.0 - at;
    if (top.isRgbLike() && bottom.isRgbLike()) {
        const VelaColor::RgbForm over = top.readRgb();
        const VelaColor::RgbForm under = bottom.readRgb();
        // Two shares that add up to one, each rounded: no mix of components gets above one.
        VelaColor result;
        result.m_spec = VelaColor::Rgb;
        result.m_alpha = widenUnit(bottom.alphaF() * rest + at);
        result.m_form.rgb = {
            widenUnit(componentF(under.red) * rest + componentF(over.red) * at),
            widenUnit(componentF(under.green) * rest + componentF(over.green) * at),
            widenUnit(componentF(under.blue) * rest + componentF(over.blue) * at)};
        return result;
    }

    VelaColor first = top;
    VelaColor second = bottom;
    VelaColor::toCommonChannels(&first, &second);
    double over[VelaColor::kMaxChannels + 1];
    double under[VelaColor::kMaxChannels + 1];
    double mixed[VelaColor::kMaxChannels + 1];
    first.channelsF(over);
    second.channelsF(under);
    const int channels = first.channelCount();
    const bool isAlike = channels == second.channelCount();
    mixed[0] = isAlike ? rest * under[0] + at : at;
    for (int i = 1; i <= channels; ++i) {
        mixed[i] = isAlike ? rest * under[i] + at * over[i] : over[i] * at;
    }
    // The lesser share names the fixture here, unlike in interpolate.
    const VelaColor& like = !isAlike || rest > at ? first : second;
    VelaColor result;
    result.storeChannelsF(mixed, channels + 1, like.m_channelLayout, like.m_profileId,
                          like.m_tintweave);
    return result;
}
