#include "effects/RegisterEffects.h"

#include "effects/CrossFadeEffect.h"
#include "effects/FixedColorEffect.h"
#include "effects/FixedWhiteEffect.h"
#include "effects/FlashEffect.h"
#include "effects/ImageEffect.h"
#include "effects/SelectionEffect.h"
#include "effects/WhiteCrossFadeEffect.h"
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
    EffectFactory::registerCreator(5, create<FlashEffect>);
    EffectFactory::registerCreator(6, create<ImageEffect>);
    EffectFactory::registerCreator(13, create<WhiteCrossFadeEffect>);
    EffectFactory::registerCreator(17, create<SelectionEffect>);
}
