#include "map/Controller.h"
#include "map/Light.h"
#include "output/Talvis.h"
#include "tests/map/MapText.h"

#include <QObject>
#include <QSignalSpy>
#include <QtTest>

// Packets are written out here from their tables: a header of 12 bytes, then a DMX frame with
// reserved u16, timer u16, universe u32, start code u8, data; or a port frame with universe u32,
// port u8, reserved u8, flags u16, length u16, start code u16, data.

namespace {

constexpr char kTruncating[] = "Truncating: DMX data length exceed 512";

QByteArray dmxFrame(const char* universe, const QByteArray& data)
{
    return QByteArray::fromHex("0401dc4a 0100 0101 00000000 0000 0000") +
           QByteArray::fromHex(universe) + QByteArray(1, '\0') + data;
}

QByteArray u16(int value)
{
    return QByteArray(1, static_cast<char>(value & 0xFF)) +
           QByteArray(1, static_cast<char>(value >> 8));
}

QByteArray portFrame(int port, int flags, const char* startCode, const QByteArray& data)
{
    return QByteArray::fromHex("0401dc4a 0100 0801 00000000 ffffffff") +
           QByteArray(1, static_cast<char>(port)) + QByteArray(1, '\0') + u16(flags) +
           u16(data.size()) + QByteArray::fromHex(startCode) + data;
}

/// `bytes` at `channel` of `size` zeros.
QByteArray at(int size, int channel, const QByteArray& bytes)
{
    return QByteArray(size, '\0').replace(channel, bytes.size(), bytes);
}

QByteArray controllerXml(const QByteArray& content)
{
    return "<controller><self>c</self><ip>10.1.2.3</ip>" + content + "</controller>";
}

/// One controller 0xc with lights 1 to 3: light 1 on port 0 at 0, light 2 on port 0 at 30, light 3
/// on port 1 at 3.
QByteArray threeLights(const QByteArray& content)
{
    return controllerXml("<light>1</light><light>2</light><light>3</light>" + content) +
           lightXml("1", 0, 0) + lightXml("2", 0, 30) + lightXml("3", 1, 3);
}

const QByteArray kTwoPorts = "<pl><p><pn>1</pn></p><p><pn>2</pn></p></pl>";
const QByteArray kRed = QByteArray::fromHex("ff0000");
const QByteArray kGreen = QByteArray::fromHex("00ff00");
const QByteArray kBlue = QByteArray::fromHex("0000ff");

void paint(TestModel& map)
{
    const QColor colors[] = {QColor(255, 0, 0), QColor(0, 255, 0), QColor(0, 0, 255)};
    for (quint64 uid = 1; uid <= 3; ++uid) {
        Light* const light = map.model.light(uid);
        if (light != nullptr) {
            light->mixColor(VelaColor(colors[uid - 1]), 1);
        }
    }
}

/// Address, or "*" for a broadcast, and bytes of everything that left.
QStringList wire(const TestModel& map)
{
    QStringList list;
    for (const RecordingSocket::Sent& sent : qAsConst(map.socket->sent)) {
        list << (sent.broadcast ? QStringLiteral("*") : sent.address.toString()) +
                    QLatin1Char(' ') + QString::fromLatin1(sent.bytes.toHex());
    }
    return list;
}

QString unicast(const QByteArray& bytes)
{
    return QStringLiteral("10.1.2.3 ") + QString::fromLatin1(bytes.toHex());
}

QString broadcast(const QByteArray& bytes)
{
    return QStringLiteral("* ") + QString::fromLatin1(bytes.toHex());
}

} // namespace

class ControllerFrameTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { initForgeResources(); }
    void framesAreSentByKindAndVersion_data();
    void framesAreSentByKindAndVersion();
    void flagsCarryTheNibbleInUnicastAlone();
    void nothingIsSentThroughTheGate_data();
    void nothingIsSentThroughTheGate();
    void withoutLightsThereIsNoFrame();
    void withoutPortsThereIsNoFrame();
    void aFailedSendMakesTheAnswerFalse();
    void aLongFrameIsCut();
    void buffersStartFromZero();
    void lightsAreResetBehindTheirBytes();
    void portNumbersLeadToBuffers_data();
    void portNumbersLeadToBuffers();
    void aMissingLightHidesTheLastOne();
    void aLightTwiceInTheListEndsDark();
    void addedAndRemovedLightsCount();
    void anAddressOfAllZerosIsKeptOut();
    void signalsCarryTheSameFrames_data();
    void signalsCarryTheSameFrames();
    void lightsOnReachesEveryPort_data();
    void lightsOnReachesEveryPort();
    void lightsOffSendsZeros();
    void lightsOnStopsAtTheFirstFailure();
    void lightsOnAsSignals();
};

