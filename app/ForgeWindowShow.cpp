#include "app/DmxExport.h"
#include "app/ForgeWindow.h"
#include "color/VelaColorLibrary.h"
#include "editor/MetaWidget.h"
#include "engine/EffectEngine.h"
#include "engine/EffectFactory.h"
#include "engine/MetaEffect.h"
#include "map/MapModel.h"
#include "sim/LightSim.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDebug>
#include <QDomDocument>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QSaveFile>
#include <QSignalBlocker>
#include <QTextStream>
#include <QTimer>

#include <cstdio>
#include <limits>

namespace {

constexpr int kSliderDelayMs = 500;

/// Everything before the last slash.
QString folderOf(const QString& path)
{
    return path.section(QLatin1Char('/'), 0, -2);
}

QString withShowSuffix(const QString& path)
{
    const QString suffix = QStringLiteral(".sho");
    return path.endsWith(suffix, Qt::CaseInsensitive) ? path : path + suffix;
}

bool holdsTimeline(const MetaEffect& root)
{
    const QList<Effect*> children = root.effectList();
    for (const Effect* child : children) {
        if (qobject_cast<const MetaEffect*>(child) != nullptr) {
            return true;
        }
    }
    return false;
}

} // namespace

bool ForgeWindow::pauseEngine()
{
    const bool running = !m_engine->isPaused();
    if (running) {
        m_engine->pause(true);
    }
    return running;
}

void ForgeWindow::restoreEngine(bool running)
{
    m_engine->pause(!running);
}

MetaEffect* ForgeWindow::makeRoot()
{
    return new MetaEffect(m_model, 0, nullptr);
}

void ForgeWindow::discardRoot(MetaEffect* root)
{
    if (root != nullptr) {
        m_engine->removeEffect(root);
        root->deleteShow();
    }
}

void ForgeWindow::readSwatches(const QDomDocument& document)
{
    const bool modified = m_metaWidget->isModified();
    VelaColorLibrary::instance()->readProject(document, m_showFile);
    m_metaWidget->setModified(modified); // reading is no change
}

void ForgeWindow::setShowTitle(const QString& path)
{
    setWindowTitle(QStringLiteral("Orrin Pageant Forge") + QLatin1Char(' ') + path);
}

ForgeWindow::Answer ForgeWindow::askToSave()
{
    if (!m_metaWidget->isModified()) {
        return Answer::No;
    }
    QMessageBox box(this);
    box.setWindowTitle(tr("Pageant Forge"));
    box.setText(tr("Do you want to save changes to your current show?\n"));
    QPushButton* const yes = box.addButton(tr("Yes"), QMessageBox::YesRole);
    QPushButton* const no = box.addButton(tr("No"), QMessageBox::NoRole);
    QPushButton* const cancel = box.addButton(tr("Cancel"), QMessageBox::RejectRole);
    box.setDefaultButton(yes);
    box.setEscapeButton(cancel);
    box.setWindowFlags(box.windowFlags() | Qt::WindowStaysOnTopHint);
    box.exec();
    if (box.clickedButton() == yes) {
        handleSaveShowAction();
        return Answer::Yes;
    }
    return box.clickedButton() == no ? Answer::No : Answer::Cancel;
}

