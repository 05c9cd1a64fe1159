#include "color/FixtureTable.h"

#include "color/ColorUtils.h"
#include "color/ProfileTable.h"

#include <QCoreApplication>

namespace {

struct ModeState
{
    int mode;
    bool tintweave;
};

/// What the fixtures of one kind share.
struct Kind
{
    int layout;
    int curve;
    int nativeMode;
    int rgbMode;
    int modeCount;
    ModeState modes[3];
};

constexpr Kind kGenericRgb = {1, 0, 0, 0, 1, {{0, false}}};
constexpr Kind kGenericRgbw = {3, 0, 2, 0, 1, {{2, false}}};
constexpr Kind kGenericRgba = {6, 0, 1, 0, 1, {{1, false}}};
constexpr Kind kGenericRgbaw = {2, 0, 3, 0, 1, {{3, false}}};
constexpr Kind kSingle = {4, 0, 9, 9, 1, {{9, false}}};
constexpr Kind kRgb = {1, 1, 0, 0, 1, {{0, true}}};
constexpr Kind kRgba = {6, 1, 1, 5, 3, {{0, true}, {5, true}, {1, true}}};
constexpr Kind kRgbw = {3, 1, 2, 6, 3, {{0, true}, {6, true}, {2, true}}};
constexpr Kind kGlowmatch = {3, 1, 11, 10, 3, {{0, true}, {10, true}, {11, true}}};
constexpr Kind kGlowmatchRgbIn = {3, 1, 10, 10, 3, {{0, true}, {10, true}, {11, true}}};
constexpr Kind kFixedRgba = {6, 1, 14, 12, 2, {{12, false}, {14, false}}};
constexpr Kind kFixedRgbw = {3, 1, 15, 13, 2, {{13, false}, {15, false}}};
constexpr Kind kRgbaw = {2, 1, 7, 7, 3, {{0, true}, {7, true}, {3, false}}};
constexpr Kind kRgbMintWhite = {5, 1, 8, 8, 3, {{0, true}, {8, true}, {4, true}}};
constexpr Kind kCrest3 = {8, 0, 17, 17, 2, {{17, false}, {16, false}}};
constexpr Kind kCrest2 = {7, 0, 16, 16, 1, {{16, false}}};
constexpr Kind kDune3 = {8, 0, 18, 18, 1, {{18, false}}};
constexpr Kind kCrest2Swapped = {7, 0, 20, 20, 1, {{20, false}}};
constexpr Kind kDune2 = {10, 0, 19, 19, 1, {{19, false}}};
constexpr Kind kCrest4 = {11, 0, 22, 23, 2, {{22, false}, {23, false}}};

struct Fixture
{
    const char* name;
    const Kind* kind;
};

constexpr Fixture kFixtures[FixtureTable::kProfileCount] = {
    {QT_TRANSLATE_NOOP("FixtureTable", "Generic RGB"), &kGenericRgb},
    {QT_TRANSLATE_NOOP("FixtureTable", "Calibrated RGBAW 1"), &kRgbaw},
    {QT_TRANSLATE_NOOP("FixtureTable", "Calibrated RGB Mint White 2"), &kRgbMintWhite},
    {QT_TRANSLATE_NOOP("FixtureTable", "Generic RGBW"), &kGenericRgbw},
    {QT_TRANSLATE_NOOP("FixtureTable", "Single Channel"), &kSingle},
    {QT_TRANSLATE_NOOP("FixtureTable", "Calibrated RGBA 5"), &kRgba},
    {QT_TRANSLATE_NOOP("FixtureTable", "Calibrated RGBW 6"), &kRgbw},
    {QT_TRANSLATE_NOOP("FixtureTable", "Calibrated RGB 7"), &kRgb},
    {QT_TRANSLATE_NOOP("FixtureTable", "Calibrated RGBA 8"), &kRgba},
    {QT_TRANSLATE_NOOP("FixtureTable", "Calibrated RGBW 9"), &kRgbw},
    {QT_TRANSLATE_NOOP("FixtureTable", "Calibrated RGB 10"), &kRgb},
    {QT_TRANSLATE_NOOP("FixtureTable", "Calibrated RGBA 11"), &kRgba},
    {QT_TRANSLATE_NOOP("FixtureTable", "Calibrated RGBW 12"), &kRgbw},
    {QT_TRANSLATE_NOOP("FixtureTable", "Glowmatch 13"), &kGlowmatch},
    {QT_TRANSLATE_NOOP("FixtureTable", "Calibrated RGBA 14"), &kRgba},
    {QT_TRANSLATE_NOOP("FixtureTable", "Calibrated RGBW 15"), &kRgbw},
    {QT_TRANSLATE_NOOP("FixtureTable", "Glowmatch 16"), &kGlowmatch},
    {QT_TRANSLATE_NOOP("FixtureTable", "Calibrated RGB 17"), &kRgb},
    {QT_TRANSLATE_NOOP("FixtureTable", "Calibrated RGBA 18"), &kRgba},
    {QT_TRANSLATE_NOOP("FixtureTable", "Calibrated RGBW 19"), &kRgbw},
    {QT_TRANSLATE_NOOP("FixtureTable", "Glowmatch 20"), &kGlowmatchRgbIn},
    {QT_TRANSLATE_NOOP("FixtureTable", "Fixed RGBA 21"), &kFixedRgba},
    {QT_TRANSLATE_NOOP("FixtureTable", "Fixed RGBW 22"), &kFixedRgbw},
    {QT_TRANSLATE_NOOP("FixtureTable", "Generic RGBA"), &kGenericRgba},
    {QT_TRANSLATE_NOOP("FixtureTable", "Generic RGBAW"), &kGenericRgbaw},
    {QT_TRANSLATE_NOOP("FixtureTable", "Linear RGBW 25"), &kGenericRgbw},
    {QT_TRANSLATE_NOOP("FixtureTable", "Crest3 White 26"), &kCrest3},
    {QT_TRANSLATE_NOOP("FixtureTable", "Crest2 White 27"), &kCrest2},
    {QT_TRANSLATE_NOOP("FixtureTable", "Dune3 White 28"), &kDune3},
    {QT_TRANSLATE_NOOP("FixtureTable", "Crest2 White 29"), &kCrest2Swapped},
    {QT_TRANSLATE_NOOP("FixtureTable", "Dune2 White 30"), &kDune2},
    {QT_TRANSLATE_NOOP("FixtureTable", "Calibrated RGBA 31"), &kRgba},
    {QT_TRANSLATE_NOOP("FixtureTable", "Calibrated RGBW 32"), &kRgbw},
    {QT_TRANSLATE_NOOP("FixtureTable", "Glowmatch 33"), &kGlowmatch},
    {QT_TRANSLATE_NOOP("FixtureTable", "Glowmatch 34"), &kGlowmatch},
    {QT_TRANSLATE_NOOP("FixtureTable", "Calibrated RGBA 35"), &kRgba},
    {QT_TRANSLATE_NOOP("FixtureTable", "Calibrated RGBW 36"), &kRgbw},
    {QT_TRANSLATE_NOOP("FixtureTable", "Glowmatch 37"), &kGlowmatch},
    {QT_TRANSLATE_NOOP("FixtureTable", "Fixed RGBA 38"), &kFixedRgba},
    {QT_TRANSLATE_NOOP("FixtureTable", "Fixed RGBW 39"), &kFixedRgbw},
    {QT_TRANSLATE_NOOP("FixtureTable", "Crest4 White 40"), &kCrest4},
    {QT_TRANSLATE_NOOP("FixtureTable", "Calibrated RGBA 41"), &kRgba},
    {QT_TRANSLATE_NOOP("FixtureTable", "Calibrated RGBW 42"), &kRgbw},
    {QT_TRANSLATE_NOOP("FixtureTable", "Glowmatch 43"), &kGlowmatch},
    {QT_TRANSLATE_NOOP("FixtureTable", "Calibrated RGBA 44"), &kRgba},
    {QT_TRANSLATE_NOOP("FixtureTable", "Glowmatch 45"), &kGlowmatch},
    {QT_TRANSLATE_NOOP("FixtureTable", "Glowmatch 46"), &kGlowmatch},
};

constexpr int kSingleChannelProfile = 4;
/// Declared with the layout of a three-channel Crest, wired as a three-channel Dune.
constexpr int kDune3Profile = 28;
constexpr int kDune3Layout = 9;

int knownId(int profileId)
{
    return profileId >= 0 && profileId < FixtureTable::kProfileCount ? profileId : 0;
}

/// What frames ask for comes from here, not from the rows: no container, no first use.
const Kind& kindOf(int profileId)
{
    return *kFixtures[knownId(profileId)].kind;
}

} // namespace

