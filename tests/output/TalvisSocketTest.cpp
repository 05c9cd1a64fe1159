#include "output/TalvisSocket.h"

#include "output/Talvis.h"

#include <QFile>
#include <QNetworkDatagram>
#include <QObject>
#include <QSignalSpy>
#include <QtTest>

#include <algorithm>
#include <sys/socket.h>

// Runs in a network namespace of its own, where there is a loopback and nothing else.

namespace {

InterfaceRecord interface(const QString& name, const QVector<InterfaceAddress>& addresses,
                          bool isUp = true, bool isLoopBack = false)
{
    return {name, isUp, isLoopBack, addresses};
}

InterfaceAddress entry(const QString& ip, const QString& netmask)
{
    return {QHostAddress(ip), QHostAddress(netmask)};
}

/// The system's own size of a socket buffer, in bytes.
int bufferSize(qintptr descriptor, int option)
{
    int size = -1;
    socklen_t length = sizeof size;
    return getsockopt(static_cast<int>(descriptor), SOL_SOCKET, option, &size, &length) == 0 ? size
                                                                                             : -1;
}

/// What the system makes of a wished size.
int grantedSize(int option, int wished)
{
    QUdpSocket plain;
    if (!plain.bind(QHostAddress("127.0.0.1"))) {
        return -1;
    }
    const auto descriptor = static_cast<int>(plain.socketDescriptor());
    setsockopt(descriptor, SOL_SOCKET, option, &wished, sizeof wished);
    return bufferSize(descriptor, option);
}

constexpr char kPortRangePath[] = "/proc/sys/net/ipv4/ip_local_port_range";

QByteArray localPortRange()
{
    QFile file(QString::fromLatin1(kPortRangePath));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool setLocalPortRange(const QByteArray& range)
{
    QFile file(QString::fromLatin1(kPortRangePath));
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
           file.write(range) == range.size();
}

/// A listener at the protocol's port.
bool listen(QUdpSocket& socket, const QHostAddress& address)
{
    return socket.bind(address, TalvisSocket::kDestinationPort);
}

} // namespace

Q_DECLARE_METATYPE(QVector<InterfaceRecord>)

class TalvisSocketTest : public QObject
{
    Q_OBJECT
private slots:
    void itBindsToAPortOfTheSystemsChoice();
    void aFailedBindIsLoggedAndSendsStillGoOut();
    void bufferSizesAreAskedFor();
    void theBroadcastAddressComesFromEth0_data();
    void theBroadcastAddressComesFromEth0();
    void theWalkIsRepeatedUntilEth0IsFound();
    void theMachinesInterfacesAreListed();
    void datagramsGoToPort6038_data();
    void datagramsGoToPort6038();
    void sendsAnswerFalseForWhatIsNoAddress_data();
    void sendsAnswerFalseForWhatIsNoAddress();
    void anUnreachableNetworkAnswersFalse();
    void aDatagramTooLongAnswersFalse();
    void readingTakesOneDatagram();
    void aDatagramIsCutAtTheBuffersSize();
    void arrivalsReachTheDecoder();
    void startSyncsAreHeardOnTheBroadcastAddress();
};

void TalvisSocketTest::itBindsToAPortOfTheSystemsChoice()
{
    TalvisSocket first(nullptr);
    const TalvisSocket second(nullptr);
    QCOMPARE(first.state(), QAbstractSocket::BoundState);
    QVERIFY(first.localPort() != 0);
    QVERIFY(first.localPort() != second.localPort());
    QCOMPARE(first.interfaceAddress(), first.localAddress());
    QCOMPARE(first.broadcastAddress(), QHostAddress("255.255.255.255"));
}

void TalvisSocketTest::aFailedBindIsLoggedAndSendsStillGoOut()
{
    QUdpSocket listener;
    QVERIFY(listen(listener, QHostAddress("127.0.0.1")));
    QUdpSocket occupant;
    QVERIFY(occupant.bind());
    const QByteArray port = QByteArray::number(occupant.localPort());
    const QByteArray range = localPortRange();
    // The only port that the system may choose is taken.
    if (!setLocalPortRange(port + ' ' + port)) {
        QSKIP("the namespace's range of local ports can't be set here");
    }
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(QStringLiteral(
                                         "^TalvisSocket failed to bind to port: \".+\"$")));
    TalvisSocket socket(nullptr);
    QVERIFY(setLocalPortRange(range));
    QVERIFY(socket.state() != QAbstractSocket::BoundState);
    QVERIFY(socket.sendTo("127.0.0.1", "late", 4));
    QVERIFY(listener.waitForReadyRead(5000));
    QCOMPARE(listener.receiveDatagram().data(), QByteArray("late"));
}

