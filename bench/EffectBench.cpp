// What an effect costs: each type over 15,000 RGB lights, once as a chase of 5,000 rows of 3 and
// once as a single synchronized row, in nanoseconds a light and as a ratio to a fixed colour over
// the same rows in the same run; then colours that have to be solved, 5,000 different ones a frame.
// "paint" is the show's tick alone, "frame" is that and the bytes of every output. Both are medians
// of the single frames, so that a busy machine moves them little. Nothing is sent.

#include "color/VelaColor.h"
#include "effects/RegisterEffects.h"
#include "engine/EffectFactory.h"
#include "engine/MetaEffect.h"
#include "map/Light.h"
#include "map/MapModel.h"
#include "resources/Resources.h"
#include "tests/output/SilentSocket.h"

#include <QColor>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <set>
#include <utility>
#include <vector>

namespace {

constexpr int kColumns = 150; // of lights, and pixels of the pictures
constexpr int kLines = 100;
constexpr int kLights = kColumns * kLines;
constexpr int kRows = kLights / 3;
constexpr int kUnitsAPixel = 12;
constexpr int kLightsAPort = 165;
constexpr int kPortsAController = 8;
constexpr int kFilmFrames = 40;
constexpr quint64 kSteps = 0x1000000; // and up, one a row
constexpr quint64 kChase = 0x7000001;
constexpr quint64 kOneRow = 0x7000002;
constexpr qint64 kStartMs = 1600000000000;
constexpr int kFrames = 400; // ten seconds of the show
constexpr int kReadFrames = 60;

void fail(const QString& reason)
{
    std::fprintf(stderr, "EffectBench: %s\n", qPrintable(reason));
    std::exit(1);
}

QString hex(quint64 number)
{
    return QString::number(number, 16);
}

/// The installation, its pictures, and a show of one effect at a time.
class Site
{
public:
    Site()
        : m_model(std::make_unique<MapModel>(std::make_unique<SilentSocket>()))
    {
        const QString path = m_directory.filePath(QStringLiteral("site.map"));
        writeMap(path);
        if (!m_model->load(path) || m_model->lightsHash().size() != kLights) {
            fail(QStringLiteral("the map did not load"));
        }
        for (int i = 0; i < kLights; ++i) {
            m_lights.push_back(m_model->light(static_cast<quint64>(i) + 1));
        }
        drawPictures();
    }
    ~Site() { clearShow(); }
    Site(const Site&) = delete;
    Site& operator=(const Site&) = delete;

    QString picture() const { return m_directory.filePath(QStringLiteral("picture.png")); }
    QString film() const { return m_directory.filePath(QStringLiteral("film")); }

    /// Ends the show before and starts one of that effect.
    void play(const QString& type, quint64 gid, const QString& keys)
    {
        clearShow();
        std::srand(1);
        m_root = EffectFactory::parseShow(
            QStringLiteral("<effect><type>Meta Effect</type><effect><type>%1</type><gid>%2</gid>"
                           "<end>3600000</end><endfixedtime>3600000</endfixedtime>%3</effect>"
                           "</effect>")
                .arg(type)
                .arg(gid)
                .arg(QString(keys).replace(QLatin1String("@gid"), QString::number(gid))),
            m_model.get());
        if (m_root == nullptr || m_root->effectList().size() != 1) {
            fail(QStringLiteral("no show of ") + type);
        }
        m_root->updateEffectTimes();
        m_root->compile();
        m_root->setActive(true);
        m_now = kStartMs;
        m_root->tick(m_now, m_frame++);
        m_root->setStartMs(m_now);
        m_model->updateLights();
    }

    void paint()
    {
        m_now += 25;
        m_root->tick(m_now, m_frame++);
    }
    void serve() { m_model->updateLights(); }

    /// The effect does paint: within ten seconds a light that isn't black.
    void checkItPaints(const QString& name)
    {
        bool painted = false;
        for (int i = 0; i < kFrames && !painted; ++i) {
            paint();
            painted = std::any_of(m_lights.begin(), m_lights.end(), [](const Light* light) {
                const VelaColor& c = light->mixValue();
                return c.isValid() && c.redF() + c.greenF() + c.blueF() > 0.0;
            });
            serve();
        }
        if (!painted) {
            fail(name + QStringLiteral(" paints nothing"));
        }
    }
    /// How many colours this frame has.
    int distinctColors()
    {
        paint();
        std::set<QString> colors;
        for (std::size_t i = 0; i < m_lights.size(); i += 3) {
            const VelaColor c = m_lights[i]->mixValue();
            QString text;
            for (const double part : {c.capY(), c.smallX(), c.smallY()}) {
                text += QString::number(part, 'g', 17) + QLatin1Char(' ');
            }
            colors.insert(text);
        }
        serve();
        return static_cast<int>(colors.size());
    }

private:
    void clearShow()
    {
        if (m_root != nullptr) {
            m_root->deleteShow();
            m_root = nullptr;
        }
    }

