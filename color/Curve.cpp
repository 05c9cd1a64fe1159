#include "color/Curve.h"

#include "color/ColorUtils.h"
#include "color/GammaAnchors.h"

#include <map>

const quint8* Curve::reverse8() const
{
    if (!m_reverse8 && m_lut8) {
        m_reverse8 = std::make_unique<quint8[]>(256);
        bool isSet[256] = {};
        for (int i = 0; i < 256; ++i) {
            m_reverse8[m_lut8[static_cast<std::size_t>(i)]] = static_cast<quint8>(i);
            isSet[m_lut8[static_cast<std::size_t>(i)]] = true;
        }
        for (std::size_t i = 1; i < 256; ++i) {
            if (!isSet[i]) {
                m_reverse8[i] = m_reverse8[i - 1];
            }
        }
    }
    return m_reverse8.get();
}

void Curve::fillTables(const quint16* anchors)
{
    m_lut8 = std::make_unique<quint8[]>(256);
    m_lut16 = std::make_unique<quint16[]>(65536);
    for (std::size_t i = 0; i < 256; ++i) {
        const int low = anchors[i];
        const int high = i < 255 ? anchors[i + 1] : low;
        for (std::size_t j = 0; j < 256; ++j) {
            const double level = (high - low) * (static_cast<double>(j) * 0.00390625) + low;
            m_lut16[i * 256 + j] = static_cast<quint16>(level);
        }
        const int top = low >> 8;
        const bool roundsUp = (low & 0xFF) >= 0x80 && top < 255;
        m_lut8[i] = static_cast<quint8>(roundsUp ? top + 1 : top);
    }
}

GammaCurveVelaNormal::GammaCurveVelaNormal()
{
    GammaCurveVelaNormal::buildTables();
}

void GammaCurveVelaNormal::buildTables()
{
    fillTables(normalGammaAnchors().data());
}

GammaCurveTungsten::GammaCurveTungsten()
{
    GammaCurveTungsten::buildTables();
}

void GammaCurveTungsten::buildTables()
{
    fillTables(tungstenGammaAnchors().data());
}

namespace {

struct CurveRegistry
{
    std::map<int, std::unique_ptr<Curve>> curves;
    const Curve* known[3] = {}; // the same, without the walk through the map
};

CurveRegistry makeRegistry()
{
    CurveRegistry registry;
    registry.curves[0] = std::make_unique<Curve>();
    registry.curves[1] = std::make_unique<GammaCurveVelaNormal>();
    registry.curves[2] = std::make_unique<GammaCurveTungsten>();
    for (int id = 0; id < 3; ++id) {
        registry.known[id] = registry.curves[id].get();
    }
    return registry;
}

} // namespace

const Curve* ColorUtils::curve(int id)
{
    static CurveRegistry registry = makeRegistry();
    if (id >= 0 && id < 3) {
        return registry.known[id];
    }
    return registry.curves[id].get(); // an unknown id is entered as null
}
