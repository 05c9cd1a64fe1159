#include "tests/effects/HourTest.h"

#include <algorithm>
#include <iterator>

using namespace HourStage;

namespace {

constexpr int kWitnessPriority = 1000;
constexpr char kWitnessColor[] = "aRgb;1;0;#ffff123456789abc";

} // namespace

/// Shows of every effect type whose files hold anything, over an hour of synthetic time.
class HostileShowTest : public HourTest
{
    Q_OBJECT
private slots:
    void initTestCase() { makeFiles(); }
    void init() { loadOwnMap(); }
    void cleanup() { close(); }
    void hostileValuesRunForAnHour_data();
    void hostileValuesRunForAnHour();
    void picturesThatVanishLeaveTheShowRunning();

private:
    QString hostileShow(const QString& own, const QString& base) const;
};

/// Every type with `own`, values of its own keys, twice: once on for the whole hour, once at times
/// that `base` gives. A steady colour lies beside them.
QString HostileShowTest::hostileShow(const QString& own, const QString& base) const
{
    const Span hour = {0, int(kHourMs)};
    const QString files = key("imagefile", folder.filePath(QStringLiteral("film/3.png"))) +
                          key("animationdir", folder.filePath(QStringLiteral("film")));
    QString text =
        QStringLiteral("<effect>\n") + key("type", QStringLiteral("Meta Effect")) + key("loop", 0) +
        key("end", int(kHourMs)) +
        element("Fixed Color", kOneRow, kWitnessPriority, hour,
                key("color", QLatin1String(kWitnessColor)) + key("fadein", 0) + key("fadeout", 0));
    for (int number = 0; number < kTypes; ++number) {
        const quint64 gid = kOwn + static_cast<quint64>(number);
        const QByteArray type = EffectFactory::typeName(number).toLatin1();
        QString keys = files + own;
        if (number == EffectFactory::kMetaEffect) {
            keys += element("Fixed Color", gid, 0, hour, own) +
                    element("Sparkle", gid, 1, hour, own + base);
        }
        text += element(type, gid, number, hour, keys);
        text += element(type, gid, kTypes + number, hour, keys + base);
    }
    return text + QStringLiteral("</effect>\n");
}

void HostileShowTest::hostileValuesRunForAnHour_data()
{
    const char* const numbers[] = {"temperature",
                                   "intensity",
                                   "inputType",
                                   "warm",
                                   "cool",
                                   "starttrans",
                                   "endtrans",
                                   "time",
                                   "cycletime",
                                   "temperatureStart",
                                   "intensityStart",
                                   "warmStart",
                                   "temperatureEnd",
                                   "intensityEnd",
                                   "coolEnd",
                                   "reversecolor",
                                   "reversedir",
                                   "groupoffset",
                                   "fadetime",
                                   "cyclecount",
                                   "offset",
                                   "decay",
                                   "density",
                                   "sparkletrans",
                                   "bgtrans",
                                   "width",
                                   "fwdtail",
                                   "revtail",
                                   "reverse",
                                   "fgtrans",
                                   "wrap",
                                   "startx",
                                   "starty",
                                   "endx",
                                   "endy",
                                   "startscale",
                                   "endscale",
                                   "smooth",
                                   "transenabled",
                                   "preload",
                                   "fps",
                                   "xoffset",
                                   "yoffset",
                                   "scale",
                                   "centerx",
                                   "centery",
                                   "cycledir",
                                   "rainbowdir",
                                   "twist",
                                   "number",
                                   "clockwise",
                                   "fontsize",
                                   "bold",
                                   "duration_0",
                                   "fade_0",
                                   "white_0",
                                   "trans_0",
                                   "duration_1",
                                   "fade_1",
                                   "brightness",
                                   "loop"};
    const char* const times[] = {
        "transparency",  "fadein",         "fadeout",      "begin",
        "end",           "startfixedtime", "endfixedtime", "startlinkoffset",
        "endlinkoffset", "endcyclecount",  "starttype",    "endtype"};
    const char* const colors[] = {"color",   "startcolor",   "endcolor",   "fgcolor",
                                  "bgcolor", "sparklecolor", "transcolor", "color_0",
                                  "color_1", "color_7",      "color_-1",   "color_4294967296"};
    const auto all = [](const auto& names, const QString& value) {
        QString keys;
        for (const char* const name : names) {
            keys += key(name, value);
        }
        return keys;
    };
    QTest::addColumn<QString>("own");
    QTest::addColumn<QString>("base");
    const char* const values[] = {"0",
                                  "-0",
                                  "1",
                                  "-1",
                                  "0.0001",
                                  "-0.5",
                                  "65536",
                                  "2147483647",
                                  "2147483648",
                                  "-2147483648",
                                  "4294967295",
                                  "4294967296",
                                  "1e-300",
                                  "1e300",
                                  "-1e300",
                                  "nan",
                                  "inf",
                                  "-inf",
                                  "99999999999999999999999999",
                                  "12 monkeys",
                                  ""};
    for (const char* const value : values) {
        const QString text = QLatin1String(value);
        QTest::addRow("the number '%s'", value) << all(numbers, text) << all(times, text);
    }
    const char* const texts[] = {"#12",
                                 "#gggggg",
                                 "no colour",
                                 "aRgb;1;0;#",
                                 "aRgb;;;;;;;;",
                                 "aYxy;1;0;65535;nan;inf;-inf",
                                 "aYxy;99;0;65535;1e300;0;0",
                                 "aNchannel;99;-7;70000;1;2",
                                 "aNchannel;11;40;65535;1",
                                 ""};
    for (const char* const value : texts) {
        QTest::addRow("the colour '%s'", value) << all(colors, QLatin1String(value)) << QString();
    }
    const QPair<const char*, QString> files[] = {
        {"a device", QStringLiteral("/dev/null")},
        {"one that fails to read", QStringLiteral("/proc/self/mem")},
        {"none", QStringLiteral("/nowhere/at")},
        {"no picture", folder.filePath(QStringLiteral("hour.map"))},
        {"a folder of other files", folder.path()},
        {"a picture without its pixels", folder.filePath(QStringLiteral("huge.bmp"))}};
    for (const auto& file : files) {
        const QString names = key("imagefile", file.second) + key("animationdir", file.second);
        QTest::addRow("as a file, %s", file.first) << names + key("preload", 0) << QString();
        QTest::addRow("as a preloaded file, %s", file.first)
            << names + key("preload", 1) << QString();
    }
    // Effects that hang on each other's ends.
    QString ring = key("starttype", 1) + key("endtype", 1);
    for (const char* const name : {"eid", "startlinkeid", "endlinkeid"}) {
        ring += key(name, 7);
    }
    QTest::newRow("links to itself") << QString() << ring;
}

