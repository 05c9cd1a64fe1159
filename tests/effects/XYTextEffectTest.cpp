#include "effects/XYTextEffect.h"

#include "engine/MetaEffect.h"
#include "tests/effects/PlanStage.h"

#include <QSignalSpy>

#include <limits>

using TestShow::elementOf;
using TestShow::textOf;

class XYTextEffectTest : public QObject
{
    Q_OBJECT
private slots:
    void hasItsDefaults();
    void paintsItsBackground_data();
    void paintsItsBackground();
    void reachesTheOutputsOnly();
    void looksAtNoTransparency_data();
    void looksAtNoTransparency();
    void compilingMovesTheTimeZero();
    void aPictureScrolls_data();
    void aPictureScrolls();
    void aPictureIsHeldBelow();
    void textIsRedAboveSixtyFour_data();
    void textIsRedAboveSixtyFour();
    void smoothTakesTheMeanOfNine_data();
    void smoothTakesTheMeanOfNine();
    void smoothNeedsAllNeighbours();
    void oddTimesStandStill_data();
    void oddTimesStandStill();
    void hostileNumbersDoNotFault_data();
    void hostileNumbersDoNotFault();
    void settersCompile_data();
    void settersCompile();
    void theTimeRuleResolvesThenTells();
    void isWrittenByteForByte();
    void readsItsKeys_data();
    void readsItsKeys();
    void readingTellsTheTimeAndCompiles();
};

namespace {

/// A text whose picture somebody has drawn.
class DrawnText : public XYTextEffect
{
public:
    DrawnText(MapModel* model, quint64 gid)
        : XYTextEffect(model, gid, nullptr)
    {}
    using XYTextEffect::setImage;
};

QImage blank(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::black);
    return image;
}

const VelaColor& textColor()
{
    static const VelaColor color(255, 0, 0, 65535); // 8 bits in a place for 16
    return color;
}

} // namespace

void XYTextEffectTest::hasItsDefaults()
{
    XYTextEffect effect(nullptr, 5, nullptr);
    QCOMPARE(effect.type(), QStringLiteral("Text"));
    QCOMPARE(effect.typeId(), 16);
    QCOMPARE(effect.cycleTime(), 5000U);
    QCOMPARE(effect.text(), QStringLiteral("Hello"));
    QCOMPARE(effect.fontFamily(), QString());
    QCOMPARE(effect.fontSize(), 100);
    QVERIFY(!effect.bold() && !effect.italic() && !effect.smooth());
    QCOMPARE(effect.cycleSeconds(), 5.0);
    QCOMPARE(effect.fgColor(), QColor(Qt::red));
    QCOMPARE(effect.bgColor(), QColor(Qt::black));
    QVERIFY(!effect.fgTransparent() && !effect.bgTransparent());
    QCOMPARE(effect.metaObject()->propertyCount(), Effect::staticMetaObject.propertyCount());
    QVERIFY(!effect.compiled());
    QVERIFY(effect.compile());
    QVERIFY(effect.compiled());
    effect.setActive(true);
    effect.tick(0, 0);
}

void XYTextEffectTest::paintsItsBackground_data()
{
    QTest::addColumn<quint64>("gid");
    QTest::addColumn<QVector<quint64>>("painted");
    using Uids = QVector<quint64>;
    QTest::newRow("synchronized") << quint64(0x100) << Uids{1, 2, 3, 4, 5, 6};
    QTest::newRow("chase") << quint64(0x101) << Uids{1, 2, 3, 4, 5, 6};
    QTest::newRow("nested chase") << quint64(0x102) << Uids{1, 2, 3, 4, 5, 6};
    QTest::newRow("leaf") << quint64(5) << Uids{5};
    QTest::newRow("with a missing light") << quint64(0x104) << Uids{1, 4};
    QTest::newRow("places that are none") << quint64(0x107) << Uids{9, 10, 11};
    QTest::newRow("no lights") << quint64(0x106) << Uids{};
    QTest::newRow("no such group") << quint64(0x999) << Uids{};
    QTest::newRow("no group") << quint64(Effect::kNoGid) << Uids{};
}

