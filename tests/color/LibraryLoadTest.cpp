#include "color/VelaColorLibrary.h"
#include "color/VelaColorLibraryItem.h"
#include "tests/color/LibraryFiles.h"

#include <QCursor>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QObject>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

/// What the library makes of a file that is read, and of the names in it.
class LibraryLoadTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void anotherFileDoesNotOpenTheWayForASave();
    void aLoadIsLoggedUnderTheWaitCursor();
    void whatIsSavedIsLogged();
    void onlyAnEmptyListOfTheUsersTakesOneFromTheFile();
    void aLoadTellsOfNoChange();
    void anAddedColorTellsItsList();
    void missingAttributesGetTheirDefaults();
    void aKnownNameGetsANumber();
    void theFirstFreeNumberIsTaken_data();
    void theFirstFreeNumberIsTaken();
    void thousandsOfOneNameAreRead();
    void librariesAreFoundUnderAnyRoot();
    void uidsStayUnique();

private:
    QTemporaryDir m_home;
};

void LibraryLoadTest::initTestCase()
{
    QVERIFY(qputenv("XDG_DATA_HOME", QFile::encodeName(m_home.path()))); // nobody's own swatches
    QVERIFY(Library::userFolder().startsWith(m_home.path()));
}

void LibraryLoadTest::init()
{
    QDir(Library::userFolder()).removeRecursively();
}

void LibraryLoadTest::anotherFileDoesNotOpenTheWayForASave()
{
    QVERIFY(QDir().mkpath(Library::userFolder()));
    const QByteArray mine = document(userList("Mine", swatch("u1", "Kept")));
    QVERIFY(writeFile(Library::userFile(), mine));
    const QTemporaryDir dir;
    const QString other = dir.filePath(QStringLiteral("other.velacolors"));
    QVERIFY(writeFile(other, document(userList("Other", swatch("u2", "x")))));
    Library library;
    QVERIFY(library.load(other));
    library.insertColor(Qt::red, QStringLiteral("R"), QString(), kExplicit, QString());
    QVERIFY(!library.save());
    QCOMPARE(readFile(Library::userFile()), mine);
    QVERIFY(library.load());
    QVERIFY(library.save());
    QVERIFY(readFile(Library::userFile()).contains("Kept"));
    QVERIFY(readFile(Library::userFile()).contains("Other"));
}

void LibraryLoadTest::aLoadIsLoggedUnderTheWaitCursor()
{
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("a.velacolors"));
    QVERIFY(writeFile(path, document(userList("L", swatch("u", "x")))));
    Library library;
    int busy = 0;
    connect(&library, &Library::rowsInserted, this, [&busy] {
        const QCursor* const cursor = QGuiApplication::overrideCursor();
        busy += cursor != nullptr && cursor->shape() == Qt::WaitCursor ? 1 : 0;
    });
    QTest::ignoreMessage(QtDebugMsg, qPrintable(QStringLiteral("Filepath: ") + path));
    QTest::ignoreMessage(QtDebugMsg, "opened 1");
    QVERIFY(library.load(path));
    QCOMPARE(busy, 2); // the list and its swatch
    QVERIFY(QGuiApplication::overrideCursor() == nullptr);
    QTest::ignoreMessage(QtDebugMsg, qPrintable(QStringLiteral("Filepath: ") + dir.path()));
    QTest::ignoreMessage(QtDebugMsg, "opened 0");
    QVERIFY(!library.load(dir.path()));
    QVERIFY(QGuiApplication::overrideCursor() == nullptr);
}

void LibraryLoadTest::whatIsSavedIsLogged()
{
    Library library;
    library.load();
    QTest::ignoreMessage( // its attributes in any order
        QtDebugMsg, QRegularExpression(QStringLiteral("^<ColorLibraryList>\n <ColorLibrary "
                                                      "[^>]*name=\"Empty\"[^>]*/>\n"
                                                      "</ColorLibraryList>\n$")));
    library.createColorList(QStringLiteral("Empty"), true);
}

