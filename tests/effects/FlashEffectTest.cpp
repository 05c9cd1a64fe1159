#include "effects/FlashEffect.h"

#include "engine/MetaEffect.h"
#include "tests/effects/FilmStage.h"

#include <limits>

using TestShow::elementOf;
using TestShow::textOf;

/// What an animation is made of, and how its frames load.
class FlashEffectTest : public QObject
{
    Q_OBJECT
private slots:
    void hasItsDefaults();
    void metaObjectHasItsSignalsAndSlots();
    void isWrittenByteForByte();
    void readsItsKeys_data();
    void readsItsKeys();
    void unchangedSettersDoNothing();
    void directoryAndRateFollowTheTimeRule();
    void geometryAndPreloadCompile();
    void theTransparentColorIsComparedAsText();
    void cycleTimeIsThatOfTheFrames_data();
    void cycleTimeIsThatOfTheFrames();
    void loadingTellsItsCourse();
    void aDirectoryWithoutFilesIsSilent_data();
    void aDirectoryWithoutFilesIsSilent();
    void aNewDirectoryWaitsForItsLoading();
    void loadingFindsWhatIsThere();
    void aShowThatIsOpenedPlays_data();
    void aShowThatIsOpenedPlays();
    void readingLoadsOnce();
    void anEmptyDirectoryKeyIsNone();
    void loadsWithoutAGroup();
    void aSecondLoadingMayBeginInTheFirst();
    void nothingIsShownWhileFramesLoad();
};

void FlashEffectTest::hasItsDefaults()
{
    FlashEffect effect(nullptr, 5, nullptr);
    QCOMPARE(effect.type(), QStringLiteral("Animation"));
    QCOMPARE(effect.typeId(), 5);
    QCOMPARE(effect.cycleTime(), 0U);
    QVERIFY(effect.animationDir().isNull());
    QCOMPARE(effect.preload(), false);
    QCOMPARE(effect.fps(), 40);
    QCOMPARE(effect.xOffset(), 0.0);
    QCOMPARE(effect.yOffset(), 0.0);
    QCOMPARE(effect.scale(), 1.0);
    QCOMPARE(effect.transColor(), VelaColor(Qt::black));
    QCOMPARE(effect.transEnabled(), false);
    QCOMPARE(effect.smooth(), true);
    QCOMPARE(effect.ready(), false);
    QCOMPARE(effect.frameCount(), 0);
    QCOMPARE(effect.currentFrame(), 0);
    QVERIFY(effect.compile());
    QVERIFY(effect.compiled());
    QCOMPARE(effect.ready(), false);
    effect.setActive(true);
    effect.tick(0, 0);
}

void FlashEffectTest::metaObjectHasItsSignalsAndSlots()
{
    const QMetaObject& meta = FlashEffect::staticMetaObject;
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        methods << QString::fromLatin1(meta.method(i).methodSignature());
    }
    QCOMPARE(methods.join(QLatin1Char(' ')),
             QStringLiteral("updateFrameCount(QString) updateImageSize(QString) "
                            "updateOutputSize(QString) initializeProgressDialog(int) "
                            "updateProgressDialog(int) handleLoadClicked() loadFrames()"));
}

