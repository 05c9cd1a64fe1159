#pragma once

#include <QList>
#include <QString>

#include <array>

/// How a fixture takes colour in, and what it makes of it.
struct ModeRecord
{
    int id = 0;
    QString name;
    /// The fixture is fed RGB.
    bool rgbIn = false;
    /// What goes in is what the fixture's emitters get.
    bool sameInOut = false;
    int layout = 1;
    /// The states of the Tintweave box that the mode allows, in the order offered.
    QList<int> tintweaveStates;
};

/// The process-wide table of input/output modes, built on the first call of instance(), which
/// must be on the main thread.
class ModeTable
{
public:
    static constexpr int kModeCount = 24;

    static const ModeTable& instance();
    /// Whether there is a mode of this id, 0..23.
    static constexpr bool isKnown(int id) { return id >= 0 && id < kModeCount; }
    /// Mode 0 for an id outside 0..23.
    const ModeRecord& mode(int id) const
    {
        return m_modes[static_cast<std::size_t>(isKnown(id) ? id : 0)];
    }

private:
    ModeTable();

    std::array<ModeRecord, kModeCount> m_modes;
};
