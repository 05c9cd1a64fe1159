#include "color/VelaColor.h"

#include <QtTest>

#include <cmath>
#include <limits>

class VelaColorTextTest : public QObject
{
    Q_OBJECT

private slots:
    void writesText_data();
    void writesText();
    void readsBackWhatItWrote_data();
    void readsBackWhatItWrote();
    void rgbTextLosesLayoutAndProfile();
    void yxyTextKeepsItsLayout();
    void yxyTextTakesAnyDouble_data();
    void yxyTextTakesAnyDouble();
    void channelTextReadsBlindly_data();
    void channelTextReadsBlindly();
    void channelTextWithBadAlphaIsInvalid();
    void channelsWrapIn32Bits();
    void refusesSilently_data();
    void refusesSilently();
    void readsHex_data();
    void readsHex();
    void hexOutOfRangeWarns_data();
    void hexOutOfRangeWarns();
    void readsNames_data();
    void readsNames();
    void unknownNamesWarnOnce_data();
    void unknownNamesWarnOnce();
    void readingLeavesTintweaveToTheText();
    void hsvIsWrittenAsRgb();
    void namesAndLists();
};

namespace {

VelaColor read(const QString& text)
{
    VelaColor color;
    color.setNamedColor(text);
    return color;
}

VelaColor read(const char* text)
{
    return read(QString::fromLatin1(text));
}

bool isResetState(const VelaColor& color)
{
    return color.spec() == VelaColor::Invalid && color.channelLayout() == 1 &&
           color.profileId() == 0 && color.tintweave() && color.alpha32() == 0xFFFFFFFFU &&
           color.redF() == 0.0 && color.capY() == 0.0;
}

VelaColor yxy(double capY, double x, double y, quint32 alpha16, int profile)
{
    VelaColor color;
    color.setYxy(capY, x, y, alpha16, profile);
    return color;
}

} // namespace

void VelaColorTextTest::writesText_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::addColumn<QString>("text");
    QTest::newRow("RGB") << VelaColor(0x1234, 0xABCD, 0, 0xFFFF)
                         << QStringLiteral("aRgb;1;0;#ffff1234abcd0000");
    VelaColor odd = VelaColor::fromRgb(255, 1, 2, 128, 7);
    odd.setChannelLayout(5);
    QTest::newRow("RGB with layout and profile")
        << odd << QStringLiteral("aRgb;5;7;#8080ffff01010202");
    VelaColor hsv = VelaColor::fromHsv(240, 255, 255, 255, 9);
    hsv.setChannelLayout(3);
    QTest::newRow("HSV as RGB, own layout and profile")
        << hsv << QStringLiteral("aRgb;3;9;#ffff00000000ffff");
    QTest::newRow("Yxy") << yxy(1.0, 0.3127, 0.329, 65535, 12)
                         << QStringLiteral("aYxy;1;12;65535;1.000000;0.312700;0.329000");
    QTest::newRow("Yxy, six decimals") << yxy(0.12345678, 2.0 / 3.0, -1e-7, 1, 0)
                                       << QStringLiteral("aYxy;1;0;1;0.123457;0.666667;-0.000000");
    VelaColor channels;
    channels.setNchannel16({0x8000, 1, 2, 3, 65535}, 6, 5, true);
    channels.setFromYxy(1);
    QTest::newRow("channels") << channels << QStringLiteral("aNchannel;6;5;32768;1;2;3;65535;1;1");
    channels.setTintweave(false);
    channels.setFromYxy(0);
    QTest::newRow("channels, nominal")
        << channels << QStringLiteral("aNchannel;6;5;32768;1;2;3;65535;0;0");
    VelaColor high = VelaColor::fromRgb(0, 0, 0);
    high.setProfileId(0xFFFFFFFFU);
    QTest::newRow("signed numbers") << high << QStringLiteral("aRgb;1;-1;#ffff000000000000");
    QTest::newRow("invalid") << VelaColor() << QString();
}

void VelaColorTextTest::writesText()
{
    QFETCH(const VelaColor, color);
    QTEST(color.toString(), "text");
}

void VelaColorTextTest::readsBackWhatItWrote_data()
{
    QTest::addColumn<QString>("text");
    for (const char* const text :
         {"aRgb;1;0;#ffff1234abcd0001", "aYxy;1;0;65535;1.000000;0.312700;0.329000",
          "aYxy;6;0;0;0.000000;0.700000;0.300000", "aNchannel;6;5;65535;1;2;3;4;0;1",
          "aNchannel;7;27;12;65535;0;1;0", "aNchannel;2;1;0;1;2;3;4;5;1;1",
          "aNchannel;4;4;65535;77;0;0"}) {
        QTest::newRow(text) << QString::fromLatin1(text);
    }
}

