#pragma once

#include "color/VelaColorLibrary.h"

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QStringList>

// What a library holds, and files of libraries as texts.

using Library = VelaColorLibrary;

inline QStringList listNames(const Library& library)
{
    QStringList names;
    for (int row = 0; row < library.rowCount(); ++row) {
        names << library.index(row, 0).data().toString();
    }
    return names;
}

inline QStringList swatchNames(const Library& library, const QString& listId)
{
    QStringList names;
    const QModelIndex list = library.listIndex(listId);
    for (int row = 0; row < library.rowCount(list); ++row) {
        names << library.index(row, 0, list).data().toString();
    }
    return names;
}

inline QByteArray document(const QByteArray& lists)
{
    return "<ColorLibraryList>" + lists + "</ColorLibraryList>";
}

inline QByteArray userList(const QByteArray& name, const QByteArray& colors)
{
    return "<ColorLibrary name=\"" + name + "\" isUserLibrary=\"1\">" + colors + "</ColorLibrary>";
}

/// A black one.
inline QByteArray swatch(const QByteArray& uid, const QByteArray& name)
{
    return "<Color name=\"" + name + "\" uid=\"" + uid +
           "\" value=\"aRgb;1;0;#ffffffff00000000\" originatingPreset=\"P\" colorId=\"7\"/>";
}

inline bool writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

inline QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

const QString kExplicit = QStringLiteral("Explicit Colors");
const QString kProject = QStringLiteral("Project Swatches");
