#include "picker/DmxSlidersWidget.h"

#include "picker/DmxSliderWidget.h"

#include <QImage>
#include <QSignalSpy>
#include <QSpinBox>
#include <QtTest>

using VelaColorPickerLib::DmxSlidersWidget;
using VelaColorPickerLib::DmxSliderWidget;

namespace {

QList<DmxSliderWidget*> shownSliders(const DmxSlidersWidget& widget)
{
    QList<DmxSliderWidget*> shown;
    for (DmxSliderWidget* const slider : widget.findChildren<DmxSliderWidget*>()) {
        if (slider->isVisibleTo(&widget)) {
            shown.append(slider);
        }
    }
    return shown;
}

} // namespace

class DmxSlidersWidgetTest : public QObject
{
    Q_OBJECT

private slots:
    void showsOneSliderAChannel_data();
    void showsOneSliderAChannel();
    void namesThatAreMissingAreNumbers();
    void aSliderTellsAllLevels();
    void settingEmitsNothing();
    void groundIsLightGrey();
};

void DmxSlidersWidgetTest::showsOneSliderAChannel_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("shown");
    QTest::newRow("none") << 0 << 0;
    QTest::newRow("one") << 1 << 1;
    QTest::newRow("five") << 5 << 5;
    QTest::newRow("all") << 8 << 8;
    QTest::newRow("more than there are") << 9 << 8;
    QTest::newRow("negative") << -3 << 0;
}

void DmxSlidersWidgetTest::showsOneSliderAChannel()
{
    QFETCH(const int, count);
    QFETCH(const int, shown);
    DmxSlidersWidget widget;
    widget.setChannels(7, {});
    widget.setChannels(count, {});
    QCOMPARE(shownSliders(widget).size(), shown);
    QCOMPARE(widget.values().size(), shown);
    QCOMPARE(widget.channelCount(), shown);
}

void DmxSlidersWidgetTest::namesThatAreMissingAreNumbers()
{
    DmxSlidersWidget widget;
    widget.setChannels(3, {QStringLiteral("Warm"), QString()});
    QCOMPARE(shownSliders(widget).at(0)->name(), QStringLiteral("Warm"));
    QCOMPARE(shownSliders(widget).at(1)->name(), QStringLiteral("Channel 2"));
    QCOMPARE(shownSliders(widget).at(2)->name(), QStringLiteral("Channel 3"));
}

void DmxSlidersWidgetTest::aSliderTellsAllLevels()
{
    DmxSlidersWidget widget;
    widget.setChannels(3, {});
    widget.setValues({1, 2, 3});
    QSignalSpy changes(&widget, &DmxSlidersWidget::dmxChanged);
    shownSliders(widget).at(1)->findChild<QSpinBox*>()->setValue(200);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(changes.last().first().value<QVector<int>>(), QVector<int>({1, 200, 3}));
}

void DmxSlidersWidgetTest::settingEmitsNothing()
{
    DmxSlidersWidget widget;
    QSignalSpy changes(&widget, &DmxSlidersWidget::dmxChanged);
    widget.setChannels(4, {});
    widget.setValues({255, 300, -5});
    QCOMPARE(widget.values(), QVector<int>({255, 255, 0, 0}));
    QCOMPARE(changes.count(), 0);
}

void DmxSlidersWidgetTest::groundIsLightGrey()
{
    DmxSlidersWidget widget;
    QCOMPARE(widget.objectName(), QStringLiteral("DmxSlidersWidget"));
    QCOMPARE(widget.styleSheet(),
             QStringLiteral("QWidget#DmxSlidersWidget {background-color: rgb(225, 225, 225);}"));
    widget.resize(200, 200);
    QCOMPARE(widget.grab().toImage().pixelColor(100, 195), QColor(225, 225, 225));
}

QTEST_MAIN(DmxSlidersWidgetTest)
#include "DmxSlidersWidgetTest.moc"
