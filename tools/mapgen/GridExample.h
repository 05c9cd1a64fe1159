#pragma once

#include "tools/mapgen/Example.h"

/// A wall of RGB lights in rows and columns, of any size.
struct GridOptions
{
    static constexpr int kMostLights = 60000;
    static constexpr int kMostLayers = 16;

    int lights = 1000; // 1 to kMostLights
    int rows = 0;      // 0 picks about two rows to three columns
    int perPort = 165; // lights on a port, 1 to 170; above 165 its frames are cut at the end
    int ports = 8;     // of a controller, 1 to 255
    QString address = QStringLiteral("127.0.0.1"); // of the first controller; the others count on
    int version = 2; // protocol generation, 1 to 3; 1 takes one port a controller
    bool postSync = false;
    int layers = 2;     // effects over the whole wall, 1 to kMostLayers
    double alpha = 0.5; // of the layers above the first, 0.0 to 1.0
    quint32 seed = 1;   // of the colours
    MapWriter::Keys keys = MapWriter::Keys::Long;
};

/// The wall with its plan and a show of alternating fixed colours and cross fades, 60 s long.
/// `imageFile` is what the map names as its plan. With an option out of its range, or an address
/// range that leaves IPv4, nothing is made: `error` says why and `made` is false.
Example gridExample(const GridOptions& options, const QString& imageFile, bool* made,
                    QString* error);
