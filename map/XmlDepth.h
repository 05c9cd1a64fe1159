#pragma once

#include <QString>

/// Elements inside one another that a file may have. The reader of XML documents recurses, and
/// dies of a stack overflow somewhere past ten thousand.
constexpr int kMaxXmlDepth = 1000;

/// Whether reading `xml` as a document meets at most `limit` elements inside one another, those
/// that entities bring in included. Text that is no XML is judged up to its first error. To be
/// asked before QDomDocument::setContent.
[[nodiscard]] bool xmlDepthWithin(const QString& xml, int limit = kMaxXmlDepth);
