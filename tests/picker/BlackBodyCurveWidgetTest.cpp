#include "picker/BlackBodyCurveWidget.h"

#include "PickerInput.h"
#include "color/WhiteChart.h"
#include "resources/Resources.h"

#include <QImage>
#include <QPaintEvent>
#include <QPainter>
#include <QSignalSpy>
#include <QtTest>

#include <algorithm>
#include <cmath>
#include <cstdlib>

using VelaColorPickerLib::BlackBodyCurveWidget;

namespace {

WhiteChart& chart()
{
    return WhiteChart::instance();
}

bool isNear(const QPointF& a, const QPointF& b, double tolerance)
{
    return std::abs(a.x() - b.x()) <= tolerance && std::abs(a.y() - b.y()) <= tolerance;
}

QPointF emitted(const QSignalSpy& spy)
{
    const auto color = spy.last().first().value<VelaColor>();
    return {color.smallX(), color.smallY()};
}

/// Adds up what a widget is asked to paint.
class PaintWatch : public QObject
{
public:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            for (const QRect& rect : static_cast<QPaintEvent*>(event)->region()) {
                pixels += rect.width() * rect.height();
            }
            ++events;
        }
        return false;
    }
    int pixels = 0;
    int events = 0;
};

} // namespace

class BlackBodyCurveWidgetTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void showsThePlaneOfTheChart();
    void aClickAndADragMoveTheMarker();
    void staysWithinTheChartsArea();
    void keysMoveTheMarker_data();
    void keysMoveTheMarker();
    void pageKeysGoAlongTheLocusAndHomeOntoIt();
    void wheelGoesAlongAndAcrossTheLocus();
    void wheelWalksTheWholeLocus();
    void settingEmitsNothing();
    void aMarkerBesideTheViewIsShownAtItsEdge();
    void binIsClosedAndRunsToTheTintLimit();
    void currentBinHoldsTheMarker();
    void onCurve_data();
    void onCurve();
    void theCurveEndsAtAThousandth();
    void paintsTheChartsImage();
    void paintsLocusBinAndMarker();
    void aDragRepaintsOnlyWhatChanged();
    void focusIsVisible();
};

void BlackBodyCurveWidgetTest::initTestCase()
{
    initForgeResources();
}

void BlackBodyCurveWidgetTest::showsThePlaneOfTheChart()
{
    const BlackBodyCurveWidget widget;
    QCOMPARE(widget.viewRect().topLeft(), QPointF(0.235, 0.475));
    QCOMPARE(widget.viewRect().bottomRight(), QPointF(0.54, 0.245));
    QVERIFY(isNear(widget.chromaticity(), whiteXy(4000, 0), 0.0));
    QVERIFY(!widget.accessibleName().isEmpty());
    QVERIFY(!widget.toolTip().isEmpty());
    QCOMPARE(widget.focusPolicy(), Qt::StrongFocus);
}

void BlackBodyCurveWidgetTest::aClickAndADragMoveTheMarker()
{
    BlackBodyCurveWidget widget;
    widget.resize(610, 460); // 2000 pixels to 1 in both x and y
    widget.show();
    QSignalSpy colors(&widget, &BlackBodyCurveWidget::colorChanged);
    QTest::mouseClick(&widget, Qt::LeftButton, {}, QPoint(200, 220));
    QCOMPARE(colors.count(), 1);
    QVERIFY(isNear(emitted(colors), {0.235 + 200 / 2000.0, 0.475 - 220 / 2000.0}, 1e-12));
    QVERIFY(isNear(widget.chromaticity(), emitted(colors), 0.0));
    QCOMPARE(widget.markerPixel(), QPoint(200, 220));
    const auto color = colors.last().first().value<VelaColor>();
    QCOMPARE(color.spec(), VelaColor::Yxy);
    QCOMPARE(color.capY(), 1.0);

    QTest::mousePress(&widget, Qt::LeftButton, {}, QPoint(200, 220));
    dragTo(&widget, QPoint(260, 200));
    QVERIFY(isNear(emitted(colors), {0.365, 0.375}, 1e-12));
    QTest::mouseRelease(&widget, Qt::LeftButton, {}, QPoint(260, 200));
    QCOMPARE(colors.count(), 3);
    QTest::mouseMove(&widget, QPoint(100, 100));
    QTest::mouseClick(&widget, Qt::RightButton, {}, QPoint(100, 100));
    QCOMPARE(colors.count(), 3);
}

