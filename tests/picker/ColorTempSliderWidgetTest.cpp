#include "picker/ColorTempSliderWidget.h"

#include "PickerInput.h"
#include "picker/CCTPickerWidget.h"
#include "resources/Resources.h"

#include <QLabel>
#include <QSignalSpy>
#include <QSpinBox>
#include <QtTest>

using namespace VelaColorPickerLib;

class ColorTempSliderWidgetTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void trackAndBoxFollowEachOther();
    void aTypedNumberCountsWhenDone();
    void settingEmitsNothing();
    void controlsAreNamed();
};

void ColorTempSliderWidgetTest::initTestCase()
{
    initForgeResources();
}

void ColorTempSliderWidgetTest::trackAndBoxFollowEachOther()
{
    ColorTempSliderWidget widget;
    widget.resize(500, widget.sizeHint().height());
    widget.show();
    auto* const track = widget.findChild<CCTPickerWidget*>();
    auto* const box = widget.findChild<QSpinBox*>(QStringLiteral("colorTempSpinBox"));
    QVERIFY(track != nullptr);
    QVERIFY(box != nullptr);
    QCOMPARE(box->minimum(), 1900);
    QCOMPARE(box->maximum(), 11000);
    QSignalSpy changes(&widget, &ColorTempSliderWidget::colorTempChanged);

    QTest::mouseClick(track, Qt::LeftButton, {}, QPoint(track->width() - 1, track->height() / 2));
    QCOMPARE(changes.count(), 1); // once, not once for each of the two
    QCOMPARE(changes.last().first().toInt(), 11000);
    QCOMPARE(box->value(), 11000);

    QTest::keyClick(box, Qt::Key_Down);
    QCOMPARE(changes.count(), 2);
    QCOMPARE(track->value(), 11000 - 10);
    QCOMPARE(changes.last().first().toInt(), 11000 - 10);
    QCOMPARE(widget.colorTemp(), 11000 - 10);
    turnWheel(box, 1);
    QCOMPARE(changes.count(), 3);
    QCOMPARE(track->value(), 11000);
}

void ColorTempSliderWidgetTest::aTypedNumberCountsWhenDone()
{
    ColorTempSliderWidget widget;
    widget.show();
    auto* const box = widget.findChild<QSpinBox*>();
    QSignalSpy changes(&widget, &ColorTempSliderWidget::colorTempChanged);
    box->selectAll();
    QTest::keyClicks(box, QStringLiteral("5432"));
    QCOMPARE(changes.count(), 0);
    QTest::keyClick(box, Qt::Key_Return);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(widget.colorTemp(), 5432);
    QCOMPARE(widget.findChild<CCTPickerWidget*>()->value(), 5432);
}

void ColorTempSliderWidgetTest::settingEmitsNothing()
{
    ColorTempSliderWidget widget;
    QSignalSpy changes(&widget, &ColorTempSliderWidget::colorTempChanged);
    widget.setColorTemp(7777);
    QCOMPARE(widget.colorTemp(), 7777);
    QCOMPARE(widget.findChild<CCTPickerWidget*>()->value(), 7777);
    widget.setColorTemp(1000000);
    QCOMPARE(widget.colorTemp(), 11000);
    widget.setColorTemp(-1000000);
    QCOMPARE(widget.colorTemp(), 1900);
    QCOMPARE(widget.findChild<CCTPickerWidget*>()->value(), 1900);
    QCOMPARE(changes.count(), 0);
}

void ColorTempSliderWidgetTest::controlsAreNamed()
{
    const ColorTempSliderWidget widget;
    const auto* const track = widget.findChild<CCTPickerWidget*>();
    const auto* const box = widget.findChild<QSpinBox*>();
    QVERIFY(!track->accessibleName().isEmpty() && !track->toolTip().isEmpty());
    QVERIFY(!box->accessibleName().isEmpty() && !box->toolTip().isEmpty());
    QCOMPARE(widget.label()->text(), QStringLiteral("Temperature:"));
    QVERIFY(widget.label()->buddy() == box);
    QCOMPARE(widget.focusProxy(), track);
}

QTEST_MAIN(ColorTempSliderWidgetTest)
#include "ColorTempSliderWidgetTest.moc"
