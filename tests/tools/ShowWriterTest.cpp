#include "tools/mapgen/ShowWriter.h"

#include <QObject>
#include <QtTest>

namespace {

/// The lines of the keys that every effect has.
QString baseKeys(const char* type, const char* name, const char* eid, const char* gid,
                 const char* priority, const char* rest)
{
    return QStringLiteral("<type>%1</type>\n<name>%2</name>\n<eid>%3</eid>\n<gid>%4</gid>\n"
                          "<transparency>0</transparency>\n<priority>%5</priority>\n%6")
        .arg(QLatin1String(type), QLatin1String(name), QLatin1String(eid), QLatin1String(gid),
             QLatin1String(priority), QLatin1String(rest));
}

const char* const kUnlinked = "<begin>0</begin>\n<end>0</end>\n<fadein>0</fadein>\n"
                              "<fadeout>0</fadeout>\n<starttype>0</starttype>\n"
                              "<startfixedtime>0</startfixedtime>\n"
                              "<startlinkeid>4294967295</startlinkeid>\n"
                              "<startlinkstart>1</startlinkstart>\n"
                              "<startlinkoffset>0</startlinkoffset>\n<endtype>0</endtype>\n"
                              "<endfixedtime>0</endfixedtime>\n"
                              "<endlinkeid>4294967295</endlinkeid>\n"
                              "<endlinkstart>1</endlinkstart>\n<endlinkoffset>0</endlinkoffset>\n"
                              "<endcyclecount>1</endcyclecount>\n";
const char* const kTimelineKeys =
    "<brightness>1</brightness>\n<loop>1</loop>\n<version>2.3.1</version>\n";

} // namespace

class ShowWriterTest : public QObject
{
    Q_OBJECT
private slots:
    void anEmptyShowIsThisText();
    void everyKeyHasItsPlace();
    void kindsWriteTheirKeysInOrder_data();
    void kindsWriteTheirKeysInOrder();
    void effectsStandByPriority();
    void coloursHaveThisForm();
};

void ShowWriterTest::anEmptyShowIsThisText()
{
    const QString expected =
        QStringLiteral("<effect>\n") +
        baseKeys("Meta Effect", "A &amp; B", "4294967295", "4294967295", "0", kUnlinked) +
        QLatin1String(kTimelineKeys) + QStringLiteral("</effect>\n");
    QCOMPARE(ShowWriter::text(ShowEffects::timeline(QStringLiteral("A & B"))), expected);
}

void ShowWriterTest::everyKeyHasItsPlace()
{
    ShowEffect effect = ShowEffects::fixedColor(QStringLiteral("Wash"), QStringLiteral("red"));
    effect.on(Q_UINT64_C(8589934592)).layer(3).fading(100, 250).afterEndOf(7, -1234.5678);
    effect.untilStartOf(8, 12.5).cycles(4);
    effect.begin = 1500;
    effect.end = 2500;
    effect.eid = 2;
    effect.startFixedTime = 9;
    effect.endFixedTime = 10;
    const QString expected =
        QStringLiteral("<effect>\n") +
        baseKeys("Fixed Color", "Wash", "2", "8589934592", "3",
                 "<begin>1500</begin>\n<end>2500</end>\n<fadein>100</fadein>\n"
                 "<fadeout>250</fadeout>\n<starttype>1</starttype>\n"
                 "<startfixedtime>9</startfixedtime>\n<startlinkeid>7</startlinkeid>\n"
                 "<startlinkstart>0</startlinkstart>\n"
                 "<startlinkoffset>-1234.57</startlinkoffset>\n<endtype>2</endtype>\n"
                 "<endfixedtime>10</endfixedtime>\n<endlinkeid>8</endlinkeid>\n"
                 "<endlinkstart>1</endlinkstart>\n<endlinkoffset>12.5</endlinkoffset>\n"
                 "<endcyclecount>4</endcyclecount>\n") +
        QStringLiteral("<color>red</color>\n</effect>\n");
    QCOMPARE(ShowWriter::text(effect), expected);
}

