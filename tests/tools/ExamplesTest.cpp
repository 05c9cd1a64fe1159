#include "MapText.h"
#include "tools/mapgen/BridgeExample.h"
#include "tools/mapgen/FacadeExample.h"
#include "tools/mapgen/RingExample.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QObject>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>

namespace {

const QString kExamples = QStringLiteral(FORGE_SOURCE_DIR "/examples/");

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString checkedIn(const QString& name, const char* suffix)
{
    return kExamples + name + QLatin1Char('/') + name + QLatin1String(suffix);
}

/// One effect of a show file, keys to texts, and the effects within.
struct ShowText
{
    QHash<QString, QString> keys;
    QVector<ShowText> children;

    explicit ShowText(const QDomElement& element)
    {
        for (QDomElement e = element.firstChildElement(); !e.isNull(); e = e.nextSiblingElement()) {
            if (e.tagName() == QLatin1String("effect")) {
                children.append(ShowText(e));
            } else {
                keys.insert(e.tagName(), e.text());
            }
        }
    }
    ShowText() = default;
    QString text(const char* key) const { return keys.value(QString::fromLatin1(key)); }
    qint64 number(const char* key) const { return text(key).toLongLong(); }
    double real(const char* key) const { return text(key).toDouble(); }
    qint64 cycle() const
    {
        if (text("type") == QLatin1String("Custom Rainbow")) {
            qint64 sum = 0;
            for (int i = 0; keys.contains(QStringLiteral("fade_%1").arg(i)); ++i) {
                sum += static_cast<qint64>(
                    (keys.value(QStringLiteral("fade_%1").arg(i)).toDouble() +
                     keys.value(QStringLiteral("duration_%1").arg(i)).toDouble()) *
                    1000.0);
            }
            return sum;
        }
        for (const char* key : {"time", "cycletime"}) {
            if (keys.contains(QLatin1String(key))) {
                return static_cast<qint64>(real(key) * 1000.0);
            }
        }
        return 1000;
    }
};

/// `path` is that of the file within the examples, without ".sho".
ShowText show(const QString& path)
{
    QDomDocument document;
    document.setContent(contents(kExamples + path + QStringLiteral(".sho")));
    return ShowText(document.documentElement());
}

void gather(const ShowText& timeline, QVector<ShowText>* all)
{
    for (const ShowText& child : timeline.children) {
        all->append(child);
        gather(child, all);
    }
}

/// The differences between the times that stand in the file and those that its links give.
QStringList wrongTimes(const ShowText& timeline)
{
    QHash<qint64, const ShowText*> byEid;
    for (const ShowText& child : timeline.children) {
        byEid.insert(child.number("eid"), &child);
    }
    const auto linked = [&byEid](const ShowText& e, const char* eid, const char* atStart,
                                 const char* offset) {
        const ShowText* const other = byEid.value(e.number(eid));
        if (other == nullptr) {
            return qint64(-1);
        }
        const qint64 base = other->number(e.number(atStart) != 0 ? "begin" : "end");
        return static_cast<qint64>(std::max(0.0, static_cast<double>(base) + e.real(offset)));
    };
    QStringList wrong;
    for (const ShowText& child : timeline.children) {
        const qint64 begin =
            child.number("starttype") == 1
                ? linked(child, "startlinkeid", "startlinkstart", "startlinkoffset")
                : child.number("startfixedtime");
        qint64 end = begin + child.number("endfixedtime");
        if (child.number("endtype") == 1) {
            end = linked(child, "endlinkeid", "endlinkstart", "endlinkoffset");
        } else if (child.number("endtype") == 2) {
            end = begin + child.number("endcyclecount") * child.cycle();
        }
        if (begin != child.number("begin") || end != child.number("end") || end <= begin) {
            wrong << child.text("name");
        }
        wrong << wrongTimes(child);
    }
    return wrong;
}

/// The paths of all files below a folder, relative to it, sorted.
QStringList filesUnder(const QDir& folder)
{
    QStringList files;
    QDirIterator entries(folder.path(), QDir::Files, QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        files << folder.relativeFilePath(entries.next());
    }
    files.sort();
    return files;
}

/// Qt paints with the vector instructions that it finds; their rounding may differ by a level.
bool sameToTheEye(const QImage& one, const QImage& other)
{
    constexpr int kTolerance = 2;
    if (one.size() != other.size()) {
        return false;
    }
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y);
            const QRgb b = other.pixel(x, y);
            if (std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                          std::abs(qBlue(a) - qBlue(b))}) > kTolerance) {
                return false;
            }
        }
    }
    return true;
}

} // namespace

