#pragma once

#include "color/VelaColor.h"
#include "effects/EffectSupport.h"
#include "engine/Effect.h"

#include <QColor>

#include <array>
#include <vector>

class Light;

/// Lights single lights of a group at random moments, each then decaying to the background.
class SparkleEffect final : public Effect
{
    Q_OBJECT
    Q_PROPERTY(VelaColor m_sparkleColor READ sparkleColor WRITE setSparkleColor)
    Q_PROPERTY(VelaColor m_bgColor READ bgColor WRITE setBgColor)
    Q_PROPERTY(bool m_sparkleTransparency READ sparkleTransparency WRITE setSparkleTransparency)
    Q_PROPERTY(bool m_bgTransparency READ bgTransparency WRITE setBgTransparency)
    Q_PROPERTY(int m_decayRate READ decayRate WRITE setDecayRate)
public:
    SparkleEffect(MapModel* model, quint64 gid, QDomElement* element);

    QDomElement toXml(QDomDocument doc) const override;
    int typeId() const override { return 9; }
    /// Plays no part in the frame.
    quint32 cycleTime() const override;
    /// Puts all sparkles out, seeds rand() with the milliseconds of the wall clock, 0..999, and
    /// draws the first wait.
    bool compile() override;
    void updateLights() override;
    void fromXml(QDomElement* element) override;

    const VelaColor& sparkleColor() const { return m_sparkleColor; }
    void setSparkleColor(const VelaColor& color) { m_sparkleColor = color; }
    const VelaColor& bgColor() const { return m_bgColor; }
    void setBgColor(const VelaColor& color) { m_bgColor = color; }
    /// True: sparkles are holes, into which the background fades back.
    bool sparkleTransparency() const { return m_sparkleTransparency; }
    void setSparkleTransparency(bool on) { m_sparkleTransparency = on; }
    /// True: sparkles fade out over what lies beneath.
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

private:
    /// The colours as they are at one light of a frame. The lights before have changed them.
    struct Palette
    {
        VelaColor bg;
        VelaColor spark;
        QColor qBg;
        QColor qSpark;
    };
    /// What a sparkle of one level comes to over one background.
    struct Shade
    {
        qint32 level = 0; // none yet
        quint32 bgAlpha = 0;
        quint16 screenBgAlpha = 0;
        VelaColor color;
        QColor screen;
    };

    int paintResting(Palette& palette, int from, int to) const;
    const Shade& shadeOf(Palette& palette, qint32 level);

    Light* const* m_lights = nullptr; // not owned
    int m_lightCount = 0;
    VelaColor m_sparkleColor = Qt::white;
    VelaColor m_bgColor = Qt::black;
    bool m_sparkleTransparency = false;
    bool m_bgTransparency = false;
    qint32 m_decayRate = 10;
    qint32 m_density = 10;
    double m_timeConstant = 10.0;
    std::vector<qint32> m_levels;
    quint32 m_nextBurst = 0; // milliseconds from the start time
    ScreenColor m_sparkleScreen;
    ScreenColor m_bgScreen;
    std::array<Shade, 64> m_shades; // of this frame; a shade's place is its level modulo the size
};
