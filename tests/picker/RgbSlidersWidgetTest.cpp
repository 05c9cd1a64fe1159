#include "picker/RgbSlidersWidget.h"

#include "ColorSignals.h"
#include "PickerInput.h"
#include "SliderRows.h"
#include "picker/ColorTrack.h"

#include <QLabel>
#include <QSignalSpy>
#include <QSpinBox>
#include <QtTest>

using namespace VelaColorPickerLib;

namespace {

const char* const kNames[] = {"red", "green", "blue"};

} // namespace

class RgbSlidersWidgetTest : public QObject
{
    Q_OBJECT

private slots:
    void runsFromZeroTo255();
    void trackAndBoxFollowEachOther_data();
    void trackAndBoxFollowEachOther();
    void givesWhatSetRgb8Makes();
    void slotsLimitTheirValues();
    void aTypedNumberCountsWhenDone();
    void showsTheExactBytes();
    void settingEmitsNothing();
    void tracksShowWhatTheirValuesGive();
    void controlsAreNamed();
};

void RgbSlidersWidgetTest::runsFromZeroTo255()
{
    const RgbSlidersWidget widget;
    for (const char* const name : kNames) {
        QVERIFY(track(widget, name) != nullptr);
        QCOMPARE(track(widget, name)->minimum(), 0);
        QCOMPARE(track(widget, name)->maximum(), 255);
        QCOMPARE(box(widget, name)->minimum(), 0);
        QCOMPARE(box(widget, name)->maximum(), 255);
    }
}

void RgbSlidersWidgetTest::trackAndBoxFollowEachOther_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QByteArray>("sliderSlot");
    QTest::addColumn<QByteArray>("boxSlot");
    QTest::newRow("red") << 0 << QByteArray("onRedSliderChanged")
                         << QByteArray("onRedSpinBoxChanged");
    QTest::newRow("green") << 1 << QByteArray("onGreenSliderChanged")
                           << QByteArray("onGreenSpinBoxChanged");
    QTest::newRow("blue") << 2 << QByteArray("onBlueSliderChanged")
                          << QByteArray("onBlueSpinBoxChanged");
}

void RgbSlidersWidgetTest::trackAndBoxFollowEachOther()
{
    QFETCH(const int, row);
    QFETCH(const QByteArray, sliderSlot);
    QFETCH(const QByteArray, boxSlot);
    RgbSlidersWidget widget;
    widget.resize(500, widget.sizeHint().height());
    widget.show();
    widget.setColor(VelaColor(QColor(10, 20, 30)));
    QSignalSpy colors(&widget, &ColorSlidersWidget::colorChanged);
    ColorTrack* const slider = track(widget, kNames[row]);
    QSpinBox* const spin = box(widget, kNames[row]);
    const auto expected = [row](int value) {
        int bytes[] = {10, 20, 30};
        bytes[row] = value;
        return QColor(bytes[0], bytes[1], bytes[2]);
    };
    QTest::mouseClick(slider, Qt::LeftButton, {}, QPoint(slider->xOf(200), slider->height() / 2));
    QCOMPARE(colors.count(), 1);
    QCOMPARE(spin->value(), slider->value());
    QCOMPARE(lastColor(colors).toQColor(false), expected(slider->value()));
    QVERIFY(std::abs(slider->value() - 200) <= 1);

    QTest::keyClick(slider, Qt::Key_End);
    QCOMPARE(lastColor(colors).toQColor(false), expected(255));
    QTest::keyClick(spin, Qt::Key_Down);
    QCOMPARE(colors.count(), 3);
    QCOMPARE(slider->value(), 254);
    QCOMPARE(lastColor(colors).toQColor(false), expected(254));
    turnWheel(slider, -1);
    QCOMPARE(spin->value(), slider->value());

    QVERIFY(QMetaObject::invokeMethod(&widget, sliderSlot.constData(), Q_ARG(int, 77)));
    QCOMPARE(spin->value(), 77);
    QVERIFY(QMetaObject::invokeMethod(&widget, boxSlot.constData(), Q_ARG(int, 78)));
    QCOMPARE(slider->value(), 78);
    QCOMPARE(lastColor(colors).toQColor(false), expected(78));
}

