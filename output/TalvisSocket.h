#pragma once

#include <QHostAddress>
#include <QString>
#include <QUdpSocket>
#include <QVector>

#include <functional>

/// One address entry of a network interface.
struct InterfaceAddress
{
    QHostAddress ip;
    QHostAddress netmask;
};

/// What the choice of a broadcast address asks of a network interface.
struct InterfaceRecord
{
    QString name; ///< the human-readable one
    bool isUp = false;
    bool isLoopBack = false;
    QVector<InterfaceAddress> addresses;
};

/// The UDP endpoint of the Talvis protocol, both directions in one socket. Knows the destination
/// port and finds the broadcast address. What goes out and comes in passes through virtual
/// functions, so that a test can record it instead.
class TalvisSocket : public QUdpSocket
{
    Q_OBJECT
public:
    using InterfaceSource = std::function<QVector<InterfaceRecord>()>;

    static constexpr quint16 kDestinationPort = 6038;
    static constexpr int kReceiveBufferBytes = 200000;
    static constexpr int kSendBufferBytes = 52428800; // the system may allow less

    /// Binds to a port of the system's choice. A failure leaves one line in the debug log and a
    /// socket that can still send.
    explicit TalvisSocket(QObject* parent);

    /// Reads one datagram, cut at `size` bytes, into `data`, of which the rest stays as it was.
    /// False if none is pending or the read failed.
    [[nodiscard]] virtual bool readPending(char* data, int size, QHostAddress* sender);

    /// Sends to an address given as text. False for a text that is no address, for an all-zero
    /// address (which the system would deliver to this very machine), and when the datagram
    /// couldn't be written.
    virtual bool sendTo(const char* ip, const char* data, int length);
    /// As sendTo, with the address ready: the way of the frame loop, without any text. Every send
    /// of this class ends here.
    virtual bool sendToAddress(const QHostAddress& address, const char* data, int length);
    /// Sends to the broadcast address of the last interface called "eth0" that is up; as long as
    /// there is none, to 255.255.255.255, and looks again at the next call.
    virtual bool sendBroadcast(const char* data, int length);

    /// The address bound, later that of the chosen interface.
    QHostAddress interfaceAddress() const { return m_localAddress; }
    QHostAddress broadcastAddress() const { return m_broadcastAddress; }

    /// Replaces the machine's list of interfaces.
    void setInterfaceSource(InterfaceSource source);
    /// The machine's own interfaces, in the system's order.
    static QVector<InterfaceRecord> systemInterfaces();

private:
    void findBroadcastAddress();

    QHostAddress m_localAddress;
    QHostAddress m_broadcastAddress = QHostAddress(QHostAddress::Broadcast);
    InterfaceSource m_interfaces = &TalvisSocket::systemInterfaces;
};
