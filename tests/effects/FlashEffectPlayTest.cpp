#include "effects/FlashEffect.h"
#include "tests/effects/FilmStage.h"

#include <limits>
#include <random>

/// What an animation shows, frame by frame.
class FlashEffectPlayTest : public QObject
{
    Q_OBJECT
private slots:
    void paintsItsGroup_data();
    void paintsItsGroup();
    void aFrameLastsWholeMilliseconds_data();
    void aFrameLastsWholeMilliseconds();
    void theFilmLoopsFromTheLastFrame_data();
    void theFilmLoopsFromTheLastFrame();
    void oddRatesShowTheFirstFrame_data();
    void oddRatesShowTheFirstFrame();
    void framesComeInNaturalOrder();
    void smoothingMixesNeighbours_data();
    void smoothingMixesNeighbours();
    void twoFramesAreNeverSmoothed();
    void transparentPixelsLetThrough_data();
    void transparentPixelsLetThrough();
    void theMixIsComparedWithTheTransparentColor();
    void preloadedAndLiveAreEqual_data();
    void preloadedAndLiveAreEqual();
    void aGroupWithoutWidthIsBlack();
    void scaleAndOffsetMoveTheFilm();
    void whatCannotBeReadIsBlack_data();
    void whatCannotBeReadIsBlack();
    void aDirectoryMayVanishWhilePlaying();
    void filesAreReadAnewEachFrame();
    void aLateFrameIsToldOnce();
    void noFrameIsLateInMemoryOrInTime();
};

namespace {

constexpr QRgb kRed = 0xFFFF0000U;
constexpr QRgb kGreen = 0xFF00FF00U;
constexpr QRgb kBlue = 0xFF0000FFU;

/// Corners of a square: the first light shows the first pixel.
QVector<QPointF> corners()
{
    return {{0.0, 0.0}, {10.0, 10.0}};
}

/// The frames shown at ticks every 25 ms from the start on.
QVector<int> framesAt25(FilmStage& stage, FlashEffect& effect, int count)
{
    QVector<int> frames;
    effect.setActive(false);
    effect.tick(TestShow::kStartMs, 0); // a timeline ticks all its effects
    effect.setActive(true);
    effect.setStartMs(TestShow::kStartMs);
    for (int i = 0; i < count; ++i) {
        stage.endFrame();
        effect.tick(TestShow::kStartMs + i * 25, static_cast<uint>(i));
        frames.append(effect.currentFrame());
    }
    return frames;
}

} // namespace

void FlashEffectPlayTest::paintsItsGroup_data()
{
    QTest::addColumn<quint64>("gid");
    QTest::addColumn<QVector<int>>("shown"); // column by light; -1 black, -2 not painted
    QTest::addColumn<double>("transparency");
    using Columns = QVector<int>;
    const struct
    {
        const char* name;
        double transparency;
    } layers[] = {{"opaque", 0.0}, {"half", 0.5}, {"none", 1.0}, {"beyond", 1.5}};
    for (const auto& layer : layers) {
        const auto row = [&](const char* group, quint64 gid, const Columns& shown) {
            QTest::addRow("%s, %s", group, layer.name) << gid << shown << layer.transparency;
        };
        row("chase", 0x1000, {0, 2, 4});
        row("nested chase", 0x1001, {0, 2, 4});
        row("synchronized", 0x1002, {0, 2, 4});
        row("leaf", 2, {-2, -1, -2}); // no width: outside
        row("no lights", 0x1003, {-2, -2, -2});
        row("leaf without its light", 0x1004, {-2, -2, -2});
        row("light and no light", 0x1005, {-1, -2, -2});
        row("no such group", 0x999, {-2, -2, -2});
    }
}

