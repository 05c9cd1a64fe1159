#include "color/VelaColorLibrary.h"

#include "color/ColorMime.h"
#include "color/VelaColorLibraryItem.h"
#include "tests/color/LibraryFiles.h"

#include <QAbstractItemModelTester>
#include <QDataStream>
#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QMimeData>
#include <QObject>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

class VelaColorLibraryTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void startsWithTwoLists();
    void headersAreAskedForAcrossAndToShow();
    void swatchesTellTheirColors();
    void aSavedLibraryComesBack();
    void savingBeforeALoadWritesNothing();
    void theProjectsListIsNeverSaved();
    void anEmptyExplicitListIsNotSaved();
    void listsDoNotMultiplyFromRunToRun();
    void aFailedSaveKeepsTheFileAndStaysDirty();
    void aBrokenFileIsKeptBeside();
    void importedListsAreTheUsers();
    void importTellsWhatIsWrong_data();
    void importTellsWhatIsWrong();
    void exportedSwatchesComeBack();
    void namesThatXmlCantHoldAreCleaned();
    void aColorIsFoundByItsUid();
    void aColorsTextIsEnteredOnce();
    void theExplicitListIsMadeAgain();
    void builtInsComeOnce();
    void dragsCarryAllFormats();
    void dropsEnterTheListOfTheTarget();
    void foreignDropsAreRefused();
    void itemsWriteTheirOwnFormatOnly();
    void renamedListsStayUnique();
    void whatIsTheUsersCanBeEdited();
    void theShowsSwatchesTravel();
    void severalSwatchesTravelTogether();
    void tenThousandSwatchesOpen();

private:
    QTemporaryDir m_home;
};

void VelaColorLibraryTest::initTestCase()
{
    QVERIFY(qputenv("XDG_DATA_HOME", QFile::encodeName(m_home.path()))); // nobody's own swatches
    QCOMPARE(Library::userFolder(), m_home.filePath(QStringLiteral("Ostrand Halden")));
    QCOMPARE(Library::userFile(), m_home.filePath(QStringLiteral("Ostrand Halden/userColors.xml")));
}

void VelaColorLibraryTest::init()
{
    QDir(Library::userFolder()).removeRecursively();
}

void VelaColorLibraryTest::startsWithTwoLists()
{
    const Library library;
    QCOMPARE(listNames(library), QStringList({kExplicit, kProject}));
    QVERIFY(!library.isDirty());
    QVERIFY(library.itemAt(library.listIndex(kExplicit))->isUserLibrary());
    QVERIFY(!library.itemAt(library.listIndex(kProject))->isUserLibrary());
    QCOMPARE(library.listIndex(kProject).data(261).toInt(), 1);
    QVERIFY(!library.listIndex(kExplicit).data(261).isValid());
}

void VelaColorLibraryTest::headersAreAskedForAcrossAndToShow()
{
    const Library library;
    QCOMPARE(library.columnCount(), 2);
    QCOMPARE(library.headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(),
             QStringLiteral("Swatches"));
    QCOMPARE(library.headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(),
             QStringLiteral("Color ID"));
    QVERIFY(!library.headerData(0, Qt::Vertical, Qt::DisplayRole).isValid());
    QVERIFY(!library.headerData(0, Qt::Horizontal, Qt::ToolTipRole).isValid());
    QVERIFY(!library.headerData(2, Qt::Horizontal, Qt::DisplayRole).isValid());
}

