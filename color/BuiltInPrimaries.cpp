#include "color/BuiltInPrimaries.h"

#include "color/ColorProfile.h"

#include <QString>

#include <algorithm>
#include <iterator>

namespace {

struct BuiltInChannel
{
    int profileId;
    int primarySet;
    const char* name;
    double X;
    double Y;
    double Z;
};

// Ordered by profile, then by set, then by channel.
constexpr BuiltInChannel kChannels[] = {
#include "color/BuiltInPrimaries.inc"
};

constexpr int kLastProfile = 46;

int valuesOf(int profileId, int layout)
{
    if (profileId < 0 || profileId > kLastProfile) {
        return 0;
    }
    if (profileId == 0) {
        switch (layout) {
        case 2:
            return 1;
        case 5:
            return 2;
        case 3:
            return 3;
        default:
            break;
        }
    }
    return profileId;
}

bool hasSet(int profileId, int primarySet)
{
    return std::any_of(
        std::begin(kChannels), std::end(kChannels), [=](const BuiltInChannel& channel) {
            return channel.profileId == profileId && channel.primarySet == primarySet;
        });
}

} // namespace

void setBuiltInPrimaries(ColorProfile* record, int profileId, int layout, int primarySet)
{
    const int id = valuesOf(profileId, layout);
    const int set = hasSet(id, primarySet) ? primarySet : 0;
    record->X.clear();
    record->Y.clear();
    record->Z.clear();
    record->channelNames.clear();
    for (const BuiltInChannel& channel : kChannels) {
        if (channel.profileId != id || channel.primarySet != set) {
            continue;
        }
        record->X.append(channel.X);
        record->Y.append(channel.Y);
        record->Z.append(channel.Z);
        if (*channel.name != '\0') {
            record->channelNames.append(QString::fromLatin1(channel.name));
        }
    }
}
