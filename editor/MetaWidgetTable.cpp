#include "color/Numeric.h"
#include "editor/EffectTable.h"
#include "editor/MetaWidget.h"
#include "editor/SortingPause.h"
#include "editor/StateIcons.h"
#include "editor/TypeBox.h"
#include "engine/EffectFactory.h"
#include "engine/MetaEffect.h"
#include "map/Group.h"
#include "map/MapModel.h"

#include <QComboBox>
#include <QItemSelectionModel>
#include <QSignalBlocker>
#include <QStringListModel>
#include <QTableWidgetItem>

#include <algorithm>

namespace {

constexpr double kMsPerSecond = 1000.0;

QTableWidgetItem* makeItem(const QVariant& value, Qt::Alignment alignment, bool isEditable = false)
{
    auto* item = new QTableWidgetItem;
    item->setData(Qt::EditRole, value);
    item->setTextAlignment(alignment | Qt::AlignVCenter);
    Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    flags.setFlag(Qt::ItemIsEditable, isEditable);
    item->setFlags(flags);
    return item;
}

/// An item that is given the icon it has counts as changed, and is looked up and painted.
void showIcon(QTableWidgetItem* item, const QIcon& icon)
{
    if (item->icon().cacheKey() != icon.cacheKey()) {
        item->setIcon(icon);
    }
}

/// Numbers sort as numbers. An item that was typed into holds a text, which would count as equal
/// and stay.
void showNumber(QTableWidgetItem* item, const QVariant& number)
{
    if (item->data(Qt::EditRole).userType() != number.userType()) {
        item->setData(Qt::EditRole, QVariant());
    }
    item->setData(Qt::EditRole, number);
}

QString seconds(quint32 ms)
{
    return QString::number(ms / kMsPerSecond, 'g', 6);
}

/// Milliseconds of a text in seconds, `offset` milliseconds earlier; never below 0, and 0 for a
/// text that is no number.
quint32 milliseconds(const QString& text, double offset = 0.0)
{
    bool ok = false;
    const double time = text.toDouble(&ok) * kMsPerSecond - offset;
    return ok ? truncU32(std::max(0.0, time)) : 0;
}

const QIcon& startIcon(const Effect& effect)
{
    return effect.startType() == Effect::StartLinked ? StateIcons::ICON_LINK()
                                                     : StateIcons::ICON_NONE();
}

const QIcon& endIcon(const Effect& effect)
{
    switch (effect.endType()) {
    case Effect::EndLinked:
        return StateIcons::ICON_LINK();
    case Effect::EndCycles:
        return StateIcons::ICON_CYCLE();
    default:
        return StateIcons::ICON_NONE();
    }
}

bool isWhite(const QString& type)
{
    return type == QLatin1String("White Fixed Color") || type == QLatin1String("White Cross Fade");
}

} // namespace

QString MetaWidget::groupName(const Effect& effect) const
{
    const Group* const group = m_model->group(effect.gid());
    return group != nullptr ? group->name() : tr("None");
}

void MetaWidget::rebuildTable()
{
    {
        const QSignalBlocker blocker(m_table);
        m_table->setSortingEnabled(false);
        const QList<Effect*> effects =
            m_metaEffect != nullptr ? m_metaEffect->effectList() : QList<Effect*>();
        dropTableRows(effects.size());
        addTableRows(effects);
        m_table->sortItems(-1, Qt::AscendingOrder); // the show's order, until a header is clicked
        m_table->setSortingEnabled(true);
    }
    handleSelectionChanged();
    if (m_metaEffect != nullptr) {
        m_metaEffect->setBegin(0);
        m_metaEffect->updateEndTime();
    }
}

/// Empties the table, but for the boxes of up to `kept` rows that are filled in anew at once: to
/// make a box, and to destroy it, is most of what a row costs.
void MetaWidget::dropTableRows(int kept)
{
    m_rows.clear();
    if (m_table->isEditing()) {
        kept = 0; // what is being typed must not go to another effect
    }
    m_table->selectionModel()->clear();
    m_table->setRowCount(std::min(kept, m_table->rowCount()));
    m_table->scrollToTop();
}

/// Fills in rows behind those of `m_rows`, all at once: the table lays out every box that it has
/// whenever its number of rows changes. Sorting is off and the table's signals are blocked.
void MetaWidget::addTableRows(const QList<Effect*>& effects)
{
    int index = m_rows.size();
    m_table->setRowCount(index + effects.size());
    m_rows.reserve(index + effects.size());
    for (Effect* const effect : effects) {
        fillTableRow(index++, effect, groupName(*effect));
    }
}

