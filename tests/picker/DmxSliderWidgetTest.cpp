#include "picker/DmxSliderWidget.h"

#include "PickerInput.h"

#include <QLabel>
#include <QSignalSpy>
#include <QSpinBox>
#include <QtTest>

using VelaColorPickerLib::ColorTrack;
using VelaColorPickerLib::DmxSliderWidget;

class DmxSliderWidgetTest : public QObject
{
    Q_OBJECT

private slots:
    void sliderAndBoxFollowEachOther();
    void settingEmitsNothing();
    void isNamedAfterItsChannel();
};

void DmxSliderWidgetTest::sliderAndBoxFollowEachOther()
{
    DmxSliderWidget widget;
    widget.resize(500, widget.sizeHint().height());
    widget.show();
    auto* const slider = widget.findChild<ColorTrack*>();
    auto* const box = widget.findChild<QSpinBox*>();
    QCOMPARE(slider->minimum(), 0);
    QCOMPARE(slider->maximum(), 255);
    QCOMPARE(box->minimum(), 0);
    QCOMPARE(box->maximum(), 255);
    QSignalSpy changes(&widget, &DmxSliderWidget::valueChanged);
    QTest::mouseClick(slider, Qt::LeftButton, {}, QPoint(slider->xOf(200), slider->height() / 2));
    QCOMPARE(changes.count(), 1);
    QCOMPARE(changes.last().first().toInt(), 200);
    QCOMPARE(box->value(), 200);
    QTest::keyClick(box, Qt::Key_Up);
    QCOMPARE(changes.count(), 2);
    QCOMPARE(slider->value(), 201);
    QCOMPARE(widget.value(), 201);
    turnWheel(slider, -1);
    QCOMPARE(changes.count(), 3);
    QVERIFY(box->value() < 201);
}

void DmxSliderWidgetTest::settingEmitsNothing()
{
    DmxSliderWidget widget;
    QSignalSpy changes(&widget, &DmxSliderWidget::valueChanged);
    widget.setValue(77);
    QCOMPARE(widget.value(), 77);
    QCOMPARE(widget.findChild<ColorTrack*>()->value(), 77);
    widget.setValue(256);
    QCOMPARE(widget.value(), 255);
    widget.setValue(-1);
    QCOMPARE(widget.value(), 0);
    QCOMPARE(changes.count(), 0);
}

void DmxSliderWidgetTest::isNamedAfterItsChannel()
{
    DmxSliderWidget widget;
    widget.setName(QStringLiteral("Deep-Blue"));
    QCOMPARE(widget.label()->text(), QStringLiteral("Deep-Blue"));
    QVERIFY(widget.findChild<ColorTrack*>()->accessibleName().contains(QLatin1String("Deep-Blue")));
    QCOMPARE(widget.findChild<QSpinBox*>()->accessibleName(), QStringLiteral("Deep-Blue"));
    QVERIFY(!widget.findChild<ColorTrack*>()->toolTip().isEmpty());
    QVERIFY(!widget.findChild<QSpinBox*>()->toolTip().isEmpty());
}

QTEST_MAIN(DmxSliderWidgetTest)
#include "DmxSliderWidgetTest.moc"
