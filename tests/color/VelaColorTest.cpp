#include "color/VelaColor.h"

#include <QtTest>

#include <cmath>
#include <limits>

class VelaColorTest : public QObject
{
    Q_OBJECT

private slots:
    void defaultColorIsInvalid();
    void constructorsClearTintweave_data();
    void constructorsClearTintweave();
    void globalColorsAreThoseOfQColor();
    void failedConstructionIsTheInvalidState();
    void settersTestTheirRanges_data();
    void settersTestTheirRanges();
    void factoriesTestTheirRanges_data();
    void factoriesTestTheirRanges();
    void alphaSettersTestTheirRange_data();
    void alphaSettersTestTheirRange();
    void componentsWidenExactly_data();
    void componentsWidenExactly();
    void narrowingTakesTheTopBits();
    void storesHues_data();
    void storesHues();
    void hueRoundsHalfAwayFromZeroBelow360_data();
    void hueRoundsHalfAwayFromZeroBelow360();
    void groupReadersSkipNulls();
    void channelSettersWidenAndZero();
    void channelSettersCapAndRefuseSizes();
    void badAlphaResetsAndKeepsChannels_data();
    void badAlphaResetsAndKeepsChannels();
    void channelListsHoldAlphaFirst();
    void channelListsOfOtherSpacesHoldAlphaAlone();
    void fromYxyBelongsToChannelColors();
    void yxySettersStoreAnything();
    void badAlphaOfYxy();
    void yxyComponentsReplaceInPlace();
    void yxyComponentsConvertOtherColors();
    void yxyComponentsOutOfRangeReset_data();
    void yxyComponentsOutOfRangeReset();
};

namespace {

const double kNan = std::numeric_limits<double>::quiet_NaN();
const double kInf = std::numeric_limits<double>::infinity();

quint32 component(double unit)
{
    return static_cast<quint32>(unit * 4294967295.0 + 0.5); // exact for what the readers give
}

bool isResetState(const VelaColor& color)
{
    return color.spec() == VelaColor::Invalid && color.channelLayout() == 1 &&
           color.profileId() == 0 && color.tintweave() && color.alpha32() == 0xFFFFFFFFU &&
           color.red16() == 0 && color.green16() == 0 && color.blue16() == 0;
}

/// A colour of which every attribute differs from the reset state.
VelaColor oddColor()
{
    VelaColor color;
    color.setNchannel8({10, 20, 30, 40, 50}, 6, 8, false);
    color.setFromYxy(1);
    return color;
}

void addRangeColumns()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<double>("a");
    QTest::addColumn<double>("b");
    QTest::addColumn<double>("c");
    QTest::addColumn<double>("d");
    QTest::addColumn<bool>("accepted");
}

/// Rows that move one component at a time to the ends of its range and beyond.
void addRangeRows(const char* name, double firstLow, double firstHigh, double high, double step)
{
    const auto row = [name](const char* what, double a, double b, double c, double d, bool ok) {
        QTest::addRow("%s, %s", name, what) << QString::fromLatin1(name) << a << b << c << d << ok;
    };
    const double mid = high == 1.0 ? 0.5 : 100.0;
    row("all lowest", firstLow, 0, 0, 0, true);
    row("all highest", firstHigh, high, high, high, true);
    row("first below", firstLow - step, mid, mid, mid, false);
    row("first above", firstHigh + step, mid, mid, mid, false);
    row("second below", mid, -step, mid, mid, false);
    row("second above", mid, high + step, mid, mid, false);
    row("third below", mid, mid, -step, mid, false);
    row("third above", mid, mid, high + step, mid, false);
    row("alpha below", mid, mid, mid, -step, false);
    row("alpha above", mid, mid, mid, high + step, false);
    if (high == 1.0) {
        row("NaN first", kNan, mid, mid, mid, false);
        row("NaN second", mid, kNan, mid, mid, false);
        row("NaN third", mid, mid, kNan, mid, false);
        row("NaN alpha", mid, mid, mid, kNan, false);
        row("infinite", kInf, mid, mid, mid, false);
    }
}

void ignoreRangeWarning(const QString& name)
{
    const char* const kind = name.contains(QLatin1String("Hsv")) ? "HSV" : "RGB";
    QTest::ignoreMessage(QtWarningMsg, qPrintable(QStringLiteral("VelaColor::%1: %2 parameters out "
                                                                 "of range")
                                                      .arg(name, QLatin1String(kind))));
}

} // namespace

