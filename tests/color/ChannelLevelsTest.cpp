#include "color/ColorUtils.h"

#include <QByteArray>
#include <QVector>
#include <QtTest>

#include <cmath>
#include <limits>

class ChannelLevelsTest : public QObject
{
    Q_OBJECT

private slots:
    void linearizesLevels_data();
    void linearizesLevels();
    void delinearizes_data();
    void delinearizes();
    void everyLevelIsTheSinglePrecisionRoot_data();
    void everyLevelIsTheSinglePrecisionRoot();
    void narrowTungstenStaysInItsRange();
    void roundTripOfTheNormalCurve();
    void quantizes_data();
    void quantizes();
    void writesBytes_data();
    void writesBytes();
    void writesEveryChannel();
    void aLinearLevelIsNarrowedToTheNearest();
    void otherWidthsWriteNothing_data();
    void otherWidthsWriteNothing();
};

namespace {

constexpr int kTables = ColorUtils::QuantizeTables;
constexpr int kFormula = ColorUtils::QuantizeFormula;

} // namespace

void ChannelLevelsTest::linearizesLevels_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("level");
    QTest::addColumn<double>("drive"); // from the polynomials in exact arithmetic
    QTest::newRow("normal, 0 is clamped up") << 1 << 0 << 0.0;
    QTest::newRow("normal 1") << 1 << 1 << 1.0042396906320484e-06;
    QTest::newRow("normal 257") << 1 << 257 << 0.0002725960621867863;
    QTest::newRow("normal 10000") << 1 << 10000 << 0.031805740767283944;
    QTest::newRow("normal 32768") << 1 << 32768 << 0.266497729323753;
    QTest::newRow("normal 65000") << 1 << 65000 << 0.9842840155458209;
    QTest::newRow("normal 65534, under the clamp") << 1 << 65534 << 0.9999822920164539;
    QTest::newRow("normal 65535") << 1 << 65535 << 1.0;
    QTest::newRow("tungsten 0") << 2 << 0 << 0.0;
    QTest::newRow("tungsten 5000, negative") << 2 << 5000 << 0.0;
    QTest::newRow("tungsten 16384") << 2 << 16384 << 0.0182329125032187;
    QTest::newRow("tungsten 32768") << 2 << 32768 << 0.1846818493934539;
    QTest::newRow("tungsten 65000") << 2 << 65000 << 0.9868177548256657;
    QTest::newRow("tungsten 65535, above the clamp") << 2 << 65535 << 1.0;
}

void ChannelLevelsTest::linearizesLevels()
{
    QFETCH(const int, id);
    QFETCH(const int, level);
    QFETCH(const double, drive);
    const double actual = id == 1 ? ColorUtils::linearizeNormal(static_cast<quint16>(level))
                                  : ColorUtils::linearizeTungsten(static_cast<quint16>(level));
    // One unit in the last place of the single precision that the value passes through.
    QVERIFY2(qAbs(actual - drive) <= drive * 1.2e-7, qPrintable(QString::number(actual, 'g', 17)));
}

void ChannelLevelsTest::delinearizes_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("linear");
    QTest::addColumn<int>("level16");
    QTest::addColumn<int>("level8");
    // Worked out with every operation rounded to single precision.
    QTest::newRow("normal 0, without the root") << 1 << 0 << 0 << 0;
    QTest::newRow("normal 1") << 1 << 1 << 16 << 0;
    QTest::newRow("normal 100") << 1 << 100 << 1205 << 5;
    QTest::newRow("normal 1000") << 1 << 1000 << 6378 << 25;
    QTest::newRow("normal 16384") << 1 << 16384 << 31675 << 123;
    QTest::newRow("normal 40000") << 1 << 40000 << 50720 << 197;
    QTest::newRow("normal 65516") << 1 << 65516 << 65533 << 255;
    QTest::newRow("normal 65535, clamped") << 1 << 65535 << 65535 << 255;
    QTest::newRow("tungsten 0") << 2 << 0 << 0 << 0;
    QTest::newRow("tungsten 4, itself") << 2 << 4 << 4 << 4;
    QTest::newRow("tungsten 5, first root") << 2 << 5 << 255 << 5;
    QTest::newRow("tungsten 100") << 2 << 100 << 255 << 23;
    QTest::newRow("tungsten 321, last of the first") << 2 << 321 << 255 << 40;
    QTest::newRow("tungsten 322, second root") << 2 << 322 << 255 << 40;
    QTest::newRow("tungsten 16384") << 2 << 16384 << 255 << 143;
    QTest::newRow("tungsten 65535") << 2 << 65535 << 255 << 255;
    QTest::newRow("linear 128, under the half") << 0 << 128 << 128 << 0;
    QTest::newRow("linear 129, over the half") << 0 << 129 << 129 << 1;
    QTest::newRow("linear 257") << 0 << 257 << 257 << 1;
    QTest::newRow("linear 65406, under the half") << 0 << 65406 << 65406 << 254;
    QTest::newRow("linear 65407, over the half") << 0 << 65407 << 65407 << 255;
    QTest::newRow("linear 65535") << 0 << 65535 << 65535 << 255;
    QTest::newRow("unknown id acts as linear") << 7 << 40000 << 40000 << 156;
}

