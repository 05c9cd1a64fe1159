#include "color/XmlDepth.h"

#include <QBuffer>
#include <QXmlDefaultHandler>
#include <QXmlInputSource>
#include <QXmlSimpleReader>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace {

/// Whether each "&" begins a character reference or one of the five entities of XML.
bool hasOnlyOwnEntities(const QByteArray& document)
{
    static constexpr const char* kKnown[] = {"#", "amp;", "lt;", "gt;", "quot;", "apos;"};
    for (int at = document.indexOf('&'); at >= 0; at = document.indexOf('&', at + 1)) {
        const char* const name = document.constData() + at + 1;
        const bool isKnown =
            std::any_of(std::begin(kKnown), std::end(kKnown), [&](const char* one) {
                return std::strncmp(name, one, std::strlen(one)) == 0;
            });
        if (!isKnown) {
            return false;
        }
    }
    return true;
}

/// Counts tags byte by byte.
XmlShape scanTags(const QByteArray& document, int limit)
{
    const char* at = document.constData();
    const char* const end = at + document.size();
    const auto remaining = [&at, end] { return static_cast<std::size_t>(end - at); };
    const auto skipPast = [&](const char* mark, std::size_t length) {
        while (remaining() >= length) {
            at = static_cast<const char*>(std::memchr(at, mark[0], remaining()));
            if (at == nullptr || static_cast<std::size_t>(end - at) < length) {
                break;
            }
            if (std::memcmp(at, mark, length) == 0) {
                at += length;
                return true;
            }
            ++at;
        }
        at = end;
        return false;
    };
    const auto startsWith = [&](const char* mark, std::size_t length) {
        return remaining() >= length && std::memcmp(at, mark, length) == 0;
    };

    if (startsWith("\xEF\xBB\xBF", 3)) {
        at += 3;
    }
    const bool isForeign = startsWith("\xFE", 1) || startsWith("\xFF", 1);
    if (isForeign || startsWith("<?", 2) || std::memchr(at, 0, remaining()) != nullptr) {
        return XmlShape::Special;
    }
    int depth = 0;
    while (at < end) {
        at = static_cast<const char*>(std::memchr(at, '<', remaining()));
        if (at == nullptr) {
            break;
        }
        if (startsWith("<!--", 4)) {
            at += 4;
            skipPast("-->", 3);
        } else if (startsWith("<![CDATA[", 9)) {
            at += 9;
            skipPast("]]>", 3);
        } else if (startsWith("<?", 2)) {
            at += 2;
            skipPast("?>", 2);
        } else if (startsWith("<!", 2)) {
            return XmlShape::Special; // a document type may define entities that hold tags
        } else if (startsWith("</", 2)) {
            at += 2;
            --depth;
        } else {
            ++at;
            char quote = 0;
            while (at < end && (quote != 0 || *at != '>')) {
                if (quote != 0) {
                    quote = *at == quote ? char(0) : quote;
                } else if (*at == '"' || *at == '\'') {
                    quote = *at;
                }
                ++at;
            }
            const bool isEmpty = at < end && at[-1] == '/';
            if (!isEmpty && ++depth > limit) {
                return XmlShape::TooDeep;
            }
        }
    }
    return XmlShape::Plain;
}

QT_WARNING_PUSH
QT_WARNING_DISABLE_DEPRECATED // the reader behind QDomDocument, which must see what that sees

class DepthHandler final : public QXmlDefaultHandler
{
public:
    explicit DepthHandler(int limit)
        : m_limit(limit)
    {}
    bool isDeeper() const { return m_isDeeper; }
    bool startElement(const QString& /*uri*/, const QString& /*localName*/, const QString& /*name*/,
                      const QXmlAttributes& /*attributes*/) override
    {
        m_isDeeper = m_isDeeper || ++m_depth > m_limit;
        return !m_isDeeper;
    }
    bool endElement(const QString& /*uri*/, const QString& /*localName*/,
                    const QString& /*name*/) override
    {
        --m_depth;
        return true;
    }

private:
    int m_limit = 0;
    int m_depth = 0;
    bool m_isDeeper = false;
};

bool parseDepth(const QByteArray& document, int limit)
{
    QXmlInputSource source;
    source.setData(document);
    DepthHandler handler(limit);
    QXmlSimpleReader reader;
    reader.setContentHandler(&handler);
    reader.parse(source);
    return handler.isDeeper();
}

QT_WARNING_POP

} // namespace

XmlShape xmlShape(const QByteArray& document)
{
    const XmlShape shape = scanTags(document, kMaxXmlDepth);
    if (shape == XmlShape::Special) {
        return parseDepth(document, kMaxXmlDepth) ? XmlShape::TooDeep : shape;
    }
    return shape == XmlShape::Plain && !hasOnlyOwnEntities(document) ? XmlShape::Special : shape;
}
