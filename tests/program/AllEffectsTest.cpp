#include <QColor>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QNetworkDatagram>
#include <QObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <QUdpSocket>
#include <QVector>
#include <QtEndian>
#include <QtTest>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>

namespace {

constexpr quint16 kPort = 6038;
constexpr int kWaitMs = 60000;
constexpr int kPortFrame = 0x0108;
constexpr int kHeaderBytes = 24;
constexpr double kCycleSeconds = 5.0; // of every effect that has one phase
constexpr int kFrames = 480;          // twelve seconds: two whole cycles

/// What runs on each port, in this order.
enum Port : int {
    Clock,      // a cross fade from black to white: what time it is in every frame
    Fixed,      // Fixed Color
    White,      // White Fixed Color
    Fade,       // Cross Fade
    WhiteFade,  // White Cross Fade
    Wheel,      // Chasing Rainbow
    List,       // Custom Rainbow
    SweepRows,  // Sweep
    StreakRows, // Streak
    Picture,    // Image Scroll
    Film,       // Animation
    Spiral,     // XYSpiral
    Sparks,     // Sparkle
    Letters,    // Text
    Nested,     // a Meta Effect with a Fixed Color in it
    PortCount
};

struct PortPlan
{
    int lights;
    int groupType; // 1 a chase, 2 one row
};

constexpr std::array<PortPlan, PortCount> kPlan = {{
    {1, 2}, // Clock
    {3, 2}, // Fixed
    {2, 2}, // White
    {2, 2}, // Fade
    {2, 2}, // WhiteFade
    {4, 1}, // Wheel
    {3, 1}, // List
    {5, 1}, // SweepRows
    {8, 1}, // StreakRows
    {5, 2}, // Picture
    {2, 2}, // Film
    {4, 2}, // Spiral
    {6, 2}, // Sparks
    {2, 2}, // Letters
    {2, 2}, // Nested
}};

struct Rgb
{
    int r = -1;
    int g = -1;
    int b = -1;
    bool operator==(const Rgb& other) const { return r == other.r && g == other.g && b == other.b; }
};

QByteArray text(const Rgb& c)
{
    return QByteArray::number(c.r) + ' ' + QByteArray::number(c.g) + ' ' + QByteArray::number(c.b);
}

/// A frame as it came: the payload of every port.
struct Frame
{
    std::array<QByteArray, PortCount> ports;
    qint64 nanoseconds = 0;

    Rgb at(Port port, int light) const
    {
        const QByteArray& bytes = ports[static_cast<std::size_t>(port)];
        const auto byte = [&](int i) { return int(static_cast<quint8>(bytes.at(3 * light + i))); };
        return {byte(0), byte(1), byte(2)};
    }
    /// The clock's fade: the share of the cycle that has passed, as one of 255 steps.
    double phase() const { return at(Clock, 0).r / 255.0; }
};
constexpr double kStep = 1.0 / 255;

/// Steps of the clock, of which a cycle has 255, from one frame to the next.
int stepsBetween(const Frame& before, const Frame& frame)
{
    return (frame.at(Clock, 0).r - before.at(Clock, 0).r + 255) % 255;
}

/// Whether a busy machine has held up the program, or the frames on their way: a step of an effect
/// may then have been left out.
bool isPause(const Frame& before, const Frame& frame)
{
    constexpr qint64 kPauseNanoseconds = 300000000;
    constexpr int kPauseSteps = 15;
    return frame.nanoseconds - before.nanoseconds > kPauseNanoseconds ||
           stepsBetween(before, frame) > kPauseSteps;
}

/// The fully saturated colour of a hue in degrees, each component 0..255.
std::array<double, 3> pureHue(double degrees)
{
    const double h = std::fmod(std::fmod(degrees, 360.0) + 360.0, 360.0) / 60.0;
    const auto level = [h](double peak) {
        const double away = std::min(std::abs(h - peak), 6.0 - std::abs(h - peak));
        return 255.0 * std::max(0.0, std::min(1.0, 2.0 - away));
    };
    return {level(0.0), level(2.0), level(4.0)};
}

bool isNear(const Rgb& c, const std::array<double, 3>& expected, double tolerance)
{
    return std::abs(c.r - expected[0]) <= tolerance && std::abs(c.g - expected[1]) <= tolerance &&
           std::abs(c.b - expected[2]) <= tolerance;
}

/// The controller: puts what arrives together into frames.
class Ear
{
public:
    Ear()
    {
        m_bound = m_socket.bind(QHostAddress(QStringLiteral("127.0.0.1")), kPort,
                                QUdpSocket::ShareAddress | QUdpSocket::ReuseAddressHint);
        m_socket.setSocketOption(QAbstractSocket::ReceiveBufferSizeSocketOption, 4 << 20);
        m_clock.start();
        QObject::connect(&m_socket, &QUdpSocket::readyRead, &m_socket, [this] {
            while (m_socket.hasPendingDatagrams()) {
                take(m_socket.receiveDatagram().data());
            }
        });
    }
    bool isBound() const { return m_bound; }
    /// Whole frames, from the first one that the show has painted.
    const QVector<Frame>& frames() const { return m_frames; }

private:
    void take(const QByteArray& bytes)
    {
        if (bytes.size() < kHeaderBytes ||
            qFromLittleEndian<quint16>(bytes.constData() + 6) != kPortFrame) {
            return;
        }
        const int port = static_cast<quint8>(bytes.at(16)) - 1;
        if (port < 0 || port >= PortCount) {
            return;
        }
        if (port <= m_lastPort) { // the next frame; one that lost a datagram does not count
            m_open = Frame();
            m_filled = 0;
        }
        m_lastPort = port;
        m_open.ports[static_cast<std::size_t>(port)] = bytes.mid(kHeaderBytes);
        if (++m_filled == PortCount) {
            m_open.nanoseconds = m_clock.nsecsElapsed();
            if (!m_frames.isEmpty() || !(m_open.at(Fixed, 0) == Rgb{0, 0, 0})) {
                m_frames.append(m_open);
            }
        }
    }

