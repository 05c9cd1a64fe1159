#include "map/Controller.h"
#include "map/Group.h"
#include "map/Light.h"
#include "map/MapModel.h"
#include "map/MapReader.h"
#include "tests/map/MapText.h"

#include <QElapsedTimer>
#include <QObject>
#include <QProcess>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QtTest>

namespace {

/// A map with something of everything.
QByteArray goodMap()
{
    return "<map><version>1.2</version><imagefile>plan.png</imagefile><postsync>1</postsync>"
           "<controller><type>2</type><self>1A</self><name>Front</name><ip>10.1.2.3</ip>"
           "<mac>02:00:00:00:00:01</mac><sn>1234</sn><u>0</u><v>2</v><d>512</d><m>0</m>"
           "<portlist><port><portnum>1</portnum><porttype>1</porttype></port></portlist>"
           "<light>2B</light><l>2C</l><properties><INPUT_RESOLUTION>1</INPUT_RESOLUTION>"
           "</properties></controller>"
           "<light><self>2B</self><name>Pixel &amp; 1</name><controller>1A</controller><pn>0</pn>"
           "<ch>0</ch><sn>4660</sn><ln>1</ln><x>10.5</x><y>20</y><z>0</z><q0>0</q0><q3>1</q3>"
           "<properties><LED_CHEMISTRY>3</LED_CHEMISTRY></properties></light>"
           "<l><s>2C</s><n>Pixel 2</n><c>1A</c><ch>5</ch><x>30</x><y>5</y></l>"
           "<!-- the groups --><g><t>3</t><s>2B</s><c>2B</c></g>"
           "<group><type>1</type><self>3C</self><name><![CDATA[Chase]]></name><child>2B</child>"
           "<child>2C</child></group></map>";
}

QStringList spoken(const QSignalSpy& spy)
{
    QStringList list;
    for (const QList<QVariant>& one : spy) {
        list << one.first().toString();
    }
    return list;
}

/// Everything that a model tells while it loads, and what it then holds.
QStringList story(const QByteArray& text, bool throughDocument)
{
    MapReader reader(nullptr);
    QStringList list;
    const bool ok = throughDocument ? reader.readDocument(text) : reader.read(text);
    list << QString::number(int(ok)) << reader.reason();
    if (!ok) {
        return list;
    }
    list << QString::number(reader.nodeCount()) << QString::number(int(reader.isMap()))
         << QString::number(reader.childCount());
    for (const MapItem& item : reader.items()) {
        list << QString::number(item.index) << QString::number(int(item.kind)) << item.text;
        if (item.kind == MapItem::Kind::Light) {
            const auto* const light = static_cast<Light*>(item.object.get());
            list << QString::number(light->uid()) << light->name()
                 << QString::number(light->position().x) << QString::number(light->channel())
                 << QString::number(light->footprint())
                 << light->property(QStringLiteral("Led Chemistry"))
                 << light->property(QStringLiteral("Unsupported Token: #comment"),
                                    QStringLiteral("-"))
                 << light->property(QStringLiteral("Unsupported Token: pi"), QStringLiteral("-"));
        } else if (item.kind == MapItem::Kind::Group) {
            auto* const group = static_cast<Group*>(item.object.get());
            list << QString::number(group->uid()) << group->name()
                 << QString::number(group->type());
        } else if (item.kind == MapItem::Kind::Controller) {
            const auto* const controller = static_cast<Controller*>(item.object.get());
            list << QString::number(controller->uid()) << controller->name()
                 << QString::number(controller->portCount()) << QString::number(item.controllerType)
                 << controller->ipString() << QString::number(controller->lightUidList().size());
        }
    }
    return list;
}

QByteArray nested(int depth)
{
    return QByteArray("<b>").repeated(depth) + QByteArray("</b>").repeated(depth);
}

void expectRefusal(const char* reason)
{
    QTest::ignoreMessage(QtDebugMsg,
                         QRegularExpression(QStringLiteral("^Map file .*test\\.map refused: ") +
                                            QString::fromLatin1(reason)));
}

} // namespace

class MapFileTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { initForgeResources(); }
    void aMapIsRead();
    void longAndShortKeysAreOne();
    void signalsComeInOrder();
    void controllersAreBuiltByKind_data();
    void controllersAreBuiltByKind();
    void takenUidsAreRefused();
    void documentsAreRefused_data();
    void documentsAreRefused();
    void aFileThatCantBeReadIsRefused();
    void aRefusalLeavesTheModelButForTheBounds();
    void progressComesByTheHundredth_data();
    void progressComesByTheHundredth();
    void boundsGrow_data();
    void boundsGrow();
    void elementsMayComeInAnyOrder();
    void textIsReadAsAWhole();
    void postSyncIsANumber_data();
    void postSyncIsANumber();
    void bothWaysSeeTheSame_data();
    void bothWaysSeeTheSame();
    void truncatedFilesAreRefused();
    void hostileFilesLeaveTheModelWhole_data();
    void hostileFilesLeaveTheModelWhole();
};

void MapFileTest::aMapIsRead()
{
    TestModel map;
    const TextFile file(goodMap());
    QVERIFY(map.model.load(file.path()));
    const MapModel& model = map.model;
    QCOMPARE(model.version(), QStringLiteral("1.2"));
    QCOMPARE(model.imageFile(), QStringLiteral("plan.png"));
    QVERIFY(model.postSync());
    QCOMPARE(model.bounds(), QRect(0, 0, 30, 20));
    QCOMPARE(model.path(), file.path());
    const Controller* const controller = model.controller(0x1A);
    QCOMPARE(controller->name(), QStringLiteral("Front"));
    QCOMPARE(controller->lightUidList(), (QList<quint64>{0x2B, 0x2C}));
    QCOMPARE(controller->portSize(0), 24U); // settled behind the load
    QCOMPARE(model.light(0x2B)->name(), QStringLiteral("Pixel & 1"));
    QCOMPARE(model.light(0x2B)->channelCount(), 5);
    QCOMPARE(model.light(0x2C)->channel(), 5);
    QCOMPARE(model.group(0x3C)->name(), QStringLiteral("Chase"));
    QCOMPARE(model.group(0x2B)->layout()->lights[0][0], model.light(0x2B));
}

void MapFileTest::longAndShortKeysAreOne()
{
    const TestModel map("<c><t>2</t><s>1</s></c><controller><t>3</t><s>2</s></controller>"
                        "<l><s>1</s></l><light><s>2</s></light><g><s>1</s></g>"
                        "<group><s>2</s></group><x/><Light><s>3</s></Light>");
    QCOMPARE(map.model.controllersHash().size(), 2);
    QCOMPARE(map.model.lightsHash().size(), 2);
    QCOMPARE(map.model.groupsHash().size(), 2);
}

void MapFileTest::signalsComeInOrder()
{
    TestModel map;
    QStringList order;
    MapModel& model = map.model;
    const auto number = [](qulonglong uid) { return QString::number(uid, 16); };
    connect(&model, &MapModel::msg, this, [&](const QString& s) { order << s; });
    connect(&model, &MapModel::newController, this,
            [&](qulonglong uid) { order << QStringLiteral("controller ") + number(uid); });
    connect(&model, &MapModel::newLight, this, [&](qulonglong uid) {
        order << QStringLiteral("light ") + number(uid);
        QVERIFY(model.group(0x3C) != nullptr); // all is there by now
    });
    connect(&model, &MapModel::newGroup, this,
            [&](qulonglong uid) { order << QStringLiteral("group ") + number(uid); });
    connect(&model, &MapModel::newImageFile, this, [&] { order << QStringLiteral("image"); });
    connect(&model, &MapModel::progressStarted, this, [&](int min, int max, const QString& text) {
        order << QStringLiteral("start %1 %2 %3").arg(min).arg(max).arg(text);
    });
    connect(&model, &MapModel::progressUpdated, this,
            [&](int value) { order << QString::number(value); });
    const TextFile file(goodMap());
    QVERIFY(model.load(file.path()));
    QCOMPARE(order, (QStringList{"Opening map file: " + file.path(),
                                 "Doc has 1 children.",
                                 "Map has 9 children.",
                                 "start 0 9 Loading Map",
                                 "0",
                                 "1",
                                 "2",
                                 "Loading a Talvis IP Controller.",
                                 "3",
                                 "4",
                                 "5",
                                 "6",
                                 "7",
                                 "8",
                                 "9",
                                 "image",
                                 "controller 1a",
                                 "light 2b",
                                 "light 2c",
                                 "group 2b",
                                 "group 3c"}));
}

