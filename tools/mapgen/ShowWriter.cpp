#include "tools/mapgen/ShowWriter.h"

#include <QDomDocument>
#include <QTextStream>

#include <algorithm>

namespace {

constexpr const char* kTimelineType = "Meta Effect";
constexpr const char* kProgramVersion = "2.3.1";

void append(QDomDocument& document, QDomElement& parent, const QString& key, const QString& value)
{
    QDomElement element = document.createElement(key);
    element.appendChild(document.createTextNode(value));
    parent.appendChild(element);
}

class EffectElement
{
public:
    explicit EffectElement(QDomDocument* document)
        : m_document(*document)
        , m_element(document->createElement(QStringLiteral("effect")))
    {}

    void text(const char* key, const QString& value)
    {
        append(m_document, m_element, QString::fromLatin1(key), value);
    }
    void number(const char* key, quint64 value) { text(key, QString::number(value)); }
    void real(const char* key, double value) { text(key, QString::number(value, 'g', 6)); }
    QDomElement& element() { return m_element; }

private:
    QDomDocument& m_document;
    QDomElement m_element;
};

QDomElement effectElement(QDomDocument* document, const ShowEffect& effect)
{
    EffectElement out(document);
    out.text("type", effect.type);
    out.text("name", effect.name);
    out.number("eid", effect.eid);
    out.number("gid", effect.gid);
    out.real("transparency", effect.transparency);
    out.number("priority", effect.priority);
    out.number("begin", effect.begin);
    out.number("end", effect.end);
    out.number("fadein", effect.fadeIn);
    out.number("fadeout", effect.fadeOut);
    out.number("starttype", static_cast<quint64>(effect.startRule));
    out.number("startfixedtime", effect.startFixedTime);
    out.number("startlinkeid", effect.startLinkEid);
    out.number("startlinkstart", effect.startLinkStart ? 1 : 0);
    out.real("startlinkoffset", effect.startLinkOffset);
    out.number("endtype", static_cast<quint64>(effect.endRule));
    out.number("endfixedtime", effect.endFixedTime);
    out.number("endlinkeid", effect.endLinkEid);
    out.number("endlinkstart", effect.endLinkStart ? 1 : 0);
    out.real("endlinkoffset", effect.endLinkOffset);
    out.number("endcyclecount", effect.endCycleCount);
    for (const QPair<QString, QString>& parameter : effect.parameters) {
        append(*document, out.element(), parameter.first, parameter.second);
    }
    if (effect.type == QLatin1String(kTimelineType)) {
        out.real("brightness", effect.brightness);
        out.number("loop", effect.loop ? 1 : 0);
        out.text("version", QString::fromLatin1(kProgramVersion));
        std::vector<const ShowEffect*> children;
        children.reserve(effect.children.size());
        for (const ShowEffect& child : effect.children) {
            children.push_back(&child);
        }
        std::stable_sort(
            children.begin(), children.end(),
            [](const ShowEffect* a, const ShowEffect* b) { return a->priority < b->priority; });
        for (const ShowEffect* child : children) {
            out.element().appendChild(effectElement(document, *child));
        }
    }
    return out.element();
}

} // namespace

QString ShowWriter::text(const ShowEffect& root)
{
    QDomDocument document;
    const QDomElement element = effectElement(&document, root);
    QString text;
    QTextStream stream(&text);
    element.save(stream, 0, QDomNode::EncodingFromTextStream);
    stream.flush();
    return text;
}
