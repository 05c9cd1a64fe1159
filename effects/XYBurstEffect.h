#pragma once

#include "effects/HuePalette.h"
#include "engine/Effect.h"

#include <vector>

/// Sends rings of rainbow out from a point of the plan, or in towards it.
class XYBurstEffect : public Effect
{
    Q_OBJECT
public:
    XYBurstEffect(MapModel* model, quint64 gid, QDomElement* element);

    QDomElement toXml(QDomDocument doc) const override;
    int typeId() const override { return 14; }
    quint32 cycleTime() const override;
    bool compile() override;
    void updateLights() override;
    void fromXml(QDomElement* element) override;

    /// Seconds in which the hue turns once.
    double cycleSeconds() const { return m_cycleSeconds; }
    void setCycleTime(double seconds);
    /// 100: one rainbow from the centre to as far away as the corners are from the middle; 200:
    /// half of one.
    quint32 ringWidth() const { return m_ringWidth; }
    void setRingWidth(quint32 width) { m_ringWidth = width; }
    // Pixels from the top left of the lights' extent. Setting one compiles.
    double centerOffsetX() const { return m_centerOffsetX; }
    void setCenterOffsetX(double pixels);
    double centerOffsetY() const { return m_centerOffsetY; }
    void setCenterOffsetY(double pixels);
    /// Where it equals rainbowDir(), the hue falls over time.
    bool cycleDir() const { return m_cycleDir; }
    void setCycleDir(bool on) { m_cycleDir = on; }
    /// True: the hue rises away from the centre.
    bool rainbowDir() const { return m_rainbowDir; }
    void setRainbowDir(bool on) { m_rainbowDir = on; }
    /// The extent of the lights in pixels, "width x height".
    const QString& outputSizeText() const { return m_outputSizeText; }

signals:
    void updateOutputSizeLabel(QString s);

private:
    std::vector<double> m_distances; // 1.0: as far as the corners are from the middle
    bool m_cycleDir = false;
    bool m_rainbowDir = false;
    double m_cycleSeconds = 10.0;
    quint32 m_ringWidth = 100;
    double m_centerOffsetX = 0.0;
    double m_centerOffsetY = 0.0;
    QString m_outputSizeText = QStringLiteral("0 x 0");
    HuePalette m_palette;
};
