#include "color/VelaColorLibrary.h"
#include "color/VelaColorLibraryItem.h"
#include "tests/app/WindowBench.h"

#include <QDomDocument>
#include <QObject>
#include <QTextStream>
#include <QtTest>

namespace {

VelaColorLibrary* library()
{
    return VelaColorLibrary::instance();
}

QModelIndex project()
{
    return library()->listIndex(VelaColorLibrary::projectListName());
}

QStringList swatches()
{
    QStringList names;
    for (int row = 0; row < library()->rowCount(project()); ++row) {
        names << library()->index(row, 0, project()).data().toString();
    }
    return names;
}

void addSwatch(const char* name, const VelaColor& color = Qt::red)
{
    library()->insertColor(color, QString::fromUtf8(name), QStringLiteral("P"),
                           VelaColorLibrary::projectListName(), QStringLiteral("7"));
}

QString swatchXml(const char* name)
{
    return QStringLiteral("<Color name=\"%1\" uid=\"u-%1\" value=\"#ff0000\"/>")
        .arg(QString::fromLatin1(name));
}

QString listXml(const char* name, const QString& colors)
{
    return QStringLiteral("<ColorLibrary name=\"%1\" isUserLibrary=\"1\">%2</ColorLibrary>")
        .arg(QString::fromLatin1(name), colors);
}

} // namespace

/// "Project Swatches" goes with the show.
class ForgeWindowSwatchesTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();

    void aShowWithoutSwatchesIsWrittenAsEver();
    void swatchesAreTheLastChild();
    void theyComeBackWithTheShow();
    void everyListOfTheFileFillsTheOne();
    void anotherShowReplacesThem();
    void aShowWithoutSwatchesEmptiesTheList();
    void anUnreadableShowEmptiesTheList();
    void newEmptiesTheList();
    void cancellingKeepsThem();
    void aMapKeepsThem();
    void aChangeOfThemIsAChangeOfTheShow();
    void readingThemIsNoChange();
    void otherListsAreNoneOfTheShows();
    void valuesThatAreNoColorsNameTheShow();

private:
    void save() { m_bench->action("saveShowAction")->trigger(); }
    void openShow(const QString& file)
    {
        m_bench->dialogs.expectFile(file);
        m_bench->action("openShowAction")->trigger();
    }
    bool isModified() const { return m_bench->editor()->isModified(); }

    QTemporaryDir m_home;
    std::unique_ptr<WindowBench> m_bench;
};

void ForgeWindowSwatchesTest::initTestCase()
{
    QVERIFY(qputenv("XDG_DATA_HOME", QFile::encodeName(m_home.path()))); // nobody's own swatches
    QVERIFY(VelaColorLibrary::userFolder().startsWith(m_home.path()));
    WindowBench::prepare();
}

void ForgeWindowSwatchesTest::init()
{
    library()->readProject(QDomDocument());
    m_bench = std::make_unique<WindowBench>();
}

void ForgeWindowSwatchesTest::cleanup()
{
    const QString complaints = m_bench->dialogs.complaints();
    m_bench.reset();
    QCOMPARE(complaints, QString());
}

void ForgeWindowSwatchesTest::aShowWithoutSwatchesIsWrittenAsEver()
{
    const QString file = m_bench->show();
    m_bench->open(m_bench->map(), file);
    QString expected;
    QTextStream stream(&expected);
    m_bench->root()->save(stream);
    stream.flush();
    save();
    QCOMPARE(WindowBench::text(file), expected);
    QVERIFY(!expected.contains(QStringLiteral("ColorLibrary")));
    // Nor does a swatch that came and went leave anything.
    addSwatch("Passing");
    QVERIFY(library()->removeRows(0, 1, project()));
    save();
    QCOMPARE(WindowBench::text(file), expected);
}

