#include "color/ProfileTable.h"

#include "color/BuiltInPrimaries.h"
#include "color/ColorProfile.h"
#include "color/ColorUtils.h"
#include "resources/Resources.h"

#include <QBuffer>
#include <QDomDocument>
#include <QFile>
#include <QObject>
#include <QSet>
#include <QtTest>

#include <cmath>

namespace {

ColorProfile* record(int id, int primarySet)
{
    return ProfileTable::instance().profile(id, ColorUtils::layoutOfProfile(id), primarySet);
}

ColorProfile builtIn(int id, int layout, int primarySet)
{
    ColorProfile values;
    setBuiltInPrimaries(&values, id, layout, primarySet);
    return values;
}

bool overlayText(const char* text)
{
    QByteArray bytes(text);
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return ProfileTable::instance().overlay(&buffer);
}

QString profileFile()
{
    return QStringLiteral(":/FixtureProfiles.xml");
}

bool isClose(const QPointF& a, double x, double y)
{
    return std::abs(a.x() - x) < 2e-4 && std::abs(a.y() - y) < 2e-4;
}

/// Inside the horseshoe of real light: the CIE 1931 spectral locus, every 20 nm or closer.
bool isRealLight(double x, double y)
{
    const QPolygonF locus(QVector<QPointF>{
        {0.1741, 0.0050}, {0.1714, 0.0051}, {0.1644, 0.0109}, {0.1566, 0.0177}, {0.1440, 0.0297},
        {0.1241, 0.0578}, {0.0913, 0.1327}, {0.0454, 0.2950}, {0.0082, 0.5384}, {0.0139, 0.7502},
        {0.0743, 0.8338}, {0.1547, 0.8059}, {0.2296, 0.7543}, {0.3016, 0.6923}, {0.3731, 0.6245},
        {0.4441, 0.5547}, {0.5125, 0.4866}, {0.5752, 0.4242}, {0.6270, 0.3725}, {0.6658, 0.3340},
        {0.6915, 0.3083}, {0.7190, 0.2809}, {0.7347, 0.2653}});
    return locus.containsPoint(QPointF(x, y), Qt::OddEvenFill);
}

} // namespace

class ProfileTableTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanup();
    void oneIdHasOneRecordPerSet();
    void unknownIdsTakeTheGenericPrimaries_data();
    void unknownIdsTakeTheGenericPrimaries();
    void idZeroTakesItsBuiltInValuesByLayout_data();
    void idZeroTakesItsBuiltInValuesByLayout();
    void theGenericGamutIsRec709();
    void bothSetsHaveTheCalibratedGamut();
    void everyEmitterIsRealLight();
    void theFileHolds40ProfilesOfSixValues();
    void theFileAgreesWithTheBuiltInValues();
    void calibratedAndNominalDiffer();
    void aProfileOfTheFileReplacesBothSets();
    void nominalValuesNeedAllThree();
    void channelsAreInsertedAtTheirIndex();
    void aProfileWithoutIndexIsSkipped();
    void aBadIndexStopsTheReading_data();
    void aBadIndexStopsTheReading();
    void index47OnlyMakesARecord();
    void brokenFilesKeepWhatWasRead();
    void theSnapPointsFollowTheGenericRecord();
};

void ProfileTableTest::initTestCase()
{
    initForgeResources();
    ProfileTable::instance();
}

void ProfileTableTest::cleanup()
{
    QFile file(profileFile()); // undoes what a test laid over it
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(ProfileTable::instance().overlay(&file));
}

void ProfileTableTest::oneIdHasOneRecordPerSet()
{
    for (int id = 0; id < 47; ++id) {
        QVERIFY(record(id, 0) == record(id, 0));
        QVERIFY(record(id, 0) != record(id, 1));
        QCOMPARE(record(id, 1)->profileId, id);
    }
    // Made with layout 1 when the table was built; later layouts do not matter.
    ColorProfile* const generic = ProfileTable::instance().profile(0, 1, 0);
    QVERIFY(ProfileTable::instance().profile(0, 2, 0) == generic);
    QVERIFY(ProfileTable::instance().profile(0, 5, 0) == generic);
    QCOMPARE(generic->X.size(), 3);
}

void ProfileTableTest::unknownIdsTakeTheGenericPrimaries_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("layout");
    QTest::newRow("just above") << 47 << 1;
    QTest::newRow("far above") << 1000000 << 2;
    QTest::newRow("negative") << -3 << 3;
}

