#pragma once

#include "color/VelaColor.h"
#include "effects/EffectSupport.h"
#include "engine/Effect.h"

/// Moves a pulse with a soft tail on either side along the rows of a group, over a background.
class StreakEffect : public Effect
{
    Q_OBJECT
    Q_PROPERTY(VelaColor m_fgColor READ fgColor WRITE setFgColor)
    Q_PROPERTY(VelaColor m_bgColor READ bgColor WRITE setBgColor)
    Q_PROPERTY(bool m_fgTransparency READ fgTransparency WRITE setFgTransparency)
    Q_PROPERTY(bool m_bgTransparency READ bgTransparency WRITE setBgTransparency)
    Q_PROPERTY(uint m_width READ width WRITE setWidth)
    Q_PROPERTY(uint m_fTail READ fTail WRITE setFTail)
    Q_PROPERTY(uint m_rTail READ rTail WRITE setRTail)
    Q_PROPERTY(bool m_reverse READ reverse WRITE setReverse)
    Q_PROPERTY(bool m_wrap READ wrap WRITE setWrap)
    Q_PROPERTY(double m_cycleTime READ cycleSeconds WRITE setCycleTime)
public:
    StreakEffect(MapModel* model, quint64 gid, QDomElement* element);

    QDomElement toXml(QDomDocument doc) const override;
    int typeId() const override { return 11; }
    quint32 cycleTime() const override;
    bool compile() override;
    void updateLights() override;
    void fromXml(QDomElement* element) override;

    /// The pulse.
    const VelaColor& fgColor() const { return m_fgColor; }
    void setFgColor(const VelaColor& color) { m_fgColor = color; }
    const VelaColor& bgColor() const { return m_bgColor; }
    void setBgColor(const VelaColor& color) { m_bgColor = color; }
    /// True: the pulse shows what lies beneath.
    bool fgTransparency() const { return m_fgTransparency; }
    void setFgTransparency(bool on) { m_fgTransparency = on; }
    bool bgTransparency() const { return m_bgTransparency; }
    void setBgTransparency(bool on) { m_bgTransparency = on; }
    // Lengths in rows.
    quint32 width() const { return m_width; }
    void setWidth(quint32 rows) { m_width = rows; }
    /// Ahead of the pulse; its first row has full strength.
    quint32 fTail() const { return m_fTail; }
    void setFTail(quint32 rows) { m_fTail = rows; }
    /// Behind the pulse; it shows one row less than its length.
    quint32 rTail() const { return m_rTail; }
    void setRTail(quint32 rows) { m_rTail = rows; }
    /// True: from the last row to the first.
    bool reverse() const { return m_reverse; }
    void setReverse(bool on) { m_reverse = on; }
    /// True: what leaves at one end comes in at the other.
    bool wrap() const { return m_wrap; }
    void setWrap(bool on) { m_wrap = on; }
    /// Seconds from one end to the other.
    double cycleSeconds() const { return m_cycleSeconds; }
    void setCycleTime(double seconds);

private:
    double headPosition() const;
    qint32 placeOf(int row, double head) const;

    const GroupLayout* m_layout = nullptr; // not owned
    VelaColor m_fgColor = Qt::green;
    VelaColor m_bgColor = Qt::black;
    bool m_fgTransparency = false;
    bool m_bgTransparency = false;
    double m_positions = 0.0;
    quint32 m_width = 4;
    quint32 m_fTail = 0;
    quint32 m_rTail = 0;
    bool m_reverse = false;
    bool m_wrap = false;
    double m_cycleSeconds = 10.0;
    ScreenColor m_fgScreen;
    ScreenColor m_bgScreen;
};