void MapFileTest::controllersAreBuiltByKind_data()
{
    QTest::addColumn<QByteArray>("types");
    QTest::addColumn<QStringList>("messages");
    QTest::addColumn<int>("type"); // of what stays, 0 for nothing
    const QString ip = QStringLiteral("Loading a Talvis IP Controller.");
    const QString broadcast = QStringLiteral("Loading a Talvis Broadcast Controller.");
    const QString taken = QStringLiteral("loadController: uid already exists");
    QTest::newRow("IP") << QByteArray("<type>2</type>") << QStringList{ip} << 2;
    QTest::newRow("broadcast") << QByteArray("<t>3</t>") << QStringList{broadcast} << 3;
    QTest::newRow("another kind") << QByteArray("<t>4</t>") << QStringList() << 0;
    QTest::newRow("none") << QByteArray() << QStringList() << 0;
    QTest::newRow("unreadable") << QByteArray("<t>x</t>") << QStringList() << 0;
    QTest::newRow("two: the second is refused, the last type stays")
        << QByteArray("<t>2</t><type>3</type>") << QStringList{ip, broadcast, taken} << 3;
    QTest::newRow("two, one of no kind") << QByteArray("<t>2</t><t>9</t>") << QStringList{ip} << 9;
    // Built by the text, 2; then typed by the first child's value, the comment.
    QTest::newRow("a comment ahead of the number")
        << QByteArray("<t><!-- 3 -->2</t>") << QStringList{ip} << 3;
}

void MapFileTest::controllersAreBuiltByKind()
{
    QFETCH(const QByteArray, types);
    QFETCH(const QStringList, messages);
    QFETCH(const int, type);
    TestModel map;
    QSignalSpy said(&map.model, &MapModel::msg);
    const TextFile file("<map><controller><self>c</self>" + types + "</controller></map>");
    QVERIFY(map.model.load(file.path()));
    QCOMPARE(spoken(said).mid(3), messages);
    const Controller* const controller = map.model.controller(0xc);
    QCOMPARE(controller == nullptr, messages.isEmpty());
    if (controller != nullptr) {
        QCOMPARE(controller->type(), type);
    }
}

void MapFileTest::takenUidsAreRefused()
{
    TestModel map;
    QSignalSpy said(&map.model, &MapModel::msg);
    QSignalSpy lights(&map.model, &MapModel::newLight);
    QSignalSpy groups(&map.model, &MapModel::newGroup);
    QSignalSpy controllers(&map.model, &MapModel::newController);
    const TextFile file(
        "<map><l><s>1</s><n>first</n><x>5</x></l><l><s>1</s><n>second</n><x>50</x></l>"
        "<g><s>1</s><n>first</n></g><g><s>1</s><n>second</n></g>"
        "<c><t>2</t><s>1</s><n>first</n></c><c><t>2</t><s>1</s><n>second</n></c>"
        "<l><s>2</s></l></map>");
    QVERIFY(map.model.load(file.path()));
    QCOMPARE(map.model.light(1)->name(), QStringLiteral("first"));
    QCOMPARE(map.model.group(1)->name(), QStringLiteral("first"));
    QCOMPARE(map.model.controller(1)->name(), QStringLiteral("first"));
    QCOMPARE(map.model.bounds().width(), 5);
    QVERIFY(map.model.light(2) != nullptr); // the rest still loads
    QCOMPARE(spoken(said).mid(3),
             (QStringList{"loadLight: uid already exists", "loadGroup: uid already exists",
                          "Loading a Talvis IP Controller.", "Loading a Talvis IP Controller.",
                          "loadController: uid already exists"}));
    QCOMPARE(lights.size(), 2);
    QCOMPARE(groups.size(), 1);
    QCOMPARE(controllers.size(), 1);
}

