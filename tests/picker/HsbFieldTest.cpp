#include "picker/HsbField.h"

#include "color/VelaColor.h"

#include <QObject>
#include <QtTest>

#include <cstdlib>

using namespace VelaColorPickerLib;

namespace {

bool isNear(const QColor& a, const QColor& b)
{
    return std::abs(a.red() - b.red()) <= 1 && std::abs(a.green() - b.green()) <= 1 &&
           std::abs(a.blue() - b.blue()) <= 1;
}

} // namespace

class HsbFieldTest : public QObject
{
    Q_OBJECT
private slots:
    void paintsWhatTheColorIs_data();
    void paintsWhatTheColorIs();
    void theSpectrumRunsFromRedToRedAndFromWhiteToPure();
    void theSpectrumIsAsBrightAsTheColor();
    void tintsAndShadesRunFromGreysToTheHue();
    void aFieldOfOnePixelIsAColor();
};

void HsbFieldTest::paintsWhatTheColorIs_data()
{
    QTest::addColumn<double>("brightness");
    for (const double brightness : {1.0, 0.6, 0.1, 0.0}) {
        QTest::addRow("brightness %.1f", brightness) << brightness;
    }
}

void HsbFieldTest::paintsWhatTheColorIs()
{
    QFETCH(double, brightness);
    for (int hue = 0; hue < 360; hue += 7) {
        for (int saturation = 0; saturation <= 10; ++saturation) {
            const double h = hue / 360.0;
            const double s = saturation / 10.0;
            const QColor wanted = VelaColor::fromHsvF(h, s, brightness).toQColor(true);
            const QColor painted = hsbColor(h, s, brightness);
            QVERIFY2(isNear(painted, wanted), qPrintable(painted.name() + wanted.name()));
        }
    }
}

void HsbFieldTest::theSpectrumRunsFromRedToRedAndFromWhiteToPure()
{
    const QImage image = spectrumImage({361, 101}, 1.0);
    QCOMPARE(image.size(), QSize(361, 101));
    for (const int x : {0, 77, 200, 360}) {
        QCOMPARE(image.pixelColor(x, 0), QColor(Qt::white));
    }
    QCOMPARE(image.pixelColor(0, 100), QColor(Qt::red));
    QCOMPARE(image.pixelColor(60, 100), QColor(Qt::yellow));
    QCOMPARE(image.pixelColor(120, 100), QColor(Qt::green));
    QCOMPARE(image.pixelColor(180, 100), QColor(Qt::cyan));
    QCOMPARE(image.pixelColor(240, 100), QColor(Qt::blue));
    QCOMPARE(image.pixelColor(300, 100), QColor(Qt::magenta));
    QCOMPARE(image.pixelColor(360, 100), QColor(Qt::red));
    QCOMPARE(image.pixelColor(240, 50), QColor(128, 128, 255));
}

void HsbFieldTest::theSpectrumIsAsBrightAsTheColor()
{
    const QImage dim = spectrumImage({361, 101}, 0.4);
    QCOMPARE(dim.pixelColor(77, 0), QColor(102, 102, 102));
    QCOMPARE(dim.pixelColor(120, 100), QColor(0, 102, 0));
    QCOMPARE(dim.pixelColor(240, 50), QColor(51, 51, 102));
    QCOMPARE(spectrumImage({361, 101}, 0.0).pixelColor(120, 100), QColor(Qt::black));
}

void HsbFieldTest::tintsAndShadesRunFromGreysToTheHue()
{
    const QImage image = tintsAndShadesImage({101, 101}, 1.0 / 3.0);
    QCOMPARE(image.pixelColor(0, 0), QColor(Qt::white));
    QCOMPARE(image.pixelColor(100, 0), QColor(Qt::green));
    QCOMPARE(image.pixelColor(0, 60), QColor(102, 102, 102));
    QCOMPARE(image.pixelColor(100, 60), QColor(0, 102, 0));
    QCOMPARE(image.pixelColor(100, 100), QColor(Qt::black));
    QCOMPARE(image.pixelColor(0, 100), QColor(Qt::black));
}

void HsbFieldTest::aFieldOfOnePixelIsAColor()
{
    QCOMPARE(spectrumImage({1, 1}, 1.0).pixelColor(0, 0), QColor(Qt::white));
    QCOMPARE(tintsAndShadesImage({1, 1}, 0.0).pixelColor(0, 0), QColor(Qt::white));
    QVERIFY(spectrumImage({0, 0}, 1.0).isNull());
}

QTEST_GUILESS_MAIN(HsbFieldTest)
#include "HsbFieldTest.moc"
