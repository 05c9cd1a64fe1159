#include "picker/VelaColorLibraryTreeView.h"

#include "color/VelaColorLibrary.h"
#include "color/VelaColorLibraryItem.h"
#include "picker/PickerSettings.h"
#include "picker/SwatchFilterModel.h"
#include "picker/SwatchPainter.h"
#include "picker/VelaColorLibraryTreeViewDelegate.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDrag>
#include <QFontMetrics>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QSet>

#include <algorithm>
#include <iterator>
#include <memory>

namespace VelaColorPickerLib {

namespace {

QModelIndex listOf(const QModelIndex& item)
{
    return item.parent().isValid() ? item.parent() : item;
}

/// Of the library's indexes: each list in front of its swatches.
bool isAbove(const QModelIndex& a, const QModelIndex& b)
{
    const int aList = listOf(a).row();
    const int bList = listOf(b).row();
    if (aList != bList) {
        return aList < bList;
    }
    return a.parent().isValid() == b.parent().isValid() ? a.row() < b.row() : b.parent().isValid();
}

QString settingsKey(const QModelIndex& list)
{
    return list.data().toString() + QStringLiteral("_expanded");
}

} // namespace

VelaColorLibraryTreeView::VelaColorLibraryTreeView(QWidget* parent)
    : QTreeView(parent)
    , m_filter(new SwatchFilterModel(this))
{
    setItemDelegate(new VelaColorLibraryTreeViewDelegate(this));
    setUniformRowHeights(true);
    setIndentation(fontMetrics().height() * 3 / 4);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::EditKeyPressed);
    setDragDropMode(QAbstractItemView::DragDrop);
    setDefaultDropAction(Qt::CopyAction);
    setAccessibleName(tr("Swatches"));
    setToolTip(tr("Click a swatch to take its color, or drag it to another place. What you type "
                  "filters the list."));
    connect(this, &QTreeView::clicked, this, &VelaColorLibraryTreeView::handleClicked);
    connect(this, &QTreeView::doubleClicked, this, &VelaColorLibraryTreeView::handleDoubleClicked);
}

void VelaColorLibraryTreeView::setLibrary(VelaColorLibrary* library)
{
    m_library = library;
    m_filter->setSourceModel(library);
    if (model() != m_filter) {
        setModel(m_filter);
    }
    header()->setStretchLastSection(false);
    header()->setTextElideMode(Qt::ElideRight);
    header()->setSectionResizeMode(0, QHeaderView::Stretch);
    header()->setSectionResizeMode(1, QHeaderView::Interactive);
    header()->setMinimumSectionSize(fontMetrics().height());
    fitColumns();
    spanLists(0, m_filter->rowCount() - 1);
    readOpenLists();
}

/// Names come first: ids have a narrow column, and none of a list's row.
void VelaColorLibraryTreeView::fitColumns()
{
    if (model() != nullptr) {
        const int id = header()->sectionSizeHint(1);
        header()->resizeSection(1, std::min(id, viewport()->width() * 3 / 10));
    }
}

void VelaColorLibraryTreeView::spanLists(int first, int last)
{
    for (int row = first; row <= last; ++row) {
        setFirstColumnSpanned(row, QModelIndex(), true);
    }
}

void VelaColorLibraryTreeView::rowsInserted(const QModelIndex& parent, int start, int end)
{
    QTreeView::rowsInserted(parent, start, end);
    if (!parent.isValid()) {
        spanLists(start, end);
    }
}

void VelaColorLibraryTreeView::reset()
{
    QTreeView::reset();
    if (model() != nullptr) {
        spanLists(0, model()->rowCount() - 1);
    }
}

void VelaColorLibraryTreeView::resizeEvent(QResizeEvent* event)
{
    QTreeView::resizeEvent(event);
    fitColumns();
}

QModelIndex VelaColorLibraryTreeView::toLibrary(const QModelIndex& index) const
{
    return m_filter->mapToSource(index).siblingAtColumn(0);
}

QModelIndex VelaColorLibraryTreeView::fromLibrary(const QModelIndex& index) const
{
    return m_filter->mapFromSource(index);
}

