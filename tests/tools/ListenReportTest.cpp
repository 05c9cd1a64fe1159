#include "tools/listen/ListenReport.h"

#include "tools/listen/FrameLedger.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QObject>
#include <QtTest>

namespace {

void hear(FrameLedger& ledger, const QByteArray& bytes, qint64 timeMs, bool broadcast = false)
{
    HeardDatagram heard;
    heard.timeNs = 1700000000000000000 + timeMs * 1000000;
    heard.source = 0x7F000001;
    heard.sourcePort = 40000;
    heard.controller = broadcast ? 0x7FFFFFFF : 0x7F000002;
    heard.broadcast = broadcast;
    heard.data = bytes.constData();
    heard.size = bytes.size();
    ledger.hear(heard);
}

/// Three port frames 25 and 26 ms apart, one DMX frame to all, a sync and a piece of junk.
FrameLedger example()
{
    FrameLedger ledger;
    const QByteArray port =
        QByteArray::fromHex("0401dc4a 0100 0801 00000000 ffffffff 03 00 0201 0400 f0ff 00010aff");
    hear(ledger, QByteArray::fromHex("0401dc4a 0100 0901 00000000 00000000"), 0, true);
    hear(ledger, port, 100);
    hear(ledger, port, 125);
    hear(ledger, port, 151);
    hear(ledger, QByteArray::fromHex("0401dc4a 0100 0101 00000000 0000 0500 07000000 00 20"), 160,
         true);
    hear(ledger, "junk", 170);
    return ledger;
}

const ListenRun kRun = {{0x7F000002, 0}, 1.5, 9};

} // namespace

class ListenReportTest : public QObject
{
    Q_OBJECT
private slots:
    void totalsAreReported();
    void streamsAreReportedWhole();
    void nothingHeardIsReported();
    void theTableHasARowForEachStream();
    void addressesAndOutputsHaveTexts();
};

void ListenReportTest::totalsAreReported()
{
    const QJsonObject report = ListenReport::json(example(), kRun);
    QCOMPARE(report["addresses"].toArray(), (QJsonArray{"127.0.0.2", "0.0.0.0"}));
    QCOMPARE(report["seconds"].toDouble(), 1.5);
    QCOMPARE(report["datagrams"].toInt(), 6);
    QCOMPARE(report["bytes"].toInt(), 16 + 3 * 28 + 22 + 4);
    QCOMPARE(report["frames"].toInt(), 4);
    QCOMPARE(report["syncs"].toInt(), 1);
    QCOMPARE(report["dropped"].toInt(), 9);
    QCOMPARE(report["untracked"].toInt(-1), 0);
    QCOMPARE(report["junk"].toObject()["total"].toInt(), 1);
    QCOMPARE(report["junk"].toObject()["tooShort"].toInt(), 1);
    QCOMPARE(report["streams"].toArray().size(), 3);
    QVERIFY(!QJsonDocument::fromJson(QJsonDocument(report).toJson()).isNull());
}

void ListenReportTest::streamsAreReportedWhole()
{
    const QJsonArray streams = ListenReport::json(example(), kRun)["streams"].toArray();
    const QJsonObject port = streams[0].toObject();
    const QJsonObject expected{
        {"source", "127.0.0.1"},
        {"sourcePort", 40000},
        {"controller", "127.0.0.2"},
        {"broadcast", false},
        {"kind", "port"},
        {"universe", 4294967295.0},
        {"port", 3},
        {"flags", 0x0102},
        {"startCode", 0xFFF0},
        {"frames", 3},
        {"bytes", 84},
        {"changes", 0},
        {"firstSeconds", 0.1},
        {"lastSeconds", 0.151},
        {"rate", 2.0 / 0.051},
        {"intervalMs", 25.0},
        {"jitterMs", QJsonObject{{"median", 0.0}, {"p99", 1.0}, {"greatest", 1.0}}},
        {"leastLength", 4},
        {"greatestLength", 4},
        {"values", QJsonArray{0, 1, 10, 255}},
    };
    QCOMPARE(port, expected);

    const QJsonObject dmx = streams[1].toObject();
    QCOMPARE(dmx["kind"].toString(), QStringLiteral("dmx"));
    QCOMPARE(dmx["controller"].toString(), QStringLiteral("127.255.255.255"));
    QCOMPARE(dmx["broadcast"].toBool(), true);
    QCOMPARE(dmx["universe"].toInt(), 7);
    QCOMPARE(dmx["timer"].toInt(), 5);
    QVERIFY(!dmx.contains(QStringLiteral("port")));
    QVERIFY(dmx["rate"].isNull()); // of one frame nothing can be said
    QVERIFY(dmx["jitterMs"].isNull());

    const QJsonObject sync = streams[2].toObject();
    QCOMPARE(sync["kind"].toString(), QStringLiteral("sync"));
    QCOMPARE(sync["frames"].toInt(), 1);
    QCOMPARE(sync["firstSeconds"].toDouble(-1.0), 0.0);
    QVERIFY(!sync.contains(QStringLiteral("values")));
}

void ListenReportTest::nothingHeardIsReported()
{
    const FrameLedger empty;
    const QJsonObject report = ListenReport::json(empty, kRun);
    QCOMPARE(report["frames"].toInt(-1), 0);
    QVERIFY(report["streams"].isArray());
    QCOMPARE(report["streams"].toArray().size(), 0);
    QCOMPARE(ListenReport::text(empty, kRun),
             QStringLiteral("0 frames and 0 syncs heard in 1.5 s, 0 bytes; 0 junk, 9 dropped\n"));
}

void ListenReportTest::theTableHasARowForEachStream()
{
    const QStringList lines =
        ListenReport::text(example(), kRun).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 5);
    QCOMPARE(lines[0],
             QStringLiteral("4 frames and 1 syncs heard in 1.5 s, 126 bytes; 1 junk, 9 dropped"));
    QCOMPARE(lines[2].simplified(),
             QStringLiteral("127.0.0.1:40000 127.0.0.2 port 3 3 39.22 0.000 1.000 1.000 84 4 "
                            "00010aff"));
    QCOMPARE(lines[3].simplified(),
             QStringLiteral("127.0.0.1:40000 127.255.255.255 (b) dmx u7 1 - - - - 22 1 20"));
    QVERIFY(lines[4].contains(QLatin1String("sync")));
}

void ListenReportTest::addressesAndOutputsHaveTexts()
{
    QCOMPARE(ipText(0x0A010203), QStringLiteral("10.1.2.3"));
    StreamKey key;
    key.universe = 0xFFFFFFFF;
    key.port = 3;
    QCOMPARE(outputText(key), QStringLiteral("sync"));
    key.kind = FrameKind::Port;
    QCOMPARE(outputText(key), QStringLiteral("port 3"));
    key.kind = FrameKind::Dmx;
    QCOMPARE(outputText(key), QStringLiteral("dmx"));
    key.universe = 0;
    QCOMPARE(outputText(key), QStringLiteral("dmx u0"));
}

QTEST_APPLESS_MAIN(ListenReportTest)
#include "ListenReportTest.moc"