void VelaColorTextTest::readsBackWhatItWrote()
{
    QFETCH(const QString, text);
    QCOMPARE(read(text).toString(), text);
}

void VelaColorTextTest::rgbTextLosesLayoutAndProfile()
{
    const VelaColor color = read("aRgb;5;7;#ffffffff00000000");
    QCOMPARE(color.spec(), VelaColor::Rgb);
    QCOMPARE(color.channelLayout(), 1U);
    QCOMPARE(color.profileId(), 0U);
    QVERIFY(color == VelaColor::fromRgb(255, 0, 0));
    // Sixteen digits are alpha, red, green, blue.
    QVERIFY(read("aRgb;5;7;#ffff000000000000") == VelaColor::fromRgb(0, 0, 0));
    QVERIFY(read("aRgb;;;#00ff00") == VelaColor::fromRgb(0, 255, 0));
}

void VelaColorTextTest::yxyTextKeepsItsLayout()
{
    VelaColor color = read("aYxy;1;12;65535;1.000000;0.312700;0.329000");
    QCOMPARE(color.spec(), VelaColor::Yxy);
    QCOMPARE(color.channelLayout(), 1U);
    QCOMPARE(color.profileId(), 0U);
    QCOMPARE(color.capY(), 1.0);
    QCOMPARE(color.smallX(), 0.3127);
    QCOMPARE(color.smallY(), 0.329);
    color = read("aYxy;6;12;32768;0.5;0.25;0.125");
    QCOMPARE(color.channelLayout(), 6U);
    QCOMPARE(color.profileId(), 0U);
    QCOMPARE(color.alpha32(), 0x80008000U);
    color = read("aYxy;6;12;65536;0.5;0.25;0.125"); // alpha out of range
    QCOMPARE(color.spec(), VelaColor::Invalid);
    QCOMPARE(color.channelLayout(), 1U);
    QCOMPARE(color.capY(), 0.5);
}

void VelaColorTextTest::yxyTextTakesAnyDouble_data()
{
    QTest::addColumn<QString>("field");
    QTest::newRow("NaN") << QStringLiteral("nan");
    QTest::newRow("infinite") << QStringLiteral("inf");
    QTest::newRow("huge") << QStringLiteral("1e308");
    QTest::newRow("negative") << QStringLiteral("-1e308");
    QTest::newRow("no number") << QStringLiteral("x");
}

void VelaColorTextTest::yxyTextTakesAnyDouble()
{
    QFETCH(const QString, field);
    const VelaColor color = read(QStringLiteral("aYxy;1;0;65535;%1;%1;%1").arg(field));
    QCOMPARE(color.spec(), VelaColor::Yxy);
    // Whatever it holds, each use of it ends in a value.
    QVERIFY(color.toString().startsWith(QLatin1String("aYxy;1;0;65535;")));
    QVERIFY(color.toQColor(true).isValid());
    QVERIFY(color.toQColor(false).isValid());
    QVERIFY(color.toHsv().hue8() <= 359);
    QVERIFY(color.toNchannel(3, 6, -1, 1).spec() == VelaColor::Nchannel);
    QVERIFY(composite(VelaColor::fromRgb(1, 2, 3, 4), color).isValid());
    QVERIFY(interpolate(VelaColor::fromRgb(1, 2, 3, 4), color, 0.5).isValid());
    QCOMPARE(qHash(color), qHash(VelaColor(color)));
    if (field == QLatin1String("x")) {
        QCOMPARE(color.capY(), 0.0);
    }
}

void VelaColorTextTest::channelTextReadsBlindly_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("written"); // empty for an invalid colour
    const auto row = [](const char* name, const char* text, const char* written) {
        QTest::newRow(name) << QString::fromLatin1(text) << QString::fromLatin1(written);
    };
    row("whole", "aNchannel;6;5;65535;1;2;3;4;0;1", "aNchannel;6;5;65535;1;2;3;4;0;1");
    row("cut behind the channels", "aNchannel;6;5;65535;1;2;3;4",
        "aNchannel;6;5;65535;1;2;3;4;0;1");
    row("cut behind fromYxy", "aNchannel;6;5;65535;1;2;3;4;1", "aNchannel;6;5;65535;1;2;3;4;1;1");
    row("nominal", "aNchannel;6;5;65535;1;2;3;4;1;0", "aNchannel;6;5;65535;1;2;3;4;1;0");
    row("any other number is a set flag", "aNchannel;6;5;65535;1;2;3;4;1;7",
        "aNchannel;6;5;65535;1;2;3;4;1;1");
    row("channels missing", "aNchannel;6;5;65535;1", "aNchannel;6;5;65535;1;0;0;0;0;1");
    row("a channel that is no number", "aNchannel;6;5;65535;1;x;-3;4;0;1",
        "aNchannel;6;5;65535;1;0;0;4;0;1");
    row("fields behind", "aNchannel;6;5;65535;1;2;3;4;0;1;9;9", "aNchannel;6;5;65535;1;2;3;4;0;1");
    row("layout without channels", "aNchannel;12;5;65535;1;1", "aNchannel;12;5;65535;1;1");
    row("layout that is no number", "aNchannel;x;5;65535;1;0", "aNchannel;0;5;65535;1;0");
    row("negative profile", "aNchannel;4;-2;65535;1;0;1", "aNchannel;4;-2;65535;1;0;1");
}

