#include "engine/MetaEffect.h"

#include "color/VelaColor.h"
#include "engine/EffectFactory.h"
#include "engine/EffectXml.h"
#include "map/Light.h"
#include "map/MapModel.h"

#include <QSet>

#include <algorithm>

namespace {

bool lowerPriority(const Effect* a, const Effect* b)
{
    return a->priority() < b->priority();
}

} // namespace

MetaEffect::MetaEffect(MapModel* model, quint64 gid, QDomElement* element)
    : Effect(model, gid)
{
    setName(QStringLiteral("Meta Effect"));
    setType(QStringLiteral("Meta Effect"));
    setActive(true);
    MetaEffect::fromXml(element);
}

MetaEffect::~MetaEffect() = default;

QDomElement MetaEffect::toXml(QDomDocument doc) const
{
    QDomElement element = doc.createElement(effectKeyText(EffectKey::Effect));
    writeBase(doc, element);
    EffectXml::append(doc, element, EffectKey::Brightness, m_brightness);
    EffectXml::append(doc, element, EffectKey::Loop, m_loop);
    EffectXml::append(doc, element, EffectKey::Version, QStringLiteral("2.3.1"));
    for (const Effect* const child : m_effects) {
        element.appendChild(child->toXml(doc));
    }
    if (m_appendix) {
        element.appendChild(m_appendix(doc)); // nothing, for a null one
    }
    return element;
}

int MetaEffect::typeId() const
{
    return EffectFactory::kMetaEffect;
}

quint32 MetaEffect::cycleTime() const
{
    return end() - begin();
}

void MetaEffect::restart()
{
    m_restartPending = true;
}

void MetaEffect::setOpacity(double alpha)
{
    const QHash<quint64, Light*> lights = allLights();
    for (Light* const light : lights) {
        light->setAlpha(alpha);
    }
}

bool MetaEffect::compile()
{
    const quint32 maxEnd = greatestEnd();
    setBegin(0);
    setEnd(maxEnd);
    sortEffects();
    restartFromLast();
    setCompiled(true);
    return true;
}

void MetaEffect::fromXml(QDomElement* element)
{
    if (element == nullptr || element->isNull()) {
        return;
    }
    readBase(*element);
    // Each child is added as addEffect() does, but the list is looked over and sorted only once.
    quint32 maxEid = greatestEid();
    quint32 maxEnd = greatestEnd();
    m_indexed = false;
    for (QDomNode node = element->firstChild(); !node.isNull(); node = node.nextSibling()) {
        switch (effectKey(node.nodeName())) {
        case EffectKey::Brightness:
            m_brightness = EffectXml::toDouble(EffectXml::valueOf(node), 1.0);
            break;
        case EffectKey::Loop:
            m_loop = EffectXml::toBool(EffectXml::valueOf(node), true);
            break;
        case EffectKey::Effect: {
            Effect* const child = EffectFactory::createEffectFromXml(node, model());
            if (child == nullptr) {
                break;
            }
            if (child->eid() == kNoEid) {
                child->setEid(maxEid + 1);
            }
            if (child->eid() != kNoEid) {
                maxEid = std::max(maxEid, child->eid());
            }
            m_effects.append(child);
            connect(child, &Effect::cycleTimeChanged, this, &MetaEffect::updateEffectTimes);
            maxEnd = std::max(maxEnd, child->end());
            if (maxEnd != end()) {
                setEnd(maxEnd);
                emit cycleTimeChanged(MetaEffect::cycleTime());
            }
            break;
        }
        default:
            break;
        }
    }
    sortEffects();
}

QList<quint64> MetaEffect::childGroupIds() const
{
    QList<quint64> ids;
    ids.reserve(m_effects.size());
    for (const Effect* const child : m_effects) {
        ids.append(child->gid());
    }
    return ids;
}

void MetaEffect::addEffect(Effect* e)
{
    if (e == nullptr) {
        return;
    }
    if (e->eid() == kNoEid) {
        e->setEid(greatestEid() + 1);
    }
    m_effects.append(e);
    m_indexed = false;
    sortEffects();
    connect(e, &Effect::cycleTimeChanged, this, &MetaEffect::updateEffectTimes);
    updateEndTime();
}

void MetaEffect::appendEffect(Effect* e)
{
    if (e != nullptr && !m_effects.contains(e)) {
        m_effects.append(e);
        m_indexed = false;
    }
}

void MetaEffect::removeEffect(Effect* e)
{
    if (e == nullptr) {
        return;
    }
    m_effects.removeAll(e);
    m_indexed = false;
    m_resolved.remove(e->eid());
}

Effect* MetaEffect::effectByEid(uint eid) const
{
    for (Effect* const child : m_effects) {
        if (child->eid() == eid) {
            return child;
        }
    }
    return nullptr;
}

void MetaEffect::sortEffects()
{
    if (!std::is_sorted(m_effects.cbegin(), m_effects.cend(), lowerPriority)) {
        std::stable_sort(m_effects.begin(), m_effects.end(), lowerPriority);
    }
}

void MetaEffect::compileAll()
{
    const QList<Effect*> children = m_effects;
    for (Effect* const child : children) {
        child->compile();
    }
    compileBelow();
}

