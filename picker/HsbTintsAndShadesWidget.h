#pragma once

#include "picker/GradientColorSelectorWidget.h"

class QPaintEvent;

namespace VelaColorPickerLib {

/// The tints and shades of the colour's hue: saturation across, brightness down, from full to
/// black. Arrows go by 1/255, with Shift ten times as far; the wheel changes the brightness, with
/// Shift the saturation.
class HsbTintsAndShadesWidget final : public GradientColorSelectorWidget
{
    Q_OBJECT
public:
    explicit HsbTintsAndShadesWidget(QWidget* parent = nullptr);

protected:
    QPointF pointOf(const Hsb& hsb) const override;
    Hsb hsbAt(const QPointF& point, const Hsb& hsb) const override;
    QPointF keyStep() const override;
    QImage fieldImage(const QSize& pixels, double ratio, const Hsb& hsb) const override;
    bool isSameField(const Hsb& a, const Hsb& b) const override;
    void turnWheel(int notches, Qt::KeyboardModifiers modifiers) override;
    void paintEvent(QPaintEvent* event) override;
};

} // namespace VelaColorPickerLib
