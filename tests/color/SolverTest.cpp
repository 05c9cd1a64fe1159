#include "color/ColorProfile.h"
#include "color/ColorUtils.h"
#include "color/ProfileTable.h"
#include "resources/Resources.h"
#include "tests/color/PlainSolve.h"

#include <QObject>
#include <QtTest>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

namespace {

constexpr int kMostChannels = 8;

const ColorProfile& record(int profileId, int layout, int primarySet)
{
    return *ProfileTable::instance().profile(profileId, layout, primarySet);
}

/// What a mix of drives gives.
struct Tristimulus
{
    double X = 0.0;
    double Y = 0.0;
    double Z = 0.0;
    double x() const { return X / (X + Y + Z); }
    double y() const { return Y / (X + Y + Z); }
};

Tristimulus mixed(const ColorProfile& profile, const double* drives, int count)
{
    Tristimulus sum;
    for (int k = 0; k < count; ++k) {
        sum.X += drives[k] * profile.X.at(k);
        sum.Y += drives[k] * profile.Y.at(k);
        sum.Z += drives[k] * profile.Z.at(k);
    }
    return sum;
}

using Wide = long double;

/// The two planes in which a mix has the chromaticity (x, y), scaled otherwise than the solver's:
/// the sums of its drives times `a`, and times `b`, are zero.
struct Planes
{
    std::vector<Wide> light;
    std::vector<Wide> a;
    std::vector<Wide> b;
};

Planes planesOf(const ColorProfile& profile, int count, double x, double y)
{
    Planes planes;
    for (int k = 0; k < count; ++k) {
        const Wide Y = profile.Y.at(k);
        planes.light.push_back(Y);
        planes.a.push_back(static_cast<Wide>(y) * profile.X.at(k) - static_cast<Wide>(x) * Y);
        planes.b.push_back(static_cast<Wide>(y) * profile.Z.at(k) -
                           (1.0L - static_cast<Wide>(x) - static_cast<Wide>(y)) * Y);
    }
    return planes;
}

/// The greatest light of a mix, from the other side: every pair of multipliers bounds it from above
/// by the sum of max(0, light + l a + m b), and the least of these bounds, which is the optimum,
/// lies where two of the terms change sign.
double greatestLight(const Planes& planes)
{
    const auto& [light, a, b] = planes;
    Wide least = std::numeric_limits<Wide>::infinity();
    for (std::size_t i = 0; i < a.size(); ++i) {
        for (std::size_t j = i + 1; j < a.size(); ++j) {
            const Wide determinant = a[i] * b[j] - a[j] * b[i];
            if (determinant == 0.0L) {
                continue;
            }
            const Wide l = (-light[i] * b[j] + light[j] * b[i]) / determinant;
            const Wide m = (-a[i] * light[j] + a[j] * light[i]) / determinant;
            Wide bound = 0.0L;
            for (std::size_t k = 0; k < a.size(); ++k) {
                bound += std::max(0.0L, light[k] + l * a[k] + m * b[k]);
            }
            least = std::min(least, bound);
        }
    }
    return static_cast<double>(least);
}

/// Where single precision and the snapping of drives onto 0 and 1 may show: an emitter with nearly
/// the target's y/x makes a poor pivot, or some mix has a drive within the snap's reach of a bound.
bool isFragile(const Planes& planes)
{
    constexpr Wide kSnap = 6e-5L;
    constexpr Wide kPoorPivot = 1e-2L;
    const auto& [light, a, b] = planes;
    const auto size = [](Wide v, Wide w) { return std::abs(v) < std::abs(w); };
    if (std::abs(*std::min_element(a.cbegin(), a.cend(), size)) <
        kPoorPivot * std::abs(*std::max_element(a.cbegin(), a.cend(), size))) {
        return true;
    }
    const auto isNear = [](Wide drive) {
        return std::abs(drive) < kSnap || std::abs(drive - 1.0L) < kSnap;
    };
    const auto isWithin = [](Wide drive) { return drive > -kSnap && drive < 1.0L + kSnap; };
    for (std::size_t i = 0; i < a.size(); ++i) {
        for (std::size_t j = i + 1; j < a.size(); ++j) {
            const Wide determinant = a[i] * b[j] - a[j] * b[i];
            for (std::size_t full = 1; full < (1U << a.size()); ++full) {
                if ((full & ((1U << i) | (1U << j))) != 0) {
                    continue;
                }
                Wide sumA = 0.0L;
                Wide sumB = 0.0L;
                for (std::size_t k = 0; k < a.size(); ++k) {
                    sumA += (full >> k & 1U) != 0 ? a[k] : 0.0L;
                    sumB += (full >> k & 1U) != 0 ? b[k] : 0.0L;
                }
                const Wide first = (-sumA * b[j] + a[j] * sumB) / determinant;
                const Wide second = (-a[i] * sumB + sumA * b[i]) / determinant;
                if (isWithin(first) && isWithin(second) && (isNear(first) || isNear(second))) {
                    return true;
                }
            }
        }
    }
    return false;
}

/// A point of the gamut's triangle, uniformly spread.
QPointF insideGamut(const ColorProfile& profile, std::mt19937* random)
{
    std::uniform_real_distribution<double> share(0.0, 1.0);
    const double r = std::sqrt(share(*random));
    const double s = share(*random);
    return profile.gamutPoints.at(0) * (1.0 - r) + profile.gamutPoints.at(1) * (r * (1.0 - s)) +
           profile.gamutPoints.at(2) * (r * s);
}

} // namespace

class SolverTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void targetsInsideTheGamutAreMetWithTheGreatestLight_data();
    void targetsInsideTheGamutAreMetWithTheGreatestLight();
    void everyResultIsThePlainFormsToTheLastBit_data();
    void everyResultIsThePlainFormsToTheLastBit();
    void aPrimaryAtACornerIsThatChannelAlone_data();
    void aPrimaryAtACornerIsThatChannelAlone();
    void targetsOutsideAreDarkWithoutClipping();
    void clippingMovesToTheNearestEdge();
    void clippedColorsOfEitherSetShine();
    void darknessGivesZeros_data();
    void darknessGivesZeros();
    void drivesScaleWithY();
    void aRecordWithFewerPrimariesThanChannelsLeavesTheRestDark();
    void levelsGoThroughTheCurvesFormula();
};

void SolverTest::initTestCase()
{
    initForgeResources();
    ProfileTable::instance();
}

void SolverTest::targetsInsideTheGamutAreMetWithTheGreatestLight_data()
{
    QTest::addColumn<int>("profile");
    QTest::addColumn<int>("layout");
    QTest::addColumn<int>("primarySet");
    QTest::addColumn<double>("tolerance");
    QTest::newRow("generic RGB") << 0 << 1 << 0 << 1e-6;
    QTest::newRow("calibrated RGB") << 7 << 1 << 0 << 1e-6;
    QTest::newRow("three whites") << 26 << 8 << 0 << 1e-6;
    QTest::newRow("generic RGBW") << 3 << 3 << 0 << 1e-6;
    QTest::newRow("calibrated RGBA") << 5 << 6 << 0 << 1e-6;
    QTest::newRow("nominal RGBA") << 8 << 6 << 1 << 1e-6;
    QTest::newRow("calibrated RGBW") << 6 << 3 << 0 << 1e-6;
    QTest::newRow("Glowmatch") << 13 << 3 << 0 << 1e-6;
    QTest::newRow("Glowmatch with lime") << 33 << 3 << 0 << 1e-6;
    QTest::newRow("RGBAW") << 1 << 2 << 0 << 1e-5;
    QTest::newRow("nominal RGBAW") << 1 << 2 << 1 << 1e-5;
    QTest::newRow("RGB, mint, white") << 2 << 5 << 0 << 1e-5;
    QTest::newRow("generic RGBAW") << 24 << 2 << 0 << 1e-5;
}

