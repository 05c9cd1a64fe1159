#pragma once

#include "effects/WhiteLevels.h"
#include "engine/Effect.h"

struct GroupLayout;

/// Fades a whole group of two-channel whites from one white to another, and begins anew.
class WhiteCrossFadeEffect : public Effect
{
    Q_OBJECT
    Q_PROPERTY(int m_temperatureStart READ temperatureStart WRITE setTemperatureStart)
    Q_PROPERTY(uint m_intensityStart READ intensityStart WRITE setIntensityStart)
    Q_PROPERTY(uint m_warmStart READ warmStart WRITE setWarmStart)
    Q_PROPERTY(uint m_coolStart READ coolStart WRITE setCoolStart)
    Q_PROPERTY(uint m_inputTypeStart READ inputTypeStart WRITE setInputTypeStart)
    Q_PROPERTY(int m_temperatureEnd READ temperatureEnd WRITE setTemperatureEnd)
    Q_PROPERTY(uint m_intensityEnd READ intensityEnd WRITE setIntensityEnd)
    Q_PROPERTY(uint m_warmEnd READ warmEnd WRITE setWarmEnd)
    Q_PROPERTY(uint m_coolEnd READ coolEnd WRITE setCoolEnd)
    Q_PROPERTY(uint m_inputTypeEnd READ inputTypeEnd WRITE setInputTypeEnd)
    Q_PROPERTY(bool m_starttrans READ startTrans WRITE setStartTrans)
    Q_PROPERTY(bool m_endtrans READ endTrans WRITE setEndTrans)
    Q_PROPERTY(double m_time READ time WRITE setTime)
public:
    WhiteCrossFadeEffect(MapModel* model, quint64 gid, QDomElement* element);

    QDomElement toXml(QDomDocument doc) const override;
    int typeId() const override { return 13; }
    quint32 cycleTime() const override;
    bool compile() override;
    void updateLights() override;
    void fromXml(QDomElement* element) override;

    // Ranges as in WhiteLevels.
    qint32 temperatureStart() const { return m_start.temperature; }
    void setTemperatureStart(qint32 temperature) { m_start.temperature = temperature; }
    quint32 intensityStart() const { return m_start.intensity; }
    void setIntensityStart(quint32 intensity) { m_start.intensity = intensity; }
    quint32 warmStart() const { return m_start.warm; }
    void setWarmStart(quint32 warm) { m_start.warm = warm; }
    quint32 coolStart() const { return m_start.cool; }
    void setCoolStart(quint32 cool) { m_start.cool = cool; }
    quint32 inputTypeStart() const { return m_start.inputType; }
    void setInputTypeStart(quint32 type) { m_start.inputType = type; }
    qint32 temperatureEnd() const { return m_end.temperature; }
    void setTemperatureEnd(qint32 temperature) { m_end.temperature = temperature; }
    quint32 intensityEnd() const { return m_end.intensity; }
    void setIntensityEnd(quint32 intensity) { m_end.intensity = intensity; }
    quint32 warmEnd() const { return m_end.warm; }
    void setWarmEnd(quint32 warm) { m_end.warm = warm; }
    quint32 coolEnd() const { return m_end.cool; }
    void setCoolEnd(quint32 cool) { m_end.cool = cool; }
    quint32 inputTypeEnd() const { return m_end.inputType; }
    void setInputTypeEnd(quint32 type) { m_end.inputType = type; }
    /// True: the fade starts fully transparent.
    bool startTrans() const { return m_startTrans; }
    void setStartTrans(bool on) { m_startTrans = on; }
    bool endTrans() const { return m_endTrans; }
    void setEndTrans(bool on) { m_endTrans = on; }
    /// Length of one fade in seconds.
    double time() const { return m_time; }
    void setTime(double seconds);

private:
    const GroupLayout* m_layout = nullptr; // not owned
    WhiteLevels m_start;
    WhiteLevels m_end;
    bool m_startTrans = false;
    bool m_endTrans = false;
    double m_time = 5.0;
};
