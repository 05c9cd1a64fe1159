#include "PickerPaint.h"
#include "color/WhiteChart.h"
#include "picker/BlackBodyCurveWidget.h"
#include "picker/CCTPickerWidget.h"
#include "picker/ColorTrack.h"
#include "picker/HsbSlidersWidget.h"
#include "picker/HsbSpectrumWidget.h"
#include "picker/HsbSpectrumZoomWidget.h"
#include "picker/HsbTintsAndShadesWidget.h"
#include "picker/RgbSlidersWidget.h"
#include "picker/TintPickerWidget.h"
#include "resources/Resources.h"

#include <QApplication>
#include <QDir>
#include <QPainter>
#include <QStyleFactory>
#include <QtTest>

#include <memory>

using namespace VelaColorPickerLib;

namespace {

constexpr int kTolerance = 2; // a channel, of every pixel
constexpr int kLine = 18;     // the font's line height, of which all sizes are made

/// At the colour of all pictures: hue 210, saturation 153/255, brightness 204/255.
VelaColor shownColor()
{
    return VelaColor::fromHsv(210, 153, 204);
}

std::unique_ptr<QWidget> makeField(const QString& name)
{
    if (name == QLatin1String("spectrum")) {
        auto widget = std::make_unique<HsbSpectrumWidget>();
        widget->resize(260, 170);
        widget->setColor(shownColor());
        widget->setZoomArea({0.4, 0.45, 0.35, 0.3});
        return widget;
    }
    if (name == QLatin1String("tintsAndShades")) {
        auto widget = std::make_unique<HsbTintsAndShadesWidget>();
        widget->resize(180, 120);
        widget->setColor(shownColor());
        return widget;
    }
    if (name == QLatin1String("zoom")) {
        auto widget = std::make_unique<HsbSpectrumZoomWidget>();
        widget->resize(176, 154);
        widget->setColor(shownColor());
        return widget;
    }
    if (name == QLatin1String("temperature")) {
        auto widget = std::make_unique<CCTPickerWidget>();
        widget->resize(260, widget->sizeHint().height());
        widget->setValue(3500);
        return widget;
    }
    if (name == QLatin1String("tint")) {
        auto widget = std::make_unique<TintPickerWidget>();
        widget->resize(260, widget->sizeHint().height());
        widget->setCct(3500);
        widget->setValue(900);
        return widget;
    }
    auto chart = std::make_unique<BlackBodyCurveWidget>();
    chart->resize(305, 230);
    chart->setChromaticity({0.36, 0.37});
    return chart;
}

/// The slider's track alone, of the group of sliders that makes it.
QImage trackImage(const QString& name)
{
    std::unique_ptr<ColorSlidersWidget> group;
    const bool isRgb = name == QLatin1String("redTrack") || name == QLatin1String("greenTrack") ||
                       name == QLatin1String("blueTrack");
    if (isRgb) {
        group = std::make_unique<RgbSlidersWidget>();
    } else {
        group = std::make_unique<HsbSlidersWidget>();
    }
    group->setColor(shownColor());
    auto* const track = group->findChild<ColorTrack*>(name);
    track->setParent(nullptr); // out of the layout: at its own size
    const std::unique_ptr<ColorTrack> owner(track);
    track->resize(260, track->sizeHint().height());
    return track->grab().toImage().convertToFormat(QImage::Format_RGB32);
}

QImage fieldImage(const QString& name)
{
    if (name.endsWith(QLatin1String("Track"))) {
        return trackImage(name);
    }
    return makeField(name)->grab().toImage().convertToFormat(QImage::Format_RGB32);
}

/// The number of pixels beyond the tolerance, which are white in `difference`.
int differingPixels(const QImage& actual, const QImage& expected, QImage* difference)
{
    *difference = QImage(actual.size(), QImage::Format_RGB32);
    difference->fill(Qt::black);
    int count = 0;
    for (int y = 0; y < actual.height(); ++y) {
        for (int x = 0; x < actual.width(); ++x) {
            if (!isNearColor(actual.pixelColor(x, y), expected.pixelColor(x, y), kTolerance)) {
                difference->setPixelColor(x, y, Qt::white);
                ++count;
            }
        }
    }
    return count;
}

} // namespace

