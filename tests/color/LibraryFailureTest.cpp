#include "color/VelaColorLibrary.h"
#include "color/VelaColorLibraryItem.h"

#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QObject>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>
#include <sys/fsuid.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using Library = VelaColorLibrary;

/// As long as it lives no file of the process grows: what a full disk does to a writer.
class FullDisk
{
public:
    FullDisk()
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit none = m_before;
        none.rlim_cur = 0;
        setrlimit(RLIMIT_FSIZE, &none);
    }
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &m_before); }
    Q_DISABLE_COPY(FullDisk)

private:
    rlimit m_before = {};
};

/// As long as it lives root's files are as closed to the process as to anybody.
class PlainUser
{
public:
    PlainUser()
        : m_before(geteuid())
    {
        if (m_before == 0) {
            setfsuid(65534);
        }
    }
    ~PlainUser() { setfsuid(m_before); }
    Q_DISABLE_COPY(PlainUser)

private:
    uid_t m_before;
};

bool writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString kept()
{
    return Library::userFile() + QStringLiteral(".bak");
}

/// A document of one list of the user's; each value is a swatch named after its place.
QByteArray listOf(const QList<QByteArray>& values)
{
    QByteArray text = "<ColorLibraryList><ColorLibrary name=\"Mine\" isUserLibrary=\"1\">";
    for (int i = 0; i < values.size(); ++i) {
        const QByteArray place = QByteArray::number(i);
        text += "<Color name=\"s" + place + "\" uid=\"u" + place + "\" value=\"" + values.at(i) +
                "\"/>";
    }
    return text + "</ColorLibrary></ColorLibraryList>";
}

void addSwatch(Library* library, const char* name)
{
    library->insertColor(Qt::red, QString::fromLatin1(name), QString(), QStringLiteral("Mine"),
                         QString());
}

void expectLine(const QString& file, const QString& reason)
{
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(QStringLiteral("^%1%2").arg(
                                         QRegularExpression::escape(file), reason)));
}

void expectFailedSave()
{
    expectLine(Library::userFile(), QStringLiteral(" can't be written: .+"));
}

int linesAboutValues = 0;

void countLines(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& text)
{
    linesAboutValues += text.contains(QStringLiteral("values that are no color")) ? 1 : 0;
}

} // namespace

/// Full disks, closed folders and files of any content: nothing that the user has is lost.
class LibraryFailureTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();

    void aFullDiskLeavesTheFile();
    void aFolderThatCantBeMadeKeepsTheLibraryDirty();
    void aFolderThatCantBeWrittenLeavesTheFile();
    void whatWaitsIsSavedAtTheNextLoad();
    void anExportThatFailsTellsTheFile();
    void valuesThatAreNoColorsAreToldOnce();
    void filesWithSuchValuesAreKeptBeside();
    void swatchesWithoutAColorAreNothingToTell();
    void aFileThatCantBeReadIsKeptBeside();
    void hostileFilesAreRefused_data();
    void hostileFilesAreRefused();
    void aPipeIsNotOpened();
    void wrongsOfAShowNameTheShow();

private:
    QTemporaryDir m_home;
};

void LibraryFailureTest::initTestCase()
{
    QVERIFY(qputenv("XDG_DATA_HOME", QFile::encodeName(m_home.path()))); // nobody's own swatches
    QVERIFY(Library::userFolder().startsWith(m_home.path()));
    QCOMPARE(chmod(QFile::encodeName(m_home.path()).constData(), 0755), 0);
}

void LibraryFailureTest::init()
{
    cleanup();
    QVERIFY(QDir().mkpath(Library::userFolder()));
}

void LibraryFailureTest::cleanup()
{
    chmod(QFile::encodeName(Library::userFolder()).constData(), 0755);
    QDir(Library::userFolder()).removeRecursively();
    QFile::remove(Library::userFolder());
}

