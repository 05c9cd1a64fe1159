#include "picker/VelaColorPickerWidget.h"

#include "picker/ColorIntensity.h"
#include "picker/ColorViewWidget.h"
#include "picker/IntensitySliderWidget.h"
#include "picker/NChannelPickerWidget.h"
#include "picker/OpacitySliderWidget.h"
#include "picker/RgbPickerWidget.h"
#include "picker/WhitePickerWidget.h"

#include <QFontMetrics>
#include <QHBoxLayout>
#include <QKeySequence>
#include <QLabel>
#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace VelaColorPickerLib {

VelaColorPickerWidget::VelaColorPickerWidget(QWidget* parent)
    : QWidget(parent)
    , m_pages(new QStackedWidget(this))
    , m_rgbPage(new RgbPickerWidget)
    , m_whitePage(new WhitePickerWidget)
    , m_channelPage(new NChannelPickerWidget)
    , m_base(Qt::white)
{
    m_pages->setObjectName(QStringLiteral("pages"));
    m_pages->insertWidget(RgbPage, m_rgbPage);
    m_pages->insertWidget(WhitePage, m_whitePage);
    m_pages->insertWidget(ChannelPage, m_channelPage);
    buildSwatches();
    m_intensity = new IntensitySliderWidget(this);
    m_opacity = new OpacitySliderWidget(this);
    layOut();
    follow(m_base, QString(), nullptr);
    connectPages();
    connectSwatches();
}

void VelaColorPickerWidget::buildSwatches()
{
    const std::array<QString, SwatchCount> objectNames = {
        QStringLiteral("mainSwatch"), QStringLiteral("comparisonSwatch1"),
        QStringLiteral("comparisonSwatch2"), QStringLiteral("comparisonSwatch3")};
    const std::array<QString, SwatchCount> names = {tr("Main color"), tr("Comparison color 1"),
                                                    tr("Comparison color 2"),
                                                    tr("Comparison color 3")};
    for (std::size_t i = 0; i < SwatchCount; ++i) {
        const auto role =
            i == MainSwatch ? ColorViewWidget::Role::Main : ColorViewWidget::Role::Comparison;
        m_views[i] = new ColorViewWidget(role, this);
        m_views[i]->setObjectName(objectNames[i]);
        m_views[i]->setAccessibleName(names[i]);
        m_views[i]->setColor(VelaColor(Qt::white), QString());
    }
    m_views[MainSwatch]->setSelected(true);
}

void VelaColorPickerWidget::layOut()
{
    const int unit = fontMetrics().height() / 2;
    auto* const swatches = new QHBoxLayout;
    swatches->setSpacing(0);
    for (std::size_t i = 0; i < SwatchCount; ++i) {
        swatches->addWidget(m_views[i]);
    }
    const int labelWidth =
        std::max(m_intensity->label()->sizeHint().width(), m_opacity->label()->sizeHint().width());
    m_intensity->label()->setMinimumWidth(labelWidth);
    m_opacity->label()->setMinimumWidth(labelWidth);
    auto* const sliders = new QVBoxLayout;
    sliders->setSpacing(unit);
    sliders->addStretch();
    sliders->addWidget(m_intensity);
    sliders->addWidget(m_opacity);
    sliders->addStretch();
    auto* const foot = new QHBoxLayout;
    foot->setSpacing(2 * unit);
    foot->addLayout(swatches);
    foot->addLayout(sliders, 1);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2 * unit);
    column->addWidget(m_pages, 1);
    column->addLayout(foot);
}

void VelaColorPickerWidget::connectPages()
{
    connect(m_rgbPage, &RgbPickerWidget::colorChanged, this,
            &VelaColorPickerWidget::onRgbPickerColorChanged);
    connect(m_whitePage, &WhitePickerWidget::colorChanged, this,
            &VelaColorPickerWidget::onWhitePickerColorChanged);
    connect(m_whitePage, &WhitePickerWidget::intensityChanged, this,
            &VelaColorPickerWidget::setIntensity);
    connect(m_channelPage, &NChannelPickerWidget::colorChanged, this,
            &VelaColorPickerWidget::onNChannelPickerColorChanged);
    connect(m_opacity, &OpacitySliderWidget::opacityChanged, this,
            &VelaColorPickerWidget::onOpacityChanged);
    connect(m_intensity, &IntensitySliderWidget::intensityChanged, this,
            &VelaColorPickerWidget::onIntensityChanged);
}

