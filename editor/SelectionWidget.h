#pragma once

#include "color/VelaColor.h"
#include "editor/EffectForm.h"

#include <QPointer>

class SelectionEffect;

/// The form of a SelectionEffect.
class SelectionWidget : public EffectForm
{
    Q_OBJECT
public:
    SelectionWidget(SelectionEffect* effect, MapModel* model, QWidget* parent);

public slots:
    void chooseFgColorClicked();
    void handleGotNewFgColor(const VelaColor& c);
    void chooseBgColorClicked();
    void handleGotNewBgColor(const VelaColor& c);

private:
    QPointer<SelectionEffect> m_effect; // not owned
    VelaColor m_fgColor;
    VelaColor m_bgColor;
    ColorSwatch* m_fgSwatch = nullptr;
    ColorSwatch* m_bgSwatch = nullptr;
};