    static void writeMap(const QString& path)
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly)) {
            fail(QStringLiteral("the map can't be written"));
        }
        QTextStream text(&file);
        text << "<map>";
        constexpr int kLightsAController = kPortsAController * kLightsAPort;
        for (int first = 0; first < kLights; first += kLightsAController) {
            text << "<c><t>2</t><s>" << hex(0x9000000 + static_cast<quint64>(first))
                 << "</s><ip>127.0.0.1</ip><v>2</v><m>0</m><pl>";
            for (int port = 1; port <= kPortsAController; ++port) {
                text << "<p><pn>" << port << "</pn></p>";
            }
            text << "</pl>";
            for (int i = first; i < std::min(kLights, first + kLightsAController); ++i) {
                text << "<l>" << hex(static_cast<quint64>(i) + 1) << "</l>";
            }
            text << "</c>\n";
        }
        for (int i = 0; i < kLights; ++i) {
            const QString uid = hex(static_cast<quint64>(i) + 1);
            const int controller = i / kLightsAController * kLightsAController;
            text << "<l><s>" << uid << "</s><c>"
                 << hex(0x9000000 + static_cast<quint64>(controller)) << "</c><pn>"
                 << i % kLightsAController / kLightsAPort << "</pn><ch>" << 3 * (i % kLightsAPort)
                 << "</ch><x>" << i % kColumns * kUnitsAPixel << "</x><y>"
                 << i / kColumns * kUnitsAPixel << "</y></l>\n<g><t>3</t><s>" << uid << "</s><c>"
                 << uid << "</c></g>\n";
        }
        for (int row = 0; row < kRows; ++row) {
            text << "<g><t>2</t><s>" << hex(kSteps + static_cast<quint64>(row)) << "</s>";
            for (int i = 0; i < 3; ++i) {
                text << "<c>" << hex(static_cast<quint64>(3 * row + i) + 1) << "</c>";
            }
            text << "</g>\n";
        }
        for (const quint64 group : {kChase, kOneRow}) {
            text << "<g><t>" << (group == kChase ? 1 : 2) << "</t><s>" << hex(group) << "</s>";
            for (int row = 0; row < kRows; ++row) {
                text << "<c>" << hex(kSteps + static_cast<quint64>(row)) << "</c>";
            }
            text << "</g>\n";
        }
        text << "</map>";
    }

    void drawPictures() const
    {
        QDir().mkpath(film());
        for (int frame = 0; frame <= kFilmFrames; ++frame) {
            QImage image(kColumns, kLines, QImage::Format_RGB32);
            for (int y = 0; y < kLines; ++y) {
                for (int x = 0; x < kColumns; ++x) {
                    image.setPixel(x, y, qRgb((x + 7 * frame) % 256, 2 * y, (x * y) % 256));
                }
            }
            const QString path =
                frame == kFilmFrames ? picture() : film() + QStringLiteral("/%1.png").arg(frame);
            if (!image.save(path)) {
                fail(QStringLiteral("a picture can't be written"));
            }
        }
    }

    QTemporaryDir m_directory;
    std::unique_ptr<MapModel> m_model;
    MetaEffect* m_root = nullptr; // owned, with its children
    std::vector<Light*> m_lights; // the model's
    qint64 m_now = kStartMs;
    uint m_frame = 0;
};

std::unique_ptr<Site>& siteHolder()
{
    static std::unique_ptr<Site> instance;
    return instance;
}

Site& site()
{
    if (siteHolder() == nullptr) {
        siteHolder() = std::make_unique<Site>();
    }
    return *siteHolder();
}

/// A case: the effect and what it is told.
struct Case
{
    const char* name;
    const char* type;
    QString keys;
    int frames = kFrames;
};

double medianOf(std::vector<double> numbers)
{
    const auto middle = numbers.begin() + static_cast<std::ptrdiff_t>(numbers.size() / 2);
    std::nth_element(numbers.begin(), middle, numbers.end());
    return *middle;
}

