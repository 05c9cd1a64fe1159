#include "tests/program/Designer.h"

#include <QHash>
#include <QNetworkDatagram>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QUdpSocket>
#include <QtEndian>
#include <QtTest>

#include <algorithm>
#include <cmath>
#include <memory>

namespace {

constexpr quint16 kPort = 6038;
constexpr int kWaitMs = 120000;
constexpr int kPortFrame = 0x0108;
constexpr int kHeaderBytes = 24;
constexpr int kFewestFrames = 60; // of a machine that is slow
constexpr int kRows = 18;         // lights of a column
constexpr double kShowMs = 8000.0;

/// What one frame sets at a controller: the channels of its ports, by number.
using Frame = QHash<int, QByteArray>;

/// A controller that hears every frame of its lights.
class Ear
{
public:
    Ear()
    {
        m_bound = m_socket.bind(QHostAddress(QStringLiteral("127.0.0.1")), kPort,
                                QUdpSocket::ShareAddress | QUdpSocket::ReuseAddressHint);
        QObject::connect(&m_socket, &QUdpSocket::readyRead, &m_socket, [this] {
            while (m_socket.hasPendingDatagrams()) {
                take(m_socket.receiveDatagram().data());
            }
        });
    }
    bool isBound() const { return m_bound; }
    /// Without the last one, of which more may come.
    int frameCount() const { return std::max(0, m_frames.size() - 1); }
    const Frame& frame(int index) const { return m_frames.at(index); }

private:
    void take(const QByteArray& bytes)
    {
        if (bytes.size() < kHeaderBytes ||
            qFromLittleEndian<quint16>(bytes.constData() + 6) != kPortFrame) {
            return;
        }
        const int port = static_cast<quint8>(bytes.at(16));
        if (m_frames.isEmpty() || m_frames.last().contains(port)) {
            m_frames.append(Frame());
        }
        m_frames.last().insert(port, bytes.mid(kHeaderBytes));
    }

    QUdpSocket m_socket;
    QVector<Frame> m_frames;
    bool m_bound = false;
};

struct Place
{
    int port;
    int channel;
};

/// Where the lights hang, in the order of the columns.
QVector<Place> placesOf(const QString& map)
{
    QVector<Place> places;
    const QRegularExpression light(QStringLiteral("<light><self>.*?<pn>(\\d+)</pn>.*?"
                                                  "<channel>(\\d+)</channel>"));
    QRegularExpressionMatchIterator match = light.globalMatch(map);
    while (match.hasNext()) {
        const QRegularExpressionMatch found = match.next();
        places.append({found.captured(1).toInt() + 1, found.captured(2).toInt()});
    }
    return places;
}

/// Light `row` of `column`, both from 1; black where the frame doesn't tell.
Rgb lightOf(const Frame& frame, int column, int row)
{
    static const QVector<Place> kPlaces =
        placesOf(WindowBench::text(QStringLiteral(FORGE_SOURCE_DIR "/examples/facade/facade.map")));
    const Place& place = kPlaces.at(kRows * (column - 1) + row - 1);
    const QByteArray channels = frame.value(place.port);
    if (channels.size() < place.channel + 3) {
        return {0, 0, 0};
    }
    const auto byte = [&](int i) {
        return int(static_cast<quint8>(channels.at(place.channel + i)));
    };
    return {byte(0), byte(1), byte(2)};
}

/// The moments that a level of the clock's red stands for.
struct Moments
{
    double from;
    double to;
    bool liesIn(double begin, double end) const { return from >= begin && to <= end; }
};

Moments momentsOf(const Rgb& clock)
{
    const double ms = kShowMs / 255.0;
    return {std::max(0.0, (clock.r - 1.0) * ms), (clock.r + 1.0) * ms};
}

QByteArray frameText(int frame, const Rgb& c, const Moments& now)
{
    return QStringLiteral("frame %1: (%2, %3, %4) at %5 to %6 ms")
        .arg(frame)
        .arg(c.r)
        .arg(c.g)
        .arg(c.b)
        .arg(now.from)
        .arg(now.to)
        .toLatin1();
}

bool isBetween(int level, double a, double b)
{
    return level >= std::min(a, b) - 1.5 && level <= std::max(a, b) + 1.5;
}

/// `a` to `b` by the share of `from` to `to` at a moment.
double ramp(double moment, double from, double to, double a, double b)
{
    return a + (b - a) * std::clamp((moment - from) / (to - from), 0.0, 1.0);
}

bool isRamp(const Rgb& c, const Moments& now, double from, double to, const Rgb& a, const Rgb& b)
{
    const auto fits = [&](int level, int first, int last) {
        return isBetween(level, ramp(now.from, from, to, first, last),
                         ramp(now.to, from, to, first, last));
    };
    return fits(c.r, a.r, b.r) && fits(c.g, a.g, b.g) && fits(c.b, a.b, b.b);
}

bool isColor(const Rgb& c, const Rgb& wanted)
{
    return c.r == wanted.r && c.g == wanted.g && c.b == wanted.b;
}

constexpr Rgb kBlack = {0, 0, 0};
constexpr Rgb kBase = {30, 60, 90};
constexpr Rgb kOver = {200, 100, 10};
constexpr Rgb kLater = {240, 120, 60};
constexpr Rgb kChain = {10, 220, 130};

} // namespace

