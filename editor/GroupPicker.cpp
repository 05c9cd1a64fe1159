#include "editor/GroupPicker.h"

#include "editor/ShownText.h"
#include "engine/Effect.h"
#include "map/Group.h"
#include "map/MapModel.h"

#include <QCheckBox>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QIcon>
#include <QPainter>
#include <QPen>
#include <QPixmap>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include <array>

namespace {

constexpr int kKinds = 4;

/// The sign of a kind of group, 16 by 16: a chase runs along its lights, a synchronized group moves
/// as one, a leaf is one light.
QPixmap drawKind(int kind, const QColor& slate, const QColor& accent)
{
    QPixmap picture(16, 16);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    switch (kind) {
    case Group::Chasing:
        painter.setBrush(slate);
        painter.drawEllipse(QRectF(1.0, 6.0, 4.0, 4.0));
        painter.drawEllipse(QRectF(6.0, 6.0, 4.0, 4.0));
        painter.setBrush(accent);
        painter.drawPolygon(QPolygonF({{11.0, 4.0}, {15.0, 8.0}, {11.0, 12.0}}));
        break;
    case Group::Synchronized:
        painter.setBrush(accent);
        for (const QPointF& corner :
             {QPointF(2.5, 2.5), QPointF(9.0, 2.5), QPointF(2.5, 9.0), QPointF(9.0, 9.0)}) {
            painter.drawEllipse(QRectF(corner, QSizeF(4.5, 4.5)));
        }
        break;
    case Group::Leaf:
        painter.setBrush(slate);
        painter.drawEllipse(QRectF(4.5, 4.5, 7.0, 7.0));
        break;
    default:
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(slate, 1.5, Qt::DashLine));
        painter.drawRoundedRect(QRectF(3.0, 3.0, 10.0, 10.0), 2.0, 2.0);
        break;
    }
    return picture;
}

/// Drawn once for the process; any other number is an unknown kind.
const QIcon& kindIcon(int kind)
{
    static const std::array<QIcon, kKinds> kIcons = [] {
        std::array<QIcon, kKinds> icons;
        for (int i = 0; i < kKinds; ++i) {
            QIcon& icon = icons[static_cast<std::size_t>(i)];
            icon = QIcon(drawKind(i, QColor(0x5b, 0x70, 0x8a), QColor(0xd2, 0x74, 0x1a)));
            icon.addPixmap(drawKind(i, Qt::white, Qt::white), QIcon::Selected);
        }
        return icons;
    }();
    const bool isKnown = kind > Group::Unknown && kind < kKinds;
    return kIcons[static_cast<std::size_t>(isKnown ? kind : Group::Unknown)];
}

QTableWidgetItem* makeItem(const QString& text)
{
    auto* item = new QTableWidgetItem(text);
    item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
    return item;
}

} // namespace

GroupPicker::GroupPicker(MapModel* model, Effect* effect, QWidget* parent)
    : QDialog(parent)
    , m_model(model)
    , m_effect(effect)
{
    setUpForm();
    listGroups();
    connect(m_groupListView, &QTableWidget::itemClicked, this, &GroupPicker::handleClicked);
    connect(m_groupListView, &QTableWidget::itemDoubleClicked, this,
            &GroupPicker::handleDoubleClicked);
    connect(m_syncBox, &QCheckBox::toggled, this, &GroupPicker::handleSyncClicked);
}

