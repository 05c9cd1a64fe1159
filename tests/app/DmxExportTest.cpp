#include "map/Controller.h"
#include "map/Light.h"
#include "tests/app/WindowBench.h"
#include "tests/output/RecordingReader.h"

#include <QCloseEvent>
#include <QElapsedTimer>
#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QInputDialog>
#include <QObject>
#include <QPushButton>
#include <QRegularExpression>
#include <QUdpSocket>
#include <QtTest>

#include <cmath>
#include <limits>

namespace {

constexpr quint64 kSkippedLight = 0xA3;
const QByteArray kBlack = QByteArray(3, '\0');

/// A controller of the network: counts what arrives at one address.
class Ear
{
public:
    explicit Ear(const char* address)
    {
        m_isBound = m_socket.bind(QHostAddress(QString::fromLatin1(address)), 6038,
                                  QUdpSocket::ShareAddress | QUdpSocket::ReuseAddressHint);
    }
    bool isBound() const { return m_isBound; }
    /// Datagrams since the last call: what was sent within the machine is there at once.
    int heard()
    {
        int count = 0;
        while (m_socket.hasPendingDatagrams()) {
            m_socket.readDatagram(nullptr, 0);
            ++count;
        }
        return count;
    }

private:
    QUdpSocket m_socket;
    bool m_isBound = false;
};

/// What the progress dialog of an export looks like as it comes up.
class ProgressWatch : public QObject
{
public:
    ProgressWatch() { qApp->installEventFilter(this); }
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        auto* const dialog = qobject_cast<QProgressDialog*>(watched);
        if (dialog != nullptr && event->type() == QEvent::Show) {
            ++shown;
            label = dialog->labelText();
            minimum = dialog->minimum();
            maximum = dialog->maximum();
            modality = dialog->windowModality();
            auto* const button = dialog->findChild<QPushButton*>();
            buttonText = button == nullptr ? QString() : button->text();
            if (pressesCancel && button != nullptr) {
                pressesCancel = false;
                QTimer::singleShot(0, button, [this, button] {
                    button->click();
                    wasCancelled = true;
                });
            }
        }
        if (dialog != nullptr && event->type() == QEvent::Paint) {
            ++painted;
            value = dialog->value();
        }
        return QObject::eventFilter(watched, event);
    }

    bool pressesCancel = false;
    bool wasCancelled = false;
    int shown = 0;
    int painted = 0;
    QString label;
    QString buttonText;
    int minimum = -1;
    int maximum = -1;
    int value = -1;
    Qt::WindowModality modality = Qt::NonModal;
};

struct RateBox
{
    QString title;
    QString label;
    int value = 0;
    int minimum = 0;
    int maximum = 0;
    int step = 0;
};

QString controllerXml(const char* uid, const char* name, const char* ip, int version,
                      const QStringList& lights)
{
    QString xml = QStringLiteral("<controller><type>2</type><self>%1</self><name>%2</name>"
                                 "<ip>%3</ip><v>%4</v><pl><p><pn>1</pn></p></pl>")
                      .arg(QLatin1String(uid), QLatin1String(name), QLatin1String(ip))
                      .arg(version);
    for (const QString& light : lights) {
        xml += QStringLiteral("<light>%1</light>").arg(light);
    }
    return xml + QStringLiteral("</controller>");
}

QString lightXml(const char* uid, const char* controller, int port, int number)
{
    return QStringLiteral("<light><self>%1</self><c>%2</c><pn>%3</pn><ch>0</ch><ln>%4</ln>"
                          "<x>40</x><y>30</y></light>"
                          "<group><type>3</type><self>%1</self></group>")
        .arg(QLatin1String(uid), QLatin1String(controller))
        .arg(port)
        .arg(number);
}

QString mapXml(const QString& content, const QStringList& lights)
{
    QString xml = QStringLiteral("<map>") + content +
                  QStringLiteral("<group><type>2</type><self>1000</self>");
    for (const QString& light : lights) {
        xml += QStringLiteral("<child>%1</child>").arg(light);
    }
    return xml + QStringLiteral("</group></map>");
}