void TalvisSocketTest::bufferSizesAreAskedFor()
{
    const TalvisSocket socket(nullptr);
    QUdpSocket plain;
    QVERIFY(plain.bind(QHostAddress("127.0.0.1")));
    const int receive = bufferSize(socket.socketDescriptor(), SO_RCVBUF);
    const int send = bufferSize(socket.socketDescriptor(), SO_SNDBUF);
    QCOMPARE(receive, grantedSize(SO_RCVBUF, 200000));
    QCOMPARE(send, grantedSize(SO_SNDBUF, 52428800));
    QVERIFY(receive != bufferSize(plain.socketDescriptor(), SO_RCVBUF));
    QVERIFY(send > bufferSize(plain.socketDescriptor(), SO_SNDBUF));
}

void TalvisSocketTest::theBroadcastAddressComesFromEth0_data()
{
    QTest::addColumn<QVector<InterfaceRecord>>("interfaces");
    QTest::addColumn<QString>("broadcast");
    QTest::addColumn<QString>("local"); // empty: the address bound
    using List = QVector<InterfaceRecord>;
    const QString eth0 = QStringLiteral("eth0");
    const QString limited = QStringLiteral("255.255.255.255");
    const InterfaceAddress wide = entry("10.1.2.3", "255.255.0.0");
    const InterfaceAddress narrow = entry("192.168.7.9", "255.255.255.0");
    const InterfaceAddress six = entry("fe80::1", "ffff:ffff:ffff:ffff::");
    const InterfaceRecord lo = interface("lo", {entry("127.0.0.1", "255.0.0.0")}, true, true);

    QTest::newRow("up") << List{lo, interface(eth0, {wide})} << "10.1.255.255"
                        << "10.1.2.3";
    QTest::newRow("down") << List{interface(eth0, {wide}, false)} << limited << "";
    QTest::newRow("loopback") << List{interface(eth0, {wide}, true, true)} << limited << "";
    QTest::newRow("IPv6 first") << List{interface(eth0, {six, wide})} << "10.1.255.255"
                                << "10.1.2.3";
    QTest::newRow("IPv6 alone") << List{interface(eth0, {six})} << limited << "";
    QTest::newRow("no address") << List{interface(eth0, {})} << limited << "";
    QTest::newRow("two addresses") << List{interface(eth0, {narrow, wide})} << "192.168.7.255"
                                   << "192.168.7.9";
    QTest::newRow("other name") << List{interface("eth1", {wide})} << limited << "";
    QTest::newRow("longer name") << List{interface("eth0.5", {wide})} << limited << "";
    QTest::newRow("capitals") << List{interface("ETH0", {wide})} << limited << "";
    QTest::newRow("last wins") << List{interface(eth0, {wide}), interface(eth0, {narrow})}
                               << "192.168.7.255"
                               << "192.168.7.9";
    QTest::newRow("last is down") << List{interface(eth0, {wide}), interface(eth0, {narrow}, false)}
                                  << "10.1.255.255"
                                  << "10.1.2.3";
    QTest::newRow("others follow")
        << List{interface(eth0, {wide}), interface("eth1", {narrow}), lo} << "10.1.255.255"
        << "10.1.2.3";
    QTest::newRow("single host") << List{interface(eth0, {entry("10.1.2.3", "255.255.255.255")})}
                                 << "10.1.2.3"
                                 << "10.1.2.3";
    QTest::newRow("none at all") << List{} << limited << "";
}

void TalvisSocketTest::theBroadcastAddressComesFromEth0()
{
    QFETCH(const QVector<InterfaceRecord>, interfaces);
    QFETCH(const QString, broadcast);
    QFETCH(const QString, local);
    TalvisSocket socket(nullptr);
    socket.setInterfaceSource([&interfaces] { return interfaces; });
    QVERIFY(!socket.sendBroadcast("x", 1)); // nothing here can be reached
    QCOMPARE(socket.broadcastAddress(), QHostAddress(broadcast));
    QCOMPARE(socket.interfaceAddress(),
             local.isEmpty() ? socket.localAddress() : QHostAddress(local));
}

