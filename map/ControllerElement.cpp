#include "devices/PropertyMapper.h"
#include "map/Controller.h"

#include <QDomNode>
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

Key keyOf(const QString& name)
{
    static const QHash<QString, Key> kKeys = {
        {QStringLiteral("t"), TypeKey},
        {QStringLiteral("type"), TypeKey},
        {QStringLiteral("n"), NameKey},
        {QStringLiteral("name"), NameKey},
        {QStringLiteral("s"), SelfKey},
        {QStringLiteral("self"), SelfKey},
        {QStringLiteral("l"), LightKey},
        {QStringLiteral("light"), LightKey},
        {QStringLiteral("m"), MissingKey},
        {QStringLiteral("missing"), MissingKey},
        {QStringLiteral("sn"), SerialKey},
        {QStringLiteral("serialnumber"), SerialKey},
        {QStringLiteral("u"), UniverseKey},
        {QStringLiteral("universenumber"), UniverseKey},
        {QStringLiteral("ip"), IpKey},
        {QStringLiteral("ipaddress"), IpKey},
        {QStringLiteral("mac"), MacKey},
        {QStringLiteral("macaddress"), MacKey},
        {QStringLiteral("d"), BufferSizeKey},
        {QStringLiteral("dmxbuffersize"), BufferSizeKey},
        {QStringLiteral("v"), VersionKey},
        {QStringLiteral("version"), VersionKey},
        {QStringLiteral("vs"), VersionStringKey},
        {QStringLiteral("versionstring"), VersionStringKey},
        {QStringLiteral("ids"), IdStringKey},
        {QStringLiteral("idstring"), IdStringKey},
        {QStringLiteral("pl"), PortListKey},
        {QStringLiteral("portlist"), PortListKey},
        {QStringLiteral("p"), PortKey},
        {QStringLiteral("port"), PortKey},
        {QStringLiteral("pn"), PortNumberKey},
        {QStringLiteral("portnum"), PortNumberKey},
        {QStringLiteral("pt"), PortTypeKey},
        {QStringLiteral("porttype"), PortTypeKey},
        {QStringLiteral("pf"), PortFlagsKey},
        {QStringLiteral("portflags"), PortFlagsKey},
        {QStringLiteral("properties"), PropertiesKey},
    };
    return kKeys.value(name, UnknownKey);
}

/// `fallback` for what does not parse.
quint64 hexNumber(const QString& text, quint64 fallback)
{
    bool ok = false;
    const quint64 value = text.toULongLong(&ok, 16);
    return ok ? value : fallback;
}

/// The low byte of a number; 1 for what does not parse and for a low byte of 0.
quint8 byteOrOne(const QString& text)
{
    const auto low = static_cast<quint8>(text.toUInt());
    return low != 0 ? low : 1;
}

} // namespace

void Controller::readElement(const QDomNode& element)
{
    constexpr int kLargestBuffer = 65536;
    for (QDomNode child = element.firstChild(); !child.isNull(); child = child.nextSibling()) {
        const Key key = keyOf(child.nodeName());
        const QString text = child.firstChild().nodeValue();
        bool ok = false;
        switch (key) {
        case TypeKey:
            m_type = text.toInt();
            break;
        case NameKey:
            m_name = text;
            break;
        case SelfKey:
            m_uid = hexNumber(text, 0xFFFFFFFFU);
            break;
        case LightKey: {
            const quint64 light = text.toULongLong(&ok, 16);
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
            m_serialNumber = hexNumber(text, 0xFFFFFFFFU); // hexadecimal, unlike a light's
            break;
        case UniverseKey:
            m_universe = text.toUInt();
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

void Controller::readPortList(const QDomNode& list)
{
    int count = 0;
    for (QDomNode child = list.firstChild(); !child.isNull() && count < kMaxPorts;
         child = child.nextSibling()) {
        ++count;
    }
    if (count != m_portCount) {
        setPortCount(count);
    }
    QDomNode child = list.firstChild();
    for (Port& port : m_ports) { // a child of another name leaves its port as it is
        if (keyOf(child.nodeName()) == PortKey) {
            readPort(child, &port);
        }
        child = child.nextSibling();
    }
    rebuildPortIndex();
}

void Controller::readPort(const QDomNode& element, Port* port)
{
    constexpr quint8 kFramedType = 3; // such ports take a start code of their own
    for (QDomNode child = element.firstChild(); !child.isNull(); child = child.nextSibling()) {
        const QString text = child.firstChild().nodeValue();
        switch (keyOf(child.nodeName())) {
        case PortNumberKey:
            port->number = byteOrOne(text);
            break;
        case PortTypeKey:
            port->type = byteOrOne(text);
            port->startCode = port->type == kFramedType ? 0xFFF0U : 0U;
            break;
        case PortFlagsKey:
            port->flags = text.toUInt();
            break;
        default:
            break;
        }
    }
}

void Controller::readProperties(const QDomNode& list)
{
    const PropertyMapper& mapper = PropertyMapper::instance();
    for (QDomNode child = list.firstChild(); !child.isNull(); child = child.nextSibling()) {
        const QString displayName = mapper.displayName(child.nodeName());
        if (!m_properties.contains(displayName)) {
            const QString text = child.firstChild().nodeValue();
            m_properties.insert(displayName, mapper.parameterValueToText(displayName, text));
        }
    }
}