bool ForgeWindow::mayClose()
{
    if (!m_metaWidget->isModified()) {
        return true;
    }
    const QMessageBox::StandardButton answer =
        QMessageBox::warning(this, QStringLiteral("Orrin Pageant Forge"),
                             tr("Do you want to save changes to your current show?\n"),
                             QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    if (answer == QMessageBox::Yes) {
        handleSaveShowAction();
    }
    return answer == QMessageBox::Yes || answer == QMessageBox::No;
}

void ForgeWindow::handleNewShowAction()
{
    if (m_show == nullptr) {
        return;
    }
    const bool running = pauseEngine();
    if (askToSave() == Answer::Cancel) {
        return; // the engine stays paused
    }
    m_engine->pause(true);
    m_show->stopAll();
    MetaEffect* const old = m_show;
    m_show = makeRoot();
    m_metaWidget->setMetaEffect(m_show);
    m_show->setActive(true);
    m_show->compile();
    m_engine->addEffect(m_show);
    m_metaWidget->setEnabled(true);
    m_metaWidget->rebuildTable();
    discardRoot(old);

    m_sliderTimer->start(kSliderDelayMs);
    m_showFile.clear();
    readSwatches(QDomDocument());
    setShowTitle(m_showFile);
    restoreEngine(running);
}

void ForgeWindow::handleOpenShowAction()
{
    const bool running = pauseEngine();
    if (askToSave() == Answer::Cancel) {
        return; // the engine stays paused
    }
    loadShow(QFileDialog::getOpenFileName(this, tr("Select A Show File"), m_settings.showPath,
                                          tr("Show Files (*.sho);;All Files (*.*)")));
    restoreEngine(running);
}

void ForgeWindow::loadShow(const QString& path)
{
    if (m_show == nullptr || m_engine == nullptr || path.isNull()) {
        return;
    }
    const bool running = pauseEngine();
    m_showFile = withShowSuffix(path);
    m_settings.showPath = folderOf(m_showFile);
    m_engine->pause(true);

    // The editor lets go of the old root before that is freed.
    MetaEffect* const old = m_show;
    m_show = EffectFactory::loadShow(
        m_showFile, m_model, [this](const QDomDocument& document) { readSwatches(document); });
    if (m_show == nullptr) {
        m_show = makeRoot();
        readSwatches(QDomDocument());
    }
    m_metaWidget->setMetaEffect(m_show);
    m_engine->removeEffect(old);
    m_show->tick(QDateTime::currentDateTime(), 0);
    m_show->setActive(true);
    m_show->compile();
    if (holdsTimeline(*m_show)) {
        m_show->updateEffectTimes(); // a nested timeline does not keep its place by itself
    }
    m_engine->addEffect(m_show);
    m_metaWidget->setEnabled(true);
    m_metaWidget->rebuildTable();
    discardRoot(old);
    m_show->restartFromLast();

    m_sliderTimer->start(kSliderDelayMs);
    setShowTitle(m_showFile);
    restoreEngine(running);
}

void ForgeWindow::handleSaveShowAction()
{
    saveShow(m_showFile.isEmpty());
}

void ForgeWindow::handleSaveShowAsAction()
{
    saveShow(true);
}

void ForgeWindow::saveShow(bool askForName)
{
    const bool running = pauseEngine();
    if (askForName) {
        m_showFile = QFileDialog::getSaveFileName(this, tr("Select A Show File"),
                                                  m_settings.showPath, tr("Show Files (*.sho)"));
    }
    if (m_showFile.isEmpty()) {
        return; // the engine stays paused
    }
    m_showFile = withShowSuffix(m_showFile);
    m_settings.showPath = folderOf(m_showFile);
    if (!writeShowFile()) {
        QMessageBox::critical(this, tr("Save Failed"),
                              tr("Unable to save file ") + m_mapFile + QLatin1Char('.'));
    }
    restoreEngine(running);
    setShowTitle(m_showFile);
}

bool ForgeWindow::writeShowFile()
{
    // The old file is replaced only by a complete new one.
    QSaveFile file(m_showFile);
    file.setDirectWriteFallback(true);
    if (!file.open(QIODevice::WriteOnly)) {
        qDebug() << "Could not open show file for writing:" << m_showFile << file.errorString();
        return false;
    }
    const bool modified = m_metaWidget->isModified();
    m_show->setAppendix([](QDomDocument& document) {
        return VelaColorLibrary::instance()->projectElement(document);
    });
    QTextStream stream(&file);
    stream.setCodec("UTF-8");
    m_metaWidget->writeShow(stream);
    stream.flush();
    if (stream.status() != QTextStream::Ok || !file.commit()) {
        qDebug() << "Could not write show file:" << m_showFile << file.errorString();
        m_metaWidget->setModified(modified);
        return false;
    }
    return true;
}

void ForgeWindow::handleLoadMapAction()
{
    QString path = m_settings.mapFileName;
    if (path.isEmpty()) {
        path = QFileDialog::getOpenFileName(this, tr("Select A Map File"), m_settings.mapPath,
                                            tr("Map Files (*.map);;All Files (*.*)"));
    }
    loadMap(path);
}

void ForgeWindow::loadMap(const QString& path)
{
    if (path.isEmpty()) {
        return;
    }
    const bool running = pauseEngine();
    m_mapFile = path;
    m_settings.mapPath = folderOf(path);
    m_engine->pause(true);
    if (m_sim != nullptr) {
        m_sim->setPaused(true);
    }

    m_model->clear();
    m_progress = new QProgressDialog(this);
    m_progress->setCancelButton(nullptr);
    m_progress->reset(); // only what the model reports shows it
    connect(m_model, &MapModel::progressUpdated, this, &ForgeWindow::handleProgressUpdated,
            Qt::UniqueConnection);
    connect(m_model, &MapModel::progressStarted, this, &ForgeWindow::handleProgressStarted,
            Qt::UniqueConnection);
    if (!m_model->load(path)) {
        delete m_progress; // a map that is refused may report nothing
        m_progress = nullptr;
    }
    m_model->setSimulateOnly(!m_settings.livePlay);

    makeSimulation();
    adoptMapForShow();
    m_sliderTimer->start(kSliderDelayMs);
    restoreEngine(running);
}

void ForgeWindow::makeSimulation()
{
    delete m_sim;
    m_sim = new LightSim(m_model, m_settings.simOnTop ? this : nullptr, "Sim");
    connect(m_sim, &LightSim::simStateChanged, this, &ForgeWindow::handleShowSimToggled);
    m_sim->setBackground(m_settings.simBackground);
    m_sim->setVisible(m_settings.showSim);
    m_sim->setPaused(m_settings.pauseSim);
    m_sim->setRefreshCount(m_settings.simRate);
    if (!connect(m_engine, &EffectEngine::propertiesCompiled, m_sim, &LightSim::updateLights)) {
        std::fputs("Failed to connect.\n", stdout);
    }
}

void ForgeWindow::adoptMapForShow()
{
    if (!m_show->effectList().isEmpty()) {
        if (!confirmClearEffects()) {
            m_show->compile();
            m_show->compileAll();
            if (holdsTimeline(*m_show)) {
                m_show->updateEffectTimes(); // compiling sets a nested timeline to the start
            }
            m_metaWidget->rebuildTable();
            return;
        }
        MetaEffect* const old = m_show;
        m_show = makeRoot();
        m_show->setActive(true);
        m_show->compile();
        m_engine->removeEffect(old);
        m_engine->addEffect(m_show);
        const QSignalBlocker blocker(m_show);
        m_metaWidget->setMetaEffect(m_show);
        m_metaWidget->rebuildTable();
        discardRoot(old);
        return;
    }
    MetaEffect* const old = m_show;
    m_show = makeRoot();
    m_metaWidget->setMetaEffect(m_show);
    m_engine->removeEffect(old);
    m_show->setActive(true);
    m_show->compile();
    m_engine->addEffect(m_show);
    m_metaWidget->setEnabled(true);
    m_metaWidget->rebuildTable();
    discardRoot(old);
}

bool ForgeWindow::confirmClearEffects()
{
    QMessageBox box(this);
    box.setWindowTitle(tr("Clear Effects?"));
    box.setText(tr("Remove all effects from current show?"));
    QPushButton* const yes = box.addButton(tr("Yes"), QMessageBox::YesRole);
    QPushButton* const no = box.addButton(tr("No"), QMessageBox::NoRole);
    box.setDefaultButton(no); // the other one destroys
    box.setEscapeButton(no);
    box.setWindowFlags(box.windowFlags() | Qt::WindowStaysOnTopHint);
    box.exec();
    return box.clickedButton() == yes;
}

void ForgeWindow::handleWriteDMXAction()
{
    if (m_sim == nullptr || m_show == nullptr) {
        return;
    }
    const bool running = pauseEngine();
    m_sim->setPaused(true);
    if (m_show->end() == 0) {
        return; // the engine stays paused and the view frozen, here and for an empty name
    }
    const QDateTime created = QDateTime::currentDateTime();
    const QString path = QFileDialog::getSaveFileName(this, tr("Choose base DMX filename"),
                                                      m_settings.dmxPath, tr("DMX Files (*.dmx)"));
    if (path.isEmpty()) {
        return;
    }
    m_settings.dmxPath = folderOf(path);
    // Cancelling answers with the proposed value, and the export goes on.
    const int rate = DmxExport::workingRate(QInputDialog::getInt(
        this, tr("Frame Rate"), tr("Please enter the frame rate for your DMX file."),
        m_settings.frameRate, 0, std::numeric_limits<int>::max(), 1));

    DmxExport(m_model, m_engine, m_show, this).run(path, rate, created);
    m_engine->setFramePeriod(framePeriodMs(m_settings.frameRate));
    m_sim->setPaused(m_settings.pauseSim);
    if (running) {
        m_engine->pause(false);
    }
}

void ForgeWindow::handleProgressStarted(int min, int max, const QString& windowText)
{
    if (m_progress == nullptr) {
        return;
    }
    m_progress->setModal(true);
    m_progress->show();
    m_progress->setRange(min, max);
    m_progress->setWindowTitle(windowText);
    QCoreApplication::processEvents();
}

void ForgeWindow::handleProgressUpdated(int current)
{
    if (m_progress == nullptr) {
        return;
    }
    m_progress->setValue(current);
    if (current == m_progress->maximum()) {
        delete m_progress;
        m_progress = nullptr;
    }
    QCoreApplication::processEvents();
}
