#include "color/WhiteChart.h"

#include "color/ColorUtils.h"
#include "color/VelaColor.h"
#include "resources/Resources.h"

#include <QImage>
#include <QObject>
#include <QtTest>

#include <cmath>
#include <limits>

namespace {

int rangeMessages = 0;

void countMessages(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& text)
{
    if (text.contains(QLatin1String("out of range"))) {
        ++rangeMessages;
    }
}

WhiteChart& chart()
{
    return WhiteChart::instance();
}

QPointF xyOf(int cct, int tint)
{
    double x = 0.0;
    double y = 0.0;
    ColorUtils::cctTintToXy(cct, tint, &x, &y);
    return {x, y};
}

VelaColor white(int cct, int tint, double Y, double alpha = 1.0)
{
    const QPointF xy = xyOf(cct, tint);
    VelaColor color;
    color.setYxyF(Y, xy.x(), xy.y(), alpha);
    return color;
}

VelaColor raw(double Y, double x, double y)
{
    VelaColor color;
    color.setYxy(Y, x, y, 65535);
    return color;
}

/// The first tint from the top, in steps of 50, whose colour is not black without clipping, less a
/// twentieth.
int limitByRule(int cct)
{
    int tint = 32767;
    while (tint >= 0) {
        VelaColor color;
        const QPointF xy = xyOf(cct, tint);
        color.setYxyF(1.0, xy.x(), xy.y(), 1.0, 0);
        if (color.toQColor(false) != QColor(0, 0, 0)) {
            return tint - 1638;
        }
        tint -= 50;
    }
    return tint;
}

/// The pixel of the image that an on-chart colour takes its hue from.
QColor pixelFor(const VelaColor& color)
{
    int t = 0;
    int tint = 0;
    ColorUtils::xyToCctTint(color.smallX(), color.smallY(), &t, &tint);
    const QImage& image = chart().whiteImage();
    const QPoint p = chart().pixelOf(t, std::min(tint, chart().tintLimit(t)), image.rect());
    return QColor::fromRgb(
        image.pixel(qBound(0, p.x(), image.width() - 1), qBound(0, p.y(), image.height() - 1)));
}

} // namespace

class WhiteChartTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void showsItsPartOfThePlane();
    void thePictureIsTheGamutOnThePlane();
    void theImagesAreCutFromThePictureAndShaded();
    void theOutlineRunsAroundTemperaturesAndTints();
    void tintLimits_data();
    void tintLimits();
    void pixelsFollowThePlane();
    void pixelOfLimitsItsArguments();
    void nearestPointKeepsWhatIsInside();
    void onChart_data();
    void onChart();
    void theChartReachesAThousandthFurther();
    void aWhiteTakesTheChartsHueAndItsOwnY_data();
    void aWhiteTakesTheChartsHueAndItsOwnY();
    void aSaturatedColorTakesThePlainWay();
    void channelsTakeTheChartOnlyWhenSolvedFromYxy();
    void valuesOutOfRangeAreLimited_data();
    void valuesOutOfRangeAreLimited();
    void theTextIsWhatIsRemembered();
    void noPixelIsReadOutsideOfTheImage();
    void manyColorsStayTheSame();
};

void WhiteChartTest::initTestCase()
{
    initForgeResources();
}

void WhiteChartTest::showsItsPartOfThePlane()
{
    QCOMPARE(&WhiteChart::instance(), &WhiteChart::instance());
    QCOMPARE(chart().chartRect().topLeft(), QPointF(0.235, 0.475));
    QCOMPARE(chart().chartRect().bottomRight(), QPointF(0.54, 0.245));
    QCOMPARE(chart().fullRect().topLeft(), QPointF(0.1, 0.65));
    QCOMPARE(chart().fullRect().bottomRight(), QPointF(0.7, 0.0));
    for (const QImage& image : {chart().mainImage(), chart().whiteImage()}) {
        QCOMPARE(image.size(), QSize(1600, 1206)); // 1600 x 0.23 / 0.305 = 1206.55...
        QCOMPARE(image.format(), QImage::Format_ARGB32_Premultiplied);
    }
}

