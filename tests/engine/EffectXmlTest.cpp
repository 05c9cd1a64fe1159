#include "engine/EffectXml.h"

#include <QDomDocument>
#include <QObject>
#include <QtTest>

#include <limits>

class EffectXmlTest : public QObject
{
    Q_OBJECT
private slots:
    void writesNumbersPlainly_data();
    void writesNumbersPlainly();
    void readsBoolsAsNumbers_data();
    void readsBoolsAsNumbers();
    void theValueIsThatOfTheFirstChild();
};

namespace {

template <typename T>
QString written(T value)
{
    QDomDocument doc(QStringLiteral("show"));
    QDomElement element = doc.createElement(QStringLiteral("effect"));
    EffectXml::append(doc, element, EffectKey::Time, value);
    return element.firstChildElement(QStringLiteral("time")).text();
}

} // namespace

void EffectXmlTest::writesNumbersPlainly_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("signed") << written(qint32(-7)) << QStringLiteral("-7");
    QTest::newRow("unsigned") << written(quint32(4294967295U)) << QStringLiteral("4294967295");
    QTest::newRow("wide") << written(std::numeric_limits<quint64>::max())
                          << QStringLiteral("18446744073709551615");
    QTest::newRow("true") << written(true) << QStringLiteral("1");
    QTest::newRow("false") << written(false) << QStringLiteral("0");
    QTest::newRow("double") << written(0.5) << QStringLiteral("0.5");
    QTest::newRow("six digits") << written(1234.5678) << QStringLiteral("1234.57");
    QTest::newRow("large") << written(1234567.0) << QStringLiteral("1.23457e+06");
    QTest::newRow("nothing below zero") << written(-0.0) << QStringLiteral("0");
    QTest::newRow("text") << written(QStringLiteral(" as it is ")) << QStringLiteral(" as it is ");
    // What would make the whole file unreadable is left out.
    QTest::newRow("control characters")
        << written(QStringLiteral("a\x01\x1f\tb\x7f")) << QStringLiteral("a\tb\x7f");
    QTest::newRow("no character") << written(QString(QChar(0xfffe)) + QLatin1Char('a'))
                                  << QStringLiteral("a");
    QTest::newRow("half a pair") << written(QString(QChar(0xd83d)) + QLatin1Char('a'))
                                 << QStringLiteral("a");
    QTest::newRow("a pair") << written(QString::fromUtf8("\xf0\x9f\x92\xa1"))
                            << QString::fromUtf8("\xf0\x9f\x92\xa1");
}

void EffectXmlTest::writesNumbersPlainly()
{
    QFETCH(const QString, text);
    QFETCH(const QString, expected);
    QCOMPARE(text, expected);
}

void EffectXmlTest::readsBoolsAsNumbers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("value"); // -1: the fallback
    QTest::newRow("0") << QStringLiteral("0") << 0;
    QTest::newRow("1") << QStringLiteral("1") << 1;
    QTest::newRow("7") << QStringLiteral("7") << 1;
    QTest::newRow("negative") << QStringLiteral("-1") << 1;
    QTest::newRow("empty") << QString() << -1;
    QTest::newRow("word") << QStringLiteral("false") << -1;
    QTest::newRow("fraction") << QStringLiteral("0.0") << -1;
}

void EffectXmlTest::readsBoolsAsNumbers()
{
    QFETCH(const QString, text);
    QFETCH(const int, value);
    QCOMPARE(EffectXml::toBool(text, true), value != 0);
    QCOMPARE(EffectXml::toBool(text, false), value == 1);
}

void EffectXmlTest::theValueIsThatOfTheFirstChild()
{
    QDomDocument doc;
    QVERIFY(doc.setContent(QStringLiteral("<a><b/><c>text</c><d><e>in</e></d></a>")));
    const QDomElement a = doc.documentElement();
    QCOMPARE(EffectXml::valueOf(a.firstChildElement(QStringLiteral("b"))), QString());
    QCOMPARE(EffectXml::valueOf(a.firstChildElement(QStringLiteral("c"))), QStringLiteral("text"));
    QCOMPARE(EffectXml::valueOf(a.firstChildElement(QStringLiteral("d"))), QString());
    QCOMPARE(EffectXml::valueOf(QDomNode()), QString());
}

QTEST_GUILESS_MAIN(EffectXmlTest)
#include "EffectXmlTest.moc"