void VelaColorTest::defaultColorIsInvalid()
{
    const VelaColor color;
    QVERIFY(isResetState(color));
    QVERIFY(!color.isValid());
    QVERIFY(color.tintweave());
    QCOMPARE(color.alphaF(), 1.0);
    QCOMPARE(color.redF(), 0.0);
    QCOMPARE(color.hue8(), 0);
    QCOMPARE(color.valueF(), 0.0);
    QCOMPARE(color.capY(), 0.0);
    QCOMPARE(color.smallX(), 0.0);
    QCOMPARE(color.channelCount(), 0);
}

void VelaColorTest::constructorsClearTintweave_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::addColumn<quint32>("red");
    QTest::addColumn<quint32>("green");
    QTest::addColumn<quint32>("blue");
    QTest::addColumn<quint32>("alpha");
    QTest::newRow("QColor") << VelaColor(QColor(1, 2, 254, 128)) << 0x01010101U << 0x02020202U
                            << 0xFEFEFEFEU << 0x80808080U;
    QTest::newRow("QColor in HSV")
        << VelaColor(QColor::fromHsv(120, 255, 255)) << 0U << 0xFFFFFFFFU << 0U << 0xFFFFFFFFU;
    QTest::newRow("QColor, invalid") << VelaColor(QColor()) << 0U << 0U << 0U << 0xFFFFFFFFU;
    QTest::newRow("text") << VelaColor(QStringLiteral("#102030")) << 0x10101010U << 0x20202020U
                          << 0x30303030U << 0xFFFFFFFFU;
    QTest::newRow("QRgb, top byte ignored")
        << VelaColor(QRgb(0x00123456U)) << 0x12121212U << 0x34343434U << 0x56565656U << 0xFFFFFFFFU;
    QTest::newRow("16 bits") << VelaColor(0x1234, 0, 65535, 0x8000) << 0x12341234U << 0U
                             << 0xFFFFFFFFU << 0x80008000U;
    QTest::newRow("global") << VelaColor(Qt::darkCyan) << 0U << 0x80808080U << 0x80808080U
                            << 0xFFFFFFFFU;
    QTest::newRow("transparent") << VelaColor(Qt::transparent) << 0U << 0U << 0U << 0U;
}

void VelaColorTest::constructorsClearTintweave()
{
    QFETCH(const VelaColor, color);
    QCOMPARE(color.spec(), VelaColor::Rgb);
    QCOMPARE(color.tintweave(), false);
    QCOMPARE(color.channelLayout(), 1U);
    QCOMPARE(color.profileId(), 0U);
    QTEST(component(color.redF()), "red");
    QTEST(component(color.greenF()), "green");
    QTEST(component(color.blueF()), "blue");
    QTEST(color.alpha32(), "alpha");

    const VelaColor white(0.3127, 0.3290);
    QCOMPARE(white.spec(), VelaColor::Yxy);
    QCOMPARE(white.tintweave(), false);
    QCOMPARE(white.capY(), 1.0);
    QCOMPARE(white.smallX(), 0.3127);
    QCOMPARE(white.smallY(), 0.3290);
    QCOMPARE(white.alpha32(), 0xFFFFFFFFU);
}

void VelaColorTest::globalColorsAreThoseOfQColor()
{
    for (int i = Qt::color0; i <= Qt::transparent; ++i) {
        const auto global = static_cast<Qt::GlobalColor>(i);
        QCOMPARE(VelaColor(global).toQColor(true).rgba(), QColor(global).rgba());
    }
    QCOMPARE(VelaColor(Qt::color0).toQColor(true), QColor(255, 255, 255));
}

void VelaColorTest::failedConstructionIsTheInvalidState()
{
    QTest::ignoreMessage(QtWarningMsg, "VelaColor::setRgb16: RGB parameters out of range");
    QVERIFY(isResetState(VelaColor(65536, 0, 0, 0)));
    QTest::ignoreMessage(QtWarningMsg, "VelaColor::setNamedColor: Unknown color name 'no such'");
    QVERIFY(isResetState(VelaColor(QStringLiteral("no such"))));
}

