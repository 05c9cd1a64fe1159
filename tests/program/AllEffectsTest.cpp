#include "tests/program/EffectRules.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QHash>
#include <QImage>
#include <QNetworkDatagram>
#include <QObject>
#include <QPair>
#include <QPoint>
#include <QProcess>
#include <QProcessEnvironment>
#include <QSet>
#include <QTemporaryDir>
#include <QUdpSocket>
#include <QVector>
#include <QtEndian>
#include <QtTest>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <memory>

using namespace EffectRules;

namespace {

constexpr quint16 kPort = 6038;
constexpr int kWaitMs = 120000;
constexpr int kPortFrame = 0x0108;
constexpr int kHeaderBytes = 24;
constexpr int kFewestFrames = 150; // of a machine that is slow

/// A controller that hears every frame of the show in one datagram.
class Ear
{
public:
    struct Frame
    {
        QByteArray channels;
        qint64 nanoseconds;
        Rgb at(Part part, int light) const
        {
            const int offset = 3 * (firstLight(part) + light);
            const auto byte = [&](int i) {
                return int(static_cast<quint8>(channels.at(offset + i)));
            };
            return {byte(0), byte(1), byte(2)};
        }
        QVector<Rgb> part(Part part) const
        {
            QVector<Rgb> colors;
            for (int light = 0; light < lightsOf(part); ++light) {
                colors.append(at(part, light));
            }
            return colors;
        }
    };

    Ear()
    {
        m_bound = m_socket.bind(QHostAddress(QStringLiteral("127.0.0.1")), kPort,
                                QUdpSocket::ShareAddress | QUdpSocket::ReuseAddressHint);
        m_clock.start();
        QObject::connect(&m_socket, &QUdpSocket::readyRead, &m_socket, [this] {
            while (m_socket.hasPendingDatagrams()) {
                take(m_socket.receiveDatagram().data());
            }
        });
    }
    bool isBound() const { return m_bound; }
    /// From the second one that the show has painted: loading it paints a frame that nothing sends,
    /// and the first to leave is mixed with that.
    const QVector<Frame>& frames() const { return m_frames; }

private:
    void take(const QByteArray& bytes)
    {
        if (bytes.size() < kHeaderBytes + 3 * kLights ||
            qFromLittleEndian<quint16>(bytes.constData() + 6) != kPortFrame) {
            return;
        }
        const Frame frame = {bytes.mid(kHeaderBytes), m_clock.nsecsElapsed()};
        if (m_isPlaying) {
            m_frames.append(frame);
        }
        m_isPlaying = m_isPlaying || !(frame.at(Fixed, 0) == Rgb{0, 0, 0});
    }