void SolverTest::targetsInsideTheGamutAreMetWithTheGreatestLight()
{
    QFETCH(const int, profile);
    QFETCH(const int, layout);
    QFETCH(const int, primarySet);
    QFETCH(const double, tolerance);
    const ColorProfile& emitters = record(profile, layout, primarySet);
    const int count = ColorUtils::channelCount(layout);
    constexpr int kTargets = 4000;
    std::mt19937 random(2026);
    int fragile = 0;
    for (int n = 0; n < kTargets; ++n) {
        const QPointF target = insideGamut(emitters, &random);
        double drives[kMostChannels] = {};
        ColorUtils::solve({1.0, target.x(), target.y()}, drives, layout, profile, false,
                          primarySet);
        for (const double drive : drives) {
            QVERIFY(drive >= 0.0 && drive <= 1.0);
        }
        const Tristimulus got = mixed(emitters, drives, count);
        const Planes planes = planesOf(emitters, count, target.x(), target.y());
        const double best = greatestLight(planes);
        const bool tolerant = isFragile(planes);
        const double reach = tolerant ? 1e-4 : tolerance;
        const double lightReach = tolerant ? 1e-3 : 1e-6; // of full red, green and blue together
        fragile += tolerant ? 1 : 0;
        const QByteArray where = QStringLiteral("target %1 %2: got %3 %4, light %5 of %6")
                                     .arg(target.x(), 0, 'g', 12)
                                     .arg(target.y(), 0, 'g', 12)
                                     .arg(got.x(), 0, 'g', 12)
                                     .arg(got.y(), 0, 'g', 12)
                                     .arg(got.Y, 0, 'g', 12)
                                     .arg(best, 0, 'g', 12)
                                     .toLatin1();
        QVERIFY2(std::abs(got.x() - target.x()) <= reach, where.constData());
        QVERIFY2(std::abs(got.y() - target.y()) <= reach, where.constData());
        QVERIFY2(std::abs(got.Y - best) <= lightReach, where.constData());
    }
    QVERIFY2(fragile < kTargets / 12, qPrintable(QString::number(fragile)));
}

void SolverTest::everyResultIsThePlainFormsToTheLastBit_data()
{
    QTest::addColumn<int>("layout");
    QTest::addColumn<QVector<int>>("profiles");
    QTest::newRow("3 emitters") << 1 << QVector<int>{0, 7, 10, 17, 5, 1, 28, 4, 27};
    QTest::newRow("3 whites") << 8 << QVector<int>{26, 28};
    QTest::newRow("4 emitters") << 6 << QVector<int>{5, 8, 23, 44, 0, 2};
    QTest::newRow("4 emitters with white") << 3 << QVector<int>{3, 6, 13, 33, 25};
    QTest::newRow("4 whites") << 11 << QVector<int>{40};
    QTest::newRow("5 emitters") << 2 << QVector<int>{1, 24, 5, 99};
    QTest::newRow("5 emitters with mint") << 5 << QVector<int>{2};
    QTest::newRow("2 channels") << 7 << QVector<int>{27, 29, 0};
}

void SolverTest::everyResultIsThePlainFormsToTheLastBit()
{
    QFETCH(const int, layout);
    QFETCH(const QVector<int>, profiles);
    std::mt19937 random(7);
    std::uniform_real_distribution<double> plane(-0.1, 1.1);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    for (const int profile : profiles) {
        for (int n = 0; n < 3000; ++n) {
            const int primarySet = n % 2;
            const bool clip = n % 3 != 0;
            ColorUtils::XyY target;
            target.Y = unit(random);
            if (n % 4 == 0) { // anywhere, in and out of the visible
                target.x = plane(random);
                target.y = plane(random);
            } else {
                const QPointF xy = insideGamut(record(profile, layout, primarySet), &random);
                target.x = xy.x();
                target.y = xy.y();
            }
            double got[kMostChannels];
            double expected[kMostChannels];
            std::fill_n(got, kMostChannels, -7.0); // beyond the channels both leave it
            std::fill_n(expected, kMostChannels, -7.0);
            ColorUtils::solve(target, got, layout, profile, clip, primarySet);
            PlainSolve::solve(target, expected, layout, profile, clip, primarySet);
            if (std::memcmp(got, expected, sizeof got) != 0) {
                QFAIL(qPrintable(QStringLiteral("profile %1 set %2 clip %3 at %4 %5")
                                     .arg(profile)
                                     .arg(primarySet)
                                     .arg(clip)
                                     .arg(target.x, 0, 'g', 17)
                                     .arg(target.y, 0, 'g', 17)));
            }
        }
    }
}

