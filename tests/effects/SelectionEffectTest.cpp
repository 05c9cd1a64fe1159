#include "effects/SelectionEffect.h"

#include "tests/effects/TestStage.h"

#include <QMetaMethod>
#include <QSignalSpy>

#include <algorithm>

using TestShow::elementOf;
using TestShow::textOf;

class SelectionEffectTest : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void hasItsDefaults();
    void signalAndSlotsKeepTheirNames();
    void paintsTheWholeMap();
    void neitherFadesNorShows();
    void selectsSingleLights();
    void selectsGroups();
    void selectsControllers();
    void selectsAllAndNothing();
    void walksAGroupFromItsSecondRow();
    void walksTellOnlyTheClearing();
    void walksOfOneRowOrNone();
    void selectingEndsAWalk_data();
    void selectingEndsAWalk();
    void settingAColourClearsTheSelection();
    void followsTheLightsOfTheMap();
    void aClearedMapEndsAWalk();
    void isWrittenByteForByte();
    void readsItsKeys_data();
    void readsItsKeys();
};

namespace {

using Uids = QVector<quint64>;

/// The lights that the next frame paints in the selection's colour.
Uids selected(TestStage& stage, SelectionEffect& effect)
{
    stage.run(effect, 0);
    Uids uids;
    const QList<quint64> all = stage.model()->lightUids();
    for (const quint64 uid : all) {
        if (stage.mix(uid) == effect.fgColor()) {
            uids.append(uid);
        } else if (stage.mix(uid) != effect.bgColor()) {
            uids.append(0); // neither
        }
    }
    std::sort(uids.begin(), uids.end());
    return uids;
}

struct Stage : TestStage
{
    SelectionEffect effect{model(), Effect::kNoGid, nullptr};
    QSignalSpy told{&effect, &SelectionEffect::lightSelectionChanged};

    Stage() { effect.compile(); }
    Uids selected() { return ::selected(*this, effect); }
    Uids toldUids(bool s) const
    {
        Uids uids;
        for (const QList<QVariant>& arguments : told) {
            if (arguments.at(1).toBool() == s) {
                uids.append(arguments.at(0).toULongLong());
            }
        }
        std::sort(uids.begin(), uids.end());
        return uids;
    }
};

const Uids kNone;
const Uids kAll = {1, 2, 3, 4, 5, 6, 7, 8};

} // namespace

void SelectionEffectTest::init()
{
    qSetGlobalQHashSeed(0);
}

void SelectionEffectTest::hasItsDefaults()
{
    SelectionEffect effect(nullptr, 5, nullptr);
    QCOMPARE(effect.type(), QStringLiteral("Selection"));
    QCOMPARE(effect.typeId(), 17);
    QCOMPARE(effect.cycleTime(), 1000U);
    QCOMPARE(effect.fgColor(), VelaColor(Qt::red));
    QCOMPARE(effect.bgColor(), VelaColor(Qt::black));
    QCOMPARE(effect.property("m_fgColor").value<VelaColor>(), VelaColor(Qt::red));
    QVERIFY(effect.setProperty("m_bgColor", QVariant::fromValue(VelaColor(Qt::cyan))));
    QCOMPARE(effect.bgColor(), VelaColor(Qt::cyan));
    QVERIFY(effect.compile());
    effect.setActive(true);
    effect.tick(0, 0);
    effect.highlightGroup(1);
    effect.setLightSelected(1, true);
    effect.setGroupSelected(1, true);
    effect.setControllerSelected(1, true);
    effect.handleNewLight(1);
    effect.selectAll();
    effect.tick(25, 1);
}

void SelectionEffectTest::signalAndSlotsKeepTheirNames()
{
    const QMetaObject& meta = SelectionEffect::staticMetaObject;
    for (const char* const name :
         {"lightSelectionChanged(qulonglong,bool)", "handleNewLight(qulonglong)",
          "handleUpdatedLight(qulonglong)", "handleDeletedLight(qulonglong)", "handleClearedMap()",
          "setLightSelected(qulonglong,bool)", "setGroupSelected(qulonglong,bool)",
          "setControllerSelected(qulonglong,bool)", "highlightGroup(qulonglong)",
          "clearSelection()", "selectAll()"}) {
        QVERIFY2(meta.indexOfMethod(name) >= 0, name);
    }
}

void SelectionEffectTest::paintsTheWholeMap()
{
    Stage stage;
    stage.effect.setBgColor(Qt::blue);
    stage.effect.setGid(8); // looked at by nobody
    stage.effect.compile();
    QCOMPARE(stage.selected(), kNone);
    for (const quint64 uid : kAll) {
        QCOMPARE(stage.mix(uid), VelaColor(Qt::blue));
    }
}

