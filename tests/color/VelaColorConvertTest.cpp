#include "color/ColorUtils.h"
#include "color/ProfileTable.h"
#include "color/VelaColor.h"

#include <QtTest>

#include <cmath>
#include <random>

class VelaColorConvertTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void rgbAndInvalidToRgbAreCopies();
    void hsvToRgb_data();
    void hsvToRgb();
    void grayTakesTheValueAsItStands();
    void rgbToHsv_data();
    void rgbToHsv();
    void hsvAndInvalidToHsvAreCopies();
    void hueCanReachAWholeTurn();
    void rgbSurvivesTheWayThroughHsv();
    void yxyToRgbSolvesForTheGenericProfile();
    void yxyToRgbClips();
    void channelsToRgb_data();
    void channelsToRgb();
    void toYxyKeepsItsAttributes();
    void toYxyPicksThePrimarySet();
    void toYxyOfWhiteAndPrimaries();
    void yxyAndInvalidToYxyAreCopies();
    void toChannelsCopiesItsOwnForm();
    void toChannelsSolvesForTheTarget_data();
    void toChannelsSolvesForTheTarget();
    void toChannelsRemembersAbsoluteColors();
    void toChannelsOfTheGenericProfileGoesThroughRgb();
    void ownProfileAndCurve_data();
    void ownProfileAndCurve();
    void accessorsConvert();
    void convertsBySpec();
};

namespace {

quint32 component(double unit)
{
    return static_cast<quint32>(unit * 4294967295.0 + 0.5); // exact for what the readers give
}

VelaColor yxy(double capY, double x, double y, double alpha = 1.0, int profile = 0)
{
    VelaColor color;
    color.setYxyF(capY, x, y, alpha, profile);
    return color;
}

VelaColor nominal(VelaColor color)
{
    color.setTintweave(false);
    return color;
}

/// The triple of `color` by the record and curve named.
ColorUtils::XyY drives(const VelaColor& color, int profile, int layout, int primarySet, int curve)
{
    ColorUtils::XyY out;
    ColorUtils::channelDrivesToXyY(
        color, *ProfileTable::instance().profile(profile, layout, primarySet), &out, curve);
    return out;
}

struct Levels
{
    quint16 v[16] = {};
};

Levels solved(const ColorUtils::XyY& target, int layout, int profile, int curve, bool clip,
              int primarySet)
{
    Levels levels;
    ColorUtils::solveToLevels(target, levels.v, layout, profile, curve, clip, primarySet);
    return levels;
}

QString text(const Levels& levels, int count)
{
    QString out;
    for (int i = 0; i < count; ++i) {
        out += QString::number(levels.v[i]) + QLatin1Char(' ');
    }
    return out;
}

QString channelText(const VelaColor& color)
{
    QString out;
    for (int i = 0; i < color.channelCount(); ++i) {
        out += QString::number(color.channel32(i) >> 16U) + QLatin1Char(' ');
    }
    return out;
}

} // namespace

void VelaColorConvertTest::initTestCase()
{
    // The rows below tell the two primary sets apart only if they differ.
    const ColorProfile* const calibrated = ProfileTable::instance().profile(6, 3, 0);
    const ColorProfile* const nominalSet = ProfileTable::instance().profile(6, 3, 1);
    QVERIFY(calibrated->X != nominalSet->X);
    QCOMPARE(ColorUtils::layoutOfProfile(6), 3);
    QCOMPARE(ColorUtils::curveOfProfile(6), 1);
    QCOMPARE(ColorUtils::curveOfProfile(0), 0);
}

void VelaColorConvertTest::rgbAndInvalidToRgbAreCopies()
{
    VelaColor color = nominal(VelaColor::fromRgb(1, 2, 3, 4, 5));
    color.setChannelLayout(3);
    QVERIFY(color.toRgb(true) == color);
    VelaColor invalid;
    invalid.setAlpha32(7);
    invalid.setProfileId(9);
    invalid.setTintweave(false);
    const VelaColor copy = invalid.toRgb(false);
    QCOMPARE(copy.spec(), VelaColor::Invalid);
    QCOMPARE(copy.alpha32(), 7U);
    QCOMPARE(copy.profileId(), 9U);
    QCOMPARE(copy.tintweave(), false);
}

