#include "picker/HsbSpectrumZoomWidget.h"

#include "ColorSignals.h"
#include "PickerInput.h"
#include "PickerPaint.h"

#include <QSignalSpy>
#include <QtTest>

using namespace VelaColorPickerLib;

namespace {

QPoint middleOf(const HsbSpectrumZoomWidget& widget, const QPoint& cell)
{
    return widget.cellRect(cell).center();
}

} // namespace

class HsbSpectrumZoomWidgetTest : public QObject
{
    Q_OBJECT

private slots:
    void isDescribed();
    void stepsOfTheLevels_data();
    void stepsOfTheLevels();
    void cellsGoByTheStepsWithinTheGamut_data();
    void cellsGoByTheStepsWithinTheGamut();
    void cellsTakeValueAndAlphaOfTheColor();
    void levelAndCenterTellTheArea();
    void theCenterIsToldWithItsBrightnessAndAlpha();
    void areaIsWhatTheCellsCover();
    void cellsFillTheWidget();
    void gridSizeIsOdd();
    void aClickChoosesACellAndLeavesTheGrid();
    void aDoubleClickPutsTheCellIntoTheCenter();
    void keysGoFromCellToCell_data();
    void keysGoFromCellToCell();
    void keysTakeTheGridAlong();
    void wheelAsksForZoomLevels();
    void settingEmitsNoColor();
    void theChosenCellStaysWhenOnlyTheValueChanges();
    void aGreyKeepsTheHue();
    void paintsCellsAndMarker();
    void aDragRepaintsOnlyTwoCells();
    void focusIsVisible();
    void staysUpAtNoSize();
};

void HsbSpectrumZoomWidgetTest::isDescribed()
{
    HsbSpectrumZoomWidget widget;
    QVERIFY(!widget.accessibleName().isEmpty());
    QVERIFY(!widget.toolTip().isEmpty());
    QCOMPARE(widget.focusPolicy(), Qt::StrongFocus);
    QVERIFY(qobject_cast<ColorZoomWidget*>(&widget) != nullptr);
    QVERIFY(qobject_cast<ColorSelectorWidget*>(&widget) != nullptr);
    const QMetaObject* const meta = widget.metaObject();
    QVERIFY(meta->indexOfSignal("colorChanged(VelaColor)") >= 0);
    QVERIFY(meta->indexOfSignal("centerColorChanged(double,double,double,double)") >= 0);
    QVERIFY(meta->indexOfSignal("zoomAreaChanged(QRectF)") >= 0);
}

void HsbSpectrumZoomWidgetTest::stepsOfTheLevels_data()
{
    QTest::addColumn<int>("level");
    QTest::addColumn<int>("taken");
    QTest::addColumn<int>("hue");
    QTest::addColumn<int>("saturation");
    QTest::newRow("1") << 1 << 1 << 13 << 9;
    QTest::newRow("2") << 2 << 2 << 11 << 8;
    QTest::newRow("3") << 3 << 3 << 9 << 7;
    QTest::newRow("4") << 4 << 4 << 8 << 6;
    QTest::newRow("5") << 5 << 5 << 7 << 5;
    QTest::newRow("6") << 6 << 6 << 6 << 4;
    QTest::newRow("7") << 7 << 7 << 5 << 3;
    QTest::newRow("8") << 8 << 8 << 3 << 2;
    QTest::newRow("9") << 9 << 9 << 2 << 1;
    QTest::newRow("too low") << 0 << 1 << 13 << 9;
    QTest::newRow("far too low") << std::numeric_limits<int>::min() << 1 << 13 << 9;
    QTest::newRow("too high") << 10 << 9 << 2 << 1;
    QTest::newRow("far too high") << std::numeric_limits<int>::max() << 9 << 2 << 1;
}

void HsbSpectrumZoomWidgetTest::stepsOfTheLevels()
{
    QFETCH(const int, level);
    QFETCH(const int, taken);
    QFETCH(const int, hue);
    QFETCH(const int, saturation);
    HsbSpectrumZoomWidget widget;
    widget.setColor(VelaColor::fromHsv(180, 128, 200));
    widget.setLevel(level);
    QCOMPARE(widget.level(), taken);
    QCOMPARE(ColorZoomWidget::stepsOfLevel(level).hue, hue);
    QCOMPARE(ColorZoomWidget::stepsOfLevel(level).saturation, saturation);
    QCOMPARE(widget.cellColor({1, 0}), VelaColor::fromHsv(180 + hue, 128, 200));
    QCOMPARE(widget.cellColor({0, -1}), VelaColor::fromHsv(180, 128 - saturation, 200));
    QCOMPARE(widget.cellColor({-3, 2}),
             VelaColor::fromHsv(180 - 3 * hue, 128 + 2 * saturation, 200));
}