void ShowWriterTest::kindsWriteTheirKeysInOrder_data()
{
    using namespace ShowEffects;
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("keys");
    const QString a = QStringLiteral("a");
    const QString b = QStringLiteral("b");
    QTest::newRow("cross fade") << ShowWriter::text(crossFade(a, a, b, 2.5, true, false))
                                << QStringLiteral("<startcolor>a</startcolor>\n"
                                                  "<endcolor>b</endcolor>\n"
                                                  "<starttrans>1</starttrans>\n"
                                                  "<endtrans>0</endtrans>\n<time>2.5</time>\n");
    QTest::newRow("white") << ShowWriter::text(fixedWhite(a, {510, 80}))
                           << QStringLiteral("<temperature>510</temperature>\n"
                                             "<intensity>80</intensity>\n<inputType>0</inputType>\n"
                                             "<warm>127</warm>\n<cool>127</cool>\n");
    QTest::newRow("white cross fade")
        << ShowWriter::text(whiteCrossFade(a, {0, 10}, {255, 90}, 3.0, false, true))
        << QStringLiteral(
               "<temperatureStart>0</temperatureStart>\n"
               "<intensityStart>10</intensityStart>\n<inputTypeStart>0</inputTypeStart>\n"
               "<warmStart>127</warmStart>\n<coolStart>127</coolStart>\n"
               "<temperatureEnd>255</temperatureEnd>\n<intensityEnd>90</intensityEnd>\n"
               "<inputTypeEnd>0</inputTypeEnd>\n<warmEnd>127</warmEnd>\n"
               "<coolEnd>127</coolEnd>\n<starttrans>0</starttrans>\n"
               "<endtrans>1</endtrans>\n<time>3</time>\n");
}

void ShowWriterTest::kindsWriteTheirKeysInOrder()
{
    QFETCH(const QString, text);
    QFETCH(const QString, keys);
    const QString tail =
        QStringLiteral("<endcyclecount>1</endcyclecount>\n") + keys + QStringLiteral("</effect>\n");
    QVERIFY2(text.endsWith(tail), qPrintable(text));
}

void ShowWriterTest::effectsStandByPriority()
{
    ShowEffect show = ShowEffects::timeline(QStringLiteral("Show"));
    show.add(ShowEffects::fixedColor(QStringLiteral("high"), QString()).layer(5));
    show.add(ShowEffects::fixedColor(QStringLiteral("low"), QString()).layer(1));
    show.add(ShowEffects::fixedColor(QStringLiteral("low too"), QString()).layer(1));
    const QString text = ShowWriter::text(show);
    const int low = text.indexOf(QStringLiteral("<name>low</name>\n<eid>2</eid>"));
    const int lowToo = text.indexOf(QStringLiteral("<name>low too</name>\n<eid>3</eid>"));
    const int high = text.indexOf(QStringLiteral("<name>high</name>\n<eid>1</eid>"));
    QVERIFY(low > text.indexOf(QLatin1String(kTimelineKeys)));
    QVERIFY(low < lowToo);
    QVERIFY(lowToo < high);
    QVERIFY(text.endsWith(QStringLiteral("</effect>\n</effect>\n")));
}

void ShowWriterTest::coloursHaveThisForm()
{
    QCOMPARE(ShowEffects::rgbText(QColor(255, 18, 0)),
             QStringLiteral("aRgb;1;0;#ffffffff12120000"));
    QCOMPARE(ShowEffects::rgbText(QColor(0, 0, 1), 0.5),
             QStringLiteral("aRgb;1;0;#8000000000000101"));
    QCOMPARE(ShowEffects::yxyText(0.8, 0.4599, 0.4106),
             QStringLiteral("aYxy;1;0;65535;0.800000;0.459900;0.410600"));
    const QVector<QColor> stops = {Qt::black, QColor(100, 0, 0), QColor(100, 200, 0)};
    QCOMPARE(ShowEffects::along(stops, 0.25), QColor(50, 0, 0));
    QCOMPARE(ShowEffects::along(stops, 0.75), QColor(100, 100, 0));
    QCOMPARE(ShowEffects::along(stops, 1.0), QColor(100, 200, 0));
}

QTEST_GUILESS_MAIN(ShowWriterTest)
#include "ShowWriterTest.moc"
