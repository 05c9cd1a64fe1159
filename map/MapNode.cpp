#include "map/MapNode.h"

const QString& MapNode::firstValue() const
{
    static const QString kNone;
    const int first = m_tree->at(m_index).firstChild;
    return first < 0 ? kNone : m_tree->at(first).value;
}

QString MapNode::text() const
{
    QString text;
    m_tree->appendText(m_index, &text);
    return text;
}

MapTree::MapTree(const QDomNode* node)
{
    if (node != nullptr && !node->isNull()) {
        copy(*node);
    }
}

void MapTree::add(Kind kind, const QString& name, const QString& value)
{
    const int index = m_count;
    const auto place = static_cast<std::size_t>(index);
    if (place == m_records.size()) {
        m_records.emplace_back();
    }
    if (index == 0) {
        m_open = -1;
    }
    Record& record = m_records[place];
    record.kind = kind;
    record.parent = m_open;
    record.firstChild = -1;
    record.lastChild = -1;
    record.nextSibling = -1;
    record.name = name;
    record.value = value;
    if (m_open >= 0) {
        Record& parent = m_records[static_cast<std::size_t>(m_open)];
        if (parent.lastChild >= 0) {
            m_records[static_cast<std::size_t>(parent.lastChild)].nextSibling = index;
        } else {
            parent.firstChild = index;
        }
        parent.lastChild = index;
    }
    if (kind == Element) {
        m_open = index;
    }
    ++m_count;
}

void MapTree::closeElement()
{
    m_open = at(m_open).parent;
}

/// Recursive: documents deeper than kMaxXmlDepth are refused before.
void MapTree::copy(const QDomNode& node)
{
    const bool isText = node.isText(); // CDATA included
    const Kind kind = node.isElement() ? Element : (isText ? Text : Other);
    add(kind, node.nodeName(), node.nodeValue());
    if (kind == Element) {
        for (QDomNode child = node.firstChild(); !child.isNull(); child = child.nextSibling()) {
            copy(child);
        }
        closeElement();
    }
}

void MapTree::appendText(int index, QString* text) const
{
    for (int i = at(index).firstChild; i >= 0; i = at(i).nextSibling) {
        if (at(i).kind == Text) {
            *text += at(i).value;
        } else if (at(i).kind == Element) {
            appendText(i, text);
        }
    }
}
