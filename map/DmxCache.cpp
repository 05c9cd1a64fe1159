#include "map/DmxCache.h"

#include <algorithm>
#include <cstring>

namespace {

/// One step of a multiplicative hash.
quint64 stir(quint64 hash, quint64 word)
{
    hash = (hash ^ word) * 0x9E3779B97F4A7C15ULL;
    return hash ^ (hash >> 29U);
}

quint64 bitsOf(double v)
{
    v += 0.0; // -0.0 equals 0.0
    quint64 bits = 0;
    std::memcpy(&bits, &v, sizeof(bits));
    return bits;
}

} // namespace

bool DmxCacheKey::hasSameForm(const DmxCacheKey& other) const
{
    return forwardFlag == other.forwardFlag && channelCount == other.channelCount &&
           channelWidth == other.channelWidth && reserved == other.reserved &&
           dimmingCurve == other.dimmingCurve && profileId == other.profileId &&
           mode == other.mode && halfFull == other.halfFull && ledChemistry == other.ledChemistry;
}

uint qHash(const DmxCacheKey& key, uint seed)
{
    return qHash(key.color, seed);
}

std::size_t DmxCache::FormHash::operator()(const DmxCacheKey& key) const
{
    quint64 hash = (key.forwardFlag ? 1U : 0U) + (key.halfFull ? 2U : 0U);
    hash = stir(hash, static_cast<quint32>(key.channelCount));
    hash = stir(hash, static_cast<quint32>(key.channelWidth));
    hash = stir(hash, key.dimmingCurve);
    hash = stir(hash, static_cast<quint32>(key.profileId));
    hash = stir(hash, static_cast<quint32>(key.mode));
    return stir(hash, key.ledChemistry);
}

DmxCache::DmxCache(int maxCost)
    : m_maxCost(static_cast<std::size_t>(std::max(maxCost, 1)))
{
    quint32 buckets = 16;
    while (buckets < m_maxCost * 2) {
        buckets *= 2;
    }
    m_bucketMask = buckets - 1;
    m_buckets.assign(buckets, kNone);
    m_nodes.reserve(m_maxCost);
}

DmxCache& DmxCache::instance()
{
    static DmxCache cache;
    return cache;
}

quint32 DmxCache::formOf(const DmxCacheKey& key)
{
    if (m_lastForm == nullptr || !m_lastForm->first.hasSameForm(key)) { // lights come in runs
        m_lastForm = &*m_forms.emplace(key, static_cast<quint32>(m_forms.size())).first;
    }
    return m_lastForm->second;
}

/// Equal colours hash alike; which component differs does not matter.
quint32 DmxCache::hashOf(const VelaColor& color, quint32 form)
{
    quint64 hash = stir(form, color.alpha32());
    hash = stir(hash, static_cast<quint64>(color.profileId()) << 32U | color.channelLayout());
    switch (color.spec()) {
    case VelaColor::Hsv: {
        int hue = 0;
        int saturation = 0;
        int value = 0;
        color.getHsv16(&hue, &saturation, &value);
        hash = stir(hash, static_cast<quint32>(hue));
        hash = stir(hash, static_cast<quint64>(saturation) << 32U | static_cast<quint32>(value));
        break;
    }
    case VelaColor::Yxy:
        hash = stir(hash, bitsOf(color.capY()));
        hash = stir(hash, bitsOf(color.smallX()));
        hash = stir(hash, bitsOf(color.smallY()));
        break;
    case VelaColor::Nchannel:
        for (int i = 0; i < color.channelCount(); ++i) {
            hash = stir(hash, color.channel32(i));
        }
        break;
    case VelaColor::Rgb:
    case VelaColor::Invalid:
        hash = stir(hash, static_cast<quint64>(color.red16()) << 32U |
                              static_cast<quint64>(color.green16()) << 16U |
                              static_cast<quint64>(color.blue16()));
        break;
    }
    return static_cast<quint32>(hash >> 32U);
}

const DmxCache::Block* DmxCache::findBehindFront(const VelaColor& color, quint32 form, quint64 tag)
{
    const quint32 hash = hashOf(color, form);
    const quint32 index = search(color, form, hash);
    if (index == kNone) {
        m_missedColor = color;
        m_missedForm = form;
        m_missedHash = hash;
        return nullptr;
    }
    Node& node = m_nodes[index];
    node.tag = tag != 0 ? tag : node.tag;
    if (index != m_head) {
        unlink(index);
        pushFront(index);
    }
    return &node.block;
}

quint32 DmxCache::search(const VelaColor& color, quint32 form, quint32 hash) const
{
    quint32 index = m_buckets[hash & m_bucketMask];
    while (index != kNone) {
        const Node& node = m_nodes[index];
        if (node.hash == hash && node.form == form && node.color == color) {
            break;
        }
        index = node.nextInBucket;
    }
    return index;
}

void DmxCache::insert(const VelaColor& color, quint32 form, const Block& block, quint64 tag)
{
    quint32 index = 0;
    if (m_nodes.size() < m_maxCost) {
        index = static_cast<quint32>(m_nodes.size());
        m_nodes.emplace_back(); // within what was reserved
    } else {
        index = m_tail;
        unlink(index);
        quint32* link = &bucketOf(m_nodes[index].hash);
        while (*link != index) {
            link = &m_nodes[*link].nextInBucket;
        }
        *link = m_nodes[index].nextInBucket;
    }
    Node& node = m_nodes[index];
    node.color = color;
    node.tag = tag;
    node.form = form;
    node.hash = form == m_missedForm && color == m_missedColor ? m_missedHash : hashOf(color, form);
    node.block = block;
    quint32& bucket = bucketOf(node.hash);
    node.nextInBucket = bucket;
    bucket = index;
    pushFront(index);
}

bool DmxCache::contains(const VelaColor& color, quint32 form) const
{
    return search(color, form, hashOf(color, form)) != kNone;
}

void DmxCache::clear()
{
    m_nodes.clear();
    std::fill(m_buckets.begin(), m_buckets.end(), kNone);
    m_head = kNone;
    m_tail = kNone;
}

void DmxCache::pushFront(quint32 index)
{
    Node& node = m_nodes[index];
    node.newer = kNone;
    node.older = m_head;
    if (m_head != kNone) {
        m_nodes[m_head].newer = index;
    }
    m_head = index;
    if (m_tail == kNone) {
        m_tail = index;
    }
}

void DmxCache::unlink(quint32 index)
{
    const Node& node = m_nodes[index];
    if (node.newer != kNone) {
        m_nodes[node.newer].older = node.older;
    } else {
        m_head = node.older;
    }
    if (node.older != kNone) {
        m_nodes[node.older].newer = node.newer;
    } else {
        m_tail = node.newer;
    }
}