struct Cost
{
    double paint = 0.0; // seconds
    double frame = 0.0;
};

Cost timeFrames(benchmark::State& state)
{
    using Clock = std::chrono::steady_clock;
    std::vector<double> paints;
    std::vector<double> frames;
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        site().paint();
        const Clock::time_point painted = Clock::now();
        site().serve();
        const Clock::time_point served = Clock::now();
        paints.push_back(std::chrono::duration<double>(painted - start).count());
        frames.push_back(std::chrono::duration<double>(served - start).count());
        state.SetIterationTime(paints.back());
    }
    return {medianOf(std::move(paints)), medianOf(std::move(frames))};
}

/// What the fixed colour cost over the chase and over the one row.
Cost& fixedCost(quint64 gid)
{
    static Cost chase;
    static Cost oneRow;
    return gid == kChase ? chase : oneRow;
}

void overLights(benchmark::State& state, const Case& what, quint64 gid)
{
    site().play(QLatin1String(what.type), gid, what.keys);
    site().checkItPaints(QLatin1String(what.name));
    const Cost cost = timeFrames(state);
    if (qstrcmp(what.name, "Fixed Color") == 0) {
        fixedCost(gid) = cost;
    }
    state.counters["ns_a_light"] = cost.paint * 1e9 / kLights;
    state.counters["frame_ns"] = cost.frame * 1e9 / kLights;
    const Cost& fixed = fixedCost(gid);
    if (fixed.paint > 0.0) {
        state.counters["x_fixed"] = cost.paint / fixed.paint;
        state.counters["x_frame"] = cost.frame / fixed.frame;
    }
}

/// Of a chase whose rows all differ; fails where fewer than `least` do.
void solved(benchmark::State& state, const Case& what, int least)
{
    site().play(QLatin1String(what.type), kChase, what.keys);
    int distinct = 0;
    for (int i = 0; i < kFrames / 4; ++i) {
        distinct = std::max(distinct, site().distinctColors());
    }
    if (distinct < least) {
        fail(QStringLiteral("%1 has only %2 colours").arg(QLatin1String(what.name)).arg(distinct));
    }
    const Cost cost = timeFrames(state);
    state.counters["colors"] = distinct;
    state.counters["paint_ms"] = cost.paint * 1e3;
    state.counters["frame_ms"] = cost.frame * 1e3;
}

QString key(const char* name, const QString& value)
{
    return QStringLiteral("<%1>%2</%1>").arg(QLatin1String(name), value);
}

QString flag(const char* name)
{
    return key(name, QStringLiteral("1"));
}

std::vector<Case> cases()
{
    const QString rgb = QStringLiteral("aRgb;1;0;#ffffc8001e000a00");
    const QString other = QStringLiteral("aRgb;1;0;#ffff0a00dc005a00");
    const QString fade = key("startcolor", rgb) + key("endcolor", other);
    const QString ground = key("fgcolor", rgb) + key("bgcolor", other);
    const QString tails = ground + key("width", QStringLiteral("500")) +
                          key("fwdtail", QStringLiteral("500")) +
                          key("revtail", QStringLiteral("500")) + flag("wrap");
    const QString entries = key("color_0", rgb) + key("fade_0", QStringLiteral("4")) +
                            key("color_1", other) + key("fade_1", QStringLiteral("4"));
    const QString small = key("groupoffset", QStringLiteral("0.001"));
    const QString sparkles = key("sparklecolor", rgb) + key("bgcolor", other) +
                             key("density", QStringLiteral("100")) +
                             key("cycletime", QStringLiteral("100"));
    const QString rows =
        key("sparklecolor", QStringLiteral("#c81e0a")) + key("bgcolor", QStringLiteral("#0adc5a")) +
        key("density", QStringLiteral("100")) + key("cycletime", QStringLiteral("100"));
    const QString wide = key("imagefile", site().picture()) + key("startx", QStringLiteral("75")) +
                         key("endx", QStringLiteral("70")) + key("starty", QStringLiteral("50")) +
                         key("endy", QStringLiteral("50"));
    const QString smooth = key("smooth", QStringLiteral("1"));
    const QString plain = key("smooth", QStringLiteral("0"));
    const QString films = key("animationdir", site().film());
    const QString child =
        QStringLiteral("<effect><type>Fixed Color</type><gid>@gid</gid><end>3600000</end>"
                       "<endfixedtime>3600000</endfixedtime>") +
        key("color", rgb) + QStringLiteral("</effect>");
    return {
        {"Fixed Color", "Fixed Color", key("color", rgb)},
        {"White Fixed Color", "White Fixed Color", {}},
        {"Cross Fade", "Cross Fade", fade},
        {"White Cross Fade", "White Cross Fade", key("temperatureEnd", QStringLiteral("0"))},
        {"Chasing Rainbow", "Chasing Rainbow", key("startcolor", rgb)},
        {"Custom Rainbow", "Custom Rainbow", entries + small},
        {"Random Color", "Random Color",
         key("startcolor", rgb) + key("offset", QStringLiteral("0.001"))},
        {"Sparkle", "Sparkle", sparkles},
        {"Sparkle Group", "Sparkle Group", rows},
        {"Streak", "Streak", tails},
        {"Sweep", "Sweep", ground},
        {"Meta Effect", "Meta Effect", child},
        {"Selection", "Selection", ground},
        {"Text", "Text", key("bgcolor", QStringLiteral("#0adc5a"))},
        {"XYBurst", "XYBurst", {}},
        {"XYSpiral", "XYSpiral", {}},
        {"Image Scroll, plain", "Image Scroll", wide + plain},
        {"Image Scroll, smooth", "Image Scroll", wide + smooth},
        {"Animation, preloaded", "Animation", films + flag("preload") + plain},
        {"Animation, preloaded, smooth", "Animation", films + flag("preload") + smooth},
        {"Animation, from files", "Animation", films + plain, kReadFrames},
        {"Animation, from files, smooth", "Animation", films + smooth, kReadFrames},
    };
}