    QUdpSocket m_socket;
    QElapsedTimer m_clock;
    QVector<Frame> m_frames;
    Frame m_open;
    int m_filled = 0;
    int m_lastPort = PortCount;
    bool m_bound = false;
};

quint64 lightUid(int port, int light)
{
    return static_cast<quint64>(0x1000 + 0x10 * port + light);
}

quint64 groupUid(int port)
{
    return static_cast<quint64>(0x8000 + port);
}

/// Map units. The spiral's lights lie north, east, south and west of (12, 12).
QPoint placeOf(int port, int light)
{
    if (port == Spiral) {
        const QPoint places[] = {{12, 0}, {24, 12}, {12, 24}, {0, 12}};
        return places[light];
    }
    if (port == Film) { // a film is stretched over both extents of the group
        return {12 * light, 12 * light};
    }
    return {12 * light, 0};
}

QByteArray mapText()
{
    const auto hex = [](quint64 number) { return QString::number(number, 16); };
    QString text = QStringLiteral("<map>\n<version>1</version>\n<controller><type>2</type>"
                                  "<self>C1</self><name>C1</name><ipaddress>127.0.0.1</ipaddress>"
                                  "<version>2</version><missing>0</missing><portlist>");
    for (int port = 0; port < PortCount; ++port) {
        text += QStringLiteral("<port><portnum>%1</portnum><porttype>1</porttype></port>")
                    .arg(port + 1);
    }
    text += QStringLiteral("</portlist>");
    QString rest;
    for (int port = 0; port < PortCount; ++port) {
        const PortPlan& plan = kPlan[static_cast<std::size_t>(port)];
        QString children;
        for (int light = 0; light < plan.lights; ++light) {
            const QString uid = hex(lightUid(port, light));
            text += QStringLiteral("<light>%1</light>").arg(uid);
            children += QStringLiteral("<child>%1</child>").arg(uid);
            rest += QStringLiteral("<light><self>%1</self><controller>C1</controller><pn>%2</pn>"
                                   "<ch>%3</ch><x>%4</x><y>%5</y></light>\n"
                                   "<group><type>3</type><self>%1</self><child>%1</child>"
                                   "</group>\n")
                        .arg(uid)
                        .arg(port)
                        .arg(3 * light)
                        .arg(placeOf(port, light).x())
                        .arg(placeOf(port, light).y());
        }
        rest += QStringLiteral("<group><type>%1</type><self>%2</self>%3</group>\n")
                    .arg(plan.groupType)
                    .arg(hex(groupUid(port)), children);
    }
    return (text + QStringLiteral("</controller>\n") + rest + QStringLiteral("</map>\n")).toUtf8();
}

QString key(const char* name, const QString& value)
{
    return QStringLiteral("<%1>%2</%1>\n").arg(QLatin1String(name), value);
}

QString key(const char* name, double value)
{
    return key(name, QString::number(value));
}

/// "aRgb" text of an opaque colour.
QString rgb(const Rgb& c)
{
    return QStringLiteral("aRgb;1;0;#ffff%1%1%2%2%3%3")
        .arg(c.r, 2, 16, QLatin1Char('0'))
        .arg(c.g, 2, 16, QLatin1Char('0'))
        .arg(c.b, 2, 16, QLatin1Char('0'));
}

QString effect(const char* type, int port, const QString& keys)
{
    return QStringLiteral("<effect>\n") + key("type", QLatin1String(type)) +
           key("gid", double(groupUid(port))) + key("begin", 0) + key("end", 600000) +
           key("endfixedtime", 600000) + keys + QStringLiteral("</effect>\n");
}

constexpr Rgb kFixed = {10, 20, 30};
constexpr Rgb kNested = {90, 80, 70};
constexpr Rgb kPassed = {255, 0, 0};
constexpr Rgb kAhead = {0, 0, 255};
constexpr Rgb kPulse = {200, 100, 50};
constexpr Rgb kTrack = {5, 6, 7};
constexpr Rgb kOutside = {9, 8, 7};
constexpr std::array<Rgb, 3> kEntries = {{{250, 0, 0}, {0, 200, 0}, {0, 0, 150}}};

/// The picture's columns.
Rgb columnOf(int x)
{
    return {40 * x + 3, 255 - 30 * x, 17};
}

constexpr int kFilmFrames = 10;
Rgb filmColor(int frame)
{
    return {20 * frame + 5, 7, 250 - 20 * frame};
}

bool writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

} // namespace

