#include "picker/WhitePickerWidget.h"

#include "color/ColorUtils.h"
#include "picker/BlackBodyCurveWidget.h"
#include "picker/ChartWhite.h"
#include "picker/ColorTempSliderWidget.h"
#include "picker/ColorTintSliderWidget.h"
#include "picker/ColorTrack.h"

#include <QHBoxLayout>
#include <QKeySequence>
#include <QLabel>
#include <QShortcut>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace VelaColorPickerLib {

namespace {

constexpr int kFirstCct = 4000;
constexpr int kFullIntensity = 100; // percent

// The directions, in x and y, in which the shortcuts take a white.
constexpr QPointF kRedAxis(1.0, 0.0);
constexpr QPointF kGreenAxis(0.0, 1.0);
constexpr QPointF kBlueAxis(-0.70710678118654752, -0.70710678118654752);

VelaColor firstColor()
{
    double x = 0.0;
    double y = 0.0;
    ColorUtils::cctTintToXy(kFirstCct, 0, &x, &y);
    return VelaColor(x, y);
}

} // namespace

WhitePickerWidget::WhitePickerWidget(QWidget* parent)
    : QWidget(parent)
    , m_color(firstColor())
    , m_curve(new BlackBodyCurveWidget(this))
    , m_colorTemp(new ColorTempSliderWidget(this))
    , m_colorTint(new ColorTintSliderWidget(this))
    , m_intensityRow(new QWidget(this))
{
    buildIntensityRow();
    lineUpRows();
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(fontMetrics().height() / 2);
    layout->addWidget(m_curve, 1);
    layout->addWidget(m_colorTemp);
    layout->addWidget(m_colorTint);
    layout->addWidget(m_intensityRow);
    setFocusProxy(m_curve);

    m_curve->setChromaticity({m_color.smallX(), m_color.smallY()});
    showWhite(kFirstCct, 0);
    showIntensity(m_intensity);

    connect(m_curve, &BlackBodyCurveWidget::colorChanged, this,
            &WhitePickerWidget::onBlackBodyCurveColorChanged);
    connect(m_colorTemp, &ColorTempSliderWidget::colorTempChanged, this,
            &WhitePickerWidget::onColorTempChanged);
    connect(m_colorTint, &ColorTintSliderWidget::colorTintChanged, this,
            &WhitePickerWidget::onColorTintChanged);
    const auto takePercent = [this](int percent) {
        onIntensityChanged(static_cast<double>(percent) / kFullIntensity);
    };
    connect(m_intensityTrack, &QSlider::valueChanged, this, takePercent);
    connect(m_intensitySpinBox, qOverload<int>(&QSpinBox::valueChanged), this, takePercent);
    addShortcuts();
}

void WhitePickerWidget::buildIntensityRow()
{
    auto* const label = new QLabel(tr("Intensity:"), m_intensityRow);
    label->setObjectName(QStringLiteral("intensityLabel"));
    m_intensityTrack = new ColorTrack(m_intensityRow);
    m_intensityTrack->setObjectName(QStringLiteral("intensityTrack"));
    m_intensityTrack->setRange(0, kFullIntensity);
    m_intensityTrack->setColorAt([this](int percent) {
        const QColor full = chartWhite(m_colorTemp->colorTemp(), m_colorTint->tint());
        return QColor::fromHsvF(full.hueF(), full.saturationF(),
                                static_cast<double>(percent) / kFullIntensity);
    });
    m_intensitySpinBox = new QSpinBox(m_intensityRow);
    m_intensitySpinBox->setObjectName(QStringLiteral("intensitySpinBox"));
    m_intensitySpinBox->setRange(0, kFullIntensity);
    m_intensitySpinBox->setSuffix(tr(" %"));
    m_intensitySpinBox->setAlignment(Qt::AlignRight);
    m_intensitySpinBox->setKeyboardTracking(false);
    label->setBuddy(m_intensitySpinBox);

    const QString tip = tr("Intensity of the white");
    m_intensityTrack->setAccessibleName(tr("Intensity track"));
    m_intensityTrack->setToolTip(tip);
    m_intensitySpinBox->setAccessibleName(tr("Intensity"));
    m_intensitySpinBox->setToolTip(tip);

    auto* const layout = new QHBoxLayout(m_intensityRow);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(fontMetrics().height() / 2);
    layout->addWidget(label);
    layout->addWidget(m_intensityTrack, 1);
    layout->addWidget(m_intensitySpinBox);
}

void WhitePickerWidget::lineUpRows()
{
    QWidget* const labels[] = {m_colorTemp->label(), m_colorTint->label(),
                               findChild<QLabel*>(QStringLiteral("intensityLabel"))};
    QWidget* const boxes[] = {m_colorTemp->spinBox(), m_colorTint->spinBox(), m_intensitySpinBox};
    for (const auto& column : {labels, boxes}) {
        int width = 0;
        for (int row = 0; row < 3; ++row) {
            width = std::max(width, column[row]->sizeHint().width());
        }
        for (int row = 0; row < 3; ++row) {
            column[row]->setMinimumWidth(width);
        }
    }
}

