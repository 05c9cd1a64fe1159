#include "editor/ShownText.h"

#include <QObject>
#include <QtTest>

/// What views show of long names.
class ShownTextTest : public QObject
{
    Q_OBJECT
private slots:
    void longTextsEndInDots_data();
    void longTextsEndInDots();
};

void ShownTextTest::longTextsEndInDots_data()
{
    const auto x = [](int count) { return QString(count, QLatin1Char('x')); };
    const QString dots = QChar(0x2026);
    const QString pair = QString(QChar(0xD83C)) + QChar(0xDFA8);
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");
    QTest::newRow("empty") << QString() << QString();
    QTest::newRow("short") << QStringLiteral("Dusk & Dawn") << QStringLiteral("Dusk & Dawn");
    QTest::newRow("as long as may be") << x(500) << x(500);
    QTest::newRow("one longer") << x(501) << x(500) + dots;
    QTest::newRow("a megabyte") << x(1 << 20) << x(500) + dots;
    QTest::newRow("a pair at the end") << x(498) + pair + x(9) << x(498) + pair + dots;
    QTest::newRow("a pair across the end") << x(499) + pair + x(9) << x(499) + dots;
}

void ShownTextTest::longTextsEndInDots()
{
    QFETCH(const QString, text);
    QFETCH(const QString, shown);
    QCOMPARE(shownText(text), shown);
}

QTEST_GUILESS_MAIN(ShownTextTest)
#include "ShownTextTest.moc"
