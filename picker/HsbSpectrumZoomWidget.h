#pragma once

#include "picker/ColorZoomWidget.h"

namespace VelaColorPickerLib {

/// A piece of the spectrum around a centre: hue from left to right, saturation from top to bottom.
class HsbSpectrumZoomWidget final : public ColorZoomWidget
{
    Q_OBJECT
public:
    explicit HsbSpectrumZoomWidget(QWidget* parent = nullptr);

    /// Shows a colour in the middle: hue 0..359, saturation, brightness and alpha 0..255, each
    /// limited. Emits colorChanged() for none of it.
    void setHsb(int hue, int saturation, int brightness, double alpha);
    // Of the middle cell.
    int hue() const { return m_hue; }
    int saturation() const { return m_saturation; }
    /// The colour of a cell, counted from the middle one.
    VelaColor colorOfCell(int column, int row) const;

    QRectF zoomArea() const override;

signals:
    void colorChanged(const VelaColor& color);
    /// The middle of the grid moved: hue, saturation, brightness and transparency, each 0..1.
    void centerColorChanged(double hue, double saturation, double brightness, double transparency);

protected:
    QColor cellColor(int column, int row) const override;
    void chooseCell(int column, int row) override;
    void centerOnCell(int column, int row) override;

private:
    int hueOf(int column) const;
    int saturationOf(int row) const;

    int m_hue = 0;
    int m_saturation = 0;
    int m_brightness = 255;
    double m_alpha = 1.0;
};

} // namespace VelaColorPickerLib
