#include "output/CITPPacket.h"

#include <QObject>
#include <QStringList>
#include <QtTest>

#include <cstring>
#include <memory>
#include <random>

namespace {

constexpr int kPLoc = 0x636F4C50; // the letters, read little-endian
constexpr int kPNam = 0x6D614E50;
constexpr int kChBk = 0x6B426843;

QByteArray u16(int value)
{
    const QByteArray bytes(1, static_cast<char>(value & 0xFF));
    return bytes + static_cast<char>(value >> 8);
}

QByteArray u32(int value)
{
    return u16(value & 0xFFFF) + u16(value >> 16);
}

/// A whole message with a right header: `layer` may hold the message's letters too.
QByteArray message(const QByteArray& layer, const QByteArray& fields)
{
    return "CITP" + QByteArray("\1\0\0\0", 4) + u32(16 + layer.size() + fields.size()) + u16(1) +
           u16(0) + layer + fields;
}

/// A header whose message has `size` bytes and claims `claimed`.
QByteArray header(const QByteArray& cookie, int major, int minor, int claimed)
{
    return cookie + static_cast<char>(major) + static_cast<char>(minor) + u16(0) + u32(claimed) +
           u16(1) + u16(0) + "SDMX";
}

/// What a packet emits, as texts; the references are only good during the call.
class Listener : public QObject
{
public:
    explicit Listener(const CITPPacket& packet)
    {
        connect(&packet, &CITPPacket::invalidPacket, this,
                [this](const QString& text) { heard << text; });
        connect(&packet, &CITPPacket::peerLocationPacket, this,
                [this](QHostAddress& address, quint16& port, QString& type, QString& name,
                       QString& state) {
                    heard << QStringLiteral("location %1 %2 [%3] [%4] [%5]")
                                 .arg(address.toString())
                                 .arg(port)
                                 .arg(type, name, state);
                });
        connect(&packet, &CITPPacket::peerNamePacket, this,
                [this](QString& name) { heard << QStringLiteral("name [%1]").arg(name); });
        connect(&packet, &CITPPacket::channelBlockPacket, this,
                [this](bool blind, uchar universe, ushort first, ushort count,
                       const unsigned char* buffer) {
                    heard << QStringLiteral("block %1 %2 %3 %4")
                                 .arg(blind)
                                 .arg(universe)
                                 .arg(first)
                                 .arg(count);
                    channels.clear();
                    for (int i = 0; i < count; ++i) { // every one is read: none may lie outside
                        channels += static_cast<char>(buffer[i]);
                    }
                });
    }
    QStringList heard;
    QByteArray channels;
};

/// Parses out of a heap block of just that size, so that the sanitizers see a read behind it.
int parseExactly(CITPPacket& packet, const QByteArray& bytes)
{
    const auto size = static_cast<std::size_t>(bytes.size());
    const auto copy = std::make_unique<char[]>(size);
    std::memcpy(copy.get(), bytes.constData(), size);
    QHostAddress from(QStringLiteral("10.1.2.3"));
    return packet.parse(from, copy.get(), static_cast<uint>(size));
}

} // namespace

class CITPPacketTest : public QObject
{
    Q_OBJECT
private slots:
    void messagesHaveTheirBytes_data();
    void messagesHaveTheirBytes();
    void aFullUniverseIs542Bytes();
    void aMessageNeedsRoom_data();
    void aMessageNeedsRoom();
    void messagesAreParsed_data();
    void messagesAreParsed();
    void badHeadersAreRefusedInOrder_data();
    void badHeadersAreRefusedInOrder();
    void channelsAreClampedToWhatIsThere_data();
    void channelsAreClampedToWhatIsThere();
    void noDataIsTooSmall();
    void builtMessagesParseBack();
    void randomBytesAreAnsweredOnceEach();
};

