#include "color/Sorrel3ProjectHelper.h"
#include "color/VelaColorLibrary.h"
#include "color/VelaColorLibraryItem.h"
#include "color/XmlDepth.h"

#include <QCoreApplication>
#include <QCursor>
#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QSaveFile>
#include <QSet>
#include <QStandardPaths>
#include <QTextStream>

#include <utility>

namespace {

constexpr int kIndent = 1;
const QLatin1String kRootTag("ColorLibraryList");
const QLatin1String kFormat("Sorrel3");

/// The wait cursor, where there is a screen.
class WaitCursor
{
public:
    WaitCursor()
    {
        if (qGuiApp != nullptr) {
            QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
        }
    }
    ~WaitCursor()
    {
        if (qGuiApp != nullptr) {
            QGuiApplication::restoreOverrideCursor();
        }
    }
    Q_DISABLE_COPY(WaitCursor)
};

/// The next save takes the place of `file`, which wasn't understood, or not all of it.
void keepBeside(const QString& file)
{
    const QString kept = file + QStringLiteral(".bak");
    QFile::remove(kept);
    if (!QFile::copy(file, kept)) {
        QFile::rename(file, kept); // it may not be readable
    }
}

} // namespace

/// Holds the library's notifications while a document is entered.
class VelaColorLibrary::Loading
{
public:
    explicit Loading(VelaColorLibrary* library)
        : m_library(library)
        , m_before(library->m_loading)
    {
        library->m_loading = true;
    }
    ~Loading() { m_library->m_loading = m_before; }
    Q_DISABLE_COPY(Loading)

    /// Enters the lists of `document`, read from `source`, `naming` telling under which names.
    /// False, with a line in the debug log, where a value was no colour.
    bool read(const QDomDocument& document, const QString& source,
              const Sorrel3ProjectHelper::ListNaming& naming, QString* error)
    {
        constexpr double kNoRatio = 1.0; // nobody previews
        m_library->m_misread.clear();
        auto* helper = new Sorrel3ProjectHelper(
            [&naming](const QString& name) { return naming(plainName(name)); });
        connect(helper, &Sorrel3ProjectHelper::insertList, m_library,
                &VelaColorLibrary::createColorList);
        connect(helper, &Sorrel3ProjectHelper::insertColor, m_library,
                &VelaColorLibrary::handleInsertColor);
        connect(helper, &Sorrel3ProjectHelper::listRead, m_library,
                &VelaColorLibrary::onColorLibraryListChanged);
        helper->read(document, error, nullptr, kNoRatio);
        helper->deleteLater();
        if (!error->isEmpty()) {
            qDebug("%s: %s", qUtf8Printable(source), qUtf8Printable(*error));
        }
        return logMisread(source);
    }

private:
    bool logMisread(const QString& source)
    {
        constexpr int kShown = 100; // characters
        const QVector<Misread> misread = std::exchange(m_library->m_misread, {});
        if (misread.isEmpty()) {
            return true;
        }
        qDebug("%s: values that are no color: %d, the first \"%s\" of \"%s\"",
               qUtf8Printable(source), misread.size(),
               qUtf8Printable(misread.first().value.left(kShown)),
               qUtf8Printable(misread.first().name.left(kShown)));
        return false;
    }

    VelaColorLibrary* m_library;
    bool m_before;
};

QString VelaColorLibrary::userFolder()
{
    static const QString folder = [] {
        const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
        return (data.isEmpty() ? QDir::homePath() : data) + QStringLiteral("/Ostrand Halden");
    }();
    return folder;
}

QString VelaColorLibrary::userFile()
{
    return userFolder() + QStringLiteral("/userColors.xml");
}

bool VelaColorLibrary::readFile(const QString& path, QDomDocument* document, QString* error)
{
    const auto refuse = [error](const QString& reason) {
        *error = reason;
        qDebug("%s", qUtf8Printable(reason));
        return false;
    };
    QFile file(path);
    const QFileInfo info(path);
    const bool isPipe = info.exists() && !info.isFile(); // opening one would wait for ever
    const bool isOpen = !isPipe && file.open(QIODevice::ReadOnly);
    qDebug("opened %d", int(isOpen));
    if (!isOpen) {
        return refuse(
            tr("%1 can't be read: %2").arg(path, isPipe ? tr("no file") : file.errorString()));
    }
    const QByteArray text = file.readAll();
    if (xmlShape(text) == XmlShape::TooDeep) {
        return refuse(tr("%1 is no library of colors: its elements nest deeper than %2")
                          .arg(path, QString::number(kMaxXmlDepth)));
    }
    QString reason;
    int line = 0;
    if (!document->setContent(text, &reason, &line)) {
        return refuse(tr("%1 is no library of colors: %2 in line %3")
                          .arg(path, reason, QString::number(line)));
    }
    return true;
}

bool VelaColorLibrary::load(const QString& path, QString* error)
{
    if (m_dirty) {
        save();
    }
    const WaitCursor wait;
    const QString file = path.isEmpty() ? userFile() : path;
    qDebug("Filepath: %s", qUtf8Printable(file));
    QString wrong;
    QDomDocument document;
    const bool isThere = QFileInfo::exists(file);
    const bool isRead = readFile(file, &document, &wrong);
    bool isWhole = isRead;
    if (isRead) {
        QSet<QString> filled; // by this file: its second list of a name is another one
        isWhole = Loading(this).read(
            document, file,
            [&](const QString& name) {
                const VelaColorLibraryItem* const known = list(name);
                const bool isEmptyOwn =
                    known != nullptr && known->isUserLibrary() && known->childCount() == 0;
                QString entered =
                    isEmptyOwn && !filled.contains(name) ? name : uniqueListName(name);
                filled.insert(entered);
                return entered;
            },
            &wrong);
    }
    if (isThere && !isWhole && file == userFile()) {
        keepBeside(file);
    }
    if (error != nullptr) {
        *error = wrong;
    }
    m_libraryLoaded = m_libraryLoaded || file == userFile();
    return isRead;
}