void FlashEffectTest::isWrittenByteForByte()
{
    FlashEffect effect(nullptr, 7, nullptr);
    const QString common =
        TestShow::baseText(QStringLiteral("Animation"), QStringLiteral("Unnamed Effect"), 7);
    QCOMPARE(textOf(effect), QStringLiteral("<effect>\n") + common +
                                 QStringLiteral("<animationdir></animationdir>\n"
                                                "<preload>0</preload>\n"
                                                "<fps>40</fps>\n"
                                                "<xoffset>0</xoffset>\n"
                                                "<yoffset>0</yoffset>\n"
                                                "<scale>1</scale>\n"
                                                "<transcolor>aRgb;1;0;#ffff000000000000"
                                                "</transcolor>\n"
                                                "<transenabled>0</transenabled>\n"
                                                "<smooth>1</smooth>\n"
                                                "</effect>\n"));
    effect.setAnimationDir(QStringLiteral("/no/such & film"));
    effect.setPreload(true);
    effect.setFps(-25);
    effect.setXOffset(1.23456789);
    effect.setYOffset(-2);
    effect.setScale(0.5);
    effect.setTransColor(Qt::red);
    effect.setTransEnabled(true);
    effect.setSmooth(false);
    QCOMPARE(textOf(effect), QStringLiteral("<effect>\n") + common +
                                 QStringLiteral("<animationdir>/no/such &amp; film</animationdir>\n"
                                                "<preload>1</preload>\n"
                                                "<fps>-25</fps>\n"
                                                "<xoffset>1.23457</xoffset>\n"
                                                "<yoffset>-2</yoffset>\n"
                                                "<scale>0.5</scale>\n"
                                                "<transcolor>aRgb;1;0;#ffffffff00000000"
                                                "</transcolor>\n"
                                                "<transenabled>1</transenabled>\n"
                                                "<smooth>0</smooth>\n"
                                                "</effect>\n"));
}

void FlashEffectTest::readsItsKeys_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("dir");
    QTest::addColumn<QVector<double>>("numbers"); // fps, offsets, scale
    QTest::addColumn<QString>("flags");           // preload, transparent, smooth
    QTest::addColumn<QString>("color");
    using Numbers = QVector<double>;
    const Numbers defaults = {40, 0, 0, 1};
    const QString black = QStringLiteral("#000000");
    const auto row = [](const char* name, const char* keys) -> QTestData& {
        return QTest::newRow(name) << QString::fromLatin1(keys);
    };
    row("missing", "") << QString() << defaults << QStringLiteral("001") << black;
    row("all", "<animationdir>/a b</animationdir><preload>1</preload><fps>25</fps>"
               "<xoffset>-1.5</xoffset><yoffset>2e2</yoffset><scale>3</scale>"
               "<transcolor>blue</transcolor><transenabled>-1</transenabled><smooth>0</smooth>")
        << QStringLiteral("/a b") << Numbers{25, -1.5, 200, 3} << QStringLiteral("110")
        << QStringLiteral("#0000ff");
    row("empty", "<animationdir/><preload/><fps/><xoffset/><yoffset/><scale/><transcolor/>"
                 "<transenabled/><smooth/>")
        << QString() << defaults << QStringLiteral("001") << black;
    row("unreadable",
        "<preload>1</preload><preload>x</preload><fps>9</fps><fps>9.5</fps><xoffset>1</xoffset>"
        "<xoffset>x</xoffset><yoffset>1</yoffset><yoffset>x</yoffset><scale>2</scale>"
        "<scale>x</scale><transenabled>1</transenabled><transenabled>x</transenabled>"
        "<smooth>0</smooth><smooth>x</smooth>")
        << QString() << defaults << QStringLiteral("001") << black;
    row("an unreadable colour keeps what is",
        "<transcolor>blue</transcolor><transcolor>aRgb;</transcolor>")
        << QString() << defaults << QStringLiteral("001") << QStringLiteral("#0000ff");
    row("odd rates", "<fps>-2147483648</fps>")
        << QString() << Numbers{-2147483648.0, 0, 0, 1} << QStringLiteral("001") << black;
    row("others' keys", "<time>9</time><startscale>9</startscale><nonsense>9</nonsense>")
        << QString() << defaults << QStringLiteral("001") << black;
}

void FlashEffectTest::readsItsKeys()
{
    QFETCH(const QString, keys);
    QDomElement element = elementOf(keys);
    const FlashEffect effect(nullptr, 5, &element);
    QTEST(effect.animationDir(), "dir");
    const QVector<double> numbers = {static_cast<double>(effect.fps()), effect.xOffset(),
                                     effect.yOffset(), effect.scale()};
    QTEST(numbers, "numbers");
    const auto bit = [](bool on) { return QLatin1Char(on ? '1' : '0'); };
    QTEST(QString(bit(effect.preload())) + bit(effect.transEnabled()) + bit(effect.smooth()),
          "flags");
    QTEST(effect.transColor().name(), "color");
}

