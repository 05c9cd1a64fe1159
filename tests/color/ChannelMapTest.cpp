#include "color/ColorProfile.h"
#include "color/ColorUtils.h"
#include "color/ProfileTable.h"
#include "color/VelaColor.h"
#include "resources/Resources.h"

#include <QObject>
#include <QtTest>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

using Drives = QVector<double>;

VelaColor rgb(int red, int green, int blue, int profile = 0)
{
    return VelaColor::fromRgb(red, green, blue, 255, profile);
}

VelaColor yxy(double Y, double x, double y)
{
    VelaColor color;
    color.setYxyF(Y, x, y);
    return color;
}

VelaColor whiteAt(int cct, double Y = 1.0)
{
    double x = 0.0;
    double y = 0.0;
    ColorUtils::cctToXy(cct, &x, &y);
    return yxy(Y, x, y);
}

VelaColor channels(const QList<double>& list, int layout, int profile, bool tintweave = true)
{
    QList<double> alphaFirst = list;
    alphaFirst.prepend(1.0);
    return VelaColor::fromNchannelF(alphaFirst, static_cast<quint32>(layout),
                                    static_cast<quint32>(profile), tintweave);
}

/// The bytes at two a channel and linear curves: the drives at 16 bits.
QVector<int> levels(const VelaColor& color, bool tintweave, int count, int profile, int mode)
{
    QByteArray bytes(2 * count, '\x5A');
    ColorUtils::mapToChannels(color, tintweave, count, 2, reinterpret_cast<quint8*>(bytes.data()),
                              0, 0, profile, mode);
    QVector<int> values;
    for (int i = 0; i < count; ++i) {
        values.append(static_cast<quint8>(bytes.at(2 * i)) * 256 +
                      static_cast<quint8>(bytes.at(2 * i + 1)));
    }
    return values;
}

/// As levels(): a component that was not solved for is truncated ...
QVector<int> truncated(const Drives& drives)
{
    QVector<int> values;
    for (const double drive : drives) {
        values.append(static_cast<int>(drive * 65535.0));
    }
    return values;
}

/// ... one that was, or that came from Yxy, rounded.
QVector<int> rounded(const Drives& drives)
{
    QVector<int> values;
    for (const double drive : drives) {
        values.append(static_cast<int>(std::floor(drive * 65535.0 + 0.5)));
    }
    return values;
}

/// The solver's drives, pulled towards a pure emitter within 0.05 in u'v', step by step.
Drives solvedAndSnapped(const ColorUtils::XyY& target, int layout, int profile, int primarySet)
{
    double out[8] = {};
    ColorUtils::solve(target, out, layout, profile, true, primarySet);
    const ColorProfile& generic = *ProfileTable::instance().profile(0, 1, 0);
    const int count = ColorUtils::channelCount(layout);
    for (int p = 0; p < 3; ++p) {
        const double sum = generic.X.at(p) + generic.Y.at(p) + generic.Z.at(p);
        const double x = generic.X.at(p) / sum;
        const double y = generic.Y.at(p) / sum;
        const double u0 = 4.0 * x / (12.0 * y - 2.0 * x + 3.0);
        const double v0 = 9.0 * y / (12.0 * y - 2.0 * x + 3.0);
        const double u = 4.0 * target.x / (12.0 * target.y - 2.0 * target.x + 3.0);
        const double v = 9.0 * target.y / (12.0 * target.y - 2.0 * target.x + 3.0);
        const double d = std::sqrt((u - u0) * (u - u0) + (v - v0) * (v - v0));
        if (d * d < 0.0025) {
            for (int k = 0; k < count; ++k) {
                out[k] *= d / 0.05;
            }
            out[p] += target.Y * (1.0 - d / 0.05);
            break;
        }
    }
    return Drives(out, out + count);
}

ColorUtils::XyY drivesOf(const VelaColor& color, int primarySet)
{
    const int own = static_cast<int>(color.profileId());
    ColorUtils::XyY target;
    ColorUtils::channelDrivesToXyY(
        color,
        *ProfileTable::instance().profile(own, static_cast<int>(color.channelLayout()), primarySet),
        &target, ColorUtils::curveOfProfile(own));
    return target;
}