void LibraryLoadTest::onlyAnEmptyListOfTheUsersTakesOneFromTheFile()
{
    QVERIFY(QDir().mkpath(Library::userFolder()));
    QVERIFY(writeFile(Library::userFile(),
                      document(userList("Explicit Colors", swatch("u1", "a")) +
                               userList("Explicit Colors", swatch("u2", "b")) +
                               userList("Empty", "") + userList("Empty", swatch("u3", "c")) +
                               userList("Project Swatches", swatch("u4", "d")))));
    Library library;
    QVERIFY(library.load());
    QCOMPARE(listNames(library),
             QStringList({kExplicit, kProject, QStringLiteral("Explicit Colors 2"),
                          QStringLiteral("Empty"), QStringLiteral("Empty 2"),
                          QStringLiteral("Project Swatches 2")}));
    QCOMPARE(swatchNames(library, kExplicit), QStringList{QStringLiteral("a")});
    QVERIFY(swatchNames(library, kProject).isEmpty());
    QCOMPARE(swatchNames(library, QStringLiteral("Empty 2")), QStringList{QStringLiteral("c")});
}

void LibraryLoadTest::aLoadTellsOfNoChange()
{
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("a.velacolors"));
    QVERIFY(writeFile(path, document(userList("L", swatch("u", "x")))));
    Library library;
    const QSignalSpy changes(&library, &Library::changed);
    QVERIFY(library.load(path));
    QCOMPARE(library.rowCount(), 3);
    QCOMPARE(changes.size(), 0);
    QVERIFY(!library.isDirty());
    library.insertColor(Qt::red, QStringLiteral("R"), QString(), QStringLiteral("L"), QString());
    QCOMPARE(changes.size(), 1);
    QCOMPARE(changes.first().first().toString(), QStringLiteral("L"));
    library.onColorLibraryListChanged(QStringLiteral("L")); // a slot of its own
    QVERIFY(library.isDirty());
}

void LibraryLoadTest::anAddedColorTellsItsList()
{
    Library library;
    QModelIndexList told;
    connect(&library, &Library::addedColorToList, this,
            [&told](QModelIndex& list) { told.append(list); });
    library.handleInsertColor(QStringLiteral("u"), QStringLiteral("x"), QStringLiteral("#ff0000"),
                              QStringLiteral("P"), QStringLiteral("New"), QStringLiteral("7"));
    const QModelIndex list = library.listIndex(QStringLiteral("New")); // made as the user's own
    QCOMPARE(told, QModelIndexList{list});
    const VelaColorLibraryItem* const item = library.itemAt(library.index(0, 0, list));
    QVERIFY(library.itemAt(list)->isUserLibrary());
    QCOMPARE(item->uid(), QStringLiteral("u"));
    QVERIFY(item->color() == VelaColor(Qt::red));
    QCOMPARE(item->originatingPreset(), QStringLiteral("P"));
    QCOMPARE(item->colorId(), QStringLiteral("7"));
}

void LibraryLoadTest::missingAttributesGetTheirDefaults()
{
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("a.velacolors"));
    QVERIFY(writeFile(path, document("<ColorLibrary name=\"L\"><Color/></ColorLibrary>")));
    Library library;
    QVERIFY(library.load(path));
    const QModelIndex list = library.listIndex(QStringLiteral("L"));
    const VelaColorLibraryItem* const item = library.itemAt(library.index(0, 0, list));
    QVERIFY(item != nullptr);
    QCOMPARE(item->name(), QStringLiteral("empty attribute"));
    QVERIFY(!item->color().isValid());
    QVERIFY(!item->uid().isEmpty()); // or it would not be saved
    QCOMPARE(item->originatingPreset(), QString());
    QCOMPARE(item->colorId(), QString());
    QVERIFY(!library.itemAt(list)->isUserLibrary());
}