void VelaColorTest::settersTestTheirRanges_data()
{
    addRangeColumns();
    addRangeRows("setRgb8", 0, 255, 255, 1);
    addRangeRows("setRgb16", 0, 65535, 65535, 1);
    addRangeRows("setHsv8", 0, 360, 255, 1); // -1 is refused here
    addRangeRows("setHsvF", 0, 1, 1, 1e-9);
    QTest::newRow("setHsvF, hue -1")
        << QStringLiteral("setHsvF") << -1.0 << 0.5 << 0.5 << 0.5 << true;
    const QString hsv16 = QStringLiteral("setHsv16");
    QTest::newRow("setHsv16, all highest")
        << hsv16 << 65535.0 << 65535.0 << 65535.0 << 65535.0 << true;
    QTest::newRow("setHsv16, hue -1") << hsv16 << -1.0 << 0.0 << 0.0 << 0.0 << true;
    QTest::newRow("setHsv16, hue far below 0") << hsv16 << -100000.0 << 0.0 << 0.0 << 0.0 << true;
    QTest::newRow("setHsv16, hue above") << hsv16 << 65536.0 << 0.0 << 0.0 << 0.0 << false;
    QTest::newRow("setHsv16, saturation above") << hsv16 << 0.0 << 65536.0 << 0.0 << 0.0 << false;
    QTest::newRow("setHsv16, saturation below") << hsv16 << 0.0 << -1.0 << 0.0 << 0.0 << false;
    QTest::newRow("setHsv16, value above") << hsv16 << 0.0 << 0.0 << 65536.0 << 0.0 << false;
    QTest::newRow("setHsv16, alpha above") << hsv16 << 0.0 << 0.0 << 0.0 << 65536.0 << false;
}

void VelaColorTest::settersTestTheirRanges()
{
    QFETCH(const QString, name);
    QFETCH(const double, a);
    QFETCH(const double, b);
    QFETCH(const double, c);
    QFETCH(const double, d);
    QFETCH(const bool, accepted);
    if (!accepted) {
        ignoreRangeWarning(name);
    }
    VelaColor color = oddColor();
    if (name == QLatin1String("setHsvF")) {
        color.setHsvF(a, b, c, d, 7);
    } else {
        const int ia = static_cast<int>(a);
        const int ib = static_cast<int>(b);
        const int ic = static_cast<int>(c);
        const int id = static_cast<int>(d);
        if (name == QLatin1String("setRgb8")) {
            color.setRgb8(ia, ib, ic, id, 7);
        } else if (name == QLatin1String("setRgb16")) {
            color.setRgb16(ia, ib, ic, id, 7);
        } else if (name == QLatin1String("setHsv8")) {
            color.setHsv8(ia, ib, ic, id, 7);
        } else {
            color.setHsv16(ia, ib, ic, id, 7);
        }
    }
    if (!accepted) {
        QVERIFY(isResetState(color));
        return;
    }
    QCOMPARE(color.spec(), name.contains(QLatin1String("Hsv")) ? VelaColor::Hsv : VelaColor::Rgb);
    QCOMPARE(color.channelLayout(), 1U);
    QCOMPARE(color.profileId(), 7U);
    QCOMPARE(color.tintweave(), false); // as it was
}

void VelaColorTest::factoriesTestTheirRanges_data()
{
    addRangeColumns();
    addRangeRows("fromRgb", 0, 255, 255, 1);
    addRangeRows("fromRgbF", 0, 1, 1, 1e-9);
    addRangeRows("fromHsv", -1, 359, 255, 1);
    addRangeRows("fromHsvF", 0, 1, 1, 1e-9);
    QTest::newRow("fromHsvF, hue -1")
        << QStringLiteral("fromHsvF") << -1.0 << 0.5 << 0.5 << 0.5 << true;
}

void VelaColorTest::factoriesTestTheirRanges()
{
    QFETCH(const QString, name);
    QFETCH(const double, a);
    QFETCH(const double, b);
    QFETCH(const double, c);
    QFETCH(const double, d);
    QFETCH(const bool, accepted);
    if (!accepted) {
        ignoreRangeWarning(name);
    }
    VelaColor color;
    if (name == QLatin1String("fromRgbF")) {
        color = VelaColor::fromRgbF(a, b, c, d, 7);
    } else if (name == QLatin1String("fromHsvF")) {
        color = VelaColor::fromHsvF(a, b, c, d, 7);
    } else if (name == QLatin1String("fromRgb")) {
        color = VelaColor::fromRgb(static_cast<int>(a), static_cast<int>(b), static_cast<int>(c),
                                   static_cast<int>(d), 7);
    } else {
        color = VelaColor::fromHsv(static_cast<int>(a), static_cast<int>(b), static_cast<int>(c),
                                   static_cast<int>(d), 7);
    }
    if (!accepted) {
        QVERIFY(isResetState(color));
        return;
    }
    QCOMPARE(color.spec(), name.contains(QLatin1String("Hsv")) ? VelaColor::Hsv : VelaColor::Rgb);
    QCOMPARE(color.channelLayout(), 1U);
    QCOMPARE(color.profileId(), 7U);
    QCOMPARE(color.tintweave(), true);
}

