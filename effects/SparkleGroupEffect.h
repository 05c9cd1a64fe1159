#pragma once

#include "engine/Effect.h"

#include <QColor>
#include <QDateTime>

#include <vector>

class VelaColor;
struct GroupLayout;

/// Lights whole rows of a group at random moments, each then decaying to the background. Goes by
/// the wall clock and reaches the outputs only: neither transparency nor the simulation take part.
class SparkleGroupEffect final : public Effect
{
    Q_OBJECT
    Q_PROPERTY(QColor m_sparkleColor READ sparkleColor WRITE setSparkleColor)
    Q_PROPERTY(QColor m_bgColor READ bgColor WRITE setBgColor)
    Q_PROPERTY(bool m_sparkleTransparency READ sparkleTransparency WRITE setSparkleTransparency)
    Q_PROPERTY(bool m_bgTransparency READ bgTransparency WRITE setBgTransparency)
    Q_PROPERTY(int m_decayRate READ decayRate WRITE setDecayRate)
public:
    SparkleGroupEffect(MapModel* model, quint64 gid, QDomElement* element);

    QDomElement toXml(QDomDocument doc) const override;
    int typeId() const override { return 10; }
    /// Plays no part in the frame.
    quint32 cycleTime() const override;
    /// Puts all sparkles out, seeds rand() with the milliseconds of the wall clock, 0..999, and
    /// draws the first wait.
    bool compile() override;
    void updateLights() override;
    void fromXml(QDomElement* element) override;

    const QColor& sparkleColor() const { return m_sparkleColor; }
    /// Compiles.
    void setSparkleColor(const QColor& color);
    const QColor& bgColor() const { return m_bgColor; }
    /// Compiles.
    void setBgColor(const QColor& color);
    // Kept for the file only.
    bool sparkleTransparency() const { return m_sparkleTransparency; }
    void setSparkleTransparency(bool on) { m_sparkleTransparency = on; }
    bool bgTransparency() const { return m_bgTransparency; }
    void setBgTransparency(bool on) { m_bgTransparency = on; }
    /// Tenths of a thousandth of a sparkle per millisecond: at 10 it lasts a second.
    qint32 decayRate() const { return m_decayRate; }
    void setDecayRate(qint32 rate) { m_decayRate = rate; }
    /// The most sparkles that one burst can start; up to SparkleBursts::kMostInBurst counts.
    qint32 density() const { return m_density; }
    void setDensity(qint32 density) { m_density = density; }
    /// Bursts come at most 1000.0 / timeConstant milliseconds apart.
    double timeConstant() const { return m_timeConstant; }
    void setTimeConstant(double value);

    /// For tests: another wall clock, in milliseconds since the epoch.
    void setWallClock(qint64 (*nowMs)()) { m_nowMs = nowMs; }

private:
    struct Rgb
    {
        qint32 red = 0;
        qint32 green = 0;
        qint32 blue = 0;
    };

    static Rgb componentsOf(const QColor& color);
    VelaColor colorOf(qint32 level) const;

    const GroupLayout* m_layout = nullptr; // not owned
    int m_rowCount = 0;
    QColor m_sparkleColor = Qt::white;
    QColor m_bgColor = Qt::black;
    Rgb m_sparkleRgb; // 0..255, as of compile()
    Rgb m_bgRgb;
    bool m_sparkleTransparency = false;
    bool m_bgTransparency = false;
    qint32 m_decayRate = 10;
    qint32 m_density = 10;
    double m_timeConstant = 10.0;
    std::vector<qint32> m_levels;
    quint32 m_nextBurst = 0; // milliseconds from the last burst
    qint64 (*m_nowMs)() = QDateTime::currentMSecsSinceEpoch;
    qint64 m_lastBurstMs = m_nowMs();
    qint64 m_lastDecayMs = m_lastBurstMs;
};
