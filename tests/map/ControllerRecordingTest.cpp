#include "map/Controller.h"
#include "map/Light.h"
#include "tests/map/MapText.h"
#include "tests/output/RecordingReader.h"

#include <QObject>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QtTest>

namespace {

const QByteArray kOnePort = "<pl><p><pn>1</pn></p></pl>";
const QByteArray kBlack = QByteArray(3, '\0');

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

QByteArray numbered(int number)
{
    return "<ln>" + QByteArray::number(number) + "</ln>";
}

/// Controller 0xc with lights 1 and 2 on its port and light 3 on a port that it doesn't have.
QByteArray threeLights()
{
    return "<controller><type>2</type><self>c</self><ip>10.1.2.3</ip><v>2</v>"
           "<light>1</light><light>2</light><light>3</light>" +
           kOnePort + "</controller>" + lightXml("1", 0, 0, numbered(70000)) +
           lightXml("2", 0, 3, numbered(8)) + lightXml("3", 9, 6, numbered(9));
}

QStringList texts(const QSignalSpy& spy)
{
    QStringList list;
    for (const QList<QVariant>& arguments : spy) {
        list << arguments.at(0).toString();
    }
    return list;
}

void expectOpenFailure()
{
    QTest::ignoreMessage(QtDebugMsg,
                         QRegularExpression(QStringLiteral("^Could not open recording: ")));
}

} // namespace

class ControllerRecordingTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { initForgeResources(); }
    void init();
    void anEmptyNameIsRefused_data();
    void anEmptyNameIsRefused();
    void aFileThatCannotBeOpenedIsRefused_data();
    void aFileThatCannotBeOpenedIsRefused();
    void anotherModeIsRefused_data();
    void anotherModeIsRefused();
    void endingWithoutARecordingIsHarmless();
    void aRecordingIsAppendedAtItsEnd();
    void lightsOfTheFrameAreRecordedAsZeros();
    void nothingIsSentMeanwhile();
    void aLightThatTheFrameSkipsShowsItsColor_data();
    void aLightThatTheFrameSkipsShowsItsColor();
    void aSkippedLightIsAveragedFromFrameToFrame();
    void recordedLightsAreInvalid();
    void eachRecordingStartsAnew();
    void anotherRecordingDropsTheFormer();
    void aFailedChangeOfFileLosesTheFormer();
    void unknownLightsAreReported();
    void aLightTwiceInTheListIsThereTwice();
    void withoutLightsThereIsNoFrame();
    void withLostLightsAloneThereIsNoFrame();
    void withoutPortsThereIsNoFrame();
    void framesWithoutAFrameCall();
    void writingOutsideARecordingLeavesTheLights();
    void framesGoOutAgainAfterwards();
    void aControllerWithoutAModelRecordsNothing();

private:
    QString path(const char* name = "c.dmx") const
    {
        return m_folder->filePath(QString::fromLatin1(name));
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void ControllerRecordingTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

void ControllerRecordingTest::anEmptyNameIsRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("empty") << QString::fromLatin1("");
    QTest::newRow("null") << QString();
}

void ControllerRecordingTest::anEmptyNameIsRefused()
{
    QFETCH(const QString, name);
    TestModel map(threeLights());
    Controller* const controller = map.model.controller(0xc);
    QSignalSpy messages(&map.model, &MapModel::msg);
    QVERIFY(!controller->setRecording(1, name));
    QCOMPARE(controller->mode(), 0);
    QCOMPARE(texts(messages), QStringList(QStringLiteral("No filename specified")));
    QVERIFY(controller->setRecording(1, path()));
    QVERIFY(!controller->setRecording(1, name));
    QCOMPARE(controller->mode(), 1);
    controller->updateLights();
    QVERIFY(controller->setRecording(0, QString()));
    QCOMPARE(RecordingReader::ofBody(contents(path())).frames.size(), 1); // it went on
}

void ControllerRecordingTest::aFileThatCannotBeOpenedIsRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("no such folder") << QStringLiteral("none/c.dmx");
    QTest::newRow("a folder") << QStringLiteral(".");
}