void VelaColorTest::alphaSettersTestTheirRange_data()
{
    QTest::addColumn<bool>("isFloating");
    QTest::addColumn<double>("alpha");
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<quint32>("stored");
    QTest::newRow("8 bits, 0") << false << 0.0 << true << 0U;
    QTest::newRow("8 bits, 255") << false << 255.0 << true << 0xFFFFFFFFU;
    QTest::newRow("8 bits, 171") << false << 171.0 << true << 0xABABABABU;
    QTest::newRow("8 bits, -1") << false << -1.0 << false << 0U;
    QTest::newRow("8 bits, 256") << false << 256.0 << false << 0U;
    QTest::newRow("floating, 0") << true << 0.0 << true << 0U;
    QTest::newRow("floating, 1") << true << 1.0 << true << 0xFFFFFFFFU;
    QTest::newRow("floating, half") << true << 0.5 << true << 0x80000000U;
    QTest::newRow("floating, below") << true << -1e-9 << false << 0U;
    QTest::newRow("floating, above") << true << 1.0 + 1e-9 << false << 0U;
    QTest::newRow("floating, NaN") << true << kNan << false << 0U;
}

void VelaColorTest::alphaSettersTestTheirRange()
{
    QFETCH(const bool, isFloating);
    QFETCH(const double, alpha);
    QFETCH(const bool, accepted);
    QFETCH(const quint32, stored);
    VelaColor color = oddColor();
    if (isFloating) {
        color.setAlphaF(alpha); // silent
    } else {
        if (!accepted) {
            QTest::ignoreMessage(QtWarningMsg,
                                 "VelaColor::setAlpha8: alpha parameter out of range");
        }
        color.setAlpha8(static_cast<int>(alpha));
    }
    if (!accepted) {
        QVERIFY(isResetState(color));
        return;
    }
    QCOMPARE(color.alpha32(), stored);
    QCOMPARE(color.spec(), VelaColor::Nchannel);
    QCOMPARE(color.channelLayout(), 6U);
    QCOMPARE(color.fromYxy(), 1U);
}

void VelaColorTest::componentsWidenExactly_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::addColumn<quint32>("red");
    QTest::newRow("8 bits: 0xAB") << VelaColor::fromRgb(0xAB, 0, 0) << 0xABABABABU;
    QTest::newRow("8 bits: 1") << VelaColor::fromRgb(1, 0, 0) << 0x01010101U;
    QTest::newRow("16 bits: 0x1234") << VelaColor(0x1234, 0, 0, 0) << 0x12341234U;
    QTest::newRow("16 bits: 1") << VelaColor(1, 0, 0, 0) << 0x00010001U;
    QTest::newRow("floating: 1.0") << VelaColor::fromRgbF(1.0, 1.0, 1.0, 1.0) << 0xFFFFFFFFU;
    // 0.5 x 4294967295 + 0.5 = 2147483648
    QTest::newRow("floating: 0.5") << VelaColor::fromRgbF(0.5, 0, 0) << 0x80000000U;
    // 0.1 x 4294967295 + 0.5 = 429496730.0
    QTest::newRow("floating: 0.1") << VelaColor::fromRgbF(0.1, 0, 0) << 429496730U;
    QTest::newRow("floating: below a half step")
        << VelaColor::fromRgbF(0.49 / 4294967295.0, 0, 0) << 0U;
    QTest::newRow("floating: above a half step")
        << VelaColor::fromRgbF(0.51 / 4294967295.0, 0, 0) << 1U;
}

void VelaColorTest::componentsWidenExactly()
{
    QFETCH(const VelaColor, color);
    QTEST(component(color.redF()), "red");
}

void VelaColorTest::narrowingTakesTheTopBits()
{
    const VelaColor color = VelaColor::fromRgbF(0x80FFFFFF / 4294967295.0, //
                                                0x7FFFFFFF / 4294967295.0, 1.0, 1.0);
    QCOMPARE(color.red8(), 0x80);
    QCOMPARE(color.red16(), 0x80FF);
    QCOMPARE(color.green8(), 0x7F);
    QCOMPARE(color.green16(), 0x7FFF);
    QCOMPARE(color.blue8(), 255);
    QCOMPARE(color.blue16(), 65535);
    VelaColor alpha;
    alpha.setAlpha32(0x80FFFFFFU);
    QCOMPARE(alpha.alpha8(), 0x80);
    QCOMPARE(alpha.alpha16(), 0x80FF);
    QCOMPARE(alpha.alphaF(), 0x80FFFFFF / 4294967295.0);
}

