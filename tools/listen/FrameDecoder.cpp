#include "tools/listen/FrameDecoder.h"

namespace {

constexpr int kMostValues = 512;

quint16 word(const quint8* at)
{
    return static_cast<quint16>(at[0] | at[1] << 8);
}

quint32 longWord(const quint8* at)
{
    return word(at) | static_cast<quint32>(word(at + 2)) << 16;
}

} // namespace

FrameError decodeFrame(const void* datagram, int size, DecodedFrame* frame)
{
    const auto* const bytes = static_cast<const quint8*>(datagram);
    if (size < 12) {
        return FrameError::TooShort;
    }
    if (bytes[0] != 0x04 || bytes[1] != 0x01 || bytes[2] != 0xDC || bytes[3] != 0x4A) {
        return FrameError::WrongMagic;
    }
    if (word(bytes + 4) != 1) {
        return FrameError::WrongVersion;
    }

    DecodedFrame heard;
    heard.sequence = longWord(bytes + 8);
    int head = 0;
    switch (word(bytes + 6)) {
    case 257:
        heard.kind = FrameKind::Dmx;
        head = 21;
        break;
    case 264:
        heard.kind = FrameKind::Port;
        head = 24;
        break;
    case 265:
        heard.kind = FrameKind::Sync;
        head = 16;
        break;
    default:
        return FrameError::UnknownType;
    }
    if (size < head) {
        return FrameError::TooShort;
    }
    heard.count = size - head;
    heard.values = bytes + head;
    bool lengthIsRight = heard.count <= kMostValues;
    switch (heard.kind) {
    case FrameKind::Dmx:
        heard.timer = word(bytes + 14);
        heard.universe = longWord(bytes + 16);
        heard.startCode = bytes[20];
        break;
    case FrameKind::Port:
        heard.universe = longWord(bytes + 12);
        heard.port = bytes[16];
        heard.flags = word(bytes + 18);
        heard.startCode = word(bytes + 22);
        lengthIsRight = lengthIsRight && word(bytes + 20) == heard.count;
        break;
    case FrameKind::Sync:
        lengthIsRight = heard.count == 0;
        break;
    }
    if (!lengthIsRight) {
        return FrameError::WrongLength;
    }
    *frame = heard;
    return FrameError::None;
}