void FlashEffectPlayTest::paintsItsGroup()
{
    QFETCH(const quint64, gid);
    QFETCH(const QVector<int>, shown);
    QFETCH(const double, transparency);
    FilmStage stage({{0.0, 0.0}, {10.0, 10.0}, {20.0, 20.0}});
    stage.save("film/1.png", placePicture(5, 5));
    for (const bool preload : {false, true}) {
        FlashEffect effect(stage.model(), gid, nullptr);
        effect.setAnimationDir(stage.path("film"));
        effect.setPreload(preload);
        effect.compile();
        effect.setTransparency(transparency);
        effect.setPriority(1);
        stage.run(effect, 0); // to set it up; then over white
        stage.endFrame();
        for (int uid = 1; uid <= 3; ++uid) {
            stage.light(uid)->mixColor(Qt::white, 0);
            stage.light(uid)->mixSimColor(Qt::white, 0);
        }
        effect.tick(TestShow::kStartMs, 0);
        for (int i = 0; i < 3; ++i) {
            const int column = shown.at(i);
            const QRgb rgb = column < 0 ? qRgb(0, 0, 0) : qRgb(10 * column, 10 * column, 77);
            const double alpha = column == -2 ? 0.0 : std::max(0.0, 1.0 - transparency);
            VelaColor color(rgb);
            color.setAlphaF(alpha);
            QColor screen(rgb);
            screen.setAlphaF(alpha);
            QCOMPARE(stage.mix(i + 1), composite(color, Qt::white));
            QCOMPARE(
                stage.sim(i + 1),
                screen.alpha() == 255
                    ? screen
                    : composite(VelaColor(screen), VelaColor(QColor(Qt::white))).toQColor(true));
        }
    }
}

void FlashEffectPlayTest::aFrameLastsWholeMilliseconds_data()
{
    QTest::addColumn<int>("fps");
    QTest::addColumn<qint64>("ms");
    QTest::addColumn<int>("frame");
    QTest::newRow("40, first") << 40 << qint64(24) << 0;
    QTest::newRow("40, second") << 40 << qint64(25) << 1;
    QTest::newRow("40, last") << 40 << qint64(124) << 4;
    QTest::newRow("40, over") << 40 << qint64(125) << 0;
    QTest::newRow("30 lasts 33 ms") << 30 << qint64(32) << 0;
    QTest::newRow("30, second") << 30 << qint64(33) << 1;
    QTest::newRow("30, fifth") << 30 << qint64(132) << 4; // 133.3 would be exact
    QTest::newRow("600 lasts 1 ms") << 600 << qint64(3) << 3;
    QTest::newRow("1000") << 1000 << qint64(4) << 4;
    QTest::newRow("1") << 1 << qint64(2999) << 2;
    QTest::newRow("elapsed has 32 bits") << 40 << qint64(4294967296) + 50 << 2;
    QTest::newRow("elapsed beyond 31 bits") << 40 << qint64(2147483700) << 0;
}

void FlashEffectPlayTest::aFrameLastsWholeMilliseconds()
{
    QFETCH(const int, fps);
    QFETCH(const qint64, ms);
    FilmStage stage(corners());
    const QVector<QRgb> colors = {qRgb(1, 0, 0), qRgb(2, 0, 0), qRgb(3, 0, 0), qRgb(4, 0, 0),
                                  qRgb(5, 0, 0)};
    FlashEffect effect(stage.model(), 0x1000, nullptr);
    effect.setAnimationDir(stage.film(colors));
    effect.setSmooth(false);
    effect.setFps(fps);
    effect.setPreload(true);
    stage.run(effect, ms);
    QTEST(effect.currentFrame(), "frame");
    QCOMPARE(stage.sim(1).red(), effect.currentFrame() + 1);
}

void FlashEffectPlayTest::theFilmLoopsFromTheLastFrame_data()
{
    QTest::addColumn<bool>("preload");
    QTest::newRow("preloaded") << true;
    QTest::newRow("live") << false;
}

void FlashEffectPlayTest::theFilmLoopsFromTheLastFrame()
{
    // The run that begins anew counts from the tick before.
    QFETCH(const bool, preload);
    FilmStage stage(corners());
    FlashEffect effect(stage.model(), 0x1000, nullptr);
    effect.setAnimationDir(stage.film({kRed, kGreen, kBlue}));
    effect.setPreload(preload);
    effect.compile();
    QCOMPARE(framesAt25(stage, effect, 9), QVector<int>({0, 1, 2, 0, 2, 0, 2, 0, 2}));
    effect.setAnimationDir(stage.film({kRed}, "one"));
    effect.compile();
    QCOMPARE(framesAt25(stage, effect, 4), QVector<int>({0, 0, 0, 0}));
    effect.setFps(20); // two ticks a frame
    effect.setAnimationDir(stage.film({kRed, kGreen, kBlue}));
    effect.compile();
    QCOMPARE(framesAt25(stage, effect, 14),
             QVector<int>({0, 0, 1, 1, 2, 2, 0, 1, 1, 2, 2, 0, 1, 1}));
}