void ControllerFrameTest::framesAreSentByKindAndVersion_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("answer");
    QTest::addColumn<QStringList>("expected");
    // Light 2 ends at 32: 48 bytes of port 0. Light 3 ends at 5: 24 of port 1.
    const QByteArray first = at(48, 0, kRed).replace(30, 3, kGreen);
    const QByteArray second = at(24, 3, kBlue);
    const QByteArray firstFull = at(512, 0, kRed).replace(30, 3, kGreen);
    const QByteArray secondFull = at(512, 3, kBlue);
    const auto row = [](const char* name, const QByteArray& content, const QStringList& expected) {
        QTest::newRow(name) << content << true << expected;
    };
    row("version 1, port 0 alone", "<type>2</type><v>1</v>" + kTwoPorts,
        {unicast(dmxFrame("ffffffff", first))});
    row("version 1, broadcast", "<type>3</type><v>1</v><u>258</u>" + kTwoPorts,
        {broadcast(dmxFrame("02010000", firstFull))});
    for (const char* version : {"2", "3"}) {
        row(QByteArray("version ").append(version).constData(),
            "<type>2</type><v>" + QByteArray(version) + "</v>" + kTwoPorts,
            {unicast(portFrame(1, 0, "0000", first)), unicast(portFrame(2, 0, "0000", second))});
    }
    row("version 2, broadcast", "<type>3</type><v>2</v><u>258</u>" + kTwoPorts,
        {broadcast(portFrame(1, 0, "0000", firstFull)),
         broadcast(portFrame(2, 0, "0000", secondFull))});
    row("a port without lights is passed over", "<type>2</type><v>2</v><pl><p/><p/><p/></pl>",
        {unicast(portFrame(1, 0, "0000", first)), unicast(portFrame(2, 0, "0000", second))});
    row("but broadcast", "<type>3</type><v>2</v><pl><p/><p/><p/></pl>",
        {broadcast(portFrame(1, 0, "0000", firstFull)),
         broadcast(portFrame(2, 0, "0000", secondFull)),
         broadcast(portFrame(3, 0, "0000", QByteArray(512, '\0')))});
    row("type 3 ports have a start code",
        "<type>2</type><v>2</v><pl><p><pt>3</pt><pf>517</pf></p><p/></pl>",
        {unicast(portFrame(1, 517, "f0ff", first)), unicast(portFrame(2, 0, "0000", second))});
    row("the last type of the file decides", "<type>2</type><v>2</v><type>x</type>" + kTwoPorts,
        {unicast(portFrame(1, 0, "0000", first)), unicast(portFrame(2, 0, "0000", second))});
    row("another version sends nothing", "<type>2</type><v>4</v>" + kTwoPorts, {});
    row("version 0 sends nothing", "<type>3</type><v>0</v>" + kTwoPorts, {});
    row("version 1 without lights on port 0", "<type>2</type><v>1</v>", {});
}

void ControllerFrameTest::framesAreSentByKindAndVersion()
{
    QFETCH(const QByteArray, content);
    QFETCH(const bool, answer);
    QFETCH(const QStringList, expected);
    const bool onlyPortOne =
        qstrcmp(QTest::currentDataTag(), "version 1 without lights on port 0") == 0;
    TestModel map(onlyPortOne ? controllerXml("<light>3</light>" + content) + lightXml("3", 1, 3)
                              : threeLights(content));
    paint(map);
    QCOMPARE(map.model.controller(0xc)->updateLights(), answer);
    QCOMPARE(wire(map), expected);
}

void ControllerFrameTest::flagsCarryTheNibbleInUnicastAlone()
{
    for (const char* type : {"2", "3"}) {
        TestModel map(
            threeLights("<type>" + QByteArray(type) + "</type><v>2</v><pl><p><pf>3</pf></p></pl>"));
        map.model.controller(0xc)->setFlagNibble(5);
        map.model.controller(0xc)->updateLights();
        QCOMPARE(map.socket->sent.size(), 1);
        QCOMPARE(map.socket->sent.first().bytes.mid(18, 2),
                 *type == '2' ? QByteArray("\x53\x00", 2) : QByteArray("\x03\x00", 2));
    }
}