/// The painted fields, which hold no text, against stored pictures and the rules of their colours.
/// With FORGE_WRITE_GOLDEN set, the pictures are written instead: look at them before a commit.
class PaintedFieldsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void looksAsStored_data();
    void looksAsStored();
    void spectrumFollowsItsRule();
    void tintsAndShadesFollowTheirRule();
    void zoomFollowsItsRule();
    void tracksFollowTheirRule();
    void chartShadesWhatNoSliderReaches();
};

void PaintedFieldsTest::initTestCase()
{
    initForgeResources();
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("fusion")));
    QPalette palette(QColor(239, 239, 239));
    palette.setColor(QPalette::Dark, QColor(159, 159, 159));
    QApplication::setPalette(palette);
    const QFont font = fontOfHeight(kLine);
    QCOMPARE(QFontMetrics(font).height(), kLine);
    QApplication::setFont(font);
}

void PaintedFieldsTest::looksAsStored_data()
{
    QTest::addColumn<QString>("name");
    for (const char* const name :
         {"spectrum", "tintsAndShades", "zoom", "whiteChart", "redTrack", "greenTrack", "blueTrack",
          "hueTrack", "saturationTrack", "brightnessTrack", "temperature", "tint"}) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

void PaintedFieldsTest::looksAsStored()
{
    QFETCH(const QString, name);
    const QString path =
        QStringLiteral(FORGE_SOURCE_DIR "/tests/picker/golden/") + name + QStringLiteral(".png");
    const QImage actual = fieldImage(name);
    if (qEnvironmentVariableIsSet("FORGE_WRITE_GOLDEN")) {
        QVERIFY(actual.save(path));
    }
    const QImage expected(path);
    QVERIFY2(!expected.isNull(), qPrintable(path));
    QCOMPARE(actual.size(), expected.size());
    QImage difference;
    const int count = differingPixels(actual, expected, &difference);
    if (count > 0) {
        const QDir folder(QStringLiteral(FORGE_TEST_DIR));
        actual.save(folder.filePath(name + QStringLiteral(".actual.png")));
        difference.save(folder.filePath(name + QStringLiteral(".difference.png")));
    }
    QVERIFY2(count == 0, qPrintable(QStringLiteral("%1 pixels").arg(count)));
}

void PaintedFieldsTest::spectrumFollowsItsRule()
{
    const QImage image = fieldImage(QStringLiteral("spectrum"));
    const double value = 204 / 255.0;
    for (const QPoint& place : {QPoint(0, 0), QPoint(259, 0), QPoint(0, 169), QPoint(259, 169),
                                QPoint(43, 60), QPoint(86, 165), QPoint(130, 20), QPoint(220, 110),
                                QPoint(150, 90), QPoint(180, 90), QPoint(20, 140)}) {
        QVERIFY(isNearColor(image.pixelColor(place),
                            hsvColor(place.x() / 259.0 * 360.0, place.y() / 169.0, value),
                            kTolerance));
    }
}

void PaintedFieldsTest::tintsAndShadesFollowTheirRule()
{
    const QImage image = fieldImage(QStringLiteral("tintsAndShades"));
    for (const QPoint& place : {QPoint(0, 0), QPoint(179, 0), QPoint(0, 119), QPoint(179, 119),
                                QPoint(60, 40), QPoint(140, 60), QPoint(20, 100), QPoint(90, 90)}) {
        QVERIFY(isNearColor(image.pixelColor(place),
                            hsvColor(210.0, place.x() / 179.0, 1.0 - place.y() / 119.0),
                            kTolerance));
    }
}

void PaintedFieldsTest::zoomFollowsItsRule()
{
    const QImage image = fieldImage(QStringLiteral("zoom"));
    for (int row = 0; row < 11; ++row) {
        for (int column = 0; column < 11; ++column) {
            const QColor expected =
                hsvColor(210 + 13 * (column - 5), (153 + 9 * (row - 5)) / 255.0, 204 / 255.0);
            QVERIFY(
                isNearColor(image.pixelColor(16 * column + 8, 14 * row + 7), expected, kTolerance));
        }
    }
}

void PaintedFieldsTest::tracksFollowTheirRule()
{
    const QColor color = hsvColor(210.0, 153 / 255.0, 204 / 255.0);
    constexpr int kRadius = 11; // half of the bar, which is 5/4 of the line
    constexpr int kLeft = 3 + kRadius;
    constexpr int kRight = 256 - kRadius;
    const auto share = [](int x) {
        return std::clamp(static_cast<double>(x - kLeft) / (kRight - kLeft), 0.0, 1.0);
    };
    const auto check = [&](const char* name, const auto& colorAt, double shown) {
        const QImage image = fieldImage(QLatin1String(name));
        for (int x = 6; x < 254; x += 4) {
            if (std::abs(share(x) - shown) * (kRight - kLeft) < 2 * kRadius) {
                continue; // the marker
            }
            // Values are whole: two of them next to each other differ by up to 5 along the hue.
            QVERIFY2(isNearColor(image.pixelColor(x, image.height() / 2), colorAt(share(x)),
                                 kTolerance + 3),
                     qPrintable(QStringLiteral("%1 %2").arg(QLatin1String(name)).arg(x)));
        }
    };
    const auto byte = [](double s) { return qRound(s * 255.0); };
    check(
        "redTrack", [&](double s) { return QColor(byte(s), color.green(), color.blue()); },
        color.redF());
    check(
        "greenTrack", [&](double s) { return QColor(color.red(), byte(s), color.blue()); },
        color.greenF());
    check(
        "blueTrack", [&](double s) { return QColor(color.red(), color.green(), byte(s)); },
        color.blueF());
    check(
        "hueTrack", [](double s) { return hsvColor(s * 359.0, 153 / 255.0, 204 / 255.0); },
        210 / 359.0);
    check(
        "saturationTrack", [](double s) { return hsvColor(210.0, s, 204 / 255.0); }, 153 / 255.0);
    check(
        "brightnessTrack", [](double s) { return hsvColor(210.0, 153 / 255.0, s); }, 204 / 255.0);
}

/// Inside, the chart's picture; outside of what the sliders reach, that picture under grey.
void PaintedFieldsTest::chartShadesWhatNoSliderReaches()
{
    const QImage image = fieldImage(QStringLiteral("whiteChart"));
    const WhiteChart& chart = WhiteChart::instance();
    QImage plain(image.size(), QImage::Format_RGB32);
    plain.fill(QColor(0x30, 0x30, 0x30));
    QPainter painter(&plain);
    painter.drawImage(0, 0,
                      WhiteChart::instance().mainImage().scaled(image.size(), Qt::IgnoreAspectRatio,
                                                                Qt::SmoothTransformation));
    painter.end();
    const auto shaded = [](int v) {
        return qRound(v * (255 - 0xD8) / 255.0 + 0x30 * 0xD8 / 255.0);
    };
    for (const QPoint& place : {QPoint(3, 3), QPoint(100, 5), QPoint(4, 225), QPoint(300, 225)}) {
        const QColor below = plain.pixelColor(place);
        QVERIFY(isNearColor(
            image.pixelColor(place),
            QColor(shaded(below.red()), shaded(below.green()), shaded(below.blue())), kTolerance));
    }
    int compared = 0;
    for (const int cct : {2600, 3100, 5300, 7200, 9000}) { // off the bins' ends
        for (const int tint : {-20000, -10000, 10000, 20000}) {
            const QPoint place = chart.pixelOf(cct, tint, image.rect());
            if (image.rect().adjusted(3, 3, -3, -3).contains(place)) {
                QVERIFY(isNearColor(image.pixelColor(place), plain.pixelColor(place), kTolerance));
                ++compared;
            }
        }
    }
    QVERIFY(compared >= 12);
}

QTEST_MAIN(PaintedFieldsTest)
#include "PaintedFieldsTest.moc"
