#include "picker/RgbPickerWidget.h"

#include "picker/HsbSlidersWidget.h"
#include "picker/HsbSpectrumWidget.h"
#include "picker/HsbSpectrumZoomWidget.h"
#include "picker/HsbTintsAndShadesWidget.h"
#include "picker/PickerSettings.h"
#include "picker/RgbSlidersWidget.h"
#include "picker/ZoomControlWidget.h"

#include <QByteArray>
#include <QHBoxLayout>
#include <QHideEvent>
#include <QKeySequence>
#include <QShortcut>
#include <QShowEvent>
#include <QSplitter>
#include <QVBoxLayout>

namespace VelaColorPickerLib {

namespace {

QString zoomLevelKey()
{
    return QStringLiteral("colorPickerZoomLevel");
}

QString splitterKey()
{
    return QStringLiteral("colorPickerTopSplitterState");
}

} // namespace

RgbPickerWidget::RgbPickerWidget(QWidget* parent)
    : QWidget(parent)
    , m_color(Qt::white)
    , m_spectrum(new HsbSpectrumWidget)
    , m_zoom(new HsbSpectrumZoomWidget)
    , m_zoomControl(new ZoomControlWidget(ColorZoomWidget::kLevels))
    , m_tints(new HsbTintsAndShadesWidget)
    , m_rgbSliders(new RgbSlidersWidget)
    , m_hsbSliders(new HsbSlidersWidget)
    , m_splitter(new QSplitter(Qt::Horizontal))
{
    layOut();
    push(m_color, nullptr);
    m_spectrum->setZoomArea(m_zoom->zoomArea());
    connectViews();
    addShortcuts();
    readSettings();
}

RgbPickerWidget::~RgbPickerWidget()
{
    if (m_isOpen) { // taken down with its window still open
        writeSettings();
    }
}

void RgbPickerWidget::layOut()
{
    const int unit = fontMetrics().height() / 2;
    auto* const zoomPane = new QWidget;
    auto* const zoomColumn = new QVBoxLayout(zoomPane);
    zoomColumn->setContentsMargins(0, 0, 0, 0);
    zoomColumn->setSpacing(unit);
    zoomColumn->addWidget(m_zoom, 1);
    zoomColumn->addWidget(m_zoomControl);

    m_splitter->setObjectName(QStringLiteral("topSplitter"));
    m_splitter->addWidget(m_spectrum);
    m_splitter->addWidget(zoomPane);
    m_splitter->setStretchFactor(0, 3);
    m_splitter->setStretchFactor(1, 2);
    m_splitter->setChildrenCollapsible(false);
    m_splitter->setHandleWidth(2 * unit);

    ColorSlidersWidget::lineUp(m_rgbSliders, m_hsbSliders);
    auto* const sliders = new QVBoxLayout;
    sliders->setSpacing(2 * unit);
    sliders->addWidget(m_rgbSliders);
    sliders->addWidget(m_hsbSliders);
    sliders->addStretch(1);
    auto* const foot = new QHBoxLayout;
    foot->setSpacing(2 * unit);
    foot->addWidget(m_tints, 2);
    foot->addLayout(sliders, 3);

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2 * unit);
    column->addWidget(m_splitter, 1);
    column->addLayout(foot);
    setFocusProxy(m_spectrum);
}

void RgbPickerWidget::connectViews()
{
    using Self = RgbPickerWidget;
    connect(m_spectrum, &HsbSpectrumWidget::colorChanged, this, &Self::onSpectrumColorChanged);
    connect(m_tints, &HsbTintsAndShadesWidget::colorChanged, this,
            &Self::onTintsAndShadesColorChanged);
    connect(m_zoom, &HsbSpectrumZoomWidget::colorChanged, this, &Self::onSpectrumZoomColorChanged);
    connect(m_rgbSliders, &RgbSlidersWidget::colorChanged, this, &Self::onRgbSlidersChanged);
    connect(m_hsbSliders, &HsbSlidersWidget::colorChanged, this, &Self::onHsbSlidersChanged);
    connect(m_zoom, &ColorZoomWidget::zoomAreaChanged, m_spectrum, &HsbSpectrumWidget::setZoomArea);
    connect(m_zoom, &ColorSelectorWidget::zoomStepped, this, &Self::stepZoom);
    connect(m_spectrum, &ColorSelectorWidget::zoomStepped, this, &Self::stepZoom);
    connect(m_zoomControl, &ZoomControlWidget::zoomOutClicked, this, &Self::zoomOut);
    connect(m_zoomControl, &ZoomControlWidget::zoomInClicked, this, &Self::zoomIn);
}

