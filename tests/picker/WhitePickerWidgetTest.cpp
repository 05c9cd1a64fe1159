#include "picker/WhitePickerWidget.h"

#include "PickerInput.h"
#include "picker/BlackBodyCurveWidget.h"
#include "picker/CCTPickerWidget.h"
#include "picker/ColorTempSliderWidget.h"
#include "picker/ColorTintSliderWidget.h"
#include "picker/TintPickerWidget.h"
#include "resources/Resources.h"

#include <QAbstractSpinBox>
#include <QSignalSpy>
#include <QSpinBox>
#include <QtTest>

#include <algorithm>
#include <cmath>

using namespace VelaColorPickerLib;

namespace {

/// The page with its parts and signals.
struct Page
{
    WhitePickerWidget widget;
    BlackBodyCurveWidget* curve = widget.findChild<BlackBodyCurveWidget*>();
    ColorTempSliderWidget* temp = widget.findChild<ColorTempSliderWidget*>();
    ColorTintSliderWidget* tint = widget.findChild<ColorTintSliderWidget*>();
    QSpinBox* tempBox = widget.findChild<QSpinBox*>(QStringLiteral("colorTempSpinBox"));
    QSpinBox* tintBox = widget.findChild<QSpinBox*>(QStringLiteral("colorTintSpinBox"));
    QSpinBox* intensityBox = widget.findChild<QSpinBox*>(QStringLiteral("intensitySpinBox"));
    ColorTrack* intensityTrack = widget.findChild<ColorTrack*>(QStringLiteral("intensityTrack"));
    QSignalSpy colors{&widget, &WhitePickerWidget::colorChanged};
    QSignalSpy intensities{&widget, &WhitePickerWidget::intensityChanged};

    VelaColor emitted() const { return colors.last().first().value<VelaColor>(); }
    QPointF heldXy() const { return {widget.color().smallX(), widget.color().smallY()}; }
};

bool isNear(const QPointF& a, const QPointF& b, double tolerance)
{
    return std::abs(a.x() - b.x()) <= tolerance && std::abs(a.y() - b.y()) <= tolerance;
}

VelaColor yxy(double capY, double x, double y, double alpha = 1.0)
{
    VelaColor color;
    color.setYxyF(capY, x, y, alpha);
    return color;
}

VelaColor white(int cct, int tint, double capY = 1.0, double alpha = 1.0)
{
    const QPointF xy = whiteXy(cct, tint);
    return yxy(capY, xy.x(), xy.y(), alpha);
}

} // namespace

class WhitePickerWidgetTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void startsAt4000K();
    void temperatureAndTintGiveTheColor_data();
    void temperatureAndTintGiveTheColor();
    void tintIsLimitedAboveOnly();
    void aColorBrighterThanFullComesBackAtFull();
    void aTemperatureOutOfRangeChangesNothing();
    void alphaAndProfileStay();
    void anRgbColorBecomesYxy();
    void intensityGivesTheColor();
    void intensityOfABlackComesBackAsAWhite();
    void theWholeChartComesBackAsTheRulesAllow();
    void failureLeavesSlidersAndMarker_data();
    void failureLeavesSlidersAndMarker();
    void settingEmitsNothing();
    void itsOwnColorComesBackUnchanged();
    void aDragOnTheChartMovesTheSliders();
    void shortcutsMoveTheMarker_data();
    void shortcutsMoveTheMarker();
    void aHiddenPageHasNoShortcuts();
    void controlsAreNamedAndInTabOrder();
};

void WhitePickerWidgetTest::initTestCase()
{
    initForgeResources();
}

void WhitePickerWidgetTest::startsAt4000K()
{
    const Page page;
    QVERIFY(page.widget.color() == VelaColor(whiteXy(4000, 0).x(), whiteXy(4000, 0).y()));
    QCOMPARE(page.widget.color().capY(), 1.0);
    QCOMPARE(page.tempBox->value(), 4000);
    QCOMPARE(page.tintBox->value(), 0);
    QCOMPARE(page.intensityBox->value(), 100);
    QVERIFY(isNear(page.curve->chromaticity(), whiteXy(4000, 0), 0.0));
}