/// "Front" has light 11 and light 13, whose port it does not have; "Side" has light 21; "Empty" has
/// none.
QString threeControllers(const QString& more = QString())
{
    const QString a1 = QStringLiteral("A1");
    const QString a3 = QStringLiteral("A3");
    const QString b1 = QStringLiteral("B1");
    return mapXml(controllerXml("C1", "Front", "127.0.0.1", 2, {a1, a3}) +
                      controllerXml("C2", "Side", "127.0.0.2", 1, {b1}) +
                      controllerXml("C3", "Empty", "127.0.0.3", 2, {}) + more +
                      lightXml("A1", "C1", 0, 11) + lightXml("A3", "C1", 9, 13) +
                      lightXml("B1", "C2", 0, 21),
                  {a1, a3, b1});
}

constexpr int kFrom[] = {250, 20, 0};
constexpr int kTo[] = {10, 220, 128};

/// A cross fade of one second from kFrom to kTo, over and over, for so long.
QString fadeXml(quint32 lengthMs)
{
    return WindowBench::rootXml(
        WindowBench::effectXml(1, lengthMs,
                               QStringLiteral("<startcolor>aRgb;1;0;#fffffafa14140000</startcolor>"
                                              "<endcolor>aRgb;1;0;#ffff0a0adcdc8080</endcolor>"
                                              "<time>1</time>"),
                               QStringLiteral("Cross Fade")));
}

/// The three bytes of a light that no frame resets: of the frame's mix of both colours, the part
/// that the mean over all frames until then leaves, as the colours before have turned black.
QByteArray skippedColor(int frame, int ms)
{
    const double t = (ms % 1000) / 1000.0;
    QByteArray bytes;
    for (int i = 0; i < 3; ++i) {
        const double level = (kFrom[i] * (1.0 - t) + kTo[i] * t) / 255.0 / (frame + 1);
        bytes.append(static_cast<char>(
            static_cast<int>(std::floor(level * 4294967295.0 + 0.5) / 16777216.0)));
    }
    return bytes;
}

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

} // namespace

/// "Write DMX...", from the menu to the files.
class DmxExportTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { WindowBench::prepare(); }
    void init();
    void cleanup();

    void eachControllerGetsAFile();
    void theDialogsAsTheyRead();
    void filesAreNamedAfterTheChosenName_data();
    void filesAreNamedAfterTheChosenName();
    void theRateSettlesTheFrames_data();
    void theRateSettlesTheFrames();
    void aCancelledRateGoesOn_data();
    void aCancelledRateGoesOn();
    void theProgressAsItReads_data();
    void theProgressAsItReads();
    void theFramesAreThoseOfTheSyntheticTimes();
    void theExportCannotBeCancelled();
    void nothingIsSent();
    void aControllerWithoutAFileStaysLive();
    void controllersOfOneNameShareAFile();
    void anotherExportReplacesTheFiles();
    void anEmptyShowLeavesEngineAndViewStopped();
    void noFileNameLeavesEngineAndViewStopped();
    void withoutASimulationNothingHappens();
    void theViewIsFrozenMeanwhile();
    void everythingIsAsBefore_data();
    void everythingIsAsBefore();
    void theShowGoesOnFromItsStart();
    void effectsThatRestartGoOnAtAnyDepth();
    void theFolderIsRemembered();

