#pragma once

#include <QHostAddress>
#include <QObject>
#include <QString>

/// Builds and parses the few messages of the Controller Interface Transport Protocol that the
/// visualiser mirror uses. Numbers are little-endian; a message is one whole part.
class CITPPacket : public QObject
{
    Q_OBJECT
public:
    /// The longest text, and the most channels, that parse() hands on.
    static constexpr int kMaxParsedBytes = 2048;

    explicit CITPPacket(QObject* parent = nullptr);

    /// Builds the channel block of `count` channels of `data`; of `universe` the low byte is sent.
    /// Clears all `capacity` bytes of `buffer` first, as every build function does. Answers the
    /// message's size in bytes, 0 when it doesn't fit, or -1 when not even its headers fit.
    static int buildChannelBlock(char* buffer, int capacity, bool blind, int universe,
                                 quint16 firstChannel, quint16 count, const void* data);
    /// Builds the message that introduces a peer. `name` goes out in Latin-1. Answers as
    /// buildChannelBlock.
    static int buildPeerName(char* buffer, int capacity, const QString& name);
    /// Builds the message that names a universe. Answers as buildChannelBlock.
    static int buildUniverseName(char* buffer, int capacity, int universe, const QString& name);

    /// Reads one message of `size` bytes and emits what it holds, or `invalidPacket`. Answers the
    /// four letters of the message as a number, or -1 if none was handled. Never reads behind
    /// `size`, whatever the message claims.
    int parse(QHostAddress& from, const char* data, uint size);

signals:
    void invalidPacket(const QString& errorString);
    void peerLocationPacket(QHostAddress& address, quint16& port, QString& type, QString& name,
                            QString& state);
    void peerNamePacket(QString& name);
    /// `buffer` holds `channelCount` channels and lives for the time of the call.
    void channelBlockPacket(bool blind, uchar universeIndex, ushort firstChannel,
                            ushort channelCount, const unsigned char* buffer);

private:
    int refuse(const QString& errorString);
    int parsePeerInformation(QHostAddress& from, const char* data, int size);
    int parseStreamedDmx(const char* data, int size);
};