void ChannelLevelsTest::delinearizes()
{
    QFETCH(const int, id);
    QFETCH(const int, linear);
    QFETCH(const int, level16);
    QFETCH(const int, level8);
    const quint16 in[2] = {static_cast<quint16>(linear), 0};
    quint16 wide[2] = {1, 1};
    quint8 narrow[2] = {1, 1};
    ColorUtils::delinearize16(id, in, wide, 2);
    ColorUtils::delinearize8(id, in, narrow, 2);
    QCOMPARE(static_cast<int>(wide[0]), level16);
    QCOMPARE(static_cast<int>(narrow[0]), level8);
    QCOMPARE(static_cast<int>(wide[1]), 0);
    QCOMPARE(static_cast<int>(narrow[1]), 0);
}

void ChannelLevelsTest::everyLevelIsTheSinglePrecisionRoot_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<bool>("wide");
    QTest::addColumn<quint64>("sum");      // of the levels of all 65536 inputs
    QTest::addColumn<quint64>("weighted"); // each times its input + 1
    // Worked out in another language, every operation rounded to single precision.
    QTest::newRow("normal, 16 bits")
        << 1 << true << Q_UINT64_C(2816417924) << Q_UINT64_C(111655200830649);
    QTest::newRow("normal, 8 bits")
        << 1 << false << Q_UINT64_C(10958816) << Q_UINT64_C(434456211544);
    QTest::newRow("tungsten, 8 bits")
        << 2 << false << Q_UINT64_C(11807951) << Q_UINT64_C(451616966925);
}

void ChannelLevelsTest::everyLevelIsTheSinglePrecisionRoot()
{
    QFETCH(const int, id);
    QFETCH(const bool, wide);
    quint64 sum = 0;
    quint64 weighted = 0;
    for (quint32 linear = 0; linear < 65536; ++linear) {
        const auto in = static_cast<quint16>(linear);
        quint16 level16 = 0;
        quint8 level8 = 0;
        ColorUtils::delinearize16(id, &in, &level16, 1);
        ColorUtils::delinearize8(id, &in, &level8, 1);
        const quint64 level = wide ? level16 : level8;
        sum += level;
        weighted += level * (linear + 1);
    }
    QTEST(sum, "sum");
    QTEST(weighted, "weighted");
}

void ChannelLevelsTest::narrowTungstenStaysInItsRange()
{
    for (int linear = 0; linear < 65536; ++linear) {
        const quint16 in = static_cast<quint16>(linear);
        quint16 wide = 0;
        ColorUtils::delinearize16(2, &in, &wide, 1);
        QCOMPARE(static_cast<int>(wide), linear <= 4 ? linear : 255);
    }
}

void ChannelLevelsTest::roundTripOfTheNormalCurve()
{
    for (int linear = 0; linear < 65516; linear += 101) {
        const quint16 in = static_cast<quint16>(linear);
        quint16 level = 0;
        ColorUtils::delinearize16(1, &in, &level, 1);
        const double back = ColorUtils::linearizeNormal(level) * 65516.0;
        QVERIFY2(qAbs(back - linear) < 25.0, qPrintable(QString::number(linear)));
    }
}