void FlashEffectTest::unchangedSettersDoNothing()
{
    FilmStage stage(2, 2, 10.0);
    FlashEffect effect(stage.model(), 0x1000, nullptr);
    effect.setAnimationDir(stage.film({0xFFFF0000U, 0xFF00FF00U}));
    effect.compile();
    LoadingLog log(effect);
    effect.setAnimationDir(effect.animationDir());
    effect.setFps(40);
    effect.setPreload(false);
    effect.setXOffset(0.0);
    effect.setYOffset(0.0);
    effect.setScale(1.0);
    effect.setTransColor(Qt::black);
    effect.setTransEnabled(true);
    effect.setSmooth(false);
    QCOMPARE(log.take(), QString());
}

void FlashEffectTest::directoryAndRateFollowTheTimeRule()
{
    FilmStage stage(2, 2, 10.0);
    const QString film = stage.film({0xFFFF0000U, 0xFF00FF00U, 0xFF0000FFU});
    FlashEffect effect(stage.model(), 0x1000, nullptr);
    LoadingLog log(effect);
    effect.setAnimationDir(film);
    QCOMPARE(log.take(), QStringLiteral("cycle 0")); // nothing is loaded yet
    effect.compile();
    log.take();
    effect.setFps(7);
    QCOMPARE(log.take(), QStringLiteral("cycle 428")); // 3000 / 7
    effect.setAnimationDir(QString());
    QCOMPARE(log.take(), QStringLiteral("cycle 428"));

    MetaEffect root(nullptr, 0, nullptr);
    effect.setEndType(Effect::EndCycles);
    effect.setEndCycleCount(2);
    root.addEffect(&effect);
    effect.setFps(10);
    QCOMPARE(effect.end(), 600U);
    effect.setAnimationDir(stage.film({0xFFFF0000U}, "short"));
    effect.compile(); // a film that was loaded has another length
    QCOMPARE(effect.end(), 200U);
}

void FlashEffectTest::geometryAndPreloadCompile()
{
    FilmStage stage(2, 2, 10.0);
    FlashEffect effect(stage.model(), 0x1000, nullptr);
    effect.setAnimationDir(stage.film({0xFFFF0000U, 0xFF00FF00U}));
    LoadingLog log(effect);
    const QString loaded = QStringLiteral("output 10 x 10; frames 2; image 4 x 4; cycle 50");
    effect.setXOffset(1.0);
    QCOMPARE(log.take(), loaded);
    effect.setYOffset(-1.0);
    QCOMPARE(log.take(), loaded);
    effect.setScale(2.0);
    QCOMPARE(log.take(), loaded);
    effect.setPreload(true);
    QCOMPARE(log.take(), QStringLiteral("output 10 x 10; of 2; at 1; at 2; frames 2; image 4 x 4; "
                                        "cycle 50"));
}

void FlashEffectTest::theTransparentColorIsComparedAsText()
{
    FlashEffect effect(nullptr, 5, nullptr);
    effect.setTransColor(Qt::red);
    QCOMPARE(effect.transColor(), VelaColor(Qt::red));
    VelaColor calibrated(Qt::red); // the text doesn't tell it
    calibrated.setTintweave(true);
    QCOMPARE(calibrated.toString(), VelaColor(Qt::red).toString());
    effect.setTransColor(calibrated);
    QCOMPARE(effect.transColor(), VelaColor(Qt::red));
    VelaColor ofProfile(Qt::red);
    ofProfile.setProfileId(4);
    effect.setTransColor(ofProfile);
    QCOMPARE(effect.transColor(), ofProfile);
}

void FlashEffectTest::cycleTimeIsThatOfTheFrames_data()
{
    QTest::addColumn<int>("fps");
    QTest::addColumn<uint>("cycle");
    QTest::newRow("40") << 40 << 75U;
    QTest::newRow("30") << 30 << 100U;
    QTest::newRow("7") << 7 << 428U; // 428.57
    QTest::newRow("1001") << 1001 << 2U;
    QTest::newRow("5000") << 5000 << 0U;
    QTest::newRow("0") << 0 << 0U;
    QTest::newRow("-40") << -40 << 0U;
    QTest::newRow("lowest") << std::numeric_limits<int>::min() << 0U;
}

