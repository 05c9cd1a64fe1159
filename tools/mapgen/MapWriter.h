#pragma once

#include "tools/mapgen/Installation.h"

class QIODevice;

/// Writes an installation as a map file: XML without a declaration, one object a line.
class MapWriter
{
public:
    enum class Keys { Long, Short };

    explicit MapWriter(Keys keys = Keys::Long);

    /// Writes `map` to the open `device`. False when the device didn't take it all.
    [[nodiscard]] bool write(const Installation& map, QIODevice* device) const;

private:
    Keys m_keys;
};
