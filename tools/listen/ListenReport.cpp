#include "tools/listen/ListenReport.h"

#include "tools/listen/FrameLedger.h"

#include <QHostAddress>
#include <QJsonArray>
#include <QStringList>

#include <algorithm>

namespace {

constexpr int kValuesInText = 24;

QJsonValue number(quint64 value)
{
    return static_cast<double>(value); // exact up to 2^53
}

QString kindName(FrameKind kind)
{
    switch (kind) {
    case FrameKind::Dmx:
        return QStringLiteral("dmx");
    case FrameKind::Port:
        return QStringLiteral("port");
    case FrameKind::Sync:
        break;
    }
    return QStringLiteral("sync");
}

QJsonObject streamJson(const FrameStream& stream, qint64 startNs)
{
    const StreamKey& key = stream.key();
    QJsonObject row{
        {QStringLiteral("source"), ipText(key.source)},
        {QStringLiteral("sourcePort"), key.sourcePort},
        {QStringLiteral("controller"), ipText(key.controller)},
        {QStringLiteral("broadcast"), key.broadcast},
        {QStringLiteral("kind"), kindName(key.kind)},
        {QStringLiteral("frames"), number(stream.frames())},
        {QStringLiteral("bytes"), number(stream.bytes())},
        {QStringLiteral("firstSeconds"), static_cast<double>(stream.firstNs() - startNs) / 1e9},
        {QStringLiteral("lastSeconds"), static_cast<double>(stream.lastNs() - startNs) / 1e9},
        {QStringLiteral("rate"), QJsonValue()},
        {QStringLiteral("intervalMs"), QJsonValue()},
        {QStringLiteral("jitterMs"), QJsonValue()},
    };
    if (stream.hasIntervals()) {
        const Jitter jitter = stream.jitter();
        row[QStringLiteral("rate")] = stream.rate();
        row[QStringLiteral("intervalMs")] = stream.medianIntervalMs();
        row[QStringLiteral("jitterMs")] =
            QJsonObject{{QStringLiteral("median"), jitter.median},
                        {QStringLiteral("p99"), jitter.percentile99},
                        {QStringLiteral("greatest"), jitter.greatest}};
    }
    if (key.kind == FrameKind::Sync) {
        return row;
    }
    row[QStringLiteral("universe")] = number(key.universe);
    row[QStringLiteral("startCode")] = stream.startCode();
    if (key.kind == FrameKind::Port) {
        row[QStringLiteral("port")] = key.port;
        row[QStringLiteral("flags")] = stream.flags();
    } else {
        row[QStringLiteral("timer")] = stream.timer();
    }
    row[QStringLiteral("changes")] = number(stream.changes());
    row[QStringLiteral("leastLength")] = stream.leastCount();
    row[QStringLiteral("greatestLength")] = stream.greatestCount();
    QJsonArray values;
    for (int i = 0; i < stream.count(); ++i) {
        values.append(stream.values()[i]);
    }
    row[QStringLiteral("values")] = values;
    return row;
}

QString decimals(double value, int places)
{
    return QString::number(value, 'f', places);
}

QStringList streamCells(const FrameStream& stream)
{
    const StreamKey& key = stream.key();
    QStringList cells = {ipText(key.source) + QLatin1Char(':') + QString::number(key.sourcePort),
                         ipText(key.controller) +
                             (key.broadcast ? QStringLiteral(" (b)") : QString()),
                         outputText(key), QString::number(stream.frames())};
    if (stream.hasIntervals()) {
        const Jitter jitter = stream.jitter();
        cells << decimals(stream.rate(), 2) << decimals(jitter.median, 3)
              << decimals(jitter.percentile99, 3) << decimals(jitter.greatest, 3);
    } else {
        for (int i = 0; i < 4; ++i) {
            cells << QStringLiteral("-");
        }
    }
    cells << QString::number(stream.bytes()) << QString::number(stream.count());
    QString values;
    for (int i = 0; i < std::min(stream.count(), kValuesInText); ++i) {
        values += QStringLiteral("%1").arg(stream.values()[i], 2, 16, QLatin1Char('0'));
    }
    if (stream.count() > kValuesInText) {
        values += QStringLiteral("...");
    }
    cells << values;
    return cells;
}

/// Columns as wide as their widest cell; all but the first three and the last align right.
QString tableText(const QVector<QStringList>& rows)
{
    QVector<int> widths(rows.first().size(), 0);
    for (const QStringList& row : rows) {
        for (int i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], row[i].size());
        }
    }
    QString text;
    for (const QStringList& row : rows) {
        QString line;
        for (int i = 0; i < row.size(); ++i) {
            const bool right = i >= 3 && i < row.size() - 1;
            line += right ? row[i].rightJustified(widths[i]) : row[i].leftJustified(widths[i]);
            line += QStringLiteral("  ");
        }
        while (line.endsWith(QLatin1Char(' '))) {
            line.chop(1);
        }
        text += line + QLatin1Char('\n');
    }
    return text;
}

} // namespace

