#include "picker/HsbTintsAndShadesWidget.h"

#include "ColorSignals.h"
#include "PickerInput.h"
#include "PickerPaint.h"

#include <QSignalSpy>
#include <QtTest>

using namespace VelaColorPickerLib;

class HsbTintsAndShadesWidgetTest : public QObject
{
    Q_OBJECT

private slots:
    void isDescribed();
    void aClickAndADragChoose();
    void theHueStaysDownToBlack();
    void keysAndWheelMoveTheMarker_data();
    void keysAndWheelMoveTheMarker();
    void paintsWhatTheMouseChooses();
    void aDragRepaintsOnlyWhatChanged();
    void anotherHueRepaintsAll();
    void focusIsVisible();
};

void HsbTintsAndShadesWidgetTest::isDescribed()
{
    const HsbTintsAndShadesWidget widget;
    QVERIFY(!widget.accessibleName().isEmpty());
    QVERIFY(!widget.toolTip().isEmpty());
    QCOMPARE(widget.focusPolicy(), Qt::StrongFocus);
}

void HsbTintsAndShadesWidgetTest::aClickAndADragChoose()
{
    HsbTintsAndShadesWidget widget;
    widget.resize(256, 256);
    widget.show();
    VelaColor color = VelaColor::fromHsv(90, 10, 10);
    color.setAlpha32(0x40000000U);
    widget.setColor(color);
    QSignalSpy colors(&widget, &HsbTintsAndShadesWidget::colorChanged);
    QTest::mousePress(&widget, Qt::LeftButton, {}, QPoint(51, 0));
    QCOMPARE(colors.count(), 1);
    QCOMPARE(lastColor(colors).hue8(), 90);
    QCOMPARE(lastColor(colors).saturation8(), 51);
    QCOMPARE(lastColor(colors).value8(), 255);
    QCOMPARE(lastColor(colors).alpha32(), 0x40000000U);
    dragTo(&widget, QPoint(255, 155));
    QCOMPARE(lastColor(colors).saturation8(), 255);
    QCOMPARE(lastColor(colors).value8(), 100);
    dragTo(&widget, QPoint(900, -3));
    QVERIFY(widget.saturation() == 1.0 && widget.brightness() == 1.0);
    QCOMPARE(widget.markerPixel(), QPoint(255, 0));
}

void HsbTintsAndShadesWidgetTest::theHueStaysDownToBlack()
{
    HsbTintsAndShadesWidget widget;
    widget.resize(256, 256);
    widget.show();
    widget.setColor(VelaColor::fromHsv(217, 200, 200));
    QTest::mousePress(&widget, Qt::LeftButton, {}, QPoint(200, 100));
    dragTo(&widget, QPoint(0, 400));
    QCOMPARE(widget.color().toQColor(false), QColor(0, 0, 0));
    dragTo(&widget, QPoint(200, 55));
    QCOMPARE(widget.color().hue8(), 217);
    QCOMPARE(widget.color().saturation8(), 200);
    QCOMPARE(widget.color().value8(), 200);
}

void HsbTintsAndShadesWidgetTest::keysAndWheelMoveTheMarker_data()
{
    QTest::addColumn<int>("key"); // 0: the wheel, a notch away from the user
    QTest::addColumn<bool>("shift");
    QTest::addColumn<int>("saturation");
    QTest::addColumn<int>("brightness");
    QTest::newRow("right") << int(Qt::Key_Right) << false << 101 << 150;
    QTest::newRow("left") << int(Qt::Key_Left) << false << 99 << 150;
    QTest::newRow("up is brighter") << int(Qt::Key_Up) << false << 100 << 151;
    QTest::newRow("down is darker") << int(Qt::Key_Down) << false << 100 << 149;
    QTest::newRow("coarse up") << int(Qt::Key_Up) << true << 100 << 160;
    QTest::newRow("page down") << int(Qt::Key_PageDown) << false << 100 << 140;
    QTest::newRow("home") << int(Qt::Key_Home) << false << 0 << 150;
    QTest::newRow("end") << int(Qt::Key_End) << false << 255 << 150;
    QTest::newRow("wheel") << 0 << false << 100 << 155;
    QTest::newRow("wheel with Shift") << 0 << true << 105 << 150;
}

