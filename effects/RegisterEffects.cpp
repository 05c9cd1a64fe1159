#include "effects/RegisterEffects.h"

#include "effects/ChasingRainbowEffect.h"
#include "effects/CrossFadeEffect.h"
#include "effects/CustomRainbowEffect.h"
#include "effects/FixedColorEffect.h"
#include "effects/FixedWhiteEffect.h"
#include "effects/FlashEffect.h"
#include "effects/ImageEffect.h"
#include "effects/RandomColorEffect.h"
#include "effects/SelectionEffect.h"
#include "effects/SparkleEffect.h"
#include "effects/SparkleGroupEffect.h"
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
    EffectFactory::registerCreator(1, create<ChasingRainbowEffect>);
    EffectFactory::registerCreator(2, create<CrossFadeEffect>);
    EffectFactory::registerCreator(3, create<CustomRainbowEffect>);
    EffectFactory::registerCreator(4, create<FixedWhiteEffect>);
    EffectFactory::registerCreator(5, create<FlashEffect>);
    EffectFactory::registerCreator(6, create<ImageEffect>);
    EffectFactory::registerCreator(8, create<RandomColorEffect>);
    EffectFactory::registerCreator(9, create<SparkleEffect>);
    EffectFactory::registerCreator(10, create<SparkleGroupEffect>);
    EffectFactory::registerCreator(11, create<StreakEffect>);
    EffectFactory::registerCreator(12, create<SweepEffect>);
    EffectFactory::registerCreator(13, create<WhiteCrossFadeEffect>);
    EffectFactory::registerCreator(14, create<XYBurstEffect>);
    EffectFactory::registerCreator(15, create<XYSpiralEffect>);
    EffectFactory::registerCreator(16, create<XYTextEffect>);
    EffectFactory::registerCreator(17, create<SelectionEffect>);
}
