#include "color/ColorUtils.h"
#include "color/VelaColor.h"

#include <QtTest>

#include <limits>
#include <random>

class VelaColorMixTest : public QObject
{
    Q_OBJECT

private slots:
    void interpolatesRgb_data();
    void interpolatesRgb();
    void interpolationDarkensByAlpha();
    void rgbMixesArePlain();
    void rgbMixesFollowTheFormulas();
    void sharesOutOfRangeWarn_data();
    void sharesOutOfRangeWarn();
    void compositesRgb_data();
    void compositesRgb();
    void compositeAtTheEndsReturnsTheOperand_data();
    void compositeAtTheEndsReturnsTheOperand();
    void absoluteColorsMixAsNominalRgbw();
    void channelMixFollowsTheFormulas_data();
    void channelMixFollowsTheFormulas();
    void interpolateTakesAttributesFromTheGreaterShare_data();
    void interpolateTakesAttributesFromTheGreaterShare();
    void compositeTakesAttributesFromTheLesserShare_data();
    void compositeTakesAttributesFromTheLesserShare();
    void channelColorsPullTheOtherAlong_data();
    void channelColorsPullTheOtherAlong();
    void widerLayoutWins();
    void aWiderAbsoluteColorTakesChannelsAlong();
    void unlikeListsGiveTheFirst();
    void mixedChannelsForgetTheirOrigin();
};

namespace {

constexpr double kTol = 1.0 / 4294967295.0; // one step of a component

VelaColor yxy(double capY, double x, double y, double alpha = 1.0)
{
    VelaColor color;
    color.setYxyF(capY, x, y, alpha);
    return color;
}

bool isNear(double a, double b)
{
    return qAbs(a - b) <= 1.5 * kTol;
}

} // namespace

void VelaColorMixTest::interpolatesRgb_data()
{
    QTest::addColumn<VelaColor>("a");
    QTest::addColumn<VelaColor>("b");
    QTest::addColumn<double>("t");
    QTest::addColumn<QVector<double>>("mix"); // r, g, b, alpha
    const VelaColor red = VelaColor::fromRgb(255, 0, 0);
    const VelaColor blue = VelaColor::fromRgb(0, 0, 255);
    const VelaColor faint = VelaColor::fromRgbF(1.0, 0.5, 0.0, 0.5);
    const VelaColor dim = VelaColor::fromRgbF(0.0, 0.5, 1.0, 0.25);
    QTest::newRow("opaque, start") << red << blue << 0.0 << QVector<double>{1, 0, 0, 1};
    QTest::newRow("opaque, end") << red << blue << 1.0 << QVector<double>{0, 0, 1, 1};
    QTest::newRow("opaque, quarter") << red << blue << 0.25 << QVector<double>{0.75, 0, 0.25, 1};
    QTest::newRow("faint, start") << faint << dim << 0.0 << QVector<double>{0.5, 0.25, 0, 0.5};
    QTest::newRow("faint, end") << faint << dim << 1.0 << QVector<double>{0, 0.125, 0.25, 0.25};
    // 0.5 x 0.5 x 0.5 + 0.5 x 0.5 x 0.25 = 0.1875 of green; alpha 0.25 + 0.125
    QTest::newRow("faint, half") << faint << dim << 0.5
                                 << QVector<double>{0.25, 0.1875, 0.125, 0.375};
    QTest::newRow("HSV") << VelaColor::fromHsv(120, 255, 255) << red << 0.5
                         << QVector<double>{0.5, 0.5, 0, 1};
    QTest::newRow("invalid reads as black")
        << VelaColor() << red << 0.5 << QVector<double>{0.5, 0, 0, 1};
}

void VelaColorMixTest::interpolatesRgb()
{
    QFETCH(const VelaColor, a);
    QFETCH(const VelaColor, b);
    QFETCH(const double, t);
    QFETCH(const QVector<double>, mix);
    const VelaColor result = interpolate(a, b, t);
    QVERIFY(isNear(result.redF(), mix[0]));
    QVERIFY(isNear(result.greenF(), mix[1]));
    QVERIFY(isNear(result.blueF(), mix[2]));
    QVERIFY(isNear(result.alphaF(), mix[3]));
}

