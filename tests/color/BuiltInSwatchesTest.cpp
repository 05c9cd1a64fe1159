#include "color/BuiltInSwatches.h"

#include <QObject>
#include <QtTest>

class BuiltInSwatchesTest : public QObject
{
    Q_OBJECT
private slots:
    void theyAreThese_data();
    void theyAreThese();
    void thereAreNoMore();
};

void BuiltInSwatchesTest::theyAreThese_data()
{
    QTest::addColumn<int>("place");
    QTest::addColumn<QString>("name");
    QTest::addColumn<VelaColor>("color");
    int place = 0;
    const auto row = [&place](const char* name, const VelaColor& color) {
        QTest::newRow(name) << place++ << QString::fromLatin1(name) << color;
    };
    row("Red", Qt::red);
    row("Orange", VelaColor(QColor(255, 127, 0)));
    row("Yellow", Qt::yellow);
    row("Green", Qt::green);
    row("Cyan", Qt::cyan);
    row("Blue", Qt::blue);
    row("Violet", VelaColor(QColor(139, 0, 255)));
    row("Magenta", Qt::magenta);
    row("White", Qt::white);
    row("Silver", VelaColor(QColor(192, 192, 192)));
    row("Gray", VelaColor(QColor(128, 128, 128)));
    row("Black", Qt::black);
    row("2700 K / center of ANSI bin", VelaColor(0.45766, 0.40983));
    row("3000 K / center of ANSI bin", VelaColor(0.43387, 0.40319));
    row("3500 K / center of ANSI bin", VelaColor(0.40775, 0.39292));
    row("4000 K / center of ANSI bin", VelaColor(0.38177, 0.37959));
    row("4500 K / center of ANSI bin", VelaColor(0.36128, 0.36686));
    row("5000 K / center of ANSI bin", VelaColor(0.34464, 0.35506));
    row("5700 K / center of ANSI bin", VelaColor(0.32867, 0.34246));
    row("6500 K / center of ANSI bin", VelaColor(0.3123, 0.32825));
    row("Candle", VelaColor(0.50563, 0.4152));
    row("Incandescent", VelaColor(0.44757, 0.40745));
    row("Afternoon Daylight", VelaColor(0.33242, 0.34743));
    row("Noon Daylight", VelaColor(0.31271, 0.32902));
    row("North Sky Daylight", VelaColor(0.29902, 0.31485));
    row("Overcast Sky", VelaColor(0.28063, 0.28829));
    row("Spring White", VelaColor(0.34724, 0.38528));
    row("Summer White", VelaColor(0.41848, 0.42916));
    row("Fall White", VelaColor(0.50459, 0.40021));
    row("Winter White", VelaColor(0.28972, 0.31094));
    row("Rose White", VelaColor(0.38549, 0.34874));
    row("Violet White", VelaColor(0.31789, 0.29164));
}

void BuiltInSwatchesTest::theyAreThese()
{
    QFETCH(const int, place);
    QFETCH(const QString, name);
    QFETCH(const VelaColor, color);
    const BuiltInSwatch swatch = builtInSwatches().at(place);
    QCOMPARE(swatch.name, name);
    QCOMPARE(swatch.color.toString(), color.toString());
    QVERIFY(swatch.color.isValid());
}

void BuiltInSwatchesTest::thereAreNoMore()
{
    QCOMPARE(builtInSwatches().size(), 12 + 8 + 12);
}

QTEST_GUILESS_MAIN(BuiltInSwatchesTest)
#include "BuiltInSwatchesTest.moc"
