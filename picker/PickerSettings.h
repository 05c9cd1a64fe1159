#pragma once

#include <QSettings>
#include <QString>

/// The settings of the picker's shell. The pages keep their own keys.
namespace VelaColorPickerLib {

/// The program's settings, whatever program the picker stands in.
inline QSettings pickerSettings()
{
    return QSettings(QStringLiteral("Halden"), QStringLiteral("Pageant Forge"));
}

} // namespace VelaColorPickerLib
