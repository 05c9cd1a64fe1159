#pragma once

#include "color/VelaColor.h"

#include <QString>
#include <QWidget>

class QSplitter;

namespace VelaColorPickerLib {

class HsbSlidersWidget;
class HsbSpectrumWidget;
class HsbSpectrumZoomWidget;
class HsbTintsAndShadesWidget;
class RgbSlidersWidget;
class ZoomControlWidget;

/// The picker's page of every colour that a screen has: a spectrum, a zoomed piece of it, tints and
/// shades, and two groups of sliders, which all show one colour.
class RgbPickerWidget final : public QWidget
{
    Q_OBJECT
public:
    explicit RgbPickerWidget(QWidget* parent = nullptr);
    ~RgbPickerWidget() override;

    /// Shows a colour; emits nothing. Where it has no hue (a grey) or no saturation (black) the
    /// views keep theirs. An invalid colour changes nothing.
    void setColor(const VelaColor& color);
    VelaColor color() const { return m_color; }

signals:
    void colorChanged(const VelaColor& color, const QString& uid);

public slots:
    void onSpectrumColorChanged(const VelaColor& color);
    void onTintsAndShadesColorChanged(const VelaColor& color);
    void onSpectrumZoomColorChanged(const VelaColor& color);
    void onSpectrumZoomLevelChanged(int level);
    void onRgbSlidersChanged(const VelaColor& color);
    void onHsbSlidersChanged(const VelaColor& color);
    void zoomOut();
    void zoomIn();

protected:
    void hideEvent(QHideEvent* event) override;

private:
    void layOut();
    void addShortcuts();
    void connectViews();
    void readSettings();
    void writeSettings() const;
    void takeValues(const VelaColor& color);
    void showColor(const VelaColor& color, const QWidget* source);
    void choose(const VelaColor& color, const QWidget* source);

    VelaColor m_color = Qt::white;
    // 0..1; what a grey and black leave open stays as it was.
    double m_hue = 0.0;
    double m_saturation = 0.0;
    double m_brightness = 1.0;

    QSplitter* m_topSplitter;
    HsbSpectrumWidget* m_spectrum;
    HsbTintsAndShadesWidget* m_tints;
    HsbSpectrumZoomWidget* m_zoom;
    ZoomControlWidget* m_zoomControl;
    RgbSlidersWidget* m_rgbSliders;
    HsbSlidersWidget* m_hsbSliders;
};

} // namespace VelaColorPickerLib
