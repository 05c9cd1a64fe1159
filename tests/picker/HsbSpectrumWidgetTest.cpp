#include "picker/HsbSpectrumWidget.h"

#include "ColorSignals.h"
#include "PickerInput.h"
#include "PickerPaint.h"

#include <QSignalSpy>
#include <QtTest>

using namespace VelaColorPickerLib;

class HsbSpectrumWidgetTest : public QObject
{
    Q_OBJECT

private slots:
    void isDescribed();
    void isAGradientSelector();
    void aClickAndADragChoose();
    void limitsAtBothEnds_data();
    void limitsAtBothEnds();
    void keepsBrightnessAndAlpha();
    void keysMoveTheMarker_data();
    void keysMoveTheMarker();
    void theEndsAreReached();
    void wheelAsksForZoomLevels();
    void otherButtonsChooseNothing();
    void settingEmitsNothing();
    void aGreyKeepsItsHue();
    void markerIsHit();
    void paintsWhatTheMouseChooses();
    void paintsTheZoomArea();
    void paintsMarkerAndFocus();
    void aDragRepaintsOnlyWhatChanged();
    void anotherZoomAreaRepaintsOnlyItsFrame();
    void anotherBrightnessRepaintsAll();
    void staysUpAtNoSize();
};

void HsbSpectrumWidgetTest::isDescribed()
{
    const HsbSpectrumWidget widget;
    QVERIFY(!widget.accessibleName().isEmpty());
    QVERIFY(!widget.toolTip().isEmpty());
    QCOMPARE(widget.focusPolicy(), Qt::StrongFocus);
    QVERIFY(widget.sizeHint().width() > widget.minimumSizeHint().width());
}

void HsbSpectrumWidgetTest::isAGradientSelector()
{
    HsbSpectrumWidget widget;
    QVERIFY(qobject_cast<GradientColorSelectorWidget*>(&widget) != nullptr);
    QVERIFY(qobject_cast<ColorSelectorWidget*>(&widget) != nullptr);
    const QMetaObject* const meta = widget.metaObject();
    QVERIFY(meta->indexOfSignal("colorChanged(VelaColor)") >= 0);
    QVERIFY(meta->indexOfSlot("setZoomArea(QRectF)") >= 0);
}

void HsbSpectrumWidgetTest::aClickAndADragChoose()
{
    HsbSpectrumWidget widget;
    widget.resize(361, 256); // a pixel a degree and 1/255
    widget.show();
    QSignalSpy colors(&widget, &HsbSpectrumWidget::colorChanged);
    QTest::mouseClick(&widget, Qt::LeftButton, {}, QPoint(120, 102));
    QCOMPARE(colors.count(), 1);
    QCOMPARE(lastColor(colors), VelaColor::fromHsvF(120.0 / 360.0, 102.0 / 255.0, 1.0));
    QCOMPARE(lastColor(colors).spec(), VelaColor::Hsv);
    QCOMPARE(widget.markerPixel(), QPoint(120, 102));

    QTest::mousePress(&widget, Qt::LeftButton, {}, QPoint(120, 102));
    dragTo(&widget, QPoint(240, 51));
    QCOMPARE(lastColor(colors), VelaColor::fromHsvF(240.0 / 360.0, 51.0 / 255.0, 1.0));
    QVERIFY(std::abs(widget.hue() - 2.0 / 3.0) < 1e-12);
    QVERIFY(std::abs(widget.saturation() - 0.2) < 1e-12);
    QTest::mouseRelease(&widget, Qt::LeftButton, {}, QPoint(240, 51));
    QCOMPARE(colors.count(), 3);
}

void HsbSpectrumWidgetTest::limitsAtBothEnds_data()
{
    QTest::addColumn<double>("hue");
    QTest::addColumn<double>("saturation");
    QTest::addColumn<double>("brightness");
    QTest::addColumn<VelaColor>("expected");
    QTest::newRow("below") << -0.5 << -1e-9 << -100.0 << VelaColor::fromHsvF(0.0, 0.0, 0.0);
    QTest::newRow("above") << 1.5 << 1.0 + 1e-9 << 1e300 << VelaColor::fromHsvF(1.0, 1.0, 1.0);
    QTest::newRow("at the ends") << 0.0 << 1.0 << 1.0 << VelaColor::fromHsvF(0.0, 1.0, 1.0);
    QTest::newRow("infinite") << -qInf() << qInf() << 0.5 << VelaColor::fromHsvF(0.0, 1.0, 0.5);
    QTest::newRow("not a number") << qQNaN() << qQNaN() << qQNaN()
                                  << VelaColor::fromHsvF(0.0, 0.0, 0.0);
}

