#include "picker/VelaColorLibraryTreeViewDelegate.h"

#include "color/VelaColorLibrary.h"
#include "color/VelaColorLibraryItem.h"
#include "picker/SwatchPainter.h"
#include "picker/VelaColorLibraryTreeView.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QToolTip>

#include <algorithm>

namespace VelaColorPickerLib {

namespace {

constexpr int kLongestTip = 200; // characters of a name

} // namespace

VelaColorLibraryTreeViewDelegate::VelaColorLibraryTreeViewDelegate(VelaColorLibraryTreeView* view)
    : QStyledItemDelegate(view)
    , m_view(view)
    , m_userIcon(QStringLiteral(":/images/userIcon.png"))
{
    for (const char* const size : {"24", "32", "48"}) { // for large fonts
        m_userIcon.addFile(QStringLiteral(":/images/%1/userIcon.png").arg(QLatin1String(size)));
    }
}

QSize VelaColorLibraryTreeViewDelegate::sizeHint(const QStyleOptionViewItem& option,
                                                 const QModelIndex& index) const
{
    const QSize size = QStyledItemDelegate::sizeHint(option, index);
    const int line = option.fontMetrics.height();
    return {size.width(), std::max(size.height(), line + line / 2)};
}

bool VelaColorLibraryTreeViewDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                                 const QStyleOptionViewItem& option,
                                                 const QModelIndex& index)
{
    const VelaColorLibraryItem* const item = m_view->itemAt(index);
    if (event->type() != QEvent::ToolTip || item == nullptr) {
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    }
    QString text = item->name().left(kLongestTip).toHtmlEscaped();
    if (item->isColor()) {
        text += QStringLiteral("<br>") + VelaColorLibrary::colorText(item->color()).toHtmlEscaped();
    }
    text = QStringLiteral("<span>%1</span>").arg(text); // so that it is never taken for plain
    QToolTip::showText(event->globalPos(), text, m_view->viewport(), m_view->visualRect(index));
    return true;
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
        const QSize size(line * 3 / 2, line);
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
