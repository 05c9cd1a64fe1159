#include "output/Talvis.h"
#include "output/TalvisSocket.h"

#include <QHostAddress>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QObject>
#include <QProcess>
#include <QtTest>

#include <csignal>

// Runs in a network namespace of its own, where there is a loopback and nothing else. The program
// hears what the product sends: the one's decoder checks the other's encoder.

namespace {

/// The program, started and listening.
class Listener
{
public:
    explicit Listener(const QStringList& arguments, int addresses)
    {
        process.setReadChannel(QProcess::StandardError);
        process.start(QStringLiteral(FORGE_LISTEN), arguments);
        while (!ready && process.waitForReadyRead(10000)) {
            announced += process.readAllStandardError();
            ready = announced.count("Listening at ") == addresses && announced.endsWith('\n');
        }
    }

    QJsonObject report()
    {
        if (!process.waitForFinished(20000)) {
            return {};
        }
        return QJsonDocument::fromJson(process.readAllStandardOutput()).object();
    }

    /// Ends the program as Ctrl+C does.
    void interrupt() { kill(static_cast<pid_t>(process.processId()), SIGINT); }

    QProcess process;
    QByteArray announced;
    bool ready = false;
};

/// The product's sender, whose broadcasts go to the loopback's broadcast address.
Talvis* newTalvis(QObject* parent)
{
    auto* const socket = new TalvisSocket(nullptr);
    socket->setInterfaceSource([] {
        return QVector<InterfaceRecord>{{QStringLiteral("eth0"),
                                         true,
                                         false,
                                         {{QHostAddress("127.0.0.1"), QHostAddress("255.0.0.0")}}}};
    });
    return new Talvis(socket, parent);
}

QJsonObject streamOf(const QJsonObject& report, const QString& controller, const QString& kind,
                     int port = -1)
{
    const QJsonArray streams = report["streams"].toArray();
    for (const QJsonValue& stream : streams) {
        if (stream["controller"].toString() == controller && stream["kind"].toString() == kind &&
            stream["port"].toInt(-1) == port) {
            return stream.toObject();
        }
    }
    return {};
}

} // namespace

class ForgeListenTest : public QObject
{
    Q_OBJECT
private slots:
    void framesOfEveryKindAreReported();
    void everythingThatTheProductSendsIsHeardUnchanged();
    void silenceAnswersOne();
    void junkAloneAnswersOne();
    void itEndsByItselfAfterTheSeconds();
    void aWrongCommandLineAnswersTwo_data();
    void aWrongCommandLineAnswersTwo();
    void helpIsPrinted();
    void withoutJsonATableIsPrinted();
};

