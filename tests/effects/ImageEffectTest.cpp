#include "effects/ImageEffect.h"

#include "color/DisplayColor.h"
#include "engine/MetaEffect.h"
#include "resources/Resources.h"
#include "tests/effects/PictureStage.h"

#include <QSignalSpy>

#include <cmath>
#include <limits>
#include <random>
#include <sys/stat.h>

using TestShow::elementOf;
using TestShow::textOf;

class ImageEffectTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { initForgeResources(); }
    void hasItsDefaults();
    void isWrittenByteForByte();
    void readsItsKeys_data();
    void readsItsKeys();
    void theTimeRuleFollowsTheCycleOnly();
    void loadsThePictureWithItsName();
    void aPictureThatFailsChangesNothing_data();
    void aPictureThatFailsChangesNothing();
    void compileTellsTheSizes();
    void compileWithoutAGroupForgetsIt();
    void paintsItsGroup_data();
    void paintsItsGroup();
    void offsetsAreWholePixelsFromTheCentre_data();
    void offsetsAreWholePixelsFromTheCentre();
    void theCentreLiesOnTheFirstPixel();
    void movesAndZoomsOverTheCycle_data();
    void movesAndZoomsOverTheCycle();
    void hostileNumbersLieOutside_data();
    void hostileNumbersLieOutside();
    void lightsAtNoPlaceLieOutside();
    void transparentPixelsLetThrough_data();
    void transparentPixelsLetThrough();
    void aBorderOfTransparencyIsPartial();
    void theSurroundingsKeepTheirOwnAlpha();
    void theSurroundingsOfAWhite();
    void equalsItsStepsOnAnyPicture_data();
    void equalsItsStepsOnAnyPicture();
};

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

QString keysText(const QString& imageFile)
{
    return QStringLiteral("<imagefile>%1</imagefile>").arg(imageFile);
}

} // namespace

void ImageEffectTest::hasItsDefaults()
{
    ImageEffect effect(nullptr, 5, nullptr);
    QCOMPARE(effect.type(), QStringLiteral("Image Scroll"));
    QCOMPARE(effect.typeId(), 6);
    QCOMPARE(effect.cycleTime(), 5000U);
    QCOMPARE(effect.imageFile(), QString());
    QCOMPARE(effect.cycleSeconds(), 5.0);
    QCOMPARE(effect.startX(), 0.0);
    QCOMPARE(effect.startY(), 0.0);
    QCOMPARE(effect.endX(), 0.0);
    QCOMPARE(effect.endY(), 0.0);
    QCOMPARE(effect.startScale(), 1.0);
    QCOMPARE(effect.endScale(), 1.0);
    QCOMPARE(effect.smooth(), true);
    QCOMPARE(effect.transColor(), VelaColor(Qt::black));
    QCOMPARE(effect.transEnabled(), false);
    QCOMPARE(effect.bgColor(), VelaColor(Qt::black));
    QCOMPARE(effect.imageLoaded(), false);
    QCOMPARE(effect.imageSizeText(), QStringLiteral("0 x 0"));
    QCOMPARE(effect.outputSizeText(), QStringLiteral("0 x 0"));
    QVERIFY(effect.compile());
    QVERIFY(effect.compiled());
    effect.setActive(true);
    effect.tick(0, 0);
}

void ImageEffectTest::isWrittenByteForByte()
{
    ImageEffect effect(nullptr, 7, nullptr);
    const QString common =
        TestShow::baseText(QStringLiteral("Image Scroll"), QStringLiteral("Unnamed Effect"), 7);
    QCOMPARE(textOf(effect), QStringLiteral("<effect>\n") + common +
                                 QStringLiteral("<imagefile></imagefile>\n"
                                                "<cycletime>5</cycletime>\n"
                                                "<startx>0</startx>\n"
                                                "<starty>0</starty>\n"
                                                "<endx>0</endx>\n"
                                                "<endy>0</endy>\n"
                                                "<startscale>1</startscale>\n"
                                                "<endscale>1</endscale>\n"
                                                "<smooth>1</smooth>\n"
                                                "<transcolor>aRgb;1;0;#ffff000000000000"
                                                "</transcolor>\n"
                                                "<transenabled>0</transenabled>\n"
                                                "<bgcolor>aRgb;1;0;#ffff000000000000</bgcolor>\n"
                                                "</effect>\n"));
    {
        const LogCapture log;
        effect.setImageFile(QStringLiteral("/no/such & <picture>.png"));
    }
    effect.setCycleSeconds(1.23456789);
    effect.setStartX(-1.5);
    effect.setStartY(2);
    effect.setEndX(1234567.0);
    effect.setEndY(4);
    effect.setStartScale(0.125);
    effect.setEndScale(1e300);
    effect.setSmooth(false);
    effect.setTransColor(Qt::white);
    effect.setTransEnabled(true);
    effect.setBgColor(Qt::red);
    QCOMPARE(textOf(effect), QStringLiteral("<effect>\n") + common +
                                 QStringLiteral("<imagefile>/no/such &amp; &lt;picture>.png"
                                                "</imagefile>\n"
                                                "<cycletime>1.23457</cycletime>\n"
                                                "<startx>-1.5</startx>\n"
                                                "<starty>2</starty>\n"
                                                "<endx>1.23457e+06</endx>\n"
                                                "<endy>4</endy>\n"
                                                "<startscale>0.125</startscale>\n"
                                                "<endscale>1e+300</endscale>\n"
                                                "<smooth>0</smooth>\n"
                                                "<transcolor>aRgb;1;0;#ffffffffffffffff"
                                                "</transcolor>\n"
                                                "<transenabled>1</transenabled>\n"
                                                "<bgcolor>aRgb;1;0;#ffffffff00000000</bgcolor>\n"
                                                "</effect>\n"));
}