bool areClose(const QVector<int>& got, const QVector<int>& expected)
{
    return got.size() == expected.size() &&
           std::equal(got.cbegin(), got.cend(), expected.cbegin(),
                      [](int a, int b) { return std::abs(a - b) <= 1; });
}

} // namespace

class ChannelMapTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void grayModesSpreadOneLuma_data();
    void grayModesSpreadOneLuma();
    void twoWhiteModes_data();
    void twoWhiteModes();
    void twoWhitesFollowAnAbsoluteColorAlongTheLocus_data();
    void twoWhitesFollowAnAbsoluteColorAlongTheLocus();
    void fourWhitesMixTheTwoNextToTheTemperature_data();
    void fourWhitesMixTheTwoNextToTheTemperature();
    void fourWhitesTakeRgbAsGray();
    void fourWhitesPassTheirOwnChannels();
    void directColorsPassThrough_data();
    void directColorsPassThrough();
    void otherColorsAreSolved_data();
    void otherColorsAreSolved();
    void fixedModesAreAlwaysNominal_data();
    void fixedModesAreAlwaysNominal();
    void pureTargetsSnapToTheirEmitter();
    void theSnapReachesATwentiethInUv_data();
    void theSnapReachesATwentiethInUv();
    void theSnapAsksForTheTargetAsGiven();
    void curvesFollowTheWay_data();
    void curvesFollowTheWay();
    void tablesRunForwardWithTintweave();
    void unknownModesAndProfilesActAsZero();
    void nothingIsWrittenBeyondTheChannels_data();
    void nothingIsWrittenBeyondTheChannels();
    void strangeColorsAreDark_data();
    void strangeColorsAreDark();
};

void ChannelMapTest::initTestCase()
{
    initForgeResources();
    ProfileTable::instance();
}

void ChannelMapTest::grayModesSpreadOneLuma_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::addColumn<int>("mode");
    QTest::addColumn<QVector<int>>("bytes");
    QTest::newRow("pure green, single") << rgb(0, 255, 0) << 9 << QVector<int>{127, 0, 0, 0};
    QTest::newRow("pure red, single") << rgb(255, 0, 0) << 9 << QVector<int>{87, 0, 0, 0};
    QTest::newRow("pure blue, single") << rgb(0, 0, 255) << 9 << QVector<int>{39, 0, 0, 0};
    QTest::newRow("white, single") << rgb(255, 255, 255) << 9 << QVector<int>{255, 0, 0, 0};
    QTest::newRow("pure green, Dune3") << rgb(0, 255, 0) << 18 << QVector<int>{127, 127, 127, 0};
    QTest::newRow("pure green, Dune2") << rgb(0, 255, 0) << 19 << QVector<int>{127, 127, 0, 0};
    QTest::newRow("HSV") << VelaColor::fromHsv(120, 255, 255) << 9 << QVector<int>{127, 0, 0, 0};
    const QColor white = yxy(0.5, 0.3127, 0.329).toQColor(true);
    const int gray = (11 * white.red() + 16 * white.green() + 5 * white.blue()) / 32;
    QTest::newRow("Yxy") << yxy(0.5, 0.3127, 0.329) << 19 << QVector<int>{gray, gray, 0, 0};
    // Its own fixture's channels are read as a colour too.
    const VelaColor warm = channels({1.0, 0.2, 0.1}, 1, 0);
    const QColor seen = warm.toQColor(true);
    const int luma = (11 * seen.red() + 16 * seen.green() + 5 * seen.blue()) / 32;
    QTest::newRow("channels") << warm << 9 << QVector<int>{luma, 0, 0, 0};
}

void ChannelMapTest::grayModesSpreadOneLuma()
{
    QFETCH(const VelaColor, color);
    QFETCH(const int, mode);
    QFETCH(const QVector<int>, bytes);
    for (const bool tintweave : {false, true}) {
        quint8 out[4] = {};
        ColorUtils::mapToChannels(color, tintweave, 4, 1, out, 0, 0, 4, mode);
        for (int i = 0; i < 4; ++i) {
            QCOMPARE(static_cast<int>(out[i]), bytes.at(i));
        }
    }
}

