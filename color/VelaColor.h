#pragma once

#include "color/ColorScale.h"

#include <QColor>
#include <QList>
#include <QMetaType>
#include <QString>
#include <QtGlobal>

#include <type_traits>

/// The colour value of the whole program: RGB, HSV, CIE 1931 Yxy or the raw drive levels of a
/// fixture, each component 32 bits wide, together with the fixture profile it is expressed in.
/// Flat, compared exactly, passed by value. A failed setter leaves the invalid state.
class VelaColor
{
public:
    enum Spec : quint32 { Invalid = 0, Rgb = 1, Hsv = 2, Yxy = 3, Nchannel = 4 };
    static constexpr int kMaxChannels = 8;

    /// The invalid state: layout 1, profile 0, tintweave true, opaque.
    VelaColor() = default;
    /// The 8-bit components of `color`; tintweave false. (Implicit, as is every conversion that
    /// QColor has.)
    VelaColor(const QColor& color); // NOLINT(google-explicit-constructor): as QColor's
    /// Reads `text` by setNamedColor; tintweave false unless the text says otherwise.
    explicit VelaColor(const QString& text);
    /// 0xRRGGBB; the top byte is ignored, the colour is opaque; tintweave false.
    explicit VelaColor(QRgb rgb);
    /// 16-bit components, 0..65535; tintweave false.
    VelaColor(int red16, int green16, int blue16, int alpha16);
    /// CIE 1931 chromaticity at Y 1.0; tintweave false.
    VelaColor(double x, double y);
    VelaColor(Qt::GlobalColor color); // NOLINT(google-explicit-constructor): as QColor's

    Spec spec() const { return m_spec; }
    bool isValid() const { return m_spec != Invalid; }
    /// Channel layout id, 1..11 (see ColorUtils::channelCount); 1 is plain RGB. Any number that a
    /// text held is kept.
    quint32 channelLayout() const { return m_channelLayout; }
    /// Fixture profile id, 0..46; any number that a text held is kept.
    quint32 profileId() const { return m_profileId; }
    /// True: the calibrated primaries of the profile apply; false: the nominal ones.
    bool tintweave() const { return m_tintweave; }
    /// 0 is transparent, 0xFFFFFFFF opaque.
    quint32 alpha32() const { return m_alpha; }
    void setChannelLayout(quint32 layout) { m_channelLayout = layout; }
    void setProfileId(quint32 profile) { m_profileId = profile; }
    void setTintweave(bool on) { m_tintweave = on; }
    void setAlpha32(quint32 alpha) { m_alpha = alpha; }

    // Setters. Each writes spec, layout 1 and the profile, and leaves tintweave; out of range logs
    // a warning that names the setter and resets.
    /// Each component 0..255.
    void setRgb8(int red, int green, int blue, int alpha = 255, int profile = 0);
    /// Each component 0..65535.
    void setRgb16(int red, int green, int blue, int alpha = 65535, int profile = 0);
    /// Hue 0..360 in degrees (-1 is refused here), others 0..255.
    void setHsv8(int hue, int saturation, int value, int alpha = 255, int profile = 0);
    /// Hue in degrees below 65536, taken modulo 360, -1 for achromatic; others 0..65535.
    void setHsv16(int hue, int saturation, int value, int alpha = 65535, int profile = 0);
    /// Hue in turns 0..1, or -1.0; others 0..1.
    void setHsvF(double hue, double saturation, double value, double alpha = 1.0, int profile = 0);
    /// 0..255; out of range logs a warning and resets.
    void setAlpha8(int alpha);
    /// 0..1. Any other value, NaN included, resets the colour without a message.
    void setAlphaF(double alpha);

    // N-channel setters: element 0 of `list` is alpha, then at most 8 channels; silent. A bad
    // alpha resets, and the channels are written over the reset state all the same.
    void setNchannel8(const QList<int>& list, quint32 layout, quint32 profile, bool tintweave);
    void setNchannel16(const QList<quint32>& list, quint32 layout, quint32 profile, bool tintweave);
    void setNchannelF(const QList<double>& list, quint32 layout, quint32 profile, bool tintweave);
    /// 1 when solved from an absolute Yxy colour; 0 on a colour of another spec.
    quint32 fromYxy() const;
    /// Does nothing on a colour that is not Nchannel.
    void setFromYxy(quint32 value);
    /// Channels of an Nchannel colour, 0..8; 0 otherwise.
    int channelCount() const;
    /// Channel `index` of an Nchannel colour at full width; 0 beyond its channels or for others.
    quint32 channel32(int index) const;