    QUdpSocket m_socket;
    QElapsedTimer m_clock;
    QVector<Frame> m_frames;
    bool m_bound = false;
    bool m_isPlaying = false;
};

/// When an effect that starts again by itself may have started: all the moments that explain the
/// frames so far. It starts again in the frame in which its cycle is over, and counts from the
/// frame before.
class Restarts
{
public:
    explicit Restarts(int cycleMs)
        : m_cycleMs(cycleMs)
    {}
    /// Whether the frame that was painted at one of `times` is explained; `shows(elapsed)` tells if
    /// it shows what it must so long after the start, `showsAtEnd(elapsed)` past the cycle's end.
    template <typename Shows, typename ShowsAtEnd>
    bool explain(const QVector<int>& times, Shows shows, ShowsAtEnd showsAtEnd)
    {
        QSet<int> starts;
        for (const int now : times) {
            for (const int start : qAsConst(m_starts)) {
                const int elapsed = now - start;
                if (elapsed >= 0 && elapsed < m_cycleMs && shows(elapsed)) {
                    starts.insert(start);
                }
                const bool endsHere = elapsed >= m_cycleMs && showsAtEnd(elapsed);
                for (int last = m_before; elapsed >= m_cycleMs && last <= now; ++last) {
                    // The end may have come in a frame that was lost on its way.
                    if (endsHere || (now - last < m_cycleMs && shows(now - last))) {
                        starts.insert(last);
                    }
                }
            }
        }
        m_starts = starts;
        m_before = times.first();
        return !m_starts.isEmpty();
    }

private:
    int m_cycleMs;
    int m_before = 0; // the earliest moment of the frame before
    QSet<int> m_starts = {0};
};

quint64 lightUid(int light)
{
    return 0x1000 + static_cast<quint64>(light);
}

quint64 groupUid(int part)
{
    return 0x8000 + static_cast<quint64>(part);
}

QByteArray mapText()
{
    const auto hex = [](quint64 number) { return QString::number(number, 16); };
    QString head = QStringLiteral("<map>\n<version>1</version>\n<controller><type>2</type>"
                                  "<self>C1</self><name>C1</name><ipaddress>127.0.0.1</ipaddress>"
                                  "<version>2</version><missing>0</missing><portlist>"
                                  "<port><portnum>1</portnum><porttype>1</porttype></port>"
                                  "</portlist>");
    QString rest;
    for (int part = 0; part < PartCount; ++part) {
        QString children;
        for (int light = 0; light < lightsOf(Part(part)); ++light) {
            const int number = firstLight(Part(part)) + light;
            const QString uid = hex(lightUid(number));
            const QPoint place = placeOf(Part(part), light);
            head += QStringLiteral("<light>%1</light>").arg(uid);
            children += QStringLiteral("<child>%1</child>").arg(uid);
            rest += QStringLiteral("<light><self>%1</self><controller>C1</controller><pn>0</pn>"
                                   "<ch>%2</ch><x>%3</x><y>%4</y></light>\n"
                                   "<group><type>3</type><self>%1</self><child>%1</child>"
                                   "</group>\n")
                        .arg(uid)
                        .arg(3 * number)
                        .arg(place.x())
                        .arg(place.y());
        }
        rest += QStringLiteral("<group><type>%1</type><self>%2</self>%3</group>\n")
                    .arg(isChase(Part(part)) ? 1 : 2)
                    .arg(hex(groupUid(part)), children);
    }
    return (head + QStringLiteral("</controller>\n") + rest + QStringLiteral("</map>\n")).toUtf8();
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

QString name(const Rgb& c)
{
    return QStringLiteral("#%1%2%3")
        .arg(c.r, 2, 16, QLatin1Char('0'))
        .arg(c.g, 2, 16, QLatin1Char('0'))
        .arg(c.b, 2, 16, QLatin1Char('0'));
}

/// An effect of ten minutes from the show's start, above the selection that covers all.
QString effect(const char* type, Part part, const QString& keys)
{
    return QStringLiteral("<effect>\n") + key("type", QLatin1String(type)) +
           key("gid", double(groupUid(part))) + key("priority", part == Chosen ? 0 : 1) +
           key("begin", 0) + key("end", 600000) + key("endfixedtime", 600000) + keys +
           QStringLiteral("</effect>\n");
}

bool writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

QByteArray text(const QVector<Rgb>& colors)
{
    QByteArray all;
    for (const Rgb& c : colors) {
        all += '(' + QByteArray::number(c.r) + ' ' + QByteArray::number(c.g) + ' ' +
               QByteArray::number(c.b) + ')';
    }
    return all;
}

QByteArray text(const QVector<int>& times)
{
    return times.isEmpty() ? QByteArray("at no time")
                           : "from " + QByteArray::number(times.first()) + " to " +
                                 QByteArray::number(times.last()) + " ms";
}

} // namespace

/// Plays a show of all eighteen types at once in the built program and holds every frame that
/// leaves against what the effects' rules say. No clock of this process has a part in it: a fade
/// and a slow fade tell within some milliseconds at what time of the show a frame was painted, and
/// the rest must be, byte for byte, what the rules give for one of these.
class AllEffectsTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanupTestCase();
    void timeRunsForwardAsFastAsItShould();
    void everyFrameFollowsItsRule_data();
    void everyFrameFollowsItsRule();
    void oneMomentExplainsAllEffectsOfAFrame();
    void theListMovesFromRowToRow();
    void theFilmShowsItsFramesInNaturalOrder();
    void randomColorsComeBackInTheirOrder();
    void sparklesDecayToTheirBackground();
    void groupSparklesLieBetweenTheirColors();

private:
    QByteArray showText() const;

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<QProcess> m_program;
    std::unique_ptr<Ear> m_ear;
    QVector<QVector<int>> m_times; // of each frame: the show's times in ms that its clocks allow
};