const FixtureTable& FixtureTable::instance()
{
    static const FixtureTable table;
    return table;
}

FixtureTable::FixtureTable()
{
    int id = 0;
    for (FixtureRow& row : m_rows) {
        const Kind& kind = kindOf(id);
        row.name = QCoreApplication::translate("FixtureTable", kFixtures[id].name);
        row.layout = kind.layout;
        row.curve = kind.curve;
        row.nativeMode = kind.nativeMode;
        row.rgbMode = kind.rgbMode;
        for (int i = 0; i < kind.modeCount; ++i) {
            row.modes.append(kind.modes[i].mode);
            row.tintweaveByMode.insert(kind.modes[i].mode, kind.modes[i].tintweave);
        }
        const int layout = id == kDune3Profile ? kDune3Layout : kind.layout;
        row.primaries = ProfileTable::instance().profile(id, layout, 0);
        ++id;
    }
}

const FixtureRow& FixtureTable::row(int profileId) const
{
    return m_rows[static_cast<std::size_t>(knownId(profileId))];
}

namespace ColorUtils {

int channelCount(int layout)
{
    constexpr int kCounts[] = {0, 3, 5, 4, 1, 5, 4, 2, 3, 3, 2, 4};
    constexpr int kLayouts = static_cast<int>(sizeof kCounts / sizeof kCounts[0]);
    return layout >= 0 && layout < kLayouts ? kCounts[layout] : 0;
}

int layoutOfProfile(TintweaveProfileID id)
{
    return kindOf(id).layout;
}

int curveOfProfile(TintweaveProfileID id)
{
    return kindOf(id).curve;
}

int nativeModeOfProfile(TintweaveProfileID id)
{
    return kindOf(id).nativeMode;
}

QString nameOfProfile(TintweaveProfileID id)
{
    return FixtureTable::instance().row(id).name;
}

QList<int> modesOfProfile(TintweaveProfileID id)
{
    return FixtureTable::instance().row(id).modes;
}

QList<int> allProfiles(bool includeSingleChannel)
{
    QList<int> ids;
    for (int id = 0; id < FixtureTable::kProfileCount; ++id) {
        if (includeSingleChannel || id != kSingleChannelProfile) {
            ids.append(id);
        }
    }
    return ids;
}

} // namespace ColorUtils
