#include "editor/CrossFadeWidget.h"

#include "editor/ColorSwatch.h"
#include "effects/CrossFadeEffect.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>

CrossFadeWidget::CrossFadeWidget(CrossFadeEffect* effect, MapModel* model, QWidget* parent)
    : EffectForm(tr("Cross Fade"), effect, model, parent)
    , m_effect(effect)
    , m_startColor(effect->startColor())
    , m_endColor(effect->endColor())
{
    beginGroup(tr("Timing"));
    QLineEdit* const time = addLine(tr("Cycle Time (sec):"), text(effect->time()));
    beginGroup(tr("Colors"));
    const ColorRow start =
        addColor(tr("Start Color"), m_startColor, tr("Trans"), effect->startTrans());
    const ColorRow end = addColor(tr("End Color"), m_endColor, tr("Trans"), effect->endTrans());
    m_startSwatch = start.swatch;
    m_endSwatch = end.swatch;
    start.check->setToolTip(transTip());
    end.check->setToolTip(transTip());
    finishLayout();

    connect(time, &QLineEdit::textChanged, this, &CrossFadeWidget::m_timeEdit_textChanged);
    connect(start.check, &QCheckBox::toggled, this, &CrossFadeWidget::startTransparencyChanged);
    connect(end.check, &QCheckBox::toggled, this, &CrossFadeWidget::endTransparencyChanged);
    connect(start.button, &QPushButton::clicked, this, &CrossFadeWidget::chooseStartColorClicked);
    connect(end.button, &QPushButton::clicked, this, &CrossFadeWidget::chooseEndColorClicked);
}

void CrossFadeWidget::m_timeEdit_textChanged(const QString& s)
{
    if (m_effect != nullptr) {
        m_effect->setTime(s.toDouble());
    }
}

void CrossFadeWidget::startTransparencyChanged(bool on)
{
    if (m_effect != nullptr) {
        m_effect->setStartTrans(on);
    }
}

void CrossFadeWidget::endTransparencyChanged(bool on)
{
    if (m_effect != nullptr) {
        m_effect->setEndTrans(on);
    }
}

void CrossFadeWidget::chooseStartColorClicked()
{
    choose(m_effect, m_startColor, [this](const VelaColor& c) { handleGotNewStartColor(c); });
}

void CrossFadeWidget::chooseEndColorClicked()
{
    choose(m_effect, m_endColor, [this](const VelaColor& c) { handleGotNewEndColor(c); });
}

void CrossFadeWidget::handleGotNewStartColor(const VelaColor& c)
{
    m_startColor = c;
    m_startSwatch->setColor(c);
    if (m_effect != nullptr) {
        m_effect->setStartColor(c);
    }
}

void CrossFadeWidget::handleGotNewEndColor(const VelaColor& c)
{
    m_endColor = c;
    m_endSwatch->setColor(c);
    if (m_effect != nullptr) {
        m_effect->setEndColor(c);
    }
}
