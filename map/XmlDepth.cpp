#include "map/XmlDepth.h"

#include <QBuffer>
#include <QXmlDefaultHandler>
#include <QXmlInputSource>
#include <QXmlSimpleReader>

#include <cstring>

namespace {

enum class Answer { Within, Deeper, Unknown };

/// Counts tags byte by byte. Knows UTF-8 and ASCII without a declaration or a document type, which
/// is what maps and shows are; anything else is Unknown.
Answer scanPlain(const QByteArray& document, int limit)
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
        return Answer::Unknown;
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
            return Answer::Unknown; // a document type may define entities that hold tags
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
                return Answer::Deeper;
            }
        }
    }
    return Answer::Within;
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

bool isXmlDeeperThan(const QByteArray& document, int limit)
{
    switch (scanPlain(document, limit)) {
    case Answer::Within:
        return false;
    case Answer::Deeper:
        return true;
    case Answer::Unknown:
        break;
    }
    return parseDepth(document, limit);
}
