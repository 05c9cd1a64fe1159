#include "tools/listen/LiveView.h"

#include "tools/listen/FrameLedger.h"
#include "tools/listen/ListenReport.h"

#include <QString>
#include <QVector>

#include <algorithm>
#include <array>

namespace {

constexpr std::size_t kRecentIntervals = 400; // ten seconds at the usual rate
constexpr int kLabelWidth = 46;
constexpr int kLightValues = 3;
constexpr char kResetColor[] = "\x1b[0m";
constexpr char kClearLineEnd[] = "\x1b[K";

using Rgb = std::array<int, 3>;

/// The greatest red, green and blue of the lights `from` to `to`, the last one left out.
Rgb brightest(const quint8* values, int count, int from, int to)
{
    Rgb color{};
    for (int i = from * kLightValues; i < std::min(to * kLightValues, count); ++i) {
        int& channel = color[static_cast<std::size_t>(i % kLightValues)];
        channel = std::max(channel, int{values[i]});
    }
    return color;
}

QByteArray colorSequence(const Rgb& color, int level)
{
    QByteArray sequence = "\x1b[38;2";
    for (const int channel : color) {
        sequence += ';' + QByteArray::number(channel * 255 / level);
    }
    return sequence + 'm';
}

QString label(const FrameStream& stream, qint64 nowNs)
{
    const StreamKey& key = stream.key();
    return QStringLiteral("%1 %2 %3/s %4 ms ")
        .arg(ipText(key.controller).leftJustified(15, QLatin1Char(' '), true),
             outputText(key).leftJustified(9, QLatin1Char(' '), true),
             QString::number(stream.recentRate(nowNs), 'f', 1).rightJustified(7),
             QString::number(stream.jitter(kRecentIntervals).percentile99, 'f', 2)
                 .rightJustified(6));
}

QByteArray line(const QString& text, int columns)
{
    return text.left(columns).toUtf8();
}

} // namespace

QByteArray LiveView::bar(const quint8* values, int count, int cells)
{
    static const std::array<const char*, 9> kBlocks = {" ",   u8"▁", u8"▂", u8"▃", u8"▄",
                                                       u8"▅", u8"▆", u8"▇", u8"█"};
    const int lights = (count + kLightValues - 1) / kLightValues;
    const int width = std::min(cells, lights);
    QByteArray text;
    QByteArray current;
    for (int cell = 0; cell < width; ++cell) {
        const Rgb color =
            brightest(values, count, cell * lights / width, (cell + 1) * lights / width);
        const int level = *std::max_element(color.cbegin(), color.cend());
        if (level > 0) {
            const QByteArray sequence = colorSequence(color, level);
            if (sequence != current) {
                text += sequence;
                current = sequence;
            }
        }
        const int height = level == 0 ? 0 : 1 + level * 7 / 255;
        text += kBlocks[static_cast<std::size_t>(height)];
    }
    return current.isEmpty() ? text : text + kResetColor;
}

QByteArray LiveView::draw(const FrameLedger& ledger, qint64 nowNs, int columns, int rows)
{
    const LedgerTotals& totals = ledger.totals();
    QVector<QByteArray> lines;
    lines << line(QStringLiteral("%1 frames, %2 syncs, %3 junk; rate and 99th percentile of "
                                 "jitter of the last seconds")
                      .arg(totals.frames)
                      .arg(totals.syncs)
                      .arg(totals.junk()),
                  columns);
    const int room = std::max(rows - 2, 0); // beside the heading and the line on what is left out
    quint64 lastSource = ~quint64{0};
    std::size_t shown = 0;
    for (const auto& pair : ledger.streams()) {
        const FrameStream& stream = pair.second;
        const quint64 source = quint64{stream.key().source} << 16 | stream.key().sourcePort;
        const int needed = source == lastSource ? 1 : 2;
        if (lines.size() - 1 + needed > room) {
            break;
        }
        if (needed == 2) {
            lines << line(QStringLiteral("from %1:%2")
                              .arg(ipText(stream.key().source))
                              .arg(stream.key().sourcePort),
                          columns);
            lastSource = source;
        }
        lines << line(label(stream, nowNs), columns) +
                     bar(stream.values(), stream.count(), std::max(columns - kLabelWidth, 0));
        ++shown;
    }
    const std::size_t left = ledger.streams().size() - shown;
    if (left > 0 && lines.size() < rows) {
        lines << line(QStringLiteral("... and %1 more").arg(left), columns);
    }

    QByteArray picture = "\x1b[H";
    for (int i = 0; i < std::min(lines.size(), rows); ++i) {
        picture += (i == 0 ? "" : "\r\n") + lines[i] + kClearLineEnd;
    }
    return picture + "\x1b[J";
}

QByteArray LiveView::enter()
{
    return "\x1b[?1049h\x1b[?25l";
}

QByteArray LiveView::leave()
{
    return "\x1b[?25h\x1b[?1049l";
}
