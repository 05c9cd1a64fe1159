#include "output/CITPClient.h"

#include "output/CITPPacket.h"

#include <QObject>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

#include <memory>
#include <sys/socket.h>

namespace {

/// The warnings that a MessageKeeper has taken.
QStringList& keptMessages()
{
    static QStringList messages;
    return messages;
}

void keepMessage(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (type == QtWarningMsg) {
        keptMessages() << text;
    }
}

/// Takes the warnings of its lifetime instead of having them printed.
class MessageKeeper
{
public:
    MessageKeeper()
        : m_before(qInstallMessageHandler(keepMessage))
    {
        keptMessages().clear();
    }
    ~MessageKeeper() { qInstallMessageHandler(m_before); }
    Q_DISABLE_COPY(MessageKeeper)
    static QStringList messages() { return keptMessages(); }

private:
    QtMessageHandler m_before;
};

QByteArray u32(int value)
{
    QByteArray bytes(4, '\0');
    for (int i = 0; i < 4; ++i) {
        bytes[i] = static_cast<char>(value >> (8 * i));
    }
    return bytes;
}

/// `content` starts with the layer's letters.
QByteArray message(const QByteArray& content)
{
    return "CITP" + QByteArray("\1\0\0\0", 4) + u32(16 + content.size()) +
           QByteArray("\1\0\0\0", 4) + content;
}

QByteArray peerName(const QByteArray& name)
{
    return message("PINFPNam" + name + '\0');
}

QByteArray universeName(int index, const QByteArray& name)
{
    return message("SDMXUNam" + QByteArray(1, static_cast<char>(index)) + name + '\0');
}

QByteArray block(bool blind, int universe, const QByteArray& data)
{
    return message("SDMXChBk" + QByteArray(1, blind ? '\1' : '\0') + static_cast<char>(universe) +
                   QByteArray(2, '\0') + u32(data.size()).left(2) + data);
}

/// The visualiser at the other end.
class Visualiser
{
public:
    Visualiser() { m_server.listen(QHostAddress(QHostAddress::LocalHost)); }
    quint16 port() const { return m_server.serverPort(); }
    void close() { m_server.close(); }

    /// The next connection, owned by the server; null if none comes.
    QTcpSocket* accept()
    {
        if (!m_server.hasPendingConnections() && !m_server.waitForNewConnection(5000)) {
            return nullptr;
        }
        return m_server.nextPendingConnection();
    }

    /// Connections taken from now on accept few bytes ahead of being read.
    void takeLittle()
    {
        const int size = 4096;
        setsockopt(static_cast<int>(m_server.socketDescriptor()), SOL_SOCKET, SO_RCVBUF, &size,
                   sizeof size);
    }

private:
    QTcpServer m_server;
};

/// What has come on a connection as soon as it is `size` bytes.
QByteArray received(QTcpSocket* peer, int size)
{
    const bool came = QTest::qWaitFor([&] { return peer->bytesAvailable() >= size; }, 5000);
    return came ? peer->readAll() : "only " + peer->readAll();
}

std::unique_ptr<CITPClient> enabledClient(const QStringList& universes = {})
{
    auto client = std::make_unique<CITPClient>(QStringLiteral("Forge"), universes, nullptr);
    client->setEnabled(true);
    return client;
}

} // namespace

class CITPClientTest : public QObject
{
    Q_OBJECT
private slots:
    void itStartsDisabled();
    void theNamesGoOutOnConnecting();
    void aNameThatDoesNotFitIsLeftOut();
    void blocksAreSent_data();
    void blocksAreSent();
    void blocksAreSkippedUntilReady();
    void disablingStopsEverything();
    void readySurvivesTheEnd();
    void aNewConnectionIsIntroducedFirst();
    void aFailedConnectionLeavesNone();
    void thePeersNameIsKept();
    void aReadIsAMessage();
    void junkIsReadInBoundedPieces();
    void aFailedReadIsLogged();
    void slotsWithoutAConnectionAreHarmless();
    void aPeerThatStopsReadingCostsNoMemory();
};

