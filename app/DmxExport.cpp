#include "app/DmxExport.h"

#include "engine/EffectEngine.h"
#include "engine/MetaEffect.h"
#include "map/Controller.h"
#include "map/MapModel.h"
#include "output/DmxRecording.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QHash>
#include <QProgressDialog>

#include <algorithm>
#include <limits>

namespace {

constexpr int kFastestRate = 1000;

int toSteps(qint64 frames)
{
    return static_cast<int>(std::min<qint64>(frames, std::numeric_limits<int>::max()));
}

} // namespace

DmxExport::DmxExport(MapModel* model, EffectEngine* engine, MetaEffect* show, QWidget* parent)
    : m_model(model)
    , m_engine(engine)
    , m_show(show)
    , m_parent(parent)
{}

int DmxExport::workingRate(int framesPerSecond)
{
    return std::clamp(framesPerSecond, 1, kFastestRate);
}

void DmxExport::run(const QString& chosenPath, int rate, const QDateTime& created)
{
    m_engine->setFramePeriod(framePeriodMs(rate));
    startRecordings(chosenPath, rate, created);
    const QDateTime base = QDateTime::currentDateTime();
    rewind(base);

    const bool simulateOnly = m_model->simulateOnly();
    m_model->setSimulateOnly(false); // the frame must reach the controllers
    recordFrames(rate, base);
    m_model->setSimulateOnly(simulateOnly);

    const QHash<quint64, Controller*> controllers = m_model->controllersHash();
    for (Controller* const controller : controllers) {
        controller->setRecording(Controller::LiveMode, QString());
    }
    rewind(QDateTime::currentDateTime());
}

void DmxExport::startRecordings(const QString& chosenPath, int rate, const QDateTime& created)
{
    const QString base = DmxRecording::basePath(chosenPath);
    const QHash<quint64, Controller*> controllers = m_model->controllersHash();
    for (Controller* const controller : controllers) {
        const QString path = DmxRecording::fileName(base, controller->name());
        DmxRecording::Header header;
        header.created = created;
        header.framesPerSecond = rate;
        header.channels = Controller::numDmxChannels();
        header.totalMs = m_show->end();
        // Without a header the recording is tried all the same, and has its own message.
        DmxRecording::writeHeader(path, header);
        controller->setRecording(Controller::RecordingMode, path);
    }
}

void DmxExport::recordFrames(int rate, const QDateTime& base)
{
    const qint64 length = m_show->end();
    const int period = framePeriodMs(rate);
    QProgressDialog progress(QCoreApplication::translate("ForgeWindow", "Saving DMX file..."),
                             QCoreApplication::translate("ForgeWindow", "Cancel"), 0,
                             toSteps(length * rate / 1000), m_parent);
    progress.setWindowModality(Qt::ApplicationModal);
    // It blocks the window to the end, also where there are more frames than steps, and appears
    // whole with the first frames, not after some seconds.
    progress.setAutoReset(false);
    progress.setMinimumDuration(0);
    progress.show();
    qint64 index = 0;
    for (qint64 t = 0; t < length; t += period) {
        m_engine->tick(base.addMSecs(t));
        m_engine->pause(true); // a tick re-arms the timer; no other frame may slip in
        progress.setValue(toSteps(index));
        ++index;
    }
}

void DmxExport::rewind(const QDateTime& base)
{
    // The restart, too, counts from the time of the tick before.
    m_show->rewindAll(base);
    m_show->restart();
    m_show->setStartTime(base);
}
