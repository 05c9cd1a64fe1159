#include "tools/listen/FrameStream.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

constexpr double kNsPerSecond = 1e9;
constexpr double kUsPerMs = 1000.0;

/// The value of rank ceil(`share` x n), which moves to its place; `numbers` isn't empty.
quint32 percentile(std::vector<quint32>& numbers, double share)
{
    const double rank = std::ceil(share * static_cast<double>(numbers.size()));
    const auto index = static_cast<std::ptrdiff_t>(std::max(rank, 1.0)) - 1;
    std::nth_element(numbers.begin(), numbers.begin() + index, numbers.end());
    return numbers[static_cast<std::size_t>(index)];
}

quint32 distance(quint32 a, quint32 b)
{
    return a > b ? a - b : b - a;
}

} // namespace

FrameStream::FrameStream(const StreamKey& key)
    : m_key(key)
{}

void FrameStream::add(const DecodedFrame& frame, qint64 timeNs, int size)
{
    if (m_frames == 0) {
        m_firstNs = timeNs;
        m_leastCount = frame.count;
    } else {
        addInterval(timeNs - m_lastNs);
        const auto length = static_cast<std::size_t>(frame.count);
        if (frame.count != m_count || std::memcmp(frame.values, m_values.data(), length) != 0) {
            ++m_changes;
        }
    }
    ++m_frames;
    m_bytes += static_cast<quint64>(size);
    m_lastNs = timeNs;
    m_flags = frame.flags;
    m_startCode = frame.startCode;
    m_timer = frame.timer;
    m_count = frame.count;
    m_leastCount = std::min(m_leastCount, frame.count);
    m_greatestCount = std::max(m_greatestCount, frame.count);
    std::copy_n(frame.values, frame.count, m_values.begin());
}

void FrameStream::addInterval(qint64 ns)
{
    const qint64 us = std::clamp<qint64>((ns + 500) / 1000, 0, 0xFFFFFFFF);
    const auto interval = static_cast<quint32>(us);
    if (m_intervals.size() < kKeptIntervals) {
        m_intervals.push_back(interval);
    } else {
        m_intervals[m_next] = interval;
    }
    m_next = (m_next + 1) % kKeptIntervals;
    m_leastInterval = std::min(m_leastInterval, interval);
    m_greatestInterval = std::max(m_greatestInterval, interval);
}

std::vector<quint32> FrameStream::latestIntervals(std::size_t count) const
{
    const std::size_t taken = std::min(count, m_intervals.size());
    std::vector<quint32> latest;
    latest.reserve(taken);
    for (std::size_t back = 1; back <= taken; ++back) {
        latest.push_back(m_intervals[(m_next + kKeptIntervals - back) % kKeptIntervals]);
    }
    return latest;
}

double FrameStream::rate() const
{
    if (m_lastNs <= m_firstNs) {
        return 0.0;
    }
    return static_cast<double>(m_frames - 1) * kNsPerSecond /
           static_cast<double>(m_lastNs - m_firstNs);
}

double FrameStream::recentRate(qint64 nowNs) const
{
    constexpr quint64 kWindowUs = 1000000;
    if (nowNs - m_lastNs > static_cast<qint64>(kWindowUs) * 1000) {
        return 0.0;
    }
    quint64 sumUs = 0;
    std::size_t back = 0;
    while (back < m_intervals.size() && sumUs < kWindowUs) {
        ++back;
        sumUs += m_intervals[(m_next + kKeptIntervals - back) % kKeptIntervals];
    }
    return sumUs == 0 ? 0.0 : static_cast<double>(back) * 1e6 / static_cast<double>(sumUs);
}

double FrameStream::medianIntervalMs() const
{
    std::vector<quint32> intervals = latestIntervals(kKeptIntervals);
    return intervals.empty() ? 0.0 : percentile(intervals, 0.5) / kUsPerMs;
}

Jitter FrameStream::jitter(std::size_t intervals) const
{
    std::vector<quint32> strays = latestIntervals(intervals);
    if (strays.empty()) {
        return {};
    }
    const quint32 median = percentile(strays, 0.5);
    std::transform(strays.begin(), strays.end(), strays.begin(),
                   [median](quint32 interval) { return distance(interval, median); });
    quint32 greatest = *std::max_element(strays.begin(), strays.end());
    if (intervals >= kKeptIntervals) {
        greatest =
            std::max(distance(m_leastInterval, median), distance(m_greatestInterval, median));
    }
    return {percentile(strays, 0.5) / kUsPerMs, percentile(strays, 0.99) / kUsPerMs,
            greatest / kUsPerMs};
}