    /// `capY` is a drive level 0..1, x and y CIE 1931 chromaticity; stored without a range test.
    /// Leaves the layout. An alpha of 65536 or more resets, after which profile and triple are
    /// still written.
    void setYxy(double capY, double x, double y, quint32 alpha16, int profile = 0);
    /// As setYxy with alpha 0..1; any other alpha resets and nothing survives.
    void setYxyF(double capY, double x, double y, double alpha = 1.0, int profile = 0);
    // 0..1, else the colour resets silently. A colour of another spec becomes Yxy first.
    void setCapY(double v);
    void setSmallX(double v);
    void setSmallY(double v);

    // Factories: tintweave true, layout 1; out of range logs a warning and gives the invalid state.
    static VelaColor fromRgb(int red, int green, int blue, int alpha = 255, int profile = 0);
    static VelaColor fromRgbF(double red, double green, double blue, double alpha = 1.0,
                              int profile = 0);
    /// Hue -1..359.
    static VelaColor fromHsv(int hue, int saturation, int value, int alpha = 255, int profile = 0);
    static VelaColor fromHsvF(double hue, double saturation, double value, double alpha = 1.0,
                              int profile = 0);
    static VelaColor fromNchannelF(const QList<double>& list, quint32 layout, quint32 profile,
                                   bool tintweave);

    // Readers. On a colour of another space they work on a conversion: read several components
    // from one conversion instead.
    int red8() const;
    int green8() const;
    int blue8() const;
    int alpha8() const { return static_cast<int>(m_alpha >> 24U); }
    int red16() const;
    int green16() const;
    int blue16() const;
    int alpha16() const { return static_cast<int>(m_alpha >> 16U); }
    double redF() const;
    double greenF() const;
    double blueF() const;
    double alphaF() const { return componentF(m_alpha); }
    /// Degrees 0..359, or -1.
    int hue8() const;
    /// Turns 0..1, or -1.0.
    double hueF() const;
    int saturation8() const;
    double saturationF() const;
    int value8() const;
    double valueF() const;
    double capY() const { return holdsYxy() ? m_form.yxy.capY : readYxy().capY; }
    double smallX() const { return holdsYxy() ? m_form.yxy.x : readYxy().x; }
    double smallY() const { return holdsYxy() ? m_form.yxy.y : readYxy().y; }
    /// A null among the first three does nothing at all; a null alpha is skipped.
    void getHsv16(int* hue, int* saturation, int* value, int* alpha = nullptr) const;
    void getHsvF(double* hue, double* saturation, double* value, double* alpha = nullptr) const;
    void getRgbF(double* red, double* green, double* blue, double* alpha = nullptr) const;
    // alpha, then the channels (alpha alone on a colour that is not Nchannel).
    void channels8(QList<int>* list, quint32* layout = nullptr, quint32* profile = nullptr,
                   bool* tintweave = nullptr) const;
    void channels16(QList<quint32>* list, quint32* layout = nullptr, quint32* profile = nullptr,
                    bool* tintweave = nullptr) const;
    void channelsF(QList<double>* list, quint32* layout = nullptr, quint32* profile = nullptr,
                   bool* tintweave = nullptr) const;
    /// `out` takes alpha and 8 channels, zero beyond the colour's own. Allocates nothing.
    void channelsF(double (&out)[kMaxChannels + 1]) const;
    bool isBlack() const;
    /// 8 bits per component; Yxy and Nchannel through toRgb with that clip flag.
    QColor toQColor(bool clip) const;

    // Conversions: a new value each; this colour stays.
    VelaColor toRgb(bool clip) const;
    VelaColor toHsv() const;
    /// Layout 0, profile -1 and curve -1 mean the colour's own.
    VelaColor toYxy(int layout, int profile, int curve) const;
    /// Profile -1 and -2 mean the colour's own, curve -1 that of the target profile; primarySet 0
    /// is calibrated, 1 nominal.
    VelaColor toNchannel(int layout, int profile, int curve, int primarySet) const;
    /// The invalid state for a spec of 0 or above 4.
    VelaColor convertTo(quint32 spec, int layout, int profile, int primarySet) const;

    /// The form of every file: "aRgb;...", "aYxy;...", "aNchannel;..."; empty when invalid.
    QString toString() const;
    /// "#rrggbb"
    QString name() const;
    /// "alpha,c0,c1..." at 8 bits, then " Tintweave" where that flag is set.
    QString channelsText() const;
    /// Reads any form that toString writes, "#" forms of 6, 8, 12 or 16 digits, and the web colour
    /// names. What does not parse resets; an unknown name logs a warning.
    void setNamedColor(const QString& text);

    /// Exact comparison; an invalid colour equals nothing, not even itself.
    bool operator==(const VelaColor& other) const;
    bool operator!=(const VelaColor& other) const { return !(*this == other); }

    /// To the invalid state.
    void reset() { *this = VelaColor(); }

