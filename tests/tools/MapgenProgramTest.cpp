#include "MapText.h"

#include <QDir>
#include <QFile>
#include <QObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {

struct Run
{
    int code = -1;
    QByteArray errors;
};

Run mapgen(const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral(FORGE_MAPGEN), arguments);
    Run run;
    if (process.waitForFinished(120000) && process.exitStatus() == QProcess::NormalExit) {
        run.code = process.exitCode();
        run.errors = process.readAllStandardError();
    }
    return run;
}

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class MapgenProgramTest : public QObject
{
    Q_OBJECT
private slots:
    void twoRunsWriteTheSameFiles();
    void theOptionsReachTheMap();
    void theExamplesAreWrittenWithTheirFolders();
    void badUsageIsRefused_data();
    void badUsageIsRefused();
    void anUnwritablePlaceIsReported();
};

void MapgenProgramTest::twoRunsWriteTheSameFiles()
{
    QTemporaryDir folder;
    // The map names its plan, so both runs write to the same path.
    const QString path = folder.filePath(QStringLiteral("a/wall"));
    const QStringList arguments = {QStringLiteral("grid"), QStringLiteral("--lights"),
                                   QStringLiteral("700"), QStringLiteral("--out"), path};
    QVector<QByteArray> runs;
    for (int i = 0; i < 2; ++i) {
        const Run run = mapgen(arguments);
        QVERIFY2(run.code == 0, run.errors.constData());
        for (const char* suffix : {".map", ".png", ".sho"}) {
            runs.append(contents(path + QLatin1String(suffix)));
            QVERIFY(!runs.last().isEmpty());
        }
    }
    QCOMPARE(runs.mid(0, 3), runs.mid(3, 3));
    QCOMPARE(QDir(folder.filePath(QStringLiteral("a"))).entryList(QDir::Files).size(), 3);
}

void MapgenProgramTest::theOptionsReachTheMap()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("wall"));
    const Run run =
        mapgen(QStringLiteral(
                   "grid --lights 100 --rows 4 --per-port 20 --ports 2 --address 127.0.0.9 "
                   "--version 3 --post-sync --layers 4 --alpha 0.25 --seed 5 --short-keys --out")
                   .split(QLatin1Char(' '))
               << path);
    QVERIFY2(run.code == 0, run.errors.constData());
    const QByteArray text = contents(path + QStringLiteral(".map"));
    QVERIFY(text.contains("<postsync>1</postsync>\n<c><t>2</t>"));
    const MapText map(text);
    QCOMPARE(map.imageFile, path + QStringLiteral(".png"));
    QCOMPARE(map.lights.size(), 100);
    QCOMPARE(map.controllers.size(), 3); // 40, 40 and 20 lights
    for (const MapText::Controller& controller : map.controllers) {
        QCOMPARE(controller.version, 3);
        QVERIFY(controller.lights.size() <= 40);
        QVERIFY(controller.address >= QLatin1String("127.0.0.10") ||
                controller.address == QLatin1String("127.0.0.9"));
    }
    const QByteArray show = contents(path + QStringLiteral(".sho"));
    QCOMPARE(show.count("<type>Fixed Color</type>"), 2);
    QCOMPARE(show.count("<type>Cross Fade</type>"), 2);
    QCOMPARE(show.count("#4000"), 5); // one fixed colour and two cross fades at a quarter
}

void MapgenProgramTest::theExamplesAreWrittenWithTheirFolders()
{
    QTemporaryDir folder;
    const Run run =
        mapgen({QStringLiteral("examples"), QStringLiteral("--out"), folder.filePath(QString())});
    QVERIFY2(run.code == 0, run.errors.constData());
    for (const char* file :
         {"facade/all-effects.sho", "facade/hills.png", "facade/gull/gull-12.png",
          "ring/rosette.png", "ring/wheel/wheel-1.png"}) {
        QVERIFY2(QFileInfo(folder.filePath(QLatin1String(file))).size() > 0, file);
    }
    for (const char* name : {"facade", "mixed", "ring"}) {
        for (const char* suffix : {".map", ".png", ".sho"}) {
            const QString file =
                QStringLiteral("%1/%1%2").arg(QLatin1String(name), QLatin1String(suffix));
            QVERIFY2(QFileInfo(folder.filePath(file)).size() > 0, qPrintable(file));
        }
    }
}

void MapgenProgramTest::badUsageIsRefused_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::newRow("nothing") << QString();
    QTest::newRow("no place") << QStringLiteral("grid");
    QTest::newRow("no task") << QStringLiteral("--out x");
    QTest::newRow("another task") << QStringLiteral("circle --out x");
    QTest::newRow("two tasks") << QStringLiteral("grid examples --out x");
    QTest::newRow("not a number") << QStringLiteral("grid --lights many --out x");
    QTest::newRow("out of range") << QStringLiteral("grid --lights 60001 --out x");
    QTest::newRow("a negative seed") << QStringLiteral("grid --seed -1 --out x");
}

void MapgenProgramTest::badUsageIsRefused()
{
    QFETCH(const QString, arguments);
    const Run run = mapgen(arguments.split(QLatin1Char(' '), Qt::SkipEmptyParts));
    QCOMPARE(run.code, 2);
    QVERIFY(run.errors.startsWith("forge-mapgen: "));
    QVERIFY(!QFileInfo::exists(QStringLiteral("x.map")));
}

void MapgenProgramTest::anUnwritablePlaceIsReported()
{
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("file")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    const Run run = mapgen({QStringLiteral("grid"), QStringLiteral("--lights"), QStringLiteral("2"),
                            QStringLiteral("--out"), file.fileName() + QStringLiteral("/wall")});
    QCOMPARE(run.code, 1);
    QVERIFY(run.errors.contains(file.fileName().toUtf8()));
}

QTEST_GUILESS_MAIN(MapgenProgramTest)
#include "MapgenProgramTest.moc"