void VelaColorTest::storesHues_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::addColumn<double>("hundredths"); // -1 for achromatic
    const auto hsv8 = [](int h) {
        VelaColor c;
        c.setHsv8(h, 200, 200);
        return c;
    };
    const auto hsv16 = [](int h) {
        VelaColor c;
        c.setHsv16(h, 200, 200);
        return c;
    };
    const auto hsvF = [](double h) {
        VelaColor c;
        c.setHsvF(h, 0.5, 0.5);
        return c;
    };
    QTest::newRow("8 bits: 359") << hsv8(359) << 35900.0;
    QTest::newRow("8 bits: 360 is 0") << hsv8(360) << 0.0;
    QTest::newRow("16 bits: 725 is 5") << hsv16(725) << 500.0;
    QTest::newRow("16 bits: -1 is achromatic") << hsv16(-1) << -1.0;
    QTest::newRow("16 bits: -5 stays negative") << hsv16(-5) << -500.0;
    QTest::newRow("16 bits: -361") << hsv16(-361) << -100.0;
    QTest::newRow("floating: half a turn") << hsvF(0.5) << 18000.0;
    QTest::newRow("floating: a whole turn") << hsvF(1.0) << 36000.0;
    QTest::newRow("floating: rounded") << hsvF(0.00001) << 0.0;
    QTest::newRow("floating: rounded up") << hsvF(0.00002) << 1.0;
    QTest::newRow("floating: -1.0 lands low") << hsvF(-1.0) << -2147483648.0;
    QTest::newRow("factory: -1 is achromatic") << VelaColor::fromHsv(-1, 1, 1) << -1.0;
    QTest::newRow("factory: 359") << VelaColor::fromHsv(359, 1, 1) << 35900.0;
    QTest::newRow("floating factory: -1.0") << VelaColor::fromHsvF(-1.0, 0, 1) << -1.0;
    QTest::newRow("floating factory: 1.0") << VelaColor::fromHsvF(1.0, 0, 1) << 36000.0;
}

void VelaColorTest::storesHues()
{
    QFETCH(const VelaColor, color);
    QFETCH(const double, hundredths);
    QCOMPARE(color.hueF(), hundredths == -1.0 ? -1.0 : hundredths / 36000.0);
    int hue = 0;
    int saturation = 0;
    int value = 0;
    color.getHsv16(&hue, &saturation, &value);
    QCOMPARE(hue, hundredths == -1.0 ? -1 : static_cast<int>(hundredths) / 100);
    QCOMPARE(color.hue8() == -1, hundredths == -1.0 || hundredths == -100.0);
}

void VelaColorTest::hueRoundsHalfAwayFromZeroBelow360_data()
{
    QTest::addColumn<double>("degrees");
    QTest::addColumn<int>("rounded");
    QTest::addColumn<int>("truncated");
    QTest::newRow("0.49") << 0.49 << 0 << 0;
    QTest::newRow("0.5") << 0.5 << 1 << 0;
    QTest::newRow("2.5") << 2.5 << 3 << 2;
    QTest::newRow("359.49") << 359.49 << 359 << 359;
    QTest::newRow("359.5") << 359.5 << 359 << 359;
    QTest::newRow("360") << 360.0 << 359 << 360;
}

void VelaColorTest::hueRoundsHalfAwayFromZeroBelow360()
{
    QFETCH(const double, degrees);
    QFETCH(const int, truncated);
    const VelaColor color = VelaColor::fromHsvF(degrees / 360.0, 1.0, 1.0);
    QTEST(color.hue8(), "rounded");
    int hue = 0;
    int saturation = 0;
    int value = 0;
    color.getHsv16(&hue, &saturation, &value);
    QCOMPARE(hue, truncated);
}

