#include "effects/FrameDirectory.h"

#include "tests/effects/PictureStage.h"

#include <sys/stat.h>

class FrameDirectoryTest : public QObject
{
    Q_OBJECT
private slots:
    void listsFilesInNaturalOrder();
    void hasNoFramesWithoutFiles_data();
    void hasNoFramesWithoutFiles();
    void readsEachFrameAnew();
    void tellsOfAnUnreadableFileOnce();
};

void FrameDirectoryTest::listsFilesInNaturalOrder()
{
    QTemporaryDir dir;
    for (const char* const name : {"f10.png", "f2.png", "notes.txt", "F1.PNG", ".hidden"}) {
        QVERIFY(writeFile(dir.filePath(QString::fromLatin1(name)), "x"));
    }
    QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("f3.png")));
    QCOMPARE(mkfifo(dir.filePath(QStringLiteral("f4.png")).toLocal8Bit().constData(), 0600), 0);
    FrameDirectory frames;
    QVERIFY(frames.open(dir.path()));
    QCOMPARE(frames.names().join(QLatin1Char(' ')),
             QStringLiteral("F1.PNG f2.png f10.png notes.txt"));
    QCOMPARE(frames.count(), 4);
    QVERIFY(frames.open(dir.path() + QLatin1Char('/')));
    QCOMPARE(frames.count(), 4);
}

void FrameDirectoryTest::hasNoFramesWithoutFiles_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("null") << QString();
    QTest::newRow("empty is not the working directory") << QStringLiteral("");
    QTest::newRow("missing") << QStringLiteral("/nowhere/at/all");
    QTest::newRow("a file") << QStringLiteral(__FILE__);
    QTest::newRow("no path") << QString(QChar(0));
}

void FrameDirectoryTest::hasNoFramesWithoutFiles()
{
    QFETCH(const QString, path);
    QTemporaryDir dir;
    QVERIFY(writeFile(dir.filePath(QStringLiteral("f")), "x"));
    const QString before = QDir::currentPath();
    QDir::setCurrent(dir.path());
    FrameDirectory frames;
    QVERIFY(frames.open(dir.path()));
    const LogCapture log;
    QVERIFY(!frames.open(path));
    QDir::setCurrent(before);
    QCOMPARE(frames.count(), 0);
    QVERIFY(LogCapture::lines().isEmpty());
}

void FrameDirectoryTest::readsEachFrameAnew()
{
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("1.png"));
    QVERIFY(plainPicture(2, 2, 0xFFFF0000U).save(file));
    FrameDirectory frames;
    QVERIFY(frames.open(dir.path()));
    QCOMPARE(frames.read(0).pixel(1, 1), 0xFFFF0000U);
    QVERIFY(plainPicture(3, 3, 0xFF00FF00U).save(file));
    QCOMPARE(frames.read(0).pixel(2, 2), 0xFF00FF00U);
}

void FrameDirectoryTest::tellsOfAnUnreadableFileOnce()
{
    QTemporaryDir dir;
    const QString text = dir.filePath(QStringLiteral("1.txt"));
    const QString gone = dir.filePath(QStringLiteral("2.png"));
    QVERIFY(writeFile(text, "text"));
    QVERIFY(plainPicture(2, 2, 0xFFFF0000U).save(gone));
    FrameDirectory frames;
    QVERIFY(frames.open(dir.path()));
    QVERIFY(QDir(dir.path()).removeRecursively()); // while it plays
    QVERIFY(QDir().mkpath(dir.path()));
    QVERIFY(writeFile(text, "text"));
    const LogCapture log;
    for (int i = 0; i < 3; ++i) {
        QVERIFY(frames.read(0).isNull());
        QVERIFY(frames.read(1).isNull());
    }
    QCOMPARE(
        LogCapture::lines(),
        QStringList(
            {QStringLiteral("Animation frame %1 can't be read: it is no picture").arg(text),
             QStringLiteral("Animation frame %1 can't be read: there is no such file").arg(gone)}));
    QVERIFY(frames.open(dir.path())); // a new loading tells anew
    QVERIFY(frames.read(0).isNull());
    QCOMPARE(LogCapture::lines().size(), 3);
}

QTEST_GUILESS_MAIN(FrameDirectoryTest)
#include "FrameDirectoryTest.moc"