QString ipText(quint32 address)
{
    return QHostAddress(address).toString();
}

QString outputText(const StreamKey& key)
{
    const QString universe =
        key.universe == 0xFFFFFFFF ? QString() : QStringLiteral(" u%1").arg(key.universe);
    switch (key.kind) {
    case FrameKind::Dmx:
        return QStringLiteral("dmx") + universe;
    case FrameKind::Port:
        return QStringLiteral("port %1").arg(key.port) + universe;
    case FrameKind::Sync:
        break;
    }
    return QStringLiteral("sync");
}

QJsonObject ListenReport::json(const FrameLedger& ledger, const ListenRun& run)
{
    const LedgerTotals& totals = ledger.totals();
    QJsonArray addresses;
    for (const quint32 address : run.addresses) {
        addresses.append(ipText(address));
    }
    const FrameLedger::Streams& streams = ledger.streams();
    const auto earliest =
        std::min_element(streams.cbegin(), streams.cend(), [](const auto& a, const auto& b) {
            return a.second.firstNs() < b.second.firstNs();
        });
    QJsonArray rows;
    for (const auto& stream : streams) {
        rows.append(streamJson(stream.second, earliest->second.firstNs()));
    }
    return QJsonObject{
        {QStringLiteral("addresses"), addresses},
        {QStringLiteral("seconds"), run.seconds},
        {QStringLiteral("datagrams"), number(totals.datagrams)},
        {QStringLiteral("bytes"), number(totals.bytes)},
        {QStringLiteral("frames"), number(totals.frames)},
        {QStringLiteral("syncs"), number(totals.syncs)},
        {QStringLiteral("dropped"), number(run.dropped)},
        {QStringLiteral("untracked"), number(totals.untracked)},
        {QStringLiteral("junk"),
         QJsonObject{{QStringLiteral("total"), number(totals.junk())},
                     {QStringLiteral("tooShort"), number(totals.tooShort)},
                     {QStringLiteral("wrongMagic"), number(totals.wrongMagic)},
                     {QStringLiteral("wrongVersion"), number(totals.wrongVersion)},
                     {QStringLiteral("unknownType"), number(totals.unknownType)},
                     {QStringLiteral("wrongLength"), number(totals.wrongLength)}}},
        {QStringLiteral("streams"), rows},
    };
}

QString ListenReport::text(const FrameLedger& ledger, const ListenRun& run)
{
    const LedgerTotals& totals = ledger.totals();
    QString text =
        QStringLiteral("%1 frames and %2 syncs heard in %3 s, %4 bytes; %5 junk, %6 dropped\n")
            .arg(totals.frames)
            .arg(totals.syncs)
            .arg(decimals(run.seconds, 1))
            .arg(totals.bytes)
            .arg(totals.junk())
            .arg(run.dropped);
    if (totals.untracked > 0) {
        text += QStringLiteral("%1 more than the %2 streams that are kept apart\n")
                    .arg(totals.untracked)
                    .arg(FrameLedger::kMostStreams);
    }
    if (ledger.streams().empty()) {
        return text;
    }
    QVector<QStringList> rows = {
        {QStringLiteral("source"), QStringLiteral("controller"), QStringLiteral("output"),
         QStringLiteral("frames"), QStringLiteral("per s"), QStringLiteral("jitter ms"),
         QStringLiteral("p99"), QStringLiteral("greatest"), QStringLiteral("bytes"),
         QStringLiteral("length"), QStringLiteral("last values")}};
    for (const auto& stream : ledger.streams()) {
        rows.append(streamCells(stream.second));
    }
    return text + tableText(rows);
}