void BlackBodyCurveWidgetTest::staysWithinTheChartsArea()
{
    BlackBodyCurveWidget widget;
    widget.resize(610, 460);
    widget.show();
    QSignalSpy colors(&widget, &BlackBodyCurveWidget::colorChanged);
    for (const QPoint& place : {QPoint(1, 0), QPoint(609, 459), QPoint(5, 455)}) {
        QTest::mouseClick(&widget, Qt::LeftButton, {}, place);
        const QPointF aim = chart().chromaticityAt(place, widget.rect());
        QVERIFY(isNear(emitted(colors), chart().nearestPoint(aim), 0.0));
        QVERIFY(!isNear(emitted(colors), aim, 0.001));
    }
    QTest::mousePress(&widget, Qt::LeftButton, {}, QPoint(300, 200));
    dragTo(&widget, QPoint(-10000, 20000));
    QVERIFY(std::isfinite(emitted(colors).x()));
}

void BlackBodyCurveWidgetTest::keysMoveTheMarker_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("shift");
    QTest::addColumn<QPointF>("step");
    QTest::newRow("left") << int(Qt::Key_Left) << false << QPointF(-0.002, 0.0);
    QTest::newRow("right") << int(Qt::Key_Right) << false << QPointF(0.002, 0.0);
    QTest::newRow("up") << int(Qt::Key_Up) << false << QPointF(0.0, 0.002);
    QTest::newRow("down") << int(Qt::Key_Down) << false << QPointF(0.0, -0.002);
    QTest::newRow("fine") << int(Qt::Key_Right) << true << QPointF(0.0005, 0.0);
}

void BlackBodyCurveWidgetTest::keysMoveTheMarker()
{
    QFETCH(const int, key);
    QFETCH(const bool, shift);
    QFETCH(const QPointF, step);
    BlackBodyCurveWidget widget;
    widget.show();
    QSignalSpy colors(&widget, &BlackBodyCurveWidget::colorChanged);
    QTest::keyClick(&widget, static_cast<Qt::Key>(key), shift ? Qt::ShiftModifier : Qt::NoModifier);
    QCOMPARE(colors.count(), 1);
    QVERIFY(isNear(emitted(colors), whiteXy(4000, 0) + step, 1e-12));
}

void BlackBodyCurveWidgetTest::pageKeysGoAlongTheLocusAndHomeOntoIt()
{
    BlackBodyCurveWidget widget;
    widget.show();
    QTest::keyClick(&widget, Qt::Key_PageUp);
    QVERIFY(isNear(widget.chromaticity(), whiteXy(4100, 0), 1e-12));
    QTest::keyClick(&widget, Qt::Key_PageDown);
    QTest::keyClick(&widget, Qt::Key_PageDown);
    QVERIFY(isNear(widget.chromaticity(), whiteXy(3900, 0), 1e-12));
    widget.setChromaticity(whiteXy(5000, 15000));
    QTest::keyClick(&widget, Qt::Key_Home);
    QVERIFY(isNear(widget.chromaticity(), whiteXy(5000, 0), 0.002));
    QVERIFY(BlackBodyCurveWidget::isOnBlackBodyCurve(
        VelaColor(widget.chromaticity().x(), widget.chromaticity().y())));
}

void BlackBodyCurveWidgetTest::wheelGoesAlongAndAcrossTheLocus()
{
    BlackBodyCurveWidget widget;
    widget.show();
    QSignalSpy colors(&widget, &BlackBodyCurveWidget::colorChanged);
    turnWheel(&widget, 1);
    QCOMPARE(colors.count(), 1);
    QVERIFY(isNear(emitted(colors), whiteXy(4050, 0), 1e-12));
    turnWheel(&widget, -2);
    QVERIFY(isNear(emitted(colors), whiteXy(3950, 0), 1e-12));

    widget.setChromaticity(whiteXy(4000, 0));
    turnWheel(&widget, 1, Qt::ShiftModifier);
    const QPointF way = emitted(colors) - whiteXy(4000, 0);
    const QPointF green = whiteXy(4000, 32767) - whiteXy(4000, 0);
    QVERIFY(std::abs(std::hypot(way.x(), way.y()) - 0.002) < 1e-9);
    QVERIFY(QPointF::dotProduct(way, green) > 0.999 * 0.002 * std::hypot(green.x(), green.y()));
}

/// Steps do not come back to where they began, as they would over the temperature read back.
void BlackBodyCurveWidgetTest::wheelWalksTheWholeLocus()
{
    BlackBodyCurveWidget widget;
    widget.show();
    widget.setChromaticity(whiteXy(1900, 0));
    double x = widget.chromaticity().x();
    for (int step = 0; step < 180; ++step) {
        turnWheel(&widget, 1);
        QVERIFY2(widget.chromaticity().x() < x, qPrintable(QString::number(step)));
        x = widget.chromaticity().x();
    }
    QVERIFY(isNear(widget.chromaticity(), whiteXy(10900, 0), 1e-3));
}