void ForgeListenTest::framesOfEveryKindAreReported()
{
    Listener listener({"--bind", "0.0.0.0", "--json"}, 1);
    QVERIFY2(listener.ready, listener.announced.constData());
    QObject owner;
    Talvis* const talvis = newTalvis(&owner); // five syncs
    const QByteArray values = QByteArray::fromHex("00010203fdfeff");
    QVERIFY(talvis->sendDmxOut("127.0.0.1", 0, 0, values.constData(), 7));
    for (int i = 0; i < 3; ++i) {
        QVERIFY(talvis->sendPortOut("127.0.0.2", 0xFFFFFFFF, 1, 0, 7, 0, values.constData()));
    }
    QVERIFY(talvis->sendPortOut("127.0.0.2", 0xFFFFFFFF, 2, 0x34, 7, 0xFFF0, values.constData()));
    QVERIFY(talvis->broadcastDmxOut(9, 0, 0, QByteArray(512, 'x').constData(), 512));
    QUdpSocket stranger;
    stranger.writeDatagram("junk", QHostAddress("127.0.0.1"), TalvisSocket::kDestinationPort);
    listener.interrupt();
    const QJsonObject report = listener.report();
    QCOMPARE(listener.process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(listener.process.exitCode(), 0);

    QCOMPARE(report["frames"].toInt(), 6);
    QCOMPARE(report["syncs"].toInt(), 5);
    QCOMPARE(report["junk"].toObject()["total"].toInt(), 1);
    QCOMPARE(report["dropped"].toInt(-1), 0);
    QCOMPARE(report["streams"].toArray().size(), 5);

    const QJsonArray bytes = {0, 1, 2, 3, 253, 254, 255};
    const QJsonObject dmx = streamOf(report, "127.0.0.1", "dmx");
    QCOMPARE(dmx["values"].toArray(), bytes);
    QCOMPARE(dmx["universe"].toDouble(), 4294967295.0);
    QCOMPARE(dmx["source"].toString(), QStringLiteral("127.0.0.1"));
    QCOMPARE(dmx["sourcePort"].toInt(), int{talvis->socket()->localPort()});
    const QJsonObject first = streamOf(report, "127.0.0.2", "port", 1);
    QCOMPARE(first["frames"].toInt(), 3);
    QCOMPARE(first["bytes"].toInt(), 3 * 31);
    QVERIFY(first["jitterMs"].toObject()["greatest"].isDouble());
    const QJsonObject second = streamOf(report, "127.0.0.2", "port", 2);
    QCOMPARE(second["startCode"].toInt(), 0xFFF0);
    QCOMPARE(second["flags"].toInt(), 0x34);
    const QJsonObject toAll = streamOf(report, "127.255.255.255", "dmx");
    QCOMPARE(toAll["broadcast"].toBool(), true);
    QCOMPARE(toAll["universe"].toInt(), 9);
    QCOMPARE(toAll["values"].toArray().size(), 512);
    const QJsonObject sync = streamOf(report, "127.255.255.255", "sync");
    QCOMPARE(sync["frames"].toInt(), 5);
}

void ForgeListenTest::everythingThatTheProductSendsIsHeardUnchanged()
{
    Listener listener({"--bind", "127.0.0.1", "--bind", "127.0.0.2", "--json"}, 2);
    QVERIFY2(listener.ready, listener.announced.constData());
    QObject owner;
    Talvis* const talvis = newTalvis(&owner);
    QByteArray values(600, '\0');
    for (int i = 0; i < values.size(); ++i) {
        values[i] = static_cast<char>(i * 37 + 11);
    }
    const QHostAddress second("127.0.0.2");
    for (int length = 1; length <= 128; ++length) { // a port for each length
        QVERIFY(talvis->sendPortOut(second, 0xFFFFFFFF, static_cast<quint8>(length), 0,
                                    static_cast<quint32>(length * 4), 0, values.constData()));
    }
    QTest::ignoreMessage(QtDebugMsg, "Truncating: DMX data length exceed 512");
    QVERIFY(!talvis->sendDmxOut("127.0.0.1", 0, 0, values.constData(), 516));
    listener.interrupt();
    const QJsonObject report = listener.report();
    QCOMPARE(report["frames"].toInt(), 129);
    QCOMPARE(report["junk"].toObject()["total"].toInt(-1), 0);
    for (int length = 1; length <= 128; ++length) {
        const QJsonArray heard = streamOf(report, "127.0.0.2", "port", length)["values"].toArray();
        QCOMPARE(heard.size(), length * 4);
        for (int i = 0; i < heard.size(); ++i) {
            QCOMPARE(heard[i].toInt(), (i * 37 + 11) & 0xFF);
        }
    }
    QCOMPARE(streamOf(report, "127.0.0.1", "dmx")["values"].toArray().size(), 512);
}

void ForgeListenTest::silenceAnswersOne()
{
    Listener listener({"--json"}, 1);
    QVERIFY2(listener.ready, listener.announced.constData());
    QCOMPARE(listener.announced, QByteArray("Listening at 127.0.0.1 port 6038\n"));
    listener.interrupt();
    const QJsonObject report = listener.report();
    QCOMPARE(listener.process.exitCode(), 1);
    QCOMPARE(report["frames"].toInt(-1), 0);
}

void ForgeListenTest::junkAloneAnswersOne()
{
    Listener listener({"--json"}, 1);
    QVERIFY2(listener.ready, listener.announced.constData());
    QUdpSocket stranger;
    for (int length = 0; length < 64; ++length) {
        stranger.writeDatagram(QByteArray(length, '\x04'), QHostAddress("127.0.0.1"),
                               TalvisSocket::kDestinationPort);
    }
    listener.interrupt();
    const QJsonObject report = listener.report();
    QCOMPARE(listener.process.exitCode(), 1);
    QCOMPARE(report["junk"].toObject()["total"].toInt(), 64);
}

void ForgeListenTest::itEndsByItselfAfterTheSeconds()
{
    Listener listener({"--json", "--seconds", "0.3"}, 1);
    const QJsonObject report = listener.report();
    QCOMPARE(listener.process.exitStatus(), QProcess::NormalExit);
    QVERIFY(report["seconds"].toDouble() >= 0.3);
    QVERIFY(report["seconds"].toDouble() < 10.0);
}

void ForgeListenTest::aWrongCommandLineAnswersTwo_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("unknown option") << QStringList{"--frobnicate"};
    QTest::newRow("no address") << QStringList{"--bind", "nowhere"};
    QTest::newRow("no seconds") << QStringList{"--seconds", "never"};
    QTest::newRow("not ours") << QStringList{"--bind", "10.1.2.3"};
}

void ForgeListenTest::aWrongCommandLineAnswersTwo()
{
    QFETCH(const QStringList, arguments);
    QProcess process;
    process.start(QStringLiteral(FORGE_LISTEN), arguments);
    QVERIFY(process.waitForFinished(20000));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 2);
    QVERIFY(process.readAllStandardError().startsWith("forge-listen: "));
    QCOMPARE(process.readAllStandardOutput(), QByteArray());
}

void ForgeListenTest::helpIsPrinted()
{
    QProcess process;
    process.start(QStringLiteral(FORGE_LISTEN), {"--help"});
    QVERIFY(process.waitForFinished(20000));
    QCOMPARE(process.exitCode(), 0);
    QVERIFY(process.readAllStandardOutput().startsWith("Usage: forge-listen "));
}

void ForgeListenTest::withoutJsonATableIsPrinted()
{
    Listener listener({}, 1);
    QVERIFY2(listener.ready, listener.announced.constData());
    QObject owner;
    Talvis* const talvis = newTalvis(&owner);
    QVERIFY(talvis->sendPortOut("127.0.0.1", 0xFFFFFFFF, 1, 0, 3, 0, "abc"));
    listener.interrupt();
    QVERIFY(listener.process.waitForFinished(20000));
    QCOMPARE(listener.process.exitCode(), 0);
    const QByteArray table = listener.process.readAllStandardOutput();
    QVERIFY(table.startsWith("1 frames and 0 syncs heard in "));
    QVERIFY(table.contains("port 1"));
    QVERIFY(table.contains("616263"));
    QVERIFY(!table.contains('\x1b')); // not a terminal
}

QTEST_GUILESS_MAIN(ForgeListenTest)
#include "ForgeListenTest.moc"