void LibraryFailureTest::aFullDiskLeavesTheFile()
{
    Library library;
    library.load();
    addSwatch(&library, "First");
    const QByteArray before = contentOf(Library::userFile());
    QVERIFY(before.contains("First"));
    expectFailedSave();
    {
        const FullDisk full;
        addSwatch(&library, "Second");
    }
    QVERIFY(library.isDirty());
    QCOMPARE(contentOf(Library::userFile()), before);
    QCOMPARE(QDir(Library::userFolder()).entryList(QDir::Files),
             QStringList(QStringLiteral("userColors.xml"))); // no half file beside it
    QVERIFY(library.save());
    QVERIFY(!library.isDirty());
    QVERIFY(contentOf(Library::userFile()).contains("Second"));
}

void LibraryFailureTest::aFolderThatCantBeMadeKeepsTheLibraryDirty()
{
    Library library;
    library.load();
    QVERIFY(QDir(Library::userFolder()).removeRecursively());
    QVERIFY(writeFile(Library::userFolder(), "a file"));
    expectFailedSave();
    addSwatch(&library, "First");
    QVERIFY(library.isDirty());
    QCOMPARE(contentOf(Library::userFolder()), QByteArray("a file"));
    QVERIFY(QFile::remove(Library::userFolder()));
    QVERIFY(library.save()); // makes it
    QVERIFY(!library.isDirty());
}

void LibraryFailureTest::aFolderThatCantBeWrittenLeavesTheFile()
{
    Library library;
    library.load();
    addSwatch(&library, "First");
    const QByteArray before = contentOf(Library::userFile());
    QCOMPARE(chmod(QFile::encodeName(Library::userFolder()).constData(), 0555), 0);
    expectFailedSave();
    {
        const PlainUser user;
        addSwatch(&library, "Second");
    }
    QVERIFY(library.isDirty());
    QCOMPARE(contentOf(Library::userFile()), before);
    QCOMPARE(chmod(QFile::encodeName(Library::userFolder()).constData(), 0755), 0);
    QVERIFY(library.save());
    QVERIFY(contentOf(Library::userFile()).contains("Second"));
}

void LibraryFailureTest::whatWaitsIsSavedAtTheNextLoad()
{
    Library library;
    library.load();
    {
        const FullDisk full;
        addSwatch(&library, "Waits");
    }
    QVERIFY(library.isDirty());
    const QTemporaryDir dir;
    const QString other = dir.filePath(QStringLiteral("other.velacolors"));
    QVERIFY(writeFile(other, listOf({"#ff0000"})));
    QVERIFY(library.load(other));
    QVERIFY(!library.isDirty());
    QVERIFY(contentOf(Library::userFile()).contains("Waits"));
}

void LibraryFailureTest::anExportThatFailsTellsTheFile()
{
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("out.velacolors"));
    QVERIFY(writeFile(path, "of old"));
    Library library;
    addSwatch(&library, "First");
    expectLine(path, QStringLiteral(" can't be written: .+"));
    {
        const FullDisk full;
        QVERIFY(!library.exportColors({library.listIndex(QStringLiteral("Mine"))}, path));
    }
    QCOMPARE(contentOf(path), QByteArray("of old"));
}

void LibraryFailureTest::valuesThatAreNoColorsAreToldOnce()
{
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("bad.velacolors"));
    QVERIFY(writeFile(path, listOf({"#ff0000", "nonsense", "aYxy;1;0", "#00ff00", "x"})));
    Library library;
    expectLine(path, QStringLiteral(": values that are no color: 3, the first \"nonsense\" of "
                                    "\"s1\"$"));
    QVERIFY(library.importFile(path));
    const QModelIndex list = library.listIndex(QStringLiteral("Mine"));
    QCOMPARE(library.rowCount(list), 5); // they are entered, without a colour
    QVERIFY(!library.itemAt(library.index(1, 0, list))->color().isValid());
    QVERIFY(library.itemAt(library.index(3, 0, list))->color() == VelaColor(Qt::green));
    linesAboutValues = 0;
    const QtMessageHandler handler = qInstallMessageHandler(countLines);
    library.importFile(path);
    qInstallMessageHandler(handler);
    QCOMPARE(linesAboutValues, 1);
}

