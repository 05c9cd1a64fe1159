#pragma once

#include <QWidget>

class QLabel;
class QSpinBox;

namespace VelaColorPickerLib {

class CCTPickerWidget;

/// The row of the colour temperature: label, track and spin box, 1900..11000 K.
class ColorTempSliderWidget final : public QWidget
{
    Q_OBJECT
public:
    explicit ColorTempSliderWidget(QWidget* parent = nullptr);

    /// In kelvin.
    int colorTemp() const;
    /// Limited to the range; emits nothing.
    void setColorTemp(int cct);
    /// The tint of the whites along the track.
    void setTint(int tint);

    /// For a column of rows to line up.
    QLabel* label() const { return m_label; }
    QSpinBox* spinBox() const { return m_spinBox; }

signals:
    void colorTempChanged(int colorTemp);

public slots:
    void onCCTPickerWidgetTintChanged(int cct);
    void on_colorTempSpinBox_valueChanged(int value);

private:
    QLabel* m_label;
    CCTPickerWidget* m_picker;
    QSpinBox* m_spinBox;
};

} // namespace VelaColorPickerLib
