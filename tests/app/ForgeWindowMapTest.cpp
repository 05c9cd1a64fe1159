#include "tests/app/WindowBench.h"

#include <QDir>
#include <QObject>
#include <QProgressDialog>
#include <QtTest>

/// Loading a map, the simulation it brings, and the progress of a long load.
class ForgeWindowMapTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { WindowBench::prepare(); }
    void init() { m_bench = std::make_unique<WindowBench>(); }
    void cleanup();

    void loadAsksForAFile();
    void loadCancelledChangesNothing();
    void loadReadsTheMap();
    void theEngineIsAsItWas_data();
    void theEngineIsAsItWas();
    void theSimulationFollowsTheSettings_data();
    void theSimulationFollowsTheSettings();
    void aSecondMapBringsAnotherSimulation();
    void livePlayHoldsOverALoad();
    void anEmptyShowIsReplacedSilently();
    void theQuestionAsItReads();
    void keptEffectsFindTheirGroupsInTheNewMap();
    void keptNestedTimelinesKeepTheirPlace();
    void keptNestedEffectsFindTheirGroupsInTheNewMap();
    void clearedEffectsAreGone();
    void anUnreadableMapIsEmpty_data();
    void anUnreadableMapIsEmpty();
    void aSettingNamesAMapForOneStart();
    void theFrameReachesTheSimulation();
    void progressIsShownAndGoesAtItsEnd();
    void progressWithoutADialogDoesNothing();

private:
    void load(const QString& file)
    {
        m_bench->dialogs.expectFile(file);
        m_bench->action("loadMapAction")->trigger();
    }
    QString groupText() const { return m_bench->table()->item(0, MetaWidget::GroupColumn)->text(); }

    std::unique_ptr<WindowBench> m_bench;
};

void ForgeWindowMapTest::cleanup()
{
    const QString complaints = m_bench->dialogs.complaints();
    m_bench.reset();
    QCOMPARE(complaints, QString());
    QVERIFY(WindowBench::sim() == nullptr); // it goes with its window, also when it has no parent
}

void ForgeWindowMapTest::loadAsksForAFile()
{
    {
        QSettings store = WindowBench::store();
        store.setValue(QStringLiteral("/map_path"), m_bench->dir.path());
    }
    m_bench->open();
    m_bench->dialogs.expectFileCancelled();
    m_bench->action("loadMapAction")->trigger();
    const DialogAnswers::Seen& dialog = m_bench->dialogs.seen().at(0);
    QCOMPARE(dialog.title, QStringLiteral("Select A Map File"));
    QCOMPARE(dialog.filters,
             QStringList({QStringLiteral("Map Files (*.map)"), QStringLiteral("All Files (*.*)")}));
    QCOMPARE(dialog.folder, QDir(m_bench->dir.path()).absolutePath());
    QCOMPARE(dialog.acceptMode, QFileDialog::AcceptOpen);
}

void ForgeWindowMapTest::loadCancelledChangesNothing()
{
    m_bench->open(m_bench->map(), m_bench->show());
    const QPointer<MetaEffect> root = m_bench->root();
    const QPointer<LightSim> sim = WindowBench::sim();
    m_bench->dialogs.expectFileCancelled();
    m_bench->action("loadMapAction")->trigger();
    QVERIFY(m_bench->isRunning());
    QVERIFY(root != nullptr);
    QVERIFY(sim != nullptr);
    QCOMPARE(m_bench->model()->lightsHash().size(), 2);
}

void ForgeWindowMapTest::loadReadsTheMap()
{
    m_bench->open();
    const QPointer<MetaEffect> former = m_bench->root();
    load(m_bench->map());
    QCOMPARE(m_bench->model()->lightsHash().size(), 2);
    QVERIFY(m_bench->model()->group(WindowBench::kGroup) != nullptr);
    QVERIFY(m_bench->editor()->isEnabled());
    QVERIFY(former == nullptr);
    QVERIFY(m_bench->root()->active());
    QVERIFY(m_bench->root()->compiled());
    QVERIFY(m_bench->isRunning());
    QCOMPARE(m_bench->sliderTimer()->interval(), 500);
    QCOMPARE(m_bench->window->windowTitle(), QStringLiteral("Orrin Pageant Forge"));
    m_bench->window->close();
    QCOMPARE(WindowBench::store().value(QStringLiteral("/map_path")).toString(),
             m_bench->dir.path());
    QCOMPARE(WindowBench::store().value(QStringLiteral("/map_file_name")).toString(), QString());
}

void ForgeWindowMapTest::theEngineIsAsItWas_data()
{
    QTest::addColumn<bool>("running");
    QTest::newRow("running") << true;
    QTest::newRow("paused") << false;
}

