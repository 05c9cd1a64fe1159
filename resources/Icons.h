#pragma once

#include <QString>
#include <QStringList>

/// Every size of the icon `path` (":/images/icons/open_map.png") that is compiled in, smallest
/// first: 16, 24, 32 and 48 pixels, each to be given to `QIcon::addFile`. A picture that comes in
/// one form only (an SVG, the splash) gives `path` alone; a path that is not there gives nothing.
QStringList iconFiles(const QString& path);
