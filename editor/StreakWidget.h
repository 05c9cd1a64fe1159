#pragma once

#include "color/VelaColor.h"
#include "editor/EffectForm.h"

#include <QPointer>

class StreakEffect;

/// The form of a StreakEffect. Its cycle time is in whole seconds.
class StreakWidget : public EffectForm
{
    Q_OBJECT
public:
    StreakWidget(StreakEffect* effect, MapModel* model, QWidget* parent);

public slots:
    void handleCycleTimeChanged(const QString& s);
    void handleWidthChanged(int i);
    void handleFwdTailChanged(int i);
    void handleRevTailChanged(int i);
    void handleReverseChanged(bool b);
    void handleWrapChanged(bool b);
    void chooseFgColorClicked();
    void handleGotNewFgColor(const VelaColor& c);
    void handleFgTransToggled(bool b);
    void chooseBgColorClicked();
    void handleGotNewBgColor(const VelaColor& c);
    void handleBgTransToggled(bool b);

private:
    QPointer<StreakEffect> m_effect; // not owned
    VelaColor m_fgColor;
    VelaColor m_bgColor;
    ColorSwatch* m_fgSwatch = nullptr;
    ColorSwatch* m_bgSwatch = nullptr;
};