class ExamplesTest : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void theFilesAreWhatTheGeneratorWrites_data() { names(); }
    void theFilesAreWhatTheGeneratorWrites();
    void mapsAreWhole_data();
    void mapsAreWhole();
    void theCheckFindsFaults_data();
    void theCheckFindsFaults();
    void lightsStandOnThePlan_data() { names(); }
    void lightsStandOnThePlan();
    void serialNumbersNameTheirProducts();
    void theFacadeHasGroupsOfAllKinds();
    void theBridgeHasFixturesAndControllersOfAllKinds();
    void showsPaintGroupsOfTheirMap_data() { shows(); }
    void showsPaintGroupsOfTheirMap();
    void storedTimesAreThoseOfTheLinks_data() { shows(); }
    void storedTimesAreThoseOfTheLinks();
    void showsUseWhatTheProgramOffers_data() { shows(); }
    void showsUseWhatTheProgramOffers();
    void everyLightIsLitAllThroughTheShow_data() { shows(); }
    void everyLightIsLitAllThroughTheShow();
    void aNestedTimelineFitsItsPlace();

    void theRingIsRound();
    void whatShowsPlayIsThere_data() { shows(); }
    void whatShowsPlayIsThere();

private:
    static void names();
    static void shows();
};

void ExamplesTest::names()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("facade") << QStringLiteral("facade");
    QTest::newRow("mixed") << QStringLiteral("mixed");
    QTest::newRow("ring") << QStringLiteral("ring");
}

/// `wanted` lists the types of effect that a show is there to use.
void ExamplesTest::shows()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("effects");
    QTest::addColumn<QString>("wanted");
    const QString still =
        QStringLiteral("Fixed Color;Cross Fade;White Fixed Color;White Cross Fade");
    QTest::newRow("facade") << QStringLiteral("facade") << QStringLiteral("facade/facade") << 60
                            << still;
    QTest::newRow("mixed") << QStringLiteral("mixed") << QStringLiteral("mixed/mixed") << 60
                           << still + QStringLiteral(";Meta Effect");
    QTest::newRow("all effects")
        << QStringLiteral("facade") << QStringLiteral("facade/all-effects") << 30
        << still + QStringLiteral(";Meta Effect;Chasing Rainbow;Custom Rainbow;Animation;"
                                  "Image Scroll;Random Color;Sparkle;Sparkle Group;Streak;Sweep;"
                                  "XYBurst;XYSpiral;Text;Selection");
    QTest::newRow("ring") << QStringLiteral("ring") << QStringLiteral("ring/ring") << 20
                          << QStringLiteral("Fixed Color;Cross Fade;Streak;XYBurst;XYSpiral;"
                                            "Image Scroll;Animation;Custom Rainbow;Sparkle");
}

void ExamplesTest::init()
{
    QVERIFY(QFileInfo::exists(kExamples));
}

void ExamplesTest::theFilesAreWhatTheGeneratorWrites()
{
    QFETCH(const QString, name);
    const Example example = name == QLatin1String("facade")  ? facadeExample()
                            : name == QLatin1String("mixed") ? bridgeExample()
                                                             : ringExample();
    QCOMPARE(example.name, name);
    QTemporaryDir folder;
    const QDir written(folder.filePath(name));
    const QDir kept(kExamples + name);
    QString error;
    QVERIFY2(writeExample(example, written.filePath(name), &error), qPrintable(error));
    const QStringList files = filesUnder(written);
    QCOMPARE(filesUnder(kept), files);
    QVERIFY(files.size() >= 3);
    for (const QString& file : files) {
        const QByteArray text = contents(written.filePath(file));
        QVERIFY(!text.isEmpty());
        if (file.endsWith(QLatin1String(".png"))) {
            const QImage image(kept.filePath(file));
            QVERIFY2(!image.isNull() && sameToTheEye(QImage::fromData(text), image),
                     qPrintable(file));
        } else {
            QVERIFY2(text == contents(kept.filePath(file)), qPrintable(file));
        }
    }
}

void ExamplesTest::mapsAreWhole_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("lights");
    QTest::addColumn<int>("controllers");
    QTest::newRow("facade") << QStringLiteral("facade") << 28 * 18 << 2;
    // 5 x 13 + 4 x 3 + 2 x (8 + 4 + 2) + 6 + 48 + 9 + 60
    QTest::newRow("mixed") << QStringLiteral("mixed") << 228 << 3;
    QTest::newRow("ring") << QStringLiteral("ring") << 21 * 12 << 2;
}

