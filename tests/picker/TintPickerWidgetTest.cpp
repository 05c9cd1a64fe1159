#include "picker/TintPickerWidget.h"

#include "PickerInput.h"
#include "color/DisplayColor.h"
#include "color/VelaColor.h"
#include "resources/Resources.h"

#include <QSignalSpy>
#include <QtTest>

#include <cstdlib>

using VelaColorPickerLib::TintPickerWidget;

class TintPickerWidgetTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void ranges();
    void tellsTheTintChosen();
    void paintsTheWhitesOfItsTemperature();
};

void TintPickerWidgetTest::initTestCase()
{
    initForgeResources();
}

void TintPickerWidgetTest::ranges()
{
    const TintPickerWidget picker;
    QCOMPARE(picker.minimum(), -32767);
    QCOMPARE(picker.maximum(), 32767);
    QCOMPARE(picker.value(), 0);
}

void TintPickerWidgetTest::tellsTheTintChosen()
{
    TintPickerWidget picker;
    picker.resize(400, picker.sizeHint().height());
    picker.show();
    QSignalSpy chosen(&picker, &TintPickerWidget::tintChanged);
    QTest::mouseClick(&picker, Qt::LeftButton, {}, QPoint(0, picker.height() / 2));
    QCOMPARE(chosen.count(), 1);
    QCOMPARE(chosen.last().first().toInt(), -32767);
    QTest::keyClick(&picker, Qt::Key_Right);
    QCOMPARE(chosen.last().first().toInt(), -32667);
    turnWheel(&picker, 1);
    QVERIFY(chosen.last().first().toInt() > -32667);
}

void TintPickerWidgetTest::paintsTheWhitesOfItsTemperature()
{
    TintPickerWidget picker;
    picker.setCct(5000); // reads back as itself
    picker.setValue(-32767);
    picker.resize(700, picker.sizeHint().height());
    const QImage image = picker.grab().toImage();
    const QRect bar = picker.bar();
    for (int tint = -28000; tint <= 32000; tint += 2000) {
        const int x = picker.xOf(tint);
        const QPointF xy = whiteXy(5000, picker.valueAt(x));
        const QColor expected = toDisplayQColor(VelaColor(xy.x(), xy.y()));
        const QColor shown = image.pixelColor(x, bar.top() + 3);
        const auto away = [](int a, int b) { return std::abs(a - b); };
        QVERIFY2(away(shown.red(), expected.red()) <= 4 &&
                     away(shown.green(), expected.green()) <= 4 &&
                     away(shown.blue(), expected.blue()) <= 4,
                 qPrintable(QString::number(tint) + shown.name() + expected.name()));
    }
}

QTEST_MAIN(TintPickerWidgetTest)
#include "TintPickerWidgetTest.moc"
