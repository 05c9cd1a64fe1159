#include "editor/FixedWhiteWidget.h"

#include "editor/WhiteLevelsPanel.h"
#include "effects/FixedWhiteEffect.h"
#include "effects/WhiteLevels.h"

#include <QComboBox>
#include <QSlider>

FixedWhiteWidget::FixedWhiteWidget(FixedWhiteEffect* effect, MapModel* model, QWidget* parent)
    : EffectForm(tr("Fixed White"), effect, model, parent)
    , m_effect(effect)
{
    beginGroup(tr("White Levels"));
    const WhiteLevels levels{effect->temperature(), effect->intensity(), effect->warm(),
                             effect->cool(), effect->inputType()};
    auto* panel = new WhiteLevelsPanel(levels, this);
    addWidget(panel);
    finishLayout();

    connect(panel->temperature(), &QSlider::valueChanged, this,
            &FixedWhiteWidget::handleTemperatureChanged);
    connect(panel->intensity(), &QSlider::valueChanged, this,
            &FixedWhiteWidget::handleIntensityChanged);
    connect(panel->warm(), &QSlider::valueChanged, this, &FixedWhiteWidget::handleWarmChanged);
    connect(panel->cool(), &QSlider::valueChanged, this, &FixedWhiteWidget::handleCoolChanged);
    connect(panel->inputType(), QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &FixedWhiteWidget::handleInputTypeChanged);
}

void FixedWhiteWidget::handleTemperatureChanged(int value)
{
    if (m_effect != nullptr) {
        m_effect->setTemperature(value);
    }
}

void FixedWhiteWidget::handleIntensityChanged(int value)
{
    if (m_effect != nullptr) {
        m_effect->setIntensity(static_cast<quint32>(value));
    }
}

void FixedWhiteWidget::handleCoolChanged(int value)
{
    if (m_effect != nullptr) {
        m_effect->setCool(static_cast<quint32>(value));
    }
}

void FixedWhiteWidget::handleWarmChanged(int value)
{
    if (m_effect != nullptr) {
        m_effect->setWarm(static_cast<quint32>(value));
    }
}

void FixedWhiteWidget::handleInputTypeChanged(int value)
{
    if (m_effect != nullptr) {
        m_effect->setInputType(static_cast<quint32>(value));
    }
}
