#include "effects/NaturalOrder.h"

#include <algorithm>
#include <vector>

namespace {

struct Name
{
    QString folded; // without case and accents
    QString text;
};

QString fold(const QString& text)
{
    QString folded;
    for (const QChar c : text.toCaseFolded().normalized(QString::NormalizationForm_D)) {
        if (c.category() != QChar::Mark_NonSpacing) {
            folded.append(c);
        }
    }
    return folded;
}

int rankOf(QChar c)
{
    if (c.isDigit()) {
        return 1;
    }
    return c.isLetter() || c.isSurrogate() ? 2 : 0;
}

/// A run of digits from `begin` on, which any number of leading zeros leaves alike.
struct Number
{
    int first; // significant digit
    int end;

    Number(const QString& text, int begin)
        : first(begin)
        , end(begin)
    {
        while (end < text.size() && text.at(end).isDigit()) {
            first += end == first && text.at(end).digitValue() == 0 ? 1 : 0;
            ++end;
        }
    }
    int length() const { return end - first; }
};

/// Below, at or above 0.
int compareNumbers(const QString& a, const Number& numberA, const QString& b, const Number& numberB)
{
    if (numberA.length() != numberB.length()) {
        return numberA.length() - numberB.length();
    }
    for (int i = 0; i < numberA.length(); ++i) {
        const int difference =
            a.at(numberA.first + i).digitValue() - b.at(numberB.first + i).digitValue();
        if (difference != 0) {
            return difference;
        }
    }
    return 0;
}

int compareFolded(const QString& a, const QString& b)
{
    int i = 0;
    int k = 0;
    while (i < a.size() && k < b.size()) {
        const QChar atA = a.at(i);
        const QChar atB = b.at(k);
        if (rankOf(atA) != rankOf(atB)) {
            return rankOf(atA) - rankOf(atB);
        }
        if (atA.isDigit()) {
            const Number numberA(a, i);
            const Number numberB(b, k);
            const int order = compareNumbers(a, numberA, b, numberB);
            if (order != 0) {
                return order;
            }
            i = numberA.end;
            k = numberB.end;
            continue;
        }
        if (atA != atB) {
            return atA < atB ? -1 : 1;
        }
        ++i;
        ++k;
    }
    return (a.size() - i) - (b.size() - k);
}

} // namespace

void sortNaturally(QStringList* names)
{
    std::vector<Name> sorted;
    sorted.reserve(static_cast<std::size_t>(names->size()));
    for (const QString& text : qAsConst(*names)) {
        sorted.push_back({fold(text), text});
    }
    std::sort(sorted.begin(), sorted.end(), [](const Name& a, const Name& b) {
        const int order = compareFolded(a.folded, b.folded);
        return order != 0 ? order < 0 : a.text < b.text;
    });
    std::transform(sorted.begin(), sorted.end(), names->begin(),
                   [](const Name& name) { return name.text; });
}