void VelaColorLibraryTest::swatchesTellTheirColors()
{
    Library library;
    const QAbstractItemModelTester tester(&library,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    const VelaColor channels = VelaColor::fromNchannelF({1.0, 0.5, 0.25}, 0, 0, false);
    library.insertColor(Qt::red, QStringLiteral("R"), QString(), kExplicit, QStringLiteral("12"));
    library.insertColor(channels, QStringLiteral("N"), QString(), kExplicit, QString());
    const QModelIndex list = library.listIndex(kExplicit);
    QCOMPARE(library.index(0, 0, list).data(Qt::ToolTipRole).toString(), VelaColor(Qt::red).name());
    QCOMPARE(library.index(1, 0, list).data(Qt::ToolTipRole).toString(), channels.channelsText());
    QCOMPARE(library.index(0, 1, list).data().toString(), QStringLiteral("12"));
    QVERIFY(!list.data(Qt::ToolTipRole).isValid());
}

void VelaColorLibraryTest::aSavedLibraryComesBack()
{
    const VelaColor white(0.31, 0.32);
    QString uid;
    {
        Library library;
        library.load();
        library.createColorList(QStringLiteral("Night & Day"), true);
        uid = library.insertColor(white, QStringLiteral("a <wh\u00EFte>\u2600"),
                                  QStringLiteral("set"), QStringLiteral("Night & Day"),
                                  QStringLiteral("W1"));
        QVERIFY(!library.isDirty());
    }
    Library library;
    QVERIFY(library.load());
    const QModelIndex list = library.listIndex(QStringLiteral("Night & Day"));
    QCOMPARE(library.rowCount(list), 1);
    const VelaColorLibraryItem* const item = library.itemAt(library.index(0, 0, list));
    QCOMPARE(item->name(), QStringLiteral("a <wh\u00EFte>\u2600"));
    QCOMPARE(item->uid(), uid);
    QCOMPARE(item->color().toString(), white.toString());
    QCOMPARE(item->originatingPreset(), QStringLiteral("set"));
    QCOMPARE(item->colorId(), QStringLiteral("W1"));
    QVERIFY(library.itemAt(list)->isUserLibrary());
    QVERIFY(readFile(Library::userFile()).startsWith("<ColorLibraryList>\n <ColorLibrary "));
}

void VelaColorLibraryTest::savingBeforeALoadWritesNothing()
{
    Library library;
    library.insertColor(Qt::red, QStringLiteral("R"), QString(), kExplicit, QString());
    QVERIFY(!library.save());
    QVERIFY(library.isDirty());
    QVERIFY(!QFile::exists(Library::userFile()));
    library.load(); // saves what waits first, which is still refused
    QVERIFY(library.save());
    QVERIFY(QFile::exists(Library::userFile()));
}

void VelaColorLibraryTest::theProjectsListIsNeverSaved()
{
    Library library;
    library.load();
    library.insertColor(Qt::red, QStringLiteral("Shown"), QString(), kProject, QString());
    library.insertColor(Qt::blue, QStringLiteral("Kept"), QString(), kExplicit, QString());
    QVERIFY(library.save());
    const QByteArray file = readFile(Library::userFile());
    QVERIFY(!file.contains("Shown") && !file.contains("Project"));
    QVERIFY(file.contains("Kept"));
}

void VelaColorLibraryTest::anEmptyExplicitListIsNotSaved()
{
    Library library;
    library.load();
    QVERIFY(library.save());
    QVERIFY(!readFile(Library::userFile()).contains("Explicit"));
}

void VelaColorLibraryTest::listsDoNotMultiplyFromRunToRun()
{
    for (int run = 0; run < 3; ++run) {
        Library library;
        library.load();
        library.insertColor(Qt::red, QStringLiteral("R"), QString(), kExplicit, QString());
        QCOMPARE(listNames(library), QStringList({kExplicit, kProject}));
        QCOMPARE(swatchNames(library, kExplicit).size(), run + 1);
    }
}

void VelaColorLibraryTest::aFailedSaveKeepsTheFileAndStaysDirty()
{
    Library library;
    library.load();
    library.insertColor(Qt::red, QStringLiteral("First"), QString(), kExplicit, QString());
    const QByteArray before = readFile(Library::userFile());
    QVERIFY(before.contains("First"));
    // A folder in the file's place can't be replaced, nor a folder be made where a file is.
    QVERIFY(QFile::rename(Library::userFile(), Library::userFile() + QStringLiteral(".old")));
    QVERIFY(QDir().mkpath(Library::userFile() + QStringLiteral("/x")));
    library.insertColor(Qt::blue, QStringLiteral("Second"), QString(), kExplicit, QString());
    QVERIFY(library.isDirty());
    QCOMPARE(readFile(Library::userFile() + QStringLiteral(".old")), before);
    QVERIFY(QDir(Library::userFile()).removeRecursively());
    QVERIFY(library.save());
    QVERIFY(!library.isDirty());
    QVERIFY(readFile(Library::userFile()).contains("Second"));
}

void VelaColorLibraryTest::aBrokenFileIsKeptBeside()
{
    QVERIFY(QDir().mkpath(Library::userFolder()));
    const QByteArray broken = document(userList("Mine", swatch("u1", "Lost?"))).chopped(9);
    QVERIFY(writeFile(Library::userFile(), broken));
    Library library;
    QString error;
    QVERIFY(!library.load(QString(), &error));
    QVERIFY(error.contains(Library::userFile()));
    QCOMPARE(listNames(library), QStringList({kExplicit, kProject}));
    library.insertColor(Qt::red, QStringLiteral("New"), QString(), kExplicit, QString());
    QVERIFY(readFile(Library::userFile()).contains("New"));
    QCOMPARE(readFile(Library::userFile() + QStringLiteral(".bak")), broken);
}

void VelaColorLibraryTest::importedListsAreTheUsers()
{
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("a.velacolors"));
    QVERIFY(writeFile(path, document("<ColorLibrary name=\"Explicit Colors\" isUserLibrary=\"0\">" +
                                     swatch("u", "x") + "</ColorLibrary>")));
    Library library;
    library.load();
    const QSignalSpy changes(&library, &Library::changed);
    QString error;
    QVERIFY2(library.importFile(path, &error), qPrintable(error));
    const QString entered = QStringLiteral("Explicit Colors 2"); // also where the first is empty
    QCOMPARE(swatchNames(library, entered), QStringList{QStringLiteral("x")});
    QVERIFY(library.itemAt(library.listIndex(entered))->isUserLibrary());
    QCOMPARE(changes.size(), 1);
    QVERIFY(readFile(Library::userFile()).contains("Explicit Colors 2"));
}

