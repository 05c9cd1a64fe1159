#include "color/ColorProfile.h"
#include "color/ColorUtils.h"
#include "color/VelaColor.h"

#include <QtTest>

#include <cmath>
#include <limits>

class ChannelDrivesTest : public QObject
{
    Q_OBJECT

private slots:
    void sumsTheChannels_data();
    void sumsTheChannels();
    void linearizesByTheCurve_data();
    void linearizesByTheCurve();
    void blackIsAllZero_data();
    void blackIsAllZero();
    void noDrivesGiveNan();
    void twoChannelsSpreadToTheOuterPlaces();
    void runsToTheShorterOfChannelsAndPrimaries();
    void recordsWithoutPrimariesGiveNan();
};

namespace {

/// Four emitters with sums that are easily worked out by hand.
ColorProfile fourEmitters()
{
    ColorProfile profile;
    profile.X = {4, 1, 2, 3};
    profile.Y = {2, 6, 1, 4};
    profile.Z = {0, 1, 9, 5};
    return profile;
}

bool isNear(double a, double b)
{
    return qAbs(a - b) < 1e-9;
}

VelaColor yxy(double capY)
{
    VelaColor color;
    color.setYxyF(capY, 0.3, 0.3);
    return color;
}

} // namespace

void ChannelDrivesTest::sumsTheChannels_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::addColumn<double>("capY");
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::newRow("red alone") << VelaColor::fromRgbF(1, 0, 0) << 1.0 << 4.0 / 6.0 << 2.0 / 6.0;
    QTest::newRow("dim red") << VelaColor::fromRgbF(0.25, 0, 0) << 0.25 << 4.0 / 6.0 << 2.0 / 6.0;
    // X = 4 + 1 + 2, Y = 2 + 6 + 1, Z = 0 + 1 + 9
    QTest::newRow("all three") << VelaColor::fromRgbF(1, 1, 1) << 1.0 << 7.0 / 26.0 << 9.0 / 26.0;
    // X = 2 + 1, Y = 1 + 6, Z = 1
    QTest::newRow("mixed") << VelaColor::fromRgbF(0.5, 1, 0) << 1.0 << 3.0 / 11.0 << 7.0 / 11.0;
    QTest::newRow("HSV, green at half")
        << VelaColor::fromHsvF(1.0 / 3.0, 1, 0.5) << 0.5 << 1.0 / 8.0 << 6.0 / 8.0;
    // X = 4 x 0.25 + 3, Y = 2 x 0.25 + 4, Z = 5
    QTest::newRow("channels") << VelaColor::fromNchannelF({1, 0.25, 0, 0, 1}, 3, 6, true) << 1.0
                              << 4.0 / 13.5 << 4.5 / 13.5;
}

void ChannelDrivesTest::sumsTheChannels()
{
    QFETCH(const VelaColor, color);
    QFETCH(const double, capY);
    QFETCH(const double, x);
    QFETCH(const double, y);
    for (const int curve : {0, 7}) { // an unknown curve acts as linear
        ColorUtils::XyY out = {9, 9, 9};
        ColorUtils::channelDrivesToXyY(color, fourEmitters(), &out, curve);
        QVERIFY(isNear(out.Y, capY));
        QVERIFY(isNear(out.x, x));
        QVERIFY(isNear(out.y, y));
    }
}

void ChannelDrivesTest::linearizesByTheCurve_data()
{
    QTest::addColumn<int>("curve");
    QTest::addColumn<double>("half"); // the linear drive of 0x8000 / 65535, truncated to 32768
    QTest::newRow("normal") << 1 << ColorUtils::linearizeNormal(32768);
    QTest::newRow("tungsten") << 2 << ColorUtils::linearizeTungsten(32768);
}

void ChannelDrivesTest::linearizesByTheCurve()
{
    QFETCH(const int, curve);
    QFETCH(const double, half);
    QVERIFY(half > 0.15 && half < 0.3);
    ColorUtils::XyY out;
    ColorUtils::channelDrivesToXyY(VelaColor(0x8000, 65535, 0, 65535), fourEmitters(), &out, curve);
    const double sumX = 4.0 * half + 1.0;
    const double sumY = 2.0 * half + 6.0;
    QCOMPARE(out.Y, 1.0);
    QVERIFY(isNear(out.x, sumX / (sumX + sumY + 1.0)));
    QVERIFY(isNear(out.y, sumY / (sumX + sumY + 1.0)));
    ColorUtils::channelDrivesToXyY(VelaColor(0x8000, 0, 0, 65535), fourEmitters(), &out, curve);
    QCOMPARE(out.Y, half); // the linear drive
}

