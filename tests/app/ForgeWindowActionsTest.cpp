#include "app/AboutDialog.h"
#include "tests/app/WindowBench.h"

#include <QContextMenuEvent>
#include <QFrame>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QObject>
#include <QToolBar>
#include <QVBoxLayout>
#include <QWindow>
#include <QtTest>

namespace {

QStringList names(const QList<QAction*>& actions)
{
    QStringList list;
    for (const QAction* action : actions) {
        list.append(action->isSeparator() ? QStringLiteral("-") : action->objectName());
    }
    return list;
}

QStringList words(const char* text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '));
}

} // namespace

/// What stands in the window, and the actions that only forward or toggle.
class ForgeWindowActionsTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { WindowBench::prepare(); }
    void init() { m_bench = std::make_unique<WindowBench>(); }
    void cleanup();

    void eachActionStandsAsStated_data();
    void eachActionStandsAsStated();
    void thereAreTwentyActions();
    void menusInOrder_data();
    void menusInOrder();
    void toolBarsInOrder_data();
    void toolBarsInOrder();
    void noContextMenuOffersTheToolBars();
    void theFormHasItsParts();
    void theEditorWaitsForAMapOrAShow();
    void theEngineTicksOverAnEmptyRoot();
    void theRunningWindowStartsWithItsTogglesChecked();
    void livePlayReachesTheModel();
    void showingTheSimulation();
    void aSimulationThatTheUserClosesIsUnchecked();
    void pausingTheSimulation();
    void alwaysOnTopKeepsTheSimulationShown_data();
    void alwaysOnTopKeepsTheSimulationShown();
    void alwaysOnTopLeavesTheSimulationInItsPlace();
    void aSimulationThatIsShownAgainStandsWhereItWas();
    void zoomingReachesTheSimulation();
    void togglesWithoutAMapAreOnlyRemembered();
    void theAboutBoxIsOneAndClosesOnAPress();
    void theDemoSelectsTheOnlyEffect_data();
    void theDemoSelectsTheOnlyEffect();

private:
    std::unique_ptr<WindowBench> m_bench;
};

void ForgeWindowActionsTest::cleanup()
{
    const QString complaints = m_bench->dialogs.complaints();
    m_bench.reset();
    QCOMPARE(complaints, QString());
    QVERIFY(WindowBench::sim() == nullptr); // it goes with its window
}

void ForgeWindowActionsTest::eachActionStandsAsStated_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("toolTip");
    QTest::addColumn<QString>("shortcut");
    QTest::addColumn<QString>("icon");
    QTest::addColumn<bool>("toggle");
    // Without a tool tip of its own an action shows its text, plain.
    const auto row = [](const char* name, const char* text, const char* toolTip,
                        const char* shortcut, const char* icon, bool toggle) {
        QTest::newRow(name) << QString::fromLatin1(text) << QString::fromLatin1(toolTip)
                            << QString::fromLatin1(shortcut) << QString::fromLatin1(icon) << toggle;
    };
    row("loadMapAction", "&Load Map...", "Load Map...", "Ctrl+L", "open_map", false);
    row("exitAction", "E&xit", "Exit", "", "", false);
    row("saveShowAction", "&Save Show", "Save Show", "Ctrl+S", "save_show", false);
    row("showSimAction", "&Show Simulation", "Show Simulation", "", "show_simulation", true);
    row("openShowAction", "&Open Show...", "Open Show...", "Ctrl+O", "open_show", false);
    row("saveShowAsAction", "Save As...", "Save As", "", "", false);
    row("newShowAction", "&New Show", "New Show", "Ctrl+N", "new_show", false);
    row("aboutAction", "About Pageant Forge...", "About Pageant Forge", "", "", false);
    row("copyEffectAction", "Copy Effect", "Copy Effect", "Ctrl+C", "copy_effect", false);
    row("cutEffectAction", "Cut Effect", "Cut Effect", "Ctrl+X", "cut_effect", false);
    row("pasteEffectAction", "Paste Effect", "Paste Effect", "Ctrl+V", "paste_effect", false);
    row("deleteEffectAction", "Delete Effect", "Delete Effect", "", "delete_effect", false);
    row("selectAllEffectAction", "Select All", "Select All", "Ctrl+A", "", false);
    row("writeDMXAction", "Write DMX...", "Write DMX", "", "write_DMX", false);
    row("editPreferencesAction", "&Preferences...", "Edit Preferences...", "", "", false);
    row("simAlwaysOnTopAction", "Always On Top", "Always On Top", "", "", true);
    row("zoomInAction", "Zoom &In", "Zoom In", "", "zoom_in", false);
    row("zoomOutAction", "Zoom &Out", "Zoom Out", "", "zoom_out", false);
    row("pauseSimAction", "Pause Simulation Update", "Pause Simulation Update", "", "", true);
    row("livePlayAction", "Enable Live Play", "Enable Live Play", "", "", true);
}

