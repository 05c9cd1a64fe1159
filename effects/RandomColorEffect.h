#pragma once

#include "color/VelaColor.h"
#include "engine/Effect.h"

#include <QColor>

#include <array>
#include <cstddef>
#include <vector>

struct GroupLayout;

/// Steps the group through a random list of hues, each row some time ahead of the row before. The
/// list is drawn anew at each compile(), from the runtime's rand().
class RandomColorEffect final : public Effect
{
    Q_OBJECT
public:
    /// A file may ask for any number of colours; past so many the list starts over.
    static constexpr quint32 kMostHues = 100000;

    RandomColorEffect(MapModel* model, quint64 gid, QDomElement* element);

    QDomElement toXml(QDomDocument doc) const override;
    int typeId() const override { return 8; }
    /// The time of the whole list.
    quint32 cycleTime() const override;
    /// Seeds rand() with the milliseconds of the wall clock, 0..999, and draws the list.
    bool compile() override;
    void updateLights() override;
    void fromXml(QDomElement* element) override;

    /// Seconds per colour.
    double time() const { return m_time; }
    void setTime(double seconds);
    /// Seconds at the end of each colour's time that it takes to fade to the next. Longer than
    /// time(): never fades.
    double fadeTime() const { return m_fadeTime; }
    void setFadeTime(double seconds) { m_fadeTime = seconds; }
    /// Seconds that a row is ahead of the row before; may be negative.
    double offset() const { return m_offset; }
    void setOffset(double seconds) { m_offset = seconds; }
    /// The first colour; saturation, value, alpha and profile of all.
    const VelaColor& startColor() const { return m_startColor; }
    /// Compiles.
    void setStartColor(const VelaColor& color);
    /// Colours before the list starts over; with 0 nothing is painted.
    quint32 cycleCount() const { return m_cycleCount; }
    /// Compiles.
    void setCycleCount(quint32 count);

private:
    /// A colour of the list in the form that mixes fastest.
    struct Shade
    {
        std::size_t index = static_cast<std::size_t>(-1);
        VelaColor rgb;
        QColor screen;
    };

    const Shade& shadeOf(std::size_t index);

    const GroupLayout* m_layout = nullptr; // not owned
    double m_time = 5.0;
    double m_fadeTime = 0.5;
    double m_offset = 0.0;
    VelaColor m_startColor = Qt::green;
    quint32 m_cycleCount = 10;
    std::vector<qint32> m_hues; // degrees, growing without bound
    // Of the start colour, 16 bits each.
    int m_startSat = 0;
    int m_startValue = 0;
    int m_startAlpha = 0;
    std::array<Shade, 16> m_shades; // a colour's place is its index modulo the size
};
