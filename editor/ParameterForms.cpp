#include "editor/ParameterForms.h"

#include "editor/ChasingRainbowWidget.h"
#include "editor/CrossFadeWidget.h"
#include "editor/CustomRainbowWidget.h"
#include "editor/FixedColorWidget.h"
#include "editor/FixedWhiteWidget.h"
#include "editor/FlashEffectWidget.h"
#include "editor/ImageWidget.h"
#include "editor/RandomColorWidget.h"
#include "editor/SelectionWidget.h"
#include "editor/SparkleGroupWidget.h"
#include "editor/SparkleWidget.h"
#include "editor/StreakWidget.h"
#include "editor/SweepWidget.h"
#include "editor/WhiteCrossFadeWidget.h"
#include "editor/XYBurstWidget.h"
#include "editor/XYSpiralWidget.h"
#include "editor/XYTextWidget.h"
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
#include "engine/Effect.h"
#include "engine/EffectFactory.h"

#include <QDebug>

#include <array>

namespace {

using FormMaker = EffectForm* (*)(Effect* effect, MapModel* model, QWidget* parent);

template <typename EffectClass, typename Form>
EffectForm* form(Effect* effect, MapModel* model, QWidget* parent)
{
    return new Form(static_cast<EffectClass*>(effect), model, parent);
}

/// By type number.
constexpr std::array<FormMaker, EffectFactory::kTypeCount> kForms = {
    form<FixedColorEffect, FixedColorWidget>,
    form<ChasingRainbowEffect, ChasingRainbowWidget>,
    form<CrossFadeEffect, CrossFadeWidget>,
    form<CustomRainbowEffect, CustomRainbowWidget>,
    form<FixedWhiteEffect, FixedWhiteWidget>,
    form<FlashEffect, FlashEffectWidget>,
    form<ImageEffect, ImageWidget>,
    nullptr, // a timeline
    form<RandomColorEffect, RandomColorWidget>,
    form<SparkleEffect, SparkleWidget>,
    form<SparkleGroupEffect, SparkleGroupWidget>,
    form<StreakEffect, StreakWidget>,
    form<SweepEffect, SweepWidget>,
    form<WhiteCrossFadeEffect, WhiteCrossFadeWidget>,
    form<XYBurstEffect, XYBurstWidget>,
    form<XYSpiralEffect, XYSpiralWidget>,
    form<XYTextEffect, XYTextWidget>,
    form<SelectionEffect, SelectionWidget>,
};

} // namespace

EffectForm* makeParameterForm(Effect* effect, MapModel* model, QWidget* parent)
{
    if (effect == nullptr || effect->typeId() == EffectFactory::kMetaEffect) {
        return nullptr;
    }
    const int number = effect->typeId();
    if (number < 0 || number >= EffectFactory::kTypeCount) {
        qDebug("Invalid Effect Type: %d", number);
        return nullptr;
    }
    return kForms[static_cast<std::size_t>(number)](effect, model, parent);
}