private:
    void open(quint32 lengthMs, const QString& map = threeControllers())
    {
        m_bench->open(m_bench->file("site.map", map),
                      m_bench->file("night.sho", fadeXml(lengthMs)));
        QVERIFY(WindowBench::sim() != nullptr);
    }
    /// Without live output every frame ends with all lights reset, whatever their ports.
    void openWithLightsReset(quint32 lengthMs)
    {
        open(lengthMs);
        m_bench->action("livePlayAction")->setChecked(false);
        QSignalSpy ticks(m_bench->engine(), &EffectEngine::EngineTick);
        QVERIFY(ticks.wait());
    }
    void expectRate(const std::function<void(QInputDialog*)>& answer)
    {
        m_bench->dialogs.expect([this, answer](QWidget* dialog) {
            auto* const box = qobject_cast<QInputDialog*>(dialog);
            if (box == nullptr) {
                QMetaObject::invokeMethod(dialog, "reject");
                return;
            }
            m_rateBox = {box->windowTitle(), box->labelText(),  box->intValue(),
                         box->intMinimum(),  box->intMaximum(), box->intStep()};
            answer(box);
        });
    }
    void expectRate(int rate)
    {
        expectRate([rate](QInputDialog* box) {
            box->setIntValue(rate);
            box->accept();
        });
    }
    void expectRateCancelled()
    {
        expectRate([](QInputDialog* box) { box->reject(); });
    }
    void trigger() { m_bench->action("writeDMXAction")->trigger(); }
    void exportTo(const char* name, int rate)
    {
        m_bench->dialogs.expectFile(m_bench->path(name));
        expectRate(rate);
        trigger();
    }
    RecordingReader recording(const char* name, int numbers = -1) const
    {
        return RecordingReader::ofFile(m_bench->path(name), numbers);
    }
    /// True if a redraw of the simulation shows what was painted: the view isn't frozen.
    bool viewFollows()
    {
        const QColor color(7, 8, ++m_colors);
        Light* const light = m_bench->model()->light(0xA1);
        light->reset();
        light->mixSimColor(color, 0);
        for (int i = 0; i < 2; ++i) { // every second call redraws
            WindowBench::sim()->updateLights();
        }
        light->reset();
        const QList<QGraphicsItem*> items =
            WindowBench::sim()->findChild<QGraphicsView*>()->scene()->items();
        return std::any_of(items.cbegin(), items.cend(), [&](const QGraphicsItem* item) {
            const auto* const shape = dynamic_cast<const QAbstractGraphicsShapeItem*>(item);
            return shape != nullptr && shape->brush().color() == color;
        });
    }
    /// What the engine waits after a frame that came `ms` after the one before: the same, only if
    /// that is its period. Leaves the engine paused.
    int intervalAfter(int ms) const
    {
        EffectEngine* const engine = m_bench->engine();
        const QDateTime now = QDateTime::currentDateTime();
        engine->tick(now);
        engine->pause(false); // forgets the drift
        engine->tick(now.addMSecs(ms));
        engine->pause(true);
        return engine->interval();
    }

    std::unique_ptr<WindowBench> m_bench;
    RateBox m_rateBox;
    int m_colors = 0;
};

void DmxExportTest::init()
{
    m_bench = std::make_unique<WindowBench>();
}

void DmxExportTest::cleanup()
{
    const QString complaints = m_bench->dialogs.complaints();
    m_bench.reset();
    QCOMPARE(complaints, QString());
}

/// A second at 30 frames: every 33 ms, 31 frames.
void DmxExportTest::eachControllerGetsAFile()
{
    openWithLightsReset(1000);
    const QDateTime before = QDateTime::currentDateTime();
    exportTo("show.dmx", 30);
    const QDateTime after = QDateTime::currentDateTime();

    QStringList names = QDir(m_bench->dir.path()).entryList({QStringLiteral("*.dmx")});
    QCOMPARE(names, QStringList({QStringLiteral("show_Empty.dmx"), QStringLiteral("show_Front.dmx"),
                                 QStringLiteral("show_Side.dmx")}));
    const RecordingReader front = recording("show_Front.dmx");
    const RecordingReader side = recording("show_Side.dmx");
    const RecordingReader empty = recording("show_Empty.dmx");
    for (const RecordingReader* file : {&front, &side, &empty}) {
        QCOMPARE(file->problem, QString());
        QCOMPARE(file->header.at(0), QByteArray("dmx_file_version = 1 "));
        QCOMPARE(file->header.at(1), front.header.at(1)); // one moment for all
        QCOMPARE(file->header.at(3), QByteArray("rate = 30.000000"));
        QCOMPARE(file->header.at(4), QByteArray("num_dmx_channels = 512"));
        QCOMPARE(file->header.at(5), QByteArray("total_time = 1000"));
    }
    QCOMPARE(front.header.at(2), "show_file_name = " + m_bench->path("show_Front.dmx").toUtf8());
    QCOMPARE(empty.header.at(2), "show_file_name = " + m_bench->path("show_Empty.dmx").toUtf8());
    QByteArrayList moments;
    for (QDateTime at = before; at < after.addSecs(1); at = at.addSecs(1)) {
        moments
            << "file_creation = " +
                   QLocale::c().toString(at, QStringLiteral("MMMM d, yyyy h:mm:ss AP")).toUtf8();
    }
    QVERIFY2(moments.contains(front.header.at(1)), front.header.at(1).constData());

    QCOMPARE(front.frameCount, 31U);
    QCOMPARE(front.lightCount, 2U);
    QCOMPARE(front.numbers, QVector<quint32>({11, 13}));
    QCOMPARE(side.frameCount, 31U);
    QCOMPARE(side.numbers, QVector<quint32>({21}));
    QCOMPARE(empty.frameCount, 0U);
    QCOMPARE(empty.lightCount, 0U);
    QVERIFY(contents(m_bench->path("show_Empty.dmx"))
                .endsWith("\r\n" + QByteArray::fromHex("edfeebbe 00000000 00000000 efbeadde")));
    for (int frame = 0; frame < 31; ++frame) {
        QCOMPARE(side.frames.at(frame), kBlack);
        QCOMPARE(front.colorsOf(0).at(frame), kBlack);
        QCOMPARE(front.colorsOf(1).at(frame).toHex(), skippedColor(frame, 33 * frame).toHex());
    }
    QCOMPARE(front.colorsOf(1).first(), QByteArray::fromHex("fa1400"));
}