void ImageEffectTest::readsItsKeys_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QVector<double>>("numbers"); // cycle, start, end, scales
    QTest::addColumn<QString>("flags");           // smooth, transparent
    QTest::addColumn<QString>("colors");
    using Numbers = QVector<double>;
    const Numbers defaults = {5.0, 0.0, 0.0, 0.0, 0.0, 1.0, 1.0};
    const QString black = QStringLiteral("#000000 #000000");
    const auto row = [](const char* name, const char* keys) -> QTestData& {
        return QTest::newRow(name) << QString::fromLatin1(keys);
    };
    row("missing", "") << defaults << QStringLiteral("10") << black;
    row("all", "<cycletime>2.5</cycletime><startx>-1.5</startx><starty>2</starty><endx>3e2</endx>"
               "<endy>4</endy><startscale>0.5</startscale><endscale>-2</endscale>"
               "<smooth>0</smooth><transcolor>blue</transcolor><transenabled>7</transenabled>"
               "<bgcolor>lime</bgcolor>")
        << Numbers{2.5, -1.5, 2.0, 300.0, 4.0, 0.5, -2.0} << QStringLiteral("01")
        << QStringLiteral("#0000ff #00ff00");
    row("empty", "<cycletime/><startx/><starty/><endx/><endy/><startscale/><endscale/><smooth/>"
                 "<transcolor/><transenabled/><bgcolor/><imagefile/>")
        << defaults << QStringLiteral("10") << black;
    row("unreadable falls back to the default",
        "<cycletime>1</cycletime><cycletime>x</cycletime><startx>1</startx><startx>x</startx>"
        "<starty>1</starty><starty>x</starty><endx>1</endx><endx>x</endx><endy>1</endy>"
        "<endy>x</endy><startscale>2</startscale><startscale>x</startscale>"
        "<endscale>2</endscale><endscale>x</endscale><smooth>0</smooth><smooth>x</smooth>"
        "<transcolor>blue</transcolor><transcolor>aRgb;</transcolor>"
        "<transenabled>1</transenabled><transenabled>yes</transenabled>"
        "<bgcolor>blue</bgcolor><bgcolor>aRgb;</bgcolor>")
        << defaults << QStringLiteral("10") << black;
    row("others' keys", "<time>9</time><scale>9</scale><fps>9</fps><nonsense>9</nonsense>")
        << defaults << QStringLiteral("10") << black;
}

void ImageEffectTest::readsItsKeys()
{
    QFETCH(const QString, keys);
    QDomElement element = elementOf(keys);
    const ImageEffect effect(nullptr, 5, &element);
    const QVector<double> numbers = {effect.cycleSeconds(), effect.startX(), effect.startY(),
                                     effect.endX(),         effect.endY(),   effect.startScale(),
                                     effect.endScale()};
    QTEST(numbers, "numbers");
    const auto bit = [](bool on) { return QLatin1Char(on ? '1' : '0'); };
    QTEST(QString(bit(effect.smooth())) + bit(effect.transEnabled()), "flags");
    QTEST(effect.transColor().name() + QLatin1Char(' ') + effect.bgColor().name(), "colors");
}

void ImageEffectTest::theTimeRuleFollowsTheCycleOnly()
{
    ImageEffect effect(nullptr, 5, nullptr);
    QSignalSpy told(&effect, &Effect::cycleTimeChanged);
    effect.setCycleSeconds(2.0019);
    QCOMPARE(told.count(), 1);
    QCOMPARE(told.last().first().toUInt(), 2001U);
    effect.setStartX(3);
    effect.setEndScale(3);
    effect.setSmooth(false);
    effect.setTransColor(Qt::red);
    effect.setBgColor(Qt::red);
    QCOMPARE(told.count(), 1);
    QDomElement element = elementOf(QStringLiteral("<cycletime>3</cycletime>"));
    effect.fromXml(&element);
    QCOMPARE(told.count(), 2);
    QCOMPARE(told.last().first().toUInt(), 3000U);

    MetaEffect root(nullptr, 0, nullptr);
    effect.setEndType(Effect::EndCycles);
    effect.setEndCycleCount(3);
    root.addEffect(&effect);
    effect.setCycleSeconds(1.5);
    QCOMPARE(effect.end(), 4500U);
    for (const double seconds : {0.0, 0.0009, -4.0, kNan, kInf, 1e300}) {
        effect.setCycleSeconds(seconds);
        QCOMPARE(effect.cycleTime(), 0U);
    }
}

