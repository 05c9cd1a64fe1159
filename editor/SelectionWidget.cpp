#include "editor/SelectionWidget.h"

#include "editor/ColorSwatch.h"
#include "effects/SelectionEffect.h"

#include <QPushButton>

SelectionWidget::SelectionWidget(SelectionEffect* effect, MapModel* model, QWidget* parent)
    : EffectForm(tr("Selection"), effect, model, parent)
    , m_effect(effect)
    , m_fgColor(effect->fgColor())
    , m_bgColor(effect->bgColor())
{
    beginGroup(tr("Colors"));
    const ColorRow fg = addColor(tr("Selection Color"), m_fgColor);
    const ColorRow bg = addColor(tr("Background Color"), m_bgColor);
    m_fgSwatch = fg.swatch;
    m_bgSwatch = bg.swatch;
    finishLayout();
    connect(fg.button, &QPushButton::clicked, this, &SelectionWidget::chooseFgColorClicked);
    connect(bg.button, &QPushButton::clicked, this, &SelectionWidget::chooseBgColorClicked);
}

void SelectionWidget::chooseFgColorClicked()
{
    choose(m_effect, m_fgColor, [this](const VelaColor& c) { handleGotNewFgColor(c); });
}

void SelectionWidget::handleGotNewFgColor(const VelaColor& c)
{
    m_fgColor = c;
    m_fgSwatch->setColor(c);
    if (m_effect != nullptr) {
        m_effect->setFgColor(c);
    }
}

void SelectionWidget::chooseBgColorClicked()
{
    choose(m_effect, m_bgColor, [this](const VelaColor& c) { handleGotNewBgColor(c); });
}

void SelectionWidget::handleGotNewBgColor(const VelaColor& c)
{
    m_bgColor = c;
    m_bgSwatch->setColor(c);
    if (m_effect != nullptr) {
        m_effect->setBgColor(c);
    }
}
