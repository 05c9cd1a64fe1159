#pragma once

#include "output/TalvisSocket.h"

#include <QByteArray>
#include <QHostAddress>
#include <QList>
#include <QPair>

#include <algorithm>
#include <cstring>

/// A socket that keeps what is sent and hands out what the test has put in; nothing reaches a
/// network, except that the base class binds to a port.
class RecordingSocket : public TalvisSocket
{
public:
    struct Sent
    {
        QHostAddress address; ///< null for a broadcast
        bool broadcast = false;
        QByteArray bytes;
    };

    RecordingSocket()
        : TalvisSocket(nullptr)
    {}

    bool sendToAddress(const QHostAddress& address, const char* data, int length) override
    {
        sent.append({address, false, QByteArray(data, length)});
        return answer;
    }

    bool sendBroadcast(const char* data, int length) override
    {
        sent.append({QHostAddress(), true, QByteArray(data, length)});
        return answer;
    }

    bool readPending(char* data, int size, QHostAddress* sender) override
    {
        ++reads;
        if (pending.isEmpty() || reads == failingRead) {
            return false;
        }
        const QPair<QByteArray, QHostAddress> datagram = pending.takeFirst();
        *sender = datagram.second;
        std::memcpy(data, datagram.first.constData(),
                    static_cast<std::size_t>(std::min(size, datagram.first.size())));
        return true;
    }

    QList<Sent> sent;
    QList<QPair<QByteArray, QHostAddress>> pending;
    bool answer = true;
    int reads = 0;
    int failingRead = 0; ///< the read, counted from 1, that fails with a datagram pending
};