void VelaColorConvertTest::hsvToRgb_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::addColumn<quint32>("red");
    QTest::addColumn<quint32>("green");
    QTest::addColumn<quint32>("blue");
    const auto degrees = [](double hue, double saturation, double value) {
        return VelaColor::fromHsvF(hue / 360.0, saturation, value);
    };
    const auto hsv16 = [](int hue) {
        VelaColor color;
        color.setHsv16(hue, 65535, 65535);
        return color;
    };
    VelaColor low;
    low.setHsvF(-1.0, 1.0, 1.0);
    const quint32 full = 0xFFFFFFFFU;
    const quint32 half = 0x80000000U; // truncated from 0.5 x 4294967295 + 0.5
    QTest::newRow("red") << degrees(0, 1, 1) << full << 0U << 0U;
    QTest::newRow("30, even sector") << degrees(30, 1, 1) << full << half << 0U;
    QTest::newRow("yellow") << degrees(60, 1, 1) << full << full << 0U;
    QTest::newRow("90, odd sector") << degrees(90, 1, 1) << half << full << 0U;
    QTest::newRow("green") << degrees(120, 1, 1) << 0U << full << 0U;
    QTest::newRow("150") << degrees(150, 1, 1) << 0U << full << half;
    QTest::newRow("cyan") << degrees(180, 1, 1) << 0U << full << full;
    QTest::newRow("210") << degrees(210, 1, 1) << 0U << half << full;
    QTest::newRow("blue") << degrees(240, 1, 1) << 0U << 0U << full;
    QTest::newRow("270") << degrees(270, 1, 1) << half << 0U << full;
    QTest::newRow("magenta") << degrees(300, 1, 1) << full << 0U << full;
    QTest::newRow("330") << degrees(330, 1, 1) << full << 0U << half;
    QTest::newRow("36000 is 0") << degrees(360, 1, 1) << full << 0U << 0U;
    QTest::newRow("achromatic with saturation is 0") << hsv16(-1) << full << 0U << 0U;
    QTest::newRow("negative hue ends black") << hsv16(-5) << 0U << 0U << 0U;
    QTest::newRow("low sentinel ends black") << low << 0U << 0U << 0U;
    QTest::newRow("black") << degrees(77, 1, 0) << 0U << 0U << 0U;
    // Saturation and value 0x80000000 are 0.5 + 2^-33: p = (1 - s) v = 0.25 less 2^-66.
    QTest::newRow("pale") << degrees(0, 0.5, 0.5) << half << 0x40000000U << 0x40000000U;
}

void VelaColorConvertTest::hsvToRgb()
{
    QFETCH(VelaColor, color);
    color.setProfileId(8);
    color.setTintweave(false);
    color.setChannelLayout(6);
    color.setAlpha32(0x12345678U);
    for (const bool clip : {false, true}) {
        const VelaColor rgb = color.toRgb(clip);
        QCOMPARE(rgb.spec(), VelaColor::Rgb);
        QTEST(component(rgb.redF()), "red");
        QTEST(component(rgb.greenF()), "green");
        QTEST(component(rgb.blueF()), "blue");
        QCOMPARE(rgb.alpha32(), 0x12345678U);
        QCOMPARE(rgb.profileId(), 8U);
        QCOMPARE(rgb.channelLayout(), 1U);
        QCOMPARE(rgb.tintweave(), true);
    }
}

void VelaColorConvertTest::grayTakesTheValueAsItStands()
{
    std::mt19937 random(1);
    for (int i = 0; i < 1000; ++i) {
        const auto value = static_cast<quint32>(random());
        VelaColor color;
        color.setHsvF(0.7, 0.0, value / 4294967295.0);
        QCOMPARE(component(color.toRgb(true).redF()), component(color.valueF()));
        QCOMPARE(component(color.toRgb(true).blueF()), value);
    }
}