void XYTextEffectTest::paintsItsBackground()
{
    QFETCH(const quint64, gid);
    QFETCH(const QVector<quint64>, painted);
    PlanStage stage;
    XYTextEffect effect(stage.model(), 0x105, nullptr);
    effect.setBgColor(QColor(10, 20, 30));
    effect.setGid(gid);
    effect.compile();
    for (const qint64 ms : {0, 1234, 4999}) {
        for (const bool smooth : {false, true}) {
            effect.setSmooth(smooth);
            stage.run(effect, ms);
            for (quint64 uid = 1; uid <= 11; ++uid) {
                if (painted.contains(uid)) {
                    QCOMPARE(stage.mix(uid), VelaColor(qRgb(10, 20, 30)));
                    QCOMPARE(stage.mix(uid).toQColor(true), QColor(10, 20, 30));
                } else {
                    QVERIFY(stage.mix(uid).isBlack());
                }
            }
        }
    }
}

void XYTextEffectTest::reachesTheOutputsOnly()
{
    PlanStage stage;
    XYTextEffect effect(stage.model(), 0x100, nullptr);
    effect.setBgColor(Qt::white);
    stage.endFrame();
    stage.light(1)->mixColor(Qt::blue, 0);
    stage.light(1)->mixSimColor(QColor(Qt::blue), 0);
    effect.setPriority(1);
    effect.setActive(true);
    effect.tick(TestShow::kStartMs, 0);
    QCOMPARE(stage.mix(1).toQColor(true), QColor(Qt::white));
    QCOMPARE(stage.sim(1), QColor(Qt::blue));
    QCOMPARE(stage.sim(2), QColor(Qt::black));

    // A later effect of equal priority weighs its screen colour as the third, not as the second.
    stage.endFrame();
    stage.light(1)->mixColor(Qt::blue, 1);
    stage.light(1)->mixSimColor(QColor(Qt::blue), 1);
    effect.tick(TestShow::kStartMs, 0);
    stage.light(1)->mixColor(Qt::red, 1);
    stage.light(1)->mixSimColor(QColor(Qt::red), 1);
    QCOMPARE(stage.sim(1), QColor(85, 0, 170));
    QCOMPARE(stage.mix(1).toQColor(true), QColor(170, 85, 170));
}

void XYTextEffectTest::looksAtNoTransparency_data()
{
    QTest::addColumn<double>("transparency");
    QTest::addColumn<bool>("flags");
    QTest::newRow("none") << 0.0 << false;
    QTest::newRow("partial") << 0.5 << false;
    QTest::newRow("invisible") << 1.0 << false;
    QTest::newRow("flags") << 0.0 << true;
    QTest::newRow("all") << 1.0 << true;
}

void XYTextEffectTest::looksAtNoTransparency()
{
    QFETCH(const double, transparency);
    QFETCH(const bool, flags);
    PlanStage stage;
    XYTextEffect effect(stage.model(), 0x100, nullptr);
    effect.setBgColor(QColor(255, 255, 255, 0)); // nor at that of the colour
    effect.setFgTransparent(flags);
    effect.setBgTransparent(flags);
    effect.setTransparency(transparency);
    stage.run(effect, 100);
    QCOMPARE(stage.mix(1), VelaColor(Qt::white));
}

void XYTextEffectTest::compilingMovesTheTimeZero()
{
    PlanStage stage;
    XYTextEffect effect(stage.model(), 0x100, nullptr);
    effect.compile();
    stage.run(effect, 3000);
    QCOMPARE(effect.elapsed(), qint64(3000));
    effect.compile();
    QCOMPARE(effect.elapsed(), qint64(0));
    QCOMPARE(effect.startMs(), TestShow::kStartMs + 3000);
    effect.setGid(0x999); // not without a group
    stage.run(effect, 4000);
    effect.compile();
    QCOMPARE(effect.elapsed(), qint64(4000));
}

