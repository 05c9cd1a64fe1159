#include "tests/app/WindowBench.h"

#include <QDir>
#include <QMessageBox>
#include <QObject>
#include <QtTest>

namespace {

const char kQuestion[] = "Do you want to save changes to your current show?\n";

} // namespace

/// New, open, save and save as.
class ForgeWindowShowTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { WindowBench::prepare(); }
    void init() { m_bench = std::make_unique<WindowBench>(); }
    void cleanup();

    void newStartsAnEmptyShow();
    void newForgetsTheFileName();
    void theQuestionAsItReads();
    void theQuestionComesOnlyForAModifiedShow();
    void theQuestionCancelledLeavesTheEnginePaused_data();
    void theQuestionCancelledLeavesTheEnginePaused();
    void theQuestionRefusedGoesOn_data();
    void theQuestionRefusedGoesOn();
    void theQuestionAffirmedSavesFirst();
    void theQuestionAffirmedGoesOnWithoutAFileToo();
    void aPausedEngineStaysPaused();

    void openAsksForAFile();
    void openCancelledKeepsTheShowAndRuns();
    void openReadsTheFile();
    void openAddsTheSuffix_data();
    void openAddsTheSuffix();
    void anUnreadableShowIsEmptyUnderItsName_data();
    void anUnreadableShowIsEmptyUnderItsName();
    void anUnknownTypeLosesOnlyItsEffect();
    void aNestedTimelineKeepsItsPlace();
    void theShowStartsAtItsBeginning();

    void saveWritesTheShow();
    void saveAsksWhereThereIsNoName();
    void saveCancelledLeavesTheEnginePaused();
    void saveAddsTheSuffix_data();
    void saveAddsTheSuffix();
    void aFailedSaveNamesTheMap_data();
    void aFailedSaveNamesTheMap();
    void saveAsAlwaysAsks();
    void saveAsCancelledForgetsTheName();
    void whatIsSavedReadsBack();

private:
    void modify() { m_bench->editor()->setModified(true); }
    QString title() const { return m_bench->window->windowTitle(); }
    int effects() const { return m_bench->root()->effectList().size(); }

    std::unique_ptr<WindowBench> m_bench;
};

void ForgeWindowShowTest::cleanup()
{
    const QString complaints = m_bench->dialogs.complaints();
    m_bench.reset();
    QCOMPARE(complaints, QString());
}

void ForgeWindowShowTest::newStartsAnEmptyShow()
{
    m_bench->open(m_bench->map(), m_bench->show());
    QCOMPARE(effects(), 1);
    const QPointer<MetaEffect> former = m_bench->root();
    QPointer<Effect> child = former->effectList().at(0);
    m_bench->action("newShowAction")->trigger();
    QVERIFY(former == nullptr);
    QVERIFY(child == nullptr);
    QCOMPARE(effects(), 0);
    QCOMPARE(m_bench->table()->rowCount(), 0);
    QVERIFY(m_bench->root()->active());
    QVERIFY(m_bench->root()->compiled());
    QVERIFY(m_bench->editor()->isEnabled());
    QCOMPARE(title(), QStringLiteral("Orrin Pageant Forge "));
    QVERIFY(m_bench->isRunning());
    QCOMPARE(m_bench->sliderTimer()->interval(), 500);
    QSignalSpy painted(m_bench->root(), &MetaEffect::internalUpdateLightsComplete);
    QVERIFY(painted.wait()); // the new root is in the engine
}

void ForgeWindowShowTest::newForgetsTheFileName()
{
    m_bench->open(QString(), m_bench->show());
    m_bench->action("newShowAction")->trigger();
    m_bench->dialogs.expectFileCancelled();
    m_bench->action("saveShowAction")->trigger();
    QCOMPARE(m_bench->dialogs.seen().size(), 1);
}

void ForgeWindowShowTest::theQuestionAsItReads()
{
    m_bench->open(QString(), m_bench->show());
    modify();
    m_bench->dialogs.expectBox(QStringLiteral("No"));
    m_bench->action("newShowAction")->trigger();
    QCOMPARE(m_bench->dialogs.seen().size(), 1);
    const DialogAnswers::Seen& box = m_bench->dialogs.seen().at(0);
    QCOMPARE(box.title, QStringLiteral("Pageant Forge"));
    QCOMPARE(box.text, QLatin1String(kQuestion));
    QCOMPARE(box.buttons,
             QStringList({QStringLiteral("Cancel"), QStringLiteral("No"), QStringLiteral("Yes")}));
    QVERIFY(box.flags.testFlag(Qt::WindowStaysOnTopHint));
}