void TalvisSocketTest::theWalkIsRepeatedUntilEth0IsFound()
{
    int walks = 0;
    QVector<InterfaceRecord> interfaces = {interface("wlan0", {entry("10.9.9.9", "255.0.0.0")})};
    TalvisSocket socket(nullptr);
    socket.setInterfaceSource([&] {
        ++walks;
        return interfaces;
    });
    QCOMPARE(walks, 0);
    socket.sendBroadcast("x", 1);
    socket.sendBroadcast("x", 1);
    QCOMPARE(walks, 2);
    interfaces << interface("eth0", {entry("10.1.2.3", "255.255.0.0")});
    socket.sendBroadcast("x", 1);
    QCOMPARE(walks, 3);
    QCOMPARE(socket.broadcastAddress(), QHostAddress("10.1.255.255"));
    interfaces.last().addresses = {entry("10.7.7.7", "255.255.255.0")};
    socket.sendBroadcast("x", 1);
    QCOMPARE(walks, 3);
    QCOMPARE(socket.broadcastAddress(), QHostAddress("10.1.255.255"));
}

void TalvisSocketTest::theMachinesInterfacesAreListed()
{
    const QVector<InterfaceRecord> records = TalvisSocket::systemInterfaces();
    const auto lo = std::find_if(records.cbegin(), records.cend(),
                                 [](const InterfaceRecord& one) { return one.isLoopBack; });
    QVERIFY(lo != records.cend());
    QVERIFY(lo->isUp);
    QCOMPARE(lo->name, QStringLiteral("lo"));
    QVERIFY(!lo->addresses.isEmpty());
    QCOMPARE(lo->addresses.first().ip, QHostAddress("127.0.0.1"));
    QCOMPARE(lo->addresses.first().netmask, QHostAddress("255.0.0.0"));
}

void TalvisSocketTest::datagramsGoToPort6038_data()
{
    QTest::addColumn<bool>("ready");
    QTest::newRow("address as text") << false;
    QTest::newRow("address ready") << true;
}

void TalvisSocketTest::datagramsGoToPort6038()
{
    QFETCH(const bool, ready);
    QUdpSocket listener;
    QVERIFY(listen(listener, QHostAddress("127.0.0.2")));
    TalvisSocket socket(nullptr);
    const QByteArray bytes("a\0b", 3);
    QVERIFY(ready ? socket.sendToAddress(QHostAddress("127.0.0.2"), bytes.constData(), 3)
                  : socket.sendTo("127.0.0.2", bytes.constData(), 3));
    QVERIFY(listener.waitForReadyRead(5000));
    const QNetworkDatagram heard = listener.receiveDatagram();
    QCOMPARE(heard.data(), bytes);
    QCOMPARE(heard.senderPort(), static_cast<int>(socket.localPort()));
}

void TalvisSocketTest::sendsAnswerFalseForWhatIsNoAddress_data()
{
    QTest::addColumn<QByteArray>("ip");
    QTest::addColumn<bool>("sent");
    QTest::newRow("null") << QByteArray() << false;
    QTest::newRow("empty") << QByteArray("") << false;
    QTest::newRow("junk") << QByteArray("not an address") << false;
    QTest::newRow("a name") << QByteArray("localhost") << false;
    QTest::newRow("out of range") << QByteArray("127.0.0.256") << false;
    QTest::newRow("all zero") << QByteArray("0.0.0.0") << false;
    QTest::newRow("all zero, short") << QByteArray("0") << false;
    QTest::newRow("all zero, IPv6") << QByteArray("::") << false;
    QTest::newRow("all zero, mapped") << QByteArray("::ffff:0.0.0.0") << false;
    QTest::newRow("loopback") << QByteArray("127.0.0.1") << true;
    QTest::newRow("loopback, short") << QByteArray("127.1") << true;
}

void TalvisSocketTest::sendsAnswerFalseForWhatIsNoAddress()
{
    QFETCH(const QByteArray, ip);
    QFETCH(const bool, sent);
    // Everywhere, so that a datagram to 0.0.0.0, which the system would deliver, is heard.
    QUdpSocket listener;
    QVERIFY(listen(listener, QHostAddress::Any));
    TalvisSocket socket(nullptr);
    const char* const text = ip.isNull() ? nullptr : ip.constData();
    QCOMPARE(socket.sendTo(text, "x", 1), sent);
    QCOMPARE(socket.sendToAddress(QHostAddress(QString::fromLatin1(text)), "x", 1), sent);
    QCOMPARE(listener.hasPendingDatagrams(), sent);
}

void TalvisSocketTest::anUnreachableNetworkAnswersFalse()
{
    TalvisSocket socket(nullptr);
    QVERIFY(!socket.sendTo("10.1.2.3", "x", 1));
    QVERIFY(!socket.sendBroadcast("x", 1));      // to 255.255.255.255
    QVERIFY(socket.sendTo("127.0.0.1", "x", 1)); // and the next send tries again
}

