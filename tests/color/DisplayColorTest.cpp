#include "color/DisplayColor.h"

#include "color/VelaColor.h"
#include "color/WhiteChart.h"
#include "resources/Resources.h"

#include <QObject>
#include <QtTest>

class DisplayColorTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void rgbAndHsvShowAsTheyAre_data();
    void rgbAndHsvShowAsTheyAre();
    void absoluteColorsGoThroughTheWhiteChart();
    void channelsGoThroughTheWhiteChart();
};

void DisplayColorTest::initTestCase()
{
    initForgeResources();
}

void DisplayColorTest::rgbAndHsvShowAsTheyAre_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::addColumn<QColor>("screen");
    QTest::newRow("RGB") << VelaColor::fromRgb(1, 2, 3) << QColor(1, 2, 3, 255);
    QTest::newRow("alpha at 8 bits")
        << VelaColor(0x1234, 0x56FF, 0x78FF, 0x9AFF) << QColor(0x12, 0x56, 0x78, 0x9A);
    QTest::newRow("HSV") << VelaColor::fromHsv(120, 255, 255, 7) << QColor(0, 255, 0, 7);
    QTest::newRow("invalid is opaque black") << VelaColor() << QColor(0, 0, 0, 255);
}

void DisplayColorTest::rgbAndHsvShowAsTheyAre()
{
    QFETCH(const VelaColor, color);
    QFETCH(const QColor, screen);
    QCOMPARE(toDisplayQColor(color), screen);
}

void DisplayColorTest::absoluteColorsGoThroughTheWhiteChart()
{
    VelaColor white;
    white.setYxyF(0.5, 0.38, 0.377, 0.25);
    QCOMPARE(toDisplayQColor(white), WhiteChart::instance().screenColor(white));
    QVERIFY(toDisplayQColor(white) != white.toQColor(true));
    QCOMPARE(toDisplayQColor(white).alpha(), 64);
}

void DisplayColorTest::channelsGoThroughTheWhiteChart()
{
    VelaColor solved;
    solved.setYxyF(0.5, 0.38, 0.377);
    const VelaColor channels = solved.toNchannel(3, 6, -1, 0);
    QCOMPARE(channels.fromYxy(), 1U);
    QCOMPARE(toDisplayQColor(channels), WhiteChart::instance().screenColor(channels));
    QVERIFY(toDisplayQColor(channels) != channels.toQColor(true));
}

QTEST_GUILESS_MAIN(DisplayColorTest)
#include "DisplayColorTest.moc"
