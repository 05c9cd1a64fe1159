#pragma once

#include "color/VelaColor.h"
#include "map/LightPosition.h"

#include <QColor>
#include <QHash>
#include <QObject>
#include <QString>
#include <QtGlobal>

#include <cstddef>
#include <cstring>
#include <memory>

class MapModel;
class MapNode;
class QDomNode;

/// One addressable fixture of the map: effects paint into it, its controller asks it for bytes.
///
/// What a frame touches lies in two cache lines. A light also knows its painted colour by a tag, a
/// number that stands for that exact colour value: where two tags agree, no colour need be read,
/// compared or computed again. Results are bit for bit those of composite() and interpolate().
class Light : public QObject
{
    Q_OBJECT
public:
    /// Reads the light from its element of the map file; null leaves every default.
    explicit Light(QDomNode* element);
    /// The same from a map that is being read.
    explicit Light(const MapNode& element);
    ~Light() override;

    /// Lights lie side by side in memory, in the order of their making.
    static void* operator new(std::size_t size);
    static void operator delete(void* light, std::size_t size);

    /// Sort order: controllers' IPv4 addresses, port, DMX address, serial number. False where
    /// either light's controller is missing.
    virtual bool lessThan(const Light& other) const;

    /// Connects the light's signals to those of `model`; null disconnects and keeps the model.
    void attach(MapModel* model);

    // --- Painting: once per frame and layer.
    /// Composites `c` over what has been painted with a lower priority, or averages it with what
    /// has the same one; drops it below a higher one.
    void mixColor(const VelaColor& c, int priority);
    /// The same for the simulation's colour. To be called behind mixColor, whose count it reads.
    void mixSimColor(const QColor& q, int priority);
    /// mixColor(c) and then mixSimColor(q) on each of `count` lights, null entries passed over: the
    /// way to paint many lights alike.
    static void mixRow(Light* const* lights, int count, const VelaColor& c, const QColor& q,
                       int priority);
    /// mixRow() of VelaColor(pixel) and QColor(pixel), both opaque, for less: pictures have a
    /// colour of its own for nearly every light.
    static void mixPixelRow(Light* const* lights, int count, QRgb pixel, int priority);
    /// Keeps the painted colour for the next frame (`store`), or puts the kept one over this frame.
    void carryOver(bool store);
    /// Alpha of the painted colour, 0..1; any other value makes the colour invalid.
    void setAlpha(double a);
    /// Writes the light's bytes at its channel. Writes nothing for an invalid colour, or when the
    /// light would begin below 0 or end past `size`, in bytes.
    void writeDmx(quint8* buffer, int size);
    /// Ends a frame: valid opaque black, no layers.
    void reset();
    /// The painted colour, writable at once: the reference is not to be kept beyond the next call
    /// of this light. Readers had better take mixValue().
    VelaColor& mixColorRef();
    /// The painted colour.
    const VelaColor& mixValue() const { return isBlackPainted() ? black() : m_mix; }
    const QColor& simColor() const { return m_frame.sim; }
    bool hasSimColor() const { return m_frame.sim.isValid(); }
    bool isPainted() const { return isBlackPainted() || m_mix.isValid(); }
    /// Brings what a frame touches into the cache ahead of its use; null is allowed.
    static void prefetch(const Light* light)
    {
        if (light != nullptr) {
            __builtin_prefetch(&light->m_frame, 1);
        }
    }
    /// The same ahead of a colour that the light has not shown before.
    static void prefetchForChange(const Light* light)
    {
        prefetch(light);
        const auto address = reinterpret_cast<quintptr>(light);
        __builtin_prefetch(reinterpret_cast<const void*>(address + 2 * kCacheLine), 1);
    }

    quint64 uid() const { return m_uid; }
    const QString& name() const { return m_name; }
    /// Port of its controller, counted from 0.
    quint8 port() const { return m_frame.port; }
    quint32 lightNumber() const { return m_lightNumber; }
    quint64 controllerUid() const { return m_controllerUid; }
    quint64 fixtureUid() const { return m_fixtureUid; }
    LightPosition position() const { return m_position; }
    /// The number that picks the simulation's shape; -1 where the file's did not parse.
    qint32 fixtureCode() const { return m_fixtureCode; }
    quint64 serialNumber() const { return m_serialNumber; }
    /// Empty where the device dictionary knows none.
    const QString& deviceName() const { return m_deviceName; }
    bool forwardFlag() const { return m_settings.controlMode >= 2; }
    int tintweaveProfileId() const { return m_profileId; }
    int tintweaveIoMode() const { return m_ioMode; }
    quint32 ioModeSet() const { return m_settings.ioModeSet; }
    quint32 ledChemistry() const { return m_settings.ledChemistry; }
    quint32 controlMode() const { return m_settings.controlMode; }
    quint32 dimmingCurve() const { return m_settings.dimmingCurve; }
    quint32 resolution() const { return m_settings.resolution; }
    bool halfFull() const { return m_settings.halfFull; }
    int channelCount() const { return m_channelCount; }
    /// Bytes per channel, 1 or 2.
    int channelWidth() const { return m_channelWidth; }
    /// Bytes that the light occupies in the port buffer, from `channel()` on.
    int footprint() const { return m_frame.footprint; }
    /// Start offset in the port buffer, counted from 0.
    int channel() const { return m_frame.channel; }
    /// Display value of a property by its display name, or `fallback`.
    QString property(const QString& key, const QString& fallback = QString()) const;
    /// Settles the layout anew and returns the index of the last byte (one less than the index
    /// after the light), limited to the range of int.
    int lastChannel();

signals:
    void msg(const QString& s);
    void updatedLight(qulonglong serialNumber); // carries the uid
    void updatedLightPosition(qulonglong serialNumber);
    void updatedLightProperty(qulonglong serialNumber, const QString& key, const QString& value);

private:
    friend class MapModel; // enters lights by the thousand: see hold()