void WhitePickerWidgetTest::temperatureAndTintGiveTheColor_data()
{
    QTest::addColumn<int>("cct");
    QTest::addColumn<int>("tint");
    QTest::newRow("warmest") << 1900 << 0;
    QTest::newRow("coolest") << 11000 << 0;
    QTest::newRow("full green") << 3000 << 32767;
    QTest::newRow("full magenta") << 6500 << -32767;
    QTest::newRow("within a step of 10 K") << 4503 << 1234;
    QTest::newRow("warmest, full magenta") << 1900 << -32767;
    QTest::newRow("coolest, full green") << 11000 << 32767;
}

void WhitePickerWidgetTest::temperatureAndTintGiveTheColor()
{
    QFETCH(const int, cct);
    QFETCH(const int, tint);
    Page page;
    page.tempBox->setValue(cct);
    page.tintBox->setValue(tint);
    QVERIFY(page.colors.count() >= 1);
    QCOMPARE(page.colors.last().at(1).toString(), QString());
    QCOMPARE(page.emitted().spec(), VelaColor::Yxy);
    QCOMPARE(page.emitted().smallX(), whiteXy(cct, tint).x());
    QCOMPARE(page.emitted().smallY(), whiteXy(cct, tint).y());
    QCOMPARE(page.emitted().capY(), 1.0);
    QVERIFY(page.widget.color() == page.emitted());
    QVERIFY(isNear(page.curve->chromaticity(), whiteXy(cct, tint), 0.0));
    QCOMPARE(page.tempBox->value(), cct);
    QCOMPARE(page.tintBox->value(), tint);
    QCOMPARE(page.intensities.count(), 0);
}

void WhitePickerWidgetTest::tintIsLimitedAboveOnly()
{
    Page page;
    page.widget.onColorTintChanged(40000);
    QVERIFY(isNear(page.heldXy(), whiteXy(4000, 32767), 0.0));
    page.widget.onColorTintChanged(-40000);
    QVERIFY(isNear(page.heldXy(), whiteXy(4000, -40000), 0.0));
    QVERIFY(!isNear(page.heldXy(), whiteXy(4000, -32767), 1e-4));
    QCOMPARE(page.tintBox->value(), -32767);
}

void WhitePickerWidgetTest::aColorBrighterThanFullComesBackAtFull()
{
    Page page;
    page.widget.setColor(white(4000, 0, 3.5));
    QCOMPARE(page.intensityBox->value(), 100);
    QCOMPARE(page.widget.color().capY(), 3.5); // as it was set, until it is changed
    page.tempBox->setValue(5000);
    QCOMPARE(page.emitted().capY(), 1.0);
    page.widget.setColor(white(4000, 0, 3.5));
    page.tintBox->setValue(500);
    QCOMPARE(page.emitted().capY(), 1.0);
}

void WhitePickerWidgetTest::aTemperatureOutOfRangeChangesNothing()
{
    Page page;
    for (const int cct : {1899, 11001, 0, -1, std::numeric_limits<int>::max()}) {
        page.widget.onColorTempChanged(cct);
    }
    QCOMPARE(page.colors.count(), 0);
    QCOMPARE(page.tempBox->value(), 4000);
    QVERIFY(isNear(page.heldXy(), whiteXy(4000, 0), 0.0));
}

void WhitePickerWidgetTest::alphaAndProfileStay()
{
    Page page;
    VelaColor color = white(3000, 0, 0.6);
    color.setAlpha32(0x12345678U);
    color.setProfileId(9);
    color.setChannelLayout(3);
    page.widget.setColor(color);
    QVERIFY(page.widget.color() == color);
    page.tempBox->setValue(5000);
    QCOMPARE(page.emitted().alpha32(), 0x12345678U);
    QCOMPARE(page.emitted().profileId(), 9U);
    QCOMPARE(page.emitted().channelLayout(), 3U);
    QCOMPARE(page.emitted().capY(), 0.6);
    QTest::keyClick(page.curve, Qt::Key_Left);
    QCOMPARE(page.emitted().alpha32(), 0x12345678U);
    page.intensityBox->setValue(20);
    QCOMPARE(page.emitted().alpha32(), 0x12345678U);
    QCOMPARE(page.emitted().capY(), 0.2);
}