void ChannelMapTest::twoWhiteModes_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::addColumn<bool>("tintweave");
    QTest::addColumn<int>("profile");
    QTest::addColumn<QVector<int>>("bytes");
    const VelaColor dim = rgb(200, 101, 20);
    QTest::newRow("RGB: half of green under blue") << dim << false << 27 << QVector<int>{200, 50};
    QTest::newRow("RGB: half of green under both")
        << rgb(3, 255, 4) << false << 27 << QVector<int>{127, 127};
    QTest::newRow("HSV") << VelaColor::fromHsv(120, 255, 255) << false << 27
                         << QVector<int>{127, 127};
    QTest::newRow("RGB, direct") << dim << true << 27 << QVector<int>{200, 101};
    QTest::newRow("HSV, direct") << VelaColor::fromHsv(120, 255, 255) << true << 27
                                 << QVector<int>{0, 255};
    const VelaColor own = channels({0.2, 0.8}, 7, 27);
    QTest::newRow("own channels") << own << false << 27 << QVector<int>{51, 204};
    QTest::newRow("own channels, tintweave") << own << true << 27 << QVector<int>{51, 204};
}

void ChannelMapTest::twoWhiteModes()
{
    QFETCH(const VelaColor, color);
    QFETCH(const bool, tintweave);
    QFETCH(const int, profile);
    QFETCH(const QVector<int>, bytes);
    quint8 out[2] = {};
    ColorUtils::mapToChannels(color, tintweave, 2, 1, out, 0, 0, profile, 16);
    QCOMPARE(static_cast<int>(out[0]), bytes.at(0));
    QCOMPARE(static_cast<int>(out[1]), bytes.at(1));
    ColorUtils::mapToChannels(color, tintweave, 2, 1, out, 0, 0, profile, 20); // swapped
    QCOMPARE(static_cast<int>(out[0]), bytes.at(1));
    QCOMPARE(static_cast<int>(out[1]), bytes.at(0));
}

void ChannelMapTest::twoWhitesFollowAnAbsoluteColorAlongTheLocus_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::addColumn<double>("warm");
    QTest::addColumn<double>("cool");
    QTest::newRow("warm end") << yxy(1.0, 0.47, 0.41) << 1.0 << 0.0;
    QTest::newRow("warm bound") << yxy(1.0, 0.45766, 0.41) << 1.0 << 0.0;
    QTest::newRow("warm half") << yxy(1.0, 0.42, 0.40) << 1.0 << (0.45766 - 0.42) / 0.07589;
    QTest::newRow("middle") << yxy(0.7, 0.38177, 0.38) << (0.38177 - 0.3123) / 0.06947 << 1.0;
    QTest::newRow("cool side of the middle")
        << yxy(1.0, 0.37, 0.37) << (0.37 - 0.3123) / 0.06947 << 1.0;
    QTest::newRow("warm side of the middle")
        << yxy(1.0, 0.39, 0.385) << 1.0 << (0.45766 - 0.39) / 0.07589;
    QTest::newRow("cool half") << yxy(0.5, 0.35, 0.36) << (0.35 - 0.3123) / 0.06947 << 1.0;
    QTest::newRow("cool bound") << yxy(1.0, 0.3123, 0.33) << 0.0 << 1.0;
    QTest::newRow("cool end") << yxy(1.0, 0.30, 0.31) << 0.0 << 1.0;
}

void ChannelMapTest::twoWhitesFollowAnAbsoluteColorAlongTheLocus()
{
    QFETCH(const VelaColor, color);
    QFETCH(const double, warm);
    QFETCH(const double, cool);
    const QColor seen = color.toQColor(true);
    const double first = seen.red() / 255.0 * warm;
    const double second = seen.blue() / 255.0 * cool;
    QVERIFY(areClose(levels(color, false, 2, 27, 16), rounded({first, second})));
    QVERIFY(areClose(levels(color, true, 2, 29, 20), rounded({second, first})));
    // Another fixture's channels go the same way, by their own chromaticity.
    const VelaColor other = color.toNchannel(3, 6, -1, 0);
    const double x = other.smallX();
    if (x > 0.3123 && x < 0.38177) {
        const QColor shown = other.toQColor(true);
        QVERIFY(areClose(
            levels(other, false, 2, 27, 16),
            truncated({shown.red() / 255.0 * ((x - 0.3123) / 0.06947), shown.blue() / 255.0})));
    }
}

