#include "map/MapModel.h"

#include "map/Controller.h"
#include "map/Group.h"
#include "map/Light.h"
#include "output/Talvis.h"
#include "tests/map/MapText.h"

#include <QObject>
#include <QSignalSpy>
#include <QtTest>

#include <algorithm>

namespace {

const QByteArray kSync = QByteArray::fromHex("0401dc4a 0100 0901 00000000 00000000");

QByteArray smallMap()
{
    return "<imagefile>plan.png</imagefile><version>2</version><postsync>1</postsync>"
           "<controller><type>3</type><self>c</self><v>1</v><light>1</light></controller>" +
           lightXml("1", 0, 0, "<x>40</x><y>30</y>") + lightXml("2", 0, 0) +
           groupXml("1", 3, {"1"});
}

int syncs(const TestModel& map)
{
    return static_cast<int>(
        std::count_if(map.socket->sent.cbegin(), map.socket->sent.cend(),
                      [](const RecordingSocket::Sent& sent) { return sent.bytes == kSync; }));
}

} // namespace

class MapModelTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { initForgeResources(); }
    void tenSyncsAreSentAtTheStart();
    void emptyModelsAnswer();
    void objectsAreFoundByUid();
    void clearTellsAndFrees();
    void clearReportsProgressByTheHundredth_data();
    void clearReportsProgressByTheHundredth();
    void clearKeepsBoundsVersionAndPostSync();
    void aModelCanBeLoadedAgain();
    void simulateOnlyResetsEveryLight();
    void framesServeTheControllers();
    void noSyncFollowsAFrame_data();
    void noSyncFollowsAFrame();
    void lightsOfNoControllerStay();
};

void MapModelTest::tenSyncsAreSentAtTheStart()
{
    auto* const socket = new RecordingSocket;
    const MapModel model{std::unique_ptr<TalvisSocket>(socket)};
    QCOMPARE(socket->sent.size(), 10);
    for (const RecordingSocket::Sent& sent : qAsConst(socket->sent)) {
        QVERIFY(sent.broadcast);
        QCOMPARE(sent.bytes, kSync);
    }
    QVERIFY(model.talvis() != nullptr);
    QCOMPARE(model.talvis()->socket(), socket);
}

void MapModelTest::emptyModelsAnswer()
{
    TestModel map;
    QVERIFY(map.model.light(1) == nullptr);
    QVERIFY(map.model.group(1) == nullptr);
    QVERIFY(map.model.controller(1) == nullptr);
    QVERIFY(map.model.lightsHash().isEmpty());
    QVERIFY(map.model.groupsHash().isEmpty());
    QVERIFY(map.model.controllersHash().isEmpty());
    QVERIFY(map.model.lightUids().isEmpty());
    QVERIFY(map.model.imageFile().isEmpty());
    QCOMPARE(map.model.bounds(), QRect(0, 0, 0, 0));
    QVERIFY(!map.model.simulateOnly());
    QVERIFY(!map.model.postSync());
    map.model.updateLights();
    map.model.setSimulateOnly(true);
    map.model.updateLights();
    QVERIFY(map.socket->sent.isEmpty());
}

void MapModelTest::objectsAreFoundByUid()
{
    TestModel map(smallMap());
    QVERIFY(map.loaded);
    QCOMPARE(map.model.light(2)->uid(), quint64(2));
    QCOMPARE(map.model.group(1)->uid(), quint64(1));
    QCOMPARE(map.model.controller(0xc)->uid(), quint64(0xc));
    QVERIFY(map.model.light(3) == nullptr);
    QList<quint64> uids = map.model.lightUids();
    std::sort(uids.begin(), uids.end());
    QCOMPARE(uids, (QList<quint64>{1, 2}));
    QCOMPARE(map.model.groupUids(), QList<quint64>{1});
    QCOMPARE(map.model.controllerUids(), QList<quint64>{0xc});
    QCOMPARE(map.model.lightsHash().value(2), map.model.light(2));
    QCOMPARE(map.model.groupsHash().size(), 1);
    QCOMPARE(map.model.controllersHash().value(0xc), map.model.controller(0xc));
}

void MapModelTest::clearTellsAndFrees()
{
    TestModel map(smallMap());
    QSignalSpy lights(&map.model, &MapModel::deletedLight);
    QSignalSpy groups(&map.model, &MapModel::deletedGroup);
    QSignalSpy cleared(&map.model, &MapModel::clearedMap);
    QSignalSpy started(&map.model, &MapModel::progressStarted);
    QStringList order;
    connect(&map.model, &MapModel::deletedLight, this, [&](qulonglong uid) {
        order << QStringLiteral("light");
        QVERIFY(map.model.light(uid) == nullptr); // gone by then
    });
    connect(&map.model, &MapModel::deletedGroup, this, [&] { order << QStringLiteral("group"); });
    connect(&map.model, &MapModel::clearedMap, this, [&] {
        order << QStringLiteral("cleared");
        QVERIFY(map.model.controllersHash().isEmpty());
    });
    connect(&map.model, &MapModel::progressUpdated, this,
            [&](int value) { order << QString::number(value); });
    QPointer<Light> light = map.model.light(1);
    QPointer<Group> group = map.model.group(1);
    QPointer<Controller> controller = map.model.controller(0xc);
    QVERIFY(map.model.clear());
    QVERIFY(light.isNull() && group.isNull() && controller.isNull());
    QCOMPARE(lights.size(), 2);
    QCOMPARE(groups.size(), 1);
    QCOMPARE(groups.first().first().toULongLong(), qulonglong(1));
    QCOMPARE(cleared.size(), 1);
    QCOMPARE(started.first(), (QList<QVariant>{0, 4, QStringLiteral("Clearing Map...")}));
    QCOMPARE(order, (QStringList{"light", "1", "light", "2", "group", "3", "4", "4", "cleared"}));
    QVERIFY(map.model.imageFile().isEmpty());
    map.model.updateLights();
    QVERIFY(map.socket->sent.isEmpty());
}

