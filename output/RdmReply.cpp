#include "output/RdmReply.h"

#include "output/ByteReader.h"

#include <QLatin1Char>

namespace {

constexpr quint16 kDeviceInfo = 0x0060;
constexpr quint16 kDeviceModelDescription = 0x0080;

quint64 readUid(ByteReader& reader)
{
    const quint64 manufacturer = reader.u16be();
    return manufacturer << 32 | reader.u32be();
}

bool isByteParameter(quint16 pid)
{
    switch (pid) {
    case 0x8600:
    case 0x8602:
    case 0x8606:
    case 0x9F02:
    case 0x0343:
    case 0xA040:
        return true;
    default:
        return false;
    }
}

QString deviceInfoText(ByteReader& reader)
{
    reader.skip(2); // protocol version
    const quint16 model = reader.u16be();
    const quint16 category = reader.u16be();
    reader.skip(4); // software version
    const quint16 footprint = reader.u16be();
    return QStringLiteral("D.%1-P.%2-F.%3")
        .arg(model, 4, 16, QLatin1Char('0'))
        .arg(category, 4, 16, QLatin1Char('0'))
        .arg(footprint, 4, 10, QLatin1Char('0'));
}

QString valueText(ByteReader& reader, quint16 pid, quint8 dataLength)
{
    if (pid == kDeviceInfo) {
        return deviceInfoText(reader);
    }
    if (pid == kDeviceModelDescription) {
        const QByteArray text = reader.bytes(dataLength);
        return QString::fromUtf8(text.constData()).trimmed(); // up to a NUL, should one be there
    }
    if (isByteParameter(pid)) {
        return QString::number(reader.u8());
    }
    return dataLength > 0 ? QString::number(reader.u16be()) : QString();
}

} // namespace

RdmReply RdmReply::read(ByteReader& reader)
{
    RdmReply reply;
    reader.skip(3);  // start code, sub-start code, message length
    readUid(reader); // destination
    reply.sourceUid = readUid(reader);
    reader.skip(3); // transaction number, response type, message count
    reader.skip(2); // sub-device
    reader.skip(1); // command class
    reply.pid = reader.u16be();
    const quint8 dataLength = reader.u8();
    reply.value = valueText(reader, reply.pid, dataLength);
    return reply;
}