void HsbSpectrumZoomWidgetTest::cellsGoByTheStepsWithinTheGamut_data()
{
    QTest::addColumn<int>("hue");
    QTest::addColumn<int>("saturation");
    QTest::addColumn<QPoint>("cell");
    QTest::addColumn<int>("expectedHue");
    QTest::addColumn<int>("expectedSaturation");
    QTest::newRow("left end") << 12 << 100 << QPoint(-1, 0) << 0 << 100;
    QTest::newRow("not around the circle") << 5 << 100 << QPoint(-5, 0) << 0 << 100;
    QTest::newRow("right end") << 350 << 100 << QPoint(1, 0) << 359 << 100;
    QTest::newRow("just within") << 346 << 100 << QPoint(1, 0) << 359 << 100;
    QTest::newRow("top") << 180 << 8 << QPoint(0, -1) << 180 << 0;
    QTest::newRow("bottom") << 180 << 250 << QPoint(0, 1) << 180 << 255;
    QTest::newRow("corner") << 1 << 254 << QPoint(-5, 5) << 0 << 255;
}

void HsbSpectrumZoomWidgetTest::cellsGoByTheStepsWithinTheGamut()
{
    QFETCH(const int, hue);
    QFETCH(const int, saturation);
    QFETCH(const QPoint, cell);
    QFETCH(const int, expectedHue);
    QFETCH(const int, expectedSaturation);
    HsbSpectrumZoomWidget widget;
    widget.setColor(VelaColor::fromHsv(hue, saturation, 77));
    QCOMPARE(widget.cellColor(cell), VelaColor::fromHsv(expectedHue, expectedSaturation, 77));
}

void HsbSpectrumZoomWidgetTest::cellsTakeValueAndAlphaOfTheColor()
{
    HsbSpectrumZoomWidget widget;
    VelaColor color = VelaColor::fromHsv(40, 80, 120);
    color.setAlpha32(0x11223344U);
    widget.setColor(color);
    QCOMPARE(widget.color(), color);
    QCOMPARE(widget.cellColor({0, 0}), color);
    QCOMPARE(widget.cellColor({2, 3}).value8(), 120);
    QCOMPARE(widget.cellColor({2, 3}).alpha32(), 0x11223344U);
}

void HsbSpectrumZoomWidgetTest::levelAndCenterTellTheArea()
{
    HsbSpectrumZoomWidget widget;
    QSignalSpy areas(&widget, &ColorZoomWidget::zoomAreaChanged);
    QSignalSpy centers(&widget, &HsbSpectrumZoomWidget::centerColorChanged);
    VelaColor color = VelaColor::fromHsv(180, 51, 102);
    color.setAlphaF(0.5);
    widget.setColor(color);
    QCOMPARE(areas.count(), 1);
    QCOMPARE(areas.last().first().toRectF(), widget.zoomArea());
    QCOMPARE(centers.count(), 1);
    QCOMPARE(centers.last()[0].toDouble(), 0.5);
    QCOMPARE(centers.last()[1].toDouble(), 0.2);
    QCOMPARE(centers.last()[2].toDouble(), 0.4);
    QVERIFY(std::abs(centers.last()[3].toDouble() - 0.5) < 1e-9);

    widget.setLevel(4);
    QCOMPARE(areas.count(), 2);
    QCOMPARE(areas.last().first().toRectF(), widget.zoomArea());
    widget.setLevel(4);
    widget.setColor(color);
    QCOMPARE(areas.count(), 2);
    QCOMPARE(centers.count(), 1);
}

void HsbSpectrumZoomWidgetTest::theCenterIsToldWithItsBrightnessAndAlpha()
{
    HsbSpectrumZoomWidget widget;
    VelaColor color = VelaColor::fromHsv(180, 51, 102);
    widget.setColor(color);
    QSignalSpy areas(&widget, &ColorZoomWidget::zoomAreaChanged);
    QSignalSpy centers(&widget, &HsbSpectrumZoomWidget::centerColorChanged);
    widget.setColor(VelaColor::fromHsv(180, 51, 204));
    QCOMPARE(centers.count(), 1);
    QCOMPARE(centers.last()[0].toDouble(), 0.5);
    QCOMPARE(centers.last()[2].toDouble(), 0.8);
    color = VelaColor::fromHsv(180, 51, 204);
    color.setAlphaF(0.0);
    widget.setColor(color);
    QCOMPARE(centers.count(), 2);
    QCOMPARE(centers.last()[3].toDouble(), 0.0);
    color = VelaColor::fromHsv(90, 51, 51); // all at once
    widget.setColor(color);
    QCOMPARE(centers.count(), 3);
    QCOMPARE(centers.last()[0].toDouble(), 0.25);
    QCOMPARE(centers.last()[2].toDouble(), 0.2);
    QCOMPARE(centers.last()[3].toDouble(), 1.0);
    QCOMPARE(areas.count(), 1); // the grid moved once
}

