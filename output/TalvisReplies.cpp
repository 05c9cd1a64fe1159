#include "output/TalvisReplies.h"

#include "output/ByteReader.h"
#include "output/RdmReply.h"
#include "output/Talvis.h"

#include <QVector>

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

namespace {

constexpr int kTypeOffset = 6;
constexpr int kShortHeader = 8; // replies that carry the device's address in place of a sequence
constexpr int kHeader = 12;
constexpr int kTextLimit = 512;
using Text = std::array<char, kTextLimit + 1>;
using Mac = std::array<char, 6>;

Mac readMac(ByteReader& reader)
{
    Mac mac{};
    for (char& byte : mac) {
        byte = static_cast<char>(reader.u8());
    }
    return mac;
}

/// `count` numbers of `width` bytes each, or as many as are left.
template <class Number, class Read>
QVector<Number> readList(ByteReader& reader, int count, int width, Read read)
{
    QVector<Number> list(std::min(count, reader.remaining() / width));
    for (Number& number : list) {
        number = read(reader);
    }
    return list;
}

quint64 readSplitUid(ByteReader& reader)
{
    const quint64 low = reader.u32le();
    return quint64{reader.u16le()} << 32 | low;
}

} // namespace

void TalvisReplies::decode(const char* buffer, int size, quint32 source) const
{
    ByteReader reader(buffer, size);
    reader.seek(kTypeOffset);
    const quint16 type = reader.u16le();
    reader.seek(kHeader);
    switch (type) {
    case 0x0002:
        discover(reader, false);
        break;
    case 0x000B:
        discoverPorts(reader);
        break;
    case 0x000D:
        discover(reader, true);
        break;
    case 0x000F:
        discoverV3(reader);
        break;
    case 0x0106:
        deviceVariable(reader, source);
        break;
    case 0x010B:
        array(reader, source);
        break;
    case 0x010E:
        byteArray(reader, source);
        break;
    case 0x0202:
        blinkScan(reader);
        break;
    case 0x0204:
        byteRead(reader, source);
        break;
    case 0x0205:
        bigEndianBlinkScan(reader);
        break;
    case 0x0206:
        channelScan(reader);
        break;
    case 0x0208:
        blinkScan2(reader);
        break;
    case 0x020A:
        extendedTokenRead(reader, source);
        break;
    case 0x0304:
        rdm(reader, source);
        break;
    default:
        break;
    }
}

void TalvisReplies::discover(ByteReader& reader, bool endOfOutput) const
{
    const quint32 ip = reader.u32be();
    Mac mac = readMac(reader);
    const quint16 version = reader.u16le();
    const quint32 serial = reader.u32le();
    const quint32 universe = reader.u32le();
    Text versionText{};
    Text idText{};
    reader.text(versionText.data(), kTextLimit);
    reader.text(idText.data(), kTextLimit);
    if (endOfOutput) {
        emit m_talvis->signalDiscoverEOResponse(mac.data(), ip, serial, version, universe,
                                                versionText.data(), idText.data());
    } else {
        emit m_talvis->signalDiscoverResponse(mac.data(), ip, serial, version, universe,
                                              versionText.data(), idText.data());
    }
}

void TalvisReplies::discoverV3(ByteReader& reader) const
{
    const quint32 ip = reader.u32be();
    Mac mac = readMac(reader);
    const quint16 version = reader.u16le();
    const quint64 serial = reader.u64le();
    reader.skip(4);
    const quint32 universe = reader.u32le();
    Text versionText{};
    Text idText{};
    reader.text(versionText.data(), kTextLimit);
    reader.text(idText.data(), kTextLimit);
    emit m_talvis->signalDiscoverResponseV3(mac.data(), ip, serial, version, universe,
                                            versionText.data(), idText.data());
}

void TalvisReplies::discoverPorts(ByteReader& reader) const
{
    reader.seek(kShortHeader);
    const quint32 ip = reader.u32be();
    const quint8 count = reader.u8();
    reader.skip(3);
    std::vector<unsigned char> numbers(count);
    std::vector<unsigned char> types(count);
    for (std::size_t i = 0; i < count; ++i) {
        numbers[i] = reader.u8();
        types[i] = reader.u8();
    }
    emit m_talvis->signalDiscoverPortsResponse(ip, count, numbers.data(), types.data());
}

void TalvisReplies::deviceVariable(ByteReader& reader, quint32 source) const
{
    const quint16 valueId = reader.u16le();
    reader.skip(2);
    emit m_talvis->signalDeviceVariableReply(source, valueId, reader.u32le());
}