void VelaColorMixTest::interpolationDarkensByAlpha()
{
    const VelaColor half = VelaColor::fromRgbF(1.0, 1.0, 1.0, 0.5);
    const VelaColor result = interpolate(half, half, 0.0);
    QCOMPARE(result.alpha32(), half.alpha32());
    QVERIFY(isNear(result.redF(), 0.5));
}

void VelaColorMixTest::rgbMixesArePlain()
{
    VelaColor a = VelaColor::fromRgb(1, 2, 3, 100, 7);
    a.setTintweave(false);
    a.setChannelLayout(3);
    for (const VelaColor& result : {interpolate(a, a, 0.5), composite(a, a)}) {
        QCOMPARE(result.spec(), VelaColor::Rgb);
        QCOMPARE(result.profileId(), 0U);
        QCOMPARE(result.channelLayout(), 1U);
        QCOMPARE(result.tintweave(), true);
    }
}

void VelaColorMixTest::rgbMixesFollowTheFormulas()
{
    // Bit by bit, and never a component above one.
    std::mt19937 random(7);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    const auto draw = [&random, &unit] {
        const auto part = [&random, &unit] { return random() % 4 == 0 ? 1.0 : unit(random); };
        return VelaColor::fromRgbF(part(), part(), part(), part());
    };
    for (int i = 0; i < 20000; ++i) {
        const VelaColor a = draw();
        const VelaColor b = draw();
        const double t = unit(random);
        const double aa = a.alphaF();
        const double ab = b.alphaF();
        const auto lerp = [=](double from, double to) { return from * (1 - t) * aa + to * t * ab; };
        QVERIFY(interpolate(a, b, t) ==
                VelaColor::fromRgbF(lerp(a.redF(), b.redF()), lerp(a.greenF(), b.greenF()),
                                    lerp(a.blueF(), b.blueF()), (1 - t) * aa + t * ab));
        if (aa == 1.0) {
            continue;
        }
        const auto over = [=](double top, double bottom) { return bottom * (1 - aa) + top * aa; };
        QVERIFY(composite(a, b) ==
                VelaColor::fromRgbF(over(a.redF(), b.redF()), over(a.greenF(), b.greenF()),
                                    over(a.blueF(), b.blueF()), ab * (1 - aa) + aa));
    }
}

void VelaColorMixTest::sharesOutOfRangeWarn_data()
{
    QTest::addColumn<double>("t");
    QTest::newRow("above") << 1.5;
    QTest::newRow("below") << -0.5;
    QTest::newRow("NaN") << std::numeric_limits<double>::quiet_NaN();
}

void VelaColorMixTest::sharesOutOfRangeWarn()
{
    QFETCH(const double, t);
    QTest::ignoreMessage(QtWarningMsg, "VelaColor::fromRgbF: RGB parameters out of range");
    QVERIFY(
        !interpolate(VelaColor::fromRgb(255, 0, 0), VelaColor::fromRgb(0, 0, 255), t).isValid());
    const VelaColor channels = VelaColor::fromNchannelF({1, 1, 0, 0, 0}, 3, 6, true);
    interpolate(channels, channels, t); // silent, whatever comes out
}

void VelaColorMixTest::compositesRgb_data()
{
    QTest::addColumn<VelaColor>("top");
    QTest::addColumn<VelaColor>("bottom");
    QTest::addColumn<QVector<double>>("mix"); // r, g, b, alpha
    const VelaColor black = VelaColor::fromRgb(0, 0, 0);
    QTest::newRow("half white over black")
        << VelaColor::fromRgbF(1, 1, 1, 0.5) << black << QVector<double>{0.5, 0.5, 0.5, 1};
    QTest::newRow("quarter red over half blue")
        << VelaColor::fromRgbF(1, 0, 0, 0.25) << VelaColor::fromRgbF(0, 0, 1, 0.5)
        << QVector<double>{0.25, 0, 0.75, 0.625};
    QTest::newRow("HSV over HSV") << VelaColor::fromHsvF(1.0 / 3.0, 1, 1, 0.5)
                                  << VelaColor::fromHsvF(0, 1, 1)
                                  << QVector<double>{0.5, 0.5, 0, 1};
    QTest::newRow("over an invalid colour")
        << VelaColor::fromRgbF(1, 1, 1, 0.5) << VelaColor() << QVector<double>{0.5, 0.5, 0.5, 1};
}

