#include "color/Curve.h"

#include "color/ColorUtils.h"
#include "color/GammaAnchors.h"

#include <QVector>
#include <QtTest>

class CurveTest : public QObject
{
    Q_OBJECT

private slots:
    void linearCurveHasNoTables();
    void unknownCurvesAreNull();
    void anchorsStandInTheTable_data();
    void anchorsStandInTheTable();
    void anchorsRise_data();
    void anchorsRise();
    void anchorsStayCloseToTheFormula();
    void wideTableRunsStraightBetweenAnchors_data();
    void wideTableRunsStraightBetweenAnchors();
    void wideTableEndsFlat_data();
    void wideTableEndsFlat();
    void narrowTableRoundsTheHighByte_data();
    void narrowTableRoundsTheHighByte();
    void narrowTableEndsAtFullAndNeverWraps_data();
    void narrowTableEndsAtFullAndNeverWraps();
    void reverseTableTakesTheLaterValueAndFillsGapsFromBelow_data();
    void reverseTableTakesTheLaterValueAndFillsGapsFromBelow();
    void reverseTableOfTheNormalCurve();
};

namespace {

void addBothCurves()
{
    QTest::addColumn<int>("id");
    QTest::newRow("normal") << 1;
    QTest::newRow("tungsten") << 2;
}

} // namespace

void CurveTest::linearCurveHasNoTables()
{
    const Curve* const linear = ColorUtils::curve(0);
    if (linear == nullptr) {
        QFAIL("the linear curve is there");
    }
    QVERIFY(linear->lut8() == nullptr);
    QVERIFY(linear->lut16() == nullptr);
    QVERIFY(linear->reverse8() == nullptr);
    QCOMPARE(ColorUtils::curve(0), linear);
}

void CurveTest::unknownCurvesAreNull()
{
    QVERIFY(ColorUtils::curve(3) == nullptr);
    QVERIFY(ColorUtils::curve(-1) == nullptr);
    QVERIFY(ColorUtils::curve(3) == nullptr); // entered by the first look-up
    QVERIFY(ColorUtils::curve(1) != nullptr);
    QVERIFY(dynamic_cast<const GammaCurveVelaNormal*>(ColorUtils::curve(1)) != nullptr);
    QVERIFY(dynamic_cast<const GammaCurveTungsten*>(ColorUtils::curve(2)) != nullptr);
}

void CurveTest::anchorsStandInTheTable_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("first");
    QTest::addColumn<QVector<int>>("anchors");
    QTest::newRow("normal, low end")
        << 1 << 0
        << QVector<int>{0, 16, 36, 60, 84, 108, 136, 164, 196, 228, 264, 300, 340, 380, 420, 464};
    QTest::newRow("normal, middle") << 1 << 128 << QVector<int>{17588};
    QTest::newRow("normal, upper") << 1 << 200 << QVector<int>{41036};
    QTest::newRow("normal, high end")
        << 1 << 250 << QVector<int>{63060, 63548, 64036, 64528, 65024, 65520};
    QTest::newRow("tungsten, low end")
        << 2 << 0 << QVector<int>{0, 1, 2, 3, 4, 5, 7, 9, 11, 14, 17, 20, 24, 28, 33, 38};
    QTest::newRow("tungsten, first solved") << 2 << 16 << QVector<int>{45};
    QTest::newRow("tungsten, change of formula") << 2 << 39 << QVector<int>{303, 319, 347};
    QTest::newRow("tungsten, last solved") << 2 << 249 << QVector<int>{61977};
    QTest::newRow("tungsten, high end")
        << 2 << 250 << QVector<int>{62522, 63095, 63670, 64247, 64880, 65535};
}

void CurveTest::anchorsStandInTheTable()
{
    QFETCH(const int, id);
    QFETCH(const int, first);
    QFETCH(const QVector<int>, anchors);
    const Curve* const curve = ColorUtils::curve(id);
    for (int i = 0; i < anchors.size(); ++i) {
        quint16 level = 0;
        ColorUtils::lut16Lookup(curve, static_cast<quint16>((first + i) * 256), &level);
        QCOMPARE(static_cast<int>(level), anchors.at(i));
    }
}

void CurveTest::anchorsRise_data()
{
    addBothCurves();
}

void CurveTest::anchorsRise()
{
    QFETCH(const int, id);
    const GammaAnchors& anchors = id == 1 ? normalGammaAnchors() : tungstenGammaAnchors();
    for (std::size_t i = 1; i < anchors.size(); ++i) {
        QVERIFY2(anchors[i] > anchors[i - 1], qPrintable(QString::number(i)));
    }
}

void CurveTest::anchorsStayCloseToTheFormula()
{
    // The table of the normal curve and the fitted polynomial tell the same dimming.
    for (int i = 0; i < 256; ++i) {
        const double table = normalGammaAnchors()[static_cast<std::size_t>(i)];
        const double fitted = ColorUtils::linearizeNormal(static_cast<quint16>(i * 257)) * 65516.0;
        QVERIFY2(qAbs(table - fitted) < 30.0, qPrintable(QString::number(i)));
    }
}

