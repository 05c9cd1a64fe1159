#include "output/CommLibrary.h"

#include "output/PauseMessages.h"

#include <QElapsedTimer>
#include <QNetworkDatagram>
#include <QObject>
#include <QPointer>
#include <QProcess>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

#include <algorithm>
#include <memory>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>

// Runs in a network namespace with an interface "eth0" at 10.77.0.1/24, to which the test adds
// another network, "net1" at 10.78.0.1/16.

namespace {

constexpr CommPeriods kQuick{200, 100, 300};
constexpr CommPeriods kLongDiscovery{60000, 60000, 300};

QVector<InterfaceRecord> noInterfaces()
{
    return {};
}

QByteArray hello()
{
    return PauseMessages::hello(QStringLiteral("Pageant Forge"));
}

int messageCount = 0;

void countMessage(QtMsgType, const QMessageLogContext&, const QString&)
{
    ++messageCount;
}

/// A management service: accepts connections and keeps what arrives on each.
class Service : public QObject
{
public:
    explicit Service(const QHostAddress& address = QHostAddress(QHostAddress::LocalHost),
                     int receiveBuffer = 0)
    {
        m_server.listen(address);
        if (receiveBuffer > 0) {
            setsockopt(static_cast<int>(m_server.socketDescriptor()), SOL_SOCKET, SO_RCVBUF,
                       &receiveBuffer, sizeof receiveBuffer);
        }
        connect(&m_server, &QTcpServer::newConnection, this, [this] {
            while (QTcpSocket* const socket = m_server.nextPendingConnection()) {
                sockets << socket;
                received << QByteArray();
                const int index = received.size() - 1;
                connect(socket, &QTcpSocket::readyRead, this, [this, socket, index] {
                    if (reads) {
                        received[index] += socket->readAll();
                    }
                });
            }
        });
    }
    quint16 port() const { return m_server.serverPort(); }
    QByteArray answer(const QByteArray& address = "127.0.0.1") const
    {
        return "1:2:" + address + ':' + QByteArray::number(port()) + '\n';
    }

    bool reads = true;
    QList<QTcpSocket*> sockets;
    QList<QByteArray> received;

private:
    QTcpServer m_server;
};

/// The other end of the discovery: hears the broadcasts and answers.
class Hearer : public QUdpSocket
{
public:
    Hearer() { bind(QHostAddress::AnyIPv4, CommLibrary::kDiscoveryPort, QUdpSocket::ShareAddress); }

    /// The texts heard up to now, with their destinations.
    QStringList heard()
    {
        const QByteArray marker("marker"); // behind it nothing can be on its way
        writeDatagram(marker, QHostAddress(QHostAddress::LocalHost), CommLibrary::kDiscoveryPort);
        QStringList texts;
        while (hasPendingDatagrams() || waitForReadyRead(5000)) {
            const QNetworkDatagram datagram = receiveDatagram();
            if (datagram.data() == marker) {
                break;
            }
            texts << datagram.destinationAddress().toString() + QLatin1Char(' ') +
                         QString::number(datagram.senderPort()) + QLatin1Char(' ') +
                         QString::fromLatin1(datagram.data());
        }
        return texts;
    }
};

void sendAnswer(const QByteArray& datagram)
{
    QUdpSocket socket;
    QVERIFY(socket.writeDatagram(datagram, QHostAddress(QHostAddress::LocalHost),
                                 CommLibrary::kLocalPort) >= 0);
}

std::unique_ptr<CommLibrary> silentLibrary(const CommPeriods& periods,
                                           const QString& name = QStringLiteral("Pageant Forge"))
{
    return std::make_unique<CommLibrary>(name, nullptr, periods, &noInterfaces);
}

/// The library's timer of an interval, which only one of them has.
QTimer& timerOf(const CommLibrary& library, int interval)
{
    const QList<QTimer*> timers = library.findChildren<QTimer*>();
    const auto found = std::find_if(timers.cbegin(), timers.cend(), [interval](const QTimer* one) {
        return one->interval() == interval;
    });
    if (found == timers.cend()) {
        qFatal("no timer of %d ms", interval);
    }
    return **found;
}

/// Waits for a datagram and leaves it where it is.
bool hasArrived(const QUdpSocket& socket)
{
    pollfd watched{static_cast<int>(socket.socketDescriptor()), POLLIN, 0};
    return poll(&watched, 1, 5000) == 1;
}

bool runIp(const QStringList& arguments)
{
    return QProcess::execute(QStringLiteral("ip"), arguments) == 0;
}

} // namespace

class CommLibraryTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void eachNetworkIsAskedOnce();
    void networksAreChosenByAddress_data();
    void networksAreChosenByAddress();
    void theDefaultsAreTheStatedTimes();
    void aServiceIsGreetedAndPaused();
    void theHelloNamesTheClient_data();
    void theHelloNamesTheClient();
    void answersAreTakenApart_data();
    void answersAreTakenApart();
    void anAddressIsFollowedOnce();
    void atMost32AnswersAreFollowed();
    void aFloodOfJunkIsReadToItsEnd();
    void aSilentHostHoldsUpNoLongerThanStated_data();
    void aSilentHostHoldsUpNoLongerThanStated();
    void aLateAnswerStaysUnread();
    void aPeerThatClosesIsRemovedForGood_data();
    void aPeerThatClosesIsRemovedForGood();
    void aTalkativePeerCostsNoMemory();
    void aPeerThatNeverReadsCostsNoMemory();
    void theCycleRunsWithoutPeers();
    void anExceptionCostsOnePeer();
    void aTakenPortIsSilent();
    void discoveryAgainIsOnlyLengthened();
    void discoveryAfterItsEndStartsAfresh();
    void theEndClosesTheConnections();
};

void CommLibraryTest::initTestCase()
{
    for (const InterfaceRecord& interface : TalvisSocket::systemInterfaces()) {
        if (!interface.isLoopBack && interface.name != QLatin1String("eth0") &&
            interface.name != QLatin1String("eth0peer")) {
            QSKIP("not in the network namespace that in-namespace.sh --eth0 makes");
        }
    }
    QVERIFY(runIp({"link", "add", "net1", "type", "veth", "peer", "name", "net1peer"}));
    QVERIFY(runIp({"addr", "add", "10.78.0.1/16", "broadcast", "10.78.255.255", "dev", "net1"}));
    QVERIFY(runIp({"link", "set", "net1", "up"}));
    QVERIFY(runIp({"link", "set", "net1peer", "up"}));
}

void CommLibraryTest::eachNetworkIsAskedOnce()
{
    Hearer hearer;
    const CommLibrary library(QStringLiteral("Pageant Forge"));
    QStringList heard = hearer.heard();
    heard.sort();
    QCOMPARE(heard,
             QStringList({QStringLiteral("10.77.0.255 8081 3166485691:1:10.77.0.1:8081\n"),
                          QStringLiteral("10.78.255.255 8081 3166485691:1:10.78.0.1:8081\n")}));
}

void CommLibraryTest::networksAreChosenByAddress_data()
{
    QTest::addColumn<QString>("ip");
    QTest::addColumn<QString>("netmask");
    QTest::addColumn<bool>("isUp");
    QTest::addColumn<QString>("heard");
    const QString mask = QStringLiteral("255.255.255.240");
    QTest::newRow("another of the loopback")
        << "127.0.5.2" << mask << true << "127.0.5.15 8081 3166485691:1:127.0.5.2:8081\n";
    QTest::newRow("down") << "127.0.5.2" << mask << false
                          << "127.0.5.15 8081 3166485691:1:127.0.5.2:8081\n";
    QTest::newRow("one host") << "127.0.5.2"
                              << "255.255.255.255" << true
                              << "127.0.5.2 8081 3166485691:1:127.0.5.2:8081\n";
    QTest::newRow("local host") << "127.0.0.1"
                                << "255.0.0.0" << true << "";
    QTest::newRow("IPv6") << "::1"
                          << "ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff" << true << "";
    QTest::newRow("unreachable") << "192.168.7.7"
                                 << "255.255.255.0" << true << "";
}

