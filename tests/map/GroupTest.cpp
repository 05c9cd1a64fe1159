#include "map/Group.h"

#include "map/GroupLayout.h"
#include "map/Light.h"
#include "tests/map/MapText.h"

#include <QElapsedTimer>
#include <QObject>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QtTest>

namespace {

/// Six lights 1 to 6, with their leaves; "a", "b", "c" are synchronized groups of 2, 1 and 3.
QByteArray base()
{
    QByteArray xml;
    for (const char* uid : {"1", "2", "3", "4", "5", "6"}) {
        xml += lightXml(uid, 0, 0, "<name>L" + QByteArray(uid) + "</name>");
        xml += groupXml(uid, 3, {uid});
    }
    return xml + groupXml("a", 2, {"1", "2"}) + groupXml("b", 2, {"3"}) +
           groupXml("c", 2, {"4", "5", "6"});
}

/// A layout as text: rows separated by "|", lights by their uid, "-" for a missing one.
QString shape(const GroupLayout* layout)
{
    QStringList rows;
    int total = 0;
    for (int row = 0; row < layout->rows; ++row) {
        QStringList lights;
        for (int i = 0; i < layout->counts[row]; ++i) {
            const Light* const light = layout->lights[row][i];
            lights << (light == nullptr ? QStringLiteral("-") : QString::number(light->uid(), 16));
        }
        total += layout->counts[row];
        rows << lights.join(QLatin1Char(' '));
    }
    return total == layout->total ? rows.join(QLatin1Char('|')) : QStringLiteral("wrong total");
}

QString hex(const QList<quint64>& uids)
{
    QStringList list;
    for (const quint64 uid : uids) {
        list << QString::number(uid, 16);
    }
    return list.join(QLatin1Char(' '));
}

void expectCut()
{
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(QStringLiteral(
                                         "test\\.map: group [0-9a-f]+ has too many entries")));
}

} // namespace

class GroupTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { initForgeResources(); }
    void keysAreRead_data();
    void keysAreRead();
    void kindsHaveNames();
    void layoutsAreBuilt_data();
    void layoutsAreBuilt();
    void emptyRowsHoldNoPointer();
    void lightUidsWalkTheTree_data();
    void lightUidsWalkTheTree();
    void lightsAreFoundOnce();
    void elementsAreCounted_data();
    void elementsAreCounted();
    void withoutAModelThereIsNothing();
    void boundsTruncateWhatTheyStore_data();
    void boundsTruncateWhatTheyStore();
    void profilesAreTallied();
    void theFirstOfEqualTalliesIsPrimary();
    void aTwoChannelInputIsAProfileOfItsOwn();
    void withoutLightsThereIsNoPrimaryProfile();
    void attachForwardsBothWays();
    void anUpdatedLightRenamesItsLeaf();
    void groupsThatHoldThemselvesEnd_data();
    void groupsThatHoldThemselvesEnd();
    void deepChainsAreWalked();
    void endlessLightsAreCut();
    void endlessEmptyGroupsAreCut();
    void exactlyAMillionEntriesAreNoCut();
};

void GroupTest::keysAreRead_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<int>("type");
    QTest::addColumn<quint64>("uid");
    QTest::addColumn<QString>("name");
    const QString name = QStringLiteral("New Group");
    const auto uid = [](quint64 value) { return value; };
    QTest::newRow("nothing") << QString() << 0 << uid(0) << name;
    QTest::newRow("short keys") << "<t>1</t><s>1F</s><n>Chase</n>" << 1 << uid(31) << "Chase";
    QTest::newRow("long keys") << "<type>2</type><self>ff</self><name>Wash</name>" << 2 << uid(255)
                               << "Wash";
    QTest::newRow("unreadable") << "<t>x</t><s>x</s><n/>" << 0 << uid(0xFFFFFFFF) << QString();
    QTest::newRow("another kind") << "<t>-7</t>" << -7 << uid(0) << name;
    QTest::newRow("unknown keys") << "<g>1</g><group>2</group><q>3</q>" << 0 << uid(0) << name;
}

void GroupTest::keysAreRead()
{
    QFETCH(const QString, xml);
    QFETCH(const int, type);
    QFETCH(const quint64, uid);
    QFETCH(const QString, name);
    Element element(xml);
    Group group(element.node());
    QCOMPARE(group.type(), type);
    QCOMPARE(group.uid(), uid);
    QCOMPARE(group.name(), name);
}

