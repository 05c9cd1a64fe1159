#include "picker/ColorSlidersWidget.h"

#include "picker/ColorTrack.h"
#include "picker/HsbSlidersWidget.h"
#include "picker/RgbSlidersWidget.h"

#include <QLabel>
#include <QSpinBox>
#include <QtTest>

using namespace VelaColorPickerLib;

namespace {

template <class Widget>
struct Bench
{
    Widget widget;
    QSignalSpy changed{&widget, &ColorSlidersWidget::colorChanged};
    QList<ColorTrack*> tracks = widget.template findChildren<ColorTrack*>();
    QList<QSpinBox*> boxes = widget.template findChildren<QSpinBox*>();

    Bench() { widget.show(); }
    VelaColor color() const { return changed.last().at(0).template value<VelaColor>(); }
    QList<int> values() const
    {
        QList<int> list;
        for (int i = 0; i < tracks.size(); ++i) {
            list.append(tracks.at(i)->value() == boxes.at(i)->value() ? boxes.at(i)->value() : -1);
        }
        return list;
    }
};

using Rgb = Bench<RgbSlidersWidget>;
using Hsb = Bench<HsbSlidersWidget>;

} // namespace

/// The sliders of red, green and blue, and of hue, saturation and brightness.
class ColorSlidersWidgetTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void nameTheirSlots();
    void runOverTheirRanges();
    void settingShowsTheBytesAndEmitsNothing();
    void aTrackMovesItsBoxAndTellsTheColor();
    void aBoxMovesItsTrackAndTellsTheColor();
    void hueSaturationAndBrightnessGiveTheirColor();
    void opacityIsKept();
    void tracksShowWhatTheyWouldDo();
    void everyControlIsNamed();
};

void ColorSlidersWidgetTest::initTestCase()
{
    qRegisterMetaType<VelaColor>();
}

void ColorSlidersWidgetTest::nameTheirSlots()
{
    for (const char* const name : {"Red", "Green", "Blue"}) {
        for (const char* const kind : {"Slider", "SpinBox"}) {
            const QByteArray slot = QByteArray("on") + name + kind + "Changed(int)";
            QVERIFY2(RgbSlidersWidget::staticMetaObject.indexOfSlot(slot) >= 0, slot);
        }
    }
    for (const char* const name : {"Hue", "Saturation", "Brightness"}) {
        for (const char* const kind : {"Slider", "SpinBox"}) {
            const QByteArray slot = QByteArray("on") + name + kind + "Changed(int)";
            QVERIFY2(HsbSlidersWidget::staticMetaObject.indexOfSlot(slot) >= 0, slot);
        }
    }
}

void ColorSlidersWidgetTest::runOverTheirRanges()
{
    const Rgb rgb;
    const Hsb hsb;
    QCOMPARE(rgb.tracks.size(), 3);
    QCOMPARE(hsb.tracks.size(), 3);
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(rgb.tracks.at(i)->minimum(), 0);
        QCOMPARE(rgb.tracks.at(i)->maximum(), 255);
        QCOMPARE(rgb.boxes.at(i)->maximum(), 255);
        QCOMPARE(hsb.tracks.at(i)->minimum(), 0);
        QCOMPARE(hsb.tracks.at(i)->maximum(), i == 0 ? 359 : 255);
        QCOMPARE(hsb.boxes.at(i)->maximum(), i == 0 ? 359 : 255);
    }
}

void ColorSlidersWidgetTest::settingShowsTheBytesAndEmitsNothing()
{
    Rgb rgb;
    rgb.widget.setColor(VelaColor(QColor(1, 128, 254)));
    QCOMPARE(rgb.values(), QList<int>({1, 128, 254}));
    QCOMPARE(rgb.changed.count(), 0);
    rgb.widget.setColor(VelaColor());
    QCOMPARE(rgb.values(), QList<int>({0, 0, 0}));
    Hsb hsb;
    hsb.widget.setHsb(359, 12, 200, 1.0);
    QCOMPARE(hsb.values(), QList<int>({359, 12, 200}));
    hsb.widget.setHsb(1000, -3, 999, 1.0);
    QCOMPARE(hsb.values(), QList<int>({359, 0, 255}));
    QCOMPARE(hsb.changed.count(), 0);
}