void CommLibraryTest::networksAreChosenByAddress()
{
    QFETCH(const QString, ip);
    QFETCH(const QString, netmask);
    QFETCH(const bool, isUp);
    QFETCH(const QString, heard);
    Hearer hearer;
    // The second address of the second interface counts like the first of the first.
    const InterfaceAddress six{QHostAddress(QStringLiteral("fe80::1")), QHostAddress()};
    const InterfaceAddress entry{QHostAddress(ip), QHostAddress(netmask)};
    const QVector<InterfaceRecord> list{{QStringLiteral("a"), true, false, {}},
                                        {QStringLiteral("b"), isUp, false, {six, entry}}};
    const CommLibrary library(QStringLiteral("Pageant Forge"), nullptr, kLongDiscovery,
                              [&list] { return list; });
    QCOMPARE(hearer.heard(), heard.isEmpty() ? QStringList() : QStringList(heard));
}

void CommLibraryTest::theDefaultsAreTheStatedTimes()
{
    const CommLibrary library(QStringLiteral("Pageant Forge"), nullptr, CommPeriods(),
                              &noInterfaces);
    const QTimer& discovery = timerOf(library, 5000);
    const QTimer& pause = timerOf(library, 15000);
    QVERIFY(discovery.isSingleShot() && pause.isSingleShot());
    QVERIFY(discovery.isActive());
    QVERIFY(!pause.isActive());
    QCOMPARE(CommPeriods().connectWait, 1000);
}

void CommLibraryTest::aServiceIsGreetedAndPaused()
{
    constexpr CommPeriods kPeriods{400, 200, 300};
    Hearer hearer;
    Service service(QHostAddress(QStringLiteral("10.77.0.1")));
    QElapsedTimer clock;
    connect(&hearer, &QUdpSocket::readyRead, this, [&] {
        while (hearer.hasPendingDatagrams()) {
            const QNetworkDatagram question = hearer.receiveDatagram();
            const QList<QByteArray> pieces = question.data().trimmed().split(':');
            if (pieces.value(2) == "10.77.0.1") { // to where it asks for answers
                hearer.writeDatagram(service.answer("10.77.0.1"), QHostAddress("10.77.0.1"),
                                     pieces.value(3).toUShort());
            }
        }
    });
    clock.start();
    const CommLibrary library(QStringLiteral("Pageant Forge"), nullptr, kPeriods);
    QTRY_COMPARE(service.sockets.size(), 1);
    const QByteArray pause = PauseMessages::pause();
    QTRY_VERIFY(service.received.first().size() >= hello().size());
    QCOMPARE(service.received.first().left(hello().size()), hello());
    QTRY_VERIFY(service.received.first().size() > hello().size());
    QVERIFY(clock.elapsed() >= 400);
    QTRY_VERIFY(service.received.first().size() > (hello() + pause).size());
    QVERIFY(clock.elapsed() >= 600);
    QTRY_VERIFY(service.received.first().startsWith(hello() + pause + pause + pause));
    QVERIFY(clock.elapsed() >= 800);
    QCOMPARE(service.sockets.size(), 1);
    QCOMPARE(library.connectionCount(), 1);
}

void CommLibraryTest::theHelloNamesTheClient_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("length");
    QTest::newRow("forge") << "Pageant Forge" << 516;
    QTest::newRow("steward") << "Pageant Steward" << 520;
}

void CommLibraryTest::theHelloNamesTheClient()
{
    QFETCH(const QString, name);
    QFETCH(const int, length);
    Service service;
    const auto library = silentLibrary(kQuick, name);
    sendAnswer(service.answer());
    const QByteArray greeting = PauseMessages::hello(name);
    QCOMPARE(greeting.size(), 23 + length);
    QTRY_COMPARE(service.received.value(0).left(greeting.size()), greeting);
    // The pause message is the same whoever sends it.
    QTRY_VERIFY(service.received.first().startsWith(greeting + PauseMessages::pause()));
}

