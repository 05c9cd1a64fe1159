#pragma once

#include "color/VelaColor.h"
#include "engine/Effect.h"

struct GroupLayout;

/// Turns the hue of one colour round the wheel, each row of the group some degrees ahead of the
/// row before.
class ChasingRainbowEffect final : public Effect
{
    Q_OBJECT
    Q_PROPERTY(double m_cycletime READ cycleSeconds WRITE setCycleTime)
    Q_PROPERTY(double m_groupoffset READ groupOffset WRITE setGroupOffset)
public:
    ChasingRainbowEffect(MapModel* model, quint64 gid, QDomElement* element);

    QDomElement toXml(QDomDocument doc) const override;
    int typeId() const override { return 1; }
    quint32 cycleTime() const override;
    bool compile() override;
    void updateLights() override;
    /// For an end after a number of cycles: begin plus so many turns of the wheel.
    void updateEndTime() override;
    void fromXml(QDomElement* element) override;

    /// Seconds for one turn of the wheel.
    double cycleSeconds() const { return m_cycleSeconds; }
    void setCycleTime(double seconds);
    /// Degrees of hue from one row to the next. Negative ones take hues below 0, which are black.
    double groupOffset() const { return m_groupOffset; }
    void setGroupOffset(double degrees) { m_groupOffset = degrees; }
    /// Gives the hue at time zero, and saturation, value, alpha and profile throughout.
    const VelaColor& startColor() const { return m_startColor; }
    /// Compiles.
    void setStartColor(const VelaColor& color);
    /// True: the hue falls along the rows.
    bool reverseDir() const { return m_reverseDir; }
    void setReverseDir(bool on) { m_reverseDir = on; }
    /// True: the hue falls over time.
    bool reverseColor() const { return m_reverseColor; }
    void setReverseColor(bool on) { m_reverseColor = on; }

private:
    double firstRowHue() const;

    const GroupLayout* m_layout = nullptr; // not owned
    double m_cycleSeconds = 5.0;
    double m_groupOffset = 0.5;
    VelaColor m_startColor = Qt::green;
    bool m_reverseDir = false;
    bool m_reverseColor = false;
    // Of the start colour: whole degrees or -1, and 16 bits each.
    int m_startHue = 0;
    int m_startSat = 0;
    int m_startValue = 0;
};
