#include "effects/ImageEffect.h"

#include "color/Numeric.h"
#include "effects/LightRuns.h"
#include "effects/PictureFile.h"
#include "effects/PictureSampler.h"
#include "engine/EffectXml.h"
#include "map/Group.h"
#include "map/Light.h"
#include "map/MapModel.h"

#include <algorithm>
#include <limits>

namespace {

constexpr int kUnitsPerPixel = 12;

QString noSize()
{
    return QStringLiteral("0 x 0");
}

/// `v` map units from the centre in whole pixels.
double wholePixels(double v)
{
    double pixels = v / kUnitsPerPixel;
    if (pixels < 0.0) {
        pixels -= 1.0;
    }
    const qint32 whole = truncI32(pixels);
    return whole == std::numeric_limits<qint32>::min() ? std::numeric_limits<double>::quiet_NaN()
                                                       : whole;
}

} // namespace

ImageEffect::ImageEffect(MapModel* model, quint64 gid, QDomElement* element)
    : Effect(model, gid)
    , m_outputSizeText(noSize())
{
    setType(QStringLiteral("Image Scroll"));
    ImageEffect::fromXml(element);
}

QDomElement ImageEffect::toXml(QDomDocument doc) const
{
    QDomElement element = doc.createElement(effectKeyText(EffectKey::Effect));
    writeBase(doc, element);
    EffectXml::append(doc, element, EffectKey::ImageFile, m_imageFile);
    EffectXml::append(doc, element, EffectKey::CycleTime, m_cycleTime);
    EffectXml::append(doc, element, EffectKey::StartX, m_startX);
    EffectXml::append(doc, element, EffectKey::StartY, m_startY);
    EffectXml::append(doc, element, EffectKey::EndX, m_endX);
    EffectXml::append(doc, element, EffectKey::EndY, m_endY);
    EffectXml::append(doc, element, EffectKey::StartScale, m_startScale);
    EffectXml::append(doc, element, EffectKey::EndScale, m_endScale);
    EffectXml::append(doc, element, EffectKey::Smooth, m_smooth);
    EffectSupport::append(doc, element, EffectKey::TransColor, m_transColor);
    EffectXml::append(doc, element, EffectKey::TransEnabled, m_transEnabled);
    EffectSupport::append(doc, element, EffectKey::BgColor, m_bgColor);
    return element;
}

quint32 ImageEffect::cycleTime() const
{
    return EffectSupport::toMilliseconds(m_cycleTime);
}

bool ImageEffect::compile()
{
    m_lights = nullptr;
    m_lightCount = 0;
    m_offsets.clear();
    m_outputSizeText = noSize();
    setCompiled(true);
    Group* const group = model() != nullptr ? model()->group(gid()) : nullptr;
    if (group == nullptr) {
        return true;
    }
    m_lights = group->lights(&m_lightCount);
    setStartMs(currentMs());
    if (!m_imageLoaded) {
        loadImage();
    }

    double minX = 0.0;
    double minY = 0.0;
    double maxX = 0.0;
    double maxY = 0.0;
    group->bounds(&minX, &minY, &maxX, &maxY);
    m_offsets.resize(static_cast<std::size_t>(m_lightCount), {0.0, 0.0});
    for (int i = 0; i < m_lightCount; ++i) {
        if (m_lights[i] != nullptr) {
            const LightPosition place = m_lights[i]->position();
            m_offsets[static_cast<std::size_t>(i)] = {
                wholePixels((place.x - minX) - (maxX - minX) * 0.5),
                wholePixels((place.y - minY) - (maxY - minY) * 0.5)};
        }
    }
    m_outputSizeText = QStringLiteral("%1 x %2")
                           .arg(truncI32(maxX - minX) / kUnitsPerPixel + 1)
                           .arg(truncI32(maxY - minY) / kUnitsPerPixel + 1);
    emit updateOutputSizeLabel(m_outputSizeText);
    return true;
}

