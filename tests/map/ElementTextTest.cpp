#include "map/ElementText.h"

#include <QObject>
#include <QtTest>

#include <cmath>
#include <random>

namespace {

bool isSame(double a, double b)
{
    return (a == b && std::signbit(a) == std::signbit(b)) || (std::isnan(a) && std::isnan(b));
}

} // namespace

class ElementTextTest : public QObject
{
    Q_OBJECT
private slots:
    void numbersAreReadAsByQString_data();
    void numbersAreReadAsByQString();
    void seededNumbersAreReadAsByQString();
};

void ElementTextTest::numbersAreReadAsByQString_data()
{
    QTest::addColumn<QString>("text");
    for (const char* text : {"",
                             "0",
                             "7",
                             "-7",
                             "+7",
                             "007",
                             " 7",
                             "7 ",
                             "0x7",
                             "1A",
                             "1a",
                             "ffff",
                             "g",
                             "1.5",
                             "-1.5",
                             ".5",
                             "5.",
                             "-",
                             ".",
                             "-.5",
                             "1..2",
                             "1e3",
                             "1E3",
                             "1e400",
                             "1e-400",
                             "nan",
                             "inf",
                             "-inf",
                             "-0",
                             "-0.0",
                             "0.1",
                             "1,5",
                             "4294967295",
                             "4294967296",
                             "2147483647",
                             "2147483648",
                             "-2147483648",
                             "-2147483649",
                             "18446744073709551615",
                             "18446744073709551616",
                             "ffffffffffffffff",
                             "10000000000000000",
                             "999999999999999999",
                             "123456789.123456789",
                             "0.000000000000001",
                             "123456789012345",
                             "1234567890123456",
                             "9007199254740993",
                             "\u0661",
                             "1\u0661"}) {
        QTest::newRow(text) << QString::fromUtf8(text);
    }
}

void ElementTextTest::numbersAreReadAsByQString()
{
    QFETCH(const QString, text);
    bool ok = false;
    const quint64 hex = text.toULongLong(&ok, 16);
    bool told = !ok;
    QCOMPARE(readHex64(text, 3, &told), ok ? hex : 3);
    QCOMPARE(told, ok);
    const quint64 wide = text.toULongLong(&ok);
    QCOMPARE(readUInt64(text, 3), ok ? wide : 3);
    const quint32 word = text.toUInt(&ok);
    QCOMPARE(readUInt32(text, 3), ok ? word : 3);
    const qint32 number = text.toInt(&ok);
    QCOMPARE(readInt32(text, 3), ok ? number : 3);
    const double value = text.toDouble(&ok);
    QVERIFY(isSame(readDouble(text, 3.0), ok ? value : 3.0));
}

void ElementTextTest::seededNumbersAreReadAsByQString()
{
    std::mt19937 random(11);
    const QString letters = QStringLiteral("0123456789012345678901234567890123456789.-abf x");
    for (int i = 0; i < 200000; ++i) {
        QString text;
        const int length = std::uniform_int_distribution<int>(1, 19)(random);
        const int kind = std::uniform_int_distribution<int>(0, 3)(random);
        const int choice = kind == 0 ? letters.size() : (kind == 1 ? 41 : 40);
        for (int k = 0; k < length; ++k) {
            text += letters.at(std::uniform_int_distribution<int>(0, choice - 1)(random));
        }
        bool ok = false;
        const double value = text.toDouble(&ok);
        QVERIFY2(isSame(readDouble(text, 3.0), ok ? value : 3.0), qPrintable(text));
        const quint64 wide = text.toULongLong(&ok);
        QVERIFY2(readUInt64(text, 3) == (ok ? wide : 3), qPrintable(text));
        const qint32 number = text.toInt(&ok);
        QVERIFY2(readInt32(text, 3) == (ok ? number : 3), qPrintable(text));
        const quint64 hex = text.toULongLong(&ok, 16);
        QVERIFY2(readHex64(text, 3) == (ok ? hex : 3), qPrintable(text));
    }
}

QTEST_GUILESS_MAIN(ElementTextTest)

#include "ElementTextTest.moc"
