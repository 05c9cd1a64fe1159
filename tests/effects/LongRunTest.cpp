#include "tests/effects/HourTest.h"

#include <QRegularExpression>

using namespace HourStage;

namespace {

/// The transparency of an effect is the present frame's, whatever was set.
QString withoutTransparency(QString text)
{
    return text.remove(QRegularExpression(QStringLiteral("<transparency>[^<]*</transparency>\n")));
}

/// The hues of a burst and of a spiral pass 65535 within the hour, which leaves the light invalid.
/// A burst's rises by 0.036 degrees a millisecond from 0..720, a spiral's by 0.072 from 0..360.
double leastHue(int number, qint64 ms)
{
    if (number == EffectFactory::typeNumber(QStringLiteral("XYBurst"))) {
        return 0.036 * static_cast<double>(ms) - 2.0;
    }
    if (number == EffectFactory::typeNumber(QStringLiteral("XYSpiral"))) {
        return 0.072 * static_cast<double>(ms) - 2.0;
    }
    return 0.0;
}

bool hueIsRefused(int number, qint64 ms)
{
    return leastHue(number, ms) >= 65536.0;
}

bool mayBeRefused(int number, qint64 ms)
{
    return leastHue(number, ms) + 730.0 >= 65536.0;
}

} // namespace

/// An hour of shows of every effect type, over synthetic times.
class LongRunTest : public HourTest
{
    Q_OBJECT
private slots:
    void initTestCase() { makeFiles(); }
    void init() { loadOwnMap(); }
    void cleanup() { close(); }
    void anHourOfRepeatsPaintsTheSameAndTakesNoMemory();
    void anHourInOneGoStaysInItsBounds();
    void anHourOfTheExampleRepeatsAndTakesNoMemory();
    void theTextSurvivesFilesAndPlaying();

private:
    QString repeatingShow() const;
    QByteArray colors() const;
};

/// Two minutes that hold all eighteen types, at several layers, over a ground that stays.
QString LongRunTest::repeatingShow() const
{
    const QString yxy = QStringLiteral("aYxy;1;0;65535;0.8;0.3805;0.3768");
    const QString red = QStringLiteral("aRgb;1;0;#ffffc8001e000a00");
    const QString half = QStringLiteral("aRgb;1;0;#80000a00dc005a00");
    const QString film = key("animationdir", folder.filePath(QStringLiteral("film")));
    const QString picture = key("imagefile", folder.filePath(QStringLiteral("film/3.png")));
    const QString ground = key("fgcolor", red) + key("bgcolor", half);
    const QString inner = key("brightness", 0.9) +
                          element("Fixed Color", kChase, 0, {0, 4000}, key("color", half)) +
                          element("Cross Fade", kOneRow, 1, {2000, 9000},
                                  key("startcolor", yxy) + key("endcolor", red) +
                                      key("starttrans", 1) + key("time", 2.7));
    return QStringLiteral("<effect>\n") + key("type", QStringLiteral("Meta Effect")) +
           key("end", 120000) + element("Selection", kChase, 0, {0, 4000}, key("bgcolor", red)) +
           element("Fixed Color", kOneRow, 0, {0, 120000}, key("color", yxy)) +
           element("White Fixed Color", kChase, 1, {1000, 20000}, key("temperature", 300)) +
           element("Cross Fade", kChase, 2, {5000, 30000},
                   key("startcolor", red) + key("endcolor", yxy) + key("time", 3.3)) +
           element("White Cross Fade", kChase, 2, {15000, 40000},
                   key("temperatureEnd", 0) + key("endtrans", 1)) +
           element("Chasing Rainbow", kChase, 3, {22000, 60000}, key("groupoffset", 45)) +
           element("Custom Rainbow", kChase, 3, {35000, 75000},
                   key("color_0", red) + key("color_1", yxy) + key("color_2", half)) +
           element("Random Color", kSparks, 3, {0, 80000},
                   key("time", 0.8) + key("fadetime", 0.4) + key("offset", 0.1)) +
           element("Sparkle", kSparks, 4, {30000, 100000}, key("bgtrans", 1)) +
           element("Sparkle Group", kSparks, 2, {60000, 118000}, {}) +
           element("Streak", kChase, 5, {50000, 90000},
                   ground + key("width", 2) + key("fwdtail", 2) + key("revtail", 3) +
                       key("wrap", 1)) +
           element("Sweep", kChase, 5, {60000, 100000}, ground + key("bgtrans", 1)) +
           element("Text", kChase, 4, {70000, 74000}, key("bgcolor", QStringLiteral("#203040"))) +
           element("XYBurst", kOneRow, 6, {72000, 104000}, key("width", 70)) +
           element("XYSpiral", kChase, 6, {90000, 115000}, key("centerx", 8) + key("centery", 3)) +
           element("Image Scroll", kOneRow, 7, {95000, 112000},
                   picture + key("startx", 2) + key("endx", 12) + key("endscale", 2) +
                       key("transenabled", 1)) +
           element("Animation", kChase, 7, {100000, 117000}, film + key("preload", 1)) +
           element("Animation", kChase, 8, {117000, 118000}, film) +
           element("Meta Effect", Effect::kNoGid, 9, {104000, 119000}, inner) +
           QStringLiteral("</effect>\n");
}

