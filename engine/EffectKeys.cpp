#include "engine/EffectKeys.h"

#include <QHash>
#include <QLatin1String>

namespace {

/// In the order of the enumerators.
constexpr const char* kTexts[] = {
    "",
    // every effect
    "type",
    "name",
    "eid",
    "gid",
    "transparency",
    "priority",
    "begin",
    "end",
    "fadein",
    "fadeout",
    "starttype",
    "startfixedtime",
    "startlinkeid",
    "startlinkstart",
    "startlinkoffset",
    "endtype",
    "endfixedtime",
    "endlinkeid",
    "endlinkstart",
    "endlinkoffset",
    "endcyclecount",
    // timelines
    "brightness",
    "loop",
    "version",
    "effect",
    // colours and whites
    "color",
    "temperature",
    "intensity",
    "inputType",
    "warm",
    "cool",
    "startcolor",
    "endcolor",
    "starttrans",
    "endtrans",
    "time",
    "temperatureStart",
    "intensityStart",
    "inputTypeStart",
    "warmStart",
    "coolStart",
    "temperatureEnd",
    "intensityEnd",
    "inputTypeEnd",
    "warmEnd",
    "coolEnd",
    "fgcolor",
    "bgcolor",
    // rainbows and random colours
    "reversecolor",
    "reversedir",
    "groupoffset",
    "cycletime",
    "fadetime",
    "cyclecount",
    "offset",
    // sparkles
    "decay",
    "density",
    "sparklecolor",
    "sparkletrans",
    "bgtrans",
    // streaks and sweeps
    "width",
    "fwdtail",
    "revtail",
    "reverse",
    "fgtrans",
    "wrap",
    // pictures and animations
    "imagefile",
    "startx",
    "starty",
    "endx",
    "endy",
    "startscale",
    "endscale",
    "smooth",
    "transcolor",
    "transenabled",
    "animationdir",
    "preload",
    "fps",
    "xoffset",
    "yoffset",
    "scale",
    // generators over the plan
    "centerx",
    "centery",
    "cycledir",
    "rainbowdir",
    "twist",
    "number",
    "clockwise",
    "text",
    "font",
    "fontsize",
    "bold",
    "italic",
};
constexpr int kCount = static_cast<int>(EffectKey::Count);
static_assert(sizeof(kTexts) / sizeof(kTexts[0]) == kCount, "a text for each key");

QHash<QString, int> buildTable()
{
    QHash<QString, int> table;
    for (int key = 1; key < kCount; ++key) {
        table.insert(QString::fromLatin1(kTexts[key]), key);
    }
    return table;
}

} // namespace

EffectKey effectKey(const QString& text)
{
    static const QHash<QString, int> table = buildTable();
    return static_cast<EffectKey>(table.value(text, 0));
}

QString effectKeyText(EffectKey key)
{
    const int index = static_cast<int>(key);
    return index > 0 && index < kCount ? QString::fromLatin1(kTexts[index]) : QString();
}
