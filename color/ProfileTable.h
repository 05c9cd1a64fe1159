#pragma once

#include "color/ColorProfile.h"

#include <QIODevice>
#include <QMap>

#include <array>
#include <memory>

/// The process-wide table of fixture primaries, in two sets: 0 calibrated, 1 nominal. Built on the
/// first call of instance(), which must be on the main thread.
class ProfileTable
{
public:
    static ProfileTable& instance();

    /// The record of `profileId`; the same one on every call. A miss enters a new record made from
    /// the built-in values (those of id 0 for an id outside 0..46; id 0 with layout 2, 5 or 3 takes
    /// those of id 1, 2 or 3).
    ColorProfile* profile(int profileId, int layout, int primarySet);

    /// CIE 1976 u'v' of the red, green and blue of Generic RGB, calibrated.
    const std::array<QPointF, 3>& genericPrimariesUv() const { return m_genericUv; }

    /// Overlays the built-in values with those of a profile file. False where the file does not
    /// parse to its end; what was read until then is kept.
    bool overlay(QIODevice* device);

    /// Works out `gamutPoints` and `gamut` anew from the primaries.
    static void computeGamut(ColorProfile* profile);

private:
    static constexpr int kKnownProfiles = 47;

    ProfileTable() = default;
    void build();
    void updateGenericUv();

    QMap<int, std::shared_ptr<ColorProfile>> m_records[2];
    ColorProfile* m_known[2][kKnownProfiles] = {}; // not owned: what frames look up
    std::array<QPointF, 3> m_genericUv;
};
