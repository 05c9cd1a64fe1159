#include "color/ColorUtils.h"
#include "color/VelaColor.h"

#include <QByteArray>
#include <QStringList>
#include <QVector>

#include <algorithm>

namespace {

constexpr int kLongestHexText = 17;

struct Rgba16
{
    int red = -1;
    int green = -1;
    int blue = -1;
    int alpha = -1;
};

int nibble(char c)
{
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    return -1;
}

/// Moves `digits` on by `width`. Negative where any of these characters is no hex digit.
int takeHexField(const char** digits, int width)
{
    int value = 0;
    for (int i = 0; i < width; ++i) {
        value = (value * 16) | nibble(*(*digits)++);
    }
    return width == 2 ? value * 257 : value;
}

/// False where `text` isn't of this kind. An odd number of digits is accepted and leaves every
/// component out of range.
bool parseHex(const QStringRef& text, Rgba16* out)
{
    if (text.size() > kLongestHexText || !text.startsWith(QLatin1Char('#'))) {
        return false;
    }
    const QByteArray latin1 = text.toLatin1();
    const char* digits = latin1.constData() + 1;
    const int count = latin1.size() - 1;
    *out = Rgba16();
    const bool hasAlpha = count == 8 || count == 16;
    if (!hasAlpha && count != 6 && count != 12) {
        return true;
    }
    const int width = count <= 8 ? 2 : 4;
    out->alpha = hasAlpha ? takeHexField(&digits, width) : 65535;
    out->red = takeHexField(&digits, width);
    out->green = takeHexField(&digits, width);
    out->blue = takeHexField(&digits, width);
    return true;
}

} // namespace

QString VelaColor::toString() const
{
    const int layout = static_cast<int>(m_channelLayout);
    const int profile = static_cast<int>(m_profileId);
    switch (m_spec) {
    case Rgb:
    case Hsv: {
        const VelaColor rgb = toRgb(true);
        return QString::asprintf("aRgb;%d;%d;#%04x%04x%04x%04x", layout, profile,
                                 static_cast<uint>(alpha16()), static_cast<uint>(rgb.red16()),
                                 static_cast<uint>(rgb.green16()), static_cast<uint>(rgb.blue16()));
    }
    case Yxy:
        return QString::asprintf("aYxy;%d;%d;%u;%f;%f;%f", layout, profile, m_alpha >> 16U,
                                 m_form.yxy.capY, m_form.yxy.x, m_form.yxy.y);
    case Nchannel: {
        QString text = QString::asprintf("aNchannel;%d;%d;%u", layout, profile, m_alpha >> 16U);
        for (int i = 0; i < channelCount(); ++i) {
            text += QString::asprintf(";%u", channel32(i) >> 16U);
        }
        return text + QString::asprintf(";%u;%u", m_form.nchannel.fromYxy, m_tintweave ? 1U : 0U);
    }
    case Invalid:
        break;
    }
    return QString();
}

QString VelaColor::name() const
{
    const VelaColor rgb = toRgb(true);
    return QString::asprintf("#%02x%02x%02x", static_cast<uint>(rgb.red8()),
                             static_cast<uint>(rgb.green8()), static_cast<uint>(rgb.blue8()));
}

QString VelaColor::channelsText() const
{
    QString text = QString::number(alpha8());
    for (int i = 0; i < channelCount(); ++i) {
        text += QLatin1Char(',') + QString::number(channel32(i) >> 24U);
    }
    if (m_tintweave) {
        text += QLatin1String(" Tintweave");
    }
    return text;
}

void VelaColor::setNamedColor(const QString& text)
{
    if (text.isEmpty()) {
        reset();
        return;
    }
    if (text.contains(QLatin1Char(';')) && readFields(text)) {
        return;
    }
    if (text.startsWith(QLatin1Char('#'))) {
        Rgba16 hex;
        if (parseHex(QStringRef(&text), &hex)) {
            setRgb16(hex.red, hex.green, hex.blue, hex.alpha);
        } else {
            reset();
        }
        return;
    }
    if (QColor::isValidColor(text)) { // asked first: setting it would log a line of its own
        const QColor color(text);
        setRgb8(color.red(), color.green(), color.blue(), color.alpha());
        return;
    }
    qWarning("VelaColor::setNamedColor: Unknown color name '%s'",
             text.left(100).toLatin1().constData());
    reset();
}

/// The forms with ";". False where the text has to be read as a plain name after all.
bool VelaColor::readFields(const QString& text)
{
    const QVector<QStringRef> fields = text.splitRef(QLatin1Char(';'));
    const int count = fields.size();
    if (count < 4) {
        reset();
        return true;
    }
    m_channelLayout = static_cast<quint32>(fields[1].toInt());
    m_profileId = static_cast<quint32>(fields[2].toInt());

    if (fields[0] == QLatin1String("aRgb")) {
        if (count == 4 && !fields[3].startsWith(QLatin1Char('#'))) {
            return false;
        }
        Rgba16 hex;
        if (count == 4 && parseHex(fields[3], &hex)) {
            setRgb16(hex.red, hex.green, hex.blue, hex.alpha); // layout and profile read are lost
        } else {
            reset();
        }
        return true;
    }
    if (fields[0] == QLatin1String("aYxy")) {
        if (count == 7) {
            setYxy(fields[4].toDouble(), fields[5].toDouble(), fields[6].toDouble(),
                   fields[3].toUInt()); // the layout read stays, the profile is lost
        } else {
            reset();
        }
        return true;
    }
    if (fields[0] == QLatin1String("aNchannel")) {
        const int channels = ColorUtils::channelCount(static_cast<int>(m_channelLayout));
        const auto field = [&fields](int i) { return fields.value(i).toUInt(); };
        quint32 components[kMaxChannels + 1];
        for (int i = 0; i <= channels; ++i) {
            components[i] = widen16(field(3 + i));
        }
        storeChannels(components, channels + 1, field(3) < 65536, m_channelLayout, m_profileId,
                      true);
        if (count >= channels + 5) {
            setFromYxy(field(channels + 4));
        }
        if (count >= channels + 6) {
            m_tintweave = field(channels + 5) != 0;
        }
        return true;
    }
    return false;
}
