#include "picker/VelaColorLibraryTreeView.h"

#include "DragHand.h"
#include "MenuHand.h"
#include "color/ColorMime.h"
#include "color/VelaColorLibrary.h"
#include "color/VelaColorLibraryItem.h"
#include "picker/PickerSettings.h"
#include "picker/SwatchPainter.h"
#include "picker/VelaColorLibraryTreeViewDelegate.h"
#include "resources/Resources.h"

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QToolTip>
#include <QtTest>

using VelaColorPickerLib::pickerSettings;
using VelaColorPickerLib::VelaColorLibraryTreeView;

namespace {

QString userList()
{
    return QStringLiteral("Lobby");
}

QString programList()
{
    return QStringLiteral("Halden Swatches");
}

/// A library of four lists, and a tree of it on the screen.
struct Bench
{
    VelaColorLibrary library;
    VelaColorLibraryTreeView tree;
    QSignalSpy clicked{&tree, &VelaColorLibraryTreeView::colorItemClicked};

    Bench()
    {
        library.createColorList(userList(), true);
        library.createColorList(programList(), false);
        add(userList(), "Amber", QColor(255, 160, 0), "LB-1");
        add(userList(), "Sea", QColor(0, 120, 160), "LB-2");
        add(programList(), "Red", Qt::red, "");
        add(programList(), "Sea Green", QColor(20, 160, 120), "");
        add(VelaColorLibrary::projectListName(), "Wall", QColor(9, 8, 7), "");
        tree.setLibrary(&library);
        tree.resize(320, 500);
        tree.show();
        tree.expandAll();
    }
    void add(const QString& list, const char* name, const QColor& color, const char* id)
    {
        library.insertColor(VelaColor(color), QString::fromLatin1(name), QString(), list,
                            QString::fromLatin1(id));
    }
    /// In the library.
    QModelIndex list(const QString& name) const { return library.listIndex(name); }
    QModelIndex color(const QString& list, int row) const
    {
        return library.index(row, 0, library.listIndex(list));
    }
    /// In the view, by text; the first of that text.
    QModelIndex find(const QString& text) const
    {
        const QModelIndexList found =
            tree.model()->match(tree.model()->index(0, 0), Qt::DisplayRole, text, 1,
                                Qt::MatchExactly | Qt::MatchCaseSensitive | Qt::MatchRecursive);
        return found.value(0);
    }
    QPoint at(const QString& text) const { return tree.visualRect(find(text)).center(); }
    void click(const QString& text, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, modifiers, at(text));
    }
    QStringList menu(const QString& on, const QString& entry)
    {
        return chooseFromContextMenu(tree.viewport(), at(on), entry);
    }
    QStringList names(const QString& list) const
    {
        QStringList texts;
        const QModelIndex parent = library.listIndex(list);
        for (int row = 0; row < library.rowCount(parent); ++row) {
            texts.append(library.index(row, 0, parent).data().toString());
        }
        return texts;
    }
    QStringList shown() const
    {
        QStringList texts;
        for (QModelIndex i = tree.model()->index(0, 0); i.isValid(); i = tree.indexBelow(i)) {
            texts.append(i.data().toString());
        }
        return texts;
    }
};

void rename(VelaColorLibraryTreeView* tree, const char* name)
{
    QTRY_VERIFY(tree->viewport()->findChild<QLineEdit*>() != nullptr);
    auto* const editor = tree->viewport()->findChild<QLineEdit*>();
    editor->selectAll();
    QTest::keyClicks(editor, QString::fromLatin1(name));
    QTest::keyClick(editor, Qt::Key_Return);
}

} // namespace

class VelaColorLibraryTreeViewTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void namesItsSignals();
    void showsTheLibraryInTwoColumns();
    void aClickOnAColorEmitsIt();
    void aClickOnAListOrWithAKeyEmitsNothing();
    void keysChooseAColor();
    void aDoubleClickEmitsTheMimeData();
    void reportsItsSelection();
    void theMenuDependsOnTheList_data();
    void theMenuDependsOnTheList();
    void theMenuRenames();
    void theMenuDeletes();
    void theMenuExports();
    void copyAndPasteByMenu();
    void copyAndPasteByKeys();
    void foreignDataOnTheClipboardIsNotPasted();
    void deleteKeyTakesColorsOnly();
    void neighboursAreDeletedAtOnce();
    void whatComesWithTheProgramIsNeitherRenamedNorDeleted();
    void aDragCarriesTheSwatch();
    void aDragCarriesTheOtherSelectedSwatches();
    void swatchesWithoutAColorAreNotCarried();
    void aDropAddsToTheList();
    void foreignDropsDoNothing();
    void typingAsksForAFilter();
    void filtersByNameIdAndList_data();
    void filtersByNameIdAndList();
    void endOfTheFilterOpensWhatWasOpen();
    void openListsLast();
    void theStateOfEveryListIsWritten();
    void anOpenStateIsKeptUnderTheListsName();
    void namesHaveTheRoom();
    void aToolTipTellsNameAndColor();
    void thumbnailsShowTheColor();
    void userListsBearTheUsersIcon();
    void tenThousandSwatchesOpenFilterAndScroll();
};

void VelaColorLibraryTreeViewTest::initTestCase()
{
    initForgeResources();
    qRegisterMetaType<VelaColor>();
}

void VelaColorLibraryTreeViewTest::init()
{
    pickerSettings().clear();
}

void VelaColorLibraryTreeViewTest::namesItsSignals()
{
    const QMetaObject& meta = VelaColorLibraryTreeView::staticMetaObject;
    for (const char* const name : {"filterText(QString)", "colorItemClicked(VelaColor,QString)",
                                   "selectionChangedSignal(QItemSelection,QItemSelection)",
                                   "doubleClickedOnWidget(QMimeData)"}) {
        QVERIFY2(meta.indexOfSignal(name) >= 0, name);
    }
}

void VelaColorLibraryTreeViewTest::showsTheLibraryInTwoColumns()
{
    const Bench bench;
    QCOMPARE(bench.tree.model()->columnCount(), 2);
    QCOMPARE(bench.tree.model()->headerData(0, Qt::Horizontal).toString(),
             QStringLiteral("Swatches"));
    QCOMPARE(bench.tree.model()->headerData(1, Qt::Horizontal).toString(),
             QStringLiteral("Color ID"));
    QCOMPARE(bench.shown(), QStringList({"Explicit Colors", "Project Swatches", "Wall", "Lobby",
                                         "Amber", "Sea", "Halden Swatches", "Red", "Sea Green"}));
    QCOMPARE(bench.find(QStringLiteral("Sea")).siblingAtColumn(1).data().toString(),
             QStringLiteral("LB-2"));
}

void VelaColorLibraryTreeViewTest::aClickOnAColorEmitsIt()
{
    Bench bench;
    bench.click(QStringLiteral("Sea"));
    QCOMPARE(bench.clicked.count(), 1);
    QCOMPARE(bench.clicked.at(0).at(0).value<VelaColor>().name(), QStringLiteral("#0078a0"));
    QCOMPARE(bench.clicked.at(0).at(1).toString(),
             bench.library.itemAt(bench.color(userList(), 1))->uid());
}

void VelaColorLibraryTreeViewTest::aClickOnAListOrWithAKeyEmitsNothing()
{
    Bench bench;
    bench.click(userList());
    bench.click(QStringLiteral("Sea"), Qt::ControlModifier);
    bench.click(QStringLiteral("Red"), Qt::ShiftModifier);
    QCOMPARE(bench.clicked.count(), 0);
}

void VelaColorLibraryTreeViewTest::keysChooseAColor()
{
    Bench bench;
    bench.tree.setCurrentIndex(bench.find(QStringLiteral("Amber")));
    QTest::keyClick(&bench.tree, Qt::Key_Return);
    QTest::keyClick(&bench.tree, Qt::Key_Down);
    QTest::keyClick(&bench.tree, Qt::Key_Space);
    QCOMPARE(bench.clicked.count(), 2);
    QCOMPARE(bench.clicked.at(0).at(0).value<VelaColor>().name(), QStringLiteral("#ffa000"));
    QCOMPARE(bench.clicked.at(1).at(0).value<VelaColor>().name(), QStringLiteral("#0078a0"));
    bench.tree.setCurrentIndex(bench.find(userList()));
    QTest::keyClick(&bench.tree, Qt::Key_Return);
    QCOMPARE(bench.clicked.count(), 2);
}