/// The effects inside of nested timelines: what they hold of a map must not outlive it. Timelines
/// further down hold nothing of it, and keep their place.
void MetaEffect::compileBelow()
{
    QSet<const MetaEffect*> seen = {this};
    QList<const MetaEffect*> timelines = {this};
    while (!timelines.isEmpty()) {
        const MetaEffect* const timeline = timelines.takeLast();
        for (Effect* const child : timeline->effectList()) {
            const auto* const nested = qobject_cast<const MetaEffect*>(child);
            if (nested == nullptr) {
                if (timeline != this) {
                    child->compile();
                }
            } else if (!seen.contains(nested)) {
                seen.insert(nested);
                timelines.append(nested);
            }
        }
    }
}

void MetaEffect::stopAll()
{
    for (Effect* const child : qAsConst(m_effects)) {
        child->setActive(false);
    }
}

void MetaEffect::rewindAll(const QDateTime& now)
{
    const bool wasActive = active();
    setActive(false);
    tick(now, frame());
    QSet<const MetaEffect*> seen = {this};
    QList<MetaEffect*> timelines = {this};
    while (!timelines.isEmpty()) {
        MetaEffect* const timeline = timelines.takeLast();
        timeline->stopAll();
        for (Effect* const child : qAsConst(timeline->m_effects)) {
            child->tick(now, child->frame());
            auto* const nested = qobject_cast<MetaEffect*>(child);
            if (nested != nullptr && !seen.contains(nested)) {
                seen.insert(nested);
                timelines.append(nested);
            }
        }
    }
    setActive(wasActive);
}

void MetaEffect::deleteShow()
{
    // A list may hold an effect twice, or a timeline that it lies in.
    QSet<Effect*> doomed = {this};
    QList<MetaEffect*> timelines = {this};
    while (!timelines.isEmpty()) {
        MetaEffect* const timeline = timelines.takeLast();
        for (Effect* const child : qAsConst(timeline->m_effects)) {
            if (doomed.contains(child)) {
                continue;
            }
            doomed.insert(child);
            if (auto* const nested = qobject_cast<MetaEffect*>(child)) {
                timelines.append(nested);
            }
        }
        timeline->m_effects.clear();
    }
    doomed.remove(this);
    qDeleteAll(doomed);
    delete this;
}

void MetaEffect::updateLights()
{
    bool wrapped = false;
    if (m_restartPending || (m_loop && elapsed() >= end())) {
        restartFromLast(); // from the previous frame: the loop has no gap
        m_restartPending = false;
        wrapped = true;
    }
    const qint64 t = elapsed();
    const QList<Effect*> children = m_effects; // a slot may change the list meanwhile
    for (Effect* const child : children) {
        if (wrapped) {
            child->setStartMs(currentMs());
        }
        child->setTransparency(transparency());
        if (t < child->begin() || t >= child->end()) {
            if (child->active()) {
                child->setTransparency(0.0);
            }
            child->setActive(false);
        } else {
            if (!child->active()) {
                child->setStartMs(currentMs() + (child->begin() - t)); // as if it had come in time
                child->setActive(true);
            }
            const qint64 sinceBegin = t - child->begin();
            if (sinceBegin < child->fadein()) {
                child->setTransparency(1.0 - static_cast<double>(sinceBegin) / child->fadein());
            }
            const qint64 untilEnd = child->end() - t;
            if (untilEnd < child->fadeout()) { // the fade-out wins where both fades meet
                child->setTransparency(1.0 - static_cast<double>(untilEnd) / child->fadeout());
            }
        }
        const quint32 ownPriority = child->priority();
        child->setPriority(priority() + ownPriority);
        child->tick(currentMs(), frame()); // the inactive ones too: their clocks stay fresh
        child->setPriority(ownPriority);
    }
    if (m_persistence > 0.0) {
        setOpacity(m_persistence);
    }
    if (m_brightness < 1.0) {
        dimLights();
    }
    if (m_persistence > 0.0 && m_persistence <= 1.0) {
        const QHash<quint64, Light*> lights = allLights();
        for (Light* const light : lights) {
            light->setAlpha(m_persistence);
            light->carryOver(priority() == 0);
        }
    }
    emit internalUpdateLightsComplete();
}

/// Every light of the map: the model's own table, shared and not copied, so that it is never stale
/// and thousands of nested timelines cost nothing.
QHash<quint64, Light*> MetaEffect::allLights() const
{
    return model() != nullptr ? model()->lightsHash() : QHash<quint64, Light*>();
}

/// The mix colour of every light, whoever painted it; the simulation's colour stays.
void MetaEffect::dimLights()
{
    const double factor = std::max(0.0, m_brightness);
    const QHash<quint64, Light*> lights = allLights();
    for (Light* const light : lights) {
        VelaColor& mix = light->mixColorRef();
        if (!mix.isValid()) {
            continue;
        }
        double hue = 0.0;
        double saturation = 0.0;
        double value = 0.0;
        double alpha = 0.0;
        mix.getHsvF(&hue, &saturation, &value, &alpha);
        // A grey that was dimmed before no longer reads as -1, which alone means no hue.
        mix.setHsvF(hue < 0.0 ? -1.0 : hue, saturation, value * factor, alpha,
                    static_cast<int>(mix.profileId()));
    }
}

quint32 MetaEffect::greatestEid() const
{
    quint32 greatest = 0;
    for (const Effect* const child : m_effects) {
        if (child->eid() != kNoEid) {
            greatest = std::max(greatest, child->eid());
        }
    }
    return greatest;
}

quint32 MetaEffect::greatestEnd() const
{
    quint32 greatest = 0;
    for (const Effect* const child : m_effects) {
        greatest = std::max(greatest, child->end());
    }
    return greatest;
}
