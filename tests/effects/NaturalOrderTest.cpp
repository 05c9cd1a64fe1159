#include "effects/NaturalOrder.h"

#include <QLocale>
#include <QtTest>

#include <algorithm>
#include <random>

class NaturalOrderTest : public QObject
{
    Q_OBJECT
private slots:
    void countsAsPeopleDo_data();
    void countsAsPeopleDo();
    void asksNoLocale();
    void anyOrderOfReadingGivesTheSame();
};

void NaturalOrderTest::countsAsPeopleDo_data()
{
    QTest::addColumn<QString>("sorted"); // as it should come out
    const auto row = [](const char* name, const char* sorted) {
        QTest::newRow(name) << QString::fromUtf8(sorted);
    };
    row("empty", "");
    row("2 before 10", "f2.png|f10.png");
    row("two numbers", "a1b2|a1b10|a2b1|a10b1");
    row("number first", "1.png|9.png|10.png|100.png");
    row("leading zeros count for nothing", "f01|f2|f003|f10");
    row("and decide between equals", "f001|f01|f1");
    row("zero", "f0|f00x|f1"); // f0 is all of f00x's beginning
    row("beyond 64 bits", "n99999999999999999999|n100000000000000000000");
    row("prefix", "frame|frame1|frame1a|framea");
    row("signs before digits before letters", "a b|a-1|a.png|a_1|a1|ab");
    row("case is no matter", "alpha|Beta|gamma|Zeta");
    row("unless all else is equal", "A1|a1|A2|a2");
    row("accents are none", "etape|\xC3\xA9tape2|etape10|finale|zoo");
    row("other digits count, too", "n\xD9\xA2|n3|n\xD9\xA1\xD9\xA0"); // Arabic 2, 3, Arabic 10
}

void NaturalOrderTest::countsAsPeopleDo()
{
    QFETCH(const QString, sorted);
    const QStringList expected = sorted.split(QLatin1Char('|'), Qt::SkipEmptyParts);
    QStringList names = expected;
    std::reverse(names.begin(), names.end());
    sortNaturally(&names);
    QCOMPARE(names, expected);
}

void NaturalOrderTest::asksNoLocale()
{
    const QStringList expected = {QStringLiteral("z2"), QStringLiteral("Z10"),
                                  QStringLiteral("\u00E4z11"), QStringLiteral("b1")};
    for (const QLocale& locale : {QLocale::c(), QLocale(QLocale::Swedish), QLocale(QLocale::German),
                                  QLocale(QLocale::Arabic)}) {
        QLocale::setDefault(locale);
        QStringList names = expected;
        sortNaturally(&names);
        QCOMPARE(names,
                 QStringList({expected.at(2), expected.at(3), expected.at(0), expected.at(1)}));
    }
    QLocale::setDefault(QLocale::c());
}

void NaturalOrderTest::anyOrderOfReadingGivesTheSame()
{
    // Of hostile names, where a comparison that contradicts itself would show or fault.
    std::mt19937 random(7);
    const QString alphabet = QStringLiteral("aA0012 -_.\u0301\u0661\u00B2") + QChar(0xD800);
    QStringList names;
    for (int i = 0; i < 600; ++i) {
        QString name;
        for (auto n = random() % 7; n > 0; --n) {
            name += alphabet.at(static_cast<int>(random() % static_cast<quint32>(alphabet.size())));
        }
        names.append(name);
    }
    QStringList first = names;
    sortNaturally(&first);
    for (int i = 0; i < 5; ++i) {
        std::shuffle(names.begin(), names.end(), random);
        QStringList again = names;
        sortNaturally(&again);
        QCOMPARE(again, first);
    }
}

QTEST_GUILESS_MAIN(NaturalOrderTest)
#include "NaturalOrderTest.moc"