void VelaColorLibraryTest::importTellsWhatIsWrong_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("no xml") << QByteArray("colors");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("half a document") << document(userList("L", swatch("u", "x"))).chopped(4);
    QTest::newRow("no list") << document("");
    QTest::newRow("no file") << QByteArray("-");
}

void VelaColorLibraryTest::importTellsWhatIsWrong()
{
    QFETCH(const QByteArray, content);
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("a.velacolors"));
    QVERIFY(content == "-" || writeFile(path, content));
    Library library;
    QString error;
    QVERIFY(!library.importFile(path, &error));
    QVERIFY(error.contains(path));
    QCOMPARE(library.rowCount(), 2);
}

void VelaColorLibraryTest::exportedSwatchesComeBack()
{
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("out.velacolors"));
    Library library;
    for (const char* const name : {"a", "b", "c"}) {
        library.insertColor(Qt::red, QString::fromLatin1(name), QString(), QStringLiteral("L"),
                            QString());
    }
    library.insertColor(Qt::red, QStringLiteral("all"), QString(), QStringLiteral("M"), QString());
    const QModelIndex list = library.listIndex(QStringLiteral("L"));
    QVERIFY(library.exportColors({library.index(2, 0, list), library.index(0, 0, list),
                                  library.listIndex(QStringLiteral("M"))},
                                 path));
    Library other;
    QVERIFY(other.importFile(path));
    QCOMPARE(swatchNames(other, QStringLiteral("L")),
             QStringList({QStringLiteral("a"), QStringLiteral("c")}));
    QCOMPARE(swatchNames(other, QStringLiteral("M")), QStringList{QStringLiteral("all")});
    QVERIFY(!library.exportColors({list}, dir.filePath(QStringLiteral("none/out.velacolors"))));
}

void VelaColorLibraryTest::namesThatXmlCantHoldAreCleaned()
{
    Library library;
    library.load();
    const QString bad = QStringLiteral("a\u0001b") + QChar(0xD800) + QStringLiteral("c\uFFFF");
    library.insertColor(Qt::red, bad, QString(), kExplicit, QString());
    library.insertColor(Qt::red, QString(1 << 20, QLatin1Char('n')), QString(), kExplicit,
                        QString());
    Library again;
    QVERIFY(again.load());
    QCOMPARE(swatchNames(again, kExplicit).at(0), QStringLiteral("abc"));
    QCOMPARE(swatchNames(again, kExplicit).at(1).size(), 1000);
    // A list's too, from a file.
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("a.velacolors"));
    QVERIFY(writeFile(path, document(userList(QByteArray(1 << 20, 'l'), swatch("u", "x")))));
    QVERIFY(again.importFile(path));
    QVERIFY(again.importFile(path));
    const QString cut(1000, QLatin1Char('l'));
    QCOMPARE(listNames(again).mid(2), QStringList({cut, cut + QStringLiteral(" 2")}));
    QCOMPARE(swatchNames(again, cut), QStringList{QStringLiteral("x")});
}

