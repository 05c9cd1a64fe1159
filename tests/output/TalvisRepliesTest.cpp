#include "output/TalvisReplies.h"

#include "output/Talvis.h"
#include "tests/output/RecordingSocket.h"

#include <QObject>
#include <QStringList>
#include <QtTest>

#include <random>

namespace {

constexpr quint32 kSource = 0xC0A80117; // 192.168.1.23
constexpr int kBufferSize = 4096;

QString hex(const void* bytes, int count)
{
    return QString::fromLatin1(QByteArray(static_cast<const char*>(bytes), count).toHex());
}

QString numbers(const QVector<quint64>& list)
{
    QStringList texts;
    for (const quint64 number : list) {
        texts << QString::number(number, 16);
    }
    return QLatin1Char('[') + texts.join(QLatin1Char(' ')) + QLatin1Char(']');
}

template <class Number>
QVector<quint64> widened(const QVector<Number>& list)
{
    QVector<quint64> wide;
    for (const Number number : list) {
        wide << number;
    }
    return wide;
}

/// A Talvis whose signals are written down, a line each, addresses and numbers in hexadecimal.
class Ears
{
public:
    Ears()
    {
        const auto hear = [this](const char* name, const QStringList& arguments) {
            lines << QString::fromLatin1(name) + QLatin1Char(' ') +
                         arguments.join(QLatin1Char(' '));
        };
        const auto x = [](quint64 number) { return QString::number(number, 16); };
        const auto discover = [=](const char* name) {
            return [=](char* mac, uint ip, quint64 sn, ushort ver, uint uni, char* version,
                       char* id) {
                lastVersion = QByteArray(version);
                hear(name,
                     {hex(mac, 6), x(ip), x(sn), x(ver), x(uni),
                      QString::fromLatin1(version) + QLatin1Char('|') + QString::fromLatin1(id)});
            };
        };
        using T = Talvis;
        T* const t = &talvis;
        QObject::connect(t, &T::signalDiscoverResponse, t, discover("discover"));
        QObject::connect(t, &T::signalDiscoverEOResponse, t, discover("discoverEO"));
        QObject::connect(t, &T::signalDiscoverResponseV3, t, discover("discoverV3"));
        QObject::connect(t, &T::signalDiscoverPortsResponse, t,
                         [=](uint ip, uchar count, unsigned char* nums, unsigned char* types) {
                             hear("ports", {x(ip), x(count), hex(nums, count), hex(types, count)});
                         });
        QObject::connect(t, &T::signalBlinkScanResponse, t, [=](uint ip, uint sn) {
            hear("blinkScan", {x(ip), x(sn)});
        });
        QObject::connect(t, &T::signalBlinkScan2Response, t, [=] { hear("blinkScan2", {}); });
        QObject::connect(t, &T::signalBlinkScan2SNResponse, t,
                         [=](uint ip, uchar port, uchar count, const QVector<quint64>& sn) {
                             hear("scanSN", {x(ip), x(port), x(count), numbers(sn)});
                         });
        QObject::connect(t, &T::signalBlinkScan2CAResponse, t,
                         [=](uint ip, uchar port, uchar count, const QVector<quint64>& sn) {
                             hear("scanCA", {x(ip), x(port), x(count), numbers(sn)});
                         });
        QObject::connect(t, &T::signalBlinkScan2TalvisRDMResponse, t,
                         [=](uint ip, uchar port, const QVector<quint64>& sn) {
                             hear("scanRDM", {x(ip), x(port), numbers(sn)});
                         });
        QObject::connect(t, &T::signalCAScanResponse, t, [=](uint ip, uchar port1, uchar port2) {
            hear("caScan", {x(ip), x(port1), x(port2)});
        });
        QObject::connect(t, &T::signalBEBlinkScanResponse, t,
                         [=](uint ip, uchar port, unsigned char* sn) {
                             hear("beScan", {x(ip), x(port), hex(sn, 6)});
                         });
        QObject::connect(t, &T::signalBlinkEEReadResponse, t,
                         [=](uint ip, uint sn, uchar addr, uchar b) {
                             hear("eeRead", {x(ip), x(sn), x(addr), x(b)});
                         });
        QObject::connect(t, &T::signalPixelTokenByteReadResponse, t,
                         [=](uint ip, uint sn, uchar pixel, uchar token, uchar value) {
                             hear("pixelRead", {x(ip), x(sn), x(pixel), x(token), x(value)});
                         });
        QObject::connect(t, &T::signalTelemetryByteReadResponse, t,
                         [=](uint ip, uint sn, ushort id, uchar value) {
                             hear("telemetry", {x(ip), x(sn), x(id), x(value)});
                         });
        QObject::connect(t, &T::signalExtPromTokenReadResponse, t,
                         [=](uint ip, uint sn, ushort token, uchar value) {
                             hear("extProm", {x(ip), x(sn), x(token), x(value)});
                         });
        QObject::connect(t, &T::signalDeviceVariableReply, t, [=](uint ip, ushort id, uint value) {
            hear("variable", {x(ip), x(id), x(value)});
        });
        QObject::connect(t, &T::signalGetArrayReply, t,
                         [=](uint ip, uint id, QVector<quint32>& values) {
                             lastCount = values.size();
                             hear("array", {x(ip), x(id), numbers(widened(values))});
                         });
        QObject::connect(t, &T::signalGetByteArrayReply, t,
                         [=](uint ip, uint id, QVector<quint8>& values) {
                             lastCount = values.size();
                             hear("byteArray", {x(ip), x(id), numbers(widened(values))});
                         });
        QObject::connect(t, &T::signalRDMGetReply, t,
                         [=](uint ip, qulonglong sn, ushort pid, const QString& value) {
                             hear("rdm", {x(ip), x(sn), x(pid), value});
                         });
    }

