#include "tools/mapgen/MapWriter.h"

#include <QIODevice>
#include <QXmlStreamWriter>

namespace {

QString hex(quint64 value)
{
    return QString::number(value, 16).toUpper();
}

QString real(double value)
{
    return QString::number(value, 'g', 6);
}

/// Writes the elements of one map, in the form of the keys asked for.
class ElementWriter
{
public:
    ElementWriter(QIODevice* device, bool shortKeys)
        : m_xml(device)
        , m_shortKeys(shortKeys)
    {}

    void open(const char* longKey, const char* shortKey)
    {
        m_xml.writeStartElement(QLatin1String(m_shortKeys ? shortKey : longKey));
    }
    void open(const char* key) { open(key, key); }
    void close() { m_xml.writeEndElement(); }
    void line() { m_xml.writeCharacters(QStringLiteral("\n")); }
    void text(const char* longKey, const char* shortKey, const QString& value)
    {
        m_xml.writeTextElement(QLatin1String(m_shortKeys ? shortKey : longKey), value);
    }
    void text(const char* key, const QString& value) { text(key, key, value); }
    void number(const char* longKey, const char* shortKey, qint64 value)
    {
        text(longKey, shortKey, QString::number(value));
    }
    void number(const char* key, qint64 value) { number(key, key, value); }
    bool failed() const { return m_xml.hasError(); }

    void properties(const QVector<PropertySpec>& list)
    {
        if (list.isEmpty()) {
            return;
        }
        open("properties");
        for (const PropertySpec& property : list) {
            m_xml.writeTextElement(property.token, QString::number(property.value));
        }
        close();
    }
    void controller(const ControllerSpec& controller);
    void light(const LightSpec& light);
    void group(const GroupSpec& group);

private:
    QXmlStreamWriter m_xml;
    bool m_shortKeys;
};

void ElementWriter::controller(const ControllerSpec& controller)
{
    open("controller", "c");
    number("type", "t", controller.kind);
    text("self", "s", hex(controller.uid));
    text("name", "n", controller.name);
    if (!controller.address.isEmpty()) {
        text("ipaddress", "ip", controller.address);
    }
    if (!controller.macAddress.isEmpty()) {
        text("macaddress", "mac", controller.macAddress);
    }
    text("serialnumber", "sn", hex(controller.serialNumber));
    number("universenumber", "u", controller.universe);
    number("version", "v", controller.version);
    number("dmxbuffersize", "d", 512);
    number("missing", "m", controller.missing ? 1 : 0);
    open("portlist", "pl");
    for (const PortSpec& port : controller.ports) {
        open("port", "p");
        number("portnum", "pn", port.number);
        number("porttype", "pt", port.type);
        number("portflags", "pf", port.flags);
        close();
    }
    close();
    for (const quint64 uid : controller.lightUids) {
        text("light", "l", hex(uid));
    }
    properties(controller.properties);
    close();
    line();
}

void ElementWriter::light(const LightSpec& light)
{
    open("light", "l");
    text("self", "s", hex(light.uid));
    text("name", "n", light.name);
    text("controller", "c", hex(light.controllerUid));
    text("fixture", "f", hex(light.uid));
    text("fixturecode", "fc", hex(static_cast<quint64>(light.fixtureCode)));
    number("pn", light.port);
    number("channel", "ch", light.channel);
    text("sn", QString::number(light.serialNumber)); // decimal, unlike the uids
    number("lightnumber", "ln", light.number);
    text("x", real(light.x));
    text("y", real(light.y));
    number("z", 0);
    number("q0", 0);
    number("q1", 0);
    number("q2", 0);
    number("q3", 1);
    number("tintweaveiomode", light.ioMode);
    properties(light.properties);
    close();
    line();
}

void ElementWriter::group(const GroupSpec& group)
{
    open("group", "g");
    number("type", "t", group.kind);
    text("self", "s", hex(group.uid));
    text("name", "n", group.name);
    for (const quint64 uid : group.children) {
        text("child", "c", hex(uid));
    }
    close();
    line();
}

} // namespace

MapWriter::MapWriter(Keys keys)
    : m_keys(keys)
{}

bool MapWriter::write(const Installation& map, QIODevice* device) const
{
    ElementWriter out(device, m_keys == Keys::Short);
    out.open("map");
    out.line();
    out.number("version", 1);
    out.line();
    out.text("imagefile", map.imageFile);
    out.line();
    out.number("postsync", map.postSync ? 1 : 0);
    out.line();
    for (const ControllerSpec& controller : map.controllers) {
        out.controller(controller);
    }
    for (const LightSpec& light : map.lights) {
        out.light(light);
    }
    for (const GroupSpec& group : map.groups) {
        out.group(group);
    }
    out.close();
    out.line();
    return !out.failed();
}
