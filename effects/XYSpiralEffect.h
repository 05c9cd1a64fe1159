#pragma once

#include "effects/HuePalette.h"
#include "engine/Effect.h"

#include <vector>

/// Turns a rainbow spiral round a point of the plan.
class XYSpiralEffect : public Effect
{
    Q_OBJECT
public:
    XYSpiralEffect(MapModel* model, quint64 gid, QDomElement* element);

    QDomElement toXml(QDomDocument doc) const override;
    int typeId() const override { return 15; }
    quint32 cycleTime() const override;
    bool compile() override;
    void updateLights() override;
    void fromXml(QDomElement* element) override;

    /// Seconds in which the hue of a light turns arms() times.
    double cycleSeconds() const { return m_cycleSeconds; }
    void setCycleTime(double seconds);
    // Setting any of the following compiles.
    /// Map units, truncated at use, over which the hue changes by 40 degrees; 0 makes the arms
    /// straight. Fractions and signs are written to a file, but not read back.
    double twist() const { return m_twist; }
    void setTwist(double twist);
    /// Half turns of the hue in half a turn round the centre.
    qint32 arms() const { return m_arms; }
    void setArms(qint32 arms);
    /// Which way the arms bend. The hue rises with time in any case.
    bool clockwise() const { return m_clockwise; }
    void setClockwise(bool on);
    // Pixels from the top left of the lights' extent.
    double centerOffsetX() const { return m_centerOffsetX; }
    void setCenterOffsetX(double pixels);
    double centerOffsetY() const { return m_centerOffsetY; }
    void setCenterOffsetY(double pixels);
    /// The extent of the lights in pixels, "width x height".
    const QString& outputSizeText() const { return m_outputSizeText; }

signals:
    void updateOutputSizeLabel(QString s);

private:
    quint16 phaseAt(double dx, double dy) const;

    std::vector<quint16> m_phases; // degrees
    double m_cycleSeconds = 10.0;
    double m_twist = 10.0;
    qint32 m_arms = 2;
    bool m_clockwise = true;
    double m_centerOffsetX = 0.0;
    double m_centerOffsetY = 0.0;
    QString m_outputSizeText = QStringLiteral("0 x 0");
    HuePalette m_palette;
};