void CITPPacketTest::messagesHaveTheirBytes_data()
{
    QTest::addColumn<QByteArray>("built");
    QTest::addColumn<QByteArray>("expected");
    const auto block = [](bool blind, int universe, quint16 first, const QByteArray& data) {
        char buffer[1024];
        const int size =
            CITPPacket::buildChannelBlock(buffer, 1024, blind, universe, first,
                                          static_cast<quint16>(data.size()), data.constData());
        return QByteArray(buffer, size);
    };
    const auto peer = [](const QString& name) {
        char buffer[1024];
        return QByteArray(buffer, CITPPacket::buildPeerName(buffer, 1024, name));
    };
    const auto universe = [](int index, const QString& name) {
        char buffer[1024];
        return QByteArray(buffer, CITPPacket::buildUniverseName(buffer, 1024, index, name));
    };
    const QByteArray start = QByteArray::fromHex("43495450 01 00 0000");
    const QByteArray part = QByteArray::fromHex("0100 0000");
    const QByteArray sdmx = QByteArray::fromHex("53444d58");
    const QByteArray pinf = QByteArray::fromHex("50494e46");
    const auto rest = [](const char* hex) { return QByteArray::fromHex(hex); };

    QTest::newRow("block") << block(false, 5, 0, "\x01\x02\xff")
                           << start + rest("21000000") + part + sdmx +
                                  rest("4368426b 00 05 0000 0300 0102ff");
    QTest::newRow("blind block from 0x0102")
        << block(true, 255, 0x0102, "z")
        << start + rest("1f000000") + part + sdmx + rest("4368426b 01 ff 0201 0100 7a");
    QTest::newRow("universe 256 is 0")
        << block(false, 256, 0, "z")
        << start + rest("1f000000") + part + sdmx + rest("4368426b 00 00 0000 0100 7a");
    QTest::newRow("universe -1 is 255")
        << block(false, -1, 0, "z")
        << start + rest("1f000000") + part + sdmx + rest("4368426b 00 ff 0000 0100 7a");
    QTest::newRow("empty block") << block(false, 1, 0, QByteArray())
                                 << start + rest("1e000000") + part + sdmx +
                                        rest("4368426b 00 01 0000 0000");
    QTest::newRow("peer") << peer(QStringLiteral("Me"))
                          << start + rest("1b000000") + part + pinf + rest("504e616d 4d65 00");
    QTest::newRow("peer in Latin-1")
        << peer(QString(QChar(0xE9)) + QChar(0x20AC))
        << start + rest("1b000000") + part + pinf + rest("504e616d e93f 00");
    QTest::newRow("peer without a name")
        << peer(QString()) << start + rest("19000000") + part + pinf + rest("504e616d 00");
    QTest::newRow("universe of 3 letters is 29")
        << universe(2, QStringLiteral("Top"))
        << start + rest("1d000000") + part + sdmx + rest("554e616d 02 546f70 00");
    QTest::newRow("universe without a name")
        << universe(0, QString())
        << start + rest("1a000000") + part + sdmx + rest("554e616d 00 00");
}

void CITPPacketTest::messagesHaveTheirBytes()
{
    QFETCH(const QByteArray, built);
    QFETCH(const QByteArray, expected);
    QCOMPARE(built.toHex(), expected.toHex());
}

void CITPPacketTest::aFullUniverseIs542Bytes()
{
    const QByteArray slots512(512, '\x55');
    char buffer[1024];
    QCOMPARE(CITPPacket::buildChannelBlock(buffer, 1024, false, 0, 0, 512, slots512.constData()),
             542);
    QCOMPARE(QByteArray(buffer + 8, 4), u32(542));
    QCOMPARE(QByteArray(buffer + 28, 2), u16(512));
    QCOMPARE(QByteArray(buffer + 30, 512), slots512);
    QCOMPARE(QByteArray(buffer + 542, 482), QByteArray(482, '\0'));
}

