#include "output/CITPPacket.h"

#include "output/ByteReader.h"

#include <QByteArray>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>

namespace {

/// The four letters, in order, as they read from the wire.
constexpr quint32 letters(const char (&text)[5])
{
    quint32 number = 0;
    for (int i = 3; i >= 0; --i) {
        number = number << 8 | static_cast<quint8>(text[i]);
    }
    return number;
}

constexpr quint32 kCookie = letters("CITP");
constexpr quint8 kMajor = 1;
constexpr quint8 kMinor = 0;
constexpr quint32 kPeerInformation = letters("PINF");
constexpr quint32 kStreamedDmx = letters("SDMX");
constexpr quint32 kPeerLocation = letters("PLoc");
constexpr quint32 kPeerName = letters("PNam");
constexpr quint32 kChannelBlock = letters("ChBk");
constexpr quint32 kUniverseName = letters("UNam");

constexpr int kLayerOffset = 16;
constexpr int kHeaderSize = 20;  // up to the layer
constexpr int kMessageSize = 24; // up to the message's own fields
constexpr int kPeerLocationSize = 26;
constexpr int kPeerNameSize = 24;
constexpr int kChannelBlockSize = 30;

/// Clears the buffer and writes both headers of a message of `total` bytes. Answers as the build
/// functions do; the message's own fields may be written if that is above 0.
int begin(char* buffer, int capacity, quint32 layer, quint32 message, qint64 total)
{
    if (capacity > 0) {
        std::memset(buffer, 0, static_cast<std::size_t>(capacity));
    }
    if (capacity < kHeaderSize) {
        return -1;
    }
    qToLittleEndian(kCookie, buffer);
    buffer[4] = kMajor;
    buffer[5] = kMinor;
    qToLittleEndian(static_cast<quint32>(total), buffer + 8);
    qToLittleEndian(quint16{1}, buffer + 12); // of one part; the request and the part are 0
    qToLittleEndian(layer, buffer + kLayerOffset);
    if (capacity < kMessageSize) {
        return -1;
    }
    qToLittleEndian(message, buffer + kHeaderSize);
    return total > capacity ? 0 : static_cast<int>(total);
}

/// A text of the message; a longer one is cut.
QString readText(ByteReader& reader)
{
    std::array<char, CITPPacket::kMaxParsedBytes + 1> text{};
    reader.text(text.data(), CITPPacket::kMaxParsedBytes);
    return QString::fromLatin1(text.data());
}

} // namespace

CITPPacket::CITPPacket(QObject* parent)
    : QObject(parent)
{}

int CITPPacket::buildChannelBlock(char* buffer, int capacity, bool blind, int universe,
                                  quint16 firstChannel, quint16 count, const void* data)
{
    const int size =
        begin(buffer, capacity, kStreamedDmx, kChannelBlock, qint64{kChannelBlockSize} + count);
    if (size > 0) {
        buffer[24] = blind ? 1 : 0;
        buffer[25] = static_cast<char>(universe);
        qToLittleEndian(firstChannel, buffer + 26);
        qToLittleEndian(count, buffer + 28);
        if (count > 0) {
            std::memcpy(buffer + kChannelBlockSize, data, count);
        }
    }
    return size;
}

int CITPPacket::buildPeerName(char* buffer, int capacity, const QString& name)
{
    const QByteArray text = name.toLatin1();
    const int size = begin(buffer, capacity, kPeerInformation, kPeerName, qint64{25} + text.size());
    if (size > 0) {
        std::copy(text.cbegin(), text.cend(), buffer + 24); // its NUL is there already
    }
    return size;
}

int CITPPacket::buildUniverseName(char* buffer, int capacity, int universe, const QString& name)
{
    const QByteArray text = name.toLatin1();
    const int size = begin(buffer, capacity, kStreamedDmx, kUniverseName, qint64{26} + text.size());
    if (size > 0) {
        buffer[24] = static_cast<char>(universe);
        std::copy(text.cbegin(), text.cend(), buffer + 25); // its NUL is there already
    }
    return size;
}

int CITPPacket::parse(QHostAddress& from, const char* data, uint size)
{
    if (data == nullptr || size < uint{kHeaderSize}) {
        return refuse(QStringLiteral("CITP Header: Packet too small"));
    }
    const auto length = static_cast<int>(std::min(size, uint{std::numeric_limits<int>::max()}));
    ByteReader reader(data, length);
    if (reader.u32le() != kCookie) {
        return refuse(QStringLiteral("CITP Header: Invalid cookie"));
    }
    const quint8 major = reader.u8();
    const quint8 minor = reader.u8();
    if (major != kMajor || minor != kMinor) {
        return refuse(QStringLiteral("CITP Header: Invalid version"));
    }
    reader.seek(8);
    if (reader.u32le() != size) {
        return refuse(QStringLiteral("CITP Header: Wrong message size"));
    }
    reader.seek(kLayerOffset);
    const quint32 layer = reader.u32le();
    switch (layer) {
    case kPeerInformation:
        return parsePeerInformation(from, data, length);
    case kStreamedDmx:
        return parseStreamedDmx(data, length);
    default:
        return refuse(QStringLiteral("CITP header, unknown content-type: %1").arg(layer));
    }
}

int CITPPacket::parsePeerInformation(QHostAddress& from, const char* data, int size)
{
    if (size < kMessageSize) {
        return refuse(QStringLiteral("PINF Header: Packet too small"));
    }
    ByteReader reader(data, size);
    reader.seek(kHeaderSize);
    const quint32 message = reader.u32le();
    if (message == kPeerLocation) {
        if (size < kPeerLocationSize) {
            return refuse(QStringLiteral("PLoc Packet: Packet too small"));
        }
        quint16 port = reader.u16le();
        QString type = readText(reader);
        QString name = readText(reader);
        QString state = readText(reader);
        emit peerLocationPacket(from, port, type, name, state);
    } else if (message == kPeerName) {
        if (size < kPeerNameSize) {
            return refuse(QStringLiteral("PNam Packet: Packet too small"));
        }
        QString name = readText(reader);
        emit peerNamePacket(name);
    } else {
        return refuse(QStringLiteral("PINF header, unknown content-type: %1").arg(message));
    }
    return static_cast<int>(message);
}

int CITPPacket::parseStreamedDmx(const char* data, int size)
{
    if (size < kMessageSize) {
        return refuse(QStringLiteral("SDMX Header: Packet too small"));
    }
    ByteReader reader(data, size);
    reader.seek(kHeaderSize);
    const quint32 message = reader.u32le();
    if (message != kChannelBlock) {
        return refuse(QStringLiteral("SDMX header, unknown content-type: %1").arg(message));
    }
    if (size < kChannelBlockSize) {
        return refuse(QStringLiteral("ChBk Packet: Packet too small"));
    }
    const bool blind = reader.u8() != 0;
    const quint8 universe = reader.u8();
    const quint16 first = reader.u16le();
    const int claimed = reader.u16le();
    const int count = std::min({claimed, reader.remaining(), kMaxParsedBytes});
    std::array<unsigned char, kMaxParsedBytes> channels{};
    std::memcpy(channels.data(), data + kChannelBlockSize, static_cast<std::size_t>(count));
    emit channelBlockPacket(blind, universe, first, static_cast<quint16>(count), channels.data());
    return static_cast<int>(message);
}

int CITPPacket::refuse(const QString& errorString)
{
    emit invalidPacket(errorString);
    return -1;
}
