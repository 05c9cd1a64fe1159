#include "color/ColorUtils.h"

#include <QSet>
#include <QtTest>

#include <cmath>
#include <limits>

class BlackBodyTest : public QObject
{
    Q_OBJECT

private slots:
    void rangeIsFixed();
    void temperatureAndTintToXy_data();
    void temperatureAndTintToXy();
    void everyBinHasItsTints_data();
    void everyBinHasItsTints();
    void binEndsAreTheTabledPoints_data();
    void binEndsAreTheTabledPoints();
    void temperaturesOutsideTheRangeGiveZeros_data();
    void temperaturesOutsideTheRangeGiveZeros();
    void chromaticityMovesInStepsOfTenKelvin();
    void withoutTintItStaysOnTheChordsOfTheLocus();
    void xyToTemperatureAndTint_data();
    void xyToTemperatureAndTint();
    void chromaticitiesOutsideTheRangeAreRefused_data();
    void chromaticitiesOutsideTheRangeAreRefused();
    void theEdgesOfTheRangeAreTaken();
    void tintComesBackAtBinStarts_data();
    void tintComesBackAtBinStarts();
    void planesConvertBothWays();
    void deltaUvOfTwoPoints_data();
    void deltaUvOfTwoPoints();
    void distanceToSegmentTakesTheNearestPoint_data();
    void distanceToSegmentTakesTheNearestPoint();
};

namespace {

const int kLows[] = {1900, 2000, 2100, 2200, 2300, 2400, 2500, 2700, 2850, 3000, 3250,
                     3500, 3750, 4000, 4500, 5000, 5500, 5700, 6000, 6500, 8000, 10000};

struct Xy
{
    double x = -1.0;
    double y = -1.0;
    bool operator==(const Xy& other) const { return x == other.x && y == other.y; }
};

Xy xyOf(int cct, int tint = 0)
{
    Xy xy;
    ColorUtils::cctTintToXy(cct, tint, &xy.x, &xy.y);
    return xy;
}

bool isNear(double a, double b, double tolerance)
{
    return qAbs(a - b) <= tolerance;
}

} // namespace

void BlackBodyTest::rangeIsFixed()
{
    QCOMPARE(ColorUtils::minimumCct(), 1900);
    QCOMPARE(ColorUtils::maximumCct(), 11000);
    QCOMPARE(ColorUtils::minimumTint(), -32767);
    QCOMPARE(ColorUtils::maximumTint(), 32767);
}

void BlackBodyTest::temperatureAndTintToXy_data()
{
    QTest::addColumn<int>("cct");
    QTest::addColumn<int>("tint");
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    // Worked out from the bins with complex numbers in another language.
    QTest::newRow("1900") << 1900 << 0 << 0.537780474747032 << 0.411201271174331;
    QTest::newRow("1900, full tint") << 1900 << 32767 << 0.590445798463148 << 0.47833072379428;
    QTest::newRow("1900, least tint") << 1900 << -32767 << 0.49404507491355 << 0.355454277825122;
    QTest::newRow("1909") << 1909 << 0 << 0.537780474747032 << 0.411201271174331;
    QTest::newRow("1910") << 1910 << 0 << 0.536677378014804 << 0.411409570479554;
    QTest::newRow("1910, some tint") << 1910 << 16000 << 0.561045329118747 << 0.442601978312784;
    QTest::newRow("2700") << 2700 << 0 << 0.459861968337119 << 0.410599816404185;
    QTest::newRow("2700, full tint") << 2700 << 32767 << 0.498250522932271 << 0.479136916926937;
    QTest::newRow("3500, least tint") << 3500 << -32767 << 0.386299102924908 << 0.339423937745029;
    QTest::newRow("4290 steps late") << 4290 << 0 << 0.369350858133316 << 0.36929735238381;
    QTest::newRow("4291") << 4291 << 0 << 0.368958793939516 << 0.3690339876162;
    QTest::newRow("6500, some tint") << 6500 << 16000 << 0.311178947449288 << 0.34056719753211;
    QTest::newRow("9999") << 9999 << 0 << 0.280705411229071 << 0.28836881999974;
    QTest::newRow("10000, last bin") << 10000 << 0 << 0.280634652355461 << 0.288288707479337;
    QTest::newRow("10010, last bin's step") << 10010 << 0 << 0.280591568834224 << 0.288236240679189;
    QTest::newRow("11000") << 11000 << 0 << 0.276365243380843 << 0.283089452149345;
    QTest::newRow("11000, full tint") << 11000 << 32767 << 0.262786818361254 << 0.306312959600577;
}

