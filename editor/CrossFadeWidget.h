#pragma once

#include "color/VelaColor.h"
#include "editor/EffectForm.h"

#include <QPointer>

class CrossFadeEffect;

/// The form of a CrossFadeEffect.
class CrossFadeWidget : public EffectForm
{
    Q_OBJECT
public:
    CrossFadeWidget(CrossFadeEffect* effect, MapModel* model, QWidget* parent);

public slots:
    void m_timeEdit_textChanged(const QString& s);
    void startTransparencyChanged(bool on);
    void endTransparencyChanged(bool on);
    void chooseStartColorClicked();
    void chooseEndColorClicked();
    void handleGotNewStartColor(const VelaColor& c);
    void handleGotNewEndColor(const VelaColor& c);

private:
    QPointer<CrossFadeEffect> m_effect; // not owned
    VelaColor m_startColor;
    VelaColor m_endColor;
    ColorSwatch* m_startSwatch = nullptr;
    ColorSwatch* m_endSwatch = nullptr;
};
