#include "picker/Hsb.h"

#include "PickerPaint.h"

#include <QtTest>

using namespace VelaColorPickerLib;

class HsbTest : public QObject
{
    Q_OBJECT

private slots:
    void takesWhatTheColorTells_data();
    void takesWhatTheColorTells();
    void roundsToTheSliders();
    void spectrumIsThatOfTheColors_data();
    void spectrumIsThatOfTheColors();
    void tintsAndShadesAreThoseOfTheColors();
};

void HsbTest::takesWhatTheColorTells_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::addColumn<double>("hue");
    QTest::addColumn<double>("saturation");
    QTest::addColumn<double>("brightness");
    const double half = 128.0 / 255.0;
    QTest::newRow("RGB") << VelaColor(QColor(0, 0, 255)) << 240.0 / 360.0 << 1.0 << 1.0;
    QTest::newRow("a grey keeps the hue") << VelaColor(QColor(128, 128, 128)) << 0.3 << 0.0 << half;
    QTest::newRow("black keeps the saturation too")
        << VelaColor(QColor(0, 0, 0)) << 0.3 << 0.6 << 0.0;
    QTest::newRow("HSV that is grey has its hue")
        << VelaColor::fromHsvF(0.5, 0.0, 0.8) << 0.5 << 0.0 << 0.8;
    QTest::newRow("HSV that is black has both")
        << VelaColor::fromHsvF(0.5, 0.4, 0.0) << 0.5 << 0.4 << 0.0;
    QTest::newRow("HSV without a hue") << VelaColor::fromHsv(-1, 0, 128) << 0.3 << 0.0 << half;
    QTest::newRow("the hue of 360 degrees")
        << VelaColor::fromHsvF(1.0, 0.4, 0.2) << 1.0 << 0.4 << 0.2;
}

void HsbTest::takesWhatTheColorTells()
{
    QFETCH(const VelaColor, color);
    QFETCH(const double, hue);
    QFETCH(const double, saturation);
    QFETCH(const double, brightness);
    Hsb hsb = {0.3, 0.6, 0.9};
    hsb.take(color);
    QVERIFY(std::abs(hsb.hue - hue) < 1e-6);
    QVERIFY(std::abs(hsb.saturation - saturation) < 1e-6);
    QVERIFY(std::abs(hsb.brightness - brightness) < 1e-6);
}

void HsbTest::roundsToTheSliders()
{
    for (int i = 0; i < 256; ++i) {
        Hsb hsb;
        hsb.take(VelaColor::fromHsv(i, i, i));
        QCOMPARE(hsb.hueDegrees(), i);
        QCOMPARE(hsb.saturation8(), i);
        QCOMPARE(hsb.brightness8(), i);
    }
    const Hsb last = {1.0, 1.0, 1.0};
    QCOMPARE(last.hueDegrees(), 359);
    QCOMPARE(last.saturation8(), 255);
}

void HsbTest::spectrumIsThatOfTheColors_data()
{
    QTest::addColumn<double>("brightness");
    QTest::addColumn<double>("ratio");
    QTest::newRow("full") << 1.0 << 1.0;
    QTest::newRow("dimmed") << 0.37 << 1.0;
    QTest::newRow("black") << 0.0 << 1.0;
    QTest::newRow("two pixels to one") << 0.8 << 2.0;
}

/// Every pixel is exactly what the colour of its place is on the screen.
void HsbTest::spectrumIsThatOfTheColors()
{
    QFETCH(const double, brightness);
    QFETCH(const double, ratio);
    const QSize pixels(182, 94);
    const QImage image = spectrumImage(pixels, ratio, brightness);
    QCOMPARE(image.size(), pixels);
    QCOMPARE(image.devicePixelRatio(), ratio);
    const auto place = [ratio](int i, int count) {
        const double last = count / ratio - 1.0; // where the last pixel of the widget is
        return std::clamp(((i + 0.5) / ratio - 0.5) / last, 0.0, 1.0);
    };
    for (int y = 0; y < pixels.height(); ++y) {
        for (int x = 0; x < pixels.width(); ++x) {
            const double hue = place(x, pixels.width());
            const double saturation = place(y, pixels.height());
            const QColor expected =
                VelaColor::fromHsvF(hue, saturation, brightness).toQColor(false);
            const QColor actual = image.pixelColor(x, y);
            if (actual != expected) {
                QFAIL(qPrintable(QStringLiteral("%1,%2: %3, not %4")
                                     .arg(x)
                                     .arg(y)
                                     .arg(actual.name(), expected.name())));
            }
            QVERIFY(isNearColor(actual, hsvColor(hue * 360.0, saturation, brightness), 1));
        }
    }
}

void HsbTest::tintsAndShadesAreThoseOfTheColors()
{
    for (const double hue : {0.0, 0.1, 0.25, 0.4, 0.5, 0.75, 0.9, 1.0}) {
        const QImage image = tintsAndShadesImage({101, 51}, 1.0, hue);
        for (int y = 0; y < 51; ++y) {
            for (int x = 0; x < 101; ++x) {
                const QColor expected =
                    VelaColor::fromHsvF(hue, x / 100.0, 1.0 - y / 50.0).toQColor(false);
                QCOMPARE(image.pixelColor(x, y), expected);
            }
        }
        QCOMPARE(image.pixelColor(0, 0), QColor(255, 255, 255));
        QCOMPARE(image.pixelColor(50, 50), QColor(0, 0, 0));
    }
}

QTEST_MAIN(HsbTest)
#include "HsbTest.moc"
