#include "picker/HsbSlidersWidget.h"

#include "ColorSignals.h"
#include "PickerInput.h"
#include "PickerPaint.h"
#include "SliderRows.h"
#include "picker/ColorTrack.h"
#include "picker/RgbSlidersWidget.h"

#include <QLabel>
#include <QSignalSpy>
#include <QSpinBox>
#include <QtTest>

using namespace VelaColorPickerLib;

namespace {

const char* const kNames[] = {"hue", "saturation", "brightness"};
const int kLast[] = {359, 255, 255};

} // namespace

class HsbSlidersWidgetTest : public QObject
{
    Q_OBJECT

private slots:
    void runsOverItsRanges();
    void trackAndBoxFollowEachOther_data();
    void trackAndBoxFollowEachOther();
    void givesWhatFromHsvMakes();
    void slotsLimitTheirValues();
    void showsTheColorExactly();
    void greysKeepTheHueAndBlackTheSaturation();
    void settingEmitsNothing();
    void tracksShowWhatTheirValuesGive();
    void controlsAreNamed();
    void bothGroupsLineUp();
};

void HsbSlidersWidgetTest::runsOverItsRanges()
{
    const HsbSlidersWidget widget;
    for (int row = 0; row < 3; ++row) {
        QVERIFY(track(widget, kNames[row]) != nullptr);
        QCOMPARE(track(widget, kNames[row])->minimum(), 0);
        QCOMPARE(track(widget, kNames[row])->maximum(), kLast[row]);
        QCOMPARE(box(widget, kNames[row])->minimum(), 0);
        QCOMPARE(box(widget, kNames[row])->maximum(), kLast[row]);
    }
}

void HsbSlidersWidgetTest::trackAndBoxFollowEachOther_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QByteArray>("sliderSlot");
    QTest::addColumn<QByteArray>("boxSlot");
    QTest::newRow("hue") << 0 << QByteArray("onHueSliderChanged")
                         << QByteArray("onHueSpinBoxChanged");
    QTest::newRow("saturation") << 1 << QByteArray("onSaturationSliderChanged")
                                << QByteArray("onSaturationSpinBoxChanged");
    QTest::newRow("brightness") << 2 << QByteArray("onBrightnessSliderChanged")
                                << QByteArray("onBrightnessSpinBoxChanged");
}

void HsbSlidersWidgetTest::trackAndBoxFollowEachOther()
{
    QFETCH(const int, row);
    QFETCH(const QByteArray, sliderSlot);
    QFETCH(const QByteArray, boxSlot);
    HsbSlidersWidget widget;
    widget.resize(500, widget.sizeHint().height());
    widget.show();
    widget.setColor(VelaColor::fromHsv(100, 120, 140));
    QSignalSpy colors(&widget, &ColorSlidersWidget::colorChanged);
    ColorTrack* const slider = track(widget, kNames[row]);
    QSpinBox* const spin = box(widget, kNames[row]);
    const auto expected = [row](int value) {
        int components[] = {100, 120, 140};
        components[row] = value;
        return VelaColor::fromHsv(components[0], components[1], components[2]);
    };
    QTest::mouseClick(slider, Qt::LeftButton, {}, QPoint(slider->xOf(200), slider->height() / 2));
    QCOMPARE(colors.count(), 1);
    QCOMPARE(spin->value(), slider->value());
    QVERIFY(std::abs(slider->value() - 200) <= 1);
    QCOMPARE(lastColor(colors), expected(slider->value()));

    QTest::keyClick(slider, Qt::Key_End);
    QCOMPARE(lastColor(colors), expected(kLast[row]));
    QTest::keyClick(spin, Qt::Key_Down);
    QCOMPARE(slider->value(), kLast[row] - 1);
    QCOMPARE(lastColor(colors), expected(kLast[row] - 1));
    QCOMPARE(colors.count(), 3);

    QVERIFY(QMetaObject::invokeMethod(&widget, sliderSlot.constData(), Q_ARG(int, 77)));
    QCOMPARE(spin->value(), 77);
    QVERIFY(QMetaObject::invokeMethod(&widget, boxSlot.constData(), Q_ARG(int, 78)));
    QCOMPARE(slider->value(), 78);
    QCOMPARE(lastColor(colors), expected(78));
}

void HsbSlidersWidgetTest::givesWhatFromHsvMakes()
{
    HsbSlidersWidget widget;
    VelaColor base(QColor(10, 20, 30));
    base.setAlpha32(0x89ABCDEFU);
    widget.setColor(base);
    QSignalSpy colors(&widget, &ColorSlidersWidget::colorChanged);
    widget.onBrightnessSliderChanged(200); // 10, 20, 30: hue 210, saturation 20/30
    VelaColor expected = VelaColor::fromHsv(210, 170, 200);
    expected.setAlpha32(0x89ABCDEFU);
    QCOMPARE(lastColor(colors), expected);
    QCOMPARE(widget.color(), expected);
}