void VelaColorPickerWidget::connectSwatches()
{
    using Self = VelaColorPickerWidget;
    using SelectedSlot = void (Self::*)();
    using ChangedSlot = void (Self::*)(const VelaColor&, const QString&);
    const auto setFromOutside = qOverload<const VelaColor&, const QString&>(&Self::setColor);
    const std::array<SelectedSlot, SwatchCount> selected = {
        &Self::onMainSwatchSelected, &Self::onComparisonSwatch1Selected,
        &Self::onComparisonSwatch2Selected, &Self::onComparisonSwatch3Selected};
    // The main swatch reports a colour it was given through the open-in signals alone.
    const std::array<ChangedSlot, SwatchCount> changed = {
        nullptr, &Self::onComparisonSwatch1Changed, &Self::onComparisonSwatch2Changed,
        &Self::onComparisonSwatch3Changed};
    for (std::size_t i = 0; i < SwatchCount; ++i) {
        connect(m_views[i], &ColorViewWidget::selected, this, selected[i]);
        connect(m_views[i], &ColorViewWidget::addToFavorites, this, &Self::onAddColorToFavorites);
        connect(m_views[i], &ColorViewWidget::openInRGBPicker, this, setFromOutside);
        connect(m_views[i], &ColorViewWidget::openInWhitePicker, this, setFromOutside);
        if (i != MainSwatch) {
            connect(m_views[i], &ColorViewWidget::colorChanged, this, changed[i]);
            connect(m_views[i], &ColorViewWidget::copyToMainColor, this,
                    &Self::onCopyColorToMainSwatch);
        }
    }
    const std::array<QString, SwatchCount> keys = {
        QString(), QStringLiteral("Ctrl+1"), QStringLiteral("CTRL+2"), QStringLiteral("Ctrl+3")};
    for (std::size_t i = Comparison1; i < SwatchCount; ++i) {
        auto* const shortcut = new QShortcut(QKeySequence(keys[i]), this);
        connect(shortcut, &QShortcut::activated, this, selected[i]);
    }
}

VelaColorPickerWidget::Page VelaColorPickerWidget::pageFor(const VelaColor& color)
{
    switch (color.spec()) {
    case VelaColor::Yxy:
        return WhitePage;
    case VelaColor::Nchannel:
        return ChannelPage;
    case VelaColor::Rgb:
    case VelaColor::Hsv:
    case VelaColor::Invalid:
        break;
    }
    return RgbPage;
}

VelaColor VelaColorPickerWidget::mainColor() const
{
    return m_views[MainSwatch]->color();
}

VelaColor VelaColorPickerWidget::selectedColor() const
{
    return m_views[m_selected]->color();
}

VelaColorPickerWidget::Page VelaColorPickerWidget::currentPage() const
{
    return static_cast<Page>(m_pages->currentIndex());
}

void VelaColorPickerWidget::showPage(int index)
{
    m_pages->setCurrentIndex(index);
}

void VelaColorPickerWidget::setChannelControlEnabled(bool enabled)
{
    m_channelPage->setEnabled(enabled);
}

void VelaColorPickerWidget::setColorAndSelectMainPreview(const VelaColor& color, const QString& uid)
{
    select(MainSwatch);
    m_views[MainSwatch]->setResetColor(color);
    setColor(color, uid);
}

void VelaColorPickerWidget::setProfiles(const QList<GroupProfile>& profiles)
{
    m_channelPage->setProfiles(profiles);
}

void VelaColorPickerWidget::setPrimaryProfile(const GroupProfile& profile)
{
    m_channelPage->setPrimaryProfile(profile);
}

void VelaColorPickerWidget::setColor(const VelaColor& color, const QString& uid,
                                     bool isLocalColorChange)
{
    m_base = color;
    follow(color, uid, isLocalColorChange ? m_pages->currentWidget() : nullptr);
    if (!isLocalColorChange) {
        askForPage(color);
    }
    emitChanged();
}

void VelaColorPickerWidget::setColor(const VelaColor& color, const QString& uid)
{
    setColor(color, uid, false);
}

void VelaColorPickerWidget::onOpacityChanged(int opacity)
{
    VelaColor color = selectedColor();
    color.setAlphaF(std::clamp(opacity, 0, 100) / 100.0);
    m_base.setAlpha32(color.alpha32());
    emit clearPreviousSelection();
    follow(color, QString(), nullptr);
    emitChanged();
}

void VelaColorPickerWidget::onIntensityChanged(int intensity)
{
    // Back at the level of the colour itself, that colour exactly.
    const double own = intensityOf(m_base);
    applyIntensity(intensity == qRound(100.0 * own) ? own : intensity / 100.0, nullptr);
}

