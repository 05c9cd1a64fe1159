#include "tools/mapgen/FixtureTypes.h"

namespace {

// Raw numbers of the property map's lists.
constexpr quint32 kEightBit = 1;
constexpr quint32 kSixteenBit = 0;
constexpr quint32 kNativeMode = 0;

QVector<PropertySpec> fixtureProperties(quint32 chemistry, quint32 resolution,
                                        const char* modeToken)
{
    return {{QStringLiteral("LED_CHEMISTRY"), chemistry},
            {QStringLiteral("INPUT_RESOLUTION"), resolution},
            {QString::fromLatin1(modeToken), kNativeMode}};
}

FixtureType fixtureType(const char* product, quint64 firstSerial, int code, int ioMode,
                        int footprint, const QVector<PropertySpec>& properties)
{
    FixtureType type;
    type.product = QString::fromLatin1(product);
    type.firstSerial = firstSerial;
    type.lastSerial = firstSerial | 0xFFFFU;
    type.code = code;
    type.ioMode = ioMode;
    type.footprint = footprint;
    type.properties = properties;
    return type;
}

QVector<PropertySpec> with(QVector<PropertySpec> properties, const char* token, quint32 value)
{
    properties.append({QString::fromLatin1(token), value});
    return properties;
}

} // namespace

namespace FixtureTypes {

const FixtureType& rgbNode()
{
    static const FixtureType kType =
        fixtureType("Bobbin 50 RGB", 0x002B0000, 0x21, 0, 3,
                    fixtureProperties(0, kEightBit, "COLOR_CONTROL_MODE"));
    return kType;
}

const FixtureType& rgbTape()
{
    static const FixtureType kType =
        fixtureType("Cambric Tape RGB", 0x00640000, 0x22, 0, 3,
                    fixtureProperties(0, kEightBit, "PLAINWEAVE_MODE"));
    return kType;
}

const FixtureType& rgbwLinear()
{
    static const FixtureType kType = fixtureType(
        "Heddle 1200 RGBW", 0x00240000, 0x31, 2, 4,
        with(fixtureProperties(2, kEightBit, "COLOR_CONTROL_MODE"), "DIMMING_CURVE", 1));
    return kType;
}

const FixtureType& rgbaHalves()
{
    static const FixtureType kType = fixtureType(
        "Brocade Large RGBA", 0x00350000, 0x32, 1, 8,
        with(fixtureProperties(1, kEightBit, "COLOR_CONTROL_MODE"), "HALF_FULL_MODE", 1));
    return kType;
}

const FixtureType& rgbw16Bit()
{
    static const FixtureType kType =
        fixtureType("Velour Two RGBW", 0x00630000, 0x33, 2, 8,
                    fixtureProperties(2, kSixteenBit, "COLOR_CONTROL_MODE"));
    return kType;
}

const FixtureType& rgbawSpot()
{
    static const FixtureType kType =
        fixtureType("Velour Four RGBAW", 0x005F0000, 0x34, 3, 5,
                    fixtureProperties(3, kEightBit, "COLOR_CONTROL_MODE"));
    return kType;
}

const FixtureType& rgbwTriple()
{
    static const FixtureType kType = fixtureType(
        "Taffeta 1800 RGBW Triple", 0x00510000, 0x35, 2, 6,
        with(fixtureProperties(254, kEightBit, "COLOR_CONTROL_MODE"), "HALF_FULL_MODE", 1));
    return kType;
}

const FixtureType& tunableLinear()
{
    static const FixtureType kType = fixtureType(
        "Ecru Linear Crest2", 0x00680000, 0x41, 16, 2,
        with(fixtureProperties(5, kEightBit, "COLOR_CONTROL_MODE"), "CREST_INPUT_MODE", 1));
    return kType;
}

const FixtureType& fourWhiteFlood()
{
    static const FixtureType kType = fixtureType(
        "Ecru Flood Crest4", 0x00700000, 0x42, 22, 4,
        with(fixtureProperties(15, kEightBit, "COLOR_CONTROL_MODE"), "CREST_INPUT_MODE", 1));
    return kType;
}

const FixtureType& whiteLine()
{
    static const FixtureType kType =
        fixtureType("Calico Line White", 0x00740000, 0x43, 9, 1,
                    fixtureProperties(7, kEightBit, "PLAINWEAVE_MODE"));
    return kType;
}

} // namespace FixtureTypes