void BlackBodyTest::temperatureAndTintToXy()
{
    QFETCH(const int, cct);
    QFETCH(const int, tint);
    QFETCH(const double, x);
    QFETCH(const double, y);
    Xy xy;
    QVERIFY(ColorUtils::cctTintToXy(cct, tint, &xy.x, &xy.y));
    QVERIFY2(isNear(xy.x, x, 1e-12), qPrintable(QString::number(xy.x, 'g', 17)));
    QVERIFY2(isNear(xy.y, y, 1e-12), qPrintable(QString::number(xy.y, 'g', 17)));
    if (tint == 0) {
        Xy plain;
        QVERIFY(ColorUtils::cctToXy(cct, &plain.x, &plain.y));
        QVERIFY(plain == xy);
    }
}

void BlackBodyTest::everyBinHasItsTints_data()
{
    QTest::addColumn<int>("cct"); // about the middle of its bin, so that all five points count
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    // Worked out like the rows above, at tint 20000.
    QTest::newRow("1950") << 1950 << 0.562711605793036 << 0.451913226254949;
    QTest::newRow("2050") << 2050 << 0.550865658530898 << 0.454064294089396;
    QTest::newRow("2150") << 2150 << 0.540808737998062 << 0.454837392201456;
    QTest::newRow("2250") << 2250 << 0.529234213596642 << 0.455527396499786;
    QTest::newRow("2350") << 2350 << 0.518038428844204 << 0.455469281534787;
    QTest::newRow("2450") << 2450 << 0.507237062550217 << 0.454762069327147;
    QTest::newRow("2600") << 2600 << 0.491959933253826 << 0.452532878718191;
    QTest::newRow("2770") << 2770 << 0.47588038706836 << 0.449112640394564;
    QTest::newRow("2920") << 2920 << 0.462737454605046 << 0.445278825484338;
    QTest::newRow("3120") << 3120 << 0.446339576823964 << 0.439328126363293;
    QTest::newRow("3370") << 3370 << 0.427695683194058 << 0.431250684739998;
    QTest::newRow("3620") << 3620 << 0.411245395117398 << 0.42278440610878;
    QTest::newRow("3870") << 3870 << 0.396599554191516 << 0.414249739224718;
    QTest::newRow("4250") << 4250 << 0.377627409950269 << 0.401640633879129;
    QTest::newRow("4750") << 4750 << 0.356723333741247 << 0.386222130849084;
    QTest::newRow("5250") << 5250 << 0.340026365144704 << 0.372465547697673;
    QTest::newRow("5600") << 5600 << 0.330057205671272 << 0.363711784378893;
    QTest::newRow("5850") << 5850 << 0.323986603032539 << 0.358063475838054;
    QTest::newRow("6250") << 6250 << 0.315488333655558 << 0.34983879859204;
    QTest::newRow("7250") << 7250 << 0.299796899777343 << 0.333481424742193;
    QTest::newRow("9000") << 9000 << 0.281110286754461 << 0.312575310854922;
    QTest::newRow("10500") << 10500 << 0.270616376031832 << 0.299992077988016;
}

void BlackBodyTest::everyBinHasItsTints()
{
    QFETCH(const int, cct);
    const Xy xy = xyOf(cct, 20000);
    QFETCH(const double, x);
    QFETCH(const double, y);
    QVERIFY2(isNear(xy.x, x, 1e-12), qPrintable(QString::number(xy.x, 'g', 17)));
    QVERIFY2(isNear(xy.y, y, 1e-12), qPrintable(QString::number(xy.y, 'g', 17)));
}

