#include "color/VelaColor.h"

#include <QtTest>

#include <cmath>
#include <limits>

class VelaColorCompareTest : public QObject
{
    Q_OBJECT

private slots:
    void blackness_data();
    void blackness();
    void convertsToQColor_data();
    void convertsToQColor();
    void equalityIsExact_data();
    void equalityIsExact();
    void invalidAndNanEqualNothing();
    void hashes_data();
    void hashes();
    void hashOfManyChannelsTakesFive();
    void hashOfAnInvalidColorLogs();
    void hashTakesTheSeed();
};

namespace {

const double kNan = std::numeric_limits<double>::quiet_NaN();
const double kInf = std::numeric_limits<double>::infinity();

} // namespace

void VelaColorCompareTest::blackness_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::addColumn<bool>("isBlack");
    VelaColor yxy;
    QTest::newRow("invalid") << yxy << false;
    QTest::newRow("RGB") << VelaColor::fromRgb(0, 0, 0) << true;
    QTest::newRow("RGB, least blue") << VelaColor::fromRgbF(0, 0, 1e-9) << false;
    QTest::newRow("HSV, value 0") << VelaColor::fromHsv(10, 255, 0) << true;
    QTest::newRow("HSV") << VelaColor::fromHsv(10, 255, 1) << false;
    yxy.setYxyF(0.0, 0.3, 0.3);
    QTest::newRow("Yxy, Y 0") << yxy << true;
    yxy.setYxyF(1e-300, 0.3, 0.3);
    QTest::newRow("Yxy, least Y") << yxy << false;
    yxy.setYxyF(kNan, 0.3, 0.3);
    QTest::newRow("Yxy, NaN") << yxy << false;
    QTest::newRow("channels 0") << VelaColor::fromNchannelF({1, 0, 0, 0}, 3, 6, true) << true;
    QTest::newRow("last channel") << VelaColor::fromNchannelF({1, 0, 0, 0, 1}, 3, 6, true) << false;
    QTest::newRow("no channels") << VelaColor::fromNchannelF({1}, 3, 6, true) << true;
}

void VelaColorCompareTest::blackness()
{
    QFETCH(const VelaColor, color);
    QTEST(color.isBlack(), "isBlack");
}

void VelaColorCompareTest::convertsToQColor_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::addColumn<QRgb>("rgba");
    QTest::newRow("RGB") << VelaColor::fromRgb(1, 2, 3, 4) << qRgba(1, 2, 3, 4);
    QTest::newRow("HSV") << VelaColor::fromHsv(120, 255, 255, 9) << qRgba(0, 255, 0, 9);
    QTest::newRow("invalid is opaque black") << VelaColor() << qRgba(0, 0, 0, 255);
    QTest::newRow("Yxy black") << VelaColor(QStringLiteral("aYxy;1;0;32768;0;0.3;0.3"))
                               << qRgba(0, 0, 0, 128);
}

void VelaColorCompareTest::convertsToQColor()
{
    QFETCH(const VelaColor, color);
    QFETCH(const QRgb, rgba);
    QCOMPARE(color.toQColor(true).rgba(), rgba);
    QCOMPARE(color.toQColor(false).rgba(), rgba);
    QCOMPARE(color.toQColor(true).spec(), QColor::Rgb);
}