void ControllerRecordingTest::aFileThatCannotBeOpenedIsRefused()
{
    QFETCH(const QString, name);
    TestModel map(threeLights());
    Controller* const controller = map.model.controller(0xc);
    QSignalSpy messages(&map.model, &MapModel::msg);
    expectOpenFailure();
    QVERIFY(!controller->setRecording(1, m_folder->filePath(name)));
    QCOMPARE(controller->mode(), 0);
    QCOMPARE(texts(messages), QStringList(QStringLiteral("Unable to open file for write")));
    QVERIFY(controller->updateLights());
    QCOMPARE(map.socket->sent.size(), 1); // live as before
    QVERIFY(controller->setRecording(0, QString()));
    QCOMPARE(controller->mode(), 0);
}

void ControllerRecordingTest::anotherModeIsRefused_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("2") << 2;
    QTest::newRow("-1") << -1;
    QTest::newRow("256") << 256;
}

void ControllerRecordingTest::anotherModeIsRefused()
{
    QFETCH(const int, mode);
    TestModel map(threeLights());
    Controller* const controller = map.model.controller(0xc);
    QSignalSpy messages(&map.model, &MapModel::msg);
    QVERIFY(!controller->setRecording(mode, path()));
    QCOMPARE(controller->mode(), 0);
    QVERIFY(!QFile::exists(path()));
    QVERIFY(controller->setRecording(1, path()));
    QVERIFY(!controller->setRecording(mode, path()));
    QCOMPARE(controller->mode(), 1);
    QCOMPARE(messages.size(), 0);
}

void ControllerRecordingTest::endingWithoutARecordingIsHarmless()
{
    TestModel map(threeLights());
    Controller* const controller = map.model.controller(0xc);
    QVERIFY(controller->setRecording(0, QString()));
    controller->finishRecording();
    QCOMPARE(controller->mode(), 0);
    QVERIFY(controller->setRecording(1, path()));
    QVERIFY(controller->setRecording(0, QString()));
    const QByteArray once = contents(path());
    QVERIFY(controller->setRecording(0, QString()));
    controller->finishRecording();
    QCOMPARE(contents(path()), once);
}

void ControllerRecordingTest::aRecordingIsAppendedAtItsEnd()
{
    QFile text(path());
    QVERIFY(text.open(QIODevice::WriteOnly));
    text.write("text\r\n");
    text.close();
    TestModel map(threeLights());
    Controller* const controller = map.model.controller(0xc);
    QVERIFY(controller->setRecording(1, path()));
    QCOMPARE(controller->mode(), 1);
    map.model.light(3)->mixColor(VelaColor(QColor(1, 2, 3)), 0);
    QVERIFY(controller->updateLights());
    QCOMPARE(contents(path()), QByteArray("text\r\n"));
    QVERIFY(controller->setRecording(0, QString()));
    QCOMPARE(controller->mode(), 0);
    QCOMPARE(contents(path()),
             "text\r\n" + QByteArray::fromHex("edfeebbe 01000000 03000000 efbeadde "
                                              "70110100 08000000 09000000 000000 000000 010203"));
}

void ControllerRecordingTest::lightsOfTheFrameAreRecordedAsZeros()
{
    TestModel map(threeLights());
    Controller* const controller = map.model.controller(0xc);
    QVERIFY(controller->setRecording(1, path()));
    for (int frame = 0; frame < 3; ++frame) {
        map.model.light(1)->mixColor(VelaColor(Qt::white), 5);
        map.model.light(2)->mixColor(VelaColor(QColor(1, 2, 3)), 5);
        QVERIFY(controller->updateLights());
    }
    QVERIFY(controller->setRecording(0, QString()));
    const RecordingReader read = RecordingReader::ofBody(contents(path()));
    QCOMPARE(read.problem, QString());
    QCOMPARE(read.frameCount, 3U);
    QCOMPARE(read.colorsOf(0), QByteArrayList({kBlack, kBlack, kBlack}));
    QCOMPARE(read.colorsOf(1), QByteArrayList({kBlack, kBlack, kBlack}));
}

