#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

#include <memory>
#include <vector>

class MapNode;
class Talvis;

/// One child of a map's root that means something, in file order.
struct MapItem
{
    enum class Kind { Version, ImageFile, PostSync, Controller, Light, Group };

    int index = 0; // among all children of the root
    Kind kind = Kind::Version;
    QString text;           // of the first three kinds
    int controllerType = 0; // what the object was built as; the file's last type may differ
    std::unique_ptr<QObject> object; // of the last three
};

/// Reads the text of a map file into objects that belong to no model yet.
///
/// Takes exactly the documents that QDomDocument::setContent takes, and sees the same nodes: the
/// parser is the one behind it. An ordinary map is turned into objects while it is parsed, element
/// by element; a document with a declaration, a document type or entities goes through a
/// QDomDocument as a whole.
class MapReader
{
public:
    explicit MapReader(Talvis* talvis)
        : m_talvis(talvis)
    {}

    /// False, with reason(), where the text isn't a document or nests too deep.
    bool read(const QByteArray& text);
    /// The same always through a QDomDocument.
    bool readDocument(const QByteArray& text);

    const QString& reason() const { return m_reason; }
    /// Children of the document.
    int nodeCount() const { return m_nodeCount; }
    /// Whether the document's only child is an element "map".
    bool isMap() const { return m_nodeCount == 1 && m_hasMapRoot; }
    /// Children of the root.
    int childCount() const { return m_childCount; }
    std::vector<MapItem>& items() { return m_items; }

private:
    class Handler;

    bool readPlain(const QByteArray& text);
    void setError(const QString& message, int line, int column);
    /// One child of a root "map".
    void take(const MapNode& node, int index);
    void takeController(const MapNode& element, int index);

    Talvis* m_talvis = nullptr; // not owned
    QString m_reason;
    int m_nodeCount = 0;
    int m_childCount = 0;
    bool m_hasMapRoot = false;
    std::vector<MapItem> m_items;
};