void WhitePickerWidget::addShortcuts()
{
    struct Entry
    {
        const char* keys;
        void (WhitePickerWidget::*slot)();
    };
    const Entry entries[] = {{"Ctrl+R", &WhitePickerWidget::onIncreaseRed},
                             {"Ctrl+Shift+R", &WhitePickerWidget::onDecreaseRed},
                             {"Ctrl+G", &WhitePickerWidget::onIncreaseGreen},
                             {"Ctrl+Shift+G", &WhitePickerWidget::onDecreaseGreen},
                             {"Ctrl+B", &WhitePickerWidget::onIncreaseBlue},
                             {"Ctrl+Shift+B", &WhitePickerWidget::onDecreaseBlue}};
    for (const Entry& entry : entries) {
        auto* const shortcut = new QShortcut(QKeySequence(QLatin1String(entry.keys)), this);
        connect(shortcut, &QShortcut::activated, this, entry.slot);
    }
}

void WhitePickerWidget::setColor(const VelaColor& color)
{
    if (!color.isValid()) {
        return;
    }
    const VelaColor xyY = color.toYxy(0, -1, -1);
    const double x = xyY.smallX();
    const double y = xyY.smallY();
    if (!std::isfinite(x) || !std::isfinite(y) || !std::isfinite(xyY.capY())) {
        return;
    }
    // A colour of this page that comes back: its temperature and tint may be finer than what its
    // chromaticity tells.
    const bool isOwn =
        m_emittedColor.isValid() && x == m_emittedColor.smallX() && y == m_emittedColor.smallY();
    m_color = xyY;
    int cct = 0;
    int tint = 0;
    if (x == 0.0 && y == 0.0) { // black has no chromaticity: it takes the one that is shown
        m_color.setSmallX(m_curve->chromaticity().x());
        m_color.setSmallY(m_curve->chromaticity().y());
    } else if (!isOwn) {
        m_emittedColor.reset();
        if (ColorUtils::xyToCctTint(x, y, &cct, &tint)) {
            m_curve->setChromaticity({x, y});
            showWhite(cct, tint);
        }
    }
    showIntensity(std::clamp(xyY.capY(), 0.0, 1.0));
}

void WhitePickerWidget::onIntensityChanged(double intensity)
{
    if (std::isnan(intensity)) {
        return;
    }
    showIntensity(std::clamp(intensity, 0.0, 1.0));
    m_color.setCapY(m_intensity);
    const double taken = m_intensity; // a listener may set another colour
    emitColor();
    emit intensityChanged(taken);
}

void WhitePickerWidget::onBlackBodyCurveColorChanged(VelaColor color)
{
    const VelaColor xyY = color.toYxy(0, -1, -1);
    int cct = 0;
    int tint = 0;
    if (ColorUtils::xyToCctTint(xyY.smallX(), xyY.smallY(), &cct, &tint)) {
        showWhite(cct, tint);
        takeChromaticity(xyY.smallX(), xyY.smallY());
    }
}

void WhitePickerWidget::onColorTempChanged(int cct)
{
    takeTemperatureAndTint(cct, m_colorTint->tint());
}

void WhitePickerWidget::onColorTintChanged(int colorTint)
{
    takeTemperatureAndTint(m_colorTemp->colorTemp(), colorTint);
}

void WhitePickerWidget::takeTemperatureAndTint(int cct, int tint)
{
    const int limitedTint = std::min(tint, ColorUtils::maximumTint()); // above only
    double x = 0.0;
    double y = 0.0;
    if (ColorUtils::cctTintToXy(cct, limitedTint, &x, &y)) {
        showWhite(cct, limitedTint);
        takeChromaticity(x, y);
    }
}

/// Anything of the held colour but its chromaticity and intensity stays, its alpha above all.
void WhitePickerWidget::takeChromaticity(double x, double y)
{
    m_color.setCapY(m_intensity);
    m_color.setSmallX(x);
    m_color.setSmallY(y);
    emitColor();
}

void WhitePickerWidget::showWhite(int cct, int tint)
{
    m_colorTemp->setColorTemp(cct);
    m_colorTint->setTint(tint);
    m_colorTemp->setTint(m_colorTint->tint());
    m_colorTint->setColorTemp(m_colorTemp->colorTemp());
    m_intensityTrack->refresh();
}

void WhitePickerWidget::showIntensity(double intensity)
{
    const QSignalBlocker noTrackNews(m_intensityTrack);
    const QSignalBlocker noBoxNews(m_intensitySpinBox);
    m_intensity = intensity;
    const int percent = static_cast<int>(std::lround(intensity * kFullIntensity));
    m_intensityTrack->setValue(percent);
    m_intensitySpinBox->setValue(percent);
}

void WhitePickerWidget::emitColor()
{
    m_curve->setChromaticity({m_color.smallX(), m_color.smallY()});
    m_emittedColor = m_color;
    emit colorChanged(m_emittedColor, QString());
}

void WhitePickerWidget::onIncreaseRed()
{
    m_curve->moveBy(kRedAxis * BlackBodyCurveWidget::kStep);
}

void WhitePickerWidget::onDecreaseRed()
{
    m_curve->moveBy(-kRedAxis * BlackBodyCurveWidget::kStep);
}

void WhitePickerWidget::onIncreaseGreen()
{
    m_curve->moveBy(kGreenAxis * BlackBodyCurveWidget::kStep);
}

void WhitePickerWidget::onDecreaseGreen()
{
    m_curve->moveBy(-kGreenAxis * BlackBodyCurveWidget::kStep);
}

void WhitePickerWidget::onIncreaseBlue()
{
    m_curve->moveBy(kBlueAxis * BlackBodyCurveWidget::kStep);
}

void WhitePickerWidget::onDecreaseBlue()
{
    m_curve->moveBy(-kBlueAxis * BlackBodyCurveWidget::kStep);
}

} // namespace VelaColorPickerLib
