#include "picker/VelaColorPicker.h"

#include "picker/VelaColorPickerWidget.h"

#include <QVBoxLayout>

namespace VelaColorPickerLib {

VelaColorPicker::VelaColorPicker(QWidget* parent)
    : QWidget(parent)
    , m_widget(new VelaColorPickerWidget(this))
{
    auto* const box = new QVBoxLayout(this);
    box->setContentsMargins(0, 0, 0, 0);
    box->addWidget(m_widget);
    connect(m_widget, &VelaColorPickerWidget::mainColorChanged, this,
            &VelaColorPicker::mainColorChanged);
    connect(m_widget, &VelaColorPickerWidget::comparisonColorChanged, this,
            &VelaColorPicker::comparisonColorChanged);
    connect(m_widget, &VelaColorPickerWidget::colorAddedToFavorites, this,
            &VelaColorPicker::colorAddedToFavorites);
    connect(m_widget, &VelaColorPickerWidget::pickerSetOnSetColor, this,
            &VelaColorPicker::pickerSetOnSetColor);
    connect(m_widget, &VelaColorPickerWidget::clearPreviousSelection, this,
            &VelaColorPicker::clearPreviousSelection);
}

VelaColor VelaColorPicker::mainColor() const
{
    return m_widget->mainColor();
}

VelaColor VelaColorPicker::selectedColor() const
{
    return m_widget->selectedColor();
}

int VelaColorPicker::currentPage() const
{
    return m_widget->currentPage();
}

void VelaColorPicker::showPage(int index)
{
    m_widget->showPage(index);
}

void VelaColorPicker::setChannelControlEnabled(bool enabled)
{
    m_widget->setChannelControlEnabled(enabled);
}

void VelaColorPicker::addSelectedColorToFavorites()
{
    m_widget->onAddColorToFavorites(m_widget->selectedColor());
}

void VelaColorPicker::setProfiles(const QList<GroupProfile>& profiles)
{
    m_widget->setProfiles(profiles);
}

void VelaColorPicker::setPrimaryProfile(const GroupProfile& profile)
{
    m_widget->setPrimaryProfile(profile);
}

void VelaColorPicker::setColorAndSelectMainPreview(const VelaColor& color, const QString& uid)
{
    m_widget->setColorAndSelectMainPreview(color, uid);
}

void VelaColorPicker::setColor(const VelaColor& color, const QString& uid)
{
    m_widget->setColor(color, uid);
}

} // namespace VelaColorPickerLib
