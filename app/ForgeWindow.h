#pragma once

#include "app/Settings.h"

#include <QColor>
#include <QMainWindow>
#include <QPointer>
#include <QString>

class AboutDialog;
class CommLibrary;
class EffectEngine;
class LightSim;
class MapModel;
class MetaEffect;
class MetaWidget;
class PlaybackWidget;
class QAction;
class QDomDocument;
class QFrame;
class QMenu;
class QMenuBar;
class QProgressDialog;
class QTimer;
class QToolBar;
class QVBoxLayout;

/// The main window, owner of the program's long-lived objects: it ties map, engine, show, editor,
/// time slider and simulation together.
class ForgeWindow : public QMainWindow
{
    Q_OBJECT
public:
    /// An empty path means that none was given. The map is loaded before the show.
    ForgeWindow(const QString& mapFile, const QString& showFile, bool demoMode, QWidget* parent);
    ~ForgeWindow() override;

public slots:
    void handleLoadMapAction();
    void handleExitAction();
    void handleSaveShowAction();
    void handleShowSimToggled(bool b);
    void handleOpenShowAction();
    void handleSaveShowAsAction();
    void handleNewShowAction();
    void handleAboutAction();
    void handleCopyEffectAction();
    void handleCutEffectAction();
    void handlePasteEffectAction();
    void handleDeleteEffectAction();
    void handleSelectAllEffectAction();
    void handleWriteDMXAction();
    void handleEditPreferencesAction();
    void handleSimAlwaysOnTopToggled(bool b);
    void handleZoomIn();
    void handleZoomOut();
    void handlePauseSimToggled(bool b);
    void handleLivePlayToggled(bool b);

    void sliderPressed();
    void sliderChanged(int value);
    void sliderReleased();
    void sliderUpdate();
    void pause(bool on);
    void handlePauseEffectEngine(bool b);
    void handleProgressUpdated(int current);
    void handleProgressStarted(int min, int max, const QString& windowText);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    enum class Answer { Yes, No, Cancel };

    // Form and actions.
    void setUpForm();
    void setUpActions();
    void setUpMenus();
    void setUpToolBars();
    void setUpPlayback();
    void checkActions();
    void connectActions();
    QAction* makeAction(const char* name, const QString& text, const QString& toolTip,
                        const char* shortcut, const char* icon);

    // Settings.
    void readSettings();
    void writeSettings();
    void readGeometry();
    void writeGeometry();

    // Show lifecycle.
    /// Notes whether the engine runs and pauses it; the answer goes to restoreEngine().
    bool pauseEngine();
    void restoreEngine(bool running);
    /// Asks whether to save, where something was changed; yes saves.
    Answer askToSave();
    /// The same question of a window that closes; false to stay.
    bool mayClose();
    void loadShow(const QString& path);
    void saveShow(bool askForName);
    [[nodiscard]] bool writeShowFile();
    void loadMap(const QString& path);
    void makeSimulation();
    void adoptMapForShow();
    [[nodiscard]] bool confirmClearEffects();
    MetaEffect* makeRoot();
    /// Takes the old root out of the engine and frees it, once the editor has the new one.
    void discardRoot(MetaEffect* root);
    /// Fills "Project Swatches" from a show's document; empties it for an empty document.
    void readSwatches(const QDomDocument& document);
    void setShowTitle(const QString& path);

    MapModel* m_model = nullptr;
    EffectEngine* m_engine = nullptr;
    MetaEffect* m_show = nullptr; // owned; never null once constructed
    MetaWidget* m_metaWidget = nullptr;
    PlaybackWidget* m_playback = nullptr;
    QPointer<LightSim> m_sim;      // null before the first map
    CommLibrary* m_comm = nullptr; // owned
    QTimer* m_sliderTimer = nullptr;
    bool m_sliderUpdating = false;
    bool m_lengthErrorShown = false;
    bool m_sliderHeld = false;
    Settings m_settings;
    QString m_mapFile;
    QString m_showFile;
    QProgressDialog* m_progress = nullptr;
    AboutDialog* m_about = nullptr;

    QVBoxLayout* m_centralLayout = nullptr;
    QFrame* m_mainFrame = nullptr;
    QMenuBar* m_menuBar = nullptr;
    QMenu* m_fileMenu = nullptr;
    QMenu* m_editMenu = nullptr;
    QMenu* m_simMenu = nullptr;
    QMenu* m_helpMenu = nullptr;
    QToolBar* m_fileToolBar = nullptr;
    QToolBar* m_editToolBar = nullptr;
    QToolBar* m_simToolBar = nullptr;

    QAction* m_loadMapAction = nullptr;
    QAction* m_exitAction = nullptr;
    QAction* m_saveShowAction = nullptr;
    QAction* m_showSimAction = nullptr;
    QAction* m_openShowAction = nullptr;
    QAction* m_saveShowAsAction = nullptr;
    QAction* m_newShowAction = nullptr;
    QAction* m_aboutAction = nullptr;
    QAction* m_copyEffectAction = nullptr;
    QAction* m_cutEffectAction = nullptr;
    QAction* m_pasteEffectAction = nullptr;
    QAction* m_deleteEffectAction = nullptr;
    QAction* m_selectAllEffectAction = nullptr;
    QAction* m_writeDmxAction = nullptr;
    QAction* m_editPreferencesAction = nullptr;
    QAction* m_simAlwaysOnTopAction = nullptr;
    QAction* m_zoomInAction = nullptr;
    QAction* m_zoomOutAction = nullptr;
    QAction* m_pauseSimAction = nullptr;
    QAction* m_livePlayAction = nullptr;
};
