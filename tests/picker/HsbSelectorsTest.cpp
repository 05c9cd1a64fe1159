#include "PickerInput.h"
#include "picker/HsbSpectrumWidget.h"
#include "picker/HsbTintsAndShadesWidget.h"

#include <QApplication>
#include <QImage>
#include <QPaintEvent>
#include <QRegion>
#include <QtTest>

#include <cmath>
#include <limits>

using namespace VelaColorPickerLib;

namespace {

/// 361 by 256 pixels: a degree and a level each.
template <class Widget>
struct Bench
{
    Widget widget;
    QSignalSpy changed{&widget, &GradientColorSelectorWidget::colorChanged};

    Bench()
    {
        widget.resize(361, 256);
        widget.show();
    }
    VelaColor color() const { return changed.last().at(0).template value<VelaColor>(); }
};

using Spectrum = Bench<HsbSpectrumWidget>;
using Tints = Bench<HsbTintsAndShadesWidget>;

bool isNear(double a, double b)
{
    return std::abs(a - b) < 1e-9;
}

} // namespace

/// The spectrum and the field of tints and shades.
class HsbSelectorsTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void aClickOnTheSpectrumSetsHueAndSaturation();
    void aClickOnTheTintsSetsSaturationAndBrightness();
    void draggingBeyondTheEdgesIsLimited_data();
    void draggingBeyondTheEdgesIsLimited();
    void otherButtonsAreLeftAlone();
    void settingEmitsNothingAndMovesTheMarker();
    void settingIsLimited();
    void opacityIsKept();
    void keysMoveTheMarker_data();
    void keysMoveTheMarker();
    void theWheelMovesTheMarker_data();
    void theWheelMovesTheMarker();
    void aWheelAtRestTellsNobody();
    void theMarkerShowsOnTheField();
    void onlyWhatChangedIsPaintedAnew();
    void theSpectrumFramesTheZoomArea();
    void theTintsFollowTheHue();
    void theSpectrumFollowsTheBrightness();
    void focusIsVisible();
    void hasNameAndToolTip();
};

void HsbSelectorsTest::initTestCase()
{
    qRegisterMetaType<VelaColor>();
}

void HsbSelectorsTest::aClickOnTheSpectrumSetsHueAndSaturation()
{
    Spectrum bench;
    bench.widget.setHsb(0.0, 0.0, 0.5, 1.0);
    QTest::mouseClick(&bench.widget, Qt::LeftButton, {}, QPoint(90, 51));
    QCOMPARE(bench.changed.count(), 1);
    double h = 0.0;
    double s = 0.0;
    double b = 0.0;
    bench.color().getHsvF(&h, &s, &b);
    QVERIFY(isNear(bench.widget.hue(), 0.25));
    QVERIFY(isNear(bench.widget.saturation(), 0.2));
    QCOMPARE(bench.color().toString(),
             VelaColor::fromHsvF(90.0 / 360.0, 51.0 / 255.0, 0.5, 1.0).toString());
    QCOMPARE(bench.widget.markerPixel(), QPoint(90, 51));
}

void HsbSelectorsTest::aClickOnTheTintsSetsSaturationAndBrightness()
{
    Tints bench;
    bench.widget.setHsb(0.25, 0.0, 0.5, 1.0);
    QTest::mouseClick(&bench.widget, Qt::LeftButton, {}, QPoint(180, 51));
    QCOMPARE(bench.changed.count(), 1);
    QCOMPARE(bench.color().toString(),
             VelaColor::fromHsvF(0.25, 180.0 / 360.0, 1.0 - 51.0 / 255.0, 1.0).toString());
    QCOMPARE(bench.widget.markerPixel(), QPoint(180, 51));
}

void HsbSelectorsTest::draggingBeyondTheEdgesIsLimited_data()
{
    QTest::addColumn<QPoint>("pixel");
    QTest::addColumn<double>("hue");
    QTest::addColumn<double>("saturation");
    QTest::newRow("left and above") << QPoint(-50, -1) << 0.0 << 0.0;
    QTest::newRow("right and below") << QPoint(5000, 9000) << 1.0 << 1.0;
    QTest::newRow("below") << QPoint(180, 300) << 0.5 << 1.0;
}