void GroupTest::kindsHaveNames()
{
    QCOMPARE(Group::typeName(1), QStringLiteral("Chasing"));
    QCOMPARE(Group::typeName(2), QStringLiteral("Synchronized"));
    QCOMPARE(Group::typeName(3), QStringLiteral("Leaf"));
    QCOMPARE(Group::typeName(0), QStringLiteral("Unknown"));
    QCOMPARE(Group::typeName(4), QStringLiteral("Unknown"));
}

void GroupTest::layoutsAreBuilt_data()
{
    QTest::addColumn<QByteArray>("groups");
    QTest::addColumn<int>("rows");
    QTest::addColumn<QString>("expected"); // of group 0xf0
    const auto row = [](const char* name, const QByteArray& groups, int rows,
                        const char* expected) {
        QTest::newRow(name) << groups << rows << QString::fromLatin1(expected);
    };
    row("a chase over three steps", groupXml("f0", 1, {"a", "b", "c"}), 3, "1 2|3|4 5 6");
    row("the same as one step", groupXml("f0", 2, {"a", "b", "c"}), 1, "1 2 3 4 5 6");
    row("file order", groupXml("f0", 1, {"c", "a"}), 2, "4 5 6|1 2");
    row("a group twice", groupXml("f0", 1, {"b", "b"}), 2, "3|3");
    row("leaves as steps", groupXml("f0", 1, {"2", "1"}), 2, "2|1");
    row("a chase in a chase", groupXml("f1", 1, {"1", "2"}) + groupXml("f0", 1, {"f1", "3"}), 3,
        "1|2|3");
    row("chases in chases in chases",
        groupXml("f1", 1, {"1", "2"}) + groupXml("f2", 1, {"f1", "a"}) +
            groupXml("f0", 1, {"f2", "f1", "b"}),
        6, "1|2|1 2|1|2|3");
    row("a chase of one step in a chase", groupXml("f1", 1, {"c"}) + groupXml("f0", 1, {"f1", "1"}),
        2, "4 5 6|1");
    row("a chase in one step", groupXml("f1", 1, {"a", "b"}) + groupXml("f0", 2, {"f1", "4"}), 1,
        "1 2 3 4");
    row("an empty chase in a chase", groupXml("f1", 1, {}) + groupXml("f0", 1, {"f1", "1"}), 1,
        "1");
    row("an empty chase", groupXml("f0", 1, {}), 0, "");
    row("an empty set", groupXml("f0", 2, {}), 1, "");
    row("an empty step", groupXml("f1", 2, {}) + groupXml("f0", 1, {"1", "f1", "2"}), 3, "1||2");
    row("a missing step is skipped", groupXml("f0", 1, {"1", "dead", "2"}), 2, "1|2");
    row("a missing child of a set", groupXml("f0", 2, {"1", "dead", "2"}), 1, "1 2");
    row("a step of no kind", groupXml("f1", 0, {"1"}) + groupXml("f0", 1, {"f1", "2"}), 2, "|2");
    row("a child of no kind", groupXml("f1", 9, {"1"}) + groupXml("f0", 2, {"f1", "2"}), 1, "2");
    row("a leaf", groupXml("f0", 2, {"5"}), 1, "5");
    row("a leaf without its light", groupXml("f0", 3, {"1"}), 1, "-");
    row("such a leaf as a step", groupXml("f1", 3, {"1"}) + groupXml("f0", 1, {"1", "f1"}), 2,
        "1|-");
    row("no kind", groupXml("f0", 0, {"1", "2"}), 0, "");
    row("another kind", groupXml("f0", 4, {"1", "2"}), 0, "");
}

void GroupTest::layoutsAreBuilt()
{
    QFETCH(const QByteArray, groups);
    QFETCH(const int, rows);
    QFETCH(const QString, expected);
    const TestModel map(base() + groups);
    Group* const group = map.model.group(0xf0);
    const GroupLayout* const layout = group->layout();
    QCOMPARE(layout->rows, rows);
    QCOMPARE(shape(layout), expected);
    QCOMPARE(group->layout(), layout);
    QCOMPARE(layout->counts == nullptr, rows == 0);
    QCOMPARE(layout->lights == nullptr, rows == 0);
    // What the groups below have as layouts of their own changes nothing, nor the other way round.
    const TestModel again(base() + groups);
    const QList<quint64> uids = again.model.groupUids();
    for (const quint64 uid : uids) {
        again.model.group(uid)->layout();
    }
    QCOMPARE(shape(again.model.group(0xf0)->layout()), expected);
}

