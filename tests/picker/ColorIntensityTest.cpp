#include "picker/ColorIntensity.h"

#include "color/VelaColor.h"

#include <QtTest>

#include <limits>

using VelaColorPickerLib::intensityOf;
using VelaColorPickerLib::withIntensity;

namespace {

VelaColor channels(double first, double second, double third)
{
    VelaColor color = VelaColor::fromNchannelF({0.5, first, second, third}, 1, 3, true);
    color.setFromYxy(1);
    return color;
}

VelaColor yxy(double capY)
{
    VelaColor color;
    color.setYxyF(capY, 0.38, 0.37, 0.5, 7);
    return color;
}

} // namespace

class ColorIntensityTest : public QObject
{
    Q_OBJECT
private slots:
    void readsTheDriveOfEachSpace_data();
    void readsTheDriveOfEachSpace();
    void scalesAnRgbColorInItsHue();
    void keepsTheHueOfAnHsvColorThroughBlack();
    void setsYOfAWhiteAlone();
    void scalesChannelsInProportion();
    void brightensBlackToGreyOrAllChannels();
    void limitsWhatItIsGiven_data();
    void limitsWhatItIsGiven();
};

void ColorIntensityTest::readsTheDriveOfEachSpace_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::addColumn<double>("intensity");
    QTest::newRow("rgb") << VelaColor(QColor(51, 0, 0)) << 0.2;
    QTest::newRow("hsv") << VelaColor::fromHsv(120, 40, 204) << 0.8;
    QTest::newRow("yxy") << yxy(0.3) << 0.3;
    QTest::newRow("channels") << channels(0.1, 0.6, 0.2) << 0.6;
    QTest::newRow("dark channels") << channels(0.0, 0.0, 0.0) << 0.0;
    QTest::newRow("invalid") << VelaColor() << 0.0;
}

void ColorIntensityTest::readsTheDriveOfEachSpace()
{
    QFETCH(const VelaColor, color);
    QFETCH(const double, intensity);
    QVERIFY(qAbs(intensityOf(color) - intensity) < 1e-4);
}

void ColorIntensityTest::scalesAnRgbColorInItsHue()
{
    VelaColor orange(QColor(255, 127, 0));
    orange.setAlpha8(77);
    const VelaColor half = withIntensity(orange, 128.0 / 255.0);
    QCOMPARE(half.spec(), VelaColor::Rgb);
    QCOMPARE(half.tintweave(), orange.tintweave());
    QCOMPARE(half.alpha32(), orange.alpha32());
    QCOMPARE(half.red8(), 128);
    QVERIFY(qAbs(half.green8() - 64) <= 1);
    QCOMPARE(half.blue8(), 0);
}

void ColorIntensityTest::keepsTheHueOfAnHsvColorThroughBlack()
{
    const VelaColor green = VelaColor::fromHsv(120, 200, 255);
    const VelaColor dark = withIntensity(green, 0.0);
    QCOMPARE(dark.spec(), VelaColor::Hsv);
    QVERIFY(dark.isBlack());
    QCOMPARE(withIntensity(dark, 1.0).hue8(), 120);
    QCOMPARE(withIntensity(dark, 1.0).saturation8(), 200);
}

void ColorIntensityTest::setsYOfAWhiteAlone()
{
    VelaColor expected = yxy(0.25);
    QCOMPARE(withIntensity(yxy(1.0), 0.25), expected);
    QCOMPARE(withIntensity(withIntensity(yxy(1.0), 0.0), 0.25), expected);
}

void ColorIntensityTest::scalesChannelsInProportion()
{
    const VelaColor scaled = withIntensity(channels(0.1, 0.4, 0.2), 0.8);
    QCOMPARE(scaled.spec(), VelaColor::Nchannel);
    QCOMPARE(scaled.fromYxy(), 1U);
    QCOMPARE(scaled.profileId(), 3U);
    QCOMPARE(scaled.alpha32(), channels(0.1, 0.4, 0.2).alpha32());
    QList<double> levels;
    scaled.channelsF(&levels);
    QCOMPARE(levels.size(), 4);
    QVERIFY(qAbs(levels.at(1) - 0.2) < 1e-6);
    QVERIFY(qAbs(levels.at(2) - 0.8) < 1e-6);
    QVERIFY(qAbs(levels.at(3) - 0.4) < 1e-6);
}

void ColorIntensityTest::brightensBlackToGreyOrAllChannels()
{
    const VelaColor grey = withIntensity(VelaColor(Qt::black), 0.5);
    QCOMPARE(grey.spec(), VelaColor::Rgb);
    QCOMPARE(grey.red8(), grey.blue8());
    QVERIFY(qAbs(intensityOf(grey) - 0.5) < 1e-4);
    QCOMPARE(withIntensity(VelaColor(), 1.0).name(), QStringLiteral("#ffffff"));
    QCOMPARE(intensityOf(withIntensity(channels(0, 0, 0), 0.5)) > 0.49, true);
}

void ColorIntensityTest::limitsWhatItIsGiven_data()
{
    QTest::addColumn<double>("given");
    QTest::addColumn<double>("kept");
    QTest::newRow("below") << -0.5 << 0.0;
    QTest::newRow("above") << 1.5 << 1.0;
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << 0.0;
}

void ColorIntensityTest::limitsWhatItIsGiven()
{
    QFETCH(const double, given);
    QFETCH(const double, kept);
    QCOMPARE(withIntensity(yxy(0.5), given), yxy(kept));
    QVERIFY(qAbs(intensityOf(withIntensity(VelaColor(Qt::red), given)) - kept) < 1e-4);
    QVERIFY(qAbs(intensityOf(withIntensity(channels(0.5, 0, 0), given)) - kept) < 1e-4);
}

QTEST_MAIN(ColorIntensityTest)
#include "ColorIntensityTest.moc"
