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

} // namespace

bool writeExample(const Example& example, const QString& path, QString* error)
{
    ShowEffect resolved = example.show;
    if (!resolveTimes(&resolved)) {
        *error = QStringLiteral("%1: Its links close on themselves or lead nowhere").arg(path);
        return false;
    }
    const QString folder = QFileInfo(path).path();
    if (!QDir().mkpath(folder)) {
        *error = QStringLiteral("%1: The folder can't be made").arg(folder);
        return false;
    }
    const MapWriter maps(example.keys);
    const QByteArray show = ShowWriter::text(resolved).toUtf8();
    return writeFile(
               path + QStringLiteral(".map"),
               [&](QIODevice* device) { return maps.write(example.map, device); }, error) &&
           writeFile(
               path + QStringLiteral(".png"),
               [&](QIODevice* device) { return example.plan.save(device, "PNG"); }, error) &&
           writeFile(
               path + QStringLiteral(".sho"),
               [&](QIODevice* device) { return device->write(show) == show.size(); }, error);
}