void GroupTest::emptyRowsHoldNoPointer()
{
    const TestModel map(base() + groupXml("f1", 2, {}) + groupXml("f0", 1, {"1", "f1", "2"}));
    const GroupLayout* const layout = map.model.group(0xf0)->layout();
    QCOMPARE(layout->counts[1], 0);
    QVERIFY(layout->lights[1] == nullptr);
    QCOMPARE(layout->lights[2][0]->uid(), quint64(2));
}

void GroupTest::lightUidsWalkTheTree_data()
{
    QTest::addColumn<QByteArray>("groups");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* name, const QByteArray& groups, const char* expected) {
        QTest::newRow(name) << groups << QString::fromLatin1(expected);
    };
    row("a chase", groupXml("f0", 1, {"b", "a"}), "3 1 2");
    row("no kind walks too", groupXml("f0", 0, {"a", "c"}), "1 2 4 5 6");
    row("a negative kind walks too", groupXml("f0", -1, {"a"}), "1 2");
    row("repeats stay", groupXml("f0", 2, {"a", "a"}), "1 2 1 2");
    row("missing groups are skipped", groupXml("f0", 2, {"dead", "b"}), "3");
    row("a leaf reads its first child", groupXml("f0", 3, {"5", "6"}), "5");
    row("a leaf without a child", groupXml("f0", 3, {}), "");
    row("a kind above", groupXml("f0", 7, {"5", "6"}), "5");
    row("an unreadable child is not there", groupXml("f0", 3, {"zz", "6"}), "6");
    row("a leaf of a light that isn't there",
        groupXml("f1", 3, {"77"}) + groupXml("f0", 2, {"f1", "b"}), "77 3");
    row("the long and the short key", "<g><t>2</t><s>f0</s><c>b</c><child>a</child></g>", "3 1 2");
}

void GroupTest::lightUidsWalkTheTree()
{
    QFETCH(const QByteArray, groups);
    QFETCH(const QString, expected);
    const TestModel map(base() + groups);
    QCOMPARE(hex(map.model.group(0xf0)->lightUids()), expected);
}

void GroupTest::lightsAreFoundOnce()
{
    const TestModel map(base() + groupXml("f1", 3, {"77"}) + groupXml("f0", 2, {"2", "f1", "a"}));
    int count = 0;
    Light* const* const lights = map.model.group(0xf0)->lights(&count);
    QCOMPARE(count, 4);
    QCOMPARE(lights[0], map.model.light(2));
    QVERIFY(lights[1] == nullptr);
    QCOMPARE(lights[2], map.model.light(1));
    int again = 0;
    QCOMPARE(map.model.group(0xf0)->lights(&again), lights);
    QCOMPARE(again, 4);
    // A leaf finds its light by its own uid, but lists it by its child.
    const TestModel bare(lightXml("9", 0, 0) + groupXml("9", 3, {}));
    QCOMPARE(shape(bare.model.group(9)->layout()), QStringLiteral("9"));
    bare.model.group(9)->lights(&count);
    QCOMPARE(count, 0);
}

void GroupTest::elementsAreCounted_data()
{
    QTest::addColumn<QByteArray>("groups");
    QTest::addColumn<int>("count");
    QTest::newRow("no chase") << groupXml("f0", 2, {"a", "b", "c"}) << 1;
    QTest::newRow("no kind") << groupXml("f0", 0, {"a"}) << 1;
    QTest::newRow("an empty chase") << groupXml("f0", 1, {}) << 0;
    QTest::newRow("steps") << groupXml("f0", 1, {"a", "b", "c"}) << 3;
    QTest::newRow("a missing step") << groupXml("f0", 1, {"a", "dead"}) << 1;
    QTest::newRow("nested") << groupXml("f1", 1, {"1", "2"}) + groupXml("f0", 1, {"f1", "f1", "c"})
                            << 5;
}

void GroupTest::elementsAreCounted()
{
    QFETCH(const QByteArray, groups);
    QFETCH(const int, count);
    const TestModel map(base() + groups);
    QCOMPARE(map.model.group(0xf0)->elementCount(), count);
}