void DmxExportTest::theDialogsAsTheyRead()
{
    WindowBench::store().setValue(QStringLiteral("/frame_rate"), 50);
    open(100);
    exportTo("show.dmx", 30);
    QCOMPARE(m_bench->dialogs.seen().size(), 2);
    const DialogAnswers::Seen& files = m_bench->dialogs.seen().at(0);
    QCOMPARE(files.title, QStringLiteral("Choose base DMX filename"));
    QCOMPARE(files.filters, QStringList(QStringLiteral("DMX Files (*.dmx)")));
    QCOMPARE(files.acceptMode, QFileDialog::AcceptSave);
    QCOMPARE(files.folder, QDir(QStringLiteral("./")).absolutePath());
    QCOMPARE(m_rateBox.title, QStringLiteral("Frame Rate"));
    QCOMPARE(m_rateBox.label, QStringLiteral("Please enter the frame rate for your DMX file."));
    QCOMPARE(m_rateBox.value, 50);
    QCOMPARE(m_rateBox.minimum, 0);
    QCOMPARE(m_rateBox.maximum, 2147483647);
    QCOMPARE(m_rateBox.step, 1);
}

void DmxExportTest::filesAreNamedAfterTheChosenName_data()
{
    QTest::addColumn<QByteArray>("chosen");
    QTest::addColumn<QByteArray>("file");
    QTest::newRow("suffix") << QByteArray("show.dmx") << QByteArray("show_Front.dmx");
    QTest::newRow("no suffix") << QByteArray("show") << QByteArray("show_Front.dmx");
    QTest::newRow("upper case") << QByteArray("show.DMX") << QByteArray("show.DMX_Front.dmx");
}

void DmxExportTest::filesAreNamedAfterTheChosenName()
{
    QFETCH(const QByteArray, chosen);
    QFETCH(const QByteArray, file);
    open(100);
    exportTo(chosen.constData(), 40);
    QCOMPARE(recording(file.constData()).problem, QString());
    QCOMPARE(QDir(m_bench->dir.path()).entryList({QStringLiteral("show*")}).size(), 3);
}

void DmxExportTest::theRateSettlesTheFrames_data()
{
    QTest::addColumn<int>("lengthMs");
    QTest::addColumn<int>("rate");
    QTest::addColumn<int>("frames");
    QTest::addColumn<QByteArray>("line");
    const auto row = [](const char* name, int lengthMs, int rate, int frames, const char* line) {
        QTest::newRow(name) << lengthMs << rate << frames << QByteArray(line);
    };
    row("40: every 25 ms", 1000, 40, 40, "rate = 40.000000");
    row("7: every 142 ms", 1000, 7, 8, "rate = 7.000000");
    row("400: every 2 ms", 1000, 400, 500, "rate = 400.000000");
    row("1000: every ms", 1000, 1000, 1000, "rate = 1000.000000");
    row("999: every ms", 1000, 999, 1000, "rate = 999.000000");
    row("0 counts as 1", 2500, 0, 3, "rate = 1.000000");
    row("1001 counts as 1000", 1000, 1001, 1000, "rate = 1000.000000");
    row("2000 counts as 1000", 1000, 2000, 1000, "rate = 1000.000000");
    row("the highest of the dialog", 100, 2147483647, 100, "rate = 1000.000000");
    row("a frame at the end is not of the show", 50, 40, 2, "rate = 40.000000");
    row("shorter than a frame", 1, 40, 1, "rate = 40.000000");
}