void ImageEffectTest::loadsThePictureWithItsName()
{
    PictureStage stage(2, 1, 12.0);
    QVERIFY(stage.isLoaded());
    const QString path = stage.save("a.png", placePicture(6, 4));
    ImageEffect effect(stage.model(), 0x1000, nullptr);
    QSignalSpy sizes(&effect, &ImageEffect::updateImageSizeLabel);
    effect.setImageFile(path);
    QVERIFY(effect.imageLoaded());
    QCOMPARE(sizes.count(), 1);
    QCOMPARE(sizes.last().first().toString(), QStringLiteral("6 x 4"));
    QCOMPARE(effect.imageSizeText(), QStringLiteral("6 x 4"));
    effect.compile(); // has it already
    QCOMPARE(sizes.count(), 1);

    // By a show; the gid compiles first, when there is no picture yet.
    QDomElement element = elementOf(QStringLiteral("<gid>4096</gid>") + keysText(path));
    ImageEffect read(stage.model(), Effect::kNoGid, &element);
    QCOMPARE(read.imageFile(), path);
    QVERIFY(read.imageLoaded());
    QCOMPARE(read.outputSizeText(), QStringLiteral("2 x 1"));
}

void ImageEffectTest::aPictureThatFailsChangesNothing_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("name");
    const QString bad = QStringLiteral("bad.png");
    QTest::newRow("no file") << QByteArray() << QStringLiteral("gone.png");
    QTest::newRow("no name") << QByteArray() << QString();
    QTest::newRow("a directory") << QByteArray() << QStringLiteral("dir");
    QTest::newRow("a pipe") << QByteArray() << QStringLiteral("pipe");
    QTest::newRow("empty file") << QByteArray() << bad;
    QTest::newRow("text") << QByteArray("text") << bad;
    QTest::newRow("no pixels") << QByteArray("P6 0 0 255\n") << bad;
    QTest::newRow("a hundred million pixels") << QByteArray("P6 10000 10000 255\n") << bad;
}

void ImageEffectTest::aPictureThatFailsChangesNothing()
{
    QFETCH(const QByteArray, content);
    QFETCH(const QString, name);
    PictureStage stage(2, 1, 12.0);
    QVERIFY(QDir().mkdir(stage.path("dir")));
    QCOMPARE(mkfifo(stage.path("pipe").toLocal8Bit().constData(), 0600), 0);
    QVERIFY(writeFile(stage.path("bad.png"), content));
    const QString bad = name.isEmpty() ? QString() : stage.path(name.toLatin1().constData());
    const QString good = stage.save("good.png", plainPicture(9, 9, 0xFF00FF00U));

    // Without a picture before, nothing is painted.
    ImageEffect effect(stage.model(), 0x1000, nullptr);
    QSignalSpy sizes(&effect, &ImageEffect::updateImageSizeLabel);
    {
        const LogCapture log;
        effect.setImageFile(bad);
        QCOMPARE(LogCapture::lines().size(), name.isEmpty() ? 0 : 1);
        QVERIFY(name.isEmpty() || LogCapture::lines().first().startsWith(
                                      QStringLiteral("Picture %1 can't be read: ").arg(bad)));
        effect.compile(); // tries again, and has told it
        effect.compile();
        QCOMPARE(LogCapture::lines().size(), name.isEmpty() ? 0 : 1);
        effect.setImageFile(bad);
        QCOMPARE(LogCapture::lines().size(), name.isEmpty() ? 0 : 2);
    }
    QVERIFY(!effect.imageLoaded());
    effect.setBgColor(Qt::red);
    stage.run(effect, 0);
    QVERIFY(stage.mix(1).isBlack());
    QCOMPARE(stage.sim(1), QColor(Qt::black));
    QVERIFY(sizes.isEmpty());

    // One before stays.
    effect.setImageFile(good);
    effect.setStartX(4);
    effect.setStartY(4);
    effect.setEndX(4);
    effect.setEndY(4);
    {
        const LogCapture log;
        effect.setImageFile(bad);
    }
    QCOMPARE(effect.imageFile(), bad);
    QCOMPARE(effect.imageSizeText(), QStringLiteral("9 x 9"));
    QCOMPARE(sizes.count(), 1);
    effect.compile(); // doesn't try again
    stage.run(effect, 0);
    QCOMPARE(stage.sim(1), QColor(Qt::green));

    // A file that comes to be readable is loaded by the next compile().
    ImageEffect patient(stage.model(), 0x1000, nullptr);
    {
        const LogCapture log;
        patient.setImageFile(bad);
    }
    if (!bad.isEmpty() && !QFileInfo::exists(bad)) {
        QVERIFY(QFile::copy(good, bad));
        patient.compile();
        QVERIFY(patient.imageLoaded());
    }
}