void MapFileTest::documentsAreRefused_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("reason");
    QTest::addColumn<int>("messages"); // beyond the one on opening
    QTest::newRow("an empty file") << QByteArray() << "." << 0;
    QTest::newRow("no XML") << QByteArray("once upon a time") << "." << 0;
    QTest::newRow("another root") << QByteArray("<show/>") << "it isn't one element" << 1;
    QTest::newRow("a root in capitals") << QByteArray("<MAP/>") << "it isn't one element" << 1;
    QTest::newRow("a declaration")
        << QByteArray("<?xml version=\"1.0\"?><map/>") << "it isn't one element" << 1;
    QTest::newRow("a comment on top")
        << QByteArray("<!-- mine --><map/>") << "it isn't one element" << 1;
    QTest::newRow("a comment below")
        << QByteArray("<map/><!-- mine -->") << "it isn't one element" << 1;
    QTest::newRow("two roots") << QByteArray("<map/><map/>") << "." << 0;
    QTest::newRow("an error on the last line")
        << QByteArray("<map>\n<l><s>1</s></l>\n</mapp>") << ".*line 3" << 0;
    QTest::newRow("1001 deep") << "<map>" + nested(1000) + "</map>"
                               << "its elements nest deeper than 1000" << 0;
    QTest::newRow("a million deep") << "<map>" + nested(1000000) + "</map>"
                                    << "its elements nest deeper than 1000" << 0;
    QTest::newRow("deep and cut") << "<map>" + QByteArray("<b>").repeated(100000)
                                  << "its elements nest deeper than 1000" << 0;
    QTest::newRow("deep, with a document type") << "<!DOCTYPE map><map>" + nested(100000) + "</map>"
                                                << "its elements nest deeper than 1000" << 0;
    QTest::newRow("deep, in UTF-16")
        << QByteArray::fromHex("fffe") +
               [] {
                   const QString text = QString::fromLatin1("<map>" + nested(50000) + "</map>");
                   return QByteArray(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
               }()
        << "its elements nest deeper than 1000" << 0;
    QTest::newRow("deep through entities that open what others close")
        << "<!DOCTYPE map [<!ENTITY o \"<b>\"><!ENTITY c \"</b>\">]><map>" +
               QByteArray("&o;").repeated(30000) + QByteArray("&c;").repeated(30000) + "</map>"
        << "." << 0;
}

void MapFileTest::documentsAreRefused()
{
    QFETCH(const QByteArray, text);
    QFETCH(const QString, reason);
    QFETCH(const int, messages);
    TestModel map;
    QSignalSpy said(&map.model, &MapModel::msg);
    QSignalSpy started(&map.model, &MapModel::progressStarted);
    const TextFile file(text);
    expectRefusal(reason.toLatin1().constData());
    QVERIFY(!map.model.load(file.path()));
    QCOMPARE(said.size(), 1 + messages);
    QCOMPARE(started.size(), 0);
    QVERIFY(map.model.lightsHash().isEmpty());
}

void MapFileTest::aFileThatCantBeReadIsRefused()
{
    TestModel map;
    QTemporaryDir folder;
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(QStringLiteral("it can't be opened")));
    QVERIFY(!map.model.load(folder.filePath(QStringLiteral("none.map"))));
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(QStringLiteral("it can't be opened")));
    QVERIFY(!map.model.load(folder.path()));
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(QStringLiteral("it can't be opened")));
    QVERIFY(!map.model.load(QString()));
    const QString pipe = folder.filePath(QStringLiteral("pipe.map"));
    QCOMPARE(QProcess::execute(QStringLiteral("mkfifo"), {pipe}), 0);
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(QStringLiteral("it can't be opened")));
    QVERIFY(!map.model.load(pipe)); // which nobody writes into
}

void MapFileTest::aRefusalLeavesTheModelButForTheBounds()
{
    TestModel map;
    const TextFile good(goodMap());
    QVERIFY(map.model.load(good.path()));
    const TextFile bad("<map><l><s>99</s></l>");
    expectRefusal(".");
    QVERIFY(!map.model.load(bad.path()));
    QCOMPARE(map.model.bounds(), QRect(0, 0, 0, 0));
    QCOMPARE(map.model.lightsHash().size(), 2);
    QCOMPARE(map.model.imageFile(), QStringLiteral("plan.png"));
    QVERIFY(map.model.light(0x99) == nullptr); // nothing of the bad file
}