void DmxExportTest::theRateSettlesTheFrames()
{
    QFETCH(const int, lengthMs);
    QFETCH(const int, rate);
    QFETCH(const int, frames);
    QFETCH(const QByteArray, line);
    openWithLightsReset(static_cast<quint32>(lengthMs));
    exportTo("show.dmx", rate);
    const RecordingReader file = recording("show_Front.dmx");
    QCOMPARE(file.problem, QString());
    QCOMPARE(file.header.at(3), line);
    QCOMPARE(file.frameCount, static_cast<quint32>(frames));
    const int period = 1000 / std::clamp(rate, 1, 1000);
    QByteArrayList expected;
    for (int i = 0; i < frames; ++i) {
        expected.append(skippedColor(i, i * period));
    }
    QCOMPARE(file.colorsOf(1), expected);
}

void DmxExportTest::aCancelledRateGoesOn_data()
{
    QTest::addColumn<int>("setting");
    QTest::addColumn<int>("frames");
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("40") << 40 << 40 << QByteArray("rate = 40.000000");
    QTest::newRow("30") << 30 << 31 << QByteArray("rate = 30.000000");
    QTest::newRow("0") << 0 << 1 << QByteArray("rate = 1.000000");
    QTest::newRow("negative") << -5 << 1 << QByteArray("rate = 1.000000");
}

void DmxExportTest::aCancelledRateGoesOn()
{
    QFETCH(const int, setting);
    QFETCH(const int, frames);
    QFETCH(const QByteArray, line);
    WindowBench::store().setValue(QStringLiteral("/frame_rate"), setting);
    open(1000);
    m_bench->dialogs.expectFile(m_bench->path("show.dmx"));
    expectRateCancelled();
    trigger();
    const RecordingReader file = recording("show_Side.dmx");
    QCOMPARE(file.problem, QString());
    QCOMPARE(file.header.at(3), line);
    QCOMPARE(file.frames.size(), frames);
    QVERIFY(m_bench->isRunning());
}

void DmxExportTest::theProgressAsItReads_data()
{
    QTest::addColumn<int>("lengthMs");
    QTest::addColumn<int>("rate");
    QTest::addColumn<int>("maximum");
    QTest::newRow("whole") << 1000 << 30 << 30;
    QTest::newRow("rounded down") << 999 << 30 << 29;
    QTest::newRow("0 counts as 1") << 3000 << 0 << 3;
    QTest::newRow("2000 counts as 1000") << 500 << 2000 << 500;
}

void DmxExportTest::theProgressAsItReads()
{
    QFETCH(const int, lengthMs);
    QFETCH(const int, rate);
    QFETCH(const int, maximum);
    open(static_cast<quint32>(lengthMs));
    ProgressWatch watch;
    exportTo("show.dmx", rate);
    QVERIFY(watch.shown > 0);
    QCOMPARE(watch.label, QStringLiteral("Saving DMX file..."));
    QCOMPARE(watch.buttonText, QStringLiteral("Cancel"));
    QCOMPARE(watch.minimum, 0);
    QCOMPARE(watch.maximum, maximum);
    QCOMPARE(watch.modality, Qt::ApplicationModal);
    QVERIFY(QApplication::activeModalWidget() == nullptr);
}

/// Long enough for the dialog to give the event loop its turns: no frame of the clock's comes in
/// between.
void DmxExportTest::theFramesAreThoseOfTheSyntheticTimes()
{
    constexpr int kFrames = 20000;
    openWithLightsReset(kFrames);
    ProgressWatch watch;
    int ticks = 0;
    int steps = 0;
    QDateTime last;
    // Ended before the engine runs on.
    const QMetaObject::Connection connection =
        connect(m_bench->engine(), &EffectEngine::EngineTick, this, [&](const QDateTime& at) {
            steps += !last.isValid() || last.msecsTo(at) == 1 ? 1 : 0;
            last = at;
            ++ticks;
        });
    exportTo("show.dmx", 1000);
    disconnect(connection);
    QCOMPARE(ticks, kFrames);
    QCOMPARE(steps, kFrames);
    QVERIFY(watch.painted > 0); // the turns were taken
    QVERIFY(watch.value > 0);
    const RecordingReader file = recording("show_Front.dmx");
    QCOMPARE(file.problem, QString());
    QCOMPARE(file.frames.size(), kFrames);
    QCOMPARE(file.colorsOf(1).at(1), skippedColor(1, 1));
    QVERIFY(file.colorsOf(1).at(0) != file.colorsOf(1).at(1));
}

