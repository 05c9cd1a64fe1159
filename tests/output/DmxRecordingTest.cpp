#include "output/DmxRecording.h"

#include "tests/output/RecordingReader.h"

#include <QObject>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

namespace {

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

} // namespace

class DmxRecordingTest : public QObject
{
    Q_OBJECT
private slots:
    void filesAreNamedAfterTheChosenName_data();
    void filesAreNamedAfterTheChosenName();
    void theHeaderIsSixLines();
    void theHeaderHasTheDateInWords_data();
    void theHeaderHasTheDateInWords();
    void theHeaderReplacesAnOlderFile();
    void aHeaderThatCannotBeWrittenIsLogged_data();
    void aHeaderThatCannotBeWrittenIsLogged();
    void theBodyIsAppended();
    void numbersMayBeFewerThanLights();
    void withoutFramesTheBodyIsItsHead();
    void longRecordingsAreWhole();
    void aFileThatCannotBeOpenedIsLogged();
    void aFileThatCannotBeWrittenIsLogged();

private:
    QString path(const QString& name = QStringLiteral("show_Front.dmx")) const
    {
        return m_folder.filePath(name);
    }

    QTemporaryDir m_folder;
};

void DmxRecordingTest::filesAreNamedAfterTheChosenName_data()
{
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<QString>("controller");
    QTest::addColumn<QString>("file");
    const auto row = [](const char* name, const char* chosen, const char* controller,
                        const char* file) {
        QTest::newRow(name) << QString::fromUtf8(chosen) << QString::fromUtf8(controller)
                            << QString::fromUtf8(file);
    };
    row("suffix", "show.dmx", "Front", "show_Front.dmx");
    row("no suffix", "show", "Front", "show_Front.dmx");
    row("upper case is no suffix", "show.DMX", "Front", "show.DMX_Front.dmx");
    row("with a folder", "/a/b.dmx/show.dmx", "Front", "/a/b.dmx/show_Front.dmx");
    row("a folder alone has it", "/a/b.dmx/show", "Front", "/a/b.dmx/show_Front.dmx");
    row("only the last", "show.dmx.dmx", "Front", "show.dmx_Front.dmx");
    row("in the middle", "show.dmx.old", "Front", "show.dmx.old_Front.dmx");
    row("nothing but it", ".dmx", "Front", "_Front.dmx");
    row("no controller name", "show.dmx", "", "show_.dmx");
    row("the name as it is", "show.dmx", "A/B é.dmx", "show_A/B é.dmx.dmx");
}

void DmxRecordingTest::filesAreNamedAfterTheChosenName()
{
    QFETCH(const QString, chosen);
    QFETCH(const QString, controller);
    QFETCH(const QString, file);
    QCOMPARE(DmxRecording::fileName(DmxRecording::basePath(chosen), controller), file);
}

void DmxRecordingTest::theHeaderIsSixLines()
{
    DmxRecording::Header header;
    header.created = QDateTime(QDate(2024, 3, 7), QTime(15, 4, 9));
    header.framesPerSecond = 30;
    header.totalMs = 4294967295U;
    QVERIFY(DmxRecording::writeHeader(path(), header));
    QCOMPARE(contents(path()), QByteArray("dmx_file_version = 1 \r\n"
                                          "file_creation = March 7, 2024 3:04:09 PM\r\n"
                                          "show_file_name = " +
                                          path().toUtf8() +
                                          "\r\n"
                                          "rate = 30.000000\r\n"
                                          "num_dmx_channels = 512\r\n"
                                          "total_time = 4294967295\r\n"));
}

void DmxRecordingTest::theHeaderHasTheDateInWords_data()
{
    QTest::addColumn<QDateTime>("created");
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("midnight") << QDateTime(QDate(2020, 12, 31), QTime(0, 0, 0))
                              << QByteArray("December 31, 2020 12:00:00 AM");
    QTest::newRow("noon") << QDateTime(QDate(2021, 1, 1), QTime(12, 5, 0))
                          << QByteArray("January 1, 2021 12:05:00 PM");
    QTest::newRow("hour without a zero, others with one")
        << QDateTime(QDate(2021, 5, 10), QTime(9, 5, 7)) << QByteArray("May 10, 2021 9:05:07 AM");
}

void DmxRecordingTest::theHeaderHasTheDateInWords()
{
    QFETCH(const QDateTime, created);
    QFETCH(const QByteArray, line);
    DmxRecording::Header header;
    header.created = created;
    QVERIFY(DmxRecording::writeHeader(path(), header));
    QCOMPARE(contents(path()).split('\n').at(1), "file_creation = " + line + '\r');
}

void DmxRecordingTest::theHeaderReplacesAnOlderFile()
{
    QFile older(path());
    QVERIFY(older.open(QIODevice::WriteOnly));
    older.write(QByteArray(100000, 'x'));
    older.close();
    DmxRecording::Header header;
    header.created = QDateTime(QDate(2024, 3, 7), QTime(15, 4, 9));
    QVERIFY(DmxRecording::writeHeader(path(), header));
    QVERIFY(contents(path()).endsWith("total_time = 0\r\n"));
}

