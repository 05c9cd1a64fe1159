#include "tools/mapgen/Patch.h"

#include <cmath>

namespace {

constexpr quint64 kFirstControllerUid = 0x10;
constexpr quint64 kFirstLightUid = 0x10000;
constexpr quint64 kFirstGroupUid = 0x1000000;
// Half a light's shape, which is 10 by 10, and the 10 by which it stands off the light's position.
constexpr double kShapeOffset = 15.0;

double roundedToTenth(double value)
{
    return std::round(value * 10.0) / 10.0;
}

} // namespace

Patch::Patch(const QString& imageFile, bool postSync)
{
    m_installation.imageFile = imageFile;
    m_installation.postSync = postSync;
}

int Patch::addController(ControllerSpec spec, int portCount)
{
    const int index = m_installation.controllers.size();
    spec.uid = kFirstControllerUid + static_cast<quint64>(index);
    spec.ports.clear();
    for (int i = 0; i < portCount; ++i) {
        PortSpec port;
        port.number = i + 1;
        spec.ports.append(port);
    }
    m_installation.controllers.append(spec);
    m_used.append(QVector<int>(portCount, 0));
    return index;
}

quint64 Patch::addLight(int controller, int port, const FixtureType& type, const QString& name,
                        QPointF centre)
{
    if (controller < 0 || controller >= m_used.size() || port < 0 ||
        port >= m_used.at(controller).size()) {
        return 0;
    }
    int& used = m_used[controller][port];
    quint64& serial = m_nextSerial[type.firstSerial];
    if (serial == 0) {
        serial = type.firstSerial + 1;
    }
    if (used + type.footprint > kPortBytes || serial > type.lastSerial) {
        return 0;
    }
    ControllerSpec& owner = m_installation.controllers[controller];
    LightSpec light;
    light.uid = kFirstLightUid + static_cast<quint64>(m_installation.lights.size());
    light.name = name;
    light.controllerUid = owner.uid;
    light.port = port;
    light.channel = used;
    light.footprint = type.footprint;
    light.serialNumber = serial;
    light.number = static_cast<quint32>(m_installation.lights.size()) + 1;
    light.fixtureCode = type.code;
    light.ioMode = type.ioMode;
    light.x = roundedToTenth(centre.x() - kShapeOffset);
    light.y = roundedToTenth(centre.y() - kShapeOffset);
    light.properties = type.properties;
    used += type.footprint;
    ++serial;

    owner.lightUids.append(light.uid);
    GroupSpec leaf;
    leaf.uid = light.uid;
    leaf.kind = GroupSpec::Leaf;
    leaf.name = name;
    leaf.children.append(light.uid);
    m_installation.groups.append(leaf);
    m_installation.lights.append(light);
    return light.uid;
}

quint64 Patch::addGroup(GroupSpec::Kind kind, const QString& name, const QVector<quint64>& children)
{
    GroupSpec group;
    group.uid = kFirstGroupUid +
                static_cast<quint64>(m_installation.groups.size() - m_installation.lights.size());
    group.kind = kind;
    group.name = name;
    group.children = children;
    m_installation.groups.append(group);
    return group.uid;
}