void VelaColorPickerWidget::setIntensity(double intensity)
{
    if (qFuzzyCompare(1.0 + intensity, 1.0 + intensityOf(selectedColor()))) {
        pushToSliders(selectedColor());
        return;
    }
    applyIntensity(intensity, m_whitePage);
}

void VelaColorPickerWidget::applyIntensity(double intensity, const QWidget* source)
{
    const VelaColor color =
        intensity == intensityOf(m_base) ? m_base : withIntensity(m_base, intensity);
    emit clearPreviousSelection();
    follow(color, QString(), source);
    emitChanged();
}

void VelaColorPickerWidget::onMainSwatchSelected()
{
    select(MainSwatch);
}

void VelaColorPickerWidget::onComparisonSwatch1Selected()
{
    select(Comparison1);
}

void VelaColorPickerWidget::onComparisonSwatch2Selected()
{
    select(Comparison2);
}

void VelaColorPickerWidget::onComparisonSwatch3Selected()
{
    select(Comparison3);
}

void VelaColorPickerWidget::select(Swatch swatch)
{
    if (swatch == m_selected) {
        return;
    }
    m_views[m_selected]->setSelected(false);
    m_selected = swatch;
    ColorViewWidget* const view = m_views[swatch];
    view->setSelected(true);
    m_base = view->color();
    emit clearPreviousSelection();
    pushToSliders(m_base);
    pushToPages(m_base, nullptr);
    askForPage(m_base);
}

void VelaColorPickerWidget::onCopyColorToMainSwatch(const VelaColor& color, const QString& uid)
{
    select(MainSwatch);
    setColor(color, uid);
}

void VelaColorPickerWidget::onComparisonSwatch1Changed(const VelaColor& color, const QString& uid)
{
    compareWith(Comparison1, color, uid);
}

void VelaColorPickerWidget::onComparisonSwatch2Changed(const VelaColor& color, const QString& uid)
{
    compareWith(Comparison2, color, uid);
}

void VelaColorPickerWidget::onComparisonSwatch3Changed(const VelaColor& color, const QString& uid)
{
    compareWith(Comparison3, color, uid);
}

void VelaColorPickerWidget::compareWith(Swatch swatch, const VelaColor& color, const QString& uid)
{
    if (swatch == m_selected) {
        m_base = color;
        follow(color, uid, nullptr);
    } else {
        m_views[swatch]->setColor(color, uid);
    }
    emit comparisonColorChanged(color, uid);
}

void VelaColorPickerWidget::onAddColorToFavorites(const VelaColor& color)
{
    emit colorAddedToFavorites(color);
}

void VelaColorPickerWidget::onRgbPickerColorChanged(const VelaColor& color, const QString& uid)
{
    pageChose(color, uid, m_rgbPage);
}

void VelaColorPickerWidget::onWhitePickerColorChanged(const VelaColor& color, const QString& uid)
{
    pageChose(color, uid, m_whitePage);
}

void VelaColorPickerWidget::onNChannelPickerColorChanged(VelaColor& color, QString& uid)
{
    pageChose(color, uid, m_channelPage);
}

void VelaColorPickerWidget::pageChose(const VelaColor& color, const QString& uid,
                                      const QWidget* page)
{
    emit clearPreviousSelection();
    m_base = color;
    follow(color, uid, page);
    emitChanged();
}

void VelaColorPickerWidget::follow(const VelaColor& color, const QString& uid,
                                   const QWidget* source)
{
    m_views[m_selected]->setColor(color, uid);
    pushToSliders(color);
    pushToPages(color, source);
}

void VelaColorPickerWidget::pushToPages(const VelaColor& color, const QWidget* source)
{
    // The page that chose the colour keeps what it shows: a grey has no hue to give back.
    if (source != m_rgbPage) {
        m_rgbPage->setColor(color);
    }
    if (source != m_whitePage) {
        m_whitePage->setColor(color);
    }
    if (source != m_channelPage) {
        m_channelPage->setColor(color);
    }
}

void VelaColorPickerWidget::pushToSliders(const VelaColor& color)
{
    m_intensity->setColor(m_base, intensityOf(color));
    m_opacity->setColor(color);
}

void VelaColorPickerWidget::emitChanged()
{
    const ColorViewWidget* const view = m_views[m_selected];
    if (m_selected == MainSwatch) {
        emit mainColorChanged(view->color(), view->uid());
    } else {
        emit comparisonColorChanged(view->color(), view->uid());
    }
}

void VelaColorPickerWidget::askForPage(const VelaColor& color)
{
    const Page page = pageFor(color);
    emit pickerSetOnSetColor(page, page == ChannelPage);
}

} // namespace VelaColorPickerLib