QByteArray AllEffectsTest::showText() const
{
    const Rgb black = {0, 0, 0};
    const Rgb white = {255, 255, 255};
    const double cycle = kCycleMs / 1000.0;
    const auto cycletime = key("cycletime", cycle);
    QString show = QStringLiteral("<effect>\n") + key("type", QStringLiteral("Meta Effect")) +
                   key("end", 600000);
    show +=
        effect("Cross Fade", Clock,
               key("startcolor", rgb(black)) + key("endcolor", rgb(white)) + key("time", cycle));
    show += effect("Cross Fade", Calendar,
                   key("startcolor", rgb(black)) + key("endcolor", rgb(white)) +
                       key("time", kCalendarMs / 1000.0));
    show += effect("Selection", Chosen, key("bgcolor", rgb(kBackground)));
    show += effect("Fixed Color", Fixed, key("color", rgb(kFixed)));
    show += effect("White Fixed Color", White, key("temperature", 510) + key("intensity", 80));
    show += effect("Text", Letters, key("bgcolor", name(kLetters)));
    show +=
        effect("Meta Effect", Nested, effect("Fixed Color", Nested, key("color", rgb(kNested))));
    show += effect("Cross Fade", Fade,
                   key("startcolor", rgb(kFadeFrom)) + key("endcolor", rgb(kFadeTo)) +
                       key("time", cycle));
    show += effect("White Cross Fade", WhiteFade,
                   key("temperatureStart", 0) + key("intensityStart", 100) +
                       key("temperatureEnd", 510) + key("intensityEnd", 100) + key("time", cycle));
    show +=
        effect("Chasing Rainbow", Wheel,
               key("startcolor", rgb({255, 0, 0})) + key("groupoffset", kWheelOffset) + cycletime);
    show += effect("Sweep", SweepRows,
                   key("fgcolor", rgb(kPassed)) + key("bgcolor", rgb(kAhead)) + cycletime);
    show += effect("Streak", StreakRows,
                   key("fgcolor", rgb(kPulse)) + key("bgcolor", rgb(kTrack)) +
                       key("width", kStreakWidth) + key("fwdtail", kForwardTail) +
                       key("revtail", kReverseTail) + cycletime);
    show += effect("Image Scroll", Picture,
                   key("imagefile", m_dir->filePath(QStringLiteral("picture.png"))) +
                       key("startx", kScrollFrom) + key("endx", kScrollTo) + key("smooth", 0) +
                       key("bgcolor", rgb(kBackground)) + cycletime);
    show += effect("XYBurst", Burst, key("rainbowdir", 1) + key("width", kRingWidth) + cycletime);
    show += effect("XYSpiral", Spiral,
                   key("twist", 0) + key("number", 1) + key("centerx", 1) + key("centery", 1) +
                       cycletime);
    QString entries;
    for (int i = 0; i < kEntries; ++i) {
        const QByteArray number = QByteArray::number(i);
        entries += key("color_" + number, rgb(entryColor(i))) +
                   key("duration_" + number, kHoldMs / 1000.0) +
                   key("fade_" + number, kEntryFadeMs / 1000.0);
    }
    show += effect("Custom Rainbow", List, key("groupoffset", kListOffsetMs / 1000.0) + entries);
    show += effect("Animation", Film,
                   key("animationdir", m_dir->filePath(QStringLiteral("film"))) +
                       key("preload", 1) + key("fps", kFilmRate) + key("smooth", 0));
    show += effect("Random Color", Random,
                   key("startcolor", rgb({0, 255, 0})) + key("time", kRandomMs / 1000.0) +
                       key("fadetime", 0) + key("cyclecount", kRandomColors));
    show += effect("Sparkle", Sparks,
                   key("sparklecolor", rgb(kSpark)) + key("bgcolor", rgb(kNight)) +
                       key("decay", 10) + key("density", 4) + key("cycletime", 5));
    show += effect("Sparkle Group", GroupSparks,
                   key("sparklecolor", name(kSpark)) + key("bgcolor", name(kNight)) +
                       key("decay", 10) + key("density", 4) + key("cycletime", 5));
    return (show + QStringLiteral("</effect>\n")).toUtf8();
}

