#pragma once

#include <QJsonObject>
#include <QString>
#include <QVector>

class FrameLedger;
struct StreamKey;

/// What goes into a report besides the ledger.
struct ListenRun
{
    QVector<quint32> addresses; ///< listened at, IPv4
    double seconds = 0.0;       ///< listened for
    quint64 dropped = 0;        ///< datagrams that the system threw away
};

/// The dotted text of an IPv4 address.
QString ipText(quint32 address);
/// The name of an output: "dmx", "port 3", "dmx u7" where a universe is named, "sync".
QString outputText(const StreamKey& key);

/// The report at the end of a run.
class ListenReport
{
public:
    static QJsonObject json(const FrameLedger& ledger, const ListenRun& run);
    /// A table for people.
    static QString text(const FrameLedger& ledger, const ListenRun& run);
};
