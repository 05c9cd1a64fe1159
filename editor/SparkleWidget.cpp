#include "editor/SparkleWidget.h"

#include "color/Numeric.h"
#include "editor/ColorSwatch.h"
#include "effects/SparkleEffect.h"

#include <QCheckBox>
#include <QPushButton>
#include <QSpinBox>

namespace {
constexpr int kMost = 100;
constexpr int kStart = 10;
} // namespace

SparkleWidget::SparkleWidget(SparkleEffect* effect, MapModel* model, QWidget* parent)
    : EffectForm(tr("Sparkle"), effect, model, parent)
    , m_effect(effect)
    , m_sparkleColor(effect->sparkleColor())
    , m_bgColor(effect->bgColor())
{
    beginGroup(tr("Timing"));
    QSpinBox* const decay = addSpin(tr("Decay Rate"), 1, kMost, kStart, effect->decayRate());
    beginGroup(tr("Appearance"));
    QSpinBox* const density = addSpin(tr("Density"), 1, kMost, kStart, effect->density());
    QSpinBox* const constant =
        addSpin(tr("Time Constant"), 1, kMost, 1, truncI32(effect->timeConstant()));
    beginGroup(tr("Colors"));
    const ColorRow sparkle = addColor(tr("Sparkle Color"), m_sparkleColor, tr("Transparent"),
                                      effect->sparkleTransparency());
    const ColorRow bg =
        addColor(tr("Background Color"), m_bgColor, tr("Transparent"), effect->bgTransparency());
    m_sparkleSwatch = sparkle.swatch;
    m_bgSwatch = bg.swatch;
    decay->setToolTip(tr("At 10 a sparkle lasts a second, at 100 a tenth of one"));
    density->setToolTip(tr("The most sparkles that begin at once"));
    constant->setToolTip(tr("The higher, the sooner the next sparkles begin"));
    sparkle.check->setToolTip(transTip());
    bg.check->setToolTip(transTip());
    finishLayout();

    using Self = SparkleWidget;
    const auto valueChanged = QOverload<int>::of(&QSpinBox::valueChanged);
    connect(decay, valueChanged, this, &Self::handleDecayRateChanged);
    connect(density, valueChanged, this, &Self::handleDensityChanged);
    connect(constant, valueChanged, this, &Self::handleTimeConstantChanged);
    connect(sparkle.button, &QPushButton::clicked, this, &Self::chooseSparkleColorClicked);
    connect(sparkle.check, &QCheckBox::toggled, this, &Self::handleSparkleTransToggled);
    connect(bg.button, &QPushButton::clicked, this, &Self::chooseBgColorClicked);
    connect(bg.check, &QCheckBox::toggled, this, &Self::handleBgTransToggled);
}

void SparkleWidget::handleDecayRateChanged(int i)
{
    if (m_effect != nullptr) {
        m_effect->setDecayRate(i);
    }
}

void SparkleWidget::handleDensityChanged(int i)
{
    if (m_effect != nullptr) {
        m_effect->setDensity(i);
    }
}

void SparkleWidget::handleTimeConstantChanged(int i)
{
    if (m_effect != nullptr) {
        m_effect->setTimeConstant(i);
    }
}

void SparkleWidget::chooseSparkleColorClicked()
{
    choose(m_effect, m_sparkleColor, [this](const VelaColor& c) { handleGotNewSparkleColor(c); });
}

void SparkleWidget::handleGotNewSparkleColor(const VelaColor& c)
{
    m_sparkleColor = c;
    m_sparkleSwatch->setColor(c);
    if (m_effect != nullptr) {
        m_effect->setSparkleColor(c);
    }
}

void SparkleWidget::handleSparkleTransToggled(bool b)
{
    if (m_effect != nullptr) {
        m_effect->setSparkleTransparency(b);
    }
}

void SparkleWidget::chooseBgColorClicked()
{
    choose(m_effect, m_bgColor, [this](const VelaColor& c) { handleGotNewBgColor(c); });
}

void SparkleWidget::handleGotNewBgColor(const VelaColor& c)
{
    m_bgColor = c;
    m_bgSwatch->setColor(c);
    if (m_effect != nullptr) {
        m_effect->setBgColor(c);
    }
}

void SparkleWidget::handleBgTransToggled(bool b)
{
    if (m_effect != nullptr) {
        m_effect->setBgTransparency(b);
    }
}
