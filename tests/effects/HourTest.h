#pragma once

#include "effects/RegisterEffects.h"
#include "engine/EffectFactory.h"
#include "engine/MetaEffect.h"
#include "map/Light.h"
#include "map/MapModel.h"
#include "resources/Resources.h"
#include "tests/engine/TestShow.h"

#include <QDir>
#include <QImage>
#include <QSet>

#include <algorithm>
#include <limits>
#include <vector>

#ifndef __SANITIZE_ADDRESS__
#include <malloc.h>
#endif

namespace HourStage {

constexpr qint64 kHourMs = 3600000;
constexpr qint64 kFadeOutMs = 900; // of every effect
constexpr quint64 kChase = 0x100;  // eight rows of two lights
constexpr quint64 kOneRow = 0x101; // the same lights, one row
constexpr quint64 kSparks = 0x102; // eight more lights
constexpr int kSteadyLights = 16;  // whose colours chance has no part in
constexpr int kLights = 24;
constexpr quint64 kOwn = 0x300; // and up: a chase of three lights more for each type
constexpr int kTypes = EffectFactory::kTypeCount;
constexpr int kOwnLights = 3 * kTypes;

/// Counts what would be sent.
class CountingSocket : public SilentSocket
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
        seen().clear();
        m_before = qInstallMessageHandler(take);
    }
    ~WarningLog() { qInstallMessageHandler(m_before); }
    WarningLog(const WarningLog&) = delete;
    WarningLog& operator=(const WarningLog&) = delete;
    QStringList texts() const { return seen().values(); }

private:
    static void take(QtMsgType type, const QMessageLogContext& context, const QString& text)
    {
        Q_UNUSED(context)
        if (type != QtDebugMsg && !seen().contains(text)) {
            seen().insert(text);
        }
    }
    static QSet<QString>& seen()
    {
        static QSet<QString> texts;
        return texts;
    }
    QtMessageHandler m_before = nullptr;
};

inline QString key(const char* name, const QString& value)
{
    return QStringLiteral("<%1>%2</%1>\n").arg(QLatin1String(name), value);
}

inline QString key(const char* name, double value)
{
    return key(name, QString::number(value, 'g', 15));
}

inline quint64 ownLight(int typeNumber, int place)
{
    const int uid = kLights + 3 * typeNumber + place + 1;
    return static_cast<quint64>(uid);
}

#ifdef __SANITIZE_ADDRESS__
// The sanitizer's own name; its header may be absent. NOLINTNEXTLINE(bugprone-reserved-identifier)
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

inline qint64 heapInUse()
{
#ifdef __SANITIZE_ADDRESS__ // has an allocator of its own
    return static_cast<qint64>(__sanitizer_get_current_allocated_bytes());
#else
    const struct mallinfo2 info = mallinfo2();
    return static_cast<qint64>(info.uordblks) + static_cast<qint64>(info.hblkhd);
#endif
}

inline int effectsIn(const MetaEffect& timeline)
{
    int count = 0;
    for (const Effect* const effect : timeline.effectList()) {
        const auto* const nested = qobject_cast<const MetaEffect*>(effect);
        count += 1 + (nested != nullptr ? effectsIn(*nested) : 0);
    }
    return count;
}

/// What the process, a map and its show hold: none of it may become more while the show runs.
struct Footprint
{
    Footprint(const MapModel& model, const MetaEffect& root)
        : objects({effectsIn(root), model.lightsHash().size(), model.groupsHash().size(),
                   model.controllersHash().size()})
        , files(QDir(QStringLiteral("/proc/self/fd")).entryList().size())
        , heap(heapInUse())
    {}
    QVector<int> objects;
    int files;
    qint64 heap;
};

/// Looks at the footprint now and then in the second half of an hour. Bytes count as growth only
/// where every stretch between two looks adds some: a frame that keeps the smallest block does
/// that, a table that fills up once does not.
class GrowthWatch
{
public:
    /// To be called in every frame, `ms` from the hour's start.
    void pass(qint64 ms, const MapModel& model, const MetaEffect& root)
    {
        constexpr qint64 kStretchMs = kHourMs / 8;
        if (ms > kHourMs / 2 + static_cast<qint64>(m_looks.size()) * kStretchMs) {
            m_looks.emplace_back(model, root);
        }
    }
    /// Looks once more. Empty if nothing has grown.
    QString growth(const MapModel& model, const MetaEffect& root)
    {
        constexpr qint64 kLeast = 512; // of a stretch: sixteen of the smallest blocks
        m_looks.emplace_back(model, root);
        if (m_looks.size() < 4) {
            return QStringLiteral("looked too seldom");
        }
        QStringList grown;
        qint64 least = std::numeric_limits<qint64>::max();
        for (std::size_t i = 1; i < m_looks.size(); ++i) {
            const Footprint& before = m_looks[i - 1];
            const Footprint& now = m_looks[i];
            if (now.objects != before.objects) {
                grown << QStringLiteral("effects, lights, groups or controllers");
            }
            if (now.files != before.files) {
                grown << QStringLiteral("%1 files open, not %2").arg(now.files).arg(before.files);
            }
            least = std::min(least, now.heap - before.heap);
        }
        if (least >= kLeast) {
            grown << QStringLiteral("%1 bytes in every stretch").arg(least);
        }
        return grown.join(QStringLiteral(", "));
    }

private:
    std::vector<Footprint> m_looks;
};

} // namespace HourStage