void ControllerFrameTest::nothingIsSentThroughTheGate_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("enabled");
    for (const char* version : {"1", "2"}) {
        for (const char* type : {"2", "3"}) {
            const QByteArray kind =
                "<type>" + QByteArray(type) + "</type><v>" + QByteArray(version) + "</v>";
            QTest::addRow("missing, version %s, type %s", version, type)
                << kind + "<m>1</m>" << true;
            QTest::addRow("off, version %s, type %s", version, type) << kind << false;
        }
    }
}

void ControllerFrameTest::nothingIsSentThroughTheGate()
{
    QFETCH(const QByteArray, content);
    QFETCH(const bool, enabled);
    TestModel map(threeLights(content));
    Controller* const controller = map.model.controller(0xc);
    controller->setOutputEnabled(enabled);
    paint(map);
    QVERIFY(controller->updateLights());
    QVERIFY(map.socket->sent.isEmpty());
    QVERIFY(map.model.light(1)->mixValue().isBlack()); // reset all the same
    QVERIFY(controller->lightsOn());
    QVERIFY(!map.socket->sent.isEmpty());
}

void ControllerFrameTest::withoutLightsThereIsNoFrame()
{
    TestModel map(controllerXml("<type>3</type><v>2</v><light>dead</light>"));
    QVERIFY(!map.model.controller(0xc)->updateLights());
    QVERIFY(map.socket->sent.isEmpty());
    QVERIFY(map.model.controller(0xc)->lightsOn());
    QCOMPARE(map.socket->sent.size(), 1);
    const Controller detached(2, nullptr, static_cast<QDomNode*>(nullptr));
    QVERIFY(!const_cast<Controller&>(detached).updateLights());
}

void ControllerFrameTest::withoutPortsThereIsNoFrame()
{
    TestModel map(threeLights("<type>2</type><v>2</v><pl/>"));
    paint(map);
    QVERIFY(!map.model.controller(0xc)->updateLights());
    QVERIFY(map.socket->sent.isEmpty());
    QVERIFY(!map.model.light(1)->mixValue().isBlack()); // nor reset
    QVERIFY(!map.model.controller(0xc)->lightsOn());
}

void ControllerFrameTest::aFailedSendMakesTheAnswerFalse()
{
    TestModel map(threeLights("<type>2</type><v>2</v>" + kTwoPorts));
    map.socket->answer = false;
    QVERIFY(!map.model.controller(0xc)->updateLights());
    QCOMPARE(map.socket->sent.size(), 2); // the second port is tried
    map.socket->answer = true;
    QVERIFY(map.model.controller(0xc)->updateLights());
}

void ControllerFrameTest::aLongFrameIsCut()
{
    TestModel map(controllerXml("<type>2</type><v>2</v><light>1</light>") + lightXml("1", 0, 498));
    map.model.light(1)->mixColor(VelaColor(Qt::red), 0);
    QTest::ignoreMessage(QtDebugMsg, kTruncating);
    QVERIFY(!map.model.controller(0xc)->updateLights());
    QCOMPARE(wire(map), QStringList{unicast(portFrame(1, 0, "0000", at(512, 498, kRed)))});
    // A light far beyond the universe asks for more than any packet.
    TestModel far(controllerXml("<type>2</type><v>1</v><light>1</light>") +
                  lightXml("1", 0, 2147483647));
    QTest::ignoreMessage(QtDebugMsg, kTruncating);
    QVERIFY(!far.model.controller(0xc)->updateLights());
    QCOMPARE(wire(far), QStringList{unicast(dmxFrame("ffffffff", QByteArray(512, '\0')))});
}

void ControllerFrameTest::buffersStartFromZero()
{
    TestModel map(threeLights("<type>2</type><v>1</v>"));
    paint(map);
    map.model.controller(0xc)->updateLights();
    map.socket->sent.clear();
    map.model.light(1)->mixColorRef().reset(); // an invalid light writes nothing
    map.model.controller(0xc)->updateLights();
    QCOMPARE(wire(map), QStringList{unicast(dmxFrame("ffffffff", QByteArray(48, '\0')))});
}

