#include "map/XmlDepth.h"

#include <QChar>
#include <QXmlAttributes>
#include <QXmlDefaultHandler>
#include <QXmlInputSource>
#include <QXmlSimpleReader>

namespace {

enum class Verdict { Within, Beyond, Unsure };

/// Follows the tags alone. Comments, sections and declarations, which could hold tags of their own
/// or bring in entities, leave it unsure.
Verdict scanTags(const QString& xml, int limit)
{
    const QChar* at = xml.constData();
    const QChar* const end = at + xml.size();
    int depth = 0;
    while (at != end) {
        if (*at++ != QLatin1Char('<') || at == end) {
            continue;
        }
        const QChar kind = *at;
        if (kind == QLatin1Char('!') || kind == QLatin1Char('?')) {
            return Verdict::Unsure;
        }
        QChar quote;
        QChar before;
        while (at != end && (!quote.isNull() || *at != QLatin1Char('>'))) {
            if (*at == quote) {
                quote = QChar();
            } else if (quote.isNull() && (*at == QLatin1Char('"') || *at == QLatin1Char('\''))) {
                quote = *at;
            }
            before = *at++;
        }
        if (kind == QLatin1Char('/')) {
            --depth;
        } else {
            if (depth >= limit) {
                return Verdict::Beyond;
            }
            depth += before == QLatin1Char('/') ? 0 : 1;
        }
    }
    return Verdict::Within;
}

// The document's own reader is the only one that meets just what the document will: others refuse
// earlier, and expand other entities.
QT_WARNING_PUSH
QT_WARNING_DISABLE_DEPRECATED

class DepthCounter : public QXmlDefaultHandler
{
public:
    explicit DepthCounter(int limit)
        : m_limit(limit)
    {}
    bool startElement(const QString&, const QString&, const QString&,
                      const QXmlAttributes&) override
    {
        m_beyond = ++m_depth > m_limit;
        return !m_beyond;
    }
    bool endElement(const QString&, const QString&, const QString&) override
    {
        --m_depth;
        return true;
    }
    bool beyond() const { return m_beyond; }

private:
    int m_limit = 0;
    int m_depth = 0;
    bool m_beyond = false;
};

bool readsWithin(const QString& xml, int limit)
{
    DepthCounter counter(limit);
    QXmlInputSource source;
    source.setData(xml);
    QXmlSimpleReader reader; // set up as QDomDocument::setContent does
    reader.setFeature(QStringLiteral("http://xml.org/sax/features/namespaces"), false);
    reader.setFeature(QStringLiteral("http://xml.org/sax/features/namespace-prefixes"), true);
    reader.setContentHandler(&counter);
    reader.parse(source); // an error ends the document there, too
    return !counter.beyond();
}

QT_WARNING_POP

} // namespace

bool xmlDepthWithin(const QString& xml, int limit)
{
    const Verdict verdict = scanTags(xml, limit);
    return verdict == Verdict::Unsure ? readsWithin(xml, limit) : verdict == Verdict::Within;
}
