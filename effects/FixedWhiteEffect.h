#pragma once

#include "effects/WhiteLevels.h"
#include "engine/Effect.h"

struct GroupLayout;

/// Paints a whole group of two-channel whites in one white.
class FixedWhiteEffect : public Effect
{
    Q_OBJECT
public:
    FixedWhiteEffect(MapModel* model, quint64 gid, QDomElement* element);

    QDomElement toXml(QDomDocument doc) const override;
    int typeId() const override { return 4; }
    quint32 cycleTime() const override { return 1000; }
    bool compile() override;
    void updateLights() override;
    void fromXml(QDomElement* element) override;

    /// 0 all cool to 510 all warm.
    qint32 temperature() const { return m_white.temperature; }
    void setTemperature(qint32 temperature) { m_white.temperature = temperature; }
    /// Percent.
    quint32 intensity() const { return m_white.intensity; }
    void setIntensity(quint32 intensity) { m_white.intensity = intensity; }
    /// 0..255
    quint32 warm() const { return m_white.warm; }
    void setWarm(quint32 warm) { m_white.warm = warm; }
    /// 0..255
    quint32 cool() const { return m_white.cool; }
    void setCool(quint32 cool) { m_white.cool = cool; }
    /// 0: temperature and intensity decide; any other: warm and cool as they stand.
    quint32 inputType() const { return m_white.inputType; }
    void setInputType(quint32 type) { m_white.inputType = type; }

private:
    const GroupLayout* m_layout = nullptr; // not owned
    WhiteLevels m_white;
};