    static constexpr int kCacheLine = 64;
    static constexpr int kInlineBytes = 13;
    static constexpr int kWidestLight = 32; // the greatest footprint is 20
    static constexpr quint64 kNoTag = 0;    // an invalid colour, NaN, or one written from outside
    static constexpr quint64 kBlackTag = 1;
    static constexpr quint64 kPixelTag = 1ULL
                                         << 63U; // and the pixel's 24 bits: no count gets there

    enum Flag : quint8 {
        MixFresh = 1,   // the next mixColor is the first layer
        SimFresh = 2,   // likewise for mixSimColor
        MixBlack = 4,   // reset: the colour is black, whatever m_mix still holds
        Carrying = 8,   // a carried colour was put over this frame
        HasTrail = 16,  // m_trail is there
        IsSettled = 32, // the layout stands; nothing changes it after reading
    };

    /// The state that each frame reads and writes: one cache line.
    struct alignas(kCacheLine) Frame
    {
        quint64 heldTag = kNoTag; // of m_mix
        quint64 sentTag = kNoTag; // of m_lastColor
        QColor sim;
        qint32 mixTop = 0;
        qint32 simTop = 0;
        quint32 mixCount = 0;
        qint32 channel = 0;
        quint8 flags = MixFresh | SimFresh;
        quint8 footprint = 3;
        quint8 port = 0;
        quint8 bytes[kInlineBytes] = {}; // of m_lastColor, where the footprint allows
    };
    static_assert(sizeof(Frame) == kCacheLine, "a reset or an unchanged light touches one line");

    /// What the properties of the file settle.
    struct Settings
    {
        quint32 dimmingCurve = 0;
        quint32 resolution = 1; // 0 is 16-bit channels
        quint32 controlMode = 0;
        quint32 ledChemistry = 0;
        quint32 ioModeSet = 1; // 0 gives two channels and mode 16
        bool halfFull = false;
        bool hasStartupChannels = false;
    };

    /// Colours that few lights ever have.
    struct Trail
    {
        VelaColor spare;
        VelaColor carried;
    };

    struct MixLayer;
    struct SimLayer;
    struct Tables;
    struct PropertyList;

    static const VelaColor& black();
    bool isBlackPainted() const { return (m_frame.flags & MixBlack) != 0; }
    quint64 mixTag() const { return isBlackPainted() ? kBlackTag : m_frame.heldTag; }
    void setMix(const VelaColor& color, quint64 tag);
    void takeMixLayer(MixLayer& layer);
    void takeSimLayer(SimLayer& layer);
    static void takeRow(Light* const* lights, int count, MixLayer& mix, SimLayer& sim);
    const quint8* bytes() const
    {
        return m_frame.footprint <= kInlineBytes ? m_frame.bytes : m_wideBytes;
    }
    bool refreshBytes(quint64 tag);
    /// `block` takes kWidestLight bytes, zero before.
    void convert(const VelaColor& color, quint8* block) const;

    void hold(MapModel* model) { m_model = model; }
    void readValue(int key, const QString& text);
    PropertyList* readProperties(const MapNode& list);
    void applyProperty(const QString& displayName);
    void applyStartupChannel(const QString& displayName);
    void updateLayout();
    void settleLayout();
    int effectiveMode() const { return m_settings.ioModeSet != 0 ? m_ioMode : 16; }

    // What a frame does not touch shares the first line with QObject.
    MapModel* m_model = nullptr; // not owned
    quint64 m_uid = 0;
    quint64 m_controllerUid = 0;
    QString m_name;
    QHash<QString, QString> m_properties; // shared among lights with equal lists
    std::unique_ptr<Trail> m_trail;

    Frame m_frame;
    VelaColor m_mix;
    VelaColor m_lastColor; // the colour that bytes() were made from

    LightPosition m_position;
    quint64 m_fixtureUid = 0;
    quint64 m_serialNumber = 0xFFFFFFFFU;
    QString m_deviceName;
    Settings m_settings;
    quint32 m_lightNumber = 0;
    qint32 m_fixtureCode = 0;
    int m_channelCount = 3;
    int m_channelWidth = 1;
    int m_profileId = 0;
    int m_ioMode = 0;
    quint32 m_cacheForm = 0;         // DmxCache::formOf the fields above
    bool m_addressIsChannel = false; // "DMX Address" is channel + 1, and not in m_properties
    quint8 m_wideBytes[kWidestLight] = {};
};

inline void Light::writeDmx(quint8* buffer, int size)
{
    const int channel = m_frame.channel;
    const int footprint = m_frame.footprint;
    if (channel < 0 || footprint > size - channel) {
        return;
    }
    const quint64 tag = mixTag();
    if ((tag == kNoTag || tag != m_frame.sentTag) && !refreshBytes(tag)) {
        return;
    }
    quint8* const out = buffer + channel;
    if (footprint == 3) {
        out[0] = m_frame.bytes[0];
        out[1] = m_frame.bytes[1];
        out[2] = m_frame.bytes[2];
    } else {
        std::memcpy(out, bytes(), static_cast<std::size_t>(footprint));
    }
}

inline void Light::reset()
{
    m_frame.sim = QColor(0, 0, 0);
    m_frame.mixTop = 0;
    m_frame.simTop = 0;
    const quint8 kept = m_frame.flags & (HasTrail | IsSettled);
    m_frame.flags = kept | MixFresh | SimFresh | MixBlack;
    if ((kept & HasTrail) != 0) {
        m_trail->spare.reset();
    }
}
