#pragma once

#include "editor/EffectForm.h"

#include <QPointer>

class WhiteCrossFadeEffect;

/// The form of a WhiteCrossFadeEffect.
class WhiteCrossFadeWidget : public EffectForm
{
    Q_OBJECT
public:
    WhiteCrossFadeWidget(WhiteCrossFadeEffect* effect, MapModel* model, QWidget* parent);

public slots:
    void handleTimeChanged(const QString& s);
    void handleStartTransToggled(bool b);
    void handleEndTransToggled(bool b);
    void handleSetTemperatureValueStart(int i);
    void handleSetIntensityValueStart(int i);
    void handleSetWarmStart(int i);
    void handleSetCoolStart(int i);
    void handleSetInputTypeStart(int i);
    void handleSetTemperatureValueEnd(int i);
    void handleSetIntensityValueEnd(int i);
    void handleSetWarmEnd(int i);
    void handleSetCoolEnd(int i);
    void handleSetInputTypeEnd(int i);

private:
    QPointer<WhiteCrossFadeEffect> m_effect; // not owned
};
