#include "output/Talvis.h"

#include "output/TalvisReplies.h"
#include "output/TalvisSocket.h"

#include <QDebug>
#include <QHostAddress>
#include <QMetaType>

#include <algorithm>

namespace {

constexpr quint32 kGreatestLength = 512;
constexpr int kStartSyncs = 5;

/// Cuts `length` and says whether it had to.
bool truncate(quint32& length)
{
    if (length <= kGreatestLength) {
        return false;
    }
    qDebug("Truncating: DMX data length exceed 512");
    length = kGreatestLength;
    return true;
}

} // namespace

Talvis::Talvis(QObject* parent)
    : Talvis(new TalvisSocket(nullptr), parent)
{}

Talvis::Talvis(TalvisSocket* socket, QObject* parent)
    : QObject(parent)
    , m_socket(socket)
{
    // For requests that come from another thread.
    qRegisterMetaType<const char*>("const char*");
    qRegisterMetaType<const uchar*>("const uchar*");
    if (m_socket != nullptr) {
        m_socket->setParent(this);
        connect(m_socket, &TalvisSocket::readyRead, this, &Talvis::checkSocket);
    }
    connect(this, &Talvis::requestSyncPacket, this, &Talvis::handleSyncPacketRequest);
    connect(this, &Talvis::requestSendPortOut, this, &Talvis::handleSendPortOutRequest);
    for (int i = 0; i < kStartSyncs; ++i) {
        sendSync();
    }
}

bool Talvis::sendDmxOut(const char* ip, quint8 startCode, quint16 timerVal, const void* data,
                        int length)
{
    return sendDmxFrame(ip, startCode, timerVal, data, length);
}

bool Talvis::sendDmxOut(const QHostAddress& ip, quint8 startCode, quint16 timerVal,
                        const void* data, int length)
{
    return sendDmxFrame(ip, startCode, timerVal, data, length);
}

bool Talvis::broadcastDmxOut(quint32 universe, quint8 startCode, quint16 timerVal, const void* data,
                             quint32 length)
{
    return m_packet.setDmxFrame(universe, startCode, timerVal, data, length) && broadcast();
}

bool Talvis::sendPortOut(const char* ip, quint32 universe, quint8 port, quint16 flags,
                         quint32 length, quint16 startCode, const void* data)
{
    return sendPortFrame(ip, universe, port, flags, length, startCode, data);
}

bool Talvis::sendPortOut(const QHostAddress& ip, quint32 universe, quint8 port, quint16 flags,
                         quint32 length, quint16 startCode, const void* data)
{
    return sendPortFrame(ip, universe, port, flags, length, startCode, data);
}

bool Talvis::broadcastPortOut(quint32 universe, quint8 port, quint16 flags, quint32 length,
                              quint16 startCode, const void* data)
{
    return m_packet.setPortFrame(universe, port, flags, startCode, data, length) && broadcast();
}

void Talvis::sendSync()
{
    m_packet.setSync();
    broadcast();
}

void Talvis::checkSocket()
{
    if (m_socket == nullptr) {
        return;
    }
    const TalvisReplies replies(this);
    const auto size = static_cast<int>(m_received.size());
    QHostAddress sender;
    while (m_socket->readPending(m_received.data(), size, &sender)) {
        replies.decode(m_received.data(), size, sender.toIPv4Address());
    }
}

void Talvis::handleSyncPacketRequest()
{
    if (m_socket != nullptr) {
        sendSync();
    }
}

void Talvis::handleSendPortOutRequest(const char* ip, uint uni, uchar port, uint flags, uint len,
                                      uint startcode, const unsigned char* data)
{
    sendPortOut(ip, uni, port, static_cast<quint16>(flags), len, static_cast<quint16>(startcode),
                data);
}

template <class Address>
bool Talvis::sendDmxFrame(const Address& ip, quint8 startCode, quint16 timerVal, const void* data,
                          int length)
{
    auto taken = static_cast<quint32>(std::max(length, 0));
    const bool truncated = truncate(taken);
    const bool sent =
        m_packet.setDmxFrame(TalvisPacket::kAnyUniverse, startCode, timerVal, data, taken) &&
        transmit(ip);
    return sent && !truncated;
}

template <class Address>
bool Talvis::sendPortFrame(const Address& ip, quint32 universe, quint8 port, quint16 flags,
                           quint32 length, quint16 startCode, const void* data)
{
    const bool truncated = truncate(length);
    const bool sent =
        m_packet.setPortFrame(universe, port, flags, startCode, data, length) && transmit(ip);
    return sent && !truncated;
}

bool Talvis::transmit(const char* ip)
{
    return m_socket != nullptr && m_socket->sendTo(ip, m_packet.data(), m_packet.size());
}

bool Talvis::transmit(const QHostAddress& ip)
{
    return m_socket != nullptr && m_socket->sendToAddress(ip, m_packet.data(), m_packet.size());
}

bool Talvis::broadcast()
{
    return m_socket != nullptr && m_socket->sendBroadcast(m_packet.data(), m_packet.size());
}
