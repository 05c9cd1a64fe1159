#include "color/VelaColorLibrary.h"
#include "color/VelaColorLibraryItem.h"

#include <QDir>
#include <QFile>
#include <QObject>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

namespace {

using Library = VelaColorLibrary;

QString folder()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/Presets");
}

/// A preset file, of one list with one swatch unless it has another text.
void writePreset(const char* file, const char* list, bool isUsers, const QByteArray& text = {})
{
    QFile out(folder() + QLatin1Char('/') + QLatin1String(file));
    QVERIFY(out.open(QIODevice::WriteOnly));
    out.write(text.isNull() ? "<ColorLibraryList><ColorLibrary name=\"" + QByteArray(list) +
                                  "\" isUserLibrary=\"" + (isUsers ? "1" : "0") +
                                  "\"><Color name=\"x\" uid=\"" + file +
                                  "\" value=\"#ff0000\"/></ColorLibrary></ColorLibraryList>"
                            : text);
}

/// Behind the two that each library has.
QStringList furtherLists(const Library& library)
{
    QStringList names;
    for (int row = 2; row < library.rowCount(); ++row) {
        names << library.index(row, 0).data().toString();
    }
    return names;
}

} // namespace

/// Preset files of any kind, in a folder beside this test.
class PresetFilesTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();
    void theyAreReadInTheOrderOfTheirNames();
    void onlyTheirSuffixIsRead();
    void aBrokenOneIsPassedOver();
    void withoutAFolderThereAreNone();
    void listsOfTheUsersDoNotMultiplyFromRunToRun();

private:
    QTemporaryDir m_home;
};

void PresetFilesTest::initTestCase()
{
    QVERIFY(qputenv("XDG_DATA_HOME", QFile::encodeName(m_home.path()))); // nobody's own swatches
    QVERIFY(Library::userFolder().startsWith(m_home.path()));
}

void PresetFilesTest::init()
{
    cleanup();
    QVERIFY(QDir().mkpath(folder()));
}

void PresetFilesTest::cleanup()
{
    QVERIFY(QDir(folder()).removeRecursively());
    QDir(Library::userFolder()).removeRecursively();
}

void PresetFilesTest::theyAreReadInTheOrderOfTheirNames()
{
    writePreset("c.velacolors", "First", false);
    writePreset("a.velacolors", "Third", false);
    writePreset("b.velacolors", "Third", false);
    for (const char* const file : {"a", "b", "c"}) {
        const QString path = QStringLiteral("%1/%2.velacolors").arg(folder(), QLatin1String(file));
        QTest::ignoreMessage(QtDebugMsg, qPrintable(QStringLiteral("Filepath: ") + path));
    }
    Library library;
    library.loadPresets();
    QCOMPARE(furtherLists(library), QStringList({"Third", "Third 2", "First"}));
}

void PresetFilesTest::onlyTheirSuffixIsRead()
{
    writePreset("a.velacolors", "Read", false);
    writePreset("b.xml", "No preset", false);
    writePreset("c.velacolors.bak", "No preset", false);
    QVERIFY(QDir(folder()).mkdir(QStringLiteral("folder.velacolors")));
    Library library;
    library.loadPresets();
    QCOMPARE(furtherLists(library), QStringList{"Read"});
}

void PresetFilesTest::aBrokenOneIsPassedOver()
{
    writePreset("a.velacolors", "", false, "<ColorLibraryList><ColorLibrary name=\"Half");
    writePreset("b.velacolors", "Whole", false);
    const QString path = folder() + QStringLiteral("/a.velacolors");
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(QRegularExpression::escape(path) +
                                                        QStringLiteral(" is no library .+")));
    Library library;
    library.loadPresets();
    QCOMPARE(furtherLists(library), QStringList{"Whole"});
    QVERIFY(!QFile::exists(path + QStringLiteral(".bak"))); // that is for the user's file
}

void PresetFilesTest::withoutAFolderThereAreNone()
{
    QVERIFY(QDir(folder()).removeRecursively());
    Library library;
    library.loadPresets();
    QVERIFY(furtherLists(library).isEmpty());
}

/// An export of the user's that was put among the presets.
void PresetFilesTest::listsOfTheUsersDoNotMultiplyFromRunToRun()
{
    writePreset("mine.velacolors", "Mine", true);
    for (int run = 0; run < 3; ++run) {
        Library library;
        library.startForPicker();
        library.insertColor(Qt::red, QStringLiteral("R"), QString(), Library::explicitListName(),
                            QString());
        QVERIFY(!library.isDirty());
        QCOMPARE(furtherLists(library), QStringList({"Mine", "Halden Swatches"}));
        QVERIFY(!library.itemAt(library.listIndex(QStringLiteral("Mine")))->isUserLibrary());
    }
    QFile file(Library::userFile());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(!file.readAll().contains("Mine"));
}

QTEST_MAIN(PresetFilesTest)
#include "PresetFilesTest.moc"
