#include "color/ColorUtils.h"
#include "picker/BlackBodyCurveWidget.h"
#include "picker/CCTPickerWidget.h"
#include "picker/HsbSpectrumWidget.h"
#include "picker/HsbSpectrumZoomWidget.h"
#include "picker/HsbTintsAndShadesWidget.h"
#include "picker/RgbSlidersWidget.h"
#include "picker/TintPickerWidget.h"
#include "resources/Resources.h"

#include <QDir>
#include <QImage>
#include <QPainter>
#include <QtTest>

#include <cstdlib>
#include <functional>
#include <memory>

using namespace VelaColorPickerLib;

namespace {

using Maker = std::function<QWidget*()>;

QWidget* spectrum()
{
    auto* const widget = new HsbSpectrumWidget;
    widget->setHsb(0.3, 0.7, 1.0, 1.0);
    widget->setZoomArea({0.2, 0.5, 0.25, 0.3});
    return widget;
}

QWidget* tints()
{
    auto* const widget = new HsbTintsAndShadesWidget;
    widget->setHsb(0.08, 0.6, 0.8, 1.0);
    return widget;
}

QWidget* zoom()
{
    auto* const widget = new HsbSpectrumZoomWidget;
    widget->setHsb(210, 200, 220, 1.0);
    widget->setLevel(4);
    return widget;
}

QWidget* chart()
{
    auto* const widget = new BlackBodyCurveWidget;
    double x = 0.0;
    double y = 0.0;
    ColorUtils::cctTintToXy(4200, 800, &x, &y);
    widget->setChromaticity({x, y});
    return widget;
}

QWidget* temperature()
{
    auto* const widget = new CCTPickerWidget;
    widget->setValue(3500);
    return widget;
}

QWidget* tint()
{
    auto* const widget = new TintPickerWidget;
    widget->setCct(3500);
    widget->setValue(900);
    return widget;
}

/// What the widget paints of itself, without focus; at a font size of its own, which gives the size
/// of markers.
QImage paintingOf(const Maker& maker, const QSize& size)
{
    const std::unique_ptr<QWidget> widget(maker());
    QFont font = widget->font();
    font.setPixelSize(13);
    widget->setFont(font);
    widget->resize(size);
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::darkGray);
    widget->render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

int distance(QRgb a, QRgb b)
{
    return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                     std::abs(qBlue(a) - qBlue(b))});
}

} // namespace

Q_DECLARE_METATYPE(Maker)

/// The painted fields against pictures of them that were looked at. To renew those after a change
/// that is meant, run with FORGE_RENEW_GOLDEN=1 and look at them.
class PaintedFieldsTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void looksAsItDid_data();
    void looksAsItDid();
};

void PaintedFieldsTest::initTestCase()
{
    initForgeResources();
}

void PaintedFieldsTest::looksAsItDid_data()
{
    QTest::addColumn<Maker>("maker");
    QTest::addColumn<QSize>("size");
    QTest::newRow("spectrum") << Maker(spectrum) << QSize(180, 120);
    QTest::newRow("tints") << Maker(tints) << QSize(120, 100);
    QTest::newRow("zoom") << Maker(zoom) << QSize(132, 110);
    QTest::newRow("chart") << Maker(chart) << QSize(240, 160);
    QTest::newRow("temperature") << Maker(temperature) << QSize(240, 28);
    QTest::newRow("tint") << Maker(tint) << QSize(240, 28);
}

void PaintedFieldsTest::looksAsItDid()
{
    QFETCH(Maker, maker);
    QFETCH(QSize, size);
    const QString path = QStringLiteral(FORGE_SOURCE_DIR "/tests/picker/golden/%1.png")
                             .arg(QLatin1String(QTest::currentDataTag()));
    const QImage painted = paintingOf(maker, size);
    if (qEnvironmentVariableIsSet("FORGE_RENEW_GOLDEN")) {
        QVERIFY(painted.save(path));
    }
    const QImage golden = QImage(path).convertToFormat(QImage::Format_RGB32);
    QCOMPARE(golden.size(), size);
    int worst = 0;
    int differing = 0;
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const int away = distance(painted.pixel(x, y), golden.pixel(x, y));
            worst = std::max(worst, away);
            differing += away > 2 ? 1 : 0;
        }
    }
    // Curves of other releases of the painter may round a pixel of an edge otherwise.
    if (differing > size.width() * size.height() / 500) {
        const QString seen = QDir::temp().filePath(QFileInfo(path).fileName());
        painted.save(seen);
        QFAIL(qPrintable(QStringLiteral("%1 pixels differ, by up to %2: see %3")
                             .arg(differing)
                             .arg(worst)
                             .arg(seen)));
    }
}

QTEST_MAIN(PaintedFieldsTest)
#include "PaintedFieldsTest.moc"