void CITPClientTest::itStartsDisabled()
{
    Visualiser visualiser;
    CITPClient client(QStringLiteral("Forge"), {}, nullptr);
    QVERIFY(!client.isEnabled());
    QVERIFY(!client.isReady());
    QCOMPARE(client.remoteName(), QString());
    client.connectTo(QStringLiteral("127.0.0.1"), visualiser.port());
    QCOMPARE(client.connectionState(), QAbstractSocket::UnconnectedState);
    QVERIFY(client.findChildren<QTcpSocket*>().isEmpty());
    client.setEnabled(true);
    client.connectTo(QStringLiteral("127.0.0.1"), visualiser.port());
    QTRY_COMPARE(client.connectionState(), QAbstractSocket::ConnectedState);
}

void CITPClientTest::theNamesGoOutOnConnecting()
{
    Visualiser visualiser;
    const auto client = enabledClient({QStringLiteral("Hall"), QStringLiteral("Bar")});
    const MessageKeeper keeper;
    client->connectTo(QStringLiteral("127.0.0.1"), visualiser.port());
    QVERIFY(!client->isReady());
    QTcpSocket* const peer = visualiser.accept();
    QVERIFY(peer != nullptr);
    const QByteArray expected =
        peerName("Forge") + universeName(0, "Hall") + universeName(1, "Bar");
    QCOMPARE(received(peer, expected.size()), expected);
    QVERIFY(client->isReady());
    QCOMPARE(MessageKeeper::messages(),
             QStringList({QStringLiteral("Sending universe name: 0:Hall"),
                          QStringLiteral("Sending universe name: 1:Bar")}));
}

void CITPClientTest::aNameThatDoesNotFitIsLeftOut()
{
    Visualiser visualiser;
    const QString longest(2048 - 26, QLatin1Char('x'));
    const auto client = enabledClient({longest, longest + QLatin1Char('x'), QStringLiteral("C")});
    const MessageKeeper keeper;
    client->connectTo(QStringLiteral("127.0.0.1"), visualiser.port());
    QTcpSocket* const peer = visualiser.accept();
    QVERIFY(peer != nullptr);
    const QByteArray expected =
        peerName("Forge") + universeName(0, longest.toLatin1()) + universeName(2, "C");
    QCOMPARE(received(peer, expected.size()), expected);
    QCOMPARE(MessageKeeper::messages().size(), 3);
}

void CITPClientTest::blocksAreSent_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<bool>("blind");
    QTest::addColumn<int>("size"); // 0: not sent
    QTest::newRow("a port of 24") << 24 << false << 54;
    QTest::newRow("blind") << 24 << true << 54;
    QTest::newRow("a universe") << 512 << false << 542;
    QTest::newRow("none") << 0 << false << 30;
    QTest::newRow("just fits") << 994 << false << 1024;
    QTest::newRow("one too many") << 995 << false << 0;
    QTest::newRow("as many as there can be") << 65535 << false << 0;
}

void CITPClientTest::blocksAreSent()
{
    QFETCH(const int, count);
    QFETCH(const bool, blind);
    QFETCH(const int, size);
    Visualiser visualiser;
    const auto client = enabledClient();
    client->connectTo(QStringLiteral("127.0.0.1"), visualiser.port());
    QTcpSocket* const peer = visualiser.accept();
    QVERIFY(peer != nullptr);
    QCOMPARE(received(peer, 30), peerName("Forge"));
    const QByteArray data(count, '\x5a');
    const QByteArray expected = size > 0 ? block(blind, 3, data) : QByteArray();
    QCOMPARE(expected.size(), size);
    const MessageKeeper keeper;
    client->sendChannelBlock(3, data.constData(), static_cast<quint16>(count), blind);
    client->sendChannelBlock(4, "next", 4, false);
    const QByteArray next = block(false, 4, "next");
    QCOMPARE(received(peer, size + next.size()), expected + next);
    QCOMPARE(MessageKeeper::messages(), QStringList());
}

