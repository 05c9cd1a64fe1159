#include "tools/listen/FrameStream.h"

#include <QObject>
#include <QVector>
#include <QtTest>

namespace {

constexpr qint64 kMs = 1000000; // nanoseconds

DecodedFrame frameOf(const QByteArray& values)
{
    DecodedFrame frame;
    frame.kind = FrameKind::Port;
    frame.values = reinterpret_cast<const quint8*>(values.constData());
    frame.count = values.size();
    return frame;
}

/// A stream of equal frames at these times, in milliseconds.
FrameStream streamAt(const QVector<qint64>& timesMs)
{
    const QByteArray values("abc");
    FrameStream stream((StreamKey()));
    for (const qint64 time : timesMs) {
        stream.add(frameOf(values), time * kMs, 27);
    }
    return stream;
}

} // namespace

class FrameStreamTest : public QObject
{
    Q_OBJECT
private slots:
    void oneFrameHasNoRate();
    void aSteadyStreamHasNoJitter();
    void jitterIsTheDistanceFromTheMedianInterval();
    void oneLateFrameInAHundredIsAboveThe99thPercentile();
    void aClockGoingBackwardsMakesAnIntervalOfZero();
    void theLastValuesAndTheChangesAreKept();
    void theGreatestOutlivesTheKeptIntervals();
    void recentFiguresLookBackASecond();
    void keysAreTellingApart();
};

void FrameStreamTest::oneFrameHasNoRate()
{
    const FrameStream stream = streamAt({5});
    QVERIFY(!stream.hasIntervals());
    QCOMPARE(stream.rate(), 0.0);
    QCOMPARE(stream.medianIntervalMs(), 0.0);
    QCOMPARE(stream.jitter().greatest, 0.0);
    QCOMPARE(stream.recentRate(5 * kMs), 0.0);
}

void FrameStreamTest::aSteadyStreamHasNoJitter()
{
    const FrameStream stream = streamAt({100, 125, 150, 175, 200});
    QCOMPARE(stream.frames(), quint64{5});
    QCOMPARE(stream.bytes(), quint64{5 * 27});
    QCOMPARE(stream.rate(), 40.0);
    QCOMPARE(stream.medianIntervalMs(), 25.0);
    QCOMPARE(stream.jitter().median, 0.0);
    QCOMPARE(stream.jitter().percentile99, 0.0);
    QCOMPARE(stream.jitter().greatest, 0.0);
}

void FrameStreamTest::jitterIsTheDistanceFromTheMedianInterval()
{
    // Intervals 25 24 27 25 45: their median is 25, the distances from it 0 1 2 0 20.
    const FrameStream stream = streamAt({0, 25, 49, 76, 101, 146});
    QCOMPARE(stream.medianIntervalMs(), 25.0);
    QCOMPARE(stream.jitter().median, 1.0);
    QCOMPARE(stream.jitter().percentile99, 20.0);
    QCOMPARE(stream.jitter().greatest, 20.0);
    QCOMPARE(stream.rate(), 5.0 / 0.146);
    // The latest three intervals are 27 25 45: median 27, distances 0 2 18.
    QCOMPARE(stream.jitter(3).median, 2.0);
    QCOMPARE(stream.jitter(3).greatest, 18.0);
}

void FrameStreamTest::oneLateFrameInAHundredIsAboveThe99thPercentile()
{
    QVector<qint64> times = {0};
    for (int i = 1; i <= 100; ++i) {
        times << times.last() + (i == 50 ? 125 : 25);
    }
    const FrameStream stream = streamAt(times);
    QCOMPARE(stream.jitter().percentile99, 0.0); // rank 99 of 100
    QCOMPARE(stream.jitter().greatest, 100.0);
}

void FrameStreamTest::aClockGoingBackwardsMakesAnIntervalOfZero()
{
    const FrameStream stream = streamAt({100, 125, 110});
    QCOMPARE(stream.jitter().greatest, 25.0); // intervals 25 and 0, the median by rank 0
    QCOMPARE(streamAt({100, 50}).rate(), 0.0);
}

void FrameStreamTest::theLastValuesAndTheChangesAreKept()
{
    FrameStream stream((StreamKey()));
    const QVector<QByteArray> frames = {"abc", "abc", "abd", "ab", "abcde", "abcde"};
    for (int i = 0; i < frames.size(); ++i) {
        DecodedFrame frame = frameOf(frames[i]);
        frame.flags = static_cast<quint16>(i);
        frame.startCode = 0xFFF0;
        stream.add(frame, i * kMs, frames[i].size());
    }
    QCOMPARE(stream.changes(), quint64{3});
    QCOMPARE(stream.count(), 5);
    QCOMPARE(QByteArray(reinterpret_cast<const char*>(stream.values()), 5), QByteArray("abcde"));
    QCOMPARE(stream.leastCount(), 2);
    QCOMPARE(stream.greatestCount(), 5);
    QCOMPARE(stream.flags(), quint16{5});
    QCOMPARE(stream.startCode(), quint16{0xFFF0});
    QCOMPARE(stream.firstNs(), 0);
    QCOMPARE(stream.lastNs(), 5 * kMs);
}

void FrameStreamTest::theGreatestOutlivesTheKeptIntervals()
{
    const QByteArray values("abc");
    FrameStream stream((StreamKey()));
    qint64 time = 0;
    stream.add(frameOf(values), time, 27);
    stream.add(frameOf(values), time += 500 * kMs, 27);
    for (std::size_t i = 0; i < FrameStream::kKeptIntervals; ++i) {
        stream.add(frameOf(values), time += 20 * kMs, 27);
    }
    QCOMPARE(stream.medianIntervalMs(), 20.0);
    QCOMPARE(stream.jitter().percentile99, 0.0);
    QCOMPARE(stream.jitter().greatest, 480.0);
    stream.add(frameOf(values), time += 26 * kMs, 27); // the ring goes round
    QCOMPARE(stream.jitter(1).greatest, 0.0);          // one interval is its own median
    QCOMPARE(stream.jitter(2).greatest, 6.0);
}

void FrameStreamTest::recentFiguresLookBackASecond()
{
    QVector<qint64> times;
    for (qint64 time = 0; time < 2000; time += 100) {
        times << time; // 10 a second
    }
    for (qint64 time = 2000; time <= 3000; time += 20) {
        times << time; // then 50 a second
    }
    const FrameStream stream = streamAt(times);
    QCOMPARE(stream.recentRate(3000 * kMs), 50.0);
    QCOMPARE(stream.recentRate(3900 * kMs), 50.0);
    QCOMPARE(stream.recentRate(4001 * kMs), 0.0); // silent for more than a second
}

void FrameStreamTest::keysAreTellingApart()
{
    const StreamKey base;
    QVector<StreamKey> others(7, base);
    others[0].source = 1;
    others[1].sourcePort = 1;
    others[2].controller = 1;
    others[3].broadcast = true;
    others[4].kind = FrameKind::Dmx;
    others[5].universe = 1;
    others[6].port = 1;
    for (const StreamKey& other : qAsConst(others)) {
        QVERIFY((base < other) != (other < base));
    }
    QVERIFY(!(base < base));
}

QTEST_APPLESS_MAIN(FrameStreamTest)
#include "FrameStreamTest.moc"
