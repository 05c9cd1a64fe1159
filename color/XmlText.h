#pragma once

#include <QString>

/// `text` without what an XML document can't hold: most control characters, surrogates without a
/// partner, U+FFFE and U+FFFF. A file with one of them would be refused as a whole.
QString writableXml(const QString& text);