void CITPClientTest::blocksAreSkippedUntilReady()
{
    Visualiser visualiser;
    const auto client = enabledClient();
    const MessageKeeper keeper;
    client->sendChannelBlock(0, "a", 1, false); // no connection
    client->connectTo(QStringLiteral("127.0.0.1"), visualiser.port());
    client->sendChannelBlock(0, "b", 1, false); // not yet connected
    QTcpSocket* const peer = visualiser.accept();
    QVERIFY(peer != nullptr);
    QTRY_VERIFY(client->isReady());
    client->sendChannelBlock(0, "c", 1, false);
    const QByteArray expected = peerName("Forge") + block(false, 0, "c");
    QCOMPARE(received(peer, expected.size()), expected);
    QCOMPARE(MessageKeeper::messages(), QStringList());
}

void CITPClientTest::disablingStopsEverything()
{
    Visualiser visualiser;
    const auto client = enabledClient({QStringLiteral("Hall")});
    QSignalSpy invalid(client->packet(), &CITPPacket::invalidPacket);
    client->connectTo(QStringLiteral("127.0.0.1"), visualiser.port());
    client->setEnabled(false);
    QTRY_COMPARE(client->connectionState(), QAbstractSocket::ConnectedState);
    QTcpSocket* const peer = visualiser.accept();
    QVERIFY(peer != nullptr);
    QVERIFY(!client->isReady());
    client->setEnabled(true);
    client->sendChannelBlock(0, "a", 1, false); // never introduced, so not ready
    client->handleConnected();
    client->setEnabled(false);
    client->sendChannelBlock(0, "b", 1, false);
    client->setEnabled(true);
    client->sendChannelBlock(0, "c", 1, false);
    const QByteArray expected = peerName("Forge") + universeName(0, "Hall") + block(false, 0, "c");
    QCOMPARE(received(peer, expected.size()), expected);
    // What comes in while disabled is taken and thrown away.
    client->setEnabled(false);
    auto* const socket = client->findChild<QTcpSocket*>();
    QSignalSpy arrivals(socket, &QTcpSocket::readyRead);
    peer->write(peerName("Vis"));
    QVERIFY(arrivals.wait());
    QCOMPARE(socket->bytesAvailable(), 0);
    QCOMPARE(client->remoteName(), QString());
    QCOMPARE(invalid.count(), 0);
}

void CITPClientTest::readySurvivesTheEnd()
{
    Visualiser visualiser;
    const auto client = enabledClient();
    client->connectTo(QStringLiteral("127.0.0.1"), visualiser.port());
    QTcpSocket* const peer = visualiser.accept();
    QVERIFY(peer != nullptr);
    QTRY_VERIFY(client->isReady());
    peer->write(peerName("Vis"));
    QTRY_COMPARE(client->remoteName(), QStringLiteral("Vis"));
    peer->disconnectFromHost();
    QTRY_COMPARE(client->connectionState(), QAbstractSocket::UnconnectedState);
    QCOMPARE(client->remoteName(), QString());
    QVERIFY(client->isReady());
    QTRY_VERIFY(client->findChildren<QTcpSocket*>().isEmpty());
    const MessageKeeper keeper;
    client->sendChannelBlock(0, "a", 1, false);
    QCOMPARE(MessageKeeper::messages(), QStringList());
}

void CITPClientTest::aNewConnectionIsIntroducedFirst()
{
    Visualiser first;
    Visualiser second;
    const auto client = enabledClient();
    client->connectTo(QStringLiteral("127.0.0.1"), first.port());
    QTcpSocket* const left = first.accept();
    QVERIFY(left != nullptr);
    QTRY_VERIFY(client->isReady());
    left->write(peerName("Vis"));
    QTRY_COMPARE(client->remoteName(), QStringLiteral("Vis"));
    client->connectTo(QStringLiteral("127.0.0.1"), second.port());
    QCOMPARE(client->remoteName(), QString());
    client->sendChannelBlock(0, "early", 5, false);
    QTcpSocket* const peer = second.accept();
    QVERIFY(peer != nullptr);
    QTRY_VERIFY(client->isReady());
    client->sendChannelBlock(0, "late", 4, false);
    const QByteArray expected = peerName("Forge") + block(false, 0, "late");
    QCOMPARE(received(peer, expected.size()), expected);
    QTRY_COMPARE(left->state(), QAbstractSocket::UnconnectedState);
    QCOMPARE(client->connectionState(), QAbstractSocket::ConnectedState);
}

