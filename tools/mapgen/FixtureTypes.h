#pragma once

#include "tools/mapgen/Installation.h"

/// A fixture product as a patch needs it. The serial numbers lie in the product's range of the
/// device files, which is how a reader of the map knows the product.
struct FixtureType
{
    QString product;
    quint64 firstSerial = 0;
    quint64 lastSerial = 0;
    int code = 0;
    int ioMode = 0;
    int footprint = 3; // bytes on the data line
    QVector<PropertySpec> properties;
};

namespace FixtureTypes {

const FixtureType& rgbNode();        ///< 3 bytes
const FixtureType& rgbTape();        ///< 3 bytes
const FixtureType& rgbwLinear();     ///< 4 bytes
const FixtureType& rgbaHalves();     ///< RGBA in "full" mode: both halves addressed, 8 bytes
const FixtureType& rgbw16Bit();      ///< 2 bytes a channel, 8 bytes
const FixtureType& rgbawSpot();      ///< 5 bytes
const FixtureType& rgbwTriple();     ///< white sent three times, 6 bytes
const FixtureType& tunableLinear();  ///< warm and cool white, 2 bytes
const FixtureType& fourWhiteFlood(); ///< four whites, 4 bytes
const FixtureType& whiteLine();      ///< 1 byte

} // namespace FixtureTypes
