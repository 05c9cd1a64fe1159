#include "color/VelaColor.h"
#include "editor/FixedColorWidget.h"
#include "editor/GroupPicker.h"
#include "picker/RgbPickerWidget.h"
#include "tests/app/WindowBench.h"

#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

namespace {

QClipboard& clipboard()
{
    return *QGuiApplication::clipboard();
}

} // namespace

/// The edit actions, and what the window makes of a show that was edited.
class ForgeWindowEditingTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { WindowBench::prepare(); }
    void init();
    void cleanup();

    void theActionsReachTheEditor_data();
    void theActionsReachTheEditor();
    void aCellEditorKeepsItsShortcuts();
    void editsWhileTheShowRuns();
    void eachEditAsks_data();
    void eachEditAsks();
    void aSavedEditAsksNoMore();
    void aPasteAloneIsNotAskedAbout();
    void savingWritesWhatWasEdited();
    void aNewEffectPlaysAtOnce();
    void aLostGroupReadsNoneOnTheNewMap();
    void aMapThatIsLoadedWithoutItsEffectsEmptiesTheTable();
    void anotherShowUnderAnOpenCell();
    void preloadingPausesTheEngine();
    void theEditorIsOffBeforeAMapOrAShow();

private:
    void start(const QString& children)
    {
        m_bench->open(m_bench->map(), m_bench->file("night.sho", WindowBench::rootXml(children)));
        m_bench->window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_bench->window.get()));
    }
    void startTwo() { start(WindowBench::effectXml(1, 1000) + WindowBench::effectXml(2, 2000)); }
    QPoint placeOf(int row, int column) const
    {
        return m_bench->table()->visualItemRect(m_bench->table()->item(row, column)).center();
    }
    void click(int row, int column) const
    {
        QTest::mouseClick(m_bench->table()->viewport(), Qt::LeftButton, Qt::NoModifier,
                          placeOf(row, column));
    }
    QLineEdit* openCell(int row, int column) const
    {
        click(row, column);
        QTest::mouseDClick(m_bench->table()->viewport(), Qt::LeftButton, Qt::NoModifier,
                           placeOf(row, column));
        return m_bench->table()->viewport()->findChild<QLineEdit*>();
    }
    void rename(const QString& name) const
    {
        QLineEdit* const editor = openCell(0, MetaWidget::NameColumn);
        QVERIFY(editor != nullptr);
        editor->selectAll();
        QTest::keyClicks(editor, name);
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents();
    }
    QString names() const
    {
        QStringList list;
        for (int row = 0; row < m_bench->table()->rowCount(); ++row) {
            list.append(m_bench->table()->item(row, MetaWidget::NameColumn)->text());
        }
        return list.join(QLatin1Char(' '));
    }

    std::unique_ptr<WindowBench> m_bench;
};

void ForgeWindowEditingTest::init()
{
    m_bench = std::make_unique<WindowBench>();
    clipboard().setText(QStringLiteral("plain"));
}

void ForgeWindowEditingTest::cleanup()
{
    const QString complaints = m_bench->dialogs.complaints();
    m_bench.reset();
    QCOMPARE(complaints, QString());
}

void ForgeWindowEditingTest::theActionsReachTheEditor_data()
{
    QTest::addColumn<QByteArray>("action");
    QTest::addColumn<QString>("after");
    QTest::addColumn<bool>("copies");
    QTest::newRow("copy") << QByteArray("copyEffectAction") << QStringLiteral("E1 E2") << true;
    QTest::newRow("cut") << QByteArray("cutEffectAction") << QStringLiteral("E2") << true;
    QTest::newRow("paste") << QByteArray("pasteEffectAction") << QStringLiteral("E1 E2 Copy of E9")
                           << false;
    QTest::newRow("delete") << QByteArray("deleteEffectAction") << QStringLiteral("E2") << false;
    QTest::newRow("select all") << QByteArray("selectAllEffectAction") << QStringLiteral("E1 E2")
                                << false;
}

void ForgeWindowEditingTest::theActionsReachTheEditor()
{
    QFETCH(const QByteArray, action);
    QFETCH(const QString, after);
    QFETCH(const bool, copies);
    startTwo();
    clipboard().setText(WindowBench::effectXml(9, 500));
    click(0, MetaWidget::PriorityColumn);
    QAction* const subject = m_bench->action(action.constData());
    QVERIFY(subject->isEnabled());
    if (subject->shortcut().isEmpty()) {
        subject->trigger();
    } else {
        const int keys = subject->shortcut()[0];
        QTest::keyClick(m_bench->window.get(), static_cast<Qt::Key>(keys & ~Qt::CTRL),
                        Qt::ControlModifier);
    }
    QCOMPARE(names(), after);
    QCOMPARE(clipboard().text().startsWith(QLatin1String("<EFFECT-ENTRY>\n<effect>")), copies);
}

