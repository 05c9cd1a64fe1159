#include "effects/FlashEffect.h"

#include "color/Numeric.h"
#include "effects/EffectSupport.h"
#include "effects/LightRuns.h"
#include "effects/TransparentPixel.h"
#include "engine/EffectXml.h"
#include "map/Group.h"
#include "map/Light.h"
#include "map/MapModel.h"

#include <QElapsedTimer>
#include <QRectF>
#include <QSize>

#include <algorithm>

namespace {

QString sizeText(int width, int height)
{
    return QStringLiteral("%1 x %2").arg(width).arg(height);
}

QRgb pixelAt(const quint8* buffer, int light)
{
    const int first = SamplePoints::kBytesPerLight * light;
    return qRgb(buffer[first], buffer[first + 1], buffer[first + 2]);
}

/// Half of the current level and a quarter of each neighbour's, truncated.
QRgb blendAt(const quint8* before, const quint8* current, const quint8* after, int light)
{
    const int first = SamplePoints::kBytesPerLight * light;
    const auto level = [&](int i) { return (before[i] + 2 * current[i] + after[i]) / 4; };
    return qRgb(level(first), level(first + 1), level(first + 2));
}

} // namespace

FlashEffect::FlashEffect(MapModel* model, quint64 gid, QDomElement* element)
    : Effect(model, gid)
    , m_imageSizeText(sizeText(0, 0))
    , m_outputSizeText(sizeText(0, 0))
{
    setType(QStringLiteral("Animation"));
    FlashEffect::fromXml(element);
}

QDomElement FlashEffect::toXml(QDomDocument doc) const
{
    QDomElement element = doc.createElement(effectKeyText(EffectKey::Effect));
    writeBase(doc, element);
    EffectXml::append(doc, element, EffectKey::AnimationDir, m_animationDir);
    EffectXml::append(doc, element, EffectKey::Preload, m_preload);
    EffectXml::append(doc, element, EffectKey::Fps, m_fps);
    EffectXml::append(doc, element, EffectKey::XOffset, m_xOffset);
    EffectXml::append(doc, element, EffectKey::YOffset, m_yOffset);
    EffectXml::append(doc, element, EffectKey::Scale, m_scale);
    EffectSupport::append(doc, element, EffectKey::TransColor, m_transColor);
    EffectXml::append(doc, element, EffectKey::TransEnabled, m_transEnabled);
    EffectXml::append(doc, element, EffectKey::Smooth, m_smooth);
    return element;
}

quint32 FlashEffect::cycleTime() const
{
    return truncU32(m_frameCount * 1000.0 / m_fps);
}

bool FlashEffect::compile()
{
    if (m_isReading) { // loading a film may take long: once, when all is known
        m_isCompileWanted = true;
        return true;
    }
    m_lights = nullptr;
    m_lightCount = 0;
    m_group = model() != nullptr ? model()->group(gid()) : nullptr;
    if (m_group != nullptr) {
        m_lights = m_group->lights(&m_lightCount);
        setStartMs(currentMs());
        m_currentFrame = 0;
    }
    loadFrames();
    setCompiled(true);
    return true;
}

void FlashEffect::handleLoadClicked()
{
    m_ready = false;
    compile();
}

void FlashEffect::loadFrames()
{
    ++m_loads;
    m_ready = false;
    m_currentFrame = 0;
    m_frameCount = 0;
    m_frames.clear();
    m_points.clear();
    m_isLatenessReported = false;
    if (!m_directory.open(m_animationDir)) {
        return;
    }
    m_frameCount = m_directory.count();
    m_frames.resize(static_cast<std::size_t>(m_frameCount));
    QSize picture;
    {
        const QImage image = m_directory.read(0);
        picture = QSize(image.width(), image.height());
        placePoints(picture);
        m_frames[0] = m_points.makeBuffer();
        m_points.sample(image, m_frames[0]);
    }
    if (m_preload) {
        if (!preloadFrames()) {
            return;
        }
    } else {
        m_beforeRead = m_points.makeBuffer();
        m_currentRead = m_points.makeBuffer();
        m_afterRead = m_points.makeBuffer();
    }
    m_ready = true;
    emit updateFrameCount(QString::number(m_frameCount));
    m_imageSizeText = sizeText(picture.width(), picture.height());
    emit updateImageSize(m_imageSizeText);
    emit cycleTimeChanged(FlashEffect::cycleTime());
}