void DmxExportTest::theExportCannotBeCancelled()
{
    open(20000);
    ProgressWatch watch;
    watch.pressesCancel = true;
    exportTo("show.dmx", 1000);
    QVERIFY(watch.wasCancelled);
    QCOMPARE(recording("show_Side.dmx").frames.size(), 20000);
    QVERIFY(watch.shown > 1); // and the dialog says so
    QVERIFY(m_bench->isRunning());
}

void DmxExportTest::nothingIsSent()
{
    Ear front("127.0.0.1");
    Ear side("127.0.0.2");
    QVERIFY(front.isBound() && side.isBound());
    open(1000);
    QVERIFY(!m_bench->model()->simulateOnly());
    const auto hear = [&] {
        bool hasFront = false;
        bool hasSide = false;
        return QTest::qWaitFor([&] {
            hasFront = front.heard() > 0 || hasFront;
            hasSide = side.heard() > 0 || hasSide;
            return hasFront && hasSide;
        });
    };
    QVERIFY(hear()); // the show is live
    m_bench->dialogs.expectFile(m_bench->path("show.dmx"));
    expectRate([&](QInputDialog* box) { // the engine is paused by now
        front.heard();
        side.heard();
        box->setIntValue(1000);
        box->accept();
    });
    trigger();
    QCOMPARE(front.heard() + side.heard(), 0);
    QCOMPARE(recording("show_Front.dmx").frames.size(), 1000);
    for (Controller* const controller : m_bench->model()->controllersHash()) {
        QCOMPARE(controller->mode(), 0);
    }
    QVERIFY(hear()); // and is again
}

/// A slash in its name leads to a folder that isn't there: its frames are sent.
void DmxExportTest::aControllerWithoutAFileStaysLive()
{
    const QString d1 = QStringLiteral("D1");
    Ear front("127.0.0.1");
    Ear live("127.0.0.4");
    QVERIFY(front.isBound() && live.isBound());
    open(1000, threeControllers(controllerXml("C4", "A/B", "127.0.0.4", 2, {d1}) +
                                lightXml("D1", "C4", 0, 41)));
    QSignalSpy messages(m_bench->model(), &MapModel::msg);
    m_bench->dialogs.expectFile(m_bench->path("show.dmx"));
    expectRate([&](QInputDialog* box) {
        front.heard();
        live.heard();
        messages.clear();
        box->setIntValue(30);
        box->accept();
    });
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(QStringLiteral(
                                         "^Could not open recording for its header: .*A/B.dmx")));
    QTest::ignoreMessage(QtDebugMsg,
                         QRegularExpression(QStringLiteral("^Could not open recording: .*A/B")));
    trigger();
    QCOMPARE(live.heard(), 31);
    QCOMPARE(front.heard(), 0);
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages.at(0).at(0).toString(), QStringLiteral("Unable to open file for write"));
    QCOMPARE(recording("show_Front.dmx").frames.size(), 31);
    QVERIFY(!QFile::exists(m_bench->path("show_A")));
}

/// Each makes the file anew with its header, and each appends its body.
void DmxExportTest::controllersOfOneNameShareAFile()
{
    const QString e1 = QStringLiteral("E1");
    const QString f1 = QStringLiteral("F1");
    open(100, mapXml(controllerXml("C1", "Twin", "127.0.0.1", 2, {e1}) +
                         controllerXml("C2", "Twin", "127.0.0.2", 2, {f1}) +
                         lightXml("E1", "C1", 0, 51) + lightXml("F1", "C2", 0, 52),
                     {e1, f1}));
    m_bench->dialogs.expectFile(m_bench->path("show.dmx"));
    expectRate(20);
    trigger();
    const QByteArray head = QByteArray::fromHex("edfeebbe 02000000 01000000 efbeadde");
    const QByteArray first = head + QByteArray::fromHex("33000000 000000 000000");
    const QByteArray second = head + QByteArray::fromHex("34000000 000000 000000");
    const QByteArray file = contents(m_bench->path("show_Twin.dmx"));
    QCOMPARE(file.count("\r\n"), 6);
    const QByteArray bodies = file.mid(file.lastIndexOf("\r\n") + 2);
    QVERIFY(bodies == first + second || bodies == second + first);
}