void VelaColorTextTest::channelTextReadsBlindly()
{
    QFETCH(const QString, text);
    const VelaColor color = read(text);
    QCOMPARE(color.spec(), VelaColor::Nchannel);
    QTEST(color.toString(), "written");
}

void VelaColorTextTest::channelTextWithBadAlphaIsInvalid()
{
    const VelaColor color = read("aNchannel;6;5;65536;1;2;3;4");
    QVERIFY(!color.isValid());
    QCOMPARE(color.channelLayout(), 1U);
    QCOMPARE(color.profileId(), 0U);
    QCOMPARE(color.alpha32(), 0xFFFFFFFFU);
    QVERIFY(color.toString().isEmpty());
}

void VelaColorTextTest::channelsWrapIn32Bits()
{
    const VelaColor color = read("aNchannel;4;4;65535;65537;0;1");
    QCOMPARE(color.channel32(0), 0x00020001U); // 0x10001 x 0x10001 is 0x100020001
}

void VelaColorTextTest::refusesSilently_data()
{
    QTest::addColumn<QString>("text");
    for (const char* const text :
         {"", "a;b;c", ";;", "aRgb;1;0", "aRgb;1;0;#ffff;1", "aRgb;1;0;#12345678901234567",
          "aYxy;1;0;65535;1;1", "aYxy;1;0;65535;1;1;1;1", "aYxy;1;0;65535", "aNchannel;1;0",
          "#123456789012345678", "#12345678901234567"}) {
        QTest::newRow(text) << QString::fromLatin1(text);
    }
}

void VelaColorTextTest::refusesSilently()
{
    QFETCH(const QString, text);
    static int messages;
    messages = 0;
    VelaColor color = VelaColor::fromNchannelF({0.5, 1, 1}, 7, 27, false);
    const QtMessageHandler old = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString&) { ++messages; });
    color.setNamedColor(text);
    qInstallMessageHandler(old);
    QCOMPARE(messages, 0);
    QVERIFY(isResetState(color));
}

void VelaColorTextTest::readsHex_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("written");
    const auto row = [](const char* text, const char* written) {
        QTest::newRow(text) << QString::fromLatin1(text)
                            << QLatin1String("aRgb;1;0;") + QLatin1String(written);
    };
    row("#abcdef", "#ffffababcdcdefef");
    row("#ABCDEF", "#ffffababcdcdefef");
    row("#80abcdef", "#8080ababcdcdefef");
    row("#123456789abc", "#ffff123456789abc");
    row("#00ff123456789aBc", "#00ff123456789abc");
    row("aRgb;1;0;#abcdef", "#ffffababcdcdefef");
    row("aRgb;1;0;#80abcdef", "#8080ababcdcdefef");
}

void VelaColorTextTest::readsHex()
{
    QFETCH(const QString, text);
    const VelaColor color = read(text);
    QCOMPARE(color.spec(), VelaColor::Rgb);
    QTEST(color.toString(), "written");
}

void VelaColorTextTest::hexOutOfRangeWarns_data()
{
    QTest::addColumn<QString>("text");
    for (const char* const text : {"#",
                                   "#1",
                                   "#12",
                                   "#123",
                                   "#1234567",
                                   "#123456789",
                                   "#123456789012345",
                                   "#gg0000",
                                   "#0g0000",
                                   "#00g000",
                                   "#0000g0",
                                   "#0000 0",
                                   "#x0123456",
                                   "#000g00000000",
                                   "#00000g000000",
                                   "#0000000000g0",
                                   "#00000000000000-1",
                                   "#ff;1;2;3",
                                   "aRgb;1;0;#12",
                                   "aRgb;1;0;#00zz00",
                                   "aRgb;1;0;#"}) {
        QTest::newRow(text) << QString::fromLatin1(text);
    }
    QTest::newRow("beyond Latin-1") << QString::fromUtf8("#00\u4e2d\u6587"
                                                         "00");
}

