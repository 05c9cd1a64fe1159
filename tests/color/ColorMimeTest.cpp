#include "color/ColorMime.h"

#include <QMimeData>
#include <QObject>
#include <QtTest>

namespace {

const QString kColor = QStringLiteral("data/x-velacolor");
const QString kName = QStringLiteral("data/x-velacolor-name");
const QString kVendorId = QStringLiteral("data/x-velacolor-vendorid");
const QString kPreset = QStringLiteral("data/x-velacolor-originatingPreset");
const QString kOld = QStringLiteral("x-sorrel3/color");

QByteArray latin1(const VelaColor& color)
{
    return color.toString().toLatin1();
}

} // namespace

class ColorMimeTest : public QObject
{
    Q_OBJECT
private slots:
    void namesTheFormats();
    void writesEachFormat();
    void readsEitherFamily_data();
    void readsEitherFamily();
    void everyKindOfColorTravels_data();
    void everyKindOfColorTravels();
    void refusesWhatIsNoColor_data();
    void refusesWhatIsNoColor();
    void theFirstFormatWinsUnlessItIsNoColor();
    void severalTravelTogether();
    void oneOfSeveralWithoutAColorStays();
    void aSelectionWithoutColorsWritesNothing();
    void fewerNamesThanColorsLeaveTheRestEmpty();
    void aLineBreakInANameSurvivesAlone();
};

void ColorMimeTest::namesTheFormats()
{
    QCOMPARE(ColorMime::formats(), QStringList({kColor, kName, kVendorId, kPreset, kOld}));
}

void ColorMimeTest::writesEachFormat()
{
    QMimeData data;
    ColorMime::writeColor(&data, Qt::red, QStringLiteral("Röt"), QStringLiteral("id"),
                          QStringLiteral("set"));
    QCOMPARE(data.formats(), ColorMime::formats());
    QCOMPARE(data.data(kColor), QByteArray("aRgb;1;0;#ffffffff00000000"));
    QCOMPARE(data.data(kName), QByteArray("R\xC3\xB6t"));
    QCOMPARE(data.data(kVendorId), QByteArray("id"));
    QCOMPARE(data.data(kPreset), QByteArray("set"));
    QCOMPARE(data.data(kOld), data.data(kColor));
}

void ColorMimeTest::readsEitherFamily_data()
{
    QTest::addColumn<QString>("format");
    QTest::newRow("today's") << kColor;
    QTest::newRow("older") << kOld;
}

void ColorMimeTest::readsEitherFamily()
{
    QFETCH(const QString, format);
    QMimeData data;
    data.setData(format, latin1(Qt::green));
    data.setData(kName, "Grün");
    VelaColor color;
    QString name;
    QString id = QStringLiteral("before");
    QString preset = QStringLiteral("before");
    QVERIFY(ColorMime::readColor(&data, &color, &name, &id, &preset));
    QVERIFY(color == VelaColor(Qt::green));
    QCOMPARE(name, QStringLiteral("Grün"));
    QCOMPARE(id, QString());
    QCOMPARE(preset, QString());
    QVERIFY(ColorMime::readColor(&data, nullptr));
    QCOMPARE(ColorMime::readColors(&data).size(), 1);
}

void ColorMimeTest::everyKindOfColorTravels_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("rgb") << QStringLiteral("aRgb;1;0;#8000ffff00001234");
    QTest::newRow("white") << QStringLiteral("aYxy;1;0;65535;1.000000;0.457660;0.409830");
    QTest::newRow("channels") << QStringLiteral("aNchannel;1;0;65535;65535;0;32896;0;0");
}

void ColorMimeTest::everyKindOfColorTravels()
{
    QFETCH(const QString, text);
    QMimeData data;
    ColorMime::writeColor(&data, VelaColor(text), QString(), QString(), QString());
    VelaColor color;
    QVERIFY(ColorMime::readColor(&data, &color));
    QCOMPARE(color.toString(), text);
}

void ColorMimeTest::refusesWhatIsNoColor_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("a blank") << QByteArray(" ");
    QTest::newRow("a line break") << QByteArray("\n");
    QTest::newRow("a word") << QByteArray("nonsense");
    QTest::newRow("too few fields") << QByteArray("aYxy;1;0;65535");
    QTest::newRow("bytes") << QByteArray("\x00\xFF\x80;;;;", 7);
    QTest::newRow("a megabyte") << QByteArray(1 << 20, 'x');
    QTest::newRow("a color in front of a megabyte") << "#ff0000" + QByteArray(1 << 20, ' ');
}

