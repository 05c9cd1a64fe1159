#include "map/Light.h"

#include <array>
#include <cstring>

// A frame paints the same few colours over the same few colours on thousands of lights. What a
// layer makes of a colour is therefore remembered, by tag for the outputs and by bits for the
// simulation, in small tables that a newer entry simply overwrites.

namespace {

constexpr unsigned kTableBits = 6;
constexpr std::size_t kTableSize = 1U << kTableBits;

quint64 stir(quint64 hash, quint64 word)
{
    hash = (hash ^ word) * 0x9E3779B97F4A7C15ULL;
    return hash ^ (hash >> 32U);
}

std::size_t slotOf(quint64 hash)
{
    return static_cast<std::size_t>((hash * 0x9E3779B97F4A7C15ULL) >> (64U - kTableBits));
}

struct TaggedColor
{
    VelaColor color;
    quint64 tag = 0;
};

/// `color`, known as `tag`, is what `over` makes of `under`; `count` is the number of colours
/// averaged before, 0 for a composite.
struct MixResult
{
    quint64 under = 0;
    quint64 over = 0;
    quint64 tag = 0;
    quint32 count = 0;
    VelaColor color;
};

/// A QColor without its padding, so that it compares exactly.
struct ColorBits
{
    quint64 low = 0;
    quint64 high = 0;

    explicit ColorBits(const QColor& color)
    {
        static_assert(sizeof(QColor) == 16, "spec, five 16-bit components, 2 bytes of padding");
        constexpr std::size_t kUsed = 14;
        const char* const bytes = reinterpret_cast<const char*>(&color);
        std::memcpy(&low, bytes, sizeof(low));
        std::memcpy(&high, bytes + sizeof(low), kUsed - sizeof(low));
    }
    bool operator==(const ColorBits& other) const { return low == other.low && high == other.high; }
};

struct SimResult
{
    ColorBits under{QColor()};
    ColorBits over{QColor()};
    quint32 count = 0;
    bool isUsed = false;
    QColor color;
};

double meanWeight(quint32 count)
{
    return 1.0 - static_cast<double>(count) / (static_cast<double>(count) + 1.0);
}

QColor simComposite(const QColor& over, const QColor& under)
{
    return over.alpha() == 255 ? over : composite(VelaColor(over), VelaColor(under)).toQColor(true);
}

} // namespace

struct Light::Tables
{
    std::array<TaggedColor, kTableSize> tags;
    std::array<MixResult, kTableSize> mixes;
    std::array<SimResult, kTableSize> sims;
    quint64 lastTag = kBlackTag;

    static Tables& instance()
    {
        static Tables tables;
        return tables;
    }

    /// The tag of a colour met before or a new one; none for what does not equal itself.
    quint64 tagOf(const VelaColor& color)
    {
        quint64 words[sizeof(VelaColor) / sizeof(quint64)];
        std::memcpy(words, &color, sizeof(words));
        quint64 hash = 0; // products that don't wait for each other
        quint64 factor = 0x9E3779B97F4A7C15ULL;
        for (const quint64 word : words) {
            hash += (word ^ (word >> 32U)) * factor;
            factor += 0xD1B54A32D192ED02ULL; // stays odd
        }
        TaggedColor& entry = tags[slotOf(hash)];
        // Bits that a colour does not use may differ: it then has two tags, which does no harm.
        // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison)
        if (std::memcmp(&entry.color, &color, sizeof(color)) != 0) {
            const quint64 tag = newTag(color);
            if (tag == kNoTag) {
                return kNoTag;
            }
            entry = {color, tag};
        }
        return entry.tag;
    }
    quint64 newTag(const VelaColor& color)
    {
        // NOLINTNEXTLINE(misc-redundant-expression): false for invalid colours and NaN
        return color == color ? ++lastTag : kNoTag;
    }
};

struct Light::MixLayer
{
    Tables& known;
    const VelaColor& color;
    quint64 tag;
    int priority;
    bool isOpaque;
    const MixResult* last;

    MixLayer(Tables& tables, const VelaColor& c, int p)
        : MixLayer(tables, c, tables.tagOf(c), p)
    {}
    /// `t` stands for the colour and for no other.
    MixLayer(Tables& tables, const VelaColor& c, quint64 t, int p)
        : known(tables)
        , color(c)
        , tag(t)
        , priority(p)
        , isOpaque(c.alpha32() == 0xFFFFFFFFU)
        , last(&tables.mixes.front())
    {}
};

struct Light::SimLayer
{
    Tables& known;
    const QColor& color;
    ColorBits bits;
    int priority;
    bool isOpaque;
    const SimResult* last;

    SimLayer(Tables& tables, const QColor& q, int p)
        : known(tables)
        , color(q)
        , bits(q)
        , priority(p)
        , isOpaque(q.alpha() == 255)
        , last(&tables.sims.front())
    {}
};

const VelaColor& Light::black()
{
    static const VelaColor kBlack = VelaColor::fromRgb(0, 0, 0);
    return kBlack;
}

inline void Light::setMix(const VelaColor& color, quint64 tag)
{
    if (tag == kNoTag || tag != m_frame.heldTag) {
        m_mix = color;
        m_frame.heldTag = tag;
    }
    m_frame.flags &= static_cast<quint8>(~MixBlack);
}