void ExamplesTest::mapsAreWhole()
{
    QFETCH(const QString, name);
    QFETCH(const int, lights);
    QFETCH(const int, controllers);
    const MapText map(contents(checkedIn(name, ".map")));
    QVERIFY(map.read);
    QCOMPARE(map.lights.size(), lights);
    QCOMPARE(map.controllers.size(), controllers);
    QCOMPARE(map.imageFile, QStringLiteral("examples/%1/%1.png").arg(name));
    QVERIFY(QFileInfo(QStringLiteral(FORGE_SOURCE_DIR "/") + map.imageFile).isFile());
    // 497: a frame runs 15 bytes past the last one in use, and 512 are the most that it takes.
    const QStringList faults = map.faults(497);
    QVERIFY2(faults.isEmpty(), qPrintable(faults.mid(0, 5).join(QLatin1Char('\n'))));
}

void ExamplesTest::theCheckFindsFaults_data()
{
    QTest::addColumn<QByteArray>("whole");
    QTest::addColumn<QByteArray>("broken");
    const auto row = [](const char* name, const char* whole, const char* broken) {
        QTest::newRow(name) << QByteArray(whole) << QByteArray(broken);
    };
    row("overlap", "<channel>6</channel>", "<channel>5</channel>");
    row("past the frame", "<channel>213</channel>", "<channel>495</channel>");
    row("no such port", "<pn>3</pn>", "<pn>4</pn>");
    row("port number", "<portnum>2</portnum>", "<portnum>3</portnum>");
    row("driven by none", "<light>10004</light>", "");
    row("driven twice", "<light>10004</light>", "<light>10004</light><light>10004</light>");
    row("another controller", "<controller>11</controller>", "<controller>10</controller>");
    row("unknown light", "<light>10004</light>", "<light>9999</light>");
    row("unknown child", "<child>1000001</child>", "<child>1FFFFFF</child>");
    row("serial twice", "<sn>2818050</sn>", "<sn>2818049</sn>");
}

void ExamplesTest::theCheckFindsFaults()
{
    QFETCH(const QByteArray, whole);
    QFETCH(const QByteArray, broken);
    QByteArray text = contents(checkedIn(QStringLiteral("facade"), ".map"));
    const int at = text.indexOf(whole);
    QVERIFY(at > 0);
    text.replace(at, whole.size(), broken);
    const MapText map(text);
    QVERIFY(map.read);
    QVERIFY(!map.faults(497).isEmpty());
}

void ExamplesTest::lightsStandOnThePlan()
{
    QFETCH(const QString, name);
    const MapText map(contents(checkedIn(name, ".map")));
    const QImage plan(checkedIn(name, ".png"));
    QVector<QRect> shapes;
    for (const MapText::Light& light : map.lights) {
        const QRect shape(static_cast<int>(std::floor(light.x)) + 10,
                          static_cast<int>(std::floor(light.y)) + 10, 10, 10);
        QVERIFY(plan.rect().contains(shape));
        for (const QRect& other : shapes) {
            QVERIFY2(!shape.intersects(other), "two lights lie over each other");
        }
        shapes.append(shape);
    }
}

void ExamplesTest::serialNumbersNameTheirProducts()
{
    // First serial number of each product of the device files, and the chemistry of its emitters.
    const QHash<quint64, int> products = {
        {0x240000, 2}, {0x2B0000, 0}, {0x350000, 1}, {0x510000, 254}, {0x5F0000, 3},
        {0x630000, 2}, {0x640000, 0}, {0x680000, 5}, {0x700000, 15},  {0x740000, 7}};
    QSet<quint64> seen;
    for (const char* name : {"facade", "mixed", "ring"}) {
        const MapText map(contents(checkedIn(QString::fromLatin1(name), ".map")));
        for (const MapText::Light& light : map.lights) {
            const quint64 product = light.serial & ~Q_UINT64_C(0xFFFF);
            QVERIFY(products.contains(product));
            QCOMPARE(light.properties.value(QStringLiteral("LED_CHEMISTRY")),
                     products.value(product));
            seen.insert(product);
        }
    }
    QCOMPARE(seen.size(), products.size());
}