void FlashEffectPlayTest::oddRatesShowTheFirstFrame_data()
{
    QTest::addColumn<int>("fps");
    QTest::newRow("0") << 0;
    QTest::newRow("1001") << 1001;
    QTest::newRow("greatest") << std::numeric_limits<int>::max();
    QTest::newRow("-1") << -1;
    QTest::newRow("-40") << -40;
    QTest::newRow("lowest") << std::numeric_limits<int>::min();
}

void FlashEffectPlayTest::oddRatesShowTheFirstFrame()
{
    QFETCH(const int, fps);
    FilmStage stage(corners());
    for (const bool preload : {false, true}) {
        FlashEffect effect(stage.model(), 0x1000, nullptr);
        effect.setFps(fps);
        effect.setAnimationDir(stage.film({kRed, kGreen, kBlue}));
        effect.setPreload(preload);
        effect.compile();
        QCOMPARE(effect.fps(), fps);
        for (const qint64 ms : {qint64(0), qint64(25), qint64(4000000000)}) {
            stage.run(effect, ms);
            QCOMPARE(effect.currentFrame(), 0);
            QCOMPARE(stage.sim(1), QColor(Qt::red));
        }
    }
}

void FlashEffectPlayTest::framesComeInNaturalOrder()
{
    FilmStage stage(corners());
    stage.save("film/frame10.png", plainPicture(2, 2, kBlue));
    stage.save("film/frame2.png", plainPicture(2, 2, kGreen));
    stage.save("film/Frame1.bmp", plainPicture(2, 2, kRed));
    FlashEffect effect(stage.model(), 0x1000, nullptr);
    effect.setAnimationDir(stage.path("film"));
    effect.setSmooth(false);
    effect.compile();
    const QColor expected[] = {Qt::red, Qt::green, Qt::blue};
    for (int i = 0; i < 3; ++i) {
        stage.run(effect, 25 * i);
        QCOMPARE(stage.sim(1), expected[i]);
    }
}

void FlashEffectPlayTest::smoothingMixesNeighbours_data()
{
    QTest::addColumn<bool>("smooth");
    QTest::addColumn<int>("frame");
    QTest::addColumn<int>("red");
    // Of 100, 201, 50 and 255: half of it and a quarter of each neighbour, truncated.
    QTest::newRow("first") << true << 0 << 100;
    QTest::newRow("second") << true << 1 << 138; // 100.5 + 25 + 12.5
    QTest::newRow("third") << true << 2 << 139;  // 25 + 50.25 + 63.75
    QTest::newRow("last") << true << 3 << 255;
    QTest::newRow("not smooth") << false << 1 << 201;
}

void FlashEffectPlayTest::smoothingMixesNeighbours()
{
    QFETCH(const bool, smooth);
    QFETCH(const int, frame);
    QFETCH(const int, red);
    FilmStage stage(corners());
    for (const bool preload : {false, true}) {
        FlashEffect effect(stage.model(), 0x1000, nullptr);
        effect.setAnimationDir(
            stage.film({qRgb(100, 0, 9), qRgb(201, 0, 9), qRgb(50, 0, 9), qRgb(255, 0, 9)}));
        effect.setPreload(preload);
        effect.setSmooth(smooth);
        effect.compile();
        stage.run(effect, 25 * frame);
        QCOMPARE(stage.sim(1), QColor(red, 0, 9));
        QCOMPARE(stage.mix(1), overBlack(VelaColor(qRgb(red, 0, 9))));
    }
}

void FlashEffectPlayTest::twoFramesAreNeverSmoothed()
{
    FilmStage stage(corners());
    FlashEffect effect(stage.model(), 0x1000, nullptr);
    effect.setAnimationDir(stage.film({kRed, kGreen}));
    effect.compile();
    stage.run(effect, 0);
    QCOMPARE(stage.sim(1), QColor(Qt::red));
    stage.run(effect, 25);
    QCOMPARE(stage.sim(1), QColor(Qt::green));
}