void ControllerFrameTest::lightsAreResetBehindTheirBytes()
{
    TestModel map(threeLights("<type>2</type><v>2</v>" + kTwoPorts));
    paint(map);
    map.model.controller(0xc)->updateLights();
    for (quint64 uid = 1; uid <= 3; ++uid) {
        QVERIFY(map.model.light(uid)->mixValue().isBlack());
        QCOMPARE(map.model.light(uid)->simColor(), QColor(Qt::black));
    }
}

void ControllerFrameTest::portNumbersLeadToBuffers_data()
{
    QTest::addColumn<QByteArray>("list");
    QTest::addColumn<int>("port");
    QTest::addColumn<int>("index"); // whose broadcast frame shows the light, -1 for none
    QTest::addColumn<bool>("reset");
    const QByteArray swapped = "<pl><p><pn>2</pn></p><p><pn>1</pn></p></pl>";
    QTest::newRow("port 0 is the port numbered 1") << kTwoPorts << 0 << 0 << true;
    QTest::newRow("port 1 is the port numbered 2") << kTwoPorts << 1 << 1 << true;
    QTest::newRow("numbers out of order, 0") << swapped << 0 << 1 << true;
    QTest::newRow("numbers out of order, 1") << swapped << 1 << 0 << true;
    QTest::newRow("one behind the highest number goes to the first buffer")
        << kTwoPorts << 2 << 0 << true;
    QTest::newRow("further on is skipped") << kTwoPorts << 3 << -1 << false;
    QTest::newRow("far on is skipped") << kTwoPorts << 255 << -1 << false;
    QTest::newRow("a number between goes to the first buffer")
        << QByteArray("<pl><p><pn>1</pn></p><p><pn>9</pn></p></pl>") << 4 << 0 << true;
    QTest::newRow("of one number twice the later wins")
        << QByteArray("<pl><p><pn>1</pn></p><p><pn>1</pn></p></pl>") << 0 << 1 << true;
    QTest::newRow("the highest number there is")
        << QByteArray("<pl><p/><p><pn>255</pn></p></pl>") << 254 << 1 << true;
    QTest::newRow("behind the highest number there is")
        << QByteArray("<pl><p/><p><pn>255</pn></p></pl>") << 255 << 0 << true;
}

void ControllerFrameTest::portNumbersLeadToBuffers()
{
    QFETCH(const QByteArray, list);
    QFETCH(const int, port);
    QFETCH(const int, index);
    QFETCH(const bool, reset);
    TestModel map(controllerXml("<type>3</type><v>2</v><light>1</light>" + list) +
                  lightXml("1", port, 0));
    map.model.light(1)->mixColor(VelaColor(Qt::red), 0);
    QVERIFY(map.model.controller(0xc)->updateLights());
    QCOMPARE(map.socket->sent.size(), 2);
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(map.socket->sent.at(i).bytes.mid(24),
                 i == index ? at(512, 0, kRed) : QByteArray(512, '\0'));
    }
    QCOMPARE(map.model.light(1)->mixValue().isBlack(), reset);
}

void ControllerFrameTest::aMissingLightHidesTheLastOne()
{
    TestModel map(
        controllerXml("<type>3</type><v>1</v><light>dead</light><light>1</light><light>2</light>") +
        lightXml("1", 0, 0) + lightXml("2", 0, 30));
    for (int frame = 0; frame < 2; ++frame) {
        map.socket->sent.clear();
        paint(map);
        QVERIFY(map.model.controller(0xc)->updateLights());
        QCOMPARE(wire(map), QStringList{broadcast(dmxFrame("00000000", at(512, 0, kRed)))});
        QVERIFY(!map.model.light(2)->mixValue().isBlack());
        map.model.light(2)->reset();
    }
}

void ControllerFrameTest::aLightTwiceInTheListEndsDark()
{
    TestModel map(controllerXml("<type>3</type><v>1</v><light>1</light><light>1</light>") +
                  lightXml("1", 0, 0));
    paint(map);
    map.model.controller(0xc)->updateLights();
    QCOMPARE(wire(map), QStringList{broadcast(dmxFrame("00000000", QByteArray(512, '\0')))});
}