/// A whole show out of nothing: composed by hand in one run of the program, played by another.
class ComposeShowTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void aShowIsComposedByMouseAndKeyboard();
    void itsFileSaysWhatWasComposed();
    void aSecondRunHearsIt();
    void fixedColorsFollowTheirTimes();
    void linksHold();
    void aHigherPriorityLiesAbove();
    void theOthersPlayInTheirTimes();
    void cleanupTestCase();

private:
    static void composeFixedColors(Designer* designer);
    static void composeOthers(Designer* designer);

    QString m_show;
    QTemporaryDir m_dir;
    std::unique_ptr<QProcess> m_program;
    std::unique_ptr<Ear> m_ear;
    QVector<Frame> m_frames;
    QVector<Moments> m_moments;
};

void ComposeShowTest::initTestCase()
{
    Designer::prepare();
    m_show = m_dir.filePath(QStringLiteral("composed.sho"));
}

void ComposeShowTest::composeFixedColors(Designer* designer)
{
    designer->create(QStringLiteral("Fixed Color"), QStringLiteral("Column 01"),
                     QStringLiteral("Base"));
    designer->setColor("RGB Color", kBase);
    designer->fixedStart(QStringLiteral("0"));
    designer->fixedLength(QStringLiteral("8"));

    designer->create(QStringLiteral("Cross Fade"), QStringLiteral("Column 02"),
                     QStringLiteral("Clock"));
    Designer::type(designer->control<QLineEdit>("Cycle Time (sec)"), QStringLiteral("8"));
    designer->setColor("Start Color", kBlack);
    designer->setColor("End Color", {255, 0, 0});
    // One cycle, as a new effect has it.

    designer->create(QStringLiteral("Fixed Color"), QStringLiteral("Column 03"),
                     QStringLiteral("Later"));
    designer->setColor("RGB Color", kLater);
    Designer::link(designer->start(), true, QStringLiteral("Clock"), QStringLiteral("2"));
    designer->fixedLength(QStringLiteral("3"));
    designer->setCell(MetaWidget::FadeInColumn, QStringLiteral("1"));

    designer->create(QStringLiteral("Fixed Color"), QStringLiteral("Column 04"),
                     QStringLiteral("Chain"));
    designer->setColor("RGB Color", kChain);
    Designer::link(designer->start(), false, QStringLiteral("Later"), QStringLiteral("0.5"));
    Designer::link(designer->end(), false, QStringLiteral("Base"), QStringLiteral("-0.5"));

    designer->create(QStringLiteral("Fixed Color"), QStringLiteral("Column 01"),
                     QStringLiteral("Over"));
    designer->setColor("RGB Color", kOver);
    designer->fixedStart(QStringLiteral("3"));
    designer->fixedLength(QStringLiteral("2"));
    designer->setCell(MetaWidget::FadeOutColumn, QStringLiteral("1"));
    designer->setCell(MetaWidget::PriorityColumn, QStringLiteral("5"));
}

void ComposeShowTest::composeOthers(Designer* designer)
{
    designer->create(QStringLiteral("Image Scroll"), QStringLiteral("Column 05"),
                     QStringLiteral("Hills"));
    Designer::type(designer->control<QLineEdit>("Image File"),
                   QStringLiteral("examples/facade/hills.png"));
    Designer::click(designer->button("Load"));
    Designer::type(designer->control<QLineEdit>("Cycle Time (sec)"), QStringLiteral("4"));
    designer->fixedStart(QStringLiteral("1"));
    designer->fixedLength(QStringLiteral("4"));

    designer->create(QStringLiteral("Chasing Rainbow"), QStringLiteral("Column 06"),
                     QStringLiteral("Rainbow"));
    designer->fixedStart(QStringLiteral("0"));
    designer->fixedLength(QStringLiteral("4"));

    designer->create(QStringLiteral("Sparkle"), QStringLiteral("Column 07"),
                     QStringLiteral("Stars"));
    designer->setColor("Sparkle Color", {255, 255, 255});
    designer->fixedStart(QStringLiteral("2"));
    designer->fixedLength(QStringLiteral("4"));

    designer->create(QStringLiteral("Random Color"), QStringLiteral("Column 08"),
                     QStringLiteral("Lottery"));
    Designer::type(designer->control<QLineEdit>("Time per color (sec)"), QStringLiteral("0.5"));
    designer->fixedStart(QStringLiteral("4"));
    designer->fixedLength(QStringLiteral("4"));

    designer->create(QStringLiteral("XYBurst"), QStringLiteral("Column 09"),
                     QStringLiteral("Burst"));
    designer->fixedStart(QStringLiteral("0"));
    designer->fixedLength(QStringLiteral("2"));

    designer->create(QStringLiteral("Sweep"), QStringLiteral("Pavilion, column by column"),
                     QStringLiteral("Curtain"));
    designer->setColor("Sweep Color", {0, 255, 0});
    designer->fixedStart(QStringLiteral("0"));
    designer->fixedLength(QStringLiteral("8"));

    designer->create(QStringLiteral("Streak"), QStringLiteral("East Wing, column by column"),
                     QStringLiteral("Comet"));
    designer->setColor("Pulse Color", {0, 0, 255});
    designer->fixedStart(QStringLiteral("0"));
    designer->fixedLength(QStringLiteral("8"));
}

