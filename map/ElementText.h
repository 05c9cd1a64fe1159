#pragma once

#include <QDomNode>
#include <QLatin1String>
#include <QString>
#include <QtGlobal>

#include <cstddef>
#include <new>

// Reading the elements of a map file: a map has hundreds of thousands of them.

/// A name of an element's child, and what it stands for there.
template <typename Key>
struct ElementKey
{
    QLatin1String name;
    Key key;
};

/// The key called `name`, else `unknown`.
template <typename Key, std::size_t size>
Key findElementKey(const ElementKey<Key> (&table)[size], const QString& name, Key unknown)
{
    for (const ElementKey<Key>& entry : table) {
        if (entry.name.size() == name.size() && entry.name == name) {
            return entry.key;
        }
    }
    return unknown;
}

/// The children of a node in order, without the reference counting of an assigned QDomNode.
class ChildNodes
{
public:
    explicit ChildNodes(const QDomNode& parent)
    {
        ::new (m_places[0].bytes) QDomNode(parent.firstChild());
    }
    ChildNodes(const ChildNodes&) = delete;
    ChildNodes& operator=(const ChildNodes&) = delete;
    ~ChildNodes() { m_places[m_current].node()->~QDomNode(); }

    /// Null behind the last child.
    const QDomNode& node() const { return *m_places[m_current].node(); }
    bool isAtEnd() const { return node().isNull(); }
    void advance()
    {
        const int next = 1 - m_current;
        ::new (m_places[next].bytes) QDomNode(node().nextSibling());
        m_places[m_current].node()->~QDomNode();
        m_current = next;
    }

private:
    struct Place
    {
        alignas(QDomNode) unsigned char bytes[sizeof(QDomNode)];
        QDomNode* node() { return std::launder(reinterpret_cast<QDomNode*>(bytes)); }
        const QDomNode* node() const
        {
            return std::launder(reinterpret_cast<const QDomNode*>(bytes));
        }
    };

    Place m_places[2];
    int m_current = 0;
};

// Numbers as QString reads them, by a short way for the plain texts that files hold. `fallback`
// stands for what does not parse or is out of the type's range.

quint64 readHex64(const QString& text, quint64 fallback, bool* ok = nullptr);
quint64 readUInt64(const QString& text, quint64 fallback);
quint32 readUInt32(const QString& text, quint32 fallback);
qint32 readInt32(const QString& text, qint32 fallback);
double readDouble(const QString& text, double fallback);