void VelaColorLibraryTreeViewTest::aDoubleClickEmitsTheMimeData()
{
    Bench bench;
    VelaColor color;
    QString name;
    QString id;
    int emitted = 0;
    connect(&bench.tree, &VelaColorLibraryTreeView::doubleClickedOnWidget,
            [&](const QMimeData& data) {
                ColorMime::readColor(&data, &color, &name, &id);
                ++emitted;
            });
    const auto doubleClick = [&bench](const QString& text) {
        bench.click(text);
        QTest::mouseDClick(bench.tree.viewport(), Qt::LeftButton, {}, bench.at(text));
    };
    doubleClick(QStringLiteral("Sea"));
    QCOMPARE(color.name(), QStringLiteral("#0078a0"));
    QCOMPARE(name, QStringLiteral("Sea"));
    QCOMPARE(id, QStringLiteral("LB-2"));
    QCOMPARE(emitted, 1);
    doubleClick(userList());
    QCOMPARE(emitted, 1);
}

void VelaColorLibraryTreeViewTest::reportsItsSelection()
{
    Bench bench;
    qRegisterMetaType<QItemSelection>();
    QSignalSpy changed(&bench.tree, &VelaColorLibraryTreeView::selectionChangedSignal);
    bench.click(QStringLiteral("Sea"));
    bench.click(QStringLiteral("Red"), Qt::ControlModifier);
    QCOMPARE(changed.count(), 2);
    QModelIndexList items = bench.tree.selectedItems();
    std::sort(items.begin(), items.end());
    QModelIndexList expected{bench.color(userList(), 1), bench.color(programList(), 0)};
    std::sort(expected.begin(), expected.end());
    QCOMPARE(items, expected);
}

void VelaColorLibraryTreeViewTest::theMenuDependsOnTheList_data()
{
    QTest::addColumn<QString>("on");
    QTest::addColumn<QStringList>("entries");
    QTest::newRow("a list of the user's")
        << userList() << QStringList{"Rename", "Delete", "Export...", "(Copy)", "Paste"};
    QTest::newRow("a color of the user's")
        << "Sea" << QStringList{"Rename", "Delete", "Export...", "Copy", "Paste"};
    QTest::newRow("the show's list")
        << "Project Swatches" << QStringList{"Export...", "(Copy)", "Paste"};
    QTest::newRow("a color of the show's")
        << "Wall" << QStringList{"Rename", "Delete", "Export...", "Copy", "Paste"};
    QTest::newRow("a list of the program's")
        << programList() << QStringList{"(Rename)", "(Delete)", "Export...", "(Copy)", "(Paste)"};
    QTest::newRow("a color of the program's")
        << "Red" << QStringList{"(Rename)", "(Delete)", "Export...", "Copy", "(Paste)"};
}

void VelaColorLibraryTreeViewTest::theMenuDependsOnTheList()
{
    QFETCH(QString, on);
    QFETCH(QStringList, entries);
    Bench bench;
    auto* const data = new QMimeData;
    ColorMime::writeColor(data, VelaColor(Qt::cyan), QString(), QString(), QString());
    QApplication::clipboard()->setMimeData(data);
    bench.click(on);
    QCOMPARE(bench.menu(on, QString()), entries);
}

void VelaColorLibraryTreeViewTest::theMenuRenames()
{
    Bench bench;
    bench.click(QStringLiteral("Sea"));
    bench.menu(QStringLiteral("Sea"), QStringLiteral("Rename"));
    rename(&bench.tree, "Lagoon");
    QTRY_COMPARE(bench.names(userList()), QStringList({"Amber", "Lagoon"}));

    bench.click(userList());
    bench.menu(userList(), QStringLiteral("Rename"));
    rename(&bench.tree, "Halden Swatches"); // taken
    QTRY_VERIFY(bench.list(QStringLiteral("Halden Swatches 2")).isValid());
    QVERIFY(!bench.list(userList()).isValid());
}

