#include "effects/RegisterEffects.h"
#include "engine/EffectFactory.h"
#include "engine/MetaEffect.h"
#include "map/Light.h"
#include "map/MapModel.h"
#include "resources/Resources.h"
#include "tests/engine/TestShow.h"

#include <QDir>
#include <QImage>
#include <QRegularExpression>
#include <QSet>

#include <malloc.h>

namespace {

constexpr qint64 kHourMs = 3600000;
constexpr qint64 kFadeOutMs = 900; // of every effect
constexpr quint64 kChase = 0x100;  // eight rows of two lights
constexpr quint64 kOneRow = 0x101; // the same lights, one row
constexpr quint64 kSparks = 0x102; // eight more lights
constexpr int kSteadyLights = 16;  // whose colours chance has no part in
constexpr int kLights = 24;
constexpr quint64 kOwn = 0x300; // and up: a chase of three lights more for each type
constexpr int kOwnLights = 3 * EffectFactory::kTypeCount;

/// Counts what would be sent.
class CountingSocket : public TestShow::SilentSocket
{
public:
    bool sendToAddress(const QHostAddress& address, const char* data, int length) override
    {
        ++count;
        return SilentSocket::sendToAddress(address, data, length);
    }
    qint64 count = 0;
};

/// Counts the warnings that are logged, by their text.
class WarningLog
{
public:
    WarningLog()
    {
        s_texts.clear();
        m_before = qInstallMessageHandler(take);
    }
    ~WarningLog() { qInstallMessageHandler(m_before); }
    WarningLog(const WarningLog&) = delete;
    WarningLog& operator=(const WarningLog&) = delete;
    QStringList texts() const { return s_texts.values(); }

private:
    static void take(QtMsgType type, const QMessageLogContext& context, const QString& text)
    {
        Q_UNUSED(context)
        if (type != QtDebugMsg && !s_texts.contains(text)) {
            s_texts.insert(text);
        }
    }
    static inline QSet<QString> s_texts;
    QtMessageHandler m_before = nullptr;
};

QString key(const char* name, const QString& value)
{
    return QStringLiteral("<%1>%2</%1>\n").arg(QLatin1String(name), value);
}

QString key(const char* name, double value)
{
    return key(name, QString::number(value, 'g', 15));
}

quint64 ownLight(int typeNumber, int place)
{
    return static_cast<quint64>(kLights + 3 * typeNumber + place + 1);
}

/// The transparency of an effect is the present frame's, whatever was set.
QString withoutTransparency(QString text)
{
    return text.remove(QRegularExpression(QStringLiteral("<transparency>[^<]*</transparency>\n")));
}

qint64 heapInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return static_cast<qint64>(info.uordblks + info.hblkhd);
}

/// The hues of a burst and of a spiral pass 65535 within the hour, which leaves the light invalid.
/// A burst's rises by 0.036 degrees a millisecond from 0..720, a spiral's by 0.072 from 0..360.
double leastHue(int number, qint64 ms)
{
    if (number == EffectFactory::typeNumber(QStringLiteral("XYBurst"))) {
        return 0.036 * static_cast<double>(ms) - 2.0;
    }
    if (number == EffectFactory::typeNumber(QStringLiteral("XYSpiral"))) {
        return 0.072 * static_cast<double>(ms) - 2.0;
    }
    return 0.0;
}

bool hueIsRefused(int number, qint64 ms)
{
    return leastHue(number, ms) >= 65536.0;
}

bool mayBeRefused(int number, qint64 ms)
{
    return leastHue(number, ms) + 730.0 >= 65536.0;
}

} // namespace

/// An hour of a show of every effect type, over synthetic times.
class LongRunTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();
    void anHourOfRepeatsPaintsTheSameAndTakesNoMemory();
    void anHourInOneGoStaysInItsBounds();
    void theTextSurvivesFilesAndPlaying();

private:
    struct Span
    {
        int from;
        int to;
    };
    QString element(const char* type, quint64 gid, int priority, Span span,
                    const QString& keys) const;
    QString repeatingShow() const;
    QString longShow() const;
    void open(const QString& text);
    void frame(qint64 ms);
    QByteArray colors() const;

    QTemporaryDir m_dir;
    CountingSocket* m_socket = nullptr; // the model's
    std::unique_ptr<MapModel> m_model;
    MetaEffect* m_root = nullptr;
    uint m_frame = 0;
};

