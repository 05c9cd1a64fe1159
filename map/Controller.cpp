#include "map/Controller.h"

#include "map/Light.h"
#include "map/MapModel.h"
#include "map/MapNode.h"
#include "output/DmxRecording.h"
#include "output/Talvis.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

void Controller::FreeDeleter::operator()(quint8* bytes) const
{
    std::free(bytes); // NOLINT(cppcoreguidelines-no-malloc): see replaceDmxBuffer
}

Controller::Controller(int type, Talvis* talvis, QDomNode* element)
    : Controller(type, talvis, MapTree(element).root())
{}

Controller::Controller(int type, Talvis* talvis, const MapNode& element)
    : m_type(type)
    , m_name(QStringLiteral("New Controller"))
    , m_talvis(talvis)
    , m_macAddress(QStringLiteral("FF:FF:FF:FF:FF:FF"))
{
    replaceDmxBuffer();
    setPortCount(1);
    setAddress(QHostAddress(QHostAddress::AnyIPv4));
    if (!element.isNull()) {
        readElement(element);
    }
}

Controller::~Controller() = default;

bool Controller::attach(MapModel* model)
{
    if (model == nullptr) {
        return false;
    }
    m_model = model;
    connect(this, &Controller::updatedController, model, &MapModel::updatedController);
    connect(this, &Controller::msg, model, &MapModel::msg);
    connect(this, &Controller::signalSendDmxFrame, model, &MapModel::signalSendDmxFrame);
    connect(this, &Controller::signalSendBroadcastDmxFrame, model,
            &MapModel::signalSendBroadcastDmxFrame);
    connect(this, &Controller::signalSendPortOut, model, &MapModel::signalSendPortOut);
    connect(this, &Controller::signalSendBroadcastPortOut, model,
            &MapModel::signalSendBroadcastPortOut);
    connect(this, &Controller::signalSendSetValue, model, &MapModel::signalSendSetValue);
    return true;
}

void Controller::setAddress(const QHostAddress& address)
{
    m_ip = address;
    qstrncpy(m_ipText.data(), ipString().toLatin1().constData(),
             static_cast<uint>(m_ipText.size()));
    m_sendAddress = QHostAddress(QString::fromLatin1(m_ipText.data()));
    m_hasAddress = address != QHostAddress(QHostAddress::AnyIPv4);
    emit updatedController(m_uid);
}

QString Controller::ipString() const
{
    const QString text = m_ip.toString();
    return text.isEmpty() ? QStringLiteral("0.0.0.0") : text;
}

void Controller::setCitp(CITPClient** citp, int universe)
{
    m_citp = citp;
    m_citpUniverse = universe;
}

QString Controller::property(const QString& key, const QString& fallback) const
{
    return m_properties.value(key, fallback);
}

void Controller::setPortCount(int count)
{
    m_portCount = count;
    m_ports.assign(static_cast<std::size_t>(count), Port());
    for (int i = 0; i < count; ++i) {
        m_ports[static_cast<std::size_t>(i)].number = static_cast<quint8>(i + 1);
    }
    m_portBuffers.assign(static_cast<std::size_t>(count) * kUniverseBytes, 0);
    rebuildPortIndex();
}

void Controller::rebuildPortIndex()
{
    m_maxPortNumber = 0;
    for (const Port& port : m_ports) {
        m_maxPortNumber = std::max<int>(m_maxPortNumber, port.number);
    }
    // A light of the port counted like the highest number reads one entry on.
    m_portIndexOf.assign(static_cast<std::size_t>(m_maxPortNumber) + 1, 0);
    for (int i = 0; i < m_portCount; ++i) {
        m_portIndexOf[port(i).number - 1U] = static_cast<quint8>(i); // the last of a number wins
    }
}

/// False when there is no memory.
bool Controller::replaceDmxBuffer()
{
    // Cleared pages cost nothing until they are written, and a refusal is an answer.
    // NOLINTNEXTLINE(cppcoreguidelines-no-malloc)
    m_dmxBuffer.reset(static_cast<quint8*>(
        std::calloc(static_cast<std::size_t>(std::max(m_dmxBufferSize, 1)), 1)));
    return m_dmxBuffer != nullptr;
}

void Controller::setDMXBufSize(int size)
{
    if (size <= m_dmxBufferSize) {
        return;
    }
    m_dmxBufferSize = size;
    if (!replaceDmxBuffer()) {
        emit msg(QStringLiteral("Unable to allocate memory for DMX buffer."));
    }
}

void Controller::addLight(qulonglong l)
{
    if (!m_lightUids.contains(l)) {
        m_lightUids.append(l);
        m_lightsValid = false;
    }
    emit updatedController(m_uid);
}

void Controller::removeLight(qulonglong l)
{
    m_lightUids.removeOne(l);
    m_lightsValid = false;
    emit updatedController(m_uid);
}

void Controller::resolveLights()
{
    if (m_model == nullptr) {
        return;
    }
    // An entry stands at its uid's place while the count is of hits only: each missing light hides
    // one from the end of the walk, and has all of them looked up again on the next frame.
    m_lights.assign(static_cast<std::size_t>(m_lightUids.size()), nullptr);
    m_lightCount = 0;
    m_lightsValid = true;
    for (int i = 0; i < m_lightUids.size(); ++i) {
        Light* const light = m_model->light(m_lightUids.at(i));
        m_lights[static_cast<std::size_t>(i)] = light;
        if (light != nullptr) {
            ++m_lightCount;
        } else {
            m_lightsValid = false;
        }
    }
}

void Controller::computePortSizes()
{
    if (!m_lightsValid) {
        resolveLights();
    }
    constexpr int kNoLight = std::numeric_limits<int>::min();
    std::vector<int> last(m_ports.size(), kNoLight);
    for (Light* const light : m_lights) {
        if (light != nullptr && light->port() < last.size()) {
            int& highest = last[light->port()];
            highest = std::max(highest, light->lastChannel());
        }
    }
    for (std::size_t i = 0; i < m_ports.size(); ++i) {
        quint32 size = 0;
        if (last[i] != kNoLight) {
            size = last[i] >= 24 ? static_cast<quint32>(last[i]) + 16U : 24U;
        }
        m_ports[i].size = size;
    }
}
