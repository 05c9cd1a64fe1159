#include "editor/LinkTargets.h"

#include "engine/MetaEffect.h"

#include <QHash>
#include <QSet>
#include <QVector>

namespace {

using Followers = QHash<const Effect*, QVector<const Effect*>>;

/// Each effect that others are linked to, with those others.
Followers followers(const QList<Effect*>& effects)
{
    QHash<quint32, const Effect*> byEid;
    byEid.reserve(effects.size());
    for (const Effect* const effect : effects) {
        if (!byEid.contains(effect->eid())) { // the first one is found, as by effectByEid()
            byEid.insert(effect->eid(), effect);
        }
    }
    Followers table;
    const auto enter = [&](const Effect* effect, quint32 eid) {
        const Effect* const target = byEid.value(eid);
        if (target != nullptr) {
            table[target].append(effect);
        }
    };
    for (const Effect* const effect : effects) {
        if (effect->startType() == Effect::StartLinked) {
            enter(effect, effect->startLinkEid());
        }
        if (effect->endType() == Effect::EndLinked) {
            enter(effect, effect->endLinkEid());
        }
    }
    return table;
}

} // namespace

QList<Effect*> linkTargets(const MetaEffect& timeline, const Effect* edited)
{
    if (edited == nullptr || timeline.effectByEid(edited->eid()) == nullptr) {
        return {};
    }
    const QList<Effect*> effects = timeline.effectList();
    const Followers table = followers(effects);
    QSet<const Effect*> dependent = {edited};
    QVector<const Effect*> open = {edited};
    while (!open.isEmpty()) {
        const QVector<const Effect*> next = table.value(open.takeLast());
        for (const Effect* const effect : next) {
            if (!dependent.contains(effect)) {
                dependent.insert(effect);
                open.append(effect);
            }
        }
    }
    QList<Effect*> targets;
    targets.reserve(effects.size());
    for (Effect* const effect : effects) {
        if (!dependent.contains(effect)) {
            targets.append(effect);
        }
    }
    return targets;
}