void ControllerFrameTest::addedAndRemovedLightsCount()
{
    TestModel map(controllerXml("<type>3</type><v>1</v><light>1</light>") + lightXml("1", 0, 0) +
                  lightXml("2", 0, 30));
    Controller* const controller = map.model.controller(0xc);
    controller->addLight(2);
    paint(map);
    controller->updateLights();
    QCOMPARE(wire(map),
             QStringList{broadcast(dmxFrame("00000000", at(512, 0, kRed).replace(30, 3, kGreen)))});
    controller->removeLight(1);
    map.socket->sent.clear();
    paint(map);
    controller->updateLights();
    QCOMPARE(wire(map), QStringList{broadcast(dmxFrame("00000000", at(512, 30, kGreen)))});
}

void ControllerFrameTest::anAddressOfAllZerosIsKeptOut()
{
    TestModel map("<controller><type>2</type><self>c</self><v>1</v><light>1</light></controller>" +
                  lightXml("1", 0, 0));
    map.model.controller(0xc)->updateLights();
    QCOMPARE(map.socket->sent.size(), 1); // the gate is the socket's
    QCOMPARE(map.socket->sent.first().address, QHostAddress(QHostAddress::AnyIPv4));
}

void ControllerFrameTest::signalsCarryTheSameFrames_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("version");
    for (const int type : {2, 3}) {
        for (const char* version : {"1", "2", "3"}) {
            QTest::addRow("type %d, version %s", type, version) << type << version;
        }
    }
}

void ControllerFrameTest::signalsCarryTheSameFrames()
{
    QFETCH(const int, type);
    QFETCH(const QString, version);
    TestModel map(lightXml("1", 0, 0) + lightXml("2", 1, 498));
    Element element(QStringLiteral("<s>c</s><ip>10.1.2.3</ip><u>7</u><v>%1</v><l>1</l><l>2</l>"
                                   "<pl><p><pf>3</pf></p><p><pt>3</pt></p></pl>")
                        .arg(version));
    Controller silent(type, nullptr, element.node());
    silent.attach(&map.model);
    silent.setFlagNibble(2);
    silent.computePortSizes();
    QSignalSpy frame(&silent, &Controller::signalSendDmxFrame);
    QSignalSpy broadcastFrame(&silent, &Controller::signalSendBroadcastDmxFrame);
    QSignalSpy port(&silent, &Controller::signalSendPortOut);
    QSignalSpy broadcastPort(&silent, &Controller::signalSendBroadcastPortOut);
    paint(map);
    QVERIFY(silent.updateLights());
    QVERIFY(map.socket->sent.isEmpty());
    QCOMPARE(frame.size(), type == 2 && version == QLatin1String("1") ? 1 : 0);
    QCOMPARE(broadcastFrame.size(), type == 3 && version == QLatin1String("1") ? 1 : 0);
    QCOMPARE(port.size(), type == 2 && version != QLatin1String("1") ? 2 : 0);
    QCOMPARE(broadcastPort.size(), type == 3 && version != QLatin1String("1") ? 2 : 0);

    // The same through a packet layer.
    Controller loud(type, map.model.talvis(), element.node());
    loud.attach(&map.model);
    loud.setFlagNibble(2);
    loud.computePortSizes();
    paint(map);
    if (type == 2 && version != QLatin1String("1")) {
        QTest::ignoreMessage(QtDebugMsg, kTruncating);
    }
    loud.updateLights();
    QStringList fromSignals;
    for (const QList<QVariant>& one : qAsConst(frame)) {
        QCOMPARE(one.at(0).toString(), QStringLiteral("10.1.2.3"));
        QCOMPARE(one.at(1).toInt(), 0);
        QCOMPARE(one.at(2).toInt(), 0);
        fromSignals << unicast(dmxFrame("ffffffff", one.at(3).toByteArray()));
    }
    for (const QList<QVariant>& one : qAsConst(broadcastFrame)) {
        QCOMPARE(one.at(0).toUInt(), 7U);
        fromSignals << broadcast(dmxFrame("07000000", one.at(3).toByteArray()));
    }
    const auto startCode = [](const QVariant& low) { // its signal holds the low byte alone
        return low.toUInt() == 0xF0 ? "f0ff" : "0000";
    };
    for (const QList<QVariant>& one : qAsConst(port)) {
        QCOMPARE(one.at(0).toString(), QStringLiteral("10.1.2.3"));
        QCOMPARE(one.at(1).toUInt(), 0xFFFFFFFFU);
        fromSignals << unicast(portFrame(one.at(2).toInt(), one.at(3).toInt(), startCode(one.at(4)),
                                         one.at(5).toByteArray()));
    }
    for (const QList<QVariant>& one : qAsConst(broadcastPort)) {
        QCOMPARE(one.at(0).toUInt(), 0xFFFFFFFFU);
        fromSignals << broadcast(portFrame(one.at(1).toInt(), one.at(2).toInt(),
                                           startCode(one.at(3)), one.at(4).toByteArray()));
    }
    QCOMPARE(fromSignals, wire(map));
}

