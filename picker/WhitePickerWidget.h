#pragma once

#include "color/VelaColor.h"

#include <QString>
#include <QWidget>

class QSpinBox;

namespace VelaColorPickerLib {

class BlackBodyCurveWidget;
class ColorTempSliderWidget;
class ColorTintSliderWidget;
class ColorTrack;

/// The picker's page of whites, by colour temperature, tint and intensity. What it gives are Yxy
/// colours, which keep their meaning from fixture to fixture.
class WhitePickerWidget final : public QWidget
{
    Q_OBJECT
public:
    explicit WhitePickerWidget(QWidget* parent = nullptr);

    /// Shows a colour; emits nothing. Temperature, tint and marker stay where its chromaticity has
    /// none, or is the one that this page gave last; an invalid colour, or one with a component
    /// that is not finite, changes nothing.
    void setColor(const VelaColor& color);
    VelaColor color() const { return m_color; }

signals:
    void colorChanged(VelaColor color, QString uid);
    /// 0..1
    void intensityChanged(double intensity);

public slots:
    /// 0..1, limited; NaN changes nothing.
    void onIntensityChanged(double intensity);
    void onBlackBodyCurveColorChanged(VelaColor color);
    /// In kelvin; outside of 1900..11000 nothing changes.
    void onColorTempChanged(int cct);
    /// Limited to 32767 above; below, tints beyond the slider's end are taken.
    void onColorTintChanged(int colorTint);
    void onIncreaseRed();
    void onDecreaseRed();
    void onIncreaseGreen();
    void onDecreaseGreen();
    void onIncreaseBlue();
    void onDecreaseBlue();

private:
    void buildIntensityRow();
    void lineUpRows();
    void addShortcuts();
    void takeTemperatureAndTint(int cct, int tint);
    void takeChromaticity(double x, double y);
    void showWhite(int cct, int tint);
    void showIntensity(double intensity);
    void emitColor();

    VelaColor m_color;
    VelaColor m_emittedColor; // invalid while another came from outside
    double m_intensity = 1.0;
    BlackBodyCurveWidget* m_curve;
    ColorTempSliderWidget* m_colorTemp;
    ColorTintSliderWidget* m_colorTint;
    QWidget* m_intensityRow;
    ColorTrack* m_intensityTrack = nullptr;
    QSpinBox* m_intensitySpinBox = nullptr;
};

} // namespace VelaColorPickerLib
