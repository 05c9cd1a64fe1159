#include "editor/ShownText.h"

#include <QChar>

QString shownText(const QString& text)
{
    constexpr int kLongest = 500;
    if (text.size() <= kLongest) {
        return text;
    }
    const int whole = text.at(kLongest - 1).isHighSurrogate() ? kLongest - 1 : kLongest;
    return text.left(whole) + QChar(0x2026);
}
