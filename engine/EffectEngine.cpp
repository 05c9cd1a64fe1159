#include "engine/EffectEngine.h"

#include "engine/Effect.h"
#include "map/MapModel.h"

#include <QTimer>

#include <algorithm>
#include <limits>

namespace {

constexpr int kDefaultFrameRate = 40;

void sortByPriority(QList<Effect*>& effects)
{
    std::stable_sort(effects.begin(), effects.end(), [](const Effect* a, const Effect* b) {
        return a->priority() < b->priority();
    });
}

} // namespace

int framePeriodMs(int rate)
{
    return std::max(1, 1000 / (rate < 1 ? kDefaultFrameRate : rate));
}

EffectEngine::EffectEngine(MapModel* model, QList<Effect*>* effects, int periodMs)
    : m_model(model)
    , m_timer(new QTimer(this))
    , m_lastTickMs(QDateTime::currentMSecsSinceEpoch())
{
    if (m_model == nullptr) {
        qBadAlloc();
    }
    if (effects != nullptr) {
        m_effects = *effects;
        sortByPriority(m_effects);
    }
    setFramePeriod(periodMs);
    m_timer->setSingleShot(true);
    m_timer->setTimerType(Qt::PreciseTimer);
    m_timer->setInterval(std::max(0, periodMs));
    connect(m_timer, &QTimer::timeout, this, &EffectEngine::handleTimer);
    m_timer->start();
}

EffectEngine::~EffectEngine() = default;

void EffectEngine::addEffect(Effect* e)
{
    if (e == nullptr) {
        return;
    }
    m_effects.append(e);
    if (m_effects.size() > 1) {
        sortByPriority(m_effects);
    }
}

void EffectEngine::removeEffect(Effect* e)
{
    if (e != nullptr) {
        m_effects.removeOne(e);
    }
}

void EffectEngine::tick(const QDateTime& now)
{
    const qint64 nowMs = now.toMSecsSinceEpoch();
    {
        const QList<Effect*> effects = m_effects; // an effect may change the list meanwhile
        for (Effect* const effect : effects) {
            effect->tick(nowMs, m_frame);
        }
    }
    emit propertiesCompiled(); // ahead of the outputs, which reset the lights
    m_model->updateLights();
    ++m_frame;
    emit EngineTick(now);

    // 64 bits from here on: a clock set by years must not overflow.
    const qint64 elapsed = static_cast<qint32>(nowMs - m_lastTickMs);
    m_lastTickMs = nowMs;
    const qint64 error = elapsed - m_period;
    m_drift += error;
    if (m_drift > 2 * m_driftLimit) {
        m_drift = 0; // a stall, not drift
    }
    m_drift = std::max<qint64>(0, std::min(m_drift, m_driftLimit));
    const qint64 next = m_period - error / 5 - m_drift / 5;
    const qint64 interval = std::max(m_minInterval, std::min(m_maxInterval, next));
    m_timer->start(static_cast<int>(std::max<qint64>(0, interval)));
}

void EffectEngine::pause(bool on)
{
    if (on) {
        m_timer->stop();
        return;
    }
    m_drift = 0;
    m_timer->start();
}

bool EffectEngine::isPaused() const
{
    return !m_timer->isActive();
}

void EffectEngine::setFramePeriod(int periodMs)
{
    m_period = periodMs;
    m_minInterval = m_period / 4;
    m_maxInterval = std::min<qint64>(m_period * 2, std::numeric_limits<int>::max());
    m_driftLimit = m_period * 100;
    m_drift = 0;
}

int EffectEngine::interval() const
{
    return m_timer->interval();
}

int EffectEngine::drift() const
{
    return static_cast<int>(std::min<qint64>(m_drift, std::numeric_limits<int>::max()));
}

void EffectEngine::handleTimer()
{
    tick(QDateTime::currentDateTimeUtc()); // a local time is converted by way of the zone's file
}