void VelaColorConvertTest::rgbToHsv_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::addColumn<double>("hue"); // hundredths of a degree
    QTest::addColumn<quint32>("saturation");
    QTest::addColumn<quint32>("value");
    const quint32 full = 0xFFFFFFFFU;
    const auto row = [](const char* name, int r, int g, int b, double hue, quint32 s, quint32 v) {
        QTest::newRow(name) << VelaColor::fromRgb(r, g, b) << hue << s << v;
    };
    row("black", 0, 0, 0, -1, 0, 0);
    row("gray", 0x55, 0x55, 0x55, -1, 0, 0x55555555U);
    row("white", 255, 255, 255, -1, 0, full);
    row("red", 255, 0, 0, 0, full, full);
    row("yellow, red is asked first", 255, 255, 0, 6000, full, full);
    row("green", 0, 255, 0, 12000, full, full);
    row("cyan, green before blue", 0, 255, 255, 18000, full, full);
    row("blue", 0, 0, 255, 24000, full, full);
    row("magenta wraps upwards", 255, 0, 255, 30000, full, full);
    row("rose: 360 - 60 x 51 / 255", 255, 0, 51, 34800, full, full);
    row("dark orange: 60 x 51 / 102", 102, 51, 0, 3000, full, 0x66666666U);
    // delta / max = 0x33 / 0xFF = 0.2 of 4294967295
    row("pale red", 255, 204, 204, 0, 858993459U, full);
}

void VelaColorConvertTest::rgbToHsv()
{
    QFETCH(VelaColor, color);
    QFETCH(const double, hue);
    color.setProfileId(8);
    color.setTintweave(false);
    color.setAlpha32(0x12345678U);
    const VelaColor hsv = color.toHsv();
    QCOMPARE(hsv.spec(), VelaColor::Hsv);
    QCOMPARE(hsv.hueF(), hue == -1.0 ? -1.0 : hue / 36000.0);
    QTEST(component(hsv.saturationF()), "saturation");
    QTEST(component(hsv.valueF()), "value");
    QCOMPARE(hsv.alpha32(), 0x12345678U);
    QCOMPARE(hsv.profileId(), 8U);
    QCOMPARE(hsv.channelLayout(), 1U);
    QCOMPARE(hsv.tintweave(), true);
}

void VelaColorConvertTest::hsvAndInvalidToHsvAreCopies()
{
    const VelaColor hsv = nominal(VelaColor::fromHsvF(1.0, 0.1, 0.2, 0.3, 4));
    QVERIFY(hsv.toHsv() == hsv);
    VelaColor invalid;
    invalid.setProfileId(9);
    QCOMPARE(invalid.toHsv().spec(), VelaColor::Invalid);
    QCOMPARE(invalid.toHsv().profileId(), 9U);
}

void VelaColorConvertTest::hueCanReachAWholeTurn()
{
    // -60e-5 + 360 = 359.9994 degrees, rounded to hundredths
    const VelaColor hsv = VelaColor::fromRgbF(1.0, 0.0, 1e-5).toHsv();
    QCOMPARE(hsv.hueF(), 1.0);
    QCOMPARE(hsv.hue8(), 359);
    QVERIFY(hsv.toRgb(true).greenF() == 0.0);
    QVERIFY(hsv.toRgb(true).redF() == 1.0);
}

void VelaColorConvertTest::rgbSurvivesTheWayThroughHsv()
{
    std::mt19937 random(2);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    for (int i = 0; i < 5000; ++i) {
        const VelaColor rgb = VelaColor::fromRgbF(unit(random), unit(random), unit(random));
        const VelaColor back = rgb.toHsv().toRgb(true);
        // A hundredth of a degree is 1/6000 of a sector, rounded to its half.
        QVERIFY(qAbs(back.redF() - rgb.redF()) < 0.5 / 6000.0 + 1e-9);
        QVERIFY(qAbs(back.greenF() - rgb.greenF()) < 0.5 / 6000.0 + 1e-9);
        QVERIFY(qAbs(back.blueF() - rgb.blueF()) < 0.5 / 6000.0 + 1e-9);
    }
}

