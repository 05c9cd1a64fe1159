#pragma once

#include <QString>
#include <QtGlobal>

class ByteReader;

/// One RDM response, laid out as in ANSI E1.20, reduced to what a reader of values wants.
struct RdmReply
{
    quint64 sourceUid = 0; ///< 48 bits: manufacturer id above device id
    quint16 pid = 0;
    QString value; ///< the parameter as text; empty where there is no parameter data

    /// Reads a message from the reader's position. Bytes behind the end read as 0; nothing is
    /// checked, the checksum included.
    static RdmReply read(ByteReader& reader);
};
