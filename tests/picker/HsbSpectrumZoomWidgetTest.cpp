#include "picker/HsbSpectrumZoomWidget.h"

#include "PickerInput.h"
#include "picker/ZoomControlWidget.h"

#include <QImage>
#include <QLabel>
#include <QToolButton>
#include <QtTest>

#include <cmath>

using namespace VelaColorPickerLib;

namespace {

/// Eleven cells of twenty pixels along each side.
struct Bench
{
    HsbSpectrumZoomWidget widget;
    QSignalSpy changed{&widget, &HsbSpectrumZoomWidget::colorChanged};
    QSignalSpy centered{&widget, &HsbSpectrumZoomWidget::centerColorChanged};
    QSignalSpy area{&widget, &HsbSpectrumZoomWidget::zoomAreaChanged};
    QSignalSpy level{&widget, &HsbSpectrumZoomWidget::levelChanged};

    Bench()
    {
        widget.resize(220, 220);
        widget.setHsb(180, 128, 200, 1.0);
        widget.show();
        changed.clear();
        centered.clear();
        area.clear();
    }
    static QPoint cell(int column, int row) { return {110 + 20 * column, 110 + 20 * row}; }
    void click(int column, int row)
    {
        QTest::mouseClick(&widget, Qt::LeftButton, {}, cell(column, row));
    }
    QString color() const { return changed.last().at(0).value<VelaColor>().toString(); }
    QRectF lastArea() const { return area.last().at(0).toRectF(); }
};

bool isNear(const QRectF& a, const QRectF& b)
{
    return std::abs(a.left() - b.left()) < 1e-9 && std::abs(a.right() - b.right()) < 1e-9 &&
           std::abs(a.top() - b.top()) < 1e-9 && std::abs(a.bottom() - b.bottom()) < 1e-9;
}

} // namespace

class HsbSpectrumZoomWidgetTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void aLevelHasItsSteps_data();
    void aLevelHasItsSteps();
    void levelsAreLimited();
    void cellsAreLimitedToTheSpectrum();
    void aClickChoosesACellAndTheGridStays();
    void aDoubleClickPutsTheCellInTheMiddle();
    void keysGoFromCellToCell();
    void beyondTheEdgeTheGridFollows();
    void levelsByWheelAndKeys();
    void settingReportsTheCenterAlone();
    void paintsItsCells();
    void opacityIsKept();
    void theZoomButtonsFollowTheLevel();
};

void HsbSpectrumZoomWidgetTest::initTestCase()
{
    qRegisterMetaType<VelaColor>();
}

void HsbSpectrumZoomWidgetTest::aLevelHasItsSteps_data()
{
    QTest::addColumn<int>("level");
    QTest::addColumn<int>("hue");
    QTest::addColumn<int>("saturation");
    const int steps[9][2] = {{13, 9}, {11, 8}, {9, 7}, {8, 6}, {7, 5},
                             {6, 4},  {5, 3},  {3, 2}, {2, 1}};
    for (int i = 0; i < 9; ++i) {
        QTest::addRow("level %d", i + 1) << i + 1 << steps[i][0] << steps[i][1];
    }
}

void HsbSpectrumZoomWidgetTest::aLevelHasItsSteps()
{
    QFETCH(int, level);
    QFETCH(int, hue);
    QFETCH(int, saturation);
    Bench bench;
    bench.widget.setLevel(level);
    QCOMPARE(bench.widget.level(), level);
    QCOMPARE(bench.level.count(), level == 1 ? 0 : 1);
    for (const QPoint& cell :
         {QPoint(0, 0), QPoint(1, 0), QPoint(0, 1), QPoint(-5, 5), QPoint(4, -3)}) {
        const VelaColor wanted =
            VelaColor::fromHsv(180 + cell.x() * hue, 128 + cell.y() * saturation, 200);
        QCOMPARE(bench.widget.colorOfCell(cell.x(), cell.y()).toString(), wanted.toString());
    }
    const QRectF wanted(180.0 / 360.0 - 5.5 * hue / 360.0, 128.0 / 255.0 - 5.5 * saturation / 255.0,
                        11.0 * hue / 360.0, 11.0 * saturation / 255.0);
    QVERIFY(isNear(bench.widget.zoomArea(), wanted));
    if (level != 1) {
        QVERIFY(isNear(bench.lastArea(), wanted));
    }
}