void ExamplesTest::theFacadeHasGroupsOfAllKinds()
{
    const MapText map(contents(checkedIn(QStringLiteral("facade"), ".map")));
    QHash<int, int> kinds;
    int nested = 0;
    bool whole = false;
    for (auto it = map.groups.cbegin(); it != map.groups.cend(); ++it) {
        ++kinds[it->type];
        if (it->type != 3) {
            const QVector<quint64> lights = map.lightsOf(it.key());
            QCOMPARE(QSet<quint64>(lights.cbegin(), lights.cend()).size(), lights.size());
            whole = whole || (it->type == 2 && lights.size() == map.lights.size());
        }
        nested += it->type == 1 && map.groups.value(it->children.first()).type == 1 ? 1 : 0;
    }
    QCOMPARE(kinds.value(3), 504);
    QVERIFY(kinds.value(1) > 3);
    QVERIFY(kinds.value(2) > 28 + 18);
    QVERIFY(nested >= 1);
    QVERIFY(whole);
    for (const MapText::Controller& controller : map.controllers) {
        QCOMPARE(controller.type, 2);
        QCOMPARE(controller.version, 2);
        QCOMPARE(controller.ports.size(), 4);
        QVERIFY(!controller.missing);
    }
}

void ExamplesTest::theBridgeHasFixturesAndControllersOfAllKinds()
{
    const MapText map(contents(checkedIn(QStringLiteral("mixed"), ".map")));
    QSet<int> footprints;
    int wide = 0;
    int halves = 0;
    for (const MapText::Light& light : map.lights) {
        footprints.insert(MapText::footprint(light));
        wide += light.properties.value(QStringLiteral("INPUT_RESOLUTION"), 1) == 0 ? 1 : 0;
        halves += light.properties.value(QStringLiteral("HALF_FULL_MODE")) != 0 ? 1 : 0;
    }
    QCOMPARE(footprints, QSet<int>({1, 2, 3, 4, 5, 6, 8}));
    QCOMPARE(wide, 16);
    QCOMPARE(halves, 12 + 4);
    QStringList kinds;
    for (const MapText::Controller& controller : map.controllers) {
        kinds << QStringLiteral("%1 v%2 %3%4")
                     .arg(controller.type)
                     .arg(controller.version)
                     .arg(controller.address)
                     .arg(controller.missing ? QStringLiteral("missing") : QString());
    }
    kinds.sort();
    QCOMPARE(kinds, QStringList({QStringLiteral("2 v1 127.0.0.3"), QStringLiteral("2 v2 127.0.0.4"),
                                 QStringLiteral("3 v1 missing")}));
}

void ExamplesTest::showsPaintGroupsOfTheirMap()
{
    QFETCH(const QString, name);
    QFETCH(const QString, file);
    const MapText map(contents(checkedIn(name, ".map")));
    QFETCH(const int, effects);
    QVector<ShowText> all;
    gather(show(file), &all);
    QVERIFY(all.size() > effects);
    for (const ShowText& effect : all) {
        const quint64 gid = effect.text("gid").toULongLong();
        QVERIFY2(map.groups.contains(gid), qPrintable(effect.text("name")));
        QVERIFY(!map.lightsOf(gid).isEmpty());
    }
}

void ExamplesTest::storedTimesAreThoseOfTheLinks()
{
    QFETCH(const QString, file);
    const ShowText root = show(file);
    QCOMPARE(root.text("type"), QStringLiteral("Meta Effect"));
    const QStringList wrong = wrongTimes(root);
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(QStringLiteral(", "))));
    qint64 last = 0;
    qint64 priority = 0;
    for (const ShowText& child : root.children) {
        last = std::max(last, child.number("end"));
        QVERIFY(child.number("priority") >= priority); // the order in which the program saves
        priority = child.number("priority");
    }
    QCOMPARE(root.number("begin"), qint64(0));
    QCOMPARE(root.number("end"), last);
    QVERIFY(last >= 40000 && last <= 95000);
    QCOMPARE(root.text("loop"), QStringLiteral("1"));
}

