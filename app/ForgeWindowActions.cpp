#include "app/AboutDialog.h"
#include "app/EditPreferencesDialog.h"
#include "app/ForgeWindow.h"
#include "editor/MetaWidget.h"
#include "engine/EffectEngine.h"
#include "map/MapModel.h"
#include "resources/Icons.h"
#include "sim/LightSim.h"

#include <QAction>
#include <QCoreApplication>
#include <QFrame>
#include <QIcon>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QSignalBlocker>
#include <QToolBar>
#include <QVBoxLayout>
#include <QWindow>

namespace {

/// A dialog is centred anew each time that it is shown, unless the program has placed it; this one
/// stays where the user has put it.
void keepPlace(LightSim* sim)
{
    if (sim->windowHandle() != nullptr) { // it has been on the screen
        sim->setGeometry(sim->geometry());
    }
}

} // namespace

void ForgeWindow::setUpForm()
{
    setWindowTitle(QStringLiteral("Orrin Pageant Forge"));
    auto* central = new QWidget(this);
    central->setObjectName(QStringLiteral("widget"));
    auto* layout = new QVBoxLayout(central);
    layout->setObjectName(QStringLiteral("verticalLayout"));
    layout->setContentsMargins(0, 0, 0, 0);
    m_mainFrame = new QFrame(central);
    m_mainFrame->setObjectName(QStringLiteral("m_mainFrame"));
    layout->addWidget(m_mainFrame);
    setCentralWidget(central);

    setUpActions();
    setUpMenus();
    setUpToolBars();
}

QAction* ForgeWindow::makeAction(const char* name, const QString& text, const QString& toolTip,
                                 const char* shortcut, const char* icon)
{
    auto* action = new QAction(text, this);
    action->setObjectName(QString::fromLatin1(name));
    if (!toolTip.isEmpty()) {
        action->setToolTip(toolTip);
    }
    if (shortcut != nullptr) {
        action->setShortcut(QKeySequence(QString::fromLatin1(shortcut)));
    }
    if (icon != nullptr) {
        QIcon picture;
        const QString path = QStringLiteral(":/images/icons/%1.png").arg(QString::fromLatin1(icon));
        const QStringList files = iconFiles(path);
        for (const QString& file : files) {
            picture.addFile(file);
        }
        action->setIcon(picture);
    }
    return action;
}

void ForgeWindow::setUpActions()
{
    m_loadMapAction =
        makeAction("loadMapAction", tr("&Load Map..."), tr("Load Map..."), "Ctrl+L", "open_map");
    m_exitAction = makeAction("exitAction", tr("E&xit"), tr("Exit"), nullptr, nullptr);
    m_saveShowAction =
        makeAction("saveShowAction", tr("&Save Show"), tr("Save Show"), "Ctrl+S", "save_show");
    m_showSimAction = makeAction("showSimAction", tr("&Show Simulation"), tr("Show Simulation"),
                                 nullptr, "show_simulation");
    m_openShowAction = makeAction("openShowAction", tr("&Open Show..."), tr("Open Show..."),
                                  "Ctrl+O", "open_show");
    m_saveShowAsAction = makeAction("saveShowAsAction", tr("Save As..."), {}, nullptr, nullptr);
    m_newShowAction =
        makeAction("newShowAction", tr("&New Show"), tr("New Show"), "Ctrl+N", "new_show");
    m_aboutAction = makeAction("aboutAction", tr("About Pageant Forge..."), {}, nullptr, nullptr);
    m_copyEffectAction =
        makeAction("copyEffectAction", tr("Copy Effect"), {}, "Ctrl+C", "copy_effect");
    m_cutEffectAction = makeAction("cutEffectAction", tr("Cut Effect"), {}, "Ctrl+X", "cut_effect");
    m_pasteEffectAction =
        makeAction("pasteEffectAction", tr("Paste Effect"), {}, "Ctrl+V", "paste_effect");
    m_deleteEffectAction =
        makeAction("deleteEffectAction", tr("Delete Effect"), {}, nullptr, "delete_effect");
    m_selectAllEffectAction =
        makeAction("selectAllEffectAction", tr("Select All"), {}, "Ctrl+A", nullptr);
    m_writeDmxAction = makeAction("writeDMXAction", tr("Write DMX..."), {}, nullptr, "write_DMX");
    m_editPreferencesAction = makeAction("editPreferencesAction", tr("&Preferences..."),
                                         tr("Edit Preferences..."), nullptr, nullptr);
    m_simAlwaysOnTopAction =
        makeAction("simAlwaysOnTopAction", tr("Always On Top"), {}, nullptr, nullptr);
    m_zoomInAction = makeAction("zoomInAction", tr("Zoom &In"), tr("Zoom In"), nullptr, "zoom_in");
    m_zoomOutAction =
        makeAction("zoomOutAction", tr("Zoom &Out"), tr("Zoom Out"), nullptr, "zoom_out");
    m_pauseSimAction =
        makeAction("pauseSimAction", tr("Pause Simulation Update"), {}, nullptr, nullptr);
    m_livePlayAction = makeAction("livePlayAction", tr("Enable Live Play"), {}, nullptr, nullptr);

    for (QAction* toggle :
         {m_showSimAction, m_simAlwaysOnTopAction, m_pauseSimAction, m_livePlayAction}) {
        toggle->setCheckable(true);
    }
}