void ImageEffectTest::compileTellsTheSizes()
{
    // 119 and 24.9 map units: 119 / 12 + 1 and 24 / 12 + 1.
    PictureStage stage({{0.0, 5.0}, {119.0, 29.9}, {60.0, 10.0}});
    const QString path = stage.save("a.png", placePicture(6, 4));
    ImageEffect effect(stage.model(), 0x1000, nullptr);
    {
        const LogCapture log;
        effect.setImageFile(stage.path("later.png"));
    }
    QVERIFY(QFile::rename(path, stage.path("later.png")));
    QStringList told;
    connect(&effect, &ImageEffect::updateImageSizeLabel,
            [&](const QString& s) { told << QStringLiteral("image ") + s; });
    connect(&effect, &ImageEffect::updateOutputSizeLabel,
            [&](const QString& s) { told << QStringLiteral("output ") + s; });
    effect.compile();
    QCOMPARE(told.join(QLatin1Char(';')), QStringLiteral("image 6 x 4;output 10 x 3"));
    QCOMPARE(effect.outputSizeText(), QStringLiteral("10 x 3"));
    effect.setGid(1);
    effect.compile();
    QCOMPARE(effect.outputSizeText(), QStringLiteral("1 x 1"));
    QCOMPARE(told.size(), 3);
}

void ImageEffectTest::compileWithoutAGroupForgetsIt()
{
    PictureStage stage(2, 1, 12.0);
    ImageEffect effect(stage.model(), 0x1000, nullptr);
    effect.setImageFile(stage.save("a.png", plainPicture(9, 9, 0xFF00FF00U)));
    effect.setStartX(4);
    effect.compile();
    stage.run(effect, 0);
    QCOMPARE(stage.sim(1), QColor(Qt::green));
    effect.setGid(0x999);
    QSignalSpy sizes(&effect, &ImageEffect::updateOutputSizeLabel);
    QVERIFY(effect.compile());
    QVERIFY(effect.compiled());
    QVERIFY(sizes.isEmpty());
    QCOMPARE(effect.outputSizeText(), QStringLiteral("0 x 0"));
    stage.run(effect, 0);
    QCOMPARE(stage.sim(1), QColor(Qt::black));
}

void ImageEffectTest::paintsItsGroup_data()
{
    QTest::addColumn<quint64>("gid");
    QTest::addColumn<QVector<int>>("columns"); // shown by lights 1 to 3
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
        row("chase", 0x1000, {3, 5, 6}); // offsets -2, 0, 1 from pixel 5
        row("nested chase", 0x1001, {3, 5, 6});
        row("synchronized", 0x1002, {3, 5, 6});
        row("leaf", 2, {-1, 5, -1});
        row("no lights", 0x1003, {-1, -1, -1});
        row("leaf without its light", 0x1004, {-1, -1, -1});
        row("light and no light", 0x1005, {5, -1, -1});
        row("no such group", 0x999, {-1, -1, -1});
    }
}

void ImageEffectTest::paintsItsGroup()
{
    QFETCH(const quint64, gid);
    QFETCH(const QVector<int>, columns);
    QFETCH(const double, transparency);
    PictureStage stage(3, 1, 12.0);
    const QImage image = placePicture(9, 2);
    const QString path = stage.save("a.png", image);
    for (const bool smooth : {false, true}) {
        ImageEffect effect(stage.model(), gid, nullptr);
        effect.setImageFile(path);
        effect.setSmooth(smooth);
        effect.setStartX(5);
        effect.setEndX(5);
        effect.setTransparency(transparency);
        effect.compile();
        stage.run(effect, 0);
        for (int i = 0; i < 3; ++i) {
            if (columns.at(i) < 0) {
                QVERIFY(stage.mix(i + 1).isBlack());
                QCOMPARE(stage.sim(i + 1), QColor(Qt::black));
                continue;
            }
            VelaColor color(qRgb(10 * columns.at(i), 0, 77));
            QColor screen(10 * columns.at(i), 0, 77);
            if (transparency > 0.0) {
                color.setAlphaF(std::max(0.0, 1.0 - transparency));
                screen.setAlphaF(color.alphaF());
            }
            QCOMPARE(stage.mix(i + 1), overBlack(color));
            QCOMPARE(stage.sim(i + 1), screenOverBlack(screen));
        }
    }
}

void ImageEffectTest::offsetsAreWholePixelsFromTheCentre_data()
{
    QTest::addColumn<QVector<double>>("places");
    QTest::addColumn<QVector<int>>("shown"); // with the centre on pixel 10
    using Places = QVector<double>;
    using Columns = QVector<int>;
    // Left of the centre a whole pixel is lost before truncation.
    QTest::newRow("a pixel each") << Places{0, 12, 24, 36, 48} << Columns{7, 8, 10, 11, 12};
    QTest::newRow("half a pixel each") << Places{0, 6, 12, 18, 24} << Columns{8, 9, 10, 10, 11};
    QTest::newRow("within a pixel") << Places{0, 1, 2} << Columns{9, 10, 10};
    QTest::newRow("beside the origin") << Places{-1000, -988, -976} << Columns{8, 10, 11};
    // The extents are whole units: 0 to 12 for 0.75 to 12.75.
    QTest::newRow("broken") << Places{0.75, 12.75} << Columns{9, 10};
}

