#pragma once

#include "color/VelaColor.h"
#include "engine/Effect.h"

#include <QColor>
#include <QList>

#include <cstddef>
#include <memory>
#include <vector>

struct GroupLayout;

/// A colour of a custom rainbow: how long it is held, and how long it then fades to the next.
struct CustomRainbowEntry
{
    VelaColor color = Qt::red;
    double trans = 0.0;    // kept for the file only
    quint32 white = 0;     // below 256; kept for the file only
    double duration = 1.0; // seconds
    double fade = 0.5;     // seconds
};

/// Plays a list of colours over and over, each row some time ahead of the row before.
class CustomRainbowEffect final : public Effect
{
    Q_OBJECT
public:
    CustomRainbowEffect(MapModel* model, quint64 gid, QDomElement* element);
    ~CustomRainbowEffect() override;

    QDomElement toXml(QDomDocument doc) const override;
    int typeId() const override { return 3; }
    /// The sum over the entries, each truncated; 0 without entries.
    quint32 cycleTime() const override { return m_entriesMs; }
    /// Takes the length of a cycle anew and tells it.
    bool compile() override;
    void updateLights() override;
    void fromXml(QDomElement* element) override;

    /// Seconds that a row is ahead of the row before; may be negative.
    double groupOffset() const { return m_groupOffset; }
    void setGroupOffset(double seconds) { m_groupOffset = seconds; }

    /// Appends a copy and compiles.
    void addEntry(const CustomRainbowEntry& entry);
    /// Removes and frees the entry, if there is one; compiles in any case.
    void removeEntry(int i);
    // Without effect on the list for an index out of range. A time, in seconds, is told even then.
    void setColor(int i, const VelaColor& color);
    void setDuration(int i, double seconds);
    void setFade(int i, double seconds);
    void setTrans(int i, double trans);
    /// Refuses 256 and above.
    void setWhite(int i, quint32 white);
    /// Black for an index out of range.
    VelaColor color(int i) const;
    /// The entries in order, owned by the effect.
    QList<const CustomRainbowEntry*> entryList() const;

private:
    /// What a frame needs of an entry.
    struct Part
    {
        VelaColor color;
        VelaColor shown; // its screen colour, as qInterpolate() mixes it
        VelaColor held;  // color as a mix with itself comes out
        QColor heldScreen;
        double fadeMs = 0.0;
    };

    CustomRainbowEntry* entryAt(int i);
    template <typename Change>
    void changeTimes(int i, Change change);
    void readEntryKey(const QString& key, const QString& value);
    void updateParts();

    const GroupLayout* m_layout = nullptr; // not owned
    double m_groupOffset = 1.0;
    std::vector<std::unique_ptr<CustomRainbowEntry>> m_entries;
    quint32 m_entriesMs = 0; // cycleTime() of the present entries
    quint32 m_cycleLength = 0;
    bool m_arePartsStale = false;
    std::vector<Part> m_parts; // one per entry
    // Where the hold and then the fade of each entry end, in milliseconds. Bad lengths may make
    // such a sum fall, so each end is the greatest so far: the first beyond a time is the same.
    std::vector<quint32> m_ends;
};