void FlashEffectTest::cycleTimeIsThatOfTheFrames()
{
    QFETCH(const int, fps);
    QFETCH(const uint, cycle);
    FilmStage stage(1, 1, 10.0);
    FlashEffect effect(stage.model(), 0x1000, nullptr);
    effect.setFps(fps);
    QCOMPARE(effect.cycleTime(), 0U);
    effect.setAnimationDir(stage.film({1, 2, 3}));
    effect.compile();
    QCOMPARE(effect.cycleTime(), cycle);
}

void FlashEffectTest::loadingTellsItsCourse()
{
    // 33.5 by 7 map units: extents are whole numbers.
    FilmStage stage({{0.0, 0.0}, {33.5, 7.0}});
    for (const int i : {1, 2, 10}) {
        stage.save(qPrintable(QStringLiteral("film/f%1.png").arg(i)), plainPicture(i, 3, 0));
    }
    FlashEffect effect(stage.model(), 0x1000, nullptr);
    effect.setAnimationDir(stage.path("film"));
    LoadingLog log(effect);
    effect.compile();
    // The size is that of the first frame.
    QCOMPARE(log.take(), QStringLiteral("output 33 x 7; frames 3; image 1 x 3; cycle 75"));
    QCOMPARE(effect.imageSizeText(), QStringLiteral("1 x 3"));
    QCOMPARE(effect.outputSizeText(), QStringLiteral("33 x 7"));
    QVERIFY(effect.ready());
    QCOMPARE(effect.frameCount(), 3);
    effect.setPreload(true);
    QCOMPARE(log.take(), QStringLiteral("output 33 x 7; of 3; at 1; at 2; at 3; frames 3; "
                                        "image 1 x 3; cycle 75"));
    effect.loadFrames();
    QCOMPARE(log.lines.size(), 8);
    effect.handleLoadClicked();
    QCOMPARE(log.lines.size(), 16);

    // A single frame has nothing more to load.
    log.take();
    effect.setAnimationDir(stage.film({0xFFFF0000U}, "one"));
    log.take();
    effect.compile();
    QCOMPARE(log.take(), QStringLiteral("output 33 x 7; of 1; at 1; frames 1; image 4 x 4; "
                                        "cycle 25"));
}

void FlashEffectTest::aDirectoryWithoutFilesIsSilent_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("missing") << QStringLiteral("gone");
    QTest::newRow("empty") << QStringLiteral("empty");
    QTest::newRow("of directories only") << QStringLiteral("nest");
    QTest::newRow("a file") << QStringLiteral("stage.map");
    QTest::newRow("unset") << QString();
}

void FlashEffectTest::aDirectoryWithoutFilesIsSilent()
{
    QFETCH(const QString, name);
    FilmStage stage(2, 1, 10.0);
    QVERIFY(QDir().mkpath(stage.path("empty")) && QDir().mkpath(stage.path("nest/inner")));
    FlashEffect effect(stage.model(), 0x1000, nullptr);
    effect.setAnimationDir(stage.film({0xFFFF0000U}));
    effect.compile();
    effect.setAnimationDir(name.isEmpty() ? QString() : stage.path(name.toLatin1().constData()));
    LoadingLog told(effect);
    const LogCapture log;
    QVERIFY(effect.compile());
    QCOMPARE(told.take(), QString());
    QVERIFY(LogCapture::lines().isEmpty());
    QVERIFY(!effect.ready());
    QCOMPARE(effect.frameCount(), 0);
    QCOMPARE(effect.cycleTime(), 0U);
    stage.run(effect, 100);
    QVERIFY(stage.mix(1).isBlack());
    stage.light(1)->mixColor(Qt::blue, 0);
    effect.tick(TestShow::kStartMs, 0);
    QCOMPARE(stage.mix(1), overBlack(Qt::blue)); // not even black is painted
}

