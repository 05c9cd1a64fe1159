#include "output/Talvis.h"

#include "tests/output/RecordingSocket.h"

#include <QObject>
#include <QSignalSpy>
#include <QThread>
#include <QtTest>

#include <memory>

namespace {

const QByteArray kSyncBytes = QByteArray::fromHex("0401dc4a 0100 0901 00000000 00000000");
constexpr char kTruncating[] = "Truncating: DMX data length exceed 512";

QByteArray universe()
{
    QByteArray bytes(600, '\0');
    for (int i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<char>(i * 7 + 1);
    }
    return bytes;
}

/// A Talvis over a recording socket, past its syncs.
struct Wire
{
    Wire() { socket->sent.clear(); }

    QByteArray last() const
    {
        return socket->sent.isEmpty() ? QByteArray() : socket->sent.last().bytes;
    }

    RecordingSocket* socket = new RecordingSocket;
    Talvis talvis{socket, nullptr};
};

} // namespace

class TalvisTest : public QObject
{
    Q_OBJECT
private slots:
    void fiveSyncsAreBroadcastAtTheStart();
    void theSocketIsOwned();
    void framesToOneAddressAreByteForByte();
    void broadcastFramesAreByteForByte();
    void packetsAreAHeaderAndTheirSlots_data();
    void packetsAreAHeaderAndTheirSlots();
    void moreThan512SlotsAreCut_data();
    void moreThan512SlotsAreCut();
    void broadcastsAreNotCut();
    void theAnswerIsTheSockets();
    void aNegativeLengthSendsNoSlots();
    void textAndReadyAddressSendTheSame();
    void everythingAnswersFalseWithoutASocket();
    void requestsSend();
    void requestsFromAnotherThreadSendHere();
    void theSocketIsDrained();
    void aFailedReadEndsTheDraining();
    void theSourceIsTheSendersAddress();
    void aShortDatagramLeavesTheBytesBefore();
    void aLongDatagramIsCut();
    void unknownTypesPassWithoutALog();
};

void TalvisTest::fiveSyncsAreBroadcastAtTheStart()
{
    auto* const socket = new RecordingSocket;
    const Talvis talvis(socket, nullptr);
    QCOMPARE(socket->sent.size(), 5);
    for (const RecordingSocket::Sent& sent : qAsConst(socket->sent)) {
        QVERIFY(sent.broadcast);
        QCOMPARE(sent.bytes, kSyncBytes);
    }
}

void TalvisTest::theSocketIsOwned()
{
    auto* const socket = new RecordingSocket;
    QSignalSpy gone(socket, &QObject::destroyed);
    auto talvis = std::make_unique<Talvis>(socket, nullptr);
    QCOMPARE(talvis->socket(), socket);
    talvis.reset();
    QCOMPARE(gone.count(), 1);
}

void TalvisTest::framesToOneAddressAreByteForByte()
{
    Wire wire;
    QVERIFY(wire.talvis.sendDmxOut("10.1.2.3", 0x05, 0x0607, "\xaa\xbb", 2));
    QCOMPARE(wire.socket->sent.last().address, QHostAddress("10.1.2.3"));
    QVERIFY(!wire.socket->sent.last().broadcast);
    QCOMPARE(wire.last(),
             QByteArray::fromHex("0401dc4a 0100 0101 00000000 0000 0706 ffffffff 05 aabb"));

    QVERIFY(wire.talvis.sendPortOut("10.1.2.4", 0xFFFFFFFF, 3, 0x0102, 2, 0xFFF0, "\xaa\xbb"));
    QCOMPARE(wire.socket->sent.last().address, QHostAddress("10.1.2.4"));
    QCOMPARE(wire.last(), QByteArray::fromHex("0401dc4a 0100 0801 00000000"
                                              "ffffffff 03 00 0201 0200 f0ff aabb"));
    QCOMPARE(wire.last().mid(22, 2), QByteArray::fromHex("f0ff"));
    QVERIFY(wire.talvis.sendPortOut("10.1.2.4", 0x01020304, 3, 0, 2, 0, "\xaa\xbb"));
    QCOMPARE(wire.last().mid(12, 4), QByteArray::fromHex("04030201"));
    QCOMPARE(wire.socket->sent.size(), 3);
}