void FlashEffectPlayTest::transparentPixelsLetThrough_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<bool>("through");
    VelaColor ofProfile(Qt::red);
    ofProfile.setProfileId(3);
    VelaColor calibrated(qRgb(255, 0, 0));
    calibrated.setTintweave(true);
    QTest::newRow("equal") << VelaColor(Qt::red) << true << true;
    QTest::newRow("not enabled") << VelaColor(Qt::red) << false << false;
    QTest::newRow("another colour") << VelaColor(qRgb(255, 0, 1)) << true << false;
    QTest::newRow("of a profile") << ofProfile << true << false;
    QTest::newRow("calibrated") << calibrated << true << false;
    QTest::newRow("as hue") << VelaColor(Qt::red).toHsv() << true << false;
    QTest::newRow("invalid") << VelaColor() << true << false;
}

void FlashEffectPlayTest::transparentPixelsLetThrough()
{
    QFETCH(const VelaColor, color);
    QFETCH(const bool, enabled);
    QFETCH(const bool, through);
    FilmStage stage(corners());
    FlashEffect effect(stage.model(), 0x1000, nullptr);
    effect.setAnimationDir(stage.film({kRed}));
    effect.setTransColor(color);
    effect.setTransEnabled(enabled);
    effect.setPriority(1);
    effect.compile();
    effect.setActive(true);
    effect.setStartMs(TestShow::kStartMs);
    for (const double transparency : {0.0, 0.3, 1.0}) {
        effect.setTransparency(transparency);
        stage.endFrame();
        stage.light(1)->mixColor(Qt::blue, 0);
        stage.light(1)->mixSimColor(Qt::blue, 0);
        effect.tick(TestShow::kStartMs, 0);
        const double alpha = through ? 0.0 : 1.0 - transparency;
        VelaColor over(kRed);
        over.setAlphaF(alpha);
        QColor screen(Qt::red);
        screen.setAlphaF(alpha);
        QCOMPARE(stage.mix(1), composite(over, Qt::blue));
        QCOMPARE(stage.sim(1),
                 screen.alpha() == 255
                     ? screen
                     : composite(VelaColor(screen), VelaColor(QColor(Qt::blue))).toQColor(true));
    }
}

void FlashEffectPlayTest::theMixIsComparedWithTheTransparentColor()
{
    FilmStage stage(corners());
    FlashEffect effect(stage.model(), 0x1000, nullptr);
    effect.setAnimationDir(stage.film({qRgb(0, 0, 0), qRgb(80, 0, 0), qRgb(0, 0, 0)}));
    effect.setTransEnabled(true);
    effect.setTransColor(VelaColor(qRgb(40, 0, 0)));
    effect.compile();
    stage.run(effect, 25);
    QVERIFY(stage.mix(1).isBlack());
    QCOMPARE(stage.sim(1), QColor(Qt::black));
    effect.setSmooth(false);
    stage.run(effect, 25);
    QCOMPARE(stage.sim(1), QColor(80, 0, 0));
}

void FlashEffectPlayTest::preloadedAndLiveAreEqual_data()
{
    QTest::addColumn<bool>("smooth");
    QTest::addColumn<double>("transparency");
    QTest::newRow("smooth") << true << 0.0;
    QTest::newRow("smooth, half") << true << 0.5;
    QTest::newRow("plain") << false << 0.0;
    QTest::newRow("plain, a quarter") << false << 0.25;
}