void BlackBodyTest::binEndsAreTheTabledPoints_data()
{
    QTest::addColumn<int>("cct");
    QTest::addColumn<double>("u");
    QTest::addColumn<double>("v");
    QTest::newRow("1900") << 1900 << 0.313627 << 0.539567;
    QTest::newRow("2000") << 2000 << 0.305048 << 0.538599;
    QTest::newRow("2500") << 2500 << 0.272177 << 0.531102;
    QTest::newRow("2850") << 2850 << 0.256190 << 0.524401;
    QTest::newRow("4000") << 4000 << 0.225111 << 0.501581;
    QTest::newRow("5700") << 5700 << 0.205352 << 0.474895;
    QTest::newRow("8000") << 8000 << 0.194625 << 0.452115;
    QTest::newRow("10000") << 10000 << 0.190319 << 0.439897;
}

void BlackBodyTest::binEndsAreTheTabledPoints()
{
    QFETCH(const int, cct);
    QFETCH(const double, u);
    QFETCH(const double, v);
    const Xy xy = xyOf(cct);
    const QPointF uv = ColorUtils::xyToUv(xy.x, xy.y);
    QVERIFY(isNear(uv.x(), u, 1e-12));
    QVERIFY(isNear(uv.y(), v, 1e-12));
}

void BlackBodyTest::temperaturesOutsideTheRangeGiveZeros_data()
{
    QTest::addColumn<int>("cct");
    QTest::newRow("one below") << 1899;
    QTest::newRow("one above") << 11001;
    QTest::newRow("inside the last bin") << 12000;
    QTest::newRow("zero") << 0;
    QTest::newRow("least") << std::numeric_limits<int>::min();
    QTest::newRow("greatest") << std::numeric_limits<int>::max();
}

void BlackBodyTest::temperaturesOutsideTheRangeGiveZeros()
{
    QFETCH(const int, cct);
    Xy xy;
    QVERIFY(!ColorUtils::cctTintToXy(cct, 500, &xy.x, &xy.y));
    QCOMPARE(xy.x, 0.0);
    QCOMPARE(xy.y, 0.0);
}

void BlackBodyTest::chromaticityMovesInStepsOfTenKelvin()
{
    // By the rounding of (t - low) / (high - low) x steps these reach their step one kelvin late.
    const QSet<int> late = {4290, 4790, 5290, 6290, 7050, 7290, 7470, 7600,
                            7730, 8290, 8570, 8580, 9130, 9140, 9150, 9160};
    for (int cct = 1901; cct <= 11000; ++cct) {
        const bool isStep = (cct % 10 == 0 && !late.contains(cct)) || late.contains(cct - 1);
        QVERIFY2(!(xyOf(cct) == xyOf(cct - 1)) == isStep, qPrintable(QString::number(cct)));
    }
}

void BlackBodyTest::withoutTintItStaysOnTheChordsOfTheLocus()
{
    for (int bin = 0; bin < 21; ++bin) {
        const Xy from = xyOf(kLows[bin]);
        const Xy to = xyOf(kLows[bin + 1]);
        const QPointF a = ColorUtils::xyToUv(from.x, from.y);
        const QPointF b = ColorUtils::xyToUv(to.x, to.y);
        for (int cct = kLows[bin]; cct < kLows[bin + 1]; ++cct) {
            const Xy xy = xyOf(cct);
            const QPointF p = ColorUtils::xyToUv(xy.x, xy.y);
            QVERIFY2(ColorUtils::distanceToSegment(a, b, p, nullptr) < 1e-14,
                     qPrintable(QString::number(cct)));
        }
    }
}

