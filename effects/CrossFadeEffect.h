#pragma once

#include "color/VelaColor.h"
#include "effects/EffectSupport.h"
#include "engine/Effect.h"

/// Fades a whole group from one colour to another, and begins anew: there is no way back.
class CrossFadeEffect : public Effect
{
    Q_OBJECT
    Q_PROPERTY(VelaColor m_startcolor READ startColor WRITE setStartColor)
    Q_PROPERTY(VelaColor m_endcolor READ endColor WRITE setEndColor)
    Q_PROPERTY(bool m_starttrans READ startTrans WRITE setStartTrans)
    Q_PROPERTY(bool m_endtrans READ endTrans WRITE setEndTrans)
    Q_PROPERTY(double m_time READ time WRITE setTime)
public:
    CrossFadeEffect(MapModel* model, quint64 gid, QDomElement* element);

    QDomElement toXml(QDomDocument doc) const override;
    int typeId() const override { return 2; }
    quint32 cycleTime() const override;
    bool compile() override;
    void updateLights() override;
    void fromXml(QDomElement* element) override;

    const VelaColor& startColor() const { return m_startColor; }
    void setStartColor(const VelaColor& color) { m_startColor = color; }
    const VelaColor& endColor() const { return m_endColor; }
    void setEndColor(const VelaColor& color) { m_endColor = color; }
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
    VelaColor m_startColor = Qt::green;
    VelaColor m_endColor = Qt::red;
    bool m_startTrans = false;
    bool m_endTrans = false;
    double m_time = 5.0;
    ScreenColor m_startScreen;
    ScreenColor m_endScreen;
};