void ChannelMapTest::fourWhitesMixTheTwoNextToTheTemperature_data()
{
    QTest::addColumn<int>("cct");
    QTest::addColumn<Drives>("drives"); // of 2200 K, 3000 K, 4000 K, 6500 K
    QTest::newRow("below all") << 2000 << Drives{1.0, 0.0, 0.0, 0.0};
    QTest::newRow("at the first lamp") << 2200 << Drives{1.0, 0.0, 0.0, 0.0};
    QTest::newRow("a quarter") << 2400 << Drives{1.0, 0.5, 0.0, 0.0};
    QTest::newRow("first middle") << 2600 << Drives{1.0, 1.0, 0.0, 0.0};
    QTest::newRow("above the middle") << 2850 << Drives{0.375, 1.0, 0.0, 0.0};
    QTest::newRow("at a lamp") << 3000 << Drives{0.0, 1.0, 0.0, 0.0};
    QTest::newRow("second quarter") << 3250 << Drives{0.0, 1.0, 0.5, 0.0};
    QTest::newRow("second middle") << 3500 << Drives{0.0, 1.0, 1.0, 0.0};
    QTest::newRow("third quarter") << 3750 << Drives{0.0, 0.5, 1.0, 0.0};
    QTest::newRow("toward cool") << 4500 << Drives{0.0, 0.0, 1.0, 0.4};
    QTest::newRow("below the third middle") << 5000 << Drives{0.0, 0.0, 1.0, 0.8};
    QTest::newRow("above the third middle") << 5500 << Drives{0.0, 0.0, 0.8, 1.0};
    QTest::newRow("from cool") << 6000 << Drives{0.0, 0.0, 0.4, 1.0};
    QTest::newRow("at the last lamp") << 6500 << Drives{0.0, 0.0, 0.0, 1.0};
    QTest::newRow("above all") << 8000 << Drives{0.0, 0.0, 0.0, 1.0};
}

void ChannelMapTest::fourWhitesMixTheTwoNextToTheTemperature()
{
    QFETCH(const int, cct);
    QFETCH(const Drives, drives);
    // A chromaticity that reads as exactly this temperature: the way there and back is uneven.
    VelaColor color;
    for (int candidate = cct - 100; candidate <= cct + 100 && !color.isValid(); ++candidate) {
        for (const int tint : {0, 2000, -2000, 8000, -8000}) {
            double x = 0.0;
            double y = 0.0;
            int t = 0;
            int readTint = 0;
            if (ColorUtils::cctTintToXy(candidate, tint, &x, &y) &&
                ColorUtils::xyToCctTint(x, y, &t, &readTint) && t == cct) {
                color = yxy(0.5, x, y);
                break;
            }
        }
    }
    QVERIFY(color.isValid());
    Drives halved;
    for (const double drive : drives) {
        halved.append(0.5 * static_cast<double>(static_cast<float>(drive)));
    }
    for (const bool tintweave : {false, true}) {
        QCOMPARE(levels(color, tintweave, 4, 40, 22), rounded(halved));
    }
}

void ChannelMapTest::fourWhitesTakeRgbAsGray()
{
    const VelaColor color = rgb(200, 150, 10, 7);
    const int gray = (11 * 200 + 16 * 150 + 5 * 10) / 32;
    // The gray of the colour's own profile, and its temperature.
    const VelaColor white = rgb(gray, gray, gray, 7).toYxy(0, -1, -1);
    const QVector<int> asWhite =
        levels(yxy(white.capY(), white.smallX(), white.smallY()), false, 4, 40, 22);
    QVERIFY(*std::max_element(asWhite.cbegin(), asWhite.cend()) > 6000);
    QVERIFY(areClose(levels(color, false, 4, 40, 22), asWhite));
    QVERIFY(asWhite != levels(rgb(200, 150, 10, 0), false, 4, 40, 22));
    // With tintweave it is direct, which for RGB in a mode of four whites means solved.
    const ColorUtils::XyY target = drivesOf(color, 0);
    QVERIFY(areClose(levels(color, true, 4, 40, 22), rounded(solvedAndSnapped(target, 11, 40, 0))));
}

