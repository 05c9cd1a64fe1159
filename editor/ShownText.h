#pragma once

#include <QString>

/// A name as a list or title shows it. Longer than anybody reads, it ends in dots: each painting
/// lays a text out as a whole, and a file may hold a name of a megabyte.
QString shownText(const QString& text);