void HsbSpectrumWidgetTest::limitsAtBothEnds()
{
    QFETCH(const double, hue);
    QFETCH(const double, saturation);
    QFETCH(const double, brightness);
    QFETCH(const VelaColor, expected);
    HsbSpectrumWidget widget;
    QSignalSpy colors(&widget, &HsbSpectrumWidget::colorChanged);
    widget.select(hue, saturation, brightness);
    QCOMPARE(colors.count(), 1);
    QCOMPARE(lastColor(colors), expected);
    QCOMPARE(widget.color(), expected);
}

void HsbSpectrumWidgetTest::keepsBrightnessAndAlpha()
{
    HsbSpectrumWidget widget;
    widget.resize(361, 256);
    widget.show();
    VelaColor color = VelaColor::fromHsvF(0.2, 0.3, 0.6, 0.25);
    color.setAlpha32(0x12345678U);
    widget.setColor(color);
    QSignalSpy colors(&widget, &HsbSpectrumWidget::colorChanged);
    QTest::mouseClick(&widget, Qt::LeftButton, {}, QPoint(36, 255));
    QCOMPARE(lastColor(colors).alpha32(), 0x12345678U);
    QVERIFY(std::abs(lastColor(colors).valueF() - 0.6) < 1e-9);
    QVERIFY(std::abs(lastColor(colors).hueF() - 0.1) < 1e-9);
}

void HsbSpectrumWidgetTest::keysMoveTheMarker_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<int>("degrees");
    QTest::addColumn<int>("saturation");
    const int none = Qt::NoModifier;
    const int shift = Qt::ShiftModifier;
    const int control = Qt::ControlModifier;
    QTest::newRow("left") << int(Qt::Key_Left) << none << 179 << 100;
    QTest::newRow("right") << int(Qt::Key_Right) << none << 181 << 100;
    QTest::newRow("up") << int(Qt::Key_Up) << none << 180 << 99;
    QTest::newRow("down") << int(Qt::Key_Down) << none << 180 << 101;
    QTest::newRow("coarse left") << int(Qt::Key_Left) << shift << 170 << 100;
    QTest::newRow("coarse down") << int(Qt::Key_Down) << shift << 180 << 110;
    QTest::newRow("page up") << int(Qt::Key_PageUp) << none << 180 << 90;
    QTest::newRow("page down") << int(Qt::Key_PageDown) << none << 180 << 110;
    QTest::newRow("home") << int(Qt::Key_Home) << none << 0 << 100;
    QTest::newRow("end") << int(Qt::Key_End) << none << 360 << 100;
    QTest::newRow("to the top") << int(Qt::Key_Home) << control << 180 << 0;
    QTest::newRow("to the bottom") << int(Qt::Key_End) << control << 180 << 255;
}

void HsbSpectrumWidgetTest::keysMoveTheMarker()
{
    QFETCH(const int, key);
    QFETCH(const int, modifiers);
    QFETCH(const int, degrees);
    QFETCH(const int, saturation);
    HsbSpectrumWidget widget;
    widget.show();
    widget.setColor(VelaColor::fromHsv(180, 100, 200));
    QSignalSpy colors(&widget, &HsbSpectrumWidget::colorChanged);
    QTest::keyClick(&widget, static_cast<Qt::Key>(key), Qt::KeyboardModifiers(modifiers));
    QCOMPARE(colors.count(), 1);
    QVERIFY(std::abs(widget.hue() - degrees / 360.0) < 1e-9);
    QVERIFY(std::abs(widget.saturation() - saturation / 255.0) < 1e-9);
    QCOMPARE(lastColor(colors).value8(), 200);
}

/// By clicks on the outermost pixels, at any size.
void HsbSpectrumWidgetTest::theEndsAreReached()
{
    for (const QSize& size : {QSize(800, 600), QSize(333, 77), QSize(50, 49)}) {
        HsbSpectrumWidget widget;
        widget.resize(size);
        widget.show();
        QSignalSpy colors(&widget, &HsbSpectrumWidget::colorChanged);
        QTest::mouseClick(&widget, Qt::LeftButton, {}, QPoint(0, size.height() - 1));
        QCOMPARE(lastColor(colors), VelaColor::fromHsvF(0.0, 1.0, 1.0));
        QCOMPARE(lastColor(colors).toQColor(false), QColor(255, 0, 0));
        QTest::mouseClick(&widget, Qt::LeftButton, {}, QPoint(size.width() - 1, 0));
        QCOMPARE(lastColor(colors), VelaColor::fromHsvF(1.0, 0.0, 1.0));
    }
}