inline void Light::takeMixLayer(MixLayer& layer)
{
    quint32 averaged = 0;
    if ((m_frame.flags & MixFresh) != 0) {
        m_frame.flags &= static_cast<quint8>(~MixFresh);
        m_frame.mixCount = 1;
        m_frame.mixTop = layer.priority;
    } else if (m_frame.mixTop < layer.priority) {
        m_frame.mixTop = layer.priority; // mixCount stays, on purpose
    } else if (m_frame.mixTop == layer.priority) {
        averaged = m_frame.mixCount;
        ++m_frame.mixCount;
    } else {
        return;
    }

    if (averaged == 0 && layer.isOpaque) {
        setMix(layer.color, layer.tag);
        return;
    }
    const auto mixed = [&] {
        return averaged == 0 ? composite(layer.color, mixValue())
                             : interpolate(mixValue(), layer.color, meanWeight(averaged));
    };
    const quint64 under = mixTag();
    if (under == kNoTag || layer.tag == kNoTag) {
        setMix(mixed(), kNoTag);
        return;
    }
    const auto isKnown = [&](const MixResult& result) {
        return result.under == under && result.over == layer.tag && result.count == averaged;
    };
    if (!isKnown(*layer.last)) {
        MixResult& entry = layer.known.mixes[slotOf(under + stir(layer.tag, averaged))];
        if (!isKnown(entry)) {
            entry.color = mixed();
            entry.under = under;
            entry.over = layer.tag;
            entry.count = averaged;
            entry.tag = layer.known.newTag(entry.color);
        }
        layer.last = &entry;
    }
    setMix(layer.last->color, layer.last->tag);
}

inline void Light::takeSimLayer(SimLayer& layer)
{
    quint32 averaged = 0;
    bool isMean = false;
    if ((m_frame.flags & SimFresh) != 0) {
        m_frame.flags &= static_cast<quint8>(~SimFresh);
        m_frame.simTop = layer.priority;
    } else if (m_frame.simTop < layer.priority) {
        m_frame.simTop = layer.priority;
    } else if (m_frame.simTop == layer.priority) {
        isMean = true;
        // mixColor has raised the count already; without it, the weight is that of a first colour.
        averaged = m_frame.mixCount == 0 ? 0 : m_frame.mixCount - 1;
    } else {
        return;
    }

    if (!isMean && layer.isOpaque) {
        m_frame.sim = QColor(layer.color); // the inline way to assign
        return;
    }
    const ColorBits under(m_frame.sim);
    const quint32 count = isMean ? averaged + 1 : 0;
    const auto isKnown = [&](const SimResult& result) {
        return result.isUsed && result.under == under && result.over == layer.bits &&
               result.count == count;
    };
    if (!isKnown(*layer.last)) {
        SimResult& entry = layer.known.sims[slotOf(stir(under.low, under.high) +
                                                   stir(layer.bits.low, layer.bits.high) + count)];
        if (!isKnown(entry)) {
            entry.color = isMean ? interpolate(VelaColor(m_frame.sim), VelaColor(layer.color),
                                               meanWeight(averaged))
                                       .toQColor(true)
                                 : simComposite(layer.color, m_frame.sim);
            entry.under = under;
            entry.over = layer.bits;
            entry.count = count;
            entry.isUsed = true;
        }
        layer.last = &entry;
    }
    m_frame.sim = QColor(layer.last->color);
}

void Light::mixColor(const VelaColor& c, int priority)
{
    MixLayer layer(Tables::instance(), c, priority);
    takeMixLayer(layer);
}

void Light::mixSimColor(const QColor& q, int priority)
{
    SimLayer layer(Tables::instance(), q, priority);
    takeSimLayer(layer);
}

inline void Light::takeRow(Light* const* lights, int count, MixLayer& mix, SimLayer& sim)
{
    constexpr int kAhead = 8;
    for (int i = 0; i < count; ++i) {
        if (i + kAhead < count) {
            prefetch(lights[i + kAhead]);
        }
        Light* const light = lights[i];
        if (light != nullptr) {
            light->takeMixLayer(mix);
            light->takeSimLayer(sim);
        }
    }
}

void Light::mixRow(Light* const* lights, int count, const VelaColor& c, const QColor& q,
                   int priority)
{
    Tables& known = Tables::instance();
    MixLayer mixLayer(known, c, priority);
    SimLayer simLayer(known, q, priority);
    takeRow(lights, count, mixLayer, simLayer);
}

void Light::mixPixelRow(Light* const* lights, int count, QRgb pixel, int priority)
{
    constexpr QRgb kColorBits = 0xFFFFFFU;
    const VelaColor color(pixel);
    const QColor screen(pixel);
    Tables& known = Tables::instance();
    MixLayer mixLayer(known, color, kPixelTag | (pixel & kColorBits), priority);
    SimLayer simLayer(known, screen, priority);
    takeRow(lights, count, mixLayer, simLayer);
}

VelaColor& Light::mixColorRef()
{
    if (isBlackPainted()) {
        m_mix = black();
        m_frame.flags &= static_cast<quint8>(~MixBlack);
    }
    m_frame.heldTag = kNoTag;
    return m_mix;
}

void Light::setAlpha(double a)
{
    mixColorRef().setAlphaF(a);
}

void Light::carryOver(bool store)
{
    if (!m_trail) {
        m_trail = std::make_unique<Trail>();
        m_frame.flags |= HasTrail;
    }
    if (store) {
        m_trail->carried = mixValue();
        reset();
        return;
    }
    m_frame.flags |= Carrying;
    VelaColor& mix = mixColorRef();
    mix = composite(m_trail->carried, mix);
    m_trail->carried.reset();
}