void ForgeWindowSwatchesTest::swatchesAreTheLastChild()
{
    const QString file = m_bench->show();
    m_bench->open(m_bench->map(), file);
    save();
    const QString before = WindowBench::text(file);
    addSwatch("Röt & <co>");
    addSwatch("White", VelaColor(0.31, 0.32));
    save();
    const QString text = WindowBench::text(file);
    const QString end = QStringLiteral("</effect>\n");
    const int at = text.indexOf(QStringLiteral("<ColorLibraryList>\n"));
    const QString close = QStringLiteral("</ColorLibraryList>\n");
    const int behind = text.indexOf(close) + close.size();
    QVERIFY(at > 0);
    QCOMPARE(text.left(at) + text.mid(behind), before); // the rest is what it was
    QCOMPARE(text.mid(behind), end);
    QDomDocument document;
    QVERIFY(document.setContent(text));
    const QDomElement last = document.documentElement().lastChildElement();
    QCOMPARE(last.tagName(), QStringLiteral("ColorLibraryList"));
    QCOMPARE(last.childNodes().size(), 1);
    const QDomElement list = last.firstChildElement();
    QCOMPARE(list.attribute(QStringLiteral("name")), QStringLiteral("Project Swatches"));
    QCOMPARE(list.attribute(QStringLiteral("isUserLibrary")), QStringLiteral("0"));
    QCOMPARE(list.childNodes().size(), 2);
    const QDomElement color = list.firstChildElement();
    QCOMPARE(color.attribute(QStringLiteral("name")), QString::fromUtf8("Röt & <co>"));
    QCOMPARE(color.attribute(QStringLiteral("value")), VelaColor(Qt::red).toString());
    QCOMPARE(color.attribute(QStringLiteral("originatingPreset")), QStringLiteral("P"));
    QCOMPARE(color.attribute(QStringLiteral("colorId")), QStringLiteral("7"));
}

void ForgeWindowSwatchesTest::theyComeBackWithTheShow()
{
    const QString file = m_bench->show();
    m_bench->open(m_bench->map(), file);
    addSwatch("Door");
    addSwatch("White", VelaColor(0.31, 0.32));
    const QString uid = library()->itemAt(library()->index(1, 0, project()))->uid();
    save();
    const QString first = WindowBench::text(file);
    library()->readProject(QDomDocument());
    m_bench->window.reset();
    m_bench->open(m_bench->map(), file); // as at the program's start
    QCOMPARE(swatches(), QStringList({QStringLiteral("Door"), QStringLiteral("White")}));
    const VelaColorLibraryItem* const white = library()->itemAt(library()->index(1, 0, project()));
    QCOMPARE(white->color().toString(), VelaColor(0.31, 0.32).toString());
    QCOMPARE(white->uid(), uid);
    QCOMPARE(white->originatingPreset(), QStringLiteral("P"));
    QCOMPARE(white->colorId(), QStringLiteral("7"));
    QCOMPARE(m_bench->root()->effectList().size(), 1);
    openShow(file); // and again
    QCOMPARE(swatches().size(), 2);
    save();
    QCOMPARE(WindowBench::text(file).size(), first.size());
}

void ForgeWindowSwatchesTest::everyListOfTheFileFillsTheOne()
{
    const int lists = library()->rowCount();
    m_bench->open(
        QString(),
        m_bench->file(
            "lists.sho",
            WindowBench::rootXml(
                listXml("Mine", swatchXml("a")) +
                WindowBench::effectXml(1, 500, listXml("In it", swatchXml("b"))) +
                QStringLiteral("<ColorLibraryList>%1%2</ColorLibraryList>")
                    .arg(listXml("Explicit Colors", swatchXml("c")), listXml("", QString())))));
    QCOMPARE(swatches(),
             QStringList({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}));
    QCOMPARE(library()->rowCount(), lists);
    QCOMPARE(m_bench->root()->effectList().size(), 1);
}

void ForgeWindowSwatchesTest::anotherShowReplacesThem()
{
    m_bench->open();
    addSwatch("Of old");
    m_bench->editor()->setModified(false);
    openShow(m_bench->file("other.sho", WindowBench::rootXml(listXml("L", swatchXml("New")))));
    QCOMPARE(swatches(), QStringList(QStringLiteral("New")));
}

void ForgeWindowSwatchesTest::aShowWithoutSwatchesEmptiesTheList()
{
    m_bench->open();
    addSwatch("Of old");
    m_bench->editor()->setModified(false);
    openShow(m_bench->show());
    QCOMPARE(swatches(), QStringList());
}