void VelaColorTest::groupReadersSkipNulls()
{
    const VelaColor color = VelaColor::fromHsvF(0.25, 0.5, 0.75, 0.5);
    int i[4] = {-7, -7, -7, -7};
    double f[4] = {-7, -7, -7, -7};
    color.getHsv16(nullptr, &i[1], &i[2], &i[3]);
    color.getHsv16(&i[0], nullptr, &i[2], &i[3]);
    color.getHsv16(&i[0], &i[1], nullptr, &i[3]);
    color.getHsvF(nullptr, &f[1], &f[2], &f[3]);
    color.getHsvF(&f[0], nullptr, &f[2], &f[3]);
    color.getHsvF(&f[0], &f[1], nullptr, &f[3]);
    color.getRgbF(nullptr, &f[1], &f[2], &f[3]);
    color.getRgbF(&f[0], nullptr, &f[2], &f[3]);
    color.getRgbF(&f[0], &f[1], nullptr, &f[3]);
    for (int k = 0; k < 4; ++k) {
        QCOMPARE(i[k], -7);
        QCOMPARE(f[k], -7.0);
    }
    color.getHsv16(&i[0], &i[1], &i[2], nullptr);
    QCOMPARE(i[0], 90);
    QCOMPARE(i[1], 0x8000);
    QCOMPARE(i[2], 0xBFFF); // 0.75 x 4294967295 + 0.5 = 0xBFFFFFFF.9
    color.getHsvF(&f[0], &f[1], &f[2], &f[3]);
    QCOMPARE(f[0], 0.25);
    QVERIFY(qAbs(f[1] - 0.5) < 1e-9);
    QVERIFY(qAbs(f[2] - 0.75) < 1e-9);
    QVERIFY(qAbs(f[3] - 0.5) < 1e-9);
    VelaColor::fromRgb(255, 0, 51, 255).getRgbF(&f[0], &f[1], &f[2], nullptr);
    QCOMPARE(f[0], 1.0);
    QCOMPARE(f[1], 0.0);
    QCOMPARE(f[2], 0.2);
    QVERIFY(qAbs(f[3] - 0.5) < 1e-9);
}

void VelaColorTest::channelSettersWidenAndZero()
{
    VelaColor color = oddColor();
    color.setNchannel8({1, 0xAB, 255}, 7, 27, true);
    QCOMPARE(color.spec(), VelaColor::Nchannel);
    QCOMPARE(color.channelLayout(), 7U);
    QCOMPARE(color.profileId(), 27U);
    QCOMPARE(color.tintweave(), true);
    QCOMPARE(color.alpha32(), 0x01010101U);
    QCOMPARE(color.channelCount(), 2);
    QCOMPARE(color.channel32(0), 0xABABABABU);
    QCOMPARE(color.channel32(1), 0xFFFFFFFFU);
    QCOMPARE(color.channel32(2), 0U);
    QCOMPARE(color.fromYxy(), 0U);

    color.setNchannel16({65535, 0x1234, 65536}, 3, 6, false);
    QCOMPARE(color.tintweave(), false);
    QCOMPARE(color.alpha32(), 0xFFFFFFFFU);
    QCOMPARE(color.channel32(0), 0x12341234U);
    QCOMPARE(color.channel32(1), 0x00010000U); // channels have no range test: 65536 wraps

    color.setNchannelF({0.5, 1.0, 0.1, kNan, -1.0, 7.0}, 2, 1, false);
    QCOMPARE(color.alpha32(), 0x80000000U);
    QCOMPARE(color.channelCount(), 5);
    QCOMPARE(color.channel32(0), 0xFFFFFFFFU);
    QCOMPARE(color.channel32(1), 429496730U);
    QCOMPARE(color.channel32(2), 0U);
    QCOMPARE(color.channel32(3), 0U);
    QCOMPARE(color.channel32(4), 0xFFFFFFFFU);
    QCOMPARE(color.channel32(-1), 0U);
    QCOMPARE(color.channel32(8), 0U);
    QVERIFY(VelaColor::fromNchannelF({0.5, 1.0, 0.1, 0.0, 0.0, 1.0}, 2, 1, false) == color);
}

