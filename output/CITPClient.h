#pragma once

#include <QAbstractSocket>
#include <QObject>
#include <QString>
#include <QStringList>

#include <array>

class CITPPacket;
class QTcpSocket;

/// Mirrors the channels of the controllers to a visualiser over one TCP connection: introduces
/// itself, names its universes, then sends a block for each universe of each frame. Does nothing
/// while it isn't enabled.
class CITPClient : public QObject
{
    Q_OBJECT
public:
    /// `universeNames` are counted from universe 0. The client starts out disabled and without a
    /// connection.
    CITPClient(QString peerName, QStringList universeNames, QObject* parent);

    bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enabled) { m_enabled = enabled; }
    /// True from the introduction on, also after the connection has ended, until the next begins.
    bool isReady() const { return m_ready; }
    /// What the other side calls itself; empty when it hasn't, or has gone.
    QString remoteName() const { return m_remoteName; }
    QAbstractSocket::SocketState connectionState() const;
    /// For whoever wants to hear of the messages that the client itself has no use for.
    CITPPacket* packet() const { return m_packet; }

    /// Ends the present connection, if any, and begins another one to `host`, a name or an address.
    /// Does nothing while disabled. A connection that fails or ends isn't made again.
    void connectTo(const QString& host, quint16 port);

    /// Sends `count` channels of a universe. Skipped without a message while disabled, not
    /// connected or not introduced yet. Allocates nothing of its own. A block that doesn't fit the
    /// 1024 bytes of a message is dropped in silence; one for a peer that has long stopped reading
    /// is dropped with one warning.
    void sendChannelBlock(int universe, const void* data, quint16 count, bool blind);

public slots:
    void handleConnected();
    void handleDisconnected();
    void handleReadyRead();
    void handleInvalidPacket(const QString& errorString);
    void handlePeerNamePacket(QString& name);

private:
    void sendPeerName();
    void sendUniverseName(int universe, const QString& name);

    static constexpr int kBufferBytes = 1024;

    bool m_enabled = false;
    bool m_ready = false;
    CITPPacket* m_packet = nullptr;
    QTcpSocket* m_socket = nullptr; // null when there is no connection
    QString m_peerName;
    QStringList m_universeNames;
    QString m_remoteName;
    bool m_stallLogged = false; // until all that waits has gone
    std::array<char, kBufferBytes> m_txBuffer{};
    std::array<char, kBufferBytes> m_rxBuffer{};
};
