#include "picker/ColorTreeAndFilterWidget.h"

#include "color/VelaColorLibrary.h"
#include "color/VelaColorLibraryItem.h"
#include "picker/FilterBox.h"
#include "picker/PickerSettings.h"
#include "picker/VelaColorLibraryTreeView.h"
#include "resources/Resources.h"

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

using VelaColorPickerLib::ColorTreeAndFilterWidget;
using VelaColorPickerLib::pickerSettings;
using VelaColorPickerLib::VelaColorLibraryTreeView;
using VelaWidgetsLib::FilterBox;

namespace {

/// Two user lists of two and one colours, with the widget on the screen.
struct Bench
{
    VelaColorLibrary library;
    ColorTreeAndFilterWidget widget{&library};
    VelaColorLibraryTreeView* tree = widget.tree();
    FilterBox* filter = widget.findChild<FilterBox*>();

    Bench()
    {
        add("Foyer", "Amber", QColor(255, 160, 0));
        add("Foyer", "Sea", QColor(0, 120, 160));
        add("Roof", "Night", QColor(10, 10, 60));
        widget.resize(320, 600);
        widget.show();
        tree->expandAll();
    }
    void add(const char* list, const char* name, const QColor& color)
    {
        library.insertColor(VelaColor(color), QString::fromLatin1(name), QString(),
                            QString::fromLatin1(list), QString());
    }
    QPushButton* button(const char* text) const
    {
        for (QPushButton* const button : widget.findChildren<QPushButton*>()) {
            if (button->text() == QLatin1String(text)) {
                return button;
            }
        }
        return nullptr;
    }
    void press(const char* text) const { QTest::mouseClick(button(text), Qt::LeftButton); }
    QStringList lists() const
    {
        QStringList names;
        for (int row = 0; row < library.rowCount(); ++row) {
            names.append(library.index(row, 0).data().toString());
        }
        return names;
    }
};

/// Answers the next file dialog with `path`, or cancels it for an empty one, and notes what it
/// showed.
struct DialogHand
{
    QString title;
    QString folder;
    QStringList filters;

    DialogHand(QObject* context, const QString& path)
    {
        QTimer::singleShot(0, context, [this, path] {
            auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr) {
                return;
            }
            title = dialog->windowTitle();
            folder = dialog->directory().absolutePath();
            filters = dialog->nameFilters();
            if (path.isEmpty()) {
                dialog->reject();
                return;
            }
            auto* const edit = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            edit->setText(path);
            QTest::keyClick(edit, Qt::Key_Return);
        });
    }
};

void write(const QString& path, const QByteArray& text)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text);
}

const char kSwatches[] = "<ColorLibraryList><ColorLibrary name=\"Foyer\" isUserLibrary=\"1\">"
                         "<Color name=\"Dusk\" uid=\"d1\" value=\"#404080\"/>"
                         "</ColorLibrary></ColorLibraryList>";

} // namespace

class ColorTreeAndFilterWidgetTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void namesItsSlots();
    void buttonsSayWhatTheyDo();
    void aNewGroupIsUniqueAndItsNameIsTyped();
    void aNewGroupShowsInSpiteOfAFilter();
    void theFilterNarrowsTheTree();
    void theFilterComesBackWithTheWidget();
    void typingOnTheTreeGoesToTheFilter();
    void exportNeedsASelection();
    void exportsTheSelectedSwatches();
    void importsAsAListOfItsOwn();
    void aBrokenFileImportsNothing_data();
    void aBrokenFileImportsNothing();
    void aCancelledDialogDoesNothing();
    void passesClickedColorsOn();
    void openListsAreKeptWhenItCloses();
};

void ColorTreeAndFilterWidgetTest::initTestCase()
{
    initForgeResources();
    qRegisterMetaType<VelaColor>();
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
}

void ColorTreeAndFilterWidgetTest::init()
{
    pickerSettings().clear();
}

void ColorTreeAndFilterWidgetTest::namesItsSlots()
{
    const QMetaObject& meta = ColorTreeAndFilterWidget::staticMetaObject;
    for (const char* const name : {"handleNewGroupButtonClicked()", "handleLoadGroupFromFile()",
                                   "handleExportSwatchesButtonClicked()",
                                   "handleSelectionChanged(QItemSelection,QItemSelection)",
                                   "handleFilterChanged(QString)", "reloadSavedFilter()"}) {
        QVERIFY2(meta.indexOfSlot(name) >= 0, name);
    }
}