void CurveTest::wideTableRunsStraightBetweenAnchors_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("level");
    QTest::newRow("normal 1: 0.0625") << 1 << 1 << 0;
    QTest::newRow("normal 15: 0.9375") << 1 << 15 << 0;
    QTest::newRow("normal 16: 1") << 1 << 16 << 1;
    QTest::newRow("normal 128: half of 16") << 1 << 128 << 8;
    QTest::newRow("normal 255: 15.9375") << 1 << 255 << 15;
    QTest::newRow("normal 384: half way to 36") << 1 << 384 << 26;
    QTest::newRow("normal, before the last anchor: 65518.0625") << 1 << 65279 << 65518;
    QTest::newRow("tungsten 255: below 1") << 2 << 255 << 0;
    QTest::newRow("tungsten, half way to 65535: 65207.5") << 2 << 254 * 256 + 128 << 65207;
}

void CurveTest::wideTableRunsStraightBetweenAnchors()
{
    QFETCH(const int, id);
    QFETCH(const int, value);
    QFETCH(const int, level);
    quint16 out = 0;
    ColorUtils::lut16Lookup(ColorUtils::curve(id), static_cast<quint16>(value), &out);
    QCOMPARE(static_cast<int>(out), level);
}

void CurveTest::wideTableEndsFlat_data()
{
    addBothCurves();
}

void CurveTest::wideTableEndsFlat()
{
    QFETCH(const int, id);
    const quint16* const table = ColorUtils::curve(id)->lut16();
    for (int i = 65280; i < 65536; ++i) {
        QCOMPARE(static_cast<int>(table[i]), id == 1 ? 65520 : 65535);
    }
}

void CurveTest::narrowTableRoundsTheHighByte_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("level");
    QTest::newRow("normal 5: 108 is 0x006C") << 1 << 5 << 0;
    QTest::newRow("normal 6: 136 is 0x0088") << 1 << 6 << 1;
    QTest::newRow("normal 11: 300 is 0x012C") << 1 << 11 << 1;
    QTest::newRow("normal 13: 380 is 0x017C") << 1 << 13 << 1;
    QTest::newRow("normal 14: 420 is 0x01A4") << 1 << 14 << 2;
    QTest::newRow("normal 34: 1664 is 0x0680") << 1 << 34 << 7;
    QTest::newRow("normal 250: 63060 is 0xF654") << 1 << 250 << 246;
    QTest::newRow("normal 254: 65024 is 0xFE00") << 1 << 254 << 254;
    QTest::newRow("normal 255: 65520 is 0xFFF0") << 1 << 255 << 255;
    QTest::newRow("tungsten 15: 38") << 2 << 15 << 0;
    QTest::newRow("tungsten 254: 64880 is 0xFD70") << 2 << 254 << 253;
    QTest::newRow("tungsten 253: 64247 is 0xFAF7") << 2 << 253 << 251;
    QTest::newRow("tungsten 255: 0xFFFF") << 2 << 255 << 255;
    QTest::newRow("linear") << 0 << 77 << 77;
    QTest::newRow("unknown") << 9 << 77 << 77;
}

void CurveTest::narrowTableRoundsTheHighByte()
{
    QFETCH(const int, id);
    QFETCH(const int, value);
    QFETCH(const int, level);
    quint8 out = 0;
    ColorUtils::lut8Lookup(ColorUtils::curve(id), static_cast<quint8>(value), &out, true);
    QCOMPARE(static_cast<int>(out), level);
}

void CurveTest::narrowTableEndsAtFullAndNeverWraps_data()
{
    addBothCurves();
}

void CurveTest::narrowTableEndsAtFullAndNeverWraps()
{
    QFETCH(const int, id);
    const quint8* const table = ColorUtils::curve(id)->lut8();
    QCOMPARE(static_cast<int>(table[0]), 0);
    QCOMPARE(static_cast<int>(table[255]), 255);
    for (int i = 1; i < 256; ++i) {
        QVERIFY2(table[i] >= table[i - 1], qPrintable(QString::number(i)));
    }
}

void CurveTest::reverseTableTakesTheLaterValueAndFillsGapsFromBelow_data()
{
    addBothCurves();
}

void CurveTest::reverseTableTakesTheLaterValueAndFillsGapsFromBelow()
{
    QFETCH(const int, id);
    const Curve* const curve = ColorUtils::curve(id);
    for (int level = 0; level < 256; ++level) {
        // The table rises, so that the last value at or below a level is the answer to both.
        int expected = 0;
        for (int value = 0; value < 256; ++value) {
            if (curve->lut8()[value] <= level) {
                expected = value;
            }
        }
        quint8 out = 0;
        ColorUtils::lut8Lookup(curve, static_cast<quint8>(level), &out, false);
        QCOMPARE(static_cast<int>(out), expected);
    }
}

void CurveTest::reverseTableOfTheNormalCurve()
{
    const quint8* const reverse = ColorUtils::curve(1)->reverse8();
    QCOMPARE(static_cast<int>(reverse[0]), 5); // 0 to 5 round to 0, 6 (136) to 1
    QCOMPARE(static_cast<int>(reverse[1]), 13);
    QCOMPARE(static_cast<int>(reverse[255]), 255);
    QCOMPARE(ColorUtils::curve(1)->reverse8(), reverse); // built once
}

QTEST_APPLESS_MAIN(CurveTest)
#include "CurveTest.moc"
