#pragma once

#include <QIcon>
#include <QStyledItemDelegate>

namespace VelaColorPickerLib {

class VelaColorLibraryTreeView;

/// Paints a swatch in front of each colour and a mark in front of each list of the user's own.
class VelaColorLibraryTreeViewDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    /// `view` is the parent, and the one that it paints for.
    explicit VelaColorLibraryTreeViewDelegate(VelaColorLibraryTreeView* view);

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

    /// A swatch's name, which may be cut short on the screen, and what its colour is.
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    VelaColorLibraryTreeView* m_view;
    QIcon m_userIcon;
};

} // namespace VelaColorPickerLib