void ControllerFrameTest::lightsOnReachesEveryPort_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("answer");
    QTest::addColumn<QStringList>("expected");
    const QByteArray full(512, '\xFF');
    QTest::newRow("version 1") << QByteArray("<type>2</type><v>1</v>") << true
                               << QStringList{unicast(dmxFrame("ffffffff", full))};
    QTest::newRow("version 1, a broadcast controller")
        << QByteArray("<type>3</type><v>1</v>") << true
        << QStringList{unicast(dmxFrame("ffffffff", full))};
    QTest::newRow("version 2, flags 0")
        << QByteArray("<type>3</type><v>2</v><pl><p><pf>9</pf></p><p><pt>3</pt></p></pl>") << true
        << QStringList{unicast(portFrame(1, 0, "0000", full)),
                       unicast(portFrame(2, 0, "f0ff", full))};
    QTest::newRow("version 2 without ports")
        << QByteArray("<type>2</type><v>2</v><pl/>") << false << QStringList();
    QTest::newRow("another version")
        << QByteArray("<type>2</type><v>4</v>") << false << QStringList();
}

void ControllerFrameTest::lightsOnReachesEveryPort()
{
    QFETCH(const QByteArray, content);
    QFETCH(const bool, answer);
    QFETCH(const QStringList, expected);
    TestModel map(controllerXml(content));
    QCOMPARE(map.model.controller(0xc)->lightsOn(), answer);
    QCOMPARE(wire(map), expected);
}

void ControllerFrameTest::lightsOffSendsZeros()
{
    TestModel map(controllerXml("<type>2</type><v>3</v>"));
    QVERIFY(map.model.controller(0xc)->lightsOff());
    QCOMPARE(wire(map), QStringList{unicast(portFrame(1, 0, "0000", QByteArray(512, '\0')))});
}

void ControllerFrameTest::lightsOnStopsAtTheFirstFailure()
{
    TestModel map(controllerXml("<type>2</type><v>2</v>" + kTwoPorts));
    map.socket->answer = false;
    QVERIFY(!map.model.controller(0xc)->lightsOn());
    QCOMPARE(map.socket->sent.size(), 1);
    TestModel one(controllerXml("<type>2</type><v>1</v>"));
    one.socket->answer = false;
    QVERIFY(!one.model.controller(0xc)->lightsOn());
}

void ControllerFrameTest::lightsOnAsSignals()
{
    Element element(QStringLiteral("<ip>10.1.2.3</ip><v>2</v>"
                                   "<pl><p><pn>4</pn><pf>9</pf><pt>3</pt></p></pl>"));
    Controller controller(2, nullptr, element.node());
    QSignalSpy port(&controller, &Controller::signalSendPortOut);
    QVERIFY(controller.lightsOn());
    QCOMPARE(port.size(), 1);
    QCOMPARE(port.first().at(0).toString(), QStringLiteral("10.1.2.3"));
    QCOMPARE(port.first().at(1).toUInt(), 0U); // unlike the direct way
    QCOMPARE(port.first().at(2).toUInt(), 4U);
    QCOMPARE(port.first().at(3).toUInt(), 9U); // unlike the direct way
    QCOMPARE(port.first().at(4).toUInt(), 0xF0U);
    QCOMPARE(port.first().at(5).toByteArray(), QByteArray(512, '\xFF'));
    Element old(QStringLiteral("<ip>10.1.2.3</ip>"));
    Controller first(2, nullptr, old.node());
    QSignalSpy frame(&first, &Controller::signalSendDmxFrame);
    QVERIFY(first.lightsOff());
    QCOMPARE(frame.size(), 1);
    QCOMPARE(frame.first().at(3).toByteArray(), QByteArray(512, '\0'));
}

QTEST_GUILESS_MAIN(ControllerFrameTest)

#include "ControllerFrameTest.moc"
