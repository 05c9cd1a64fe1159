#pragma once

#include "picker/ColorZoomWidget.h"
#include "picker/Hsb.h"

class QKeyEvent;
class QMouseEvent;

namespace VelaColorPickerLib {

/// A magnified piece of the spectrum: hue across and saturation down around the centre colour, at
/// its brightness. A click chooses a cell and leaves the grid where it is; arrow keys move from
/// cell to cell (with Shift by three) and take the grid along at its edge; a double click, Space
/// or Enter puts the chosen colour into the centre.
class HsbSpectrumZoomWidget final : public ColorZoomWidget
{
    Q_OBJECT
public:
    explicit HsbSpectrumZoomWidget(QWidget* parent = nullptr);

    /// Shows a colour and puts it into the centre, unless its hue and saturation are those of the
    /// chosen cell already. Emits no colour. A grey leaves the hue, black the saturation too; an
    /// invalid colour changes nothing.
    void setColor(const VelaColor& color);

    VelaColor cellColor(const QPoint& cell) const override;
    QRectF zoomArea() const override;

signals:
    void colorChanged(VelaColor color);
    /// The grid is around another colour: hue, saturation and brightness 0..1, and its alpha, of
    /// which 0 is transparent and 1 opaque.
    void centerColorChanged(double hue, double saturation, double brightness, double transparency);

protected:
    void moveTo(const QPoint& pixel) override;
    void moveBy(int columns, int rows) override;
    void moveToEnd(int columns, int rows) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct Center
    {
        int hue = 0;        // degrees, 0..359
        int saturation = 0; // 0..255
    };
    Center cellCenter(const QPoint& cell) const;
    void moveCenter(const Center& center);
    void tellCenter();
    void choose(const QPoint& cell);
    void centerChosen();

    Hsb m_hsb; // of the chosen colour
    Center m_center;
    int m_value = 255;
    quint32 m_alpha = 0xFFFFFFFFU;
    VelaColor m_told; // the centre that listeners know
};

} // namespace VelaColorPickerLib