void HsbSelectorsTest::draggingBeyondTheEdgesIsLimited()
{
    QFETCH(QPoint, pixel);
    QFETCH(double, hue);
    QFETCH(double, saturation);
    Spectrum bench;
    QTest::mousePress(&bench.widget, Qt::LeftButton, {}, QPoint(100, 100));
    dragTo(&bench.widget, pixel);
    QCOMPARE(bench.changed.count(), 2);
    QCOMPARE(bench.widget.hue(), hue);
    QCOMPARE(bench.widget.saturation(), saturation);
    QVERIFY(bench.color().isValid());
    QVERIFY(bench.widget.rect().contains(bench.widget.markerPixel()));
}

void HsbSelectorsTest::otherButtonsAreLeftAlone()
{
    Spectrum bench;
    QTest::mouseClick(&bench.widget, Qt::RightButton, {}, QPoint(100, 100));
    QTest::mouseMove(&bench.widget, QPoint(120, 100));
    QCOMPARE(bench.changed.count(), 0);
}

void HsbSelectorsTest::settingEmitsNothingAndMovesTheMarker()
{
    Spectrum spectrum;
    spectrum.widget.setHsb(0.5, 0.4, 1.0, 1.0);
    QCOMPARE(spectrum.changed.count(), 0);
    QCOMPARE(spectrum.widget.markerPixel(), QPoint(180, 102));
    Tints tints;
    tints.widget.setHsb(0.5, 0.25, 0.8, 1.0);
    QCOMPARE(tints.changed.count(), 0);
    QCOMPARE(tints.widget.markerPixel(), QPoint(90, 51));
}

void HsbSelectorsTest::settingIsLimited()
{
    Spectrum bench;
    bench.widget.setHsb(-0.5, 7.0, std::numeric_limits<double>::quiet_NaN(), 2.0);
    QCOMPARE(bench.widget.hue(), 0.0);
    QCOMPARE(bench.widget.saturation(), 1.0);
    QCOMPARE(bench.widget.brightness(), 0.0);
}

void HsbSelectorsTest::opacityIsKept()
{
    Spectrum bench;
    bench.widget.setHsb(0.5, 0.5, 1.0, 0.4);
    QTest::mouseClick(&bench.widget, Qt::LeftButton, {}, QPoint(10, 10));
    QVERIFY(std::abs(bench.color().alphaF() - 0.4) < 1e-4);
}

void HsbSelectorsTest::keysMoveTheMarker_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("shift");
    QTest::addColumn<double>("hue");
    QTest::addColumn<double>("saturation");
    const double small = 1.0 / 360.0;
    const double large = 10.0 / 360.0;
    QTest::newRow("left") << int(Qt::Key_Left) << false << 0.5 - small << 0.5;
    QTest::newRow("right") << int(Qt::Key_Right) << false << 0.5 + small << 0.5;
    QTest::newRow("up") << int(Qt::Key_Up) << false << 0.5 << 0.5 - small;
    QTest::newRow("down") << int(Qt::Key_Down) << false << 0.5 << 0.5 + small;
    QTest::newRow("shift right") << int(Qt::Key_Right) << true << 0.5 + large << 0.5;
    QTest::newRow("shift down") << int(Qt::Key_Down) << true << 0.5 << 0.5 + large;
    QTest::newRow("home") << int(Qt::Key_Home) << false << 0.0 << 0.5;
    QTest::newRow("end") << int(Qt::Key_End) << false << 1.0 << 0.5;
    QTest::newRow("page up") << int(Qt::Key_PageUp) << false << 0.5 << 0.0;
    QTest::newRow("page down") << int(Qt::Key_PageDown) << false << 0.5 << 1.0;
}