void ControllerRecordingTest::nothingIsSentMeanwhile()
{
    TestModel map(threeLights());
    Controller* const controller = map.model.controller(0xc);
    QVERIFY(controller->setRecording(1, path()));
    QVERIFY(controller->updateLights());
    map.model.updateLights();
    QVERIFY(map.socket->sent.isEmpty());
    controller->setRecording(0, QString());
    QVERIFY(map.socket->sent.isEmpty());
}

void ControllerRecordingTest::aLightThatTheFrameSkipsShowsItsColor_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("8 bits") << VelaColor(QColor(10, 200, 30)) << QByteArray::fromHex("0ac81e");
    VelaColor wide;
    wide.setRgb16(0x12FF, 0xFF00, 0x00FF);
    QTest::newRow("16 bits keep their top") << wide << QByteArray::fromHex("12ff00");
    QTest::newRow("hue, saturation, value")
        << VelaColor::fromHsv(120, 255, 255) << QByteArray::fromHex("00ff00");
    QTest::newRow("black") << VelaColor(Qt::black) << kBlack;
}

void ControllerRecordingTest::aLightThatTheFrameSkipsShowsItsColor()
{
    QFETCH(const VelaColor, color);
    QFETCH(const QByteArray, bytes);
    TestModel map(threeLights());
    Controller* const controller = map.model.controller(0xc);
    QVERIFY(controller->setRecording(1, path()));
    map.model.light(3)->mixColor(color, 0);
    controller->updateLights();
    QVERIFY(controller->setRecording(0, QString()));
    QCOMPARE(RecordingReader::ofBody(contents(path())).colorsOf(2), QByteArrayList{bytes});
}

/// Nothing resets such a light: each frame's colour is one more of its priority. It is averaged
/// with a colour that has become invalid, and so reads as black.
void ControllerRecordingTest::aSkippedLightIsAveragedFromFrameToFrame()
{
    TestModel map(threeLights());
    Controller* const controller = map.model.controller(0xc);
    QVERIFY(controller->setRecording(1, path()));
    for (int frame = 0; frame < 5; ++frame) {
        map.model.light(3)->mixColor(VelaColor(QColor(240, 120, 60)), 4);
        controller->updateLights();
    }
    QVERIFY(controller->setRecording(0, QString()));
    QCOMPARE(RecordingReader::ofBody(contents(path())).colorsOf(2),
             QByteArrayList({QByteArray::fromHex("f0783c"), QByteArray::fromHex("783c1e"),
                             QByteArray::fromHex("502814"), QByteArray::fromHex("3c1e0f"),
                             QByteArray::fromHex("30180c")}));
}

void ControllerRecordingTest::recordedLightsAreInvalid()
{
    TestModel map(threeLights());
    Controller* const controller = map.model.controller(0xc);
    QVERIFY(controller->setRecording(1, path()));
    for (quint64 uid = 1; uid <= 3; ++uid) {
        map.model.light(uid)->mixColor(VelaColor(Qt::red), 0);
    }
    controller->updateLights();
    for (quint64 uid = 1; uid <= 3; ++uid) {
        QVERIFY(!map.model.light(uid)->mixValue().isValid());
    }
}

void ControllerRecordingTest::eachRecordingStartsAnew()
{
    TestModel map(threeLights());
    Controller* const controller = map.model.controller(0xc);
    for (const int frames : {3, 2}) {
        QFile::remove(path());
        QVERIFY(controller->setRecording(1, path()));
        for (int i = 0; i < frames; ++i) {
            controller->updateLights();
        }
        QVERIFY(controller->setRecording(0, QString()));
        const RecordingReader read = RecordingReader::ofBody(contents(path()));
        QCOMPARE(read.problem, QString());
        QCOMPARE(read.frameCount, static_cast<quint32>(frames));
        QCOMPARE(read.frames.at(0).size(), 9);
    }
}

void ControllerRecordingTest::anotherRecordingDropsTheFormer()
{
    TestModel map(threeLights());
    Controller* const controller = map.model.controller(0xc);
    QVERIFY(controller->setRecording(1, path("a.dmx")));
    controller->updateLights();
    controller->updateLights();
    QVERIFY(controller->setRecording(1, path("b.dmx")));
    controller->updateLights();
    QVERIFY(controller->setRecording(0, QString()));
    QCOMPARE(contents(path("a.dmx")), QByteArray());
    QCOMPARE(RecordingReader::ofBody(contents(path("b.dmx"))).frameCount, 1U);
}

