#pragma once

#include <QtGlobal>

#include <array>

/// One outgoing Talvis packet. Kept and filled again for each send, so that a frame costs neither
/// heap nor the clearing of a buffer. All numbers are little-endian; reserved bytes are 0.
class TalvisPacket
{
public:
    static constexpr quint32 kMagic = 0x4ADC0104;
    static constexpr quint16 kVersion = 1;
    static constexpr quint16 kDmxFrame = 0x0101;
    static constexpr quint16 kPortFrame = 0x0108;
    static constexpr quint16 kSync = 0x0109;
    /// The universe of a frame that goes to one address.
    static constexpr quint32 kAnyUniverse = 0xFFFFFFFF;

    static constexpr int kCapacity = 2048;
    static constexpr int kDmxDataOffset = 21;
    static constexpr int kPortDataOffset = 24;
    static constexpr int kSyncSize = 16;

    /// `length` slots of `data`, which starts with slot 0. False, and an empty packet, where they
    /// don't fit.
    [[nodiscard]] bool setDmxFrame(quint32 universe, quint8 startCode, quint16 timerVal,
                                   const void* data, quint32 length);
    /// As setDmxFrame.
    [[nodiscard]] bool setPortFrame(quint32 universe, quint8 port, quint16 flags, quint16 startCode,
                                    const void* data, quint32 length);
    void setSync();

    const char* data() const { return m_bytes.data(); }
    int size() const { return m_size; }

private:
    void writeHeader(quint16 type);
    bool append(int offset, const void* data, quint32 length);
    void put8(int offset, quint8 value);
    void put16(int offset, quint16 value);
    void put32(int offset, quint32 value);

    std::array<char, kCapacity> m_bytes{};
    int m_size = 0;
};
