#pragma once

class Effect;
class EffectForm;
class MapModel;
class QWidget;

/// The form for the parameters of an effect, by its typeId(). Null where that has none: a timeline,
/// or, with a line in the debug log, a number that isn't known.
EffectForm* makeParameterForm(Effect* effect, MapModel* model, QWidget* parent);
