#pragma once

#include "output/TalvisSocket.h"

/// Takes everything that is sent and sends nothing.
class SilentSocket : public TalvisSocket
{
public:
    SilentSocket()
        : TalvisSocket(nullptr)
    {}
    bool sendTo(const char* /*ip*/, const char* /*data*/, int /*length*/) override { return true; }
    bool sendToAddress(const QHostAddress& /*address*/, const char* /*data*/,
                       int /*length*/) override
    {
        return true;
    }
    bool sendBroadcast(const char* /*data*/, int /*length*/) override { return true; }
};
