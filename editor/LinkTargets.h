#pragma once

#include <QList>

class Effect;
class MetaEffect;

/// Which effects the start or end of `edited` may be linked to: all of `timeline` that neither are
/// it nor depend on it, directly or by way of others, in the timeline's order. Judged by the link
/// settings alone. Empty for a null effect, or one that the timeline doesn't hold.
///
/// A show file may link effects in a ring: one that `edited` is not part of is no obstacle.
QList<Effect*> linkTargets(const MetaEffect& timeline, const Effect* edited);