void GroupTest::withoutAModelThereIsNothing()
{
    Element element(QStringLiteral("<t>1</t><c>1</c>"));
    Group chase(element.node());
    QCOMPARE(chase.elementCount(), -1);
    QVERIFY(chase.lightUids().isEmpty());
    QCOMPARE(chase.layout()->rows, 0);
    Element leafElement(QStringLiteral("<t>3</t><s>1</s><c>1</c>"));
    Group leaf(leafElement.node());
    QCOMPARE(leaf.elementCount(), 1);
    QCOMPARE(shape(leaf.layout()), QStringLiteral("-"));
    int count = 0;
    QVERIFY(leaf.lights(&count)[0] == nullptr);
    QCOMPARE(count, 1);
    leaf.handleUpdatedLight(1);
    QCOMPARE(leaf.name(), QStringLiteral("New Group"));
}

void GroupTest::boundsTruncateWhatTheyStore_data()
{
    QTest::addColumn<QStringList>("places");     // "x y"
    QTest::addColumn<QList<double>>("expected"); // xMin, yMin, xMax, yMax
    const double high = 2147483647.0;
    const auto list = [](std::initializer_list<double> values) { return QList<double>(values); };
    QTest::newRow("no light") << QStringList() << list({high, high, -high, -high});
    QTest::newRow("one light") << QStringList{"2.9 -2.9"} << list({2, -2, 2, -2});
    QTest::newRow("a lower one that isn't lower than what is stored")
        << QStringList{"2.9 0", "2.5 0"} << list({2, 0, 2, 0});
    QTest::newRow("a truly lower one") << QStringList{"2.9 5", "1.5 7.9"} << list({1, 5, 2, 7});
    QTest::newRow("a higher one") << QStringList{"2.9 5", "9.9 5"} << list({2, 5, 9, 5});
    QTest::newRow("a negative minimum is stored above itself")
        << QStringList{"-2.9 0", "-2.5 0"} << list({-2, 0, -2, 0});
    QTest::newRow("nan, inf and huge places stay out")
        << QStringList{"nan 1", "1 inf", "-inf 3", "1e308 2", "4 5"} << list({4, 5, 4, 5});
}

void GroupTest::boundsTruncateWhatTheyStore()
{
    QFETCH(const QStringList, places);
    QFETCH(const QList<double>, expected);
    QByteArray xml;
    QList<QByteArray> children;
    for (int i = 0; i < places.size(); ++i) {
        const QByteArray uid = QByteArray::number(i + 1, 16);
        const QByteArray x = places.at(i).section(' ', 0, 0).toLatin1();
        const QByteArray y = places.at(i).section(' ', 1, 1).toLatin1();
        xml += lightXml(uid.constData(), 0, 0, "<x>" + x + "</x><y>" + y + "</y>") +
               groupXml(uid.constData(), 3, {uid});
        children << uid;
    }
    children << "dead";
    const TestModel map(xml + groupXml("f0", 2, children));
    double xMin = 0.0;
    double yMin = 0.0;
    double xMax = 0.0;
    double yMax = 0.0;
    for (int repeat = 0; repeat < 2; ++repeat) {
        map.model.group(0xf0)->bounds(&xMin, &yMin, &xMax, &yMax);
        QCOMPARE((QList<double>{xMin, yMin, xMax, yMax}), expected);
    }
}

namespace {

/// A light of the generic three-channel device with the profile of the chemistry.
QByteArray profileLight(const char* uid, int chemistry, const QByteArray& more = {})
{
    return lightXml(uid, 0, 0,
                    "<sn>983040</sn><properties><LED_CHEMISTRY>" + QByteArray::number(chemistry) +
                        "</LED_CHEMISTRY>" + more + "</properties>") +
           groupXml(uid, 3, {uid});
}

QString profiles(Group* group)
{
    QStringList list;
    const QList<GroupProfile*> all = group->profileList();
    for (const GroupProfile* const one : all) {
        list << QStringLiteral("%1/%2").arg(one->profileId).arg(one->forwardFlag);
    }
    return list.join(QLatin1Char(' '));
}

constexpr int kThreeWhites = 6;   // profile 26
constexpr int kThreeWhitesB = 12; // profile 28

} // namespace

void GroupTest::profilesAreTallied()
{
    const QByteArray forward = "<COLOR_CONTROL_MODE>3</COLOR_CONTROL_MODE>";
    const TestModel map(profileLight("1", 0) + profileLight("2", kThreeWhites) +
                        profileLight("3", kThreeWhites) + profileLight("4", kThreeWhites, forward) +
                        groupXml("f0", 2, {"1", "2", "dead", "3", "4"}));
    Group* const group = map.model.group(0xf0);
    QCOMPARE(profiles(group), QStringLiteral("0/0 26/0 26/1"));
    QCOMPARE(group->primaryProfile().profileId, 26);
    QCOMPARE(group->primaryProfile().forwardFlag, quint8(0));
    QCOMPARE(group->profileList(), group->profileList()); // the same records
}

