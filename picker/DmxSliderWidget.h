#pragma once

#include "picker/ColorTrack.h"

#include <QWidget>

class QLabel;
class QSpinBox;

namespace VelaColorPickerLib {

/// One channel of a fixture: name, slider and spin box, 0..255.
class DmxSliderWidget final : public QWidget
{
    Q_OBJECT
public:
    explicit DmxSliderWidget(QWidget* parent = nullptr);

    QString name() const;
    void setName(const QString& name);
    int value() const;
    /// Limited to 0..255; emits nothing.
    void setValue(int value);
    /// What the slider's track shows at 0..255, and that it is to be asked again.
    void setColorAt(const ColorTrack::ColorAt& colorAt);
    void refreshTrack();

    /// For a column of rows to line up.
    QLabel* label() const { return m_label; }

signals:
    void valueChanged(int value);

public slots:
    void onSliderChanged(int value);
    void onSpinBoxChanged(int value);

private:
    QLabel* m_label;
    ColorTrack* m_slider;
    QSpinBox* m_spinBox;
};

} // namespace VelaColorPickerLib