void HsbSlidersWidgetTest::slotsLimitTheirValues()
{
    HsbSlidersWidget widget;
    widget.setColor(VelaColor::fromHsv(100, 120, 140));
    QSignalSpy colors(&widget, &ColorSlidersWidget::colorChanged);
    widget.onHueSliderChanged(360);
    QCOMPARE(lastColor(colors), VelaColor::fromHsv(359, 120, 140));
    widget.onSaturationSpinBoxChanged(-5);
    QCOMPARE(lastColor(colors), VelaColor::fromHsv(359, 0, 140));
    widget.onBrightnessSpinBoxChanged(999);
    QCOMPARE(lastColor(colors), VelaColor::fromHsv(359, 0, 255));
}

void HsbSlidersWidgetTest::showsTheColorExactly()
{
    HsbSlidersWidget widget;
    for (int i = 0; i < 256; ++i) {
        widget.setColor(VelaColor::fromHsv(359 - i, i, 255 - i));
        QCOMPARE(track(widget, "hue")->value(), 359 - i);
        QCOMPARE(box(widget, "saturation")->value(), i);
        QCOMPARE(track(widget, "brightness")->value(), 255 - i);
    }
    widget.setColor(VelaColor::fromHsvF(1.0, 1.0, 1.0)); // 360 degrees
    QCOMPARE(track(widget, "hue")->value(), 359);
}

void HsbSlidersWidgetTest::greysKeepTheHueAndBlackTheSaturation()
{
    HsbSlidersWidget widget;
    widget.setColor(VelaColor::fromHsv(222, 111, 99));
    widget.setColor(VelaColor(QColor(50, 50, 50)));
    QCOMPARE(box(widget, "hue")->value(), 222);
    QCOMPARE(box(widget, "saturation")->value(), 0);
    QCOMPARE(box(widget, "brightness")->value(), 50);
    widget.setColor(VelaColor::fromHsv(222, 111, 99));
    widget.setColor(VelaColor(QColor(0, 0, 0)));
    QCOMPARE(box(widget, "hue")->value(), 222);
    QCOMPARE(box(widget, "saturation")->value(), 111);

    QSignalSpy colors(&widget, &ColorSlidersWidget::colorChanged);
    QTest::keyClick(track(widget, "brightness"), Qt::Key_End);
    QTest::keyClick(track(widget, "saturation"), Qt::Key_Home);
    QTest::keyClick(track(widget, "brightness"), Qt::Key_Home);
    QTest::keyClick(track(widget, "saturation"), Qt::Key_End);
    QTest::keyClick(track(widget, "brightness"), Qt::Key_End);
    QCOMPARE(lastColor(colors), VelaColor::fromHsv(222, 255, 255));
}

void HsbSlidersWidgetTest::settingEmitsNothing()
{
    HsbSlidersWidget widget;
    QSignalSpy colors(&widget, &ColorSlidersWidget::colorChanged);
    widget.setColor(VelaColor::fromHsv(1, 2, 3));
    widget.setColor(VelaColor());
    QCOMPARE(colors.count(), 0);
    QCOMPARE(box(widget, "brightness")->value(), 3);
}

void HsbSlidersWidgetTest::tracksShowWhatTheirValuesGive()
{
    HsbSlidersWidget widget;
    widget.resize(900, widget.sizeHint().height());
    widget.setColor(VelaColor::fromHsv(40, 180, 230));
    widget.show();
    for (int row = 0; row < 3; ++row) {
        const ColorTrack* const slider = track(widget, kNames[row]);
        const QImage shown = track(widget, kNames[row])->grab().toImage();
        for (int value = 0; value < kLast[row]; value += 7) {
            const int x = slider->xOf(value);
            if (std::abs(x - slider->xOf(slider->value())) < slider->bar().height()) {
                continue; // the marker
            }
            int components[] = {40, 180, 230};
            components[row] = slider->valueAt(x);
            QVERIFY(isNearColor(
                shown.pixelColor(x, slider->bar().center().y()),
                hsvColor(components[0], components[1] / 255.0, components[2] / 255.0), 1));
        }
    }
}

void HsbSlidersWidgetTest::controlsAreNamed()
{
    const HsbSlidersWidget widget;
    for (const char* const name : kNames) {
        for (const QWidget* const control : {static_cast<QWidget*>(track(widget, name)),
                                             static_cast<QWidget*>(box(widget, name))}) {
            QVERIFY(!control->accessibleName().isEmpty());
            QVERIFY(!control->toolTip().isEmpty());
        }
    }
}

void HsbSlidersWidgetTest::bothGroupsLineUp()
{
    RgbSlidersWidget rgb;
    HsbSlidersWidget hsb;
    ColorSlidersWidget::lineUp(&rgb, &hsb);
    for (QWidget* const widget : {static_cast<QWidget*>(&rgb), static_cast<QWidget*>(&hsb)}) {
        widget->resize(500, widget->sizeHint().height());
        widget->show();
    }
    QCOMPARE(track(rgb, "red")->geometry().left(), track(hsb, "hue")->geometry().left());
    QCOMPARE(track(rgb, "red")->width(), track(hsb, "brightness")->width());
    QCOMPARE(box(rgb, "blue")->width(), box(hsb, "saturation")->width());
}

QTEST_MAIN(HsbSlidersWidgetTest)
#include "HsbSlidersWidgetTest.moc"
