#include "picker/ColorPickerWidget.h"

#include "color/VelaColorLibrary.h"
#include "picker/ColorTreeAndFilterWidget.h"
#include "picker/VelaColorPicker.h"
#include "picker/VelaColorPickerButtonsWidget.h"

#include <QDialogButtonBox>
#include <QFontMetrics>
#include <QMetaObject>
#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>

namespace VelaColorPickerLib {

ColorPickerWidget::ColorPickerWidget(QWidget* parent)
    : QWidget(parent)
    , m_splitter(new QSplitter(Qt::Horizontal, this))
{
    VelaColorLibrary* const library = VelaColorLibrary::instance();
    library->startForPicker();

    // In the order in which Tab goes from one to the next.
    m_buttons = new VelaColorPickerButtonsWidget(this);
    m_buttons->setObjectName(QStringLiteral("pickerButtons"));
    m_picker = new VelaColorPicker(m_splitter);
    m_picker->setObjectName(QStringLiteral("colorPicker"));
    m_tree = new ColorTreeAndFilterWidget(library, m_splitter);
    m_tree->setObjectName(QStringLiteral("colorTree"));
    m_buttons->setPicker(m_picker);
    m_dialogButtons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    m_dialogButtons->setObjectName(QStringLiteral("dialogButtonBox"));
    m_dialogButtons->button(QDialogButtonBox::Ok)->setToolTip(tr("Take the main color."));
    m_dialogButtons->button(QDialogButtonBox::Cancel)->setToolTip(tr("Leave the color as it was."));

    const int unit = fontMetrics().height() / 2;
    m_splitter->setObjectName(QStringLiteral("splitter"));
    m_splitter->setHandleWidth(2 * unit);
    m_splitter->setCollapsible(0, false);
    m_splitter->setCollapsible(1, true);
    m_splitter->setStretchFactor(0, 7);
    m_splitter->setStretchFactor(1, 3);
    m_splitter->setSizes({700, 300}); // proportions: the first resize scales them

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2 * unit);
    column->addWidget(m_buttons);
    column->addWidget(m_splitter, 1);
    column->addWidget(m_dialogButtons);

    QMetaObject::connectSlotsByName(this);
    connect(m_tree, &ColorTreeAndFilterWidget::colorItemClicked, m_picker,
            &VelaColorPicker::setColor);
    connect(m_picker, &VelaColorPicker::colorAddedToFavorites, this,
            &ColorPickerWidget::handleAddToFavorites);
    connect(m_picker, &VelaColorPicker::clearPreviousSelection, m_tree,
            &ColorTreeAndFilterWidget::clearSelection);
    connect(m_buttons, &VelaColorPickerButtonsWidget::clearPreviousSelection, m_tree,
            &ColorTreeAndFilterWidget::clearSelection);
}

VelaColor ColorPickerWidget::color() const
{
    return m_picker->mainColor();
}

void ColorPickerWidget::setColor(const VelaColor& color)
{
    m_picker->setColorAndSelectMainPreview(color, QString());
}

void ColorPickerWidget::setProfiles(const QList<GroupProfile>& profiles)
{
    m_picker->setProfiles(profiles);
}

void ColorPickerWidget::setPrimaryProfile(const GroupProfile& profile)
{
    m_picker->setPrimaryProfile(profile);
}

void ColorPickerWidget::on_colorPicker_mainColorChanged(const VelaColor& color)
{
    VelaColorLibrary::instance()->setCurrentColor(color);
    emit mainColorChanged(color);
}

void ColorPickerWidget::on_colorPicker_comparisonColorChanged(const VelaColor& color)
{
    VelaColorLibrary::instance()->setCurrentColor(color);
}

void ColorPickerWidget::handleAddToFavorites(const VelaColor& color)
{
    VelaColorLibrary::instance()->insertColor(color, VelaColorLibrary::colorText(color), QString(),
                                              VelaColorLibrary::projectListName(), QString());
}

void ColorPickerWidget::on_dialogButtonBox_accepted()
{
    emit accepted();
}

void ColorPickerWidget::on_dialogButtonBox_rejected()
{
    emit rejected();
}

} // namespace VelaColorPickerLib
