#pragma once

#include "tools/mapgen/Installation.h"
#include "tools/mapgen/MapWriter.h"
#include "tools/mapgen/ShowEffect.h"

#include <QImage>

/// An installation with its plan and a show for it: the three files of one folder.
struct Example
{
    QString name;
    Installation map;
    QImage plan;
    ShowEffect show; // its times not worked out yet
    MapWriter::Keys keys = MapWriter::Keys::Long;
};

/// Writes `path` + ".map", ".png" and ".sho", making the folder where it is missing; the times of
/// the show are worked out on the way. False, and what went wrong in `error`, when a file can't be
/// written or the show's links don't work out.
[[nodiscard]] bool writeExample(const Example& example, const QString& path, QString* error);
