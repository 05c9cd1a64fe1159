#include "editor/MetaWidget.h"
#include "editor/StateIcons.h"
#include "engine/EffectFactory.h"
#include "engine/MetaEffect.h"
#include "map/Group.h"
#include "map/MapModel.h"

#include <QFontMetrics>
#include <QHeaderView>
#include <QPainter>
#include <QPalette>
#include <QSignalBlocker>
#include <QTableWidget>

namespace {

/// A table that says in grey what would fill it.
class EffectTable : public QTableWidget
{
public:
    using QTableWidget::QTableWidget;

protected:
    void paintEvent(QPaintEvent* event) override
    {
        QTableWidget::paintEvent(event);
        if (rowCount() == 0) {
            QPainter painter(viewport());
            painter.setPen(palette().color(QPalette::Disabled, QPalette::Text));
            painter.drawText(viewport()->rect(), Qt::AlignCenter, tr("No effects yet."));
        }
    }
};

QTableWidgetItem* makeItem(const QVariant& value, Qt::Alignment alignment)
{
    auto* item = new QTableWidgetItem;
    item->setData(Qt::EditRole, value);
    item->setTextAlignment(alignment | Qt::AlignVCenter);
    item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
    return item;
}

/// An item that is given the icon it has counts as changed, and is looked up and painted.
void showIcon(QTableWidgetItem* item, const QIcon& icon)
{
    if (item->icon().cacheKey() != icon.cacheKey()) {
        item->setIcon(icon);
    }
}

QString seconds(quint32 ms)
{
    return QString::number(ms / 1000.0, 'g', 6);
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

} // namespace

void MetaWidget::setUpTable()
{
    m_table = new EffectTable(0, ColumnCount, this);
    m_table->setObjectName(QStringLiteral("effectTable")); // tests find it by this name
    m_table->setHorizontalHeaderLabels({tr("Name"), tr("Type"), tr("Group"), tr("Priority"),
                                        tr("Start"), tr("End"), tr("Fade In"), tr("Fade Out"),
                                        tr("EID"), tr("Running")});
    for (int column = 0; column < ColumnCount; ++column) { // as their columns
        m_table->horizontalHeaderItem(column)->setTextAlignment(
            (column < PriorityColumn ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
    }
    m_table->setAccessibleName(tr("Effects"));
    m_table->setColumnHidden(EidColumn, true);
    m_table->setColumnHidden(RunningColumn, true);
    m_table->setColumnWidth(NameColumn, 80);
    m_table->setColumnWidth(TypeColumn, 120);
    m_table->setColumnWidth(GroupColumn, 100);
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_table->horizontalHeader()->setHighlightSections(false);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setDefaultSectionSize(fontMetrics().lineSpacing() * 3 / 2);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setAlternatingRowColors(true);
    m_table->setWordWrap(false);
    m_table->sortItems(-1, Qt::AscendingOrder);
    m_table->setSortingEnabled(true);
}

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
        m_table->setRowCount(0);
        m_rows.clear();
        if (m_metaEffect != nullptr) {
            const QList<Effect*> effects = m_metaEffect->effectList();
            m_rows.reserve(effects.size());
            for (Effect* effect : effects) {
                addTableRow(effect, groupName(*effect));
            }
        }
        m_table->sortItems(-1, Qt::AscendingOrder); // the show's order, until a header is clicked
        m_table->setSortingEnabled(true);
    }
    if (m_metaEffect != nullptr) {
        m_metaEffect->setBegin(0);
        m_metaEffect->updateEndTime();
    }
}

void MetaWidget::addTableRow(Effect* effect, const QString& groupName)
{
    // Filled in ahead of the table, which looks for an item of its own on each change.
    Row row;
    row.effect = effect;
    row.name = makeItem(effect->name(), Qt::AlignLeft);
    row.name->setIcon(StateIcons::ICON_OPEN());
    row.start = makeItem(0.0, Qt::AlignRight);
    row.end = makeItem(0.0, Qt::AlignRight);
    row.running = makeItem(QStringLiteral("0"), Qt::AlignRight);
    showTimes(row);
    QTableWidgetItem* const type = makeItem(effect->type(), Qt::AlignLeft);
    type->setIcon(typeIcon(effect->typeId()));

    const int index = m_table->rowCount();
    m_table->insertRow(index);
    m_table->setItem(index, NameColumn, row.name);
    m_table->setItem(index, TypeColumn, type);
    m_table->setItem(index, GroupColumn, makeItem(groupName, Qt::AlignLeft));
    m_table->setItem(index, PriorityColumn, makeItem(effect->priority(), Qt::AlignRight));
    m_table->setItem(index, StartColumn, row.start);
    m_table->setItem(index, EndColumn, row.end);
    m_table->setItem(index, FadeInColumn, makeItem(seconds(effect->fadein()), Qt::AlignRight));
    m_table->setItem(index, FadeOutColumn, makeItem(seconds(effect->fadeout()), Qt::AlignRight));
    m_table->setItem(index, EidColumn, makeItem(QString::number(effect->eid()), Qt::AlignRight));
    m_table->setItem(index, RunningColumn, row.running);
    m_rows.append(row);
}

const QIcon& MetaWidget::typeIcon(int typeId)
{
    const auto known = m_typeIcons.find(typeId);
    if (known != m_typeIcons.end()) {
        return *known;
    }
    return *m_typeIcons.insert(typeId, QIcon(EffectFactory::iconPath(typeId)));
}

void MetaWidget::showTimes(const Row& row)
{
    row.start->setData(Qt::EditRole, row.effect->begin() / 1000.0);
    showIcon(row.start, startIcon(*row.effect));
    row.end->setData(Qt::EditRole, row.effect->end() / 1000.0);
    showIcon(row.end, endIcon(*row.effect));
}