void FlashEffectPlayTest::preloadedAndLiveAreEqual()
{
    // Random pictures of all sizes and formats, and among them one that is none.
    QFETCH(const bool, smooth);
    QFETCH(const double, transparency);
    std::mt19937 random(5);
    QVector<QPointF> places;
    for (int i = 0; i < 80; ++i) {
        places.append({static_cast<double>(random() % 1000) / 7.0,
                       static_cast<double>(random() % 1000) / 9.0});
    }
    FilmStage stage(places);
    QVector<QImage> images;
    for (int i = 0; i < 8; ++i) {
        QImage image(9 + static_cast<int>(random() % 3), 9 + static_cast<int>(random() % 3),
                     QImage::Format_ARGB32);
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                image.setPixel(x, y, random() % 3 == 0 ? 0xFF000000U : static_cast<QRgb>(random()));
            }
        }
        if (i % 3 == 1) {
            image = image.convertToFormat(QImage::Format_Indexed8);
        }
        const QString path = stage.save(qPrintable(QStringLiteral("film/%1.png").arg(i)), image);
        images.append(QImage(path));
    }
    QVERIFY(writeFile(stage.path("film/4.png"), "none"));
    images[4] = QImage();

    const double xOffset = -0.5;
    const double yOffset = 0.75;
    const double scale = 1.2;
    double minX = 0.0;
    double minY = 0.0;
    double maxX = 0.0;
    double maxY = 0.0;
    stage.model()->group(0x1000)->bounds(&minX, &minY, &maxX, &maxY);
    const LogCapture log;
    for (const bool preload : {true, false}) {
        FlashEffect effect(stage.model(), 0x1000, nullptr);
        effect.setAnimationDir(stage.path("film"));
        effect.setPreload(preload);
        effect.setXOffset(xOffset);
        effect.setYOffset(yOffset);
        effect.setScale(scale);
        effect.setSmooth(smooth);
        effect.setTransEnabled(true);
        effect.setTransparency(transparency);
        for (int frame = 0; frame < 8; ++frame) {
            stage.run(effect, frame * 25);
            QCOMPARE(effect.currentFrame(), frame);
            for (int i = 0; i < 80; ++i) {
                const int x = static_cast<int>(((places.at(i).x() - minX) / (maxX - minX)) * scale *
                                                   (images.at(0).width() - 1) +
                                               xOffset);
                const int y = static_cast<int>(((places.at(i).y() - minY) / (maxY - minY)) * scale *
                                                   (images.at(0).height() - 1) +
                                               yOffset);
                const auto pixel = [&](int of) {
                    return images.at(of).valid(x, y) ? images.at(of).pixel(x, y) : 0;
                };
                QRgb rgb = pixel(frame) | 0xFF000000U;
                if (smooth && frame >= 1 && frame <= 6) {
                    const auto mean = [&](int (*part)(QRgb)) {
                        return static_cast<int>(part(pixel(frame)) * 0.5 +
                                                part(pixel(frame - 1)) * 0.25 +
                                                part(pixel(frame + 1)) * 0.25);
                    };
                    rgb = qRgb(mean(qRed), mean(qGreen), mean(qBlue));
                }
                VelaColor color(rgb);
                QColor screen(rgb);
                double alpha = 1.0;
                if (color == VelaColor(Qt::black)) {
                    alpha = 0.0;
                    color.setAlphaF(0.0);
                } else if (transparency > 0.0) {
                    alpha = alpha * (1.0 - transparency);
                    color.setAlphaF(alpha);
                }
                screen.setAlphaF(alpha);
                QCOMPARE(stage.mix(i + 1), overBlack(color));
                QCOMPARE(stage.sim(i + 1), screenOverBlack(screen));
            }
        }
    }
}

void FlashEffectPlayTest::aGroupWithoutWidthIsBlack()
{
    for (const auto& places :
         {QVector<QPointF>{{5.0, 5.0}}, QVector<QPointF>{{5.0, 0.0}, {5.0, 10.0}},
          QVector<QPointF>{{0.0, 5.0}, {10.0, 5.0}}}) {
        FilmStage stage(places);
        FlashEffect effect(stage.model(), 0x1000, nullptr);
        effect.setAnimationDir(stage.film({0xFFFFFFFFU}));
        effect.compile();
        effect.setPriority(1);
        for (const double offset : {0.0, 1.0}) {
            effect.setXOffset(offset);
            effect.setYOffset(offset);
            effect.setActive(true);
            stage.endFrame();
            stage.light(1)->mixColor(Qt::red, 0);
            stage.light(1)->mixSimColor(Qt::red, 0);
            effect.tick(TestShow::kStartMs, 0);
            QCOMPARE(stage.mix(1), overBlack(VelaColor(qRgb(0, 0, 0)))); // covers what is beneath
            QCOMPARE(stage.sim(1), QColor(Qt::black));
        }
    }
}