void ForgeWindowEditingTest::aCellEditorKeepsItsShortcuts()
{
    startTwo();
    QLineEdit* const editor = openCell(0, MetaWidget::NameColumn);
    QVERIFY(editor != nullptr);
    editor->selectAll();
    QTest::keyClick(editor, Qt::Key_X, Qt::ControlModifier);
    QCOMPARE(clipboard().text(), QStringLiteral("E1")); // the name, not the effect
    QTest::keyClick(editor, Qt::Key_V, Qt::ControlModifier);
    QTest::keyClick(editor, Qt::Key_V, Qt::ControlModifier);
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents();
    QCOMPARE(names(), QStringLiteral("E1E1 E2"));
}

void ForgeWindowEditingTest::editsWhileTheShowRuns()
{
    startTwo();
    QSignalSpy frames(m_bench->engine(), &EffectEngine::EngineTick);
    QVERIFY(m_bench->isRunning());
    QVERIFY(frames.wait());
    rename(QStringLiteral("Dusk"));
    click(1, MetaWidget::PriorityColumn);
    m_bench->action("deleteEffectAction")->trigger();
    const int before = frames.count();
    QTRY_VERIFY(frames.count() > before + 1);
    QVERIFY(m_bench->isRunning());
    QCOMPARE(names(), QStringLiteral("Dusk"));
    QTRY_COMPARE(m_bench->table()->item(0, MetaWidget::RunningColumn)->text(), QStringLiteral("1"));
}

void ForgeWindowEditingTest::eachEditAsks_data()
{
    QTest::addColumn<QByteArray>("edit");
    QTest::newRow("a name") << QByteArray("name");
    QTest::newRow("a deletion") << QByteArray("deleteEffectAction");
    QTest::newRow("a cut") << QByteArray("cutEffectAction");
    QTest::newRow("a new effect") << QByteArray("new");
    QTest::newRow("a color in the effect's form") << QByteArray("color");
}

void ForgeWindowEditingTest::eachEditAsks()
{
    QFETCH(const QByteArray, edit);
    startTwo();
    click(0, MetaWidget::PriorityColumn);
    if (edit == "name") {
        rename(QStringLiteral("Dusk"));
    } else if (edit == "new") {
        m_bench->dialogs.expect([](QWidget* dialog) { qobject_cast<QDialog*>(dialog)->accept(); });
        QTest::mouseClick(
            m_bench->window->findChild<QPushButton*>(QStringLiteral("newEffectButton")),
            Qt::LeftButton);
    } else if (edit == "color") {
        m_bench->dialogs.expect([](QWidget* dialog) {
            emit dialog->findChild<VelaColorPickerLib::RgbPickerWidget*>()->colorChanged(
                VelaColor(QColor(1, 2, 3)), QString());
            qobject_cast<QDialog*>(dialog)->accept();
        });
        m_bench->window->findChild<FixedColorWidget*>()->chooseColorClicked();
    } else {
        m_bench->action(edit.constData())->trigger();
    }
    const QString edited = names();
    m_bench->dialogs.expectBox(QStringLiteral("Cancel"));
    QVERIFY(!m_bench->window->close());
    m_bench->dialogs.expectBox(QStringLiteral("Cancel"));
    m_bench->action("newShowAction")->trigger();
    QCOMPARE(names(), edited);
    m_bench->dialogs.expectBox(QStringLiteral("No"));
    m_bench->action("newShowAction")->trigger();
    QCOMPARE(names(), QString());
}

void ForgeWindowEditingTest::aSavedEditAsksNoMore()
{
    startTwo();
    rename(QStringLiteral("Dusk"));
    m_bench->action("saveShowAction")->trigger();
    QVERIFY(!m_bench->editor()->isModified());
    m_bench->action("newShowAction")->trigger();
    QCOMPARE(m_bench->dialogs.seen().size(), 0);
    QCOMPARE(names(), QString());
}

void ForgeWindowEditingTest::aPasteAloneIsNotAskedAbout()
{
    startTwo();
    click(0, MetaWidget::PriorityColumn);
    m_bench->action("copyEffectAction")->trigger();
    m_bench->action("pasteEffectAction")->trigger();
    QCOMPARE(names(), QStringLiteral("E1 E2 Copy of E1"));
    QVERIFY(m_bench->window->close());
    QCOMPARE(m_bench->dialogs.seen().size(), 0);
}

void ForgeWindowEditingTest::savingWritesWhatWasEdited()
{
    startTwo();
    rename(QStringLiteral("Dusk"));
    m_bench->dialogs.expectBox(QStringLiteral("Yes"));
    m_bench->action("newShowAction")->trigger();
    const QString saved = WindowBench::text(m_bench->path("night.sho"));
    QVERIFY(saved.contains(QStringLiteral("<name>Dusk</name>")));
    QVERIFY(saved.contains(QStringLiteral("<name>E2</name>")));
}

