#include "picker/ColorTintSliderWidget.h"

#include "PickerInput.h"
#include "picker/TintPickerWidget.h"
#include "resources/Resources.h"

#include <QLabel>
#include <QSignalSpy>
#include <QSpinBox>
#include <QtTest>

using namespace VelaColorPickerLib;

class ColorTintSliderWidgetTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void trackAndBoxFollowEachOther();
    void aTypedNumberCountsWhenDone();
    void settingEmitsNothing();
    void controlsAreNamed();
};

void ColorTintSliderWidgetTest::initTestCase()
{
    initForgeResources();
}

void ColorTintSliderWidgetTest::trackAndBoxFollowEachOther()
{
    ColorTintSliderWidget widget;
    widget.resize(500, widget.sizeHint().height());
    widget.show();
    auto* const track = widget.findChild<TintPickerWidget*>();
    auto* const box = widget.findChild<QSpinBox*>(QStringLiteral("colorTintSpinBox"));
    QVERIFY(track != nullptr);
    QVERIFY(box != nullptr);
    QCOMPARE(box->minimum(), -32767);
    QCOMPARE(box->maximum(), 32767);
    QSignalSpy changes(&widget, &ColorTintSliderWidget::colorTintChanged);

    QTest::mouseClick(track, Qt::LeftButton, {}, QPoint(track->width() - 1, track->height() / 2));
    QCOMPARE(changes.count(), 1); // once, not once for each of the two
    QCOMPARE(changes.last().first().toInt(), 32767);
    QCOMPARE(box->value(), 32767);

    QTest::keyClick(box, Qt::Key_Down);
    QCOMPARE(changes.count(), 2);
    QCOMPARE(track->value(), 32767 - 100);
    QCOMPARE(changes.last().first().toInt(), 32767 - 100);
    QCOMPARE(widget.tint(), 32767 - 100);
    turnWheel(box, 1);
    QCOMPARE(changes.count(), 3);
    QCOMPARE(track->value(), 32767);
}

void ColorTintSliderWidgetTest::aTypedNumberCountsWhenDone()
{
    ColorTintSliderWidget widget;
    widget.show();
    auto* const box = widget.findChild<QSpinBox*>();
    QSignalSpy changes(&widget, &ColorTintSliderWidget::colorTintChanged);
    box->selectAll();
    QTest::keyClicks(box, QStringLiteral("5432"));
    QCOMPARE(changes.count(), 0);
    QTest::keyClick(box, Qt::Key_Return);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(widget.tint(), 5432);
    QCOMPARE(widget.findChild<TintPickerWidget*>()->value(), 5432);
}

void ColorTintSliderWidgetTest::settingEmitsNothing()
{
    ColorTintSliderWidget widget;
    QSignalSpy changes(&widget, &ColorTintSliderWidget::colorTintChanged);
    widget.setTint(7777);
    QCOMPARE(widget.tint(), 7777);
    QCOMPARE(widget.findChild<TintPickerWidget*>()->value(), 7777);
    widget.setTint(1000000);
    QCOMPARE(widget.tint(), 32767);
    widget.setTint(-1000000);
    QCOMPARE(widget.tint(), -32767);
    QCOMPARE(widget.findChild<TintPickerWidget*>()->value(), -32767);
    QCOMPARE(changes.count(), 0);
}

void ColorTintSliderWidgetTest::controlsAreNamed()
{
    const ColorTintSliderWidget widget;
    const auto* const track = widget.findChild<TintPickerWidget*>();
    const auto* const box = widget.findChild<QSpinBox*>();
    QVERIFY(!track->accessibleName().isEmpty() && !track->toolTip().isEmpty());
    QVERIFY(!box->accessibleName().isEmpty() && !box->toolTip().isEmpty());
    QCOMPARE(widget.label()->text(), QStringLiteral("Tint:"));
    QVERIFY(widget.label()->buddy() == box);
    QCOMPARE(widget.focusProxy(), track);
}

QTEST_MAIN(ColorTintSliderWidgetTest)
#include "ColorTintSliderWidgetTest.moc"
