#include "map/Controller.h"
#include "map/Light.h"
#include "output/CITPClient.h"
#include "tests/map/MapText.h"

#include <QObject>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtEndian>
#include <QtTest>

namespace {

/// A channel block, taken from its 30 bytes of fields and what follows.
struct Block
{
    bool blind = false;
    int universe = 0;
    QByteArray data;

    bool operator==(const Block& other) const
    {
        return blind == other.blind && universe == other.universe && data == other.data;
    }
};

/// "blind universe size", then the bytes that aren't 0 as offset:hex.
QString text(const Block& block)
{
    QString line = QStringLiteral("%1%2 %3")
                       .arg(block.blind ? QStringLiteral("blind ") : QString())
                       .arg(block.universe)
                       .arg(block.data.size());
    for (int i = 0; i < block.data.size(); ++i) {
        if (block.data.at(i) != 0) {
            line +=
                QStringLiteral(" %1:%2").arg(i).arg(static_cast<quint8>(block.data.at(i)), 0, 16);
        }
    }
    return line;
}

/// A visualiser on the loopback, and the client that is connected to it.
class Stage
{
public:
    Stage()
        : client(QStringLiteral("Forge"), {}, nullptr)
    {
        m_server.listen(QHostAddress(QHostAddress::LocalHost));
        client.setEnabled(true);
        client.connectTo(QStringLiteral("127.0.0.1"), m_server.serverPort());
        m_isUp = QTest::qWaitFor([this] { return client.isReady(); }, 5000) &&
                 (m_server.hasPendingConnections() || m_server.waitForNewConnection(5000));
        m_peer = m_isUp ? m_server.nextPendingConnection() : nullptr;
    }
    bool isUp() const { return m_isUp; }

    /// The blocks sent until now. A last one, sent by the client itself, says that no more come.
    QStringList blocks()
    {
        constexpr char kMark[] = "end of the blocks";
        client.sendChannelBlock(255, kMark, sizeof kMark, false);
        QStringList list;
        const bool came = QTest::qWaitFor(
            [&] {
                m_bytes += m_peer->readAll();
                Block block;
                while (take(&block)) {
                    if (block.data == QByteArray(kMark, sizeof kMark)) {
                        return true;
                    }
                    list << text(block);
                }
                return false;
            },
            5000);
        return came ? list : QStringList(QStringLiteral("the end never came"));
    }

    CITPClient client;

private:
    bool take(Block* block)
    {
        while (m_bytes.size() >= 24) {
            const auto size = qFromLittleEndian<qint32>(m_bytes.constData() + 8);
            if (m_bytes.size() < size) {
                return false;
            }
            const QByteArray message = m_bytes.left(size);
            m_bytes.remove(0, size);
            if (message.mid(16, 8) == "SDMXChBk") {
                block->blind = message.at(24) != 0;
                block->universe = static_cast<quint8>(message.at(25));
                block->data = message.mid(30);
                return qFromLittleEndian<quint16>(message.constData() + 26) == 0 &&
                       qFromLittleEndian<quint16>(message.constData() + 28) == block->data.size();
            }
        }
        return false;
    }

    QTcpServer m_server;
    QTcpSocket* m_peer = nullptr; // the server's
    QByteArray m_bytes;
    bool m_isUp = false;
};

QByteArray controllerXml(const QByteArray& content)
{
    return "<controller><self>c</self><ip>10.1.2.3</ip><light>1</light><light>2</light>" + content +
           "</controller>";
}

/// Light 1 on port 0 at 30, light 2 on port 1 at 3.
QByteArray lights()
{
    return lightXml("1", 0, 30) + lightXml("2", 1, 3);
}

void paint(const MapModel& model)
{
    model.light(1)->mixColor(VelaColor(QColor(0x11, 0x12, 0x13)), 0);
    model.light(2)->mixColor(VelaColor(QColor(0x21, 0, 0)), 0);
}

const QByteArray kTwoPorts = "<pl><p/><p/></pl>";
const QByteArray kThreePorts = "<pl><p/><p/><p/></pl>";
const QByteArray kOtherNumbers = "<pl><p><pn>2</pn></p><p><pn>1</pn></p><p><pn>9</pn></p></pl>";

} // namespace

class ControllerMirrorTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { initForgeResources(); }
    void eachFrameIsMirrored_data();
    void eachFrameIsMirrored();
    void theMirrorIsNotGated_data();
    void theMirrorIsNotGated();
    void aFailedSendIsMirroredAllTheSame();
    void aBlockEndsWithTheUniverse();
    void framesThatLeaveAsSignalsAreMirrored();
    void withoutAFrameThereIsNoBlock_data();
    void withoutAFrameThereIsNoBlock();
    void aRecordingIsNotMirrored();
    void lightsOnIsNotMirrored();
    void theClientMayComeAndGo();
};