void FlashEffectTest::aNewDirectoryWaitsForItsLoading()
{
    FilmStage stage({{0.0, 0.0}, {10.0, 10.0}});
    const QString red = stage.film({0xFFFF0000U}, "red");
    const QString blue = stage.film({0xFF0000FFU, 0xFF0000FFU}, "blue");
    for (const bool preload : {false, true}) {
        FlashEffect effect(stage.model(), 0x1000, nullptr);
        effect.setPreload(preload);
        effect.setAnimationDir(red);
        QVERIFY(!effect.ready());
        effect.compile();
        effect.setAnimationDir(blue);
        QVERIFY(effect.ready());
        QCOMPARE(effect.frameCount(), 1);
        stage.run(effect, 0);
        QCOMPARE(stage.sim(1), QColor(Qt::red));
        effect.handleLoadClicked();
        QCOMPARE(effect.frameCount(), 2);
        stage.run(effect, 0);
        QCOMPARE(stage.sim(1), QColor(Qt::blue));
    }
}

void FlashEffectTest::loadingFindsWhatIsThere()
{
    FilmStage stage({{0.0, 0.0}, {10.0, 10.0}});
    const QString film = stage.film({0xFFFF0000U});
    FlashEffect effect(stage.model(), 0x1000, nullptr);
    effect.setAnimationDir(film);
    effect.compile();
    stage.run(effect, 0);
    QCOMPARE(stage.sim(1), QColor(Qt::red));
    stage.film({0xFF00FF00U, 0xFF0000FFU});
    QVERIFY(writeFile(stage.path("film/10.txt"), "counts as a frame"));
    QCOMPARE(effect.frameCount(), 1);
    const LogCapture log;
    effect.loadFrames();
    QCOMPARE(effect.frameCount(), 3);
    stage.run(effect, 0);
    QCOMPARE(stage.sim(1), QColor(Qt::green));
    QVERIFY(LogCapture::lines().isEmpty()); // only what is looked at
}

void FlashEffectTest::aShowThatIsOpenedPlays_data()
{
    QTest::addColumn<QString>("keys");
    QTest::newRow("with the defaults") << QString();
    QTest::newRow("preloaded") << QStringLiteral("<preload>1</preload>");
    QTest::newRow("moved") << QStringLiteral("<preload>0</preload><xoffset>0.5</xoffset>");
}

void FlashEffectTest::aShowThatIsOpenedPlays()
{
    QFETCH(const QString, keys);
    FilmStage stage({{0.0, 0.0}, {10.0, 10.0}});
    const QString film =
        QStringLiteral("<animationdir>%1</animationdir>").arg(stage.film({0xFFFF0000U}));
    const QString gid = QStringLiteral("<gid>4096</gid>");
    for (const QString& text : {gid + film + keys, keys + film + gid, film + gid + keys}) {
        QDomElement element = elementOf(text);
        FlashEffect effect(stage.model(), Effect::kNoGid, &element);
        QVERIFY(effect.compiled());
        QVERIFY(effect.ready());
        QCOMPARE(effect.frameCount(), 1);
        stage.run(effect, 0);
        QCOMPARE(stage.sim(1), QColor(Qt::red));
    }
}

void FlashEffectTest::readingLoadsOnce()
{
    FilmStage stage(2, 2, 10.0);
    const QString film = stage.film({0xFFFF0000U, 0xFF00FF00U});
    FlashEffect effect(stage.model(), Effect::kNoGid, nullptr);
    LoadingLog log(effect);
    const QString keys =
        QStringLiteral("<gid>4096</gid><animationdir>%1</animationdir><preload>1</preload>"
                       "<fps>20</fps><xoffset>1</xoffset><yoffset>1</yoffset><scale>0.5</scale>")
            .arg(film);
    QDomElement element = elementOf(keys);
    effect.fromXml(&element);
    QCOMPARE(log.take(), QStringLiteral("cycle 0; cycle 0; output 10 x 10; of 2; at 1; at 2; "
                                        "frames 2; image 4 x 4; cycle 100"));
    element = elementOf(QStringLiteral("<smooth>0</smooth>")); // changes nothing that loads
    effect.fromXml(&element);
    QCOMPARE(log.take(), QString());
    element = elementOf(QStringLiteral("<scale>2</scale>"));
    effect.fromXml(&element);
    QCOMPARE(log.lines.filter(QStringLiteral("frames")).size(), 1);
    effect.fromXml(nullptr);
    QCOMPARE(log.lines.filter(QStringLiteral("frames")).size(), 1);
}

