#include "color/XmlText.h"

#include <QObject>
#include <QtTest>

/// What makes a text fit for an XML document.
class XmlTextTest : public QObject
{
    Q_OBJECT
private slots:
    void textsAreMadeWritable_data();
    void textsAreMadeWritable();
};

void XmlTextTest::textsAreMadeWritable_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("kept");
    const QString pair = QString(QChar(0xD83C)) + QChar(0xDFA8);
    QTest::newRow("plain") << QStringLiteral("Röt <&>") << QStringLiteral("Röt <&>");
    QTest::newRow("blanks") << QStringLiteral("a\tb\nc\rd") << QStringLiteral("a\tb\nc\rd");
    QTest::newRow("controls") << QStringLiteral("\u0001a\u001Fb") + QChar(0)
                              << QStringLiteral("ab");
    QTest::newRow("pair") << pair << pair;
    QTest::newRow("half a pair") << QString(QChar(0xD83C)) << QString();
    QTest::newRow("other half") << QStringLiteral("a") + QChar(0xDFA8) + QStringLiteral("b")
                                << QStringLiteral("ab");
    QTest::newRow("half, then a pair") << QChar(0xD83C) + pair << pair;
    QTest::newRow("no characters") << QStringLiteral("a\uFFFE\uFFFFb") << QStringLiteral("ab");
}

void XmlTextTest::textsAreMadeWritable()
{
    QFETCH(const QString, text);
    QFETCH(const QString, kept);
    QCOMPARE(writableXml(text), kept);
}

QTEST_GUILESS_MAIN(XmlTextTest)
#include "XmlTextTest.moc"