    /// Decodes from a heap block of exactly `size` bytes, zero behind the datagram, so that a
    /// sanitizer sees a read outside.
    void decode(const QByteArray& datagram, int size = kBufferSize)
    {
        std::vector<char> buffer(static_cast<std::size_t>(size));
        std::copy_n(datagram.constData(), std::min(size, datagram.size()), buffer.begin());
        TalvisReplies(&talvis).decode(buffer.data(), size, kSource);
    }

    Talvis talvis{new RecordingSocket, nullptr};
    QStringList lines;
    QByteArray lastVersion;
    int lastCount = -1;
};

/// A header of the type, given in hexadecimal as it stands on the wire, and what follows it.
QByteArray reply(const char* type, const QByteArray& rest)
{
    return QByteArray::fromHex("0401dc4a0100") + QByteArray::fromHex(type) +
           QByteArray::fromHex(rest);
}

/// One well-formed reply of each kind.
QList<QByteArray> samples()
{
    return {
        reply("0200", "00000000 0a010203 a1a2a3a4a5a6 0201 44332211 88776655 763100 6400"),
        reply("0d00", "00000000 0a010203 a1a2a3a4a5a6 0201 44332211 88776655 763100 6400"),
        reply("0f00", "00000000 0a010203 a1a2a3a4a5a6 0201 8877665544332211 00000000 ccbbaa99"
                      "763100 6400"),
        reply("0b00", "0a010203 02 000000 0105 0206"),
        reply("0601", "00000000 3412 0000 78563412"),
        reply("0b01", "00000000 3412 00000000 0200 01000000 02000000"),
        reply("0e01", "00000000 3412 00000000 0200 0102"),
        reply("0202", "0a010203 44332211"),
        reply("0402", "0a010203 44332211 05 00 fe"),
        reply("0502", "0a010203 03 00 010203040506"),
        reply("0602", "0a010203 01 02"),
        reply("0802", "0a010203 02 00 0000 01 01 04 00 44332211 02 02 04 00 88776655"),
        reply("0802", "0a010203 02 00 0000 01 03 00 00 0000 44332211 6655 0000 88776655 aa99"),
        reply("0802", "0a010203 02 00 0000 01 04 00 00 44332211 6655 88776655 aa99"),
        reply("0a02", "00000000 44332211 3412 fe"),
        reply("0403", "00000000 cc0118 4a4b00000001 123489abcdef 0700000000 21 0060 0c"
                      "0100 0a1f 0501 01020304 000c"),
    };
}

} // namespace

class TalvisRepliesTest : public QObject
{
    Q_OBJECT
private slots:
    void everyReplyBecomesItsSignal_data();
    void everyReplyBecomesItsSignal();
    void unknownTypesAreIgnoredWithoutALog();
    void textsAreLimitedTo512Bytes();
    void magicAndVersionAreNotLookedAt();
    void countsAreCutToTheBuffer_data();
    void countsAreCutToTheBuffer();
    void everyTruncationIsSurvived();
    void junkIsSurvived();
};