/// Plays fifteen effects of fourteen types at once in the built program, each on a port of its own,
/// and holds every frame that leaves against what the effects' rules say. The wall clock decides
/// the phase: the first port's fade tells it.
class AllEffectsTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanupTestCase();
    void steadyColorsStandInEveryFrame();
    void theClockRunsInItsCycle();
    void fadesFollowTheClock();
    void theWheelTurnsRowByRow();
    void theListMovesFromRowToRow();
    void theSweepCoversRowAfterRow();
    void theStreakMovesAsOnePiece();
    void thePictureStandsUnderItsLights();
    void theFilmShowsItsFramesInNaturalOrder();
    void theSpiralTurns();
    void sparklesDecayToTheirBackground();

private:
    QByteArray showText() const;

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<QProcess> m_program;
    std::unique_ptr<Ear> m_ear;
};

QByteArray AllEffectsTest::showText() const
{
    QString text = QStringLiteral("<effect>\n") + key("type", QStringLiteral("Meta Effect")) +
                   key("end", 600000);
    text += effect("Cross Fade", Clock,
                   key("startcolor", rgb({0, 0, 0})) + key("endcolor", rgb({255, 255, 255})) +
                       key("time", kCycleSeconds));
    text += effect("Fixed Color", Fixed, key("color", rgb(kFixed)));
    text += effect("White Fixed Color", White, key("temperature", 510) + key("intensity", 80));
    text += effect("Cross Fade", Fade,
                   key("startcolor", rgb({200, 0, 40})) + key("endcolor", rgb({0, 100, 40})) +
                       key("time", kCycleSeconds));
    text += effect("White Cross Fade", WhiteFade,
                   key("temperatureStart", 0) + key("intensityStart", 100) +
                       key("temperatureEnd", 510) + key("intensityEnd", 100) +
                       key("time", kCycleSeconds));
    text += effect("Chasing Rainbow", Wheel,
                   key("startcolor", rgb({255, 0, 0})) + key("groupoffset", 60) +
                       key("cycletime", kCycleSeconds));
    QString entries;
    for (int i = 0; i < 3; ++i) {
        const QByteArray number = QByteArray::number(i);
        entries += key("color_" + number, rgb(kEntries[static_cast<std::size_t>(i)])) +
                   key("duration_" + number, 1) + key("fade_" + number, 0);
    }
    text += effect("Custom Rainbow", List, key("groupoffset", 1) + entries);
    text += effect("Sweep", SweepRows,
                   key("fgcolor", rgb(kPassed)) + key("bgcolor", rgb(kAhead)) +
                       key("cycletime", kCycleSeconds));
    text += effect("Streak", StreakRows,
                   key("fgcolor", rgb(kPulse)) + key("bgcolor", rgb(kTrack)) + key("width", 2) +
                       key("cycletime", kCycleSeconds));
    text +=
        effect("Image Scroll", Picture,
               key("imagefile", m_dir->filePath(QStringLiteral("picture.png"))) + key("startx", 3) +
                   key("endx", 3) + key("smooth", 0) + key("bgcolor", rgb(kOutside)));
    text += effect("Animation", Film,
                   key("animationdir", m_dir->filePath(QStringLiteral("film"))) +
                       key("preload", 1) + key("fps", 2) + key("smooth", 0));
    text += effect("XYSpiral", Spiral,
                   key("cycletime", kCycleSeconds) + key("twist", 0) + key("number", 1) +
                       key("centerx", 1) + key("centery", 1));
    text += effect("Sparkle", Sparks,
                   key("sparklecolor", rgb({250, 0, 0})) + key("bgcolor", rgb({0, 0, 100})) +
                       key("density", 4) + key("cycletime", 5));
    text += effect("Text", Letters, key("bgcolor", QStringLiteral("#203040")));
    text +=
        effect("Meta Effect", Nested, effect("Fixed Color", Nested, key("color", rgb(kNested))));
    return (text + QStringLiteral("</effect>\n")).toUtf8();
}