void VelaColorTest::channelSettersCapAndRefuseSizes()
{
    VelaColor color;
    color.setNchannel8({255, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, 3, 6, false);
    QCOMPARE(color.channelCount(), 8);
    QCOMPARE(color.channel32(7), 0x08080808U);
    color.setNchannel16({65535}, 3, 6, false);
    QCOMPARE(color.spec(), VelaColor::Nchannel);
    QCOMPARE(color.channelCount(), 0);
    color.setNchannel8({}, 3, 6, false);
    QVERIFY(isResetState(color));
    color = oddColor();
    color.setNchannel16({}, 3, 6, false);
    QVERIFY(isResetState(color));
    color = oddColor();
    color.setNchannelF({}, 3, 6, false);
    QVERIFY(isResetState(color));
}

void VelaColorTest::badAlphaResetsAndKeepsChannels_data()
{
    QTest::addColumn<VelaColor>("color");
    VelaColor wide = oddColor();
    wide.setNchannel16({65536, 1, 2}, 3, 6, false);
    QTest::newRow("16 bits") << wide;
    QTest::newRow("floating") << VelaColor::fromNchannelF({1.5, 1.0, 0.1}, 3, 6, false);
    QTest::newRow("negative") << VelaColor::fromNchannelF({-0.5, 1.0, 0.1}, 3, 6, false);
    QTest::newRow("NaN") << VelaColor::fromNchannelF({kNan, 1.0, 0.1}, 3, 6, false);
}

void VelaColorTest::badAlphaResetsAndKeepsChannels()
{
    QFETCH(const VelaColor, color);
    // The channels lie in a colour that stays invalid, so that nothing reads them.
    QCOMPARE(color.spec(), VelaColor::Invalid);
    QCOMPARE(color.channelLayout(), 1U);
    QCOMPARE(color.profileId(), 0U);
    QCOMPARE(color.tintweave(), true);
    QCOMPARE(color.alpha32(), 0xFFFFFFFFU);
    QCOMPARE(color.channelCount(), 0);
    QVERIFY(color.toString().isEmpty());
    QVERIFY(!(color == color));
}

void VelaColorTest::channelListsHoldAlphaFirst()
{
    VelaColor color;
    color.setNchannel16({0x8000, 0x1234, 0xFFFF}, 7, 27, true);
    quint32 layout = 0;
    quint32 profile = 0;
    bool tintweave = false;
    QList<int> bytes = {9, 9, 9, 9, 9};
    color.channels8(&bytes, &layout, &profile, &tintweave);
    QCOMPARE(bytes, (QList<int>{0x80, 0x12, 0xFF}));
    QCOMPARE(layout, 7U);
    QCOMPARE(profile, 27U);
    QCOMPARE(tintweave, true);
    QList<quint32> words;
    color.channels16(&words);
    QCOMPARE(words, (QList<quint32>{0x8000, 0x1234, 0xFFFF}));
    QList<double> units;
    color.channelsF(&units, &layout, nullptr, nullptr);
    QCOMPARE(units, (QList<double>{0x80008000 / 4294967295.0, 0x12341234 / 4294967295.0, 1.0}));
    double fixed[VelaColor::kMaxChannels + 1];
    std::fill(std::begin(fixed), std::end(fixed), 7.0);
    color.channelsF(fixed);
    for (int i = 0; i < 9; ++i) {
        QCOMPARE(fixed[i], i < 3 ? units.at(i) : 0.0);
    }
}

void VelaColorTest::channelListsOfOtherSpacesHoldAlphaAlone()
{
    const VelaColor color = VelaColor::fromRgb(1, 2, 3, 128);
    QList<int> bytes;
    color.channels8(&bytes);
    QCOMPARE(bytes, QList<int>{128});
    QList<quint32> words;
    color.channels16(&words);
    QCOMPARE(words, QList<quint32>{0x8080});
    double fixed[VelaColor::kMaxChannels + 1];
    color.channelsF(fixed);
    QCOMPARE(fixed[0], 0x80808080 / 4294967295.0);
    QCOMPARE(fixed[1], 0.0);
    QCOMPARE(color.channelsText(), QStringLiteral("128 Tintweave"));
}

void VelaColorTest::fromYxyBelongsToChannelColors()
{
    VelaColor channels = oddColor();
    QCOMPARE(channels.fromYxy(), 1U);
    channels.setFromYxy(0);
    QCOMPARE(channels.fromYxy(), 0U);
    VelaColor rgb = VelaColor::fromRgb(1, 2, 3);
    rgb.setFromYxy(1);
    QCOMPARE(rgb.fromYxy(), 0U);
    QVERIFY(rgb == VelaColor::fromRgb(1, 2, 3));
}

void VelaColorTest::yxySettersStoreAnything()
{
    VelaColor color = oddColor();
    color.setYxy(-3.0, kInf, 1e300, 0x1234, 9);
    QCOMPARE(color.spec(), VelaColor::Yxy);
    QCOMPARE(color.capY(), -3.0);
    QCOMPARE(color.smallX(), kInf);
    QCOMPARE(color.smallY(), 1e300);
    QCOMPARE(color.alpha32(), 0x12341234U);
    QCOMPARE(color.profileId(), 9U);
    QCOMPARE(color.channelLayout(), 6U); // as it was, so that texts keep theirs
    QCOMPARE(color.tintweave(), false);
    color.setYxyF(kNan, 0.1, 0.2, 0.5, 10);
    QVERIFY(std::isnan(color.capY()));
    QCOMPARE(color.alpha32(), 0x80000000U);
    QCOMPARE(color.profileId(), 10U);
}

void VelaColorTest::badAlphaOfYxy()
{
    VelaColor color = oddColor();
    color.setYxy(0.5, 0.25, 0.125, 65536, 9);
    QCOMPARE(color.spec(), VelaColor::Invalid);
    QCOMPARE(color.channelLayout(), 1U);
    QCOMPARE(color.tintweave(), true);
    QCOMPARE(color.alpha32(), 0xFFFFFFFFU);
    QCOMPARE(color.profileId(), 9U); // written after the reset, as is the triple
    QCOMPARE(color.capY(), 0.5);
    QCOMPARE(color.smallX(), 0.25);
    QCOMPARE(color.smallY(), 0.125);
    color = oddColor();
    color.setYxyF(0.5, 0.25, 0.125, 1.5, 9);
    QVERIFY(isResetState(color));
    QCOMPARE(color.capY(), 0.0);
    color = oddColor();
    color.setYxyF(0.5, 0.25, 0.125, kNan, 9);
    QVERIFY(isResetState(color));
}

void VelaColorTest::yxyComponentsReplaceInPlace()
{
    VelaColor color;
    color.setYxyF(0.5, 0.3, 0.4, 0.3, 12);
    const quint32 alpha = color.alpha32();
    color.setCapY(1.0);
    color.setSmallX(0.0);
    color.setSmallY(0.25);
    QCOMPARE(color.capY(), 1.0);
    QCOMPARE(color.smallX(), 0.0);
    QCOMPARE(color.smallY(), 0.25);
    QCOMPARE(color.alpha32(), alpha); // at full width
    QCOMPARE(color.profileId(), 12U);
}

void VelaColorTest::yxyComponentsConvertOtherColors()
{
    VelaColor rgb = VelaColor::fromRgbF(1.0, 0.5, 0.25, 0.3, 8);
    rgb.setTintweave(false);
    const VelaColor absolute = rgb.toYxy(0, -1, -1);
    VelaColor color = rgb;
    color.setCapY(0.75);
    QCOMPARE(color.spec(), VelaColor::Yxy);
    QCOMPARE(color.capY(), 0.75);
    QCOMPARE(color.smallX(), absolute.smallX());
    QCOMPARE(color.smallY(), absolute.smallY());
    QCOMPARE(color.profileId(), 8U);
    QCOMPARE(color.tintweave(), false);
    QCOMPARE(color.alpha32(), (rgb.alpha32() >> 16U) * 0x10001U);
    color = rgb;
    color.setSmallX(0.2);
    QCOMPARE(color.capY(), absolute.capY());
    QCOMPARE(color.smallX(), 0.2);
    QCOMPARE(color.smallY(), absolute.smallY());
    color = rgb;
    color.setSmallY(0.2);
    QCOMPARE(color.smallX(), absolute.smallX());
    QCOMPARE(color.smallY(), 0.2);

    VelaColor invalid;
    invalid.setSmallX(0.2);
    QCOMPARE(invalid.spec(), VelaColor::Yxy);
    QCOMPARE(invalid.capY(), 0.0);
    QCOMPARE(invalid.smallX(), 0.2);
    QCOMPARE(invalid.smallY(), 0.0);
}

void VelaColorTest::yxyComponentsOutOfRangeReset_data()
{
    QTest::addColumn<double>("v");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("lowest") << 0.0 << true;
    QTest::newRow("highest") << 1.0 << true;
    QTest::newRow("below") << -1e-9 << false;
    QTest::newRow("above") << 1.0 + 1e-9 << false;
    QTest::newRow("NaN") << kNan << false;
}

void VelaColorTest::yxyComponentsOutOfRangeReset()
{
    QFETCH(const double, v);
    QFETCH(const bool, accepted);
    VelaColor base;
    base.setYxyF(0.5, 0.3, 0.4, 0.5, 12);
    VelaColor color = base;
    color.setCapY(v);
    QCOMPARE(isResetState(color), !accepted);
    color = base;
    color.setSmallX(v);
    QCOMPARE(isResetState(color), !accepted);
    color = base;
    color.setSmallY(v);
    QCOMPARE(isResetState(color), !accepted);
}

QTEST_APPLESS_MAIN(VelaColorTest)
#include "VelaColorTest.moc"
