#include "effects/XYTextEffect.h"

#include "color/Numeric.h"
#include "effects/EffectSupport.h"
#include "engine/EffectXml.h"
#include "map/Group.h"
#include "map/Light.h"
#include "map/MapModel.h"

#include <limits>

namespace {

/// Asked before it is set: QColor logs a line of its own about a name that it doesn't know.
QColor toQColor(const QString& text, Qt::GlobalColor fallback)
{
    return QColor::isValidColor(text) ? QColor(text) : QColor(fallback);
}

bool holds(const QImage& image, qint64 x, qint64 y)
{
    return x >= 0 && y >= 0 && x < image.width() && y < image.height();
}

} // namespace

XYTextEffect::XYTextEffect(MapModel* model, quint64 gid, QDomElement* element)
    : Effect(model, gid)
{
    setType(QStringLiteral("Text"));
    XYTextEffect::fromXml(element);
}

QDomElement XYTextEffect::toXml(QDomDocument doc) const
{
    QDomElement element = doc.createElement(effectKeyText(EffectKey::Effect));
    writeBase(doc, element);
    EffectXml::append(doc, element, EffectKey::Text, m_text);
    EffectXml::append(doc, element, EffectKey::Font, m_fontFamily);
    EffectXml::append(doc, element, EffectKey::FontSize, m_fontSize);
    EffectXml::append(doc, element, EffectKey::Bold, m_bold);
    EffectXml::append(doc, element, EffectKey::Italic, m_italic);
    EffectXml::append(doc, element, EffectKey::Smooth, m_smooth);
    EffectXml::append(doc, element, EffectKey::FgColor, m_fgColor.name());
    EffectXml::append(doc, element, EffectKey::FgTrans, m_fgTransparent);
    EffectXml::append(doc, element, EffectKey::BgColor, m_bgColor.name());
    EffectXml::append(doc, element, EffectKey::BgTrans, m_bgTransparent);
    EffectXml::append(doc, element, EffectKey::CycleTime, m_cycleSeconds);
    return element;
}

quint32 XYTextEffect::cycleTime() const
{
    return EffectSupport::toMilliseconds(m_cycleSeconds);
}

bool XYTextEffect::compile()
{
    setCompiled(true);
    m_lights.clear();
    Group* const group = model() != nullptr ? model()->group(gid()) : nullptr;
    if (group == nullptr) {
        return true;
    }
    const QList<quint64> uids = group->lightUids();
    m_lights.reserve(static_cast<std::size_t>(uids.size()));
    for (const quint64 uid : uids) {
        m_lights.push_back(model()->light(uid));
    }
    setStartMs(currentMs());

    qint32 minX = std::numeric_limits<qint32>::max();
    qint32 minY = std::numeric_limits<qint32>::max();
    qint32 maxX = -std::numeric_limits<qint32>::max();
    qint32 maxY = -std::numeric_limits<qint32>::max();
    for (const Light* const light : m_lights) {
        const LightPosition place = light != nullptr ? light->position() : LightPosition();
        if (light == nullptr || !place.countsForExtents()) {
            continue;
        }
        minX = place.x < minX ? truncI32(place.x) : minX;
        maxX = place.x > maxX ? truncI32(place.x) : maxX;
        minY = place.y < minY ? truncI32(place.y) : minY;
        maxY = place.y > maxY ? truncI32(place.y) : maxY;
    }
    m_imageWidth = m_image.width();
    m_imageHeight = m_image.height();
    m_pixelX.assign(m_lights.size(), 0);
    m_pixelY.assign(m_lights.size(), 0);
    if (m_imageHeight == 0) {
        return true;
    }
    const double width = static_cast<double>(maxX) - minX;
    const double height = static_cast<double>(maxY) - minY;
    const double last = static_cast<double>(m_fontSize) - 1.0;
    for (std::size_t i = 0; i < m_lights.size(); ++i) {
        if (m_lights[i] != nullptr) {
            const LightPosition place = m_lights[i]->position();
            m_pixelX[i] = truncI32((place.x - minX) / width * last);
            m_pixelY[i] = truncI32((place.y - minY) / height * last);
        }
    }
    return true;
}

QRgb XYTextEffect::sampleAt(int x, int y) const
{
    if (!m_smooth || !holds(m_image, x - 1, y - 1) || !holds(m_image, x + 1, y + 1)) {
        return m_image.pixel(x, y);
    }
    int red = 0;
    int green = 0;
    int blue = 0;
    for (int row = y - 1; row <= y + 1; ++row) {
        for (int column = x - 1; column <= x + 1; ++column) {
            const QRgb pixel = m_image.pixel(column, row);
            red += qRed(pixel);
            green += qGreen(pixel);
            blue += qBlue(pixel);
        }
    }
    return qRgb(red / 9, green / 9, blue / 9);
}

