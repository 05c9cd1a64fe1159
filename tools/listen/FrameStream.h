#pragma once

#include "tools/listen/FrameDecoder.h"

#include <QtGlobal>

#include <array>
#include <tuple>
#include <vector>

/// What tells one row of frames from another: who sent it, which controller took it, and for which
/// of its outputs it is meant.
struct StreamKey
{
    quint32 source = 0; ///< IPv4 address
    quint16 sourcePort = 0;
    quint32 controller = 0; ///< the address the datagram was sent to, IPv4
    bool broadcast = false; ///< sent to all, not to this machine alone
    FrameKind kind = FrameKind::Sync;
    quint32 universe = 0;
    quint8 port = 0;

    bool operator<(const StreamKey& other) const { return order() < other.order(); }

private:
    std::tuple<quint32, quint16, quint32, bool, FrameKind, quint32, quint8> order() const
    {
        return {source, sourcePort, controller, broadcast, kind, universe, port};
    }
};

/// How far the times between frames stray from their median, in milliseconds.
struct Jitter
{
    double median = 0.0;
    double percentile99 = 0.0;
    double greatest = 0.0;
};

/// Everything known of one row of frames.
class FrameStream
{
public:
    /// The median and the percentile look back over as many intervals.
    static constexpr std::size_t kKeptIntervals = 16384;

    explicit FrameStream(const StreamKey& key);

    /// Takes the next frame. `timeNs` is its arrival in nanoseconds of any one clock; a clock that
    /// goes backwards makes an interval of 0. `size` is that of the whole datagram, in bytes.
    void add(const DecodedFrame& frame, qint64 timeNs, int size);

    const StreamKey& key() const { return m_key; }
    quint64 frames() const { return m_frames; }
    quint64 bytes() const { return m_bytes; }
    /// Frames whose values differ from those of the frame before; the first one isn't counted.
    quint64 changes() const { return m_changes; }
    qint64 firstNs() const { return m_firstNs; }
    qint64 lastNs() const { return m_lastNs; }
    quint16 flags() const { return m_flags; }
    quint16 startCode() const { return m_startCode; }
    quint16 timer() const { return m_timer; }

    /// The values of the last frame.
    const quint8* values() const { return m_values.data(); }
    int count() const { return m_count; }
    int leastCount() const { return m_leastCount; }
    int greatestCount() const { return m_greatestCount; }

    /// Whether there were two frames, without which there is no rate and no jitter.
    bool hasIntervals() const { return m_frames > 1; }
    /// Frames a second from the first to the last; 0 where both came at once.
    double rate() const;
    /// Frames a second in the second before `nowNs`.
    double recentRate(qint64 nowNs) const;
    double medianIntervalMs() const;
    /// Percentiles by nearest rank over the latest `intervals` intervals. The greatest is that of
    /// the whole run if all are asked for.
    Jitter jitter(std::size_t intervals = kKeptIntervals) const;

private:
    std::vector<quint32> latestIntervals(std::size_t count) const;
    void addInterval(qint64 ns);

    StreamKey m_key;
    quint64 m_frames = 0;
    quint64 m_bytes = 0;
    quint64 m_changes = 0;
    qint64 m_firstNs = 0;
    qint64 m_lastNs = 0;
    quint16 m_flags = 0;
    quint16 m_startCode = 0;
    quint16 m_timer = 0;
    int m_count = 0;
    int m_leastCount = 0;
    int m_greatestCount = 0;
    std::array<quint8, 512> m_values{};
    std::vector<quint32> m_intervals; // microseconds; a ring once it is full
    std::size_t m_next = 0;           // where the next interval goes
    quint32 m_leastInterval = 0xFFFFFFFF;
    quint32 m_greatestInterval = 0;
};