void HsbSpectrumZoomWidgetTest::areaIsWhatTheCellsCover()
{
    HsbSpectrumZoomWidget widget;
    widget.setGridSize({11, 11});
    widget.setLevel(9); // 2 degrees, 1/255
    widget.setColor(VelaColor::fromHsv(180, 100, 255));
    QRectF area = widget.zoomArea();
    QVERIFY(std::abs(area.left() - (180.0 - 11.0) / 360.0) < 1e-12);
    QVERIFY(std::abs(area.right() - (180.0 + 11.0) / 360.0) < 1e-12);
    QVERIFY(std::abs(area.top() - (100.0 - 5.5) / 255.0) < 1e-12);
    QVERIFY(std::abs(area.bottom() - (100.0 + 5.5) / 255.0) < 1e-12);
    widget.setLevel(1);
    widget.setColor(VelaColor::fromHsv(2, 254, 255)); // cut off at the spectrum's edges
    area = widget.zoomArea();
    QCOMPARE(area.left(), 0.0);
    QVERIFY(std::abs(area.right() - (2.0 + 71.5) / 360.0) < 1e-12);
    QVERIFY(std::abs(area.bottom() - 1.0) < 1e-12);
}

void HsbSpectrumZoomWidgetTest::cellsFillTheWidget()
{
    HsbSpectrumZoomWidget widget;
    for (const QSize& size : {QSize(110, 110), QSize(317, 203), QSize(5, 7)}) {
        widget.resize(size);
        for (int y = 0; y < size.height(); ++y) {
            for (int x = 0; x < size.width(); ++x) {
                QVERIFY(widget.cellRect(widget.cellAt({x, y})).contains(x, y));
            }
        }
        QCOMPARE(widget.cellAt({-50, -50}), QPoint(-5, -5));
        QCOMPARE(widget.cellAt({5000, 5000}), QPoint(5, 5));
    }
}

void HsbSpectrumZoomWidgetTest::gridSizeIsOdd()
{
    HsbSpectrumZoomWidget widget;
    QSignalSpy areas(&widget, &ColorZoomWidget::zoomAreaChanged);
    widget.setGridSize({8, 5});
    QCOMPARE(widget.gridSize(), QSize(9, 5));
    QCOMPARE(areas.count(), 1);
    widget.setGridSize({-4, 1000000});
    QCOMPARE(widget.gridSize(), QSize(1, 63));
    widget.resize(100, 100);
    QVERIFY(!widget.grab().isNull());
}

void HsbSpectrumZoomWidgetTest::aClickChoosesACellAndLeavesTheGrid()
{
    HsbSpectrumZoomWidget widget;
    widget.resize(330, 330);
    widget.setColor(VelaColor::fromHsv(180, 128, 200));
    widget.setLevel(5); // 7 degrees, 5/255
    widget.show();
    QSignalSpy colors(&widget, &HsbSpectrumZoomWidget::colorChanged);
    QSignalSpy areas(&widget, &ColorZoomWidget::zoomAreaChanged);
    QTest::mousePress(&widget, Qt::LeftButton, {}, middleOf(widget, {2, -3}));
    QCOMPARE(colors.count(), 1);
    QCOMPARE(lastColor(colors), VelaColor::fromHsv(194, 113, 200));
    QCOMPARE(widget.color(), lastColor(colors));
    QCOMPARE(widget.selectedCell(), QPoint(2, -3));
    dragTo(&widget, middleOf(widget, {-1, 1}));
    QCOMPARE(lastColor(colors), VelaColor::fromHsv(173, 133, 200));
    dragTo(&widget, QPoint(-500, 10000));
    QCOMPARE(lastColor(colors), VelaColor::fromHsv(145, 153, 200));
    QCOMPARE(areas.count(), 0);
    QTest::mouseRelease(&widget, Qt::LeftButton);
    QTest::mouseClick(&widget, Qt::RightButton, {}, QPoint(3, 3));
    QCOMPARE(colors.count(), 3);
}