void VelaColorConvertTest::yxyToRgbSolvesForTheGenericProfile()
{
    VelaColor color = nominal(yxy(0.75, 0.35, 0.34, 1.0, 12));
    color.setAlpha32(0x12345678U);
    color.setChannelLayout(6);
    const VelaColor rgb = color.toRgb(true);
    const Levels levels = solved({0.75, 0.35, 0.34}, 1, 0, 0, true, 0);
    QCOMPARE(rgb.spec(), VelaColor::Rgb);
    QCOMPARE(rgb.red16(), static_cast<int>(levels.v[0]));
    QCOMPARE(rgb.green16(), static_cast<int>(levels.v[1]));
    QCOMPARE(rgb.blue16(), static_cast<int>(levels.v[2]));
    QCOMPARE(rgb.red16(), 49151); // the largest drive of a solution is Y: 0.75 x 65535, rounded
    QCOMPARE(rgb.alpha32(), 0x12345678U);
    QCOMPARE(rgb.profileId(), 12U);
    QCOMPARE(rgb.channelLayout(), 1U);
    QCOMPARE(rgb.tintweave(), true);
}

void VelaColorConvertTest::yxyToRgbClips()
{
    const VelaColor outside = yxy(1.0, 0.70, 0.29);
    const VelaColor clipped = outside.toRgb(true);
    QCOMPARE(clipped.red8(), 255);
    QVERIFY(outside.toRgb(false).isBlack());
    QCOMPARE(outside.toQColor(true).red(), 255);
    QCOMPARE(outside.toQColor(false).rgba(), qRgba(0, 0, 0, 255));
}

void VelaColorConvertTest::channelsToRgb_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::addColumn<int>("solveProfile");
    QTest::addColumn<int>("primarySet");
    const QList<double> list = {0.5, 0.9, 0.4, 0.1, 0.3};
    QTest::newRow("calibrated solves for the generic profile")
        << VelaColor::fromNchannelF(list, 3, 6, true) << 0 << 0;
    QTest::newRow("nominal solves for its own")
        << VelaColor::fromNchannelF(list, 3, 6, false) << 6 << 1;
    QTest::newRow("amber, nominal") << VelaColor::fromNchannelF(list, 6, 5, false) << 5 << 1;
    QTest::newRow("generic") << VelaColor::fromNchannelF({0.5, 0.9, 0.4, 0.1}, 1, 0, false) << 0
                             << 1;
}

void VelaColorConvertTest::channelsToRgb()
{
    QFETCH(const VelaColor, color);
    QFETCH(const int, solveProfile);
    QFETCH(const int, primarySet);
    const int profile = static_cast<int>(color.profileId());
    const ColorUtils::XyY xyY = drives(color, profile, static_cast<int>(color.channelLayout()),
                                       primarySet, ColorUtils::curveOfProfile(profile));
    const Levels levels = solved(xyY, 1, solveProfile, 0, true, primarySet);
    const VelaColor rgb = color.toRgb(true);
    QCOMPARE(rgb.red16(), static_cast<int>(levels.v[0]));
    QCOMPARE(rgb.green16(), static_cast<int>(levels.v[1]));
    QCOMPARE(rgb.blue16(), static_cast<int>(levels.v[2]));
    QVERIFY(rgb.red16() > 0);
    QCOMPARE(rgb.alpha32(), color.alpha32());
    QCOMPARE(rgb.profileId(), color.profileId());
    QCOMPARE(rgb.channelLayout(), 1U);
    QCOMPARE(rgb.tintweave(), true);
    QVERIFY(color.toHsv() == rgb.toHsv());
}

void VelaColorConvertTest::toYxyKeepsItsAttributes()
{
    VelaColor color = nominal(VelaColor::fromRgbF(1.0, 0.5, 0.2, 0.25, 8));
    color.setAlpha32(0x12345678U);
    VelaColor absolute = color.toYxy(0, -1, -1);
    QCOMPARE(absolute.spec(), VelaColor::Yxy);
    QCOMPARE(absolute.channelLayout(), 1U);
    QCOMPARE(absolute.profileId(), 8U);
    QCOMPARE(absolute.alpha32(), 0x12345678U);
    QCOMPARE(absolute.tintweave(), true);
    absolute = color.toYxy(3, 6, 0);
    QCOMPARE(absolute.channelLayout(), 3U);
    QCOMPARE(absolute.profileId(), 6U);
    const ColorUtils::XyY linear = drives(color, 6, 3, 1, 0);
    QCOMPARE(absolute.capY(), linear.Y);
    QCOMPARE(absolute.smallX(), linear.x);
    QCOMPARE(absolute.smallY(), linear.y);
    const ColorUtils::XyY curved = drives(color, 6, 3, 1, 1);
    QVERIFY(curved.x != linear.x);
    QCOMPARE(color.toYxy(3, 6, -1).smallX(), curved.x); // the curve of that profile
}

