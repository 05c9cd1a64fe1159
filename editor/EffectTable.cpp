#include "editor/EffectTable.h"

#include "editor/ShownText.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QLocale>
#include <QPainter>
#include <QPalette>
#include <QStyledItemDelegate>

namespace {

constexpr char kOriginal[] = "original"; // the text that an editor began with
constexpr int kTimeDigits = 10;          // enough for milliseconds up to the greatest time

QString cellText(const QVariant& value)
{
    return value.userType() == QMetaType::Double
               ? QString::number(value.toDouble(), 'g', kTimeDigits)
               : value.toString();
}

class CellDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void setCoveredColumn(int column) { m_coveredColumn = column; }

    QString displayText(const QVariant& value, const QLocale& /*locale*/) const override
    {
        return shownText(cellText(value));
    }
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                          const QModelIndex& index) const override
    {
        auto* editor = new QLineEdit(parent);
        editor->setFrame(false);
        editor->setAlignment(Qt::Alignment(index.data(Qt::TextAlignmentRole).toInt()));
        return editor;
    }
    void setEditorData(QWidget* editor, const QModelIndex& index) const override
    {
        auto* line = qobject_cast<QLineEdit*>(editor);
        // Asked for anew whenever the cell changes: a frame that marks its row as running must not
        // take away what was typed.
        if (line != nullptr && !line->property(kOriginal).isValid()) {
            const QString text = cellText(index.data(Qt::EditRole));
            line->setProperty(kOriginal, text);
            line->setMaxLength(qMax(line->maxLength(), text.size()));
            line->setText(text);
        }
    }
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override
    {
        const auto* line = qobject_cast<QLineEdit*>(editor);
        if (line != nullptr && line->text() != line->property(kOriginal).toString()) {
            model->setData(index, line->text(), Qt::EditRole);
        }
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        if (index.column() == m_coveredColumn) {
            option->text.clear();
            option->icon = QIcon();
            option->features &= ~QStyleOptionViewItem::HasDecoration;
        }
    }

private:
    int m_coveredColumn = -1;
};

} // namespace

EffectTable::EffectTable(int rows, int columns, QWidget* parent)
    : QTableWidget(rows, columns, parent)
{
    setItemDelegate(new CellDelegate(this));
}

void EffectTable::setCoveredColumn(int column)
{
    static_cast<CellDelegate*>(itemDelegate())->setCoveredColumn(column);
}

void EffectTable::takeOverEdit()
{
    const QList<QLineEdit*> editors =
        viewport()->findChildren<QLineEdit*>(QString(), Qt::FindDirectChildrenOnly);
    for (QLineEdit* const editor : editors) {
        commitData(editor);
        closeEditor(editor, QAbstractItemDelegate::NoHint);
    }
}

void EffectTable::keyPressEvent(QKeyEvent* event)
{
    // Rows are made current by a hidden column, from which no key leads on.
    const QModelIndex current = currentIndex();
    if (current.isValid() && isColumnHidden(current.column())) {
        selectionModel()->setCurrentIndex(current.sibling(current.row(), 0),
                                          QItemSelectionModel::NoUpdate);
    }
    QTableWidget::keyPressEvent(event);
}

void EffectTable::paintEvent(QPaintEvent* event)
{
    QTableWidget::paintEvent(event);
    if (rowCount() == 0) {
        QPainter painter(viewport());
        painter.setPen(palette().color(QPalette::Disabled, QPalette::Text));
        painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap,
                         tr("No effects yet. Choose a type and press New Effect."));
    }
}
