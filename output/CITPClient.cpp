#include "output/CITPClient.h"

#include "output/CITPPacket.h"

#include <QDebug>
#include <QHostAddress>
#include <QNetworkProxy>
#include <QTcpSocket>

#include <utility>

namespace {

constexpr int kNameBufferBytes = 2048;

/// What may wait for a peer that doesn't read, in bytes: some seconds of frames.
constexpr qint64 kMaxBacklogBytes = qint64{4} * 1024 * 1024;

} // namespace

CITPClient::CITPClient(QString peerName, QStringList universeNames, QObject* parent)
    : QObject(parent)
    , m_packet(new CITPPacket(this))
    , m_peerName(std::move(peerName))
    , m_universeNames(std::move(universeNames))
{
    connect(m_packet, &CITPPacket::invalidPacket, this, &CITPClient::handleInvalidPacket);
    connect(m_packet, &CITPPacket::peerNamePacket, this, &CITPClient::handlePeerNamePacket);
}

QAbstractSocket::SocketState CITPClient::connectionState() const
{
    return m_socket == nullptr ? QAbstractSocket::UnconnectedState : m_socket->state();
}

void CITPClient::connectTo(const QString& host, quint16 port)
{
    if (!m_enabled) {
        return;
    }
    if (m_socket != nullptr) {
        m_socket->disconnect(this);
        m_socket->abort();
        handleDisconnected();
    }
    m_ready = false; // the names go ahead of the blocks on each connection
    m_stallLogged = false;
    auto* const socket = new QTcpSocket(this);
    m_socket = socket;
    socket->setProxy(QNetworkProxy::NoProxy);
    // As much as is read in one go: what a peer sends beyond it waits at the peer.
    socket->setReadBufferSize(kBufferBytes);
    connect(socket, &QTcpSocket::connected, this, &CITPClient::handleConnected);
    connect(socket, &QTcpSocket::readyRead, this, &CITPClient::handleReadyRead);
    connect(socket, &QTcpSocket::stateChanged, this, [this](QAbstractSocket::SocketState state) {
        if (state == QAbstractSocket::UnconnectedState) { // ended, or never came about
            handleDisconnected();
        }
    });
    socket->connectToHost(host, port);
}

void CITPClient::sendChannelBlock(int universe, const void* data, quint16 count, bool blind)
{
    if (!m_enabled || m_socket == nullptr || !m_ready) {
        return;
    }
    const qint64 backlog = m_socket->bytesToWrite();
    if (backlog > kMaxBacklogBytes) {
        if (!m_stallLogged) { // once, not forty times a second
            qWarning("CITPClient: Failed to send data packet");
        }
        m_stallLogged = true;
        return;
    }
    m_stallLogged = m_stallLogged && backlog > 0;
    const int size = CITPPacket::buildChannelBlock(m_txBuffer.data(), kBufferBytes, blind, universe,
                                                   0, count, data);
    if (size < 0) {
        qWarning("CITPClient: Failed to build channel block packet");
        return;
    }
    if (m_socket->write(m_txBuffer.data(), size) < 0) {
        qWarning("CITPClient: Failed to send data packet");
    }
}

void CITPClient::handleConnected()
{
    if (!m_enabled) {
        return;
    }
    sendPeerName();
    for (int i = 0; i < m_universeNames.size(); ++i) {
        sendUniverseName(i, m_universeNames.at(i));
    }
    m_ready = true;
}

void CITPClient::handleDisconnected()
{
    if (m_socket != nullptr) {
        m_socket->deleteLater();
        m_socket = nullptr;
    }
    m_remoteName.clear();
}

void CITPClient::handleReadyRead()
{
    if (m_socket == nullptr) {
        return;
    }
    m_rxBuffer.fill('\0');
    const qint64 length = m_socket->read(m_rxBuffer.data(), kBufferBytes);
    if (!m_enabled) {
        return;
    }
    if (length < 0) {
        qWarning("CITPClient: Read datagram error");
    } else {
        QHostAddress from = m_socket->peerAddress();
        m_packet->parse(from, m_rxBuffer.data(), static_cast<uint>(length));
    }
}

void CITPClient::handleInvalidPacket(const QString& errorString)
{
    Q_UNUSED(errorString) // the stream goes on
}

void CITPClient::handlePeerNamePacket(QString& name)
{
    m_remoteName = name;
}

void CITPClient::sendPeerName()
{
    std::array<char, kNameBufferBytes> buffer; // NOLINT(*-member-init): cleared by the build
    const int size = CITPPacket::buildPeerName(buffer.data(), kNameBufferBytes, m_peerName);
    if (size < 0) {
        qWarning("CITPClient: Failed to build peer name packet");
    } else if (m_socket != nullptr && m_socket->write(buffer.data(), size) < 0) {
        qWarning("CITPClient: Failed to send peer name packet");
    }
}

void CITPClient::sendUniverseName(int universe, const QString& name)
{
    qWarning().noquote().nospace() << "Sending universe name: " << universe << ":" << name;
    std::array<char, kNameBufferBytes> buffer; // NOLINT(*-member-init): cleared by the build
    const int size = CITPPacket::buildUniverseName(buffer.data(), kNameBufferBytes, universe, name);
    if (size < 0) {
        qWarning("CITPClient: Failed to build universe name packet");
    } else if (m_socket != nullptr && m_socket->write(buffer.data(), size) < 0) {
        qWarning("CITPClient: Failed to send universe name packet");
    }
}