void VelaColorMixTest::compositesRgb()
{
    QFETCH(const VelaColor, top);
    QFETCH(const VelaColor, bottom);
    QFETCH(const QVector<double>, mix);
    const VelaColor result = composite(top, bottom);
    QVERIFY(isNear(result.redF(), mix[0]));
    QVERIFY(isNear(result.greenF(), mix[1]));
    QVERIFY(isNear(result.blueF(), mix[2]));
    QVERIFY(isNear(result.alphaF(), mix[3]));
}

void VelaColorMixTest::compositeAtTheEndsReturnsTheOperand_data()
{
    QTest::addColumn<VelaColor>("color");
    VelaColor rgb = VelaColor::fromRgb(1, 2, 3, 255, 8);
    rgb.setTintweave(false);
    QTest::newRow("RGB") << rgb;
    QTest::newRow("HSV") << VelaColor::fromHsv(10, 20, 30, 255, 8);
    QTest::newRow("Yxy") << yxy(0.5, 0.3, 0.4);
    QTest::newRow("channels") << VelaColor::fromNchannelF({1, 0.1, 0.2}, 7, 27, false);
}

void VelaColorMixTest::compositeAtTheEndsReturnsTheOperand()
{
    QFETCH(const VelaColor, color);
    const VelaColor other = VelaColor::fromNchannelF({0.5, 0.4, 0.3, 0.2, 0.1}, 3, 6, true);
    QVERIFY(composite(color, other) == color); // opaque top
    VelaColor clear = color;
    clear.setAlpha32(0);
    QVERIFY(composite(clear, other) == other);
    QVERIFY(composite(clear, color) == color);
    // One step from either end the two are mixed.
    VelaColor almost = color;
    almost.setAlpha32(0xFFFFFFFEU);
    QVERIFY(!(composite(almost, other) == almost));
    QVERIFY(!composite(VelaColor(), other).isValid()); // an opaque invalid top as well
}

void VelaColorMixTest::absoluteColorsMixAsNominalRgbw()
{
    const VelaColor white = yxy(0.8, 0.35, 0.34, 0.5);
    const VelaColor other = yxy(0.6, 0.30, 0.32);
    const VelaColor rgb = VelaColor::fromRgb(200, 100, 50, 128);
    const auto asChannels = [](const VelaColor& color) { return color.toNchannel(3, 6, -1, 1); };
    for (const auto& pair :
         {qMakePair(white, other), qMakePair(white, rgb), qMakePair(rgb, white)}) {
        const VelaColor a = asChannels(pair.first);
        const VelaColor b = asChannels(pair.second);
        const VelaColor mix = interpolate(pair.first, pair.second, 0.25);
        QCOMPARE(mix.spec(), VelaColor::Nchannel);
        QCOMPARE(mix.channelLayout(), 3U);
        QCOMPARE(mix.profileId(), 6U);
        QCOMPARE(mix.tintweave(), false);
        QVERIFY(mix == interpolate(a, b, 0.25));
        QVERIFY(composite(pair.first, pair.second) == composite(a, b));
        QVERIFY(!mix.isBlack());
    }
    // At the start too the mix is one of channels.
    QCOMPARE(interpolate(white, other, 0.0).spec(), VelaColor::Nchannel);
}

void VelaColorMixTest::channelMixFollowsTheFormulas_data()
{
    QTest::addColumn<double>("t");
    QTest::newRow("start") << 0.0;
    QTest::newRow("quarter") << 0.25;
    QTest::newRow("half") << 0.5;
    QTest::newRow("odd") << 0.7;
    QTest::newRow("end") << 1.0;
}

void VelaColorMixTest::channelMixFollowsTheFormulas()
{
    QFETCH(const double, t);
    const double a[5] = {0.5, 0.9, 0.1, 0.4, 0.0};
    const double b[5] = {0.25, 0.2, 0.3, 1.0, 0.6};
    const VelaColor first = VelaColor::fromNchannelF({a[0], a[1], a[2], a[3], a[4]}, 3, 6, true);
    const VelaColor second = VelaColor::fromNchannelF({b[0], b[1], b[2], b[3], b[4]}, 3, 6, true);
    const VelaColor mix = interpolate(first, second, t);
    const VelaColor over = composite(first, second);
    QCOMPARE(mix.channelCount(), 4);
    QVERIFY(isNear(mix.alphaF(), (1 - t) * a[0] + t * b[0]));
    QVERIFY(isNear(over.alphaF(), 0.5 * b[0] + 0.5));
    double mixed[VelaColor::kMaxChannels + 1];
    double overlaid[VelaColor::kMaxChannels + 1];
    mix.channelsF(mixed);
    over.channelsF(overlaid);
    for (int i = 1; i < 5; ++i) {
        QVERIFY(isNear(mixed[i], (1 - t) * a[i] * a[0] + t * b[i] * b[0]));
        QVERIFY(isNear(overlaid[i], 0.5 * b[i] + 0.5 * a[i]));
    }
}