void XYTextEffect::updateLights()
{
    constexpr int kTextAbove = 0x40;
    const double travel = static_cast<double>(m_imageWidth) + m_imageHeight;
    const double scroll =
        EffectSupport::cyclePosition(*this, m_cycleSeconds) * travel - m_imageHeight;
    const QRgb fg = m_fgColor.rgb();
    const QRgb bg = m_bgColor.rgb();
    const VelaColor surroundings(bg);
    // The components go into the low half of 16 bits.
    const VelaColor ofText(qRed(fg), qGreen(fg), qBlue(fg), 65535);
    const VelaColor betweenText(qRed(bg), qGreen(bg), qBlue(bg), 65535);
    const qint64 shift = static_cast<qint64>(m_imageHeight) - m_fontSize;
    const int layer = static_cast<int>(priority());
    for (std::size_t i = 0; i < m_lights.size(); ++i) {
        if (m_lights[i] == nullptr) {
            continue;
        }
        const qint64 x = shift + truncI32(m_pixelX[i] + scroll) - (scroll > 0.0 ? 0 : 1);
        const qint64 y = shift + m_pixelY[i];
        if (!holds(m_image, x, y)) {
            m_lights[i]->mixColor(surroundings, layer);
            continue;
        }
        const QRgb sample = sampleAt(static_cast<int>(x), static_cast<int>(y));
        m_lights[i]->mixColor(qRed(sample) > kTextAbove ? ofText : betweenText, layer);
    }
}

void XYTextEffect::fromXml(QDomElement* element)
{
    if (element == nullptr) {
        return;
    }
    readBase(*element);
    for (QDomNode node = element->firstChild(); !node.isNull(); node = node.nextSibling()) {
        const QString value = EffectXml::valueOf(node);
        switch (effectKey(node.nodeName())) {
        case EffectKey::Text:
            setText(value);
            break;
        case EffectKey::Font:
            setFontFamily(value);
            break;
        case EffectKey::FontSize:
            setFontSize(EffectXml::toInt(value, 100));
            break;
        case EffectKey::Bold:
            setBold(EffectXml::toBool(value, false));
            break;
        case EffectKey::Italic:
            setItalic(EffectXml::toBool(value, false));
            break;
        case EffectKey::Smooth:
            setSmooth(EffectXml::toBool(value, false));
            break;
        case EffectKey::FgColor:
            setFgColor(toQColor(value, Qt::red));
            break;
        case EffectKey::FgTrans:
            setFgTransparent(EffectXml::toBool(value, false));
            break;
        case EffectKey::BgColor:
            setBgColor(toQColor(value, Qt::black));
            break;
        case EffectKey::BgTrans:
            setBgTransparent(EffectXml::toBool(value, false));
            break;
        case EffectKey::CycleTime:
            setCycleTime(EffectXml::toDouble(value, 5.0));
            break;
        default:
            break;
        }
    }
}

void XYTextEffect::setText(const QString& text)
{
    m_text = text;
    XYTextEffect::compile();
}

void XYTextEffect::setFontFamily(const QString& family)
{
    m_fontFamily = family;
    XYTextEffect::compile();
}

void XYTextEffect::setFontSize(qint32 pixels)
{
    m_fontSize = pixels;
    XYTextEffect::compile();
}

void XYTextEffect::setBold(bool on)
{
    m_bold = on;
    XYTextEffect::compile();
}

void XYTextEffect::setItalic(bool on)
{
    m_italic = on;
    XYTextEffect::compile();
}

void XYTextEffect::setFgColor(const QColor& color)
{
    m_fgColor = color;
    XYTextEffect::compile();
}

void XYTextEffect::setFgTransparent(bool on)
{
    m_fgTransparent = on;
    XYTextEffect::compile();
}

void XYTextEffect::setBgColor(const QColor& color)
{
    m_bgColor = color;
    XYTextEffect::compile();
}

void XYTextEffect::setBgTransparent(bool on)
{
    m_bgTransparent = on;
    XYTextEffect::compile();
}

void XYTextEffect::setCycleTime(double seconds)
{
    m_cycleSeconds = seconds;
    applyTimeRule();
}

void XYTextEffect::setImage(const QImage& image)
{
    m_image = image;
    XYTextEffect::compile();
}
