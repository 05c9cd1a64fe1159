#pragma once

#include <QString>

/// Writes pictures of the colour picker, each of its pages, its filter and its menus, into
/// `folder`, which is made where it is missing. False where one can't be written. Needs a display
/// for the menus: elsewhere they are not part of the pictures.
bool writeGallery(const QString& folder);