void VelaColorMixTest::interpolateTakesAttributesFromTheGreaterShare_data()
{
    QTest::addColumn<double>("t");
    QTest::addColumn<bool>("fromFirst");
    QTest::newRow("start") << 0.0 << true;
    QTest::newRow("below half") << 0.49 << true;
    QTest::newRow("half") << 0.5 << true;
    QTest::newRow("above half") << 0.51 << false;
    QTest::newRow("end") << 1.0 << false;
}

void VelaColorMixTest::interpolateTakesAttributesFromTheGreaterShare()
{
    QFETCH(const double, t);
    QFETCH(const bool, fromFirst);
    const VelaColor first = VelaColor::fromNchannelF({1, 1, 0, 0, 0}, 3, 6, true);
    const VelaColor second = VelaColor::fromNchannelF({1, 0, 1, 0, 0}, 6, 5, false);
    const VelaColor mix = interpolate(first, second, t);
    QCOMPARE(mix.channelLayout(), fromFirst ? 3U : 6U);
    QCOMPARE(mix.profileId(), fromFirst ? 6U : 5U);
    QCOMPARE(mix.tintweave(), fromFirst);
}

void VelaColorMixTest::compositeTakesAttributesFromTheLesserShare_data()
{
    QTest::addColumn<quint32>("alpha");
    QTest::addColumn<bool>("fromTop");
    QTest::newRow("faint top") << 0x10000000U << true;
    QTest::newRow("just below half") << 0x7FFFFFFFU << true;
    QTest::newRow("just above half") << 0x80000000U << false;
    QTest::newRow("strong top") << 0xF0000000U << false;
}

void VelaColorMixTest::compositeTakesAttributesFromTheLesserShare()
{
    QFETCH(const quint32, alpha);
    QFETCH(const bool, fromTop);
    VelaColor top = VelaColor::fromNchannelF({1, 1, 0, 0, 0}, 3, 6, true);
    top.setAlpha32(alpha);
    const VelaColor bottom = VelaColor::fromNchannelF({1, 0, 1, 0, 0}, 6, 5, false);
    const VelaColor mix = composite(top, bottom);
    QCOMPARE(mix.channelLayout(), fromTop ? 3U : 6U);
    QCOMPARE(mix.profileId(), fromTop ? 6U : 5U);
    QCOMPARE(mix.tintweave(), fromTop);
}

void VelaColorMixTest::channelColorsPullTheOtherAlong_data()
{
    QTest::addColumn<VelaColor>("other");
    QTest::newRow("RGB") << VelaColor::fromRgb(200, 100, 50, 128);
    QTest::newRow("HSV") << VelaColor::fromHsv(100, 100, 50, 128);
    QTest::newRow("Yxy") << yxy(0.6, 0.30, 0.32, 0.5);
}

void VelaColorMixTest::channelColorsPullTheOtherAlong()
{
    QFETCH(const VelaColor, other);
    for (const bool tintweave : {false, true}) {
        const VelaColor channels =
            VelaColor::fromNchannelF({0.6, 0.9, 0.1, 0.4, 0.2}, 6, 5, tintweave);
        const VelaColor converted = other.toNchannel(6, 5, -1, tintweave ? 0 : 1);
        QVERIFY(!converted.isBlack());
        QVERIFY(interpolate(other, channels, 0.3) == interpolate(converted, channels, 0.3));
        QVERIFY(interpolate(channels, other, 0.3) == interpolate(channels, converted, 0.3));
        QVERIFY(composite(other, channels) == composite(converted, channels));
        QVERIFY(composite(channels, other) == composite(channels, converted));
        QCOMPARE(interpolate(other, channels, 0.3).profileId(), 5U);
    }
}