void AllEffectsTest::initTestCase()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    QVERIFY(QDir(m_dir->path()).mkpath(QStringLiteral("film")));
    QVERIFY(QDir(m_dir->path()).mkpath(QStringLiteral("config/Halden")));
    QImage picture(5, 1, QImage::Format_RGB32);
    for (int x = 0; x < picture.width(); ++x) {
        const Rgb c = columnOf(x);
        picture.setPixel(x, 0, qRgb(c.r, c.g, c.b));
    }
    QVERIFY(picture.save(m_dir->filePath(QStringLiteral("picture.png"))));
    for (int i = 0; i < kFilmFrames; ++i) { // 1 to 10: the last would be the second as a text
        QImage image(4, 4, QImage::Format_RGB32);
        const Rgb c = filmColor(i);
        image.fill(qRgb(c.r, c.g, c.b));
        QVERIFY(image.save(m_dir->filePath(QStringLiteral("film/%1.png").arg(i + 1))));
    }
    const QString mapFile = m_dir->filePath(QStringLiteral("site.map"));
    const QString showFile = m_dir->filePath(QStringLiteral("site.sho"));
    QVERIFY(writeFile(mapFile, mapText()));
    QVERIFY(writeFile(showFile, showText()));
    QVERIFY(writeFile(m_dir->filePath(QStringLiteral("config/Halden/Pageant Forge.conf")),
                      "[General]\n"));
    m_ear = std::make_unique<Ear>();
    QVERIFY(m_ear->isBound());

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"),
                       m_dir->filePath(QStringLiteral("config")));
    environment.insert(QStringLiteral("XDG_DATA_HOME"), m_dir->filePath(QStringLiteral("data")));
    m_program = std::make_unique<QProcess>();
    m_program->setProcessEnvironment(environment);
    m_program->setProcessChannelMode(QProcess::ForwardedChannels);
    m_program->start(QStringLiteral(FORGE_BINARY_DIR "/bin/pageant-forge"),
                     {QStringLiteral("--map"), mapFile, QStringLiteral("--show"), showFile});
    QVERIFY(m_program->waitForStarted(kWaitMs));
    QTRY_VERIFY_WITH_TIMEOUT(m_ear->frames().size() >= kFrames, kWaitMs);
    QCOMPARE(m_program->state(), QProcess::Running);
}

void AllEffectsTest::cleanupTestCase()
{
    if (m_program != nullptr) {
        m_program->terminate();
        if (!m_program->waitForFinished(kWaitMs)) {
            m_program->kill();
            m_program->waitForFinished();
        }
    }
}

void AllEffectsTest::steadyColorsStandInEveryFrame()
{
    // White: 510 is all warm; 80 percent of 255 is 204, which goes to red and blue.
    const Rgb white = {204, 0, 204};
    const Rgb letters = {0x20, 0x30, 0x40};
    for (const Frame& frame : m_ear->frames()) {
        for (int light = 0; light < 3; ++light) {
            QCOMPARE(text(frame.at(Fixed, light)), text(kFixed));
        }
        for (int light = 0; light < 2; ++light) {
            QCOMPARE(text(frame.at(White, light)), text(white));
            QCOMPARE(text(frame.at(Letters, light)), text(letters));
            QCOMPARE(text(frame.at(Nested, light)), text(kNested));
        }
    }
}

