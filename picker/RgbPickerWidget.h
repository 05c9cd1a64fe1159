#pragma once

#include "color/VelaColor.h"

#include <QString>
#include <QWidget>

class QHideEvent;
class QShowEvent;
class QSplitter;

namespace VelaColorPickerLib {

class HsbSlidersWidget;
class HsbSpectrumWidget;
class HsbSpectrumZoomWidget;
class HsbTintsAndShadesWidget;
class RgbSlidersWidget;
class ZoomControlWidget;

/// The picker's page of the RGB gamut: spectrum, a zoomed piece of it, tints and shades, and
/// sliders, all of one colour. It remembers its zoom level and its splitter from run to run.
class RgbPickerWidget final : public QWidget
{
    Q_OBJECT
public:
    explicit RgbPickerWidget(QWidget* parent = nullptr);
    ~RgbPickerWidget() override;

    /// Shows a colour; emits nothing. An invalid colour changes nothing.
    void setColor(const VelaColor& color);
    /// What was set or chosen last, as it was.
    VelaColor color() const { return m_color; }
    /// 1..9
    int zoomLevel() const;

signals:
    void colorChanged(VelaColor color, QString uid);

public slots:
    void onSpectrumColorChanged(VelaColor color);
    void onTintsAndShadesColorChanged(VelaColor color);
    void onSpectrumZoomColorChanged(VelaColor color);
    /// Limited to 1..9.
    void onSpectrumZoomLevelChanged(int level);
    void onRgbSlidersChanged(VelaColor color);
    void onHsbSlidersChanged(VelaColor color);
    void zoomOut();
    void zoomIn();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void layOut();
    void connectViews();
    void addShortcuts();
    void stepZoom(int levels);
    void readSettings();
    void writeSettings();
    void push(const VelaColor& color, const QWidget* source);
    void choose(const VelaColor& color, const QWidget* source);

    VelaColor m_color;
    bool m_isOpen = false; // shown, and its settings not yet written
    HsbSpectrumWidget* m_spectrum;
    HsbSpectrumZoomWidget* m_zoom;
    ZoomControlWidget* m_zoomControl;
    HsbTintsAndShadesWidget* m_tints;
    RgbSlidersWidget* m_rgbSliders;
    HsbSlidersWidget* m_hsbSliders;
    QSplitter* m_splitter;
};

} // namespace VelaColorPickerLib