void HostileShowTest::hostileValuesRunForAnHour()
{
    // Prime, so that no cycle keeps step with it.
    constexpr int kStepMs = 6991;
    constexpr qint64 kMostBytes = 16 << 20; // whatever number a file holds
    QFETCH(const QString, own);
    QFETCH(const QString, base);
    const WarningLog log;
    const qint64 heapBefore = heapInUse();
    open(hostileShow(own, base));
    QVERIFY2(heapInUse() - heapBefore < kMostBytes,
             qPrintable(QString::number(heapInUse() - heapBefore)));
    const qint64 sentBefore = socket->count;
    const VelaColor witness = VelaColor(QString::fromLatin1(kWitnessColor));
    QVERIFY(witness.isValid());
    GrowthWatch watch;
    int frames = 0;
    for (qint64 ms = kStepMs; ms < kHourMs; ms += kStepMs) {
        frame(ms);
        ++frames;
        for (int i = 0; i < kSteadyLights; ++i) {
            const VelaColor& mix = model->light(static_cast<quint64>(i) + 1)->mixValue();
            if (mix != witness) {
                QFAIL(qPrintable(QStringLiteral("%1 at %2").arg(mix.toString()).arg(ms)));
            }
        }
        for (int i = kLights; i < kLights + kOwnLights; ++i) {
            const VelaColor& mix = model->light(static_cast<quint64>(i) + 1)->mixValue();
            const double parts[] = {mix.redF(), mix.greenF(), mix.blueF(), mix.alphaF()};
            const bool isSane = std::all_of(std::begin(parts), std::end(parts), [](double part) {
                return part >= 0.0 && part <= 1.0; // not so for what isn't a number
            });
            if (!isSane) {
                QFAIL(qPrintable(mix.toString()));
            }
        }
        model->updateLights();
        watch.pass(ms, *model, *root);
    }
    QCOMPARE(watch.growth(*model, *root), QString());
    QVERIFY2(heapInUse() - heapBefore < kMostBytes,
             qPrintable(QString::number(heapInUse() - heapBefore)));
    QCOMPARE(socket->count - sentBefore, qint64(frames));
    QVERIFY(root->active());
    // The colours' own warnings, and nothing from below.
    for (const QString& text : log.texts()) {
        QVERIFY2(text.startsWith(QLatin1String("VelaColor::")), qPrintable(text));
    }
}

void HostileShowTest::picturesThatVanishLeaveTheShowRunning()
{
    constexpr int kStepMs = 1999;
    QTemporaryDir away;
    QVERIFY(QDir(away.path()).mkpath(QStringLiteral("film")));
    for (int i = 0; i < 3; ++i) {
        QImage image(4, 4, QImage::Format_RGB32);
        image.fill(qRgb(255, 255, 255));
        QVERIFY(image.save(away.filePath(QStringLiteral("film/%1.png").arg(i))));
    }
    const QString film = key("animationdir", away.filePath(QStringLiteral("film")));
    const QString picture = key("imagefile", away.filePath(QStringLiteral("film/0.png"))) +
                            key("startx", 2) + key("starty", 2) + key("endx", 2) + key("endy", 2) +
                            key("smooth", 0);
    const Span hour = {0, int(kHourMs)};
    QString text = longShow();
    text.chop(int(qstrlen("</effect>\n")));
    open(text + element("Animation", kOneRow, 100, hour, film + key("smooth", 0)) +
         element("Animation", kSparks, 100, hour, film + key("preload", 1) + key("smooth", 0)) +
         element("Image Scroll", kOwn, 100, hour, picture) + QStringLiteral("</effect>\n"));

    bool isAway = false;
    GrowthWatch watch;
    for (qint64 ms = kStepMs; ms < kHourMs - kFadeOutMs; ms += kStepMs) {
        if (!isAway && ms > kHourMs / 4) {
            isAway = away.remove();
            QVERIFY(isAway);
        }
        frame(ms);
        // Read in every frame: black without its files. Preloaded ones stay.
        const VelaColor& live = model->light(1)->mixValue();
        QCOMPARE(live.name(), isAway ? QStringLiteral("#000000") : QStringLiteral("#ffffff"));
        QCOMPARE(model->light(kSteadyLights + 1)->mixValue().name(), QStringLiteral("#ffffff"));
        QCOMPARE(model->light(ownLight(0, 1))->mixValue().name(), QStringLiteral("#ffffff"));
        model->updateLights();
        watch.pass(ms, *model, *root);
    }
    QCOMPARE(watch.growth(*model, *root), QString());
}

QTEST_GUILESS_MAIN(HostileShowTest)
#include "HostileShowTest.moc"