void HsbSpectrumZoomWidgetTest::levelsAreLimited()
{
    Bench bench;
    bench.widget.setLevel(99);
    QCOMPARE(bench.widget.level(), 9);
    bench.widget.setLevel(-4);
    QCOMPARE(bench.widget.level(), 1);
    QCOMPARE(bench.level.count(), 2);
    bench.widget.setLevel(0);
    QCOMPARE(bench.level.count(), 2); // no change
}

void HsbSpectrumZoomWidgetTest::cellsAreLimitedToTheSpectrum()
{
    Bench bench;
    bench.widget.setHsb(10, 250, 200, 1.0);
    QCOMPARE(bench.widget.colorOfCell(-1, 0).toString(),
             VelaColor::fromHsv(0, 250, 200).toString());
    QCOMPARE(bench.widget.colorOfCell(0, 1).toString(),
             VelaColor::fromHsv(10, 255, 200).toString());
    bench.widget.setHsb(355, 3, 200, 1.0);
    QCOMPARE(bench.widget.colorOfCell(5, 0).toString(), VelaColor::fromHsv(359, 3, 200).toString());
    QCOMPARE(bench.widget.colorOfCell(0, -5).toString(),
             VelaColor::fromHsv(355, 0, 200).toString());
    const QRectF area = bench.widget.zoomArea();
    QCOMPARE(area.right(), 1.0);
    QCOMPARE(area.top(), 0.0);
}

void HsbSpectrumZoomWidgetTest::aClickChoosesACellAndTheGridStays()
{
    Bench bench;
    bench.click(2, -1);
    QCOMPARE(bench.changed.count(), 1);
    QCOMPARE(bench.color(), VelaColor::fromHsv(180 + 26, 128 - 9, 200).toString());
    QCOMPARE(bench.centered.count(), 0);
    QCOMPARE(bench.widget.hue(), 180);
    QCOMPARE(bench.widget.markerPixel(), Bench::cell(2, -1));
    QTest::mousePress(&bench.widget, Qt::LeftButton, {}, Bench::cell(0, 0));
    dragTo(&bench.widget, QPoint(9000, -50)); // beyond the grid: its corner
    QCOMPARE(bench.color(), VelaColor::fromHsv(180 + 65, 128 - 45, 200).toString());
}

void HsbSpectrumZoomWidgetTest::aDoubleClickPutsTheCellInTheMiddle()
{
    Bench bench;
    QTest::mouseDClick(&bench.widget, Qt::LeftButton, {}, Bench::cell(2, -1));
    QCOMPARE(bench.widget.hue(), 206);
    QCOMPARE(bench.widget.saturation(), 119);
    QCOMPARE(bench.centered.count(), 1);
    QCOMPARE(bench.area.count(), 1);
    QCOMPARE(bench.color(), VelaColor::fromHsv(206, 119, 200).toString());
    QCOMPARE(bench.widget.markerPixel(), Bench::cell(0, 0));
}

void HsbSpectrumZoomWidgetTest::keysGoFromCellToCell()
{
    Bench bench;
    QTest::keyClick(&bench.widget, Qt::Key_Right);
    QCOMPARE(bench.color(), VelaColor::fromHsv(193, 128, 200).toString());
    QTest::keyClick(&bench.widget, Qt::Key_Down);
    QCOMPARE(bench.color(), VelaColor::fromHsv(193, 137, 200).toString());
    QTest::keyClick(&bench.widget, Qt::Key_Left);
    QTest::keyClick(&bench.widget, Qt::Key_Up);
    QCOMPARE(bench.color(), VelaColor::fromHsv(180, 128, 200).toString());
    QTest::keyClick(&bench.widget, Qt::Key_Left, Qt::ShiftModifier);
    QCOMPARE(bench.color(), VelaColor::fromHsv(115, 128, 200).toString());
    QTest::keyClick(&bench.widget, Qt::Key_Return);
    QCOMPARE(bench.widget.hue(), 115);
}

void HsbSpectrumZoomWidgetTest::beyondTheEdgeTheGridFollows()
{
    Bench bench;
    bench.click(5, 0);
    QTest::keyClick(&bench.widget, Qt::Key_Right);
    QCOMPARE(bench.widget.hue(), 180 + 6 * 13);
    QCOMPARE(bench.color(), VelaColor::fromHsv(258, 128, 200).toString());
    QCOMPARE(bench.centered.count(), 1);
}