void DmxExportTest::anotherExportReplacesTheFiles()
{
    open(1000);
    exportTo("show.dmx", 1000);
    exportTo("show.dmx", 10);
    const RecordingReader file = recording("show_Side.dmx");
    QCOMPARE(file.problem, QString());
    QCOMPARE(file.header.at(3), QByteArray("rate = 10.000000"));
    QCOMPARE(file.frames.size(), 10);
}

void DmxExportTest::anEmptyShowLeavesEngineAndViewStopped()
{
    m_bench->open(m_bench->file("site.map", threeControllers()));
    QVERIFY(m_bench->isRunning());
    QVERIFY(viewFollows());
    trigger();
    QVERIFY(m_bench->dialogs.seen().isEmpty());
    QVERIFY(!m_bench->isRunning());
    QVERIFY(!viewFollows());
    QVERIFY(QDir(m_bench->dir.path()).entryList({QStringLiteral("*.dmx")}).isEmpty());
}

void DmxExportTest::noFileNameLeavesEngineAndViewStopped()
{
    open(1000);
    QVERIFY(viewFollows());
    m_bench->dialogs.expectFileCancelled();
    trigger();
    QCOMPARE(m_bench->dialogs.seen().size(), 1); // no rate is asked for
    QVERIFY(!m_bench->isRunning());
    QVERIFY(!viewFollows());
    QCOMPARE(m_bench->model()->controller(0xC1)->mode(), 0);
    m_bench->pauseButton()->click();
    m_bench->pauseButton()->click();
    QVERIFY(m_bench->isRunning()); // the play button gets it going
}

void DmxExportTest::withoutASimulationNothingHappens()
{
    m_bench->open(QString(), m_bench->file("night.sho", fadeXml(1000)));
    QVERIFY(WindowBench::sim() == nullptr);
    trigger();
    QVERIFY(m_bench->dialogs.seen().isEmpty());
    QVERIFY(m_bench->isRunning());
}

void DmxExportTest::theViewIsFrozenMeanwhile()
{
    open(1000);
    QVERIFY(viewFollows());
    bool followsAtTheName = true;
    m_bench->dialogs.expect([&](QWidget* dialog) {
        followsAtTheName = viewFollows();
        auto* const edit = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        edit->setText(m_bench->path("show.dmx"));
        QMetaObject::invokeMethod(dialog, "accept");
    });
    expectRate(40);
    // What the view shows does not change with the frames.
    bool followsInAFrame = false;
    const QMetaObject::Connection connection =
        connect(m_bench->engine(), &EffectEngine::EngineTick, this,
                [&] { followsInAFrame = followsInAFrame || viewFollows(); });
    trigger();
    disconnect(connection);
    QVERIFY(!followsAtTheName);
    QVERIFY(!followsInAFrame);
    QVERIFY(viewFollows());
}

void DmxExportTest::everythingIsAsBefore_data()
{
    QTest::addColumn<bool>("running");
    QTest::addColumn<bool>("live");
    QTest::addColumn<bool>("frozen");
    for (int i = 0; i < 8; ++i) {
        const bool running = (i & 1) != 0;
        const bool live = (i & 2) != 0;
        const bool frozen = (i & 4) != 0;
        QTest::addRow("%s, %s, view %s", running ? "running" : "paused", live ? "live" : "not live",
                      frozen ? "frozen" : "following")
            << running << live << frozen;
    }
}

void DmxExportTest::everythingIsAsBefore()
{
    QFETCH(const bool, running);
    QFETCH(const bool, live);
    QFETCH(const bool, frozen);
    open(1000);
    m_bench->action("livePlayAction")->setChecked(live);
    m_bench->action("pauseSimAction")->setChecked(frozen);
    if (!running) {
        m_bench->pauseButton()->click();
    }
    const QString title = m_bench->window->windowTitle();
    QCOMPARE(m_bench->isRunning(), running);
    exportTo("show.dmx", 7);
    QCOMPARE(recording("show_Side.dmx").frames.size(), 8); // not live, and recorded all the same
    QCOMPARE(m_bench->isRunning(), running);
    QCOMPARE(m_bench->model()->simulateOnly(), !live);
    QCOMPARE(viewFollows(), !frozen);
    QCOMPARE(m_bench->window->windowTitle(), title);
    QVERIFY(m_bench->root()->active());
    for (Controller* const controller : m_bench->model()->controllersHash()) {
        QCOMPARE(controller->mode(), 0);
    }
    QCOMPARE(intervalAfter(25), 25);
}

