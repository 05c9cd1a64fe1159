#pragma once

#include <QDomNode>
#include <QString>

#include <vector>

class MapTree;

/// One node of a tree that was read from a map file: an element, or text, a comment and the like.
/// As QDomNode answers, but cheap to copy; the tree must outlive it.
class MapNode
{
public:
    MapNode() = default;

    bool isNull() const { return m_tree == nullptr; }
    bool isElement() const;
    /// QDomNode::nodeName()
    const QString& name() const;
    /// The value of the first child, which is null when that is an element, or for no child.
    const QString& firstValue() const;
    /// QDomElement::text()
    QString text() const;
    MapNode firstChild() const;
    MapNode nextSibling() const;

private:
    friend class MapTree;

    MapNode(const MapTree* tree, int index)
        : m_tree(index < 0 ? nullptr : tree)
        , m_index(index)
    {}

    const MapTree* m_tree = nullptr; // not owned
    int m_index = 0;
};

/// The nodes below one element. Can be filled again and again without allocating.
class MapTree
{
public:
    enum Kind : int { Element, Text, Other };

    MapTree() = default;
    /// The tree below and with `node`; for a null pointer or node an empty tree.
    explicit MapTree(const QDomNode* node);

    /// Null when empty.
    MapNode root() const { return {this, m_count > 0 ? 0 : -1}; }
    void clear() { m_count = 0; }
    /// Appends a node as the last child of the open element, which an Element then is itself.
    void add(Kind kind, const QString& name, const QString& value);
    void closeElement();

private:
    friend class MapNode;

    struct Record
    {
        Kind kind = Other;
        int parent = -1;
        int firstChild = -1;
        int lastChild = -1;
        int nextSibling = -1;
        QString name;
        QString value;
    };

    const Record& at(int index) const { return m_records[static_cast<std::size_t>(index)]; }
    void copy(const QDomNode& node);
    void appendText(int index, QString* text) const;

    std::vector<Record> m_records; // the first m_count of them are the tree
    int m_count = 0;
    int m_open = -1;
};

inline bool MapNode::isElement() const
{
    return m_tree != nullptr && m_tree->at(m_index).kind == MapTree::Element;
}

inline const QString& MapNode::name() const
{
    return m_tree->at(m_index).name;
}

inline MapNode MapNode::firstChild() const
{
    return {m_tree, m_tree->at(m_index).firstChild};
}

inline MapNode MapNode::nextSibling() const
{
    return {m_tree, m_tree->at(m_index).nextSibling};
}
