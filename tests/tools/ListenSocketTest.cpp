#include "tools/listen/ListenSocket.h"

#include "tools/listen/FrameLedger.h"

#include <QHostAddress>
#include <QObject>
#include <QUdpSocket>
#include <QtTest>

#include <ctime>
#include <poll.h>

// Runs in a network namespace of its own, where there is a loopback and nothing else.

namespace {

constexpr quint32 kFirst = 0x7F000001;
constexpr quint32 kSecond = 0x7F000002;

struct Heard
{
    HeardDatagram head;
    QByteArray bytes;
};

/// What arrives, once something has.
QVector<Heard> receive(ListenSocket& socket)
{
    pollfd wait{socket.descriptor(), POLLIN, 0};
    poll(&wait, 1, 5000);
    QVector<Heard> all;
    socket.receive([&all](const HeardDatagram& datagram) {
        all.append({datagram, QByteArray(static_cast<const char*>(datagram.data), datagram.size)});
    });
    return all;
}

} // namespace

class ListenSocketTest : public QObject
{
    Q_OBJECT
private slots:
    void aDatagramComesWithTimeAndBothAddresses();
    void theAddressesOfOneSocketAreToldApart();
    void broadcastsAreMarked();
    void severalMayListenAtOneAddress();
    void anAddressOfAnotherMachineIsRefused();
    void emptyAndLongDatagramsArrive();
};

void ListenSocketTest::aDatagramComesWithTimeAndBothAddresses()
{
    ListenSocket socket;
    QString error;
    QVERIFY2(socket.open(kSecond, &error), qPrintable(error));
    QUdpSocket sender;
    QVERIFY(sender.bind(QHostAddress("127.0.0.5")));
    const qint64 before = static_cast<qint64>(time(nullptr)) * 1000000000;
    QCOMPARE(sender.writeDatagram("hello", QHostAddress(kSecond), ListenSocket::kPort), 5);
    const QVector<Heard> heard = receive(socket);
    QCOMPARE(heard.size(), 1);
    QCOMPARE(heard[0].bytes, QByteArray("hello"));
    QCOMPARE(heard[0].head.source, 0x7F000005U);
    QCOMPARE(heard[0].head.sourcePort, sender.localPort());
    QCOMPARE(heard[0].head.controller, kSecond);
    QVERIFY(!heard[0].head.broadcast);
    QVERIFY(heard[0].head.timeNs >= before);
    QVERIFY(heard[0].head.timeNs < before + 60000000000);
    QCOMPARE(socket.dropped(), quint64{0});
}

void ListenSocketTest::theAddressesOfOneSocketAreToldApart()
{
    ListenSocket socket;
    QString error;
    QVERIFY2(socket.open(0, &error), qPrintable(error));
    QUdpSocket sender;
    sender.writeDatagram("1", QHostAddress(kFirst), ListenSocket::kPort);
    sender.writeDatagram("2", QHostAddress(kSecond), ListenSocket::kPort);
    const QVector<Heard> heard = receive(socket);
    QCOMPARE(heard.size(), 2);
    QCOMPARE(heard[0].head.controller, kFirst);
    QCOMPARE(heard[1].head.controller, kSecond);
}

void ListenSocketTest::broadcastsAreMarked()
{
    ListenSocket socket;
    QString error;
    QVERIFY2(socket.open(0, &error), qPrintable(error));
    QUdpSocket sender;
    sender.writeDatagram("all", QHostAddress("127.255.255.255"), ListenSocket::kPort);
    const QVector<Heard> heard = receive(socket);
    QCOMPARE(heard.size(), 1);
    QCOMPARE(heard[0].head.controller, 0x7FFFFFFFU);
    QVERIFY(heard[0].head.broadcast);
}

void ListenSocketTest::severalMayListenAtOneAddress()
{
    ListenSocket first;
    ListenSocket second;
    QString error;
    QVERIFY2(first.open(kFirst, &error), qPrintable(error));
    QVERIFY2(second.open(kFirst, &error), qPrintable(error));
    ListenSocket all;
    QVERIFY2(all.open(0, &error), qPrintable(error));
}

void ListenSocketTest::anAddressOfAnotherMachineIsRefused()
{
    ListenSocket socket;
    QString error;
    QVERIFY(!socket.open(0x0A010203, &error));
    QVERIFY(!error.isEmpty());
}

void ListenSocketTest::emptyAndLongDatagramsArrive()
{
    ListenSocket socket;
    QString error;
    QVERIFY2(socket.open(kFirst, &error), qPrintable(error));
    QUdpSocket sender;
    const QByteArray longest(65507, 'x');
    QCOMPARE(sender.writeDatagram(QByteArray(), QHostAddress(kFirst), ListenSocket::kPort), 0);
    QCOMPARE(sender.writeDatagram(longest, QHostAddress(kFirst), ListenSocket::kPort), 65507);
    const QVector<Heard> heard = receive(socket);
    QCOMPARE(heard.size(), 2);
    QCOMPARE(heard[0].bytes.size(), 0);
    QCOMPARE(heard[1].bytes, longest);
}

QTEST_GUILESS_MAIN(ListenSocketTest)
#include "ListenSocketTest.moc"