void CommLibraryTest::answersAreTakenApart_data()
{
    QTest::addColumn<QByteArray>("answer"); // P stands for the port, Q for the port + 65536
    QTest::addColumn<bool>("followed");
    QTest::newRow("four fields") << QByteArray("1:2:127.0.0.1:P\n") << true;
    QTest::newRow("four empty but for two") << QByteArray("::127.0.0.1:P") << true;
    QTest::newRow("any text ahead") << QByteArray("x\xff y:\1:127.0.0.1:P") << true;
    QTest::newRow("line feeds anywhere") << QByteArray("\n1:\n2:127.\n0.0.1:\nP\n\n") << true;
    QTest::newRow("low 16 bits of the port") << QByteArray("1:2:127.0.0.1:Q") << true;
    QTest::newRow("a long field") << QByteArray(5000, 'x') + ":2:127.0.0.1:P" << true;
    QTest::newRow("three fields") << QByteArray("2:127.0.0.1:P\n") << false;
    QTest::newRow("five fields") << QByteArray("1:2:127.0.0.1:P:\n") << false;
    QTest::newRow("five with the address third") << QByteArray("1:2:127.0.0.1:P:5") << false;
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("colons") << QByteArray(":::") << false;
    QTest::newRow("many colons") << QByteArray(60000, ':') << false;
    QTest::newRow("zeros") << QByteArray(100, '\0') << false;
    QTest::newRow("no address") << QByteArray("1:2::P") << false;
    QTest::newRow("a name") << QByteArray("1:2:localhost:P") << false;
    QTest::newRow("no port") << QByteArray("1:2:127.0.0.1:") << false;
    QTest::newRow("negative port") << QByteArray("1:2:127.0.0.1:-P") << false;
    QTest::newRow("hex port") << QByteArray("1:2:127.0.0.1:0xP") << false;
    QTest::newRow("huge port") << QByteArray("1:2:127.0.0.1:99999999999") << false;
    QTest::newRow("closed port") << QByteArray("1:2:127.0.0.1:9") << false;
    QTest::newRow("hello of its own") << QByteArray("3166485691:1:127.0.0.1:8081\n") << false;
}

void CommLibraryTest::answersAreTakenApart()
{
    QFETCH(QByteArray, answer);
    QFETCH(const bool, followed);
    Service service;
    Service last;
    answer.replace('P', QByteArray::number(service.port()));
    answer.replace('Q', QByteArray::number(65536 + service.port()));
    const auto library = silentLibrary(kLongDiscovery);
    sendAnswer(answer);
    sendAnswer(last.answer("127.0.0.2")); // a second address, so that both are followed
    QTcpServer second;
    QVERIFY(second.listen(QHostAddress(QStringLiteral("127.0.0.3"))));
    sendAnswer("1:2:127.0.0.3:" + QByteArray::number(second.serverPort()));
    QTRY_VERIFY(second.hasPendingConnections()); // what came ahead of it has been handled
    QCOMPARE(library->connectionCount(), followed ? 2 : 1);
    if (followed) {
        QTRY_COMPARE(service.received.value(0), hello());
    }
    QCOMPARE(service.sockets.size(), followed ? 1 : 0);
}

void CommLibraryTest::anAddressIsFollowedOnce()
{
    Service service{QHostAddress(QHostAddress::AnyIPv4)};
    const auto library = silentLibrary(kLongDiscovery);
    for (int i = 0; i < 5; ++i) {
        sendAnswer(service.answer());
    }
    sendAnswer(service.answer("127.1")); // the same address
    sendAnswer(service.answer("127.0.0.2"));
    QTRY_COMPARE(library->connectionCount(), 2);
    QTRY_COMPARE(service.received, QList<QByteArray>({hello(), hello()}));
    QVERIFY(!library->findChild<QUdpSocket*>()->hasPendingDatagrams());
    QCOMPARE(library->findChildren<QTcpSocket*>().size(), 2);
}

