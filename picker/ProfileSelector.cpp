#include "picker/ProfileSelector.h"

#include <QFont>
#include <QVariant>

namespace VelaColorPickerLib {

ProfileSelector::ProfileSelector(QWidget* parent)
    : QComboBox(parent)
{
    qRegisterMetaType<ColorUtils::TintweaveProfileID>("ColorUtils::TintweaveProfileID");
    setInsertPolicy(QComboBox::InsertAlphabetically); // of what a user types in; the rows stay
    for (const int id : ColorUtils::allProfiles(true)) {
        addItem(ColorUtils::nameOfProfile(id), id);
    }
    connect(this, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &ProfileSelector::handleIndexChanged);
}

ColorUtils::TintweaveProfileID ProfileSelector::profile() const
{
    return currentData().toInt();
}

void ProfileSelector::setProfile(ColorUtils::TintweaveProfileID id)
{
    const int row = findData(id);
    if (row >= 0) {
        setCurrentIndex(row);
    }
}

void ProfileSelector::emphasize(const QList<int>& ids)
{
    QFont bold = font();
    bold.setBold(true);
    for (int row = 0; row < count(); ++row) {
        setItemData(row, ids.contains(itemData(row).toInt()) ? QVariant(bold) : QVariant(),
                    Qt::FontRole);
    }
}

void ProfileSelector::handleIndexChanged(int index)
{
    if (index >= 0) {
        emit selectedProfile(itemData(index).toInt());
    }
}

} // namespace VelaColorPickerLib
