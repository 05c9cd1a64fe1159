#include "effects/HueWheel.h"

#include "effects/FadeFactor.h"

#include <QtTest>

#include <cmath>
#include <limits>
#include <random>

/// Closed forms against the steps that they stand for.
class HueWheelTest : public QObject
{
    Q_OBJECT
private slots:
    void endsWhereTheStepsEnd_data();
    void endsWhereTheStepsEnd();
    void agreesWithTheStepsEverywhere();
    void endsForAnyNumber();
    void settableHues_data();
    void settableHues();
    void fadeFactorsStayWithin_data();
    void fadeFactorsStayWithin();
};

namespace {

double stepDown(double hue)
{
    while (hue > 360.0) {
        hue -= 360.0;
    }
    return hue;
}

double stepUp(double hue)
{
    while (hue < 0.0) {
        hue += 360.0;
    }
    return hue;
}

} // namespace

void HueWheelTest::endsWhereTheStepsEnd_data()
{
    QTest::addColumn<double>("hue");
    QTest::addColumn<double>("dropped");
    QTest::addColumn<double>("raised");
    QTest::newRow("zero") << 0.0 << 0.0 << 0.0;
    QTest::newRow("within") << 359.5 << 359.5 << 359.5;
    QTest::newRow("a turn stays") << 360.0 << 360.0 << 360.0;
    QTest::newRow("just above a turn") << 360.5 << 0.5 << 360.5;
    QTest::newRow("two turns become one") << 720.0 << 360.0 << 720.0;
    QTest::newRow("a thousand turns become one") << 360000.0 << 360.0 << 360000.0;
    QTest::newRow("the unsigned -1") << 4294967295.0 << 255.0 << 4294967295.0;
    QTest::newRow("below") << -0.5 << -0.5 << 359.5;
    QTest::newRow("a turn below") << -360.0 << -360.0 << 0.0;
    QTest::newRow("three turns below") << -1080.0 << -1080.0 << 0.0;
    QTest::newRow("more than a turn below") << -361.0 << -361.0 << 359.0;
    QTest::newRow("hardly below") << -1e-20 << -1e-20 << 360.0;
    QTest::newRow("the least integer") << -2147483648.0 << -2147483648.0 << 232.0;
}

void HueWheelTest::endsWhereTheStepsEnd()
{
    QFETCH(const double, hue);
    QFETCH(const double, dropped);
    QFETCH(const double, raised);
    QVERIFY(HueWheel::dropAbove360(hue) == dropped);
    QVERIFY(HueWheel::raiseBelow0(hue) == raised);
    QVERIFY(stepDown(hue) == dropped);
    QVERIFY(stepUp(hue) == raised);
    QVERIFY(std::signbit(raised) == std::signbit(HueWheel::raiseBelow0(hue)));
}

void HueWheelTest::agreesWithTheStepsEverywhere()
{
    std::mt19937 random(1);
    std::uniform_real_distribution<double> wide(-500000.0, 500000.0);
    std::uniform_real_distribution<double> narrow(-1000.0, 1000.0);
    for (int i = 0; i < 20000; ++i) {
        for (const double hue : {wide(random), narrow(random), std::floor(narrow(random)) * 0.5}) {
            QVERIFY(HueWheel::dropAbove360(hue) == stepDown(hue));
            QVERIFY(HueWheel::raiseBelow0(hue) == stepUp(hue));
        }
    }
}

void HueWheelTest::endsForAnyNumber()
{
    const double infinity = std::numeric_limits<double>::infinity();
    QVERIFY(HueWheel::dropAbove360(1e300) <= 360.0);
    QVERIFY(HueWheel::dropAbove360(1e300) > 0.0);
    QVERIFY(HueWheel::raiseBelow0(-1e300) >= 0.0);
    QVERIFY(HueWheel::raiseBelow0(-1e300) <= 360.0);
    QCOMPARE(HueWheel::dropAbove360(infinity), infinity);
    QCOMPARE(HueWheel::dropAbove360(-infinity), -infinity);
    QCOMPARE(HueWheel::raiseBelow0(infinity), infinity);
    QCOMPARE(HueWheel::raiseBelow0(-infinity), -infinity);
    QVERIFY(std::isnan(HueWheel::dropAbove360(std::nan(""))));
    QVERIFY(std::isnan(HueWheel::raiseBelow0(std::nan(""))));
}

void HueWheelTest::settableHues_data()
{
    QTest::addColumn<int>("hue");
    QTest::addColumn<int>("settable");
    QTest::newRow("zero") << 0 << 0;
    QTest::newRow("within") << 359 << 359;
    QTest::newRow("a turn") << 360 << 0;
    QTest::newRow("the first refused") << 65536 << 16;
    QTest::newRow("the greatest") << 2147483647 << 127;
    QTest::newRow("achromatic") << -1 << -1;
    QTest::newRow("negative") << -361 << -361;
    QTest::newRow("the least") << std::numeric_limits<int>::min()
                               << std::numeric_limits<int>::min();
}

void HueWheelTest::settableHues()
{
    QFETCH(const int, hue);
    QTEST(HueWheel::settable(hue), "settable");
}

void HueWheelTest::fadeFactorsStayWithin_data()
{
    QTest::addColumn<double>("left");
    QTest::addColumn<double>("length");
    QTest::addColumn<double>("factor");
    const double infinity = std::numeric_limits<double>::infinity();
    QTest::newRow("start") << 500.0 << 500.0 << 1.0;
    QTest::newRow("a quarter left") << 125.0 << 500.0 << 0.25;
    QTest::newRow("end") << 0.0 << 500.0 << 0.0;
    QTest::newRow("more than the whole") << 1.0 << 0.6 << 1.0;
    QTest::newRow("negative length") << 100.0 << -500.0 << 0.0;
    QTest::newRow("no length") << 1.0 << 0.0 << 1.0;
    QTest::newRow("nothing of nothing") << 0.0 << 0.0 << 1.0;
    QTest::newRow("endless") << 1.0 << infinity << 0.0;
    QTest::newRow("no number") << 1.0 << std::nan("") << 1.0;
}

void HueWheelTest::fadeFactorsStayWithin()
{
    QFETCH(const double, left);
    QFETCH(const double, length);
    QTEST(fadeFactor(left, length), "factor");
}

QTEST_APPLESS_MAIN(HueWheelTest)
#include "HueWheelTest.moc"