void CITPClientTest::aFailedConnectionLeavesNone()
{
    Visualiser gone;
    const quint16 port = gone.port();
    gone.close();
    const auto client = enabledClient();
    client->connectTo(QStringLiteral("127.0.0.1"), port);
    QTRY_VERIFY(client->findChildren<QTcpSocket*>().isEmpty());
    QCOMPARE(client->connectionState(), QAbstractSocket::UnconnectedState);
    QVERIFY(!client->isReady());
    Visualiser late;
    client->connectTo(QStringLiteral("127.0.0.1"), late.port());
    QTcpSocket* const peer = late.accept();
    QVERIFY(peer != nullptr);
    QCOMPARE(received(peer, 30), peerName("Forge"));
}

void CITPClientTest::thePeersNameIsKept()
{
    Visualiser visualiser;
    const auto client = enabledClient();
    QStringList locations;
    connect(client->packet(), &CITPPacket::peerLocationPacket, this,
            [&](QHostAddress& address, quint16&, QString&, QString&, QString&) {
                locations << address.toString();
            });
    client->connectTo(QStringLiteral("127.0.0.1"), visualiser.port());
    QTcpSocket* const peer = visualiser.accept();
    QVERIFY(peer != nullptr);
    peer->write(peerName("Vis\xe9"));
    QTRY_COMPARE(client->remoteName(), QStringLiteral("Vis") + QChar(0xE9));
    peer->write(message(QByteArray("PINFPLoc\1\0T\0N\0S\0", 16)));
    QTRY_COMPARE(locations, QStringList(QStringLiteral("127.0.0.1")));
    peer->write(peerName("Other"));
    QTRY_COMPARE(client->remoteName(), QStringLiteral("Other"));
}

void CITPClientTest::aReadIsAMessage()
{
    Visualiser visualiser;
    const auto client = enabledClient();
    QSignalSpy invalid(client->packet(), &CITPPacket::invalidPacket);
    client->connectTo(QStringLiteral("127.0.0.1"), visualiser.port());
    QTcpSocket* const peer = visualiser.accept();
    QVERIFY(peer != nullptr);
    peer->write(peerName("One") + peerName("Two")); // nothing takes them apart
    QTRY_COMPARE(invalid.count(), 1);
    QCOMPARE(invalid.first().first().toString(), QStringLiteral("CITP Header: Wrong message size"));
    const QByteArray whole = peerName("Three");
    peer->write(whole.left(10)); // nor puts them together
    QTRY_COMPARE(invalid.count(), 2);
    QCOMPARE(invalid.last().first().toString(), QStringLiteral("CITP Header: Packet too small"));
    peer->write(whole.mid(10));
    QTRY_COMPARE(invalid.count(), 3);
    QCOMPARE(client->remoteName(), QString());
    peer->write(whole);
    QTRY_COMPARE(client->remoteName(), QStringLiteral("Three"));
}

void CITPClientTest::junkIsReadInBoundedPieces()
{
    Visualiser visualiser;
    const auto client = enabledClient();
    client->connectTo(QStringLiteral("127.0.0.1"), visualiser.port());
    QTcpSocket* const peer = visualiser.accept();
    QVERIFY(peer != nullptr);
    QTRY_VERIFY(client->isReady());
    auto* const socket = client->findChild<QTcpSocket*>();
    int pieces = 0;
    qint64 most = 0;
    connect(client->packet(), &CITPPacket::invalidPacket, this, [&] {
        ++pieces;
        most = qMax(most, socket->bytesAvailable());
    });
    constexpr int kKilobytes = 2000;
    peer->write(QByteArray(kKilobytes * 1024, '\xee'));
    QTRY_VERIFY_WITH_TIMEOUT(pieces >= kKilobytes, 20000); // at most 1024 bytes each
    QCOMPARE(most, 0);                                     // and none is kept beside them
    // A name arrives whole once the junk is through.
    QTRY_VERIFY((peer->write(peerName("Vis")), client->remoteName() == QLatin1String("Vis")));
    QCOMPARE(client->connectionState(), QAbstractSocket::ConnectedState);
}