void WhitePickerWidgetTest::anRgbColorBecomesYxy()
{
    Page page;
    const VelaColor color(QColor(255, 200, 150, 128));
    const VelaColor xyY = color.toYxy(0, -1, -1);
    page.widget.setColor(color);
    int cct = 0;
    int tint = 0;
    QVERIFY(ColorUtils::xyToCctTint(xyY.smallX(), xyY.smallY(), &cct, &tint));
    QCOMPARE(page.tempBox->value(), cct);
    QCOMPARE(page.tintBox->value(), std::clamp(tint, -32767, 32767));
    QVERIFY(isNear(page.curve->chromaticity(), {xyY.smallX(), xyY.smallY()}, 0.0));
    QCOMPARE(page.intensityBox->value(), 100);
    page.tempBox->setValue(3300);
    QCOMPARE(page.emitted().spec(), VelaColor::Yxy);
    QCOMPARE(page.emitted().alpha8(), 128);
}

void WhitePickerWidgetTest::intensityGivesTheColor()
{
    Page page;
    page.widget.resize(500, 400);
    page.widget.show();
    page.intensityBox->setValue(25);
    QCOMPARE(page.colors.count(), 1);
    QCOMPARE(page.emitted().capY(), 0.25);
    QVERIFY(isNear(page.heldXy(), whiteXy(4000, 0), 0.0));
    QCOMPARE(page.colors.last().at(1).toString(), QString());
    QCOMPARE(page.intensities.count(), 1);
    QCOMPARE(page.intensities.last().first().toDouble(), 0.25);
    QCOMPARE(page.intensityTrack->value(), 25);
    QTest::keyClick(page.intensityTrack, Qt::Key_End);
    QCOMPARE(page.intensityBox->value(), 100);
    QCOMPARE(page.emitted().capY(), 1.0);
    QCOMPARE(page.intensities.count(), 2);

    page.widget.onIntensityChanged(0.503); // finer than the slider
    QCOMPARE(page.intensityBox->value(), 50);
    page.tempBox->setValue(5000);
    QCOMPARE(page.emitted().capY(), 0.503);
    page.widget.onIntensityChanged(7.0);
    QCOMPARE(page.emitted().capY(), 1.0);
    QCOMPARE(page.intensities.last().first().toDouble(), 1.0);
    page.widget.onIntensityChanged(-1.0);
    QCOMPARE(page.emitted().capY(), 0.0);
    const int before = page.colors.count();
    page.widget.onIntensityChanged(qQNaN());
    QCOMPARE(page.colors.count(), before);
    QVERIFY(page.widget.color().isValid());
}

void WhitePickerWidgetTest::intensityOfABlackComesBackAsAWhite()
{
    Page page;
    page.widget.setColor(white(3000, 5000));
    const int cct = page.tempBox->value();
    const int tint = page.tintBox->value();
    page.widget.setColor(VelaColor(Qt::black)); // has no chromaticity
    QCOMPARE(page.intensityBox->value(), 0);
    QCOMPARE(page.tempBox->value(), cct);
    QCOMPARE(page.tintBox->value(), tint);
    page.intensityBox->setValue(80);
    QVERIFY(isNear(page.heldXy(), whiteXy(3000, 5000), 1e-12));
    QCOMPARE(page.emitted().capY(), 0.8);
}