void ImageEffectTest::offsetsAreWholePixelsFromTheCentre()
{
    QFETCH(const QVector<double>, places);
    QFETCH(const QVector<int>, shown);
    for (const bool across : {true, false}) {
        QVector<QPointF> points;
        for (const double place : places) {
            points.append(across ? QPointF(place, 7.0) : QPointF(7.0, place));
        }
        PictureStage stage(points);
        ImageEffect effect(stage.model(), 0x1000, nullptr);
        effect.setImageFile(stage.save("a.png", placePicture(20, 20)));
        effect.setSmooth(false);
        effect.setStartX(10);
        effect.setEndX(10);
        effect.setStartY(10);
        effect.setEndY(10);
        effect.compile();
        stage.run(effect, 0);
        for (int i = 0; i < shown.size(); ++i) {
            const QColor screen = stage.sim(i + 1);
            QCOMPARE((across ? screen.red() : screen.green()) / 10, shown.at(i));
            QCOMPARE((across ? screen.green() : screen.red()) / 10, 10);
        }
    }
}

void ImageEffectTest::theCentreLiesOnTheFirstPixel()
{
    // Of a grid of 4 x 4 a pixel apart, a quarter lies on the picture.
    PictureStage stage(4, 4, 12.0);
    ImageEffect effect(stage.model(), 0x1000, nullptr);
    effect.setImageFile(stage.save("a.png", plainPicture(50, 50, 0xFFFF0000U)));
    effect.setSmooth(false);
    effect.setBgColor(Qt::blue);
    effect.compile();
    stage.run(effect, 2500);
    for (int i = 0; i < 16; ++i) {
        const bool isInside = i % 4 >= 2 && i / 4 >= 2;
        QCOMPARE(stage.sim(i + 1), QColor(isInside ? Qt::red : Qt::blue));
        QCOMPARE(stage.mix(i + 1), overBlack(isInside ? Qt::red : Qt::blue));
    }
}

void ImageEffectTest::movesAndZoomsOverTheCycle_data()
{
    QTest::addColumn<double>("seconds");
    QTest::addColumn<qint64>("ms");
    QTest::addColumn<QVector<int>>("shown"); // at offsets 0 and 4
    using Columns = QVector<int>;
    // From pixel 2 at scale 1 to pixel 10 at scale 2 in four seconds.
    QTest::newRow("start") << 4.0 << qint64(0) << Columns{2, 6};
    QTest::newRow("a quarter") << 4.0 << qint64(1000) << Columns{4, 7}; // 4 + 4 / 1.25 = 7.2
    QTest::newRow("half") << 4.0 << qint64(2000) << Columns{6, 8};      // 6 + 4 / 1.5 = 8.67
    QTest::newRow("just before the end") << 4.0 << qint64(3999) << Columns{9, 11};
    QTest::newRow("start again") << 4.0 << qint64(4000) << Columns{2, 6};
    QTest::newRow("elapsed has 32 bits") << 4.0 << qint64(4294967296) + 2000 << Columns{6, 8};
    QTest::newRow("no time") << 0.0 << qint64(3999) << Columns{2, 6};
    QTest::newRow("below a millisecond") << 0.0009 << qint64(3999) << Columns{2, 6};
    QTest::newRow("negative") << -4.0 << qint64(3999) << Columns{2, 6};
    QTest::newRow("nan") << kNan << qint64(3999) << Columns{2, 6};
    QTest::newRow("infinite") << kInf << qint64(3999) << Columns{2, 6};
    QTest::newRow("beyond 32 bits") << 1e300 << qint64(3999) << Columns{2, 6};
    // The cycle counts whole milliseconds: 1 / 2, not 1 / 2.9.
    QTest::newRow("broken milliseconds") << 0.0029 << qint64(1) << Columns{6, 8};
}

void ImageEffectTest::movesAndZoomsOverTheCycle()
{
    QFETCH(const double, seconds);
    QFETCH(const qint64, ms);
    QFETCH(const QVector<int>, shown);
    PictureStage stage({{0.0, 0.0}, {48.0, 0.0}, {96.0, 0.0}});
    ImageEffect effect(stage.model(), 0x1000, nullptr);
    effect.setImageFile(stage.save("a.png", placePicture(20, 2)));
    effect.setSmooth(false);
    effect.setCycleSeconds(seconds);
    effect.setStartX(2);
    effect.setEndX(10);
    effect.setEndScale(2);
    effect.compile();
    stage.run(effect, ms);
    QCOMPARE(stage.sim(2).red() / 10, shown.at(0));
    QCOMPARE(stage.sim(3).red() / 10, shown.at(1));
}

void ImageEffectTest::hostileNumbersLieOutside_data()
{
    QTest::addColumn<double>("scale");
    QTest::addColumn<double>("start");
    QTest::newRow("scale 0") << 0.0 << 5.0;
    QTest::newRow("scale nan") << kNan << 5.0;
    QTest::newRow("scale near 0") << 1e-300 << 5.0;
    QTest::newRow("scale near -0") << -1e-300 << 5.0;
    QTest::newRow("start nan") << 1.0 << kNan;
    QTest::newRow("start inf") << 1.0 << kInf;
    QTest::newRow("start 1e300") << 1.0 << 1e300;
    QTest::newRow("start -1e300") << 1.0 << -1e300;
    QTest::newRow("start 2^31") << 1.0 << 2147483648.0;
    QTest::newRow("start -2^31") << 1.0 << -2147483648.0;
    QTest::newRow("start 2^32 + 5") << 1.0 << 4294967301.0;
}

