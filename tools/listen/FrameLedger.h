#pragma once

#include "tools/listen/FrameDecoder.h"
#include "tools/listen/FrameStream.h"

#include <QtGlobal>

#include <map>

/// One datagram as the socket hands it over.
struct HeardDatagram
{
    qint64 timeNs = 0;  ///< arrival, nanoseconds of any one clock
    quint32 source = 0; ///< IPv4 address
    quint16 sourcePort = 0;
    quint32 controller = 0; ///< the address it was sent to
    bool broadcast = false;
    const void* data = nullptr; // not owned
    int size = 0;
};

/// How many datagrams came of each sort.
struct LedgerTotals
{
    quint64 datagrams = 0; ///< everything that arrived, junk included
    quint64 bytes = 0;     ///< of all those datagrams
    quint64 frames = 0;    ///< DMX frames and port frames
    quint64 syncs = 0;
    quint64 untracked = 0; ///< frames and syncs that found no place for a stream of their own
    quint64 tooShort = 0;
    quint64 wrongMagic = 0;
    quint64 wrongVersion = 0;
    quint64 unknownType = 0;
    quint64 wrongLength = 0;

    quint64 junk() const
    {
        return tooShort + wrongMagic + wrongVersion + unknownType + wrongLength;
    }
};

/// Keeps account of what was heard, a stream for each source, controller and output.
class FrameLedger
{
public:
    /// Bounds the memory that a flood of made-up universes can take.
    static constexpr std::size_t kMostStreams = 4096;
    using Streams = std::map<StreamKey, FrameStream>;

    /// Takes a datagram of any content.
    void hear(const HeardDatagram& datagram);

    const Streams& streams() const { return m_streams; }
    const LedgerTotals& totals() const { return m_totals; }

private:
    void countJunk(FrameError error);

    Streams m_streams;
    LedgerTotals m_totals;
};
