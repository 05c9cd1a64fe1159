#include "color/ProfileTable.h"

#include "color/BuiltInPrimaries.h"
#include "color/ColorUtils.h"
#include "color/ProfileHandler.h"
#include "color/VelaColor.h"

#include <QFile>
#include <QXmlInputSource>
#include <QXmlSimpleReader>
#include <QtDebug>

#include <algorithm>

ProfileTable& ProfileTable::instance()
{
    static ProfileTable table;
    static bool built = false;
    if (!built) {
        built = true; // first: working out a gamut comes back here
        table.build();
    }
    return table;
}

void ProfileTable::build()
{
    for (int id = 0; id < kKnownProfiles; ++id) {
        const int layout = ColorUtils::layoutOfProfile(id);
        profile(id, layout, 0);
        profile(id, layout, 1);
    }
    updateGenericUv();
    QFile file(QStringLiteral(":/FixtureProfiles.xml"));
    if (!file.open(QIODevice::ReadOnly)) {
        qDebug("could not open tintweave profile database");
        return;
    }
    overlay(&file);
}

ColorProfile* ProfileTable::profile(int profileId, int layout, int primarySet)
{
    const int set = primarySet == 0 ? 0 : 1;
    const bool known = profileId >= 0 && profileId < kKnownProfiles;
    if (known && m_known[set][profileId] != nullptr) {
        return m_known[set][profileId];
    }
    const auto found = m_records[set].constFind(profileId);
    if (found != m_records[set].constEnd()) {
        return found.value().get();
    }
    const auto record = std::make_shared<ColorProfile>();
    record->profileId = profileId;
    setBuiltInPrimaries(record.get(), profileId, layout, set);
    m_records[set].insert(profileId, record); // before its gamut, which looks it up
    if (known) {
        m_known[set][profileId] = record.get();
    }
    computeGamut(record.get());
    return record.get();
}

bool ProfileTable::overlay(QIODevice* device)
{
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    ProfileHandler handler(this);
    QXmlInputSource source(device);
    QXmlSimpleReader reader;
    reader.setContentHandler(&handler);
    reader.setErrorHandler(&handler);
    const bool complete = reader.parse(&source);
    QT_WARNING_POP
    updateGenericUv();
    return complete;
}

void ProfileTable::computeGamut(ColorProfile* profile)
{
    constexpr double kPrimaries[3][3] = {{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}};
    profile->gamutPoints.clear();
    for (const auto& rgb : kPrimaries) {
        // Colours of this factory are calibrated: the nominal record, too, gets the calibrated
        // triangle, which is meant.
        const VelaColor primary =
            VelaColor::fromRgbF(rgb[0], rgb[1], rgb[2], 0.0, profile->profileId).toYxy(0, -1, -1);
        profile->gamutPoints.append(QPointF(primary.smallX(), primary.smallY()));
    }
    profile->gamut = QPolygonF(profile->gamutPoints);
}

void ProfileTable::updateGenericUv()
{
    const ColorProfile& generic = *profile(0, 1, 0);
    const int count = std::min({3, generic.X.size(), generic.Y.size(), generic.Z.size()});
    for (int i = 0; i < count; ++i) {
        const double sum = generic.X.at(i) + generic.Y.at(i) + generic.Z.at(i);
        m_genericUv[static_cast<std::size_t>(i)] =
            ColorUtils::xyToUv(generic.X.at(i) / sum, generic.Y.at(i) / sum);
    }
}
