#include "map/ElementText.h"

#include <iterator>
#include <limits>

namespace {

/// Digits alone, few enough not to overflow.
bool readPlainDigits(const QString& text, quint64* value)
{
    constexpr int kMaxDigits = 18;
    if (text.isEmpty() || text.size() > kMaxDigits) {
        return false;
    }
    *value = 0;
    for (const QChar c : text) {
        const unsigned digit = c.unicode() - unsigned('0');
        if (digit > 9) {
            return false;
        }
        *value = *value * 10 + digit;
    }
    return true;
}

} // namespace

quint64 readHex64(const QString& text, quint64 fallback, bool* ok)
{
    constexpr int kMaxDigits = 16;
    bool isPlain = !text.isEmpty() && text.size() <= kMaxDigits;
    quint64 value = 0;
    for (int i = 0; isPlain && i < text.size(); ++i) {
        const unsigned c = text.at(i).unicode();
        const unsigned letter = (c | 0x20U) - unsigned('a');
        if (c - unsigned('0') <= 9) {
            value = value << 4U | (c - unsigned('0'));
        } else if (letter < 6) {
            value = value << 4U | (letter + 10);
        } else {
            isPlain = false;
        }
    }
    bool isRead = true;
    if (!isPlain) {
        value = text.toULongLong(&isRead, 16);
    }
    if (ok != nullptr) {
        *ok = isRead;
    }
    return isRead ? value : fallback;
}

quint64 readUInt64(const QString& text, quint64 fallback)
{
    quint64 value = 0;
    if (readPlainDigits(text, &value)) {
        return value;
    }
    bool ok = false;
    value = text.toULongLong(&ok);
    return ok ? value : fallback;
}

quint32 readUInt32(const QString& text, quint32 fallback)
{
    const quint64 value = readUInt64(text, std::numeric_limits<quint64>::max());
    return value <= std::numeric_limits<quint32>::max() ? static_cast<quint32>(value) : fallback;
}

qint32 readInt32(const QString& text, qint32 fallback)
{
    quint64 value = 0;
    if (readPlainDigits(text, &value)) {
        return value <= quint64(std::numeric_limits<qint32>::max()) ? static_cast<qint32>(value)
                                                                    : fallback;
    }
    bool ok = false;
    const qint32 read = text.toInt(&ok);
    return ok ? read : fallback;
}

double readDouble(const QString& text, double fallback)
{
    // A whole number below 10^15 and a power of ten up to 10^22 are exact, and so their quotient is
    // the double nearest to the decimal fraction.
    constexpr int kMaxDigits = 15;
    static constexpr double kPowers[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                         1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    const int start = text.startsWith(QLatin1Char('-')) ? 1 : 0;
    int digits = 0;
    int point = -1;
    bool isPlain = text.size() > start && text.size() - start <= kMaxDigits;
    qint64 number = 0;
    for (int i = start; isPlain && i < text.size(); ++i) {
        const unsigned c = text.at(i).unicode();
        if (c - unsigned('0') <= 9) {
            number = number * 10 + static_cast<qint64>(c - unsigned('0'));
            ++digits;
        } else if (c == '.' && point < 0 && digits > 0) {
            point = digits;
        } else {
            isPlain = false;
        }
    }
    const int decimals = point < 0 ? 0 : digits - point;
    if (isPlain && point != digits) { // "1." is left to QString
        const double value = static_cast<double>(number) / kPowers[decimals];
        return start == 1 ? -value : value;
    }
    bool ok = false;
    const double value = text.toDouble(&ok);
    return ok ? value : fallback;
}