void FlashEffect::placePoints(const QSize& picture)
{
    if (m_group == nullptr) {
        return;
    }
    double minX = 0.0;
    double minY = 0.0;
    double maxX = 0.0;
    double maxY = 0.0;
    m_group->bounds(&minX, &minY, &maxX, &maxY);
    m_points.place(m_lights, m_lightCount, QRectF(minX, minY, maxX - minX, maxY - minY), picture,
                   m_scale, m_xOffset, m_yOffset);
    m_outputSizeText = sizeText(truncI32(maxX - minX), truncI32(maxY - minY));
    emit updateOutputSize(m_outputSizeText);
}

/// False where another load has begun meanwhile: a progress dialog handles events.
bool FlashEffect::preloadFrames()
{
    const quint32 load = m_loads;
    const int count = m_frameCount;
    m_beforeRead.reset();
    m_currentRead.reset();
    m_afterRead.reset();
    emit initializeProgressDialog(count);
    for (int frame = 1; frame < count && load == m_loads; ++frame) {
        emit updateProgressDialog(frame);
        if (load == m_loads) {
            SamplePoints::Buffer& buffer = m_frames[static_cast<std::size_t>(frame)];
            buffer = m_points.makeBuffer();
            if (m_lightCount > 0) {
                m_points.sample(m_directory.read(frame), buffer);
            }
        }
    }
    emit updateProgressDialog(count);
    return load == m_loads;
}

void FlashEffect::updateLights()
{
    if (!m_ready) {
        return;
    }
    const qint32 step = m_fps == 0 ? 0 : 1000 / m_fps;
    quint32 frame = step > 0 ? static_cast<quint32>(elapsed()) / static_cast<quint32>(step) : 0;
    if (frame >= static_cast<quint32>(m_frameCount)) {
        frame = 0;
        restartFromLast();
    }
    m_currentFrame = static_cast<qint32>(frame);
    if (m_lightCount == 0) {
        return;
    }
    const View view = m_preload ? preloadedView() : readView();
    if (view.current == nullptr) {
        return;
    }

    const TransparentPixel transparent =
        m_transEnabled ? TransparentPixel(m_transColor) : TransparentPixel();
    const double visible = transparency() > 0.0 ? std::max(0.0, 1.0 - transparency()) : 1.0;
    const int layer = static_cast<int>(priority());
    const auto paint = [&](QRgb rgb, int first, int count) {
        const double alpha = transparent.matches(rgb) ? 0.0 : visible;
        prefetchBehind(m_lights, m_lightCount, first + count);
        if (alpha == 1.0) {
            Light::mixPixelRow(m_lights + first, count, rgb, layer);
            return;
        }
        VelaColor color(rgb);
        color.setAlphaF(alpha);
        QColor screen(rgb);
        screen.setAlphaF(alpha);
        Light::mixRow(m_lights + first, count, color, screen, layer);
    };
    if (view.before != nullptr && view.after != nullptr) {
        forEachRun(
            m_lightCount, [&](int i) { return blendAt(view.before, view.current, view.after, i); },
            paint);
    } else {
        forEachRun(
            m_lightCount, [&](int i) { return pixelAt(view.current, i); }, paint);
    }
}

FlashEffect::View FlashEffect::preloadedView() const
{
    const auto frame = static_cast<std::size_t>(m_currentFrame);
    View view;
    view.current = m_frames[frame].get();
    if (m_smooth && frame >= 1 && frame + 1 < m_frames.size()) {
        view.before = m_frames[frame - 1].get();
        view.after = m_frames[frame + 1].get();
    }
    return view;
}

