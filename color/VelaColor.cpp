#include "color/VelaColor.h"

#include "color/Numeric.h"

#include <QtDebug>

#include <algorithm>

namespace {

bool isByte(int v)
{
    return v >= 0 && v <= 255;
}

bool isWord(int v)
{
    return v >= 0 && v <= 65535;
}

bool isHueF(double v)
{
    return isUnit(v) || v == -1.0;
}

quint32 byteToComponent(int v)
{
    return widen8(static_cast<quint32>(v));
}

quint32 wordToComponent(int v)
{
    return widen16(static_cast<quint32>(v));
}

} // namespace

VelaColor::VelaColor(const QColor& color)
    : m_tintweave(false)
{
    setRgb8(color.red(), color.green(), color.blue(), color.alpha());
}

VelaColor::VelaColor(const QString& text)
    : m_tintweave(false)
{
    setNamedColor(text);
}

VelaColor::VelaColor(QRgb rgb)
    : m_tintweave(false)
{
    m_spec = Rgb;
    storeRgb(((rgb >> 16U) & 0xFFU) * 0x01010101U, ((rgb >> 8U) & 0xFFU) * 0x01010101U,
             (rgb & 0xFFU) * 0x01010101U);
}

VelaColor::VelaColor(int red16, int green16, int blue16, int alpha16)
    : m_tintweave(false)
{
    setRgb16(red16, green16, blue16, alpha16);
}

VelaColor::VelaColor(double x, double y)
    : m_tintweave(false)
{
    setYxyF(1.0, x, y);
}

VelaColor::VelaColor(Qt::GlobalColor color)
    : VelaColor(QColor(color))
{}

void VelaColor::storeRgb(quint32 red, quint32 green, quint32 blue)
{
    m_form = Form{};
    m_form.rgb = {red, green, blue};
}

void VelaColor::storeHsv(qint32 hue, quint32 saturation, quint32 value)
{
    m_form = Form{};
    m_form.hsv = {hue, saturation, value};
}

void VelaColor::storeYxy(double capY, double x, double y)
{
    m_form = Form{};
    m_form.yxy = {capY, x, y};
}

void VelaColor::setRgb8(int red, int green, int blue, int alpha, int profile)
{
    if (!isByte(red) || !isByte(green) || !isByte(blue) || !isByte(alpha)) {
        qWarning("VelaColor::setRgb8: RGB parameters out of range");
        reset();
        return;
    }
    m_spec = Rgb;
    m_channelLayout = 1;
    m_profileId = static_cast<quint32>(profile);
    m_alpha = byteToComponent(alpha);
    storeRgb(byteToComponent(red), byteToComponent(green), byteToComponent(blue));
}

void VelaColor::setRgb16(int red, int green, int blue, int alpha, int profile)
{
    if (!isWord(red) || !isWord(green) || !isWord(blue) || !isWord(alpha)) {
        qWarning("VelaColor::setRgb16: RGB parameters out of range");
        reset();
        return;
    }
    m_spec = Rgb;
    m_channelLayout = 1;
    m_profileId = static_cast<quint32>(profile);
    m_alpha = wordToComponent(alpha);
    storeRgb(wordToComponent(red), wordToComponent(green), wordToComponent(blue));
}

void VelaColor::setHsv8(int hue, int saturation, int value, int alpha, int profile)
{
    if (hue < 0 || hue > 360 || !isByte(saturation) || !isByte(value) || !isByte(alpha)) {
        qWarning("VelaColor::setHsv8: HSV parameters out of range");
        reset();
        return;
    }
    m_spec = Hsv;
    m_channelLayout = 1;
    m_profileId = static_cast<quint32>(profile);
    m_alpha = byteToComponent(alpha);
    storeHsv((hue % 360) * 100, byteToComponent(saturation), byteToComponent(value));
}

void VelaColor::setHsv16(int hue, int saturation, int value, int alpha, int profile)
{
    if (hue >= 65536 || !isWord(saturation) || !isWord(value) || !isWord(alpha)) {
        qWarning("VelaColor::setHsv16: HSV parameters out of range");
        reset();
        return;
    }
    m_spec = Hsv;
    m_channelLayout = 1;
    m_profileId = static_cast<quint32>(profile);
    m_alpha = wordToComponent(alpha);
    storeHsv(hue == -1 ? kAchromatic : (hue % 360) * 100, wordToComponent(saturation),
             wordToComponent(value));
}

