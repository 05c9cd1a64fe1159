#include <QDirIterator>
#include <QFile>
#include <QHash>
#include <QObject>
#include <QRegularExpression>
#include <QSet>
#include <QtTest>

namespace {

/// The arrows of the house: what a folder may include besides itself.
QHash<QString, QSet<QString>> arrows()
{
    const QStringList all = {
        QStringLiteral("resources"), QStringLiteral("color"), QStringLiteral("devices"),
        QStringLiteral("output"),    QStringLiteral("map"),   QStringLiteral("engine"),
        QStringLiteral("effects"),   QStringLiteral("sim"),   QStringLiteral("picker"),
        QStringLiteral("editor"),    QStringLiteral("app")};
    const auto set = [](const char* names) {
        const QStringList list = QString::fromLatin1(names).split(QLatin1Char(' '));
        return QSet<QString>(list.cbegin(), list.cend());
    };
    QHash<QString, QSet<QString>> table;
    table.insert(QStringLiteral("resources"), {});
    table.insert(QStringLiteral("color"), {});
    table.insert(QStringLiteral("devices"), {});
    table.insert(QStringLiteral("output"), {});
    table.insert(QStringLiteral("map"), set("color devices output"));
    table.insert(QStringLiteral("engine"), set("map color devices output"));
    table.insert(QStringLiteral("effects"), set("engine map color devices output"));
    table.insert(QStringLiteral("sim"), set("map color"));
    table.insert(QStringLiteral("picker"), set("color"));
    table.insert(QStringLiteral("editor"), set("effects picker engine map color devices output"));
    table.insert(QStringLiteral("app"), QSet<QString>(all.cbegin(), all.cend()));
    return table;
}

/// "line: included path" of every include of ours in `path` that `folder` may not make.
QStringList badIncludes(const QString& path, const QString& folder,
                        const QHash<QString, QSet<QString>>& table)
{
    static const QRegularExpression kInclude(QStringLiteral("^\\s*#\\s*include\\s*\"([^\"]+)\""));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        return {QStringLiteral("unreadable: ") + path};
    }
    QStringList bad;
    int number = 0;
    while (!file.atEnd()) {
        ++number;
        const QRegularExpressionMatch match = kInclude.match(QString::fromUtf8(file.readLine()));
        if (!match.hasMatch()) {
            continue;
        }
        const QString included = match.captured(1);
        const QString target = included.section(QLatin1Char('/'), 0, 0);
        const bool generated = included.endsWith(QStringLiteral(".moc"));
        if (!generated && target != folder && !table.value(folder).contains(target)) {
            bad << QStringLiteral("%1:%2: %3").arg(path).arg(number).arg(included);
        }
    }
    return bad;
}

} // namespace

class LayersTest : public QObject
{
    Q_OBJECT
private slots:
    void anArrowUpwardIsFound();
    void everyFolderKeepsToItsArrows();
};

void LayersTest::anArrowUpwardIsFound()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("Bad.cpp"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("#include \"color/VelaColor.h\"\n#include \"map/Light.h\"\n");
    file.close();
    QCOMPARE(badIncludes(path, QStringLiteral("picker"), arrows()).size(), 1);
    QCOMPARE(badIncludes(path, QStringLiteral("engine"), arrows()).size(), 0);
}

void LayersTest::everyFolderKeepsToItsArrows()
{
    const QHash<QString, QSet<QString>> table = arrows();
    int files = 0;
    QStringList bad;
    for (auto it = table.cbegin(); it != table.cend(); ++it) {
        QDirIterator walk(QStringLiteral(FORGE_SOURCE_DIR "/") + it.key(),
                          {QStringLiteral("*.h"), QStringLiteral("*.cpp")}, QDir::Files,
                          QDirIterator::Subdirectories);
        while (walk.hasNext()) {
            ++files;
            bad << badIncludes(walk.next(), it.key(), table);
        }
    }
    QVERIFY(files > 0);
    QVERIFY2(bad.isEmpty(), qPrintable(bad.join(QLatin1Char('\n'))));
}

QTEST_GUILESS_MAIN(LayersTest)
#include "LayersTest.moc"