void AllEffectsTest::theClockRunsInItsCycle()
{
    const QVector<Frame>& frames = m_ear->frames();
    // The longest time without a pause, in cycles by the clock and by the arrival of its frames.
    double longest = 0.0;
    double byArrival = 0.0;
    int first = 0;
    int steps = 0;
    for (int i = 0; i < frames.size(); ++i) {
        const Rgb c = frames[i].at(Clock, 0);
        QVERIFY(c.r == c.g && c.g == c.b);
        if (i > 0 && !isPause(frames[i - 1], frames[i])) {
            steps += stepsBetween(frames[i - 1], frames[i]);
        } else {
            first = i;
            steps = 0;
        }
        if (steps * kStep > longest) {
            longest = steps * kStep;
            byArrival = static_cast<double>(frames[i].nanoseconds - frames[first].nanoseconds) /
                        1e9 / kCycleSeconds;
        }
    }
    QVERIFY2(longest > 0.3, qPrintable(QString::number(longest)));
    QVERIFY2(std::abs(longest - byArrival) < 0.1,
             qPrintable(QStringLiteral("%1 and %2").arg(longest).arg(byArrival)));
}

void AllEffectsTest::fadesFollowTheClock()
{
    for (const Frame& frame : m_ear->frames()) {
        const double t = frame.phase();
        for (int light = 0; light < 2; ++light) {
            const Rgb fade = frame.at(Fade, light);
            QVERIFY2(isNear(fade, {200.0 * (1.0 - t), 100.0 * t, 40.0}, 2.0),
                     text(fade).constData());
            // From all cool, which is green, to all warm, which is red and blue.
            const Rgb white = frame.at(WhiteFade, light);
            QVERIFY2(isNear(white, {255.0 * t, 255.0 * (1.0 - t), 255.0 * t}, 2.0),
                     text(white).constData());
        }
    }
}

void AllEffectsTest::theWheelTurnsRowByRow()
{
    for (const Frame& frame : m_ear->frames()) {
        const Rgb first = frame.at(Wheel, 0);
        // Two rows on are 120 degrees: the components change places. Three are 180: each is
        // what the other lacks.
        const Rgb second = frame.at(Wheel, 2);
        QVERIFY2(isNear(second, {double(first.b), double(first.r), double(first.g)}, 1.0),
                 text(second).constData());
        const Rgb third = frame.at(Wheel, 3);
        QVERIFY2(isNear(third, {255.0 - first.r, 255.0 - first.g, 255.0 - first.b}, 1.0),
                 text(third).constData());
        // A step of the clock is 1.4 degrees, and hues are whole degrees: 4 degrees at most.
        for (int row = 0; row < 4; ++row) {
            const Rgb c = frame.at(Wheel, row);
            QVERIFY2(isNear(c, pureHue(360.0 * frame.phase() + 60.0 * row), 255.0 * 4 / 60),
                     (text(c) + " at " + QByteArray::number(frame.phase())).constData());
            QCOMPARE(std::max({c.r, c.g, c.b}), 255);
            QCOMPARE(std::min({c.r, c.g, c.b}), 0);
        }
    }
}

void AllEffectsTest::theListMovesFromRowToRow()
{
    const auto entryOf = [](const Rgb& c) {
        const auto found = std::find(kEntries.begin(), kEntries.end(), c);
        return found == kEntries.end() ? -1 : int(found - kEntries.begin());
    };
    int shown = -1;
    int changes = 0;
    Frame before;
    for (const Frame& frame : m_ear->frames()) {
        // A row is a second, a whole entry, ahead of the one before.
        const int first = entryOf(frame.at(List, 0));
        QVERIFY2(first >= 0, text(frame.at(List, 0)).constData());
        QCOMPARE(entryOf(frame.at(List, 1)), (first + 1) % 3);
        QCOMPARE(entryOf(frame.at(List, 2)), (first + 2) % 3);
        if (shown >= 0 && first != shown && !isPause(before, frame)) {
            QCOMPARE(first, (shown + 1) % 3);
            ++changes;
        }
        shown = first;
        before = frame;
    }
    QVERIFY2(changes >= 3, qPrintable(QString::number(changes)));
}