void HsbSpectrumZoomWidgetTest::levelsByWheelAndKeys()
{
    Bench bench;
    turnWheel(&bench.widget, 2);
    QCOMPARE(bench.widget.level(), 3);
    turnWheel(&bench.widget, -1);
    QCOMPARE(bench.widget.level(), 2);
    QTest::keyClick(&bench.widget, Qt::Key_PageUp);
    QCOMPARE(bench.widget.level(), 3);
    QTest::keyClick(&bench.widget, Qt::Key_PageDown);
    QCOMPARE(bench.widget.level(), 2);
    QCOMPARE(bench.changed.count(), 0);
}

void HsbSpectrumZoomWidgetTest::settingReportsTheCenterAlone()
{
    Bench bench;
    bench.widget.setHsb(90, 51, 102, 0.25);
    QCOMPARE(bench.changed.count(), 0);
    QCOMPARE(bench.centered.count(), 1);
    const QList<QVariant> told = bench.centered.at(0);
    QCOMPARE(told.at(0).toDouble(), 0.25);
    QCOMPARE(told.at(1).toDouble(), 0.2);
    QCOMPARE(told.at(2).toDouble(), 0.4);
    QCOMPARE(told.at(3).toDouble(), 0.75);
    QCOMPARE(bench.area.count(), 1);
    bench.widget.setHsb(90, 51, 20, 0.25); // the same centre
    QCOMPARE(bench.area.count(), 1);
    bench.widget.setHsb(-7, 999, 999, 1.0);
    QCOMPARE(bench.widget.hue(), 0);
    QCOMPARE(bench.widget.saturation(), 255);
}

void HsbSpectrumZoomWidgetTest::paintsItsCells()
{
    Bench bench;
    const QImage image = bench.widget.grab().toImage();
    for (const QPoint& cell : {QPoint(-5, -5), QPoint(5, 5), QPoint(3, -2), QPoint(-4, 1)}) {
        const QColor wanted =
            VelaColor::fromHsv(180 + 13 * cell.x(), 128 + 9 * cell.y(), 200).toQColor(true);
        QCOMPARE(image.pixelColor(Bench::cell(cell.x(), cell.y())), wanted);
        QCOMPARE(image.pixelColor(Bench::cell(cell.x(), cell.y()) + QPoint(8, -8)), wanted);
    }
}

void HsbSpectrumZoomWidgetTest::opacityIsKept()
{
    Bench bench;
    bench.widget.setHsb(180, 128, 200, 0.5);
    bench.click(1, 1);
    QVERIFY(std::abs(bench.changed.last().at(0).value<VelaColor>().alphaF() - 0.5) < 1e-9);
}

void HsbSpectrumZoomWidgetTest::theZoomButtonsFollowTheLevel()
{
    ZoomControlWidget control;
    control.show();
    QSignalSpy in(&control, &ZoomControlWidget::zoomIn);
    QSignalSpy out(&control, &ZoomControlWidget::zoomOut);
    const QList<QToolButton*> buttons = control.findChildren<QToolButton*>();
    QCOMPARE(buttons.size(), 2);
    control.setLevel(5, 9);
    QCOMPARE(control.findChild<QLabel*>()->text(), QStringLiteral("Zoom 5"));
    QTest::mouseClick(buttons.at(0), Qt::LeftButton);
    QCOMPARE(out.count(), 1);
    QTest::keyClick(buttons.at(1), Qt::Key_Space);
    QCOMPARE(in.count(), 1);
    control.setLevel(1, 9);
    QVERIFY(!buttons.at(0)->isEnabled());
    QVERIFY(buttons.at(1)->isEnabled());
    control.setLevel(9, 9);
    QVERIFY(buttons.at(0)->isEnabled());
    QVERIFY(!buttons.at(1)->isEnabled());
    for (const QToolButton* const button : buttons) {
        QVERIFY(!button->toolTip().isEmpty());
        QVERIFY(!button->accessibleName().isEmpty());
    }
}

QTEST_MAIN(HsbSpectrumZoomWidgetTest)
#include "HsbSpectrumZoomWidgetTest.moc"