void ForgeWindow::setUpMenus()
{
    m_menuBar = new QMenuBar(this);
    m_menuBar->setObjectName(QStringLiteral("m_menuBar"));
    m_menuBar->setContextMenuPolicy(Qt::PreventContextMenu); // it would offer the toolbars
    setMenuBar(m_menuBar);
    const auto addMenu = [this](const char* name, const QString& title) {
        QMenu* const menu = m_menuBar->addMenu(title);
        menu->setObjectName(QString::fromLatin1(name));
        return menu;
    };

    m_fileMenu = addMenu("m_fileMenu", tr("&File"));
    m_fileMenu->addAction(m_loadMapAction);
    m_fileMenu->addSeparator();
    m_fileMenu->addActions(
        {m_newShowAction, m_openShowAction, m_saveShowAction, m_saveShowAsAction});
    m_fileMenu->addSeparator();
    m_fileMenu->addAction(m_writeDmxAction);
    m_fileMenu->addSeparator();
    m_fileMenu->addAction(m_exitAction);

    m_editMenu = addMenu("m_editMenu", tr("&Edit"));
    m_editMenu->addActions({m_cutEffectAction, m_copyEffectAction, m_pasteEffectAction,
                            m_deleteEffectAction, m_selectAllEffectAction});
    m_editMenu->addSeparator();
    m_editMenu->addAction(m_editPreferencesAction);

    m_simMenu = addMenu("m_simMenu", tr("&Simulation"));
    m_simMenu->addActions(
        {m_showSimAction, m_simAlwaysOnTopAction, m_livePlayAction, m_pauseSimAction});
    m_simMenu->addSeparator();
    m_simMenu->addActions({m_zoomInAction, m_zoomOutAction});

    m_helpMenu = addMenu("m_helpMenu", tr("&Help"));
    m_helpMenu->addAction(m_aboutAction);
}

void ForgeWindow::setUpToolBars()
{
    const auto makeToolBar = [this](const char* name, const QString& title,
                                    const QList<QAction*>& actions) {
        QToolBar* const bar = addToolBar(title);
        bar->setObjectName(QString::fromLatin1(name));
        bar->setIconSize(QSize(24, 24));
        bar->addActions(actions);
        return bar;
    };
    m_fileToolBar = makeToolBar(
        "m_fileToolBar", tr("File"),
        {m_loadMapAction, m_newShowAction, m_openShowAction, m_saveShowAction, m_writeDmxAction});
    m_editToolBar = makeToolBar(
        "m_editToolBar", tr("Edit"),
        {m_cutEffectAction, m_copyEffectAction, m_pasteEffectAction, m_deleteEffectAction});
    m_simToolBar = makeToolBar("m_simToolBar", tr("Simulation"),
                               {m_zoomInAction, m_zoomOutAction, m_showSimAction});
}

void ForgeWindow::checkActions()
{
    m_showSimAction->setChecked(m_settings.showSim);
    m_simAlwaysOnTopAction->setChecked(m_settings.simOnTop);
    m_pauseSimAction->setChecked(m_settings.pauseSim);
    m_livePlayAction->setChecked(m_settings.livePlay);
}