void HsbSpectrumZoomWidgetTest::aDoubleClickPutsTheCellIntoTheCenter()
{
    HsbSpectrumZoomWidget widget;
    widget.resize(330, 330);
    widget.setColor(VelaColor::fromHsv(180, 128, 200));
    widget.show();
    QSignalSpy colors(&widget, &HsbSpectrumZoomWidget::colorChanged);
    QSignalSpy centers(&widget, &HsbSpectrumZoomWidget::centerColorChanged);
    QTest::mouseDClick(&widget, Qt::LeftButton, {}, middleOf(widget, {1, 1}));
    QCOMPARE(lastColor(colors), VelaColor::fromHsv(193, 137, 200));
    QCOMPARE(widget.selectedCell(), QPoint(0, 0));
    QCOMPARE(widget.cellColor({0, 0}), VelaColor::fromHsv(193, 137, 200));
    QCOMPARE(centers.count(), 1);
    QTest::keyClick(&widget, Qt::Key_Left);
    QTest::keyClick(&widget, Qt::Key_Space);
    QCOMPARE(widget.cellColor({0, 0}), VelaColor::fromHsv(180, 137, 200));
    QCOMPARE(widget.color(), VelaColor::fromHsv(180, 137, 200));
    QCOMPARE(centers.count(), 2);
}

void HsbSpectrumZoomWidgetTest::keysGoFromCellToCell_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<QPoint>("cell");
    const int none = Qt::NoModifier;
    QTest::newRow("left") << int(Qt::Key_Left) << none << QPoint(-1, 0);
    QTest::newRow("right") << int(Qt::Key_Right) << none << QPoint(1, 0);
    QTest::newRow("up") << int(Qt::Key_Up) << none << QPoint(0, -1);
    QTest::newRow("down") << int(Qt::Key_Down) << none << QPoint(0, 1);
    QTest::newRow("by three") << int(Qt::Key_Right) << int(Qt::ShiftModifier) << QPoint(3, 0);
    QTest::newRow("page up") << int(Qt::Key_PageUp) << none << QPoint(0, -3);
    QTest::newRow("page down") << int(Qt::Key_PageDown) << none << QPoint(0, 3);
    QTest::newRow("home") << int(Qt::Key_Home) << none << QPoint(-5, 0);
    QTest::newRow("end") << int(Qt::Key_End) << none << QPoint(5, 0);
    QTest::newRow("bottom") << int(Qt::Key_End) << int(Qt::ControlModifier) << QPoint(0, 5);
}

void HsbSpectrumZoomWidgetTest::keysGoFromCellToCell()
{
    QFETCH(const int, key);
    QFETCH(const int, modifiers);
    QFETCH(const QPoint, cell);
    HsbSpectrumZoomWidget widget;
    widget.show();
    widget.setColor(VelaColor::fromHsv(180, 128, 200));
    QSignalSpy colors(&widget, &HsbSpectrumZoomWidget::colorChanged);
    QTest::keyClick(&widget, static_cast<Qt::Key>(key), Qt::KeyboardModifiers(modifiers));
    QCOMPARE(colors.count(), 1);
    QCOMPARE(widget.selectedCell(), cell);
    QCOMPARE(lastColor(colors), VelaColor::fromHsv(180 + 13 * cell.x(), 128 + 9 * cell.y(), 200));
}

void HsbSpectrumZoomWidgetTest::keysTakeTheGridAlong()
{
    HsbSpectrumZoomWidget widget;
    widget.show();
    widget.setColor(VelaColor::fromHsv(180, 128, 200));
    widget.setLevel(9);
    QSignalSpy centers(&widget, &HsbSpectrumZoomWidget::centerColorChanged);
    for (int i = 0; i < 5; ++i) {
        QTest::keyClick(&widget, Qt::Key_Right);
    }
    QCOMPARE(centers.count(), 0);
    QTest::keyClick(&widget, Qt::Key_Right);
    QCOMPARE(centers.count(), 1);
    QCOMPARE(widget.selectedCell(), QPoint(5, 0));
    QCOMPARE(widget.color(), VelaColor::fromHsv(192, 128, 200));
    for (int i = 0; i < 200; ++i) {
        QTest::keyClick(&widget, Qt::Key_Right);
    }
    QCOMPARE(widget.color(), VelaColor::fromHsv(359, 128, 200));
}

void HsbSpectrumZoomWidgetTest::wheelAsksForZoomLevels()
{
    HsbSpectrumZoomWidget widget;
    widget.show();
    QSignalSpy zooms(&widget, &ColorSelectorWidget::zoomStepped);
    turnWheel(&widget, 2);
    QCOMPARE(zooms.count(), 1);
    QCOMPARE(zooms[0].first().toInt(), 2);
}