void GroupPicker::setUpForm()
{
    setWindowTitle(tr("Group Picker"));
    setWindowFlags((windowFlags() | Qt::WindowStaysOnTopHint) & ~Qt::WindowContextHelpButtonHint);
    const QFontMetrics metrics(font());
    const int unit = metrics.lineSpacing() / 2;
    setUpTable();
    m_syncBox = new QCheckBox(tr("Display Synchronized Groups"), this);
    m_syncBox->setObjectName(QStringLiteral("m_syncBox"));
    auto* ok = new QPushButton(tr("&OK"), this);
    ok->setObjectName(QStringLiteral("m_okButton"));
    ok->setDefault(true);
    auto* cancel = new QPushButton(tr("&Cancel"), this);
    cancel->setObjectName(QStringLiteral("m_cancelButton"));
    cancel->setShortcut(QKeySequence(QStringLiteral("Alt+C")));
    cancel->setAutoDefault(false);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(unit);
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2 * unit, 2 * unit, 2 * unit, 2 * unit);
    layout->setSpacing(unit);
    layout->addWidget(m_groupListView, 1);
    layout->addWidget(m_syncBox);
    layout->addSpacing(unit);
    layout->addLayout(buttons);
    resize(metrics.averageCharWidth() * 60, metrics.lineSpacing() * 24);

    connect(ok, &QPushButton::clicked, this, &GroupPicker::handleOkButtonClicked);
    connect(ok, &QPushButton::clicked, this, &GroupPicker::accept);
    connect(cancel, &QPushButton::clicked, this, &GroupPicker::reject);
}

void GroupPicker::setUpTable()
{
    m_groupListView = new QTableWidget(0, ColumnCount, this);
    m_groupListView->setObjectName(QStringLiteral("m_groupListView"));
    m_groupListView->setAccessibleName(tr("Groups"));
    m_groupListView->setHorizontalHeaderLabels({tr("Name"), tr("Type"), tr("GID")});
    m_groupListView->setColumnHidden(GidColumn, true);
    QHeaderView* const header = m_groupListView->horizontalHeader();
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header->setSectionResizeMode(NameColumn, QHeaderView::Stretch);
    header->setHighlightSections(false);
    header->setSortIndicator(-1, Qt::AscendingOrder); // the model's order, until one is clicked
    m_groupListView->setColumnWidth(
        TypeColumn, fontMetrics().horizontalAdvance(Group::typeName(Group::Synchronized)) +
                        2 * fontMetrics().lineSpacing());
    m_groupListView->verticalHeader()->hide();
    m_groupListView->verticalHeader()->setDefaultSectionSize(fontMetrics().lineSpacing() * 3 / 2);
    m_groupListView->setIconSize(QSize(16, 16));
    m_groupListView->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_groupListView->setSelectionMode(QAbstractItemView::SingleSelection);
    m_groupListView->setAlternatingRowColors(true);
    m_groupListView->setShowGrid(false);
    m_groupListView->setTabKeyNavigation(false);
    m_groupListView->setWordWrap(false);
}

void GroupPicker::listGroups()
{
    m_groupListView->setRowCount(0);
    m_groupListView->setSortingEnabled(false);
    const QHash<quint64, Group*> groups = m_model->groupsHash();
    for (const Group* const group : groups) {
        if (group->type() == Group::Leaf ||
            (group->type() == Group::Synchronized && !m_syncBox->isChecked())) {
            continue;
        }
        const int row = m_groupListView->rowCount();
        m_groupListView->insertRow(row);
        QTableWidgetItem* const name = makeItem(shownText(group->name()));
        name->setIcon(kindIcon(group->type()));
        m_groupListView->setItem(row, NameColumn, name);
        m_groupListView->setItem(row, TypeColumn, makeItem(Group::typeName(group->type())));
        m_groupListView->setItem(row, GidColumn, makeItem(QString::number(group->uid())));
    }
    m_groupListView->setSortingEnabled(true);
    m_groupListView->selectRow(0);
}

void GroupPicker::handleSyncClicked()
{
    listGroups();
}

void GroupPicker::handleClicked(QTableWidgetItem* item)
{
    if (item == nullptr || m_effect == nullptr) {
        return;
    }
    // Read as 32 bits: a greater id is no number here, and gives 0.
    m_effect->setGid(m_groupListView->item(item->row(), GidColumn)->text().toUInt());
    m_effect->compile();
}

void GroupPicker::handleDoubleClicked(QTableWidgetItem* item)
{
    handleClicked(item);
    accept();
}

void GroupPicker::handleOkButtonClicked()
{
    const QModelIndexList rows = m_groupListView->selectionModel()->selectedRows(NameColumn);
    if (!rows.isEmpty()) {
        handleClicked(m_groupListView->item(rows.first().row(), NameColumn));
    }
}