void CommLibraryTest::atMost32AnswersAreFollowed()
{
    Service service{QHostAddress(QHostAddress::AnyIPv4)};
    const auto library = silentLibrary(kLongDiscovery);
    for (int i = 1; i <= 40; ++i) {
        sendAnswer(service.answer("127.0.1." + QByteArray::number(i)));
    }
    auto* const udp = library->findChild<QUdpSocket*>();
    QTRY_COMPARE(library->connectionCount(), 32);
    QTRY_VERIFY(!udp->hasPendingDatagrams());
    QTRY_COMPARE(service.sockets.size(), 32);
    QCOMPARE(library->connectionCount(), 32);
    QCOMPARE(library->findChildren<QTcpSocket*>().size(), 32);
}

void CommLibraryTest::aFloodOfJunkIsReadToItsEnd()
{
    Service service;
    const auto library = silentLibrary(kLongDiscovery);
    for (int i = 0; i < 150; ++i) {
        sendAnswer("junk");
    }
    sendAnswer(service.answer());
    library->handleReadReady();
    QCOMPARE(library->connectionCount(), 0); // 64 in one go: frames come first
    QTRY_COMPARE(library->connectionCount(), 1);
}

void CommLibraryTest::aSilentHostHoldsUpNoLongerThanStated_data()
{
    QTest::addColumn<int>("wait"); // milliseconds
    QTest::newRow("short") << 200;
    QTest::newRow("as it is") << CommPeriods().connectWait;
}

void CommLibraryTest::aSilentHostHoldsUpNoLongerThanStated()
{
    QFETCH(const int, wait);
    Service service;
    const auto library = silentLibrary({60000, 100, wait});
    sendAnswer("1:2:10.77.0.200:4000"); // nobody there to say no
    library->handleReadReady();         // in case it has come already; else the next one does it
    QTRY_VERIFY(!library->findChildren<QTcpSocket*>().isEmpty());
    QPointer<QTcpSocket> left = library->findChild<QTcpSocket*>();
    QCOMPARE(library->connectionCount(), 0);
    sendAnswer("1:2:10.77.0.201:4000");
    auto* const udp = library->findChild<QUdpSocket*>();
    QVERIFY(hasArrived(*udp)); // without the event loop, which would have it read
    QElapsedTimer clock;
    clock.start();
    library->handleReadReady();
    QVERIFY(clock.elapsed() >= wait - 50);
    QVERIFY(clock.elapsed() < wait + 1000);
    QCOMPARE(library->connectionCount(), 0);
    sendAnswer(service.answer());
    QTRY_COMPARE(library->connectionCount(), 1);
    library->handlePauseControllers();
    QTRY_COMPARE(service.received.value(0).left(hello().size()), hello());
    QVERIFY(!left.isNull()); // left as it is, and gone with the library
}

void CommLibraryTest::aLateAnswerStaysUnread()
{
    Service early;
    Service late;
    const auto library = silentLibrary(kQuick);
    sendAnswer(early.answer());
    QTRY_VERIFY(early.received.value(0).size() > hello().size()); // the first pause ends it
    sendAnswer(late.answer("127.0.0.2"));
    auto* const udp = library->findChild<QUdpSocket*>();
    QTRY_VERIFY(udp->hasPendingDatagrams());
    library->handleReadReady();
    const int before = early.received.first().size();
    QTRY_VERIFY(early.received.first().size() >= before + 2 * PauseMessages::pause().size());
    QVERIFY(udp->hasPendingDatagrams());
    QCOMPARE(library->connectionCount(), 1);
    QCOMPARE(late.sockets.size(), 0);
}

void CommLibraryTest::aPeerThatClosesIsRemovedForGood_data()
{
    QTest::addColumn<bool>("rudely");
    QTest::addColumn<int>("junk"); // bytes sent ahead of the end
    QTest::newRow("closed") << false << 0;
    QTest::newRow("reset") << true << 0;
    QTest::newRow("junk, then closed") << false << 1000;
    QTest::newRow("much junk, then closed") << false << 300000;
}