void SelectionEffectTest::neitherFadesNorShows()
{
    Stage stage;
    stage.effect.setTransparency(0.75);
    stage.effect.selectAll();
    stage.run(stage.effect, 0);
    QCOMPARE(stage.mix(1), VelaColor(Qt::red));
    QCOMPARE(stage.sim(1), QColor(Qt::black));
}

void SelectionEffectTest::selectsSingleLights()
{
    Stage stage;
    stage.effect.setLightSelected(3, true);
    stage.effect.setLightSelected(5, true);
    stage.effect.setLightSelected(99, true); // no such light
    QCOMPARE(stage.selected(), Uids({3, 5}));
    QCOMPARE(stage.toldUids(true), Uids({3, 5}));
    stage.effect.setLightSelected(3, false);
    QCOMPARE(stage.selected(), Uids({5}));
    QCOMPARE(stage.toldUids(false), Uids({3}));
}

void SelectionEffectTest::selectsGroups()
{
    Stage stage;
    stage.effect.setGroupSelected(0x100, true);
    QCOMPARE(stage.selected(), Uids({1, 2, 3, 4, 5, 6}));
    QCOMPARE(stage.toldUids(true), Uids({1, 2, 3, 4, 5, 6}));
    stage.effect.setGroupSelected(0x11, false);
    QCOMPARE(stage.selected(), Uids({1, 2, 4, 5, 6}));
    stage.effect.setGroupSelected(0x999, false);
    stage.effect.setGroupSelected(0x103, false);
    stage.effect.setGroupSelected(0x104, false);
    QCOMPARE(stage.selected(), Uids({1, 2, 4, 5, 6}));
    QCOMPARE(stage.toldUids(false), Uids({3}));
}

void SelectionEffectTest::selectsControllers()
{
    Stage stage;
    stage.effect.setControllerSelected(0x999, true);
    QCOMPARE(stage.selected(), kNone);
    stage.effect.setControllerSelected(0xC0, true);
    QCOMPARE(stage.selected(), kAll);
    QCOMPARE(stage.toldUids(true), kAll);
}

void SelectionEffectTest::selectsAllAndNothing()
{
    Stage stage;
    stage.effect.setLightSelected(3, true);
    stage.told.clear();
    stage.effect.selectAll();
    QCOMPARE(stage.toldUids(true), kAll);
    QCOMPARE(stage.selected(), kAll);
    stage.told.clear();
    stage.effect.clearSelection();
    QCOMPARE(stage.toldUids(false), kAll);
    QCOMPARE(stage.toldUids(true), kNone);
    QCOMPARE(stage.selected(), kNone);
}

void SelectionEffectTest::walksAGroupFromItsSecondRow()
{
    Stage stage;
    stage.effect.setLightSelected(8, true);
    stage.effect.highlightGroup(0x100);
    QCOMPARE(stage.selected(), Uids({3}));
    QCOMPARE(stage.selected(), Uids({4, 5, 6}));
    QCOMPARE(stage.selected(), Uids({1, 2}));
    QCOMPARE(stage.selected(), Uids({3}));
    stage.effect.highlightGroup(0x999); // no such group: the walk goes on
    QCOMPARE(stage.selected(), Uids({4, 5, 6}));
    stage.effect.highlightGroup(0x101); // begins anew
    QCOMPARE(stage.selected(), Uids({3}));
}

void SelectionEffectTest::walksTellOnlyTheClearing()
{
    Stage stage;
    stage.effect.highlightGroup(0x100);
    stage.run(stage.effect, 0);
    QCOMPARE(stage.toldUids(false), kAll);
    QCOMPARE(stage.toldUids(true), kNone);
}

void SelectionEffectTest::walksOfOneRowOrNone()
{
    Stage stage;
    stage.effect.highlightGroup(0x102);
    QCOMPARE(stage.selected(), Uids({1, 2, 3, 4, 5, 6}));
    QCOMPARE(stage.selected(), Uids({1, 2, 3, 4, 5, 6}));
    stage.effect.highlightGroup(0x103);
    QCOMPARE(stage.selected(), kNone);
    stage.effect.highlightGroup(0x104);
    QCOMPARE(stage.selected(), kNone);
    QCOMPARE(stage.selected(), kNone);
}

void SelectionEffectTest::selectingEndsAWalk_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("light") << 0;
    QTest::newRow("group") << 1;
    QTest::newRow("unknown group") << 2;
    QTest::newRow("controller") << 3;
    QTest::newRow("unknown controller") << 4;
    QTest::newRow("compile") << 5;
}

