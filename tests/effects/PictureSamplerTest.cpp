#include "effects/PictureSampler.h"

#include "tests/effects/PictureStage.h"

#include <cmath>
#include <limits>
#include <random>

class PictureSamplerTest : public QObject
{
    Q_OBJECT
private slots:
    void plainTakesThePixelAtOrBefore_data();
    void plainTakesThePixelAtOrBefore();
    void smoothWeighsFourPixels_data();
    void smoothWeighsFourPixels();
    void smoothEqualsItsFormula_data();
    void smoothEqualsItsFormula();
    void coverageIsThatOfTheTransparentPixels();
    void alphaStaysInItsRange();
    void placesThatAreNoneLieOutside_data();
    void placesThatAreNoneLieOutside();
    void onlyEqualColorsAreTransparent_data();
    void onlyEqualColorsAreTransparent();
};

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr QRgb kBlue = 0xFF0000FFU;

PictureSample outside()
{
    PictureSample sample;
    sample.isOutside = true;
    return sample;
}

} // namespace

void PictureSamplerTest::plainTakesThePixelAtOrBefore_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::addColumn<int>("column"); // -1 is outside
    QTest::addColumn<int>("row");
    QTest::newRow("first") << 0.0 << 0.0 << 0 << 0;
    QTest::newRow("minus zero") << -0.0 << -0.0 << 0 << 0;
    QTest::newRow("broken") << 2.75 << 1.999 << 2 << 1;
    QTest::newRow("last") << 3.999 << 2.999 << 3 << 2;
    QTest::newRow("past the right edge") << 4.0 << 1.0 << -1 << -1;
    QTest::newRow("past the lower edge") << 1.0 << 3.0 << -1 << -1;
    QTest::newRow("just left") << -0.001 << 1.0 << -1 << -1;
    QTest::newRow("just above") << 1.0 << -0.001 << -1 << -1;
}

void PictureSamplerTest::plainTakesThePixelAtOrBefore()
{
    QFETCH(const double, x);
    QFETCH(const double, y);
    QFETCH(const int, column);
    QFETCH(const int, row);
    const QImage image = placePicture(4, 3);
    const PictureSample sample = PictureSampler(image, kBlue, {}).plain(x, y);
    if (column < 0) {
        QVERIFY(sample == outside());
    } else {
        QVERIFY(!sample.isOutside);
        QCOMPARE(sample.rgb, qRgb(10 * column, 10 * row, 77));
        QCOMPARE(sample.alpha, 1.0);
    }
}

void PictureSamplerTest::smoothWeighsFourPixels_data()
{
    // Of two pixels beside each other, red 100 and red 200, in surroundings of red 40, green 8.
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::addColumn<int>("red");
    QTest::addColumn<int>("green");
    QTest::newRow("on the first") << 0.0 << 0.0 << 100 << 0;
    QTest::newRow("on the second") << 1.0 << 0.0 << 200 << 0;
    QTest::newRow("between") << 0.25 << 0.0 << 125 << 0;
    QTest::newRow("truncates") << 0.999 << 0.0 << 199 << 0;          // 199.9
    QTest::newRow("a quarter out below") << 0.0 << 0.25 << 85 << 2;  // 75 + 10
    QTest::newRow("a quarter out above") << 0.0 << -0.25 << 85 << 2; // y0 -1, fy 0.75
    QTest::newRow("half out left") << -0.5 << 0.0 << 70 << 4;        // x0 -1, fx 0.5
    QTest::newRow("half out right") << 1.5 << 0.0 << 120 << 4;       // 100 + 20
    QTest::newRow("all four") << 0.5 << 0.5 << 95 << 4;              // 25 + 50 + 10 + 10
    QTest::newRow("whole and negative is outside") << -1.0 << 0.0 << 40 << 8;
    QTest::newRow("far outside") << 500.0 << -3e6 << 40 << 8;
}

void PictureSamplerTest::smoothWeighsFourPixels()
{
    QFETCH(const double, x);
    QFETCH(const double, y);
    QFETCH(const int, red);
    QFETCH(const int, green);
    QImage image(2, 1, QImage::Format_RGB32);
    image.setPixel(0, 0, qRgb(100, 0, 0));
    image.setPixel(1, 0, qRgb(200, 0, 0));
    const PictureSample sample = PictureSampler(image, qRgb(40, 8, 0), {}).smooth(x, y);
    QCOMPARE(qRed(sample.rgb), red);
    QCOMPARE(qGreen(sample.rgb), green);
    QCOMPARE(qAlpha(sample.rgb), 255);
    QCOMPARE(sample.alpha, 1.0);
    QVERIFY(!sample.isOutside);
}