void BlackBodyCurveWidgetTest::settingEmitsNothing()
{
    BlackBodyCurveWidget widget;
    QSignalSpy colors(&widget, &BlackBodyCurveWidget::colorChanged);
    widget.setChromaticity({0.35, 0.36});
    QVERIFY(isNear(widget.chromaticity(), {0.35, 0.36}, 0.0));
    widget.setChromaticity({qQNaN(), 0.3});
    widget.setChromaticity({0.3, qInf()});
    QVERIFY(isNear(widget.chromaticity(), {0.35, 0.36}, 0.0));
    QCOMPARE(colors.count(), 0);
}

void BlackBodyCurveWidgetTest::aMarkerBesideTheViewIsShownAtItsEdge()
{
    BlackBodyCurveWidget widget;
    widget.resize(610, 460);
    widget.setChromaticity({0.64, 0.33});
    QCOMPARE(widget.markerPixel(), QPoint(609, 290));
    widget.setChromaticity({1e300, -1e300});
    QCOMPARE(widget.markerPixel(), QPoint(609, 459));
    QVERIFY(!widget.grab().isNull());
}

void BlackBodyCurveWidgetTest::binIsClosedAndRunsToTheTintLimit()
{
    const QRect image(0, 0, 800, 600);
    const QPolygon bin = BlackBodyCurveWidget::binOutline(4000, 4500, -32767, image);
    QCOMPARE(bin.size(), 5);
    QCOMPARE(bin[0], chart().pixelOf(4000, 0, image));
    QCOMPARE(bin[1], chart().pixelOf(4000, -32767, image));
    QCOMPARE(bin[2], chart().pixelOf(4500, -32767, image));
    QCOMPARE(bin[3], chart().pixelOf(4500, 0, image));
    QCOMPARE(bin[4], bin[0]);
}

void BlackBodyCurveWidgetTest::currentBinHoldsTheMarker()
{
    BlackBodyCurveWidget widget;
    widget.resize(800, 600);
    widget.setChromaticity(whiteXy(4200, 12000));
    QCOMPARE(widget.currentBin(),
             BlackBodyCurveWidget::binOutline(4000, 4500, 32767, widget.rect()));
    widget.setChromaticity(whiteXy(2900, -12000));
    QCOMPARE(widget.currentBin(),
             BlackBodyCurveWidget::binOutline(2850, 3000, -32767, widget.rect()));
    widget.setChromaticity({0.3, 0.45});
    QVERIFY(widget.currentBin().isEmpty());
}

void BlackBodyCurveWidgetTest::onCurve_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::addColumn<bool>("expected");
    const auto white = [](int cct, int tint) {
        const QPointF xy = whiteXy(cct, tint);
        return VelaColor(xy.x(), xy.y());
    };
    QTest::newRow("on it") << white(5000, 0) << true;
    QTest::newRow("a little off") << white(5000, 1500) << true;
    QTest::newRow("far off") << white(5000, 20000) << false;
    QTest::newRow("far off below") << white(5000, -20000) << false;
    QTest::newRow("red") << VelaColor(0.64, 0.33) << false;
    QTest::newRow("out of the plane") << VelaColor(0.9, 0.05) << false;
    QTest::newRow("not a number") << VelaColor(qQNaN(), 0.3) << false;
}

void BlackBodyCurveWidgetTest::onCurve()
{
    QFETCH(const VelaColor, color);
    QFETCH(const bool, expected);
    QCOMPARE(BlackBodyCurveWidget::isOnBlackBodyCurve(color), expected);
}

void BlackBodyCurveWidgetTest::theCurveEndsAtAThousandth()
{
    // u and v as of CIE 1960
    const auto uv = [](const QPointF& xy) {
        const double d = -2.0 * xy.x() + 12.0 * xy.y() + 3.0;
        return QPointF(4.0 * xy.x() / d, 6.0 * xy.y() / d);
    };
    int within = 0;
    int nearlyWithin = 0;
    for (int cct = 2000; cct <= 10000; cct += 500) {
        for (int tint = -3000; tint <= 3000; tint += 20) {
            const QPointF xy = whiteXy(cct, tint);
            int ownCct = 0;
            int ownTint = 0;
            QVERIFY(ColorUtils::xyToCctTint(xy.x(), xy.y(), &ownCct, &ownTint));
            const QPointF away = uv(xy) - uv(whiteXy(ownCct, 0));
            const double distance = std::hypot(away.x(), away.y());
            const bool isOn = BlackBodyCurveWidget::isOnBlackBodyCurve(VelaColor(xy.x(), xy.y()));
            if (std::abs(distance - 0.001) > 1e-7) {
                QCOMPARE(isOn, distance < 0.001);
            }
            within += distance < 0.001 && distance > 0.00095 ? 1 : 0;
            nearlyWithin += distance > 0.001 && distance < 0.00105 ? 1 : 0;
        }
    }
    QVERIFY(within > 5);
    QVERIFY(nearlyWithin > 5);
}