void VelaColorLibrary::loadPresets()
{
    static const QStringList kFilters = {QStringLiteral("*.velacolors")};
    const QDir folder(QCoreApplication::applicationDirPath() + QStringLiteral("/Presets"));
    const QFileInfoList files = folder.entryInfoList(kFilters, QDir::Files, QDir::Name);
    for (const QFileInfo& file : files) {
        const WaitCursor wait;
        qDebug("Filepath: %s", qUtf8Printable(file.filePath()));
        QString wrong;
        QDomDocument document;
        if (readFile(file.filePath(), &document, &wrong)) {
            Loading(this).read(
                document, file.filePath(),
                [this](const QString& name) {
                    QString entered = uniqueListName(name);
                    createColorList(entered, false);
                    return entered;
                },
                &wrong);
        }
    }
}

bool VelaColorLibrary::importFile(const QString& path, QString* error)
{
    QString wrong;
    QDomDocument document;
    QStringList added;
    if (readFile(path, &document, &wrong)) {
        Loading(this).read(
            document, path,
            [&](const QString& name) {
                added << uniqueListName(name);
                // The user's own now, whatever it was.
                createColorList(added.last(), true);
                return added.last();
            },
            &wrong);
        if (added.isEmpty()) {
            wrong = tr("%1 holds no colors").arg(path);
            qDebug("%s", qUtf8Printable(wrong));
        }
    }
    if (error != nullptr) {
        *error = wrong;
    }
    for (const QString& listId : qAsConst(added)) {
        emit changed(listId);
    }
    if (!added.isEmpty()) {
        onColorLibraryListChanged(added.last());
    }
    return !added.isEmpty();
}

bool VelaColorLibrary::writeDocument(const QDomDocument& document, const QString& path)
{
    const QString text = document.toString(kIndent);
    qDebug("%s", qUtf8Printable(text));
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text)) {
        qDebug("%s can't be written: %s", qUtf8Printable(path), qUtf8Printable(file.errorString()));
        return false;
    }
    QTextStream stream(&file);
    stream.setCodec("UTF-8");
    stream << text;
    stream.flush();
    if (stream.status() != QTextStream::Ok || !file.commit()) {
        qDebug("%s can't be written: %s", qUtf8Printable(path), qUtf8Printable(file.errorString()));
        return false;
    }
    return true;
}

bool VelaColorLibrary::save()
{
    if (!m_libraryLoaded) {
        return false;
    }
    QDomDocument document;
    QDomElement root = document.createElement(kRootTag);
    document.appendChild(root);
    for (int row = 0; row < rowCount(); ++row) {
        const QModelIndex place = index(row, SwatchColumn);
        const VelaColorLibraryItem* const item = itemAt(place);
        const bool isIdle = item->name() == explicitListName() && item->childCount() == 0;
        if ((flags(place) & Qt::ItemIsEditable) != 0 && !isIdle) {
            root.appendChild(item->toElement(document, kFormat, true));
        }
    }
    if (!QDir().mkpath(userFolder())) {
        qDebug("%s can't be written: its folder can't be made", qUtf8Printable(userFile()));
        m_dirty = true;
        return false;
    }
    const bool isSaved = writeDocument(document, userFile());
    m_dirty = !isSaved;
    return isSaved;
}

bool VelaColorLibrary::exportColors(const QModelIndexList& items, const QString& path) const
{
    QSet<const VelaColorLibraryItem*> chosen;
    for (const QModelIndex& place : items) {
        chosen.insert(itemAt(place));
    }
    QDomDocument document;
    QDomElement root = document.createElement(kRootTag);
    document.appendChild(root);
    for (int row = 0; row < m_root->childCount(); ++row) {
        const VelaColorLibraryItem* const list = m_root->child(row);
        QList<Sorrel3ProjectHelper::Swatch> swatches;
        for (int i = 0; i < list->childCount(); ++i) {
            const VelaColorLibraryItem* const item = list->child(i);
            if (chosen.contains(list) || chosen.contains(item)) {
                swatches.append({item->uid(), item->name(), item->color().toString(),
                                 item->originatingPreset(), item->colorId()});
            }
        }
        if (!swatches.isEmpty() || chosen.contains(list)) {
            root.appendChild(
                Sorrel3ProjectHelper::listElement(document, list->name(), true, swatches));
        }
    }
    return writeDocument(document, path);
}

QDomElement VelaColorLibrary::projectElement(QDomDocument& document) const
{
    const VelaColorLibraryItem* const project = list(projectListName());
    if (project->childCount() == 0) {
        return {};
    }
    QDomElement root = document.createElement(kRootTag);
    root.appendChild(project->toElement(document, kFormat, false));
    return root;
}

void VelaColorLibrary::readProject(const QDomDocument& document, const QString& source)
{
    const QModelIndex project = listIndex(projectListName());
    QString ignored; // a show without swatches is as good
    {
        Loading loading(this);
        if (rowCount(project) > 0) {
            removeRows(0, rowCount(project), project);
        }
        loading.read(
            document, source, [](const QString&) { return projectListName(); }, &ignored);
    }
    emit changed(projectListName());
}