void HsbSelectorsTest::keysMoveTheMarker()
{
    QFETCH(int, key);
    QFETCH(bool, shift);
    QFETCH(double, hue);
    QFETCH(double, saturation);
    Spectrum bench;
    bench.widget.setHsb(0.5, 0.5, 1.0, 1.0);
    QTest::keyClick(&bench.widget, static_cast<Qt::Key>(key),
                    shift ? Qt::ShiftModifier : Qt::NoModifier);
    QCOMPARE(bench.changed.count(), 1);
    QVERIFY(isNear(bench.widget.hue(), hue));
    QVERIFY(isNear(bench.widget.saturation(), saturation));
}

void HsbSelectorsTest::theWheelMovesTheMarker_data()
{
    QTest::addColumn<int>("notches");
    QTest::addColumn<bool>("shift");
    QTest::addColumn<double>("right");
    QTest::addColumn<double>("down");
    const double notch = 3.0 / 360.0;
    QTest::newRow("up") << 1 << false << 0.0 << -notch;
    QTest::newRow("down") << -2 << false << 0.0 << 2.0 * notch;
    QTest::newRow("shift, up") << 2 << true << 2.0 * notch << 0.0;
    QTest::newRow("shift, down") << -1 << true << -notch << 0.0;
}

void HsbSelectorsTest::theWheelMovesTheMarker()
{
    QFETCH(int, notches);
    QFETCH(bool, shift);
    QFETCH(double, right);
    QFETCH(double, down);
    const Qt::KeyboardModifiers modifiers = shift ? Qt::ShiftModifier : Qt::NoModifier;
    Spectrum spectrum;
    spectrum.widget.setHsb(0.5, 0.5, 1.0, 1.0);
    turnWheel(&spectrum.widget, notches, modifiers);
    QCOMPARE(spectrum.changed.count(), 1);
    QVERIFY(isNear(spectrum.widget.hue(), 0.5 + right));
    QVERIFY(isNear(spectrum.widget.saturation(), 0.5 + down));
    Tints tints;
    tints.widget.setHsb(0.3, 0.5, 0.5, 1.0);
    turnWheel(&tints.widget, notches, modifiers);
    QCOMPARE(tints.changed.count(), 1);
    QVERIFY(isNear(tints.widget.saturation(), 0.5 + right));
    QVERIFY(isNear(tints.widget.brightness(), 0.5 - down));
    QVERIFY(isNear(tints.widget.hue(), 0.3));
    turnWheel(&tints.widget, 500 * notches, modifiers); // no further than the edge
    QVERIFY(tints.widget.saturation() >= 0.0 && tints.widget.saturation() <= 1.0);
    QVERIFY(tints.widget.brightness() >= 0.0 && tints.widget.brightness() <= 1.0);
}

void HsbSelectorsTest::aWheelAtRestTellsNobody()
{
    Spectrum bench;
    turnWheel(&bench.widget, 0);
    QCOMPARE(bench.changed.count(), 0);
}

void HsbSelectorsTest::theMarkerShowsOnTheField()
{
    Spectrum bench;
    const QImage before = bench.widget.grab().toImage();
    bench.widget.setHsb(0.5, 0.5, 1.0, 1.0);
    const QImage after = bench.widget.grab().toImage();
    const QPoint at = bench.widget.markerPixel();
    QCOMPARE(after.pixelColor(at), before.pixelColor(at)); // the ring's middle shows the field
    int black = 0;
    int white = 0;
    const int reach = bench.widget.fontMetrics().height();
    for (int x = at.x() - reach; x < at.x(); ++x) {
        black += after.pixelColor(x, at.y()).lightness() < 80 ? 1 : 0;
        white += after.pixelColor(x, at.y()).lightness() > 240 ? 1 : 0;
    }
    QVERIFY(black > 0);
    QVERIFY(white > 0);
}