void CommLibraryTest::aPeerThatClosesIsRemovedForGood()
{
    QFETCH(const bool, rudely);
    QFETCH(const int, junk);
    Service stays;
    const auto library = silentLibrary(kQuick);
    sendAnswer(stays.answer());
    sendAnswer("1:2:127.1.2.3:1"); // refused
    Service other(QHostAddress(QStringLiteral("127.0.0.2")));
    sendAnswer(other.answer("127.0.0.2"));
    QTRY_COMPARE(library->connectionCount(), 2);
    QTRY_COMPARE(other.sockets.size(), 1);
    other.sockets.first()->write(QByteArray(junk, 'x'));
    if (rudely) {
        other.sockets.first()->abort();
    } else {
        other.sockets.first()->disconnectFromHost();
    }
    QTRY_COMPARE(library->connectionCount(), 1);
    QTRY_COMPARE(library->findChildren<QTcpSocket*>().size(), 2); // the refused one is left
    sendAnswer(other.answer("127.0.0.2"));                        // it is back, but late
    const int before = stays.received.first().size();
    QTRY_VERIFY(stays.received.first().size() >= before + 2 * PauseMessages::pause().size());
    QCOMPARE(library->connectionCount(), 1);
    QCOMPARE(other.sockets.size(), 1);
}

void CommLibraryTest::aTalkativePeerCostsNoMemory()
{
    Service service;
    const auto library = silentLibrary(kQuick);
    sendAnswer(service.answer());
    QTRY_COMPARE(service.sockets.size(), 1);
    const QPointer<QTcpSocket> socket = library->findChild<QTcpSocket*>();
    service.sockets.first()->write(QByteArray(20000000, 'x')); // more than the system's buffers
    qint64 most = 0;
    const int pauses = 5;
    QTRY_VERIFY((most = qMax(most, socket->bytesAvailable()),
                 service.received.first().size() >=
                     hello().size() + pauses * PauseMessages::pause().size()));
    QVERIFY(most > 0);
    QVERIFY(most <= 65536);
    QVERIFY(service.sockets.first()->bytesToWrite() > 0); // the rest waits at the peer
    QCOMPARE(library->connectionCount(), 1);
}

void CommLibraryTest::aPeerThatNeverReadsCostsNoMemory()
{
    Service service(QHostAddress(QHostAddress::LocalHost), 4096);
    const auto library = silentLibrary(kLongDiscovery);
    sendAnswer(service.answer());
    QTRY_COMPARE(service.sockets.size(), 1);
    service.reads = false;
    service.sockets.first()->setReadBufferSize(1);
    const auto* const socket = library->findChild<QTcpSocket*>();
    for (int i = 0; i < 30000; ++i) { // five days of pausing, 12 megabytes
        library->handlePauseControllers();
    }
    QVERIFY(socket->bytesToWrite() > 0);
    QVERIFY(socket->bytesToWrite() <= 65536 + PauseMessages::pause().size());
    QCOMPARE(library->connectionCount(), 1);
}

void CommLibraryTest::theCycleRunsWithoutPeers()
{
    const auto library = silentLibrary({150, 50, 300});
    QTimer& discovery = timerOf(*library, 150);
    QTimer& pause = timerOf(*library, 50);
    QSignalSpy ends(&discovery, &QTimer::timeout);
    QSignalSpy cycles(&pause, &QTimer::timeout);
    QVERIFY(!pause.isActive());
    QTRY_COMPARE(ends.count(), 1);
    QTRY_VERIFY(cycles.count() >= 5);
    QCOMPARE(ends.count(), 1); // it looks once
    QVERIFY(!discovery.isActive());
    QVERIFY(pause.isActive());
    QCOMPARE(library->connectionCount(), 0);
}

void CommLibraryTest::anExceptionCostsOnePeer()
{
    Service first;
    Service second(QHostAddress(QStringLiteral("127.0.0.2")));
    const auto library = silentLibrary(kLongDiscovery);
    sendAnswer(first.answer());
    QTRY_COMPARE(library->connectionCount(), 1);
    auto* const socket = library->findChild<QTcpSocket*>();
    QTRY_COMPARE(first.received.value(0), hello());
    connect(socket, &QTcpSocket::bytesWritten, this, [] { throw std::runtime_error("refused"); });
    sendAnswer(second.answer("127.0.0.2"));
    QTRY_COMPARE(library->connectionCount(), 2);
    library->handlePauseControllers();
    QCOMPARE(library->connectionCount(), 1);
    QTRY_COMPARE(second.received.value(0), hello() + PauseMessages::pause());
    QTRY_COMPARE(first.sockets.first()->state(), QAbstractSocket::UnconnectedState);
}