void ImageEffectTest::hostileNumbersLieOutside()
{
    QFETCH(const double, scale);
    QFETCH(const double, start);
    PictureStage stage({{0.0, 0.0}, {12.0, 0.0}, {60.0, 60.0}});
    ImageEffect effect(stage.model(), 0x1000, nullptr);
    effect.setImageFile(stage.save("a.png", plainPicture(50, 50, 0xFFFF0000U)));
    effect.setBgColor(Qt::blue);
    effect.setStartX(start);
    effect.setEndX(start);
    effect.setStartScale(scale);
    effect.setEndScale(scale);
    effect.compile();
    for (const bool smooth : {false, true}) {
        effect.setSmooth(smooth);
        stage.run(effect, 1000);
        for (int uid = 1; uid <= 3; ++uid) {
            QCOMPARE(stage.sim(uid), QColor(Qt::blue));
            QCOMPARE(stage.mix(uid), overBlack(Qt::blue));
        }
    }
}

void ImageEffectTest::lightsAtNoPlaceLieOutside()
{
    PictureStage stage({{0.0, 0.0}, {kNan, 0.0}, {0.0, kInf}, {1e308, 0.0}, {-3e9, 0.0}});
    ImageEffect effect(stage.model(), 0x1000, nullptr);
    effect.setImageFile(stage.save("a.png", plainPicture(50, 50, 0xFFFF0000U)));
    effect.setBgColor(Qt::blue);
    effect.setStartX(20);
    effect.setStartY(20);
    effect.setEndX(20);
    effect.setEndY(20);
    effect.compile();
    QCOMPARE(effect.outputSizeText(), QStringLiteral("1 x 1")); // of the one light that counts
    for (const bool smooth : {false, true}) {
        // Zooming out brings no such light onto the picture.
        for (const double scale : {1.0, 1e8, -1e8, 1e300}) {
            effect.setSmooth(smooth);
            effect.setStartScale(scale);
            effect.setEndScale(scale);
            stage.run(effect, 0);
            QCOMPARE(stage.sim(1), QColor(Qt::red));
            for (int uid = 2; uid <= 4; ++uid) {
                QCOMPARE(stage.sim(uid), QColor(Qt::blue));
            }
        }
    }
}

void ImageEffectTest::transparentPixelsLetThrough_data()
{
    QTest::addColumn<VelaColor>("transColor");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<bool>("through");
    VelaColor calibrated(Qt::red);
    calibrated.setTintweave(true);
    VelaColor ofProfile(Qt::red);
    ofProfile.setProfileId(3);
    QTest::newRow("equal") << VelaColor(Qt::red) << true << true;
    QTest::newRow("not enabled") << VelaColor(Qt::red) << false << false;
    QTest::newRow("another colour") << VelaColor(qRgb(254, 0, 0)) << true << false;
    QTest::newRow("calibrated") << calibrated << true << false;
    QTest::newRow("of a profile") << ofProfile << true << false;
    QTest::newRow("as hue") << VelaColor(Qt::red).toHsv() << true << false;
    QTest::newRow("invalid") << VelaColor() << true << false;
}

void ImageEffectTest::transparentPixelsLetThrough()
{
    QFETCH(const VelaColor, transColor);
    QFETCH(const bool, enabled);
    QFETCH(const bool, through);
    PictureStage stage(1, 1, 12.0);
    ImageEffect effect(stage.model(), 1, nullptr);
    effect.setImageFile(stage.save("a.png", plainPicture(9, 9, 0xFFFF0000U)));
    effect.setStartX(4);
    effect.setStartY(4);
    effect.setTransColor(transColor);
    effect.setTransEnabled(enabled);
    effect.setPriority(1);
    effect.compile();
    effect.setActive(true);
    effect.setStartMs(TestShow::kStartMs);
    for (const bool smooth : {false, true}) {
        for (const double transparency : {0.0, 0.5, 1.0}) {
            effect.setSmooth(smooth);
            effect.setTransparency(transparency);
            stage.endFrame();
            stage.light(1)->mixColor(Qt::blue, 0);
            stage.light(1)->mixSimColor(Qt::blue, 0);
            effect.tick(TestShow::kStartMs, 0);
            // A pixel let through is so at any transparency.
            const double alpha = through ? 0.0 : 1.0 - transparency;
            VelaColor color(Qt::red);
            color.setAlphaF(alpha);
            QColor screen(Qt::red);
            screen.setAlphaF(color.alphaF());
            QCOMPARE(stage.mix(1), composite(color, Qt::blue));
            QCOMPARE(
                stage.sim(1),
                screen.alpha() == 255
                    ? screen
                    : composite(VelaColor(screen), VelaColor(QColor(Qt::blue))).toQColor(true));
        }
    }
}

