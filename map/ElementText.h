#pragma once

#include <QLatin1String>
#include <QString>
#include <QtGlobal>

#include <cstddef>
#include <string_view>

// Reading the elements of a map file: a map has hundreds of thousands of them.

/// A name of an element's child, and what it stands for there.
template <typename Key>
struct ElementKey
{
    std::string_view name;
    Key key;
};

/// The key called `name`, else `unknown`.
template <typename Key, std::size_t size>
Key findElementKey(const ElementKey<Key> (&table)[size], const QString& name, Key unknown)
{
    for (const ElementKey<Key>& entry : table) {
        const auto length = static_cast<int>(entry.name.size());
        if (length == name.size() && name == QLatin1String(entry.name.data(), length)) {
            return entry.key;
        }
    }
    return unknown;
}

// Numbers as QString reads them, by a short way for the plain texts that files hold. `fallback`
// stands for what does not parse or is out of the type's range.

quint64 readHex64(const QString& text, quint64 fallback, bool* ok = nullptr);
quint64 readUInt64(const QString& text, quint64 fallback);
quint32 readUInt32(const QString& text, quint32 fallback);
qint32 readInt32(const QString& text, qint32 fallback);
double readDouble(const QString& text, double fallback);