void ControllerMirrorTest::eachFrameIsMirrored_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("universe");
    QTest::addColumn<QStringList>("blocks");
    const auto row = [](const char* name, const QByteArray& content, int universe,
                        const QStringList& blocks) {
        QTest::newRow(name) << content << universe << blocks;
    };
    const QString first = QStringLiteral(" 30:11 31:12 32:13");
    const QString second = QStringLiteral(" 3:21");
    // A port's frame ends 16 bytes past its last channel: 32 + 16, and never below 24.
    row("version 1: port 0 alone", "<type>2</type><v>1</v>" + kTwoPorts, 5,
        {QStringLiteral("5 48") + first});
    row("version 1, broadcast: all channels", "<type>3</type><v>1</v><u>77</u>" + kTwoPorts, 5,
        {QStringLiteral("5 512") + first});
    for (const char* version : {"2", "3"}) {
        const QByteArray number(version);
        row(QByteArray("version " + number).constData(),
            "<type>2</type><v>" + number + "</v>" + kThreePorts, 5,
            {QStringLiteral("5 48") + first, QStringLiteral("6 24") + second});
        row(QByteArray("version " + number + ", broadcast: all ports").constData(),
            "<type>3</type><v>" + number + "</v>" + kThreePorts, 5,
            {QStringLiteral("5 512") + first, QStringLiteral("6 512") + second,
             QStringLiteral("7 512")});
    }
    row("universes follow the port numbers", "<type>3</type><v>2</v>" + kOtherNumbers, 5,
        {QStringLiteral("6 512") + second, QStringLiteral("5 512") + first,
         QStringLiteral("13 512")});
    row("universe 0", "<type>3</type><v>2</v>" + kTwoPorts, 0,
        {QStringLiteral("0 512") + first, QStringLiteral("1 512") + second});
    row("universe 1 is the port's own number", "<type>3</type><v>2</v>" + kTwoPorts, 1,
        {QStringLiteral("1 512") + first, QStringLiteral("2 512") + second});
    row("another version", "<type>3</type><v>4</v>" + kTwoPorts, 5, {});
}

void ControllerMirrorTest::eachFrameIsMirrored()
{
    QFETCH(const QByteArray, content);
    QFETCH(const int, universe);
    QFETCH(const QStringList, blocks);
    Stage stage;
    QVERIFY(stage.isUp());
    TestModel map(controllerXml(content) + lights());
    CITPClient* client = &stage.client;
    map.model.controller(0xc)->setCitp(&client, universe);
    for (int frame = 0; frame < 2; ++frame) {
        paint(map.model);
        QVERIFY(map.model.controller(0xc)->updateLights());
        QCOMPARE(stage.blocks(), blocks);
    }
}

void ControllerMirrorTest::theMirrorIsNotGated_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<QStringList>("blocks");
    const QStringList unicast = {QStringLiteral("7 48 30:11 31:12 32:13")};
    const QStringList broadcast = {QStringLiteral("7 512 30:11 31:12 32:13")};
    for (const char* version : {"1", "2"}) {
        for (const char* type : {"2", "3"}) {
            const QByteArray kind =
                "<type>" + QByteArray(type) + "</type><v>" + QByteArray(version) + "</v><pl><p/>";
            const QStringList& seen = *type == '2' ? unicast : broadcast;
            QTest::addRow("missing, version %s, type %s", version, type)
                << kind + "</pl><m>1</m>" << true << seen;
            QTest::addRow("off, version %s, type %s", version, type)
                << kind + "</pl>" << false << QStringList(QStringLiteral("blind ") + seen.first());
        }
    }
}

void ControllerMirrorTest::theMirrorIsNotGated()
{
    QFETCH(const QByteArray, content);
    QFETCH(const bool, enabled);
    QFETCH(const QStringList, blocks);
    Stage stage;
    QVERIFY(stage.isUp());
    TestModel map(controllerXml(content) + lights());
    CITPClient* client = &stage.client;
    Controller* const controller = map.model.controller(0xc);
    controller->setCitp(&client, 7);
    controller->setOutputEnabled(enabled);
    map.model.light(1)->mixColor(VelaColor(QColor(0x11, 0x12, 0x13)), 0);
    QVERIFY(controller->updateLights());
    QVERIFY(map.socket->sent.isEmpty());
    QCOMPARE(stage.blocks(), blocks);
}

void ControllerMirrorTest::aFailedSendIsMirroredAllTheSame()
{
    Stage stage;
    QVERIFY(stage.isUp());
    TestModel map(controllerXml("<type>2</type><v>2</v>" + kTwoPorts) + lights());
    map.socket->answer = false;
    CITPClient* client = &stage.client;
    map.model.controller(0xc)->setCitp(&client, 1);
    paint(map.model);
    QVERIFY(!map.model.controller(0xc)->updateLights());
    QCOMPARE(stage.blocks(),
             QStringList({QStringLiteral("1 48 30:11 31:12 32:13"), QStringLiteral("2 24 3:21")}));
}

