#include "color/VelaColor.h"
#include "picker/ColorTrack.h"
#include "picker/IntensitySliderWidget.h"
#include "picker/OpacitySliderWidget.h"
#include "resources/Resources.h"

#include <QLabel>
#include <QSpinBox>
#include <QWheelEvent>
#include <QtTest>

#include <memory>

using namespace VelaColorPickerLib;

namespace {

ColorTrack* trackOf(const QWidget& slider)
{
    return slider.findChild<ColorTrack*>(QStringLiteral("track"));
}

QSpinBox* boxOf(const QWidget& slider)
{
    return slider.findChild<QSpinBox*>(QStringLiteral("spinBox"));
}

} // namespace

class PercentSliderTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void carryTheirLabels();
    void trackAndNumberFollowEachOther();
    void answerMouseWheelAndKeys();
    void aColorFromOutsideTellsNobody();
    void theIntensityTrackGoesFromDarkToFull();
    void theOpacityTrackGoesFromClearToOpaque();
};

void PercentSliderTest::initTestCase()
{
    initForgeResources();
}

void PercentSliderTest::carryTheirLabels()
{
    const IntensitySliderWidget intensity;
    const OpacitySliderWidget opacity;
    QCOMPARE(intensity.label()->text(), QStringLiteral("Intensity:"));
    QCOMPARE(opacity.label()->text(), QStringLiteral("Opacity:"));
    QVERIFY(intensity.metaObject()->indexOfSignal("intensityChanged(int)") >= 0);
    QVERIFY(opacity.metaObject()->indexOfSignal("opacityChanged(int)") >= 0);
    for (const PercentSlider* const slider : {static_cast<const PercentSlider*>(&intensity),
                                              static_cast<const PercentSlider*>(&opacity)}) {
        QVERIFY(!trackOf(*slider)->accessibleName().isEmpty());
        QVERIFY(!trackOf(*slider)->toolTip().isEmpty());
        QVERIFY(!boxOf(*slider)->accessibleName().isEmpty());
        QVERIFY(!boxOf(*slider)->toolTip().isEmpty());
    }
}

void PercentSliderTest::trackAndNumberFollowEachOther()
{
    OpacitySliderWidget slider;
    QSignalSpy changed(&slider, &OpacitySliderWidget::opacityChanged);
    slider.show();
    trackOf(slider)->setValue(40);
    QCOMPARE(boxOf(slider)->value(), 40);
    boxOf(slider)->setValue(70);
    QCOMPARE(trackOf(slider)->value(), 70);
    QCOMPARE(changed.count(), 2);
    QCOMPARE(changed.at(0).at(0).toInt(), 40);
    QCOMPARE(changed.at(1).at(0).toInt(), 70);
}

void PercentSliderTest::answerMouseWheelAndKeys()
{
    IntensitySliderWidget slider;
    slider.resize(400, 40);
    slider.show();
    QSignalSpy changed(&slider, &IntensitySliderWidget::intensityChanged);
    ColorTrack* const track = trackOf(slider);
    QTest::mouseClick(track, Qt::LeftButton, Qt::NoModifier,
                      QPoint(track->xOf(25), track->height() / 2));
    QCOMPARE(slider.percent(), 25);
    QTest::keyClick(track, Qt::Key_Right);
    QCOMPARE(slider.percent(), 26);
    QTest::keyClick(track, Qt::Key_PageUp);
    QCOMPARE(slider.percent(), 36);
    QTest::keyClick(track, Qt::Key_End);
    QCOMPARE(slider.percent(), 100);
    const QPointF pos = track->rect().center();
    QWheelEvent wheel(pos, track->mapToGlobal(pos.toPoint()), QPoint(), QPoint(0, -120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(track, &wheel);
    QVERIFY(slider.percent() < 100);
    QCOMPARE(changed.count(), 5);
    QCOMPARE(changed.last().at(0).toInt(), slider.percent());
}

void PercentSliderTest::aColorFromOutsideTellsNobody()
{
    IntensitySliderWidget intensity;
    OpacitySliderWidget opacity;
    QSignalSpy intensityChanged(&intensity, &IntensitySliderWidget::intensityChanged);
    QSignalSpy opacityChanged(&opacity, &OpacitySliderWidget::opacityChanged);
    VelaColor color(Qt::red);
    color.setAlphaF(0.25);
    intensity.setColor(color, 0.604);
    opacity.setColor(color);
    QCOMPARE(intensity.percent(), 60);
    QCOMPARE(opacity.percent(), 25);
    QCOMPARE(intensityChanged.count() + opacityChanged.count(), 0);
}

void PercentSliderTest::theIntensityTrackGoesFromDarkToFull()
{
    IntensitySliderWidget slider;
    slider.resize(500, 40);
    slider.setColor(VelaColor(QColor(100, 50, 0)), 0.0); // full: 255, 128, 0
    slider.show();
    ColorTrack* const track = trackOf(slider);
    const QImage image = track->grab().toImage();
    const QColor middle = image.pixelColor(track->xOf(50), track->height() / 2);
    QVERIFY(qAbs(middle.red() - 128) <= 3);
    QVERIFY(qAbs(middle.green() - 64) <= 3);
    QCOMPARE(middle.blue(), 0);
    const QColor end = image.pixelColor(track->bar().right() - 2, track->height() / 2);
    QVERIFY(end.red() >= 252);
}

void PercentSliderTest::theOpacityTrackGoesFromClearToOpaque()
{
    OpacitySliderWidget slider;
    slider.resize(500, 40);
    VelaColor color(Qt::red);
    color.setAlphaF(1.0);
    slider.setColor(color);
    slider.show();
    ColorTrack* const track = trackOf(slider);
    const QImage image = track->grab().toImage();
    const QColor clear = image.pixelColor(track->bar().left() + 3, track->height() / 2);
    QCOMPARE(clear.red(), clear.blue()); // the checkered ground is grey
    const QColor middle = image.pixelColor(track->xOf(50), track->height() / 2);
    QVERIFY(middle.red() > middle.blue() + 90);
    QVERIFY(middle.blue() > 60);
}

QTEST_MAIN(PercentSliderTest)
#include "PercentSliderTest.moc"