void HsbSpectrumWidgetTest::wheelAsksForZoomLevels()
{
    HsbSpectrumWidget widget;
    widget.show();
    QSignalSpy zooms(&widget, &ColorSelectorWidget::zoomStepped);
    QSignalSpy colors(&widget, &HsbSpectrumWidget::colorChanged);
    turnWheel(&widget, 1);
    turnWheel(&widget, -2);
    QCOMPARE(zooms.count(), 2);
    QCOMPARE(zooms[0].first().toInt(), 1);
    QCOMPARE(zooms[1].first().toInt(), -2);
    QCOMPARE(colors.count(), 0);
}

void HsbSpectrumWidgetTest::otherButtonsChooseNothing()
{
    HsbSpectrumWidget widget;
    widget.resize(200, 200);
    widget.show();
    QSignalSpy colors(&widget, &HsbSpectrumWidget::colorChanged);
    QTest::mouseClick(&widget, Qt::RightButton, {}, QPoint(100, 100));
    QTest::mouseMove(&widget, QPoint(50, 50));
    QTest::keyClick(&widget, Qt::Key_A);
    QCOMPARE(colors.count(), 0);
}

void HsbSpectrumWidgetTest::settingEmitsNothing()
{
    HsbSpectrumWidget widget;
    QSignalSpy colors(&widget, &HsbSpectrumWidget::colorChanged);
    widget.setColor(VelaColor(QColor(10, 200, 30)));
    widget.setZoomArea({0.1, 0.1, 0.2, 0.2});
    const double hue = widget.hue();
    widget.setColor(VelaColor());
    QCOMPARE(widget.hue(), hue);
    QCOMPARE(colors.count(), 0);
    QCOMPARE(widget.color().toQColor(false), QColor(10, 200, 30));
}

void HsbSpectrumWidgetTest::aGreyKeepsItsHue()
{
    HsbSpectrumWidget widget;
    widget.setColor(VelaColor::fromHsv(200, 150, 255));
    widget.setColor(VelaColor(QColor(90, 90, 90)));
    QVERIFY(std::abs(widget.hue() - 200.0 / 360.0) < 1e-9);
    QCOMPARE(widget.saturation(), 0.0);
    widget.setColor(VelaColor::fromHsv(200, 150, 255));
    widget.setColor(VelaColor(QColor(0, 0, 0)));
    QVERIFY(std::abs(widget.saturation() - 150.0 / 255.0) < 1e-9);
    QCOMPARE(widget.brightness(), 0.0);
}

void HsbSpectrumWidgetTest::markerIsHit()
{
    HsbSpectrumWidget widget;
    widget.resize(361, 256);
    widget.show();
    widget.setColor(VelaColor::fromHsv(180, 100, 255));
    QCOMPARE(widget.markerPixel(), QPoint(180, 100));
    const int radius = widget.fontMetrics().height() / 2;
    QVERIFY(widget.isOnMarker({180, 100}));
    QVERIFY(widget.isOnMarker({180 + radius, 100}));
    QVERIFY(!widget.isOnMarker({180 + radius + 1, 100}));
    QVERIFY(!widget.isOnMarker({180 + radius, 100 + radius}));
    QTest::mouseMove(&widget, QPoint(180, 101));
    QCOMPARE(widget.cursor().shape(), Qt::SizeAllCursor);
    QTest::mouseMove(&widget, QPoint(30, 30));
    QCOMPARE(widget.cursor().shape(), Qt::CrossCursor);
    QCOMPARE(widget.pointAt({360, 255}), QPointF(1.0, 1.0));
    QCOMPARE(widget.pixelOf({0.5, 0.0}), QPoint(180, 0));
}

/// What is seen under the pointer is what a click gives.
void HsbSpectrumWidgetTest::paintsWhatTheMouseChooses()
{
    HsbSpectrumWidget widget;
    widget.resize(800, 600);
    widget.setColor(VelaColor::fromHsv(0, 0, 180));
    const QImage shown = widget.grab().toImage();
    QCOMPARE(shown.size(), QSize(800, 600));
    QSignalSpy colors(&widget, &HsbSpectrumWidget::colorChanged);
    for (int y = 60; y < 600; y += 77) {
        for (int x = 60; x < 800; x += 53) {
            QTest::mouseClick(&widget, Qt::LeftButton, {}, QPoint(x, y));
            QCOMPARE(shown.pixelColor(x, y), lastColor(colors).toQColor(false));
        }
    }
    QCOMPARE(shown.pixelColor(799, 599), QColor(180, 0, 0));
}

