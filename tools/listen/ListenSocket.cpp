#include "tools/listen/ListenSocket.h"

#include "tools/listen/FrameLedger.h"

#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/uio.h>
#include <unistd.h>

namespace {

constexpr int kMostAtOnce = 4096;
constexpr std::size_t kLongestDatagram = 65536;
constexpr int kReceiveBufferBytes = 8 * 1024 * 1024; // a frame of thousands of ports at once

bool setOption(int descriptor, int level, int option, int value)
{
    return setsockopt(descriptor, level, option, &value, sizeof value) == 0;
}

qint64 toNs(const timespec& time)
{
    return static_cast<qint64>(time.tv_sec) * 1000000000 + time.tv_nsec;
}

template <class Content>
Content contentOf(const cmsghdr* message)
{
    Content content{};
    std::memcpy(&content, CMSG_DATA(message), sizeof content);
    return content;
}

QString systemReason()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

} // namespace

ListenSocket::~ListenSocket()
{
    if (m_descriptor >= 0) {
        close(m_descriptor);
    }
}

bool ListenSocket::open(quint32 address, QString* error)
{
    m_descriptor = socket(AF_INET, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (m_descriptor < 0) {
        *error = systemReason();
        return false;
    }
    setOption(m_descriptor, SOL_SOCKET, SO_REUSEADDR, 1);
    if (!setOption(m_descriptor, SOL_SOCKET, SO_RCVBUFFORCE, kReceiveBufferBytes)) {
        setOption(m_descriptor, SOL_SOCKET, SO_RCVBUF, kReceiveBufferBytes);
    }
    setOption(m_descriptor, SOL_SOCKET, SO_TIMESTAMPNS, 1);
    setOption(m_descriptor, SOL_SOCKET, SO_RXQ_OVFL, 1);
    setOption(m_descriptor, IPPROTO_IP, IP_PKTINFO, 1);

    sockaddr_in local{};
    local.sin_family = AF_INET;
    local.sin_port = htons(kPort);
    local.sin_addr.s_addr = htonl(address);
    sockaddr generic{};
    std::memcpy(&generic, &local, sizeof local);
    if (bind(m_descriptor, &generic, sizeof local) != 0) {
        *error = systemReason();
        return false;
    }
    m_address = address;
    m_buffer.resize(kLongestDatagram);
    return true;
}

void ListenSocket::receive(const std::function<void(const HeardDatagram&)>& hear)
{
    int taken = 0;
    while (taken < kMostAtOnce && receiveOne(hear)) {
        ++taken;
    }
}

bool ListenSocket::receiveOne(const std::function<void(const HeardDatagram&)>& hear)
{
    sockaddr_in sender{};
    alignas(cmsghdr) std::array<char, 256> control{};
    iovec block{m_buffer.data(), m_buffer.size()};
    msghdr message{};
    message.msg_name = &sender;
    message.msg_namelen = sizeof sender;
    message.msg_iov = &block;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    const ssize_t size = recvmsg(m_descriptor, &message, 0);
    if (size < 0) {
        return false;
    }

    HeardDatagram datagram;
    datagram.source = ntohl(sender.sin_addr.s_addr);
    datagram.sourcePort = ntohs(sender.sin_port);
    datagram.controller = m_address;
    datagram.data = m_buffer.data();
    datagram.size = static_cast<int>(size);
    for (cmsghdr* part = CMSG_FIRSTHDR(&message); part != nullptr;
         part = CMSG_NXTHDR(&message, part)) {
        if (part->cmsg_level == SOL_SOCKET && part->cmsg_type == SCM_TIMESTAMPNS) {
            datagram.timeNs = toNs(contentOf<timespec>(part));
        } else if (part->cmsg_level == SOL_SOCKET && part->cmsg_type == SO_RXQ_OVFL) {
            m_dropped = contentOf<quint32>(part);
        } else if (part->cmsg_level == IPPROTO_IP && part->cmsg_type == IP_PKTINFO) {
            const auto info = contentOf<in_pktinfo>(part);
            datagram.controller = ntohl(info.ipi_addr.s_addr);
            datagram.broadcast = info.ipi_addr.s_addr != info.ipi_spec_dst.s_addr;
        }
    }
    if (datagram.timeNs == 0) {
        timespec now{};
        clock_gettime(CLOCK_REALTIME, &now);
        datagram.timeNs = toNs(now);
    }
    hear(datagram);
    return true;
}
