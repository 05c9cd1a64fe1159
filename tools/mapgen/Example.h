#pragma once

#include "tools/mapgen/Artwork.h"
#include "tools/mapgen/Installation.h"
#include "tools/mapgen/MapWriter.h"
#include "tools/mapgen/ShowEffect.h"

#include <QImage>
#include <QVector>

#include <vector>

/// One more show of an installation; `name` is that of its file, without ".sho".
struct NamedShow
{
    QString name;
    ShowEffect show; // its times not worked out yet
};

/// An installation with its plan and a show for it, the three main files of one folder, and what
/// lies beside them.
struct Example
{
    QString name;
    Installation map;
    QImage plan;
    ShowEffect show; // its times not worked out yet
    std::vector<NamedShow> furtherShows;
    QVector<NamedPicture> pictures;
    MapWriter::Keys keys = MapWriter::Keys::Long;
};

/// Writes `path` + ".map", ".png" and ".sho" and, into the same folder, the further shows and the
/// pictures, making folders where they are missing; the times of the shows are worked out on the
/// way. False, and what went wrong in `error`, when a file can't be written or a show's links
/// don't work out.
[[nodiscard]] bool writeExample(const Example& example, const QString& path, QString* error);