void ForgeWindowSwatchesTest::anUnreadableShowEmptiesTheList()
{
    m_bench->open();
    addSwatch("Of old");
    m_bench->editor()->setModified(false);
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(QStringLiteral("Show refused: .+")));
    openShow(m_bench->file("bad.sho", QStringLiteral("<effect>") + listXml("L", swatchXml("a"))));
    QCOMPARE(swatches(), QStringList()); // it is an empty show under its name
}

void ForgeWindowSwatchesTest::newEmptiesTheList()
{
    m_bench->open(m_bench->map(), m_bench->show());
    addSwatch("Of old");
    m_bench->dialogs.expectBox(QStringLiteral("No"));
    m_bench->action("newShowAction")->trigger();
    QCOMPARE(swatches(), QStringList());
    const QString file = m_bench->path("new.sho");
    m_bench->dialogs.expectFile(file);
    save();
    QVERIFY(!WindowBench::text(file).contains(QStringLiteral("ColorLibrary")));
}

void ForgeWindowSwatchesTest::cancellingKeepsThem()
{
    m_bench->open(m_bench->map(), m_bench->show());
    addSwatch("Kept");
    m_bench->dialogs.expectBox(QStringLiteral("Cancel"));
    m_bench->action("newShowAction")->trigger();
    m_bench->dialogs.expectBox(QStringLiteral("No"));
    m_bench->dialogs.expectFileCancelled();
    m_bench->action("openShowAction")->trigger();
    QCOMPARE(swatches(), QStringList(QStringLiteral("Kept")));
}

void ForgeWindowSwatchesTest::aMapKeepsThem()
{
    m_bench->open();
    addSwatch("Kept");
    m_bench->dialogs.expectFile(m_bench->map());
    m_bench->action("loadMapAction")->trigger(); // makes another root for the empty show
    QCOMPARE(swatches(), QStringList(QStringLiteral("Kept")));
    const QString file = m_bench->path("kept.sho");
    m_bench->dialogs.expectFile(file);
    save();
    QVERIFY(WindowBench::text(file).contains(QStringLiteral("Kept")));
}

void ForgeWindowSwatchesTest::aChangeOfThemIsAChangeOfTheShow()
{
    const QString file = m_bench->show();
    m_bench->open(m_bench->map(), file);
    QVERIFY(!isModified());
    addSwatch("a");
    QVERIFY(isModified());
    save();
    QVERIFY(!isModified());
    QVERIFY(
        library()->setData(library()->index(0, 0, project()), QStringLiteral("b"), Qt::EditRole));
    QVERIFY(isModified());
    save();
    QVERIFY(WindowBench::text(file).contains(QStringLiteral("\"b\"")));
    QVERIFY(library()->removeRows(0, 1, project()));
    QVERIFY(isModified());
}

void ForgeWindowSwatchesTest::readingThemIsNoChange()
{
    m_bench->open(m_bench->map(),
                  m_bench->file("with.sho", WindowBench::rootXml(listXml("L", swatchXml("a")))));
    QCOMPARE(swatches().size(), 1);
    QVERIFY(!isModified());
    m_bench->action("newShowAction")->trigger();
    QVERIFY(!isModified());
}

void ForgeWindowSwatchesTest::otherListsAreNoneOfTheShows()
{
    const QString file = m_bench->show();
    m_bench->open(m_bench->map(), file);
    const QString explicitList = VelaColorLibrary::explicitListName();
    library()->insertColor(Qt::blue, QStringLiteral("Mine"), QString(), explicitList, QString());
    QVERIFY(!isModified());
    save();
    QVERIFY(!WindowBench::text(file).contains(QStringLiteral("Mine")));
}

void ForgeWindowSwatchesTest::valuesThatAreNoColorsNameTheShow()
{
    const QString file = m_bench->file(
        "odd.sho",
        WindowBench::rootXml(listXml(
            "L", swatchXml("a").replace(QStringLiteral("#ff0000"), QStringLiteral("nonsense")))));
    QTest::ignoreMessage(QtDebugMsg,
                         QRegularExpression(QStringLiteral("^%1: values that are no color: 1, ")
                                                .arg(QRegularExpression::escape(file))));
    m_bench->open(QString(), file);
    QCOMPARE(swatches().size(), 1);
}

QTEST_MAIN(ForgeWindowSwatchesTest)
#include "ForgeWindowSwatchesTest.moc"