void PictureSamplerTest::smoothEqualsItsFormula_data()
{
    QTest::addColumn<int>("format");
    QTest::newRow("rgb") << int(QImage::Format_RGB32);
    QTest::newRow("argb") << int(QImage::Format_ARGB32);
    QTest::newRow("table") << int(QImage::Format_Indexed8);
    QTest::newRow("16 bits a channel") << int(QImage::Format_RGBA64);
    QTest::newRow("premultiplied") << int(QImage::Format_ARGB32_Premultiplied);
}

void PictureSamplerTest::smoothEqualsItsFormula()
{
    QFETCH(const int, format);
    std::mt19937 random(11);
    QImage drawn(7, 5, QImage::Format_ARGB32);
    for (int i = 0; i < 35; ++i) {
        drawn.setPixel(i % 7, i / 7, static_cast<QRgb>(random()));
    }
    const QImage image = drawn.convertToFormat(static_cast<QImage::Format>(format));
    const QRgb around = qRgb(9, 250, 101);
    // One colour of the picture, and the surroundings, are transparent in turn.
    for (const QRgb transparent : {image.pixel(3, 2), around}) {
        const VelaColor transColor{transparent};
        const PictureSampler sampler(image, around, TransparentPixel(transColor));
        for (int i = 0; i < 4000; ++i) {
            const double x = static_cast<double>(random() % 11000) / 1000.0 - 2.0;
            const double y = static_cast<double>(random() % 9000) / 1000.0 - 2.0;
            int x0 = 0;
            int x1 = 0;
            int y0 = 0;
            int y1 = 0;
            if (x >= 0.0) {
                x0 = static_cast<int>(x);
                x1 = x0 + 1;
            } else {
                x1 = static_cast<int>(x);
                x0 = x1 - 1;
            }
            if (y >= 0.0) {
                y0 = static_cast<int>(y);
                y1 = y0 + 1;
            } else {
                y1 = static_cast<int>(y);
                y0 = y1 - 1;
            }
            const double fx = x - x0;
            const double fy = y - y0;
            const QRgb p00 = image.valid(x0, y0) ? image.pixel(x0, y0) : around;
            const QRgb p01 = image.valid(x0, y1) ? image.pixel(x0, y1) : around;
            const QRgb p10 = image.valid(x1, y0) ? image.pixel(x1, y0) : around;
            const QRgb p11 = image.valid(x1, y1) ? image.pixel(x1, y1) : around;
            const auto mean = [&](int (*part)(QRgb)) {
                return static_cast<int>(part(p01) * (1 - fx) * fy +
                                        part(p00) * (1 - fx) * (1 - fy) +
                                        part(p10) * fx * (1 - fy) + part(p11) * fx * fy) &
                       0xFF;
            };
            const double m00 = VelaColor(p00) == transColor ? 1.0 : 0.0;
            const double m01 = VelaColor(p01) == transColor ? 1.0 : 0.0;
            const double m10 = VelaColor(p10) == transColor ? 1.0 : 0.0;
            const double m11 = VelaColor(p11) == transColor ? 1.0 : 0.0;
            const double alpha = 1.0 - ((1 - fx) * m01 * fy + (1 - fx) * m00 * (1 - fy) +
                                        m10 * fx * (1 - fy) + m11 * fx * fy);
            const PictureSample sample = sampler.smooth(x, y);
            QCOMPARE(sample.rgb, qRgb(mean(qRed), mean(qGreen), mean(qBlue)));
            QVERIFY(sample.alpha == std::max(0.0, alpha));
        }
    }
}

void PictureSamplerTest::coverageIsThatOfTheTransparentPixels()
{
    QImage image = plainPicture(4, 2, 0xFFFF0000U);
    image.setPixel(0, 0, 0xFF000000U);
    image.setPixel(0, 1, 0xFF000000U);
    const PictureSampler sampler(image, kBlue, TransparentPixel(Qt::black));
    QCOMPARE(sampler.smooth(0.0, 0.0).alpha, 0.0);
    QCOMPARE(sampler.smooth(0.25, 0.5).alpha, 0.25);
    QCOMPARE(sampler.smooth(0.5, 0.0).alpha, 0.5);
    QCOMPARE(qRed(sampler.smooth(0.5, 0.0).rgb), 127); // black has its part in the colour, too
    QCOMPARE(sampler.smooth(1.0, 0.0).alpha, 1.0);
    QCOMPARE(sampler.plain(0.9, 0.0).alpha, 0.0);
    QCOMPARE(sampler.plain(1.0, 0.0).alpha, 1.0);
    const PictureSampler bare(image, 0xFF000000U, TransparentPixel(Qt::black));
    QCOMPARE(bare.smooth(-7.5, 0.0).alpha, 0.0); // the surroundings compare like any pixel
    QCOMPARE(bare.smooth(3.5, 0.0).alpha, 0.5);
    QVERIFY(bare.plain(-7.5, 0.0) == outside());
}

