#include "color/VelaColorLibrary.h"

#include "color/BuiltInSwatches.h"
#include "color/ColorMime.h"
#include "color/Sorrel3ProjectHelper.h"
#include "color/VelaColorLibraryItem.h"
#include "color/XmlText.h"

#include <QMimeData>
#include <QScopedValueRollback>
#include <QSet>
#include <QUuid>

namespace {

constexpr char kBuiltInList[] = "Halden Swatches";

} // namespace

VelaColorLibrary::VelaColorLibrary(QObject* parent)
    : QAbstractItemModel(parent)
    , m_root(std::make_unique<VelaColorLibraryItem>())
{
    createColorList(explicitListName(), true);
    createColorList(projectListName(), false);
    list(projectListName())->setRole(kProjectRole, 1);
    m_dirty = false; // there is nothing of the user's yet
}

VelaColorLibrary::~VelaColorLibrary() = default;

VelaColorLibrary* VelaColorLibrary::instance()
{
    // Never destroyed: its thumbnails can't be once the application is gone.
    static auto* const library = new VelaColorLibrary;
    return library;
}

QString VelaColorLibrary::explicitListName()
{
    return QStringLiteral("Explicit Colors");
}

QString VelaColorLibrary::projectListName()
{
    return QStringLiteral("Project Swatches");
}

QString VelaColorLibrary::colorText(const VelaColor& color)
{
    return color.spec() == VelaColor::Nchannel ? color.channelsText() : color.name();
}

void VelaColorLibrary::startForPicker()
{
    if (m_started) {
        return;
    }
    m_started = true;
    load();
    loadPresets();
    const QString listId = uniqueListName(QLatin1String(kBuiltInList));
    createColorList(listId, false);
    for (const BuiltInSwatch& swatch : builtInSwatches()) {
        insertColor(swatch.color, swatch.name, QString(), listId, QString());
    }
}

QString VelaColorLibrary::plainName(const QString& name)
{
    constexpr int kLongestName = 1000; // nobody reads a book, and each view would lay it out
    return writableXml(name.left(kLongestName));
}

QString VelaColorLibrary::uniqueListName(const QString& name) const
{
    if (!m_lists.contains(name)) {
        return name;
    }
    for (int number = m_firstNumbers.value(name, 2);; ++number) {
        QString numbered = QStringLiteral("%1 %2").arg(name, QString::number(number));
        if (!m_lists.contains(numbered)) {
            m_firstNumbers.insert(name, number); // a file may hold thousands of one name
            return numbered;
        }
    }
}

void VelaColorLibrary::createColorList(const QString& colorListName, bool isUserList)
{
    if (m_lists.contains(colorListName)) {
        return;
    }
    const int row = m_root->childCount();
    beginInsertRows(QModelIndex(), row, row);
    auto* made = new VelaColorLibraryItem(m_root.get());
    made->setName(colorListName);
    made->setUserLibrary(isUserList);
    m_root->insertChild(row, made);
    m_lists.insert(colorListName, made);
    endInsertRows();
    listChanged(*made);
}

QString VelaColorLibrary::insertColor(const VelaColor& color, const QString& name,
                                      const QString& originatingPreset, const QString& listId,
                                      const QString& colorId)
{
    createColorList(listId, true);
    const int row = list(listId)->childCount();
    return addColor(row, QString(), name, color, originatingPreset, listId, colorId)->uid();
}

void VelaColorLibrary::handleInsertColor(const QString& uid, const QString& name,
                                         const QString& valueString,
                                         const QString& originatingPreset, const QString& listId,
                                         const QString& colorId)
{
    createColorList(listId, true);
    const VelaColor color(valueString);
    // Empty is how a swatch without a colour is kept.
    if (m_loading && !color.isValid() && !valueString.isEmpty()) {
        m_misread.append({name, valueString});
    }
    addColor(list(listId)->childCount(), uid, name, color, originatingPreset, listId, colorId);
}

VelaColorLibraryItem* VelaColorLibrary::addColor(int row, const QString& uid, const QString& name,
                                                 const VelaColor& color,
                                                 const QString& originatingPreset,
                                                 const QString& listId, const QString& colorId)
{
    VelaColorLibraryItem* const owner = list(listId);
    QModelIndex ownerIndex = indexOf(owner);
    beginInsertRows(ownerIndex, row, row);
    auto* made = new VelaColorLibraryItem(owner);
    made->setUid(newUid(writableXml(uid)));
    made->setName(plainName(name));
    made->setColor(color);
    made->setOriginatingPreset(plainName(originatingPreset));
    made->setColorId(plainName(colorId));
    owner->insertChild(row, made);
    m_colors.insert(made->uid(), made);
    endInsertRows();
    emit addedColorToList(ownerIndex);
    listChanged(*owner);
    return made;
}

