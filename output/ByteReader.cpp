#include "output/ByteReader.h"

#include <algorithm>

ByteReader::ByteReader(const char* data, int size)
    : m_data(data)
    , m_size(data == nullptr ? 0 : std::max(size, 0))
{}

void ByteReader::seek(int offset)
{
    m_position = std::clamp(offset, 0, m_size);
}

void ByteReader::skip(int count)
{
    m_position += std::clamp(count, 0, remaining());
}

quint8 ByteReader::u8()
{
    if (m_position >= m_size) {
        return 0;
    }
    return static_cast<quint8>(m_data[m_position++]);
}

quint64 ByteReader::little(int width)
{
    quint64 value = 0;
    for (int i = 0; i < width; ++i) {
        value |= quint64{u8()} << (8 * i);
    }
    return value;
}

quint64 ByteReader::big(int width)
{
    quint64 value = 0;
    for (int i = 0; i < width; ++i) {
        value = value << 8 | u8();
    }
    return value;
}

quint16 ByteReader::u16le()
{
    return static_cast<quint16>(little(2));
}

quint32 ByteReader::u32le()
{
    return static_cast<quint32>(little(4));
}

quint64 ByteReader::u64le()
{
    return little(8);
}

quint16 ByteReader::u16be()
{
    return static_cast<quint16>(big(2));
}

quint32 ByteReader::u32be()
{
    return static_cast<quint32>(big(4));
}

void ByteReader::text(char* target, int limit)
{
    const char* const begin = m_data + m_position;
    const auto length = static_cast<int>(std::find(begin, m_data + m_size, '\0') - begin);
    const int copied = std::clamp(limit, 0, length);
    std::copy_n(begin, copied, target);
    target[copied] = '\0';
    skip(length + 1);
}

QByteArray ByteReader::bytes(int count)
{
    const int taken = std::clamp(count, 0, remaining());
    QByteArray result(m_data + m_position, taken);
    m_position += taken;
    return result;
}