void TalvisTest::broadcastFramesAreByteForByte()
{
    const QByteArray data = universe();
    Wire wire;
    QVERIFY(wire.talvis.broadcastDmxOut(0x0A0B0C0D, 0, 0, data.constData(), 512));
    QVERIFY(wire.socket->sent.last().broadcast);
    QCOMPARE(wire.last(), QByteArray::fromHex("0401dc4a 0100 0101 00000000 0000 0000 0d0c0b0a 00") +
                              data.left(512));
    QVERIFY(wire.talvis.broadcastPortOut(0xFFFFFFFF, 2, 0x8001, 512, 0xFFF0, data.constData()));
    QVERIFY(wire.socket->sent.last().broadcast);
    QCOMPARE(wire.last(), QByteArray::fromHex("0401dc4a 0100 0801 00000000"
                                              "ffffffff 02 00 0180 0002 f0ff") +
                              data.left(512));
    wire.talvis.sendSync();
    QVERIFY(wire.socket->sent.last().broadcast);
    QCOMPARE(wire.last(), kSyncBytes);
    QCOMPARE(wire.socket->sent.size(), 3);
}

void TalvisTest::packetsAreAHeaderAndTheirSlots_data()
{
    QTest::addColumn<int>("slotCount");
    QTest::addColumn<int>("dmxSize");
    QTest::addColumn<int>("portSize");
    QTest::newRow("none") << 0 << 21 << 24;
    QTest::newRow("24 slots") << 24 << 45 << 48;
    QTest::newRow("512 slots") << 512 << 533 << 536;
}

void TalvisTest::packetsAreAHeaderAndTheirSlots()
{
    QFETCH(const int, slotCount);
    QFETCH(const int, dmxSize);
    QFETCH(const int, portSize);
    const QByteArray data = universe();
    Wire wire;
    QVERIFY(wire.talvis.sendDmxOut("127.0.0.1", 0, 0, data.constData(), slotCount));
    QCOMPARE(wire.last().size(), dmxSize);
    QCOMPARE(wire.last().mid(21), data.left(slotCount)); // no start code in front
    QVERIFY(wire.talvis.sendPortOut("127.0.0.1", 1, 1, 0, static_cast<quint32>(slotCount), 0,
                                    data.constData()));
    QCOMPARE(wire.last().size(), portSize);
    QCOMPARE(wire.last().mid(24), data.left(slotCount));
}

void TalvisTest::moreThan512SlotsAreCut_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<bool>("socketAnswer");
    QTest::addColumn<bool>("truncated");
    QTest::addColumn<bool>("answer");
    QTest::newRow("512") << 512 << true << false << true;
    QTest::newRow("512, not sent") << 512 << false << false << false;
    QTest::newRow("513") << 513 << true << true << false;
    QTest::newRow("513, not sent") << 513 << false << true << false;
    QTest::newRow("far above") << 0x7FFFFFFF << true << true << false;
}

void TalvisTest::moreThan512SlotsAreCut()
{
    QFETCH(const int, length);
    QFETCH(const bool, socketAnswer);
    QFETCH(const bool, truncated);
    QFETCH(const bool, answer);
    static int logged = 0;
    static QtMessageHandler old = nullptr;
    logged = 0;
    old = qInstallMessageHandler(
        [](QtMsgType type, const QMessageLogContext& context, const QString& text) {
            if (text == QLatin1String(kTruncating) && type == QtDebugMsg) {
                ++logged;
            } else {
                old(type, context, text);
            }
        });
    const QByteArray data = universe();
    Wire wire;
    wire.socket->answer = socketAnswer;
    const bool dmx = wire.talvis.sendDmxOut("127.0.0.1", 0, 0, data.constData(), length);
    const int loggedByDmx = logged;
    const QByteArray dmxBytes = wire.last();
    const bool port = wire.talvis.sendPortOut("127.0.0.1", 1, 1, 0, static_cast<quint32>(length), 0,
                                              data.constData());
    qInstallMessageHandler(old);

    QCOMPARE(dmx, answer);
    QCOMPARE(port, answer);
    QCOMPARE(loggedByDmx, truncated ? 1 : 0);
    QCOMPARE(logged, truncated ? 2 : 0);
    QCOMPARE(dmxBytes.mid(21), data.left(512));
    QCOMPARE(wire.last().mid(24), data.left(512));
    QCOMPARE(wire.last().mid(20, 2), QByteArray::fromHex("0002")); // the length that was sent
}

void TalvisTest::broadcastsAreNotCut()
{
    const QByteArray data = universe();
    Wire wire;
    QVERIFY(wire.talvis.broadcastDmxOut(1, 0, 0, data.constData(), 513));
    QCOMPARE(wire.last().mid(21), data.left(513));
    QVERIFY(wire.talvis.broadcastPortOut(1, 1, 0, 513, 0, data.constData()));
    QCOMPARE(wire.last().mid(24), data.left(513));
    QCOMPARE(wire.last().mid(20, 2), QByteArray::fromHex("0102"));
    // What no packet holds isn't sent.
    QVERIFY(!wire.talvis.broadcastDmxOut(1, 0, 0, data.constData(), 0xFFFFFFFF));
    QVERIFY(!wire.talvis.broadcastPortOut(1, 1, 0, 0xFFFFFFFF, 0, data.constData()));
    QCOMPARE(wire.socket->sent.size(), 2);
}

