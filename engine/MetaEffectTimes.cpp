#include "color/Numeric.h"
#include "engine/MetaEffect.h"

#include <QSet>
#include <QVarLengthArray>

/// How far the times of one effect are worked out. A chain of links may be as long as the show:
/// it is kept in a list, since a call for each link would overflow the stack.
struct MetaEffect::Resolving
{
    enum Stage { Start, StartFound, End, EndFound, Done };
    Effect* effect = nullptr;
    Stage stage = Start;
    Effect* other = nullptr;
    bool again = false; // a second round of an effect whose link was forgotten
};

namespace {

quint32 linkedTime(const Effect* other, bool toStart, double offset)
{
    const double t = (toStart ? other->begin() : other->end()) + offset;
    return t >= 0.0 ? truncU32(t) : 0;
}

} // namespace

void MetaEffect::updateEffectTimes()
{
    m_resolved.clear();
    m_byEid.clear();
    m_byEid.reserve(m_effects.size());
    for (Effect* const child : qAsConst(m_effects)) {
        if (!m_byEid.contains(child->eid())) { // the first one is found, as by effectByEid()
            m_byEid.insert(child->eid(), child);
        }
    }
    m_indexed = true;
    const QList<Effect*> children = m_effects;
    for (Effect* const child : children) {
        updateEffectTime(child);
    }
    m_indexed = false;
    m_byEid.clear();
    updateEndTime();
    emit updateEffectTimesComplete();
}

void MetaEffect::updateEffectTime(Effect* e)
{
    if (e == nullptr) {
        return;
    }
    QVarLengthArray<Resolving, 8> chain;
    QSet<Effect*> inProgress; // a link to one of these closes a ring: its present times serve
    chain.append({e, Resolving::Start, nullptr, false});
    inProgress.insert(e);
    while (!chain.isEmpty()) {
        Resolving& step = chain.last();
        Effect* needed = nullptr;
        if (step.stage != Resolving::Start || !m_resolved.contains(step.effect->eid())) {
            while (needed == nullptr && step.stage != Resolving::Done) {
                needed = advance(step);
                if (needed != nullptr && needed == step.other && inProgress.contains(needed)) {
                    needed = nullptr;
                }
            }
            if (needed == nullptr) {
                m_resolved.insert(step.effect->eid(), step.effect);
            }
        }
        if (needed == nullptr) {
            if (!step.again) {
                inProgress.remove(step.effect);
            }
            chain.removeLast();
        } else {
            const bool again = needed != step.other;
            inProgress.insert(needed);
            chain.append({needed, Resolving::Start, nullptr, again});
        }
    }
}

/// Takes the effect of `step` one stage on. Returns the effect whose times must be worked out
/// before the next stage: the other end of a link (`step.other`), or the effect itself once more
/// (`step.other` is null then); or null.
Effect* MetaEffect::advance(Resolving& step)
{
    Effect* const e = step.effect;
    step.other = nullptr;
    switch (step.stage) {
    case Resolving::Start:
        step.stage = Resolving::End;
        if (e->startType() == StartFixed) {
            e->setBegin(e->startFixedTime());
        } else if (e->startType() == StartLinked) {
            step.other = linkTarget(e->startLinkEid());
            if (step.other == nullptr) {
                e->setStartType(StartFixed);
                e->setStartFixedTime(0);
                return e;
            }
            step.stage = Resolving::StartFound;
            return step.other;
        }
        break;
    case Resolving::StartFound:
        step.stage = Resolving::End;
        if (Effect* const other = linkTarget(e->startLinkEid())) {
            e->setBegin(linkedTime(other, e->startLinkStart(), e->startLinkOffset()));
        }
        break;
    case Resolving::End:
        step.stage = Resolving::Done;
        if (e->endType() == EndFixed) {
            e->setEnd(e->endFixedTime() + e->begin());
        } else if (e->endType() == EndLinked) {
            step.other = linkTarget(e->endLinkEid());
            if (step.other == nullptr) {
                e->setEndType(EndFixed);
                e->setEndFixedTime(0);
                return e;
            }
            step.stage = Resolving::EndFound;
            return step.other;
        } else if (e->endType() == EndCycles) {
            const double length = static_cast<double>(e->endCycleCount()) * e->cycleTime();
            e->setEnd(e->begin() + truncU32(length));
        }
        break;
    case Resolving::EndFound:
        step.stage = Resolving::Done;
        if (Effect* const other = linkTarget(e->endLinkEid())) {
            e->setEnd(linkedTime(other, e->endLinkStart(), e->endLinkOffset()));
        }
        break;
    case Resolving::Done:
        break;
    }
    return nullptr;
}

void MetaEffect::updateEndTime()
{
    const quint32 maxEnd = greatestEnd();
    if (maxEnd != end()) {
        setEnd(maxEnd);
        emit cycleTimeChanged(cycleTime());
    }
}

Effect* MetaEffect::linkTarget(quint32 eid) const
{
    return m_indexed ? m_byEid.value(eid) : effectByEid(eid);
}
