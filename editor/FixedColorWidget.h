#pragma once

#include "color/VelaColor.h"
#include "editor/EffectForm.h"

#include <QPointer>

class FixedColorEffect;

/// The form of a FixedColorEffect.
class FixedColorWidget : public EffectForm
{
    Q_OBJECT
public:
    FixedColorWidget(FixedColorEffect* effect, MapModel* model, QWidget* parent);

public slots:
    void chooseColorClicked();
    void handleGotNewColor(const VelaColor& c);

private:
    QPointer<FixedColorEffect> m_effect; // not owned
    VelaColor m_color;
    ColorSwatch* m_swatch = nullptr;
};