void XYTextEffectTest::aPictureScrolls_data()
{
    // A picture of 6 by 4 for a font of 4: the lights 1 to 6 have the pixels (0 0) (3 0) (0 3)
    // (3 3) (1 1) (0 0), and the picture moves from -4 to 6 in a cycle. Lit are the pixels of
    // column 1; behind each row stands the column that each light looks at.
    QTest::addColumn<qint64>("ms");
    QTest::addColumn<QString>("lit");
    const auto row = [](const char* name, qint64 ms, const char* lit) {
        QTest::newRow(name) << ms << QString::fromLatin1(lit);
    };
    row("-4: columns -5 -2 -5 -2 -4 -5", 0, "");
    row("-1.5: -1 - 1, 1 - 1; truncated towards 0", 2500, ""); // -2 0 -2 0 -1 -2
    row("-0.5: 0 - 1, 2 - 1", 3500, "2 4");                    // -1 1 -1 1 -1 -1
    row("0 is not above 0: one less", 4000, "");               // -1 2 -1 2 0 -1
    row("0.5", 4500, "5");                                     // 0 3 0 3 1 0
    row("1", 5000, "1 3 6");                                   // 1 4 1 4 2 1
    row("1.999", 5999, "1 3 6");                               // 1 4 1 4 2 1
    row("2", 6000, "");                                        // 2 5 2 5 3 2
    row("the next cycle", 15000, "1 3 6");
    row("elapsed has 32 bits", qint64(4294967296) + 5000, "1 3 6");
}

void XYTextEffectTest::aPictureScrolls()
{
    QFETCH(const qint64, ms);
    PlanStage stage;
    DrawnText effect(stage.model(), 0x100);
    effect.setFontSize(4);
    effect.setCycleTime(10.0);
    effect.setBgColor(QColor(0, 0, 200));
    QImage image = blank(6, 4);
    for (int y = 0; y < 4; ++y) {
        image.setPixelColor(1, y, Qt::white);
    }
    effect.setImage(image);
    stage.run(effect, ms);
    QStringList lit;
    for (quint64 uid = 1; uid <= 6; ++uid) {
        if (stage.mix(uid) == textColor()) {
            lit << QString::number(uid);
        } else {
            // Beside the picture the background is bright, inside it nearly black.
            const VelaColor inside(0, 0, 200, 65535);
            QVERIFY(stage.mix(uid) == inside || stage.mix(uid) == VelaColor(qRgb(0, 0, 200)));
        }
        QCOMPARE(stage.sim(uid), QColor(Qt::black));
    }
    QTEST(lit.join(QLatin1Char(' ')), "lit");
}

void XYTextEffectTest::aPictureIsHeldBelow()
{
    // Of a picture higher than the font the lowest rows show: row 1 for the first of a font of 3.
    PlanStage stage;
    DrawnText effect(stage.model(), 0x100);
    effect.setFontSize(3);
    effect.setCycleTime(10.0);
    effect.setBgColor(QColor(0, 0, 200));
    QImage image = blank(6, 4);
    image.setPixelColor(2, 1, Qt::white);
    effect.setImage(image);
    stage.run(effect, 5000); // at 1, and one further by 4 - 3
    QCOMPARE(stage.mix(1), textColor());
    QCOMPARE(stage.mix(6), textColor());
    QCOMPARE(stage.mix(3), VelaColor(0, 0, 200, 65535)); // row 3
    effect.setFontSize(1000);
    stage.run(effect, 5000); // beyond the picture
    QCOMPARE(stage.mix(1), VelaColor(qRgb(0, 0, 200)));
}

void XYTextEffectTest::textIsRedAboveSixtyFour_data()
{
    QTest::addColumn<uint>("pixel");
    QTest::addColumn<bool>("isText");
    QTest::newRow("64") << qRgb(64, 255, 255) << false;
    QTest::newRow("65") << qRgb(65, 0, 0) << true;
    QTest::newRow("green is none") << qRgb(0, 255, 0) << false;
}

void XYTextEffectTest::textIsRedAboveSixtyFour()
{
    QFETCH(const uint, pixel);
    QFETCH(const bool, isText);
    PlanStage stage;
    DrawnText effect(stage.model(), 0x100);
    effect.setFontSize(4);
    effect.setCycleTime(10.0);
    effect.setFgColor(QColor(1, 2, 3, 0));
    effect.setBgColor(QColor(4, 5, 6, 0));
    QImage image = blank(6, 4);
    image.fill(pixel);
    effect.setImage(image);
    stage.run(effect, 5000);
    QCOMPARE(stage.mix(1), isText ? VelaColor(1, 2, 3, 65535) : VelaColor(4, 5, 6, 65535));
    QCOMPARE(stage.mix(1).spec(), VelaColor::Rgb);
    QVERIFY(!stage.mix(1).tintweave());
}