VelaColorLibraryItem* VelaColorLibraryTreeView::itemAt(const QModelIndex& index) const
{
    return index.isValid() ? m_library->itemAt(toLibrary(index)) : nullptr;
}

bool VelaColorLibraryTreeView::isColor(const QModelIndex& index)
{
    return index.parent().isValid();
}

// --- Filter and open lists

void VelaColorLibraryTreeView::setFilter(const QString& text)
{
    const bool before = !m_filter->text().isEmpty();
    const bool after = !text.isEmpty();
    if (after && !before) {
        m_openBefore = openLists();
    }
    m_filter->setText(text);
    if (after) {
        expandAll();
    } else if (before) {
        collapseAll();
        for (const QPersistentModelIndex& list : qAsConst(m_openBefore)) {
            expand(fromLibrary(list));
        }
        m_openBefore.clear();
        scrollTo(currentIndex());
    }
}

QList<QPersistentModelIndex> VelaColorLibraryTreeView::openLists() const
{
    if (!m_filter->text().isEmpty()) {
        return m_openBefore;
    }
    QList<QPersistentModelIndex> open;
    for (int row = 0; row < m_filter->rowCount(); ++row) {
        const QModelIndex list = m_filter->index(row, 0);
        if (isExpanded(list)) {
            open.append(toLibrary(list));
        }
    }
    return open;
}

bool VelaColorLibraryTreeView::isOpenBySettings(const QModelIndex& list) const
{
    const QSettings settings = pickerSettings();
    const bool byDefault = !m_library->itemAt(list)->isUserLibrary();
    return settings.value(settingsKey(list), byDefault).toBool();
}

void VelaColorLibraryTreeView::readOpenLists()
{
    if (m_library == nullptr || !m_filter->text().isEmpty()) {
        return;
    }
    for (int row = 0; row < m_filter->rowCount(); ++row) {
        const QModelIndex list = m_filter->index(row, 0);
        setExpanded(list, isOpenBySettings(toLibrary(list)));
    }
}

void VelaColorLibraryTreeView::writeOpenLists() const
{
    if (m_library == nullptr) {
        return;
    }
    const QList<QPersistentModelIndex> open = openLists();
    QSettings settings = pickerSettings();
    for (int row = 0; row < m_library->rowCount(); ++row) {
        const QModelIndex list = m_library->index(row, 0);
        settings.setValue(settingsKey(list), open.contains(list));
    }
}

// --- Selection

QModelIndexList VelaColorLibraryTreeView::selectedItems() const
{
    QModelIndexList items;
    const QModelIndexList rows = selectionModel()->selectedRows();
    for (const QModelIndex& row : rows) {
        items.append(toLibrary(row));
    }
    return items;
}

QModelIndexList VelaColorLibraryTreeView::selectedColors() const
{
    QModelIndexList colors = selectedItems();
    colors.erase(std::remove_if(colors.begin(), colors.end(),
                                [](const QModelIndex& item) { return !isColor(item); }),
                 colors.end());
    std::sort(colors.begin(), colors.end(), isAbove);
    return colors;
}

void VelaColorLibraryTreeView::showItem(const QModelIndex& index)
{
    const QModelIndex row = fromLibrary(index);
    if (!row.isValid()) {
        return;
    }
    setCurrentIndex(row);
    scrollTo(row);
}

void VelaColorLibraryTreeView::renameItem(const QModelIndex& index)
{
    showItem(index);
    renameCurrent();
}

void VelaColorLibraryTreeView::selectionChanged(const QItemSelection& selected,
                                                const QItemSelection& deselected)
{
    QTreeView::selectionChanged(selected, deselected);
    emit selectionChangedSignal(selected, deselected);
}

void VelaColorLibraryTreeView::choose(const QModelIndex& index)
{
    const VelaColorLibraryItem* const item = itemAt(index);
    if (item != nullptr && isColor(index)) {
        emit colorItemClicked(item->color(), item->uid());
    }
}