void VelaColorLibraryTest::aColorIsFoundByItsUid()
{
    Library library;
    QCOMPARE(library.colorForUid(QString()).toString(), VelaColor(Qt::magenta).toString());
    const QString uid =
        library.insertColor(Qt::green, QStringLiteral("G"), QString(), kProject, QString());
    QCOMPARE(library.colorForUid(uid).toString(), VelaColor(Qt::green).toString());
    QVERIFY(swatchNames(library, kExplicit).isEmpty());
    library.setCurrentColor(Qt::cyan);
    QCOMPARE(library.colorForUid(QString()).toString(), VelaColor(Qt::cyan).toString());
}

void VelaColorLibraryTest::aColorsTextIsEnteredOnce()
{
    Library library;
    const QString text = VelaColor(0.3, 0.4).toString();
    QCOMPARE(library.colorForUid(text).toString(), text);
    QCOMPARE(library.colorForUid(text).toString(), text);
    QCOMPARE(swatchNames(library, kExplicit), QStringList{VelaColor(0.3, 0.4).name()});
    QVERIFY(!library.colorForUid(QStringLiteral("nobody's")).isValid());
    QCOMPARE(swatchNames(library, kExplicit).size(), 1);
}

void VelaColorLibraryTest::theExplicitListIsMadeAgain()
{
    Library library;
    QVERIFY(library.removeRows(0, 1));
    QCOMPARE(listNames(library), QStringList{kProject});
    library.colorForUid(VelaColor(Qt::red).toString());
    QCOMPARE(listNames(library), QStringList({kProject, kExplicit}));
    QVERIFY(library.itemAt(library.listIndex(kExplicit))->isUserLibrary());
    QVERIFY(!library.removeRows(0, 1)); // the show's list stays
}

void VelaColorLibraryTest::builtInsComeOnce()
{
    Library library;
    library.startForPicker();
    library.startForPicker();
    const QStringList names = swatchNames(library, QStringLiteral("Halden Swatches"));
    QCOMPARE(names.size(), 32);
    QCOMPARE(names.first(), QStringLiteral("Red"));
    QCOMPARE(names.at(6), QStringLiteral("Violet"));
    QCOMPARE(names.at(12), QStringLiteral("2700 K / center of ANSI bin"));
    QCOMPARE(names.at(19), QStringLiteral("6500 K / center of ANSI bin"));
    QCOMPARE(names.last(), QStringLiteral("Violet White"));
    const QModelIndex list = library.listIndex(QStringLiteral("Halden Swatches"));
    QCOMPARE(library.itemAt(library.index(20, 0, list))->color().toString(),
             VelaColor(0.50563, 0.4152).toString());
    QVERIFY(!library.itemAt(list)->isUserLibrary());
    for (int row = 0; row < names.size(); ++row) {
        const VelaColorLibraryItem* const item = library.itemAt(library.index(row, 0, list));
        QVERIFY(item->originatingPreset().isEmpty() && item->colorId().isEmpty());
    }
    library.insertColor(Qt::red, QStringLiteral("R"), QString(), kExplicit, QString());
    QVERIFY(!readFile(Library::userFile()).contains("Halden"));
}

void VelaColorLibraryTest::dragsCarryAllFormats()
{
    Library library;
    library.insertColor(Qt::red, QStringLiteral("Röt"), QStringLiteral("set"), kProject,
                        QStringLiteral("id"));
    const QModelIndex list = library.listIndex(kProject);
    const std::unique_ptr<QMimeData> data(library.mimeData({library.index(0, 0, list)}));
    const QByteArray value = VelaColor(Qt::red).toString().toLatin1();
    QCOMPARE(data->data(QStringLiteral("data/x-velacolor")), value);
    QCOMPARE(data->data(QStringLiteral("x-sorrel3/color")), value);
    QCOMPARE(data->data(QStringLiteral("data/x-velacolor-name")), QByteArray("Röt"));
    QCOMPARE(data->data(QStringLiteral("data/x-velacolor-vendorid")), QByteArray("id"));
    QCOMPARE(data->data(QStringLiteral("data/x-velacolor-originatingPreset")), QByteArray("set"));
    QCOMPARE(data->formats().size(), 5);
    QVERIFY(library.mimeData({list}) == nullptr);
}

