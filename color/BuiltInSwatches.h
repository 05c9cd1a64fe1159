#pragma once

#include "color/VelaColor.h"

#include <QString>
#include <QVector>

struct BuiltInSwatch
{
    QString name;
    VelaColor color;
};

/// The swatches that come with the program: twelve plain colours, the eight centres of the ANSI
/// bins of white, and twelve whites by name.
QVector<BuiltInSwatch> builtInSwatches();
