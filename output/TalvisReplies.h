#pragma once

#include <QtGlobal>

class ByteReader;
class Talvis;

/// Decodes what devices answer or announce and emits it through the signals of a `Talvis`.
class TalvisReplies
{
public:
    explicit TalvisReplies(Talvis* talvis)
        : m_talvis(talvis)
    {}

    /// Decodes the packet at the start of `buffer`, which holds `size` bytes. Magic, version and
    /// the length that arrived aren't looked at; bytes behind the buffer read as 0, and counts are
    /// cut to what the buffer can hold. An unknown type is ignored. `source` is the sender's IPv4
    /// address as a number.
    void decode(const char* buffer, int size, quint32 source) const;

private:
    void discover(ByteReader& reader, bool endOfOutput) const;
    void discoverV3(ByteReader& reader) const;
    void discoverPorts(ByteReader& reader) const;
    void deviceVariable(ByteReader& reader, quint32 source) const;
    void array(ByteReader& reader, quint32 source) const;
    void byteArray(ByteReader& reader, quint32 source) const;
    void blinkScan(ByteReader& reader) const;
    void byteRead(ByteReader& reader, quint32 source) const;
    void bigEndianBlinkScan(ByteReader& reader) const;
    void channelScan(ByteReader& reader) const;
    void blinkScan2(ByteReader& reader) const;
    void extendedTokenRead(ByteReader& reader, quint32 source) const;
    void rdm(ByteReader& reader, quint32 source) const;

    Talvis* m_talvis = nullptr; // not owned
};
