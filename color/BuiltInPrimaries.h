#pragma once

struct ColorProfile;

/// Fills X, Y, Z and the channel names of `record` with the built-in values of a profile. A
/// profile without nominal values of its own takes the calibrated ones in both sets. Id 0 with
/// layout 2, 5 or 3 takes the values of id 1, 2 or 3; an id outside 0..46 those of id 0.
void setBuiltInPrimaries(ColorProfile* record, int profileId, int layout, int primarySet);
