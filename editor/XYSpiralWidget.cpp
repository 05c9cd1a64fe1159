#include "editor/XYSpiralWidget.h"

#include "color/Numeric.h"
#include "effects/XYSpiralEffect.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSpinBox>

namespace {
constexpr int kMostTwist = 100;
constexpr int kStartTwist = 10;
constexpr int kMostArms = 20;
constexpr int kStartArms = 2;
constexpr int kMostPlace = 9999;
} // namespace

XYSpiralWidget::XYSpiralWidget(XYSpiralEffect* effect, MapModel* model, QWidget* parent)
    : EffectForm(tr("XY Spiral"), effect, model, parent)
    , m_effect(effect)
{
    beginGroup(tr("Timing"));
    QLineEdit* const cycleTime =
        addLine(tr("Cycle Time (sec):"), wholeSeconds(effect->cycleTime()));
    beginGroup(tr("Geometry"));
    QSpinBox* const twist =
        addSpin(tr("Twist:"), -kMostTwist, kMostTwist, kStartTwist, truncI32(effect->twist()));
    QSpinBox* const arms = addSpin(tr("Arms:"), 1, kMostArms, kStartArms, effect->arms());
    auto* rotation = new QWidget(this);
    auto* line = new QHBoxLayout(rotation);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(unit());
    auto* clockwise = new QRadioButton(tr("Clockwise"), rotation);
    auto* counter = new QRadioButton(tr("Counterclockwise"), rotation);
    clockwise->setChecked(effect->clockwise());
    counter->setChecked(!effect->clockwise());
    line->addWidget(clockwise);
    line->addWidget(counter);
    addLabelled(tr("Rotation"), rotation);
    m_outputSize =
        addValue(tr("Output Size:"), effect->outputSizeText(), QStringLiteral("00000 x 00000"));
    QSpinBox* const x =
        addSpin(tr("Center X:"), -kMostPlace, kMostPlace, 0, truncI32(effect->centerOffsetX()));
    QSpinBox* const y =
        addSpin(tr("Center Y:"), -kMostPlace, kMostPlace, 0, truncI32(effect->centerOffsetY()));
    twist->setToolTip(tr("The smaller, the tighter the arms wind; 0 makes them straight"));
    x->setToolTip(tr("In pixels from the left edge of the lights"));
    y->setToolTip(tr("In pixels from the top edge of the lights"));
    finishLayout();

    using Self = XYSpiralWidget;
    connect(cycleTime, &QLineEdit::textChanged, this, &Self::handleCycleTimeChanged);
    connect(twist, &QSpinBox::textChanged, this, &Self::handleTwistChanged);
    connect(arms, &QSpinBox::textChanged, this, &Self::handleArmsChanged);
    connect(clockwise, &QRadioButton::toggled, this, &Self::handleClockwiseToggled);
    connect(x, &QSpinBox::textChanged, this, &Self::handleCenterXChanged);
    connect(y, &QSpinBox::textChanged, this, &Self::handleCenterYChanged);
    connect(effect, &XYSpiralEffect::updateOutputSizeLabel, this,
            &Self::handleUpdateOutputSizeLabel);
}

void XYSpiralWidget::handleCycleTimeChanged(const QString& s)
{
    if (m_effect != nullptr) {
        m_effect->setCycleTime(s.toUInt());
    }
}

void XYSpiralWidget::handleTwistChanged(const QString& s)
{
    if (m_effect != nullptr) {
        m_effect->setTwist(s.toDouble());
    }
}

void XYSpiralWidget::handleArmsChanged(const QString& s)
{
    if (m_effect != nullptr) {
        m_effect->setArms(static_cast<qint32>(s.toUInt()));
    }
}

void XYSpiralWidget::handleClockwiseToggled(bool b)
{
    if (m_effect != nullptr) {
        m_effect->setClockwise(b);
    }
}

void XYSpiralWidget::handleCenterXChanged(const QString& s)
{
    if (m_effect != nullptr) {
        m_effect->setCenterOffsetX(s.toDouble());
    }
}

void XYSpiralWidget::handleCenterYChanged(const QString& s)
{
    if (m_effect != nullptr) {
        m_effect->setCenterOffsetY(s.toDouble());
    }
}

void XYSpiralWidget::handleUpdateOutputSizeLabel(const QString& s)
{
    m_outputSize->setText(s);
}