/// A frame of 516 bytes is cut on the wire, and here.
void ControllerMirrorTest::aBlockEndsWithTheUniverse()
{
    Stage stage;
    QVERIFY(stage.isUp());
    TestModel map(controllerXml("<type>2</type><v>2</v>" + kTwoPorts) + lightXml("1", 0, 498) +
                  lightXml("2", 1, 0));
    CITPClient* client = &stage.client;
    map.model.controller(0xc)->setCitp(&client, 1);
    paint(map.model);
    QTest::ignoreMessage(QtDebugMsg, "Truncating: DMX data length exceed 512");
    QVERIFY(!map.model.controller(0xc)->updateLights());
    QCOMPARE(stage.blocks(), QStringList({QStringLiteral("1 512 498:11 499:12 500:13"),
                                          QStringLiteral("2 24 0:21")}));
}

void ControllerMirrorTest::framesThatLeaveAsSignalsAreMirrored()
{
    Stage stage;
    QVERIFY(stage.isUp());
    TestModel map(lights());
    Element element(QStringLiteral("<s>d</s><v>2</v><l>1</l><l>2</l><pl><p/><p/></pl>"));
    Controller controller(2, nullptr, element.node());
    controller.attach(&map.model);
    controller.computePortSizes();
    CITPClient* client = &stage.client;
    controller.setCitp(&client, 3);
    QSignalSpy frames(&controller, &Controller::signalSendPortOut);
    paint(map.model);
    QVERIFY(controller.updateLights());
    QCOMPARE(frames.size(), 2);
    QCOMPARE(stage.blocks(),
             QStringList({QStringLiteral("3 48 30:11 31:12 32:13"), QStringLiteral("4 24 3:21")}));
}

void ControllerMirrorTest::withoutAFrameThereIsNoBlock_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("lights");
    QTest::newRow("no lights") << QByteArray("<type>3</type><v>2</v>") << QByteArray();
    QTest::newRow("no ports") << QByteArray("<type>3</type><v>2</v><pl/>") << lights();
    QTest::newRow("version 1 without lights on port 0")
        << QByteArray("<type>2</type><v>1</v>") << lightXml("1", 1, 0) + lightXml("2", 1, 3);
}

void ControllerMirrorTest::withoutAFrameThereIsNoBlock()
{
    QFETCH(const QByteArray, content);
    QFETCH(const QByteArray, lights);
    Stage stage;
    QVERIFY(stage.isUp());
    TestModel map(controllerXml(content) + lights);
    CITPClient* client = &stage.client;
    map.model.controller(0xc)->setCitp(&client, 1);
    map.model.controller(0xc)->updateLights();
    QCOMPARE(stage.blocks(), QStringList());
}

void ControllerMirrorTest::aRecordingIsNotMirrored()
{
    Stage stage;
    QVERIFY(stage.isUp());
    QTemporaryDir folder;
    TestModel map(controllerXml("<type>2</type><v>2</v>") + lights());
    CITPClient* client = &stage.client;
    Controller* const controller = map.model.controller(0xc);
    controller->setCitp(&client, 1);
    QVERIFY(controller->setRecording(1, folder.filePath(QStringLiteral("c.dmx"))));
    QVERIFY(controller->updateLights());
    QCOMPARE(stage.blocks(), QStringList());
    QVERIFY(controller->setRecording(0, QString()));
    QVERIFY(controller->updateLights());
    QCOMPARE(stage.blocks(), QStringList(QStringLiteral("1 48")));
}

void ControllerMirrorTest::lightsOnIsNotMirrored()
{
    Stage stage;
    QVERIFY(stage.isUp());
    TestModel map(controllerXml("<type>2</type><v>2</v>") + lights());
    CITPClient* client = &stage.client;
    map.model.controller(0xc)->setCitp(&client, 1);
    QVERIFY(map.model.controller(0xc)->lightsOn());
    QVERIFY(map.model.controller(0xc)->lightsOff());
    QCOMPARE(stage.blocks(), QStringList());
}

void ControllerMirrorTest::theClientMayComeAndGo()
{
    Stage stage;
    QVERIFY(stage.isUp());
    TestModel map(controllerXml("<type>2</type><v>2</v>") + lights());
    Controller* const controller = map.model.controller(0xc);
    CITPClient* client = nullptr;
    controller->setCitp(&client, 1);
    QVERIFY(controller->updateLights());
    QCOMPARE(stage.blocks(), QStringList());
    client = &stage.client;
    QVERIFY(controller->updateLights());
    QCOMPARE(stage.blocks(), QStringList(QStringLiteral("1 48")));
    client = nullptr;
    QVERIFY(controller->updateLights());
    client = &stage.client;
    controller->setCitp(nullptr, 1);
    QVERIFY(controller->updateLights());
    QCOMPARE(stage.blocks(), QStringList());
    QCOMPARE(map.socket->sent.size(), 4); // the wire never waits for the mirror
}

QTEST_GUILESS_MAIN(ControllerMirrorTest)
#include "ControllerMirrorTest.moc"