void AllEffectsTest::theSweepCoversRowAfterRow()
{
    for (const Frame& frame : m_ear->frames()) {
        double covered = 0.0;
        int mixed = 0;
        int before = 255;
        for (int row = 0; row < 5; ++row) {
            const Rgb c = frame.at(SweepRows, row);
            QVERIFY2(c.r <= before && c.g == 0 && std::abs(c.r + c.b - 255) <= 1,
                     text(c).constData());
            before = c.r;
            covered += c.r / 255.0;
            mixed += c == kPassed || c == kAhead ? 0 : 1;
        }
        QVERIFY(mixed <= 1);
        // The edge runs over one position more than there are rows.
        const double edge = std::min(5.0, 6.0 * frame.phase());
        QVERIFY2(std::abs(covered - edge) <= 6.0 * kStep + 2.0 * kStep,
                 qPrintable(QStringLiteral("%1 of %2").arg(covered).arg(edge)));
    }
}

void AllEffectsTest::theStreakMovesAsOnePiece()
{
    QVector<int> seen;
    for (const Frame& frame : m_ear->frames()) {
        int head = -1;
        int lit = 0;
        for (int row = 0; row < 8; ++row) {
            const Rgb c = frame.at(StreakRows, row);
            if (c == kPulse) {
                head = head < 0 ? row : head;
                QCOMPARE(row, head + lit);
                ++lit;
            } else {
                QCOMPARE(text(c), text(kTrack));
            }
        }
        QCOMPARE(lit, 2);
        // Eight positions less the width of two leave seven for the head.
        const int low = static_cast<int>(std::max(0.0, 7.0 * (frame.phase() - kStep)));
        const int high = static_cast<int>(std::min(6.999, 7.0 * (frame.phase() + kStep)));
        QVERIFY2(head >= low && head <= high,
                 qPrintable(QStringLiteral("%1 at %2").arg(head).arg(frame.phase())));
        if (!seen.contains(head)) {
            seen.append(head);
        }
    }
    QCOMPARE(seen.size(), 7);
}

void AllEffectsTest::thePictureStandsUnderItsLights()
{
    // The group's centre lies on column 3, lights are a column apart; those left of the centre fall
    // one column further to the left, and the last one lies beside the picture.
    const Rgb expected[] = {columnOf(0), columnOf(1), columnOf(3), columnOf(4), kOutside};
    for (const Frame& frame : m_ear->frames()) {
        for (int light = 0; light < 5; ++light) {
            QCOMPARE(text(frame.at(Picture, light)), text(expected[light]));
        }
    }
}

void AllEffectsTest::theFilmShowsItsFramesInNaturalOrder()
{
    int shown = -1;
    int steps = 0;
    Frame before;
    for (const Frame& frame : m_ear->frames()) {
        const Rgb c = frame.at(Film, 0);
        QCOMPARE(text(frame.at(Film, 1)), text(c));
        const int index = (c.r - 5) / 20;
        QCOMPARE(text(c), text(filmColor(index)));
        if (shown >= 0 && index != shown && !isPause(before, frame)) {
            QCOMPARE(index, (shown + 1) % kFilmFrames);
            ++steps;
        }
        shown = index;
        before = frame;
    }
    QVERIFY2(steps > kFilmFrames, qPrintable(QString::number(steps)));
}

void AllEffectsTest::theSpiralTurns()
{
    // One arm, no twist: the hue is the angle, and rises by a turn a cycle.
    const double angles[] = {90.0, 0.0, 270.0, 180.0};
    for (const Frame& frame : m_ear->frames()) {
        for (int light = 0; light < 4; ++light) {
            const Rgb c = frame.at(Spiral, light);
            QVERIFY2(isNear(c, pureHue(angles[light] + 360.0 * frame.phase()), 255.0 * 4 / 60),
                     (text(c) + " at " + QByteArray::number(frame.phase())).constData());
        }
        const Rgb east = frame.at(Spiral, 1);
        const Rgb west = frame.at(Spiral, 3);
        QVERIFY2(isNear(west, {255.0 - east.r, 255.0 - east.g, 255.0 - east.b}, 1.0),
                 text(west).constData());
    }
}

void AllEffectsTest::sparklesDecayToTheirBackground()
{
    int lit = 0;
    int resting = 0;
    for (const Frame& frame : m_ear->frames()) {
        for (int light = 0; light < 6; ++light) {
            const Rgb c = frame.at(Sparks, light);
            QCOMPARE(c.g, 0);
            QVERIFY2(std::abs(c.r / 250.0 + c.b / 100.0 - 1.0) < 0.02, text(c).constData());
            lit += c.r > 0 ? 1 : 0;
            resting += c.r == 0 ? 1 : 0;
        }
    }
    QVERIFY(lit > 0 && resting > 0);
}

QTEST_GUILESS_MAIN(AllEffectsTest)
#include "AllEffectsTest.moc"