void ImageEffectTest::aBorderOfTransparencyIsPartial()
{
    // The centre a quarter of the way from a red column to a transparent black one.
    PictureStage stage(1, 1, 12.0);
    QImage image = plainPicture(2, 1, 0xFFFF0000U);
    image.setPixel(1, 0, 0xFF000000U);
    ImageEffect effect(stage.model(), 1, nullptr);
    effect.setImageFile(stage.save("a.png", image));
    effect.setStartX(0.25);
    effect.setTransEnabled(true);
    effect.setTransparency(0.5);
    effect.compile();
    stage.run(effect, 0);
    VelaColor color(qRgb(191, 0, 0)); // 255 x 0.75
    color.setAlphaF(0.75);
    color.setAlphaF(color.alphaF() * 0.5);
    QColor screen(191, 0, 0);
    screen.setAlphaF(color.alphaF());
    QCOMPARE(stage.mix(1), overBlack(color));
    QCOMPARE(stage.sim(1), screenOverBlack(screen));
    QVERIFY(std::abs(stage.mix(1).redF() - 191.0 / 255.0 * 0.375) < 1e-6);
}

void ImageEffectTest::theSurroundingsKeepTheirOwnAlpha()
{
    PictureStage stage(1, 1, 12.0);
    ImageEffect effect(stage.model(), 1, nullptr);
    effect.setImageFile(stage.save("a.png", plainPicture(2, 2, 0xFFFF0000U)));
    effect.setStartX(-5);
    VelaColor bg(Qt::green);
    bg.setAlphaF(0.3);
    effect.setBgColor(bg);
    effect.compile();
    for (const double transparency : {0.0, 0.5, 1.0}) {
        effect.setTransparency(transparency);
        effect.setSmooth(false);
        stage.run(effect, 0);
        VelaColor color = bg;
        if (transparency > 0.0) {
            color.setAlphaF(bg.alphaF() * (1.0 - transparency));
        }
        QColor screen = toDisplayQColor(bg);
        screen.setAlphaF(color.alphaF()); // finer than the 8 bits it was shown with
        QCOMPARE(stage.mix(1), overBlack(color));
        QCOMPARE(stage.sim(1), screenOverBlack(screen));
        // Smoothly, the surroundings are pixels: opaque, in 8 bits.
        effect.setSmooth(true);
        stage.run(effect, 0);
        VelaColor pixel(qRgb(0, 255, 0));
        pixel.setAlphaF(1.0 - transparency);
        screen = QColor(0, 255, 0);
        screen.setAlphaF(pixel.alphaF());
        QCOMPARE(stage.mix(1), overBlack(pixel));
        QCOMPARE(stage.sim(1), screenOverBlack(screen));
    }
    // And compare with the transparent colour like any other.
    effect.setTransparency(0.0);
    effect.setTransColor(VelaColor(qRgb(0, 255, 0)));
    effect.setTransEnabled(true);
    stage.run(effect, 0);
    QVERIFY(stage.mix(1).isBlack());
    effect.setSmooth(false);
    stage.run(effect, 0);
    QVERIFY(!stage.mix(1).isBlack());
}

void ImageEffectTest::theSurroundingsOfAWhite()
{
    PictureStage stage(1, 1, 12.0);
    ImageEffect effect(stage.model(), 1, nullptr);
    effect.setImageFile(stage.save("a.png", plainPicture(2, 2, 0xFFFF0000U)));
    effect.setStartX(-5);
    const VelaColor white(QStringLiteral("aYxy;1;0;65535;0.8;0.3805;0.3768")); // 4000 K
    effect.setBgColor(white);
    effect.compile();
    effect.setSmooth(false);
    stage.run(effect, 0);
    QCOMPARE(stage.mix(1), white); // the outputs get it as it is
    QCOMPARE(stage.sim(1), toDisplayQColor(white));
    effect.setSmooth(true);
    stage.run(effect, 0);
    QCOMPARE(stage.mix(1), overBlack(VelaColor(qRgb(white.red8(), white.green8(), white.blue8()))));
}

void ImageEffectTest::equalsItsStepsOnAnyPicture_data()
{
    QTest::addColumn<bool>("smooth");
    QTest::addColumn<bool>("transEnabled");
    QTest::addColumn<double>("transparency");
    for (const bool smooth : {false, true}) {
        for (const bool trans : {false, true}) {
            for (const double transparency : {0.0, 0.37, 1.0}) {
                QTest::addRow("%s, %s, %.2f", smooth ? "smooth" : "plain",
                              trans ? "transparent colour" : "all colours", transparency)
                    << smooth << trans << transparency;
            }
        }
    }
}

