#include "tools/mapgen/GridExample.h"

#include "MapText.h"
#include "tools/mapgen/ShowTimes.h"

#include <QBuffer>
#include <QObject>
#include <QtTest>

namespace {

QByteArray mapOf(const Example& example)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    return MapWriter(example.keys).write(example.map, &buffer) ? buffer.data() : QByteArray();
}

} // namespace

Q_DECLARE_METATYPE(GridOptions)

class GridExampleTest : public QObject
{
    Q_OBJECT
private slots:
    void wallsAreWhole_data();
    void wallsAreWhole();
    void badOptionsAreRefused_data();
    void badOptionsAreRefused();
    void theSeedDecidesTheColours();
    void aFirstGenerationControllerHasOnePort();
    void lightsStandInRowsOnThePlan();
};

void GridExampleTest::wallsAreWhole_data()
{
    QTest::addColumn<int>("lights");
    QTest::addColumn<int>("rows");
    QTest::addColumn<bool>("shortKeys");
    QTest::addColumn<int>("controllers"); // of 8 ports with 165 lights each
    QTest::newRow("one light") << 1 << 0 << false << 1;
    QTest::newRow("one port full") << 165 << 0 << false << 1;
    QTest::newRow("one controller full") << 1320 << 0 << true << 1;
    QTest::newRow("one light more") << 1321 << 0 << false << 2;
    QTest::newRow("more rows asked for than come out even") << 10 << 7 << false << 1;
    QTest::newRow("15000") << 15000 << 100 << true << 12;
    QTest::newRow("60000") << 60000 << 0 << false << 46;
}

void GridExampleTest::wallsAreWhole()
{
    QFETCH(const int, lights);
    QFETCH(const int, rows);
    QFETCH(const bool, shortKeys);
    QFETCH(const int, controllers);
    GridOptions options;
    options.lights = lights;
    options.rows = rows;
    options.keys = shortKeys ? MapWriter::Keys::Short : MapWriter::Keys::Long;
    bool made = false;
    QString error;
    Example example = gridExample(options, QStringLiteral("wall.png"), &made, &error);
    QVERIFY2(made, qPrintable(error));
    const MapText map(mapOf(example));
    QVERIFY(map.read);
    QCOMPARE(map.imageFile, QStringLiteral("wall.png"));
    QCOMPARE(map.lights.size(), lights);
    QCOMPARE(map.controllers.size(), controllers);
    QCOMPARE(map.elements, 3 + controllers + lights + map.groups.size());
    const QStringList faults = map.faults(497);
    QVERIFY2(faults.isEmpty(), qPrintable(faults.mid(0, 5).join(QLatin1Char('\n'))));
    QVERIFY(resolveTimes(&example.show));
    QCOMPARE(example.show.end, 60000U);
    for (const ShowEffect& effect : example.show.children) {
        QCOMPARE(map.lightsOf(effect.gid).size(), lights);
    }
}

void GridExampleTest::badOptionsAreRefused_data()
{
    QTest::addColumn<GridOptions>("options");
    const auto row = [](const char* name, void (*change)(GridOptions*)) {
        GridOptions options;
        change(&options);
        QTest::newRow(name) << options;
    };
    row("no lights", [](GridOptions* o) { o->lights = 0; });
    row("too many lights", [](GridOptions* o) { o->lights = 60001; });
    row("negative rows", [](GridOptions* o) { o->rows = -1; });
    row("too long for a picture", [](GridOptions* o) {
        o->lights = 60000;
        o->rows = 2;
    });
    row("an empty port", [](GridOptions* o) { o->perPort = 0; });
    row("a port too full", [](GridOptions* o) { o->perPort = 171; });
    row("no ports", [](GridOptions* o) { o->ports = 0; });
    row("too many ports", [](GridOptions* o) { o->ports = 256; });
    row("version", [](GridOptions* o) { o->version = 4; });
    row("no layers", [](GridOptions* o) { o->layers = 0; });
    row("alpha", [](GridOptions* o) { o->alpha = 1.01; });
    row("alpha not a number", [](GridOptions* o) { o->alpha = qQNaN(); });
    row("address of three", [](GridOptions* o) { o->address = QStringLiteral("127.0.1"); });
    row("address above 255", [](GridOptions* o) { o->address = QStringLiteral("127.0.0.256"); });
    row("addresses run out", [](GridOptions* o) {
        o->lights = 2000;
        o->address = QStringLiteral("255.255.255.255");
    });
}

void GridExampleTest::badOptionsAreRefused()
{
    QFETCH(const GridOptions, options);
    bool made = true;
    QString error;
    gridExample(options, QString(), &made, &error);
    QVERIFY(!made);
    QVERIFY(!error.isEmpty());
}

void GridExampleTest::theSeedDecidesTheColours()
{
    const auto show = [](quint32 seed) {
        GridOptions options;
        options.lights = 4;
        options.layers = 3;
        options.seed = seed;
        bool made = false;
        QString error;
        return gridExample(options, QString(), &made, &error).show.children;
    };
    const auto colours = [&show](quint32 seed) {
        QStringList list;
        for (const ShowEffect& effect : show(seed)) {
            list << effect.parameters.first().second;
        }
        return list;
    };
    QCOMPARE(colours(1), colours(1));
    QVERIFY(colours(1) != colours(2));
    QVERIFY(colours(1).at(0).contains(QStringLiteral("#ffff"))); // the lowest layer is opaque
    QVERIFY(colours(1).at(1).contains(QStringLiteral("#8000")));
    QCOMPARE(show(1).at(1).type, QStringLiteral("Cross Fade"));
    QCOMPARE(show(1).at(2).priority, 3U);
}

void GridExampleTest::aFirstGenerationControllerHasOnePort()
{
    GridOptions options;
    options.lights = 500;
    options.version = 1;
    options.address = QStringLiteral("127.0.0.255");
    bool made = false;
    QString error;
    const MapText map(mapOf(gridExample(options, QString(), &made, &error)));
    QVERIFY(made);
    QCOMPARE(map.controllers.size(), 4); // 165 + 165 + 165 + 5
    QStringList addresses;
    for (const MapText::Controller& controller : map.controllers) {
        QCOMPARE(controller.ports.size(), 1);
        addresses << controller.address;
    }
    addresses.sort();
    QCOMPARE(addresses.join(QLatin1Char(' ')),
             QStringLiteral("127.0.0.255 127.0.1.0 127.0.1.1 127.0.1.2"));
}

void GridExampleTest::lightsStandInRowsOnThePlan()
{
    GridOptions options;
    options.lights = 12;
    options.rows = 3;
    bool made = false;
    QString error;
    const Example example = gridExample(options, QString(), &made, &error);
    QVERIFY(made);
    const LightSpec& first = example.map.lights.at(0);
    const LightSpec& last = example.map.lights.at(11);
    QCOMPARE(last.x - first.x, 3 * 12.0);
    QCOMPARE(last.y - first.y, 2 * 12.0);
    for (const LightSpec& light : example.map.lights) { // each over its dark socket
        const QRgb socket =
            example.plan.pixel(static_cast<int>(light.x) + 15, static_cast<int>(light.y) + 15);
        QCOMPARE(socket, qRgb(8, 9, 14));
    }
}

QTEST_GUILESS_MAIN(GridExampleTest)
#include "GridExampleTest.moc"