void AllEffectsTest::initTestCase()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    QVERIFY(QDir(m_dir->path()).mkpath(QStringLiteral("film")));
    QVERIFY(QDir(m_dir->path()).mkpath(QStringLiteral("config/Halden")));
    QImage picture(kPictureWidth, 1, QImage::Format_RGB32);
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
    // Two cycles and a half, by the show's own calendar.
    const int until = expected(Calendar, kCycleMs * 5 / 2).first().r + 1;
    const QVector<Ear::Frame>& frames = m_ear->frames();
    QTRY_VERIFY_WITH_TIMEOUT(
        frames.size() >= kFewestFrames && frames.last().at(Calendar, 0).r >= until, kWaitMs);
    QCOMPARE(m_program->state(), QProcess::Running);

    // The times of each reading of both clocks.
    QHash<QPair<int, int>, QVector<int>> times;
    for (int ms = 0; ms < kCalendarMs; ++ms) {
        times[{expected(Calendar, ms).first().r, expected(Clock, ms).first().r}].append(ms);
    }
    for (const Ear::Frame& frame : frames) {
        const Rgb clock = frame.at(Clock, 0);
        const Rgb calendar = frame.at(Calendar, 0);
        QVERIFY(clock.r == clock.g && clock.g == clock.b);
        QVERIFY(calendar.r == calendar.g && calendar.g == calendar.b);
        m_times.append(times.value({calendar.r, clock.r}));
        QVERIFY2(!m_times.last().isEmpty(),
                 qPrintable(QStringLiteral("%1 and %2").arg(calendar.r).arg(clock.r)));
        // A step of the clock, so that what follows is told apart.
        QVERIFY(m_times.last().last() - m_times.last().first() <= kCycleMs / 255 + 1);
    }
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

void AllEffectsTest::timeRunsForwardAsFastAsItShould()
{
    for (int i = 1; i < m_times.size(); ++i) {
        QVERIFY2(m_times.at(i).last() >= m_times.at(i - 1).first(),
                 text(m_times.at(i)).constData());
    }
    const qint64 shown = m_times.last().first() - m_times.first().first();
    const qint64 passed =
        (m_ear->frames().last().nanoseconds - m_ear->frames().first().nanoseconds) / 1000000;
    QVERIFY2(shown > qint64(2) * kCycleMs, qPrintable(QString::number(shown)));
    // Frames may wait on their way to a busy ear.
    QVERIFY2(shown > passed / 2 && shown < passed * 2,
             qPrintable(QStringLiteral("%1 in %2").arg(shown).arg(passed)));
}