void GroupTest::theFirstOfEqualTalliesIsPrimary()
{
    const TestModel map(profileLight("1", kThreeWhitesB) + profileLight("2", kThreeWhites) +
                        profileLight("3", kThreeWhites) + profileLight("4", kThreeWhitesB) +
                        groupXml("f0", 2, {"1", "2", "3", "4"}));
    QCOMPARE(map.model.group(0xf0)->primaryProfile().profileId, 28);
}

void GroupTest::aTwoChannelInputIsAProfileOfItsOwn()
{
    const QByteArray two = "<CREST_INPUT_MODE>0</CREST_INPUT_MODE>";
    const TestModel map(profileLight("1", kThreeWhites, two) + profileLight("2", kThreeWhites) +
                        profileLight("3", 0, two) + groupXml("f0", 2, {"1", "2", "3"}));
    QCOMPARE(profiles(map.model.group(0xf0)), QStringLiteral("27/0 26/0 0/0"));
}

void GroupTest::withoutLightsThereIsNoPrimaryProfile()
{
    const TestModel map(groupXml("f0", 2, {"dead"}));
    Group* const group = map.model.group(0xf0);
    QVERIFY(group->profileList().isEmpty());
    QCOMPARE(group->primaryProfile().profileId, -1);
    QCOMPARE(group->primaryProfile().forwardFlag, quint8(0));
}

void GroupTest::attachForwardsBothWays()
{
    TestModel former;
    TestModel map(base());
    Element element(QStringLiteral("<t>3</t><s>2</s><c>2</c>"));
    Group group(element.node());
    QVERIFY(group.attach(&former.model));
    QVERIFY(group.attach(&map.model));
    QSignalSpy old(&former.model, &MapModel::updatedGroup);
    QSignalSpy updated(&map.model, &MapModel::updatedGroup);
    QSignalSpy said(&map.model, &MapModel::msg);
    emit group.msg(QStringLiteral("hello"));
    emit map.model.updatedLight(2); // renames the map's own leaf too
    emit former.model.updatedLight(2);
    QCOMPARE(group.name(), QStringLiteral("L2"));
    QCOMPARE(said.size(), 1);
    QCOMPARE(updated.size(), 2);
    QCOMPARE(old.size(), 0);
    QVERIFY(group.attach(nullptr));
}

void GroupTest::anUpdatedLightRenamesItsLeaf()
{
    TestModel map(base() + groupXml("77", 3, {"77"}));
    Group* const leaf = map.model.group(2);
    QCOMPARE(leaf->name(), QStringLiteral("G2"));
    QSignalSpy own(leaf, &Group::updatedGroup);
    QSignalSpy updated(&map.model, &MapModel::updatedGroup);
    emit map.model.updatedLight(2);
    QCOMPARE(leaf->name(), QStringLiteral("L2"));
    QCOMPARE(map.model.group(3)->name(), QStringLiteral("G3"));
    QCOMPARE(own.size(), 1);
    QCOMPARE(updated.size(), 1);
    QCOMPARE(updated.first().first().toULongLong(), qulonglong(2));
    emit map.model.updatedLight(0x77); // no such light
    emit map.model.updatedLight(0x78); // no such group
    QCOMPARE(map.model.group(0x77)->name(), QStringLiteral("G77"));
    QCOMPARE(updated.size(), 1);
}

void GroupTest::groupsThatHoldThemselvesEnd_data()
{
    QTest::addColumn<QByteArray>("groups");
    QTest::addColumn<QString>("layout");
    QTest::addColumn<QString>("uids");
    QTest::addColumn<int>("count");
    QTest::newRow("a chase in itself") << groupXml("f0", 1, {"f0", "1", "f0"}) << "1"
                                       << "1" << 1;
    QTest::newRow("a set in itself") << groupXml("f0", 2, {"f0", "1", "f0"}) << "1"
                                     << "1" << 1;
    QTest::newRow("no kind in itself") << groupXml("f0", 0, {"f0", "1"}) << ""
                                       << "1" << 1;
    QTest::newRow("a ring of chases")
        << groupXml("f0", 1, {"f1", "1"}) + groupXml("f1", 1, {"f0", "2"}) << "2|1"
        << "2 1" << 2;
    QTest::newRow("a step that holds its chase")
        << groupXml("f0", 1, {"f1", "1"}) + groupXml("f1", 2, {"f0", "2"}) << "2|1"
        << "2 1" << 2;
    QTest::newRow("a leaf that names itself") << groupXml("f0", 3, {"f0"}) << "-"
                                              << "f0" << 1;
}