void VelaColorLibraryTreeViewTest::theMenuDeletes()
{
    Bench bench;
    bench.click(QStringLiteral("Sea"));
    bench.menu(QStringLiteral("Sea"), QStringLiteral("Delete"));
    QCOMPARE(bench.names(userList()), QStringList({"Amber"}));
    bench.click(QStringLiteral("Wall"));
    bench.menu(QStringLiteral("Wall"), QStringLiteral("Delete"));
    QCOMPARE(bench.names(VelaColorLibrary::projectListName()), QStringList());
    // A list and a colour in it at once.
    bench.click(userList());
    bench.click(QStringLiteral("Amber"), Qt::ControlModifier);
    bench.menu(userList(), QStringLiteral("Delete"));
    QVERIFY(!bench.list(userList()).isValid());
    QCOMPARE(bench.library.rowCount(), 3);
}

void VelaColorLibraryTreeViewTest::theMenuExports()
{
    Bench bench;
    QSignalSpy exported(&bench.tree, &VelaColorLibraryTreeView::exportRequested);
    bench.click(QStringLiteral("Sea"));
    bench.menu(QStringLiteral("Sea"), QStringLiteral("Export..."));
    QCOMPARE(exported.count(), 1);
}

void VelaColorLibraryTreeViewTest::copyAndPasteByMenu()
{
    Bench bench;
    QApplication::clipboard()->clear();
    bench.click(QStringLiteral("Red"));
    bench.menu(QStringLiteral("Red"), QStringLiteral("Copy"));
    const QMimeData* const copied = QApplication::clipboard()->mimeData();
    QVERIFY(copied->hasFormat(QStringLiteral("x-sorrel3/color")));
    QVERIFY(copied->hasFormat(QStringLiteral("data/x-velacolor")));
    bench.click(QStringLiteral("Amber"));
    bench.menu(QStringLiteral("Amber"), QStringLiteral("Paste"));
    QCOMPARE(bench.names(userList()), QStringList({"Amber", "Sea", "Red"})); // at the end
    QCOMPARE(bench.library.itemAt(bench.color(userList(), 2))->color().name(),
             QStringLiteral("#ff0000"));
    QVERIFY(bench.library.itemAt(bench.color(userList(), 2))->uid() !=
            bench.library.itemAt(bench.color(programList(), 0))->uid());
}

void VelaColorLibraryTreeViewTest::copyAndPasteByKeys()
{
    Bench bench;
    bench.click(QStringLiteral("Sea"));
    QTest::keySequence(&bench.tree, QKeySequence::Copy);
    bench.click(QStringLiteral("Project Swatches"));
    QTest::keySequence(&bench.tree, QKeySequence::Paste);
    QCOMPARE(bench.names(VelaColorLibrary::projectListName()), QStringList({"Wall", "Sea"}));
    // Several come in the order of the tree, however they were selected.
    Bench several;
    several.click(QStringLiteral("Red"));
    several.click(QStringLiteral("Sea"), Qt::ControlModifier);
    several.click(QStringLiteral("Amber"), Qt::ControlModifier);
    QTest::keySequence(&several.tree, QKeySequence::Copy);
    several.click(QStringLiteral("Project Swatches"));
    QTest::keySequence(&several.tree, QKeySequence::Paste);
    QCOMPARE(several.names(VelaColorLibrary::projectListName()),
             QStringList({"Wall", "Amber", "Sea", "Red"}));
    bench.click(programList());
    QTest::keySequence(&bench.tree, QKeySequence::Paste);
    QCOMPARE(bench.names(programList()), QStringList({"Red", "Sea Green"}));
}

void VelaColorLibraryTreeViewTest::foreignDataOnTheClipboardIsNotPasted()
{
    Bench bench;
    auto* const data = new QMimeData;
    data->setText(QStringLiteral("#ff0000"));
    data->setData(QStringLiteral("data/x-velacolor"), QByteArray(100000, 'x'));
    QApplication::clipboard()->setMimeData(data);
    bench.click(userList());
    QVERIFY(bench.menu(userList(), QString()).contains(QStringLiteral("(Paste)")));
    QTest::keySequence(&bench.tree, QKeySequence::Paste);
    QCOMPARE(bench.names(userList()), QStringList({"Amber", "Sea"}));
}

void VelaColorLibraryTreeViewTest::deleteKeyTakesColorsOnly()
{
    Bench bench;
    bench.click(userList());
    QTest::keyClick(&bench.tree, Qt::Key_Delete);
    QVERIFY(bench.list(userList()).isValid());
    bench.click(QStringLiteral("Amber"));
    bench.click(QStringLiteral("Sea"), Qt::ControlModifier);
    QTest::keyClick(&bench.tree, Qt::Key_Delete);
    QCOMPARE(bench.names(userList()), QStringList());
}