void ColorMimeTest::refusesWhatIsNoColor()
{
    QFETCH(const QByteArray, content);
    for (const QString& format : {kColor, kOld}) {
        QMimeData data;
        data.setData(format, content);
        data.setData(kName, "name");
        VelaColor color(Qt::red);
        QString name = QStringLiteral("before");
        QVERIFY(!ColorMime::readColor(&data, &color, &name));
        QVERIFY(color == VelaColor(Qt::red));
        QCOMPARE(name, QStringLiteral("before"));
        QVERIFY(ColorMime::readColors(&data).isEmpty());
    }
    QMimeData text;
    text.setText(QStringLiteral("red"));
    QVERIFY(!ColorMime::readColor(&text, nullptr));
    QVERIFY(!ColorMime::readColor(nullptr, nullptr));
}

void ColorMimeTest::theFirstFormatWinsUnlessItIsNoColor()
{
    QMimeData data;
    data.setData(kColor, latin1(Qt::red));
    data.setData(kOld, latin1(Qt::blue));
    VelaColor color;
    QVERIFY(ColorMime::readColor(&data, &color));
    QVERIFY(color == VelaColor(Qt::red));
    data.setData(kColor, "nonsense");
    QVERIFY(ColorMime::readColor(&data, &color));
    QVERIFY(color == VelaColor(Qt::blue));
}

void ColorMimeTest::severalTravelTogether()
{
    QMimeData data;
    const VelaColor white(0.31, 0.32);
    ColorMime::writeColors(&data, {{Qt::red, QStringLiteral("a\nb"), QStringLiteral("1"), {}},
                                   {white, {}, {}, QStringLiteral("P")},
                                   {Qt::blue, QStringLiteral("c"), {}, {}}});
    QCOMPARE(data.data(kColor), latin1(Qt::red) + '\n' + latin1(white) + '\n' + latin1(Qt::blue));
    const QVector<ColorMime::Swatch> read = ColorMime::readColors(&data);
    QCOMPARE(read.size(), 3);
    QCOMPARE(read.at(0).name, QStringLiteral("a b"));
    QCOMPARE(read.at(0).colorId, QStringLiteral("1"));
    QCOMPARE(read.at(1).color.toString(), white.toString());
    QCOMPARE(read.at(1).name, QString());
    QCOMPARE(read.at(1).originatingPreset, QStringLiteral("P"));
    QVERIFY(read.at(2).color == VelaColor(Qt::blue));
    QCOMPARE(read.at(2).name, QStringLiteral("c"));
    QString name;
    VelaColor first;
    QVERIFY(ColorMime::readColor(&data, &first, &name));
    QVERIFY(first == VelaColor(Qt::red));
    QCOMPARE(name, QStringLiteral("a b"));
    data.setData(kColor, latin1(Qt::red) + "\nnonsense\n" + latin1(Qt::blue));
    data.setData(kOld, "nonsense");
    QVERIFY(ColorMime::readColors(&data).isEmpty()); // all or nothing
}

void ColorMimeTest::oneOfSeveralWithoutAColorStays()
{
    QMimeData data;
    ColorMime::writeColors(&data, {{VelaColor(), QStringLiteral("none"), {}, {}},
                                   {Qt::red, QStringLiteral("red"), {}, {}}});
    const QVector<ColorMime::Swatch> read = ColorMime::readColors(&data);
    QCOMPARE(read.size(), 1);
    QCOMPARE(read.first().name, QStringLiteral("red"));
}

void ColorMimeTest::aSelectionWithoutColorsWritesNothing()
{
    QMimeData data;
    ColorMime::writeColors(&data, {});
    ColorMime::writeColors(&data, {{VelaColor(), {}, {}, {}}, {VelaColor(), {}, {}, {}}});
    QVERIFY(data.formats().isEmpty());
}

void ColorMimeTest::fewerNamesThanColorsLeaveTheRestEmpty()
{
    QMimeData data;
    data.setData(kOld, latin1(Qt::red) + '\n' + latin1(Qt::blue));
    data.setData(kName, "only");
    const QVector<ColorMime::Swatch> read = ColorMime::readColors(&data);
    QCOMPARE(read.size(), 2);
    QCOMPARE(read.at(0).name, QStringLiteral("only"));
    QCOMPARE(read.at(1).name, QString());
}

void ColorMimeTest::aLineBreakInANameSurvivesAlone()
{
    QMimeData data;
    ColorMime::writeColors(&data, {{Qt::red, QStringLiteral("a\nb"), {}, {}}});
    QCOMPARE(ColorMime::readColors(&data).first().name, QStringLiteral("a\nb"));
}

QTEST_GUILESS_MAIN(ColorMimeTest)
#include "ColorMimeTest.moc"