    friend uint qHash(const VelaColor& color, uint seed);
    friend VelaColor interpolate(const VelaColor& a, const VelaColor& b, double t);
    friend VelaColor composite(const VelaColor& top, const VelaColor& bottom);

private:
    static constexpr qint32 kAchromatic = -1;

    struct RgbForm
    {
        quint32 red;
        quint32 green;
        quint32 blue;
    };
    struct HsvForm
    {
        qint32 hue; // hundredths of a degree, or kAchromatic
        quint32 saturation;
        quint32 value;
    };
    struct YxyForm
    {
        double capY;
        double x;
        double y;
    };
    struct NchannelForm
    {
        quint32 channelCount;
        quint32 fromYxy;
        quint32 channel[kMaxChannels];
    };
    union Form
    {
        NchannelForm nchannel; // first and widest: its zeros are everybody's
        RgbForm rgb;
        HsvForm hsv;
        YxyForm yxy;
    };

    /// Also true of the invalid colour: it reads as black.
    bool isRgbLike() const { return m_spec == Rgb || m_spec == Hsv || m_spec == Invalid; }
    int ownPrimarySet() const { return m_tintweave ? 0 : 1; }
    RgbForm readRgb() const;
    HsvForm readHsv() const;
    bool holdsYxy() const { return m_spec == Yxy || m_spec == Invalid; }
    YxyForm readYxy() const;
    void storeRgb(quint32 red, quint32 green, quint32 blue);
    void storeHsv(qint32 hue, quint32 saturation, quint32 value);
    void storeYxy(double capY, double x, double y);
    void setYxyKeepingAlpha(double capY, double x, double y);
    /// `size` counts alpha, the first of `list`. With `accepted` false the colour resets first and
    /// takes only the channels.
    void storeChannels(const quint32* list, int size, bool accepted, quint32 layout,
                       quint32 profile, bool tintweave);
    void storeChannelsF(const double* list, int size, quint32 layout, quint32 profile,
                        bool tintweave);
    VelaColor hsvToRgb() const;
    VelaColor solvedToRgb(const YxyForm& target, int profile, bool clip, int primarySet) const;
    YxyForm drivesToYxy(int layout, int profile, int curve, int primarySet) const;
    void readChannelAttributes(quint32* layout, quint32* profile, bool* tintweave) const;
    bool readFields(const QString& text);
    static void toCommonChannels(VelaColor* first, VelaColor* second);

    quint32 m_channelLayout = 1;
    quint32 m_profileId = 0;
    bool m_tintweave = true;
    Spec m_spec = Invalid;
    quint32 m_alpha = 0xFFFFFFFFU;
    Form m_form = {{0, 0, {0, 0, 0, 0, 0, 0, 0, 0}}};
};
static_assert(std::is_trivially_copyable<VelaColor>::value, "frames copy colours by the thousand");
static_assert(sizeof(VelaColor) == 64, "one cache line");

inline bool VelaColor::operator==(const VelaColor& other) const
{
    if (m_spec != other.m_spec || m_profileId != other.m_profileId ||
        m_channelLayout != other.m_channelLayout || m_tintweave != other.m_tintweave ||
        m_alpha != other.m_alpha) {
        return false;
    }
    switch (m_spec) {
    case Rgb:
        return m_form.rgb.red == other.m_form.rgb.red &&
               m_form.rgb.green == other.m_form.rgb.green &&
               m_form.rgb.blue == other.m_form.rgb.blue;
    case Hsv:
        return m_form.hsv.hue == other.m_form.hsv.hue &&
               m_form.hsv.saturation == other.m_form.hsv.saturation &&
               m_form.hsv.value == other.m_form.hsv.value;
    case Yxy: // exact, so that NaN equals nothing
        return m_form.yxy.capY == other.m_form.yxy.capY && m_form.yxy.y == other.m_form.yxy.y &&
               m_form.yxy.x == other.m_form.yxy.x;
    case Nchannel: {
        const NchannelForm& mine = m_form.nchannel;
        const NchannelForm& theirs = other.m_form.nchannel;
        if (mine.channelCount != theirs.channelCount || mine.fromYxy != theirs.fromYxy) {
            return false;
        }
        for (quint32 i = 0; i < mine.channelCount; ++i) {
            if (mine.channel[i] != theirs.channel[i]) {
                return false;
            }
        }
        return true;
    }
    case Invalid:
        break;
    }
    return false;
}

/// 32 bits of the low bits of the components; 0 with a debug line for an invalid colour.
uint qHash(const VelaColor& color, uint seed = 0);

/// The mix of two colours, t 0..1, premultiplied by alpha without division: the result is also
/// darkened by its alpha.
VelaColor interpolate(const VelaColor& a, const VelaColor& b, double t);
/// `top` over `bottom`.
VelaColor composite(const VelaColor& top, const VelaColor& bottom);

Q_DECLARE_METATYPE(VelaColor)