void ForgeWindowMapTest::theEngineIsAsItWas()
{
    QFETCH(const bool, running);
    m_bench->open();
    m_bench->engine()->pause(!running);
    load(m_bench->map());
    QCOMPARE(m_bench->isRunning(), running);
}

void ForgeWindowMapTest::theSimulationFollowsTheSettings_data()
{
    QTest::addColumn<bool>("onTop");
    QTest::addColumn<bool>("shown");
    QTest::newRow("tied and shown") << true << true;
    QTest::newRow("tied and hidden") << true << false;
    QTest::newRow("by itself and shown") << false << true;
    QTest::newRow("by itself and hidden") << false << false;
}

void ForgeWindowMapTest::theSimulationFollowsTheSettings()
{
    QFETCH(const bool, onTop);
    QFETCH(const bool, shown);
    {
        QSettings store = WindowBench::store();
        store.setValue(QStringLiteral("/sim_on_top"), onTop);
        store.setValue(QStringLiteral("/show_sim"), shown);
        store.setValue(QStringLiteral("/sim_background"), QStringLiteral("#334455"));
    }
    m_bench->open(m_bench->map());
    const LightSim* const sim = WindowBench::sim();
    QVERIFY(sim != nullptr);
    QCOMPARE(sim->objectName(), QStringLiteral("Sim"));
    QCOMPARE(sim->windowTitle(), QStringLiteral("Simulation"));
    QCOMPARE(sim->parentWidget(), onTop ? m_bench->window.get() : nullptr);
    QCOMPARE(sim->isVisible(), shown);
    QCOMPARE(m_bench->action("showSimAction")->isChecked(), shown);
    QCOMPARE(m_bench->action("simAlwaysOnTopAction")->isChecked(), onTop);
    QCOMPARE(sim->findChild<QGraphicsView*>()->scene()->backgroundBrush().color(),
             QColor(0x33, 0x44, 0x55));
}

void ForgeWindowMapTest::aSecondMapBringsAnotherSimulation()
{
    m_bench->open(m_bench->map());
    const QPointer<LightSim> first = WindowBench::sim();
    load(m_bench->map("other.map"));
    QVERIFY(first == nullptr);
    QVERIFY(WindowBench::sim() != nullptr);
    QVERIFY(WindowBench::sim()->isVisible());
    QVERIFY(m_bench->action("showSimAction")->isChecked()); // the first one's end hides nothing
    QCOMPARE(m_bench->model()->lightsHash().size(), 2);
}

void ForgeWindowMapTest::livePlayHoldsOverALoad()
{
    m_bench->open();
    m_bench->action("livePlayAction")->trigger();
    load(m_bench->map());
    QVERIFY(m_bench->model()->simulateOnly());
}

void ForgeWindowMapTest::anEmptyShowIsReplacedSilently()
{
    m_bench->open(m_bench->map());
    m_bench->action("newShowAction")->trigger();
    const QPointer<MetaEffect> former = m_bench->root();
    load(m_bench->map("other.map"));
    QVERIFY(former == nullptr);
    QVERIFY(m_bench->root() != nullptr);
    QCOMPARE(m_bench->dialogs.seen().size(), 1); // the file dialog alone
}

void ForgeWindowMapTest::theQuestionAsItReads()
{
    m_bench->open(QString(), m_bench->show());
    m_bench->dialogs.expectFile(m_bench->map());
    m_bench->dialogs.expectBox(QStringLiteral("No"));
    m_bench->action("loadMapAction")->trigger();
    QCOMPARE(m_bench->dialogs.seen().size(), 2);
    const DialogAnswers::Seen& box = m_bench->dialogs.seen().at(1);
    QCOMPARE(box.title, QStringLiteral("Clear Effects?"));
    QCOMPARE(box.text, QStringLiteral("Remove all effects from current show?"));
    QCOMPARE(box.buttons, QStringList({QStringLiteral("No"), QStringLiteral("Yes")}));
    QVERIFY(box.flags.testFlag(Qt::WindowStaysOnTopHint));
}

void ForgeWindowMapTest::keptEffectsFindTheirGroupsInTheNewMap()
{
    const QString show = m_bench->show();
    m_bench->open(QString(), show);
    QCOMPARE(groupText(), QStringLiteral("None"));
    const QPointer<MetaEffect> root = m_bench->root();
    m_bench->dialogs.expectFile(m_bench->map());
    m_bench->dialogs.expectBox(QStringLiteral("No"));
    m_bench->action("loadMapAction")->trigger();
    QCOMPARE(m_bench->root(), root.data());
    QCOMPARE(groupText(), QStringLiteral("Facade"));
    QCOMPARE(root->effectList().size(), 1);
    QVERIFY(m_bench->isRunning());
    QCOMPARE(m_bench->window->windowTitle(), QStringLiteral("Orrin Pageant Forge ") + show);
    // It paints on the new map's lights.
    m_bench->engine()->pause(true);
    bool painted = false;
    const Light* const light = m_bench->model()->light(0xA1);
    connect(m_bench->engine(), &EffectEngine::propertiesCompiled, m_bench->window.get(),
            [&painted, light] { painted = light->isPainted(); });
    m_bench->engine()->tick(root->startTime().addMSecs(100));
    m_bench->engine()->pause(true);
    QVERIFY(painted);
}