void LongRunTest::initTestCase()
{
    initForgeResources();
    registerEffects();
    QVERIFY(m_dir.isValid());
    QVERIFY(QDir(m_dir.path()).mkpath(QStringLiteral("film")));
    for (int i = 0; i < 6; ++i) {
        QImage image(16, 9, QImage::Format_RGB32);
        image.fill(qRgb(40 * i, 255 - 40 * i, 90));
        image.setPixel(8, 4, qRgb(255, 255, 255));
        QVERIFY(image.save(m_dir.filePath(QStringLiteral("film/%1.png").arg(i))));
    }
    QString text = QStringLiteral("<map><controller><type>2</type><self>C0</self>"
                                  "<ipaddress>127.0.0.1</ipaddress><version>2</version>"
                                  "<missing>0</missing><portlist><port><portnum>1</portnum></port>"
                                  "</portlist>");
    for (int uid = 1; uid <= kLights + kOwnLights; ++uid) {
        text += QStringLiteral("<light>%1</light>").arg(QString::number(uid, 16));
    }
    text += QStringLiteral("</controller>");
    QVector<quint64> rows;
    QVector<quint64> steady;
    QVector<quint64> sparks;
    for (int i = 0; i < kLights + kOwnLights; ++i) {
        const quint64 uid = static_cast<quint64>(i) + 1;
        text += QStringLiteral("<light><self>%1</self><controller>C0</controller><pn>0</pn>"
                               "<ch>%2</ch><x>%3</x><y>%4</y></light>")
                    .arg(QString::number(uid, 16))
                    .arg(3 * i)
                    .arg(i % 8 * 30)
                    .arg(i / 8 * 50);
        text += TestShow::group(uid, 3, {uid});
        if (i < kLights) {
            (i < kSteadyLights ? steady : sparks).append(uid);
        }
    }
    for (int number = 0; number < EffectFactory::kTypeCount; ++number) {
        const quint64 first = ownLight(number, 0);
        text +=
            TestShow::group(kOwn + static_cast<quint64>(number), 1, {first, first + 1, first + 2});
    }
    for (int row = 0; row < kSteadyLights / 2; ++row) {
        const quint64 first = 2 * static_cast<quint64>(row) + 1;
        const quint64 uid = 0x200 + static_cast<quint64>(row);
        text += TestShow::group(uid, 2, {first, first + 1});
        rows.append(uid);
    }
    text += TestShow::group(kChase, 1, rows) + TestShow::group(kOneRow, 2, steady) +
            TestShow::group(kSparks, 1, sparks) + QStringLiteral("</map>");
    QFile file(m_dir.filePath(QStringLiteral("hour.map")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(text.toUtf8()), qint64(text.toUtf8().size()));
}

void LongRunTest::init()
{
    auto socket = std::make_unique<CountingSocket>();
    m_socket = socket.get();
    m_model = std::make_unique<MapModel>(std::move(socket));
    QVERIFY(m_model->load(m_dir.filePath(QStringLiteral("hour.map"))));
    QCOMPARE(m_model->lightsHash().size(), kLights + kOwnLights);
}

void LongRunTest::cleanup()
{
    if (m_root != nullptr) {
        m_root->deleteShow();
        m_root = nullptr;
    }
    m_model.reset();
}

QString LongRunTest::element(const char* type, quint64 gid, int priority, Span span,
                             const QString& keys) const
{
    return QStringLiteral("<effect>\n") + key("type", QLatin1String(type)) +
           key("gid", QString::number(gid)) + key("priority", priority) + key("begin", span.from) +
           key("end", span.to) + key("fadein", 700) + key("fadeout", int(kFadeOutMs)) +
           key("startfixedtime", span.from) + key("endfixedtime", span.to - span.from) + keys +
           QStringLiteral("</effect>\n");
}

/// Two minutes that hold all eighteen types, at several layers, over a ground that stays.
QString LongRunTest::repeatingShow() const
{
    const QString yxy = QStringLiteral("aYxy;1;0;65535;0.8;0.3805;0.3768");
    const QString red = QStringLiteral("aRgb;1;0;#ffffc8001e000a00");
    const QString half = QStringLiteral("aRgb;1;0;#80000a00dc005a00");
    const QString film = key("animationdir", m_dir.filePath(QStringLiteral("film")));
    const QString picture = key("imagefile", m_dir.filePath(QStringLiteral("film/3.png")));
    const QString ground = key("fgcolor", red) + key("bgcolor", half);
    const QString inner = key("brightness", 0.9) +
                          element("Fixed Color", kChase, 0, {0, 4000}, key("color", half)) +
                          element("Cross Fade", kOneRow, 1, {2000, 9000},
                                  key("startcolor", yxy) + key("endcolor", red) +
                                      key("starttrans", 1) + key("time", 2.7));
    return QStringLiteral("<effect>\n") + key("type", QStringLiteral("Meta Effect")) +
           key("end", 120000) + element("Selection", kChase, 0, {0, 4000}, key("bgcolor", red)) +
           element("Fixed Color", kOneRow, 0, {0, 120000}, key("color", yxy)) +
           element("White Fixed Color", kChase, 1, {1000, 20000}, key("temperature", 300)) +
           element("Cross Fade", kChase, 2, {5000, 30000},
                   key("startcolor", red) + key("endcolor", yxy) + key("time", 3.3)) +
           element("White Cross Fade", kChase, 2, {15000, 40000},
                   key("temperatureEnd", 0) + key("endtrans", 1)) +
           element("Chasing Rainbow", kChase, 3, {22000, 60000}, key("groupoffset", 45)) +
           element("Custom Rainbow", kChase, 3, {35000, 75000},
                   key("color_0", red) + key("color_1", yxy) + key("color_2", half)) +
           element("Random Color", kSparks, 3, {0, 80000},
                   key("time", 0.8) + key("fadetime", 0.4) + key("offset", 0.1)) +
           element("Sparkle", kSparks, 4, {30000, 100000}, key("bgtrans", 1)) +
           element("Sparkle Group", kSparks, 2, {60000, 118000}, {}) +
           element("Streak", kChase, 5, {50000, 90000},
                   ground + key("width", 2) + key("fwdtail", 2) + key("revtail", 3) +
                       key("wrap", 1)) +
           element("Sweep", kChase, 5, {60000, 100000}, ground + key("bgtrans", 1)) +
           element("Text", kChase, 4, {70000, 74000}, key("bgcolor", QStringLiteral("#203040"))) +
           element("XYBurst", kOneRow, 6, {72000, 104000}, key("width", 70)) +
           element("XYSpiral", kChase, 6, {90000, 115000}, key("centerx", 8) + key("centery", 3)) +
           element("Image Scroll", kOneRow, 7, {95000, 112000},
                   picture + key("startx", 2) + key("endx", 12) + key("endscale", 2) +
                       key("transenabled", 1)) +
           element("Animation", kChase, 7, {100000, 117000}, film + key("preload", 1)) +
           element("Animation", kChase, 8, {117000, 118000}, film) +
           element("Meta Effect", Effect::kNoGid, 9, {104000, 119000}, inner) +
           QStringLiteral("</effect>\n");
}

/// Every type on for the whole hour, each over lights of its own. A selection paints all lights,
/// below the others.
QString LongRunTest::longShow() const
{
    QString text = QStringLiteral("<effect>\n") + key("type", QStringLiteral("Meta Effect")) +
                   key("loop", 0) + key("end", int(kHourMs));
    const Span hour = {0, int(kHourMs)};
    const QString black = QStringLiteral("aRgb;1;0;#ffff000000000000");
    const QString color = key("color", QStringLiteral("aRgb;1;0;#ffff000080800000"));
    for (int number = 0; number < EffectFactory::kTypeCount; ++number) {
        const quint64 gid = kOwn + static_cast<quint64>(number);
        const QString type = EffectFactory::typeName(number);
        QString keys;
        if (type == QLatin1String("Animation")) {
            keys = key("animationdir", m_dir.filePath(QStringLiteral("film"))) + key("preload", 1);
        } else if (type == QLatin1String("Image Scroll")) {
            keys = key("imagefile", m_dir.filePath(QStringLiteral("film/3.png"))) +
                   key("startx", 4) + key("starty", 4) + key("endx", 9) + key("endy", 4);
        } else if (type == QLatin1String("XYBurst")) {
            keys = key("rainbowdir", 1); // its hue grows without a limit
        } else if (type == QLatin1String("Custom Rainbow")) {
            keys = key("color_0", QStringLiteral("aYxy;1;0;65535;0.8;0.3805;0.3768")) +
                   key("color_1", QStringLiteral("aYxy;1;0;65535;0.3;0.31;0.33"));
        } else if (type == QLatin1String("Meta Effect")) {
            keys = element("Fixed Color", gid, 0, hour, color);
        } else if (type == QLatin1String("Text")) {
            keys = key("bgcolor", QStringLiteral("#203040"));
        } else if (type == QLatin1String("Selection")) {
            keys = key("bgcolor", black);
        }
        const int priority = type == QLatin1String("Selection") ? 0 : number + 1;
        text += element(qPrintable(type), gid, priority, hour, keys);
    }
    return text + QStringLiteral("</effect>\n");
}

void LongRunTest::open(const QString& text)
{
    m_root = EffectFactory::parseShow(text, m_model.get());
    QVERIFY(m_root != nullptr);
    QSet<int> types = {m_root->typeId()};
    for (const Effect* const effect : m_root->effectList()) {
        types.insert(effect->typeId());
    }
    QCOMPARE(types.size(), int(EffectFactory::kTypeCount));
    m_frame = 0;
    m_root->tick(TestShow::kStartMs, m_frame++);
    m_root->setActive(true);
    m_root->compile();
    m_root->updateEffectTimes();
    m_root->restartFromLast();
    m_model->updateLights();
}

/// Paints the frame at `ms`; the lights keep its colours until they are served.
void LongRunTest::frame(qint64 ms)
{
    m_root->tick(TestShow::kStartMs + ms, m_frame++);
}

/// Everything that the lights without chance show, outputs and simulation; empty where a colour
/// makes no sense.
QByteArray LongRunTest::colors() const
{
    QByteArray all;
    for (int i = 0; i < kLights; ++i) {
        const Light* const light = m_model->light(static_cast<quint64>(i) + 1);
        const VelaColor& mix = light->mixValue();
        const QColor& sim = light->simColor();
        const bool isSane = mix.isValid() && mix.alphaF() > 0.0 && sim.isValid();
        if (!isSane) {
            return {};
        }
        if (i < kSteadyLights) {
            all += mix.toString().toLatin1() + ' ' + sim.name().toLatin1() + '\n';
        }
    }
    return all;
}

void LongRunTest::anHourOfRepeatsPaintsTheSameAndTakesNoMemory()
{
    constexpr int kStepMs = 25;
    constexpr int kFrames = kHourMs / kStepMs;
    // At its end the timeline starts again from the frame before: a run is a frame shorter than two
    // minutes.
    constexpr int kRun = 120000 / kStepMs - 1;
    constexpr int kSample = 79; // of every so many frames of a run, prime to its length
    const WarningLog log;
    open(repeatingShow());
    const qint64 sentBefore = m_socket->count;

    QVector<QByteArray> second; // the second run: the first begins from nothing
    second.reserve(kRun / kSample + 1);
    QSet<QByteArray> looks;
    qint64 heap = 0;
    for (int i = 1; i <= kFrames; ++i) {
        frame(qint64(i) * kStepMs);
        const int run = (i - 1) / kRun;
        const int place = (i - 1) % kRun;
        if (place % kSample == 0) {
            const QByteArray now = colors();
            QVERIFY2(!now.isEmpty(), qPrintable(QStringLiteral("frame %1").arg(i)));
            if (run == 1) {
                second.append(now);
                looks.insert(now);
            } else if (run > 1) {
                QVERIFY2(now == second.at(place / kSample),
                         qPrintable(QStringLiteral("frame %1 of run %2:\n%3\n%4")
                                        .arg(place)
                                        .arg(run)
                                        .arg(QString::fromLatin1(now),
                                             QString::fromLatin1(second.at(place / kSample)))));
            }
        }
        m_model->updateLights();
        if (i == 3 * kRun) {
            heap = heapInUse();
        }
    }
    // The samples differ among themselves, so that their agreement says something.
    QVERIFY2(looks.size() > second.size() * 3 / 4, qPrintable(QString::number(looks.size())));
    QCOMPARE(m_socket->count - sentBefore, qint64(kFrames));
    QCOMPARE(log.texts(), QStringList());
#ifndef __SANITIZE_ADDRESS__ // whose allocator mallinfo2() doesn't see
    const qint64 growth = heapInUse() - heap;
    QVERIFY2(growth < 4096, qPrintable(QString::number(growth)));
#else
    Q_UNUSED(heap)
#endif
}

void LongRunTest::anHourInOneGoStaysInItsBounds()
{
    // Steps of ten frames: the effects' clocks run the whole hour, a tenth of the frames is
    // painted.
    constexpr int kStepMs = 250;
    const WarningLog log;
    open(longShow());
    for (Effect* const effect : m_root->effectList()) {
        QCOMPARE(int(effect->end()), int(kHourMs));
    }
    QSet<int> shown; // the types that have given light
    for (qint64 ms = kStepMs; ms < kHourMs; ms += kStepMs) {
        frame(ms);
        const bool isFadingOut = ms > kHourMs - kFadeOutMs;
        for (int number = 0; number < EffectFactory::kTypeCount; ++number) {
            for (int place = 0; place < 3; ++place) {
                const VelaColor& mix = m_model->light(ownLight(number, place))->mixValue();
                const QByteArray where = EffectFactory::typeName(number).toLatin1() + " at " +
                                         QByteArray::number(ms) + ": " + mix.toString().toLatin1();
                const bool refused = hueIsRefused(number, ms);
                if (!refused && !mayBeRefused(number, ms)) {
                    QVERIFY2(mix.isValid() && mix.alphaF() == 1.0, where.constData());
                }
                // A transparent one, in the fade-out, leaves what lies beneath.
                QVERIFY2(!refused || isFadingOut || !mix.isValid(), where.constData());
                const double parts[] = {mix.redF(), mix.greenF(), mix.blueF()};
                for (const double part : parts) {
                    QVERIFY2(part >= 0.0 && part <= 1.0, where.constData());
                    if (part > 0.1) {
                        shown.insert(number);
                    }
                }
            }
        }
        m_model->updateLights();
    }
    for (const Effect* const effect : m_root->effectList()) {
        QVERIFY2(effect->active(), qPrintable(effect->type()));
    }
    QStringList dark;
    for (int number = 0; number < EffectFactory::kTypeCount; ++number) {
        if (!shown.contains(number)) {
            dark << EffectFactory::typeName(number);
        }
    }
    // A selection that nobody has made is all background, which is black here.
    QCOMPARE(dark, QStringList{QStringLiteral("Selection")});
    QCOMPARE(log.texts(), QStringList{QStringLiteral("VelaColor::setHsv16: HSV parameters out of "
                                                     "range")});
}

void LongRunTest::theTextSurvivesFilesAndPlaying()
{
    open(repeatingShow());
    const QString first = TestShow::textOf(*m_root);
    QVERIFY(first.contains(QStringLiteral("<type>Image Scroll</type>")));
    const QString path = m_dir.filePath(QStringLiteral("hour.sho"));
    for (int round = 0; round < 3; ++round) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Text));
        QTextStream out(&file);
        m_root->save(out);
        out.flush();
        file.close();
        m_root->deleteShow();
        m_root = EffectFactory::loadShow(path, m_model.get());
        QVERIFY(m_root != nullptr);
        m_root->updateEffectTimes(); // as the program does where a timeline lies in another
        QCOMPARE(TestShow::textOf(*m_root), first);
    }

    // Playing leaves nothing behind but the transparency that the frame gave.
    m_root->tick(TestShow::kStartMs, 0);
    m_root->setActive(true);
    m_root->compile();
    m_root->updateEffectTimes();
    m_root->restartFromLast();
    for (qint64 ms = 100; ms <= 130000; ms += 100) {
        frame(ms);
        m_model->updateLights();
    }
    QCOMPARE(withoutTransparency(TestShow::textOf(*m_root)), withoutTransparency(first));
}

QTEST_GUILESS_MAIN(LongRunTest)
#include "LongRunTest.moc"