void CITPPacketTest::aMessageNeedsRoom_data()
{
    QTest::addColumn<int>("capacity");
    QTest::addColumn<int>("block"); // 3 channels, 33 bytes
    QTest::addColumn<int>("peer");  // 4 letters, 29 bytes
    QTest::addColumn<int>("universe");
    QTest::newRow("negative") << -1 << -1 << -1 << -1;
    QTest::newRow("none") << 0 << -1 << -1 << -1;
    QTest::newRow("no layer") << 19 << -1 << -1 << -1;
    QTest::newRow("no message") << 20 << -1 << -1 << -1;
    QTest::newRow("one short of the message") << 23 << -1 << -1 << -1;
    QTest::newRow("headers alone") << 24 << 0 << 0 << 0;
    QTest::newRow("one short of the peer") << 28 << 0 << 0 << 0;
    QTest::newRow("the peer fits") << 29 << 0 << 29 << 0;
    QTest::newRow("the universe fits") << 30 << 0 << 29 << 30;
    QTest::newRow("one short of the block") << 32 << 0 << 29 << 30;
    QTest::newRow("the block fits") << 33 << 33 << 29 << 30;
    QTest::newRow("plenty") << 60 << 33 << 29 << 30;
}

void CITPPacketTest::aMessageNeedsRoom()
{
    QFETCH(const int, capacity);
    QFETCH(const int, block);
    QFETCH(const int, peer);
    QFETCH(const int, universe);
    const QString name = QStringLiteral("Four");
    const auto check = [capacity](const QByteArray& bytes, int size, int expected) {
        QCOMPARE(size, expected);
        const int room = qMax(capacity, 0);
        const int written = size > 0 ? size : qMin(room, 24);
        QCOMPARE(bytes.mid(written, room - written), QByteArray(room - written, '\0'));
        QCOMPARE(bytes.mid(room), QByteArray(64 - room, '\x7f')); // never behind it
    };
    QByteArray bytes(64, '\x7f');
    int size = CITPPacket::buildChannelBlock(bytes.data(), capacity, true, 1, 0, 3, "abc");
    check(bytes, size, block);
    bytes.fill('\x7f');
    size = CITPPacket::buildPeerName(bytes.data(), capacity, name);
    check(bytes, size, peer);
    bytes.fill('\x7f');
    size = CITPPacket::buildUniverseName(bytes.data(), capacity, 1, name);
    check(bytes, size, universe);
}

