#pragma once

#include <QWidget>

class QLabel;
class QSpinBox;

namespace VelaColorPickerLib {

class TintPickerWidget;

/// The row of the tint: label, track and spin box, -32767 (towards magenta) to 32767 (towards
/// green).
class ColorTintSliderWidget final : public QWidget
{
    Q_OBJECT
public:
    explicit ColorTintSliderWidget(QWidget* parent = nullptr);

    int tint() const;
    /// Limited to the range; emits nothing.
    void setTint(int tint);
    /// The temperature, in kelvin, of the whites along the track.
    void setColorTemp(int cct);

    /// For a column of rows to line up.
    QLabel* label() const { return m_label; }
    QSpinBox* spinBox() const { return m_spinBox; }

signals:
    void colorTintChanged(int tint);

public slots:
    void onTintPickerWidgetTintChanged(int tint);
    void on_colorTintSpinBox_valueChanged(int value);

private:
    QLabel* m_label;
    TintPickerWidget* m_picker;
    QSpinBox* m_spinBox;
};

} // namespace VelaColorPickerLib