void ComposeShowTest::aShowIsComposedByMouseAndKeyboard()
{
    Designer designer;
    QVERIFY(designer.bench.editor()->isEnabled());
    QCOMPARE(designer.bench.table()->rowCount(), 0);
    composeFixedColors(&designer);
    if (QTest::currentTestFailed()) {
        return;
    }
    composeOthers(&designer);
    if (QTest::currentTestFailed()) {
        return;
    }
    QCOMPARE(designer.bench.table()->rowCount(), 12);
    QVERIFY(designer.bench.editor()->isModified());
    designer.save(m_show);
    QVERIFY(QFile::exists(m_show));
    QVERIFY(!designer.bench.editor()->isModified());
    QCOMPARE(designer.complaints(), QString());
}

void ComposeShowTest::itsFileSaysWhatWasComposed()
{
    const auto effects = effectsOf(m_show);
    QCOMPARE(effects.size(), 12);
    QSet<QString> types;
    for (const auto& keys : effects) {
        types.insert(keys.value(QStringLiteral("type")));
    }
    QCOMPARE(types.size(), 9);
    const auto value = [&effects](const char* effect, const char* key) {
        return effects.value(QString::fromLatin1(effect)).value(QString::fromLatin1(key));
    };
    QCOMPARE(value("Base", "gid"), QString::number(0x1000000));
    QCOMPARE(value("Base", "begin"), QStringLiteral("0"));
    QCOMPARE(value("Base", "end"), QStringLiteral("8000"));
    QCOMPARE(value("Clock", "end"), QStringLiteral("8000"));
    QCOMPARE(value("Later", "begin"), QStringLiteral("2000"));
    QCOMPARE(value("Later", "end"), QStringLiteral("5000"));
    QCOMPARE(value("Later", "fadein"), QStringLiteral("1000"));
    QCOMPARE(value("Chain", "begin"), QStringLiteral("5500"));
    QCOMPARE(value("Chain", "end"), QStringLiteral("7500"));
    QCOMPARE(value("Over", "priority"), QStringLiteral("5"));
    QCOMPARE(value("Over", "fadeout"), QStringLiteral("1000"));
    QCOMPARE(value("Hills", "begin"), QStringLiteral("1000"));
    QVERIFY(effects.value(QStringLiteral("Hills"))
                .values()
                .contains(QStringLiteral("examples/facade/hills.png")));
}

void ComposeShowTest::aSecondRunHearsIt()
{
    m_ear = std::make_unique<Ear>();
    QVERIFY(m_ear->isBound());
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_dir.filePath(QStringLiteral("config")));
    environment.insert(QStringLiteral("XDG_DATA_HOME"), m_dir.filePath(QStringLiteral("data")));
    m_program = std::make_unique<QProcess>();
    m_program->setProcessEnvironment(environment);
    m_program->setProcessChannelMode(QProcess::ForwardedChannels);
    m_program->start(QStringLiteral(FORGE_BINARY_DIR "/bin/pageant-forge"),
                     {QStringLiteral("--map"), QStringLiteral("examples/facade/facade.map"),
                      QStringLiteral("--show"), m_show});
    QVERIFY(m_program->waitForStarted());
    // Once through the show, whatever the pace of the frames.
    int seen = 0;
    int before = 0;
    bool isOver = false;
    QTRY_VERIFY_WITH_TIMEOUT(
        [&] {
            for (; seen < m_ear->frameCount() && !isOver; ++seen) {
                const int clock = lightOf(m_ear->frame(seen), 2, 1).r;
                isOver = clock + 100 < before;
                before = clock;
            }
            return isOver;
        }(),
        kWaitMs);
    m_program->kill();
    m_program->waitForFinished();
    for (int i = 0; i < seen - 1; ++i) {
        const Frame& frame = m_ear->frame(i);
        // From when the show paints: Base is on all the time.
        if (m_frames.isEmpty() && lightOf(frame, 1, 1).isBlack()) {
            continue;
        }
        m_frames.append(frame);
        m_moments.append(momentsOf(lightOf(frame, 2, 1)));
    }
    QVERIFY2(m_frames.size() > kFewestFrames, qPrintable(QString::number(m_frames.size())));
    m_frames.removeFirst(); // the first to leave is mixed with the frame of the loading
    m_moments.removeFirst();
}