void BlackBodyCurveWidgetTest::paintsTheChartsImage()
{
    BlackBodyCurveWidget widget;
    widget.resize(800, 600);
    widget.setChromaticity(whiteXy(11000, 0)); // bin and marker away from what is compared
    const QImage shown = widget.grab().toImage();
    QImage plain(800, 600, QImage::Format_RGB32);
    QPainter painter(&plain);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(plain.rect(), chart().mainImage());
    painter.end();

    int compared = 0;
    for (int cct = 2100; cct <= 9000; cct += 100) {
        for (const int tint : {-28000, -20000, -12000, 12000, 20000, 28000}) {
            const QPoint place = chart().pixelOf(cct, tint, plain.rect());
            if (!plain.rect().adjusted(3, 3, -3, -3).contains(place)) {
                continue;
            }
            const QColor a = shown.pixelColor(place);
            const QColor b = plain.pixelColor(place);
            QVERIFY2(std::abs(a.red() - b.red()) <= 6 && std::abs(a.green() - b.green()) <= 6 &&
                         std::abs(a.blue() - b.blue()) <= 6,
                     qPrintable(QStringLiteral("%1 %2").arg(cct).arg(tint)));
            ++compared;
        }
    }
    QVERIFY(compared > 300);
}

void BlackBodyCurveWidgetTest::paintsLocusBinAndMarker()
{
    BlackBodyCurveWidget widget;
    widget.resize(800, 600);
    widget.setChromaticity(whiteXy(3600, 5000));
    const QImage image = widget.grab().toImage();
    const auto darkestNear = [&image](const QPoint& place) {
        int darkest = 255;
        for (int dx = -1; dx <= 1; ++dx) {
            for (int dy = -1; dy <= 1; ++dy) {
                darkest = std::min(darkest, qGray(image.pixel(place + QPoint(dx, dy))));
            }
        }
        return darkest;
    };
    for (const int cct : {2200, 2500, 3250, 4500, 5000, 5700, 6500, 8000}) {
        QVERIFY2(darkestNear(chart().pixelOf(cct, 0, widget.rect())) < 80,
                 qPrintable(QString::number(cct)));
        QVERIFY(darkestNear(chart().pixelOf(cct, -15000, widget.rect())) > 110);
    }
    // A side of the bin, and the same place once the marker is in another bin.
    const QPoint side = chart().pixelOf(3750, 20000, widget.rect());
    const int withLine = darkestNear(side);
    widget.setChromaticity(whiteXy(6200, 5000));
    const QImage other = widget.grab().toImage();
    QVERIFY(qGray(other.pixel(side)) - withLine > 30);
    // The marker's rings, outward from its middle: white, then black.
    const QPoint marker = widget.markerPixel();
    int white = -1;
    int black = -1;
    for (int dx = 3; dx < 25; ++dx) {
        const int grey = qGray(other.pixel(marker + QPoint(dx, 0)));
        if (black < 0 && grey < 90) {
            black = dx;
        }
        if (black < 0 && grey > 245) {
            white = dx;
        }
    }
    QVERIFY(white > 0 && black > white);
}

void BlackBodyCurveWidgetTest::aDragRepaintsOnlyWhatChanged()
{
    BlackBodyCurveWidget widget;
    widget.resize(800, 600);
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    const QPoint from = chart().pixelOf(4100, 8000, widget.rect());
    QTest::mousePress(&widget, Qt::LeftButton, {}, from);
    QCoreApplication::processEvents();
    PaintWatch watch;
    widget.installEventFilter(&watch);
    dragTo(&widget, from + QPoint(3, 2));
    QTRY_VERIFY(watch.events > 0);
    QVERIFY(watch.pixels < 800 * 600 / 50);
}

void BlackBodyCurveWidgetTest::focusIsVisible()
{
    BlackBodyCurveWidget widget;
    widget.resize(400, 300);
    widget.show();
    widget.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&widget));
    widget.clearFocus();
    const QImage without = widget.grab().toImage();
    widget.setFocus();
    QVERIFY(widget.hasFocus());
    const QImage with = widget.grab().toImage();
    QVERIFY(without.pixelColor(1, 150) != with.pixelColor(1, 150));
    QCOMPARE(with.pixelColor(1, 150), widget.palette().color(QPalette::Highlight));
}

QTEST_MAIN(BlackBodyCurveWidgetTest)
#include "BlackBodyCurveWidgetTest.moc"