/// Everything that the lights without chance show, outputs and simulation; empty where a colour
/// makes no sense.
QByteArray LongRunTest::colors() const
{
    QByteArray all;
    for (int i = 0; i < kLights; ++i) {
        const Light* const light = model->light(static_cast<quint64>(i) + 1);
        const VelaColor& mix = light->mixValue();
        const QColor& sim = light->simColor();
        const bool isSane = mix.isValid() && mix.alphaF() > 0.0 && sim.isValid();
        if (!isSane) {
            return {};
        }
        if (i < kSteadyLights) {
            all += mix.toString().toLatin1() + ' ' + sim.name().toLatin1() + '\n';
        }
    }
    return all;
}

void LongRunTest::anHourOfRepeatsPaintsTheSameAndTakesNoMemory()
{
    constexpr int kStepMs = 25;
    constexpr int kFrames = kHourMs / kStepMs;
    // At its end the timeline starts again from the frame before: a run is a frame shorter than two
    // minutes.
    constexpr int kRun = 120000 / kStepMs - 1;
    constexpr int kSample = 79; // of every so many frames of a run, prime to its length
    const WarningLog log;
    open(repeatingShow());
    const qint64 sentBefore = socket->count;

    QVector<QByteArray> second; // the second run: the first begins from nothing
    second.reserve(kRun / kSample + 1);
    QSet<QByteArray> looks;
    GrowthWatch watch;
    for (int i = 1; i <= kFrames; ++i) {
        frame(qint64(i) * kStepMs);
        const int run = (i - 1) / kRun;
        const int place = (i - 1) % kRun;
        if (place % kSample == 0) {
            const QByteArray now = colors();
            QVERIFY2(!now.isEmpty(), qPrintable(QStringLiteral("frame %1").arg(i)));
            if (run == 1) {
                second.append(now);
                looks.insert(now);
            } else if (run > 1) {
                QVERIFY2(now == second.at(place / kSample),
                         qPrintable(QStringLiteral("frame %1 of run %2:\n%3\n%4")
                                        .arg(place)
                                        .arg(run)
                                        .arg(QString::fromLatin1(now),
                                             QString::fromLatin1(second.at(place / kSample)))));
            }
        }
        model->updateLights();
        watch.pass(kHourMs * i / kFrames, *model, *root);
    }
    // The samples differ among themselves, so that their agreement says something.
    QVERIFY2(looks.size() > second.size() * 3 / 4, qPrintable(QString::number(looks.size())));
    QCOMPARE(socket->count - sentBefore, qint64(kFrames));
    QCOMPARE(log.texts(), QStringList());
    QCOMPARE(watch.growth(*model, *root), QString());
}

void LongRunTest::anHourInOneGoStaysInItsBounds()
{
    // Steps of ten frames: the effects' clocks run the whole hour, a tenth of the frames is
    // painted.
    constexpr int kStepMs = 250;
    const WarningLog log;
    open(longShow());
    for (Effect* const effect : root->effectList()) {
        QCOMPARE(int(effect->end()), int(kHourMs));
    }
    QSet<int> shown; // the types that have given light
    GrowthWatch watch;
    for (qint64 ms = kStepMs; ms < kHourMs; ms += kStepMs) {
        frame(ms);
        const bool isFadingOut = ms > kHourMs - kFadeOutMs;
        for (int number = 0; number < kTypes; ++number) {
            for (int place = 0; place < 3; ++place) {
                const VelaColor& mix = model->light(ownLight(number, place))->mixValue();
                const QByteArray where = EffectFactory::typeName(number).toLatin1() + " at " +
                                         QByteArray::number(ms) + ": " + mix.toString().toLatin1();
                const bool refused = hueIsRefused(number, ms);
                if (!refused && !mayBeRefused(number, ms)) {
                    QVERIFY2(mix.isValid() && mix.alphaF() == 1.0, where.constData());
                }
                // A transparent one, in the fade-out, leaves what lies beneath.
                QVERIFY2(!refused || isFadingOut || !mix.isValid(), where.constData());
                const double parts[] = {mix.redF(), mix.greenF(), mix.blueF()};
                for (const double part : parts) {
                    QVERIFY2(part >= 0.0 && part <= 1.0, where.constData());
                    if (part > 0.1) {
                        shown.insert(number);
                    }
                }
            }
        }
        model->updateLights();
        watch.pass(ms, *model, *root); // the hues that are refused have been logged by then
    }
    QCOMPARE(watch.growth(*model, *root), QString());
    for (const Effect* const effect : root->effectList()) {
        QVERIFY2(effect->active(), qPrintable(effect->type()));
    }
    QStringList dark;
    for (int number = 0; number < kTypes; ++number) {
        if (!shown.contains(number)) {
            dark << EffectFactory::typeName(number);
        }
    }
    // A selection that nobody has made is all background, which is black here.
    QCOMPARE(dark.join(QLatin1Char(',')), QStringLiteral("Selection"));
    QCOMPARE(log.texts(), QStringList{QStringLiteral("VelaColor::setHsv16: HSV parameters out of "
                                                     "range")});
}