void ComposeShowTest::fixedColorsFollowTheirTimes()
{
    int dark = 0;
    int rising = 0;
    int full = 0;
    for (int i = 0; i < m_frames.size(); ++i) {
        const Moments now = m_moments.at(i);
        const Rgb c = lightOf(m_frames.at(i), 3, 7);
        const QByteArray text = frameText(i, c, now);
        if (now.liesIn(100.0, 1950.0) || now.liesIn(5100.0, 7900.0)) {
            QVERIFY2(c.isBlack(), text.constData());
            ++dark;
        } else if (now.liesIn(2050.0, 2990.0)) {
            QVERIFY2(isRamp(c, now, 2000.0, 3000.0, kBlack, kLater), text.constData());
            ++rising;
        } else if (now.liesIn(3010.0, 4950.0)) {
            QVERIFY2(isColor(c, kLater), text.constData());
            ++full;
        }
    }
    QVERIFY(dark > 10 && rising > 3 && full > 5);
}

void ComposeShowTest::linksHold()
{
    int dark = 0;
    int lit = 0;
    for (int i = 0; i < m_frames.size(); ++i) {
        const Moments now = m_moments.at(i);
        const Rgb c = lightOf(m_frames.at(i), 4, 18);
        const QByteArray text = frameText(i, c, now);
        if (now.liesIn(100.0, 5450.0) || now.liesIn(7550.0, 7900.0)) {
            QVERIFY2(c.isBlack(), text.constData());
            ++dark;
        } else if (now.liesIn(5550.0, 7450.0)) {
            QVERIFY2(isColor(c, kChain), text.constData());
            ++lit;
        }
    }
    QVERIFY(dark > 10 && lit > 5);
}

void ComposeShowTest::aHigherPriorityLiesAbove()
{
    int below = 0;
    int above = 0;
    int fading = 0;
    for (int i = 0; i < m_frames.size(); ++i) {
        const Moments now = m_moments.at(i);
        const Rgb c = lightOf(m_frames.at(i), 1, 5);
        const QByteArray text = frameText(i, c, now);
        if (now.liesIn(100.0, 2950.0) || now.liesIn(5050.0, 7900.0)) {
            QVERIFY2(isColor(c, kBase), text.constData());
            ++below;
        } else if (now.liesIn(3050.0, 3950.0)) {
            QVERIFY2(isColor(c, kOver), text.constData());
            ++above;
        } else if (now.liesIn(4050.0, 4950.0)) {
            QVERIFY2(isRamp(c, now, 4000.0, 5000.0, kOver, kBase), text.constData());
            ++fading;
        }
    }
    QVERIFY(below > 10 && above > 3 && fading > 3);
}

void ComposeShowTest::theOthersPlayInTheirTimes()
{
    struct Part
    {
        int column;
        double from;
        double to;
    };
    for (const Part& part : {Part{5, 1000, 5000}, Part{6, 0, 4000}, Part{7, 2000, 6000},
                             Part{8, 4000, 8000}, Part{9, 0, 2000}}) {
        int lit = 0;
        int dark = 0;
        for (int i = 0; i < m_frames.size(); ++i) {
            const Moments now = m_moments.at(i);
            int lights = 0;
            for (int row = 1; row <= kRows; ++row) {
                lights += lightOf(m_frames.at(i), part.column, row).isBlack() ? 0 : 1;
            }
            if (now.liesIn(part.from + 100.0, part.to - 100.0)) {
                lit += lights > 0 ? 1 : 0;
            } else if (now.liesIn(100.0, part.from - 50.0) || now.liesIn(part.to + 50.0, 7900.0)) {
                QVERIFY2(lights == 0, frameText(i, {part.column, lights, 0}, now).constData());
                ++dark;
            }
        }
        QVERIFY2(
            lit > 3 && dark > 5,
            qPrintable(
                QStringLiteral("column %1: %2 lit, %3 dark").arg(part.column).arg(lit).arg(dark)));
    }
}

void ComposeShowTest::cleanupTestCase()
{
    if (m_program != nullptr && m_program->state() != QProcess::NotRunning) {
        m_program->kill();
        m_program->waitForFinished();
    }
}

QTEST_MAIN(ComposeShowTest)
#include "ComposeShowTest.moc"