void ColorTreeAndFilterWidgetTest::buttonsSayWhatTheyDo()
{
    const Bench bench;
    QCOMPARE(bench.button("Create New User Group")->toolTip(),
             QStringLiteral("Create a new User Group."));
    QCOMPARE(bench.button("Import Group...")->toolTip(),
             QStringLiteral("Import swatches from a file to a new User Group."));
    QCOMPARE(bench.button("Export Swatches...")->toolTip(),
             QStringLiteral("Export selected swatches to a file."));
}

void ColorTreeAndFilterWidgetTest::aNewGroupIsUniqueAndItsNameIsTyped()
{
    Bench bench;
    bench.press("Create New User Group");
    QVERIFY(bench.lists().contains(QStringLiteral("New Color Group")));
    bench.press("Create New User Group");
    const QModelIndex made = bench.library.listIndex(QStringLiteral("New Color Group 2"));
    QVERIFY(made.isValid());
    QVERIFY(bench.library.itemAt(made)->isUserLibrary());
    auto* const editor = bench.tree->viewport()->findChildren<QLineEdit*>().constLast();
    editor->setText(QStringLiteral("Bar"));
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_VERIFY(bench.lists().contains(QStringLiteral("Bar")));
}

void ColorTreeAndFilterWidgetTest::aNewGroupShowsInSpiteOfAFilter()
{
    Bench bench;
    QTest::keyClicks(bench.filter, QStringLiteral("amber"));
    bench.press("Create New User Group");
    QCOMPARE(bench.filter->text(), QString());
    QVERIFY(!bench.tree->visualRect(bench.tree->currentIndex()).isEmpty());
    QCOMPARE(bench.tree->currentIndex().data().toString(), QStringLiteral("New Color Group"));
}

void ColorTreeAndFilterWidgetTest::theFilterNarrowsTheTree()
{
    Bench bench;
    QCOMPARE(bench.tree->model()->rowCount(), 4);
    QTest::keyClicks(bench.filter, QStringLiteral("NIGHT"));
    QCOMPARE(bench.tree->model()->rowCount(), 1);
    QCOMPARE(bench.tree->model()->index(0, 0).data().toString(), QStringLiteral("Roof"));
    QTest::keyClick(bench.filter, Qt::Key_Escape);
    QCOMPARE(bench.tree->model()->rowCount(), 4);
}

void ColorTreeAndFilterWidgetTest::theFilterComesBackWithTheWidget()
{
    Bench bench;
    QTest::keyClicks(bench.filter, QStringLiteral("sea"));
    bench.widget.hide();
    bench.tree->setFilter(QString()); // whatever happens meanwhile
    bench.widget.show();
    QCOMPARE(bench.filter->text(), QStringLiteral("sea"));
    QCOMPARE(bench.tree->model()->rowCount(), 1);
}

void ColorTreeAndFilterWidgetTest::typingOnTheTreeGoesToTheFilter()
{
    Bench bench;
    QApplication::setActiveWindow(&bench.widget);
    bench.tree->setFocus();
    QTest::keyClick(bench.tree, Qt::Key_S);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_E);
    QCOMPARE(bench.filter->text(), QStringLiteral("se"));
    QVERIFY(bench.filter->hasFocus());
}

void ColorTreeAndFilterWidgetTest::exportNeedsASelection()
{
    Bench bench;
    QVERIFY(!bench.button("Export Swatches...")->isEnabled());
    bench.tree->showItem(bench.library.listIndex(QStringLiteral("Foyer")));
    QVERIFY(bench.button("Export Swatches...")->isEnabled());
    bench.widget.clearSelection();
    QVERIFY(!bench.button("Export Swatches...")->isEnabled());
}

void ColorTreeAndFilterWidgetTest::exportsTheSelectedSwatches()
{
    Bench bench;
    const QTemporaryDir folder;
    QSettings settings = pickerSettings();
    settings.setValue(QStringLiteral("colorPickerExportDir"), folder.path());
    bench.tree->showItem(
        bench.library.index(1, 0, bench.library.listIndex(QStringLiteral("Foyer"))));
    QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("deep")));
    const QString path = folder.filePath(QStringLiteral("deep/mine")); // the suffix is added
    const DialogHand hand(&bench.widget, path);
    bench.press("Export Swatches...");
    QCOMPARE(hand.title, QStringLiteral("Export Colors to a File"));
    QCOMPARE(hand.folder, folder.path());
    QCOMPARE(hand.filters, QStringList({"Vela Color Files (*.velacolors)", "All Files (*.* *)"}));
    QCOMPARE(pickerSettings().value(QStringLiteral("colorPickerExportDir")).toString(),
             folder.filePath(QStringLiteral("deep")));

    VelaColorLibrary other;
    QVERIFY(other.importFile(path + QStringLiteral(".velacolors")));
    const QModelIndex list = other.listIndex(QStringLiteral("Foyer"));
    QCOMPARE(other.rowCount(list), 1);
    QCOMPARE(other.itemAt(other.index(0, 0, list))->color().name(), QStringLiteral("#0078a0"));
}