void TalvisSocketTest::aDatagramTooLongAnswersFalse()
{
    TalvisSocket socket(nullptr);
    const QByteArray bytes(70000, 'x');
    QVERIFY(!socket.sendTo("127.0.0.1", bytes.constData(), bytes.size()));
}

void TalvisSocketTest::readingTakesOneDatagram()
{
    TalvisSocket socket(nullptr);
    QHostAddress sender;
    char data[8] = {};
    QVERIFY(!socket.readPending(data, 8, &sender)); // none pending
    QUdpSocket device;
    QVERIFY(device.bind(QHostAddress("127.0.0.3")));
    for (const char* const text : {"one", "two"}) {
        QCOMPARE(device.writeDatagram(text, 3, QHostAddress("127.0.0.1"), socket.localPort()), 3);
    }
    QVERIFY(socket.waitForReadyRead(5000));
    QVERIFY(socket.readPending(data, 8, &sender));
    QCOMPARE(QByteArray(data), QByteArray("one"));
    QCOMPARE(sender.toIPv4Address(), 0x7F000003U);
    QVERIFY(socket.readPending(data, 8, &sender));
    QCOMPARE(QByteArray(data), QByteArray("two"));
    QVERIFY(!socket.readPending(data, 8, &sender));
}

void TalvisSocketTest::aDatagramIsCutAtTheBuffersSize()
{
    TalvisSocket socket(nullptr);
    QUdpSocket device;
    QVERIFY(device.bind(QHostAddress("127.0.0.3")));
    QCOMPARE(device.writeDatagram("abcdef", 6, QHostAddress("127.0.0.1"), socket.localPort()), 6);
    QCOMPARE(device.writeDatagram("gh", 2, QHostAddress("127.0.0.1"), socket.localPort()), 2);
    QVERIFY(socket.waitForReadyRead(5000));
    QHostAddress sender;
    char data[9] = "........";
    QVERIFY(socket.readPending(data, 4, &sender));
    QCOMPARE(QByteArray(data), QByteArray("abcd....")); // the rest of the datagram is gone
    QVERIFY(socket.readPending(data, 4, &sender));
    QCOMPARE(QByteArray(data), QByteArray("ghcd....")); // and the rest of the buffer stays
}

void TalvisSocketTest::arrivalsReachTheDecoder()
{
    auto* const socket = new TalvisSocket(nullptr);
    socket->setInterfaceSource([] { return QVector<InterfaceRecord>(); });
    const Talvis talvis(socket, nullptr);
    QSignalSpy variables(&talvis, &Talvis::signalDeviceVariableReply);
    QUdpSocket device;
    QVERIFY(device.bind(QHostAddress("127.0.0.3")));
    for (int i = 0; i < 20; ++i) {
        QByteArray reply = QByteArray::fromHex("0401dc4a 0100 0601 00000000 3412 0000 00000000");
        reply[16] = static_cast<char>(i);
        device.writeDatagram(reply, QHostAddress("127.0.0.1"), socket->localPort());
        device.writeDatagram("junk", QHostAddress("127.0.0.1"), 9); // to nobody
    }
    QTRY_COMPARE(variables.count(), 20);
    for (int i = 0; i < 20; ++i) {
        QCOMPARE(variables.at(i).at(0).toUInt(), 0x7F000003U);
        QCOMPARE(variables.at(i).at(2).toInt(), i);
    }
    QVERIFY(!socket->hasPendingDatagrams());
}

void TalvisSocketTest::startSyncsAreHeardOnTheBroadcastAddress()
{
    const QHostAddress broadcast("127.255.255.255"); // the loopback's own
    QUdpSocket listener;
    QVERIFY(listen(listener, broadcast));
    auto* const socket = new TalvisSocket(nullptr);
    socket->setInterfaceSource([] {
        return QVector<InterfaceRecord>{interface("eth0", {entry("127.0.0.1", "255.0.0.0")})};
    });
    const Talvis talvis(socket, nullptr);
    QCOMPARE(socket->broadcastAddress(), broadcast);
    int heard = 0;
    while (heard < 5 && (listener.hasPendingDatagrams() || listener.waitForReadyRead(5000))) {
        QCOMPARE(listener.receiveDatagram().data(),
                 QByteArray::fromHex("0401dc4a 0100 0901 00000000 00000000"));
        ++heard;
    }
    QCOMPARE(heard, 5);
    QVERIFY(!listener.hasPendingDatagrams());
}

QTEST_GUILESS_MAIN(TalvisSocketTest)
#include "TalvisSocketTest.moc"