void ProfileTableTest::unknownIdsTakeTheGenericPrimaries()
{
    QFETCH(const int, id);
    QFETCH(const int, layout);
    for (const int primarySet : {0, 1}) {
        const ColorProfile* const made = ProfileTable::instance().profile(id, layout, primarySet);
        QCOMPARE(made->profileId, id);
        QCOMPARE(made->X, record(0, 0)->X);
        QCOMPARE(made->Y, record(0, 0)->Y);
        QCOMPARE(made->Z, record(0, 0)->Z);
        QCOMPARE(made->channelNames, record(0, 0)->channelNames);
        QCOMPARE(made->gamutPoints, record(0, 0)->gamutPoints);
        QVERIFY(ProfileTable::instance().profile(id, layout, primarySet) == made);
    }
}

void ProfileTableTest::idZeroTakesItsBuiltInValuesByLayout_data()
{
    QTest::addColumn<int>("layout");
    QTest::addColumn<int>("valuesOf");
    QTest::newRow("RGB") << 1 << 0;
    QTest::newRow("RGBAW") << 2 << 1;
    QTest::newRow("RGB, mint, white") << 5 << 2;
    QTest::newRow("RGBW") << 3 << 3;
    QTest::newRow("RGBA") << 6 << 0;
}

void ProfileTableTest::idZeroTakesItsBuiltInValuesByLayout()
{
    QFETCH(const int, layout);
    QFETCH(const int, valuesOf);
    for (const int primarySet : {0, 1}) {
        const ColorProfile got = builtIn(0, layout, primarySet);
        const ColorProfile expected = builtIn(valuesOf, 1, primarySet);
        QVERIFY(!got.X.isEmpty());
        QCOMPARE(got.X, expected.X);
        QCOMPARE(got.Y, expected.Y);
        QCOMPARE(got.Z, expected.Z);
        QCOMPARE(got.channelNames, expected.channelNames);
    }
    QVERIFY(builtIn(1, 1, 0).X != builtIn(0, 1, 0).X);
}

void ProfileTableTest::theGenericGamutIsRec709()
{
    const ColorProfile* const generic = record(0, 0);
    QCOMPARE(generic->X, (QVector<double>{0.4123, 0.3577, 0.1803}));
    QCOMPARE(generic->Y, (QVector<double>{0.2126, 0.7153, 0.0721}));
    QCOMPARE(generic->Z, (QVector<double>{0.0193, 0.1192, 0.9493}));
    QCOMPARE(generic->gamutPoints.size(), 3);
    QVERIFY(isClose(generic->gamutPoints.at(0), 0.64, 0.33));
    QVERIFY(isClose(generic->gamutPoints.at(1), 0.30, 0.60));
    QVERIFY(isClose(generic->gamutPoints.at(2), 0.15, 0.06));
    QCOMPARE(generic->gamut, QPolygonF(generic->gamutPoints));
}

void ProfileTableTest::bothSetsHaveTheCalibratedGamut()
{
    for (const int id : {1, 5, 7, 13, 26, 40}) {
        const ColorProfile* const calibrated = record(id, 0);
        const ColorProfile* const nominal = record(id, 1);
        for (int k = 0; k < 3; ++k) { // from the first three emitters, however many there are
            const double sum = calibrated->X.at(k) + calibrated->Y.at(k) + calibrated->Z.at(k);
            QVERIFY(isClose(calibrated->gamutPoints.at(k), calibrated->X.at(k) / sum,
                            calibrated->Y.at(k) / sum));
        }
        QVERIFY(nominal->X != calibrated->X);
        QCOMPARE(nominal->gamutPoints, calibrated->gamutPoints);
    }
}

void ProfileTableTest::everyEmitterIsRealLight()
{
    for (int id = 0; id < 47; ++id) {
        for (const int primarySet : {0, 1}) {
            const ColorProfile* const emitters = record(id, primarySet);
            QCOMPARE(emitters->Y.size(), emitters->X.size());
            QCOMPARE(emitters->Z.size(), emitters->X.size());
            for (int k = 0; k < emitters->X.size(); ++k) {
                const double X = emitters->X.at(k);
                const double Y = emitters->Y.at(k);
                const double Z = emitters->Z.at(k);
                // A thousandth towards white: pure red lies on the locus itself.
                const double x = X / (X + Y + Z) * 0.998 + 0.333 * 0.002;
                const double y = Y / (X + Y + Z) * 0.998 + 0.333 * 0.002;
                QVERIFY2(Y > 0.0 && isRealLight(x, y),
                         qPrintable(QStringLiteral("profile %1 channel %2").arg(id).arg(k)));
            }
        }
    }
}