void HsbSpectrumZoomWidgetTest::settingEmitsNoColor()
{
    HsbSpectrumZoomWidget widget;
    QSignalSpy colors(&widget, &HsbSpectrumZoomWidget::colorChanged);
    const VelaColor color(QColor(12, 34, 56));
    widget.setColor(color);
    widget.setLevel(7);
    widget.setColor(VelaColor());
    QCOMPARE(widget.color(), color);
    QCOMPARE(colors.count(), 0);
}

void HsbSpectrumZoomWidgetTest::theChosenCellStaysWhenOnlyTheValueChanges()
{
    HsbSpectrumZoomWidget widget;
    widget.show();
    widget.setColor(VelaColor::fromHsv(180, 128, 200));
    QTest::keyClick(&widget, Qt::Key_Right);
    widget.setColor(VelaColor::fromHsv(193, 128, 90));
    QCOMPARE(widget.selectedCell(), QPoint(1, 0));
    QCOMPARE(widget.cellColor({0, 0}), VelaColor::fromHsv(180, 128, 90));
    widget.setColor(VelaColor::fromHsv(194, 128, 90));
    QCOMPARE(widget.selectedCell(), QPoint(0, 0));
}

void HsbSpectrumZoomWidgetTest::aGreyKeepsTheHue()
{
    HsbSpectrumZoomWidget widget;
    widget.setColor(VelaColor::fromHsv(180, 128, 200));
    widget.setColor(VelaColor(QColor(60, 60, 60)));
    QCOMPARE(widget.cellColor({0, 1}), VelaColor::fromHsv(180, 9, 60));
}

void HsbSpectrumZoomWidgetTest::paintsCellsAndMarker()
{
    HsbSpectrumZoomWidget widget;
    widget.resize(330, 330);
    VelaColor color = VelaColor::fromHsv(100, 200, 230);
    color.setAlphaF(0.1); // not what is let through: the colour itself
    widget.setColor(color);
    QImage shown = widget.grab().toImage();
    for (int row = -5; row <= 5; ++row) {
        for (int column = -5; column <= 5; ++column) {
            const int hue = std::clamp(100 + 13 * column, 0, 359);
            const int saturation = std::clamp(200 + 9 * row, 0, 255);
            QVERIFY(isNearColor(shown.pixelColor(middleOf(widget, {column, row})),
                                hsvColor(hue, saturation / 255.0, 230 / 255.0), 1));
        }
    }
    const QRect cell = widget.cellRect({0, 0});
    QCOMPARE(shown.pixelColor(cell.left(), cell.center().y()), QColor(Qt::white));
    QCOMPARE(shown.pixelColor(cell.left() - 1, cell.center().y()), QColor(Qt::black));
    QCOMPARE(shown.pixelColor(cell.right(), cell.center().y()), QColor(Qt::white));
    QCOMPARE(shown.pixelColor(cell.right() + 1, cell.center().y()), QColor(Qt::black));
}

void HsbSpectrumZoomWidgetTest::aDragRepaintsOnlyTwoCells()
{
    HsbSpectrumZoomWidget widget;
    widget.resize(550, 550);
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    QCoreApplication::processEvents();
    PaintWatch watch;
    widget.installEventFilter(&watch);
    QTest::mousePress(&widget, Qt::LeftButton, {}, middleOf(widget, {4, 4}));
    QTRY_VERIFY(watch.events > 0);
    QVERIFY(watch.pixels() < 3 * 54 * 54);
    QVERIFY(watch.region.contains(widget.cellRect({0, 0}).topLeft()));
    QVERIFY(watch.region.contains(widget.cellRect({4, 4}).bottomRight()));
}

void HsbSpectrumZoomWidgetTest::focusIsVisible()
{
    HsbSpectrumZoomWidget widget;
    widget.resize(330, 330);
    widget.show();
    widget.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&widget));
    widget.clearFocus();
    const QColor highlight = widget.palette().color(QPalette::Highlight);
    QVERIFY(widget.grab().toImage().pixelColor(0, 100) != highlight);
    widget.setFocus();
    QCOMPARE(widget.grab().toImage().pixelColor(0, 100), highlight);
}

void HsbSpectrumZoomWidgetTest::staysUpAtNoSize()
{
    for (const QSize& size : {QSize(0, 0), QSize(1, 1), QSize(1, 300), QSize(3, 3)}) {
        HsbSpectrumZoomWidget widget;
        widget.resize(size);
        dragTo(&widget, QPoint(-100000, 100000));
        widget.grab();
        QVERIFY(widget.color().isValid());
    }
}

QTEST_MAIN(HsbSpectrumZoomWidgetTest)
#include "HsbSpectrumZoomWidgetTest.moc"