void TalvisRepliesTest::everyReplyBecomesItsSignal_data()
{
    QTest::addColumn<QByteArray>("datagram");
    QTest::addColumn<QStringList>("lines");
    const auto row = [](const char* name, const QByteArray& datagram, const QStringList& lines) {
        QTest::newRow(name) << datagram << lines;
    };
    const QList<QByteArray> all = samples();
    row("discover", all[0], {"discover a1a2a3a4a5a6 a010203 11223344 102 55667788 v1|d"});
    row("discover, EO", all[1], {"discoverEO a1a2a3a4a5a6 a010203 11223344 102 55667788 v1|d"});
    row("discover, version 3", all[2],
        {"discoverV3 a1a2a3a4a5a6 a010203 1122334455667788 102 99aabbcc v1|d"});
    row("ports", all[3], {"ports a010203 2 0102 0506"});
    row("no ports", reply("0b00", "0a010203 00 000000 0105"), {"ports a010203 0  "});
    row("variable", all[4], {"variable c0a80117 1234 12345678"});
    row("array", all[5], {"array c0a80117 1234 [1 2]"});
    row("array, empty", reply("0b01", "00000000 3412 00000000 0000 01000000"),
        {"array c0a80117 1234 []"});
    row("byte array", all[6], {"byteArray c0a80117 1234 [1 2]"});
    row("blink scan", all[7], {"blinkScan a010203 11223344"});
    row("byte read, 0", all[8], {"eeRead c0a80117 11223344 5 fe"});
    row("byte read, 1", reply("0402", "0a010203 44332211 05 01 fe"),
        {"pixelRead c0a80117 11223344 1 5 fe"});
    row("byte read, 9", reply("0402", "0a010203 44332211 05 09 fe"),
        {"pixelRead c0a80117 11223344 9 5 fe"});
    row("byte read, 10", reply("0402", "0a010203 44332211 05 0a fe"), {});
    row("byte read, 11", reply("0402", "0a010203 44332211 05 0b fe"),
        {"telemetry c0a80117 11223344 b05 fe"});
    row("byte read, 255", reply("0402", "0a010203 44332211 05 ff fe"),
        {"telemetry c0a80117 11223344 ff05 fe"});
    row("serial, reversed", all[9], {"beScan a010203 3 060504030201"});
    row("channel scan", all[10], {"caScan a010203 1 2"});
    row("scan 2, no entries", reply("0802", "0a010203 00 01 0000 01 01 04 00 44332211"), {});
    row("scan 2, both lists", all[11],
        {"scanSN a010203 1 1 [11223344]", "scanCA a010203 2 1 [55667788]"});
    row("scan 2, size not of fours",
        reply("0802", "0a010203 02 00 0000 01 01 07 00 44332211 02 02 03 00"),
        {"scanSN a010203 1 1 [11223344]", "scanCA a010203 2 0 []"});
    row("scan 2, unknown kind",
        reply("0802", "0a010203 02 00 0000 01 09 04 00 01010101 02 01 04 00 44332211"),
        {"scanSN a010203 2 1 [11223344]"});
    row("scan 2, RDM, three fields", all[12], {"scanRDM a010203 1 [556611223344 99aa55667788]"});
    row("scan 2, RDM, two fields", all[13], {"scanRDM a010203 1 [556611223344 99aa55667788]"});
    row("scan 2, RDM behind a list",
        reply("0802", "0a010203 02 00 0000 01 01 04 00 44332211"
                      "02 04 00 00 04030201 0605 0a090807 0c0b 03 01 04 00 44332211"),
        {"scanSN a010203 1 1 [11223344]", "scanRDM a010203 2 [50601020304 b0c0708090a]"});
    row("token read", all[14], {"extProm c0a80117 11223344 1234 fe"});
    row("RDM", all[15], {"rdm c0a80117 123489abcdef 60 D.0a1f-P.0501-F.0012"});
}

void TalvisRepliesTest::everyReplyBecomesItsSignal()
{
    QFETCH(const QByteArray, datagram);
    QFETCH(const QStringList, lines);
    Ears ears;
    ears.decode(datagram);
    QCOMPARE(ears.lines, lines);
}

void TalvisRepliesTest::unknownTypesAreIgnoredWithoutALog()
{
    static int logged = 0;
    logged = 0;
    const auto old = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString&) { ++logged; });
    Ears ears;
    const QList<int> known = {0x0002, 0x000B, 0x000D, 0x000F, 0x0106, 0x010B, 0x010E,
                              0x0202, 0x0204, 0x0205, 0x0206, 0x0208, 0x020A, 0x0304};
    int silent = 0;
    for (int type = 0; type <= 0xFFFF; ++type) {
        if (!known.contains(type)) {
            QByteArray datagram(32, '\1');
            datagram[6] = static_cast<char>(type & 0xFF);
            datagram[7] = static_cast<char>(type >> 8);
            TalvisReplies(&ears.talvis).decode(datagram.constData(), datagram.size(), kSource);
            ++silent;
        }
    }
    qInstallMessageHandler(old);
    QCOMPARE(silent, 65536 - 14);
    QCOMPARE(ears.lines, QStringList());
    QCOMPARE(logged, 0);
}