void LibraryLoadTest::aKnownNameGetsANumber()
{
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("a.velacolors"));
    QVERIFY(writeFile(path, document(userList("L", swatch("u", "x")))));
    Library library;
    QVERIFY(library.load(path));
    QVERIFY(library.load(path));
    QVERIFY(library.load(path));
    QCOMPARE(listNames(library).mid(2),
             QStringList({QStringLiteral("L"), QStringLiteral("L 2"), QStringLiteral("L 3")}));
}

void LibraryLoadTest::theFirstFreeNumberIsTaken_data()
{
    QTest::addColumn<QStringList>("lists");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("entered");
    QTest::newRow("free") << QStringList{"A"} << "B"
                          << "B";
    QTest::newRow("another case") << QStringList{"A"} << "a"
                                  << "a";
    QTest::newRow("taken") << QStringList{"A"} << "A"
                           << "A 2";
    QTest::newRow("the next is taken too") << QStringList({"A", "A 2", "A 3"}) << "A"
                                           << "A 4";
    QTest::newRow("a gap") << QStringList({"A", "A 3"}) << "A"
                           << "A 2";
    QTest::newRow("a number behind a number") << QStringList({"A", "A 2"}) << "A 2"
                                              << "A 2 2";
    QTest::newRow("percent signs") << QStringList{"50%1 %2"} << "50%1 %2"
                                   << "50%1 %2 2";
    QTest::newRow("empty") << QStringList{""} << ""
                           << " 2";
}

void LibraryLoadTest::theFirstFreeNumberIsTaken()
{
    QFETCH(const QStringList, lists);
    QFETCH(const QString, name);
    QFETCH(const QString, entered);
    Library library;
    for (const QString& list : lists) {
        library.createColorList(list, true);
    }
    QCOMPARE(library.uniqueListName(name), entered);
    library.createColorList(entered, true);
    QVERIFY(library.uniqueListName(name) != entered);
    // What is given up is free again, by removal and by another name.
    QVERIFY(library.removeRow(library.listIndex(entered).row()));
    QCOMPARE(library.uniqueListName(name), entered);
    library.createColorList(entered, true);
    library.uniqueListName(name);
    QVERIFY(library.setData(library.listIndex(entered), QStringLiteral("Z"), Qt::EditRole));
    QCOMPARE(library.uniqueListName(name), entered);
}

void LibraryLoadTest::thousandsOfOneNameAreRead()
{
    constexpr int kLists = 20000; // longer than a test may take, were each number tried for each
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("a.velacolors"));
    QVERIFY(writeFile(path, document(userList("L", swatch("u", "x")).repeated(kLists))));
    Library library;
    QVERIFY(library.load(path));
    QCOMPARE(library.rowCount(), 2 + kLists);
    QVERIFY(library.listIndex(QStringLiteral("L 20000")).isValid());
}

void LibraryLoadTest::librariesAreFoundUnderAnyRoot()
{
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("a.xml"));
    QVERIFY(writeFile(path, "<other><deep>" + userList("L", swatch("u", "x")) + "</deep></other>"));
    Library library;
    QVERIFY(library.load(path));
    QCOMPARE(swatchNames(library, QStringLiteral("L")), QStringList{QStringLiteral("x")});
}

void LibraryLoadTest::uidsStayUnique()
{
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("a.velacolors"));
    QVERIFY(writeFile(path, document(userList("L", swatch("u", "x") + swatch("u", "y")))));
    Library library;
    QVERIFY(library.load(path));
    const QModelIndex list = library.listIndex(QStringLiteral("L"));
    const QString first = library.itemAt(library.index(0, 0, list))->uid();
    const QString second = library.itemAt(library.index(1, 0, list))->uid();
    QCOMPARE(first, QStringLiteral("u"));
    QVERIFY(!second.isEmpty() && second != first);
}

QTEST_MAIN(LibraryLoadTest)
#include "LibraryLoadTest.moc"
