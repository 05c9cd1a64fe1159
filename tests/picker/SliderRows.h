#pragma once

#include "picker/ColorTrack.h"

#include <QSpinBox>
#include <QString>
#include <QWidget>

// The parts of a row of sliders, by the row's name.

inline VelaColorPickerLib::ColorTrack* track(const QWidget& widget, const char* name)
{
    return widget.findChild<VelaColorPickerLib::ColorTrack*>(QLatin1String(name) +
                                                             QStringLiteral("Track"));
}

inline QSpinBox* box(const QWidget& widget, const char* name)
{
    return widget.findChild<QSpinBox*>(QLatin1String(name) + QStringLiteral("SpinBox"));
}