void BlackBodyTest::xyToTemperatureAndTint_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::addColumn<int>("cct");
    QTest::addColumn<int>("tint");
    const auto addTemperature = [](const char* name, int from, int cct, int tint) {
        const Xy xy = xyOf(from);
        QTest::newRow(name) << xy.x << xy.y << cct << tint;
    };
    addTemperature("1900", 1900, 1900, 0);
    addTemperature("2000", 2000, 2000, 0);
    addTemperature("2700", 2700, 2700, 0);
    addTemperature("3000", 3000, 3000, 0);
    addTemperature("3100", 3100, 3100, 0);
    addTemperature("4200", 4200, 4200, 0);
    addTemperature("6500", 6500, 6500, 0);
    addTemperature("8000", 8000, 8000, 0);
    addTemperature("10000", 10000, 10000, 0);
    // A bin's chord is lengthened past its end, so that it answers for part of the next one.
    addTemperature("5700 reads as 5400", 5700, 5400, -166);
    addTemperature("2050 reads as 1980", 2050, 1980, -166);
    addTemperature("11000 reads as 9610", 11000, 9610, -321);
    QTest::newRow("D65") << 0.3127 << 0.3290 << 6500 << 5249;
    QTest::newRow("A") << 0.4476 << 0.4074 << 2850 << -36;
    QTest::newRow("equal energy") << 1.0 / 3.0 << 1.0 / 3.0 << 5460 << -7221;
    QTest::newRow("green, tint past its limit") << 0.3 << 0.6 << 5960 << 161770;
    QTest::newRow("red, last bin") << 0.64 << 0.33 << 11270 << -749920;
    QTest::newRow("blue, last bin") << 0.15 << 0.06 << 11260 << -383733;
    QTest::newRow("corner") << 0.0 << 0.0 << 11270 << 219787;
}

void BlackBodyTest::xyToTemperatureAndTint()
{
    QFETCH(const double, x);
    QFETCH(const double, y);
    QFETCH(const int, cct);
    QFETCH(const int, tint);
    int actualCct = 0;
    int actualTint = 0;
    QVERIFY(ColorUtils::xyToCctTint(x, y, &actualCct, &actualTint));
    QCOMPARE(actualCct, cct);
    // The truncation at the end can fall to either side of an integer.
    QVERIFY2(qAbs(actualTint - tint) <= 1, qPrintable(QString::number(actualTint)));
}

void BlackBodyTest::chromaticitiesOutsideTheRangeAreRefused_data()
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::newRow("x below 0") << -0.0001 << 0.3;
    QTest::newRow("x above 0.8") << 0.8001 << 0.35;
    QTest::newRow("y below 0") << 0.3 << -0.0001;
    QTest::newRow("y above 0.9") << 0.0 << 0.9001;
    QTest::newRow("u above 0.6") << 0.8 << 0.3241;    // 3.2 / 5.2892
    QTest::newRow("v above 0.6") << 0.5114 << 0.6875; // 6.1875 / 10.2272
    QTest::newRow("NaN x") << nan << 0.3;
    QTest::newRow("NaN y") << 0.3 << nan;
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << 0.3;
}

void BlackBodyTest::chromaticitiesOutsideTheRangeAreRefused()
{
    QFETCH(const double, x);
    QFETCH(const double, y);
    int cct = 17;
    int tint = 18;
    QVERIFY(!ColorUtils::xyToCctTint(x, y, &cct, &tint));
    QCOMPARE(cct, 17);
    QCOMPARE(tint, 18);
}

void BlackBodyTest::theEdgesOfTheRangeAreTaken()
{
    int cct = 0;
    int tint = 0;
    QVERIFY(ColorUtils::xyToCctTint(0.8, 0.35, &cct, &tint));
    QVERIFY(ColorUtils::xyToCctTint(0.0, 0.9, &cct, &tint));
    QVERIFY(ColorUtils::xyToCctTint(0.8, 0.3279, &cct, &tint));    // u' 3.2 / 5.3348 = 0.59984
    QVERIFY(ColorUtils::xyToCctTint(0.5114, 0.6560, &cct, &tint)); // v' 5.904 / 9.8492 = 0.59944
}

void BlackBodyTest::tintComesBackAtBinStarts_data()
{
    QTest::addColumn<int>("cct");
    for (const int cct : {2000, 3000, 4500, 6500, 10000}) {
        QTest::newRow(qPrintable(QString::number(cct))) << cct;
    }
}

void BlackBodyTest::tintComesBackAtBinStarts()
{
    QFETCH(const int, cct);
    for (const int tint : {-20000, -5000, 5000, 20000}) {
        const Xy xy = xyOf(cct, tint);
        int actualCct = 0;
        int actualTint = 0;
        QVERIFY(ColorUtils::xyToCctTint(xy.x, xy.y, &actualCct, &actualTint));
        QCOMPARE(actualCct, cct);
        QVERIFY2(qAbs(actualTint - tint) <= 20, qPrintable(QString::number(actualTint)));
    }
}

