#include "editor/SparkleGroupWidget.h"

#include "color/VelaColor.h"
#include "editor/ColorSwatch.h"
#include "effects/SparkleGroupEffect.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

namespace {
constexpr int kMost = 100;
constexpr int kStart = 10;
} // namespace

SparkleGroupWidget::SparkleGroupWidget(SparkleGroupEffect* effect, MapModel* model, QWidget* parent)
    : EffectForm(tr("Group Sparkle"), effect, model, parent)
    , m_effect(effect)
    , m_sparkleColor(effect->sparkleColor())
    , m_bgColor(effect->bgColor())
{
    beginGroup(tr("Timing"));
    QSpinBox* const decay = addSpin(tr("Decay Rate"), 1, kMost, kStart, effect->decayRate());
    beginGroup(tr("Appearance"));
    QSpinBox* const density = addSpin(tr("Density"), 1, kMost, kStart, effect->density());
    QLineEdit* const constant = addLine(tr("Time Constant"), text(effect->timeConstant()));
    addWidget(new QLabel(tr("White Value"), this));
    beginGroup(tr("Colors"));
    const ColorRow sparkle =
        addColor(tr("Sparkle Color"), m_sparkleColor, tr("Trans"), effect->sparkleTransparency());
    const ColorRow bg =
        addColor(tr("Background Color"), m_bgColor, tr("Trans"), effect->bgTransparency());
    m_sparkleSwatch = sparkle.swatch;
    m_bgSwatch = bg.swatch;
    decay->setToolTip(tr("At 10 a sparkle lasts a second, at 100 a tenth of one"));
    density->setToolTip(tr("The most rows of lights that begin to sparkle at once"));
    constant->setToolTip(tr("The higher, the sooner the next sparkles begin"));
    finishLayout();

    using Self = SparkleGroupWidget;
    const auto valueChanged = QOverload<int>::of(&QSpinBox::valueChanged);
    connect(decay, valueChanged, this, &Self::handleDecayRateChanged);
    connect(density, valueChanged, this, &Self::handleDensityChanged);
    connect(constant, &QLineEdit::textChanged, this, &Self::handleTimeConstantChanged);
    connect(sparkle.button, &QPushButton::clicked, this, &Self::chooseSparkleColorClicked);
    connect(sparkle.check, &QCheckBox::toggled, this, &Self::handleSparkleTransToggled);
    connect(bg.button, &QPushButton::clicked, this, &Self::chooseBgColorClicked);
    connect(bg.check, &QCheckBox::toggled, this, &Self::handleBgTransToggled);
}

void SparkleGroupWidget::handleDecayRateChanged(int i)
{
    if (m_effect != nullptr) {
        m_effect->setDecayRate(i);
    }
}

void SparkleGroupWidget::handleDensityChanged(int i)
{
    if (m_effect != nullptr) {
        m_effect->setDensity(i);
    }
}

void SparkleGroupWidget::handleTimeConstantChanged(const QString& s)
{
    if (m_effect != nullptr) {
        m_effect->setTimeConstant(s.toUInt());
    }
}

void SparkleGroupWidget::chooseSparkleColorClicked()
{
    choose(m_effect, m_sparkleColor,
           [this](const VelaColor& c) { handleGotNewSparkleColor(c.toQColor(true)); });
}

void SparkleGroupWidget::handleGotNewSparkleColor(const QColor& c)
{
    m_sparkleColor = c;
    m_sparkleSwatch->setColor(c);
    if (m_effect != nullptr) {
        m_effect->setSparkleColor(c);
    }
}

void SparkleGroupWidget::handleSparkleTransToggled(bool b)
{
    if (m_effect != nullptr) {
        m_effect->setSparkleTransparency(b);
    }
}

void SparkleGroupWidget::chooseBgColorClicked()
{
    choose(m_effect, m_bgColor,
           [this](const VelaColor& c) { handleGotNewBgColor(c.toQColor(true)); });
}

void SparkleGroupWidget::handleGotNewBgColor(const QColor& c)
{
    m_bgColor = c;
    m_bgSwatch->setColor(c);
    if (m_effect != nullptr) {
        m_effect->setBgColor(c);
    }
}

void SparkleGroupWidget::handleBgTransToggled(bool b)
{
    if (m_effect != nullptr) {
        m_effect->setBgTransparency(b);
    }
}
