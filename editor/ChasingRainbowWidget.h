#pragma once

#include "color/VelaColor.h"
#include "editor/EffectForm.h"

#include <QPointer>

class ChasingRainbowEffect;

/// The form of a ChasingRainbowEffect.
class ChasingRainbowWidget : public EffectForm
{
    Q_OBJECT
public:
    ChasingRainbowWidget(ChasingRainbowEffect* effect, MapModel* model, QWidget* parent);

public slots:
    void handleCycleTimeChanged(const QString& s);
    void handleGroupOffsetChanged(const QString& s);
    void handleReverseDirToggled(bool b);
    void handleReverseColorToggled(bool b);
    void chooseStartColorClicked();
    void handleGotNewStartColor(const VelaColor& c);

private:
    QPointer<ChasingRainbowEffect> m_effect; // not owned
    VelaColor m_startColor;
    ColorSwatch* m_startSwatch = nullptr;
};