void MapModelTest::clearReportsProgressByTheHundredth_data()
{
    QTest::addColumn<int>("objects");
    QTest::addColumn<int>("step");
    QTest::newRow("none") << 0 << 1;
    QTest::newRow("99") << 99 << 1;
    QTest::newRow("199") << 199 << 1;
    QTest::newRow("200") << 200 << 2;
    QTest::newRow("1050") << 1050 << 10;
}

void MapModelTest::clearReportsProgressByTheHundredth()
{
    QFETCH(const int, objects);
    QFETCH(const int, step);
    QByteArray xml;
    for (int i = 0; i < objects; ++i) {
        const QByteArray uid = QByteArray::number(i + 1, 16);
        xml += i % 2 == 0 ? lightXml(uid.constData(), 0, 0) : groupXml(uid.constData(), 2, {});
    }
    TestModel map(xml);
    QSignalSpy progress(&map.model, &MapModel::progressUpdated);
    map.model.clear();
    QList<int> expected;
    for (int i = step; i <= objects; i += step) {
        expected << i;
    }
    expected << objects;
    QList<int> values;
    for (const QList<QVariant>& one : qAsConst(progress)) {
        values << one.first().toInt();
    }
    QCOMPARE(values, expected);
}

void MapModelTest::clearKeepsBoundsVersionAndPostSync()
{
    TestModel map(smallMap());
    map.model.clear();
    QCOMPARE(map.model.bounds(), QRect(0, 0, 40, 30));
    QCOMPARE(map.model.version(), QStringLiteral("2"));
    QVERIFY(map.model.postSync());
}

void MapModelTest::aModelCanBeLoadedAgain()
{
    TestModel map(smallMap());
    map.model.clear();
    const TextFile file("<map>" + lightXml("1", 0, 0) + "</map>");
    QVERIFY(map.model.load(file.path()));
    QCOMPARE(map.model.lightUids(), QList<quint64>{1});
    QCOMPARE(map.model.bounds(), QRect(0, 0, 0, 0));
    map.model.setSimulateOnly(true);
    map.model.light(1)->mixColor(VelaColor(Qt::red), 0);
    map.model.updateLights();
    QVERIFY(map.model.light(1)->mixValue().isBlack());
    // Loaded once more on top: the uid is taken.
    QSignalSpy said(&map.model, &MapModel::msg);
    QVERIFY(map.model.load(file.path()));
    QCOMPARE(said.last().first().toString(), QStringLiteral("loadLight: uid already exists"));
}

void MapModelTest::simulateOnlyResetsEveryLight()
{
    TestModel map(smallMap());
    map.model.setSimulateOnly(true);
    for (const quint64 uid : {1, 2}) {
        map.model.light(uid)->mixColor(VelaColor(Qt::red), 0);
        map.model.light(uid)->mixSimColor(Qt::red, 0);
    }
    map.model.updateLights();
    for (const quint64 uid : {1, 2}) {
        QVERIFY(map.model.light(uid)->mixValue().isBlack());
        QCOMPARE(map.model.light(uid)->simColor(), QColor(Qt::black));
    }
    QVERIFY(map.socket->sent.isEmpty());
}

void MapModelTest::framesServeTheControllers()
{
    TestModel map(smallMap());
    map.model.light(1)->mixColor(VelaColor(Qt::red), 0);
    map.model.updateLights();
    QCOMPARE(map.socket->sent.size(), 1);
    QCOMPARE(map.socket->sent.first().bytes.mid(21, 3), QByteArray::fromHex("ff0000"));
}

void MapModelTest::noSyncFollowsAFrame_data()
{
    QTest::addColumn<bool>("armed");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("count");
    QTest::newRow("the file asks") << false << smallMap() << 0;
    QTest::newRow("asked for and armed") << true << smallMap() << 1;
    QTest::newRow("armed without controllers") << true << QByteArray("<postsync>1</postsync>") << 0;
    QTest::newRow("armed, the file says no") << true << smallMap() + "<postsync>0</postsync>" << 0;
}

void MapModelTest::noSyncFollowsAFrame()
{
    QFETCH(const bool, armed);
    QFETCH(const QByteArray, content);
    QFETCH(const int, count);
    TestModel map(content);
    map.model.setSyncArmed(armed);
    map.model.updateLights();
    QCOMPARE(syncs(map), count);
    map.model.setSimulateOnly(true);
    map.model.updateLights();
    QCOMPARE(syncs(map), count);
}

void MapModelTest::lightsOfNoControllerStay()
{
    TestModel map(smallMap());
    map.model.light(2)->mixColor(VelaColor(Qt::red), 0);
    map.model.updateLights();
    QVERIFY(map.model.light(2)->mixValue() == VelaColor(Qt::red)); // nobody resets it
}

QTEST_GUILESS_MAIN(MapModelTest)

#include "MapModelTest.moc"
