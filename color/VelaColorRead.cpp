#include "color/Numeric.h"
#include "color/VelaColor.h"

#include <QtDebug>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

int topByte(quint32 v)
{
    return static_cast<int>(v >> 24U);
}

int topWord(quint32 v)
{
    return static_cast<int>(v >> 16U);
}

double hueToF(qint32 hue) // -1 for achromatic
{
    return hue == -1 ? -1.0 : hue / 36000.0;
}

quint32 lowByte(double v)
{
    return static_cast<quint32>(limitI32(v, std::numeric_limits<qint32>::min(),
                                         std::numeric_limits<qint32>::max())) &
           0xFFU;
}

template <typename T>
void setUnlessNull(T* target, T value)
{
    if (target != nullptr) {
        *target = value;
    }
}

} // namespace

VelaColor::RgbForm VelaColor::readRgb() const
{
    return m_spec == Rgb || m_spec == Invalid ? m_form.rgb : toRgb(true).m_form.rgb;
}

VelaColor::HsvForm VelaColor::readHsv() const
{
    return m_spec == Hsv || m_spec == Invalid ? m_form.hsv : toHsv().m_form.hsv;
}

VelaColor::YxyForm VelaColor::readYxy() const
{
    return holdsYxy() ? m_form.yxy : toYxy(0, -1, -1).m_form.yxy;
}

int VelaColor::red8() const
{
    return topByte(readRgb().red);
}

int VelaColor::green8() const
{
    return topByte(readRgb().green);
}

int VelaColor::blue8() const
{
    return topByte(readRgb().blue);
}

int VelaColor::red16() const
{
    return topWord(readRgb().red);
}

int VelaColor::green16() const
{
    return topWord(readRgb().green);
}

int VelaColor::blue16() const
{
    return topWord(readRgb().blue);
}

double VelaColor::redF() const
{
    return componentF(readRgb().red);
}

double VelaColor::greenF() const
{
    return componentF(readRgb().green);
}

double VelaColor::blueF() const
{
    return componentF(readRgb().blue);
}

int VelaColor::hue8() const
{
    const qint32 hue = readHsv().hue;
    if (hue == kAchromatic) {
        return -1;
    }
    return std::min(static_cast<int>(std::round(hue / 100.0)), 359);
}

double VelaColor::hueF() const
{
    return hueToF(readHsv().hue);
}

int VelaColor::saturation8() const
{
    return topByte(readHsv().saturation);
}

double VelaColor::saturationF() const
{
    return componentF(readHsv().saturation);
}

int VelaColor::value8() const
{
    return topByte(readHsv().value);
}

double VelaColor::valueF() const
{
    return componentF(readHsv().value);
}

void VelaColor::getHsv16(int* hue, int* saturation, int* value, int* alpha) const
{
    if (hue == nullptr || saturation == nullptr || value == nullptr) {
        return;
    }
    const HsvForm form = readHsv();
    *hue = form.hue == kAchromatic ? -1 : form.hue / 100;
    *saturation = topWord(form.saturation);
    *value = topWord(form.value);
    setUnlessNull(alpha, alpha16());
}

void VelaColor::getHsvF(double* hue, double* saturation, double* value, double* alpha) const
{
    if (hue == nullptr || saturation == nullptr || value == nullptr) {
        return;
    }
    const HsvForm form = readHsv();
    *hue = hueToF(form.hue);
    *saturation = componentF(form.saturation);
    *value = componentF(form.value);
    setUnlessNull(alpha, alphaF());
}

void VelaColor::getRgbF(double* red, double* green, double* blue, double* alpha) const
{
    if (red == nullptr || green == nullptr || blue == nullptr) {
        return;
    }
    const RgbForm form = readRgb();
    *red = componentF(form.red);
    *green = componentF(form.green);
    *blue = componentF(form.blue);
    setUnlessNull(alpha, alphaF());
}