void ForgeWindowShowTest::theQuestionComesOnlyForAModifiedShow()
{
    m_bench->open(QString(), m_bench->show());
    m_bench->action("newShowAction")->trigger();
    m_bench->dialogs.expectFileCancelled();
    m_bench->action("openShowAction")->trigger();
    QCOMPARE(m_bench->dialogs.seen().size(), 1); // the file dialog
}

void ForgeWindowShowTest::theQuestionCancelledLeavesTheEnginePaused_data()
{
    QTest::addColumn<QString>("action");
    QTest::newRow("new") << QStringLiteral("newShowAction");
    QTest::newRow("open") << QStringLiteral("openShowAction");
}

void ForgeWindowShowTest::theQuestionCancelledLeavesTheEnginePaused()
{
    QFETCH(const QString, action);
    const QString file = m_bench->show();
    m_bench->open(QString(), file);
    modify();
    const QPointer<MetaEffect> root = m_bench->root();
    m_bench->dialogs.expectBox(QStringLiteral("Cancel"));
    m_bench->action(qPrintable(action))->trigger();
    QVERIFY(!m_bench->isRunning());
    QCOMPARE(m_bench->root(), root.data());
    QVERIFY(m_bench->editor()->isModified());
    QCOMPARE(title(), QStringLiteral("Orrin Pageant Forge ") + file);
    // The play button gets it going again.
    m_bench->pauseButton()->click();
    m_bench->pauseButton()->click();
    QVERIFY(m_bench->isRunning());
}

void ForgeWindowShowTest::theQuestionRefusedGoesOn_data()
{
    theQuestionCancelledLeavesTheEnginePaused_data();
}

void ForgeWindowShowTest::theQuestionRefusedGoesOn()
{
    QFETCH(const QString, action);
    const QString file = m_bench->show();
    const QString before = WindowBench::text(file);
    m_bench->open(QString(), file);
    modify();
    m_bench->dialogs.expectBox(QStringLiteral("No"));
    if (action == QLatin1String("openShowAction")) {
        m_bench->dialogs.expectFile(m_bench->file(
            "other.sho",
            WindowBench::rootXml(WindowBench::effectXml(1, 500) + WindowBench::effectXml(2, 700))));
    }
    m_bench->action(qPrintable(action))->trigger();
    QVERIFY(m_bench->isRunning());
    QCOMPARE(effects(), action == QLatin1String("openShowAction") ? 2 : 0);
    QCOMPARE(WindowBench::text(file), before);
}

void ForgeWindowShowTest::theQuestionAffirmedSavesFirst()
{
    const QString file = m_bench->show();
    m_bench->open(QString(), file);
    m_bench->root()->effectList().at(0)->setName(QStringLiteral("Renamed"));
    modify();
    m_bench->dialogs.expectBox(QStringLiteral("Yes"));
    m_bench->action("newShowAction")->trigger();
    QVERIFY(WindowBench::text(file).contains(QStringLiteral("<name>Renamed</name>")));
    QVERIFY(!m_bench->editor()->isModified());
    QCOMPARE(effects(), 0);
    QVERIFY(m_bench->isRunning());
}

void ForgeWindowShowTest::theQuestionAffirmedGoesOnWithoutAFileToo()
{
    m_bench->open(m_bench->map());
    modify();
    const QPointer<MetaEffect> root = m_bench->root();
    m_bench->dialogs.expectBox(QStringLiteral("Yes"));
    m_bench->dialogs.expectFileCancelled();
    m_bench->action("newShowAction")->trigger();
    QVERIFY(root == nullptr);
    QVERIFY(m_bench->isRunning()); // as it was before the whole operation
    QCOMPARE(title(), QStringLiteral("Orrin Pageant Forge "));
}