void ChannelMapTest::fourWhitesPassTheirOwnChannels()
{
    const VelaColor own = channels({0.1, 0.2, 0.3, 0.4}, 11, 40);
    for (const bool tintweave : {false, true}) {
        QCOMPARE(levels(own, tintweave, 4, 40, 22), truncated({0.1, 0.2, 0.3, 0.4}));
    }
    const VelaColor other = channels({0.1, 0.2, 0.3, 0.4}, 3, 6);
    const VelaColor seen = other.toYxy(0, -1, -1);
    QVERIFY(areClose(levels(other, true, 4, 40, 22),
                     levels(yxy(seen.capY(), seen.smallX(), seen.smallY()), true, 4, 40, 22)));
}

void ChannelMapTest::directColorsPassThrough_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::addColumn<bool>("tintweave");
    QTest::addColumn<int>("profile");
    QTest::addColumn<int>("mode");
    QTest::addColumn<Drives>("drives");
    const VelaColor color = rgb(255, 128, 64);
    const Drives plain = {1.0, 128.0 / 255.0, 64.0 / 255.0, 0.0};
    QTest::newRow("RGB in RGB") << color << false << 0 << 0 << plain;
    QTest::newRow("RGB in RGB / RGBA out") << color << false << 5 << 5 << plain;
    QTest::newRow("RGB in Crest4 by RGB") << color << false << 40 << 23 << plain;
    QTest::newRow("RGB in Glowmatch by RGB") << color << false << 13 << 21 << plain;
    QTest::newRow("RGB in fixed RGBA by RGB") << color << false << 21 << 12 << plain;
    const VelaColor own = channels({0.25, 0.5, 0.75, 1.0}, 6, 5);
    const Drives all = {0.25, 0.5, 0.75, 1.0};
    QTest::newRow("own channels") << own << false << 5 << 1 << all;
    QTest::newRow("own channels, tintweave") << own << true << 5 << 1 << all;
    QTest::newRow("own channels in fixed mode")
        << channels({0.25, 0.5, 0.75, 1.0}, 6, 21) << false << 21 << 14 << all;
}

void ChannelMapTest::directColorsPassThrough()
{
    QFETCH(const VelaColor, color);
    QFETCH(const bool, tintweave);
    QFETCH(const int, profile);
    QFETCH(const int, mode);
    QFETCH(const Drives, drives);
    QCOMPARE(levels(color, tintweave, 4, profile, mode), truncated(drives));
}

void ChannelMapTest::otherColorsAreSolved_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::addColumn<bool>("tintweave");
    QTest::addColumn<int>("profile");
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("layout"); // of the mode
    const VelaColor orange = rgb(255, 128, 64, 7);
    const VelaColor other = channels({0.25, 0.5, 0.75, 1.0}, 3, 6);
    QTest::newRow("RGB to four emitters") << orange << false << 5 << 1 << 6;
    QTest::newRow("RGB to four emitters, tintweave is direct but solved")
        << orange << true << 5 << 1 << 6;
    QTest::newRow("RGB in RGB, tintweave") << orange << true << 7 << 0 << 1;
    QTest::newRow("HSV to four emitters")
        << VelaColor::fromHsv(30, 128, 200, 255, 7) << true << 6 << 2 << 3;
    QTest::newRow("RGB to five emitters") << orange << true << 1 << 3 << 2;
    QTest::newRow("RGB to three whites") << orange << false << 26 << 17 << 8;
    QTest::newRow("another fixture's channels") << other << true << 5 << 1 << 6;
    QTest::newRow("another fixture's channels, nominal") << other << false << 5 << 1 << 6;
    QTest::newRow("own channels where in and out differ")
        << channels({0.2, 0.4, 0.6}, 1, 5) << true << 5 << 5 << 1;
    QTest::newRow("Yxy in RGB") << yxy(0.8, 0.4, 0.4) << false << 7 << 0 << 1;
    QTest::newRow("Yxy to five emitters") << yxy(0.8, 0.4, 0.4) << true << 2 << 4 << 5;
    QTest::newRow("Yxy to Glowmatch") << yxy(0.8, 0.3, 0.3) << true << 13 << 11 << 3;
}

