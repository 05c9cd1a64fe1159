#include "devices/PropertyMapper.h"
#include "map/Controller.h"
#include "map/ElementText.h"
#include "map/MapNode.h"

#include <QStringList>

#include <algorithm>

namespace {

enum Key : int {
    TypeKey,
    NameKey,
    SelfKey,
    LightKey,
    MissingKey,
    SerialKey,
    UniverseKey,
    IpKey,
    MacKey,
    BufferSizeKey,
    VersionKey,
    VersionStringKey,
    IdStringKey,
    PortListKey,
    PortKey,
    PortNumberKey,
    PortTypeKey,
    PortFlagsKey,
    PropertiesKey,
    UnknownKey,
};

constexpr ElementKey<Key> kKeys[] = {
    {"t", TypeKey},
    {"type", TypeKey},
    {"n", NameKey},
    {"name", NameKey},
    {"s", SelfKey},
    {"self", SelfKey},
    {"l", LightKey},
    {"light", LightKey},
    {"m", MissingKey},
    {"missing", MissingKey},
    {"sn", SerialKey},
    {"serialnumber", SerialKey},
    {"u", UniverseKey},
    {"universenumber", UniverseKey},
    {"ip", IpKey},
    {"ipaddress", IpKey},
    {"mac", MacKey},
    {"macaddress", MacKey},
    {"d", BufferSizeKey},
    {"dmxbuffersize", BufferSizeKey},
    {"v", VersionKey},
    {"version", VersionKey},
    {"vs", VersionStringKey},
    {"versionstring", VersionStringKey},
    {"ids", IdStringKey},
    {"idstring", IdStringKey},
    {"pl", PortListKey},
    {"portlist", PortListKey},
    {"p", PortKey},
    {"port", PortKey},
    {"pn", PortNumberKey},
    {"portnum", PortNumberKey},
    {"pt", PortTypeKey},
    {"porttype", PortTypeKey},
    {"pf", PortFlagsKey},
    {"portflags", PortFlagsKey},
    {"properties", PropertiesKey},
};

Key keyOf(const MapNode& node)
{
    return findElementKey(kKeys, node.name(), UnknownKey);
}

/// The low byte of a number; 1 for what does not parse and for a low byte of 0.
quint8 byteOrOne(const QString& text)
{
    const auto low = static_cast<quint8>(readUInt32(text, 0));
    return low != 0 ? low : 1;
}

} // namespace

void Controller::readElement(const MapNode& element)
{
    constexpr int kLargestBuffer = 65536;
    for (MapNode child = element.firstChild(); !child.isNull(); child = child.nextSibling()) {
        const Key key = keyOf(child);
        const QString& text = child.firstValue();
        bool ok = false;
        switch (key) {
        case TypeKey:
            m_type = readInt32(text, 0);
            break;
        case NameKey:
            m_name = text;
            break;
        case SelfKey:
            m_uid = readHex64(text, 0xFFFFFFFFU);
            break;
        case LightKey: {
            const quint64 light = readHex64(text, 0, &ok);
            if (ok) {
                m_lightUids.append(light);
            }
            m_lightsValid = false;
            break;
        }
        case MissingKey: {
            const int value = text.toInt(&ok);
            m_missing = !ok || value != 0;
            break;
        }
        case SerialKey:
            m_serialNumber = readHex64(text, 0xFFFFFFFFU); // hexadecimal, unlike a light's
            break;
        case UniverseKey:
            m_universe = readUInt32(text, 0);
            break;
        case IpKey: {
            QHostAddress address;
            if (!address.setAddress(text)) {
                address = QHostAddress(0x0A000000U); // 10.0.0.0
            }
            setAddress(address);
            break;
        }
        case MacKey:
            m_macAddress = text.split(QLatin1Char(':')).size() == 6
                               ? text
                               : QStringLiteral("00:00:00:00:00:00");
            break;
        case BufferSizeKey: {
            const int size = text.toInt(&ok);
            m_dmxBufferSize = ok ? std::clamp(size, 0, kLargestBuffer) : kUniverseBytes;
            replaceDmxBuffer();
            break;
        }
        case VersionKey: {
            const quint16 version = text.toUShort(&ok);
            m_version = ok ? version : 1;
            break;
        }
        case VersionStringKey:
            m_versionString = text;
            break;
        case IdStringKey:
            m_idString = text;
            break;
        case PortListKey:
            readPortList(child);
            break;
        case PropertiesKey:
            readProperties(child);
            break;
        default: // of a port, or of nobody
            break;
        }
    }
    emit updatedController(m_uid);
}

void Controller::readPortList(const MapNode& list)
{
    int count = 0;
    for (MapNode child = list.firstChild(); !child.isNull() && count < kMaxPorts;
         child = child.nextSibling()) {
        ++count;
    }
    if (count != m_portCount) {
        setPortCount(count);
    }
    auto port = m_ports.begin();
    for (MapNode child = list.firstChild(); !child.isNull() && port != m_ports.end();
         child = child.nextSibling()) {
        if (keyOf(child) == PortKey) { // a child of another name leaves its port as it is
            readPort(child, &*port);
        }
        ++port;
    }
    rebuildPortIndex();
}

void Controller::readPort(const MapNode& element, Port* port)
{
    constexpr quint8 kFramedType = 3; // such ports take a start code of their own
    for (MapNode child = element.firstChild(); !child.isNull(); child = child.nextSibling()) {
        const QString& text = child.firstValue();
        switch (keyOf(child)) {
        case PortNumberKey:
            port->number = byteOrOne(text);
            break;
        case PortTypeKey:
            port->type = byteOrOne(text);
            port->startCode = port->type == kFramedType ? 0xFFF0U : 0U;
            break;
        case PortFlagsKey:
            port->flags = readUInt32(text, 0);
            break;
        default:
            break;
        }
    }
}

void Controller::readProperties(const MapNode& list)
{
    const PropertyMapper& mapper = PropertyMapper::instance();
    for (MapNode child = list.firstChild(); !child.isNull(); child = child.nextSibling()) {
        const QString displayName = mapper.displayName(child.name());
        if (!m_properties.contains(displayName)) {
            const QString& text = child.firstValue();
            m_properties.insert(displayName, mapper.parameterValueToText(displayName, text));
        }
    }
}