void SolverTest::aPrimaryAtACornerIsThatChannelAlone_data()
{
    QTest::addColumn<int>("profile");
    QTest::addColumn<int>("layout");
    QTest::newRow("RGB") << 0 << 1;
    QTest::newRow("RGBW") << 6 << 3;
    QTest::newRow("RGBAW") << 1 << 2;
}

void SolverTest::aPrimaryAtACornerIsThatChannelAlone()
{
    QFETCH(const int, profile);
    QFETCH(const int, layout);
    const ColorProfile& emitters = record(profile, layout, 0);
    for (const int primary : {0, 1, 2}) {
        const double X = emitters.X.at(primary);
        const double Y = emitters.Y.at(primary);
        const double Z = emitters.Z.at(primary);
        double drives[kMostChannels] = {};
        ColorUtils::solve({0.75, X / (X + Y + Z), Y / (X + Y + Z)}, drives, layout, profile, true,
                          0);
        for (int k = 0; k < ColorUtils::channelCount(layout); ++k) {
            QVERIFY(std::abs(drives[k] - (k == primary ? 0.75 : 0.0)) < 1e-6);
        }
    }
}

void SolverTest::targetsOutsideAreDarkWithoutClipping()
{
    double drives[kMostChannels] = {9.0, 9.0, 9.0};
    ColorUtils::solve({1.0, 0.1, 0.8}, drives, 1, 0, false, 0);
    for (const int k : {0, 1, 2}) {
        QCOMPARE(drives[k], 0.0);
    }
    ColorUtils::solve({1.0, 0.1, 0.8}, drives, 1, 0, true, 0);
    QVERIFY(drives[1] > 0.9); // at the green corner
}

void SolverTest::clippingMovesToTheNearestEdge()
{
    const ColorProfile& rgb = record(0, 1, 0);
    const QPointF green = rgb.gamutPoints.at(1);
    const QPointF red = rgb.gamutPoints.at(0);
    const QPointF middle = (green + red) / 2.0;
    const QPointF along = red - green;
    const QPointF across(-along.y(), along.x());
    const QPointF outside = middle + across * 0.2;
    QVERIFY(!rgb.gamut.containsPoint(outside, Qt::OddEvenFill));
    double drives[kMostChannels] = {};
    ColorUtils::solve({1.0, outside.x(), outside.y()}, drives, 1, 0, true, 0);
    const Tristimulus got = mixed(rgb, drives, 3);
    QVERIFY(std::abs(got.x() - middle.x()) < 1e-6);
    QVERIFY(std::abs(got.y() - middle.y()) < 1e-6);
}

void SolverTest::clippedColorsOfEitherSetShine()
{
    // Both sets are clipped to the calibrated triangle, so its edges have to be in reach of the
    // nominal emitters too.
    std::mt19937 random(5);
    std::uniform_real_distribution<double> plane(0.0, 0.8);
    for (const int profile : ColorUtils::allProfiles(true)) {
        const int layout = ColorUtils::layoutOfProfile(profile);
        if (ColorUtils::channelCount(layout) < 3 || profile == 28) { // three equal whites
            continue;
        }
        for (int n = 0; n < 300; ++n) {
            const ColorUtils::XyY target = {1.0, plane(random), plane(random)};
            for (const int primarySet : {0, 1}) {
                double drives[kMostChannels] = {};
                ColorUtils::solve(target, drives, layout, profile, true, primarySet);
                QVERIFY2(*std::max_element(drives, drives + kMostChannels) > 0.99,
                         qPrintable(QStringLiteral("profile %1 set %2 at %3 %4")
                                        .arg(profile)
                                        .arg(primarySet)
                                        .arg(target.x)
                                        .arg(target.y)));
            }
        }
    }
}

