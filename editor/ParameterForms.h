#pragma once

#include <functional>

class Effect;
class MapModel;
class QWidget;

/// Makes the form that edits the parameters of an effect of one type.
using FormMaker = std::function<QWidget*(Effect* effect, MapModel* model, QWidget* parent)>;

/// Adds the form of a type, or replaces it; an empty maker takes it away.
void registerParameterForm(int typeNumber, const FormMaker& maker);
/// The form for the effect's typeId(). Null where that has none: a timeline, or, with a line in
/// the debug log, a number that isn't known.
QWidget* makeParameterForm(Effect* effect, MapModel* model, QWidget* parent);
