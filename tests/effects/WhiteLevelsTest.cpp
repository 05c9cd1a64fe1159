#include "effects/WhiteLevels.h"

#include <QObject>
#include <QtTest>

class WhiteLevelsTest : public QObject
{
    Q_OBJECT
private slots:
    void warmIsRedAndBlueCoolIsGreen_data();
    void warmIsRedAndBlueCoolIsGreen();
    void defaultsAreHalfOfBoth();
};

void WhiteLevelsTest::warmIsRedAndBlueCoolIsGreen_data()
{
    QTest::addColumn<int>("temperature");
    QTest::addColumn<uint>("intensity");
    QTest::addColumn<uint>("inputType");
    QTest::addColumn<uint>("warm");
    QTest::addColumn<uint>("cool");
    QTest::addColumn<int>("redAndBlue");
    QTest::addColumn<int>("green");
    const auto row = [](const char* name, int temperature, uint intensity, int red, int green) {
        QTest::newRow(name) << temperature << intensity << 0U << 1U << 2U << red << green;
    };
    row("all warm", 510, 100, 255, 0);
    row("all cool", 0, 100, 0, 255);
    row("both", 255, 100, 255, 255);
    row("warmish", 400, 100, 255, 110);
    row("coolish", 100, 100, 100, 255);
    row("half", 255, 50, 127, 127);  // 127.5 truncated
    row("a third", 400, 33, 84, 36); // 84.15, 36.3
    row("dark", 300, 0, 0, 0);
    row("too warm wraps", 511, 100, 255, 255);
    row("negative wraps", -1, 100, 255, 255); // 510 + 1
    row("lowest", std::numeric_limits<int>::min(), 100, 255, 255);
    row("too bright is masked", 255, 200, 254, 254); // 510
    row("far too bright", 255, 4294967295U, 0, 0);   // no 32 bits hold it
    QTest::newRow("levels") << 510 << 100U << 1U << 12U << 34U << 12 << 34;
    QTest::newRow("levels, other type") << 510 << 100U << 4294967295U << 12U << 34U << 12 << 34;
    QTest::newRow("levels are masked") << 0 << 0U << 1U << 256U + 7U << 4294967295U << 7 << 255;
}

void WhiteLevelsTest::warmIsRedAndBlueCoolIsGreen()
{
    QFETCH(const int, temperature);
    QFETCH(const uint, intensity);
    QFETCH(const uint, inputType);
    QFETCH(const uint, warm);
    QFETCH(const uint, cool);
    QFETCH(const int, redAndBlue);
    QFETCH(const int, green);
    const WhiteLevels white{temperature, intensity, warm, cool, inputType};
    const VelaColor color = white.color();
    QCOMPARE(color.red8(), redAndBlue);
    QCOMPARE(color.green8(), green);
    QCOMPARE(color.blue8(), redAndBlue);
    QCOMPARE(color.alpha32(), 0xFFFFFFFFU);
    QCOMPARE(color.spec(), VelaColor::Rgb);
    QCOMPARE(color.profileId(), 0U);
    QCOMPARE(color.channelLayout(), 1U);
    QVERIFY(!color.tintweave());
}

void WhiteLevelsTest::defaultsAreHalfOfBoth()
{
    const WhiteLevels white;
    QCOMPARE(white.temperature, 255);
    QCOMPARE(white.intensity, 50U);
    QCOMPARE(white.warm, 127U);
    QCOMPARE(white.cool, 127U);
    QCOMPARE(white.inputType, 0U);
}

QTEST_GUILESS_MAIN(WhiteLevelsTest)
#include "WhiteLevelsTest.moc"
