#pragma once

#include "color/VelaColor.h"
#include "effects/FrameDirectory.h"
#include "effects/SamplePoints.h"
#include "engine/Effect.h"

#include <QString>
#include <QtGlobal>

#include <vector>

class Group;
class Light;
class QSize;

/// Plays a directory of pictures as a film on its group. Preloaded, a film costs three bytes a
/// light a frame and playing touches memory only; otherwise each frame reads its files anew.
class FlashEffect : public Effect
{
    Q_OBJECT
public:
    FlashEffect(MapModel* model, quint64 gid, QDomElement* element);

    QDomElement toXml(QDomDocument doc) const override;
    int typeId() const override { return 5; }
    quint32 cycleTime() const override;
    /// Loads the frames, too.
    bool compile() override;
    void updateLights() override;
    /// Compiles at most once, when all is read, however many of the keys ask for it.
    void fromXml(QDomElement* element) override;

    const QString& animationDir() const { return m_animationDir; }
    /// Takes effect with the next compile(). Empty is none.
    void setAnimationDir(const QString& path);
    /// Frames of the film a second, 1..1000; the real frame time is 1000 / fps in whole
    /// milliseconds. Any other number shows the first frame only.
    qint32 fps() const { return m_fps; }
    void setFps(qint32 fps);
    // These compile where they change something.
    bool preload() const { return m_preload; }
    void setPreload(bool on);
    /// In pixels of the picture.
    double xOffset() const { return m_xOffset; }
    void setXOffset(double pixels);
    double yOffset() const { return m_yOffset; }
    void setYOffset(double pixels);
    /// Above 1.0 the group reaches beyond the picture, which shows black.
    double scale() const { return m_scale; }
    void setScale(double scale);
    /// Lights that equal this colour exactly are transparent, while enabled.
    const VelaColor& transColor() const { return m_transColor; }
    /// Stores only a colour of another text form.
    void setTransColor(const VelaColor& color);
    bool transEnabled() const { return m_transEnabled; }
    void setTransEnabled(bool on) { m_transEnabled = on; }
    /// True: every frame but the first and the last is mixed with its neighbours, 1 : 2 : 1.
    bool smooth() const { return m_smooth; }
    void setSmooth(bool on) { m_smooth = on; }

    /// Whether there are frames to show.
    bool ready() const { return m_ready; }
    qint32 frameCount() const { return m_frameCount; }
    qint32 currentFrame() const { return m_currentFrame; }
    /// Width and height of the first picture: "40 x 30".
    const QString& imageSizeText() const { return m_imageSizeText; }
    /// Width and height of the group in map units.
    const QString& outputSizeText() const { return m_outputSizeText; }

signals:
    void updateFrameCount(const QString& frameCount);
    void updateImageSize(const QString& imageSize);
    void updateOutputSize(const QString& outputSize);
    void initializeProgressDialog(int count);
    void updateProgressDialog(int count);

public slots:
    void handleLoadClicked();
    void loadFrames();

private:
    /// What one frame shows; the neighbours are null where they don't take part.
    struct View
    {
        const quint8* current = nullptr;
        const quint8* before = nullptr;
        const quint8* after = nullptr;
    };

    void placePoints(const QSize& picture);
    [[nodiscard]] bool preloadFrames();
    View preloadedView() const;
    View readView();
    void reportLateness(qint64 nanoseconds);

    QString m_animationDir;
    bool m_preload = false;
    double m_xOffset = 0.0;
    double m_yOffset = 0.0;
    double m_scale = 1.0;
    VelaColor m_transColor = Qt::black;
    bool m_transEnabled = false;
    qint32 m_fps = 40;
    bool m_smooth = true;

    FrameDirectory m_directory;
    qint32 m_frameCount = 0;
    qint32 m_currentFrame = 0;
    std::vector<SamplePoints::Buffer> m_frames; // only the first one if not preloaded
    SamplePoints::Buffer m_beforeRead;          // for reading while playing, as the two below
    SamplePoints::Buffer m_currentRead;
    SamplePoints::Buffer m_afterRead;
    SamplePoints m_points;
    QString m_imageSizeText;
    QString m_outputSizeText;
    Group* m_group = nullptr;         // not owned
    Light* const* m_lights = nullptr; // not owned
    int m_lightCount = 0;
    bool m_ready = false;
    bool m_isReading = false;       // fromXml
    bool m_isCompileWanted = false; // asked for while reading
    bool m_isLatenessReported = false;
    quint32 m_loads = 0;
};