void WhiteChartTest::thePictureIsTheGamutOnThePlane()
{
    const QImage picture(QStringLiteral(":/RGBGamut.png"));
    QCOMPARE(picture.size(), QSize(2400, 2600));
    const auto at = [&picture](double x, double y) {
        return QColor(picture.pixel(static_cast<int>((x - 0.1) / 0.6 * 2400),
                                    static_cast<int>((0.65 - y) / 0.65 * 2600)));
    };
    const QColor white = at(0.3127, 0.3290); // D65
    QVERIFY(white.red() > 252 && white.green() > 252 && white.blue() > 252);
    const QColor red = at(0.638, 0.3305);
    QVERIFY(red.red() == 255 && red.green() < 25 && red.blue() < 25);
    const QColor green = at(0.301, 0.597);
    QVERIFY(green.green() == 255 && green.red() < 45 && green.blue() < 45);
    const QColor blue = at(0.1505, 0.0615);
    QVERIFY(blue.blue() == 255 && blue.red() < 30 && blue.green() < 30);
    // 3000 K on the locus, of which the standard's encoding makes red full and blue under half.
    const QColor warm = at(0.4369, 0.4041);
    QVERIFY(warm.red() == 255 && std::abs(warm.green() - 181) < 6 && warm.blue() < 128);
    for (int row = 0; row < picture.height(); row += 97) { // opaque, and never black
        for (int column = 0; column < picture.width(); column += 89) {
            const QColor pixel(picture.pixel(column, row));
            QVERIFY(pixel.alpha() == 255 && pixel.value() > 200);
        }
    }
}

void WhiteChartTest::theImagesAreCutFromThePictureAndShaded()
{
    const QImage picture(QStringLiteral(":/RGBGamut.png"));
    const QRect rect = chart().whiteImage().rect();
    const auto pictureAt = [&picture](const QPointF& xy) {
        return QColor(picture.pixel(static_cast<int>((xy.x() - 0.1) / 0.6 * 2400),
                                    static_cast<int>((0.65 - xy.y()) / 0.65 * 2600)));
    };
    const auto isClose = [](const QColor& a, const QColor& b, int tolerance) {
        return std::abs(a.red() - b.red()) <= tolerance &&
               std::abs(a.green() - b.green()) <= tolerance &&
               std::abs(a.blue() - b.blue()) <= tolerance;
    };
    // Outside of the outline the picture itself.
    const QPointF outside(0.28, 0.43);
    QVERIFY(!chart().outline().containsPoint(outside, Qt::OddEvenFill));
    const QPoint p = chart().pixelAt(outside, rect);
    QVERIFY(isClose(chart().whiteImage().pixelColor(p), pictureAt(outside), 3));
    QVERIFY(isClose(chart().mainImage().pixelColor(p), pictureAt(outside), 3));
    // Inside, the colour of the place over it: away from the locus with 0.85 of its saturation.
    for (const int tint : {0, 16000}) {
        const QPointF inside = xyOf(4000, tint);
        const QPoint at = chart().pixelAt(inside, rect);
        const QColor plain = VelaColor(inside.x(), inside.y()).toQColor(true).toHsv();
        const double factor = tint == 0 ? 1.0 : 0.85;
        const QColor shade = QColor::fromHsv(
            plain.hue(), static_cast<int>(plain.saturation() * factor), plain.value());
        const QColor base = pictureAt(inside);
        const auto mix = [&](double opacity) {
            const auto part = [opacity](int over, int under) {
                return static_cast<int>(opacity * over + (1.0 - opacity) * under + 0.5);
            };
            return QColor(part(shade.red(), base.red()), part(shade.green(), base.green()),
                          part(shade.blue(), base.blue()));
        };
        QVERIFY(isClose(chart().whiteImage().pixelColor(at), mix(0.25), 3));
        QVERIFY(isClose(chart().mainImage().pixelColor(at), mix(0.85), 3));
    }
}

void WhiteChartTest::theOutlineRunsAroundTemperaturesAndTints()
{
    const QPolygonF& outline = chart().outline();
    QCOMPARE(chart().outlinePixels().size(), outline.size());
    for (const int cct : {1900, 2500, 4000, 7990, 11000}) {
        for (const int tint : {-32767, 32767}) {
            QVERIFY(outline.contains(xyOf(cct, tint)));
        }
        for (const int tint : {-30000, 0, 30000}) {
            if (cct > 1900 && cct < 11000) {
                QVERIFY(outline.containsPoint(xyOf(cct, tint), Qt::OddEvenFill));
            }
        }
    }
    const int corner = outline.indexOf(xyOf(11000, 32767));
    QCOMPARE(chart().outlinePixels().at(corner),
             chart().pixelOf(11000, 32767, chart().mainImage().rect()));
    // Round it goes: neighbours are close, and so are both ends.
    QPointF last = outline.last();
    for (const QPointF& point : outline) {
        QVERIFY(QLineF(last, point).length() < 0.02);
        last = point;
    }
}