void ForgeWindowShowTest::aPausedEngineStaysPaused()
{
    const QString file = m_bench->show();
    m_bench->open(QString(), file);
    m_bench->pauseButton()->click();
    QVERIFY(!m_bench->isRunning());
    m_bench->action("newShowAction")->trigger();
    QVERIFY(!m_bench->isRunning());
    m_bench->dialogs.expectFile(file);
    m_bench->action("openShowAction")->trigger();
    QVERIFY(!m_bench->isRunning());
    m_bench->action("saveShowAction")->trigger();
    QVERIFY(!m_bench->isRunning());
    m_bench->dialogs.expectFileCancelled();
    m_bench->action("openShowAction")->trigger();
    QVERIFY(!m_bench->isRunning());
}

void ForgeWindowShowTest::openAsksForAFile()
{
    {
        QSettings store = WindowBench::store();
        store.setValue(QStringLiteral("/show_path"), m_bench->dir.path());
    }
    m_bench->open();
    m_bench->dialogs.expectFileCancelled();
    m_bench->action("openShowAction")->trigger();
    const DialogAnswers::Seen& dialog = m_bench->dialogs.seen().at(0);
    QCOMPARE(dialog.title, QStringLiteral("Select A Show File"));
    QCOMPARE(dialog.filters, QStringList({QStringLiteral("Show Files (*.sho)"),
                                          QStringLiteral("All Files (*.*)")}));
    QCOMPARE(dialog.folder, QDir(m_bench->dir.path()).absolutePath());
    QCOMPARE(dialog.acceptMode, QFileDialog::AcceptOpen);
}

void ForgeWindowShowTest::openCancelledKeepsTheShowAndRuns()
{
    const QString file = m_bench->show();
    m_bench->open(QString(), file);
    const QPointer<MetaEffect> root = m_bench->root();
    m_bench->dialogs.expectFileCancelled();
    m_bench->action("openShowAction")->trigger();
    QVERIFY(m_bench->isRunning());
    QVERIFY(root != nullptr);
    QCOMPARE(m_bench->root(), root.data());
    QCOMPARE(title(), QStringLiteral("Orrin Pageant Forge ") + file);
}

void ForgeWindowShowTest::openReadsTheFile()
{
    const QString file = m_bench->show();
    m_bench->open(m_bench->map());
    const QPointer<MetaEffect> former = m_bench->root();
    m_bench->dialogs.expectFile(file);
    m_bench->action("openShowAction")->trigger();
    QVERIFY(former == nullptr);
    QVERIFY(m_bench->isRunning());
    QCOMPARE(title(), QStringLiteral("Orrin Pageant Forge ") + file);
    QCOMPARE(effects(), 1);
    QCOMPARE(m_bench->root()->end(), 10000U);
    QVERIFY(m_bench->root()->active());
    QVERIFY(m_bench->root()->compiled());
    QCOMPARE(m_bench->table()->rowCount(), 1);
    QCOMPARE(m_bench->table()->item(0, MetaWidget::GroupColumn)->text(), QStringLiteral("Facade"));
    QCOMPARE(m_bench->sliderTimer()->interval(), 500);
    QVERIFY(m_bench->sliderTimer()->isActive());
    QTRY_COMPARE(m_bench->sliderTimer()->interval(), 100);
    m_bench->window->close();
    QCOMPARE(WindowBench::store().value(QStringLiteral("/show_path")).toString(),
             m_bench->dir.path());
}

void ForgeWindowShowTest::openAddsTheSuffix_data()
{
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<QString>("read");
    QTest::newRow("no suffix") << QStringLiteral("a") << QStringLiteral("a.sho");
    QTest::newRow("another suffix") << QStringLiteral("a.xml") << QStringLiteral("a.xml.sho");
    QTest::newRow("capitals") << QStringLiteral("A.SHO") << QStringLiteral("A.SHO");
    QTest::newRow("as it should be") << QStringLiteral("b.sho") << QStringLiteral("b.sho");
}

void ForgeWindowShowTest::openAddsTheSuffix()
{
    QFETCH(const QString, chosen);
    QFETCH(const QString, read);
    QVERIFY(!m_bench->file(qPrintable(chosen), QStringLiteral("junk")).isEmpty());
    const QString file = m_bench->show(qPrintable(read));
    m_bench->open();
    m_bench->dialogs.expectFile(m_bench->path(qPrintable(chosen)));
    m_bench->action("openShowAction")->trigger();
    QCOMPARE(effects(), 1);
    QCOMPARE(title(), QStringLiteral("Orrin Pageant Forge ") + file);
}