void RgbSlidersWidgetTest::givesWhatSetRgb8Makes()
{
    RgbSlidersWidget widget;
    VelaColor base(QColor(10, 20, 30));
    base.setAlpha32(0x89ABCDEFU);
    widget.setColor(base);
    QSignalSpy colors(&widget, &ColorSlidersWidget::colorChanged);
    widget.onGreenSliderChanged(21);
    VelaColor expected(QColor(10, 20, 30));
    expected.setRgb8(10, 21, 30);
    expected.setAlpha32(0x89ABCDEFU);
    QCOMPARE(lastColor(colors), expected);
    QCOMPARE(widget.color(), expected);
}

void RgbSlidersWidgetTest::slotsLimitTheirValues()
{
    RgbSlidersWidget widget;
    widget.setColor(VelaColor(QColor(10, 20, 30)));
    QSignalSpy colors(&widget, &ColorSlidersWidget::colorChanged);
    widget.onRedSliderChanged(-1);
    QCOMPARE(lastColor(colors).toQColor(false), QColor(0, 20, 30));
    widget.onBlueSpinBoxChanged(256);
    QCOMPARE(lastColor(colors).toQColor(false), QColor(0, 20, 255));
}

void RgbSlidersWidgetTest::aTypedNumberCountsWhenDone()
{
    RgbSlidersWidget widget;
    widget.show();
    QSignalSpy colors(&widget, &ColorSlidersWidget::colorChanged);
    QSpinBox* const spin = box(widget, "green");
    spin->selectAll();
    QTest::keyClicks(spin, QStringLiteral("123"));
    QCOMPARE(colors.count(), 0);
    QTest::keyClick(spin, Qt::Key_Return);
    QCOMPARE(colors.count(), 1);
    QCOMPARE(lastColor(colors).green8(), 123);
}

void RgbSlidersWidgetTest::showsTheExactBytes()
{
    RgbSlidersWidget widget;
    for (int i = 0; i < 256; ++i) {
        const QColor color(i, 255 - i, (i * 7) % 256);
        widget.setColor(VelaColor(color));
        QCOMPARE(track(widget, "red")->value(), color.red());
        QCOMPARE(box(widget, "green")->value(), color.green());
        QCOMPARE(track(widget, "blue")->value(), color.blue());
    }
    widget.setColor(VelaColor(0.3127, 0.3290)); // a white: as the screen shows it
    const QColor screen = VelaColor(0.3127, 0.3290).toQColor(true);
    QCOMPARE(QColor(track(widget, "red")->value(), track(widget, "green")->value(),
                    track(widget, "blue")->value()),
             screen);
}

void RgbSlidersWidgetTest::settingEmitsNothing()
{
    RgbSlidersWidget widget;
    QSignalSpy colors(&widget, &ColorSlidersWidget::colorChanged);
    widget.setColor(VelaColor(QColor(1, 2, 3)));
    widget.setColor(VelaColor());
    QCOMPARE(colors.count(), 0);
    QCOMPARE(box(widget, "blue")->value(), 3);
}

void RgbSlidersWidgetTest::tracksShowWhatTheirValuesGive()
{
    RgbSlidersWidget widget;
    widget.resize(700, widget.sizeHint().height());
    VelaColor color(QColor(40, 180, 90));
    color.setAlphaF(0.0); // a track shows the colour itself
    widget.setColor(color);
    widget.show();
    for (int row = 0; row < 3; ++row) {
        const ColorTrack* const slider = track(widget, kNames[row]);
        const QImage shown = track(widget, kNames[row])->grab().toImage();
        for (int value = 0; value < 256; value += 5) {
            const int x = slider->xOf(value);
            if (std::abs(x - slider->xOf(slider->value())) < slider->bar().height()) {
                continue; // the marker
            }
            int bytes[] = {40, 180, 90};
            bytes[row] = slider->valueAt(x);
            QCOMPARE(shown.pixelColor(x, slider->bar().center().y()),
                     QColor(bytes[0], bytes[1], bytes[2]));
        }
    }
}

void RgbSlidersWidgetTest::controlsAreNamed()
{
    const RgbSlidersWidget widget;
    for (const char* const name : kNames) {
        for (const QWidget* const control : {static_cast<QWidget*>(track(widget, name)),
                                             static_cast<QWidget*>(box(widget, name))}) {
            QVERIFY(!control->accessibleName().isEmpty());
            QVERIFY(!control->toolTip().isEmpty());
        }
    }
    int buddies = 0;
    for (const QLabel* const label : widget.findChildren<QLabel*>()) {
        buddies += label->buddy() != nullptr ? 1 : 0;
    }
    QCOMPARE(buddies, 3);
}

QTEST_MAIN(RgbSlidersWidgetTest)
#include "RgbSlidersWidgetTest.moc"
