#include <QObject>
#include <QProcess>
#include <QtTest>

namespace {
constexpr int kEndMs = 30000;
}

/// Starts the built program with options that end it before any window exists.
class CommandLineTest : public QObject
{
    Q_OBJECT
private slots:
    void optionsThatEndTheProgram_data();
    void optionsThatEndTheProgram();
};

void CommandLineTest::optionsThatEndTheProgram_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("status");
    QTest::addColumn<QStringList>("expected");
    const QStringList help = {QStringLiteral("Orrin Pageant Forge"),
                              QStringLiteral("-m, --map <Map File>"),
                              QStringLiteral("Map File to launch with"),
                              QStringLiteral("-s, --show <Show File>"),
                              QStringLiteral("Show File to launch with"),
                              QStringLiteral("-d, --demoMode"),
                              QStringLiteral("Demo Mode")};
    QTest::newRow("help") << QStringList{QStringLiteral("--help")} << 0 << help;
    QTest::newRow("short help") << QStringList{QStringLiteral("-h")} << 0 << help;
    QTest::newRow("unknown option") << QStringList{QStringLiteral("--frobnicate")} << 1
                                    << QStringList{QStringLiteral("frobnicate")};
    QTest::newRow("map without a value")
        << QStringList{QStringLiteral("--map")} << 1 << QStringList{QStringLiteral("map")};
}

void CommandLineTest::optionsThatEndTheProgram()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const int, status);
    QFETCH(const QStringList, expected);
    QProcess program;
    program.setProcessChannelMode(QProcess::MergedChannels);
    program.start(QStringLiteral(FORGE_BINARY_DIR "/bin/pageant-forge"), arguments);
    QVERIFY(program.waitForFinished(kEndMs));
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), status);
    const QString output = QString::fromUtf8(program.readAll());
    for (const QString& text : expected) {
        QVERIFY2(output.contains(text), qPrintable(output));
    }
}

QTEST_GUILESS_MAIN(CommandLineTest)
#include "CommandLineTest.moc"
