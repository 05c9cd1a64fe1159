#include "color/VelaColorLibrary.h"
#include "color/VelaColorLibraryItem.h"

#include <QDir>
#include <QFile>
#include <QObject>
#include <QSet>
#include <QTemporaryDir>
#include <QtTest>

namespace {

using Library = VelaColorLibrary;

QStringList namesOfLists(const Library& library)
{
    QStringList names;
    for (int row = 0; row < library.rowCount(); ++row) {
        names << library.index(row, 0).data().toString();
    }
    return names;
}

const QString kWhites = QStringLiteral("Architectural Whites");
const QString kWashes = QStringLiteral("Theatre Washes");

} // namespace

/// The preset files that are copied beside the program: here, beside this test.
class PresetsTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void theyLoadInTheOrderOfTheirNames();
    void eachSwatchIsWhole_data();
    void eachSwatchIsWhole();
    void whitesAreWhites();
    void theyAreNobodysToChangeOrSave();
    void aPickersStartLoadsThemInFrontOfTheBuiltIns();
    void aListOfTheUsersKeepsItsName();

private:
    QTemporaryDir m_home;
};

void PresetsTest::initTestCase()
{
    QVERIFY(qputenv("XDG_DATA_HOME", QFile::encodeName(m_home.path()))); // nobody's own swatches
    QVERIFY(Library::userFolder().startsWith(m_home.path()));
}

void PresetsTest::theyLoadInTheOrderOfTheirNames()
{
    Library library;
    library.loadPresets();
    QCOMPARE(namesOfLists(library), QStringList({Library::explicitListName(),
                                                 Library::projectListName(), kWhites, kWashes}));
    const QDir folder(QCoreApplication::applicationDirPath() + QStringLiteral("/Presets"));
    QCOMPARE(folder.entryList(QDir::Files).size(), 2);
}

void PresetsTest::eachSwatchIsWhole_data()
{
    QTest::addColumn<QString>("listId");
    QTest::addColumn<int>("least");
    QTest::addColumn<int>("spec");
    QTest::newRow("whites") << kWhites << 12 << int(VelaColor::Yxy);
    QTest::newRow("washes") << kWashes << 24 << int(VelaColor::Rgb);
}

void PresetsTest::eachSwatchIsWhole()
{
    QFETCH(const QString, listId);
    QFETCH(const int, least);
    QFETCH(const int, spec);
    Library library;
    library.loadPresets();
    const QModelIndex list = library.listIndex(listId);
    QVERIFY(library.rowCount(list) >= least);
    QSet<QString> names;
    QSet<QString> ids;
    QSet<QString> colors;
    for (int row = 0; row < library.rowCount(list); ++row) {
        const VelaColorLibraryItem* const item = library.itemAt(library.index(row, 0, list));
        QVERIFY2(item->color().isValid(), qPrintable(item->name()));
        QCOMPARE(int(item->color().spec()), spec);
        QCOMPARE(item->color().alpha8(), 255);
        QCOMPARE(item->originatingPreset(), listId);
        QVERIFY(item->name() != QStringLiteral("empty attribute"));
        QVERIFY(!VelaColor(item->uid()).isValid()); // or it would be taken for a colour's text
        names.insert(item->name());
        ids.insert(item->colorId());
        colors.insert(item->color().toString());
        QVERIFY(library.colorForUid(item->uid()) == item->color());
    }
    QCOMPARE(names.size(), library.rowCount(list));
    QCOMPARE(ids.size(), library.rowCount(list));
    QCOMPARE(colors.size(), library.rowCount(list));
    QCOMPARE(library.rowCount(library.listIndex(Library::explicitListName())), 0);
}

void PresetsTest::whitesAreWhites()
{
    Library library;
    library.loadPresets();
    const QModelIndex list = library.listIndex(kWhites);
    for (int row = 0; row < library.rowCount(list); ++row) {
        const VelaColorLibraryItem* const item = library.itemAt(library.index(row, 0, list));
        const double x = item->color().smallX();
        const double y = item->color().smallY();
        const double n = (x - 0.3320) / (0.1858 - y); // McCamy, 1992
        const double kelvin = ((449.0 * n + 3525.0) * n + 6823.3) * n + 5520.33;
        const double named = item->name()
                                 .section(QStringLiteral(", "), 1)
                                 .section(QLatin1Char(' '), 0, 0)
                                 .toDouble();
        QVERIFY2(qAbs(kelvin - named) < 0.02 * named, qPrintable(item->name()));
    }
}

void PresetsTest::theyAreNobodysToChangeOrSave()
{
    Library library;
    library.load();
    library.loadPresets();
    library.insertColor(Qt::red, QStringLiteral("R"), QString(), Library::explicitListName(),
                        QString());
    QVERIFY(library.save());
    QVERIFY(!library.setData(library.listIndex(kWashes), QStringLiteral("Mine"), Qt::EditRole));
    QFile file(Library::userFile());
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray saved = file.readAll();
    QVERIFY(saved.contains("name=\"R\""));
    QVERIFY(!saved.contains("Theatre") && !saved.contains("Architectural"));
}

void PresetsTest::aPickersStartLoadsThemInFrontOfTheBuiltIns()
{
    Library library;
    library.startForPicker();
    library.startForPicker();
    QCOMPARE(namesOfLists(library).mid(2),
             QStringList({kWhites, kWashes, QStringLiteral("Halden Swatches")}));
}

void PresetsTest::aListOfTheUsersKeepsItsName()
{
    Library library;
    library.createColorList(kWashes, true);
    library.loadPresets();
    QCOMPARE(namesOfLists(library).mid(2),
             QStringList({kWashes, kWhites, kWashes + QStringLiteral(" 2")}));
    QCOMPARE(library.rowCount(library.listIndex(kWashes)), 0);
}

QTEST_MAIN(PresetsTest)
#include "PresetsTest.moc"
