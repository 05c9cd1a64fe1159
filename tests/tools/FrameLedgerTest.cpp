#include "tools/listen/FrameLedger.h"

#include <QObject>
#include <QtTest>

#include <random>

namespace {

constexpr qint64 kMs = 1000000; // nanoseconds

QByteArray little(quint32 number, int width)
{
    QByteArray bytes;
    for (int i = 0; i < width; ++i) {
        bytes += static_cast<char>(number >> (8 * i) & 0xFF);
    }
    return bytes;
}

QByteArray dmx(quint32 universe, const QByteArray& values)
{
    return QByteArray::fromHex("0401dc4a 0100 0101 00000000 0000 0000") + little(universe, 4) +
           '\0' + values;
}

QByteArray port(quint8 number, const QByteArray& values)
{
    return QByteArray::fromHex("0401dc4a 0100 0801 00000000 ffffffff") + little(number, 2) +
           QByteArray::fromHex("0000") + little(static_cast<quint32>(values.size()), 2) +
           QByteArray::fromHex("0000") + values;
}

const QByteArray kSync = QByteArray::fromHex("0401dc4a 0100 0901 00000000 00000000");

HeardDatagram datagram(const QByteArray& bytes, qint64 timeMs = 0)
{
    HeardDatagram heard;
    heard.timeNs = timeMs * kMs;
    heard.source = 0x7F000001;
    heard.sourcePort = 40000;
    heard.controller = 0x7F000002;
    heard.data = bytes.constData();
    heard.size = bytes.size();
    return heard;
}

} // namespace

class FrameLedgerTest : public QObject
{
    Q_OBJECT
private slots:
    void streamsAreKeptApart();
    void aStreamCollectsItsFrames();
    void everySortOfJunkIsCounted();
    void junkOfAnyLengthIsSurvived();
    void aFloodOfUniversesIsBounded();
};

void FrameLedgerTest::streamsAreKeptApart()
{
    FrameLedger ledger;
    const QByteArray first = port(1, "abc");
    const QByteArray second = port(2, "abc");
    const QByteArray single = dmx(0xFFFFFFFF, "abc");
    const QByteArray universe = dmx(7, "abc");
    for (const QByteArray* bytes : {&first, &second, &single, &universe, &kSync}) {
        ledger.hear(datagram(*bytes));
    }
    HeardDatagram elsewhere = datagram(first);
    elsewhere.controller = 0x7F000003;
    ledger.hear(elsewhere);
    HeardDatagram other = datagram(first);
    other.sourcePort = 40001;
    ledger.hear(other);
    HeardDatagram toAll = datagram(first);
    toAll.broadcast = true;
    ledger.hear(toAll);
    ledger.hear(datagram(first));
    QCOMPARE(ledger.streams().size(), std::size_t{8});
    QCOMPARE(ledger.totals().datagrams, quint64{9});
    QCOMPARE(ledger.totals().frames, quint64{8});
    QCOMPARE(ledger.totals().syncs, quint64{1});
    QCOMPARE(ledger.totals().bytes, quint64(6 * 27 + 2 * 24 + 16));
    QCOMPARE(ledger.totals().junk(), quint64{0});
}

void FrameLedgerTest::aStreamCollectsItsFrames()
{
    FrameLedger ledger;
    for (int i = 0; i < 41; ++i) {
        const QByteArray values(24, static_cast<char>(i));
        const QByteArray one = port(1, values);
        const QByteArray two = port(2, QByteArray(512, 'x'));
        ledger.hear(datagram(one, 1000 + 25 * i));
        ledger.hear(datagram(two, 1000 + 50 * i));
    }
    QCOMPARE(ledger.streams().size(), std::size_t{2});
    const FrameStream& one = ledger.streams().cbegin()->second;
    const FrameStream& two = ledger.streams().crbegin()->second;
    QCOMPARE(one.key().port, quint8{1});
    QCOMPARE(one.key().source, 0x7F000001U);
    QCOMPARE(one.key().controller, 0x7F000002U);
    QCOMPARE(one.frames(), quint64{41});
    QCOMPARE(one.bytes(), quint64{41 * 48});
    QCOMPARE(one.rate(), 40.0);
    QCOMPARE(one.changes(), quint64{40});
    QCOMPARE(one.values()[23], quint8{40});
    QCOMPARE(two.rate(), 20.0);
    QCOMPARE(two.changes(), quint64{0});
    QCOMPARE(two.count(), 512);
}

void FrameLedgerTest::everySortOfJunkIsCounted()
{
    FrameLedger ledger;
    QByteArray version = kSync;
    version[4] = '\2';
    QByteArray type = kSync;
    type[6] = '\x55';
    const QList<QByteArray> junk = {"",   "x",  "GET / HTTP/1.0\r\n",   version,
                                    type, type, kSync + QByteArray("x")};
    for (const QByteArray& bytes : junk) {
        ledger.hear(datagram(bytes));
    }
    const LedgerTotals& totals = ledger.totals();
    QCOMPARE(totals.datagrams, quint64{7});
    QCOMPARE(totals.tooShort, quint64{2});
    QCOMPARE(totals.wrongMagic, quint64{1});
    QCOMPARE(totals.wrongVersion, quint64{1});
    QCOMPARE(totals.unknownType, quint64{2});
    QCOMPARE(totals.wrongLength, quint64{1});
    QCOMPARE(totals.junk(), quint64{7});
    QCOMPARE(totals.frames, quint64{0});
    QVERIFY(ledger.streams().empty());
}

void FrameLedgerTest::junkOfAnyLengthIsSurvived()
{
    std::mt19937 random(11);
    FrameLedger ledger;
    for (int round = 0; round < 5000; ++round) {
        QByteArray bytes = round % 2 == 0 ? port(1, "") : dmx(1, "");
        bytes.truncate(static_cast<int>(random() % 25));
        const int size = static_cast<int>(random() % 600);
        while (bytes.size() < size) {
            bytes += static_cast<char>(random() & 0xFF);
        }
        ledger.hear(datagram(bytes, round));
    }
    const LedgerTotals& totals = ledger.totals();
    QCOMPARE(totals.datagrams, quint64{5000});
    QCOMPARE(totals.junk() + totals.frames, quint64{5000});
}

void FrameLedgerTest::aFloodOfUniversesIsBounded()
{
    FrameLedger ledger;
    const auto most = static_cast<quint32>(FrameLedger::kMostStreams);
    for (quint32 universe = 0; universe < most + 10; ++universe) {
        const QByteArray bytes = dmx(universe, "abc");
        ledger.hear(datagram(bytes));
    }
    const QByteArray known = dmx(3, "abc");
    ledger.hear(datagram(known)); // those that have a place keep it
    QCOMPARE(ledger.streams().size(), FrameLedger::kMostStreams);
    QCOMPARE(ledger.totals().untracked, quint64{10});
    QCOMPARE(ledger.totals().frames, quint64{most} + 11);
}

QTEST_APPLESS_MAIN(FrameLedgerTest)
#include "FrameLedgerTest.moc"