void MetaWidget::fillTableRow(int index, Effect* effect, const QString& groupName)
{
    // Filled in ahead of the table, which looks for an item of its own on each change.
    Row row;
    row.effect = effect;
    row.name = makeItem(effect->name(), Qt::AlignLeft, true);
    row.name->setIcon(StateIcons::ICON_OPEN());
    row.type = makeItem(effect->type(), Qt::AlignLeft);
    row.group = makeItem(groupName, Qt::AlignLeft);
    row.start = makeItem(0.0, Qt::AlignRight, true);
    row.end = makeItem(0.0, Qt::AlignRight, true);
    row.eid = makeItem(QString::number(effect->eid()), Qt::AlignRight);
    row.running = makeItem(QStringLiteral("0"), Qt::AlignRight);
    row.typeBox = typeBoxAt(index);
    offerTypes(row.typeBox, *effect);
    showTimes(row);

    m_table->setItem(index, NameColumn, row.name);
    m_table->setItem(index, TypeColumn, row.type);
    m_table->setItem(index, GroupColumn, row.group);
    m_table->setItem(index, PriorityColumn, makeItem(effect->priority(), Qt::AlignRight, true));
    m_table->setItem(index, StartColumn, row.start);
    m_table->setItem(index, EndColumn, row.end);
    m_table->setItem(index, FadeInColumn,
                     makeItem(seconds(effect->fadein()), Qt::AlignRight, true));
    m_table->setItem(index, FadeOutColumn,
                     makeItem(seconds(effect->fadeout()), Qt::AlignRight, true));
    m_table->setItem(index, EidColumn, row.eid);
    m_table->setItem(index, RunningColumn, row.running);
    m_rows.append(row);
}

/// The box of that row of the table, made if there is none.
QComboBox* MetaWidget::typeBoxAt(int index)
{
    auto* box = qobject_cast<QComboBox*>(m_table->cellWidget(index, TypeColumn));
    if (box != nullptr) {
        box->hidePopup();
        return box;
    }
    box = new TypeBox(m_table);
    box->setAccessibleName(tr("Type"));
    box->setModel(m_rowTypes);
    box->setMaxVisibleItems(m_rowTypes->rowCount() + 1);
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    connect(box, qOverload<const QString&>(&QComboBox::currentIndexChanged), this,
            &MetaWidget::handleTableEffectTypeComboBoxChanged);
    QT_WARNING_POP
    m_table->setCellWidget(index, TypeColumn, box);
    return box;
}

/// The choice of types for an effect, the present one selected. A white type is offered to its own
/// kind only; a type that can't be chosen any more shows, but is none of the choice.
void MetaWidget::offerTypes(QComboBox* box, const Effect& effect)
{
    const QSignalBlocker blocker(box);
    box->setProperty("eid", effect.eid());
    const QString& type = effect.type();
    if (isWhite(type)) {
        box->setModel(new QStringListModel(m_rowTypes->stringList() + QStringList(type), box));
    } else if (box->model() != m_rowTypes) {
        box->setModel(m_rowTypes);
    }
    box->setPlaceholderText(type);
    box->setCurrentIndex(box->findText(type));
}

/// Brings a row's item and box to the type of its effect.
void MetaWidget::showType(const Row& row)
{
    const QSignalBlocker blocker(m_table);
    row.type->setText(row.effect->type());
    offerTypes(row.typeBox, *row.effect);
}

void MetaWidget::showGroup(const Effect& effect)
{
    const Row* const row = rowOf(&effect);
    if (row != nullptr) {
        const QSignalBlocker blocker(m_table);
        row->group->setText(groupName(effect));
    }
}

void MetaWidget::showTimes(const Row& row)
{
    if (row.effect == nullptr) {
        return;
    }
    showNumber(row.start, row.effect->begin() / kMsPerSecond);
    showIcon(row.start, startIcon(*row.effect));
    showNumber(row.end, row.effect->end() / kMsPerSecond);
    showIcon(row.end, endIcon(*row.effect));
}

MetaWidget::Row* MetaWidget::rowOf(const Effect* effect)
{
    const auto row = std::find_if(m_rows.begin(), m_rows.end(), [effect](const Row& candidate) {
        return candidate.effect == effect;
    });
    return effect != nullptr && row != m_rows.end() ? &*row : nullptr;
}

/// Through the hidden number, since sorting moves rows; by its item, since the numbers of a broken
/// file may repeat.
Effect* MetaWidget::effectAtRow(int row) const
{
    const QTableWidgetItem* const eid = m_table->item(row, EidColumn);
    const auto entry = std::find_if(m_rows.cbegin(), m_rows.cend(),
                                    [eid](const Row& candidate) { return candidate.eid == eid; });
    return eid != nullptr && entry != m_rows.cend() ? entry->effect.data() : nullptr;
}