void VelaColorLibraryTreeView::handleClicked(const QModelIndex& index)
{
    // With these keys a click gathers swatches, for an export or a drag.
    if ((m_pressModifiers & (Qt::ControlModifier | Qt::ShiftModifier)) == 0) {
        choose(index);
    }
}

void VelaColorLibraryTreeView::handleDoubleClicked(const QModelIndex& index)
{
    if (isColor(index)) {
        const std::unique_ptr<QMimeData> mime(m_library->mimeData({toLibrary(index)}));
        if (mime != nullptr) {
            emit doubleClickedOnWidget(*mime);
        }
    }
}

// --- Keys

void VelaColorLibraryTreeView::keyboardSearch(const QString& search)
{
    emit filterText(search);
}

void VelaColorLibraryTreeView::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy)) {
        copySelected();
        return;
    }
    if (event->matches(QKeySequence::Paste)) {
        paste();
        return;
    }
    switch (event->key()) {
    case Qt::Key_Delete:
        if (state() != QAbstractItemView::EditingState) {
            deleteItems(selectedColors()); // a whole list goes by the menu alone
            return;
        }
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        if (state() != QAbstractItemView::EditingState && isColor(currentIndex())) {
            choose(currentIndex());
            return;
        }
        break;
    default:
        break;
    }
    QTreeView::keyPressEvent(event);
}

// --- Context menu

void VelaColorLibraryTreeView::contextMenuEvent(QContextMenuEvent* event)
{
    QModelIndex index = indexAt(event->pos());
    if (event->reason() == QContextMenuEvent::Keyboard) {
        index = currentIndex();
    }
    if (!index.isValid()) {
        return;
    }
    QMenu menu(this);
    fillMenu(&menu, index.siblingAtColumn(0));
    menu.exec(event->reason() == QContextMenuEvent::Keyboard
                  ? viewport()->mapToGlobal(visualRect(index).center())
                  : event->globalPos());
}

void VelaColorLibraryTreeView::fillMenu(QMenu* menu, const QModelIndex& index)
{
    const QModelIndex item = toLibrary(index);
    const bool ofProject = item.data(VelaColorLibrary::kProjectRole).toInt() == 1;
    if (!ofProject) { // the show's own list keeps its name and its place
        QAction* const rename = menu->addAction(tr("Rename"));
        rename->setEnabled((item.flags() & Qt::ItemIsEditable) != 0);
        // Once the menu is gone: it would take the focus from the name's editor, and so end it.
        connect(rename, &QAction::triggered, this, &VelaColorLibraryTreeView::renameCurrent,
                Qt::QueuedConnection);
        QAction* const remove = menu->addAction(tr("Delete"));
        remove->setEnabled(canDelete(item));
        connect(remove, &QAction::triggered, this, &VelaColorLibraryTreeView::deleteSelected);
    }
    connect(menu->addAction(tr("Export...")), &QAction::triggered, this,
            &VelaColorLibraryTreeView::exportRequested);
    QAction* const copy = menu->addAction(tr("Copy"));
    copy->setEnabled(!selectedColors().isEmpty());
    connect(copy, &QAction::triggered, this, &VelaColorLibraryTreeView::copySelected);
    QAction* const paste = menu->addAction(tr("Paste"));
    paste->setEnabled(m_library->canDropMimeData(QApplication::clipboard()->mimeData(),
                                                 Qt::CopyAction, -1, -1, listOf(item)));
    connect(paste, &QAction::triggered, this, &VelaColorLibraryTreeView::paste);
}

void VelaColorLibraryTreeView::renameCurrent()
{
    if ((currentIndex().flags() & Qt::ItemIsEditable) != 0) {
        edit(currentIndex().siblingAtColumn(0));
    }
}

void VelaColorLibraryTreeView::copySelected()
{
    std::unique_ptr<QMimeData> mime(m_library->mimeData(selectedColors()));
    if (mime != nullptr) {
        QApplication::clipboard()->setMimeData(mime.release());
    }
}