void AllEffectsTest::everyFrameFollowsItsRule_data()
{
    QTest::addColumn<int>("part");
    QTest::addColumn<int>("looks"); // at least so many are seen in two cycles
    QTest::newRow("Selection") << int(Chosen) << 1;
    QTest::newRow("Fixed Color") << int(Fixed) << 1;
    QTest::newRow("White Fixed Color") << int(White) << 1;
    QTest::newRow("Text") << int(Letters) << 1;
    QTest::newRow("Meta Effect") << int(Nested) << 1;
    QTest::newRow("Cross Fade") << int(Fade) << 40;
    QTest::newRow("White Cross Fade") << int(WhiteFade) << 40;
    QTest::newRow("Chasing Rainbow") << int(Wheel) << 40;
    QTest::newRow("Sweep") << int(SweepRows) << 40;
    QTest::newRow("Streak") << int(StreakRows) << 7;
    QTest::newRow("Image Scroll") << int(Picture) << 4;
    QTest::newRow("XYBurst") << int(Burst) << 40;
    QTest::newRow("XYSpiral") << int(Spiral) << 40;
}

void AllEffectsTest::everyFrameFollowsItsRule()
{
    QFETCH(const int, part);
    QFETCH(const int, looks);
    QSet<QByteArray> seen;
    for (int i = 0; i < m_times.size(); ++i) {
        const QVector<Rgb> shown = m_ear->frames().at(i).part(Part(part));
        const QVector<int>& times = m_times.at(i);
        const bool follows = std::any_of(times.begin(), times.end(),
                                         [&](int ms) { return expected(Part(part), ms) == shown; });
        QVERIFY2(follows, (text(shown) + ' ' + text(times) + ": " +
                           text(expected(Part(part), times.first())))
                              .constData());
        seen.insert(text(shown));
    }
    QVERIFY2(seen.size() >= looks, qPrintable(QString::number(seen.size())));
    QVERIFY(looks > 1 || seen.size() == 1);
}

void AllEffectsTest::oneMomentExplainsAllEffectsOfAFrame()
{
    for (int i = 0; i < m_times.size(); ++i) {
        QVector<int> times = m_times.at(i);
        for (const Part part :
             {Fade, WhiteFade, Wheel, SweepRows, StreakRows, Picture, Burst, Spiral}) {
            const QVector<Rgb> shown = m_ear->frames().at(i).part(part);
            QVector<int> left;
            std::copy_if(times.begin(), times.end(), std::back_inserter(left),
                         [&](int ms) { return expected(part, ms) == shown; });
            QVERIFY2(!left.isEmpty(), (QByteArray::number(part) + " of frame " +
                                       QByteArray::number(i) + ": " + text(times))
                                          .constData());
            times = left;
        }
    }
}

void AllEffectsTest::theListMovesFromRowToRow()
{
    Restarts restarts(kListMs);
    QSet<QByteArray> seen;
    for (int i = 0; i < m_times.size(); ++i) {
        const QVector<Rgb> shown = m_ear->frames().at(i).part(List);
        const auto shows = [&](int elapsed) { return listColors(elapsed % kListMs) == shown; };
        QVERIFY2(restarts.explain(m_times.at(i), shows, shows),
                 (text(shown) + ' ' + text(m_times.at(i))).constData());
        seen.insert(text(shown));
    }
    QVERIFY2(seen.size() >= 20, qPrintable(QString::number(seen.size())));
}

void AllEffectsTest::theFilmShowsItsFramesInNaturalOrder()
{
    Restarts restarts(kFilmFrames * kFilmStepMs);
    QSet<QByteArray> seen;
    for (int i = 0; i < m_times.size(); ++i) {
        const QVector<Rgb> shown = m_ear->frames().at(i).part(Film);
        const auto isFrame = [&](int index) {
            return shown == QVector<Rgb>(lightsOf(Film), filmColor(index));
        };
        QVERIFY2(restarts.explain(
                     m_times.at(i), [&](int elapsed) { return isFrame(elapsed / kFilmStepMs); },
                     [&](int) { return isFrame(0); }),
                 (text(shown) + ' ' + text(m_times.at(i))).constData());
        seen.insert(text(shown));
    }
    QCOMPARE(seen.size(), kFilmFrames);
}