void ForgeWindowShowTest::anUnreadableShowIsEmptyUnderItsName_data()
{
    QTest::addColumn<QString>("content");
    QTest::newRow("missing") << QString();
    QTest::newRow("empty") << QStringLiteral("");
    QTest::newRow("cut off") << QStringLiteral("<effect><type>Meta Effect</type>");
    QTest::newRow("a declaration") << QStringLiteral("<?xml version=\"1.0\"?><effect/>");
    QTest::newRow("another root") << QStringLiteral("<map/>");
}

void ForgeWindowShowTest::anUnreadableShowIsEmptyUnderItsName()
{
    QFETCH(const QString, content);
    const QString file = m_bench->path("bad.sho");
    if (!content.isNull()) {
        QVERIFY(!m_bench->file("bad.sho", content).isEmpty());
    }
    QTest::ignoreMessage(QtDebugMsg,
                         QRegularExpression(QStringLiteral("Show refused: .*bad\\.sho: .+")));
    m_bench->open(m_bench->map(), file);
    QCOMPARE(effects(), 0);
    QCOMPARE(title(), QStringLiteral("Orrin Pageant Forge ") + file);
    QVERIFY(m_bench->editor()->isEnabled());
    QVERIFY(m_bench->isRunning());
    // The name holds: saving does not ask.
    m_bench->action("saveShowAction")->trigger();
    QVERIFY(WindowBench::text(file).startsWith(QStringLiteral("<effect>")));
}

void ForgeWindowShowTest::anUnknownTypeLosesOnlyItsEffect()
{
    const QString file = m_bench->file(
        "mixed.sho", WindowBench::rootXml(
                         WindowBench::effectXml(1, 500) +
                         WindowBench::effectXml(2, 600, QString(), QStringLiteral("Laser Harp")) +
                         WindowBench::effectXml(3, 700, QString(), QStringLiteral("Cross Fade"))));
    QTest::ignoreMessage(QtDebugMsg, "Unsupported Effect Type: Laser Harp");
    m_bench->open(m_bench->map(), file);
    QCOMPARE(m_bench->table()->rowCount(), 2);
    QCOMPARE(m_bench->table()->item(0, MetaWidget::NameColumn)->text(), QStringLiteral("E1"));
    QCOMPARE(m_bench->table()->item(1, MetaWidget::NameColumn)->text(), QStringLiteral("E3"));
    QCOMPARE(m_bench->root()->end(), 700U);
    QVERIFY(m_bench->isRunning());
}

void ForgeWindowShowTest::aNestedTimelineKeepsItsPlace()
{
    const QString nested =
        QStringLiteral("<effect><type>Meta Effect</type><name>Part</name><eid>1</eid>"
                       "<begin>2000</begin><end>5000</end><startfixedtime>2000</startfixedtime>"
                       "<endfixedtime>3000</endfixedtime>%1</effect>")
            .arg(WindowBench::effectXml(1, 1000));
    m_bench->open(m_bench->map(), m_bench->file("nested.sho", WindowBench::rootXml(nested)));
    QCOMPARE(effects(), 1);
    QCOMPARE(m_bench->root()->effectList().at(0)->begin(), 2000U);
    QCOMPARE(m_bench->root()->effectList().at(0)->end(), 5000U);
    QCOMPARE(m_bench->table()->item(0, MetaWidget::StartColumn)->data(Qt::EditRole).toDouble(),
             2.0);
}

void ForgeWindowShowTest::theShowStartsAtItsBeginning()
{
    m_bench->open(m_bench->map());
    QTest::qWait(30); // the clock has run before
    m_bench->dialogs.expectFile(m_bench->show());
    const QDateTime before = QDateTime::currentDateTime();
    m_bench->action("openShowAction")->trigger();
    const QDateTime start = m_bench->root()->startTime();
    QVERIFY(start >= before.addMSecs(-1));
    QVERIFY(start <= QDateTime::currentDateTime());
    QCOMPARE(m_bench->root()->elapsed(), 0);
}