void VelaColorLibraryTreeView::paste()
{
    const QModelIndex list = listOf(toLibrary(currentIndex()));
    const QMimeData* const mime = QApplication::clipboard()->mimeData();
    if (list.isValid() && mime != nullptr) {
        m_library->dropMimeData(mime, Qt::CopyAction, -1, -1, list);
    }
}

bool VelaColorLibraryTreeView::canDelete(const QModelIndex& item)
{
    return (item.flags() & Qt::ItemIsEditable) != 0;
}

void VelaColorLibraryTreeView::deleteSelected()
{
    deleteItems(selectedItems());
}

void VelaColorLibraryTreeView::deleteItems(const QModelIndexList& items)
{
    QModelIndexList doomed;
    std::copy_if(items.begin(), items.end(), std::back_inserter(doomed), canDelete);
    QSet<QModelIndex> lists;
    for (const QModelIndex& item : qAsConst(doomed)) {
        if (!isColor(item)) {
            lists.insert(item);
        }
    }
    doomed.erase(std::remove_if(doomed.begin(), doomed.end(),
                                [&lists](const QModelIndex& item) {
                                    return lists.contains(item.parent()); // goes with it
                                }),
                 doomed.end());
    // From the end, so that what is left keeps its rows; a run at once, for each removal is saved.
    std::sort(doomed.begin(), doomed.end(), isAbove);
    while (!doomed.isEmpty()) {
        const QModelIndex last = doomed.takeLast();
        int first = last.row();
        while (!doomed.isEmpty() && doomed.last() == last.siblingAtRow(first - 1)) {
            doomed.removeLast();
            --first;
        }
        m_library->removeRows(first, last.row() - first + 1, last.parent());
    }
}

// --- Drag

void VelaColorLibraryTreeView::mousePressEvent(QMouseEvent* event)
{
    m_pressPos = event->pos();
    m_pressModifiers = event->modifiers();
    m_pressed = event->button() == Qt::LeftButton ? indexAt(event->pos()) : QModelIndex();
    QTreeView::mousePressEvent(event);
}

void VelaColorLibraryTreeView::mouseMoveEvent(QMouseEvent* event)
{
    if (!isColor(m_pressed)) {
        QTreeView::mouseMoveEvent(event);
        return;
    }
    const int distance = (event->pos() - m_pressPos).manhattanLength();
    if ((event->buttons() & Qt::LeftButton) != 0 && distance >= QApplication::startDragDistance()) {
        const QModelIndex pressed = m_pressed;
        m_pressed = QModelIndex();
        drag(pressed);
    }
}

void VelaColorLibraryTreeView::mouseReleaseEvent(QMouseEvent* event)
{
    m_pressed = QModelIndex();
    QTreeView::mouseReleaseEvent(event);
}

void VelaColorLibraryTreeView::drag(const QModelIndex& index)
{
    const VelaColorLibraryItem* const item = itemAt(index);
    const QModelIndex pressed = toLibrary(index);
    QModelIndexList colors = selectedColors();
    if (colors.removeOne(pressed)) {
        colors.prepend(pressed); // what takes one colour takes the one that the drag shows
    } else {
        colors = {pressed};
    }
    std::unique_ptr<QMimeData> mime(m_library->mimeData(colors));
    if (mime == nullptr) {
        return;
    }
    const int side = 2 * fontMetrics().height();
    auto* const drag = new QDrag(this);
    drag->setMimeData(mime.release());
    drag->setPixmap(swatchPixmap(item->color(), QSize(side, side), devicePixelRatioF()));
    drag->exec(Qt::CopyAction);
}

void VelaColorLibraryTreeView::paintEvent(QPaintEvent* event)
{
    QTreeView::paintEvent(event);
    if (model() != nullptr && model()->rowCount() > 0) {
        return;
    }
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::Disabled, QPalette::Text));
    const int room = fontMetrics().height();
    painter.drawText(viewport()->rect().adjusted(room, room, -room, -room),
                     Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap,
                     m_filter->text().isEmpty() ? tr("No swatches yet.")
                                                : tr("No swatch matches the filter."));
}

} // namespace VelaColorPickerLib
