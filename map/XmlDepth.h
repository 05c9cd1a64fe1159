#pragma once

#include <QByteArray>

/// Nesting that no file of ours comes near and every XML tree survives: some thousands of levels
/// more overflow the stack when QDomDocument frees them.
constexpr int kMaxXmlDepth = 1000;

/// Whether the elements of an XML document nest deeper than `limit` before its first error. Takes a
/// few milliseconds for a large file.
bool isXmlDeeperThan(const QByteArray& document, int limit = kMaxXmlDepth);