void ChannelMapTest::otherColorsAreSolved()
{
    QFETCH(const VelaColor, color);
    QFETCH(const bool, tintweave);
    QFETCH(const int, profile);
    QFETCH(const int, mode);
    QFETCH(const int, layout);
    const int primarySet = tintweave ? 0 : 1;
    const bool absolute = color.spec() == VelaColor::Yxy;
    const ColorUtils::XyY target =
        absolute ? ColorUtils::XyY{color.capY(), color.smallX(), color.smallY()}
                 : drivesOf(color, primarySet);
    const Drives drives = solvedAndSnapped(target, layout, profile, primarySet);
    QVERIFY(*std::max_element(drives.cbegin(), drives.cend()) > 0.1);
    QVERIFY(areClose(levels(color, tintweave, drives.size(), profile, mode), rounded(drives)));
}

void ChannelMapTest::fixedModesAreAlwaysNominal_data()
{
    QTest::addColumn<int>("profile");
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("layout");
    QTest::newRow("RGBA") << 21 << 14 << 6;
    QTest::newRow("RGBW") << 22 << 15 << 3;
}

void ChannelMapTest::fixedModesAreAlwaysNominal()
{
    QFETCH(const int, profile);
    QFETCH(const int, mode);
    QFETCH(const int, layout);
    const Drives nominal = solvedAndSnapped({0.8, 0.4, 0.4}, layout, profile, 1);
    const Drives calibrated = solvedAndSnapped({0.8, 0.4, 0.4}, layout, profile, 0);
    QVERIFY(rounded(nominal) != rounded(calibrated));
    for (const bool tintweave : {false, true}) {
        QVERIFY(
            areClose(levels(yxy(0.8, 0.4, 0.4), tintweave, 4, profile, mode), rounded(nominal)));
    }
}

void ChannelMapTest::pureTargetsSnapToTheirEmitter()
{
    const ColorProfile& generic = *ProfileTable::instance().profile(0, 1, 0);
    for (const int primary : {0, 1, 2}) {
        const double sum = generic.X.at(primary) + generic.Y.at(primary) + generic.Z.at(primary);
        const VelaColor pure = yxy(0.5, generic.X.at(primary) / sum, generic.Y.at(primary) / sum);
        Drives alone(4, 0.0);
        alone[primary] = 0.5;
        // A fixture of another gamut would mix this primary; exactly on it only the emitter stays.
        QVERIFY(areClose(levels(pure, true, 4, 6, 2), rounded(alone)));
    }
    // Halfway: half of the mix, and half of the pure emitter.
    const QPointF redUv = ColorUtils::xyToUv(0.64, 0.33);
    const QPointF near = ColorUtils::uvToXy(redUv.x() - 0.025, redUv.y());
    const Drives snapped = solvedAndSnapped({1.0, near.x(), near.y()}, 3, 6, 0);
    double bare[8] = {};
    ColorUtils::solve({1.0, near.x(), near.y()}, bare, 3, 6, true, 0);
    QVERIFY(std::abs(snapped.at(1) - 0.5 * bare[1]) < 1e-3);
    QVERIFY(areClose(levels(yxy(1.0, near.x(), near.y()), true, 4, 6, 2), rounded(snapped)));
}

void ChannelMapTest::theSnapReachesATwentiethInUv_data()
{
    QTest::addColumn<double>("distance");
    QTest::addColumn<double>("share"); // of the mix that stays
    QTest::newRow("within") << 0.049 << 0.98;
    QTest::newRow("beyond") << 0.0505 << 1.0;
}

void ChannelMapTest::theSnapReachesATwentiethInUv()
{
    QFETCH(const double, distance);
    QFETCH(const double, share);
    const ColorProfile& generic = *ProfileTable::instance().profile(0, 1, 0);
    const double sum = generic.X.at(0) + generic.Y.at(0) + generic.Z.at(0);
    const QPointF red = ColorUtils::xyToUv(generic.X.at(0) / sum, generic.Y.at(0) / sum);
    const QPointF xy = ColorUtils::uvToXy(red.x() - distance, red.y());
    double mix[8] = {};
    ColorUtils::solve({1.0, xy.x(), xy.y()}, mix, 3, 6, true, 0);
    QVERIFY(mix[1] > 0.1);
    Drives expected;
    for (int k = 0; k < 4; ++k) {
        expected.append(share * mix[k] + (k == 0 ? 1.0 - share : 0.0));
    }
    QVERIFY(areClose(levels(yxy(1.0, xy.x(), xy.y()), true, 4, 6, 2), rounded(expected)));
}