void VelaColor::setHsvF(double hue, double saturation, double value, double alpha, int profile)
{
    if (!isHueF(hue) || !isUnit(saturation) || !isUnit(value) || !isUnit(alpha)) {
        qWarning("VelaColor::setHsvF: HSV parameters out of range");
        reset();
        return;
    }
    m_spec = Hsv;
    m_channelLayout = 1;
    m_profileId = static_cast<quint32>(profile);
    m_alpha = widenF(alpha);
    // -1.0 is meant to land on the most negative integer here, not on kAchromatic.
    storeHsv(truncI32(hue == -1.0 ? kComponentMax : hue * 36000.0 + 0.5), widenF(saturation),
             widenF(value));
}

void VelaColor::setAlpha8(int alpha)
{
    if (!isByte(alpha)) {
        qWarning("VelaColor::setAlpha8: alpha parameter out of range");
        reset();
        return;
    }
    m_alpha = byteToComponent(alpha);
}

void VelaColor::setAlphaF(double alpha)
{
    if (!isUnit(alpha)) {
        reset();
        return;
    }
    m_alpha = widenF(alpha);
}

void VelaColor::storeChannels(const quint32* list, int size, bool accepted, quint32 layout,
                              quint32 profile, bool tintweave)
{
    if (accepted) {
        m_spec = Nchannel;
        m_channelLayout = layout;
        m_profileId = profile;
        m_tintweave = tintweave;
        m_alpha = list[0];
    } else {
        reset();
    }
    const int channels = std::min(size - 1, kMaxChannels);
    m_form = Form{};
    m_form.nchannel.channelCount = static_cast<quint32>(channels);
    std::copy(list + 1, list + 1 + channels, m_form.nchannel.channel);
}

void VelaColor::storeChannelsF(const double* list, int size, quint32 layout, quint32 profile,
                               bool tintweave)
{
    quint32 components[kMaxChannels + 1];
    const int used = std::min(size, kMaxChannels + 1);
    std::transform(list, list + used, components, widenF);
    storeChannels(components, used, isUnit(list[0]), layout, profile, tintweave);
}

void VelaColor::setNchannel8(const QList<int>& list, quint32 layout, quint32 profile,
                             bool tintweave)
{
    if (list.isEmpty()) {
        reset();
        return;
    }
    quint32 components[kMaxChannels + 1];
    const int used = std::min(list.size(), kMaxChannels + 1);
    std::transform(list.cbegin(), list.cbegin() + used, components, byteToComponent);
    storeChannels(components, used, true, layout, profile, tintweave);
}

void VelaColor::setNchannel16(const QList<quint32>& list, quint32 layout, quint32 profile,
                              bool tintweave)
{
    if (list.isEmpty()) {
        reset();
        return;
    }
    quint32 components[kMaxChannels + 1];
    const int used = std::min(list.size(), kMaxChannels + 1);
    std::transform(list.cbegin(), list.cbegin() + used, components, widen16);
    storeChannels(components, used, list.first() < 65536, layout, profile, tintweave);
}

void VelaColor::setNchannelF(const QList<double>& list, quint32 layout, quint32 profile,
                             bool tintweave)
{
    if (list.isEmpty()) {
        reset();
        return;
    }
    double values[kMaxChannels + 1];
    const int used = std::min(list.size(), kMaxChannels + 1);
    std::copy(list.cbegin(), list.cbegin() + used, values);
    storeChannelsF(values, used, layout, profile, tintweave);
}

quint32 VelaColor::fromYxy() const
{
    return m_spec == Nchannel ? m_form.nchannel.fromYxy : 0;
}

void VelaColor::setFromYxy(quint32 value)
{
    if (m_spec == Nchannel) {
        m_form.nchannel.fromYxy = value;
    }
}

int VelaColor::channelCount() const
{
    return m_spec == Nchannel ? static_cast<int>(m_form.nchannel.channelCount) : 0;
}

quint32 VelaColor::channel32(int index) const
{
    return index >= 0 && index < channelCount() ? m_form.nchannel.channel[index] : 0;
}

