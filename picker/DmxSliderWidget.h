#pragma once

#include "picker/ColorTrack.h"
#include "picker/TrackRow.h"

#include <QString>

namespace VelaColorPickerLib {

/// One channel of a fixture: name, slider and spin box, 0..255.
class DmxSliderWidget final : public TrackRow
{
    Q_OBJECT
public:
    explicit DmxSliderWidget(QWidget* parent = nullptr);

    QString name() const;
    void setName(const QString& name);
    int value() const { return shownValue(); }
    /// Limited to 0..255; emits nothing.
    void setValue(int value) { showValue(value); }
    /// What the slider's track shows at 0..255, and that it is to be asked again.
    void setColorAt(const ColorTrack::ColorAt& colorAt);
    void refreshTrack();

signals:
    void valueChanged(int value);

public slots:
    void onSliderChanged(int value);
    void onSpinBoxChanged(int value);
};

} // namespace VelaColorPickerLib