/// `wanted`, unless it is empty or another swatch has it.
QString VelaColorLibrary::newUid(const QString& wanted) const
{
    return wanted.isEmpty() || m_colors.contains(wanted)
               ? QUuid::createUuid().toString(QUuid::WithoutBraces)
               : wanted;
}

VelaColor VelaColorLibrary::colorForUid(const QString& uid)
{
    if (uid.isEmpty()) {
        return m_currentColor;
    }
    const VelaColor asText(uid);
    const VelaColorLibraryItem* const known = m_colors.value(uid, nullptr);
    if (known != nullptr && !asText.isValid()) {
        return known->color();
    }
    createColorList(explicitListName(), true);
    const VelaColorLibraryItem* const explicitList = list(explicitListName());
    for (int row = 0; row < explicitList->childCount(); ++row) {
        if (explicitList->child(row)->color() == asText) {
            return asText; // once is enough
        }
    }
    if (asText.isValid()) {
        insertColor(asText, colorText(asText), QString(), explicitListName(), QString());
    }
    return asText;
}

void VelaColorLibrary::listChanged(const VelaColorLibraryItem& list)
{
    if (m_loading) {
        return;
    }
    // A copy: a listener may rename or remove the list.
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
    const QString listId = list.name();
    emit changed(listId);
    onColorLibraryListChanged(listId);
}

void VelaColorLibrary::onColorLibraryListChanged(const QString& listId)
{
    const VelaColorLibraryItem* const changedList = list(listId);
    if (m_loading || (changedList != nullptr && !changedList->isUserLibrary())) {
        return;
    }
    m_dirty = true;
    save();
}

VelaColorLibraryItem* VelaColorLibrary::list(const QString& listId) const
{
    return m_lists.value(listId, nullptr);
}

QModelIndex VelaColorLibrary::listIndex(const QString& listId) const
{
    VelaColorLibraryItem* const found = list(listId);
    return found != nullptr ? indexOf(found) : QModelIndex();
}

QModelIndex VelaColorLibrary::indexOf(VelaColorLibraryItem* item) const
{
    return item == m_root.get() ? QModelIndex() : createIndex(item->row(), SwatchColumn, item);
}

VelaColorLibraryItem* VelaColorLibrary::itemAt(const QModelIndex& index) const
{
    return index.isValid() && index.model() == this
               ? static_cast<VelaColorLibraryItem*>(index.internalPointer())
               : nullptr;
}

QModelIndex VelaColorLibrary::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent)) {
        return {};
    }
    const VelaColorLibraryItem* const owner = parent.isValid() ? itemAt(parent) : m_root.get();
    return createIndex(row, column, owner->child(row));
}

QModelIndex VelaColorLibrary::parent(const QModelIndex& child) const
{
    const VelaColorLibraryItem* const item = itemAt(child);
    return item != nullptr ? indexOf(item->parentItem()) : QModelIndex();
}

int VelaColorLibrary::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid()) {
        return m_root->childCount();
    }
    return parent.column() == SwatchColumn ? itemAt(parent)->childCount() : 0;
}

int VelaColorLibrary::columnCount(const QModelIndex& /*parent*/) const
{
    return ColumnCount;
}

QVariant VelaColorLibrary::data(const QModelIndex& index, int role) const
{
    const VelaColorLibraryItem* const item = itemAt(index);
    if (item == nullptr) {
        return {};
    }
    if (role == Qt::DisplayRole || role == Qt::EditRole) {
        return index.column() == SwatchColumn ? item->name() : item->colorId();
    }
    if (role == Qt::ToolTipRole) {
        return item->isColor() ? QVariant(colorText(item->color())) : QVariant();
    }
    return index.column() == SwatchColumn ? item->role(role) : QVariant();
}

bool VelaColorLibrary::setData(const QModelIndex& index, const QVariant& value, int role)
{
    VelaColorLibraryItem* const item = itemAt(index);
    if (item == nullptr || index.column() != SwatchColumn) {
        return false;
    }
    if (role != Qt::EditRole) {
        item->setRole(role, value);
        emit dataChanged(index, index, {role});
        return true;
    }
    const QString name = plainName(value.toString());
    if (name.isEmpty() || (flags(index) & Qt::ItemIsEditable) == 0) {
        return false;
    }
    if (item->isList() && name != item->name()) {
        const QString listId = uniqueListName(name);
        m_lists.remove(item->name());
        m_firstNumbers.clear();
        item->setName(listId);
        m_lists.insert(listId, item);
    } else {
        item->setName(name);
    }
    emit dataChanged(index, index, {Qt::DisplayRole, Qt::EditRole});
    listChanged(item->isList() ? *item : *item->parentItem());
    return true;
}

