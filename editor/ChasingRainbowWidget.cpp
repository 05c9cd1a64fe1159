#include "editor/ChasingRainbowWidget.h"

#include "editor/ColorSwatch.h"
#include "effects/ChasingRainbowEffect.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>

ChasingRainbowWidget::ChasingRainbowWidget(ChasingRainbowEffect* effect, MapModel* model,
                                           QWidget* parent)
    : EffectForm(tr("Chasing Rainbow"), effect, model, parent)
    , m_effect(effect)
    , m_startColor(effect->startColor())
{
    beginGroup(tr("Timing"));
    QLineEdit* const cycleTime = addLine(tr("Cycle Time (sec):"), text(effect->cycleSeconds()));
    QLineEdit* const offset =
        addLine(tr("Light-to-Light Offset (deg):"), text(effect->groupOffset()));
    beginGroup(tr("Direction"));
    QCheckBox* const direction = addCheck(tr("Reverse Direction"), effect->reverseDir());
    QCheckBox* const cycle = addCheck(tr("Reverse Color Cycle"), effect->reverseColor());
    beginGroup(tr("Colors"));
    const ColorRow start = addColor(tr("Start Color"), m_startColor);
    m_startSwatch = start.swatch;
    offset->setToolTip(tr("Degrees of hue from one row of lights to the next"));
    finishLayout();

    connect(cycleTime, &QLineEdit::textChanged, this,
            &ChasingRainbowWidget::handleCycleTimeChanged);
    connect(offset, &QLineEdit::textChanged, this, &ChasingRainbowWidget::handleGroupOffsetChanged);
    connect(direction, &QCheckBox::toggled, this, &ChasingRainbowWidget::handleReverseDirToggled);
    connect(cycle, &QCheckBox::toggled, this, &ChasingRainbowWidget::handleReverseColorToggled);
    connect(start.button, &QPushButton::clicked, this,
            &ChasingRainbowWidget::chooseStartColorClicked);
}

void ChasingRainbowWidget::handleCycleTimeChanged(const QString& s)
{
    if (m_effect != nullptr) {
        m_effect->setCycleTime(s.toDouble());
    }
}

void ChasingRainbowWidget::handleGroupOffsetChanged(const QString& s)
{
    if (m_effect != nullptr) {
        m_effect->setGroupOffset(s.toDouble());
    }
}

void ChasingRainbowWidget::handleReverseDirToggled(bool b)
{
    if (m_effect != nullptr) {
        m_effect->setReverseDir(b);
    }
}

void ChasingRainbowWidget::handleReverseColorToggled(bool b)
{
    if (m_effect != nullptr) {
        m_effect->setReverseColor(b);
    }
}

void ChasingRainbowWidget::chooseStartColorClicked()
{
    choose(m_effect, m_startColor, [this](const VelaColor& c) { handleGotNewStartColor(c); });
}

void ChasingRainbowWidget::handleGotNewStartColor(const VelaColor& c)
{
    m_startColor = c;
    m_startSwatch->setColor(c);
    if (m_effect != nullptr) {
        m_effect->setStartColor(c);
    }
}