void SelectionEffectTest::selectingEndsAWalk()
{
    QFETCH(const int, kind);
    Stage stage;
    stage.effect.highlightGroup(0x100);
    QCOMPARE(stage.selected(), Uids({3}));
    Uids expected = {3};
    switch (kind) {
    case 0:
        stage.effect.setLightSelected(8, true);
        expected = {3, 8};
        break;
    case 1:
        stage.effect.setGroupSelected(0x10, true);
        expected = {1, 2, 3};
        break;
    case 2:
        stage.effect.setGroupSelected(0x999, true);
        break;
    case 3:
        stage.effect.setControllerSelected(0xC0, true);
        expected = kAll;
        break;
    case 4:
        stage.effect.setControllerSelected(0x999, true);
        break;
    default:
        stage.effect.compile();
        expected.clear();
        break;
    }
    QCOMPARE(stage.selected(), expected);
    QCOMPARE(stage.selected(), expected);
}

void SelectionEffectTest::settingAColourClearsTheSelection()
{
    Stage stage;
    stage.effect.selectAll();
    stage.told.clear();
    stage.effect.setFgColor(Qt::yellow);
    QCOMPARE(stage.selected(), kNone);
    stage.effect.selectAll();
    QCOMPARE(stage.selected(), kAll);
    stage.effect.setBgColor(Qt::blue);
    QCOMPARE(stage.selected(), kNone);
    stage.effect.selectAll();
    stage.told.clear();
    stage.effect.handleUpdatedLight(3);
    QCOMPARE(stage.selected(), kNone);
    QCOMPARE(stage.told.count(), 0); // silently
}

void SelectionEffectTest::followsTheLightsOfTheMap()
{
    Stage stage;
    stage.effect.handleDeletedLight(3);
    stage.effect.selectAll();
    QCOMPARE(stage.selected(),
             Uids({1, 2, 4, 5, 6, 7, 8})); // an unknown one counts as not selected
    stage.effect.setLightSelected(3, true);
    QVERIFY(!stage.selected().contains(3));
    stage.effect.handleNewLight(3);
    QVERIFY(!stage.selected().contains(3));
    stage.effect.setLightSelected(3, true);
    QCOMPARE(stage.selected(), kAll);
    stage.effect.handleNewLight(3); // replaces the entry
    QVERIFY(!stage.selected().contains(3));
    stage.effect.handleNewLight(99); // not in the map
    stage.told.clear();
    stage.effect.selectAll();
    QCOMPARE(stage.toldUids(true), kAll);
    stage.effect.handleClearedMap();
    QCOMPARE(stage.selected(), kNone);
    stage.told.clear();
    stage.effect.selectAll();
    QCOMPARE(stage.told.count(), 0);
}

void SelectionEffectTest::aClearedMapEndsAWalk()
{
    Stage stage;
    connect(stage.model(), &MapModel::clearedMap, &stage.effect,
            &SelectionEffect::handleClearedMap);
    stage.effect.highlightGroup(0x100);
    stage.model()->clear();
    QCOMPARE(stage.selected(), kNone);
}

void SelectionEffectTest::isWrittenByteForByte()
{
    const SelectionEffect effect(nullptr, 7, nullptr);
    QCOMPARE(textOf(effect), QStringLiteral("<effect>\n") +
                                 TestShow::baseText(QStringLiteral("Selection"),
                                                    QStringLiteral("Unnamed Effect"), 7) +
                                 QStringLiteral("<fgcolor>aRgb;1;0;#ffffffff00000000</fgcolor>\n"
                                                "<bgcolor>aRgb;1;0;#ffff000000000000</bgcolor>\n"
                                                "</effect>\n"));
}

void SelectionEffectTest::readsItsKeys_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("fg");
    QTest::addColumn<QString>("bg");
    const QString red = QStringLiteral("#ff0000");
    const QString black = QStringLiteral("#000000");
    const QString blue = QStringLiteral("#0000ff");
    QTest::newRow("missing") << QString() << red << black;
    QTest::newRow("both") << QStringLiteral("<fgcolor>blue</fgcolor><bgcolor>red</bgcolor>") << blue
                          << red;
    QTest::newRow("unreadable fall back")
        << QStringLiteral("<fgcolor>blue</fgcolor><fgcolor/><bgcolor>blue</bgcolor><bgcolor/>")
        << red << black;
}

void SelectionEffectTest::readsItsKeys()
{
    QFETCH(const QString, keys);
    QFETCH(const QString, fg);
    QFETCH(const QString, bg);
    TestStage stage;
    QDomElement element = elementOf(keys);
    SelectionEffect effect(stage.model(), 5, &element);
    QCOMPARE(effect.fgColor().name(), fg);
    QCOMPARE(effect.bgColor().name(), bg);
    QCOMPARE(effect.compiled(), !keys.isEmpty());
    effect.setLightSelected(1, true);
    QCOMPARE(selected(stage, effect), keys.isEmpty() ? kNone : Uids({1}));
    QDomElement again = elementOf(QStringLiteral("<fgcolor>blue</fgcolor>"));
    effect.fromXml(&again); // reading a colour compiles, which clears the selection
    QCOMPARE(selected(stage, effect), kNone);
}

QTEST_GUILESS_MAIN(SelectionEffectTest)
#include "SelectionEffectTest.moc"