void VelaColorLibraryTreeViewTest::neighboursAreDeletedAtOnce()
{
    Bench bench;
    for (const char* const name : {"1", "2", "3", "4", "5", "6"}) {
        bench.add(userList(), name, Qt::red, "");
    }
    bench.library.createColorList(QStringLiteral("Last"), true);
    bench.add(QStringLiteral("Last"), "7", Qt::red, "");
    bench.tree.expandAll();
    bench.tree.resize(320, 1000);
    const QSignalSpy changes(&bench.library, &VelaColorLibrary::changed);
    bench.click(QStringLiteral("4"));
    bench.click(QStringLiteral("1"), Qt::ControlModifier);
    for (const char* const name : {"3", "Sea", "6", "7", "Red", "Wall"}) {
        bench.click(QString::fromLatin1(name), Qt::ControlModifier);
    }
    QTest::keyClick(&bench.tree, Qt::Key_Delete);
    QCOMPARE(bench.names(userList()), QStringList({"Amber", "2", "5"}));
    QCOMPARE(bench.names(QStringLiteral("Last")), QStringList());
    QCOMPARE(bench.names(programList()), QStringList({"Red", "Sea Green"}));
    QCOMPARE(bench.names(VelaColorLibrary::projectListName()), QStringList());
    QCOMPARE(changes.count(), 5); // 7; 6; 3 and 4; Sea and 1; Wall
    // Lists too, with swatches of them and of others.
    bench.click(userList());
    for (const char* const name : {"5", "Last", "Explicit Colors", "Amber"}) {
        bench.click(QString::fromLatin1(name), Qt::ControlModifier);
    }
    bench.tree.deleteSelected();
    QCOMPARE(bench.shown(),
             QStringList({"Project Swatches", "Halden Swatches", "Red", "Sea Green"}));
}

void VelaColorLibraryTreeViewTest::whatComesWithTheProgramIsNeitherRenamedNorDeleted()
{
    Bench bench;
    for (const QString& text :
         {programList(), QStringLiteral("Red"), QStringLiteral("Project Swatches")}) {
        bench.click(text);
        bench.tree.renameCurrent();
        QVERIFY(bench.tree.viewport()->findChild<QLineEdit*>() == nullptr);
        bench.tree.deleteSelected();
        QTest::keyClick(&bench.tree, Qt::Key_Delete);
    }
    QCOMPARE(bench.library.rowCount(), 4);
    QCOMPARE(bench.names(programList()), QStringList({"Red", "Sea Green"}));
}

void VelaColorLibraryTreeViewTest::aDragCarriesTheSwatch()
{
    Bench bench;
    const QDrag* const drag =
        startDrag(bench.tree.viewport(), &bench.tree, bench.at(QStringLiteral("Sea")));
    QVERIFY(drag != nullptr);
    QCOMPARE(drag->supportedActions(), Qt::DropActions(Qt::CopyAction));
    VelaColor color;
    QVERIFY(ColorMime::readColor(drag->mimeData(), &color));
    QCOMPARE(color.name(), QStringLiteral("#0078a0"));
    const QImage picture = drag->pixmap().toImage();
    QCOMPARE(picture.pixelColor(picture.rect().center()), QColor(0, 120, 160));

    Bench other;
    QVERIFY(startDrag(other.tree.viewport(), &other.tree, other.at(userList())) == nullptr);
}

void VelaColorLibraryTreeViewTest::aDragCarriesTheOtherSelectedSwatches()
{
    const auto namesOfDrag = [](const char* pressed) {
        Bench bench;
        bench.click(QStringLiteral("Red"));
        bench.click(QStringLiteral("Sea"), Qt::ControlModifier);
        bench.click(QStringLiteral("Amber"), Qt::ControlModifier);
        bench.click(userList(), Qt::ControlModifier);
        const QDrag* const drag =
            startDrag(bench.tree.viewport(), &bench.tree, bench.at(QString::fromLatin1(pressed)));
        QStringList names;
        if (drag != nullptr) {
            for (const ColorMime::Swatch& swatch : ColorMime::readColors(drag->mimeData())) {
                names.append(swatch.name);
            }
        }
        return names;
    };
    QCOMPARE(namesOfDrag("Sea"), QStringList({"Sea", "Amber", "Red"})); // the one in the hand first
    QCOMPARE(namesOfDrag("Sea Green"), QStringList({"Sea Green"}));     // not one of them
}