void CITPPacketTest::messagesAreParsed_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("heard");
    QTest::addColumn<int>("answer");
    const QByteArray nul(1, '\0');
    const auto row = [](const char* tag, const QByteArray& bytes, const QString& heard,
                        int answer = -1) { QTest::newRow(tag) << bytes << heard << answer; };
    const auto letter = [](int count) { return QByteArray(count, 'n'); };
    const auto text = [](int count) { return QString(count, QLatin1Char('n')); };

    row("location",
        message("PINFPLoc", u16(4809) + "Visualizer" + nul + "Vis" + nul + "Running" + nul),
        QStringLiteral("location 10.1.2.3 4809 [Visualizer] [Vis] [Running]"), kPLoc);
    row("location without texts", message("PINFPLoc", u16(0xFFFF)),
        QStringLiteral("location 10.1.2.3 65535 [] [] []"), kPLoc);
    row("location cut short", message("PINFPLoc", u16(1) + "Type" + nul + "Na"),
        QStringLiteral("location 10.1.2.3 1 [Type] [Na] []"), kPLoc);
    row("location with long texts",
        message("PINFPLoc", u16(1) + letter(2049) + nul + letter(2048) + nul + letter(9000) + nul),
        QStringLiteral("location 10.1.2.3 1 [%1] [%1] [%1]").arg(text(2048)), kPLoc);
    row("location too small", message("PINFPLoc", "x"),
        QStringLiteral("PLoc Packet: Packet too small"));
    row("name", message("PINFPNam", "Vis" + nul), QStringLiteral("name [Vis]"), kPNam);
    row("name in Latin-1", message("PINFPNam", "\xe9" + nul),
        QStringLiteral("name [%1]").arg(QChar(0xE9)), kPNam);
    row("name without its end", message("PINFPNam", "Vis"), QStringLiteral("name [Vis]"), kPNam);
    row("no name", message("PINFPNam", QByteArray()), QStringLiteral("name []"), kPNam);
    row("name with a tail", message("PINFPNam", "Vis" + nul + "tail"), QStringLiteral("name [Vis]"),
        kPNam);
    row("name too long", message("PINFPNam", letter(2049) + nul),
        QStringLiteral("name [%1]").arg(text(2048)), kPNam);
    row("other peer message", message("PINFABCD", QByteArray()),
        QStringLiteral("PINF header, unknown content-type: 1145258561"));
    row("peer message without letters", message("PINF", "ABC"),
        QStringLiteral("PINF Header: Packet too small"));
    row("block", message("SDMXChBk", QByteArray::fromHex("00 07 0201 0200 0aff")),
        QStringLiteral("block 0 7 258 2"), kChBk);
    row("blind block", message("SDMXChBk", QByteArray::fromHex("02 ff 0000 0000")),
        QStringLiteral("block 1 255 0 0"), kChBk);
    row("block too small", message("SDMXChBk", QByteArray::fromHex("00 07 0201 02")),
        QStringLiteral("ChBk Packet: Packet too small"));
    row("universe name", message("SDMXUNam", QByteArray::fromHex("00 61 00")),
        QStringLiteral("SDMX header, unknown content-type: %1").arg(0x6D614E55));
    row("other DMX message", message("SDMX\xff\xff\xff\xff", QByteArray()),
        QStringLiteral("SDMX header, unknown content-type: 4294967295"));
    row("DMX message without letters", message("SDMX", QByteArray()),
        QStringLiteral("SDMX Header: Packet too small"));
    row("other layer", message("ABCD", QByteArray()),
        QStringLiteral("CITP header, unknown content-type: 1145258561"));
    row("highest layer", message("\xff\xff\xff\xff", "more"),
        QStringLiteral("CITP header, unknown content-type: 4294967295"));
}

void CITPPacketTest::messagesAreParsed()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QString, heard);
    QFETCH(const int, answer);
    CITPPacket packet;
    const Listener listener(packet);
    QCOMPARE(parseExactly(packet, bytes), answer);
    QCOMPARE(listener.heard, QStringList(heard));
}

void CITPPacketTest::badHeadersAreRefusedInOrder_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("heard");
    const QString small = QStringLiteral("CITP Header: Packet too small");
    const QString cookie = QStringLiteral("CITP Header: Invalid cookie");
    const QString version = QStringLiteral("CITP Header: Invalid version");
    const QString size = QStringLiteral("CITP Header: Wrong message size");
    QTest::newRow("19 bytes, all wrong") << header("citp", 9, 9, 1).left(19) << small;
    QTest::newRow("nothing") << QByteArray() << small;
    QTest::newRow("cookie before version") << header("CITp", 1, 1, 21) << cookie;
    QTest::newRow("version 1.1") << header("CITP", 1, 1, 20) << version;
    QTest::newRow("version 0.0, before size") << header("CITP", 0, 0, 21) << version;
    QTest::newRow("version 2.0") << header("CITP", 2, 0, 20) << version;
    QTest::newRow("size 21 of 20") << header("CITP", 1, 0, 21) << size;
    QTest::newRow("size 19 of 20") << header("CITP", 1, 0, 19) << size;
    QTest::newRow("size 0") << header("CITP", 1, 0, 0) << size;
    QTest::newRow("size -1") << header("CITP", 1, 0, -1) << size;
    QTest::newRow("two messages in one")
        << header("CITP", 1, 0, 20) + header("CITP", 1, 0, 20) << size;
    QTest::newRow("right header") << header("CITP", 1, 0, 20)
                                  << QStringLiteral("SDMX Header: Packet too small");
}

