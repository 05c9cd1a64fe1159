#include "map/Controller.h"
#include "map/Light.h"
#include "map/MapModel.h"
#include "output/DmxRecording.h"

#include <QVector>

bool Controller::setRecording(int newMode, const QString& path)
{
    switch (newMode) {
    case LiveMode:
        finishRecording();
        m_mode = LiveMode;
        return true;
    case RecordingMode:
        if (path.isEmpty()) {
            emit msg(QStringLiteral("No filename specified"));
            return false;
        }
        m_recording = std::make_unique<DmxRecording>(path);
        if (!m_recording->open()) {
            emit msg(QStringLiteral("Unable to open file for write"));
            return false;
        }
        m_mode = RecordingMode;
        return true;
    default:
        return false;
    }
}

void Controller::writeFrame()
{
    if (!m_lightsValid) {
        resolveLights();
    }
    if (m_recording == nullptr) {
        return;
    }
    for (int i = 0; i < m_lightCount; ++i) {
        Light* const light = m_lights[static_cast<std::size_t>(i)];
        if (light == nullptr) {
            emit msg(QStringLiteral("writeFrame: unknown light in list"));
            continue;
        }
        // The frame pass has reset the lights that it reached: those are recorded as black.
        const VelaColor& mix = light->mixValue();
        const VelaColor rgb = mix.spec() == VelaColor::Rgb ? mix : mix.toRgb(true);
        m_recording->appendLight(static_cast<quint8>(rgb.red8()), static_cast<quint8>(rgb.green8()),
                                 static_cast<quint8>(rgb.blue8()));
        light->mixColorRef().reset();
    }
    m_recording->endFrame();
}

void Controller::finishRecording()
{
    if (m_recording == nullptr || !m_recording->isOpen()) {
        return;
    }
    QVector<quint32> numbers;
    numbers.reserve(m_lightUids.size());
    for (const quint64 uid : qAsConst(m_lightUids)) {
        const Light* const light = m_model != nullptr ? m_model->light(uid) : nullptr;
        if (light == nullptr) {
            emit msg(QStringLiteral("aboutToCloseFile: unknown light in list"));
            continue;
        }
        numbers.append(light->lightNumber());
    }
    m_recording->finish(static_cast<quint32>(m_lightUids.size()), numbers);
    m_recording.reset();
}