void MapFileTest::progressComesByTheHundredth_data()
{
    QTest::addColumn<int>("children");
    QTest::addColumn<int>("step");
    QTest::newRow("none") << 0 << 1;
    QTest::newRow("one") << 1 << 1;
    QTest::newRow("199") << 199 << 1;
    QTest::newRow("200") << 200 << 2;
    QTest::newRow("1050") << 1050 << 10;
}

void MapFileTest::progressComesByTheHundredth()
{
    QFETCH(const int, children);
    QFETCH(const int, step);
    TestModel map;
    QSignalSpy started(&map.model, &MapModel::progressStarted);
    QSignalSpy progress(&map.model, &MapModel::progressUpdated);
    QByteArray content;
    for (int i = 0; i < children; ++i) {
        content += i % 3 == 0 ? "<!-- no element -->" : "<b/>";
    }
    const TextFile file("<map>" + content + "</map>");
    QVERIFY(map.model.load(file.path()));
    QCOMPARE(started.first(), (QList<QVariant>{0, children, QStringLiteral("Loading Map")}));
    QList<int> expected;
    for (int i = 0; i < children; i += step) {
        expected << i;
    }
    expected << children;
    QList<int> values;
    for (const QList<QVariant>& one : qAsConst(progress)) {
        values << one.first().toInt();
    }
    QCOMPARE(values, expected);
}

void MapFileTest::boundsGrow_data()
{
    QTest::addColumn<QByteArray>("places");
    QTest::addColumn<QRect>("bounds");
    const auto at = [](const char* uid, const char* x, const char* y) {
        return "<l><s>" + QByteArray(uid) + "</s><x>" + x + "</x><y>" + y + "</y></l>";
    };
    QTest::newRow("half a unit leaves them at 0") << at("1", "0.5", "0") << QRect(0, 0, 0, 0);
    QTest::newRow("truncated") << at("1", "9.9", "8.9") << QRect(0, 0, 9, 8);
    QTest::newRow("highest of each")
        << at("1", "10", "3") + at("2", "4", "20") << QRect(0, 0, 10, 20);
    QTest::newRow("compared before truncation")
        << at("1", "9.5", "0") + at("2", "9.2", "0") << QRect(0, 0, 9, 0);
    QTest::newRow("below 0") << at("1", "-5", "-5") << QRect(0, 0, 0, 0);
    QTest::newRow("no place at all")
        << at("1", "nan", "5") + at("2", "5", "inf") + at("3", "1e308", "1") +
               at("4", "2147483648", "1") + at("5", "2", "3")
        << QRect(0, 0, 2, 3);
    QTest::newRow("the greatest") << at("1", "2147483647", "1") << QRect(0, 0, 2147483647, 1);
}

void MapFileTest::boundsGrow()
{
    QFETCH(const QByteArray, places);
    QFETCH(const QRect, bounds);
    const TestModel map(places);
    QCOMPARE(map.model.bounds(), bounds);
}

void MapFileTest::elementsMayComeInAnyOrder()
{
    const TestModel map(groupXml("f0", 1, {"1"}) + groupXml("1", 3, {"1"}) +
                        "<controller><type>3</type><self>c</self><light>1</light></controller>" +
                        lightXml("1", 0, 40));
    QCOMPARE(map.model.controller(0xc)->portSize(0), 58U);
    QCOMPARE(map.model.group(0xf0)->layout()->lights[0][0], map.model.light(1));
}

void MapFileTest::textIsReadAsAWhole()
{
    const TestModel map("<version>a<!-- b --><i>c<![CDATA[d]]></i>e</version>"
                        "<imagefile>one</imagefile><imagefile>two</imagefile>");
    QCOMPARE(map.model.version(), QStringLiteral("acde"));
    QCOMPARE(map.model.imageFile(), QStringLiteral("two"));
}

