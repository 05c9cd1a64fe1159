#pragma once

#include "editor/EffectForm.h"

#include <QColor>
#include <QPointer>

class SparkleGroupEffect;

/// The form of a SparkleGroupEffect.
class SparkleGroupWidget : public EffectForm
{
    Q_OBJECT
public:
    SparkleGroupWidget(SparkleGroupEffect* effect, MapModel* model, QWidget* parent);

public slots:
    void handleDecayRateChanged(int i);
    void handleDensityChanged(int i);
    void handleTimeConstantChanged(const QString& s);
    void chooseSparkleColorClicked();
    void handleGotNewSparkleColor(const QColor& c);
    void handleSparkleTransToggled(bool b);
    void chooseBgColorClicked();
    void handleGotNewBgColor(const QColor& c);
    void handleBgTransToggled(bool b);

private:
    QPointer<SparkleGroupEffect> m_effect; // not owned
    QColor m_sparkleColor;
    QColor m_bgColor;
    ColorSwatch* m_sparkleSwatch = nullptr;
    ColorSwatch* m_bgSwatch = nullptr;
};