void TalvisReplies::array(ByteReader& reader, quint32 source) const
{
    const quint16 valueId = reader.u16le();
    reader.skip(4);
    const quint16 count = reader.u16le();
    QVector<quint32> values =
        readList<quint32>(reader, count, 4, [](ByteReader& from) { return from.u32le(); });
    emit m_talvis->signalGetArrayReply(source, valueId, values);
}

void TalvisReplies::byteArray(ByteReader& reader, quint32 source) const
{
    const quint16 valueId = reader.u16le();
    reader.skip(4);
    const quint16 count = reader.u16le();
    QVector<quint8> values =
        readList<quint8>(reader, count, 1, [](ByteReader& from) { return from.u8(); });
    emit m_talvis->signalGetByteArrayReply(source, valueId, values);
}

void TalvisReplies::blinkScan(ByteReader& reader) const
{
    reader.seek(kShortHeader);
    const quint32 ip = reader.u32be();
    emit m_talvis->signalBlinkScanResponse(ip, reader.u32le());
}

void TalvisReplies::byteRead(ByteReader& reader, quint32 source) const
{
    const quint32 serial = reader.u32le();
    const quint8 low = reader.u8();
    const quint8 selector = reader.u8();
    const quint8 value = reader.u8();
    if (selector == 0) {
        emit m_talvis->signalBlinkEEReadResponse(source, serial, low, value);
    } else if (selector < 10) {
        emit m_talvis->signalPixelTokenByteReadResponse(source, serial, selector, low, value);
    } else if (selector > 10) { // 10 itself says nothing
        const auto telemetryId = static_cast<quint16>(selector << 8 | low);
        emit m_talvis->signalTelemetryByteReadResponse(source, serial, telemetryId, value);
    }
}

void TalvisReplies::bigEndianBlinkScan(ByteReader& reader) const
{
    reader.seek(kShortHeader);
    const quint32 ip = reader.u32be();
    const quint8 port = reader.u8();
    reader.skip(1);
    std::array<unsigned char, 6> serial{};
    std::generate(serial.rbegin(), serial.rend(), [&reader] { return reader.u8(); });
    emit m_talvis->signalBEBlinkScanResponse(ip, port, serial.data());
}

void TalvisReplies::channelScan(ByteReader& reader) const
{
    reader.seek(kShortHeader);
    const quint32 ip = reader.u32be();
    const quint8 port1 = reader.u8();
    const quint8 port2 = reader.u8();
    emit m_talvis->signalCAScanResponse(ip, port1, port2);
}

void TalvisReplies::blinkScan2(ByteReader& reader) const
{
    reader.seek(kShortHeader);
    const quint32 ip = reader.u32be();
    const quint8 entryCount = reader.u8();
    reader.skip(3); // more, reserved
    for (int entry = 0; entry < entryCount && reader.remaining() > 0; ++entry) {
        const quint8 port = reader.u8();
        const quint8 kind = reader.u8();
        const quint8 size = reader.u8();
        reader.skip(1);
        switch (kind) {
        case 1:
        case 2: {
            const QVector<quint64> serials = readList<quint64>(
                reader, size / 4, 4, [](ByteReader& from) { return quint64{from.u32le()}; });
            const auto count = static_cast<quint8>(serials.size());
            if (kind == 1) {
                emit m_talvis->signalBlinkScan2SNResponse(ip, port, count, serials);
            } else {
                emit m_talvis->signalBlinkScan2CAResponse(ip, port, count, serials);
            }
            break;
        }
        case 3: // here the packet's entry count is the number of records, and the packet ends
            emit m_talvis->signalBlinkScan2TalvisRDMResponse(
                ip, port, readList<quint64>(reader, entryCount, 8, [](ByteReader& from) {
                    from.skip(2);
                    return readSplitUid(from);
                }));
            return;
        case 4: // likewise
            emit m_talvis->signalBlinkScan2TalvisRDMResponse(
                ip, port, readList<quint64>(reader, entryCount, 6, readSplitUid));
            return;
        default:
            reader.skip(size);
            break;
        }
    }
}

void TalvisReplies::extendedTokenRead(ByteReader& reader, quint32 source) const
{
    const quint32 serial = reader.u32le();
    const quint16 token = reader.u16le();
    emit m_talvis->signalExtPromTokenReadResponse(source, serial, token, reader.u8());
}

void TalvisReplies::rdm(ByteReader& reader, quint32 source) const
{
    const RdmReply reply = RdmReply::read(reader);
    emit m_talvis->signalRDMGetReply(source, reply.sourceUid, reply.pid, reply.value);
}