void HsbSelectorsTest::onlyWhatChangedIsPaintedAnew()
{
    struct Regions : QObject
    {
        QRegion painted;
        bool eventFilter(QObject* /*watched*/, QEvent* event) override
        {
            if (event->type() == QEvent::Paint) {
                painted += static_cast<QPaintEvent*>(event)->region();
            }
            return false;
        }
    };
    Spectrum bench;
    bench.widget.setHsb(0.1, 0.2, 1.0, 1.0);
    QVERIFY(QTest::qWaitForWindowExposed(&bench.widget));
    QCoreApplication::processEvents();
    const QPoint before = bench.widget.markerPixel();
    Regions regions;
    bench.widget.installEventFilter(&regions);
    bench.widget.setHsb(0.8, 0.9, 1.0, 1.0);
    QTRY_VERIFY(regions.painted.contains(before));
    QVERIFY(regions.painted.contains(bench.widget.markerPixel()));
    QVERIFY(!regions.painted.contains(QPoint(180, 128)));
}

void HsbSelectorsTest::theSpectrumFramesTheZoomArea()
{
    Spectrum bench;
    bench.widget.setHsb(0.0, 1.0, 1.0, 1.0);
    const QImage before = bench.widget.grab().toImage();
    const QRectF area(0.25, 0.25, 0.5, 0.5);
    bench.widget.setZoomArea(area);
    QCOMPARE(bench.widget.zoomArea(), area);
    const QImage framed = bench.widget.grab().toImage();
    for (const QPoint& edge :
         {QPoint(90, 128), QPoint(271, 128), QPoint(180, 64), QPoint(180, 192)}) {
        bool isPainted = false;
        for (int d = -1; d <= 1; ++d) {
            const QPoint beside = edge + QPoint(d, d);
            isPainted = isPainted || framed.pixelColor(beside) != before.pixelColor(beside);
        }
        QVERIFY(isPainted);
    }
    QCOMPARE(framed.pixelColor(180, 128), before.pixelColor(180, 128));
    QCOMPARE(framed.pixelColor(20, 128), before.pixelColor(20, 128));
    bench.widget.setZoomArea(QRectF());
    QCOMPARE(bench.widget.grab().toImage().copy(80, 50, 250, 160), before.copy(80, 50, 250, 160));
}

void HsbSelectorsTest::theTintsFollowTheHue()
{
    Tints bench;
    bench.widget.setHsb(0.0, 0.0, 0.0, 1.0);
    QCOMPARE(bench.widget.grab().toImage().pixelColor(360, 0), QColor(Qt::red));
    bench.widget.setHsb(2.0 / 3.0, 0.0, 0.0, 1.0);
    QCOMPARE(bench.widget.grab().toImage().pixelColor(360, 0), QColor(Qt::blue));
}

void HsbSelectorsTest::theSpectrumFollowsTheBrightness()
{
    Spectrum bench;
    bench.widget.setHsb(0.9, 0.1, 0.2, 1.0);
    QCOMPARE(bench.widget.grab().toImage().pixelColor(120, 255), QColor(0, 51, 0));
    bench.widget.setHsb(0.9, 0.1, 1.0, 1.0);
    QCOMPARE(bench.widget.grab().toImage().pixelColor(120, 255), QColor(Qt::green));
}

void HsbSelectorsTest::focusIsVisible()
{
    Tints bench;
    const QImage before = bench.widget.grab().toImage();
    QApplication::setActiveWindow(&bench.widget);
    bench.widget.setFocus();
    QVERIFY(bench.widget.hasFocus());
    QVERIFY(bench.widget.grab().toImage().pixelColor(1, 128) != before.pixelColor(1, 128));
}

void HsbSelectorsTest::hasNameAndToolTip()
{
    const Spectrum spectrum;
    const Tints tints;
    for (const QWidget* const widget : QList<const QWidget*>{&spectrum.widget, &tints.widget}) {
        QVERIFY(!widget->accessibleName().isEmpty());
        QVERIFY(!widget->toolTip().isEmpty());
        QVERIFY((widget->focusPolicy() & Qt::TabFocus) != 0);
    }
}

QTEST_MAIN(HsbSelectorsTest)
#include "HsbSelectorsTest.moc"
