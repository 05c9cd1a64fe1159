#include "editor/RandomColorWidget.h"

#include "editor/ColorSwatch.h"
#include "effects/RandomColorEffect.h"

#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

namespace {
constexpr int kMostColors = 1000;
constexpr int kStartColors = 10;
} // namespace

RandomColorWidget::RandomColorWidget(RandomColorEffect* effect, MapModel* model, QWidget* parent)
    : EffectForm(tr("Random Color"), effect, model, parent)
    , m_effect(effect)
    , m_startColor(effect->startColor())
{
    beginGroup(tr("Timing"));
    QLineEdit* const time = addLine(tr("Time per color (sec):"), text(effect->time()));
    QLineEdit* const fade = addLine(tr("Fade Time (sec):"), text(effect->fadeTime()));
    QSpinBox* const count = addSpin(tr("Cycle after this many colors:"), 1, kMostColors,
                                    kStartColors, spinValue(effect->cycleCount()));
    QLineEdit* const offset = addLine(tr("Light-to-Light Offset (sec):"), text(effect->offset()));
    beginGroup(tr("Colors"));
    const ColorRow start = addColor(tr("Start Color"), m_startColor);
    m_startSwatch = start.swatch;
    offset->setToolTip(rowOffsetTip());
    finishLayout();

    using Self = RandomColorWidget;
    connect(time, &QLineEdit::textChanged, this, &Self::handleTimeChanged);
    connect(fade, &QLineEdit::textChanged, this, &Self::handleFadeTimeChanged);
    connect(count, QOverload<int>::of(&QSpinBox::valueChanged), this,
            &Self::handleCycleCountChanged);
    connect(offset, &QLineEdit::textChanged, this, &Self::handleOffsetChanged);
    connect(start.button, &QPushButton::clicked, this, &Self::chooseStartColorClicked);
}

void RandomColorWidget::handleTimeChanged(const QString& s)
{
    if (m_effect != nullptr) {
        m_effect->setTime(s.toDouble());
    }
}

void RandomColorWidget::handleFadeTimeChanged(const QString& s)
{
    if (m_effect != nullptr) {
        m_effect->setFadeTime(s.toDouble());
    }
}

void RandomColorWidget::handleCycleCountChanged(int i)
{
    if (m_effect != nullptr) {
        m_effect->setCycleCount(static_cast<quint32>(i));
    }
}

void RandomColorWidget::handleOffsetChanged(const QString& s)
{
    if (m_effect != nullptr) {
        m_effect->setOffset(s.toDouble());
    }
}

void RandomColorWidget::chooseStartColorClicked()
{
    choose(m_effect, m_startColor, [this](const VelaColor& c) { handleGotNewStartColor(c); });
}

void RandomColorWidget::handleGotNewStartColor(const VelaColor& c)
{
    m_startColor = c;
    m_startSwatch->setColor(c);
    if (m_effect != nullptr) {
        m_effect->setStartColor(c);
    }
}
