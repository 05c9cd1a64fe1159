#include "picker/CCTPickerWidget.h"

#include "PickerInput.h"
#include "color/DisplayColor.h"
#include "color/VelaColor.h"
#include "resources/Resources.h"

#include <QSignalSpy>
#include <QtTest>

#include <cstdlib>

using VelaColorPickerLib::CCTPickerWidget;

class CCTPickerWidgetTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void ranges();
    void tellsTheTemperatureChosen();
    void paintsTheWhitesOfItsTint_data();
    void paintsTheWhitesOfItsTint();
};

void CCTPickerWidgetTest::initTestCase()
{
    initForgeResources();
}

void CCTPickerWidgetTest::ranges()
{
    const CCTPickerWidget picker;
    QCOMPARE(picker.minimum(), 1900);
    QCOMPARE(picker.maximum(), 11000);
}

void CCTPickerWidgetTest::tellsTheTemperatureChosen()
{
    CCTPickerWidget picker;
    picker.resize(400, picker.sizeHint().height());
    picker.show();
    QSignalSpy chosen(&picker, &CCTPickerWidget::cctChanged);
    QTest::mouseClick(&picker, Qt::LeftButton, {}, QPoint(399, picker.height() / 2));
    QCOMPARE(chosen.count(), 1);
    QCOMPARE(chosen.last().first().toInt(), 11000);
    QTest::keyClick(&picker, Qt::Key_Left);
    QCOMPARE(chosen.last().first().toInt(), 10990);
    QTest::keyClick(&picker, Qt::Key_PageDown);
    QCOMPARE(chosen.last().first().toInt(), 10890);
    turnWheel(&picker, -1);
    QVERIFY(chosen.last().first().toInt() < 10890);
}

void CCTPickerWidgetTest::paintsTheWhitesOfItsTint_data()
{
    QTest::addColumn<int>("tint");
    QTest::newRow("none") << 0;
    QTest::newRow("towards green") << 20000;
    QTest::newRow("towards magenta") << -32767;
}

/// The colours that the program shows for these whites everywhere else, to a rounding of the
/// temperature that a chromaticity is read back as.
void CCTPickerWidgetTest::paintsTheWhitesOfItsTint()
{
    QFETCH(const int, tint);
    CCTPickerWidget picker;
    picker.setTint(tint);
    picker.resize(700, picker.sizeHint().height());
    const QImage image = picker.grab().toImage();
    const QRect bar = picker.bar();
    int compared = 0;
    for (const int cct : {3500, 4000, 4500, 5000, 6000, 6500, 8000, 9500}) {
        const int x = picker.xOf(cct);
        const QPointF xy = whiteXy(picker.valueAt(x), tint);
        int readBack = 0;
        int readTint = 0;
        QVERIFY(ColorUtils::xyToCctTint(xy.x(), xy.y(), &readBack, &readTint));
        if (std::abs(readBack - cct) > 20 || std::abs(readTint - tint) > 500) {
            continue; // the rule that reads whites back knows this one as another
        }
        const QColor expected = toDisplayQColor(VelaColor(xy.x(), xy.y()));
        const QColor shown = image.pixelColor(x, bar.top() + 3);
        const auto away = [](int a, int b) { return std::abs(a - b); };
        QVERIFY2(away(shown.red(), expected.red()) <= 4 &&
                     away(shown.green(), expected.green()) <= 4 &&
                     away(shown.blue(), expected.blue()) <= 4,
                 qPrintable(QString::number(cct) + shown.name() + expected.name()));
        ++compared;
    }
    QVERIFY(compared >= 4);
}

QTEST_MAIN(CCTPickerWidgetTest)
#include "CCTPickerWidgetTest.moc"