void TalvisRepliesTest::textsAreLimitedTo512Bytes()
{
    const QByteArray head = reply("0200", "00000000 0a010203 a1a2a3a4a5a6 0201 44332211 88776655");
    Ears ears;
    ears.decode(head + QByteArray(512, 'a') + '\0' + QByteArray("id"));
    QCOMPARE(ears.lastVersion, QByteArray(512, 'a'));
    ears.decode(head + QByteArray(513, 'b') + '\0' + QByteArray("id"));
    QCOMPARE(ears.lastVersion, QByteArray(512, 'b'));
    QVERIFY(ears.lines.at(1).endsWith(QLatin1String("b|id"))); // behind the text's own NUL
    ears.decode(head + QByteArray(kBufferSize, 'c'));          // no NUL up to the end
    QCOMPARE(ears.lastVersion, QByteArray(512, 'c'));
    QVERIFY(ears.lines.at(2).endsWith(QLatin1String("c|")));
}

void TalvisRepliesTest::magicAndVersionAreNotLookedAt()
{
    QByteArray datagram = reply("0202", "0a010203 44332211");
    datagram.replace(0, 6, "junk!!");
    Ears ears;
    ears.decode(datagram);
    QCOMPARE(ears.lines, QStringList("blinkScan a010203 11223344"));
}

void TalvisRepliesTest::countsAreCutToTheBuffer_data()
{
    QTest::addColumn<QByteArray>("datagram");
    QTest::addColumn<int>("count");
    QTest::newRow("values") << reply("0b01", "00000000 3412 00000000 ffff") << (4096 - 20) / 4;
    QTest::newRow("values, the most that fit")
        << reply("0b01", "00000000 3412 00000000 fb03") << 1019;
    QTest::newRow("bytes") << reply("0e01", "00000000 3412 00000000 ffff") << 4096 - 20;
}

void TalvisRepliesTest::countsAreCutToTheBuffer()
{
    QFETCH(const QByteArray, datagram);
    QFETCH(const int, count);
    Ears ears;
    ears.decode(datagram);
    QCOMPARE(ears.lastCount, count);

    // 255 entries of 63 serial numbers each run far past the end: what the buffer holds comes out.
    QByteArray scan = reply("0802", "0a010203 ff 00 0000");
    while (scan.size() < kBufferSize) {
        scan += QByteArray::fromHex("0101ff00") + QByteArray(252, '\2');
    }
    ears.lines.clear();
    ears.decode(scan.left(kBufferSize));
    QCOMPARE(ears.lines.size(), 16); // 4080 bytes behind the head, 256 an entry, the last cut
    QVERIFY(ears.lines.first().startsWith(QLatin1String("scanSN a010203 1 3f [2020202 ")));
    QVERIFY(ears.lines.last().startsWith(QLatin1String("scanSN a010203 1 3b [2020202 ")));
}

void TalvisRepliesTest::everyTruncationIsSurvived()
{
    const QList<QByteArray> all = samples();
    for (const QByteArray& whole : all) {
        Ears complete;
        complete.decode(whole);
        for (int length = 0; length <= whole.size(); ++length) {
            // The buffer itself ends there, and the buffer goes on with zeros: the same result.
            Ears tight;
            tight.decode(whole, length);
            if (length < 8) {
                QVERIFY(tight.lines.isEmpty() || length == 7); // the type's low byte alone
            }
            Ears padded;
            padded.decode(whole.left(length));
            if (whole.at(6) != '\x0b' && whole.at(6) != '\x0e' && whole.at(6) != '\x08') {
                QCOMPARE(tight.lines, padded.lines); // no list that the buffer's end would cut
            }
        }
        Ears exact;
        exact.decode(whole, whole.size());
        QCOMPARE(exact.lines, complete.lines);
    }
}

void TalvisRepliesTest::junkIsSurvived()
{
    const QList<QByteArray> all = samples();
    std::mt19937 random(20240611);
    Ears ears;
    for (int round = 0; round < 20000; ++round) {
        // The head of a real reply, so that the parsers are entered, and junk from some byte on.
        QByteArray datagram = all.at(round % all.size()).left(8 + static_cast<int>(random() % 12));
        const int size = static_cast<int>(random() % (round % 8 == 0 ? kBufferSize : 64));
        while (datagram.size() < size) {
            datagram += static_cast<char>(random() & 0xFF);
        }
        ears.decode(datagram, size);
        if (ears.lines.size() > 1000) {
            ears.lines.clear();
        }
    }
    ears.lines.clear();
    ears.decode(all.first()); // and still decodes
    QCOMPARE(ears.lines.size(), 1);
}

QTEST_GUILESS_MAIN(TalvisRepliesTest)
#include "TalvisRepliesTest.moc"