void ControllerRecordingTest::aFailedChangeOfFileLosesTheFormer()
{
    TestModel map(threeLights());
    Controller* const controller = map.model.controller(0xc);
    QVERIFY(controller->setRecording(1, path("a.dmx")));
    controller->updateLights();
    expectOpenFailure();
    QVERIFY(!controller->setRecording(1, path("none/b.dmx")));
    QCOMPARE(controller->mode(), 1);
    map.model.light(3)->mixColor(VelaColor(Qt::red), 0);
    QVERIFY(controller->updateLights());
    QVERIFY(map.socket->sent.isEmpty());
    QVERIFY(!map.model.light(3)->mixValue().isValid()); // recorded, to no file
    QVERIFY(controller->setRecording(0, QString()));
    QCOMPARE(controller->mode(), 0);
    QCOMPARE(contents(path("a.dmx")), QByteArray());
}

/// Of three listed lights one is unknown: two entries are walked, and the unknown one is the
/// second of them.
void ControllerRecordingTest::unknownLightsAreReported()
{
    TestModel map("<controller><type>2</type><self>c</self><ip>10.1.2.3</ip><v>2</v>"
                  "<light>2</light><light>dead</light><light>1</light>" +
                  kOnePort + "</controller>" + lightXml("1", 9, 0, numbered(5)) +
                  lightXml("2", 9, 3, numbered(6)));
    Controller* const controller = map.model.controller(0xc);
    QSignalSpy messages(&map.model, &MapModel::msg);
    QVERIFY(controller->setRecording(1, path()));
    map.model.light(1)->mixColor(VelaColor(QColor(1, 1, 1)), 0);
    map.model.light(2)->mixColor(VelaColor(QColor(2, 2, 2)), 0);
    QVERIFY(controller->updateLights());
    const QString unknown = QStringLiteral("writeFrame: unknown light in list");
    QCOMPARE(texts(messages), QStringList(unknown));
    QVERIFY(controller->updateLights());
    QVERIFY(controller->setRecording(0, QString()));
    QCOMPARE(
        texts(messages),
        QStringList({unknown, unknown, QStringLiteral("aboutToCloseFile: unknown light in list")}));
    QCOMPARE(contents(path()),
             QByteArray::fromHex("edfeebbe 02000000 03000000 efbeadde 06000000 05000000 "
                                 "020202 000000"));
}

void ControllerRecordingTest::aLightTwiceInTheListIsThereTwice()
{
    TestModel map(
        "<controller><type>2</type><self>c</self><ip>10.1.2.3</ip><v>2</v><light>1</light>"
        "<light>1</light>" +
        kOnePort + "</controller>" + lightXml("1", 9, 0, numbered(5)));
    Controller* const controller = map.model.controller(0xc);
    QVERIFY(controller->setRecording(1, path()));
    map.model.light(1)->mixColor(VelaColor(QColor(1, 2, 3)), 0);
    controller->updateLights();
    QVERIFY(controller->setRecording(0, QString()));
    QCOMPARE(contents(path()), QByteArray::fromHex("edfeebbe 01000000 02000000 efbeadde 05000000 "
                                                   "05000000 010203 000000"));
}

void ControllerRecordingTest::withoutLightsThereIsNoFrame()
{
    TestModel map("<controller><type>2</type><self>c</self><ip>10.1.2.3</ip><v>2</v></controller>");
    Controller* const controller = map.model.controller(0xc);
    QVERIFY(controller->setRecording(1, path()));
    QVERIFY(!controller->updateLights());
    QVERIFY(controller->setRecording(0, QString()));
    QCOMPARE(contents(path()), QByteArray::fromHex("edfeebbe 00000000 00000000 efbeadde"));
}

