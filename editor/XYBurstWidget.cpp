#include "editor/XYBurstWidget.h"

#include "color/Numeric.h"
#include "effects/XYBurstEffect.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>

namespace {
constexpr int kMostRing = 10000;
constexpr int kMostPlace = 9999;
} // namespace

XYBurstWidget::XYBurstWidget(XYBurstEffect* effect, MapModel* model, QWidget* parent)
    : EffectForm(tr("XY Burst"), effect, model, parent)
    , m_effect(effect)
{
    beginGroup(tr("Timing"));
    QLineEdit* const cycleTime =
        addLine(tr("Cycle Time (sec):"), wholeSeconds(effect->cycleTime()));
    beginGroup(tr("Geometry"));
    QSpinBox* const ring =
        addSpin(tr("Ring Width:"), 1, kMostRing, 1, spinValue(effect->ringWidth()));
    m_outputSize =
        addValue(tr("Output Size:"), effect->outputSizeText(), QStringLiteral("00000 x 00000"));
    QSpinBox* const x =
        addSpin(tr("Center X:"), -kMostPlace, kMostPlace, 0, truncI32(effect->centerOffsetX()));
    QSpinBox* const y =
        addSpin(tr("Center Y:"), -kMostPlace, kMostPlace, 0, truncI32(effect->centerOffsetY()));
    QCheckBox* const direction = addCheck(tr("Reverse Direction"), effect->cycleDir());
    QCheckBox* const rainbow = addCheck(tr("Reverse Rainbow"), effect->rainbowDir());
    ring->setToolTip(
        tr("100: one rainbow from the center to the farthest corners; 200: half of one"));
    x->setToolTip(tr("In pixels from the left edge of the lights"));
    y->setToolTip(tr("In pixels from the top edge of the lights"));
    finishLayout();

    using Self = XYBurstWidget;
    connect(cycleTime, &QLineEdit::textChanged, this, &Self::handleCycleTimeChanged);
    connect(ring, &QSpinBox::textChanged, this, &Self::handleRingWidthChanged);
    connect(x, &QSpinBox::textChanged, this, &Self::handleCenterXChanged);
    connect(y, &QSpinBox::textChanged, this, &Self::handleCenterYChanged);
    connect(direction, &QCheckBox::toggled, this, &Self::handleCycleDirToggled);
    connect(rainbow, &QCheckBox::toggled, this, &Self::handleRainbowDirToggled);
    connect(effect, &XYBurstEffect::updateOutputSizeLabel, this,
            &Self::handleUpdateOutputSizeLabel);
}

void XYBurstWidget::handleCycleTimeChanged(const QString& s)
{
    if (m_effect != nullptr) {
        m_effect->setCycleTime(s.toUInt());
    }
}

void XYBurstWidget::handleRingWidthChanged(const QString& s)
{
    if (m_effect != nullptr) {
        m_effect->setRingWidth(s.toUInt());
    }
}

void XYBurstWidget::handleCenterXChanged(const QString& s)
{
    if (m_effect != nullptr) {
        m_effect->setCenterOffsetX(s.toUInt()); // a negative place reads as 0
    }
}

void XYBurstWidget::handleCenterYChanged(const QString& s)
{
    if (m_effect != nullptr) {
        m_effect->setCenterOffsetY(s.toUInt());
    }
}

void XYBurstWidget::handleCycleDirToggled(bool b)
{
    if (m_effect != nullptr) {
        m_effect->setCycleDir(b);
    }
}

void XYBurstWidget::handleRainbowDirToggled(bool b)
{
    if (m_effect != nullptr) {
        m_effect->setRainbowDir(b);
    }
}

void XYBurstWidget::handleUpdateOutputSizeLabel(const QString& s)
{
    m_outputSize->setText(s);
}