void LibraryFailureTest::filesWithSuchValuesAreKeptBeside()
{
    const QByteArray text = listOf({"#ff0000", "of a later version;1"});
    QVERIFY(writeFile(Library::userFile(), text));
    {
        Library library;
        QVERIFY(library.load());
        addSwatch(&library, "New");
    }
    QVERIFY(!contentOf(Library::userFile()).contains("later version"));
    QCOMPARE(contentOf(kept()), text);
    Library library; // what was saved has nothing wrong, and so doesn't replace what is kept
    QVERIFY(library.load());
    addSwatch(&library, "Newer");
    QCOMPARE(contentOf(kept()), text);
}

void LibraryFailureTest::swatchesWithoutAColorAreNothingToTell()
{
    QVERIFY(writeFile(Library::userFile(), listOf({"", "#ff0000"})));
    linesAboutValues = 0;
    const QtMessageHandler handler = qInstallMessageHandler(countLines);
    Library library;
    library.load();
    qInstallMessageHandler(handler);
    QCOMPARE(linesAboutValues, 0);
    QCOMPARE(library.rowCount(library.listIndex(QStringLiteral("Mine"))), 2);
    QVERIFY(!QFile::exists(kept()));
}

void LibraryFailureTest::aFileThatCantBeReadIsKeptBeside()
{
    const QByteArray text = listOf({"#ff0000"});
    QVERIFY(writeFile(Library::userFile(), text));
    QCOMPARE(chmod(QFile::encodeName(Library::userFile()).constData(), 0), 0);
    QCOMPARE(chmod(QFile::encodeName(Library::userFolder()).constData(), 0777), 0);
    Library library;
    QString error;
    expectLine(Library::userFile(), QStringLiteral(" can't be read: .+"));
    {
        const PlainUser user;
        QVERIFY(!library.load(QString(), &error));
    }
    QVERIFY(error.contains(Library::userFile()));
    addSwatch(&library, "New");
    QVERIFY(contentOf(Library::userFile()).contains("New"));
    chmod(QFile::encodeName(kept()).constData(), 0644);
    QCOMPARE(contentOf(kept()), text);
}

void LibraryFailureTest::hostileFilesAreRefused_data()
{
    QTest::addColumn<QByteArray>("content");
    const QByteArray list = listOf({"#ff0000"});
    QTest::newRow("nested for ever") << QByteArray("<a>").repeated(2000000);
    QTest::newRow("nested and closed") << QByteArray("<ColorLibrary>").repeated(200000) +
                                              QByteArray("</ColorLibrary>").repeated(200000);
    QTest::newRow("zeros") << QByteArray(100000, '\0');
    QTest::newRow("cut in a character") << list.left(60) + "\xC3";
    QTest::newRow("twice") << list + list;
}

void LibraryFailureTest::hostileFilesAreRefused()
{
    QFETCH(const QByteArray, content);
    QVERIFY(writeFile(Library::userFile(), content));
    Library library;
    expectLine(Library::userFile(), QStringLiteral(" is no library of colors: .+"));
    QVERIFY(!library.load());
    QCOMPARE(library.rowCount(), 2);
    addSwatch(&library, "New");
    QCOMPARE(contentOf(kept()), content);
}

void LibraryFailureTest::aPipeIsNotOpened()
{
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("pipe.velacolors"));
    QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    Library library;
    QString error;
    expectLine(path, QStringLiteral(" can't be read: .+"));
    QVERIFY(!library.importFile(path, &error));
    QVERIFY(error.contains(path));
    QVERIFY(!library.importFile(dir.path(), &error));
}

void LibraryFailureTest::wrongsOfAShowNameTheShow()
{
    QDomDocument show;
    QVERIFY(show.setContent(listOf({"#ff0000", "nonsense"})));
    Library library;
    expectLine(QStringLiteral("night.sho"), QStringLiteral(": values that are no color: 1, "));
    library.readProject(show, QStringLiteral("night.sho"));
    QCOMPARE(library.rowCount(library.listIndex(Library::projectListName())), 2);
}

QTEST_MAIN(LibraryFailureTest)
#include "LibraryFailureTest.moc"
