#pragma once

#include "engine/Effect.h"

#include <QColor>
#include <QImage>

#include <vector>

class Light;

/// Scrolls a picture of a text across the lights of a group. Reaches the outputs only, and looks
/// neither at its transparency nor at that of its colours. Nothing draws the text yet: every light
/// gets the background colour.
class XYTextEffect : public Effect
{
    Q_OBJECT
public:
    XYTextEffect(MapModel* model, quint64 gid, QDomElement* element);

    QDomElement toXml(QDomDocument doc) const override;
    int typeId() const override { return 16; }
    quint32 cycleTime() const override;
    /// Moves the effect's time zero to the present frame's time, too.
    bool compile() override;
    void updateLights() override;
    void fromXml(QDomElement* element) override;

    // Setting any of these but smooth and the time compiles.
    const QString& text() const { return m_text; }
    void setText(const QString& text);
    const QString& fontFamily() const { return m_fontFamily; }
    void setFontFamily(const QString& family);
    /// Pixels.
    qint32 fontSize() const { return m_fontSize; }
    void setFontSize(qint32 pixels);
    bool bold() const { return m_bold; }
    void setBold(bool on);
    bool italic() const { return m_italic; }
    void setItalic(bool on);
    /// True: a light shows the mean of the nine pixels about its own.
    bool smooth() const { return m_smooth; }
    void setSmooth(bool on) { m_smooth = on; }
    const QColor& fgColor() const { return m_fgColor; }
    void setFgColor(const QColor& color);
    bool fgTransparent() const { return m_fgTransparent; }
    void setFgTransparent(bool on);
    const QColor& bgColor() const { return m_bgColor; }
    void setBgColor(const QColor& color);
    bool bgTransparent() const { return m_bgTransparent; }
    void setBgTransparent(bool on);
    /// Seconds in which the text crosses the lights.
    double cycleSeconds() const { return m_cycleSeconds; }
    void setCycleTime(double seconds);

protected:
    /// The picture that scrolls: a pixel with a red above 64 is one of the text. Compiles.
    void setImage(const QImage& image);

private:
    QRgb sampleAt(int x, int y) const;

    std::vector<Light*> m_lights; // not owned
    qint32 m_imageWidth = 0;
    qint32 m_imageHeight = 0;
    QImage m_image;
    std::vector<qint32> m_pixelX;
    std::vector<qint32> m_pixelY;
    QString m_text = QStringLiteral("Hello");
    QString m_fontFamily;
    qint32 m_fontSize = 100;
    bool m_bold = false;
    bool m_italic = false;
    bool m_smooth = false;
    double m_cycleSeconds = 5.0;
    QColor m_fgColor = Qt::red;
    bool m_fgTransparent = false;
    QColor m_bgColor = Qt::black;
    bool m_bgTransparent = false;
};
