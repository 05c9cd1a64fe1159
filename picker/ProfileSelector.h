#pragma once

#include "color/ColorUtils.h"

#include <QComboBox>
#include <QList>

namespace VelaColorPickerLib {

/// Chooses one of the fixture profiles, in the order of their ids.
class ProfileSelector final : public QComboBox
{
    Q_OBJECT
    Q_PROPERTY(int profile READ profile WRITE setProfile NOTIFY selectedProfile)
public:
    explicit ProfileSelector(QWidget* parent = nullptr);

    /// 0..46
    ColorUtils::TintweaveProfileID profile() const;
    /// An id that is not in the list changes nothing.
    void setProfile(ColorUtils::TintweaveProfileID id);
    /// Shows these profiles in bold and the others plain.
    void emphasize(const QList<int>& ids);

signals:
    void selectedProfile(ColorUtils::TintweaveProfileID id);

private slots:
    void handleIndexChanged(int index);
};

} // namespace VelaColorPickerLib
