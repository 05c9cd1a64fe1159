#pragma once

#include <QString>
#include <QtGlobal>

#include <functional>
#include <vector>

struct HeardDatagram;

/// A UDP socket at the controllers' port that knows of each datagram when the system took it in and
/// to which address it was sent.
class ListenSocket
{
public:
    static constexpr quint16 kPort = 6038;

    ListenSocket() = default;
    ~ListenSocket();
    ListenSocket(const ListenSocket&) = delete;
    ListenSocket& operator=(const ListenSocket&) = delete;

    /// Binds to an IPv4 address, 0 for all of the machine's. Others may bind to the same one. False
    /// with the system's reason in `error`.
    [[nodiscard]] bool open(quint32 address, QString* error);
    /// For poll(); -1 when closed.
    int descriptor() const { return m_descriptor; }
    /// Hands over what has arrived, at most some thousands at a time.
    void receive(const std::function<void(const HeardDatagram&)>& hear);
    /// Datagrams that the system threw away for want of room.
    quint64 dropped() const { return m_dropped; }

private:
    bool receiveOne(const std::function<void(const HeardDatagram&)>& hear);

    int m_descriptor = -1;
    quint32 m_address = 0;
    quint64 m_dropped = 0;
    std::vector<char> m_buffer;
};
