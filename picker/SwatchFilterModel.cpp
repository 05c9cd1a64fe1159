#include "picker/SwatchFilterModel.h"

namespace VelaColorPickerLib {

SwatchFilterModel::SwatchFilterModel(QObject* parent)
    : QSortFilterProxyModel(parent)
{
    setRecursiveFilteringEnabled(true); // a list shows with what it holds
}

void SwatchFilterModel::setText(const QString& text)
{
    if (text == m_text) {
        return;
    }
    m_text = text;
    invalidateFilter();
}

bool SwatchFilterModel::filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const
{
    if (m_text.isEmpty() || matches(sourceRow, sourceParent)) {
        return true;
    }
    return sourceParent.isValid() && matches(sourceParent.row(), sourceParent.parent());
}

bool SwatchFilterModel::matches(int row, const QModelIndex& parent) const
{
    for (int column = 0; column < sourceModel()->columnCount(parent); ++column) {
        const QModelIndex index = sourceModel()->index(row, column, parent);
        if (index.data().toString().contains(m_text, Qt::CaseInsensitive)) {
            return true;
        }
    }
    return false;
}

} // namespace VelaColorPickerLib
