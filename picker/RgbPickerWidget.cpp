#include "picker/RgbPickerWidget.h"

#include "picker/HsbSlidersWidget.h"
#include "picker/HsbSpectrumWidget.h"
#include "picker/HsbSpectrumZoomWidget.h"
#include "picker/HsbTintsAndShadesWidget.h"
#include "picker/PickerSettings.h"
#include "picker/RgbSlidersWidget.h"
#include "picker/ZoomControlWidget.h"

#include <QFontMetrics>
#include <QHBoxLayout>
#include <QHideEvent>
#include <QKeySequence>
#include <QShortcut>
#include <QSplitter>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace VelaColorPickerLib {

namespace {

QString levelKey()
{
    return QStringLiteral("colorPickerZoomLevel");
}

QString splitterKey()
{
    return QStringLiteral("colorPickerTopSplitterState");
}

int degrees(double hue)
{
    return static_cast<int>(std::lround(hue * 360.0)) % 360;
}

int level8(double value)
{
    return static_cast<int>(std::lround(value * 255.0));
}

} // namespace

RgbPickerWidget::RgbPickerWidget(QWidget* parent)
    : QWidget(parent)
    , m_topSplitter(new QSplitter(Qt::Horizontal, this))
    , m_spectrum(new HsbSpectrumWidget)
    , m_tints(new HsbTintsAndShadesWidget)
    , m_zoom(new HsbSpectrumZoomWidget)
    , m_zoomControl(new ZoomControlWidget)
    , m_rgbSliders(new RgbSlidersWidget)
    , m_hsbSliders(new HsbSlidersWidget)
{
    layOut();
    addShortcuts();
    connectViews();
    readSettings();
    showColor(m_color, nullptr);
    m_spectrum->setZoomArea(m_zoom->zoomArea());
}

RgbPickerWidget::~RgbPickerWidget()
{
    if (isVisible()) {
        writeSettings();
    }
}

void RgbPickerWidget::layOut()
{
    const int unit = fontMetrics().height() / 2;
    auto* const side = new QWidget;
    auto* const sideColumn = new QVBoxLayout(side);
    sideColumn->setContentsMargins(0, 0, 0, 0);
    sideColumn->setSpacing(unit);
    sideColumn->addWidget(m_tints, 1);
    sideColumn->addSpacing(unit);
    sideColumn->addWidget(m_zoom, 1);
    sideColumn->addWidget(m_zoomControl);

    m_topSplitter->setObjectName(QStringLiteral("topSplitter"));
    m_topSplitter->setHandleWidth(2 * unit);
    m_topSplitter->setChildrenCollapsible(false);
    m_topSplitter->addWidget(m_spectrum);
    m_topSplitter->addWidget(side);
    m_topSplitter->setStretchFactor(0, 2);
    m_topSplitter->setStretchFactor(1, 1);
    m_topSplitter->setSizes({660, 340}); // proportions: the first resize scales them

    auto* const sliders = new QHBoxLayout;
    sliders->setSpacing(4 * unit);
    sliders->addWidget(m_rgbSliders, 1);
    sliders->addWidget(m_hsbSliders, 1);

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2 * unit);
    column->addWidget(m_topSplitter, 1);
    column->addLayout(sliders);
}

void RgbPickerWidget::addShortcuts()
{
    for (const char* const keys : {"CTRL+=", "CTRL++"}) {
        auto* const in = new QShortcut(QKeySequence(QLatin1String(keys)), this);
        connect(in, &QShortcut::activated, this, &RgbPickerWidget::zoomIn);
    }
    auto* const out = new QShortcut(QKeySequence(QStringLiteral("CTRL+-")), this);
    connect(out, &QShortcut::activated, this, &RgbPickerWidget::zoomOut);
}

void RgbPickerWidget::connectViews()
{
    connect(m_spectrum, &HsbSpectrumWidget::colorChanged, this,
            &RgbPickerWidget::onSpectrumColorChanged);
    connect(m_tints, &HsbTintsAndShadesWidget::colorChanged, this,
            &RgbPickerWidget::onTintsAndShadesColorChanged);
    connect(m_zoom, &HsbSpectrumZoomWidget::colorChanged, this,
            &RgbPickerWidget::onSpectrumZoomColorChanged);
    connect(m_zoom, &HsbSpectrumZoomWidget::levelChanged, this,
            &RgbPickerWidget::onSpectrumZoomLevelChanged);
    connect(m_zoom, &HsbSpectrumZoomWidget::zoomAreaChanged, m_spectrum,
            &HsbSpectrumWidget::setZoomArea);
    connect(m_rgbSliders, &RgbSlidersWidget::colorChanged, this,
            &RgbPickerWidget::onRgbSlidersChanged);
    connect(m_hsbSliders, &HsbSlidersWidget::colorChanged, this,
            &RgbPickerWidget::onHsbSlidersChanged);
    connect(m_zoomControl, &ZoomControlWidget::zoomOut, this, &RgbPickerWidget::zoomOut);
    connect(m_zoomControl, &ZoomControlWidget::zoomIn, this, &RgbPickerWidget::zoomIn);
}

