#pragma once

#include "picker/TrackRow.h"

#include <QString>

namespace VelaColorPickerLib {

/// A row of percents, 0..100.
class PercentSlider : public TrackRow
{
    Q_OBJECT
public:
    PercentSlider(const QString& label, const QString& name, const QString& toolTip,
                  QWidget* parent);

    /// 0..100
    int percent() const { return shownValue(); }
    /// Limited to 0..100. Emits nothing.
    void setPercent(int percent) { showValue(percent); }

signals:
    /// The user moved it.
    void percentChanged(int percent);

private:
    void take(int percent);
};

} // namespace VelaColorPickerLib
