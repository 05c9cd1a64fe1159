#pragma once

#include "color/VelaColor.h"
#include "editor/EffectForm.h"

#include <QPointer>

class SweepEffect;

/// The form of a SweepEffect. Its cycle time is in whole seconds.
class SweepWidget : public EffectForm
{
    Q_OBJECT
public:
    SweepWidget(SweepEffect* effect, MapModel* model, QWidget* parent);

public slots:
    void handleCycleTimeChanged(const QString& s);
    void handleReverseChanged(bool b);
    void chooseFgColorClicked();
    void handleGotNewFgColor(const VelaColor& c);
    void handleFgTransToggled(bool b);
    void chooseBgColorClicked();
    void handleGotNewBgColor(const VelaColor& c);
    void handleBgTransToggled(bool b);

private:
    QPointer<SweepEffect> m_effect; // not owned
    VelaColor m_fgColor;
    VelaColor m_bgColor;
    ColorSwatch* m_fgSwatch = nullptr;
    ColorSwatch* m_bgSwatch = nullptr;
};
