#include "output/TalvisSocket.h"

#include <QDebug>
#include <QList>
#include <QNetworkAddressEntry>
#include <QNetworkInterface>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

constexpr quint16 kAnyPort = 0;

/// Also for no address at all.
bool isAllZero(const QHostAddress& address)
{
    bool isIPv4 = false; // an IPv4 address in IPv6 form included
    const quint32 number = address.toIPv4Address(&isIPv4);
    if (isIPv4 || address.protocol() != QAbstractSocket::IPv6Protocol) {
        return number == 0;
    }
    const Q_IPV6ADDR bytes = address.toIPv6Address();
    return std::all_of(std::begin(bytes.c), std::end(bytes.c),
                       [](quint8 byte) { return byte == 0; });
}

} // namespace

TalvisSocket::TalvisSocket(QObject* parent)
    : QUdpSocket(parent)
{
    if (!bind(kAnyPort)) {
        qDebug() << "TalvisSocket failed to bind to port:" << errorString();
    }
    m_localAddress = localAddress();
    setSocketOption(QAbstractSocket::ReceiveBufferSizeSocketOption, kReceiveBufferBytes);
    setSocketOption(QAbstractSocket::SendBufferSizeSocketOption, kSendBufferBytes);
}

bool TalvisSocket::readPending(char* data, int size, QHostAddress* sender)
{
    return hasPendingDatagrams() && readDatagram(data, size, sender) >= 0;
}

bool TalvisSocket::sendTo(const char* ip, const char* data, int length)
{
    return sendToAddress(QHostAddress(QString::fromLatin1(ip)), data, length);
}

bool TalvisSocket::sendToAddress(const QHostAddress& address, const char* data, int length)
{
    return !isAllZero(address) && writeDatagram(data, length, address, kDestinationPort) != -1;
}

bool TalvisSocket::sendBroadcast(const char* data, int length)
{
    if (m_broadcastAddress.toIPv4Address() == 0xFFFFFFFF) {
        findBroadcastAddress();
    }
    return sendToAddress(m_broadcastAddress, data, length);
}

void TalvisSocket::setInterfaceSource(InterfaceSource source)
{
    m_interfaces = std::move(source);
}

QVector<InterfaceRecord> TalvisSocket::systemInterfaces()
{
    QVector<InterfaceRecord> records;
    const QList<QNetworkInterface> interfaces = QNetworkInterface::allInterfaces();
    for (const QNetworkInterface& interface : interfaces) {
        InterfaceRecord record;
        record.name = interface.humanReadableName();
        record.isUp = interface.flags().testFlag(QNetworkInterface::IsUp);
        record.isLoopBack = interface.flags().testFlag(QNetworkInterface::IsLoopBack);
        const QList<QNetworkAddressEntry> entries = interface.addressEntries();
        for (const QNetworkAddressEntry& entry : entries) {
            record.addresses.append({entry.ip(), entry.netmask()});
        }
        records.append(record);
    }
    return records;
}

void TalvisSocket::findBroadcastAddress()
{
    const QVector<InterfaceRecord> interfaces = m_interfaces();
    for (const InterfaceRecord& interface : interfaces) {
        if (!interface.isUp || interface.isLoopBack ||
            interface.name != QLatin1String("eth0")) { // the lighting network, by agreement
            continue;
        }
        const auto entry =
            std::find_if(interface.addresses.cbegin(), interface.addresses.cend(),
                         [](const InterfaceAddress& address) {
                             return address.ip.protocol() == QAbstractSocket::IPv4Protocol;
                         });
        if (entry != interface.addresses.cend()) {
            m_localAddress = entry->ip; // the last interface of the name wins
            m_broadcastAddress =
                QHostAddress(entry->ip.toIPv4Address() | ~entry->netmask.toIPv4Address());
        }
    }
}