void CITPClientTest::aFailedReadIsLogged()
{
    const auto client = enabledClient();
    // While the name is looked up there is nothing to read from.
    client->connectTo(QStringLiteral("localhost"), 9);
    QCOMPARE(client->connectionState(), QAbstractSocket::HostLookupState);
    QSignalSpy invalid(client->packet(), &CITPPacket::invalidPacket);
    const MessageKeeper keeper;
    client->handleReadyRead();
    QCOMPARE(MessageKeeper::messages(),
             QStringList(QStringLiteral("CITPClient: Read datagram error")));
    client->setEnabled(false);
    client->handleReadyRead();
    QCOMPARE(MessageKeeper::messages().size(), 1);
    QCOMPARE(invalid.count(), 0);
}

void CITPClientTest::slotsWithoutAConnectionAreHarmless()
{
    CITPClient client(QStringLiteral("Forge"), {QStringLiteral("Hall")}, nullptr);
    const MessageKeeper keeper;
    client.handleConnected();
    QVERIFY(!client.isReady());
    QCOMPARE(MessageKeeper::messages(), QStringList());
    client.setEnabled(true);
    client.handleConnected();
    QVERIFY(client.isReady());
    QCOMPARE(MessageKeeper::messages(),
             QStringList(QStringLiteral("Sending universe name: 0:Hall")));
    client.sendChannelBlock(0, "a", 1, false);
    client.handleReadyRead();
    client.handleDisconnected();
    client.handleInvalidPacket(QStringLiteral("anything"));
    QString name = QStringLiteral("Vis");
    client.handlePeerNamePacket(name);
    QCOMPARE(client.remoteName(), name);
    client.handleDisconnected();
    QCOMPARE(client.remoteName(), QString());
    QCOMPARE(MessageKeeper::messages().size(), 1);
}

void CITPClientTest::aPeerThatStopsReadingCostsNoMemory()
{
    Visualiser visualiser;
    visualiser.takeLittle();
    const auto client = enabledClient();
    client->connectTo(QStringLiteral("127.0.0.1"), visualiser.port());
    QTcpSocket* const peer = visualiser.accept();
    QVERIFY(peer != nullptr);
    peer->setReadBufferSize(1);
    QTRY_VERIFY(client->isReady());
    auto* const socket = client->findChild<QTcpSocket*>();
    const QByteArray data(512, '\x5a');
    const MessageKeeper keeper;
    for (int i = 0; i < 40000; ++i) { // 21 megabytes
        client->sendChannelBlock(0, data.constData(), 512, false);
        socket->flush();
    }
    const QStringList once(QStringLiteral("CITPClient: Failed to send data packet"));
    QCOMPARE(MessageKeeper::messages(), once);
    QVERIFY(socket->bytesToWrite() <= 4 * 1024 * 1024 + 542);
    // When it reads again, whole blocks go on from where they stopped.
    peer->setReadBufferSize(0);
    QByteArray all;
    QTRY_VERIFY_WITH_TIMEOUT((all += peer->readAll(), socket->bytesToWrite() == 0), 20000);
    client->sendChannelBlock(9, "end", 3, false);
    const QByteArray end = block(false, 9, "end");
    QTRY_VERIFY_WITH_TIMEOUT((all += peer->readAll(), all.endsWith(end)), 20000);
    QCOMPARE((all.size() - peerName("Forge").size() - end.size()) % 542, 0);
    QCOMPARE(MessageKeeper::messages(), once);
}

QTEST_GUILESS_MAIN(CITPClientTest)
#include "CITPClientTest.moc"