void FlashEffectPlayTest::scaleAndOffsetMoveTheFilm()
{
    // Five lights on the diagonal over 5 x 5 pixels.
    FilmStage stage({{0, 0}, {1, 1}, {2, 2}, {3, 3}, {4, 4}});
    stage.save("film/1.png", placePicture(5, 5));
    FlashEffect effect(stage.model(), 0x1000, nullptr);
    effect.setAnimationDir(stage.path("film"));
    effect.compile();
    const auto shown = [&] {
        stage.run(effect, 0);
        QVector<int> columns;
        for (int uid = 1; uid <= 5; ++uid) {
            columns.append(stage.sim(uid).blue() == 77 ? stage.sim(uid).red() / 10 : -1);
        }
        return columns;
    };
    QCOMPARE(shown(), QVector<int>({0, 1, 2, 3, 4}));
    effect.setScale(2.0);
    QCOMPARE(shown(), QVector<int>({0, 2, 4, -1, -1}));
    effect.setScale(1.0);
    effect.setXOffset(-1.0);
    QCOMPARE(shown(), QVector<int>({-1, 0, 1, 2, 3}));
    effect.setXOffset(std::numeric_limits<double>::quiet_NaN());
    QCOMPARE(shown(), QVector<int>({-1, -1, -1, -1, -1}));
    effect.setXOffset(0.0);
    effect.setScale(1e300);
    QCOMPARE(shown(), QVector<int>({0, -1, -1, -1, -1}));
}

void FlashEffectPlayTest::whatCannotBeReadIsBlack_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray("Thumbs");
    QTest::newRow("no pixels") << QByteArray("P6 0 0 255\n");
    QTest::newRow("a hundred million pixels") << QByteArray("P6 10000 10000 255\n");
}

void FlashEffectPlayTest::whatCannotBeReadIsBlack()
{
    QFETCH(const QByteArray, content);
    FilmStage stage(corners());
    const QString film = stage.film({kRed, kRed, kRed, kRed});
    QVERIFY(writeFile(stage.path("film/2.png"), content));
    for (const bool preload : {false, true}) {
        FlashEffect effect(stage.model(), 0x1000, nullptr);
        effect.setAnimationDir(film);
        effect.setSmooth(false);
        effect.setPriority(1);
        const LogCapture log;
        effect.setPreload(preload);
        effect.compile();
        for (int i = 0; i < 3; ++i) {
            effect.setActive(true);
            effect.setStartMs(TestShow::kStartMs);
            stage.endFrame();
            stage.light(1)->mixColor(Qt::blue, 0);
            stage.light(1)->mixSimColor(Qt::blue, 0);
            effect.tick(TestShow::kStartMs + 25, 0);
            QCOMPARE(stage.mix(1), overBlack(VelaColor(qRgb(0, 0, 0))));
            QCOMPARE(stage.sim(1), QColor(Qt::black));
        }
        // Told once for each loading.
        const QStringList told = LogCapture::lines().filter(film + QStringLiteral("/2.png"));
        QCOMPARE(told.size(), preload ? 2 : 1);
        QVERIFY(told.first().startsWith(QStringLiteral("Animation frame ")));
        effect.setSmooth(true); // it counts as black with its neighbours, too
        stage.run(effect, 25);
        QCOMPARE(stage.sim(1), QColor(127, 0, 0));
        stage.run(effect, 50);
        QCOMPARE(stage.sim(1), QColor(191, 0, 0));
    }
    // As the first frame it gives the film its size: none.
    QVERIFY(writeFile(stage.path("film/1.png"), content));
    FlashEffect effect(stage.model(), 0x1000, nullptr);
    effect.setAnimationDir(film);
    const LogCapture log;
    effect.compile();
    QVERIFY(effect.ready());
    QCOMPARE(effect.imageSizeText(), QStringLiteral("0 x 0"));
    stage.run(effect, 0);
    QCOMPARE(stage.sim(1), QColor(Qt::black));
}