void WhitePickerWidgetTest::theWholeChartComesBackAsTheRulesAllow()
{
    Page page;
    int exact = 0;
    for (int cct = 1900; cct <= 11000; cct += 50) {
        for (int tint = -32767; tint <= 32767; tint += 4681) {
            const QPointF xy = whiteXy(cct, tint);
            int ruleCct = 0;
            int ruleTint = 0;
            QVERIFY(ColorUtils::xyToCctTint(xy.x(), xy.y(), &ruleCct, &ruleTint));
            page.widget.setColor(white(cct, tint, 0.7));
            QCOMPARE(page.tempBox->value(), std::clamp(ruleCct, 1900, 11000));
            QCOMPARE(page.tintBox->value(), std::clamp(ruleTint, -32767, 32767));
            QVERIFY(isNear(page.heldXy(), xy, 0.0));
            QVERIFY(isNear(page.curve->chromaticity(), xy, 0.0));
            QCOMPARE(page.intensityBox->value(), 70);
            exact += ruleCct == cct ? 1 : 0;
        }
    }
    QVERIFY(exact > 500); // and the rules do give most of it back
    QCOMPARE(page.colors.count(), 0);
}

void WhitePickerWidgetTest::failureLeavesSlidersAndMarker_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::newRow("x too large") << yxy(1.0, 0.801, 0.1);
    QTest::newRow("y too large") << yxy(1.0, 0.05, 0.901);
    QTest::newRow("x negative") << yxy(1.0, -0.1, 0.3);
    QTest::newRow("u too large") << yxy(1.0, 0.75, 0.1);
    QTest::newRow("not a number") << yxy(1.0, qQNaN(), 0.3);
    QTest::newRow("infinite") << yxy(1.0, 0.3, qInf());
    QTest::newRow("Y not a number") << yxy(qQNaN(), 0.3, 0.3);
    QTest::newRow("invalid") << VelaColor();
}

void WhitePickerWidgetTest::failureLeavesSlidersAndMarker()
{
    QFETCH(const VelaColor, color);
    Page page;
    page.tempBox->setValue(5500);
    page.tintBox->setValue(-700);
    page.widget.setColor(color);
    QCOMPARE(page.tempBox->value(), 5500);
    QCOMPARE(page.tintBox->value(), -700);
    QVERIFY(isNear(page.curve->chromaticity(), whiteXy(5500, -700), 0.0));
    page.tempBox->setValue(5510); // and the page goes on
    QVERIFY(isNear(page.heldXy(), whiteXy(5510, -700), 0.0));
    QVERIFY(page.widget.color().isValid());
}

void WhitePickerWidgetTest::settingEmitsNothing()
{
    Page page;
    QSignalSpy temps(page.temp, &ColorTempSliderWidget::colorTempChanged);
    QSignalSpy tints(page.tint, &ColorTintSliderWidget::colorTintChanged);
    QSignalSpy curves(page.curve, &BlackBodyCurveWidget::colorChanged);
    page.widget.setColor(white(3000, 9000, 0.3));
    QVERIFY(page.tempBox->value() != 4000);
    QCOMPARE(page.colors.count(), 0);
    QCOMPARE(page.intensities.count(), 0);
    QCOMPARE(temps.count() + tints.count() + curves.count(), 0);
}

void WhitePickerWidgetTest::itsOwnColorComesBackUnchanged()
{
    Page page;
    page.tempBox->setValue(2053); // its chromaticity reads back as 1980 K
    const VelaColor own = page.emitted();
    VelaColor clearer = own;
    clearer.setAlpha32(1000);
    page.widget.setColor(clearer);
    QCOMPARE(page.tempBox->value(), 2053);
    QCOMPARE(page.widget.color().alpha32(), 1000U);
    page.widget.setColor(white(6000, 0));
    page.widget.setColor(own); // now it comes from elsewhere
    int cct = 0;
    int tint = 0;
    QVERIFY(ColorUtils::xyToCctTint(own.smallX(), own.smallY(), &cct, &tint));
    QVERIFY(cct != 2053);
    QCOMPARE(page.tempBox->value(), cct);
}

void WhitePickerWidgetTest::aDragOnTheChartMovesTheSliders()
{
    Page page;
    page.widget.resize(800, 600);
    page.widget.show();
    page.widget.onIntensityChanged(0.5);
    QTest::mousePress(page.curve, Qt::LeftButton, {}, page.curve->markerPixel());
    dragTo(page.curve, page.curve->markerPixel() + QPoint(-40, 25));
    const QPointF xy = page.curve->chromaticity();
    QVERIFY(isNear(page.heldXy(), xy, 0.0));
    QCOMPARE(page.emitted().capY(), 0.5);
    int cct = 0;
    int tint = 0;
    QVERIFY(ColorUtils::xyToCctTint(xy.x(), xy.y(), &cct, &tint));
    QCOMPARE(page.tempBox->value(), cct);
    QCOMPARE(page.tintBox->value(), tint);
    QCOMPARE(page.colors.count(), 3); // intensity, press, move
}