void ExamplesTest::showsUseWhatTheProgramOffers()
{
    QFETCH(const QString, file);
    QFETCH(const QString, wanted);
    QVector<ShowText> effects;
    gather(show(file), &effects);
    QSet<QString> types;
    QSet<qint64> priorities;
    QSet<qint64> starts;
    QSet<qint64> ends;
    int fades = 0;
    int endLinks = 0;
    for (const ShowText& effect : effects) {
        types.insert(effect.text("type"));
        priorities.insert(effect.number("priority"));
        starts.insert(effect.number("starttype"));
        ends.insert(effect.number("endtype"));
        fades += effect.number("fadein") > 0 && effect.number("fadeout") > 0 ? 1 : 0;
        endLinks += effect.number("starttype") == 1 && effect.number("startlinkstart") == 0 &&
                            effect.real("startlinkoffset") < 0.0
                        ? 1
                        : 0;
    }
    const QStringList expected = wanted.split(QLatin1Char(';'));
    QCOMPARE(types, QSet<QString>(expected.cbegin(), expected.cend()));
    QVERIFY(priorities.size() >= 4);
    QCOMPARE(starts, QSet<qint64>({0, 1}));
    QCOMPARE(ends, QSet<qint64>({0, 1, 2}));
    QVERIFY(fades >= 15);
    QVERIFY(endLinks >= 2);
}

void ExamplesTest::everyLightIsLitAllThroughTheShow()
{
    QFETCH(const QString, name);
    QFETCH(const QString, file);
    const MapText map(contents(checkedIn(name, ".map")));
    const ShowText root = show(file);
    QHash<quint64, QVector<QPair<qint64, qint64>>> base; // the spans of the lowest layer, by light
    for (const ShowText& child : root.children) {
        if (child.number("priority") == 1) {
            QCOMPARE(child.number("fadein") + child.number("fadeout"), qint64(0));
            for (const quint64 light : map.lightsOf(child.text("gid").toULongLong())) {
                base[light].append({child.number("begin"), child.number("end")});
            }
        }
    }
    QCOMPARE(base.size(), map.lights.size());
    for (QVector<QPair<qint64, qint64>>& spans : base) {
        std::sort(spans.begin(), spans.end());
        qint64 reached = 0;
        for (const QPair<qint64, qint64>& span : spans) {
            QCOMPARE(span.first, reached); // neither a gap nor two at once, which would mix
            reached = span.second;
        }
        QCOMPARE(reached, root.number("end"));
    }
}

void ExamplesTest::aNestedTimelineFitsItsPlace()
{
    const ShowText root = show(QStringLiteral("mixed/mixed"));
    int nested = 0;
    for (const ShowText& child : root.children) {
        if (child.text("type") == QLatin1String("Meta Effect")) {
            ++nested;
            QVERIFY(child.children.size() > 10);
            for (const ShowText& inner : child.children) {
                QVERIFY(inner.number("end") <= child.number("end") - child.number("begin"));
            }
        }
    }
    QCOMPARE(nested, 1);
}

void ExamplesTest::theRingIsRound()
{
    const MapText map(contents(checkedIn(QStringLiteral("ring"), ".map")));
    constexpr double kMiddle = 500.0 - 15.0; // a light's shape stands off its position
    QVector<int> perQuarter(4, 0);
    for (const MapText::Light& light : map.lights) {
        const double x = light.x - kMiddle;
        const double y = light.y - kMiddle;
        const double distance = std::hypot(x, y);
        QVERIFY(distance > 118.0 && distance < 440.0); // within the frame on the plan
        ++perQuarter[(x < 0.0 ? 1 : 0) + (y < 0.0 ? 2 : 0)];
    }
    for (const int count : perQuarter) {
        QVERIFY(std::abs(count - map.lights.size() / 4) <= 4);
    }
    QStringList controllers;
    for (const MapText::Controller& controller : map.controllers) {
        QCOMPARE(controller.version, 2);
        controllers << controller.address;
    }
    controllers.sort(); // the file follows the order of a hash
    QCOMPARE(controllers, QStringList({QStringLiteral("127.0.0.5"), QStringLiteral("127.0.0.6")}));
}

void ExamplesTest::whatShowsPlayIsThere()
{
    QFETCH(const QString, file);
    const QDir root(QStringLiteral(FORGE_SOURCE_DIR));
    QVector<ShowText> all;
    gather(show(file), &all);
    for (const ShowText& effect : all) {
        if (effect.text("type") == QLatin1String("Image Scroll")) {
            QVERIFY(!QImage(root.filePath(effect.text("imagefile"))).isNull());
        }
        if (effect.text("type") == QLatin1String("Animation")) {
            const QDir film(root.filePath(effect.text("animationdir")));
            const QStringList frames = film.entryList(QDir::Files);
            QCOMPARE(frames.size(), 12);
            for (const QString& frame : frames) {
                QVERIFY2(!QImage(film.filePath(frame)).isNull(), qPrintable(frame));
            }
        }
    }
}

QTEST_GUILESS_MAIN(ExamplesTest)
#include "ExamplesTest.moc"
