#include "editor/WhiteCrossFadeWidget.h"

#include "editor/WhiteLevelsPanel.h"
#include "effects/WhiteCrossFadeEffect.h"
#include "effects/WhiteLevels.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QSlider>

WhiteCrossFadeWidget::WhiteCrossFadeWidget(WhiteCrossFadeEffect* effect, MapModel* model,
                                           QWidget* parent)
    : EffectForm(tr("White Cross Fade"), effect, model, parent)
    , m_effect(effect)
{
    beginGroup(tr("Timing"));
    QLineEdit* const time = addLine(tr("Cycle Time (sec):"), text(effect->time()));
    beginGroup(tr("Starting White Levels"));
    auto* start =
        new WhiteLevelsPanel({effect->temperatureStart(), effect->intensityStart(),
                              effect->warmStart(), effect->coolStart(), effect->inputTypeStart()},
                             this);
    addWidget(start);
    QCheckBox* const startTrans = addCheck(tr("Trans"), effect->startTrans());
    beginGroup(tr("Ending White Levels"));
    auto* end = new WhiteLevelsPanel({effect->temperatureEnd(), effect->intensityEnd(),
                                      effect->warmEnd(), effect->coolEnd(), effect->inputTypeEnd()},
                                     this);
    addWidget(end);
    QCheckBox* const endTrans = addCheck(tr("Trans"), effect->endTrans());
    startTrans->setToolTip(transTip());
    endTrans->setToolTip(transTip());
    finishLayout();

    using Self = WhiteCrossFadeWidget;
    const auto indexChanged = QOverload<int>::of(&QComboBox::currentIndexChanged);
    connect(time, &QLineEdit::textChanged, this, &Self::handleTimeChanged);
    connect(startTrans, &QCheckBox::toggled, this, &Self::handleStartTransToggled);
    connect(endTrans, &QCheckBox::toggled, this, &Self::handleEndTransToggled);
    connect(start->temperature(), &QSlider::valueChanged, this,
            &Self::handleSetTemperatureValueStart);
    connect(start->intensity(), &QSlider::valueChanged, this, &Self::handleSetIntensityValueStart);
    connect(start->warm(), &QSlider::valueChanged, this, &Self::handleSetWarmStart);
    connect(start->cool(), &QSlider::valueChanged, this, &Self::handleSetCoolStart);
    connect(start->inputType(), indexChanged, this, &Self::handleSetInputTypeStart);
    connect(end->temperature(), &QSlider::valueChanged, this, &Self::handleSetTemperatureValueEnd);
    connect(end->intensity(), &QSlider::valueChanged, this, &Self::handleSetIntensityValueEnd);
    connect(end->warm(), &QSlider::valueChanged, this, &Self::handleSetWarmEnd);
    connect(end->cool(), &QSlider::valueChanged, this, &Self::handleSetCoolEnd);
    connect(end->inputType(), indexChanged, this, &Self::handleSetInputTypeEnd);
}

void WhiteCrossFadeWidget::handleTimeChanged(const QString& s)
{
    if (m_effect != nullptr) {
        m_effect->setTime(s.toDouble());
    }
}

void WhiteCrossFadeWidget::handleStartTransToggled(bool b)
{
    if (m_effect != nullptr) {
        m_effect->setStartTrans(b);
    }
}

void WhiteCrossFadeWidget::handleEndTransToggled(bool b)
{
    if (m_effect != nullptr) {
        m_effect->setEndTrans(b);
    }
}

void WhiteCrossFadeWidget::handleSetTemperatureValueStart(int i)
{
    if (m_effect != nullptr) {
        m_effect->setTemperatureStart(i);
    }
}

void WhiteCrossFadeWidget::handleSetIntensityValueStart(int i)
{
    if (m_effect != nullptr) {
        m_effect->setIntensityStart(static_cast<quint32>(i));
    }
}

void WhiteCrossFadeWidget::handleSetWarmStart(int i)
{
    if (m_effect != nullptr) {
        m_effect->setWarmStart(static_cast<quint32>(i));
    }
}

void WhiteCrossFadeWidget::handleSetCoolStart(int i)
{
    if (m_effect != nullptr) {
        m_effect->setCoolStart(static_cast<quint32>(i));
    }
}

void WhiteCrossFadeWidget::handleSetInputTypeStart(int i)
{
    if (m_effect != nullptr) {
        m_effect->setInputTypeStart(static_cast<quint32>(i));
    }
}

void WhiteCrossFadeWidget::handleSetTemperatureValueEnd(int i)
{
    if (m_effect != nullptr) {
        m_effect->setTemperatureEnd(i);
    }
}

void WhiteCrossFadeWidget::handleSetIntensityValueEnd(int i)
{
    if (m_effect != nullptr) {
        m_effect->setIntensityEnd(static_cast<quint32>(i));
    }
}

void WhiteCrossFadeWidget::handleSetWarmEnd(int i)
{
    if (m_effect != nullptr) {
        m_effect->setWarmEnd(static_cast<quint32>(i));
    }
}

void WhiteCrossFadeWidget::handleSetCoolEnd(int i)
{
    if (m_effect != nullptr) {
        m_effect->setCoolEnd(static_cast<quint32>(i));
    }
}

void WhiteCrossFadeWidget::handleSetInputTypeEnd(int i)
{
    if (m_effect != nullptr) {
        m_effect->setInputTypeEnd(static_cast<quint32>(i));
    }
}