void VelaColorLibraryTest::dropsEnterTheListOfTheTarget()
{
    Library library;
    const QAbstractItemModelTester tester(&library,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    library.insertColor(Qt::red, QStringLiteral("1"), QString(), kProject, QString());
    library.insertColor(Qt::red, QStringLiteral("2"), QString(), kProject, QString());
    const QModelIndex list = library.listIndex(kProject);
    QMimeData data;
    ColorMime::writeColor(&data, Qt::blue, QStringLiteral("new"), QString(), QString());
    QVERIFY(library.dropMimeData(&data, Qt::CopyAction, -1, -1, library.index(0, 0, list)));
    QVERIFY(library.dropMimeData(&data, Qt::CopyAction, 0, 0, list));
    QMimeData old; // of an older product
    old.setData(QStringLiteral("x-sorrel3/color"), VelaColor(Qt::green).toString().toLatin1());
    QVERIFY(library.dropMimeData(&old, Qt::CopyAction, -1, -1, list));
    QCOMPARE(swatchNames(library, kProject),
             QStringList({QStringLiteral("new"), QStringLiteral("1"), QStringLiteral("new"),
                          QStringLiteral("2"), VelaColor(Qt::green).name()}));
}

void VelaColorLibraryTest::foreignDropsAreRefused()
{
    Library library;
    const QModelIndex list = library.listIndex(kProject);
    QMimeData text;
    text.setText(QStringLiteral("red"));
    QVERIFY(!library.dropMimeData(&text, Qt::CopyAction, -1, -1, list));
    QMimeData junk;
    junk.setData(QStringLiteral("data/x-velacolor"), QByteArray(1 << 20, 'x'));
    QVERIFY(!library.dropMimeData(&junk, Qt::CopyAction, -1, -1, list));
    QMimeData good;
    ColorMime::writeColor(&good, Qt::blue, QString(), QString(), QString());
    QVERIFY(!library.dropMimeData(&good, Qt::CopyAction, -1, -1, QModelIndex()));
    QCOMPARE(library.rowCount(list), 0);
}

void VelaColorLibraryTest::severalSwatchesTravelTogether()
{
    Library library;
    library.load();
    const QAbstractItemModelTester tester(&library,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    const QString from = QStringLiteral("From");
    const QString to = QStringLiteral("To");
    library.insertColor(Qt::red, QStringLiteral("r"), QStringLiteral("P"), from, {});
    library.insertColor(VelaColor(), QStringLiteral("none"), {}, from, {});
    library.insertColor(Qt::green, QStringLiteral("g"), {}, from, QStringLiteral("7"));
    library.insertColor(Qt::blue, QStringLiteral("last"), {}, to, {});
    const QModelIndex list = library.listIndex(from);
    QModelIndexList selected;
    for (int row = 0; row < 3; ++row) { // as a view selects: each column
        selected << library.index(row, 0, list) << library.index(row, 1, list);
    }
    selected << list;
    const std::unique_ptr<QMimeData> data(library.mimeData(selected));
    const QSignalSpy changes(&library, &Library::changed);
    const QSignalSpy added(&library, &Library::addedColorToList);
    QVERIFY(library.dropMimeData(data.get(), Qt::CopyAction, 0, 0, library.listIndex(to)));
    QCOMPARE(swatchNames(library, to),
             QStringList({QStringLiteral("r"), QStringLiteral("g"), QStringLiteral("last")}));
    const QModelIndex target = library.listIndex(to);
    const VelaColorLibraryItem* const green = library.itemAt(library.index(1, 0, target));
    QVERIFY(green->color() == VelaColor(Qt::green));
    QCOMPARE(green->colorId(), QStringLiteral("7"));
    QCOMPARE(library.itemAt(library.index(0, 0, target))->originatingPreset(), QStringLiteral("P"));
    QCOMPARE(changes.size(), 1); // one change, one save
    QCOMPARE(changes.first().first().toString(), to);
    QCOMPARE(added.size(), 2);
    Library again;
    QVERIFY(again.load());
    QCOMPARE(swatchNames(again, to), swatchNames(library, to));
    QMimeData broken;
    broken.setData(QStringLiteral("data/x-velacolor"),
                   VelaColor(Qt::red).toString().toLatin1() + "\nnonsense");
    QVERIFY(!library.dropMimeData(&broken, Qt::CopyAction, -1, -1, target));
    QCOMPARE(library.rowCount(target), 3);
}

void VelaColorLibraryTest::itemsWriteTheirOwnFormatOnly()
{
    Library library;
    const QString uid =
        library.insertColor(Qt::red, QStringLiteral("R"), QString(), kProject, QString());
    const QModelIndex list = library.listIndex(kProject);
    const VelaColorLibraryItem* const item = library.itemAt(library.index(0, 0, list));
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    QVERIFY(!item->writeFormat(QStringLiteral("x-sorrel3/color"), out));
    QVERIFY(bytes.isEmpty());
    QVERIFY(item->writeFormat(QStringLiteral("data/x-velacolor"), out));
    QDataStream in(bytes);
    QByteArray writtenUid;
    QByteArray value;
    in >> writtenUid >> value;
    QCOMPARE(writtenUid, uid.toLatin1());
    QCOMPARE(value, VelaColor(Qt::red).toString().toLatin1());
    QDomDocument doc;
    bool ok = true;
    QVERIFY(library.itemAt(list)->toElement(doc, QStringLiteral("Sorrel2"), true, &ok).isNull());
    QVERIFY(!ok);
}

void VelaColorLibraryTest::renamedListsStayUnique()
{
    Library library;
    const QAbstractItemModelTester tester(&library,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    library.createColorList(QStringLiteral("A"), true);
    library.createColorList(QStringLiteral("B"), true);
    const QModelIndex b = library.listIndex(QStringLiteral("B"));
    QVERIFY(library.setData(b, QStringLiteral("A"), Qt::EditRole));
    QCOMPARE(b.data().toString(), QStringLiteral("A 2"));
    QVERIFY(library.listIndex(QStringLiteral("A 2")) == b);
    QVERIFY(!library.listIndex(QStringLiteral("B")).isValid());
    QVERIFY(library.setData(b, QStringLiteral("A 2"), Qt::EditRole)); // its own
    QCOMPARE(b.data().toString(), QStringLiteral("A 2"));
    QVERIFY(!library.setData(b, QString(), Qt::EditRole));
    QVERIFY(!library.setData(library.listIndex(kProject), QStringLiteral("Mine"), Qt::EditRole));
}

void VelaColorLibraryTest::whatIsTheUsersCanBeEdited()
{
    Library library;
    library.startForPicker();
    const auto isEditable = [&](const QString& listId, bool swatch) {
        const QModelIndex list = library.listIndex(listId);
        const QModelIndex place = swatch ? library.index(0, 0, list) : list;
        return library.flags(place).testFlag(Qt::ItemIsEditable);
    };
    library.insertColor(Qt::red, QStringLiteral("R"), QString(), kExplicit, QString());
    library.insertColor(Qt::red, QStringLiteral("R"), QString(), kProject, QString());
    QVERIFY(isEditable(kExplicit, false) && isEditable(kExplicit, true));
    QVERIFY(!isEditable(kProject, false) && isEditable(kProject, true));
    QVERIFY(!isEditable(QStringLiteral("Halden Swatches"), false));
    QVERIFY(!isEditable(QStringLiteral("Halden Swatches"), true));
}

void VelaColorLibraryTest::theShowsSwatchesTravel()
{
    QDomDocument show;
    Library library;
    QVERIFY(library.projectElement(show).isNull());
    library.insertColor(Qt::red, QStringLiteral("Door"), QString(), kProject, QString());
    QDomElement root = show.createElement(QStringLiteral("effect"));
    show.appendChild(root);
    root.appendChild(library.projectElement(show));
    QDomDocument read;
    QVERIFY(read.setContent(show.toString(0)));
    Library other;
    other.insertColor(Qt::blue, QStringLiteral("Before"), QString(), kProject, QString());
    const QSignalSpy changes(&other, &Library::changed);
    other.readProject(read);
    QCOMPARE(swatchNames(other, kProject), QStringList{QStringLiteral("Door")});
    QCOMPARE(changes.size(), 1);
    other.readProject(QDomDocument());
    QVERIFY(swatchNames(other, kProject).isEmpty());
}

void VelaColorLibraryTest::tenThousandSwatchesOpen()
{
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("big.velacolors"));
    QByteArray lists;
    for (int list = 0; list < 200; ++list) {
        QByteArray colors;
        for (int i = 0; i < 50; ++i) {
            colors += swatch(QByteArray::number(list * 50 + i), "n");
        }
        lists += userList("List " + QByteArray::number(list), colors);
    }
    QVERIFY(writeFile(path, document(lists)));
    Library library;
    QVERIFY(library.load(path));
    QCOMPARE(library.rowCount(), 202);
    QCOMPARE(library.rowCount(library.listIndex(QStringLiteral("List 199"))), 50);
    QCOMPARE(library.colorForUid(QStringLiteral("9999")).toString(), VelaColor(Qt::red).toString());
}

QTEST_MAIN(VelaColorLibraryTest)
#include "VelaColorLibraryTest.moc"
