#include "picker/PercentSlider.h"

#include "picker/ColorTrack.h"

#include <QFontMetrics>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSpinBox>

namespace VelaColorPickerLib {

namespace {

constexpr int kFull = 100;

} // namespace

PercentSlider::PercentSlider(const QString& label, const QString& name, const QString& toolTip,
                             QWidget* parent)
    : QWidget(parent)
    , m_label(new QLabel(label, this))
    , m_track(new ColorTrack(this))
    , m_spinBox(new QSpinBox(this))
{
    m_label->setBuddy(m_spinBox);
    m_track->setObjectName(QStringLiteral("track"));
    m_track->setRange(0, kFull);
    m_track->setStops(2);
    m_track->setPageStep(10);
    m_track->setAccessibleName(tr("%1 track").arg(name));
    m_track->setToolTip(toolTip);
    m_spinBox->setObjectName(QStringLiteral("spinBox"));
    m_spinBox->setRange(0, kFull);
    m_spinBox->setSuffix(tr(" %"));
    m_spinBox->setAlignment(Qt::AlignRight);
    m_spinBox->setKeyboardTracking(false);
    m_spinBox->setAccessibleName(name);
    m_spinBox->setToolTip(toolTip);
    setPercent(kFull);

    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(fontMetrics().height() / 2);
    row->addWidget(m_label);
    row->addWidget(m_track, 1);
    row->addWidget(m_spinBox);

    connect(m_track, &QSlider::valueChanged, this, &PercentSlider::take);
    connect(m_spinBox, qOverload<int>(&QSpinBox::valueChanged), this, &PercentSlider::take);
}

int PercentSlider::percent() const
{
    return m_track->value();
}

void PercentSlider::setPercent(int percent)
{
    const QSignalBlocker trackBlocker(m_track);
    const QSignalBlocker spinBlocker(m_spinBox);
    m_track->setValue(percent);
    m_spinBox->setValue(percent);
}

void PercentSlider::take(int percent)
{
    setPercent(percent);
    emit percentChanged(percent);
}

} // namespace VelaColorPickerLib