FlashEffect::View FlashEffect::readView()
{
    QElapsedTimer timer;
    timer.start();
    const int frame = m_currentFrame;
    View view;
    m_points.sample(m_directory.read(frame), m_currentRead);
    view.current = m_currentRead.get();
    if (m_smooth && frame >= 1) {
        m_points.sample(m_directory.read(frame - 1), m_beforeRead);
        view.before = m_beforeRead.get();
    }
    if (m_smooth && frame < m_frameCount - 1) {
        m_points.sample(m_directory.read(frame + 1), m_afterRead);
        view.after = m_afterRead.get();
    }
    reportLateness(timer.nsecsElapsed());
    return view;
}

void FlashEffect::reportLateness(qint64 nanoseconds)
{
    // The next frame is due after the time between the last two, or when the film moves on.
    constexpr qint64 kNanosecondsPerMs = 1000000;
    const qint64 step = m_fps > 0 ? 1000 / m_fps : 0;
    const qint64 spacing = elapsedSinceLast();
    const qint64 due = step > 0 && spacing > 0 ? std::min(step, spacing) : std::max(step, spacing);
    if (m_isLatenessReported || due == 0 || nanoseconds <= due * kNanosecondsPerMs) {
        return;
    }
    m_isLatenessReported = true;
    qDebug("Animation %s: reading its files took %lld ms of a frame of %lld ms; frames come late "
           "unless it is preloaded",
           qUtf8Printable(m_animationDir), static_cast<long long>(nanoseconds / kNanosecondsPerMs),
           static_cast<long long>(due));
}

void FlashEffect::fromXml(QDomElement* element)
{
    if (element == nullptr) {
        return;
    }
    m_isReading = true;
    m_isCompileWanted = false;
    readBase(*element);
    for (QDomNode node = element->firstChild(); !node.isNull(); node = node.nextSibling()) {
        const QString value = EffectXml::valueOf(node);
        switch (effectKey(node.nodeName())) {
        case EffectKey::AnimationDir:
            setAnimationDir(value);
            break;
        case EffectKey::Preload:
            setPreload(EffectXml::toBool(value, false));
            break;
        case EffectKey::Fps:
            setFps(EffectXml::toInt(value, 40));
            break;
        case EffectKey::XOffset:
            setXOffset(EffectXml::toDouble(value, 0.0));
            break;
        case EffectKey::YOffset:
            setYOffset(EffectXml::toDouble(value, 0.0));
            break;
        case EffectKey::Scale:
            setScale(EffectXml::toDouble(value, 1.0));
            break;
        case EffectKey::TransColor:
            setTransColor(EffectSupport::toColor(value, m_transColor));
            break;
        case EffectKey::TransEnabled:
            m_transEnabled = EffectXml::toBool(value, false);
            break;
        case EffectKey::Smooth:
            m_smooth = EffectXml::toBool(value, true);
            break;
        default:
            break;
        }
    }
    m_isReading = false;
    if (m_isCompileWanted || (!m_animationDir.isEmpty() && !m_ready)) {
        FlashEffect::compile();
    }
}

void FlashEffect::setAnimationDir(const QString& path)
{
    if (path == m_animationDir) {
        return;
    }
    m_animationDir = path;
    applyTimeRule();
}

void FlashEffect::setFps(qint32 fps)
{
    if (fps == m_fps) {
        return;
    }
    m_fps = fps;
    applyTimeRule();
}

void FlashEffect::setPreload(bool on)
{
    if (on == m_preload) {
        return;
    }
    m_preload = on;
    FlashEffect::compile();
}

void FlashEffect::setXOffset(double pixels)
{
    if (pixels == m_xOffset) {
        return;
    }
    m_xOffset = pixels;
    FlashEffect::compile();
}

void FlashEffect::setYOffset(double pixels)
{
    if (pixels == m_yOffset) {
        return;
    }
    m_yOffset = pixels;
    FlashEffect::compile();
}

void FlashEffect::setScale(double scale)
{
    if (scale == m_scale) {
        return;
    }
    m_scale = scale;
    FlashEffect::compile();
}

void FlashEffect::setTransColor(const VelaColor& color)
{
    if (color.toString() != m_transColor.toString()) {
        m_transColor = color;
    }
}