void ForgeWindowMapTest::keptNestedTimelinesKeepTheirPlace()
{
    const QString nested =
        QStringLiteral("<effect><type>Meta Effect</type><name>Part</name><eid>1</eid>"
                       "<begin>2000</begin><end>5000</end><startfixedtime>2000</startfixedtime>"
                       "<endfixedtime>3000</endfixedtime>%1</effect>")
            .arg(WindowBench::effectXml(1, 1000));
    m_bench->open(QString(), m_bench->file("nested.sho", WindowBench::rootXml(nested)));
    m_bench->dialogs.expectFile(m_bench->map());
    m_bench->dialogs.expectBox(QStringLiteral("No"));
    m_bench->action("loadMapAction")->trigger();
    QCOMPARE(m_bench->root()->effectList().at(0)->begin(), 2000U);
    QCOMPARE(m_bench->root()->effectList().at(0)->end(), 5000U);
    QCOMPARE(m_bench->root()->end(), 5000U);
    QCOMPARE(m_bench->table()->item(0, MetaWidget::StartColumn)->data(Qt::EditRole).toDouble(),
             2.0);
}

void ForgeWindowMapTest::keptNestedEffectsFindTheirGroupsInTheNewMap()
{
    QString nested = WindowBench::effectXml(1, 10000);
    for (int depth = 2; depth <= 3; ++depth) {
        nested = QStringLiteral("<effect><type>Meta Effect</type><eid>%1</eid>"
                                "<endfixedtime>10000</endfixedtime>%2</effect>")
                     .arg(depth)
                     .arg(nested);
    }
    const QString map = m_bench->map();
    m_bench->open(map, m_bench->file("nested.sho", WindowBench::rootXml(nested)));
    m_bench->dialogs.expectFile(map);
    m_bench->dialogs.expectBox(QStringLiteral("No"));
    m_bench->action("loadMapAction")->trigger();
    m_bench->engine()->pause(true);
    // The lights of the first map are gone; those of the second are painted.
    QColor shown;
    const Light* const light = m_bench->model()->light(0xA1);
    connect(m_bench->engine(), &EffectEngine::propertiesCompiled, m_bench->window.get(),
            [&shown, light] { shown = light->simColor(); });
    m_bench->engine()->tick(m_bench->root()->startTime().addMSecs(100));
    m_bench->engine()->pause(true);
    QCOMPARE(shown, QColor(Qt::green));
}

void ForgeWindowMapTest::clearedEffectsAreGone()
{
    m_bench->open(QString(), m_bench->show());
    const QPointer<MetaEffect> root = m_bench->root();
    const QPointer<Effect> child = root->effectList().at(0);
    m_bench->dialogs.expectFile(m_bench->map());
    m_bench->dialogs.expectBox(QStringLiteral("Yes"));
    m_bench->action("loadMapAction")->trigger();
    QVERIFY(root == nullptr);
    QVERIFY(child == nullptr);
    QVERIFY(m_bench->root() != nullptr);
    QVERIFY(!m_bench->root()->signalsBlocked());
    QVERIFY(m_bench->root()->active());
    QCOMPARE(m_bench->root()->effectList().size(), 0);
    QCOMPARE(m_bench->table()->rowCount(), 0);
    QVERIFY(m_bench->isRunning());
    QSignalSpy painted(m_bench->root(), &MetaEffect::internalUpdateLightsComplete);
    QVERIFY(painted.wait());
}

void ForgeWindowMapTest::anUnreadableMapIsEmpty_data()
{
    QTest::addColumn<QString>("content");
    QTest::newRow("missing") << QString();
    QTest::newRow("junk") << QStringLiteral("junk");
    QTest::newRow("a declaration") << QStringLiteral("<?xml version=\"1.0\"?><map/>");
}

void ForgeWindowMapTest::anUnreadableMapIsEmpty()
{
    QFETCH(const QString, content);
    const QString bad = m_bench->path("bad.map");
    if (!content.isNull()) {
        QVERIFY(!m_bench->file("bad.map", content).isEmpty());
    }
    QTest::ignoreMessage(QtDebugMsg,
                         QRegularExpression(QStringLiteral("Map file .*bad\\.map refused: .+")));
    m_bench->open(bad);
    QCOMPARE(m_bench->model()->lightsHash().size(), 0);
    QVERIFY(WindowBench::sim() != nullptr); // the rest of the sequence runs
    QVERIFY(m_bench->editor()->isEnabled());
    QVERIFY(m_bench->isRunning());
    QVERIFY(m_bench->window->findChild<QProgressDialog*>() == nullptr);
}

