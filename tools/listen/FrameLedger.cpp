#include "tools/listen/FrameLedger.h"

void FrameLedger::hear(const HeardDatagram& datagram)
{
    ++m_totals.datagrams;
    m_totals.bytes += static_cast<quint64>(datagram.size);
    DecodedFrame frame;
    const FrameError error = decodeFrame(datagram.data, datagram.size, &frame);
    if (error != FrameError::None) {
        countJunk(error);
        return;
    }
    ++(frame.kind == FrameKind::Sync ? m_totals.syncs : m_totals.frames);

    StreamKey key;
    key.source = datagram.source;
    key.sourcePort = datagram.sourcePort;
    key.controller = datagram.controller;
    key.broadcast = datagram.broadcast;
    key.kind = frame.kind;
    key.universe = frame.universe;
    key.port = frame.port;
    auto stream = m_streams.find(key);
    if (stream == m_streams.end()) {
        if (m_streams.size() >= kMostStreams) {
            ++m_totals.untracked;
            return;
        }
        stream = m_streams.emplace(key, FrameStream(key)).first;
    }
    stream->second.add(frame, datagram.timeNs, datagram.size);
}

void FrameLedger::countJunk(FrameError error)
{
    switch (error) {
    case FrameError::TooShort:
        ++m_totals.tooShort;
        break;
    case FrameError::WrongMagic:
        ++m_totals.wrongMagic;
        break;
    case FrameError::WrongVersion:
        ++m_totals.wrongVersion;
        break;
    case FrameError::UnknownType:
        ++m_totals.unknownType;
        break;
    case FrameError::WrongLength:
        ++m_totals.wrongLength;
        break;
    case FrameError::None:
        break;
    }
}
