#pragma once

#include "color/VelaColor.h"
#include "effects/EffectSupport.h"
#include "engine/Effect.h"

/// Paints a whole group in one colour.
class FixedColorEffect : public Effect
{
    Q_OBJECT
    Q_PROPERTY(VelaColor m_color READ color WRITE setColor)
public:
    FixedColorEffect(MapModel* model, quint64 gid, QDomElement* element);

    QDomElement toXml(QDomDocument doc) const override;
    int typeId() const override { return 0; }
    quint32 cycleTime() const override { return 1000; }
    bool compile() override;
    void updateLights() override;
    void fromXml(QDomElement* element) override;

    const VelaColor& color() const { return m_color; }
    void setColor(const VelaColor& color) { m_color = color; }

private:
    const GroupLayout* m_layout = nullptr; // not owned
    VelaColor m_color = Qt::green;
    ScreenColor m_screen;
};
