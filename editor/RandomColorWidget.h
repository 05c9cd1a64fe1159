#pragma once

#include "color/VelaColor.h"
#include "editor/EffectForm.h"

#include <QPointer>

class RandomColorEffect;

/// The form of a RandomColorEffect.
class RandomColorWidget : public EffectForm
{
    Q_OBJECT
public:
    RandomColorWidget(RandomColorEffect* effect, MapModel* model, QWidget* parent);

public slots:
    void handleTimeChanged(const QString& s);
    void handleFadeTimeChanged(const QString& s);
    void handleCycleCountChanged(int i);
    void handleOffsetChanged(const QString& s);
    void chooseStartColorClicked();
    void handleGotNewStartColor(const VelaColor& c);

private:
    QPointer<RandomColorEffect> m_effect; // not owned
    VelaColor m_startColor;
    ColorSwatch* m_startSwatch = nullptr;
};