void CommLibraryTest::aTakenPortIsSilent()
{
    QUdpSocket occupant;
    QVERIFY(
        occupant.bind(QHostAddress::Any, CommLibrary::kLocalPort, QUdpSocket::DontShareAddress));
    Hearer hearer;
    messageCount = 0;
    QtMessageHandler const before = qInstallMessageHandler(countMessage);
    {
        const CommLibrary library(QStringLiteral("Pageant Forge"), nullptr, kQuick, [] {
            return QVector<InterfaceRecord>{{QStringLiteral("a"),
                                             true,
                                             false,
                                             {{QHostAddress(QStringLiteral("127.0.5.2")),
                                               QHostAddress(QStringLiteral("255.255.255.240"))}}}};
        });
        sendAnswer("1:2:127.0.0.1:1");
        QTRY_VERIFY(timerOf(library, kQuick.pause).isActive());
    }
    qInstallMessageHandler(before);
    QCOMPARE(messageCount, 0);
    const QStringList heard = hearer.heard();
    QCOMPARE(heard.size(), 1);
    QVERIFY(heard.first().endsWith(QLatin1String(" 3166485691:1:127.0.5.2:8081\n")));
    QVERIFY(!heard.first().contains(QLatin1String(" 8081 "))); // from a port of another number
}

void CommLibraryTest::discoveryAgainIsOnlyLengthened()
{
    int walks = 0;
    Service service;
    CommLibrary library(QStringLiteral("Pageant Forge"), nullptr, {50000, 60000, 300}, [&walks] {
        ++walks;
        return QVector<InterfaceRecord>();
    });
    sendAnswer(service.answer());
    QTRY_COMPARE(library.connectionCount(), 1);
    QTimer& discovery = timerOf(library, 50000);
    QTRY_VERIFY(discovery.remainingTime() < 49900);
    library.startDiscovery();
    QVERIFY(discovery.remainingTime() > 49900);
    QCOMPARE(walks, 1);
    QCOMPARE(library.connectionCount(), 1);
}

void CommLibraryTest::discoveryAfterItsEndStartsAfresh()
{
    int walks = 0;
    Service service;
    CommLibrary library(QStringLiteral("Pageant Forge"), nullptr, kQuick, [&walks] {
        ++walks;
        return QVector<InterfaceRecord>();
    });
    sendAnswer(service.answer());
    QTRY_COMPARE(service.sockets.size(), 1);
    QTRY_VERIFY(service.received.first().startsWith(hello() + PauseMessages::pause()));
    library.startDiscovery();
    QCOMPARE(walks, 2);
    QCOMPARE(library.connectionCount(), 0);
    QTRY_COMPARE(service.sockets.first()->state(), QAbstractSocket::UnconnectedState);
    sendAnswer(service.answer()); // the same address may answer again
    QTRY_COMPARE(service.sockets.size(), 2);
    QTRY_COMPARE(service.received.last().left(hello().size()), hello());
}

void CommLibraryTest::theEndClosesTheConnections()
{
    Service service;
    auto library = silentLibrary(kQuick);
    sendAnswer(service.answer());
    QTRY_COMPARE(service.sockets.size(), 1);
    library.reset();
    QTRY_COMPARE(service.sockets.first()->state(), QAbstractSocket::UnconnectedState);
    // The port is free again.
    QUdpSocket socket;
    QVERIFY(socket.bind(QHostAddress::Any, CommLibrary::kLocalPort, QUdpSocket::DontShareAddress));
}

QTEST_GUILESS_MAIN(CommLibraryTest)
#include "CommLibraryTest.moc"