void ColorTreeAndFilterWidgetTest::importsAsAListOfItsOwn()
{
    Bench bench;
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("in.velacolors"));
    write(path, kSwatches);
    const QTemporaryDir last;
    pickerSettings().setValue(QStringLiteral("colorPickerExportDir"), last.path());
    const DialogHand hand(&bench.widget, path);
    bench.press("Import Group...");
    QCOMPARE(hand.folder, last.path());
    QCOMPARE(hand.title, QStringLiteral("Load Color Group From File"));
    QCOMPARE(hand.filters, QStringList({"Vela Color Files (*.velacolors)", "All Files (*.* *)"}));
    const QModelIndex list = bench.library.listIndex(QStringLiteral("Foyer 2"));
    QCOMPARE(bench.library.rowCount(list), 1);
    QVERIFY(bench.library.itemAt(list)->isUserLibrary());
    QCOMPARE(pickerSettings().value(QStringLiteral("colorPickerExportDir")).toString(),
             folder.path());
}

void ColorTreeAndFilterWidgetTest::aBrokenFileImportsNothing_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("no XML") << QByteArray("not a swatch in sight");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no list") << QByteArray("<ColorLibraryList/>");
    QTest::newRow("cut short") << QByteArray(kSwatches, 60);
}

void ColorTreeAndFilterWidgetTest::aBrokenFileImportsNothing()
{
    QFETCH(QByteArray, content);
    Bench bench;
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("in.velacolors"));
    write(path, content);
    const DialogHand hand(&bench.widget, path);
    QTest::ignoreMessage(
        QtDebugMsg, QRegularExpression(QRegularExpression::escape(path) + QStringLiteral(" .+")));
    bench.press("Import Group...");
    QCOMPARE(bench.lists(), QStringList({"Explicit Colors", "Project Swatches", "Foyer", "Roof"}));
}

void ColorTreeAndFilterWidgetTest::aCancelledDialogDoesNothing()
{
    Bench bench;
    const DialogHand importing(&bench.widget, QString());
    bench.press("Import Group...");
    QVERIFY(!importing.title.isEmpty());
    bench.tree->showItem(bench.library.listIndex(QStringLiteral("Foyer")));
    const DialogHand exporting(&bench.widget, QString());
    bench.press("Export Swatches...");
    QVERIFY(!exporting.title.isEmpty());
    QVERIFY(!pickerSettings().contains(QStringLiteral("colorPickerExportDir")));
    QCOMPARE(bench.library.rowCount(), 4);
}

void ColorTreeAndFilterWidgetTest::passesClickedColorsOn()
{
    Bench bench;
    QSignalSpy clicked(&bench.widget, &ColorTreeAndFilterWidget::colorItemClicked);
    bench.tree->showItem(
        bench.library.index(0, 0, bench.library.listIndex(QStringLiteral("Roof"))));
    QTest::mouseClick(bench.tree->viewport(), Qt::LeftButton, {},
                      bench.tree->visualRect(bench.tree->currentIndex()).center());
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(clicked.at(0).at(0).value<VelaColor>().name(), QStringLiteral("#0a0a3c"));
}

void ColorTreeAndFilterWidgetTest::openListsAreKeptWhenItCloses()
{
    Bench bench;
    bench.tree->expand(bench.tree->model()->index(2, 0));
    bench.tree->collapse(bench.tree->model()->index(3, 0));
    bench.widget.close();
    QCOMPARE(pickerSettings().value(QStringLiteral("Foyer_expanded")).toBool(), true);
    QCOMPARE(pickerSettings().value(QStringLiteral("Roof_expanded"), false).toBool(), false);
    ColorTreeAndFilterWidget other(&bench.library);
    other.show();
    QVERIFY(other.tree()->isExpanded(other.tree()->model()->index(2, 0)));
    QVERIFY(!other.tree()->isExpanded(other.tree()->model()->index(3, 0)));
    // Each time it is shown.
    other.hide();
    pickerSettings().setValue(QStringLiteral("Foyer_expanded"), false);
    pickerSettings().setValue(QStringLiteral("Roof_expanded"), true);
    other.show();
    QVERIFY(!other.tree()->isExpanded(other.tree()->model()->index(2, 0)));
    QVERIFY(other.tree()->isExpanded(other.tree()->model()->index(3, 0)));
}

QTEST_MAIN(ColorTreeAndFilterWidgetTest)
#include "ColorTreeAndFilterWidgetTest.moc"