void ChannelLevelsTest::quantizes_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("kind");
    QTest::addColumn<double>("drive");
    QTest::addColumn<int>("level");
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    QTest::newRow("formula rounds up at a half") << 0 << kFormula << 100.5 / 65535.0 << 101;
    QTest::newRow("formula rounds down below") << 0 << kFormula << 100.49 / 65535.0 << 100;
    QTest::newRow("formula full") << 0 << kFormula << 1.0 << 65535;
    QTest::newRow("formula, normal curve") << 1 << kFormula << 0.25 << 31675;
    QTest::newRow("formula, tungsten") << 2 << kFormula << 0.25 << 255;
    QTest::newRow("formula, unknown curve") << 5 << kFormula << 0.25 << 16384;
    QTest::newRow("formula, NaN") << 0 << kFormula << nan << 0;
    QTest::newRow("formula, negative") << 0 << kFormula << -0.5 << 0;
    QTest::newRow("formula, above one") << 0 << kFormula << 1.5 << 65535;
    QTest::newRow("formula, infinite") << 1 << kFormula << inf << 65535;
    QTest::newRow("tables truncate") << 0 << kTables << 100.99 / 65535.0 << 100;
    QTest::newRow("tables full") << 0 << kTables << 1.0 << 65535;
    QTest::newRow("tables, normal, 384") << 1 << kTables << 384.5 / 65535.0 << 26;
    QTest::newRow("tables, tungsten full") << 2 << kTables << 1.0 << 65535;
    QTest::newRow("tables, unknown curve") << 5 << kTables << 0.5 << 32767;
    QTest::newRow("any other kind is tables") << 1 << 0 << 384.5 / 65535.0 << 26;
    QTest::newRow("tables, NaN") << 1 << kTables << nan << 0;
    QTest::newRow("tables, negative") << 1 << kTables << -3.0 << 0;
    QTest::newRow("tables, above one") << 1 << kTables << 3.0 << 65520;
}

void ChannelLevelsTest::quantizes()
{
    QFETCH(const int, id);
    QFETCH(const int, kind);
    QFETCH(const double, drive);
    QFETCH(const int, level);
    const double drives[2] = {drive, 0.0};
    quint16 out[2] = {1, 1};
    ColorUtils::quantize(2, drives, out, id, kind);
    QCOMPARE(static_cast<int>(out[0]), level);
    QCOMPARE(static_cast<int>(out[1]), 0);
}

void ChannelLevelsTest::writesBytes_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("width");
    QTest::addColumn<bool>("forward");
    QTest::addColumn<double>("drive");
    QTest::addColumn<QByteArray>("bytes");
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const auto hex = [](const char* text) { return QByteArray::fromHex(text); };
    QTest::newRow("formula linear 8") << 0 << kFormula << 1 << true << 0.5 << hex("80");
    QTest::newRow("formula linear 16") << 0 << kFormula << 2 << true << 0.5 << hex("8000");
    QTest::newRow("formula 16, high byte first")
        << 0 << kFormula << 2 << true << 4660.0 / 65535.0 << hex("1234");
    QTest::newRow("formula normal 8: 123") << 1 << kFormula << 1 << true << 0.25 << hex("7b");
    QTest::newRow("formula normal 16, curve once: 31675")
        << 1 << kFormula << 2 << true << 0.25 << hex("7bbb");
    QTest::newRow("formula tungsten 8: 143") << 2 << kFormula << 1 << true << 0.25 << hex("8f");
    QTest::newRow("formula tungsten 16: 255") << 2 << kFormula << 2 << true << 0.25 << hex("00ff");
    QTest::newRow("formula ignores forward") << 1 << kFormula << 1 << false << 0.25 << hex("7b");
    QTest::newRow("formula NaN") << 1 << kFormula << 2 << true << nan << hex("0000");
    QTest::newRow("tables linear 8, half up") << 0 << kTables << 1 << true << 0.5 << hex("80");
    QTest::newRow("tables linear 8, below half")
        << 0 << kTables << 1 << true << 127.49 / 255.0 << hex("7f");
    QTest::newRow("tables normal 8 forward: 250 is 246")
        << 1 << kTables << 1 << true << 250.0 / 255.0 << hex("f6");
    QTest::newRow("tables normal 8 reverse: 0 is 5")
        << 1 << kTables << 1 << false << 0.0 << hex("05");
    QTest::newRow("tables linear 16, truncated") << 0 << kTables << 2 << true << 0.5 << hex("7fff");
    QTest::newRow("tables normal 16: 384 is 26")
        << 1 << kTables << 2 << true << 384.5 / 65535.0 << hex("001a");
    QTest::newRow("tables 16 know no direction")
        << 1 << kTables << 2 << false << 384.5 / 65535.0 << hex("001a");
    QTest::newRow("tables 8, negative") << 0 << kTables << 1 << true << -0.5 << hex("00");
    QTest::newRow("tables 8, above one") << 0 << kTables << 1 << true << 2.0 << hex("ff");
    QTest::newRow("tables 8, NaN") << 0 << kTables << 1 << true << nan << hex("00");
    QTest::newRow("tables 16, above one") << 0 << kTables << 2 << true << 2.0 << hex("ffff");
    QTest::newRow("unknown curve, tables") << 8 << kTables << 1 << true << 1.0 << hex("ff");
    QTest::newRow("unknown curve, formula") << 8 << kFormula << 1 << true << 1.0 << hex("ff");
    QTest::newRow("kind 0 is tables") << 0 << 0 << 2 << true << 0.5 << hex("7fff");
}