void VelaColorCompareTest::equalityIsExact_data()
{
    QTest::addColumn<VelaColor>("a");
    QTest::addColumn<VelaColor>("b");
    QTest::addColumn<bool>("isEqual");
    const VelaColor rgb = VelaColor::fromRgb(10, 20, 30, 40, 5);
    const auto with = [](VelaColor color, auto change) {
        change(&color);
        return color;
    };
    QTest::newRow("RGB") << rgb << VelaColor(rgb) << true;
    QTest::newRow("RGB, red") << rgb << VelaColor::fromRgb(11, 20, 30, 40, 5) << false;
    QTest::newRow("RGB, green") << rgb << VelaColor::fromRgb(10, 21, 30, 40, 5) << false;
    QTest::newRow("RGB, blue") << rgb << VelaColor::fromRgb(10, 20, 31, 40, 5) << false;
    QTest::newRow("RGB, alpha") << rgb << VelaColor::fromRgb(10, 20, 30, 41, 5) << false;
    QTest::newRow("RGB, profile") << rgb << VelaColor::fromRgb(10, 20, 30, 40, 6) << false;
    QTest::newRow("RGB, layout") << rgb << with(rgb, [](VelaColor* c) { c->setChannelLayout(3); })
                                 << false;
    QTest::newRow("RGB, tintweave")
        << rgb << with(rgb, [](VelaColor* c) { c->setTintweave(false); }) << false;
    QTest::newRow("black in RGB and HSV")
        << VelaColor::fromRgb(0, 0, 0) << VelaColor::fromHsv(0, 0, 0) << false;

    const VelaColor hsv = VelaColor::fromHsv(10, 20, 30, 40);
    QTest::newRow("HSV") << hsv << VelaColor(hsv) << true;
    QTest::newRow("HSV, hue") << hsv << VelaColor::fromHsv(11, 20, 30, 40) << false;
    QTest::newRow("HSV, saturation") << hsv << VelaColor::fromHsv(10, 21, 30, 40) << false;
    QTest::newRow("HSV, value") << hsv << VelaColor::fromHsv(10, 20, 31, 40) << false;
    QTest::newRow("HSV, alpha") << hsv << VelaColor::fromHsv(10, 20, 30, 41) << false;

    const auto yxy = [](double capY, double x, double y, double alpha) {
        VelaColor color;
        color.setYxyF(capY, x, y, alpha);
        return color;
    };
    QTest::newRow("Yxy") << yxy(0.5, 0.3, 0.4, 1) << yxy(0.5, 0.3, 0.4, 1) << true;
    QTest::newRow("Yxy, Y") << yxy(0.5, 0.3, 0.4, 1) << yxy(0.6, 0.3, 0.4, 1) << false;
    QTest::newRow("Yxy, x") << yxy(0.5, 0.3, 0.4, 1) << yxy(0.5, std::nextafter(0.3, 1.0), 0.4, 1)
                            << false;
    QTest::newRow("Yxy, y") << yxy(0.5, 0.3, 0.4, 1) << yxy(0.5, 0.3, 0.41, 1) << false;
    QTest::newRow("Yxy, alpha") << yxy(0.5, 0.3, 0.4, 1) << yxy(0.5, 0.3, 0.4, 0.5) << false;
    QTest::newRow("Yxy, zeros of both signs")
        << yxy(0.0, 0.3, 0.4, 1) << yxy(-0.0, 0.3, 0.4, 1) << true;

    const VelaColor channels = VelaColor::fromNchannelF({1, 0.1, 0.2, 0.3, 0.4}, 3, 6, true);
    QTest::newRow("channels") << channels << VelaColor(channels) << true;
    QTest::newRow("channels, one")
        << channels << VelaColor::fromNchannelF({1, 0.1, 0.2, 0.3, 0.5}, 3, 6, true) << false;
    QTest::newRow("channels, count") << VelaColor::fromNchannelF({1, 0.1, 0}, 3, 6, true)
                                     << VelaColor::fromNchannelF({1, 0.1}, 3, 6, true) << false;
    QTest::newRow("channels, alpha")
        << channels << VelaColor::fromNchannelF({0.9, 0.1, 0.2, 0.3, 0.4}, 3, 6, true) << false;
    QTest::newRow("channels, fromYxy")
        << channels << with(channels, [](VelaColor* c) { c->setFromYxy(1); }) << false;
}

void VelaColorCompareTest::equalityIsExact()
{
    QFETCH(const VelaColor, a);
    QFETCH(const VelaColor, b);
    QFETCH(const bool, isEqual);
    QCOMPARE(a == b, isEqual);
    QCOMPARE(b == a, isEqual);
    QCOMPARE(a != b, !isEqual);
    if (isEqual) {
        QCOMPARE(qHash(a), qHash(b));
    }
}