void ChannelMapTest::theSnapAsksForTheTargetAsGiven()
{
    // Far outside, clipped to the generic red corner: too far away to snap.
    const ColorUtils::XyY far = {1.0, 0.75, 0.25};
    double bare[8] = {};
    ColorUtils::solve(far, bare, 1, 0, true, 0);
    const Drives expected = solvedAndSnapped(far, 1, 0, 0);
    for (int k = 0; k < 3; ++k) {
        QCOMPARE(expected.at(k), bare[k]);
    }
    QVERIFY(areClose(levels(yxy(1.0, 0.75, 0.25), true, 3, 0, 0), rounded(expected)));
}

void ChannelMapTest::curvesFollowTheWay_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::addColumn<bool>("tintweave");
    QTest::addColumn<int>("profile");
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("formulaOfSolved"); // else the tables of the direct curve
    QTest::newRow("direct RGB") << rgb(200, 100, 50) << false << 7 << 0 << false;
    QTest::newRow("solved RGB") << rgb(200, 100, 50) << true << 7 << 0 << true;
    QTest::newRow("Yxy") << yxy(0.7, 0.33, 0.33) << true << 7 << 0 << true;
    QTest::newRow("Yxy in a gray mode") << yxy(0.7, 0.33, 0.33) << false << 4 << 9 << true;
    QTest::newRow("RGB in a gray mode") << rgb(200, 100, 50) << false << 4 << 9 << false;
    QTest::newRow("own channels") << channels({0.5, 0.4, 0.3, 0.2}, 6, 5) << true << 5 << 1
                                  << false;
    QTest::newRow("Yxy to four whites") << whiteAt(3500, 0.7) << false << 40 << 22 << true;
    QTest::newRow("RGB to four whites") << rgb(200, 200, 200) << false << 40 << 22 << false;
}

void ChannelMapTest::curvesFollowTheWay()
{
    QFETCH(const VelaColor, color);
    QFETCH(const bool, tintweave);
    QFETCH(const int, profile);
    QFETCH(const int, mode);
    QFETCH(const bool, formulaOfSolved);
    const auto bytesOf = [&](int curveDirect, int curveSolved) {
        QByteArray bytes(8, '\0');
        ColorUtils::mapToChannels(color, tintweave, 4, 2, reinterpret_cast<quint8*>(bytes.data()),
                                  curveDirect, curveSolved, profile, mode);
        return bytes;
    };
    const QByteArray linear = bytesOf(0, 0);
    QCOMPARE(bytesOf(1, 0) != linear, !formulaOfSolved);
    QCOMPARE(bytesOf(0, 1) != linear, formulaOfSolved);
    for (int i = 0; i < 4; ++i) { // each curve by its own rule, from the linear levels
        const auto level = [i](const QByteArray& bytes) {
            return static_cast<quint16>(static_cast<quint8>(bytes.at(2 * i)) * 256 +
                                        static_cast<quint8>(bytes.at(2 * i + 1)));
        };
        const quint16 in = level(linear);
        quint16 expected = 0;
        if (formulaOfSolved) {
            ColorUtils::delinearize16(1, &in, &expected, 1);
        } else {
            ColorUtils::lut16Lookup(ColorUtils::curve(1), in, &expected);
        }
        QCOMPARE(level(bytesOf(1, 1)), expected);
    }
}

void ChannelMapTest::tablesRunForwardWithTintweave()
{
    const VelaColor own = channels({0.5, 0.5, 0.5, 0.5}, 6, 5);
    for (const bool tintweave : {false, true}) {
        quint8 out[4] = {};
        ColorUtils::mapToChannels(own, tintweave, 4, 1, out, 1, 2, 5, 1);
        quint8 expected = 0;
        ColorUtils::lut8Lookup(ColorUtils::curve(1), 128, &expected, tintweave);
        QCOMPARE(out[0], expected);
        QVERIFY(expected != 128);
    }
}