void VelaColorConvertTest::toYxyPicksThePrimarySet()
{
    const VelaColor calibrated = VelaColor::fromRgbF(0.9, 0.5, 0.2, 1.0, 6);
    QCOMPARE(calibrated.toYxy(0, -1, -1).smallX(), drives(calibrated, 6, 1, 0, 1).x);
    const VelaColor plain = nominal(calibrated);
    QCOMPARE(plain.toYxy(0, -1, -1).smallX(), drives(plain, 6, 1, 1, 1).x);
    QVERIFY(plain.toYxy(0, -1, -1).smallX() != calibrated.toYxy(0, -1, -1).smallX());

    // HSV takes the calibrated set whatever its flag says.
    const VelaColor hsv = nominal(VelaColor::fromHsv(20, 100, 200, 255, 6));
    QCOMPARE(hsv.toYxy(0, -1, -1).smallX(), drives(hsv.toRgb(true), 6, 1, 0, 1).x);

    const VelaColor channels = VelaColor::fromNchannelF({1, 0.9, 0.1, 0.2, 0.3}, 3, 6, false);
    QCOMPARE(channels.toYxy(0, -1, -1).smallX(), drives(channels, 6, 3, 1, 1).x);
    QCOMPARE(channels.toYxy(0, -1, -1).capY(), drives(channels, 6, 3, 1, 1).Y);
}

void VelaColorConvertTest::toYxyOfWhiteAndPrimaries()
{
    // Rec. 709: white D65, red (0.64, 0.33); its published figures have four decimals.
    const VelaColor white = VelaColor::fromRgb(255, 255, 255).toYxy(0, -1, -1);
    QCOMPARE(white.capY(), 1.0);
    QVERIFY(qAbs(white.smallX() - 0.3127) < 5e-4);
    QVERIFY(qAbs(white.smallY() - 0.3290) < 5e-4);
    const VelaColor red = VelaColor::fromRgb(51, 0, 0).toYxy(0, -1, -1);
    QCOMPARE(red.capY(), 0.2); // a drive, not a luminance
    QVERIFY(qAbs(red.smallX() - 0.64) < 5e-4);
    QVERIFY(qAbs(red.smallY() - 0.33) < 5e-4);
    const VelaColor black = VelaColor::fromRgb(0, 0, 0).toYxy(0, -1, -1);
    QCOMPARE(black.capY(), 0.0);
    QCOMPARE(black.smallX(), 0.0);
    QCOMPARE(black.smallY(), 0.0);
}

void VelaColorConvertTest::yxyAndInvalidToYxyAreCopies()
{
    const VelaColor color = nominal(yxy(0.1, 0.2, 0.3, 0.4, 5));
    QVERIFY(color.toYxy(3, 6, 1) == color);
    VelaColor invalid;
    invalid.setProfileId(9);
    const VelaColor copy = invalid.toYxy(3, 6, 1);
    QCOMPARE(copy.spec(), VelaColor::Invalid);
    QCOMPARE(copy.profileId(), 9U);
}

void VelaColorConvertTest::toChannelsCopiesItsOwnForm()
{
    VelaColor color = VelaColor::fromNchannelF({0.5, 0.9, 0.1, 0.2, 0.3}, 3, 6, false);
    color.setFromYxy(1);
    QVERIFY(color.toNchannel(3, 6, -1, 1) == color);
    QVERIFY(color.toNchannel(3, 6, 0, 1) == color);   // whatever the curve
    QVERIFY(color.toNchannel(3, 6, -1, 0) != color);  // other primaries
    QVERIFY(color.toNchannel(3, 9, -1, 1) != color);  // other profile
    QVERIFY(color.toNchannel(6, 6, -1, 1) != color);  // other layout
    QVERIFY(color.toNchannel(3, -1, -1, 1) != color); // solved anew
}