void AllEffectsTest::randomColorsComeBackInTheirOrder()
{
    QHash<int, Rgb> colors = {{0, {0, 255, 0}}}; // the start colour's hue comes first
    for (int i = 0; i < m_times.size(); ++i) {
        const auto indexAt = [](int ms) { return ms / kRandomMs % kRandomColors; };
        const int index = indexAt(m_times.at(i).first());
        if (index != indexAt(m_times.at(i).last())) {
            continue;
        }
        const Rgb c = m_ear->frames().at(i).at(Random, 0);
        QCOMPARE(text(m_ear->frames().at(i).part(Random)), text(QVector<Rgb>(lightsOf(Random), c)));
        QCOMPARE(std::max({c.r, c.g, c.b}), 255);
        QCOMPARE(std::min({c.r, c.g, c.b}), 0);
        if (!colors.contains(index)) {
            colors.insert(index, c);
        }
        QCOMPARE(text({c}), text({colors.value(index)}));
    }
    QCOMPARE(colors.size(), kRandomColors);
    for (int i = 1; i < kRandomColors; ++i) { // at least a sixth of the wheel apart
        const Rgb a = colors.value(i - 1);
        const Rgb b = colors.value(i);
        QVERIFY2(std::abs(a.r - b.r) + std::abs(a.g - b.g) + std::abs(a.b - b.b) >= 254,
                 text({a, b}).constData());
    }
}

void AllEffectsTest::sparklesDecayToTheirBackground()
{
    // Levels of 0 to 1000 fall by one a millisecond.
    struct Range
    {
        int low;
        int high;
        bool meets(int from, int to) const { return low <= to && high >= from; }
    };
    QVector<Range> before;
    int lit = 0;
    int resting = 0;
    for (int i = 0; i < m_times.size(); ++i) {
        QVector<Range> levels;
        for (int light = 0; light < lightsOf(Sparks); ++light) {
            const Rgb c = m_ear->frames().at(i).at(Sparks, light);
            Range range = {-1, -1};
            for (int level = 0; level <= 1000; ++level) {
                if (sparkleColor(level) == c) {
                    range = {range.low < 0 ? level : range.low, level};
                }
            }
            QVERIFY2(range.low >= 0, text({c}).constData());
            lit += range.low > 0 ? 1 : 0;
            resting += range.low == 0 ? 1 : 0;
            if (!before.isEmpty()) {
                const int least = std::max(0, m_times.at(i).first() - m_times.at(i - 1).last());
                const int most = m_times.at(i).last() - m_times.at(i - 1).first();
                const Range old = before.at(light);
                const bool decays =
                    range.meets(std::max(0, old.low - most), std::max(0, old.high - least));
                const bool begins = range.meets(std::max(0, 1000 - most), 1000);
                QVERIFY2(decays || begins,
                         qPrintable(QStringLiteral("%1 to %2 after %3 to %4, in %5 to %6 ms")
                                        .arg(range.low)
                                        .arg(range.high)
                                        .arg(old.low)
                                        .arg(old.high)
                                        .arg(least)
                                        .arg(most)));
            }
            levels.append(range);
        }
        before = levels;
    }
    QVERIFY(lit > 0 && resting > 0);
}

void AllEffectsTest::groupSparklesLieBetweenTheirColors()
{
    QSet<QByteArray> allowed;
    for (int level = 0; level <= 1000; ++level) {
        allowed.insert(text({groupSparkleColor(level)}));
    }
    QSet<QByteArray> seen;
    for (const Ear::Frame& frame : m_ear->frames()) {
        for (const Rgb& c : frame.part(GroupSparks)) {
            QVERIFY2(allowed.contains(text({c})), text({c}).constData());
            seen.insert(text({c}));
        }
    }
    QVERIFY(seen.contains(text({kNight})));
    QVERIFY2(seen.size() > 10, qPrintable(QString::number(seen.size())));
}

QTEST_GUILESS_MAIN(AllEffectsTest)
#include "AllEffectsTest.moc"