void ImageEffectTest::equalsItsStepsOnAnyPicture()
{
    QFETCH(const bool, smooth);
    QFETCH(const bool, transEnabled);
    QFETCH(const double, transparency);
    std::mt19937 random(21);
    const auto number = [&random](double low, double high) {
        return low + (high - low) * static_cast<double>(random()) / 4294967295.0;
    };
    QVector<QPointF> places;
    for (int i = 0; i < 60; ++i) {
        places.append({number(-150.0, 150.0), number(-90.0, 90.0)});
    }
    PictureStage stage(places);
    const QRgb palette[] = {qRgb(0, 0, 0), qRgb(255, 255, 255), qRgb(200, 30, 7), qRgb(1, 2, 3)};
    QImage image(11, 8, QImage::Format_ARGB32);
    for (int i = 0; i < 88; ++i) {
        image.setPixel(i % 11, i / 11, palette[random() % 4]);
    }
    ImageEffect effect(stage.model(), 0x1000, nullptr);
    effect.setImageFile(stage.save("a.png", image));
    const VelaColor transColor(palette[2]);
    VelaColor bg(qRgb(40, 90, 255));
    bg.setAlphaF(0.8);
    effect.setSmooth(smooth);
    effect.setTransEnabled(transEnabled);
    effect.setTransColor(transColor);
    effect.setBgColor(bg);
    effect.setTransparency(transparency);
    effect.compile();

    double minX = 0.0;
    double minY = 0.0;
    double maxX = 0.0;
    double maxY = 0.0;
    stage.model()->group(0x1000)->bounds(&minX, &minY, &maxX, &maxY);
    for (int frame = 0; frame < 40; ++frame) {
        const double cycle = number(0.5, 3.0);
        const double startX = number(-3.0, 12.0);
        const double startY = number(-3.0, 9.0);
        const double endX = frame % 4 == 0 ? startX : number(-3.0, 12.0);
        const double endY = number(-3.0, 9.0);
        const double startScale = number(-1.0, 3.0);
        const double endScale = number(0.5, 3.0);
        effect.setCycleSeconds(cycle);
        effect.setStartX(startX);
        effect.setStartY(startY);
        effect.setEndX(endX);
        effect.setEndY(endY);
        effect.setStartScale(startScale);
        effect.setEndScale(endScale);
        const int ms = static_cast<int>(random() % 8000);
        stage.run(effect, ms);

        const int period = static_cast<int>(cycle * 1000.0);
        const double t = static_cast<double>(ms % period) / period;
        const double s = (endScale - startScale) * t + startScale;
        const QRgb bgRgb = qRgb(bg.red8(), bg.green8(), bg.blue8());
        const auto pixel = [&](int x, int y) {
            return image.valid(x, y) ? image.pixel(x, y) : bgRgb;
        };
        const auto isTransparent = [&](QRgb rgb) {
            return transEnabled && VelaColor(rgb) == transColor ? 1.0 : 0.0;
        };
        for (int i = 0; i < 60; ++i) {
            double dx = ((places.at(i).x() - minX) - (maxX - minX) * 0.5) / 12.0;
            double dy = ((places.at(i).y() - minY) - (maxY - minY) * 0.5) / 12.0;
            dx -= dx < 0.0 ? 1.0 : 0.0;
            dy -= dy < 0.0 ? 1.0 : 0.0;
            const double x = (endX - startX) * t + startX + static_cast<int>(dx) / s;
            const double y = (endY - startY) * t + startY + static_cast<int>(dy) / s;
            const int x0 = x >= 0.0 ? static_cast<int>(x) : static_cast<int>(x) - 1;
            const int y0 = y >= 0.0 ? static_cast<int>(y) : static_cast<int>(y) - 1;
            VelaColor c;
            QColor q;
            if (smooth) {
                const double fx = x - x0;
                const double fy = y - y0;
                const QRgb p00 = pixel(x0, y0);
                const QRgb p01 = pixel(x0, y0 + 1);
                const QRgb p10 = pixel(x0 + 1, y0);
                const QRgb p11 = pixel(x0 + 1, y0 + 1);
                const auto mean = [&](int (*part)(QRgb)) {
                    return static_cast<int>(part(p01) * (1 - fx) * fy +
                                            part(p00) * (1 - fx) * (1 - fy) +
                                            part(p10) * fx * (1 - fy) + part(p11) * fx * fy) &
                           0xFF;
                };
                const QRgb rgb = qRgb(mean(qRed), mean(qGreen), mean(qBlue));
                c = VelaColor(rgb);
                c.setAlphaF(std::max(0.0, 1.0 - ((1 - fx) * isTransparent(p01) * fy +
                                                 (1 - fx) * isTransparent(p00) * (1 - fy) +
                                                 isTransparent(p10) * fx * (1 - fy) +
                                                 isTransparent(p11) * fx * fy)));
                if (transparency > 0.0) {
                    c.setAlphaF(c.alphaF() * (1.0 - transparency));
                }
                q = QColor(rgb);
            } else if (image.valid(x0, y0)) {
                c = VelaColor(image.pixel(x0, y0));
                if (isTransparent(image.pixel(x0, y0)) > 0.0) {
                    c.setAlphaF(0.0);
                } else if (transparency > 0.0) {
                    c.setAlphaF(c.alphaF() * (1.0 - transparency));
                }
                q = QColor(image.pixel(x0, y0));
            } else {
                c = bg;
                if (transparency > 0.0) {
                    c.setAlphaF(c.alphaF() * (1.0 - transparency));
                }
                q = toDisplayQColor(bg);
            }
            q.setAlphaF(c.alphaF());
            QCOMPARE(stage.mix(i + 1), overBlack(c));
            QCOMPARE(stage.sim(i + 1), screenOverBlack(q));
        }
    }
}

QTEST_GUILESS_MAIN(ImageEffectTest)
#include "ImageEffectTest.moc"