void ForgeWindowEditingTest::aNewEffectPlaysAtOnce()
{
    m_bench->open(m_bench->map());
    m_bench->window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_bench->window.get()));
    m_bench->window->findChild<QComboBox*>(QStringLiteral("effectTypeBox"))
        ->setCurrentText(QStringLiteral("Fixed Color"));
    m_bench->dialogs.expect([](QWidget* dialog) {
        dialog->findChild<QAbstractButton*>(QStringLiteral("m_syncBox"))->click();
        dialog->findChild<QPushButton*>(QStringLiteral("m_okButton"))->click();
    });
    QTest::mouseClick(m_bench->window->findChild<QPushButton*>(QStringLiteral("newEffectButton")),
                      Qt::LeftButton);
    QCOMPARE(m_bench->root()->effectByEid(1)->gid(), WindowBench::kGroup);
    QCOMPARE(m_bench->table()->item(0, MetaWidget::GroupColumn)->text(), QStringLiteral("Facade"));
    QTRY_VERIFY(m_bench->root()->effectByEid(1)->active());
    QTRY_COMPARE(m_bench->table()->item(0, MetaWidget::RunningColumn)->text(), QStringLiteral("1"));
    // The slider's label follows the new length.
    QTRY_COMPARE(m_bench->totalTime()->text(), QStringLiteral("1.000000"));
}

void ForgeWindowEditingTest::aLostGroupReadsNoneOnTheNewMap()
{
    startTwo();
    click(0, MetaWidget::PriorityColumn);
    QCOMPARE(m_bench->table()->item(0, MetaWidget::GroupColumn)->text(), QStringLiteral("Facade"));
    m_bench->dialogs.expectFile(
        m_bench->file("bare.map", QStringLiteral("<map><version>1</version></map>")));
    m_bench->dialogs.expectBox(QStringLiteral("No"));
    m_bench->action("loadMapAction")->trigger();
    QCOMPARE(names(), QStringLiteral("E1 E2"));
    QCOMPARE(m_bench->table()->item(0, MetaWidget::GroupColumn)->text(), QStringLiteral("None"));
    rename(QStringLiteral("Dusk"));
    QCOMPARE(m_bench->root()->effectByEid(1)->name(), QStringLiteral("Dusk"));
}

void ForgeWindowEditingTest::aMapThatIsLoadedWithoutItsEffectsEmptiesTheTable()
{
    startTwo();
    click(0, MetaWidget::PriorityColumn);
    m_bench->dialogs.expectFile(m_bench->map("other.map"));
    m_bench->dialogs.expectBox(QStringLiteral("Yes"));
    m_bench->action("loadMapAction")->trigger();
    QCOMPARE(names(), QString());
    QVERIFY(m_bench->table()->selectedItems().isEmpty());
    m_bench->action("deleteEffectAction")->trigger(); // of nothing
    m_bench->dialogs.expectBox(QStringLiteral("No")); // which counts all the same
    m_bench->action("newShowAction")->trigger();
}

void ForgeWindowEditingTest::anotherShowUnderAnOpenCell()
{
    startTwo();
    QLineEdit* const editor = openCell(0, MetaWidget::NameColumn);
    QVERIFY(editor != nullptr);
    QTest::keyClicks(editor, QStringLiteral("Half"));
    m_bench->dialogs.expectFile(m_bench->show("other.sho"));
    m_bench->action("openShowAction")->trigger();
    QCoreApplication::processEvents();
    QCOMPARE(names(), QStringLiteral("E1"));
    QCOMPARE(m_bench->root()->effectByEid(1)->name(), QStringLiteral("E1"));
}

void ForgeWindowEditingTest::preloadingPausesTheEngine()
{
    startTwo();
    m_bench->editor()->handleFlashEffectPreloadToggled(true);
    QVERIFY(!m_bench->isRunning());
    m_bench->editor()->handleFlashEffectPreloadToggled(false);
    QVERIFY(m_bench->isRunning());
}

void ForgeWindowEditingTest::theEditorIsOffBeforeAMapOrAShow()
{
    m_bench->open();
    QVERIFY(!m_bench->editor()->isEnabled());
    for (const char* const name : {"copyEffectAction", "cutEffectAction", "pasteEffectAction",
                                   "deleteEffectAction", "selectAllEffectAction"}) {
        QVERIFY(m_bench->action(name)->isEnabled());
        m_bench->action(name)->trigger(); // harmless
    }
    QCOMPARE(m_bench->table()->rowCount(), 0);
}

QTEST_MAIN(ForgeWindowEditingTest)
#include "ForgeWindowEditingTest.moc"