void SolverTest::darknessGivesZeros_data()
{
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    QTest::addColumn<double>("Y");
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::addColumn<int>("layout");
    QTest::addColumn<int>("profile");
    QTest::newRow("Y is 0") << 0.0 << 0.31 << 0.33 << 1 << 0;
    QTest::newRow("two channels, Crest") << 1.0 << 0.40 << 0.39 << 7 << 27;
    QTest::newRow("two channels, Dune") << 1.0 << 0.40 << 0.39 << 10 << 30;
    QTest::newRow("one channel") << 1.0 << 0.31 << 0.33 << 4 << 4;
    QTest::newRow("NaN") << 1.0 << kNaN << kNaN << 2 << 1;
    QTest::newRow("infinite") << 1.0 << kInfinity << 0.3 << 6 << 5;
    QTest::newRow("unknown layout") << 1.0 << 0.31 << 0.33 << 99 << 0;
}

void SolverTest::darknessGivesZeros()
{
    QFETCH(const double, Y);
    QFETCH(const double, x);
    QFETCH(const double, y);
    QFETCH(const int, layout);
    QFETCH(const int, profile);
    double drives[kMostChannels];
    std::fill_n(drives, kMostChannels, 9.0);
    ColorUtils::solve({Y, x, y}, drives, layout, profile, true, 0);
    const int count = ColorUtils::channelCount(layout);
    for (int k = 0; k < kMostChannels; ++k) {
        QCOMPARE(drives[k], k < count ? 0.0 : 9.0);
    }
}

void SolverTest::drivesScaleWithY()
{
    double full[kMostChannels] = {};
    double half[kMostChannels] = {};
    ColorUtils::solve({1.0, 0.35, 0.36}, full, 6, 5, true, 0);
    ColorUtils::solve({0.5, 0.35, 0.36}, half, 6, 5, true, 0);
    QCOMPARE(*std::max_element(full, full + 4), 1.0); // some emitter is full
    for (int k = 0; k < 4; ++k) {
        QCOMPARE(half[k], 0.5 * full[k]);
    }
}

void SolverTest::aRecordWithFewerPrimariesThanChannelsLeavesTheRestDark()
{
    double three[kMostChannels] = {};
    double four[kMostChannels] = {0.0, 0.0, 0.0, 9.0};
    ColorUtils::solve({1.0, 0.35, 0.36}, three, 1, 0, true, 0);
    ColorUtils::solve({1.0, 0.35, 0.36}, four, 3, 0, true, 0);
    for (int k = 0; k < 3; ++k) {
        QCOMPARE(four[k], three[k]);
    }
    QCOMPARE(four[3], 0.0);
}

void SolverTest::levelsGoThroughTheCurvesFormula()
{
    const ColorUtils::XyY target = {0.8, 0.35, 0.36};
    double drives[kMostChannels] = {};
    ColorUtils::solve(target, drives, 6, 5, true, 0);
    for (const int curve : {0, 1, 2}) {
        quint16 levels[kMostChannels] = {};
        ColorUtils::solveToLevels(target, levels, 6, 5, curve, true, 0);
        for (int k = 0; k < 4; ++k) {
            const auto linear = static_cast<quint16>(std::floor(drives[k] * 65535.0 + 0.5));
            quint16 expected = 0;
            ColorUtils::delinearize16(curve, &linear, &expected, 1);
            QCOMPARE(levels[k], expected);
        }
    }
}

QTEST_APPLESS_MAIN(SolverTest)
#include "SolverTest.moc"