void MapFileTest::postSyncIsANumber_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("on");
    QTest::newRow("0") << QByteArray("0") << false;
    QTest::newRow("1") << QByteArray("1") << true;
    QTest::newRow("-7") << QByteArray("-7") << true;
    QTest::newRow("word") << QByteArray("true") << false;
    QTest::newRow("nothing") << QByteArray() << false;
}

void MapFileTest::postSyncIsANumber()
{
    QFETCH(const QByteArray, text);
    QFETCH(const bool, on);
    const TestModel map("<postsync>1</postsync><postsync>" + text + "</postsync>");
    QCOMPARE(map.model.postSync(), on);
}

void MapFileTest::bothWaysSeeTheSame_data()
{
    QTest::addColumn<QByteArray>("text");
    const auto row = [](const char* name, const QByteArray& text) { QTest::newRow(name) << text; };
    row("a good map", goodMap());
    row("white space everywhere", goodMap().replace("><", ">\n\t <"));
    row("CR LF", goodMap().replace("><", ">\r\n<"));
    row("a byte order mark", QByteArray::fromHex("efbbbf") + goodMap());
    row("no map", "<b><l><s>1</s></l></b>");
    row("text between elements", "<map>one<l><s>1</s></l>two<l><s>2</s>three</l></map>");
    row("references", "<map><l><n>&lt;&#65;&#x42;&gt;&quot;&apos;&amp;</n></l></map>");
    row("references first", "<map><l><n>&#65;bc</n><x>1&#48;</x></l></map>");
    row("unknown entities", "<map><l><n>a&foo;b</n></l></map>");
    row("CDATA", "<map><l><n><![CDATA[<b>&amp;]]>x</n><s><![CDATA[1]]></s></l></map>");
    row("empty CDATA", "<map><l><n><![CDATA[]]></n></l></map>");
    row("comments first", "<map><l><n><!--c-->d</n><x><!--5-->6</x></l></map>");
    row("comments among properties",
        "<map><l><properties><!--c--><LED_CHEMISTRY>1</LED_CHEMISTRY></properties></l></map>");
    row("instructions", "<map><?pi some data?><l><properties><?pi x?></properties>"
                        "<n><?pi name?></n></l></map>");
    row("attributes", "<map a='>'><l b=\"<\" c='\"'><s d='/'>1</s><x e=''/></l></map>");
    row("wrong attributes", "<map><l b=1/></map>");
    row("nested values", "<map><l><n><b>x</b>y</n></l><g><n>z<b/></n></g></map>");
    row("blank values", "<map><l><n>  </n><s> 1 </s></l></map>");
    row("UTF-8", "<map><l><n>\xC3\xA4\xE2\x82\xAC</n></l></map>");
    row("broken UTF-8", "<map><l><n>\xC3(\xFF\xE2\x82</n></l></map>");
    row("NUL", QByteArray("<map><l><n>a\0b</n></l></map>", 29));
    row("a declaration", "<?xml version='1.0' encoding='UTF-8'?><map><l><s>1</s></l></map>");
    row("Latin-1 by declaration",
        "<?xml version='1.0' encoding='ISO-8859-1'?><map><l><n>\xE4</n></l></map>");
    row("a document type", "<!DOCTYPE map><map><l><s>1</s></l></map>");
    row("entities", "<!DOCTYPE map [<!ENTITY e 'ab'>]><map><l><n>x&e;y</n></l></map>");
    row("entities first", "<!DOCTYPE map [<!ENTITY e '7'>]><map><l><s>&e;</s></l></map>");
    row("comments around", "<!--a--><map/><!--b-->");
    row("text behind", "<map/>x");
    row("two elements", "<map/><map/>");
    row("not closed", "<map><l>");
    row("closed twice", "<map><l></l></l></map>");
    row("crossed", "<map><l><g></l></g></map>");
    row("nothing", "");
    row("blanks", "  \n ");
    row("only text", "map");
    row("a lone tag", "<");
    row("1000 deep", "<map>" + nested(999) + "</map>");
    row("two controllers",
        "<map><c><t>2</t><s>1</s><pl><p/></pl></c><c><t>3</t><t>2</t></c></map>");
}

void MapFileTest::bothWaysSeeTheSame()
{
    QFETCH(const QByteArray, text);
    QCOMPARE(story(text, false), story(text, true));
}

