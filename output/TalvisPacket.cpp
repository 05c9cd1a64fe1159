#include "output/TalvisPacket.h"

#include <QtEndian>

#include <cstring>

bool TalvisPacket::setDmxFrame(quint32 universe, quint8 startCode, quint16 timerVal,
                               const void* data, quint32 length)
{
    writeHeader(kDmxFrame);
    put16(12, 0);
    put16(14, timerVal);
    put32(16, universe);
    put8(20, startCode);
    return append(kDmxDataOffset, data, length);
}

bool TalvisPacket::setPortFrame(quint32 universe, quint8 port, quint16 flags, quint16 startCode,
                                const void* data, quint32 length)
{
    writeHeader(kPortFrame);
    put32(12, universe);
    put8(16, port);
    put8(17, 0);
    put16(18, flags);
    put16(20, static_cast<quint16>(length));
    put16(22, startCode);
    return append(kPortDataOffset, data, length);
}

void TalvisPacket::setSync()
{
    writeHeader(kSync);
    put32(12, 0);
    m_size = kSyncSize;
}

void TalvisPacket::writeHeader(quint16 type)
{
    put32(0, kMagic);
    put16(4, kVersion);
    put16(6, type);
    put32(8, 0); // sequence
}

bool TalvisPacket::append(int offset, const void* data, quint32 length)
{
    if (length > static_cast<quint32>(kCapacity - offset)) {
        m_size = 0;
        return false;
    }
    if (length > 0) {
        std::memcpy(m_bytes.data() + offset, data, length);
    }
    m_size = offset + static_cast<int>(length);
    return true;
}

void TalvisPacket::put8(int offset, quint8 value)
{
    m_bytes[static_cast<std::size_t>(offset)] = static_cast<char>(value);
}

void TalvisPacket::put16(int offset, quint16 value)
{
    qToLittleEndian(value, m_bytes.data() + offset);
}

void TalvisPacket::put32(int offset, quint32 value)
{
    qToLittleEndian(value, m_bytes.data() + offset);
}