/// The same effects with colours of one kind, such that rows differ.
std::vector<Case> solvedCases(const QString& one, const QString& two)
{
    const QString entries = key("color_0", one) + key("duration_0", QStringLiteral("0")) +
                            key("fade_0", QStringLiteral("30")) + key("color_1", two);
    return {
        {"Custom Rainbow", "Custom Rainbow", entries + key("groupoffset", QStringLiteral("0.001"))},
        {"Streak", "Streak",
         key("fgcolor", one) + key("bgcolor", two) + key("fwdtail", QStringLiteral("4996")) +
             flag("wrap")},
        {"Sparkle", "Sparkle",
         key("sparklecolor", one) + key("bgcolor", two) + key("density", QStringLiteral("1000")) +
             key("cycletime", QStringLiteral("1000")) + key("decay", QStringLiteral("3"))},
    };
}

void registerCases()
{
    for (const Case& what : cases()) {
        for (const quint64 gid : {kChase, kOneRow}) {
            const QByteArray name =
                QByteArray(what.name) + (gid == kChase ? "/5000 rows" : "/one row");
            benchmark::RegisterBenchmark(
                name.constData(),
                [what, gid](benchmark::State& state) { overLights(state, what, gid); })
                ->UseManualTime()
                ->Iterations(what.frames)
                ->Unit(benchmark::kMicrosecond);
        }
    }
    const std::pair<const char*, std::vector<Case>> kinds[] = {
        {"Yxy", solvedCases(QStringLiteral("aYxy;1;0;65535;0.9;0.3805;0.3768"),
                            QStringLiteral("aYxy;1;0;65535;0.3;0.31;0.33"))},
        {"Nchannel", solvedCases(QStringLiteral("aNchannel;3;6;65535;60000;8000;7000;60000;0;1"),
                                 QStringLiteral("aNchannel;3;6;65535;2000;50000;20000;9000;0;1"))},
    };
    for (const auto& kind : kinds) {
        for (const Case& what : kind.second) {
            // Sparkles of one frame start and decay together.
            const int least = qstrcmp(what.name, "Sparkle") == 0 ? 50 : kRows - 10;
            const QByteArray name = QByteArray(kind.first) + '/' + what.name;
            benchmark::RegisterBenchmark(
                name.constData(),
                [what, least](benchmark::State& state) { solved(state, what, least); })
                ->UseManualTime()
                ->Iterations(kFrames / 4)
                ->Unit(benchmark::kMicrosecond);
        }
    }
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    initForgeResources();
    registerEffects();
    benchmark::Initialize(&argc, argv);
    registerCases();
    benchmark::RunSpecifiedBenchmarks();
    siteHolder().reset(); // ahead of what its lights need
    return 0;
}