void ImageEffect::updateLights()
{
    if (!m_imageLoaded) {
        return;
    }
    const quint32 cycle = EffectSupport::toMilliseconds(m_cycleTime);
    const double t =
        cycle == 0 ? 0.0 : static_cast<double>(EffectSupport::phase(*this, m_cycleTime)) / cycle;
    const double scale = (m_endScale - m_startScale) * t + m_startScale;
    const double centerX = (m_endX - m_startX) * t + m_startX;
    const double centerY = (m_endY - m_startY) * t + m_startY;

    const double visible = std::max(0.0, 1.0 - transparency());
    const bool isFading = transparency() > 0.0;
    VelaColor outside = m_bgColor;
    if (isFading) {
        outside.setAlphaF(outside.alphaF() * visible);
    }
    QColor outsideScreen = m_bgScreen.of(m_bgColor);
    outsideScreen.setAlphaF(outside.alphaF());

    const PictureSampler sampler(
        m_image, m_bgRgb, m_transEnabled ? TransparentPixel(m_transColor) : TransparentPixel());
    const int layer = static_cast<int>(priority());
    const auto paint = [&](const PictureSample& sample, int first, int count) {
        Light* const* const lights = m_lights + first;
        prefetchBehind(m_lights, m_lightCount, first + count);
        if (sample.isOutside) {
            Light::mixRow(lights, count, outside, outsideScreen, layer);
            return;
        }
        if (sample.alpha == 1.0 && !isFading) {
            Light::mixPixelRow(lights, count, sample.rgb, layer);
            return;
        }
        VelaColor color(sample.rgb);
        color.setAlphaF(sample.alpha);
        if (isFading) {
            color.setAlphaF(color.alphaF() * visible);
        }
        QColor screen(sample.rgb);
        screen.setAlphaF(color.alphaF());
        Light::mixRow(lights, count, color, screen, layer);
    };
    const auto placeX = [&](int i) {
        return centerX + m_offsets[static_cast<std::size_t>(i)].x / scale;
    };
    const auto placeY = [&](int i) {
        return centerY + m_offsets[static_cast<std::size_t>(i)].y / scale;
    };
    if (m_smooth) {
        forEachRun(
            m_lightCount, [&](int i) { return sampler.smooth(placeX(i), placeY(i)); }, paint);
    } else {
        forEachRun(
            m_lightCount, [&](int i) { return sampler.plain(placeX(i), placeY(i)); }, paint);
    }
}

void ImageEffect::fromXml(QDomElement* element)
{
    if (element == nullptr) {
        return;
    }
    readBase(*element);
    for (QDomNode node = element->firstChild(); !node.isNull(); node = node.nextSibling()) {
        const QString value = EffectXml::valueOf(node);
        switch (effectKey(node.nodeName())) {
        case EffectKey::ImageFile:
            setImageFile(value);
            break;
        case EffectKey::CycleTime:
            setCycleSeconds(EffectXml::toDouble(value, 5.0));
            break;
        case EffectKey::StartX:
            m_startX = EffectXml::toDouble(value, 0.0);
            break;
        case EffectKey::StartY:
            m_startY = EffectXml::toDouble(value, 0.0);
            break;
        case EffectKey::EndX:
            m_endX = EffectXml::toDouble(value, 0.0);
            break;
        case EffectKey::EndY:
            m_endY = EffectXml::toDouble(value, 0.0);
            break;
        case EffectKey::StartScale:
            m_startScale = EffectXml::toDouble(value, 1.0);
            break;
        case EffectKey::EndScale:
            m_endScale = EffectXml::toDouble(value, 1.0);
            break;
        case EffectKey::Smooth:
            m_smooth = EffectXml::toBool(value, true);
            break;
        case EffectKey::TransColor:
            m_transColor = EffectSupport::toColor(value, Qt::black);
            break;
        case EffectKey::TransEnabled:
            m_transEnabled = EffectXml::toBool(value, false);
            break;
        case EffectKey::BgColor:
            setBgColor(EffectSupport::toColor(value, Qt::black));
            break;
        default:
            break;
        }
    }
}

void ImageEffect::setImageFile(const QString& path)
{
    m_imageFile = path;
    m_isFailureReported = false;
    loadImage();
}

void ImageEffect::setCycleSeconds(double seconds)
{
    m_cycleTime = seconds;
    applyTimeRule();
}

void ImageEffect::setBgColor(const VelaColor& color)
{
    m_bgColor = color;
    m_bgRgb = qRgb(color.red8(), color.green8(), color.blue8());
}

QString ImageEffect::imageSizeText() const
{
    return QStringLiteral("%1 x %2").arg(m_image.width()).arg(m_image.height());
}

void ImageEffect::loadImage()
{
    if (m_imageFile.isEmpty()) {
        return;
    }
    QString reason;
    const QImage image = PictureFile::read(m_imageFile, &reason);
    if (image.isNull()) {
        if (!m_isFailureReported) { // each compile() tries again
            m_isFailureReported = true;
            qDebug("Picture %s can't be read: %s", qUtf8Printable(m_imageFile),
                   qUtf8Printable(reason));
        }
        return;
    }
    m_image = PictureFile::toRgb32(image);
    m_imageLoaded = true;
    emit updateImageSizeLabel(imageSizeText());
}