void ChannelDrivesTest::blackIsAllZero_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::newRow("RGB") << VelaColor::fromRgb(0, 0, 0);
    QTest::newRow("HSV") << VelaColor::fromHsv(10, 20, 0);
    QTest::newRow("Yxy") << yxy(0.0);
    QTest::newRow("channels") << VelaColor::fromNchannelF({1, 0, 0, 0, 0}, 3, 6, true);
    QTest::newRow("no channels") << VelaColor::fromNchannelF({1}, 3, 6, true);
}

void ChannelDrivesTest::blackIsAllZero()
{
    QFETCH(const VelaColor, color);
    ColorUtils::XyY out = {9, 9, 9};
    ColorUtils::channelDrivesToXyY(color, fourEmitters(), &out, 1);
    QCOMPARE(out.Y, 0.0);
    QCOMPARE(out.x, 0.0);
    QCOMPARE(out.y, 0.0);
}

void ChannelDrivesTest::noDrivesGiveNan()
{
    for (const VelaColor& color : {VelaColor(), yxy(0.5)}) {
        ColorUtils::XyY out = {9, 9, 9};
        ColorUtils::channelDrivesToXyY(color, fourEmitters(), &out, 0);
        QCOMPARE(out.Y, 0.0);
        QVERIFY(std::isnan(out.x));
        QVERIFY(std::isnan(out.y));
    }
}

void ChannelDrivesTest::twoChannelsSpreadToTheOuterPlaces()
{
    // Channel 1 meets the third emitter: X = 4 + 2 x 0.5, Y = 2 + 0.5, Z = 4.5.
    for (const quint32 layout : {7U, 10U}) {
        ColorUtils::XyY out;
        ColorUtils::channelDrivesToXyY(VelaColor::fromNchannelF({1, 1, 0.5}, layout, 27, true),
                                       fourEmitters(), &out, 0);
        QCOMPARE(out.Y, 1.0);
        QVERIFY(isNear(out.x, 5.0 / 12.0));
        QVERIFY(isNear(out.y, 2.5 / 12.0));
    }
    // In a wider layout two channels stay where they are: X = 4 + 0.5, Y = 2 + 3, Z = 0.5.
    ColorUtils::XyY out;
    ColorUtils::channelDrivesToXyY(VelaColor::fromNchannelF({1, 1, 0.5}, 3, 6, true),
                                   fourEmitters(), &out, 0);
    QVERIFY(isNear(out.x, 4.5 / 10.0));
    QVERIFY(isNear(out.y, 5.0 / 10.0));
}

void ChannelDrivesTest::runsToTheShorterOfChannelsAndPrimaries()
{
    ColorProfile one;
    one.X = {4};
    one.Y = {2};
    one.Z = {2};
    ColorUtils::XyY out;
    ColorUtils::channelDrivesToXyY(VelaColor::fromRgbF(0.5, 1, 1), one, &out, 0);
    QVERIFY(isNear(out.Y, 0.5));
    QVERIFY(isNear(out.x, 0.5));
    QVERIFY(isNear(out.y, 0.25));
    ColorUtils::channelDrivesToXyY(
        VelaColor::fromNchannelF({1, 1, 0, 0, 0, 1, 1, 1, 1}, 3, 6, true), fourEmitters(), &out, 0);
    QVERIFY(isNear(out.x, 4.0 / 6.0));
}

void ChannelDrivesTest::recordsWithoutPrimariesGiveNan()
{
    ColorUtils::XyY out = {9, 9, 9};
    ColorUtils::channelDrivesToXyY(VelaColor::fromRgb(255, 255, 255), ColorProfile(), &out, 0);
    QCOMPARE(out.Y, 0.0);
    QVERIFY(std::isnan(out.x));
}

QTEST_APPLESS_MAIN(ChannelDrivesTest)
#include "ChannelDrivesTest.moc"
