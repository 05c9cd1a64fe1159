#pragma once

#include "editor/EffectForm.h"

#include <QPointer>

class FixedWhiteEffect;

/// The form of a FixedWhiteEffect.
class FixedWhiteWidget : public EffectForm
{
    Q_OBJECT
public:
    FixedWhiteWidget(FixedWhiteEffect* effect, MapModel* model, QWidget* parent);

public slots:
    void handleTemperatureChanged(int value);
    void handleIntensityChanged(int value);
    void handleCoolChanged(int value);
    void handleWarmChanged(int value);
    void handleInputTypeChanged(int value);

private:
    QPointer<FixedWhiteEffect> m_effect; // not owned
};
