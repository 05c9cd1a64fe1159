#include "app/ForgeWindow.h"

#include "color/VelaColorLibrary.h"
#include "editor/MetaWidget.h"
#include "editor/PlaybackWidget.h"
#include "engine/EffectEngine.h"
#include "engine/MetaEffect.h"
#include "map/MapModel.h"
#include "output/CommLibrary.h"
#include "sim/LightSim.h"

#include <QAction>
#include <QCloseEvent>
#include <QFrame>
#include <QSettings>
#include <QTimer>
#include <QVBoxLayout>

namespace {

QSettings makeStore()
{
    return QSettings(QStringLiteral("Halden"), QStringLiteral("Pageant Forge"));
}

} // namespace

ForgeWindow::ForgeWindow(const QString& mapFile, const QString& showFile, bool demoMode,
                         QWidget* parent)
    : QMainWindow(parent)
{
    setUpForm();
    readSettings();

    m_sliderTimer = new QTimer(this);
    m_sliderTimer->setObjectName(QStringLiteral("m_sliderTimer"));
    m_sliderTimer->setSingleShot(true);
    m_model = new MapModel(this);
    QList<Effect*> noEffects;
    m_engine = new EffectEngine(m_model, &noEffects, framePeriodMs(m_settings.frameRate));
    m_engine->setParent(this);
    m_model->setSimulateOnly(!m_settings.livePlay);
    m_livePlayAction->setChecked(m_settings.livePlay);

    m_centralLayout = new QVBoxLayout(m_mainFrame);
    m_centralLayout->setContentsMargins(0, 0, 0, 0);
    m_show = makeRoot();
    m_metaWidget = new MetaWidget(m_show, m_model, this);
    m_metaWidget->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::MinimumExpanding);
    m_centralLayout->insertWidget(0, m_metaWidget);
    m_metaWidget->setEnabled(false);
    connect(m_metaWidget, &MetaWidget::pauseEffectEngine, this,
            &ForgeWindow::handlePauseEffectEngine);
    // The show keeps its swatches.
    connect(VelaColorLibrary::instance(), &VelaColorLibrary::changed, m_metaWidget,
            [this](const QString& listId) {
                if (listId == VelaColorLibrary::projectListName()) {
                    m_metaWidget->setModified(true);
                }
            });
    m_show->setActive(true);
    m_show->compile();
    m_engine->addEffect(m_show);

    setUpPlayback();
    sliderUpdate();
    m_comm = new CommLibrary(QStringLiteral("Pageant Forge"));

    if (!m_settings.mapFileName.isEmpty()) {
        handleLoadMapAction();
        m_settings.mapFileName.clear();
    }
    checkActions();
    connectActions();

    if (!mapFile.isEmpty()) {
        loadMap(mapFile);
    }
    if (!showFile.isEmpty()) {
        loadShow(showFile);
    }
    if (demoMode) {
        m_metaWidget->demoStart();
    }
}

ForgeWindow::~ForgeWindow()
{
    delete m_comm;
    delete m_sim; // it may stand by itself, and shows lights of the model
    discardRoot(m_show);
}

void ForgeWindow::setUpPlayback()
{
    m_playback = new PlaybackWidget(this);
    m_centralLayout->insertWidget(1, m_playback);
    connect(m_playback, &PlaybackWidget::sliderPressed, this, &ForgeWindow::sliderPressed);
    connect(m_playback, &PlaybackWidget::valueChanged, this, &ForgeWindow::sliderChanged);
    connect(m_playback, &PlaybackWidget::sliderReleased, this, &ForgeWindow::sliderReleased);
    connect(m_playback, &PlaybackWidget::toggled, this, &ForgeWindow::pause);
    connect(m_sliderTimer, &QTimer::timeout, this, &ForgeWindow::sliderUpdate);
}

void ForgeWindow::readSettings()
{
    m_settings.read(makeStore());
    readGeometry();
}

void ForgeWindow::writeSettings()
{
    QSettings store = makeStore();
    m_settings.write(&store);
    writeGeometry();
}

void ForgeWindow::readGeometry()
{
    const QSettings store = makeStore();
    if (store.value(QStringLiteral("/appmaximized"), false).toBool()) {
        showMaximized();
    }
    const int x = store.value(QStringLiteral("/appx"), -1).toInt();
    const int y = store.value(QStringLiteral("/appy"), -1).toInt();
    if (x != -1 && y != -1) {
        move(x, y);
    }
    const int width = store.value(QStringLiteral("/appwidth"), -1).toInt();
    const int height = store.value(QStringLiteral("/appheight"), -1).toInt();
    if (width != -1 && height != -1) {
        resize(width, height);
    }
}

void ForgeWindow::writeGeometry()
{
    QSettings store = makeStore();
    store.setValue(QStringLiteral("/appmaximized"), isMaximized());
    store.setValue(QStringLiteral("/appx"), pos().x());
    store.setValue(QStringLiteral("/appy"), pos().y());
    store.setValue(QStringLiteral("/appwidth"), size().width());
    store.setValue(QStringLiteral("/appheight"), size().height());
}

void ForgeWindow::closeEvent(QCloseEvent* event)
{
    writeSettings();
    event->setAccepted(mayClose());
}
