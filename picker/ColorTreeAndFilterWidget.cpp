#include "picker/ColorTreeAndFilterWidget.h"

#include "color/VelaColorLibrary.h"
#include "picker/FilterBox.h"
#include "picker/PickerSettings.h"
#include "picker/VelaColorLibraryTreeView.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QFontMetrics>
#include <QHideEvent>
#include <QPushButton>
#include <QShowEvent>
#include <QVBoxLayout>

namespace VelaColorPickerLib {

namespace {

QString folderKey()
{
    return QStringLiteral("colorPickerExportDir");
}

QString fileFilter()
{
    return QStringLiteral("Vela Color Files (*.velacolors);;All Files (*.* *)");
}

QString savedFolder()
{
    return pickerSettings().value(folderKey(), QString()).toString();
}

void saveFolderOf(const QString& path)
{
    QSettings settings = pickerSettings();
    settings.setValue(folderKey(), QFileInfo(path).absolutePath());
}

QPushButton* newButton(const QString& text, const QString& toolTip, const char* objectName,
                       QWidget* parent)
{
    auto* const button = new QPushButton(text, parent);
    button->setToolTip(toolTip);
    button->setObjectName(QString::fromLatin1(objectName));
    button->setAutoDefault(false);
    return button;
}

} // namespace

ColorTreeAndFilterWidget::ColorTreeAndFilterWidget(VelaColorLibrary* library, QWidget* parent)
    : QWidget(parent)
    , m_library(library)
    , m_filterBox(new VelaWidgetsLib::FilterBox(this))
    , m_tree(new VelaColorLibraryTreeView(this))
    , m_newButton(newButton(tr("Create New User Group"), tr("Create a new User Group."),
                            "newGroupButton", this))
    , m_importButton(newButton(tr("Import Group..."),
                               tr("Import swatches from a file to a new User Group."),
                               "importButton", this))
    , m_exportButton(newButton(tr("Export Swatches..."), tr("Export selected swatches to a file."),
                               "exportButton", this))
{
    m_filterBox->setObjectName(QStringLiteral("filterBox"));
    m_filterBox->setToolTip(tr("Show only the swatches whose name or color ID holds this text."));
    m_tree->setObjectName(QStringLiteral("tree"));
    m_tree->setLibrary(m_library);
    m_exportButton->setEnabled(false);

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(fontMetrics().height() / 2);
    column->addWidget(m_filterBox);
    column->addWidget(m_tree, 1);
    column->addWidget(m_newButton);
    column->addWidget(m_importButton);
    column->addWidget(m_exportButton);

    connect(m_filterBox, &QLineEdit::textChanged, this,
            &ColorTreeAndFilterWidget::handleFilterChanged);
    connect(m_filterBox, &VelaWidgetsLib::FilterBox::showed, this,
            &ColorTreeAndFilterWidget::reloadSavedFilter);
    connect(m_tree, &VelaColorLibraryTreeView::filterText, this,
            &ColorTreeAndFilterWidget::takeTypedText);
    connect(m_tree, &VelaColorLibraryTreeView::colorItemClicked, this,
            &ColorTreeAndFilterWidget::colorItemClicked);
    connect(m_tree, &VelaColorLibraryTreeView::selectionChangedSignal, this,
            &ColorTreeAndFilterWidget::handleSelectionChanged);
    connect(m_tree, &VelaColorLibraryTreeView::exportRequested, this,
            &ColorTreeAndFilterWidget::handleExportSwatchesButtonClicked);
    connect(m_newButton, &QPushButton::clicked, this,
            &ColorTreeAndFilterWidget::handleNewGroupButtonClicked);
    connect(m_importButton, &QPushButton::clicked, this,
            &ColorTreeAndFilterWidget::handleLoadGroupFromFile);
    connect(m_exportButton, &QPushButton::clicked, this,
            &ColorTreeAndFilterWidget::handleExportSwatchesButtonClicked);
}

ColorTreeAndFilterWidget::~ColorTreeAndFilterWidget()
{
    if (isVisible()) {
        m_tree->writeOpenLists();
    }
}

void ColorTreeAndFilterWidget::clearSelection()
{
    m_tree->clearSelection();
}

void ColorTreeAndFilterWidget::handleNewGroupButtonClicked()
{
    m_filterBox->clear(); // the new list may not match
    const QString name = m_library->uniqueListName(tr("New Color Group"));
    m_library->createColorList(name, true);
    m_tree->renameItem(m_library->listIndex(name));
}

void ColorTreeAndFilterWidget::handleLoadGroupFromFile()
{
    const QString path = QFileDialog::getOpenFileName(this, tr("Load Color Group From File"),
                                                      savedFolder(), fileFilter());
    if (path.isEmpty()) {
        return;
    }
    saveFolderOf(path);
    m_library->importFile(path);
}

void ColorTreeAndFilterWidget::handleExportSwatchesButtonClicked()
{
    const QModelIndexList items = m_tree->selectedItems();
    if (items.isEmpty()) {
        return;
    }
    QFileDialog dialog(this, tr("Export Colors to a File"), savedFolder(), fileFilter());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("velacolors"));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return;
    }
    const QString path = dialog.selectedFiles().first();
    saveFolderOf(path);
    m_library->exportColors(items, path);
}

void ColorTreeAndFilterWidget::handleSelectionChanged(const QItemSelection& /*selected*/,
                                                      const QItemSelection& /*deselected*/)
{
    m_exportButton->setEnabled(m_tree->selectionModel()->hasSelection());
}

void ColorTreeAndFilterWidget::handleFilterChanged(const QString& text)
{
    m_savedFilter = text;
    m_tree->setFilter(text);
}

void ColorTreeAndFilterWidget::reloadSavedFilter()
{
    m_filterBox->setText(m_savedFilter);
    m_tree->setFilter(m_savedFilter);
}

void ColorTreeAndFilterWidget::takeTypedText(const QString& text)
{
    m_filterBox->setFocus(Qt::OtherFocusReason);
    m_filterBox->end(false);
    m_filterBox->insert(text);
}

void ColorTreeAndFilterWidget::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous()) {
        m_tree->readOpenLists();
    }
}

void ColorTreeAndFilterWidget::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    if (!event->spontaneous()) {
        m_tree->writeOpenLists();
    }
}

} // namespace VelaColorPickerLib