void VelaColorCompareTest::invalidAndNanEqualNothing()
{
    const VelaColor invalid;
    QVERIFY(!(invalid == invalid));
    QVERIFY(invalid != VelaColor());
    for (int i = 0; i < 3; ++i) {
        VelaColor color;
        color.setYxyF(i == 0 ? kNan : 0.5, i == 1 ? kNan : 0.5, i == 2 ? kNan : 0.5);
        QVERIFY(!(color == color));
    }
}

void VelaColorCompareTest::hashes_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::addColumn<quint32>("hash");
    const auto yxy = [](double capY, double x, double y, quint32 alpha32) {
        VelaColor color;
        color.setYxyF(capY, x, y);
        color.setAlpha32(alpha32);
        return color;
    };
    const auto channels = [](const QList<quint32>& list) {
        VelaColor color;
        color.setNchannel16(list, 3, 6, true);
        return color;
    };
    QTest::newRow("RGB") << VelaColor::fromRgb(0x12, 0x34, 0x56, 0x78) << 0x12345678U;
    QTest::newRow("RGB takes low bytes")
        << VelaColor(0xAA01, 0xBB02, 0xCC03, 0xDD04) << 0x01020304U;
    // Hue 120 degrees is stored as 12000 = 0x2EE0.
    QTest::newRow("HSV") << VelaColor::fromHsv(120, 0x11, 0x22, 0x33) << 0xE0112233U;
    QTest::newRow("HSV, achromatic") << VelaColor::fromHsv(-1, 0, 0x22, 0x33) << 0xFF002233U;
    QTest::newRow("Yxy") << yxy(0.9, 0.3, 0.4, 0xFFFFFF12U) << 0x00000012U;
    QTest::newRow("Yxy, whole parts") << yxy(1.9, 258.0, -1.5, 0x34U) << 0x0102FF34U;
    QTest::newRow("Yxy, NaN and infinities") << yxy(kNan, kInf, -kInf, 0x56U) << 0x00FF0056U;
    QTest::newRow("no channels") << channels({0xF}) << 0x000000F0U;
    QTest::newRow("one channel") << channels({0xA, 0x1}) << 0x00000A11U;
    QTest::newRow("three channels, last first") << channels({0xA, 0x1, 0x2, 0x3}) << 0x000A3321U;
    QTest::newRow("five channels") << channels({0xA, 1, 2, 3, 4, 0xB}) << 0x0A5B4321U;
    QTest::newRow("eight channels count as five")
        << channels({0xA, 1, 2, 3, 4, 0xB, 6, 7, 8}) << 0x0A5B4321U;
    QTest::newRow("low nibbles") << channels({0x5A, 0x61, 0x72}) << 0x0000A221U;
}

void VelaColorCompareTest::hashes()
{
    QFETCH(const VelaColor, color);
    QTEST(static_cast<quint32>(qHash(color)), "hash");
}

void VelaColorCompareTest::hashOfManyChannelsTakesFive()
{
    const VelaColor eight = VelaColor::fromNchannelF({1, .1, .2, .3, .4, .5, .6, .7, .8}, 3, 6, 1);
    const VelaColor five = VelaColor::fromNchannelF({1, .1, .2, .3, .4, .5}, 3, 6, 1);
    QCOMPARE(qHash(eight), qHash(five));
    QVERIFY(eight != five);
}

void VelaColorCompareTest::hashOfAnInvalidColorLogs()
{
    QTest::ignoreMessage(QtDebugMsg, "Hit Invalid case in VelaColor:qHash");
    QCOMPARE(qHash(VelaColor()), 0U);
}

void VelaColorCompareTest::hashTakesTheSeed()
{
    const VelaColor color = VelaColor::fromRgb(0x12, 0x34, 0x56, 0x78);
    QCOMPARE(qHash(color, 0xFFU), 0x12345687U);
}

QTEST_APPLESS_MAIN(VelaColorCompareTest)
#include "VelaColorCompareTest.moc"
