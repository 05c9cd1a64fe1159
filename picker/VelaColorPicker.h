#pragma once

#include "color/GroupProfile.h"
#include "color/VelaColor.h"

#include <QList>
#include <QString>
#include <QWidget>

namespace VelaColorPickerLib {

class VelaColorPickerWidget;

/// The public face of the picker: pages and swatches, without the lists of colours.
class VelaColorPicker : public QWidget
{
    Q_OBJECT
public:
    explicit VelaColorPicker(QWidget* parent = nullptr);

    VelaColor mainColor() const;
    /// The colour of the selected swatch.
    VelaColor selectedColor() const;
    /// 0 RGB, 1 white, 2 channels.
    int currentPage() const;
    /// An index outside 0..2 does nothing.
    void showPage(int index);
    /// Whether the page of channels takes input.
    void setChannelControlEnabled(bool enabled);
    /// Reports the colour of the selected swatch through colorAddedToFavorites.
    void addSelectedColorToFavorites();
    void setProfiles(const QList<GroupProfile>& profiles);
    void setPrimaryProfile(const GroupProfile& profile);

signals:
    void mainColorChanged(const VelaColor& color, const QString& uid);
    void comparisonColorChanged(const VelaColor& color, const QString& uid);
    void colorAddedToFavorites(const VelaColor& color);
    void pickerSetOnSetColor(int index, bool isNChannel);
    void clearPreviousSelection();

public slots:
    /// Selects the main swatch and gives it the colour; its "Reset" will come back to it.
    void setColorAndSelectMainPreview(const VelaColor& color, const QString& uid);
    /// Gives the colour to the selected swatch, whichever that is.
    void setColor(const VelaColor& color, const QString& uid);

private:
    VelaColorPickerWidget* m_widget;
};

} // namespace VelaColorPickerLib