void VelaColor::setYxy(double capY, double x, double y, quint32 alpha16, int profile)
{
    if (alpha16 < 65536) {
        m_spec = Yxy;
        m_alpha = widen16(alpha16);
    } else {
        reset();
    }
    m_profileId = static_cast<quint32>(profile);
    storeYxy(capY, x, y);
}

void VelaColor::setYxyF(double capY, double x, double y, double alpha, int profile)
{
    if (!isUnit(alpha)) {
        reset();
        return;
    }
    m_spec = Yxy;
    m_alpha = widenF(alpha);
    m_profileId = static_cast<quint32>(profile);
    storeYxy(capY, x, y);
}

void VelaColor::setCapY(double v)
{
    if (!isUnit(v)) {
        reset();
        return;
    }
    const YxyForm old = readYxy();
    setYxyKeepingAlpha(v, old.x, old.y);
}

void VelaColor::setSmallX(double v)
{
    if (!isUnit(v)) {
        reset();
        return;
    }
    const YxyForm old = readYxy();
    setYxyKeepingAlpha(old.capY, v, old.y);
}

void VelaColor::setSmallY(double v)
{
    if (!isUnit(v)) {
        reset();
        return;
    }
    const YxyForm old = readYxy();
    setYxyKeepingAlpha(old.capY, old.x, v);
}

void VelaColor::setYxyKeepingAlpha(double capY, double x, double y)
{
    if (m_spec == Yxy) {
        storeYxy(capY, x, y);
    } else {
        setYxy(capY, x, y, m_alpha >> 16U, static_cast<int>(m_profileId));
    }
}

VelaColor VelaColor::fromRgb(int red, int green, int blue, int alpha, int profile)
{
    if (!isByte(red) || !isByte(green) || !isByte(blue) || !isByte(alpha)) {
        qWarning("VelaColor::fromRgb: RGB parameters out of range");
        return VelaColor();
    }
    VelaColor color;
    color.setRgb8(red, green, blue, alpha, profile);
    return color;
}

VelaColor VelaColor::fromRgbF(double red, double green, double blue, double alpha, int profile)
{
    if (!isUnit(red) || !isUnit(green) || !isUnit(blue) || !isUnit(alpha)) {
        qWarning("VelaColor::fromRgbF: RGB parameters out of range");
        return VelaColor();
    }
    VelaColor color;
    color.m_spec = Rgb;
    color.m_profileId = static_cast<quint32>(profile);
    color.m_alpha = widenF(alpha);
    color.storeRgb(widenF(red), widenF(green), widenF(blue));
    return color;
}

VelaColor VelaColor::fromHsv(int hue, int saturation, int value, int alpha, int profile)
{
    if (hue < -1 || hue >= 360 || !isByte(saturation) || !isByte(value) || !isByte(alpha)) {
        qWarning("VelaColor::fromHsv: HSV parameters out of range");
        return VelaColor();
    }
    VelaColor color;
    color.m_spec = Hsv;
    color.m_profileId = static_cast<quint32>(profile);
    color.m_alpha = byteToComponent(alpha);
    color.storeHsv(hue == -1 ? kAchromatic : hue * 100, byteToComponent(saturation),
                   byteToComponent(value));
    return color;
}

VelaColor VelaColor::fromHsvF(double hue, double saturation, double value, double alpha,
                              int profile)
{
    if (!isHueF(hue) || !isUnit(saturation) || !isUnit(value) || !isUnit(alpha)) {
        qWarning("VelaColor::fromHsvF: HSV parameters out of range");
        return VelaColor();
    }
    VelaColor color;
    color.m_spec = Hsv;
    color.m_profileId = static_cast<quint32>(profile);
    color.m_alpha = widenF(alpha);
    color.storeHsv(hue == -1.0 ? kAchromatic : truncI32(hue * 36000.0 + 0.5), widenF(saturation),
                   widenF(value));
    return color;
}

VelaColor VelaColor::fromNchannelF(const QList<double>& list, quint32 layout, quint32 profile,
                                   bool tintweave)
{
    VelaColor color;
    color.setNchannelF(list, layout, profile, tintweave);
    return color;
}