void VelaColorLibraryTreeViewTest::swatchesWithoutAColorAreNotCarried()
{
    Bench bench;
    for (const char* const name : {"None", "Nothing"}) {
        bench.library.insertColor(VelaColor(), QString::fromLatin1(name), QString(), userList(),
                                  QString());
    }
    QApplication::clipboard()->setText(QStringLiteral("before"));
    QSignalSpy clicked(&bench.tree, &QTreeView::doubleClicked);
    bench.click(QStringLiteral("None"));
    QTest::mouseDClick(bench.tree.viewport(), Qt::LeftButton, {}, bench.at(QStringLiteral("None")));
    QCOMPARE(clicked.count(), 1);
    bench.click(QStringLiteral("Nothing"), Qt::ControlModifier);
    QCOMPARE(bench.tree.selectedItems().size(), 2);
    QTest::keySequence(&bench.tree, QKeySequence::Copy);
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("before"));
    QVERIFY(startDrag(bench.tree.viewport(), &bench.tree, bench.at(QStringLiteral("None"))) ==
            nullptr);
}

void VelaColorLibraryTreeViewTest::aDropAddsToTheList()
{
    Bench bench;
    QMimeData data;
    data.setData(QStringLiteral("x-sorrel3/color"), "#102030"); // an older program's
    const QPoint pos = bench.at(QStringLiteral("Amber"));
    QDragEnterEvent enter(pos, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(bench.tree.viewport(), &enter);
    QVERIFY(enter.isAccepted());
    QDragMoveEvent move(pos, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(bench.tree.viewport(), &move);
    QVERIFY(move.isAccepted());
    QDropEvent drop(pos, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(bench.tree.viewport(), &drop);
    QCOMPARE(bench.names(userList()), QStringList({"Amber", "#102030", "Sea"}));
}

void VelaColorLibraryTreeViewTest::foreignDropsDoNothing()
{
    Bench bench;
    QMimeData data;
    data.setText(QStringLiteral("#102030"));
    data.setUrls({QUrl(QStringLiteral("file:///tmp/x.velacolors"))});
    const QPoint pos = bench.at(QStringLiteral("Amber"));
    QDragEnterEvent enter(pos, Qt::CopyAction, &data, Qt::LeftButton, {});
    enter.ignore();
    QApplication::sendEvent(bench.tree.viewport(), &enter);
    QVERIFY(!enter.isAccepted());
    QDropEvent drop(pos, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(bench.tree.viewport(), &drop);
    QCOMPARE(bench.names(userList()), QStringList({"Amber", "Sea"}));
}

void VelaColorLibraryTreeViewTest::typingAsksForAFilter()
{
    Bench bench;
    QSignalSpy asked(&bench.tree, &VelaColorLibraryTreeView::filterText);
    bench.click(userList());
    QTest::keyClick(&bench.tree, Qt::Key_S);
    QCOMPARE(asked.count(), 1);
    QCOMPARE(asked.at(0).at(0).toString(), QStringLiteral("s"));
}

void VelaColorLibraryTreeViewTest::filtersByNameIdAndList_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("shown");
    QTest::newRow("a name, in any case")
        << "sEa" << QStringList{"Lobby", "Sea", "Halden Swatches", "Sea Green"};
    QTest::newRow("an id") << "lb-1" << QStringList{"Lobby", "Amber"};
    QTest::newRow("a list") << "lobby" << QStringList{"Lobby", "Amber", "Sea"};
    QTest::newRow("plain text, no pattern") << ".*" << QStringList();
    QTest::newRow("nothing matches") << "zebra" << QStringList();
}

void VelaColorLibraryTreeViewTest::filtersByNameIdAndList()
{
    QFETCH(QString, text);
    QFETCH(QStringList, shown);
    Bench bench;
    bench.tree.collapseAll();
    bench.tree.setFilter(text);
    QCOMPARE(bench.shown(), shown);
}

void VelaColorLibraryTreeViewTest::endOfTheFilterOpensWhatWasOpen()
{
    Bench bench;
    bench.tree.collapse(bench.find(userList()));
    bench.tree.setFilter(QStringLiteral("sea"));
    QVERIFY(bench.tree.isExpanded(bench.find(userList())));
    bench.tree.setFilter(QStringLiteral("red"));
    bench.tree.setFilter(QString());
    QVERIFY(!bench.tree.isExpanded(bench.find(userList())));
    QVERIFY(bench.tree.isExpanded(bench.find(programList())));
    QVERIFY(bench.tree.isExpanded(bench.find(QStringLiteral("Project Swatches"))));
}

void VelaColorLibraryTreeViewTest::openListsLast()
{
    Bench bench;
    bench.tree.collapseAll();
    bench.tree.expand(bench.find(userList()));
    bench.tree.writeOpenLists();
    VelaColorLibraryTreeView other;
    other.setLibrary(&bench.library);
    const auto isOpen = [&other](int row) {
        return other.isExpanded(other.model()->index(row, 0));
    };
    QVERIFY(!isOpen(1)); // Project Swatches
    QVERIFY(isOpen(2));  // Lobby
    QVERIFY(!isOpen(3)); // Halden Swatches
}

void VelaColorLibraryTreeViewTest::theStateOfEveryListIsWritten()
{
    Bench bench;
    bench.tree.readOpenLists(); // all as at first
    bench.tree.writeOpenLists();
    const QSettings settings = pickerSettings();
    const QList<QPair<const char*, bool>> states = {{"Explicit Colors_expanded", false},
                                                    {"Project Swatches_expanded", true},
                                                    {"Lobby_expanded", false},
                                                    {"Halden Swatches_expanded", true}};
    for (const auto& state : states) {
        QVERIFY2(settings.contains(QLatin1String(state.first)), state.first);
    }
    QVERIFY(settings.value(QStringLiteral("Halden Swatches_expanded")).toBool());
    QVERIFY(!settings.value(QStringLiteral("Lobby_expanded")).toBool());
}

void VelaColorLibraryTreeViewTest::namesHaveTheRoom()
{
    Bench bench;
    bench.tree.resize(12 * bench.tree.fontMetrics().height(), 400); // narrow
    const auto room = [&bench](const QString& text) {
        return bench.tree.visualRect(bench.find(text)).width();
    };
    // A list's name goes over both columns, whenever the list came.
    const int view = bench.tree.viewport()->width();
    QVERIFY(room(userList()) > view * 8 / 10);
    bench.library.createColorList(QStringLiteral("Late"), true);
    QVERIFY(room(QStringLiteral("Late")) > view * 8 / 10);
    bench.tree.setFilter(QStringLiteral("sea"));
    bench.tree.setFilter(QString());
    QVERIFY(room(userList()) > view * 8 / 10);
    QVERIFY(bench.tree.header()->sectionSize(1) <= view * 3 / 10);
    bench.tree.resize(60 * bench.tree.fontMetrics().height(), 400);
    QCOMPARE(bench.tree.header()->sectionSize(1), bench.tree.header()->sectionSizeHint(1));
}

void VelaColorLibraryTreeViewTest::aToolTipTellsNameAndColor()
{
    Bench bench;
    const auto tipAt = [&bench](const QString& text) {
        QToolTip::hideText();
        const QPoint pos = bench.tree.visualRect(bench.find(text)).center();
        QHelpEvent event(QEvent::ToolTip, pos, bench.tree.viewport()->mapToGlobal(pos));
        QApplication::sendEvent(bench.tree.viewport(), &event);
        return QToolTip::text();
    };
    const QString swatch = tipAt(QStringLiteral("Sea"));
    QVERIFY2(swatch.contains(QStringLiteral("Sea")), qPrintable(swatch));
    QVERIFY(swatch.contains(QStringLiteral("#0078a0")));
    QVERIFY(tipAt(userList()).contains(userList()));
    bench.library.setData(bench.color(userList(), 1), QStringLiteral("<b>&"), Qt::EditRole);
    QVERIFY(tipAt(QStringLiteral("<b>&")).contains(QStringLiteral("&lt;b&gt;&amp;")));
    QVERIFY(!bench.tree.toolTip().isEmpty());
    QVERIFY(!bench.tree.accessibleName().isEmpty());
}

void VelaColorLibraryTreeViewTest::anOpenStateIsKeptUnderTheListsName()
{
    Bench bench;
    QSettings settings = pickerSettings();
    settings.setValue(QStringLiteral("Lobby_expanded"), true);
    settings.setValue(QStringLiteral("Halden Swatches_expanded"), false);
    bench.tree.readOpenLists();
    QVERIFY(bench.tree.isExpanded(bench.find(userList())));
    QVERIFY(!bench.tree.isExpanded(bench.find(programList())));
    bench.tree.collapse(bench.find(userList()));
    bench.tree.expand(bench.find(programList()));
    bench.tree.writeOpenLists();
    settings.sync();
    QCOMPARE(settings.value(QStringLiteral("Lobby_expanded")).toBool(), false);
    QCOMPARE(settings.value(QStringLiteral("Halden Swatches_expanded")).toBool(), true);
}

void VelaColorLibraryTreeViewTest::thumbnailsShowTheColor()
{
    Bench bench;
    const QRect row = bench.tree.visualRect(bench.find(QStringLiteral("Amber")));
    const QImage picture = bench.tree.viewport()->grab().toImage();
    const int line = bench.tree.fontMetrics().height();
    QCOMPARE(picture.pixelColor(row.left() + line, row.center().y()), QColor(255, 160, 0));
    QVERIFY(!bench.library.itemAt(bench.color(userList(), 0))->thumbnail().isNull());
    bench.tree.setCurrentIndex(bench.find(QStringLiteral("Amber"))); // a selection tints nothing
    QCOMPARE(
        bench.tree.viewport()->grab().toImage().pixelColor(row.left() + line, row.center().y()),
        QColor(255, 160, 0));
    QVERIFY(row.height() >= line);
}

void VelaColorLibraryTreeViewTest::userListsBearTheUsersIcon()
{
    struct Delegate : VelaColorPickerLib::VelaColorLibraryTreeViewDelegate
    {
        using VelaColorLibraryTreeViewDelegate::initStyleOption;
        using VelaColorLibraryTreeViewDelegate::VelaColorLibraryTreeViewDelegate;
    };
    Bench bench;
    const Delegate delegate(&bench.tree);
    const auto iconOf = [&](const QString& text) {
        QStyleOptionViewItem option;
        option.fontMetrics = bench.tree.fontMetrics();
        delegate.initStyleOption(&option, bench.find(text));
        return option.icon.pixmap(16).toImage();
    };
    const QImage user = QIcon(QStringLiteral(":/images/userIcon.png")).pixmap(16).toImage();
    QVERIFY(!user.isNull());
    QCOMPARE(iconOf(userList()), user);
    QCOMPARE(iconOf(QStringLiteral("Explicit Colors")), user);
    QVERIFY(iconOf(programList()).isNull());
    QVERIFY(iconOf(QStringLiteral("Project Swatches")).isNull());
}

void VelaColorLibraryTreeViewTest::tenThousandSwatchesOpenFilterAndScroll()
{
    VelaColorLibrary library;
    for (int i = 0; i < 10000; ++i) {
        const QString list = QStringLiteral("List %1").arg(i / 50);
        library.insertColor(VelaColor(QColor::fromHsv(i % 360, 200, 255)),
                            QStringLiteral("Swatch %1").arg(i), QString(), list, QString());
    }
    VelaColorLibraryTreeView tree;
    tree.setLibrary(&library);
    tree.resize(320, 500);
    tree.show();
    tree.setFilter(QStringLiteral("999"));
    int shown = 0;
    for (QModelIndex i = tree.model()->index(0, 0); i.isValid(); i = tree.indexBelow(i)) {
        ++shown;
    }
    QCOMPARE(shown, 19 + 10); // 999, 1999 ... 9999 and 9990 ... 9998, in ten lists
    tree.setFilter(QString());
    tree.expandAll();
    tree.scrollToBottom();
    const QModelIndex last = library.index(49, 0, library.listIndex(QStringLiteral("List 199")));
    tree.showItem(last);
    QCOMPARE(tree.selectedItems(), QModelIndexList{last});
    QVERIFY(tree.viewport()->rect().contains(tree.visualRect(tree.currentIndex()).center()));
}

QTEST_MAIN(VelaColorLibraryTreeViewTest)
#include "VelaColorLibraryTreeViewTest.moc"
