#include "effects/RegisterEffects.h"

#include "effects/CrossFadeEffect.h"
#include "effects/FixedColorEffect.h"
#include "effects/FixedWhiteEffect.h"
#include "effects/SelectionEffect.h"
#include "effects/StreakEffect.h"
#include "effects/SweepEffect.h"
#include "effects/WhiteCrossFadeEffect.h"
#include "effects/XYBurstEffect.h"
#include "effects/XYSpiralEffect.h"
#include "effects/XYTextEffect.h"
#include "engine/EffectFactory.h"

namespace {

template <typename T>
Effect* create(MapModel* model, quint64 gid, QDomElement* element)
{
    return new T(model, gid, element);
}

} // namespace

void registerEffects()
{
    EffectFactory::registerCreator(0, create<FixedColorEffect>);
    EffectFactory::registerCreator(2, create<CrossFadeEffect>);
    EffectFactory::registerCreator(4, create<FixedWhiteEffect>);
    EffectFactory::registerCreator(11, create<StreakEffect>);
    EffectFactory::registerCreator(12, create<SweepEffect>);
    EffectFactory::registerCreator(13, create<WhiteCrossFadeEffect>);
    EffectFactory::registerCreator(14, create<XYBurstEffect>);
    EffectFactory::registerCreator(15, create<XYSpiralEffect>);
    EffectFactory::registerCreator(16, create<XYTextEffect>);
    EffectFactory::registerCreator(17, create<SelectionEffect>);
}
