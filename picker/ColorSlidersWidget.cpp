#include "picker/ColorSlidersWidget.h"

#include <QFontMetrics>
#include <QGridLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSpinBox>

#include <algorithm>

namespace VelaColorPickerLib {

ColorSlidersWidget::ColorSlidersWidget(const std::array<Component, kComponents>& components,
                                       QWidget* parent)
    : QWidget(parent)
{
    const int unit = fontMetrics().height() / 2;
    auto* const grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(unit);
    grid->setVerticalSpacing(unit);
    for (std::size_t i = 0; i < kComponents; ++i) {
        const Component& component = components[i];
        auto* const label = new QLabel(component.label, this);
        auto* const track = new ColorTrack(this);
        auto* const box = new QSpinBox(this);
        track->setRange(0, component.maximum);
        track->setAccessibleName(tr("%1 track").arg(component.name));
        const QString tip = tr("%1, 0 to %2").arg(component.name).arg(component.maximum);
        track->setToolTip(tip);
        track->setColorAt([this, i](int value) {
            Values values = m_values;
            values[i] = value;
            return colorOf(values).toQColor(true);
        });
        box->setRange(0, component.maximum);
        box->setAlignment(Qt::AlignRight);
        box->setAccessibleName(component.name);
        box->setToolTip(tip);
        label->setBuddy(box);
        const int row = static_cast<int>(i);
        grid->addWidget(label, row, 0);
        grid->addWidget(track, row, 1);
        grid->addWidget(box, row, 2);
        m_tracks[i] = track;
        m_spinBoxes[i] = box;
    }
    grid->setColumnStretch(1, 1);
}

void ColorSlidersWidget::setValues(const Values& values)
{
    bool changed = false;
    for (std::size_t i = 0; i < kComponents; ++i) {
        const QSignalBlocker noTrackNews(m_tracks[i]);
        const QSignalBlocker noBoxNews(m_spinBoxes[i]);
        m_tracks[i]->setValue(values[i]);
        m_spinBoxes[i]->setValue(values[i]);
        const int value = m_tracks[i]->value(); // within its range
        changed = changed || value != m_values[i];
        m_values[i] = value;
    }
    if (changed) {
        for (ColorTrack* const track : m_tracks) {
            track->refresh();
        }
    }
}

void ColorSlidersWidget::takeValue(std::size_t component, int value)
{
    Values values = m_values;
    values[component] = value;
    setValues(values);
    VelaColor color = colorOf(m_values);
    color.setAlphaF(m_alpha);
    emit colorChanged(color);
}

} // namespace VelaColorPickerLib
