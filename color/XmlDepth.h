#pragma once

#include <QByteArray>

/// Nesting that no file of ours comes near and every XML tree survives: some thousands of levels
/// more overflow the stack when QDomDocument frees them.
constexpr int kMaxXmlDepth = 1000;

enum class XmlShape {
    TooDeep, // elements nest deeper than kMaxXmlDepth before the document's first error
    Plain,   // UTF-8, with no declaration, document type or entities but the five of XML
    Special, // anything else
};

/// Takes a few milliseconds for a large file, unless it is special.
XmlShape xmlShape(const QByteArray& document);