QVariant VelaColorLibrary::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    switch (section) {
    case SwatchColumn:
        return tr("Swatches");
    case ColorIdColumn:
        return tr("Color ID");
    default:
        return {};
    }
}

Qt::ItemFlags VelaColorLibrary::flags(const QModelIndex& index) const
{
    const VelaColorLibraryItem* const item = itemAt(index);
    if (item == nullptr) {
        return Qt::NoItemFlags;
    }
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDropEnabled;
    const VelaColorLibraryItem* const owner = item->isList() ? item : item->parentItem();
    bool isEditable = owner->isUserLibrary();
    if (item->isColor()) {
        flags |= Qt::ItemIsDragEnabled | Qt::ItemNeverHasChildren;
        isEditable = isEditable || owner->name() == projectListName();
    }
    if (isEditable && index.column() == SwatchColumn) {
        flags |= Qt::ItemIsEditable;
    }
    return flags;
}

bool VelaColorLibrary::removeRows(int row, int count, const QModelIndex& parent)
{
    VelaColorLibraryItem* const owner = parent.isValid() ? itemAt(parent) : m_root.get();
    if (owner == nullptr || row < 0 || count <= 0 || row > owner->childCount() - count) {
        return false;
    }
    if (owner == m_root.get()) {
        for (int i = row; i < row + count; ++i) {
            if (owner->child(i)->name() == projectListName()) {
                return false; // the show's
            }
        }
    }
    beginRemoveRows(parent, row, row + count - 1);
    bool isUsers = owner->isList();
    for (int i = 0; i < count; ++i) {
        const std::unique_ptr<VelaColorLibraryItem> taken(owner->takeChild(row));
        isUsers = isUsers || taken->isUserLibrary();
        forget(*taken);
    }
    endRemoveRows();
    if (owner->isList()) {
        listChanged(*owner);
    } else if (isUsers && !m_loading) {
        emit changed(QString());
        onColorLibraryListChanged(QString());
    }
    return true;
}

void VelaColorLibrary::forget(const VelaColorLibraryItem& item)
{
    if (item.isList()) {
        m_lists.remove(item.name());
        m_firstNumbers.clear();
    } else {
        m_colors.remove(item.uid());
    }
    for (int i = 0; i < item.childCount(); ++i) {
        forget(*item.child(i));
    }
}

QStringList VelaColorLibrary::mimeTypes() const
{
    return ColorMime::formats();
}

QMimeData* VelaColorLibrary::mimeData(const QModelIndexList& indexes) const
{
    QVector<ColorMime::Swatch> swatches;
    QSet<const VelaColorLibraryItem*> taken; // a view gives each column
    for (const QModelIndex& index : indexes) {
        const VelaColorLibraryItem* const item = itemAt(index);
        if (item != nullptr && item->isColor() && !taken.contains(item)) {
            taken.insert(item);
            swatches.append(
                {item->color(), item->name(), item->colorId(), item->originatingPreset()});
        }
    }
    auto data = std::make_unique<QMimeData>();
    ColorMime::writeColors(data.get(), swatches);
    return data->formats().isEmpty() ? nullptr : data.release();
}

bool VelaColorLibrary::canDropMimeData(const QMimeData* data, Qt::DropAction action, int /*row*/,
                                       int /*column*/, const QModelIndex& parent) const
{
    const VelaColorLibraryItem* const target = itemAt(parent);
    if (target == nullptr || action != Qt::CopyAction || !ColorMime::readColor(data, nullptr)) {
        return false;
    }
    const VelaColorLibraryItem* const owner = target->isList() ? target : target->parentItem();
    return owner->isUserLibrary() || owner->name() == projectListName(); // others aren't kept
}

bool VelaColorLibrary::dropMimeData(const QMimeData* data, Qt::DropAction action, int row,
                                    int column, const QModelIndex& parent)
{
    if (!canDropMimeData(data, action, row, column, parent)) {
        return false;
    }
    const QVector<ColorMime::Swatch> swatches = ColorMime::readColors(data);
    if (swatches.isEmpty()) {
        return false;
    }
    const VelaColorLibraryItem* const target = itemAt(parent);
    const VelaColorLibraryItem* const owner = target->isList() ? target : target->parentItem();
    int place = owner->childCount();
    if (target->isColor()) {
        place = target->row() + 1;
    } else if (row >= 0) {
        place = std::min(row, place);
    }
    {
        const QScopedValueRollback<bool> quiet(m_loading, true); // one change, so one save
        for (const ColorMime::Swatch& swatch : swatches) {
            addColor(place++, QString(),
                     swatch.name.isEmpty() ? colorText(swatch.color) : swatch.name, swatch.color,
                     swatch.originatingPreset, owner->name(), swatch.colorId);
        }
    }
    listChanged(*owner);
    return true;
}
