#pragma once

#include <QtGlobal>

/// What a controller can be sent.
enum class FrameKind { Dmx, Port, Sync };

/// Why a datagram is none of those.
enum class FrameError {
    None,
    TooShort,     ///< no whole header, or no whole head of its kind
    WrongMagic,   ///< of another protocol
    WrongVersion, ///< of another generation of this one
    UnknownType,
    WrongLength, ///< more than 512 values, or not as many as the packet says
};

/// A packet as it was heard. The fields that its kind doesn't have are 0.
struct DecodedFrame
{
    FrameKind kind = FrameKind::Sync;
    quint32 sequence = 0;
    quint32 universe = 0;
    quint16 timer = 0;
    quint16 flags = 0;
    quint16 startCode = 0;
    quint8 port = 0;
    const quint8* values = nullptr; // not owned: points into the datagram
    int count = 0;                  ///< number of values, 0 to 512
};

/// Decodes a datagram as a controller does. Written from the layout of the packets alone and shares
/// no code with the sender, so that one checks the other. `frame` is set only if the answer is
/// `FrameError::None`.
FrameError decodeFrame(const void* datagram, int size, DecodedFrame* frame);