void PictureSamplerTest::alphaStaysInItsRange()
{
    // The four weights of a wholly transparent picture add up to 1, give or take their rounding.
    const QImage image = plainPicture(40, 40, 0xFF000000U);
    const PictureSampler sampler(image, 0xFF000000U, TransparentPixel(Qt::black));
    std::mt19937 random(3);
    int passed = 0;
    for (int i = 0; i < 20000; ++i) {
        const double x = static_cast<double>(random()) / 1.5e8;
        const double y = static_cast<double>(random()) / 1.5e8;
        const double fx = x - std::floor(x);
        const double fy = y - std::floor(y);
        const double sum = (1 - fx) * fy + (1 - fx) * (1 - fy) + fx * (1 - fy) + fx * fy;
        passed += sum > 1.0 ? 1 : 0;
        const double alpha = sampler.smooth(x, y).alpha;
        QVERIFY(alpha >= 0.0 && alpha < 1e-15);
    }
    QVERIFY(passed > 0); // so that the test tries what it is for
}

void PictureSamplerTest::placesThatAreNoneLieOutside_data()
{
    QTest::addColumn<double>("bad");
    QTest::newRow("nan") << kNan;
    QTest::newRow("inf") << kInf;
    QTest::newRow("-inf") << -kInf;
    QTest::newRow("1e300") << 1e300;
    QTest::newRow("-1e300") << -1e300;
    QTest::newRow("2^31") << 2147483648.0;
    QTest::newRow("2^31 - 1") << 2147483647.0;
    QTest::newRow("below 2^31 - 1") << 2147483646.75;
    QTest::newRow("-2^31") << -2147483648.0;
    QTest::newRow("above -2^31 + 1") << -2147483646.75;
}

void PictureSamplerTest::placesThatAreNoneLieOutside()
{
    QFETCH(const double, bad);
    const QImage image = plainPicture(4, 4, 0xFFFF0000U);
    const PictureSampler sampler(image, qRgb(1, 2, 3), TransparentPixel(VelaColor(qRgb(1, 2, 3))));
    for (const QPointF& place : {QPointF(bad, 1.0), QPointF(1.0, bad), QPointF(bad, bad)}) {
        QVERIFY(sampler.plain(place.x(), place.y()) == outside());
        const PictureSample sample = sampler.smooth(place.x(), place.y());
        QCOMPARE(sample.rgb, qRgb(1, 2, 3));
        QCOMPARE(sample.alpha, 0.0);
    }
}

void PictureSamplerTest::onlyEqualColorsAreTransparent_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::addColumn<bool>("matches");
    const QRgb pixel = qRgb(255, 128, 3);
    const auto changed = [pixel](void (*change)(VelaColor&)) {
        VelaColor color(pixel);
        change(color);
        return color;
    };
    QTest::newRow("equal") << VelaColor(pixel) << true;
    QTest::newRow("of a QColor") << VelaColor(QColor(255, 128, 3)) << true;
    QTest::newRow("another") << VelaColor(qRgb(255, 128, 4)) << false;
    QTest::newRow("tintweave") << changed([](VelaColor& c) { c.setTintweave(true); }) << false;
    QTest::newRow("of a factory") << VelaColor::fromRgb(255, 128, 3) << false;
    QTest::newRow("profile") << changed([](VelaColor& c) { c.setProfileId(1); }) << false;
    QTest::newRow("layout") << changed([](VelaColor& c) { c.setChannelLayout(2); }) << false;
    QTest::newRow("alpha") << changed([](VelaColor& c) { c.setAlpha32(0xFFFFFFFEU); }) << false;
    QTest::newRow("below 8 bits") << VelaColor(65535, 128 * 257 + 1, 3 * 257, 65535) << false;
    QTest::newRow("hue and saturation") << VelaColor(pixel).toHsv() << false;
    QTest::newRow("invalid") << VelaColor() << false;
}

void PictureSamplerTest::onlyEqualColorsAreTransparent()
{
    QFETCH(const VelaColor, color);
    QFETCH(const bool, matches);
    const TransparentPixel transparent(color);
    QCOMPARE(VelaColor(qRgb(255, 128, 3)) == color, matches);
    QCOMPARE(transparent.matches(qRgb(255, 128, 3)), matches);
    QCOMPARE(transparent.matches(qRgba(255, 128, 3, 7)), matches); // a pixel's alpha is no matter
    QVERIFY(!transparent.matches(qRgb(255, 255, 255)));
    QVERIFY(!transparent.matches(0));
    QVERIFY(!TransparentPixel().matches(qRgb(255, 255, 255)));
    QVERIFY(!TransparentPixel().matches(qRgb(0, 0, 0)));
}

QTEST_GUILESS_MAIN(PictureSamplerTest)
#include "PictureSamplerTest.moc"