void WhiteChartTest::tintLimits_data()
{
    QTest::addColumn<int>("cct");
    QTest::addColumn<int>("limit");
    QTest::newRow("far above") << 20000 << 32767;
    QTest::newRow("no limit from 3100") << 3100 << 32767;
    QTest::newRow("just below") << 3099 << 32730;         // 32767 - 1638 x 0.022 = 32730.96
    QTest::newRow("halfway") << 3075 << 31866;            // 32767 - 1638 x 0.55 = 31866.1
    QTest::newRow("start of the slope") << 3050 << 30965; // 32767 - 1638 x 1.1 = 30965.2
    QTest::newRow("last of the table") << 3049 << limitByRule(3040);
    QTest::newRow("in the table") << 2500 << limitByRule(2500);
    QTest::newRow("by tens") << 2509 << limitByRule(2500);
    QTest::newRow("first") << 2000 << limitByRule(2000);
    QTest::newRow("below the table") << 1900 << limitByRule(2000);
    QTest::newRow("a failed reading") << 0 << limitByRule(2000);
    QTest::newRow("negative") << -5 << limitByRule(2000);
}

void WhiteChartTest::tintLimits()
{
    QFETCH(const int, cct);
    QFETCH(const int, limit);
    QCOMPARE(chart().tintLimit(cct), limit);
}

void WhiteChartTest::pixelsFollowThePlane()
{
    const QRect image(0, 0, 100, 200);
    QCOMPARE(chart().pixelAt({0.235, 0.475}, image), QPoint(0, 0));
    QCOMPARE(chart().pixelAt({0.54, 0.245}, image), QPoint(100, 200));
    QCOMPARE(chart().pixelAt({0.235 + 0.305 * 0.254, 0.475 - 0.23 * 0.5}, image), QPoint(25, 100));
    QCOMPARE(chart().pixelAt({0.235 - 0.0305, 0.475 + 0.023}, image), QPoint(-10, -20));
    const QPointF back = chart().chromaticityAt({25, 100}, image);
    QVERIFY(std::abs(back.x() - (0.235 + 0.305 * 0.25)) < 1e-12);
    QVERIFY(std::abs(back.y() - 0.36) < 1e-12);
    const QPointF xy = xyOf(4000, 0);
    QCOMPARE(chart().pixelOf(4000, 0, image), chart().pixelAt(xy, image));
    // (x - left) and (top - y) in parts of the view, to the nearest pixel
    QCOMPARE(chart().pixelOf(4000, 0, image),
             QPoint(static_cast<int>(std::floor(100 * (xy.x() - 0.235) / 0.305 + 0.5)),
                    static_cast<int>(std::floor(200 * (0.475 - xy.y()) / 0.23 + 0.5))));
    const double far = std::numeric_limits<double>::infinity();
    chart().pixelAt({far, -far}, image); // no overflow
}

void WhiteChartTest::pixelOfLimitsItsArguments()
{
    const QRect image(0, 0, 1600, 1206);
    QCOMPARE(chart().pixelOf(100, 0, image), chart().pixelOf(1900, 0, image));
    QCOMPARE(chart().pixelOf(50000, 0, image), chart().pixelOf(11000, 0, image));
    QCOMPARE(chart().pixelOf(4000, 99999, image), chart().pixelOf(4000, 32767, image));
    QCOMPARE(chart().pixelOf(4000, -99999, image), chart().pixelOf(4000, -32767, image));
}

void WhiteChartTest::nearestPointKeepsWhatIsInside()
{
    const QPointF inside = xyOf(4000, 1000);
    QCOMPARE(chart().nearestPoint(inside), inside);
    // Straight off the warm end: the nearest point is on it.
    const QPointF warm = xyOf(1900, 0);
    const QPointF along = xyOf(1900, 32767) - xyOf(1900, -32767);
    const QPointF across = QPointF(along.y(), -along.x()) / QLineF(QPointF(), along).length();
    const QPointF outside = warm + 0.05 * across;
    QVERIFY(!chart().outline().containsPoint(outside, Qt::OddEvenFill));
    const QPointF foot = chart().nearestPoint(outside);
    QVERIFY(QLineF(foot, warm).length() < 1e-6);
}

