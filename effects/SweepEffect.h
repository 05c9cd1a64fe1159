#pragma once

#include "color/VelaColor.h"
#include "effects/EffectSupport.h"
#include "engine/Effect.h"

/// Moves an edge along the rows of a group: one colour behind it, another ahead.
class SweepEffect : public Effect
{
    Q_OBJECT
    Q_PROPERTY(VelaColor m_fgColor READ fgColor WRITE setFgColor)
    Q_PROPERTY(VelaColor m_bgColor READ bgColor WRITE setBgColor)
public:
    SweepEffect(MapModel* model, quint64 gid, QDomElement* element);

    QDomElement toXml(QDomDocument doc) const override;
    int typeId() const override { return 12; }
    quint32 cycleTime() const override;
    bool compile() override;
    void updateLights() override;
    void fromXml(QDomElement* element) override;

    /// Behind the edge. The colour's own alpha counts on the edge only.
    const VelaColor& fgColor() const { return m_fgColor; }
    void setFgColor(const VelaColor& color) { m_fgColor = color; }
    /// Ahead of the edge.
    const VelaColor& bgColor() const { return m_bgColor; }
    void setBgColor(const VelaColor& color) { m_bgColor = color; }
    /// True: behind the edge shows what lies beneath.
    bool fgTransparent() const { return m_fgTransparent; }
    void setFgTransparent(bool on) { m_fgTransparent = on; }
    bool bgTransparent() const { return m_bgTransparent; }
    void setBgTransparent(bool on) { m_bgTransparent = on; }
    /// Seconds from before the first row to behind the last.
    double cycleSeconds() const { return m_cycleSeconds; }
    void setCycleTime(double seconds);
    /// True: from the last row to the first.
    bool reverse() const { return m_reverse; }
    void setReverse(bool on) { m_reverse = on; }

private:
    double edgePosition() const;

    const GroupLayout* m_layout = nullptr; // not owned
    VelaColor m_fgColor = Qt::green;
    VelaColor m_bgColor = Qt::black;
    bool m_fgTransparent = false;
    bool m_bgTransparent = false;
    double m_positions = 0.0;
    double m_cycleSeconds = 10.0;
    bool m_reverse = false;
    ScreenColor m_fgScreen;
    ScreenColor m_bgScreen;
};