void ForgeWindowShowTest::saveWritesTheShow()
{
    const QString file = m_bench->show();
    m_bench->open(QString(), file);
    m_bench->root()->effectList().at(0)->setName(QString::fromUtf8("B\xc3\xbchne \xe2\x86\x92"));
    modify();
    m_bench->action("saveShowAction")->trigger();
    const QString text = WindowBench::text(file);
    QVERIFY(text.startsWith(QStringLiteral("<effect>\n<type>Meta Effect</type>\n")));
    QVERIFY(text.contains(QString::fromUtf8("<name>B\xc3\xbchne \xe2\x86\x92</name>")));
    QVERIFY(!m_bench->editor()->isModified());
    QVERIFY(m_bench->isRunning());
    QCOMPARE(title(), QStringLiteral("Orrin Pageant Forge ") + file);
    QCOMPARE(m_bench->dialogs.seen().size(), 0);
    // Nothing else is left beside it.
    QCOMPARE(QDir(m_bench->dir.path()).entryList(QDir::Files),
             QStringList(QStringLiteral("night.sho")));
}

void ForgeWindowShowTest::saveAsksWhereThereIsNoName()
{
    {
        QSettings store = WindowBench::store();
        store.setValue(QStringLiteral("/show_path"), m_bench->dir.path());
    }
    m_bench->open(m_bench->map());
    modify();
    const QString file = m_bench->path("first.sho");
    m_bench->dialogs.expectFile(file);
    m_bench->action("saveShowAction")->trigger();
    const DialogAnswers::Seen& dialog = m_bench->dialogs.seen().at(0);
    QCOMPARE(dialog.title, QStringLiteral("Select A Show File"));
    QCOMPARE(dialog.filters, QStringList(QStringLiteral("Show Files (*.sho)")));
    QCOMPARE(dialog.folder, QDir(m_bench->dir.path()).absolutePath());
    QCOMPARE(dialog.acceptMode, QFileDialog::AcceptSave);
    QVERIFY(WindowBench::text(file).startsWith(QStringLiteral("<effect>")));
    QCOMPARE(title(), QStringLiteral("Orrin Pageant Forge ") + file);
    QVERIFY(m_bench->isRunning());
    m_bench->action("saveShowAction")->trigger(); // now it has one
    QCOMPARE(m_bench->dialogs.seen().size(), 1);
}

void ForgeWindowShowTest::saveCancelledLeavesTheEnginePaused()
{
    m_bench->open(m_bench->map());
    modify();
    const QString before = title();
    m_bench->dialogs.expectFileCancelled();
    m_bench->action("saveShowAction")->trigger();
    QVERIFY(!m_bench->isRunning());
    QVERIFY(m_bench->editor()->isModified());
    QCOMPARE(title(), before);
}

void ForgeWindowShowTest::saveAddsTheSuffix_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("written");
    QTest::newRow("no suffix") << QStringLiteral("a") << QStringLiteral("a.sho");
    QTest::newRow("capitals") << QStringLiteral("a.SHO") << QStringLiteral("a.SHO");
    QTest::newRow("another suffix") << QStringLiteral("a.txt") << QStringLiteral("a.txt.sho");
    QTest::newRow("complete") << QStringLiteral("a.sho") << QStringLiteral("a.sho");
}

void ForgeWindowShowTest::saveAddsTheSuffix()
{
    QFETCH(const QString, typed);
    QFETCH(const QString, written);
    m_bench->open(m_bench->map());
    m_bench->dialogs.expectFile(m_bench->path(qPrintable(typed)));
    m_bench->action("saveShowAction")->trigger();
    const QString file = m_bench->path(qPrintable(written));
    QCOMPARE(QDir(m_bench->dir.path()).entryList({QStringLiteral("a*")}, QDir::Files),
             QStringList(written));
    QCOMPARE(title(), QStringLiteral("Orrin Pageant Forge ") + file);
    m_bench->window->close();
    QCOMPARE(WindowBench::store().value(QStringLiteral("/show_path")).toString(),
             m_bench->dir.path());
}

void ForgeWindowShowTest::aFailedSaveNamesTheMap_data()
{
    QTest::addColumn<bool>("modified");
    QTest::addColumn<bool>("withMap");
    QTest::newRow("modified") << true << true;
    QTest::newRow("not modified") << false << true;
    QTest::newRow("no map") << true << false;
}