void ControllerRecordingTest::withLostLightsAloneThereIsNoFrame()
{
    TestModel map(
        "<controller><type>2</type><self>c</self><ip>10.1.2.3</ip><v>2</v><light>a</light>"
        "<light>b</light></controller>");
    Controller* const controller = map.model.controller(0xc);
    QSignalSpy messages(&map.model, &MapModel::msg);
    QVERIFY(controller->setRecording(1, path()));
    QVERIFY(!controller->updateLights());
    QVERIFY(controller->setRecording(0, QString()));
    QCOMPARE(contents(path()), QByteArray::fromHex("edfeebbe 00000000 02000000 efbeadde"));
    const QString unknown = QStringLiteral("aboutToCloseFile: unknown light in list");
    QCOMPARE(texts(messages), QStringList({unknown, unknown}));
}

void ControllerRecordingTest::withoutPortsThereIsNoFrame()
{
    TestModel map(
        "<controller><type>2</type><self>c</self><v>2</v><light>1</light><pl/></controller>" +
        lightXml("1", 0, 0, numbered(5)));
    Controller* const controller = map.model.controller(0xc);
    QVERIFY(controller->setRecording(1, path()));
    QVERIFY(!controller->updateLights());
    QVERIFY(controller->setRecording(0, QString()));
    QCOMPARE(contents(path()), QByteArray::fromHex("edfeebbe 00000000 01000000 efbeadde 05000000"));
}

/// Written by itself, a frame holds what was painted, and finds the lights of a changed list.
void ControllerRecordingTest::framesWithoutAFrameCall()
{
    TestModel map(threeLights());
    Controller* const controller = map.model.controller(0xc);
    QVERIFY(controller->setRecording(1, path()));
    controller->removeLight(2);
    map.model.light(1)->mixColor(VelaColor(QColor(1, 2, 3)), 0);
    map.model.light(3)->mixColor(VelaColor(QColor(4, 5, 6)), 0);
    controller->writeFrame();
    controller->writeFrame(); // the invalid colours read as black
    controller->finishRecording();
    QCOMPARE(contents(path()), QByteArray::fromHex("edfeebbe 02000000 02000000 efbeadde 70110100 "
                                                   "09000000 010203 040506 000000 000000"));
}

void ControllerRecordingTest::writingOutsideARecordingLeavesTheLights()
{
    TestModel map(threeLights());
    Controller* const controller = map.model.controller(0xc);
    map.model.light(1)->mixColor(VelaColor(Qt::red), 0);
    controller->writeFrame();
    QVERIFY(map.model.light(1)->mixValue().isValid());
    QVERIFY(controller->setRecording(1, path()));
    QVERIFY(controller->setRecording(0, QString()));
    controller->writeFrame();
    QVERIFY(map.model.light(1)->mixValue().isValid());
}

void ControllerRecordingTest::framesGoOutAgainAfterwards()
{
    TestModel map(threeLights());
    Controller* const controller = map.model.controller(0xc);
    QVERIFY(controller->setRecording(1, path()));
    controller->updateLights();
    QVERIFY(controller->setRecording(0, QString()));
    map.model.light(1)->mixColor(VelaColor(QColor(255, 1, 2)), 0);
    VelaColor half;
    half.setRgb16(65535, 65535, 65535, 32768);
    map.model.light(2)->mixColor(half, 0); // over the invalid colour, as over black
    QVERIFY(controller->updateLights());
    QCOMPARE(map.socket->sent.size(), 1);
    QCOMPARE(map.socket->sent.first().bytes.mid(24, 6), QByteArray::fromHex("ff0102 808080"));
}

void ControllerRecordingTest::aControllerWithoutAModelRecordsNothing()
{
    Element element(QStringLiteral("<s>c</s><l>1</l>"));
    Controller controller(2, nullptr, element.node());
    QVERIFY(controller.setRecording(1, path()));
    QVERIFY(!controller.updateLights());
    controller.writeFrame();
    QVERIFY(controller.setRecording(0, QString()));
    QCOMPARE(contents(path()), QByteArray::fromHex("edfeebbe 01000000 01000000 efbeadde"));
}

QTEST_GUILESS_MAIN(ControllerRecordingTest)
#include "ControllerRecordingTest.moc"