void DmxRecordingTest::aHeaderThatCannotBeWrittenIsLogged_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("message");
    QTest::newRow("no such folder")
        << path(QStringLiteral("none/show_Front.dmx"))
        << QStringLiteral("^Could not open recording for its header: .*none/show_Front\\.dmx");
    QTest::newRow("a folder") << m_folder.path()
                              << QStringLiteral("^Could not open recording for its header: ");
    QTest::newRow("a full disk") << QStringLiteral("/dev/full")
                                 << QStringLiteral(
                                        "^Could not write the header of recording: \"/dev/full\"");
}

void DmxRecordingTest::aHeaderThatCannotBeWrittenIsLogged()
{
    QFETCH(const QString, file);
    QFETCH(const QString, message);
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(message));
    DmxRecording::Header header;
    header.created = QDateTime::currentDateTime();
    QVERIFY(!DmxRecording::writeHeader(file, header));
}

void DmxRecordingTest::theBodyIsAppended()
{
    QFile text(path());
    QVERIFY(text.open(QIODevice::WriteOnly));
    text.write("text\r\n");
    text.close();
    DmxRecording recording(path());
    QVERIFY(!recording.isOpen());
    QVERIFY(recording.open());
    QVERIFY(recording.isOpen());
    recording.appendLight(1, 2, 3);
    recording.appendLight(0xFF, 0x80, 0);
    recording.endFrame();
    recording.appendLight(4, 5, 6);
    recording.appendLight(7, 8, 9);
    recording.endFrame();
    QCOMPARE(recording.frameCount(), 2U);
    QCOMPARE(contents(path()), QByteArray("text\r\n")); // in memory until the end
    QVERIFY(recording.finish(2, {0x01020304U, 0xFFFFFFFEU}));
    QVERIFY(!recording.isOpen());
    QCOMPARE(contents(path()), "text\r\n" + QByteArray::fromHex("edfeebbe 02000000 02000000 "
                                                                "efbeadde 04030201 feffffff "
                                                                "010203 ff8000 040506 070809"));
}

void DmxRecordingTest::numbersMayBeFewerThanLights()
{
    DmxRecording recording(path(QStringLiteral("fewer.dmx")));
    QVERIFY(recording.open());
    recording.appendLight(1, 2, 3);
    recording.endFrame();
    QVERIFY(recording.finish(3, {5}));
    QCOMPARE(contents(path(QStringLiteral("fewer.dmx"))),
             QByteArray::fromHex("edfeebbe 01000000 03000000 efbeadde 05000000 010203"));
}

void DmxRecordingTest::withoutFramesTheBodyIsItsHead()
{
    DmxRecording recording(path(QStringLiteral("none.dmx")));
    QVERIFY(recording.open());
    QVERIFY(recording.finish(0, {}));
    QCOMPARE(contents(path(QStringLiteral("none.dmx"))),
             QByteArray::fromHex("edfeebbe 00000000 00000000 efbeadde"));
}

/// Over several of the pieces that the frames are held in.
void DmxRecordingTest::longRecordingsAreWhole()
{
    constexpr int kLights = 4099;
    constexpr int kFrames = 800;
    const QString file = path(QStringLiteral("long.dmx"));
    DmxRecording recording(file);
    QVERIFY(recording.open());
    for (int frame = 0; frame < kFrames; ++frame) {
        for (int light = 0; light < kLights; ++light) {
            recording.appendLight(static_cast<quint8>(frame), static_cast<quint8>(light),
                                  static_cast<quint8>(frame / 256 + light / 256));
        }
        recording.endFrame();
    }
    QVERIFY(recording.finish(0, {}));
    const RecordingReader read = RecordingReader::ofBody(contents(file));
    QCOMPARE(read.problem, QString());
    QCOMPARE(read.frames.size(), kFrames);
    for (int frame = 0; frame < kFrames; ++frame) {
        QByteArray expected;
        for (int light = 0; light < kLights; ++light) {
            expected.append(static_cast<char>(frame)).append(static_cast<char>(light));
            expected.append(static_cast<char>(frame / 256 + light / 256));
        }
        QVERIFY2(read.frames.at(frame) == expected, QByteArray::number(frame).constData());
    }
}

void DmxRecordingTest::aFileThatCannotBeOpenedIsLogged()
{
    QTest::ignoreMessage(QtDebugMsg,
                         QRegularExpression(QStringLiteral("^Could not open recording: .*none/a")));
    DmxRecording recording(path(QStringLiteral("none/a")));
    QVERIFY(!recording.open());
    QVERIFY(!recording.isOpen());
}

void DmxRecordingTest::aFileThatCannotBeWrittenIsLogged()
{
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(QStringLiteral(
                                         "^Could not write recording: \"/dev/full\"")));
    DmxRecording recording(QStringLiteral("/dev/full"));
    QVERIFY(recording.open());
    recording.appendLight(1, 2, 3);
    recording.endFrame();
    QVERIFY(!recording.finish(1, {1}));
    QVERIFY(!recording.isOpen());
}

QTEST_GUILESS_MAIN(DmxRecordingTest)
#include "DmxRecordingTest.moc"
