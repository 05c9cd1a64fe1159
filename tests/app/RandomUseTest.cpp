#include "tests/app/RandomUser.h"

#include <QElapsedTimer>
#include <QObject>
#include <QtTest>

#include <atomic>
#include <ctime>
#include <sys/time.h>

namespace {

std::atomic<long long> simulatedMs{0};

} // namespace

/// The wall clock of the program, in place of the system's: it runs ahead by what a user's pauses
/// make up. Timers go by another one.
extern "C" int gettimeofday(struct timeval* time, void* /*zone*/) noexcept
{
    struct timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    const long long us = now.tv_nsec / 1000 + simulatedMs.load() % 1000 * 1000;
    time->tv_sec = now.tv_sec + simulatedMs.load() / 1000 + us / 1000000;
    time->tv_usec = us % 1000000;
    return 0;
}

/// Random input of an hour, taken together, and what must hold meanwhile.
class RandomUseTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanupTestCase();
    void theClockRunsAhead();
    void nothingBreaksTheProgram_data();
    void nothingBreaksTheProgram();

private:
    static constexpr int kEvents = 1500; // of each row
    static constexpr int kRows = 5;
    static constexpr long long kRowMs = 3600000 / kRows; // at least

    QTemporaryDir m_dir;
    std::unique_ptr<RandomFiles> m_files;
};

void RandomUseTest::initTestCase()
{
    qSetGlobalQHashSeed(0); // a seed is to make the same choices again
    WindowBench::prepare();
    EventLog::instance();
    QVERIFY(m_dir.isValid());
    QVERIFY(QDir::setCurrent(m_dir.path())); // no name that is typed leads out of it
    m_files = std::make_unique<RandomFiles>(m_dir.path());
    QVERIFY(m_files->make());
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
        if (type == QtFatalMsg) {
            EventLog::instance().add(text);
            std::abort();
        }
    });
}

void RandomUseTest::cleanupTestCase()
{
    qInstallMessageHandler(nullptr);
    m_files->unseal();
    QVERIFY(QDir::setCurrent(QDir::rootPath()));
}

void RandomUseTest::theClockRunsAhead()
{
    const QDateTime before = QDateTime::currentDateTimeUtc();
    simulatedMs += 3600000;
    QVERIFY(before.msecsTo(QDateTime::currentDateTimeUtc()) >= 3600000);
}

void RandomUseTest::nothingBreaksTheProgram_data()
{
    QTest::addColumn<unsigned>("seed");
    const QList<unsigned> seeds = qEnvironmentVariableIsSet("FORGE_SEED")
                                      ? QList<unsigned>{qEnvironmentVariable("FORGE_SEED").toUInt()}
                                      : QList<unsigned>{1, 2, 3, 4, 5};
    for (const unsigned seed : seeds) {
        QTest::newRow(qPrintable(QStringLiteral("seed %1").arg(seed))) << seed;
    }
}

void RandomUseTest::nothingBreaksTheProgram()
{
    QFETCH(const unsigned, seed);
    WindowBench bench;
    bench.dialogs.stop();
    const long long before = simulatedMs;
    RandomUser user(seed, &bench, *m_files, [](int ms) { simulatedMs += ms; });
    user.use(kEvents);
    QVERIFY2(user.complaint().isEmpty(), qPrintable(user.complaint()));
    QVERIFY(user.dialogsMet() > 20);
    QVERIFY(simulatedMs - before >= kRowMs);
}

QTEST_MAIN(RandomUseTest)
#include "RandomUseTest.moc"
