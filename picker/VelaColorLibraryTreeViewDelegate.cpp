#include "picker/VelaColorLibraryTreeViewDelegate.h"

#include "color/VelaColorLibrary.h"
#include "color/VelaColorLibraryItem.h"
#include "picker/SwatchPainter.h"
#include "picker/VelaColorLibraryTreeView.h"

#include <QFontMetrics>

#include <algorithm>

namespace VelaColorPickerLib {

VelaColorLibraryTreeViewDelegate::VelaColorLibraryTreeViewDelegate(VelaColorLibraryTreeView* view)
    : QStyledItemDelegate(view)
    , m_view(view)
    , m_userIcon(QStringLiteral(":/images/userIcon.png"))
{}

QSize VelaColorLibraryTreeViewDelegate::sizeHint(const QStyleOptionViewItem& option,
                                                 const QModelIndex& index) const
{
    const QSize size = QStyledItemDelegate::sizeHint(option, index);
    const int line = option.fontMetrics.height();
    return {size.width(), std::max(size.height(), line + line / 2)};
}

void VelaColorLibraryTreeViewDelegate::initStyleOption(QStyleOptionViewItem* option,
                                                       const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    VelaColorLibraryItem* const item = m_view->itemAt(index);
    if (item == nullptr || index.column() != VelaColorLibrary::SwatchColumn) {
        return;
    }
    const int line = option->fontMetrics.height();
    if (item->isColor()) {
        const QSize size(2 * line, line);
        const qreal ratio = m_view->devicePixelRatioF();
        if (item->thumbnail().size() != size * ratio) {
            item->setThumbnail(swatchPixmap(item->color(), size, ratio));
        }
        option->icon = QIcon(item->thumbnail());
        option->icon.addPixmap(item->thumbnail(), QIcon::Selected); // as it is, not tinted
        option->decorationSize = size;
        option->features |= QStyleOptionViewItem::HasDecoration;
    } else if (item->isUserLibrary()) {
        option->icon = m_userIcon;
        option->decorationSize = QSize(line, line);
        option->features |= QStyleOptionViewItem::HasDecoration;
    }
}

} // namespace VelaColorPickerLib