void FlashEffectTest::anEmptyDirectoryKeyIsNone()
{
    FilmStage stage(2, 2, 10.0);
    const QString film = stage.film({0xFFFF0000U, 0xFF00FF00U});
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(film));
    QDomElement element = elementOf(QStringLiteral("<gid>4096</gid><animationdir></animationdir>"
                                                   "<preload>1</preload>"));
    FlashEffect effect(stage.model(), Effect::kNoGid, &element);
    effect.compile();
    const bool isReady = effect.ready();
    QDir::setCurrent(before);
    QVERIFY(!isReady);
    QCOMPARE(effect.frameCount(), 0);
}

void FlashEffectTest::loadsWithoutAGroup()
{
    FilmStage stage(2, 2, 10.0);
    FlashEffect effect(stage.model(), 0x1000, nullptr);
    effect.setAnimationDir(stage.film({0xFFFF0000U, 0xFF00FF00U}));
    effect.setPreload(true);
    effect.setGid(0x999);
    LoadingLog log(effect);
    QVERIFY(effect.compile());
    QVERIFY(effect.compiled());
    QVERIFY(effect.ready());
    QCOMPARE(log.take(), QStringLiteral("of 2; at 1; at 2; frames 2; image 4 x 4; cycle 50"));
    stage.run(effect, 0);
    QCOMPARE(stage.sim(1), QColor(Qt::black));
    stage.light(1)->mixColor(Qt::blue, 0);
    effect.tick(TestShow::kStartMs + 25, 0);
    QCOMPARE(stage.mix(1), overBlack(Qt::blue));
    QCOMPARE(effect.currentFrame(), 1); // the film runs all the same
}

void FlashEffectTest::aSecondLoadingMayBeginInTheFirst()
{
    // A progress dialog handles events, and with them maybe another load.
    FilmStage stage({{0.0, 0.0}, {10.0, 10.0}});
    const QString shorter = stage.film({0xFF0000FFU}, "shorter");
    FlashEffect effect(stage.model(), 0x1000, nullptr);
    effect.setAnimationDir(stage.film({0xFFFF0000U, 0xFFFF0000U, 0xFFFF0000U, 0xFFFF0000U}));
    bool hasBegun = false;
    connect(&effect, &FlashEffect::updateProgressDialog, &effect, [&](int count) {
        if (count == 2 && !hasBegun) {
            hasBegun = true;
            effect.setAnimationDir(shorter);
            effect.compile();
        }
    });
    effect.setPreload(true);
    QVERIFY(hasBegun);
    QVERIFY(effect.ready());
    QCOMPARE(effect.frameCount(), 1);
    stage.run(effect, 0);
    QCOMPARE(stage.sim(1), QColor(Qt::blue));
}

void FlashEffectTest::nothingIsShownWhileFramesLoad()
{
    FilmStage stage({{0.0, 0.0}, {10.0, 10.0}});
    FlashEffect effect(stage.model(), 0x1000, nullptr);
    effect.setAnimationDir(stage.film({0xFFFF0000U, 0xFFFF0000U}));
    effect.compile();
    int frames = 0;
    connect(&effect, &FlashEffect::updateProgressDialog, &effect, [&] {
        stage.run(effect, 25); // the clock runs on
        frames += stage.sim(1) == QColor(Qt::black) && !effect.ready() ? 1 : 0;
    });
    effect.setPreload(true);
    QCOMPARE(frames, 2);
    stage.run(effect, 0);
    QCOMPARE(stage.sim(1), QColor(Qt::red));
}

QTEST_GUILESS_MAIN(FlashEffectTest)
#include "FlashEffectTest.moc"
