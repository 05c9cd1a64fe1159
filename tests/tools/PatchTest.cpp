#include "tools/mapgen/Patch.h"

#include <QObject>
#include <QtTest>

class PatchTest : public QObject
{
    Q_OBJECT
private slots:
    void lightsFollowEachOtherOnTheirPort();
    void aFullPortTakesNoMore_data();
    void aFullPortTakesNoMore();
    void aWrongPlaceIsRefused_data();
    void aWrongPlaceIsRefused();
    void serialNumbersStayInTheProductsRange();
    void theShapeOnThePlanIsCentred();
    void portsAreNumberedFromOne();
};

void PatchTest::lightsFollowEachOtherOnTheirPort()
{
    Patch patch(QString(), false);
    const int controller = patch.addController({}, 2);
    const quint64 a =
        patch.addLight(controller, 0, FixtureTypes::rgbNode(), QStringLiteral("a"), {});
    const quint64 b =
        patch.addLight(controller, 0, FixtureTypes::rgbwLinear(), QStringLiteral("b"), {});
    patch.addLight(controller, 1, FixtureTypes::rgbNode(), QStringLiteral("c"), {});
    patch.addLight(controller, 0, FixtureTypes::rgbNode(), QStringLiteral("d"), {});
    const Installation& map = patch.installation();
    QCOMPARE(map.lights.at(0).channel, 0);
    QCOMPARE(map.lights.at(1).channel, 3);
    QCOMPARE(map.lights.at(2).channel, 0);
    QCOMPARE(map.lights.at(3).channel, 7);
    QCOMPARE(map.lights.at(3).number, 4U);
    QCOMPARE(map.controllers.at(0).lightUids.size(), 4);
    const quint64 group = patch.addGroup(GroupSpec::Chasing, QStringLiteral("chase"), {a, b});
    QCOMPARE(map.groups.size(), 5); // four leaves and the chase
    QCOMPARE(map.groups.at(1).uid, b);
    QCOMPARE(map.groups.at(1).kind, static_cast<int>(GroupSpec::Leaf));
    QCOMPARE(map.groups.last().uid, group);
    QCOMPARE(map.groups.last().children, QVector<quint64>({a, b}));
}

void PatchTest::aFullPortTakesNoMore_data()
{
    QTest::addColumn<int>("bytes"); // of each light
    QTest::addColumn<int>("fits");
    QTest::newRow("one byte") << 1 << 512;
    QTest::newRow("three bytes leave two over") << 3 << 170;
    QTest::newRow("eight bytes end at 512") << 8 << 64;
}

void PatchTest::aFullPortTakesNoMore()
{
    QFETCH(const int, bytes);
    QFETCH(const int, fits);
    FixtureType type = FixtureTypes::rgbNode();
    type.footprint = bytes;
    Patch patch(QString(), false);
    const int controller = patch.addController({}, 1);
    for (int i = 0; i < fits; ++i) {
        QVERIFY(patch.addLight(controller, 0, type, QString(), {}) != 0);
    }
    QCOMPARE(patch.addLight(controller, 0, type, QString(), {}), quint64(0));
    QCOMPARE(patch.installation().lights.size(), fits);
    QCOMPARE(patch.installation().groups.size(), fits);
}

void PatchTest::aWrongPlaceIsRefused_data()
{
    QTest::addColumn<int>("controller");
    QTest::addColumn<int>("port");
    QTest::newRow("controller below") << -1 << 0;
    QTest::newRow("controller above") << 1 << 0;
    QTest::newRow("port below") << 0 << -1;
    QTest::newRow("port above") << 0 << 2;
}

void PatchTest::aWrongPlaceIsRefused()
{
    QFETCH(const int, controller);
    QFETCH(const int, port);
    Patch patch(QString(), false);
    patch.addController({}, 2);
    QCOMPARE(patch.addLight(controller, port, FixtureTypes::rgbNode(), QString(), {}), quint64(0));
    QVERIFY(patch.installation().lights.isEmpty());
}

void PatchTest::serialNumbersStayInTheProductsRange()
{
    FixtureType type = FixtureTypes::rgbNode();
    type.firstSerial = 100;
    type.lastSerial = 102;
    Patch patch(QString(), false);
    const int controller = patch.addController({}, 1);
    QVERIFY(patch.addLight(controller, 0, type, QString(), {}) != 0);
    QVERIFY(patch.addLight(controller, 0, type, QString(), {}) != 0);
    QCOMPARE(patch.addLight(controller, 0, type, QString(), {}), quint64(0));
    QCOMPARE(patch.installation().lights.at(0).serialNumber, quint64(101));
    QCOMPARE(patch.installation().lights.at(1).serialNumber, quint64(102));
}

void PatchTest::theShapeOnThePlanIsCentred()
{
    Patch patch(QString(), false);
    const int controller = patch.addController({}, 1);
    patch.addLight(controller, 0, FixtureTypes::rgbNode(), QString(), {100.0, 60.26});
    // The simulation draws a shape of 10 by 10 with its corner at (x + 10, y + 10).
    QCOMPARE(patch.installation().lights.at(0).x + 10 + 5, 100.0);
    QCOMPARE(patch.installation().lights.at(0).y, 45.3);
}

void PatchTest::portsAreNumberedFromOne()
{
    Patch patch(QString(), false);
    patch.addController({}, 3);
    const QVector<PortSpec> ports = patch.installation().controllers.at(0).ports;
    QCOMPARE(ports.size(), 3);
    for (int i = 0; i < ports.size(); ++i) {
        QCOMPARE(ports.at(i).number, i + 1);
    }
}

QTEST_GUILESS_MAIN(PatchTest)
#include "PatchTest.moc"