void BlackBodyTest::planesConvertBothWays()
{
    const QPointF white = ColorUtils::xyToUv(0.3127, 0.3290); // w = 6.3226
    QVERIFY(isNear(white.x(), 1.2508 / 6.3226, 1e-15));
    QVERIFY(isNear(white.y(), 2.961 / 6.3226, 1e-15));
    const QPointF back = ColorUtils::uvToXy(white.x(), white.y());
    QVERIFY(isNear(back.x(), 0.3127, 1e-15));
    QVERIFY(isNear(back.y(), 0.3290, 1e-15));
}

void BlackBodyTest::deltaUvOfTwoPoints_data()
{
    QTest::addColumn<QPointF>("a"); // in u'v'
    QTest::addColumn<QPointF>("b");
    QTest::addColumn<double>("distance");
    QTest::newRow("same") << QPointF(0.2, 0.47) << QPointF(0.2, 0.47) << 0.0;
    QTest::newRow("along u'") << QPointF(0.2, 0.47) << QPointF(0.23, 0.47) << 0.03;
    QTest::newRow("along v', by 1.5 shorter") << QPointF(0.2, 0.47) << QPointF(0.2, 0.50) << 0.02;
    QTest::newRow("3 4 5") << QPointF(0.2, 0.4) << QPointF(0.23, 0.46) << 0.05;
}

void BlackBodyTest::deltaUvOfTwoPoints()
{
    QFETCH(const QPointF, a);
    QFETCH(const QPointF, b);
    QFETCH(const double, distance);
    const QPointF from = ColorUtils::uvToXy(a.x(), a.y());
    const QPointF to = ColorUtils::uvToXy(b.x(), b.y());
    QVERIFY(isNear(ColorUtils::deltaUv(from.x(), from.y(), to.x(), to.y()), distance, 1e-14));
}

void BlackBodyTest::distanceToSegmentTakesTheNearestPoint_data()
{
    QTest::addColumn<QPointF>("a");
    QTest::addColumn<QPointF>("b");
    QTest::addColumn<QPointF>("p");
    QTest::addColumn<double>("distance");
    QTest::addColumn<QPointF>("foot");
    QTest::newRow("beside") << QPointF(0, 0) << QPointF(4, 0) << QPointF(1, 3) << 3.0
                            << QPointF(1, 0);
    QTest::newRow("before the start")
        << QPointF(0, 0) << QPointF(4, 0) << QPointF(-3, 4) << 5.0 << QPointF(0, 0);
    QTest::newRow("behind the end")
        << QPointF(0, 0) << QPointF(4, 0) << QPointF(7, -4) << 5.0 << QPointF(4, 0);
    QTest::newRow("on it") << QPointF(0, 0) << QPointF(2, 2) << QPointF(1, 1) << 0.0
                           << QPointF(1, 1);
    QTest::newRow("slanted") << QPointF(0, 0) << QPointF(2, 2) << QPointF(2, 0) << std::sqrt(2.0)
                             << QPointF(1, 1);
    QTest::newRow("a point") << QPointF(1, 1) << QPointF(1, 1) << QPointF(4, 5) << 5.0
                             << QPointF(1, 1);
}

void BlackBodyTest::distanceToSegmentTakesTheNearestPoint()
{
    QFETCH(const QPointF, a);
    QFETCH(const QPointF, b);
    QFETCH(const QPointF, p);
    QFETCH(const double, distance);
    QFETCH(const QPointF, foot);
    QPointF nearest(-9, -9);
    QVERIFY(isNear(ColorUtils::distanceToSegment(a, b, p, &nearest), distance, 1e-15));
    QCOMPARE(nearest, foot);
    QVERIFY(isNear(ColorUtils::distanceToSegment(a, b, p, nullptr), distance, 1e-15));
}

QTEST_APPLESS_MAIN(BlackBodyTest)
#include "BlackBodyTest.moc"