QList<Effect*> MetaWidget::selectedEffects() const
{
    QModelIndexList rows = m_table->selectionModel()->selectedRows(EidColumn);
    std::sort(rows.begin(), rows.end(),
              [](const QModelIndex& a, const QModelIndex& b) { return a.row() < b.row(); });
    QList<Effect*> effects;
    for (const QModelIndex& index : qAsConst(rows)) {
        Effect* const effect = effectAtRow(index.row());
        if (effect != nullptr) {
            effects.append(effect);
        }
    }
    return effects;
}

void MetaWidget::selectRow(const Row& row)
{
    m_table->setCurrentItem(row.eid);
    m_table->scrollToItem(row.name); // a hidden cell is never scrolled to
}

/// The greatest number and one; where that is none, the lowest that is free.
quint32 MetaWidget::freeEid() const
{
    quint32 greatest = 0;
    const QList<Effect*> effects = m_metaEffect->effectList();
    for (const Effect* const effect : effects) {
        if (effect->eid() != Effect::kNoEid) {
            greatest = std::max(greatest, effect->eid());
        }
    }
    quint32 eid = greatest + 1;
    if (eid == Effect::kNoEid) {
        eid = 1;
        while (m_metaEffect->effectByEid(eid) != nullptr) {
            ++eid;
        }
    }
    return eid;
}

void MetaWidget::handleNewEffectClicked()
{
    if (m_metaEffect == nullptr) {
        return;
    }
    Effect* const effect =
        EffectFactory::createEffect(m_newTypeBox->currentText(), m_model, nullptr);
    if (effect == nullptr) {
        qBadAlloc();
    }
    effect->compile();
    effect->setEid(freeEid());
    effect->setStartType(Effect::StartFixed);
    effect->setStartFixedTime(0);
    effect->setEndType(Effect::EndCycles);
    effect->setEndCycleCount(1);
    effect->setName(tr("Effect ") + QString::number(effect->eid()));
    m_metaEffect->addEffect(effect);
    m_metaEffect->updateEffectTimes();
    {
        const QSignalBlocker blocker(m_table);
        m_table->setSortingEnabled(false);
        addTableRows({effect});
        m_table->sortItems(-1, Qt::AscendingOrder);
        m_table->setSortingEnabled(true);
    }
    m_metaEffect->updateEndTime();
    m_modified = true;
    const QPointer<MetaWidget> self(this);
    const QPointer<Effect> made(effect);
    chooseGroup(effect);
    if (self.isNull()) {
        return;
    }
    const Row* const row = rowOf(made);
    if (row != nullptr) {
        selectRow(*row);
    }
    m_modified = true;
}

void MetaWidget::handleValueChanged(int r, int c)
{
    Effect* const effect = effectAtRow(r);
    if (effect == nullptr || c < NameColumn || c > FadeOutColumn) {
        return;
    }
    if (c == TypeColumn) {
        const QPointer<MetaWidget> self(this);
        handleEffectTypeChanged(effect, m_table->item(r, c)->text());
        if (self.isNull()) {
            return; // gone while the question stood
        }
    } else {
        const SortingPause pause(m_table);
        editCell(*effect, r, c);
    }
    m_modified = true;
}

void MetaWidget::editCell(Effect& effect, int r, int c)
{
    QTableWidgetItem* const item = m_table->item(r, c);
    const QString text = item->text();
    switch (c) {
    case NameColumn:
        effect.setName(text);
        handleSelectionChanged();
        break;
    case PriorityColumn: {
        effect.setPriority(text.toUInt());
        m_metaEffect->sortEffects();
        const QSignalBlocker blocker(m_table);
        showNumber(item, effect.priority());
        break;
    }
    case StartColumn:
        effect.setStartType(Effect::StartFixed);
        effect.setStartFixedTime(milliseconds(text));
        break;
    case EndColumn:
        effect.setEndType(Effect::EndFixed);
        effect.setEndFixedTime(milliseconds(text, effect.begin()));
        break;
    case FadeInColumn: {
        effect.setFadein(milliseconds(text));
        const QSignalBlocker blocker(m_table);
        item->setText(seconds(effect.fadein()));
        break;
    }
    case FadeOutColumn: {
        effect.setFadeout(milliseconds(text));
        const QSignalBlocker blocker(m_table);
        item->setText(seconds(effect.fadeout()));
        break;
    }
    default:
        break;
    }
    if (c == StartColumn || c == EndColumn) {
        m_metaEffect->updateEffectTimes();
        m_metaEffect->updateEndTime();
    }
    if (c == PriorityColumn || c == StartColumn || c == EndColumn) {
        // Not this one's alone: what another may be linked to depends on all links, and stands in
        // the order of priorities.
        showSelectedTimes();
    }
}
