#pragma once

#include <QList>
#include <QMap>
#include <QString>

#include <array>

struct ColorProfile;

/// What the program knows of one fixture profile besides its primaries.
struct FixtureRow
{
    QString name; // translated
    int layout = 1;
    int curve = 0;
    /// The mode in which the fixture takes its own channels.
    int nativeMode = 0;
    /// The mode in which the fixture takes RGB.
    int rgbMode = 0;
    /// The modes of this fixture, and whether Tintweave is available in each.
    QMap<int, bool> tintweaveByMode;
    /// In the order shown to the user.
    QList<int> modes;
    ColorProfile* primaries = nullptr; // not owned: the calibrated record
};

/// The process-wide catalogue of fixture profiles, built on the first call of instance(), which
/// must be on the main thread.
class FixtureTable
{
public:
    static constexpr int kProfileCount = 47;

    static const FixtureTable& instance();
    /// The row of id 0 for an id outside 0..46.
    const FixtureRow& row(int profileId) const;

private:
    FixtureTable();

    std::array<FixtureRow, kProfileCount> m_rows;
};
