#pragma once

#include "color/VelaColor.h"

#include <functional>

class Effect;
class MapModel;
class QWidget;

using ColorHandler = std::function<void(const VelaColor&)>;

/// Runs the modal dialog "Select Color" with `current` in it. `handler` gets every colour that the
/// user passes through, and `current` again if the dialog is rejected. The fixture profiles on
/// offer are those of the effect's group; none where the map has no such group. After `form` is
/// gone nobody is told any more.
void chooseColor(const Effect& effect, MapModel* model, VelaColor current, QWidget* form,
                 const ColorHandler& handler);