void ProfileTableTest::theFileHolds40ProfilesOfSixValues()
{
    QFile file(profileFile());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QDomDocument document;
    QVERIFY(document.setContent(&file));
    const QDomElement root = document.documentElement();
    QCOMPARE(root.tagName(), QStringLiteral("Profiles"));
    QSet<int> ids;
    for (QDomElement profile = root.firstChildElement(); !profile.isNull();
         profile = profile.nextSiblingElement()) {
        QCOMPARE(profile.tagName(), QStringLiteral("Profile"));
        const int id = profile.attribute(QStringLiteral("index")).toInt();
        QVERIFY(!ids.contains(id));
        ids.insert(id);
        QCOMPARE(profile.attribute(QStringLiteral("name")), ColorUtils::nameOfProfile(id));
        int channels = 0;
        for (QDomElement channel = profile.firstChildElement(); !channel.isNull();
             channel = channel.nextSiblingElement()) {
            QCOMPARE(channel.tagName(), QStringLiteral("Channel"));
            QCOMPARE(channel.attribute(QStringLiteral("index")), QString::number(channels));
            QVERIFY(!channel.attribute(QStringLiteral("name")).isEmpty());
            for (const char* const key : {"X", "Y", "Z", "Xn", "Yn", "Zn"}) {
                bool ok = false;
                channel.attribute(QString::fromLatin1(key)).toDouble(&ok);
                QVERIFY(ok);
            }
            ++channels;
        }
        QCOMPARE(channels, ColorUtils::channelCount(ColorUtils::layoutOfProfile(id)));
    }
    QCOMPARE(ids.size(), 40);
    for (const int absent : {4, 23, 24, 27, 28, 29, 30}) {
        QVERIFY(!ids.contains(absent));
    }
}

void ProfileTableTest::theFileAgreesWithTheBuiltInValues()
{
    for (int id = 0; id < 47; ++id) {
        for (const int primarySet : {0, 1}) {
            const ColorProfile expected = builtIn(id, ColorUtils::layoutOfProfile(id), primarySet);
            QCOMPARE(record(id, primarySet)->X, expected.X);
            QCOMPARE(record(id, primarySet)->Y, expected.Y);
            QCOMPARE(record(id, primarySet)->Z, expected.Z);
            if (id != 33) {
                QCOMPARE(record(id, primarySet)->channelNames, expected.channelNames);
            }
        }
    }
    const QStringList lime = builtIn(33, 3, 0).channelNames;
    QCOMPARE(lime.at(2), QStringLiteral("Deep-Blue"));
    QCOMPARE(record(33, 0)->channelNames.at(2), QStringLiteral("Royal-Blue"));
}

void ProfileTableTest::calibratedAndNominalDiffer()
{
    for (int id = 0; id < 47; ++id) {
        const bool measured = ColorUtils::curveOfProfile(id) == 1 || id == 26 || id == 40;
        QCOMPARE(record(id, 0)->X != record(id, 1)->X, measured);
    }
}