void VelaColorTextTest::hexOutOfRangeWarns()
{
    QFETCH(const QString, text);
    QTest::ignoreMessage(QtWarningMsg, "VelaColor::setRgb16: RGB parameters out of range");
    VelaColor color = VelaColor::fromNchannelF({0.5, 1, 1}, 7, 27, false);
    color.setNamedColor(text);
    QVERIFY(isResetState(color));
}

void VelaColorTextTest::readsNames_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QRgb>("rgba");
    QTest::newRow("red") << QStringLiteral("red") << qRgba(255, 0, 0, 255);
    QTest::newRow("case") << QStringLiteral("DarkOrange") << qRgba(255, 140, 0, 255);
    QTest::newRow("blanks") << QStringLiteral("dark orange") << qRgba(255, 140, 0, 255);
    QTest::newRow("transparent") << QStringLiteral("transparent") << qRgba(0, 0, 0, 0);
}

void VelaColorTextTest::readsNames()
{
    QFETCH(const QString, text);
    const VelaColor color = read(text);
    QCOMPARE(color.spec(), VelaColor::Rgb);
    QCOMPARE(color.profileId(), 0U);
    QTEST(color.toQColor(true).rgba(), "rgba");
}

void VelaColorTextTest::unknownNamesWarnOnce_data()
{
    QTest::addColumn<QString>("text");
    for (const char* const text : {"Qt::white", "no such colour", " ", "aRgb;1;0;ff0000",
                                   "aHsv;1;0;0;0", "a;b;c;d", "ffffff"}) {
        QTest::newRow(text) << QString::fromLatin1(text);
    }
}

void VelaColorTextTest::unknownNamesWarnOnce()
{
    QFETCH(const QString, text);
    static QStringList messages;
    messages.clear();
    VelaColor color = VelaColor::fromNchannelF({0.5, 1, 1}, 7, 27, false);
    const QtMessageHandler old =
        qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& line) {
            messages << QString::number(type) + QLatin1Char(' ') + line;
        });
    color.setNamedColor(text);
    qInstallMessageHandler(old);
    QCOMPARE(messages,
             QStringList(QStringLiteral("%1 VelaColor::setNamedColor: Unknown color name '%2'")
                             .arg(QtWarningMsg)
                             .arg(text)));
    QVERIFY(isResetState(color));
}

void VelaColorTextTest::readingLeavesTintweaveToTheText()
{
    QCOMPARE(VelaColor(QStringLiteral("red")).tintweave(), false);
    QCOMPARE(VelaColor(QStringLiteral("aRgb;1;0;#ffff00000000ffff")).tintweave(), false);
    QCOMPARE(VelaColor(QStringLiteral("aYxy;1;0;65535;1;0.3;0.3")).tintweave(), false);
    QCOMPARE(VelaColor(QStringLiteral("aNchannel;4;4;65535;1;0;1")).tintweave(), true);
    QCOMPARE(VelaColor(QStringLiteral("aNchannel;4;4;65535;1;0;0")).tintweave(), false);
    QCOMPARE(VelaColor(QStringLiteral("aNchannel;4;4;65535;1")).tintweave(), true);
    QCOMPARE(VelaColor(QString()).tintweave(), true); // a reset
    QCOMPARE(read("red").tintweave(), true);          // as it was
}

void VelaColorTextTest::hsvIsWrittenAsRgb()
{
    const VelaColor back = read(VelaColor::fromHsv(120, 255, 255).toString());
    QCOMPARE(back.spec(), VelaColor::Rgb);
    QVERIFY(back == VelaColor::fromRgb(0, 255, 0));
}

void VelaColorTextTest::namesAndLists()
{
    QCOMPARE(VelaColor::fromRgb(1, 0xAB, 255, 3).name(), QStringLiteral("#01abff"));
    QCOMPARE(VelaColor::fromHsv(240, 255, 255).name(), QStringLiteral("#0000ff"));
    QCOMPARE(VelaColor().name(), QStringLiteral("#000000"));
    VelaColor color;
    color.setNchannel8({255, 1, 20, 200}, 3, 6, true);
    QCOMPARE(color.channelsText(), QStringLiteral("255,1,20,200 Tintweave"));
    color.setTintweave(false);
    QCOMPARE(color.channelsText(), QStringLiteral("255,1,20,200"));
}

QTEST_APPLESS_MAIN(VelaColorTextTest)
#include "VelaColorTextTest.moc"
