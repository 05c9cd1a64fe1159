#include "PickerInput.h"
#include "PickerPaint.h"
#include "picker/HsbSpectrumWidget.h"
#include "picker/HsbTintsAndShadesWidget.h"
#include "picker/RgbPickerWidget.h"
#include "resources/Resources.h"

#include <QElapsedTimer>
#include <QtTest>

using namespace VelaColorPickerLib;

/// What a mouse event costs with all that is painted for it.
class SpectrumDragCostTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void aDragKeepsUpWithTheMouse_data();
    void aDragKeepsUpWithTheMouse();
};

void SpectrumDragCostTest::initTestCase()
{
    initForgeResources();
}

void SpectrumDragCostTest::aDragKeepsUpWithTheMouse_data()
{
    QTest::addColumn<bool>("isSpectrum");
    QTest::newRow("spectrum") << true;
    // Another brightness at each event paints the whole spectrum anew.
    QTest::newRow("tints and shades") << false;
}

void SpectrumDragCostTest::aDragKeepsUpWithTheMouse()
{
    QFETCH(const bool, isSpectrum);
    constexpr int kEvents = 400;
    constexpr double kFrameMs = 1000.0 / 60.0;
    RgbPickerWidget page;
    auto* const spectrum = page.findChild<HsbSpectrumWidget*>();
    spectrum->setMinimumSize(800, 600);
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    QVERIFY(spectrum->width() >= 800 && spectrum->height() >= 600);
    QWidget* const field =
        isSpectrum ? static_cast<QWidget*>(spectrum) : page.findChild<HsbTintsAndShadesWidget*>();
    QTest::mousePress(field, Qt::LeftButton, {}, QPoint(20, 20));
    QCoreApplication::processEvents();
    PaintWatch watch;
    spectrum->installEventFilter(&watch);
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < kEvents; ++i) {
        const int x = field->width() * i / kEvents;
        const int y = field->height() * ((i * 7) % kEvents) / kEvents;
        dragTo(field, QPoint(x, y));
        QCoreApplication::processEvents();
    }
    const double ms = static_cast<double>(timer.nsecsElapsed()) / 1e6 / kEvents;
    qInfo("%.3f ms an event", ms);
    QVERIFY(watch.events > kEvents * 9 / 10); // every one of them is seen
    QVERIFY(ms < kFrameMs);
}

QTEST_MAIN(SpectrumDragCostTest)
#include "SpectrumDragCostTest.moc"
