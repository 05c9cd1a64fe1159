#pragma once

#include <QByteArray>
#include <QtGlobal>

class FrameLedger;
class FrameStream;

/// Draws the ledger for a terminal, a line for each output with a bar of its values.
class LiveView
{
public:
    /// A whole picture of at most `rows` lines, none wider than `columns`, that replaces the one
    /// before. `nowNs` is in the clock of the frames' times. UTF-8 with ANSI control sequences.
    static QByteArray draw(const FrameLedger& ledger, qint64 nowNs, int columns, int rows);
    /// The values as `cells` characters: each stands for one or more lights of three values, by
    /// their colour and, as a block of its height, their brightest value.
    static QByteArray bar(const quint8* values, int count, int cells);

    /// Goes to a screen of its own and back.
    static QByteArray enter();
    static QByteArray leave();
};
