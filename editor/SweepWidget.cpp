#include "editor/SweepWidget.h"

#include "editor/ColorSwatch.h"
#include "effects/SweepEffect.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>

SweepWidget::SweepWidget(SweepEffect* effect, MapModel* model, QWidget* parent)
    : EffectForm(tr("Sweep"), effect, model, parent)
    , m_effect(effect)
    , m_fgColor(effect->fgColor())
    , m_bgColor(effect->bgColor())
{
    beginGroup(tr("Timing"));
    QLineEdit* const cycleTime =
        addLine(tr("Cycle Time (sec):"), wholeSeconds(effect->cycleTime()));
    QCheckBox* const reverse = addCheck(tr("Reverse"), effect->reverse());
    beginGroup(tr("Colors"));
    const ColorRow fg =
        addColor(tr("Sweep Color"), m_fgColor, tr("Trans"), effect->fgTransparent());
    const ColorRow bg =
        addColor(tr("Background Color"), m_bgColor, tr("Trans"), effect->bgTransparent());
    m_fgSwatch = fg.swatch;
    m_bgSwatch = bg.swatch;
    fg.check->setToolTip(transTip());
    bg.check->setToolTip(transTip());
    finishLayout();

    using Self = SweepWidget;
    connect(cycleTime, &QLineEdit::textChanged, this, &Self::handleCycleTimeChanged);
    connect(reverse, &QCheckBox::toggled, this, &Self::handleReverseChanged);
    connect(fg.button, &QPushButton::clicked, this, &Self::chooseFgColorClicked);
    connect(fg.check, &QCheckBox::toggled, this, &Self::handleFgTransToggled);
    connect(bg.button, &QPushButton::clicked, this, &Self::chooseBgColorClicked);
    connect(bg.check, &QCheckBox::toggled, this, &Self::handleBgTransToggled);
}

void SweepWidget::handleCycleTimeChanged(const QString& s)
{
    if (m_effect != nullptr) {
        m_effect->setCycleTime(s.toUInt());
    }
}

void SweepWidget::handleReverseChanged(bool b)
{
    if (m_effect != nullptr) {
        m_effect->setReverse(b);
    }
}

void SweepWidget::chooseFgColorClicked()
{
    choose(m_effect, m_fgColor, [this](const VelaColor& c) { handleGotNewFgColor(c); });
}

void SweepWidget::handleGotNewFgColor(const VelaColor& c)
{
    m_fgColor = c;
    m_fgSwatch->setColor(c);
    if (m_effect != nullptr) {
        m_effect->setFgColor(c);
    }
}

void SweepWidget::handleFgTransToggled(bool b)
{
    if (m_effect != nullptr) {
        m_effect->setFgTransparent(b);
    }
}

void SweepWidget::chooseBgColorClicked()
{
    choose(m_effect, m_bgColor, [this](const VelaColor& c) { handleGotNewBgColor(c); });
}

void SweepWidget::handleGotNewBgColor(const VelaColor& c)
{
    m_bgColor = c;
    m_bgSwatch->setColor(c);
    if (m_effect != nullptr) {
        m_effect->setBgColor(c);
    }
}

void SweepWidget::handleBgTransToggled(bool b)
{
    if (m_effect != nullptr) {
        m_effect->setBgTransparent(b);
    }
}