void VelaColorConvertTest::toChannelsSolvesForTheTarget_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::addColumn<VelaColor>("drivesOf"); // what the triple is worked out from
    QTest::addColumn<int>("primarySet");
    QTest::addColumn<int>("sourceSet");
    const VelaColor rgb = VelaColor::fromRgbF(0.9, 0.5, 0.2, 0.3, 8);
    for (const int set : {0, 1}) {
        QTest::addRow("RGB, set %d", set) << rgb << rgb << set << set;
        QTest::addRow("RGB whatever its flag, set %d", set)
            << nominal(rgb) << nominal(rgb) << set << set;
        const VelaColor hsv = VelaColor::fromHsv(20, 150, 200, 99, 8);
        QTest::addRow("HSV, set %d", set) << hsv << hsv.toRgb(true) << set << set;
        const VelaColor channels = VelaColor::fromNchannelF({1, 0.9, 0.3, 0.2, 0.3}, 6, 5, true);
        QTest::addRow("channels, by their own flag, set %d", set)
            << channels << channels << set << 0;
        QTest::addRow("nominal channels, set %d", set)
            << nominal(channels) << nominal(channels) << set << 1;
    }
}

void VelaColorConvertTest::toChannelsSolvesForTheTarget()
{
    QFETCH(const VelaColor, color);
    QFETCH(const VelaColor, drivesOf);
    QFETCH(const int, primarySet);
    QFETCH(const int, sourceSet);
    const int profile = static_cast<int>(drivesOf.profileId());
    const ColorUtils::XyY xyY =
        drives(drivesOf, profile, static_cast<int>(drivesOf.channelLayout()), sourceSet,
               ColorUtils::curveOfProfile(profile));
    const VelaColor result = color.toNchannel(3, 6, -1, primarySet);
    QCOMPARE(result.spec(), VelaColor::Nchannel);
    QCOMPARE(result.channelCount(), 4);
    QCOMPARE(channelText(result), text(solved(xyY, 3, 6, 1, true, primarySet), 4));
    QVERIFY(!result.isBlack());
    QCOMPARE(result.channelLayout(), 3U);
    QCOMPARE(result.profileId(), 6U);
    QCOMPARE(result.tintweave(), primarySet == 0);
    QCOMPARE(result.alpha32(), color.alpha32());
    QCOMPARE(result.fromYxy(), 0U);
    QCOMPARE(channelText(color.toNchannel(3, 6, 0, primarySet)),
             text(solved(xyY, 3, 6, 0, true, primarySet), 4));
}

void VelaColorConvertTest::toChannelsRemembersAbsoluteColors()
{
    VelaColor color = yxy(0.75, 0.35, 0.34, 1.0, 12);
    color.setAlpha32(0x12345678U);
    const VelaColor channels = color.toNchannel(3, 6, -1, 1);
    QCOMPARE(channelText(channels), text(solved({0.75, 0.35, 0.34}, 3, 6, 1, true, 1), 4));
    QCOMPARE(channels.fromYxy(), 1U);
    QCOMPARE(channels.alpha32(), 0x12345678U);
    QCOMPARE(channels.toNchannel(6, 5, -1, 0).fromYxy(), 1U); // carried on
    QCOMPARE(VelaColor().toNchannel(3, 6, -1, 1).fromYxy(), 0U);
    QVERIFY(VelaColor().toNchannel(3, 6, -1, 1).isBlack()); // no drives, no mix
}

void VelaColorConvertTest::toChannelsOfTheGenericProfileGoesThroughRgb()
{
    VelaColor color = VelaColor::fromNchannelF({1, 0.9, 0.4, 0.2}, 1, 0, false);
    color.setFromYxy(1);
    const VelaColor viaRgb = color.toRgb(true).toNchannel(3, 6, -1, 0);
    const VelaColor channels = color.toNchannel(3, 6, -1, 0);
    QCOMPARE(channelText(channels), channelText(viaRgb));
    QVERIFY(!channels.isBlack());
    QCOMPARE(channels.fromYxy(), 1U);
}

