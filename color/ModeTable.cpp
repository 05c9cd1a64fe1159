#include "color/ModeTable.h"

namespace {

enum class States { OnOff, Off, On };

struct Mode
{
    const char* name;
    bool rgbIn;
    bool sameInOut;
    int layout;
    States states;
};

constexpr Mode kModes[ModeTable::kModeCount] = {
    {"RGB In/Out", true, true, 1, States::OnOff},
    {"RGBA In/Out", false, true, 6, States::OnOff},
    {"RGBW In/Out", false, true, 3, States::OnOff},
    {"RGBAW In/Out", false, true, 2, States::Off},
    {"RGBWW In/Out", false, true, 5, States::OnOff},
    {"RGB In / RGBA Out", true, false, 1, States::On},
    {"RGB In / RGBW Out", true, false, 1, States::On},
    {"RGB In / RGBAW Out", true, false, 1, States::On},
    {"RGB In / RGBWW Out", true, false, 1, States::On},
    {"Single Channel In/Out", false, true, 4, States::Off},
    {"RGB In / 4-ch Glowmatch Out", true, false, 1, States::On},
    {"4-ch Glowmatch In/Out", false, true, 3, States::OnOff},
    {"RGB In / RGBA Out", true, true, 1, States::Off},
    {"RGB In / RGBW Out", true, true, 1, States::Off},
    {"RGBA In / Out", false, true, 6, States::Off},
    {"RGBW In / Out", false, true, 3, States::Off},
    {"Crest2 In/Out", false, true, 7, States::Off},
    {"Crest3 In/Out", false, false, 8, States::Off},
    {"Dune3 In/Out", false, false, 9, States::Off},
    {"Dune2 In/Out", false, true, 10, States::Off},
    {"Crest2 In/Out", false, true, 7, States::Off}, // mode 16 with its channels swapped
    {"RGB In / Glowmatch Out", true, true, 1, States::Off},
    {"Crest4 In/Out", false, true, 11, States::Off},
    {"RGB In / Crest4 Out", true, true, 1, States::Off},
};

QList<int> stateList(States states)
{
    switch (states) {
    case States::OnOff:
        return {1, 0};
    case States::On:
        return {1};
    case States::Off:
        break;
    }
    return {0};
}

} // namespace

const ModeTable& ModeTable::instance()
{
    static const ModeTable table;
    return table;
}

ModeTable::ModeTable()
{
    int id = 0;
    for (ModeRecord& record : m_modes) {
        const Mode& mode = kModes[id];
        record.id = id;
        record.name = QString::fromLatin1(mode.name);
        record.rgbIn = mode.rgbIn;
        record.sameInOut = mode.sameInOut;
        record.layout = mode.layout;
        record.tintweaveStates = stateList(mode.states);
        ++id;
    }
}
