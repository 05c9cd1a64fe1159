#include "map/MapReader.h"

#include "color/XmlDepth.h"
#include "map/Controller.h"
#include "map/ElementText.h"
#include "map/Group.h"
#include "map/Light.h"
#include "map/MapNode.h"

#include <QDomDocument>
#include <QXmlDefaultHandler>
#include <QXmlInputSource>
#include <QXmlSimpleReader>

#include <utility>

namespace {

enum class Key { Version, ImageFile, PostSync, Controller, Light, Group, Type, Unknown };

constexpr ElementKey<Key> kKeys[] = {
    {"light", Key::Light},           {"l", Key::Light},
    {"group", Key::Group},           {"g", Key::Group},
    {"controller", Key::Controller}, {"c", Key::Controller},
    {"version", Key::Version},       {"imagefile", Key::ImageFile},
    {"postsync", Key::PostSync},
};

constexpr ElementKey<Key> kControllerKeys[] = {
    {"type", Key::Type},
    {"t", Key::Type},
};

QLatin1String rootName()
{
    return QLatin1String("map");
}

} // namespace

QT_WARNING_PUSH
QT_WARNING_DISABLE_DEPRECATED // the parser behind QDomDocument, which decides what a document is

/// Hands each child of the root to the reader as soon as it is complete.
class MapReader::Handler final : public QXmlDefaultHandler
{
public:
    explicit Handler(MapReader* reader)
        : m_reader(reader)
    {}

    bool startElement(const QString& /*uri*/, const QString& /*localName*/, const QString& name,
                      const QXmlAttributes& /*attributes*/) override
    {
        if (m_depth == 0) {
            ++m_reader->m_nodeCount;
            m_reader->m_hasMapRoot = name == rootName();
        } else {
            m_tree.add(MapTree::Element, name, QString());
        }
        ++m_depth;
        return true;
    }
    bool endElement(const QString& /*uri*/, const QString& /*localName*/,
                    const QString& /*name*/) override
    {
        --m_depth;
        if (m_depth > 0) {
            m_tree.closeElement();
            handOver();
        }
        return true;
    }
    bool characters(const QString& text) override
    {
        addNode(MapTree::Text, m_isInCdata ? m_cdataName : m_textName, text);
        return true;
    }
    bool processingInstruction(const QString& target, const QString& data) override
    {
        addNode(MapTree::Other, target, data);
        return true;
    }
    bool startCDATA() override
    {
        m_isInCdata = true;
        return true;
    }
    bool endCDATA() override
    {
        m_isInCdata = false;
        return true;
    }
    bool comment(const QString& text) override
    {
        addNode(MapTree::Other, m_commentName, text);
        return true;
    }
    bool fatalError(const QXmlParseException& error) override
    {
        m_reader->setError(error.message(), error.lineNumber(), error.columnNumber());
        return false;
    }

private:
    void addNode(MapTree::Kind kind, const QString& name, const QString& value)
    {
        if (m_depth == 0) {
            ++m_reader->m_nodeCount;
            return;
        }
        m_tree.add(kind, name, value);
        handOver();
    }
    void handOver()
    {
        if (m_depth > 1) {
            return;
        }
        if (m_reader->m_hasMapRoot) {
            m_reader->take(m_tree.root(), m_reader->m_childCount);
        }
        ++m_reader->m_childCount;
        m_tree.clear();
    }

    MapReader* m_reader = nullptr; // not owned
    MapTree m_tree;
    int m_depth = 0;
    bool m_isInCdata = false;
    const QString m_textName = QStringLiteral("#text");
    const QString m_cdataName = QStringLiteral("#cdata-section");
    const QString m_commentName = QStringLiteral("#comment");
};

bool MapReader::readPlain(const QByteArray& text)
{
    QXmlInputSource source;
    source.setData(text);
    Handler handler(this);
    QXmlSimpleReader parser;
    // As QDomDocument sets its parser up.
    parser.setFeature(QStringLiteral("http://xml.org/sax/features/namespaces"), false);
    parser.setFeature(QStringLiteral("http://xml.org/sax/features/namespace-prefixes"), true);
    parser.setFeature(
        QStringLiteral("http://trolltech.com/xml/features/report-whitespace-only-CharData"), false);
    parser.setContentHandler(&handler);
    parser.setLexicalHandler(&handler);
    parser.setErrorHandler(&handler);
    return parser.parse(source);
}

QT_WARNING_POP

bool MapReader::read(const QByteArray& text)
{
    switch (xmlShape(text)) {
    case XmlShape::TooDeep:
        m_reason = QStringLiteral("its elements nest deeper than %1").arg(kMaxXmlDepth);
        return false;
    case XmlShape::Plain:
        return readPlain(text);
    case XmlShape::Special:
        break;
    }
    return readDocument(text);
}

bool MapReader::readDocument(const QByteArray& text)
{
    QDomDocument document(QStringLiteral("mydocument"));
    QString message;
    int line = 0;
    int column = 0;
    if (!document.setContent(text, &message, &line, &column)) {
        setError(message, line, column);
        return false;
    }
    m_nodeCount = document.childNodes().count();
    const QDomElement root = document.firstChild().toElement();
    m_hasMapRoot = root.tagName() == rootName();
    for (QDomNode child = root.firstChild(); !child.isNull(); child = child.nextSibling()) {
        if (m_hasMapRoot && child.isElement()) {
            const MapTree tree(&child);
            take(tree.root(), m_childCount);
        }
        ++m_childCount;
    }
    return true;
}

void MapReader::setError(const QString& message, int line, int column)
{
    m_reason = QStringLiteral("%1 (line %2, column %3)").arg(message).arg(line).arg(column);
}

void MapReader::take(const MapNode& node, int index)
{
    if (!node.isElement()) {
        return;
    }
    MapItem item;
    item.index = index;
    switch (findElementKey(kKeys, node.name(), Key::Unknown)) {
    case Key::Light:
        item.kind = MapItem::Kind::Light;
        item.object = std::make_unique<Light>(node);
        break;
    case Key::Group:
        item.kind = MapItem::Kind::Group;
        item.object = std::make_unique<Group>(node);
        break;
    case Key::Controller:
        takeController(node, index);
        return;
    case Key::Version:
        item.kind = MapItem::Kind::Version;
        item.text = node.text();
        break;
    case Key::ImageFile:
        item.kind = MapItem::Kind::ImageFile;
        item.text = node.text();
        break;
    case Key::PostSync:
        item.kind = MapItem::Kind::PostSync;
        item.text = node.text();
        break;
    case Key::Type:
    case Key::Unknown:
        return;
    }
    m_items.push_back(std::move(item));
}

/// Builds the controller once for each child that names a kind.
void MapReader::takeController(const MapNode& element, int index)
{
    for (MapNode child = element.firstChild(); !child.isNull(); child = child.nextSibling()) {
        if (!child.isElement() ||
            findElementKey(kControllerKeys, child.name(), Key::Unknown) == Key::Unknown) {
            continue;
        }
        const int type = child.text().toInt();
        if (type == Controller::IpController || type == Controller::BroadcastController) {
            MapItem item;
            item.index = index;
            item.kind = MapItem::Kind::Controller;
            item.controllerType = type;
            item.object = std::make_unique<Controller>(type, m_talvis, element);
            m_items.push_back(std::move(item));
        }
    }
}
