#include "editor/FixedColorWidget.h"

#include "editor/ColorSwatch.h"
#include "effects/FixedColorEffect.h"

#include <QPushButton>

FixedColorWidget::FixedColorWidget(FixedColorEffect* effect, MapModel* model, QWidget* parent)
    : EffectForm(tr("Fixed Color"), effect, model, parent)
    , m_effect(effect)
    , m_color(effect->color())
{
    beginGroup(tr("Colors"));
    const ColorRow color = addColor(tr("RGB Color"), m_color);
    m_swatch = color.swatch;
    finishLayout();
    connect(color.button, &QPushButton::clicked, this, &FixedColorWidget::chooseColorClicked);
}

void FixedColorWidget::chooseColorClicked()
{
    choose(m_effect, m_color, [this](const VelaColor& c) { handleGotNewColor(c); });
}

void FixedColorWidget::handleGotNewColor(const VelaColor& c)
{
    m_color = c;
    m_swatch->setColor(c);
    if (m_effect != nullptr) {
        m_effect->setColor(c);
    }
}
