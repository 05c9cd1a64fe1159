#pragma once

#include "color/VelaColor.h"

#include <QtGlobal>

#include <array>
#include <unordered_map>
#include <vector>

/// Everything that decides the channel bytes of a light. Equal keys give equal bytes.
struct DmxCacheKey
{
    VelaColor color;
    bool forwardFlag = false;
    int channelCount = 3;
    int channelWidth = 1;
    int reserved = 0;
    quint32 dimmingCurve = 0;
    int profileId = 0;
    int mode = 0;
    bool halfFull = false;
    quint32 ledChemistry = 0;

    /// Every field but the colour.
    bool hasSameForm(const DmxCacheKey& other) const;
    bool operator==(const DmxCacheKey& other) const
    {
        return color == other.color && hasSameForm(other);
    }
};

/// The hash of the colour.
uint qHash(const DmxCacheKey& key, uint seed = 0);

/// Least-recently-used cache from key to channel bytes, one for all lights; each entry costs 1.
///
/// The colours of one installation often share a hash (all Yxy colours of one alpha do), so the
/// index inside hashes every component; what is found, what is missing and what is evicted next do
/// not depend on it. A frame may call everything but formOf(): nothing else allocates once the
/// cache has been full, and a hit never does.
class DmxCache
{
public:
    static constexpr int kMaxCost = 10000;
    static constexpr int kBlockBytes = 32; // the widest light takes 20
    using Block = std::array<quint8, kBlockBytes>;

    explicit DmxCache(int maxCost = kMaxCost);

    /// The cache of the process, made by the first light.
    static DmxCache& instance();

    /// A number for everything in `key` but the colour: equal numbers are equal fields.
    quint32 formOf(const DmxCacheKey& key);

    /// The block of a colour in a form, which moves to the front; null on a miss. `tag` is 0 or
    /// stands for this very colour value and no other. The block holds until the next insert().
    const Block* find(const VelaColor& color, quint32 form, quint64 tag = 0)
    {
        ++m_lookUps;
        if (m_head != kNone) {
            Node& front = m_nodes[m_head];
            if (front.form == form && ((tag != 0 && front.tag == tag) || front.color == color)) {
                front.tag = tag != 0 ? tag : front.tag;
                return &front.block;
            }
        }
        return findBehindFront(color, form, tag);
    }
    /// Enters a block that find() has just missed, at the front. Beyond the maximum cost the least
    /// recently used entry goes.
    void insert(const VelaColor& color, quint32 form, const Block& block, quint64 tag = 0);

    /// Whether an entry is there; does not touch the order.
    bool contains(const VelaColor& color, quint32 form) const;
    int size() const { return static_cast<int>(m_nodes.size()); }
    /// Calls of find() so far.
    quint64 lookUps() const { return m_lookUps; }
    /// Drops all entries; forms keep their numbers.
    void clear();

private:
    static constexpr quint32 kNone = 0xFFFFFFFFU;

    struct Node
    {
        VelaColor color;
        quint64 tag = 0;
        quint32 form = 0;
        quint32 hash = 0;
        quint32 newer = kNone;
        quint32 older = kNone;
        quint32 nextInBucket = kNone;
        Block block{};
    };
    struct FormHash
    {
        std::size_t operator()(const DmxCacheKey& key) const;
    };
    struct FormEqual
    {
        bool operator()(const DmxCacheKey& a, const DmxCacheKey& b) const
        {
            return a.hasSameForm(b);
        }
    };

    static quint32 hashOf(const VelaColor& color, quint32 form);
    const Block* findBehindFront(const VelaColor& color, quint32 form, quint64 tag);
    quint32 search(const VelaColor& color, quint32 form, quint32 hash) const;
    void pushFront(quint32 index);
    void unlink(quint32 index);
    quint32& bucketOf(quint32 hash) { return m_buckets[hash & m_bucketMask]; }

    std::size_t m_maxCost = 0;
    quint32 m_bucketMask = 0;
    quint32 m_head = kNone; // most recently used
    quint32 m_tail = kNone;
    quint64 m_lookUps = 0;
    // What was looked for last in vain, with its hash: mostly what is entered next.
    VelaColor m_missedColor;
    quint32 m_missedForm = 0;
    quint32 m_missedHash = 0;
    std::vector<Node> m_nodes;
    std::vector<quint32> m_buckets;
    using Forms = std::unordered_map<DmxCacheKey, quint32, FormHash, FormEqual>;
    Forms m_forms;
    const Forms::value_type* m_lastForm = nullptr; // not owned; elements of m_forms stay in place
};