void VelaColorMixTest::widerLayoutWins()
{
    const VelaColor narrow = VelaColor::fromNchannelF({0.6, 0.9, 0.1, 0.4}, 1, 7, true);
    const VelaColor wide = VelaColor::fromNchannelF({0.6, 0.9, 0.1, 0.4, 0.2}, 3, 6, false);
    const VelaColor converted = narrow.toNchannel(3, 6, -1, 1);
    QCOMPARE(converted.channelCount(), 4);
    QVERIFY(interpolate(narrow, wide, 0.3) == interpolate(converted, wide, 0.3));
    QVERIFY(interpolate(wide, narrow, 0.3) == interpolate(wide, converted, 0.3));
    QVERIFY(composite(narrow, wide) == composite(converted, wide));
    QVERIFY(composite(wide, narrow) == composite(wide, converted));
    QCOMPARE(interpolate(narrow, wide, 0.0).channelCount(), 4);
}

void VelaColorMixTest::aWiderAbsoluteColorTakesChannelsAlong()
{
    // A text can give an absolute colour a layout: here five channels against four.
    const VelaColor wide(QStringLiteral("aYxy;2;0;32768;0.6;0.30;0.32"));
    const VelaColor narrow = VelaColor::fromNchannelF({0.6, 0.9, 0.1, 0.4, 0.2}, 3, 6, true);
    // In front the narrow one goes over to the wide one's layout and profile, which then follows.
    const VelaColor asWide = narrow.toNchannel(2, 0, -1, 1);
    const VelaColor wideChannels = wide.toNchannel(2, 0, -1, 1);
    QCOMPARE(asWide.channelCount(), 5);
    QVERIFY(interpolate(narrow, wide, 0.3) == interpolate(asWide, wideChannels, 0.3));
    QCOMPARE(interpolate(narrow, wide, 0.3).channelLayout(), 2U);
    QVERIFY(composite(narrow, wide) == composite(asWide, wideChannels));
    // Behind, the absolute colour has become one of four channels before the other is asked.
    const VelaColor asNarrow = wide.toNchannel(3, 6, -1, 0);
    QVERIFY(interpolate(wide, narrow, 0.3) == interpolate(asNarrow, narrow, 0.3));
    QVERIFY(composite(wide, narrow) == composite(asNarrow, narrow));
    QCOMPARE(interpolate(wide, narrow, 0.3).channelLayout(), 3U);
}

void VelaColorMixTest::unlikeListsGiveTheFirst()
{
    // The same layout, so that nothing is converted, but lists of two lengths.
    const VelaColor longer = VelaColor::fromNchannelF({0.5, 0.8, 0.6, 0.4, 0.2}, 3, 6, true);
    VelaColor shorter = VelaColor::fromNchannelF({0.25, 0.9, 0.1}, 3, 9, false);
    QVERIFY(interpolate(longer, shorter, 0.7) == longer);
    QVERIFY(interpolate(shorter, longer, 0.7) == shorter);
    const VelaColor mix = composite(longer, shorter);
    QCOMPARE(mix.alpha32(), longer.alpha32());
    QCOMPARE(mix.channelCount(), 4);
    QCOMPARE(mix.profileId(), 6U);
    QCOMPARE(mix.tintweave(), true);
    QVERIFY(isNear(mix.channel32(0) * kTol, 0.4)); // times the top's alpha
    QVERIFY(isNear(mix.channel32(3) * kTol, 0.1));
    // An RGB colour pulled along to a layout that its partner's list doesn't fill.
    const VelaColor rgb = VelaColor::fromRgb(200, 100, 50, 128);
    QVERIFY(interpolate(rgb, shorter, 0.7) == rgb.toNchannel(3, 9, -1, 1));
}

void VelaColorMixTest::mixedChannelsForgetTheirOrigin()
{
    VelaColor a = VelaColor::fromNchannelF({0.5, 0.8, 0.6, 0.4, 0.2}, 3, 6, true);
    a.setFromYxy(1);
    QCOMPARE(interpolate(a, a, 0.5).fromYxy(), 0U);
    QCOMPARE(composite(a, a).fromYxy(), 0U);
}

QTEST_APPLESS_MAIN(VelaColorMixTest)
#include "VelaColorMixTest.moc"
