#include "output/CommLibrary.h"

#include "output/PauseMessages.h"

#include <QByteArray>
#include <QNetworkProxy>
#include <QTcpSocket>
#include <QUdpSocket>

#include <utility>

namespace {

/// Datagrams read before the event loop has its turn again: a flood mustn't stop the frames.
constexpr int kMaxReadsPerCall = 64;
/// What a peer may send without being read; it is thrown away at each cycle.
constexpr qint64 kReadBufferBytes = 65536;
/// What may wait for a peer that doesn't read.
constexpr qint64 kMaxBacklogBytes = 65536;

bool isConnected(const QTcpSocket& socket)
{
    return socket.state() == QAbstractSocket::ConnectedState;
}

void sendPause(QTcpSocket& socket)
{
    socket.skip(socket.bytesAvailable()); // a full buffer would hide that the peer has closed
    if (socket.bytesToWrite() <= kMaxBacklogBytes) {
        socket.write(PauseMessages::pause());
    }
    socket.flush();
}

} // namespace

CommLibrary::CommLibrary(const QString& clientName, QObject* parent, const CommPeriods& periods,
                         InterfaceSource interfaces)
    : QObject(parent)
    , m_udp(new QUdpSocket(this))
    , m_clientName(clientName)
    , m_connectWait(periods.connectWait)
    , m_interfaces(std::move(interfaces))
{
    m_udp->setProxy(QNetworkProxy::NoProxy);
    m_udp->bind(QHostAddress::Any, kLocalPort,
                QUdpSocket::ShareAddress | QUdpSocket::ReuseAddressHint);
    connect(m_udp, &QUdpSocket::readyRead, this, &CommLibrary::handleReadReady);

    for (QTimer* const timer : {&m_pauseTimer, &m_discoveryTimer}) {
        timer->setSingleShot(true);
        timer->setTimerType(Qt::PreciseTimer);
        connect(timer, &QTimer::timeout, this, &CommLibrary::handlePauseControllers);
    }
    m_pauseTimer.setInterval(periods.pause);
    m_discoveryTimer.setInterval(periods.discovery);
    startDiscovery();
}

CommLibrary::~CommLibrary()
{
    delete m_udp;
    m_udp = nullptr;
    closeAll();
}

void CommLibrary::startDiscovery()
{
    if (m_discoveryTimer.isActive()) {
        m_discoveryTimer.start();
        return;
    }
    closeAll();
    m_answered.clear();
    const QVector<InterfaceRecord> interfaces = m_interfaces();
    for (const InterfaceRecord& interface : interfaces) {
        for (const InterfaceAddress& entry : interface.addresses) {
            if (entry.ip.protocol() != QAbstractSocket::IPv4Protocol ||
                entry.ip == QHostAddress(QHostAddress::LocalHost)) {
                continue;
            }
            const QHostAddress broadcast(entry.ip.toIPv4Address() | ~entry.netmask.toIPv4Address());
            const QString text =
                QStringLiteral("3166485691:1:%1:%2\n").arg(entry.ip.toString()).arg(kLocalPort);
            m_udp->writeDatagram(text.toLatin1(), broadcast, kDiscoveryPort);
        }
    }
    m_discoveryTimer.start();
}

void CommLibrary::handleReadReady()
{
    if (m_udp == nullptr || !m_discoveryTimer.isActive()) {
        return;
    }
    for (int i = 0; i < kMaxReadsPerCall && m_udp->hasPendingDatagrams(); ++i) {
        QByteArray datagram(static_cast<int>(m_udp->pendingDatagramSize()), '\0');
        const qint64 length = m_udp->readDatagram(datagram.data(), datagram.size());
        if (length < 0) {
            return;
        }
        datagram.truncate(static_cast<int>(length));
        handleAnswer(datagram);
    }
}

void CommLibrary::handleAnswer(const QByteArray& datagram)
{
    QString text = QString::fromLatin1(datagram);
    text.remove(QLatin1Char('\n'));
    const QStringList pieces = text.split(QLatin1Char(':'));
    if (pieces.size() != 4) {
        return;
    }
    const QString& addressText = pieces.at(2);
    const QHostAddress address(addressText);
    // A name would have to be looked up, which may take longer than the wait for a connection.
    if (address.isNull() || m_answered.size() >= kMaxAnswers || m_answered.contains(address)) {
        return;
    }
    m_answered.insert(address);
    const auto port = static_cast<quint16>(pieces.at(3).toUInt());

    auto* const socket = new QTcpSocket(this);
    socket->setProxy(QNetworkProxy::NoProxy);
    socket->setReadBufferSize(kReadBufferBytes);
    socket->connectToHost(address, port);
    if (!socket->waitForConnected(m_connectWait)) {
        return; // it stays as it is, without a part in what follows, as long as this object
    }
    if (!isConnected(*socket)) {
        delete socket;
        return;
    }
    socket->write(PauseMessages::hello(m_clientName));
    socket->flush();
    m_connections.insert(addressText, socket);
}

void CommLibrary::handlePauseControllers()
{
    for (auto at = m_connections.begin(); at != m_connections.end();) {
        QTcpSocket* const socket = at.value();
        if (socket == nullptr || !isConnected(*socket)) {
            at = m_connections.erase(at);
            delete socket;
            continue;
        }
        try {
            sendPause(*socket);
            ++at;
        } catch (...) {
            at = m_connections.erase(at);
            socket->abort();
            socket->close();
            delete socket;
        }
    }
    m_pauseTimer.start();
}

void CommLibrary::closeAll()
{
    for (QTcpSocket* const socket : qAsConst(m_connections)) {
        if (socket != nullptr && socket->isOpen()) {
            socket->close();
        }
        delete socket;
    }
    m_connections.clear();
}
