#include "color/ColorScale.h"

#include <QtTest>

#include <cmath>
#include <limits>

class ColorScaleTest : public QObject
{
    Q_OBJECT

private slots:
    void componentsDivideToTheLastBit();
    void everyComponentSurvivesTheWayThroughADouble();
    void widensBytesAndWords();
    void limitsDoubles_data();
    void limitsDoubles();
    void unitRangeRefusesNan();
};

namespace {

constexpr quint64 kAll = 0x100000000ULL;
constexpr quint64 kStride = 1009; // prime: the low bits take every value

} // namespace

void ColorScaleTest::componentsDivideToTheLastBit()
{
    const auto check = [](quint64 v) {
        const auto component = static_cast<quint32>(v);
        return componentF(component) == static_cast<double>(component) / 4294967295.0;
    };
    for (quint64 v = 0; v < kAll; v += kStride) {
        QVERIFY2(check(v), qPrintable(QString::number(v)));
    }
    for (quint64 v = 0; v < 4096; ++v) {
        QVERIFY(check(v));
        QVERIFY(check(kAll - 1 - v));
    }
    for (quint32 v = 0; v < 65536; ++v) { // what bytes and words become
        QVERIFY(check(widen16(v)));
    }
}

void ColorScaleTest::everyComponentSurvivesTheWayThroughADouble()
{
    for (quint64 v = 0; v < kAll; v += kStride) {
        const auto component = static_cast<quint32>(v);
        QCOMPARE(widenF(componentF(component)), component);
        QCOMPARE(widenUnit(componentF(component)), component);
    }
    QCOMPARE(widenUnit(1.0), 0xFFFFFFFFU);
    QCOMPARE(widenUnit(0.0), 0U);
}

void ColorScaleTest::widensBytesAndWords()
{
    QCOMPARE(widen8(0xAB), 0xABABABABU);
    QCOMPARE(widen8(255), 0xFFFFFFFFU);
    QCOMPARE(widen16(0x1234), 0x12341234U);
    QCOMPARE(widen16(0x10001), 0x00020001U); // wraps
}

void ColorScaleTest::limitsDoubles_data()
{
    QTest::addColumn<double>("v");
    QTest::addColumn<quint32>("component");
    QTest::newRow("half") << 0.5 << 0x80000000U;
    QTest::newRow("one") << 1.0 << 0xFFFFFFFFU;
    QTest::newRow("above one") << 1.5 << 0xFFFFFFFFU;
    QTest::newRow("just above one") << std::nextafter(1.0, 2.0) << 0xFFFFFFFFU;
    QTest::newRow("negative") << -0.5 << 0U;
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << 0xFFFFFFFFU;
    QTest::newRow("minus infinite") << -std::numeric_limits<double>::infinity() << 0U;
    QTest::newRow("NaN") << std::numeric_limits<double>::quiet_NaN() << 0U;
}

void ColorScaleTest::limitsDoubles()
{
    QFETCH(const double, v);
    QTEST(widenF(v), "component");
}

void ColorScaleTest::unitRangeRefusesNan()
{
    QVERIFY(isUnit(0.0) && isUnit(1.0) && isUnit(0.5));
    QVERIFY(!isUnit(-1e-300) && !isUnit(std::nextafter(1.0, 2.0)));
    QVERIFY(!isUnit(std::numeric_limits<double>::quiet_NaN()));
}

QTEST_APPLESS_MAIN(ColorScaleTest)
#include "ColorScaleTest.moc"
