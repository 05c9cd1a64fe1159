#include "color/VelaColorLibraryItem.h"

#include "color/Sorrel3ProjectHelper.h"

#include <QDataStream>
#include <QDomDocument>
#include <QStringList>

VelaColorLibraryItem::VelaColorLibraryItem(VelaColorLibraryItem* parent)
    : m_parent(parent)
{
    if (parent != nullptr) {
        m_depth = parent->m_depth + 1;
        m_isUserLibrary = parent->m_isUserLibrary;
    }
}

VelaColorLibraryItem::~VelaColorLibraryItem()
{
    qDeleteAll(m_children);
}

VelaColorLibraryItem* VelaColorLibraryItem::child(int row) const
{
    return m_children.value(row, nullptr);
}

void VelaColorLibraryItem::insertChild(int row, VelaColorLibraryItem* child)
{
    m_children.insert(row, child);
    for (int i = row; i < m_children.size(); ++i) {
        m_children.at(i)->m_row = i;
    }
}

VelaColorLibraryItem* VelaColorLibraryItem::takeChild(int row)
{
    VelaColorLibraryItem* const taken = m_children.takeAt(row);
    for (int i = row; i < m_children.size(); ++i) {
        m_children.at(i)->m_row = i;
    }
    return taken;
}

QDomElement VelaColorLibraryItem::toElement(QDomDocument& document, const QString& format,
                                            bool isUserLibrary, bool* ok) const
{
    const bool isKnown = format == QLatin1String("Sorrel3");
    if (ok != nullptr) {
        *ok = isKnown;
    }
    if (!isKnown) {
        return {};
    }
    QList<Sorrel3ProjectHelper::Swatch> swatches;
    for (const VelaColorLibraryItem* const child : m_children) {
        if (!child->uid().isEmpty()) {
            swatches.append({child->uid(), child->name(), child->color().toString(),
                             child->originatingPreset(), child->colorId()});
        }
    }
    return Sorrel3ProjectHelper::listElement(document, m_name, isUserLibrary, swatches);
}

bool VelaColorLibraryItem::writeFormat(const QString& format, QDataStream& stream) const
{
    if (format != QLatin1String("data/x-velacolor")) {
        return false;
    }
    stream << m_uid.toLatin1() << m_color.toString().toLatin1();
    return true;
}
