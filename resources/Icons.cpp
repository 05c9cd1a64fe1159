#include "resources/Icons.h"

#include <QFile>

QStringList iconFiles(const QString& path)
{
    // Each size lies in a folder of its name beside the plain file.
    static constexpr int kSizes[] = {16, 24, 32, 48};
    const int name = path.lastIndexOf(QLatin1Char('/')) + 1;
    QStringList files;
    for (const int size : kSizes) {
        const QString file =
            path.left(name) + QString::number(size) + QLatin1Char('/') + path.mid(name);
        if (QFile::exists(file)) {
            files << file;
        }
    }
    if (files.isEmpty() && QFile::exists(path)) {
        files << path;
    }
    return files;
}