void HsbSpectrumWidgetTest::paintsTheZoomArea()
{
    HsbSpectrumWidget widget;
    widget.resize(401, 301);
    widget.setColor(VelaColor::fromHsv(0, 255, 255));
    const QImage without = widget.grab().toImage();
    widget.setZoomArea({0.25, 0.5, 0.5, 0.25});
    const QImage with = widget.grab().toImage();
    for (const QPoint& place :
         {QPoint(200, 150), QPoint(200, 225), QPoint(100, 190), QPoint(300, 190)}) {
        bool isWhite = false;
        bool isBlack = false;
        for (int d = -2; d <= 2; ++d) {
            const bool isUpright = place.x() != 200;
            const QColor pixel = with.pixelColor(place + (isUpright ? QPoint(d, 0) : QPoint(0, d)));
            isWhite = isWhite || pixel == QColor(Qt::white);
            isBlack = isBlack || pixel == QColor(Qt::black);
        }
        QVERIFY2(isWhite && isBlack, qPrintable(QString::number(place.x())));
    }
    QCOMPARE(with.pixelColor(200, 190), without.pixelColor(200, 190));
    widget.setZoomArea(QRectF());
    QCOMPARE(widget.grab().toImage(), without);
}

void HsbSpectrumWidgetTest::paintsMarkerAndFocus()
{
    HsbSpectrumWidget widget;
    widget.resize(400, 300);
    widget.setColor(VelaColor::fromHsv(180, 128, 255));
    widget.show();
    widget.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&widget));
    widget.clearFocus();
    const QImage without = widget.grab().toImage();
    const QPoint marker = widget.markerPixel();
    int white = -1;
    int black = -1;
    for (int dx = 3; dx < 25; ++dx) {
        const int grey = qGray(without.pixel(marker + QPoint(dx, 0)));
        if (black < 0 && grey < 90) {
            black = dx;
        }
        if (black < 0 && grey > 245) {
            white = dx;
        }
    }
    QVERIFY(white > 0 && black > white);

    widget.setFocus();
    const QImage with = widget.grab().toImage();
    const QColor highlight = widget.palette().color(QPalette::Highlight);
    for (const QPoint& place :
         {QPoint(0, 150), QPoint(399, 150), QPoint(200, 0), QPoint(200, 299)}) {
        QCOMPARE(with.pixelColor(place), highlight);
        QVERIFY(without.pixelColor(place) != highlight);
    }
}

void HsbSpectrumWidgetTest::aDragRepaintsOnlyWhatChanged()
{
    HsbSpectrumWidget widget;
    widget.resize(800, 600);
    widget.setColor(VelaColor::fromHsv(0, 0, 255));
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    QTest::mousePress(&widget, Qt::LeftButton, {}, QPoint(200, 200));
    QCoreApplication::processEvents();
    PaintWatch watch;
    widget.installEventFilter(&watch);
    dragTo(&widget, QPoint(500, 400));
    QTRY_VERIFY(watch.events > 0);
    QVERIFY(watch.pixels() < 800 * 600 / 50);
    for (const QPoint& place : {QPoint(200, 200), QPoint(500, 400)}) { // old and new
        QVERIFY(watch.region.contains(place));
    }
}

void HsbSpectrumWidgetTest::anotherZoomAreaRepaintsOnlyItsFrame()
{
    HsbSpectrumWidget widget;
    widget.resize(800, 600);
    widget.setZoomArea({0.2, 0.2, 0.3, 0.3});
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    QCoreApplication::processEvents();
    PaintWatch watch;
    widget.installEventFilter(&watch);
    widget.setZoomArea({0.4, 0.4, 0.3, 0.3});
    QTRY_VERIFY(watch.events > 0);
    QVERIFY(watch.pixels() < 800 * 600 / 20);
    QVERIFY(watch.region.contains(QPoint(160, 200))); // the old left line
    QVERIFY(watch.region.contains(QPoint(559, 400))); // the new right one
}

void HsbSpectrumWidgetTest::anotherBrightnessRepaintsAll()
{
    HsbSpectrumWidget widget;
    widget.resize(300, 200);
    widget.setColor(VelaColor::fromHsv(120, 255, 255));
    const QImage bright = widget.grab().toImage();
    widget.setColor(VelaColor::fromHsv(120, 255, 100));
    const QImage dim = widget.grab().toImage();
    QCOMPARE(bright.pixelColor(299, 199), QColor(255, 0, 0));
    QCOMPARE(dim.pixelColor(299, 199), QColor(100, 0, 0));
}

void HsbSpectrumWidgetTest::staysUpAtNoSize()
{
    for (const QSize& size : {QSize(0, 0), QSize(1, 1), QSize(1, 300), QSize(300, 1)}) {
        HsbSpectrumWidget widget;
        widget.resize(size);
        widget.setZoomArea({0.2, 0.2, 0.3, 0.3});
        widget.setColor(VelaColor(QColor(10, 20, 30)));
        dragTo(&widget, QPoint(-100000, 100000));
        widget.grab();
        QCOMPARE(widget.saturation(), 1.0);
    }
}

QTEST_MAIN(HsbSpectrumWidgetTest)
#include "HsbSpectrumWidgetTest.moc"