void WhitePickerWidgetTest::shortcutsMoveTheMarker_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("shift");
    QTest::addColumn<QPointF>("step");
    const double diagonal = 0.002 / std::sqrt(2.0);
    QTest::newRow("Ctrl+R") << int(Qt::Key_R) << false << QPointF(0.002, 0.0);
    QTest::newRow("Ctrl+Shift+R") << int(Qt::Key_R) << true << QPointF(-0.002, 0.0);
    QTest::newRow("Ctrl+G") << int(Qt::Key_G) << false << QPointF(0.0, 0.002);
    QTest::newRow("Ctrl+Shift+G") << int(Qt::Key_G) << true << QPointF(0.0, -0.002);
    QTest::newRow("Ctrl+B") << int(Qt::Key_B) << false << QPointF(-diagonal, -diagonal);
    QTest::newRow("Ctrl+Shift+B") << int(Qt::Key_B) << true << QPointF(diagonal, diagonal);
}

void WhitePickerWidgetTest::shortcutsMoveTheMarker()
{
    QFETCH(const int, key);
    QFETCH(const bool, shift);
    QFETCH(const QPointF, step);
    Page page;
    page.widget.show();
    page.widget.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&page.widget));
    const Qt::KeyboardModifiers modifiers =
        shift ? Qt::ControlModifier | Qt::ShiftModifier : Qt::ControlModifier;
    QTest::keyClick(&page.widget, static_cast<Qt::Key>(key), modifiers);
    QCOMPARE(page.colors.count(), 1);
    QVERIFY(isNear(page.heldXy(), whiteXy(4000, 0) + step, 1e-12));
    QVERIFY(isNear(page.curve->chromaticity(), page.heldXy(), 0.0));
    QTest::keyClick(&page.widget, static_cast<Qt::Key>(key), modifiers);
    QVERIFY(isNear(page.heldXy(), whiteXy(4000, 0) + 2 * step, 1e-12));
    int cct = 0;
    int tint = 0;
    QVERIFY(ColorUtils::xyToCctTint(page.heldXy().x(), page.heldXy().y(), &cct, &tint));
    QCOMPARE(page.tempBox->value(), cct);
    QCOMPARE(page.tintBox->value(), tint);
}

void WhitePickerWidgetTest::aHiddenPageHasNoShortcuts()
{
    QWidget window;
    WhitePickerWidget page(&window);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    page.hide();
    QSignalSpy colors(&page, &WhitePickerWidget::colorChanged);
    QTest::keyClick(&window, Qt::Key_R, Qt::ControlModifier);
    QCOMPARE(colors.count(), 0);
    page.show();
    QTest::keyClick(&window, Qt::Key_R, Qt::ControlModifier);
    QCOMPARE(colors.count(), 1);
}

void WhitePickerWidgetTest::controlsAreNamedAndInTabOrder()
{
    Page page;
    page.widget.resize(600, 500);
    page.widget.show();
    page.widget.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&page.widget));
    page.curve->setFocus();
    const QList<QWidget*> order = {page.curve,       page.widget.findChild<CCTPickerWidget*>(),
                                   page.tempBox,     page.widget.findChild<TintPickerWidget*>(),
                                   page.tintBox,     page.intensityTrack,
                                   page.intensityBox};
    for (QWidget* const control : order) {
        QCOMPARE(QApplication::focusWidget(), control);
        QVERIFY(!control->accessibleName().isEmpty());
        QVERIFY(!control->toolTip().isEmpty());
        QTest::keyClick(control, Qt::Key_Tab);
    }
    QCOMPARE(QApplication::focusWidget(), page.curve);
}

QTEST_MAIN(WhitePickerWidgetTest)
#include "WhitePickerWidgetTest.moc"