void RgbPickerWidget::addShortcuts()
{
    struct Entry
    {
        const char* keys;
        void (RgbPickerWidget::*slot)();
    };
    const Entry entries[] = {{"CTRL+=", &RgbPickerWidget::zoomIn},
                             {"CTRL++", &RgbPickerWidget::zoomIn},
                             {"CTRL+-", &RgbPickerWidget::zoomOut}};
    for (const Entry& entry : entries) {
        auto* const shortcut = new QShortcut(QKeySequence(QLatin1String(entry.keys)), this);
        connect(shortcut, &QShortcut::activated, this, entry.slot);
    }
}

void RgbPickerWidget::setColor(const VelaColor& color)
{
    if (!color.isValid()) {
        return;
    }
    m_color = color;
    push(color, nullptr);
}

int RgbPickerWidget::zoomLevel() const
{
    return m_zoom->level();
}

void RgbPickerWidget::push(const VelaColor& color, const QWidget* source)
{
    if (source != m_spectrum) {
        m_spectrum->setColor(color);
    }
    if (source != m_tints) {
        m_tints->setColor(color);
    }
    if (source != m_zoom) {
        m_zoom->setColor(color);
    }
    if (source != m_rgbSliders) {
        m_rgbSliders->setColor(color);
    }
    if (source != m_hsbSliders) {
        m_hsbSliders->setColor(color);
    }
}

void RgbPickerWidget::choose(const VelaColor& color, const QWidget* source)
{
    if (!color.isValid()) {
        return;
    }
    m_color = color;
    push(color, source);
    emit colorChanged(color, QString());
}

void RgbPickerWidget::onSpectrumColorChanged(VelaColor color)
{
    choose(color, m_spectrum);
}

void RgbPickerWidget::onTintsAndShadesColorChanged(VelaColor color)
{
    choose(color, m_tints);
}

void RgbPickerWidget::onSpectrumZoomColorChanged(VelaColor color)
{
    choose(color, m_zoom);
}

void RgbPickerWidget::onSpectrumZoomLevelChanged(int level)
{
    m_zoom->setLevel(level);
    m_zoomControl->setLevel(m_zoom->level());
}

void RgbPickerWidget::onRgbSlidersChanged(VelaColor color)
{
    choose(color, m_rgbSliders);
}

void RgbPickerWidget::onHsbSlidersChanged(VelaColor color)
{
    choose(color, m_hsbSliders);
}

void RgbPickerWidget::stepZoom(int levels)
{
    onSpectrumZoomLevelChanged(m_zoom->level() + levels);
}

void RgbPickerWidget::zoomOut()
{
    stepZoom(-1);
}

void RgbPickerWidget::zoomIn()
{
    stepZoom(1);
}

void RgbPickerWidget::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    m_isOpen = true;
}

void RgbPickerWidget::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    if (!event->spontaneous() && m_isOpen) {
        writeSettings();
    }
}

void RgbPickerWidget::readSettings()
{
    const QSettings settings = pickerSettings();
    onSpectrumZoomLevelChanged(settings.value(zoomLevelKey(), 1).toInt());
    const QByteArray state = settings.value(splitterKey()).toByteArray();
    if (m_splitter->restoreState(state)) {
        // A state brings more than the sizes.
        m_splitter->setOrientation(Qt::Horizontal);
        m_splitter->setChildrenCollapsible(false);
        m_splitter->setHandleWidth(fontMetrics().height());
    }
}

void RgbPickerWidget::writeSettings()
{
    m_isOpen = false;
    QSettings settings = pickerSettings();
    settings.setValue(zoomLevelKey(), zoomLevel());
    settings.setValue(splitterKey(), m_splitter->saveState());
}

} // namespace VelaColorPickerLib
