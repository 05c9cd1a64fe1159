#include "map/Controller.h"
#include "map/Light.h"
#include "output/CITPClient.h"
#include "output/Talvis.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr quint32 kAnyUniverse = 0xFFFFFFFFU; // port frames rely on the port number
constexpr quint32 kLongest = 65535;           // the packet layer cuts, and says so

QByteArray payload(const quint8* bytes, quint32 count)
{
    const quint32 taken = std::min<quint32>(count, Controller::kUniverseBytes);
    return {reinterpret_cast<const char*>(bytes), static_cast<int>(taken)};
}

} // namespace

bool Controller::updateLights()
{
    if (!m_lightsValid) {
        resolveLights();
    }
    if (m_lightCount == 0 || m_portCount == 0) {
        return false;
    }
    collectBytes();
    if (m_mode == RecordingMode) {
        writeFrame();
        return true;
    }
    if (m_mode != LiveMode) {
        emit msg(QStringLiteral("updateLights: Unknown controller mode"));
        return false;
    }
    return sendFrames();
}

void Controller::collectBytes()
{
    constexpr std::size_t kAhead = 8;
    std::memset(m_portBuffers.data(), 0, m_portBuffers.size());
    for (int i = 0; i < m_lightCount; ++i) {
        if (static_cast<std::size_t>(i) + kAhead < m_lights.size()) {
            Light::prefetch(m_lights[static_cast<std::size_t>(i) + kAhead]);
        }
        Light* const light = m_lights[static_cast<std::size_t>(i)];
        if (light == nullptr || light->port() > m_maxPortNumber) {
            continue;
        }
        // Filled at number less one and read at the port: ports of lights count from 0.
        const int index = m_portIndexOf[light->port()];
        if (index >= m_portCount) {
            continue;
        }
        light->writeDmx(portBuffer(index), kUniverseBytes);
        light->reset();
    }
}

bool Controller::sendFrames()
{
    const bool broadcasts = m_type == BroadcastController;
    if (m_version == 1) {
        return broadcasts ? sendBroadcastDmxFrame() : sendDmxFrame();
    }
    bool isSent = true;
    if (m_version == 2 || m_version == 3) {
        for (int i = 0; i < m_portCount; ++i) {
            isSent = (broadcasts ? sendBroadcastPortFrame(i) : sendPortFrame(i)) && isSent;
        }
    }
    return isSent;
}

bool Controller::sendDmxFrame()
{
    const quint32 size = port(0).size;
    if (size == 0) {
        return true;
    }
    bool isSent = true;
    if (isGateOpen() && m_talvis != nullptr) {
        isSent = m_talvis->sendDmxOut(m_sendAddress, 0, 0, portBuffer(0),
                                      static_cast<int>(std::min(size, kLongest)));
    } else if (isGateOpen()) {
        emit signalSendDmxFrame(ipString(), 0, 0, payload(portBuffer(0), size));
    }
    mirror(m_citpUniverse, 0, size);
    return isSent;
}

bool Controller::sendBroadcastDmxFrame()
{
    bool isSent = true;
    if (isGateOpen() && m_talvis != nullptr) {
        isSent = m_talvis->broadcastDmxOut(m_universe, 0, 0, portBuffer(0), kUniverseBytes);
    } else if (isGateOpen()) {
        emit signalSendBroadcastDmxFrame(m_universe, 0, 0, payload(portBuffer(0), kUniverseBytes));
    }
    mirror(m_citpUniverse, 0, kUniverseBytes);
    return isSent;
}

bool Controller::sendPortFrame(int index)
{
    const Port& own = port(index);
    if (own.size == 0) {
        return true;
    }
    const auto flags = static_cast<quint16>(m_flagNibble * 16U | own.flags);
    bool isSent = true;
    if (isGateOpen() && m_talvis != nullptr) {
        isSent = m_talvis->sendPortOut(m_sendAddress, kAnyUniverse, own.number, flags, own.size,
                                       static_cast<quint16>(own.startCode), portBuffer(index));
    } else if (isGateOpen()) {
        emit signalSendPortOut(ipString(), kAnyUniverse, own.number, flags,
                               static_cast<uchar>(own.startCode),
                               payload(portBuffer(index), own.size));
    }
    mirror(own.number + m_citpUniverse - 1, index, own.size);
    return isSent;
}

bool Controller::sendBroadcastPortFrame(int index)
{
    const Port& own = port(index);
    const auto flags = static_cast<quint16>(own.flags);
    bool isSent = true;
    if (isGateOpen() && m_talvis != nullptr) {
        isSent = m_talvis->broadcastPortOut(kAnyUniverse, own.number, flags, kUniverseBytes,
                                            static_cast<quint16>(own.startCode), portBuffer(index));
    } else if (isGateOpen()) {
        emit signalSendBroadcastPortOut(kAnyUniverse, own.number, flags,
                                        static_cast<uchar>(own.startCode),
                                        payload(portBuffer(index), kUniverseBytes));
    }
    mirror(own.number + m_citpUniverse - 1, index, kUniverseBytes);
    return isSent;
}

void Controller::mirror(int universe, int portIndex, quint32 size)
{
    if (m_citp != nullptr && *m_citp != nullptr) {
        const auto count = static_cast<quint16>(std::min<quint32>(size, kUniverseBytes));
        (*m_citp)->sendChannelBlock(universe, portBuffer(portIndex), count, !m_outputEnabled);
    }
}

bool Controller::lightsOff()
{
    return sendToAll(0);
}

bool Controller::lightsOn()
{
    return sendToAll(255);
}

bool Controller::sendToAll(quint8 level)
{
    std::array<quint8, kUniverseBytes> block{};
    block.fill(level);
    if (m_version == 1) {
        if (m_talvis != nullptr) {
            return m_talvis->sendDmxOut(m_sendAddress, 0, 0, block.data(), kUniverseBytes);
        }
        emit signalSendDmxFrame(ipString(), 0, 0, payload(block.data(), kUniverseBytes));
        return true;
    }
    if (m_version != 2 && m_version != 3) {
        return false;
    }
    for (const Port& own : m_ports) {
        if (m_talvis == nullptr) {
            // Universe and flags differ from those of the direct way.
            emit signalSendPortOut(ipString(), 0, own.number, static_cast<ushort>(own.flags),
                                   static_cast<uchar>(own.startCode),
                                   payload(block.data(), kUniverseBytes));
        } else if (!m_talvis->sendPortOut(m_sendAddress, kAnyUniverse, own.number, 0,
                                          kUniverseBytes, static_cast<quint16>(own.startCode),
                                          block.data())) {
            return false;
        }
    }
    return !m_ports.empty();
}