void ChannelMapTest::unknownModesAndProfilesActAsZero()
{
    const VelaColor absolute = yxy(0.8, 0.4, 0.4);
    const VelaColor plain = rgb(10, 200, 30);
    for (const int mode : {-1, 24, 1000000}) {
        QCOMPARE(levels(absolute, false, 4, 7, mode), levels(absolute, false, 4, 7, 0));
        QCOMPARE(levels(plain, false, 4, 7, mode), levels(plain, false, 4, 7, 0));
    }
    for (const int profile : {-1, 47, 1000000}) {
        QCOMPARE(levels(absolute, true, 4, profile, 2), levels(absolute, true, 4, 0, 2));
    }
    // The colour's own profile, too: the primaries of id 0, and no table grows.
    const VelaColor strange = rgb(10, 200, 30, 123456);
    QCOMPARE(levels(strange, true, 4, 7, 0), levels(plain, true, 4, 7, 0));
    const VelaColor lost = channels({0.1, 0.9, 0.2, 0.0}, 200, 123456);
    QCOMPARE(levels(lost, true, 4, 7, 0),
             levels(channels({0.1, 0.9, 0.2, 0.0}, 1, 0), true, 4, 7, 0).mid(0, 4));
}

void ChannelMapTest::nothingIsWrittenBeyondTheChannels_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("width");
    QTest::newRow("none") << 0 << 1;
    QTest::newRow("negative") << -3 << 2;
    QTest::newRow("fewer than the layout") << 2 << 1;
    QTest::newRow("as the layout") << 4 << 2;
    QTest::newRow("more than any layout") << 20 << 2;
    QTest::newRow("more than any fixture") << 60 << 1;
    QTest::newRow("no such width") << 4 << 3;
}

void ChannelMapTest::nothingIsWrittenBeyondTheChannels()
{
    QFETCH(const int, count);
    QFETCH(const int, width);
    constexpr int kSize = 128;
    const int written = width == 1 || width == 2 ? std::max(count, 0) * width : 0;
    for (int mode = 0; mode < 24; ++mode) {
        for (const VelaColor& color :
             {rgb(255, 255, 255), whiteAt(4000), channels({1.0, 1.0, 1.0, 1.0}, 6, 5)}) {
            quint8 bytes[kSize];
            std::fill_n(bytes, kSize, 0x5A);
            ColorUtils::mapToChannels(color, true, count, width, bytes, 0, 0, 5, mode);
            QVERIFY(
                std::all_of(bytes + written, bytes + kSize, [](quint8 b) { return b == 0x5A; }));
            for (int i = 8 * width; i < written; ++i) { // beyond any colour's channels
                QCOMPARE(static_cast<int>(bytes[i]), 0);
            }
        }
    }
}

void ChannelMapTest::strangeColorsAreDark_data()
{
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    QTest::addColumn<VelaColor>("color");
    const auto raw = [](double Y, double x, double y) {
        VelaColor color;
        color.setYxy(Y, x, y, 65535);
        return color;
    };
    QTest::newRow("invalid") << VelaColor();
    QTest::newRow("NaN") << raw(kNaN, kNaN, kNaN);
    QTest::newRow("no chromaticity") << raw(1.0, kInfinity, -kInfinity);
    QTest::newRow("black") << rgb(0, 0, 0);
    QTest::newRow("black Yxy") << raw(0.0, 0.3, 0.3);
    QTest::newRow("black channels") << channels({0.0, 0.0, 0.0, 0.0}, 6, 5);
    QTest::newRow("no channels") << channels({}, 6, 5);
}

void ChannelMapTest::strangeColorsAreDark()
{
    QFETCH(const VelaColor, color);
    for (int mode = 0; mode < 24; ++mode) {
        for (const bool tintweave : {false, true}) {
            if (mode == 22 && color.spec() == VelaColor::Yxy) {
                continue; // its lamps follow Y, not the chromaticity
            }
            for (const int level : levels(color, tintweave, 5, 5, mode)) {
                QCOMPARE(level, 0);
            }
        }
    }
}

QTEST_APPLESS_MAIN(ChannelMapTest)
#include "ChannelMapTest.moc"
