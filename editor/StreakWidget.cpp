#include "editor/StreakWidget.h"

#include "editor/ColorSwatch.h"
#include "effects/StreakEffect.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

namespace {
constexpr int kMostRows = 1000;
} // namespace

StreakWidget::StreakWidget(StreakEffect* effect, MapModel* model, QWidget* parent)
    : EffectForm(tr("Streak"), effect, model, parent)
    , m_effect(effect)
    , m_fgColor(effect->fgColor())
    , m_bgColor(effect->bgColor())
{
    beginGroup(tr("Timing"));
    QLineEdit* const cycleTime =
        addLine(tr("Cycle Time (sec):"), wholeSeconds(effect->cycleTime()));
    beginGroup(tr("Pulse"));
    QSpinBox* const width = addSpin(tr("Pulse Width"), 1, kMostRows, 1, spinValue(effect->width()));
    QSpinBox* const fwdTail =
        addSpin(tr("Forward Tail Width"), 0, kMostRows, 0, spinValue(effect->fTail()));
    QSpinBox* const revTail =
        addSpin(tr("Reverse Tail Width"), 0, kMostRows, 0, spinValue(effect->rTail()));
    QCheckBox* const reverse = addCheck(tr("Reverse"), effect->reverse());
    QCheckBox* const wrap = addCheck(tr("Wrap"), effect->wrap());
    beginGroup(tr("Colors"));
    const ColorRow fg =
        addColor(tr("Pulse Color"), m_fgColor, tr("Trans"), effect->fgTransparency());
    const ColorRow bg =
        addColor(tr("Background Color"), m_bgColor, tr("Trans"), effect->bgTransparency());
    m_fgSwatch = fg.swatch;
    m_bgSwatch = bg.swatch;
    wrap->setToolTip(tr("What leaves at one end comes in at the other"));
    fg.check->setToolTip(transTip());
    bg.check->setToolTip(transTip());
    finishLayout();

    using Self = StreakWidget;
    const auto valueChanged = QOverload<int>::of(&QSpinBox::valueChanged);
    connect(cycleTime, &QLineEdit::textChanged, this, &Self::handleCycleTimeChanged);
    connect(width, valueChanged, this, &Self::handleWidthChanged);
    connect(fwdTail, valueChanged, this, &Self::handleFwdTailChanged);
    connect(revTail, valueChanged, this, &Self::handleRevTailChanged);
    connect(reverse, &QCheckBox::toggled, this, &Self::handleReverseChanged);
    connect(wrap, &QCheckBox::toggled, this, &Self::handleWrapChanged);
    connect(fg.button, &QPushButton::clicked, this, &Self::chooseFgColorClicked);
    connect(fg.check, &QCheckBox::toggled, this, &Self::handleFgTransToggled);
    connect(bg.button, &QPushButton::clicked, this, &Self::chooseBgColorClicked);
    connect(bg.check, &QCheckBox::toggled, this, &Self::handleBgTransToggled);
}

void StreakWidget::handleCycleTimeChanged(const QString& s)
{
    if (m_effect != nullptr) {
        m_effect->setCycleTime(s.toUInt());
    }
}

void StreakWidget::handleWidthChanged(int i)
{
    if (m_effect != nullptr) {
        m_effect->setWidth(static_cast<quint32>(i));
    }
}

void StreakWidget::handleFwdTailChanged(int i)
{
    if (m_effect != nullptr) {
        m_effect->setFTail(static_cast<quint32>(i));
    }
}

void StreakWidget::handleRevTailChanged(int i)
{
    if (m_effect != nullptr) {
        m_effect->setRTail(static_cast<quint32>(i));
    }
}

void StreakWidget::handleReverseChanged(bool b)
{
    if (m_effect != nullptr) {
        m_effect->setReverse(b);
    }
}

void StreakWidget::handleWrapChanged(bool b)
{
    if (m_effect != nullptr) {
        m_effect->setWrap(b);
    }
}

void StreakWidget::chooseFgColorClicked()
{
    choose(m_effect, m_fgColor, [this](const VelaColor& c) { handleGotNewFgColor(c); });
}

void StreakWidget::handleGotNewFgColor(const VelaColor& c)
{
    m_fgColor = c;
    m_fgSwatch->setColor(c);
    if (m_effect != nullptr) {
        m_effect->setFgColor(c);
    }
}

void StreakWidget::handleFgTransToggled(bool b)
{
    if (m_effect != nullptr) {
        m_effect->setFgTransparency(b);
    }
}

void StreakWidget::chooseBgColorClicked()
{
    choose(m_effect, m_bgColor, [this](const VelaColor& c) { handleGotNewBgColor(c); });
}

void StreakWidget::handleGotNewBgColor(const VelaColor& c)
{
    m_bgColor = c;
    m_bgSwatch->setColor(c);
    if (m_effect != nullptr) {
        m_effect->setBgColor(c);
    }
}

void StreakWidget::handleBgTransToggled(bool b)
{
    if (m_effect != nullptr) {
        m_effect->setBgTransparency(b);
    }
}