void CITPPacketTest::badHeadersAreRefusedInOrder()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QString, heard);
    CITPPacket packet;
    const Listener listener(packet);
    QCOMPARE(parseExactly(packet, bytes), -1);
    QCOMPARE(listener.heard, QStringList(heard));
}

void CITPPacketTest::channelsAreClampedToWhatIsThere_data()
{
    QTest::addColumn<int>("claimed");
    QTest::addColumn<int>("present");
    QTest::addColumn<int>("count");
    QTest::newRow("as claimed") << 512 << 512 << 512;
    QTest::newRow("more present") << 3 << 512 << 3;
    QTest::newRow("fewer present") << 512 << 3 << 3;
    QTest::newRow("none present") << 65535 << 0 << 0;
    QTest::newRow("a full buffer") << 2048 << 2048 << 2048;
    QTest::newRow("beyond the buffer") << 2049 << 2049 << 2048;
    QTest::newRow("all there can be") << 65535 << 65535 << 2048;
}

void CITPPacketTest::channelsAreClampedToWhatIsThere()
{
    QFETCH(const int, claimed);
    QFETCH(const int, present);
    QFETCH(const int, count);
    QByteArray data(present, '\0');
    for (int i = 0; i < present; ++i) {
        data[i] = static_cast<char>(i % 251);
    }
    CITPPacket packet;
    const Listener listener(packet);
    const QByteArray fields = QByteArray::fromHex("00 01 0000") + u16(claimed) + data;
    QCOMPARE(parseExactly(packet, message("SDMXChBk", fields)), kChBk);
    QCOMPARE(listener.heard, QStringList(QStringLiteral("block 0 1 0 %1").arg(count)));
    QCOMPARE(listener.channels, data.left(count));
}

void CITPPacketTest::noDataIsTooSmall()
{
    CITPPacket packet;
    const Listener listener(packet);
    QHostAddress from;
    QCOMPARE(packet.parse(from, nullptr, 542), -1);
    QCOMPARE(listener.heard, QStringList(QStringLiteral("CITP Header: Packet too small")));
}

void CITPPacketTest::builtMessagesParseBack()
{
    CITPPacket packet;
    const Listener listener(packet);
    char buffer[1024];
    int size = CITPPacket::buildChannelBlock(buffer, 1024, true, 9, 4, 3, "abc");
    QCOMPARE(parseExactly(packet, QByteArray(buffer, size)), kChBk);
    QCOMPARE(listener.channels, QByteArray("abc"));
    size = CITPPacket::buildPeerName(buffer, 1024, QStringLiteral("Pageant"));
    QCOMPARE(parseExactly(packet, QByteArray(buffer, size)), kPNam);
    QCOMPARE(listener.heard,
             QStringList({QStringLiteral("block 1 9 4 3"), QStringLiteral("name [Pageant]")}));
}

void CITPPacketTest::randomBytesAreAnsweredOnceEach()
{
    std::mt19937 random(20200317);
    const QList<QByteArray> layers = {"SDMXChBk", "PINFPLoc", "PINFPNam",
                                      "SDMX",     "PINF",     "SDMXUNam"};
    CITPPacket packet;
    Listener listener(packet);
    for (int i = 0; i < 20000; ++i) {
        QByteArray bytes(static_cast<int>(random() % 200), '\0');
        for (char& byte : bytes) {
            byte = static_cast<char>(random());
        }
        bytes = message(layers.at(static_cast<int>(random() % 6)), bytes);
        if (random() % 4 == 0) {
            bytes[static_cast<int>(random() % 24) % bytes.size()] = static_cast<char>(random());
        }
        listener.heard.clear();
        const int answer = parseExactly(packet, bytes);
        QCOMPARE(listener.heard.size(), 1);
        QVERIFY(answer == -1 || answer == kChBk || answer == kPLoc || answer == kPNam);
    }
}

QTEST_GUILESS_MAIN(CITPPacketTest)
#include "CITPPacketTest.moc"
