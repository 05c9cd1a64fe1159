#pragma once

#include "color/VelaColor.h"
#include "editor/EffectForm.h"

#include <QPointer>

class SparkleEffect;

/// The form of a SparkleEffect.
class SparkleWidget : public EffectForm
{
    Q_OBJECT
public:
    SparkleWidget(SparkleEffect* effect, MapModel* model, QWidget* parent);

public slots:
    void handleDecayRateChanged(int i);
    void handleDensityChanged(int i);
    void handleTimeConstantChanged(int i);
    void chooseSparkleColorClicked();
    void handleGotNewSparkleColor(const VelaColor& c);
    void handleSparkleTransToggled(bool b);
    void chooseBgColorClicked();
    void handleGotNewBgColor(const VelaColor& c);
    void handleBgTransToggled(bool b);

private:
    QPointer<SparkleEffect> m_effect; // not owned
    VelaColor m_sparkleColor;
    VelaColor m_bgColor;
    ColorSwatch* m_sparkleSwatch = nullptr;
    ColorSwatch* m_bgSwatch = nullptr;
};