void ForgeWindowActionsTest::eachActionStandsAsStated()
{
    QFETCH(const QString, text);
    QFETCH(const QString, toolTip);
    QFETCH(const QString, shortcut);
    QFETCH(const QString, icon);
    QFETCH(const bool, toggle);
    m_bench->open();
    const QAction* const action = m_bench->action(QTest::currentDataTag());
    QVERIFY(action != nullptr);
    QCOMPARE(action->text(), text);
    QCOMPARE(action->toolTip(), toolTip);
    QCOMPARE(action->shortcut(), QKeySequence(shortcut));
    QCOMPARE(action->isCheckable(), toggle);
    QCOMPARE(action->icon().isNull(), icon.isEmpty());
    if (!icon.isEmpty()) {
        const QPixmap expected(QStringLiteral(":/images/icons/24/%1.png").arg(icon));
        QVERIFY(!expected.isNull());
        QCOMPARE(action->icon().pixmap(24).toImage(), expected.toImage());
    }
}

void ForgeWindowActionsTest::thereAreTwentyActions()
{
    m_bench->open();
    int count = 0;
    const QList<QAction*> actions =
        m_bench->window->findChildren<QAction*>(QString(), Qt::FindDirectChildrenOnly);
    for (const QAction* action : actions) {
        count += action->isSeparator() ? 0 : 1;
    }
    QCOMPARE(count, 20);
}

void ForgeWindowActionsTest::menusInOrder_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QStringList>("actions");
    QTest::newRow("m_fileMenu") << QStringLiteral("&File")
                                << words("loadMapAction - newShowAction openShowAction "
                                         "saveShowAction saveShowAsAction - writeDMXAction - "
                                         "exitAction");
    QTest::newRow("m_editMenu") << QStringLiteral("&Edit")
                                << words("cutEffectAction copyEffectAction pasteEffectAction "
                                         "deleteEffectAction selectAllEffectAction - "
                                         "editPreferencesAction");
    QTest::newRow("m_simMenu") << QStringLiteral("&Simulation")
                               << words("showSimAction simAlwaysOnTopAction livePlayAction "
                                        "pauseSimAction - zoomInAction zoomOutAction");
    QTest::newRow("m_helpMenu") << QStringLiteral("&Help") << words("aboutAction");
}

void ForgeWindowActionsTest::menusInOrder()
{
    QFETCH(const QString, title);
    QFETCH(const QStringList, actions);
    m_bench->open();
    const auto* menu = m_bench->window->findChild<QMenu*>(QLatin1String(QTest::currentDataTag()));
    QVERIFY(menu != nullptr);
    QCOMPARE(menu->title(), title);
    QCOMPARE(names(menu->actions()), actions);

    QStringList order;
    const QList<QAction*> entries = m_bench->window->menuBar()->actions();
    for (const QAction* entry : entries) {
        order.append(entry->menu()->objectName());
    }
    QCOMPARE(order, words("m_fileMenu m_editMenu m_simMenu m_helpMenu"));
    QCOMPARE(m_bench->window->menuBar()->objectName(), QStringLiteral("m_menuBar"));
}

void ForgeWindowActionsTest::toolBarsInOrder_data()
{
    QTest::addColumn<QStringList>("actions");
    QTest::newRow("m_fileToolBar") << words("loadMapAction newShowAction openShowAction "
                                            "saveShowAction writeDMXAction");
    QTest::newRow("m_editToolBar")
        << words("cutEffectAction copyEffectAction pasteEffectAction deleteEffectAction");
    QTest::newRow("m_simToolBar") << words("zoomInAction zoomOutAction showSimAction");
}

void ForgeWindowActionsTest::toolBarsInOrder()
{
    QFETCH(const QStringList, actions);
    m_bench->open();
    const auto* bar = m_bench->window->findChild<QToolBar*>(QLatin1String(QTest::currentDataTag()));
    QVERIFY(bar != nullptr);
    QCOMPARE(names(bar->actions()), actions);
    QVERIFY(!bar->isMovable());
    QCOMPARE(bar->contextMenuPolicy(), Qt::PreventContextMenu);

    m_bench->window->show();
    int right = -1;
    for (const char* name : {"m_fileToolBar", "m_editToolBar", "m_simToolBar"}) {
        const auto* next = m_bench->window->findChild<QToolBar*>(QLatin1String(name));
        QVERIFY(next->x() > right);
        right = next->geometry().right();
    }
    QCOMPARE(m_bench->window->findChildren<QToolBar*>().size(), 3);
}

