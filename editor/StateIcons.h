#pragma once

#include <QIcon>

/// The small marks of the effect table, drawn on whole pixels, once for the process.
namespace StateIcons {

// NOLINTBEGIN(readability-identifier-naming): the names of constants, each made on first use
/// A fixed time: nothing.
const QIcon& ICON_NONE();
/// A time linked to another effect, 7 by 7.
const QIcon& ICON_LINK();
/// An end counted in cycles, 10 by 10.
const QIcon& ICON_CYCLE();
/// An effect that is not running, 8 by 8: a ring.
const QIcon& ICON_OPEN();
/// A running effect, 8 by 8: a disc.
const QIcon& ICON_CLOSE();
// NOLINTEND(readability-identifier-naming)

} // namespace StateIcons