void RgbPickerWidget::readSettings()
{
    const QSettings settings = pickerSettings();
    m_zoom->setLevel(settings.value(levelKey(), 1).toInt());
    m_zoomControl->setLevel(m_zoom->level(), ColorZoomWidget::kLevels);
    const int handleWidth = m_topSplitter->handleWidth();
    m_topSplitter->restoreState(settings.value(splitterKey()).toByteArray());
    // All but the sizes is ours, whatever the state held.
    m_topSplitter->setOrientation(Qt::Horizontal);
    m_topSplitter->setHandleWidth(handleWidth);
    m_topSplitter->setChildrenCollapsible(false);
    m_topSplitter->setOpaqueResize(true);
}

void RgbPickerWidget::writeSettings() const
{
    QSettings settings = pickerSettings();
    settings.setValue(levelKey(), m_zoom->level());
    settings.setValue(splitterKey(), m_topSplitter->saveState());
}

void RgbPickerWidget::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    if (!event->spontaneous()) {
        writeSettings();
    }
}

void RgbPickerWidget::setColor(const VelaColor& color)
{
    if (color.isValid()) {
        showColor(color, nullptr);
    }
}

void RgbPickerWidget::onSpectrumColorChanged(const VelaColor& color)
{
    choose(color, m_spectrum);
}

void RgbPickerWidget::onTintsAndShadesColorChanged(const VelaColor& color)
{
    choose(color, m_tints);
}

void RgbPickerWidget::onSpectrumZoomColorChanged(const VelaColor& color)
{
    choose(color, m_zoom);
}

void RgbPickerWidget::onSpectrumZoomLevelChanged(int level)
{
    m_zoomControl->setLevel(level, ColorZoomWidget::kLevels);
}

void RgbPickerWidget::onRgbSlidersChanged(const VelaColor& color)
{
    choose(color, m_rgbSliders);
}

void RgbPickerWidget::onHsbSlidersChanged(const VelaColor& color)
{
    choose(color, m_hsbSliders);
}

void RgbPickerWidget::zoomOut()
{
    m_zoom->setLevel(m_zoom->level() - 1);
}

void RgbPickerWidget::zoomIn()
{
    m_zoom->setLevel(m_zoom->level() + 1);
}

void RgbPickerWidget::choose(const VelaColor& color, const QWidget* source)
{
    showColor(color, source);
    emit colorChanged(color, QString());
}

void RgbPickerWidget::takeValues(const VelaColor& color)
{
    const bool isOfScreen = color.spec() == VelaColor::Rgb || color.spec() == VelaColor::Hsv;
    const VelaColor shown = isOfScreen ? color : color.toRgb(true);
    double hue = -1.0;
    double saturation = 0.0;
    double brightness = 0.0;
    shown.getHsvF(&hue, &saturation, &brightness);
    if (hue >= 0.0) {
        m_hue = hue;
    }
    if (brightness > 0.0 || shown.spec() == VelaColor::Hsv) {
        m_saturation = saturation;
    }
    m_brightness = brightness;
}

void RgbPickerWidget::showColor(const VelaColor& color, const QWidget* source)
{
    m_color = color;
    takeValues(color);
    const double alpha = color.alphaF();
    if (source != m_spectrum) {
        m_spectrum->setHsb(m_hue, m_saturation, m_brightness, alpha);
    }
    if (source != m_tints) {
        m_tints->setHsb(m_hue, m_saturation, m_brightness, alpha);
    }
    if (source != m_zoom) { // its grid stays while a colour is chosen from it
        m_zoom->setHsb(degrees(m_hue), level8(m_saturation), level8(m_brightness), alpha);
    }
    if (source != m_rgbSliders) {
        m_rgbSliders->setColor(color);
    }
    if (source != m_hsbSliders) {
        m_hsbSliders->setHsb(degrees(m_hue), level8(m_saturation), level8(m_brightness), alpha);
    }
}

} // namespace VelaColorPickerLib