void WhiteChartTest::onChart_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::addColumn<bool>("expected");
    QTest::newRow("white") << white(4000, 0, 1.0) << true;
    QTest::newRow("at the edge") << white(4000, 32767, 1.0) << true;
    QTest::newRow("red") << raw(1.0, 0.64, 0.33) << false;
    QTest::newRow("black red") << raw(0.0, 0.64, 0.33) << true;
    QTest::newRow("RGB white") << VelaColor::fromRgb(255, 255, 255) << true;
    QTest::newRow("RGB green") << VelaColor::fromRgb(0, 255, 0) << false;
    QTest::newRow("RGB black") << VelaColor::fromRgb(0, 0, 0) << true;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("NaN") << raw(1.0, nan, nan) << false;
    // 0.001 in the CIE 1960 plane is the reach, here off the warm end.
    const QPointF warm = ColorUtils::xyToUv(xyOf(1900, 0).x(), xyOf(1900, 0).y());
    const QPointF close = ColorUtils::uvToXy(warm.x() + 0.0009, warm.y());
    const QPointF far = ColorUtils::uvToXy(warm.x() + 0.0012, warm.y());
    QTest::newRow("just outside") << raw(1.0, close.x(), close.y()) << true;
    QTest::newRow("further outside") << raw(1.0, far.x(), far.y()) << false;
}

void WhiteChartTest::onChart()
{
    QFETCH(const VelaColor, color);
    QFETCH(const bool, expected);
    QCOMPARE(chart().isOnChart(color), expected);
}

void WhiteChartTest::theChartReachesAThousandthFurther()
{
    // Off the warm end, where the chart's colour and the plain one differ.
    const QPointF warm = ColorUtils::xyToUv(xyOf(1900, 0).x(), xyOf(1900, 0).y());
    int within = 0;
    int beyond = 0;
    for (int step = 0; step <= 2000; step += 10) {
        const QPointF xy = ColorUtils::uvToXy(warm.x() + step * 1e-6, warm.y());
        const QPointF edge = chart().nearestPoint(xy);
        const bool reached = ColorUtils::deltaUv(xy.x(), xy.y(), edge.x(), edge.y()) < 0.001;
        const VelaColor color = raw(0.25, xy.x(), xy.y());
        QCOMPARE(chart().isOnChart(color), reached);
        QCOMPARE(chart().screenColor(color) == color.toQColor(true), !reached);
        ++(reached ? within : beyond);
    }
    QVERIFY(within > 50 && beyond > 50);
}

void WhiteChartTest::aWhiteTakesTheChartsHueAndItsOwnY_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("alpha");
    QTest::newRow("4000 K at half") << white(4000, 0, 0.5) << 0.5 << 1.0;
    QTest::newRow("full") << white(4000, 0, 1.0) << 1.0 << 1.0;
    QTest::newRow("half clear") << white(3000, 0, 0.8, 0.5) << 0.8 << 0.5;
    QTest::newRow("greenish") << white(5000, 20000, 0.7) << 0.7 << 1.0;
    QTest::newRow("beyond the tint limit") << white(2500, 32767, 0.7) << 0.7 << 1.0;
    QTest::newRow("dark") << white(4000, 0, 0.0) << 0.0 << 1.0;
}

void WhiteChartTest::aWhiteTakesTheChartsHueAndItsOwnY()
{
    QFETCH(const VelaColor, color);
    QFETCH(const double, value);
    QFETCH(const double, alpha);
    const QColor pixel = pixelFor(color);
    QVERIFY(pixel.saturationF() > 0.1);
    const QColor screen = chart().screenColor(color);
    QCOMPARE(screen, QColor::fromHsvF(pixel.hueF(), pixel.saturationF(), value, alpha));
    QCOMPARE(chart().screenColor(color), screen);
    if (value > 0.0) {
        QVERIFY(screen != color.toQColor(true));
    }
}

void WhiteChartTest::aSaturatedColorTakesThePlainWay()
{
    const VelaColor red = raw(0.9, 0.63, 0.335);
    QCOMPARE(chart().screenColor(red), red.toQColor(true));
    QCOMPARE(chart().screenColor(red), red.toQColor(true)); // remembered, too
    const VelaColor beyond = raw(0.9, 0.72, 0.27);          // clipped, not dark
    QVERIFY(chart().screenColor(beyond).red() > 200);
}