void GroupTest::groupsThatHoldThemselvesEnd()
{
    QFETCH(const QByteArray, groups);
    QFETCH(const QString, layout);
    QFETCH(const QString, uids);
    QFETCH(const int, count);
    const TestModel map(base() + groups);
    Group* const group = map.model.group(0xf0);
    for (int repeat = 0; repeat < 2; ++repeat) {
        QCOMPARE(group->elementCount(), count);
        QCOMPARE(shape(group->layout()), layout);
        QCOMPARE(hex(group->lightUids()), uids);
    }
    group->primaryProfile();
}

void GroupTest::deepChainsAreWalked()
{
    constexpr int kDepth = 20000;
    for (const int type : {1, 2, 0}) {
        QByteArray xml = lightXml("1", 0, 0) + groupXml("1", 3, {"1"});
        for (int i = 0; i < kDepth; ++i) {
            const QByteArray uid = QByteArray::number(0x1000 + i, 16);
            const QByteArray below = i == 0 ? "1" : QByteArray::number(0x1000 + i - 1, 16);
            xml += groupXml(uid.constData(), type, {below, "1"});
        }
        const TestModel map(xml);
        Group* const top = map.model.group(0x1000 + kDepth - 1);
        QCOMPARE(top->lightUids().size(), kDepth + 1);
        QCOMPARE(top->elementCount(), type == 1 ? kDepth + 1 : 1);
        QCOMPARE(top->layout()->rows, type == 1 ? kDepth + 1 : (type == 2 ? 1 : 0));
        QCOMPARE(top->layout()->total, type == 0 ? 0 : kDepth + 1);
    }
}

namespace {

/// Forty groups, each of which holds the next twice.
QByteArray doubling(int type, const QByteArray& last)
{
    QByteArray xml;
    for (int i = 0; i < 40; ++i) {
        const QByteArray uid = QByteArray::number(0x1000 + i, 16);
        const QByteArray below = i == 0 ? last : QByteArray::number(0x1000 + i - 1, 16);
        xml += groupXml(uid.constData(), type, {below, below});
    }
    return xml;
}

} // namespace

void GroupTest::endlessLightsAreCut()
{
    for (const int type : {1, 2}) {
        const TestModel map(base() + doubling(type, "1"));
        Group* const top = map.model.group(0x1000 + 39);
        expectCut(); // one line, whatever is asked
        QCOMPARE(top->layout()->total, 1000000);
        QCOMPARE(top->lightUids().size(), 1000000);
        QCOMPARE(top->elementCount(), type == 1 ? 1000000 : 1);
        int count = 0;
        top->lights(&count);
        QCOMPARE(count, 1000000);
    }
}

void GroupTest::endlessEmptyGroupsAreCut()
{
    QElapsedTimer timer;
    timer.start();
    // A chase over many endless sets without a light shares one limit among them.
    QList<QByteArray> steps;
    for (int i = 0; i < 1000; ++i) {
        steps << QByteArray::number(0x1000 + 39, 16);
    }
    const TestModel map(doubling(2, "dead") + groupXml("f0", 1, steps));
    expectCut();
    QCOMPARE(map.model.group(0xf0)->layout()->total, 0);
    QCOMPARE(map.model.group(0xf0)->layout()->rows, 1000);
    QVERIFY(map.model.group(0xf0)->lightUids().isEmpty());
    QVERIFY2(timer.elapsed() < 30000, "the limit is on the visits of all steps together");
}

void GroupTest::exactlyAMillionEntriesAreNoCut()
{
    QList<QByteArray> thousand;
    for (int i = 0; i < 1000; ++i) {
        thousand << "1";
    }
    QList<QByteArray> again;
    for (int i = 0; i < 1000; ++i) {
        again << "f1";
    }
    const TestModel map(base() + groupXml("f1", 2, thousand) + groupXml("f0", 2, again));
    QCOMPARE(map.model.group(0xf0)->layout()->total, 1000000);
    // An unexpected message would have to be about this group: ask another that is cut.
    const TestModel more(base() + groupXml("f1", 2, thousand) + groupXml("f0", 2, again << "1"));
    expectCut();
    QCOMPARE(more.model.group(0xf0)->layout()->total, 1000000);
}

QTEST_GUILESS_MAIN(GroupTest)

#include "GroupTest.moc"