void ColorSlidersWidgetTest::aTrackMovesItsBoxAndTellsTheColor()
{
    Rgb bench;
    bench.widget.setColor(VelaColor(QColor(10, 20, 30)));
    bench.tracks.at(1)->setValue(200);
    QCOMPARE(bench.values(), QList<int>({10, 200, 30}));
    QCOMPARE(bench.changed.count(), 1);
    QCOMPARE(bench.color().toQColor(true), QColor(10, 200, 30));
    QCOMPARE(bench.color().spec(), VelaColor::Rgb);
    QTest::keyClick(bench.tracks.at(2), Qt::Key_Right);
    QCOMPARE(bench.color().toQColor(true), QColor(10, 200, 31));
    QTest::keyClick(bench.tracks.at(0), Qt::Key_End);
    QCOMPARE(bench.color().toQColor(true), QColor(255, 200, 31));
    QCOMPARE(bench.changed.count(), 3);
}

void ColorSlidersWidgetTest::aBoxMovesItsTrackAndTellsTheColor()
{
    Rgb bench;
    bench.widget.setColor(VelaColor(QColor(10, 20, 30)));
    bench.boxes.at(0)->setValue(77);
    QCOMPARE(bench.values(), QList<int>({77, 20, 30}));
    QCOMPARE(bench.changed.count(), 1);
    QCOMPARE(bench.color().toQColor(true), QColor(77, 20, 30));
}

void ColorSlidersWidgetTest::hueSaturationAndBrightnessGiveTheirColor()
{
    Hsb bench;
    bench.widget.setHsb(120, 100, 50, 1.0);
    bench.boxes.at(0)->setValue(240);
    QCOMPARE(bench.color().toString(), VelaColor::fromHsv(240, 100, 50).toString());
    bench.tracks.at(1)->setValue(255);
    QCOMPARE(bench.color().toString(), VelaColor::fromHsv(240, 255, 50).toString());
    bench.boxes.at(2)->setValue(255);
    QCOMPARE(bench.color().toQColor(true), QColor(Qt::blue));
}

void ColorSlidersWidgetTest::opacityIsKept()
{
    Rgb rgb;
    VelaColor color(QColor(10, 20, 30));
    color.setAlphaF(0.3);
    rgb.widget.setColor(color);
    rgb.boxes.at(0)->setValue(99);
    QVERIFY(qAbs(rgb.color().alphaF() - 0.3) < 1e-9);
    Hsb hsb;
    hsb.widget.setHsb(1, 2, 3, 0.7);
    hsb.boxes.at(0)->setValue(99);
    QVERIFY(qAbs(hsb.color().alphaF() - 0.7) < 1e-9);
}

void ColorSlidersWidgetTest::tracksShowWhatTheyWouldDo()
{
    Rgb bench;
    bench.widget.resize(400, 120);
    bench.widget.setColor(VelaColor(QColor(128, 64, 32)));
    const ColorTrack* const green = bench.tracks.at(1);
    QCoreApplication::processEvents();
    const QImage image = bench.tracks.at(1)->grab().toImage();
    for (const int value : {0, 200, 255}) {
        const int x = qBound(green->bar().left() + 2, green->xOf(value), green->bar().right() - 2);
        const QColor painted = image.pixelColor(x, green->bar().top() + 2);
        QCOMPARE(painted.red(), 128);
        QVERIFY(qAbs(painted.green() - green->valueAt(x)) <= 2);
        QCOMPARE(painted.blue(), 32);
    }
}

void ColorSlidersWidgetTest::everyControlIsNamed()
{
    const Rgb rgb;
    const Hsb hsb;
    QStringList labels;
    for (const QWidget* const widget : QList<const QWidget*>{&rgb.widget, &hsb.widget}) {
        for (const QLabel* const label : widget->findChildren<QLabel*>()) {
            labels.append(label->text());
            QVERIFY(label->buddy() != nullptr);
        }
        for (const QSpinBox* const box : widget->findChildren<QSpinBox*>()) {
            QVERIFY(!box->accessibleName().isEmpty() && !box->toolTip().isEmpty());
        }
        for (const ColorTrack* const track : widget->findChildren<ColorTrack*>()) {
            QVERIFY(!track->accessibleName().isEmpty() && !track->toolTip().isEmpty());
        }
    }
    QCOMPARE(labels,
             QStringList({"Red:", "Green:", "Blue:", "Hue:", "Saturation:", "Brightness:"}));
}

QTEST_MAIN(ColorSlidersWidgetTest)
#include "ColorSlidersWidgetTest.moc"
