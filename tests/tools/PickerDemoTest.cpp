#include <QByteArray>
#include <QDir>
#include <QImage>
#include <QObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {

struct Run
{
    int code = -1;
    QByteArray output;
};

Run pickerDemo(const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral(FORGE_PICKER_DEMO), arguments);
    Run run;
    if (process.waitForFinished(120000) && process.exitStatus() == QProcess::NormalExit) {
        run.code = process.exitCode();
        run.output = process.readAllStandardOutput();
    }
    return run;
}

} // namespace

/// The built program.
class PickerDemoTest : public QObject
{
    Q_OBJECT
private slots:
    void saysWhatItDoes();
    void theGalleryHoldsEveryPage();
    void anUnwritableGalleryIsReported();
};

void PickerDemoTest::saysWhatItDoes()
{
    const Run run = pickerDemo({QStringLiteral("--help")});
    QCOMPARE(run.code, 0);
    QVERIFY(run.output.contains("Opens the colour picker"));
}

void PickerDemoTest::theGalleryHoldsEveryPage()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("deep/gallery"));
    QCOMPARE(pickerDemo({QStringLiteral("--gallery"), path}).code, 0);
    const QDir gallery(path);
    QCOMPARE(gallery.entryList(QDir::Files, QDir::Name),
             QStringList({"picker-channels.png", "picker-filter.png", "picker-rgb.png",
                          "picker-swatch-menu.png", "picker-tree-menu.png", "picker-white.png"}));
    // No two alike: each shows what it is named for.
    QList<QImage> pictures;
    for (const char* const name :
         {"picker-channels.png", "picker-filter.png", "picker-rgb.png", "picker-white.png"}) {
        const QImage picture(gallery.filePath(QString::fromLatin1(name)));
        QVERIFY2(picture.width() >= 800, name);
        QVERIFY2(!pictures.contains(picture), name);
        pictures.append(picture);
    }
}

void PickerDemoTest::anUnwritableGalleryIsReported()
{
    QCOMPARE(pickerDemo({QStringLiteral("--gallery"), QStringLiteral("/dev/null/gallery")}).code,
             1);
}

QTEST_GUILESS_MAIN(PickerDemoTest)
#include "PickerDemoTest.moc"