void ForgeWindowMapTest::aSettingNamesAMapForOneStart()
{
    const QString map = m_bench->map();
    {
        QSettings store = WindowBench::store();
        store.setValue(QStringLiteral("/map_file_name"), map);
    }
    m_bench->open();
    QCOMPARE(m_bench->model()->lightsHash().size(), 2); // and no dialog asked
    QVERIFY(WindowBench::sim() != nullptr);
    QVERIFY(m_bench->editor()->isEnabled());
    m_bench->dialogs.expectFileCancelled(); // from now on the action asks
    m_bench->action("loadMapAction")->trigger();
    m_bench->window->close();
    QCOMPARE(WindowBench::store().value(QStringLiteral("/map_file_name")).toString(), QString());
    m_bench->open();
    QCOMPARE(m_bench->model()->lightsHash().size(), 0);
}

void ForgeWindowMapTest::theFrameReachesTheSimulation()
{
    m_bench->open(m_bench->map(), m_bench->show());
    m_bench->engine()->pause(true);
    const QList<QAbstractGraphicsShapeItem*> shapes = WindowBench::simShapes();
    QCOMPARE(shapes.size(), 2);
    for (QAbstractGraphicsShapeItem* shape : shapes) {
        shape->setBrush(QColor(1, 2, 3));
    }
    const QDateTime start = m_bench->root()->startTime();
    m_bench->engine()->tick(start.addMSecs(25));
    m_bench->engine()->tick(start.addMSecs(50)); // a rate of 1 redraws in every second frame
    m_bench->engine()->pause(true);
    for (const QAbstractGraphicsShapeItem* shape : shapes) {
        QVERIFY(shape->brush().color() != QColor(1, 2, 3));
    }
}

void ForgeWindowMapTest::progressIsShownAndGoesAtItsEnd()
{
    // Connected behind the window, and so called after it.
    m_bench->open(m_bench->map());
    struct Moment
    {
        bool modal = false;
        QString title;
        int minimum = -1;
        int maximum = -1;
        int value = -1;
    };
    const auto look = [] {
        Moment moment;
        if (const auto* dialog =
                qobject_cast<QProgressDialog*>(QApplication::activeModalWidget())) {
            moment.modal = dialog->isModal() && dialog->isVisible();
            moment.title = dialog->windowTitle();
            moment.minimum = dialog->minimum();
            moment.maximum = dialog->maximum();
            moment.value = dialog->value();
        }
        return moment;
    };
    QList<Moment> started;
    QList<Moment> updated;
    bool runningMeanwhile = false;
    connect(m_bench->model(), &MapModel::progressStarted, m_bench->window.get(), [&] {
        started.append(look());
        updated.clear();
    });
    connect(m_bench->model(), &MapModel::progressUpdated, m_bench->window.get(), [&] {
        updated.append(look());
        runningMeanwhile = runningMeanwhile || m_bench->isRunning();
    });
    load(m_bench->map());

    // Seven elements: version, controller, two lights, their leaves and the group.
    QCOMPARE(started.size(), 2);
    QVERIFY(!started.at(0).modal); // clearing the former map shows nothing
    QVERIFY(started.at(1).modal);
    QCOMPARE(started.at(1).title, QStringLiteral("Loading Map"));
    QCOMPARE(started.at(1).minimum, 0);
    QCOMPARE(started.at(1).maximum, 7);
    QCOMPARE(updated.size(), 8);
    for (int i = 0; i < 7; ++i) {
        QVERIFY(updated.at(i).modal);
        QCOMPARE(updated.at(i).value, i);
    }
    QVERIFY(!updated.at(7).modal); // gone at the greatest value
    QVERIFY(!runningMeanwhile);
    QVERIFY(m_bench->window->findChild<QProgressDialog*>() == nullptr);
    QVERIFY(m_bench->isRunning());
}

void ForgeWindowMapTest::progressWithoutADialogDoesNothing()
{
    m_bench->open();
    emit m_bench->model()->progressStarted(0, 5, QStringLiteral("Loading Map"));
    m_bench->window->handleProgressStarted(0, 5, QStringLiteral("Loading Map"));
    m_bench->window->handleProgressUpdated(5);
    QVERIFY(QApplication::activeModalWidget() == nullptr);
    QVERIFY(m_bench->window->findChild<QProgressDialog*>() == nullptr);
}

QTEST_MAIN(ForgeWindowMapTest)
#include "ForgeWindowMapTest.moc"