void ForgeWindowActionsTest::noContextMenuOffersTheToolBars()
{
    m_bench->open();
    m_bench->window->show();
    QList<QWidget*> places = {m_bench->window->menuBar()};
    const QList<QToolBar*> bars = m_bench->window->findChildren<QToolBar*>();
    for (QToolBar* bar : bars) {
        places.append(bar);
    }
    for (QWidget* place : places) {
        const QPoint point(place->width() - 2, place->height() / 2); // beside the entries
        QContextMenuEvent event(QContextMenuEvent::Mouse, point, place->mapToGlobal(point));
        QApplication::sendEvent(place, &event);
        QVERIFY2(QApplication::activePopupWidget() == nullptr, qPrintable(place->objectName()));
    }
}

void ForgeWindowActionsTest::theFormHasItsParts()
{
    m_bench->open();
    QCOMPARE(m_bench->window->windowTitle(), QStringLiteral("Orrin Pageant Forge"));
    const QWidget* const central = m_bench->window->centralWidget();
    QCOMPARE(central->objectName(), QStringLiteral("widget"));
    QCOMPARE(central->layout()->objectName(), QStringLiteral("verticalLayout"));
    const auto* frame = central->findChild<QFrame*>(QStringLiteral("m_mainFrame"));
    QVERIFY(frame != nullptr);
    QCOMPARE(frame->layout()->itemAt(0)->widget(), m_bench->editor());
    QVERIFY(qobject_cast<PlaybackWidget*>(frame->layout()->itemAt(1)->widget()) != nullptr);
    QCOMPARE(frame->layout()->count(), 2);
    QCOMPARE(m_bench->editor()->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(m_bench->editor()->sizePolicy().verticalPolicy(), QSizePolicy::MinimumExpanding);
}

void ForgeWindowActionsTest::theEditorWaitsForAMapOrAShow()
{
    m_bench->open();
    QVERIFY(!m_bench->editor()->isEnabled());
    m_bench->open(m_bench->map());
    QVERIFY(m_bench->editor()->isEnabled());
    m_bench->open(QString(), m_bench->show());
    QVERIFY(m_bench->editor()->isEnabled());
    QVERIFY(WindowBench::sim() == nullptr); // a show may be loaded without a map
    QCOMPARE(m_bench->table()->rowCount(), 1);
    QCOMPARE(m_bench->table()->item(0, MetaWidget::GroupColumn)->text(), QStringLiteral("None"));
}

void ForgeWindowActionsTest::theEngineTicksOverAnEmptyRoot()
{
    m_bench->open();
    QVERIFY(m_bench->isRunning());
    QCOMPARE(m_bench->engine()->interval(), 25);
    QVERIFY(m_bench->root()->active());
    QVERIFY(m_bench->root()->compiled());
    QSignalSpy painted(m_bench->root(), &MetaEffect::internalUpdateLightsComplete);
    QSignalSpy ticks(m_bench->engine(), &EffectEngine::EngineTick);
    QVERIFY(ticks.wait());
    QVERIFY(painted.count() >= 1); // the root is in the engine
}

void ForgeWindowActionsTest::theRunningWindowStartsWithItsTogglesChecked()
{
    m_bench->open();
    QVERIFY(m_bench->action("showSimAction")->isChecked());
    QVERIFY(m_bench->action("simAlwaysOnTopAction")->isChecked());
    QVERIFY(m_bench->action("livePlayAction")->isChecked());
    QVERIFY(!m_bench->action("pauseSimAction")->isChecked());
    QVERIFY(!m_bench->model()->simulateOnly());
}

void ForgeWindowActionsTest::livePlayReachesTheModel()
{
    m_bench->open();
    m_bench->action("livePlayAction")->trigger();
    QVERIFY(m_bench->model()->simulateOnly());
    m_bench->action("livePlayAction")->trigger();
    QVERIFY(!m_bench->model()->simulateOnly());
}

void ForgeWindowActionsTest::showingTheSimulation()
{
    m_bench->open(m_bench->map());
    QPointer<LightSim> sim = WindowBench::sim();
    QVERIFY(sim != nullptr);
    QVERIFY(sim->isVisible());
    m_bench->action("showSimAction")->trigger();
    QVERIFY(!sim->isVisible());
    QVERIFY(!m_bench->action("showSimAction")->isChecked());
    m_bench->action("showSimAction")->trigger();
    QVERIFY(sim->isVisible());
    QVERIFY(m_bench->action("showSimAction")->isChecked());
}

void ForgeWindowActionsTest::aSimulationThatTheUserClosesIsUnchecked()
{
    m_bench->open(m_bench->map());
    WindowBench::sim()->close();
    QVERIFY(!m_bench->action("showSimAction")->isChecked());
    m_bench->window->close();
    QCOMPARE(WindowBench::store().value(QStringLiteral("/show_sim")).toBool(), false);
}

void ForgeWindowActionsTest::pausingTheSimulation()
{
    m_bench->open(m_bench->map(), m_bench->show());
    m_bench->engine()->pause(true);
    QCOMPARE(WindowBench::simShapes().size(), 2);
    QAbstractGraphicsShapeItem* const light = WindowBench::simShapes().at(0);
    // Unpainted lights turn from black to the effect's colour with the first redraw.
    const auto runFrames = [this] {
        const QDateTime now = m_bench->root()->startTime();
        for (int i = 1; i <= 4; ++i) {
            m_bench->engine()->tick(now.addMSecs(25 * i));
        }
        m_bench->engine()->pause(true);
    };
    const QColor before = light->brush().color();
    m_bench->action("pauseSimAction")->trigger();
    light->setBrush(QColor(1, 2, 3));
    runFrames();
    QCOMPARE(light->brush().color(), QColor(1, 2, 3));
    QVERIFY(before != QColor(1, 2, 3));
    // Hiding and showing unpauses it, whatever the action says.
    m_bench->action("showSimAction")->trigger();
    m_bench->action("showSimAction")->trigger();
    QVERIFY(m_bench->action("pauseSimAction")->isChecked());
    runFrames();
    QVERIFY(light->brush().color() != QColor(1, 2, 3));
}

void ForgeWindowActionsTest::alwaysOnTopKeepsTheSimulationShown_data()
{
    QTest::addColumn<bool>("shown");
    QTest::newRow("shown") << true;
    QTest::newRow("hidden") << false;
}

void ForgeWindowActionsTest::alwaysOnTopKeepsTheSimulationShown()
{
    QFETCH(const bool, shown);
    m_bench->open(m_bench->map());
    QPointer<LightSim> sim = WindowBench::sim();
    QCOMPARE(sim->parentWidget(), m_bench->window.get());
    if (!shown) {
        m_bench->action("showSimAction")->trigger();
    }
    for (const bool onTop : {false, true, false}) {
        m_bench->action("simAlwaysOnTopAction")->trigger();
        QCOMPARE(m_bench->action("simAlwaysOnTopAction")->isChecked(), onTop);
        QVERIFY(sim != nullptr);
        QCOMPARE(sim->parentWidget(), onTop ? m_bench->window.get() : nullptr);
        QCOMPARE(sim->isVisible(), shown);
        QCOMPARE(m_bench->action("showSimAction")->isChecked(), shown);
        QVERIFY(sim->isWindow());
        if (onTop) {
            QVERIFY(sim->windowFlags().testFlag(Qt::Dialog));
            QVERIFY(sim->windowFlags().testFlag(Qt::WindowTitleHint));
        }
        QVERIFY(!sim->signalsBlocked());
    }
}

void ForgeWindowActionsTest::alwaysOnTopLeavesTheSimulationInItsPlace()
{
    m_bench->open(m_bench->map());
    LightSim* const sim = WindowBench::sim();
    const QRect place(120, 90, 500, 400);
    sim->windowHandle()->setGeometry(place); // as a window manager does
    QTRY_COMPARE(sim->geometry(), place);
    m_bench->action("simAlwaysOnTopAction")->trigger();
    QCOMPARE(sim->geometry(), place);
    m_bench->action("simAlwaysOnTopAction")->trigger();
    QCOMPARE(sim->geometry(), place);
}

void ForgeWindowActionsTest::aSimulationThatIsShownAgainStandsWhereItWas()
{
    m_bench->open(m_bench->map());
    m_bench->window->show();
    LightSim* const sim = WindowBench::sim();
    const QRect place(120, 90, 500, 400);
    sim->windowHandle()->setGeometry(place); // as a window manager does
    QTRY_COMPARE(sim->geometry(), place);
    m_bench->action("showSimAction")->trigger();
    m_bench->action("showSimAction")->trigger();
    QVERIFY(sim->isVisible());
    QCOMPARE(sim->geometry(), place);
}

void ForgeWindowActionsTest::zoomingReachesTheSimulation()
{
    m_bench->open(m_bench->map());
    const auto* view = WindowBench::sim()->findChild<QGraphicsView*>();
    const double scale = view->transform().m11();
    m_bench->action("zoomInAction")->trigger();
    QCOMPARE(view->transform().m11(), scale / 0.75);
    m_bench->action("zoomOutAction")->trigger();
    m_bench->action("zoomOutAction")->trigger();
    QCOMPARE(view->transform().m11(), scale * 0.75);
    QCOMPARE(view->transform().m22(), scale * 0.75);
}

void ForgeWindowActionsTest::togglesWithoutAMapAreOnlyRemembered()
{
    m_bench->open();
    for (const char* name :
         {"showSimAction", "simAlwaysOnTopAction", "pauseSimAction", "livePlayAction"}) {
        m_bench->action(name)->trigger();
    }
    m_bench->action("zoomInAction")->trigger();
    m_bench->action("zoomOutAction")->trigger();
    QVERIFY(WindowBench::sim() == nullptr);
    m_bench->window->close();
    const QSettings store = WindowBench::store();
    QCOMPARE(store.value(QStringLiteral("/show_sim")).toBool(), false);
    QCOMPARE(store.value(QStringLiteral("/sim_on_top")).toBool(), false);
    QCOMPARE(store.value(QStringLiteral("/pause_sim")).toBool(), true);
    QCOMPARE(store.value(QStringLiteral("/live_play")).toBool(), false);
}

void ForgeWindowActionsTest::theAboutBoxIsOneAndClosesOnAPress()
{
    m_bench->open();
    m_bench->window->show();
    m_bench->dialogs.stop();
    QVERIFY(m_bench->window->findChild<AboutDialog*>() == nullptr);
    for (int i = 0; i < 2; ++i) {
        m_bench->action("aboutAction")->trigger(); // modal, but the action does not wait for it
        const QList<AboutDialog*> boxes = m_bench->window->findChildren<AboutDialog*>();
        QCOMPARE(boxes.size(), 1);
        QVERIFY(boxes.at(0)->isVisible());
        QCOMPARE(QApplication::activeModalWidget(), boxes.at(0));
        QTest::mousePress(boxes.at(0), Qt::LeftButton);
        QVERIFY(!boxes.at(0)->isVisible());
    }
}

void ForgeWindowActionsTest::theDemoSelectsTheOnlyEffect_data()
{
    QTest::addColumn<int>("effects");
    QTest::addColumn<bool>("demo");
    QTest::addColumn<int>("currentRow");
    QTest::newRow("one effect") << 1 << true << 0;
    QTest::newRow("no show") << 0 << true << -1;
    QTest::newRow("several effects") << 2 << true << -1;
    QTest::newRow("no demo") << 1 << false << -1;
}

void ForgeWindowActionsTest::theDemoSelectsTheOnlyEffect()
{
    QFETCH(const int, effects);
    QFETCH(const bool, demo);
    QFETCH(const int, currentRow);
    QString children;
    for (int i = 1; i <= effects; ++i) {
        children += WindowBench::effectXml(i, 1000);
    }
    const QString show =
        effects == 0 ? QString() : m_bench->file("demo.sho", WindowBench::rootXml(children));
    QString title;
    if (effects == 1 && demo) {
        m_bench->dialogs.expect([&title](QWidget* dialog) {
            title = dialog->windowTitle();
            dialog->close();
        });
    }
    m_bench->open(m_bench->map(), show, demo);
    // The effect is of a fixed colour: its colour is asked for at once.
    QCOMPARE(title, effects == 1 && demo ? QStringLiteral("Select Color") : QString());
    QCOMPARE(m_bench->table()->rowCount(), effects);
    QCOMPARE(m_bench->table()->currentRow(), currentRow);
    const QModelIndexList selected = m_bench->table()->selectionModel()->selectedRows();
    QCOMPARE(selected.size(), currentRow + 1);
    if (currentRow == 0) {
        QCOMPARE(m_bench->table()->currentColumn(), static_cast<int>(MetaWidget::EidColumn));
    }
}

QTEST_MAIN(ForgeWindowActionsTest)
#include "ForgeWindowActionsTest.moc"