/// A minute's show is written in far less: the clock is behind the times that the effects have
/// seen, and the show must not wait for it.
void DmxExportTest::theShowGoesOnFromItsStart()
{
    open(60000);
    QElapsedTimer clock;
    m_bench->dialogs.expectFile(m_bench->path("show.dmx"));
    expectRate([&](QInputDialog* box) {
        clock.start();
        box->setIntValue(40);
        box->accept();
    });
    QDateTime lastFrame;
    const QMetaObject::Connection connection =
        connect(m_bench->engine(), &EffectEngine::EngineTick, this,
                [&] { lastFrame = QDateTime::currentDateTime(); });
    trigger();
    disconnect(connection);
    QVERIFY(clock.elapsed() < 60000);
    QCOMPARE(recording("show_Side.dmx").frames.size(), 2400);
    const Effect* const child = m_bench->root()->effectList().at(0);
    QVERIFY(m_bench->root()->startTime() >= lastFrame); // rewound once more
    QVERIFY(!child->active());
    QSignalSpy ticks(m_bench->engine(), &EffectEngine::EngineTick);
    QVERIFY(ticks.wait());
    qint64 former = m_bench->root()->elapsed();
    QVERIFY2(former <= clock.elapsed(), QByteArray::number(former).constData());
    QVERIFY(child->active());
    for (int i = 0; i < 3; ++i) {
        QVERIFY(ticks.wait());
        QVERIFY(m_bench->root()->elapsed() > former);
        former = m_bench->root()->elapsed();
        QCOMPARE(child->elapsed(), former);
    }
}

/// Effects that begin anew by themselves do so from the frame before, which for the first one after
/// an export must not be one that still lies ahead.
void DmxExportTest::effectsThatRestartGoOnAtAnyDepth()
{
    constexpr quint32 kLengthMs = 60000;
    // Over after a millisecond: begins anew in every frame.
    const auto rainbow = [](int eid) {
        return WindowBench::effectXml(
            eid, kLengthMs,
            QStringLiteral(
                "<color_0>red</color_0><duration_0>0.001</duration_0><fade_0>0</fade_0>"),
            QStringLiteral("Custom Rainbow"));
    };
    const auto timeline = [](int eid, const QString& children) {
        return WindowBench::effectXml(eid, kLengthMs, children, QStringLiteral("Meta Effect"));
    };
    m_bench->open(
        m_bench->file("site.map", threeControllers()),
        m_bench->file(
            "night.sho",
            WindowBench::rootXml(rainbow(1) + timeline(2, rainbow(1) + timeline(2, rainbow(1))))));
    QSignalSpy ticks(m_bench->engine(), &EffectEngine::EngineTick);
    QVERIFY(ticks.wait());
    QElapsedTimer clock;
    clock.start();
    exportTo("show.dmx", 40);
    QVERIFY(clock.elapsed() < kLengthMs);
    QCOMPARE(recording("show_Side.dmx").frames.size(), 2400);
    for (int frame = 0; frame < 2; ++frame) {
        QVERIFY(ticks.wait());
        const MetaEffect* timelineAt = m_bench->root();
        for (int depth = 0; depth < 3; ++depth) {
            const Effect* const restarting = timelineAt->effectByEid(1);
            QVERIFY(restarting->active());
            const qint64 ahead = restarting->startMs() - QDateTime::currentMSecsSinceEpoch();
            QVERIFY2(ahead <= 0, qPrintable(QStringLiteral("depth %1: %2").arg(depth).arg(ahead)));
            timelineAt = qobject_cast<MetaEffect*>(timelineAt->effectByEid(2));
            QCOMPARE(timelineAt == nullptr, depth == 2);
        }
    }
}

void DmxExportTest::theFolderIsRemembered()
{
    QVERIFY(QDir(m_bench->dir.path()).mkdir(QStringLiteral("sub")));
    open(100);
    exportTo("sub/show.dmx", 40);
    m_bench->dialogs.expectFileCancelled();
    trigger();
    QCOMPARE(m_bench->dialogs.seen().at(2).folder, m_bench->path("sub"));
    m_bench->window->close();
    QCOMPARE(WindowBench::store().value(QStringLiteral("/dmx_path")).toString(),
             m_bench->path("sub"));
}

QTEST_MAIN(DmxExportTest)
#include "DmxExportTest.moc"