void FlashEffectPlayTest::aDirectoryMayVanishWhilePlaying()
{
    FilmStage stage(corners());
    const QString film = stage.film({kRed, kGreen, kBlue});
    FlashEffect live(stage.model(), 0x1000, nullptr);
    live.setAnimationDir(film);
    live.setSmooth(false);
    live.compile();
    FlashEffect loaded(stage.model(), 0x1000, nullptr);
    loaded.setAnimationDir(film);
    loaded.setSmooth(false);
    loaded.setPreload(true);
    stage.run(live, 25);
    QCOMPARE(stage.sim(1), QColor(Qt::green));
    QVERIFY(QDir(film).removeRecursively());
    const LogCapture log;
    for (int i = 0; i < 6; ++i) {
        stage.run(live, 25);
        QCOMPARE(stage.sim(1), QColor(Qt::black));
        stage.run(live, 50);
        QCOMPARE(stage.sim(1), QColor(Qt::black));
    }
    QVERIFY(live.ready());
    QCOMPARE(live.frameCount(), 3);
    QCOMPARE(LogCapture::lines().size(), 2); // one for each file
    stage.run(loaded, 50);
    QCOMPARE(stage.sim(1), QColor(Qt::blue));
    stage.film({kGreen, kGreen, kGreen}); // comes back
    stage.run(live, 50);
    QCOMPARE(stage.sim(1), QColor(Qt::green));
}

void FlashEffectPlayTest::filesAreReadAnewEachFrame()
{
    FilmStage stage(corners());
    FlashEffect effect(stage.model(), 0x1000, nullptr);
    effect.setAnimationDir(stage.film({kRed, kRed}));
    effect.compile();
    stage.run(effect, 0);
    QCOMPARE(stage.sim(1), QColor(Qt::red));
    stage.film({kBlue, kBlue});
    stage.run(effect, 0);
    QCOMPARE(stage.sim(1), QColor(Qt::blue));
}

void FlashEffectPlayTest::aLateFrameIsToldOnce()
{
    // Four million pixels take far longer to read than the millisecond between two ticks.
    FilmStage stage(corners());
    QImage large(2000, 2000, QImage::Format_RGB32);
    std::mt19937 random(1);
    for (int y = 0; y < large.height(); ++y) {
        for (int x = 0; x < large.width(); ++x) {
            large.setPixel(x, y, static_cast<QRgb>(random()));
        }
    }
    stage.save("film/1.bmp", large);
    stage.save("film/2.bmp", large);
    FlashEffect effect(stage.model(), 0x1000, nullptr);
    effect.setAnimationDir(stage.path("film"));
    effect.setFps(1);
    effect.compile();
    const LogCapture log;
    const auto play = [&](bool active) {
        for (int i = 0; i < 4; ++i) {
            effect.setActive(active);
            effect.tick(TestShow::kStartMs + i, static_cast<uint>(i));
            stage.endFrame();
        }
    };
    play(false);
    QVERIFY(LogCapture::lines().isEmpty());
    play(true);
    QCOMPARE(LogCapture::lines().size(), 1);
    const QString line = LogCapture::lines().first();
    QVERIFY2(line.startsWith(
                 QStringLiteral("Animation %1: reading its files took ").arg(stage.path("film"))),
             qPrintable(line));
    QVERIFY(line.contains(QStringLiteral("of a frame of 1 ms")));
    play(true);
    QCOMPARE(LogCapture::lines().size(), 1);
    effect.loadFrames(); // another film, for all that is known
    play(true);
    QCOMPARE(LogCapture::lines().size(), 2);
    effect.setPreload(true);
    play(true);
    QCOMPARE(LogCapture::lines().size(), 2);
}

void FlashEffectPlayTest::noFrameIsLateInMemoryOrInTime()
{
    FilmStage stage(corners());
    FlashEffect effect(stage.model(), 0x1000, nullptr);
    effect.setAnimationDir(stage.film({kRed, kGreen, kBlue}));
    effect.setFps(1);
    effect.compile();
    effect.setActive(true);
    effect.setStartMs(TestShow::kStartMs);
    const LogCapture log;
    for (int i = 0; i < 3; ++i) { // a second each for three files of some bytes
        effect.tick(TestShow::kStartMs + 1000 * i, 0);
        stage.endFrame();
    }
    QVERIFY(LogCapture::lines().isEmpty());
}

QTEST_GUILESS_MAIN(FlashEffectPlayTest)
#include "FlashEffectPlayTest.moc"