void XYTextEffectTest::smoothTakesTheMeanOfNine_data()
{
    QTest::addColumn<int>("centre");
    QTest::addColumn<int>("others");
    QTest::addColumn<bool>("plain");
    QTest::addColumn<bool>("smooth");
    QTest::newRow("one bright pixel") << 255 << 0 << true << false; // 28
    QTest::newRow("one dark pixel") << 0 << 255 << false << true;
    QTest::newRow("584 / 9 is 64") << 64 << 65 << false << false;
    QTest::newRow("585 / 9 is 65") << 65 << 65 << true << true;
    QTest::newRow("593 / 9 is 65") << 73 << 65 << true << true;
}

void XYTextEffectTest::smoothTakesTheMeanOfNine()
{
    QFETCH(const int, centre);
    QFETCH(const int, others);
    PlanStage stage;
    DrawnText effect(stage.model(), 0x100);
    effect.setFontSize(4);
    effect.setCycleTime(10.0);
    QImage image = blank(6, 4);
    image.fill(qRgb(others, 0, 0));
    image.setPixel(2, 1, qRgb(centre, 0, 0)); // where light 5 looks
    effect.setImage(image);
    stage.run(effect, 5000);
    QTEST(stage.mix(5) == textColor(), "plain");
    effect.setSmooth(true);
    stage.run(effect, 5000);
    QTEST(stage.mix(5) == textColor(), "smooth");
}

void XYTextEffectTest::smoothNeedsAllNeighbours()
{
    PlanStage stage;
    DrawnText effect(stage.model(), 0x100);
    effect.setFontSize(4);
    effect.setCycleTime(10.0);
    effect.setSmooth(true);
    QImage image = blank(6, 4);
    image.setPixelColor(1, 0, Qt::white); // lights 1 and 6 look at the upper edge
    image.setPixelColor(1, 3, Qt::white); // and light 3 at the lower one
    effect.setImage(image);
    stage.run(effect, 5000);
    QCOMPARE(stage.mix(1), textColor());
    QCOMPARE(stage.mix(3), textColor());
}

void XYTextEffectTest::oddTimesStandStill_data()
{
    QTest::addColumn<double>("seconds");
    QTest::newRow("zero") << 0.0;
    QTest::newRow("half a millisecond") << 0.0005;
    QTest::newRow("negative") << -5.0;
    QTest::newRow("nan") << std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity();
    QTest::newRow("beyond 32 bits") << 1e300;
}

void XYTextEffectTest::oddTimesStandStill()
{
    QFETCH(const double, seconds);
    PlanStage stage;
    DrawnText effect(stage.model(), 0x100);
    effect.setFontSize(4);
    effect.setCycleTime(seconds);
    effect.setBgColor(QColor(0, 0, 200));
    QCOMPARE(effect.cycleTime(), 0U);
    QImage image = blank(6, 4);
    image.fill(Qt::white);
    effect.setImage(image);
    stage.run(effect, 12345); // before its way: at -4
    for (quint64 uid = 1; uid <= 6; ++uid) {
        QCOMPARE(stage.mix(uid), VelaColor(qRgb(0, 0, 200)));
    }
}