void MapFileTest::truncatedFilesAreRefused()
{
    const QByteArray text = goodMap();
    TestModel map;
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("test.map"));
    for (int size = 0; size < text.size(); ++size) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text.left(size));
        file.close();
        expectRefusal(".");
        QVERIFY2(!map.model.load(path), qPrintable(QString::number(size)));
        QVERIFY(map.model.lightsHash().isEmpty());
    }
}

void MapFileTest::hostileFilesLeaveTheModelWhole_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("loads");
    const auto row = [](const char* name, const QByteArray& content, bool loads = true) {
        QTest::newRow(name) << content << loads;
    };
    const QByteArray megabyte = QByteArray("x").repeated(1 << 20);
    row("a name of a megabyte", "<l><s>1</s><n>" + megabyte + "</n></l>");
    row("an element of a megabyte", "<l><" + megabyte + ">1</" + megabyte + "></l>");
    row("a property of a megabyte",
        "<l><properties><" + megabyte + ">" + megabyte + "</" + megabyte + "></properties></l>");
    row("a number of a megabyte", "<l><s>" + QByteArray("1").repeated(1 << 20) + "</s><x>" +
                                      QByteArray("1").repeated(1 << 20) + "</x></l>");
    row("numbers out of every range",
        "<l><s>-1</s><pn>-1</pn><ch>-2147483648</ch><sn>-1</sn><ln>1e9</ln><x>1e400</x>"
        "<tintweaveiomode>2147483647</tintweaveiomode><fc>ffffffff</fc>"
        "<properties><LED_CHEMISTRY>-1</LED_CHEMISTRY><DIMMING_CURVE>99999999999</DIMMING_CURVE>"
        "<STARTUP_COLORS>x</STARTUP_COLORS><STARTUP_CHANNEL_1>-1</STARTUP_CHANNEL_1>"
        "</properties></l>"
        "<c><t>2</t><s>1</s><d>-2147483648</d><v>-1</v><l>ffffffff</l><pl><p><pn>-1</pn>"
        "<pt>99999999999</pt><pf>-1</pf></p></pl></c><g><t>-2147483648</t></g>");
    row("a hundred thousand ports", "<c><t>2</t><s>1</s><l>1</l><pl>" +
                                        QByteArray("<p/>").repeated(100000) +
                                        "</pl></c><l><s>1</s><pn>254</pn></l>");
    row("every uid the same", QByteArray("<l><s>1</s></l><g><s>1</s></g>").repeated(5000));
    row("groups of themselves",
        "<g><t>1</t><s>1</s><c>1</c></g><g><t>2</t><s>2</s><c>2</c><c>1</c></g>");
    row("a hundred types", "<c><s>1</s>" + QByteArray("<t>2</t>").repeated(100) + "</c>");
    row("junk between", "<l><s>1</s></l>\x01\x02<g/>");
    row("entities of ten times ten times ten", "&j;", false);
}

void MapFileTest::hostileFilesLeaveTheModelWhole()
{
    QFETCH(const QByteArray, content);
    QFETCH(const bool, loads);
    QByteArray text = "<map>" + content + "</map>";
    if (!loads) {
        QByteArray type = "<!DOCTYPE map [<!ENTITY a \"0123456789\">";
        for (char c = 'b'; c <= 'j'; ++c) {
            const QByteArray before = QByteArray("&") + char(c - 1) + ";";
            type += QByteArray("<!ENTITY ") + c + " \"" + before.repeated(10) + "\">";
        }
        text = type + "]>" + text;
        expectRefusal(".");
    }
    QElapsedTimer timer;
    timer.start();
    TestModel map;
    const TextFile file(text);
    QCOMPARE(map.model.load(file.path()), loads);
    map.model.updateLights();
    const QList<quint64> groups = map.model.groupUids();
    for (const quint64 uid : groups) {
        map.model.group(uid)->layout();
        map.model.group(uid)->primaryProfile();
    }
    map.model.clear();
    QVERIFY(timer.elapsed() < 30000);
}

QTEST_GUILESS_MAIN(MapFileTest)

#include "MapFileTest.moc"
