#pragma once

#include "color/VelaColor.h"
#include "effects/EffectSupport.h"
#include "effects/TransparentPixel.h"
#include "engine/Effect.h"

#include <QImage>
#include <QRgb>
#include <QString>

#include <vector>

class Light;

/// Moves and zooms a picture over the lights of its group. Twelve map units are one pixel at scale
/// 1; the group's centre lies on the picture's start point first and on its end point last.
class ImageEffect : public Effect
{
    Q_OBJECT
public:
    ImageEffect(MapModel* model, quint64 gid, QDomElement* element);

    QDomElement toXml(QDomDocument doc) const override;
    int typeId() const override { return 6; }
    quint32 cycleTime() const override;
    bool compile() override;
    void updateLights() override;
    void fromXml(QDomElement* element) override;

    const QString& imageFile() const { return m_imageFile; }
    /// Loads the picture, too; where that fails, the one before stays.
    void setImageFile(const QString& path);
    /// Length of one cycle in seconds.
    double cycleSeconds() const { return m_cycleTime; }
    void setCycleSeconds(double seconds);
    // The points of the picture under the group's centre, in pixels.
    double startX() const { return m_startX; }
    void setStartX(double x) { m_startX = x; }
    double startY() const { return m_startY; }
    void setStartY(double y) { m_startY = y; }
    double endX() const { return m_endX; }
    void setEndX(double x) { m_endX = x; }
    double endY() const { return m_endY; }
    void setEndY(double y) { m_endY = y; }
    /// At scale 0 every light lies outside the picture.
    double startScale() const { return m_startScale; }
    void setStartScale(double scale) { m_startScale = scale; }
    double endScale() const { return m_endScale; }
    void setEndScale(double scale) { m_endScale = scale; }
    /// True: a light shows the mean of the four pixels around it.
    bool smooth() const { return m_smooth; }
    void setSmooth(bool on) { m_smooth = on; }
    /// Pixels that equal this colour exactly are transparent, while enabled.
    const VelaColor& transColor() const { return m_transColor; }
    void setTransColor(const VelaColor& color) { m_transColor = color; }
    bool transEnabled() const { return m_transEnabled; }
    void setTransEnabled(bool on) { m_transEnabled = on; }
    /// Shown outside the picture.
    const VelaColor& bgColor() const { return m_bgColor; }
    void setBgColor(const VelaColor& color);

    bool imageLoaded() const { return m_imageLoaded; }
    /// Width and height of the picture: "40 x 30".
    QString imageSizeText() const;
    /// Width and height of the group in pixels of the picture at scale 1; "0 x 0" without a group.
    const QString& outputSizeText() const { return m_outputSizeText; }

signals:
    void updateImageSizeLabel(const QString& s);
    void updateOutputSizeLabel(const QString& s);

private:
    /// A light's distance from the group's centre in whole pixels, NaN for one at no real place.
    struct Offset
    {
        double x;
        double y;
    };

    void loadImage();

    QImage m_image;
    QString m_imageFile;
    double m_cycleTime = 5.0;
    double m_startX = 0.0;
    double m_startY = 0.0;
    double m_endX = 0.0;
    double m_endY = 0.0;
    double m_startScale = 1.0;
    double m_endScale = 1.0;
    bool m_smooth = true;
    VelaColor m_transColor = Qt::black;
    bool m_transEnabled = false;
    VelaColor m_bgColor = Qt::black;
    ScreenColor m_bgScreen;
    QRgb m_bgRgb = 0xFF000000U; // of m_bgColor
    bool m_imageLoaded = false;
    bool m_isFailureReported = false; // of m_imageFile
    QString m_outputSizeText;
    Light* const* m_lights = nullptr; // not owned
    int m_lightCount = 0;
    std::vector<Offset> m_offsets; // by light
};