void XYTextEffectTest::hostileNumbersDoNotFault_data()
{
    QTest::addColumn<quint64>("gid");
    QTest::addColumn<int>("fontSize");
    for (const quint64 gid : {quint64(0x100), quint64(5), quint64(0x105), quint64(0x107)}) {
        for (const int size :
             {0, -1, 1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
            QTest::addRow("group %llx, font %d", gid, size) << gid << size;
        }
    }
}

void XYTextEffectTest::hostileNumbersDoNotFault()
{
    QFETCH(const quint64, gid);
    QFETCH(const int, fontSize);
    PlanStage stage;
    DrawnText effect(stage.model(), gid);
    effect.setFontSize(fontSize);
    QImage image = blank(6, 4);
    image.fill(Qt::white);
    effect.setImage(image);
    for (const bool smooth : {false, true}) {
        effect.setSmooth(smooth);
        for (const double seconds : {5.0, 1e-3, 4294967.0}) {
            effect.setCycleTime(seconds);
            for (const qint64 ms : {qint64(0), qint64(2500), qint64(1) << 40}) {
                stage.run(effect, ms);
            }
        }
    }
    QVERIFY(stage.mix(5).isValid());
    QVERIFY(!textOf(effect).isEmpty());
}

void XYTextEffectTest::settersCompile_data()
{
    QTest::addColumn<int>("setter");
    QTest::addColumn<bool>("compiles");
    const char* const names[] = {"text",    "font",    "size",    "bold",   "italic", "fgcolor",
                                 "fgtrans", "bgcolor", "bgtrans", "smooth", "time"};
    for (int i = 0; i < 11; ++i) {
        QTest::newRow(names[i]) << i << (i < 9);
    }
}

void XYTextEffectTest::settersCompile()
{
    QFETCH(const int, setter);
    XYTextEffect effect(nullptr, 5, nullptr);
    switch (setter) {
    case 0:
        effect.setText(QStringLiteral("a"));
        QCOMPARE(effect.text(), QStringLiteral("a"));
        break;
    case 1:
        effect.setFontFamily(QStringLiteral("b"));
        QCOMPARE(effect.fontFamily(), QStringLiteral("b"));
        break;
    case 2:
        effect.setFontSize(12);
        QCOMPARE(effect.fontSize(), 12);
        break;
    case 3:
        effect.setBold(true);
        QVERIFY(effect.bold());
        break;
    case 4:
        effect.setItalic(true);
        QVERIFY(effect.italic());
        break;
    case 5:
        effect.setFgColor(Qt::blue);
        QCOMPARE(effect.fgColor(), QColor(Qt::blue));
        break;
    case 6:
        effect.setFgTransparent(true);
        QVERIFY(effect.fgTransparent());
        break;
    case 7:
        effect.setBgColor(Qt::blue);
        QCOMPARE(effect.bgColor(), QColor(Qt::blue));
        break;
    case 8:
        effect.setBgTransparent(true);
        QVERIFY(effect.bgTransparent());
        break;
    case 9:
        effect.setSmooth(true);
        QVERIFY(effect.smooth());
        break;
    default:
        effect.setCycleTime(2.0);
        QCOMPARE(effect.cycleSeconds(), 2.0);
        break;
    }
    QTEST(effect.compiled(), "compiles");
}

void XYTextEffectTest::theTimeRuleResolvesThenTells()
{
    XYTextEffect effect(nullptr, 5, nullptr);
    QSignalSpy told(&effect, &Effect::cycleTimeChanged);
    effect.setCycleTime(2.0019);
    QCOMPARE(told.count(), 1);
    QCOMPARE(told.last().first().toUInt(), 2001U);
    effect.setText(QStringLiteral("x"));
    QCOMPARE(told.count(), 1);

    MetaEffect root(nullptr, 0, nullptr);
    XYTextEffect child(nullptr, 5, nullptr);
    child.setEndType(Effect::EndCycles);
    child.setEndCycleCount(3);
    root.addEffect(&child);
    child.setCycleTime(1.5);
    QCOMPARE(child.end(), 4500U);
}

void XYTextEffectTest::isWrittenByteForByte()
{
    XYTextEffect effect(nullptr, 7, nullptr);
    effect.setText(QStringLiteral("Fish & Chips <3"));
    effect.setFontFamily(QStringLiteral("Sans"));
    effect.setFontSize(-12);
    effect.setItalic(true);
    effect.setFgColor(QColor(1, 2, 255, 10));
    effect.setBgTransparent(true);
    effect.setCycleTime(1.23456789);
    QCOMPARE(textOf(effect),
             QStringLiteral("<effect>\n") +
                 TestShow::baseText(QStringLiteral("Text"), QStringLiteral("Unnamed Effect"), 7) +
                 QStringLiteral("<text>Fish &amp; Chips &lt;3</text>\n"
                                "<font>Sans</font>\n"
                                "<fontsize>-12</fontsize>\n"
                                "<bold>0</bold>\n"
                                "<italic>1</italic>\n"
                                "<smooth>0</smooth>\n"
                                "<fgcolor>#0102ff</fgcolor>\n"
                                "<fgtrans>0</fgtrans>\n"
                                "<bgcolor>#000000</bgcolor>\n"
                                "<bgtrans>1</bgtrans>\n"
                                "<cycletime>1.23457</cycletime>\n"
                                "</effect>\n"));
}

void XYTextEffectTest::readsItsKeys_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("settings");
    const auto row = [](const char* name, const char* keys, const char* settings) {
        QTest::newRow(name) << QString::fromLatin1(keys) << QString::fromLatin1(settings);
    };
    row("missing", "", "Hello||100|0|0|0|#ff0000|0|#000000|0|5");
    row("all",
        "<text>Bye &amp; bye</text><font>Serif</font><fontsize>12</fontsize><bold>1</bold>"
        "<italic>-1</italic><smooth>2</smooth><fgcolor>blue</fgcolor><fgtrans>1</fgtrans>"
        "<bgcolor>#0a0b0c</bgcolor><bgtrans>1</bgtrans><cycletime>2.5</cycletime>",
        "Bye & bye|Serif|12|1|1|1|#0000ff|1|#0a0b0c|1|2.5");
    row("empty",
        "<text/><font/><fontsize/><bold/><italic/><smooth/><fgcolor/><fgtrans/><bgcolor/>"
        "<bgtrans/><cycletime/>",
        "||100|0|0|0|#ff0000|0|#000000|0|5");
    row("unreadable ones fall back",
        "<fontsize>7</fontsize><fontsize>x</fontsize><bold>1</bold><bold>b</bold>"
        "<italic>1</italic><italic>i</italic><smooth>1</smooth><smooth>s</smooth>"
        "<fgcolor>blue</fgcolor><fgcolor>bluish</fgcolor><fgtrans>1</fgtrans>"
        "<fgtrans>t</fgtrans><bgcolor>blue</bgcolor><bgcolor>#12</bgcolor>"
        "<bgtrans>1</bgtrans><bgtrans>1.0</bgtrans><cycletime>2</cycletime>"
        "<cycletime>c</cycletime>",
        "Hello||100|0|0|0|#ff0000|0|#000000|0|5");
    row("negative size", "<fontsize>-3</fontsize>", "Hello||-3|0|0|0|#ff0000|0|#000000|0|5");
}