/// What plays an hour of a show over synthetic times, on a map of its own.
class HourTest : public QObject
{
protected:
    struct Span
    {
        int from;
        int to;
    };
    void makeFiles();
    void load(const QString& map);
    void loadOwnMap();
    void open(const QString& text);
    void start();
    void frame(qint64 ms);
    void close();
    static QString element(const char* type, quint64 gid, int priority, Span span,
                           const QString& keys);
    QString longShow() const;

    QTemporaryDir folder;
    HourStage::CountingSocket* socket = nullptr; // the model's
    std::unique_ptr<MapModel> model;
    MetaEffect* root = nullptr;
    uint frameNumber = 0;
};

inline void HourTest::makeFiles()
{
    using namespace HourStage;
    initForgeResources();
    registerEffects();
    QVERIFY(folder.isValid());
    QVERIFY(QDir::setCurrent(QStringLiteral(FORGE_SOURCE_DIR))); // the examples' paths start there
    QVERIFY(QDir(folder.path()).mkpath(QStringLiteral("film")));
    for (int i = 0; i < 6; ++i) {
        QImage image(16, 9, QImage::Format_RGB32);
        image.fill(qRgb(40 * i, 255 - 40 * i, 90));
        image.setPixel(8, 4, qRgb(255, 255, 255));
        QVERIFY(image.save(folder.filePath(QStringLiteral("film/%1.png").arg(i))));
    }
    // The head of a picture of 100 million pixels, and no pixels.
    QFile huge(folder.filePath(QStringLiteral("huge.bmp")));
    QVERIFY(huge.open(QIODevice::WriteOnly));
    huge.write(QByteArray::fromHex("424d3600000000000000360000002800000010270000102700000100180000"
                                   "000000000000000000000000000000000000000000"));
    huge.close();
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
                    .arg(i / 8 * 50 + i % 8);
        text += TestShow::group(uid, 3, {uid});
        if (i < kLights) {
            (i < kSteadyLights ? steady : sparks).append(uid);
        }
    }
    for (int number = 0; number < kTypes; ++number) {
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
    QFile file(folder.filePath(QStringLiteral("hour.map")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(text.toUtf8()), qint64(text.toUtf8().size()));
}

inline void HourTest::loadOwnMap()
{
    using namespace HourStage;
    load(folder.filePath(QStringLiteral("hour.map")));
    QCOMPARE(model->lightsHash().size(), kLights + kOwnLights);
}

inline void HourTest::load(const QString& map)
{
    using namespace HourStage;
    auto counting = std::make_unique<CountingSocket>();
    socket = counting.get();
    model = std::make_unique<MapModel>(std::move(counting));
    QVERIFY(model->load(map));
}

inline void HourTest::close()
{
    if (root != nullptr) {
        root->deleteShow();
        root = nullptr;
    }
    model.reset();
}

inline QString HourTest::element(const char* type, quint64 gid, int priority, Span span,
                                 const QString& keys)
{
    using namespace HourStage;
    return QStringLiteral("<effect>\n") + key("type", QLatin1String(type)) +
           key("gid", QString::number(gid)) + key("priority", priority) + key("begin", span.from) +
           key("end", span.to) + key("fadein", 700) + key("fadeout", int(kFadeOutMs)) +
           key("startfixedtime", span.from) + key("endfixedtime", span.to - span.from) + keys +
           QStringLiteral("</effect>\n");
}

/// Every type on for the whole hour, each over lights of its own. A selection paints all lights,
/// below the others.
inline QString HourTest::longShow() const
{
    using namespace HourStage;
    QString text = QStringLiteral("<effect>\n") + key("type", QStringLiteral("Meta Effect")) +
                   key("loop", 0) + key("end", int(kHourMs));
    const Span hour = {0, int(kHourMs)};
    const QString black = QStringLiteral("aRgb;1;0;#ffff000000000000");
    const QString color = key("color", QStringLiteral("aRgb;1;0;#ffff000080800000"));
    for (int number = 0; number < kTypes; ++number) {
        const quint64 gid = kOwn + static_cast<quint64>(number);
        const QString type = EffectFactory::typeName(number);
        QString keys;
        if (type == QLatin1String("Animation")) {
            keys = key("animationdir", folder.filePath(QStringLiteral("film"))) + key("preload", 1);
        } else if (type == QLatin1String("Image Scroll")) {
            keys = key("imagefile", folder.filePath(QStringLiteral("film/3.png"))) +
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

inline void HourTest::open(const QString& text)
{
    root = EffectFactory::parseShow(text, model.get());
    QVERIFY(root != nullptr);
    start();
}

inline void HourTest::start()
{
    using namespace HourStage;
    QSet<int> types = {root->typeId()};
    for (const Effect* const effect : root->effectList()) {
        types.insert(effect->typeId());
    }
    QCOMPARE(types.size(), kTypes);
    frameNumber = 0;
    root->tick(TestShow::kStartMs, frameNumber++);
    root->setActive(true);
    root->compile();
    root->updateEffectTimes();
    root->restartFromLast();
    root->stopAll(); // a timeline is born active, at the wall clock's time: it enters as the rest
    model->updateLights();
}

/// Paints the frame at `ms`; the lights keep its colours until they are served.
inline void HourTest::frame(qint64 ms)
{
    root->tick(TestShow::kStartMs + ms, frameNumber++);
}
