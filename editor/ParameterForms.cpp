#include "editor/ParameterForms.h"

#include "engine/Effect.h"
#include "engine/EffectFactory.h"

#include <QDebug>
#include <QHash>

namespace {

/// By type number, a line for each form.
QHash<int, FormMaker>& forms()
{
    static QHash<int, FormMaker> table;
    return table;
}

} // namespace

void registerParameterForm(int typeNumber, const FormMaker& maker)
{
    if (maker) {
        forms().insert(typeNumber, maker);
    } else {
        forms().remove(typeNumber);
    }
}

QWidget* makeParameterForm(Effect* effect, MapModel* model, QWidget* parent)
{
    if (effect == nullptr || effect->typeId() == EffectFactory::kMetaEffect) {
        return nullptr;
    }
    const FormMaker maker = forms().value(effect->typeId());
    if (!maker) {
        qDebug("Invalid Effect Type: %d", effect->typeId());
        return nullptr;
    }
    return maker(effect, model, parent);
}