void XYTextEffectTest::readsItsKeys()
{
    QFETCH(const QString, keys);
    QDomElement element = elementOf(keys);
    const WarningCount warnings;
    const XYTextEffect effect(nullptr, 5, &element);
    QCOMPARE(warnings.value(), 0);
    const QStringList settings = {
        effect.text(),
        effect.fontFamily(),
        QString::number(effect.fontSize()),
        QString::number(effect.bold()),
        QString::number(effect.italic()),
        QString::number(effect.smooth()),
        effect.fgColor().name(),
        QString::number(effect.fgTransparent()),
        effect.bgColor().name(),
        QString::number(effect.bgTransparent()),
        QString::number(effect.cycleSeconds()),
    };
    QTEST(settings.join(QLatin1Char('|')), "settings");
}

void XYTextEffectTest::readingTellsTheTimeAndCompiles()
{
    XYTextEffect effect(nullptr, 5, nullptr);
    QSignalSpy told(&effect, &Effect::cycleTimeChanged);
    QDomElement element = elementOf(
        QStringLiteral("<cycletime>2</cycletime><cycletime>no</cycletime><smooth>1</smooth>"));
    effect.fromXml(&element);
    QCOMPARE(told.count(), 2);
    QCOMPARE(told.first().first().toUInt(), 2000U);
    QCOMPARE(told.last().first().toUInt(), 5000U);
    effect.fromXml(nullptr);
    QCOMPARE(told.count(), 2);
    QVERIFY(!effect.compiled());
    for (const char* const key : {"text", "font", "fontsize", "bold", "italic", "fgcolor",
                                  "fgtrans", "bgcolor", "bgtrans"}) {
        QDomElement other = elementOf(QStringLiteral("<%1>?</%1>").arg(QLatin1String(key)));
        QVERIFY2(XYTextEffect(nullptr, 5, &other).compiled(), key);
    }
}

QTEST_GUILESS_MAIN(XYTextEffectTest)
#include "XYTextEffectTest.moc"