void WhiteChartTest::channelsTakeTheChartOnlyWhenSolvedFromYxy()
{
    VelaColor channels = white(4000, 0, 0.5).toNchannel(3, 6, -1, 0);
    QCOMPARE(channels.fromYxy(), 1U);
    const VelaColor seen = channels.toYxy(0, -1, -1);
    const QColor pixel = pixelFor(seen);
    QCOMPARE(chart().screenColor(channels),
             QColor::fromHsvF(pixel.hueF(), pixel.saturationF(), seen.capY(), 1.0));
    channels.setFromYxy(0);
    QCOMPARE(chart().screenColor(channels), channels.toQColor(true));
    const VelaColor green = raw(0.9, 0.3, 0.58).toNchannel(3, 6, -1, 0);
    QCOMPARE(green.fromYxy(), 1U);
    QCOMPARE(chart().screenColor(green), green.toQColor(true));
}

void WhiteChartTest::valuesOutOfRangeAreLimited_data()
{
    QTest::addColumn<double>("Y");
    QTest::addColumn<double>("value");
    QTest::newRow("above") << 7.5 << 1.0;
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << 1.0;
    QTest::newRow("negative") << -2.0 << 0.0;
    QTest::newRow("NaN") << std::numeric_limits<double>::quiet_NaN() << 0.0;
}

void WhiteChartTest::valuesOutOfRangeAreLimited()
{
    QFETCH(const double, Y);
    QFETCH(const double, value);
    const QPointF xy = xyOf(4000, 0);
    const QColor screen = chart().screenColor(raw(Y, xy.x(), xy.y()));
    QVERIFY(screen.isValid());
    QCOMPARE(screen.valueF(), value);
}

void WhiteChartTest::theTextIsWhatIsRemembered()
{
    // Two colours of one text form, on both sides of a rounding step of the screen's 16 bits.
    const double step = 20000.5 / 65535.0; // 0.305188830...
    const QPointF xy = xyOf(4500, 0);
    const VelaColor below = raw(step - 1e-8, xy.x(), xy.y());
    const VelaColor above = raw(step + 1e-8, xy.x(), xy.y());
    QCOMPARE(below.toString(), above.toString());
    const QColor first = chart().screenColor(below);
    QCOMPARE(first, QColor::fromHsvF(first.hueF(), first.saturationF(), step - 1e-8));
    QVERIFY(first != QColor::fromHsvF(first.hueF(), first.saturationF(), step + 1e-8));
    QCOMPARE(chart().screenColor(above), first); // without a look at its own Y or at a pixel
    QCOMPARE(chart().screenColor(below), first);
}

void WhiteChartTest::noPixelIsReadOutsideOfTheImage()
{
    const QtMessageHandler before = qInstallMessageHandler(countMessages);
    int outside = 0;
    for (int cct = 1900; cct <= 11000; cct += 20) {
        for (const int tint : {-32767, 0, 32767}) {
            const QRect rect = chart().whiteImage().rect();
            outside += rect.contains(chart().pixelOf(cct, tint, rect)) ? 0 : 1;
            QVERIFY(chart().screenColor(white(cct, tint, 1.0)).isValid());
        }
    }
    qInstallMessageHandler(before);
    QVERIFY(outside > 0); // else there was nothing to see
    QCOMPARE(rangeMessages, 0);
}

void WhiteChartTest::manyColorsStayTheSame()
{
    // More than are kept at hand: each still gets the answer of its text.
    const QPointF xy = xyOf(4000, 0);
    const auto colorOf = [&xy](int i) { return raw(i / 70000.0, xy.x(), xy.y()); };
    const QColor sample = chart().screenColor(colorOf(12345));
    for (int i = 0; i < 70000; ++i) {
        chart().screenColor(colorOf(i));
    }
    QCOMPARE(chart().screenColor(colorOf(12345)), sample);
    for (int i = 0; i < 70000; i += 777) {
        QVERIFY(std::abs(chart().screenColor(colorOf(i)).valueF() - i / 70000.0) < 2e-5);
    }
}

QTEST_GUILESS_MAIN(WhiteChartTest)
#include "WhiteChartTest.moc"