void TalvisTest::theAnswerIsTheSockets()
{
    Wire wire;
    for (const bool answer : {true, false}) {
        wire.socket->answer = answer;
        QCOMPARE(wire.talvis.sendDmxOut("127.0.0.1", 0, 0, "a", 1), answer);
        QCOMPARE(wire.talvis.sendPortOut("127.0.0.1", 1, 1, 0, 1, 0, "a"), answer);
        QCOMPARE(wire.talvis.broadcastDmxOut(1, 0, 0, "a", 1), answer);
        QCOMPARE(wire.talvis.broadcastPortOut(1, 1, 0, 1, 0, "a"), answer);
    }
    QCOMPARE(wire.socket->sent.size(), 8);
}

void TalvisTest::aNegativeLengthSendsNoSlots()
{
    Wire wire;
    QVERIFY(wire.talvis.sendDmxOut("127.0.0.1", 0, 0, "a", -1));
    QCOMPARE(wire.last().size(), 21);
}

void TalvisTest::textAndReadyAddressSendTheSame()
{
    const QByteArray data = universe();
    Wire wire;
    const QHostAddress address("10.1.2.3");
    QVERIFY(wire.talvis.sendDmxOut("10.1.2.3", 1, 2, data.constData(), 77));
    QVERIFY(wire.talvis.sendDmxOut(address, 1, 2, data.constData(), 77));
    QVERIFY(wire.talvis.sendPortOut("10.1.2.3", 1, 2, 3, 77, 4, data.constData()));
    QVERIFY(wire.talvis.sendPortOut(address, 1, 2, 3, 77, 4, data.constData()));
    QCOMPARE(wire.socket->sent.size(), 4);
    for (const int i : {0, 2}) {
        QCOMPARE(wire.socket->sent.at(i).address, wire.socket->sent.at(i + 1).address);
        QCOMPARE(wire.socket->sent.at(i).bytes, wire.socket->sent.at(i + 1).bytes);
    }
    QTest::ignoreMessage(QtDebugMsg, kTruncating);
    QVERIFY(!wire.talvis.sendDmxOut(address, 1, 2, data.constData(), 513));
    QTest::ignoreMessage(QtDebugMsg, kTruncating);
    QVERIFY(!wire.talvis.sendPortOut(address, 1, 2, 3, 513, 4, data.constData()));
    QCOMPARE(wire.socket->sent.size(), 6);
}

void TalvisTest::everythingAnswersFalseWithoutASocket()
{
    Talvis talvis(nullptr, nullptr);
    QVERIFY(!talvis.sendDmxOut("127.0.0.1", 0, 0, "a", 1));
    QVERIFY(!talvis.sendPortOut("127.0.0.1", 1, 1, 0, 1, 0, "a"));
    QVERIFY(!talvis.broadcastDmxOut(1, 0, 0, "a", 1));
    QVERIFY(!talvis.broadcastPortOut(1, 1, 0, 1, 0, "a"));
    talvis.handleSyncPacketRequest();
    talvis.checkSocket();
}

void TalvisTest::requestsSend()
{
    Wire wire;
    emit wire.talvis.requestSyncPacket();
    QCOMPARE(wire.last(), kSyncBytes);
    const unsigned char data[] = {1, 2, 3};
    emit wire.talvis.requestSendPortOut("10.1.2.3", 7, 3, 0xFFFF0102, 3, 0xABCDFFF0, data);
    QCOMPARE(wire.socket->sent.last().address, QHostAddress("10.1.2.3"));
    QCOMPARE(wire.last(), QByteArray::fromHex("0401dc4a 0100 0801 00000000"
                                              "07000000 03 00 0201 0300 f0ff 010203"));
}

void TalvisTest::requestsFromAnotherThreadSendHere()
{
    Wire wire;
    static const unsigned char data[] = {1, 2, 3};
    const std::unique_ptr<QThread> thread(QThread::create([&wire] {
        emit wire.talvis.requestSyncPacket();
        emit wire.talvis.requestSendPortOut("10.1.2.3", 7, 3, 0, 3, 0, data);
    }));
    thread->start();
    QVERIFY(thread->wait());
    QCOMPARE(wire.socket->sent.size(), 0); // queued for this thread's event loop
    QTRY_COMPARE(wire.socket->sent.size(), 2);
    QCOMPARE(wire.socket->sent.at(0).bytes, kSyncBytes);
    QCOMPARE(wire.socket->sent.at(1).bytes.size(), 27);
}