void ChannelLevelsTest::writesBytes()
{
    QFETCH(const int, id);
    QFETCH(const int, kind);
    QFETCH(const int, width);
    QFETCH(const bool, forward);
    QFETCH(const double, drive);
    QFETCH(const QByteArray, bytes);
    quint8 out[4] = {0xEE, 0xEE, 0xEE, 0xEE};
    ColorUtils::writeChannels(1, width, &drive, out, id, kind, forward);
    QCOMPARE(QByteArray(reinterpret_cast<const char*>(out), width).toHex(), bytes.toHex());
    QCOMPARE(static_cast<int>(out[width]), 0xEE); // nothing beyond
}

void ChannelLevelsTest::writesEveryChannel()
{
    const double drives[3] = {0.0, 0.5, 1.0};
    for (const int kind : {kTables, kFormula}) {
        quint8 narrow[4] = {9, 9, 9, 9};
        ColorUtils::writeChannels(3, 1, drives, narrow, 0, kind, true);
        QCOMPARE(QByteArray(reinterpret_cast<const char*>(narrow), 4).toHex(),
                 QByteArray("0080ff09"));
        quint8 wide[7] = {9, 9, 9, 9, 9, 9, 9};
        ColorUtils::writeChannels(3, 2, drives, wide, 0, kind, true);
        QCOMPARE(QByteArray(reinterpret_cast<const char*>(wide), 7).toHex(),
                 QByteArray(kind == kTables ? "00007fffffff09" : "00008000ffff09"));
    }
    quint8 none = 9;
    ColorUtils::writeChannels(0, 1, drives, &none, 0, kTables, true);
    QCOMPARE(static_cast<int>(none), 9);
}

void ChannelLevelsTest::aLinearLevelIsNarrowedToTheNearest()
{
    for (int linear = 0; linear <= 65535; ++linear) {
        const auto in = static_cast<quint16>(linear);
        quint8 out = 0;
        ColorUtils::delinearize8(0, &in, &out, 1);
        QCOMPARE(static_cast<int>(out), static_cast<int>(std::floor(linear / 257.0 + 0.5)));
    }
}

void ChannelLevelsTest::otherWidthsWriteNothing_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("kind");
    QTest::newRow("0, tables") << 0 << kTables;
    QTest::newRow("3, tables") << 3 << kTables;
    QTest::newRow("-1, tables") << -1 << kTables;
    QTest::newRow("0, formula") << 0 << kFormula;
    QTest::newRow("4, formula") << 4 << kFormula;
}

void ChannelLevelsTest::otherWidthsWriteNothing()
{
    QFETCH(const int, width);
    QFETCH(const int, kind);
    const double drive = 1.0;
    quint8 out[4] = {7, 7, 7, 7};
    ColorUtils::writeChannels(1, width, &drive, out, 0, kind, true);
    QCOMPARE(QByteArray(reinterpret_cast<const char*>(out), 4), QByteArray(4, 7));
}

QTEST_APPLESS_MAIN(ChannelLevelsTest)
#include "ChannelLevelsTest.moc"