void HsbTintsAndShadesWidgetTest::keysAndWheelMoveTheMarker()
{
    QFETCH(const int, key);
    QFETCH(const bool, shift);
    QFETCH(const int, saturation);
    QFETCH(const int, brightness);
    HsbTintsAndShadesWidget widget;
    widget.show();
    widget.setColor(VelaColor::fromHsv(90, 100, 150));
    QSignalSpy colors(&widget, &HsbTintsAndShadesWidget::colorChanged);
    const Qt::KeyboardModifiers modifiers = shift ? Qt::ShiftModifier : Qt::NoModifier;
    if (key == 0) {
        turnWheel(&widget, 1, modifiers);
    } else {
        QTest::keyClick(&widget, static_cast<Qt::Key>(key), modifiers);
    }
    QCOMPARE(colors.count(), 1);
    QVERIFY(std::abs(widget.saturation() - saturation / 255.0) < 1e-9);
    QVERIFY(std::abs(widget.brightness() - brightness / 255.0) < 1e-9);
    QCOMPARE(widget.color().hue8(), 90);
}

void HsbTintsAndShadesWidgetTest::paintsWhatTheMouseChooses()
{
    HsbTintsAndShadesWidget widget;
    widget.resize(400, 300);
    widget.setColor(VelaColor::fromHsv(30, 0, 255)); // the marker in the upper left corner
    const QImage shown = widget.grab().toImage();
    QSignalSpy colors(&widget, &HsbTintsAndShadesWidget::colorChanged);
    for (int y = 40; y < 300; y += 37) {
        for (int x = 40; x < 400; x += 41) {
            QTest::mouseClick(&widget, Qt::LeftButton, {}, QPoint(x, y));
            QCOMPARE(shown.pixelColor(x, y), lastColor(colors).toQColor(false));
            QVERIFY(
                isNearColor(shown.pixelColor(x, y), hsvColor(30.0, x / 399.0, 1.0 - y / 299.0), 1));
        }
    }
}

void HsbTintsAndShadesWidgetTest::aDragRepaintsOnlyWhatChanged()
{
    HsbTintsAndShadesWidget widget;
    widget.resize(800, 600);
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    QTest::mousePress(&widget, Qt::LeftButton, {}, QPoint(200, 200));
    QCoreApplication::processEvents();
    PaintWatch watch;
    widget.installEventFilter(&watch);
    dragTo(&widget, QPoint(205, 203));
    QTRY_VERIFY(watch.events > 0);
    QVERIFY(watch.pixels() < 800 * 600 / 50);
}

void HsbTintsAndShadesWidgetTest::anotherHueRepaintsAll()
{
    HsbTintsAndShadesWidget widget;
    widget.resize(200, 100);
    widget.setColor(VelaColor::fromHsv(0, 0, 0));
    QCOMPARE(widget.grab().toImage().pixelColor(199, 0), QColor(255, 0, 0));
    widget.setColor(VelaColor::fromHsv(240, 0, 0));
    QCOMPARE(widget.grab().toImage().pixelColor(199, 0), QColor(0, 0, 255));
}

void HsbTintsAndShadesWidgetTest::focusIsVisible()
{
    HsbTintsAndShadesWidget widget;
    widget.resize(200, 100);
    widget.show();
    widget.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&widget));
    widget.clearFocus();
    const QColor highlight = widget.palette().color(QPalette::Highlight);
    QVERIFY(widget.grab().toImage().pixelColor(100, 99) != highlight);
    widget.setFocus();
    QCOMPARE(widget.grab().toImage().pixelColor(100, 99), highlight);
}

QTEST_MAIN(HsbTintsAndShadesWidgetTest)
#include "HsbTintsAndShadesWidgetTest.moc"
