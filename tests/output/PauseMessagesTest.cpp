#include "output/PauseMessages.h"

#include <QObject>
#include <QStringList>
#include <QtTest>

namespace {

/// Head and body as another program would make them: each line ends in one line feed, each letter
/// is two bytes, the low one first.
QByteArray envelope(const QStringList& lines)
{
    QByteArray body;
    for (const QString& line : lines) {
        for (const QChar letter : line + QLatin1Char('\n')) {
            body += static_cast<char>(letter.cell());
            body += static_cast<char>(letter.row());
        }
    }
    return "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
}

QStringList header(const QString& sender, const QString& command)
{
    return {QStringLiteral("<!DOCTYPE document>"),
            QStringLiteral("<Envelope>"),
            QStringLiteral(" <Header>"),
            QStringLiteral("  <SenderID>%1</SenderID>").arg(sender),
            QStringLiteral("  <TargetID>0</TargetID>"),
            QStringLiteral("  <RequestID>0</RequestID>"),
            QStringLiteral("  <Command>%1</Command>").arg(command),
            QStringLiteral(" </Header>")};
}

QByteArray hello(const QString& id, const QString& name)
{
    return envelope(header(id, QStringLiteral("3")) +
                    QStringList{QStringLiteral(" <Body>"), QStringLiteral("  <ID>%1</ID>").arg(id),
                                QStringLiteral("  <Name>%1</Name>").arg(name),
                                QStringLiteral("  <Type>3</Type>"), QStringLiteral(" </Body>"),
                                QStringLiteral("</Envelope>")});
}

} // namespace

class PauseMessagesTest : public QObject
{
    Q_OBJECT
private slots:
    void helloNamesTheProgram_data();
    void helloNamesTheProgram();
    void pauseIsTheSameForAll();
    void messagesAreNotCopied();
};

void PauseMessagesTest::helloNamesTheProgram_data()
{
    QTest::addColumn<QString>("clientName");
    QTest::addColumn<QByteArray>("expected");
    QTest::addColumn<int>("length");
    const QString forge = QStringLiteral("Pageant Forge");
    const QString steward = QStringLiteral("Pageant Steward");
    const QByteArray first = hello(QStringLiteral("3166485691"), forge);
    const QByteArray second = hello(QStringLiteral("3166485692"), steward);
    QTest::newRow("forge") << forge << first << 516;
    QTest::newRow("steward") << steward << second << 520;
    QTest::newRow("other case") << steward.toLower() << first << 516;
    QTest::newRow("other") << QStringLiteral("Somebody") << first << 516;
    QTest::newRow("none") << QString() << first << 516;
}

void PauseMessagesTest::helloNamesTheProgram()
{
    QFETCH(const QString, clientName);
    QFETCH(const QByteArray, expected);
    QFETCH(const int, length);
    const QByteArray bytes = PauseMessages::hello(clientName);
    QCOMPARE(bytes, expected);
    const QByteArray head = "Content-Length: " + QByteArray::number(length) + "\r\n\r\n";
    QVERIFY(bytes.startsWith(head + "<"));
    QCOMPARE(bytes.size(), head.size() + length);
}

void PauseMessagesTest::pauseIsTheSameForAll()
{
    const QByteArray bytes = PauseMessages::pause();
    QCOMPARE(bytes,
             envelope(header(QStringLiteral("3166485691"), QStringLiteral("113")) +
                      QStringList{QStringLiteral(" <Body/>"), QStringLiteral("</Envelope>")}));
    QVERIFY(bytes.startsWith("Content-Length: 368\r\n\r\n<"));
    QCOMPARE(bytes.size(), 23 + 368);
}

void PauseMessagesTest::messagesAreNotCopied()
{
    QCOMPARE(static_cast<const void*>(PauseMessages::pause().constData()),
             static_cast<const void*>(PauseMessages::pause().constData()));
    QCOMPARE(static_cast<const void*>(PauseMessages::hello(QString()).constData()),
             static_cast<const void*>(PauseMessages::hello(QString()).constData()));
}

QTEST_GUILESS_MAIN(PauseMessagesTest)
#include "PauseMessagesTest.moc"
