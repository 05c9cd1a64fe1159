#include "color/XmlText.h"

QString writableXml(const QString& text)
{
    QString kept;
    kept.reserve(text.size());
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate()) {
            kept += c;
            kept += text.at(++i);
            continue;
        }
        const ushort code = c.unicode();
        const bool isControl = code < 0x20 && code != '\t' && code != '\n' && code != '\r';
        if (!isControl && !c.isSurrogate() && code != 0xFFFE && code != 0xFFFF) {
            kept += c;
        }
    }
    return kept;
}
