#include "app/CommandLine.h"

#include <QCommandLineParser>
#include <QObject>
#include <QtTest>

class CommandLineTest : public QObject
{
    Q_OBJECT
private slots:
    void whatWasGivenIsRead_data();
    void whatWasGivenIsRead();
    void badArgumentsAreRefused_data();
    void badArgumentsAreRefused();
    void theHelpNamesEveryOption();
};

void CommandLineTest::whatWasGivenIsRead_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("map");
    QTest::addColumn<QString>("show");
    QTest::addColumn<bool>("demo");
    const QString a = QStringLiteral("a.map");
    const QString b = QStringLiteral("b.sho");
    QTest::newRow("nothing") << QString() << QString() << QString() << false;
    QTest::newRow("long") << QStringLiteral("--map a.map --show b.sho --demoMode") << a << b
                          << true;
    QTest::newRow("short") << QStringLiteral("-m a.map -s b.sho -d") << a << b << true;
    QTest::newRow("with an equals sign")
        << QStringLiteral("--map=a.map") << a << QString() << false;
    QTest::newRow("show alone") << QStringLiteral("--show b.sho") << QString() << b << false;
    QTest::newRow("demo alone") << QStringLiteral("-d") << QString() << QString() << true;
}

void CommandLineTest::whatWasGivenIsRead()
{
    QFETCH(const QString, arguments);
    QFETCH(const QString, map);
    QFETCH(const QString, show);
    QFETCH(const bool, demo);
    QCommandLineParser parser;
    CommandLine::setUp(&parser);
    QVERIFY(parser.parse(QStringList(QStringLiteral("program")) +
                         arguments.split(QLatin1Char(' '), Qt::SkipEmptyParts)));
    const CommandLine options = CommandLine::read(parser);
    QCOMPARE(options.mapFile, map);
    QCOMPARE(options.mapFile.isNull(), map.isNull());
    QCOMPARE(options.showFile, show);
    QCOMPARE(options.showFile.isNull(), show.isNull());
    QCOMPARE(options.demoMode, demo);
}

void CommandLineTest::badArgumentsAreRefused_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("unknown") << QStringList{QStringLiteral("--frobnicate")};
    QTest::newRow("map without a path") << QStringList{QStringLiteral("--map")};
    QTest::newRow("show without a path") << QStringList{QStringLiteral("-s")};
    QTest::newRow("demo with a value") << QStringList{QStringLiteral("--demoMode=1")};
}

void CommandLineTest::badArgumentsAreRefused()
{
    QFETCH(const QStringList, arguments);
    QCommandLineParser parser;
    CommandLine::setUp(&parser);
    QVERIFY(!parser.parse(QStringList(QStringLiteral("program")) + arguments));
}

void CommandLineTest::theHelpNamesEveryOption()
{
    QCommandLineParser parser;
    CommandLine::setUp(&parser);
    QCOMPARE(parser.applicationDescription(), QStringLiteral("Orrin Pageant Forge"));
    const QString help = parser.helpText().simplified();
    for (const char* text :
         {"Orrin Pageant Forge", "-h, --help", "-m, --map <Map File> Map File to launch with",
          "-s, --show <Show File> Show File to launch with", "-d, --demoMode Demo Mode"}) {
        QVERIFY2(help.contains(QString::fromLatin1(text)), text);
    }
}

QTEST_GUILESS_MAIN(CommandLineTest)
#include "CommandLineTest.moc"