void VelaColor::channels8(QList<int>* list, quint32* layout, quint32* profile,
                          bool* tintweave) const
{
    *list = {alpha8()};
    for (int i = 0; i < channelCount(); ++i) {
        list->append(topByte(channel32(i)));
    }
    readChannelAttributes(layout, profile, tintweave);
}

void VelaColor::channels16(QList<quint32>* list, quint32* layout, quint32* profile,
                           bool* tintweave) const
{
    *list = {m_alpha >> 16U};
    for (int i = 0; i < channelCount(); ++i) {
        list->append(channel32(i) >> 16U);
    }
    readChannelAttributes(layout, profile, tintweave);
}

void VelaColor::channelsF(QList<double>* list, quint32* layout, quint32* profile,
                          bool* tintweave) const
{
    *list = {alphaF()};
    for (int i = 0; i < channelCount(); ++i) {
        list->append(componentF(channel32(i)));
    }
    readChannelAttributes(layout, profile, tintweave);
}

void VelaColor::readChannelAttributes(quint32* layout, quint32* profile, bool* tintweave) const
{
    setUnlessNull(layout, m_channelLayout);
    setUnlessNull(profile, m_profileId);
    setUnlessNull(tintweave, m_tintweave);
}

void VelaColor::channelsF(double (&out)[kMaxChannels + 1]) const
{
    out[0] = alphaF();
    for (int i = 0; i < kMaxChannels; ++i) {
        out[i + 1] = componentF(channel32(i));
    }
}

bool VelaColor::isBlack() const
{
    switch (m_spec) {
    case Rgb:
        return m_form.rgb.red == 0 && m_form.rgb.green == 0 && m_form.rgb.blue == 0;
    case Hsv:
        return m_form.hsv.value == 0;
    case Yxy:
        return m_form.yxy.capY == 0.0;
    case Nchannel:
        return std::all_of(m_form.nchannel.channel,
                           m_form.nchannel.channel + m_form.nchannel.channelCount,
                           [](quint32 channel) { return channel == 0; });
    case Invalid:
        break;
    }
    return false;
}

QColor VelaColor::toQColor(bool clip) const
{
    const RgbForm form = toRgb(clip).m_form.rgb;
    return QColor(topByte(form.red), topByte(form.green), topByte(form.blue), alpha8());
}

uint qHash(const VelaColor& color, uint seed)
{
    const quint32 alpha = color.m_alpha & 0xFFU;
    switch (color.m_spec) {
    case VelaColor::Rgb: {
        const VelaColor::RgbForm& rgb = color.m_form.rgb;
        return (rgb.red << 24U | (rgb.green & 0xFFU) << 16U | (rgb.blue & 0xFFU) << 8U | alpha) ^
               seed;
    }
    case VelaColor::Hsv: {
        const VelaColor::HsvForm& hsv = color.m_form.hsv;
        return (static_cast<quint32>(hsv.hue) << 24U | (hsv.saturation & 0xFFU) << 16U |
                (hsv.value & 0xFFU) << 8U | alpha) ^
               seed;
    }
    case VelaColor::Yxy: {
        const VelaColor::YxyForm& yxy = color.m_form.yxy;
        return (lowByte(yxy.capY) << 24U | lowByte(yxy.x) << 16U | lowByte(yxy.y) << 8U | alpha) ^
               seed;
    }
    case VelaColor::Nchannel: {
        const VelaColor::NchannelForm& form = color.m_form.nchannel;
        const quint32 count = std::min(form.channelCount, 5U);
        quint32 hash = (alpha & 0xFU) << 4U | count;
        for (quint32 i = count; i > 0; --i) {
            hash = hash << 4U | (form.channel[i - 1] & 0xFU);
        }
        return hash ^ seed;
    }
    case VelaColor::Invalid:
        break;
    }
    qDebug("Hit Invalid case in VelaColor:qHash");
    return 0;
}