void VelaColorConvertTest::ownProfileAndCurve_data()
{
    QTest::addColumn<int>("profile");
    QTest::newRow("-1") << -1;
    QTest::newRow("-2") << -2;
    QTest::newRow("by id") << 6;
}

void VelaColorConvertTest::ownProfileAndCurve()
{
    QFETCH(const int, profile);
    const VelaColor color = VelaColor::fromRgbF(0.9, 0.5, 0.2, 1.0, 6);
    const VelaColor channels = color.toNchannel(3, profile, -1, 0);
    QCOMPARE(channels.profileId(), 6U);
    QVERIFY(channels == color.toNchannel(3, 6, 1, 0));
}

void VelaColorConvertTest::accessorsConvert()
{
    const VelaColor hsv = VelaColor::fromHsv(240, 255, 255);
    QCOMPARE(hsv.red8(), 0);
    QCOMPARE(hsv.blue8(), 255);
    QCOMPARE(hsv.blue16(), 65535);
    const VelaColor blue = VelaColor::fromRgb(0, 0, 51);
    QCOMPARE(blue.hue8(), 240);
    QCOMPARE(blue.saturation8(), 255);
    QCOMPARE(blue.saturationF(), 1.0);
    QCOMPARE(blue.value8(), 51);
    QCOMPARE(blue.valueF(), 0.2);
    const VelaColor absolute = blue.toYxy(0, -1, -1);
    QCOMPARE(blue.capY(), absolute.capY());
    QCOMPARE(blue.smallX(), absolute.smallX());
    QCOMPARE(blue.smallY(), absolute.smallY());
    const VelaColor outside = yxy(1.0, 0.70, 0.29);
    QCOMPARE(outside.red8(), 255); // clipped
    const VelaColor channels = VelaColor::fromNchannelF({1, 0.9, 0.3, 0.2, 0.3}, 3, 6, true);
    QCOMPARE(channels.capY(), drives(channels, 6, 3, 0, 1).Y);
    QCOMPARE(channels.greenF(), channels.toRgb(true).greenF());
    QCOMPARE(channels.hueF(), channels.toHsv().hueF());
}

void VelaColorConvertTest::convertsBySpec()
{
    const VelaColor rgb = nominal(VelaColor::fromRgb(200, 100, 50, 25, 8));
    QVERIFY(rgb.convertTo(VelaColor::Rgb, 3, 6, 1) == rgb);
    QVERIFY(rgb.convertTo(VelaColor::Hsv, 3, 6, 1) == rgb.toHsv());
    QVERIFY(rgb.convertTo(VelaColor::Yxy, 3, 6, 1) == rgb.toYxy(3, 6, -1));
    QVERIFY(rgb.convertTo(VelaColor::Nchannel, 3, 6, 1) == rgb.toNchannel(3, 6, -1, 1));
    const VelaColor absolute = yxy(0.5, 0.3, 0.3);
    QVERIFY(absolute.convertTo(VelaColor::Yxy, 3, 6, 1) == absolute);
    const VelaColor channels = rgb.toNchannel(3, 6, -1, 1);
    QVERIFY(channels.convertTo(VelaColor::Nchannel, 6, 5, 0) == channels.toNchannel(6, 5, -1, 0));
    QVERIFY(yxy(1.0, 0.70, 0.29).convertTo(VelaColor::Rgb, 1, 0, 0).red8() == 255); // clipped
    for (const quint32 spec : {0U, 5U, 0xFFFFFFFFU}) {
        const VelaColor none = rgb.convertTo(spec, 3, 6, 1);
        QCOMPARE(none.spec(), VelaColor::Invalid);
        QCOMPARE(none.profileId(), 0U);
        QCOMPARE(none.alpha32(), 0xFFFFFFFFU);
        QCOMPARE(none.tintweave(), true);
    }
}

QTEST_APPLESS_MAIN(VelaColorConvertTest)
#include "VelaColorConvertTest.moc"
