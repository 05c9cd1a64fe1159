#include "picker/VelaColorPickerButtonsWidget.h"

#include "picker/PickerSettings.h"
#include "picker/VelaColorPicker.h"

#include <QButtonGroup>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QHideEvent>
#include <QPushButton>

namespace VelaColorPickerLib {

namespace {

constexpr int kRgb = 0;
constexpr int kWhite = 1;
constexpr int kChannels = 2;

const std::array<const char*, 3> kDisplayedKeys = {"colorPickerRGBPickerDisplayed",
                                                   "colorPickerWhitePickerDisplayed",
                                                   "colorPickerNChannelPickerDisplayed"};

QString settingsGroup()
{
    return QStringLiteral("colorPickerButtons");
}

QPushButton* newButton(const QString& text, const QString& toolTip, const char* objectName,
                       QWidget* parent)
{
    auto* const button = new QPushButton(text, parent);
    button->setToolTip(toolTip);
    button->setObjectName(QString::fromLatin1(objectName));
    button->setAutoDefault(false); // Return belongs to the dialog's own buttons
    return button;
}

} // namespace

VelaColorPickerButtonsWidget::VelaColorPickerButtonsWidget(QWidget* parent)
    : QWidget(parent)
{
    m_pageButtons = {
        newButton(tr("Display RGB Range"),
                  tr("Choose any color by hue, saturation and brightness."), "rgbButton", this),
        newButton(tr("Display White Range"), tr("Choose a white by color temperature and tint."),
                  "whiteButton", this),
        newButton(tr("Display Channel Control"), tr("Set the channels of a fixture directly."),
                  "channelButton", this)};
    m_addButton =
        newButton(tr("Add to Project Swatches"),
                  tr("Keep this color in the swatches of the project."), "addButton", this);

    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(fontMetrics().height() / 2);
    auto* const group = new QButtonGroup(this);
    for (QPushButton* const button : m_pageButtons) {
        button->setCheckable(true);
        group->addButton(button);
        row->addWidget(button);
    }
    m_pageButtons[kRgb]->setChecked(true);
    row->addStretch();
    row->addWidget(m_addButton);

    connect(m_pageButtons[kRgb], &QPushButton::clicked, this,
            &VelaColorPickerButtonsWidget::updateColorPickerDisplay);
    connect(m_pageButtons[kWhite], &QPushButton::clicked, this,
            &VelaColorPickerButtonsWidget::updateColorPickerDisplay);
    connect(m_pageButtons[kChannels], &QPushButton::clicked, this,
            &VelaColorPickerButtonsWidget::updateNChannelWidgetDisplay);
    connect(m_addButton, &QPushButton::clicked, this,
            &VelaColorPickerButtonsWidget::addToFavoritesButtonClicked);
}

VelaColorPickerButtonsWidget::~VelaColorPickerButtonsWidget()
{
    if (isVisible()) {
        writeSettings();
    }
}

void VelaColorPickerButtonsWidget::setPicker(VelaColorPicker* picker)
{
    m_picker = picker;
    connect(m_picker, &VelaColorPicker::pickerSetOnSetColor, this,
            &VelaColorPickerButtonsWidget::updatePickerButtons);
    readSettings();
}

void VelaColorPickerButtonsWidget::updateColorPickerDisplay()
{
    const int page = m_pageButtons[kWhite]->isChecked() ? kWhite : kRgb;
    updatePickerButtons(page, false);
    emit clearPreviousSelection();
}

void VelaColorPickerButtonsWidget::updateNChannelWidgetDisplay()
{
    updatePickerButtons(kChannels, true);
    emit clearPreviousSelection();
}

void VelaColorPickerButtonsWidget::addToFavoritesButtonClicked()
{
    if (m_picker != nullptr) {
        m_picker->addSelectedColorToFavorites();
    }
}

void VelaColorPickerButtonsWidget::updatePickerButtons(int selectedPickerIndex, bool enableSliders)
{
    if (selectedPickerIndex < kRgb || selectedPickerIndex > kChannels) {
        return;
    }
    m_pageButtons[static_cast<std::size_t>(selectedPickerIndex)]->setChecked(true);
    if (m_picker != nullptr) {
        m_picker->setChannelControlEnabled(enableSliders);
        m_picker->showPage(selectedPickerIndex);
    }
}

void VelaColorPickerButtonsWidget::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    if (!event->spontaneous()) {
        writeSettings();
    }
}

void VelaColorPickerButtonsWidget::readSettings()
{
    QSettings settings = pickerSettings();
    settings.beginGroup(settingsGroup());
    int page = kRgb;
    for (int i = kChannels; i >= kRgb; --i) {
        const auto* const key = kDisplayedKeys[static_cast<std::size_t>(i)];
        if (settings.value(QLatin1String(key), false).toBool()) {
            page = i;
        }
    }
    updatePickerButtons(page, page == kChannels);
}

void VelaColorPickerButtonsWidget::writeSettings() const
{
    QSettings settings = pickerSettings();
    settings.beginGroup(settingsGroup());
    for (std::size_t i = 0; i < kPages; ++i) {
        settings.setValue(QLatin1String(kDisplayedKeys[i]), m_pageButtons[i]->isChecked());
    }
}

} // namespace VelaColorPickerLib