void ForgeWindowShowTest::aFailedSaveNamesTheMap()
{
    QFETCH(const bool, modified);
    QFETCH(const bool, withMap);
    const QString map = withMap ? m_bench->map() : QString();
    const QString file = m_bench->path("no such folder/a.sho");
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(QStringLiteral("Show refused: ")));
    m_bench->open(map, file);
    m_bench->editor()->setModified(modified);
    m_bench->window->setWindowTitle(QStringLiteral("something else"));
    QTest::ignoreMessage(QtDebugMsg,
                         QRegularExpression(QStringLiteral("Could not open show file .*a\\.sho")));
    m_bench->dialogs.expectBox(QStringLiteral("OK"));
    m_bench->action("saveShowAction")->trigger();
    const DialogAnswers::Seen& box = m_bench->dialogs.seen().at(0);
    QCOMPARE(box.title, QStringLiteral("Save Failed"));
    QCOMPARE(box.text, QStringLiteral("Unable to save file %1.").arg(map));
    QCOMPARE(box.icon, QMessageBox::Critical);
    QCOMPARE(m_bench->editor()->isModified(), modified);
    QCOMPARE(title(), QStringLiteral("Orrin Pageant Forge ") + file);
    QVERIFY(m_bench->isRunning());
}

void ForgeWindowShowTest::saveAsAlwaysAsks()
{
    const QString file = m_bench->show();
    m_bench->open(QString(), file);
    const QString before = WindowBench::text(file);
    m_bench->root()->effectList().at(0)->setName(QStringLiteral("Renamed"));
    const QString other = m_bench->path("other");
    m_bench->dialogs.expectFile(other);
    m_bench->action("saveShowAsAction")->trigger();
    const DialogAnswers::Seen& dialog = m_bench->dialogs.seen().at(0);
    QCOMPARE(dialog.title, QStringLiteral("Select A Show File"));
    QCOMPARE(dialog.filters, QStringList(QStringLiteral("Show Files (*.sho)")));
    QCOMPARE(dialog.folder, QDir(m_bench->dir.path()).absolutePath());
    QCOMPARE(dialog.acceptMode, QFileDialog::AcceptSave);
    QCOMPARE(WindowBench::text(file), before);
    QVERIFY(WindowBench::text(other + QStringLiteral(".sho")).contains(QStringLiteral("Renamed")));
    QCOMPARE(title(), QStringLiteral("Orrin Pageant Forge %1.sho").arg(other));
    QVERIFY(m_bench->isRunning());
}

void ForgeWindowShowTest::saveAsCancelledForgetsTheName()
{
    const QString file = m_bench->show();
    m_bench->open(QString(), file);
    m_bench->dialogs.expectFileCancelled();
    m_bench->action("saveShowAsAction")->trigger();
    QVERIFY(!m_bench->isRunning());
    QCOMPARE(title(), QStringLiteral("Orrin Pageant Forge ") + file);
    m_bench->dialogs.expectFileCancelled();
    m_bench->action("saveShowAction")->trigger();
    QCOMPARE(m_bench->dialogs.seen().size(), 2); // it asks: there is no name any more
}

void ForgeWindowShowTest::whatIsSavedReadsBack()
{
    // The second one waits for an hour: its fade would be saved as the transparency of the moment.
    const QString later = QStringLiteral("<startfixedtime>3600000</startfixedtime>"
                                         "<begin>3600000</begin><end>3602500</end>"
                                         "<fadein>250</fadein>");
    const QString file = m_bench->file(
        "two.sho", WindowBench::rootXml(
                       WindowBench::effectXml(4, 1500, QStringLiteral("<priority>3</priority>")) +
                       WindowBench::effectXml(9, 2500, later, QStringLiteral("Cross Fade"))));
    m_bench->open(m_bench->map(), file);
    m_bench->action("saveShowAction")->trigger();
    const QString first = WindowBench::text(file);
    m_bench->dialogs.expectFile(file);
    m_bench->action("openShowAction")->trigger();
    QCOMPARE(effects(), 2);
    QVERIFY(first.contains(QStringLiteral("<begin>3600000</begin>")));
    m_bench->action("saveShowAction")->trigger();
    QCOMPARE(WindowBench::text(file), first);
}

QTEST_MAIN(ForgeWindowShowTest)
#include "ForgeWindowShowTest.moc"