void LongRunTest::anHourOfTheExampleRepeatsAndTakesNoMemory()
{
    constexpr int kStepMs = 50;
    constexpr int kFrames = kHourMs / kStepMs;
    constexpr int kRun = 92000 / kStepMs - 1;
    constexpr int kUntilChance = 24000 / kStepMs; // what comes before takes no random numbers
    constexpr int kSample = 37;
    load(QStringLiteral("examples/facade/facade.map"));
    const WarningLog log;
    root = EffectFactory::loadShow(QStringLiteral("examples/facade/all-effects.sho"), model.get());
    QVERIFY(root != nullptr);
    start();
    QCOMPARE(int(root->end()), 92000);
    const QList<Light*> lights = model->lightsHash().values();
    QCOMPARE(lights.size(), 504);

    QVector<QByteArray> second;
    QSet<QByteArray> looks;
    GrowthWatch watch;
    for (int i = 1; i <= kFrames; ++i) {
        frame(qint64(i) * kStepMs);
        const int run = (i - 1) / kRun;
        const int place = (i - 1) % kRun;
        if (place % kSample == 0) {
            QByteArray now;
            for (const Light* const light : lights) {
                const VelaColor& mix = light->mixValue();
                QVERIFY(mix.isValid() && mix.alphaF() > 0.0);
                now += mix.toString().toLatin1() + '\n';
            }
            if (run == 1) {
                second.append(now);
                looks.insert(now);
            } else if (run > 1 && place < kUntilChance) {
                QVERIFY2(now == second.at(place / kSample),
                         qPrintable(QStringLiteral("frame %1 of run %2").arg(place).arg(run)));
            }
        }
        model->updateLights();
        watch.pass(kHourMs * i / kFrames, *model, *root);
    }
    QVERIFY2(looks.size() > second.size() * 9 / 10, qPrintable(QString::number(looks.size())));
    QCOMPARE(log.texts(), QStringList());
    QCOMPARE(watch.growth(*model, *root), QString());
}

void LongRunTest::theTextSurvivesFilesAndPlaying()
{
    open(repeatingShow());
    const QString first = TestShow::textOf(*root);
    QVERIFY(first.contains(QStringLiteral("<type>Image Scroll</type>")));
    // Compiling sets a timeline to 0 and to the end of what it holds; as a part of another one it
    // has the place of its own keys.
    for (const Effect* const effect : root->effectList()) {
        if (effect->typeId() == EffectFactory::kMetaEffect) {
            QCOMPARE(int(effect->begin()), 104000);
            QCOMPARE(int(effect->end()), 119000);
        }
    }
    const QString path = folder.filePath(QStringLiteral("hour.sho"));
    for (int round = 0; round < 3; ++round) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Text));
        QTextStream out(&file);
        root->save(out);
        out.flush();
        file.close();
        root->deleteShow();
        root = EffectFactory::loadShow(path, model.get());
        QVERIFY(root != nullptr);
        root->updateEffectTimes(); // as the program does where a timeline lies in another
        QCOMPARE(TestShow::textOf(*root), first);
    }

    // Playing leaves nothing behind but the transparency that the frame gave.
    root->tick(TestShow::kStartMs, 0);
    root->setActive(true);
    root->compile();
    root->updateEffectTimes();
    root->restartFromLast();
    for (qint64 ms = 100; ms <= 130000; ms += 100) {
        frame(ms);
        model->updateLights();
    }
    QCOMPARE(withoutTransparency(TestShow::textOf(*root)), withoutTransparency(first));
}

QTEST_GUILESS_MAIN(LongRunTest)
#include "LongRunTest.moc"
