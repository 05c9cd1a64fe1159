#include "tools/mapgen/Example.h"

#include "tools/mapgen/ShowTimes.h"
#include "tools/mapgen/ShowWriter.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

#include <functional>

namespace {

/// Replaces the file as a whole or not at all.
bool writeFile(const QString& path, const std::function<bool(QIODevice*)>& write, QString* error)
{
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && write(&file) && file.commit()) {
        return true;
    }
    *error = QStringLiteral("%1: %2").arg(path, file.errorString());
    return false;
}

bool writeShow(const ShowEffect& show, const QString& path, QString* error)
{
    ShowEffect resolved = show;
    if (!resolveTimes(&resolved)) {
        *error = QStringLiteral("%1: Its links close on themselves or lead nowhere").arg(path);
        return false;
    }
    const QByteArray text = ShowWriter::text(resolved).toUtf8();
    return writeFile(
        path, [&](QIODevice* device) { return device->write(text) == text.size(); }, error);
}

bool writePicture(const QImage& image, const QString& path, QString* error)
{
    return writeFile(
        path, [&](QIODevice* device) { return image.save(device, "PNG"); }, error);
}

bool makeFolderOf(const QString& path, QString* error)
{
    const QString folder = QFileInfo(path).path();
    if (QDir().mkpath(folder)) {
        return true;
    }
    *error = QStringLiteral("%1: The folder can't be made").arg(folder);
    return false;
}

} // namespace

bool writeExample(const Example& example, const QString& path, QString* error)
{
    const MapWriter maps(example.keys);
    if (!makeFolderOf(path, error) ||
        !writeFile(
            path + QStringLiteral(".map"),
            [&](QIODevice* device) { return maps.write(example.map, device); }, error) ||
        !writePicture(example.plan, path + QStringLiteral(".png"), error) ||
        !writeShow(example.show, path + QStringLiteral(".sho"), error)) {
        return false;
    }
    const QString folder = QFileInfo(path).path() + QLatin1Char('/');
    for (const NamedShow& further : example.furtherShows) {
        if (!writeShow(further.show, folder + further.name + QStringLiteral(".sho"), error)) {
            return false;
        }
    }
    for (const NamedPicture& picture : example.pictures) {
        const QString file = folder + picture.path + QStringLiteral(".png");
        if (!makeFolderOf(file, error) || !writePicture(picture.image, file, error)) {
            return false;
        }
    }
    return true;
}