void ForgeWindow::connectActions()
{
    connect(m_loadMapAction, &QAction::triggered, this, &ForgeWindow::handleLoadMapAction);
    connect(m_exitAction, &QAction::triggered, this, &ForgeWindow::handleExitAction);
    connect(m_saveShowAction, &QAction::triggered, this, &ForgeWindow::handleSaveShowAction);
    connect(m_showSimAction, &QAction::toggled, this, &ForgeWindow::handleShowSimToggled);
    connect(m_openShowAction, &QAction::triggered, this, &ForgeWindow::handleOpenShowAction);
    connect(m_saveShowAsAction, &QAction::triggered, this, &ForgeWindow::handleSaveShowAsAction);
    connect(m_newShowAction, &QAction::triggered, this, &ForgeWindow::handleNewShowAction);
    connect(m_aboutAction, &QAction::triggered, this, &ForgeWindow::handleAboutAction);
    connect(m_copyEffectAction, &QAction::triggered, this, &ForgeWindow::handleCopyEffectAction);
    connect(m_cutEffectAction, &QAction::triggered, this, &ForgeWindow::handleCutEffectAction);
    connect(m_pasteEffectAction, &QAction::triggered, this, &ForgeWindow::handlePasteEffectAction);
    connect(m_deleteEffectAction, &QAction::triggered, this,
            &ForgeWindow::handleDeleteEffectAction);
    connect(m_selectAllEffectAction, &QAction::triggered, this,
            &ForgeWindow::handleSelectAllEffectAction);
    connect(m_writeDmxAction, &QAction::triggered, this, &ForgeWindow::handleWriteDMXAction);
    connect(m_editPreferencesAction, &QAction::triggered, this,
            &ForgeWindow::handleEditPreferencesAction);
    connect(m_simAlwaysOnTopAction, &QAction::toggled, this,
            &ForgeWindow::handleSimAlwaysOnTopToggled);
    connect(m_zoomInAction, &QAction::triggered, this, &ForgeWindow::handleZoomIn);
    connect(m_zoomOutAction, &QAction::triggered, this, &ForgeWindow::handleZoomOut);
    connect(m_pauseSimAction, &QAction::toggled, this, &ForgeWindow::handlePauseSimToggled);
    connect(m_livePlayAction, &QAction::toggled, this, &ForgeWindow::handleLivePlayToggled);

    for (QToolBar* bar : {m_fileToolBar, m_editToolBar, m_simToolBar}) {
        bar->setMovable(false);
        bar->setContextMenuPolicy(Qt::PreventContextMenu);
    }
}

void ForgeWindow::handleExitAction()
{
    writeSettings();
    if (mayClose()) {
        QCoreApplication::exit(0);
    }
}

void ForgeWindow::handleAboutAction()
{
    if (m_about == nullptr) {
        m_about = new AboutDialog(this);
    }
    m_about->show();
    m_about->activateWindow();
}

void ForgeWindow::handleCopyEffectAction()
{
    m_metaWidget->handleCopyEffect();
}

void ForgeWindow::handleCutEffectAction()
{
    m_metaWidget->handleCutEffect();
}

void ForgeWindow::handlePasteEffectAction()
{
    m_metaWidget->handlePasteEffect();
}

void ForgeWindow::handleDeleteEffectAction()
{
    m_metaWidget->handleDeleteEffect();
}

void ForgeWindow::handleSelectAllEffectAction()
{
    m_metaWidget->handleSelectAll();
}

void ForgeWindow::handleEditPreferencesAction()
{
    EditPreferencesDialog dialog(this);
    dialog.setFrameRate(m_settings.frameRate);
    dialog.setSimRate(m_settings.simRate);
    dialog.setSimBackground(m_settings.simBackground);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    m_settings.frameRate = dialog.frameRate();
    m_engine->setFramePeriod(framePeriodMs(m_settings.frameRate));
    m_settings.simRate = dialog.simRate();
    m_settings.simBackground = dialog.simBackground();
    if (m_sim != nullptr) {
        m_sim->setRefreshCount(m_settings.simRate);
        m_sim->setBackground(m_settings.simBackground);
    }
    writeSettings();
}

void ForgeWindow::handleZoomIn()
{
    if (m_sim != nullptr) {
        m_sim->zoomIn();
    }
}

void ForgeWindow::handleZoomOut()
{
    if (m_sim != nullptr) {
        m_sim->zoomOut();
    }
}

void ForgeWindow::handleLivePlayToggled(bool b)
{
    m_settings.livePlay = b;
    m_model->setSimulateOnly(!b);
}

void ForgeWindow::handlePauseSimToggled(bool b)
{
    m_settings.pauseSim = b;
    if (m_sim != nullptr) {
        m_sim->setPaused(b);
    }
}

void ForgeWindow::handleShowSimToggled(bool b)
{
    m_settings.showSim = b;
    m_showSimAction->setChecked(b);
    if (m_sim == nullptr) {
        return;
    }
    m_sim->setPaused(!b);
    if (b) {
        keepPlace(m_sim);
    }
    m_sim->setVisible(b);
}

void ForgeWindow::handleSimAlwaysOnTopToggled(bool b)
{
    m_settings.simOnTop = b;
    if (m_sim == nullptr) {
        return;
    }
    {
        // Re-parenting hides the window in passing, which must not count as the user's doing.
        const QSignalBlocker blocker(m_sim.data());
        keepPlace(m_sim);
        if (b) {
            m_sim->setParent(this, m_sim->windowFlags() | Qt::Dialog | Qt::WindowTitleHint);
        } else {
            m_sim->setParent(nullptr, m_sim->windowFlags());
        }
    }
    m_sim->setVisible(m_settings.showSim);
}
