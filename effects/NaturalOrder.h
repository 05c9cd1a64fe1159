#pragma once

#include <QStringList>

/// Sorts file names as people count: runs of digits by their value, so that a name ending in 2 goes
/// before one ending in 10. Signs go before digits and digits before letters; case and accents
/// decide only between names that are otherwise alike. The same on every machine: no locale is
/// asked, since some of them know no numbers.
void sortNaturally(QStringList* names);
