#include "color/VelaColorLibrary.h"
#include "color/VelaColorLibraryItem.h"

#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QObject>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

#include <cstdio>
#include <cstring>

namespace {

using Library = VelaColorLibrary;

// What this executable does instead of testing, by its first argument.
constexpr char kChurn[] = "--churn";
constexpr char kVisit[] = "--visit";
constexpr int kSwatches = 300;

const QString kMine = QStringLiteral("Mine");

QStringList namesOfLists(const Library& library)
{
    QStringList names;
    for (int row = 0; row < library.rowCount(); ++row) {
        names << library.index(row, 0).data().toString();
    }
    return names;
}

/// The first swatch's name is the number of the change; one save for each. Prints each number once
/// it is saved, until the process is killed.
int churn()
{
    Library library;
    library.load();
    if (!library.listIndex(kMine).isValid()) {
        const QTemporaryDir dir;
        QFile file(dir.filePath(QStringLiteral("first.velacolors")));
        if (!file.open(QIODevice::WriteOnly)) {
            return 1;
        }
        file.write("<ColorLibraryList><ColorLibrary name=\"Mine\" isUserLibrary=\"1\">");
        for (int i = 0; i < kSwatches; ++i) {
            file.write("<Color name=\"0\" uid=\"u" + QByteArray::number(i) +
                       "\" value=\"#ff0000\"/>");
        }
        file.write("</ColorLibrary></ColorLibraryList>");
        file.close();
        library.importFile(file.fileName());
    }
    const QModelIndex first = library.index(0, 0, library.listIndex(kMine));
    for (qint64 number = first.data().toLongLong();;) {
        std::printf("%lld\n", static_cast<long long>(number));
        std::fflush(stdout);
        ++number;
        if (!library.setData(first, QString::number(number), Qt::EditRole) || library.isDirty()) {
            return 2;
        }
    }
}

/// A run of the program: the picker starts, colours are asked for by value, swatches are made.
int visit(const QString& name)
{
    Library* const library = Library::instance();
    library->startForPicker();
    library->colorForUid(VelaColor(Qt::red).toString());
    library->insertColor(Qt::blue, name, QString(), kMine, QString());
    library->createColorList(QStringLiteral("Empty"), true);
    const QStringList names = namesOfLists(*library);
    for (const QString& one : names) {
        std::printf("%s: %d\n", qPrintable(one), library->rowCount(library->listIndex(one)));
    }
    return 0;
}

class Child
{
public:
    Child(const QString& home, const QStringList& arguments)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_DATA_HOME"), home);
        m_process.setProcessEnvironment(environment);
        m_process.setStandardErrorFile(QProcess::nullDevice());
        m_process.start(QCoreApplication::applicationFilePath(), arguments);
    }
    QProcess* operator->() { return &m_process; }
    /// The last whole line, as a number; -1 for none.
    static qint64 lastNumber(const QByteArray& output)
    {
        const QByteArray whole = output.left(output.lastIndexOf('\n'));
        const QByteArray last = whole.mid(whole.lastIndexOf('\n') + 1);
        return last.isEmpty() ? -1 : last.toLongLong();
    }

private:
    QProcess m_process;
};

} // namespace

/// The user's swatches outlive whatever ends the program.
class LibrarySurvivalTest : public QObject
{
    Q_OBJECT
private slots:
    void aKillLeavesTheOldFileOrTheNew();
    void listsDoNotMultiplyFromRunToRun();
};

void LibrarySurvivalTest::aKillLeavesTheOldFileOrTheNew()
{
    constexpr int kKills = 60;
    constexpr int kMostSaves = 4;  // until the kill is due
    constexpr int kLongestMs = 10; // from then on
    const QTemporaryDir home;
    const QString file = home.filePath(QStringLiteral("Ostrand Halden/userColors.xml"));
    QRandomGenerator random(20200317);
    qint64 changes = 0;
    qint64 awaited = 0;
    for (int kill = 0; kill < kKills; ++kill) {
        Child child(home.path(), {QString::fromLatin1(kChurn)});
        QVERIFY(child->waitForStarted());
        const int saves = 1 + random.bounded(kMostSaves);
        awaited += saves;
        QByteArray output;
        while (output.count('\n') <= saves) { // the first line comes before a save
            QVERIFY(child->waitForReadyRead());
            output += child->readAllStandardOutput();
        }
        QElapsedTimer timer;
        const qint64 momentNs = random.bounded(kLongestMs * 1000) * qint64(1000);
        timer.start();
        while (timer.nsecsElapsed() < momentNs) {
            child->waitForReadyRead(1);
        }
        QCOMPARE(int(child->state()), int(QProcess::Running)); // nothing failed until here
        child->kill();
        QVERIFY(child->waitForFinished());
        QCOMPARE(int(child->exitStatus()), int(QProcess::CrashExit));
        output += child->readAllStandardOutput();
        const qint64 told = Child::lastNumber(output);
        QVERIFY(told >= 0);

        Library library;
        QString error;
        QVERIFY2(library.load(file, &error), qPrintable(error));
        QCOMPARE(error, QString());
        QCOMPARE(namesOfLists(library),
                 QStringList({Library::explicitListName(), Library::projectListName(), kMine}));
        const QModelIndex list = library.listIndex(kMine);
        QCOMPARE(library.rowCount(list), kSwatches);
        const qint64 saved = library.index(0, 0, list).data().toLongLong();
        QVERIFY2(saved == told || saved == told + 1,
                 qPrintable(QStringLiteral("%1 told, %2 saved").arg(told).arg(saved)));
        for (int row = 0; row < kSwatches; ++row) {
            QVERIFY(library.itemAt(library.index(row, 0, list))->color() == VelaColor(Qt::red));
        }
        QVERIFY(saved >= changes);
        changes = saved;
    }
    QVERIFY(changes >= awaited);
}

void LibrarySurvivalTest::listsDoNotMultiplyFromRunToRun()
{
    const QTemporaryDir home;
    for (int run = 1; run <= 5; ++run) {
        Child child(home.path(), {QString::fromLatin1(kVisit), QString::number(run)});
        QVERIFY(child->waitForFinished());
        QCOMPARE(child->exitCode(), 0);
        QStringList told = QString::fromLocal8Bit(child->readAllStandardOutput())
                               .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        told.sort();
        QCOMPARE(
            told,
            QStringList({QStringLiteral("Empty: 0"), QStringLiteral("Explicit Colors: 1"),
                         QStringLiteral("Halden Swatches: 32"), QStringLiteral("Mine: %1").arg(run),
                         QStringLiteral("Project Swatches: 0")}));
    }
}

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    if (argc > 1 && std::strcmp(argv[1], kChurn) == 0) {
        return churn();
    }
    if (argc > 2 && std::strcmp(argv[1], kVisit) == 0) {
        return visit(QString::fromLocal8Bit(argv[2]));
    }
    LibrarySurvivalTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "LibrarySurvivalTest.moc"