namespace {

QByteArray blinkScan(const char* serial)
{
    return QByteArray::fromHex("0401dc4a 0100 0202 0a010203") + QByteArray::fromHex(serial);
}

} // namespace

void TalvisTest::theSocketIsDrained()
{
    Wire wire;
    QSignalSpy scans(&wire.talvis, &Talvis::signalBlinkScanResponse);
    for (const char* const serial : {"01000000", "02000000", "03000000"}) {
        wire.socket->pending.append({blinkScan(serial), QHostAddress("10.1.2.3")});
    }
    QVERIFY(QMetaObject::invokeMethod(wire.socket, "readyRead"));
    QCOMPARE(scans.count(), 3);
    QCOMPARE(scans.at(0).at(1).toUInt(), 1U);
    QCOMPARE(scans.at(2).at(1).toUInt(), 3U);
    QCOMPARE(wire.socket->reads, 4);
}

void TalvisTest::aFailedReadEndsTheDraining()
{
    Wire wire;
    QSignalSpy scans(&wire.talvis, &Talvis::signalBlinkScanResponse);
    for (const char* const serial : {"01000000", "02000000", "03000000"}) {
        wire.socket->pending.append({blinkScan(serial), QHostAddress("10.1.2.3")});
    }
    wire.socket->failingRead = 2;
    wire.talvis.checkSocket();
    QCOMPARE(scans.count(), 1);
    QCOMPARE(wire.socket->reads, 2);
    wire.talvis.checkSocket(); // the next arrival finds the rest
    QCOMPARE(scans.count(), 3);
}

void TalvisTest::theSourceIsTheSendersAddress()
{
    Wire wire;
    QSignalSpy variables(&wire.talvis, &Talvis::signalDeviceVariableReply);
    const QByteArray datagram =
        QByteArray::fromHex("0401dc4a 0100 0601 00000000 3412 0000 78563412");
    wire.socket->pending.append({datagram, QHostAddress("192.168.1.23")});
    wire.socket->pending.append({datagram, QHostAddress("::ffff:192.168.1.24")});
    wire.talvis.checkSocket();
    QCOMPARE(variables.count(), 2);
    QCOMPARE(variables.at(0).at(0).toUInt(), 0xC0A80117U);
    QCOMPARE(variables.at(1).at(0).toUInt(), 0xC0A80118U);
}

void TalvisTest::aShortDatagramLeavesTheBytesBefore()
{
    Wire wire;
    QSignalSpy scans(&wire.talvis, &Talvis::signalBlinkScanResponse);
    wire.socket->pending.append({blinkScan("04030201"), QHostAddress("10.1.2.3")});
    wire.socket->pending.append({blinkScan("ff"), QHostAddress("10.1.2.3")});
    wire.talvis.checkSocket();
    wire.socket->pending.append({QByteArray(), QHostAddress("10.1.2.3")});
    wire.talvis.checkSocket(); // the buffer outlives the call, too
    QCOMPARE(scans.count(), 3);
    QCOMPARE(scans.at(1).at(1).toUInt(), 0x010203FFU);
    QCOMPARE(scans.at(2).at(1).toUInt(), 0x010203FFU);
}

void TalvisTest::aLongDatagramIsCut()
{
    Wire wire;
    int count = -1;
    quint8 last = 0;
    connect(&wire.talvis, &Talvis::signalGetByteArrayReply, this,
            [&](uint, uint, QVector<quint8>& values) {
                count = values.size();
                last = values.last();
            });
    QByteArray datagram = QByteArray::fromHex("0401dc4a 0100 0e01 00000000 3412 00000000 ffff");
    datagram += QByteArray(5000 - datagram.size(), '\7');
    wire.socket->pending.append({datagram, QHostAddress("10.1.2.3")});
    wire.talvis.checkSocket();
    QCOMPARE(count, 4096 - 20);
    QCOMPARE(last, quint8{7});
}

void TalvisTest::unknownTypesPassWithoutALog()
{
    static int logged = 0;
    logged = 0;
    Wire wire;
    for (int i = 0; i < 10; ++i) {
        wire.socket->pending.append(
            {QByteArray::fromHex("0401dc4a 0100 7777 00000000"), QHostAddress("10.1.2.3")});
    }
    const auto old = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString&) { ++logged; });
    wire.talvis.checkSocket();
    qInstallMessageHandler(old);
    QCOMPARE(logged, 0);
    QVERIFY(wire.socket->pending.isEmpty());
}

QTEST_GUILESS_MAIN(TalvisTest)
#include "TalvisTest.moc"