void ProfileTableTest::aProfileOfTheFileReplacesBothSets()
{
    QVERIFY(
        overlayText("<Profiles><Profile index='10' name='Renamed'>"
                    "<Channel index='0' name='A' X='.64' Y='.33' Z='.03' Xn='1.5' Yn='.5' Zn='0'/>"
                    "<Channel index='1' name='B' X='.3' Y='.6' Z='.1' Xn='.3' Yn='.6' Zn='.1'/>"
                    "<Channel index='2' name='C' X='.2' Y='.1' Z='.7' Xn='.2' Yn='.1' Zn='.7'/>"
                    "</Profile></Profiles>"));
    QCOMPARE(record(10, 0)->X, (QVector<double>{0.64, 0.3, 0.2}));
    QCOMPARE(record(10, 0)->Z, (QVector<double>{0.03, 0.1, 0.7}));
    QCOMPARE(record(10, 1)->X, (QVector<double>{1.5, 0.3, 0.2}));
    QCOMPARE(record(10, 0)->channelNames,
             (QStringList{QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C")}));
    QCOMPARE(record(10, 1)->channelNames, record(10, 0)->channelNames);
    QVERIFY(isClose(record(10, 0)->gamutPoints.at(2), 0.2, 0.1)); // worked out anew
    QCOMPARE(ColorUtils::nameOfProfile(10), QStringLiteral("Calibrated RGB 10"));
}

void ProfileTableTest::nominalValuesNeedAllThree()
{
    const QVector<double> before = record(10, 1)->X;
    QVERIFY(overlayText("<Profiles><Profile index='10'>"
                        "<Channel index='0' name='A' X='.5' Y='.5' Z='.5' Xn='9' Yn='9'/>"
                        "</Profile></Profiles>"));
    QCOMPARE(record(10, 0)->X, QVector<double>{0.5});
    QCOMPARE(record(10, 1)->X, before);
}

void ProfileTableTest::channelsAreInsertedAtTheirIndex()
{
    QVERIFY(overlayText("<Profiles><Profile index='10'><Note/>"
                        "<Channel index='0' name='last' X='.3' Y='1' Z='1'/>"
                        "<Channel index='0' name='first' X='.1' Y='1' Z='x'/>"
                        "<Channel index='1' name='second' X='nan' Y='1' Z='1'/>"
                        "</Profile></Profiles>"));
    QCOMPARE(record(10, 0)->X, (QVector<double>{0.1, 0.0, 0.3}));
    QCOMPARE(record(10, 0)->Z, (QVector<double>{0.0, 1.0, 1.0}));
    QCOMPARE(record(10, 0)->channelNames.join(QLatin1Char(' ')),
             QStringLiteral("first second last"));
}

void ProfileTableTest::aProfileWithoutIndexIsSkipped()
{
    QVERIFY(overlayText("<Profiles>"
                        "<Profile name='none'><Channel index='0' X='9' Y='9' Z='9'/></Profile>"
                        "<Profile index='-1'><Channel index='0' X='9' Y='9' Z='9'/></Profile>"
                        "<Profile index='10'><Channel index='0' X='.25' Y='1' Z='1'/></Profile>"
                        "</Profiles>"));
    QCOMPARE(record(0, 0)->X.size(), 3);
    QCOMPARE(record(10, 0)->X, QVector<double>{0.25});
}

void ProfileTableTest::aBadIndexStopsTheReading_data()
{
    QTest::addColumn<QString>("index");
    QTest::newRow("48") << QStringLiteral("48");
    QTest::newRow("large") << QStringLiteral("2000000000");
    QTest::newRow("negative") << QStringLiteral("-2");
}

void ProfileTableTest::aBadIndexStopsTheReading()
{
    QFETCH(const QString, index);
    const QVector<double> untouched = record(17, 0)->X;
    const QString text =
        QStringLiteral("<Profiles>"
                       "<Profile index='10'><Channel index='0' X='.75' Y='1' Z='1'/></Profile>"
                       "<Profile index='%1'><Channel index='0' X='9' Y='9' Z='9'/></Profile>"
                       "<Profile index='17'><Channel index='0' X='9' Y='9' Z='9'/></Profile>"
                       "</Profiles>")
            .arg(index);
    QTest::ignoreMessage(QtDebugMsg, "invalid profile definition");
    QVERIFY(!overlayText(text.toLatin1().constData()));
    QCOMPARE(record(10, 0)->X, QVector<double>{0.75});
    QCOMPARE(record(17, 0)->X, untouched);
}

void ProfileTableTest::index47OnlyMakesARecord()
{
    QVERIFY(overlayText("<Profiles>"
                        "<Profile index='47'><Channel index='0' name='Solo' X='2' Y='1' Z='1'/>"
                        "</Profile></Profiles>"));
    QCOMPARE(ProfileTable::instance().profile(47, 1, 0)->X, QVector<double>{2.0});
    QCOMPARE(ColorUtils::allProfiles(true).size(), 47);
    QCOMPARE(ColorUtils::nameOfProfile(47), QStringLiteral("Generic RGB"));
}

void ProfileTableTest::brokenFilesKeepWhatWasRead()
{
    QVERIFY(!overlayText("<Profiles>"
                         "<Profile index='10'><Channel index='0' X='.125' Y='1' Z='1'/></Profile>"
                         "<Profile index='17'><Channel"));
    QCOMPARE(record(10, 0)->X, QVector<double>{0.125});
    QCOMPARE(record(17, 0)->X.size(), 3);
    QVERIFY(!overlayText(""));
    QVERIFY(!overlayText("no XML at all"));
}

void ProfileTableTest::theSnapPointsFollowTheGenericRecord()
{
    const QPointF before = ProfileTable::instance().genericPrimariesUv()[0];
    const QPointF red = ColorUtils::xyToUv(0.64, 0.33);
    QVERIFY(isClose(before, red.x(), red.y()));
    QVERIFY(overlayText("<Profiles><Profile index='0'>"
                        "<Channel index='0' X='.7' Y='.3' Z='0'/>"
                        "<Channel index='1' X='.2' Y='.7' Z='.1'/>"
                        "<Channel index='2' X='.15' Y='.05' Z='.8'/>"
                        "</Profile></Profiles>"));
    const QPointF deeper = ColorUtils::xyToUv(0.7, 0.3);
    QVERIFY(isClose(ProfileTable::instance().genericPrimariesUv()[0], deeper.x(), deeper.y()));
}

QTEST_APPLESS_MAIN(ProfileTableTest)
#include "ProfileTableTest.moc"
