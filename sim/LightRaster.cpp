#include "sim/LightRaster.h"

#include <QAbstractGraphicsShapeItem>
#include <QGraphicsEllipseItem>
#include <QGraphicsRectItem>
#include <QPaintEngine>
#include <QPainter>
#include <QPen>

#include <algorithm>
#include <cstring>

namespace {

// The marking colours. Blue is full in both and so counts outlines; red tells the brush.
constexpr QRgb kBlank = 0xFF00FFFFU;
constexpr QRgb kBrush = 0xFFFF00FFU;
constexpr QRgb kBlack = 0xFF000000U;
constexpr int kMargin = 2; // pixels that a rounded outline may lie outside of its rectangle
constexpr std::size_t kMostNodes = 4000000;
constexpr qint64 kMostReadPixels = 128000000;
constexpr std::size_t kMostShared = 64; // kinds of pixels looked through for one to share

QRgb* pixelsOf(QImage* image)
{
    return reinterpret_cast<QRgb*>(image->bits());
}

/// d * a / 255, rounded as the painter does.
uint scaled(uint d, uint a)
{
    const uint t = d * a;
    return (t + (t >> 8U) + 0x80U) >> 8U;
}

/// Premultiplied `top` over opaque `bottom`.
QRgb over(QRgb top, QRgb bottom)
{
    const uint rest = 255U - (top >> 24U);
    const uint red = ((top >> 16U) & 255U) + scaled((bottom >> 16U) & 255U, rest);
    const uint green = ((top >> 8U) & 255U) + scaled((bottom >> 8U) & 255U, rest);
    const uint blue = (top & 255U) + scaled(bottom & 255U, rest);
    return kBlack | red << 16U | green << 8U | blue;
}

void paintShape(QPainter* painter, const QAbstractGraphicsShapeItem& item)
{
    if (const auto* const ellipse = qgraphicsitem_cast<const QGraphicsEllipseItem*>(&item)) {
        painter->drawEllipse(ellipse->rect());
    } else if (const auto* const box = qgraphicsitem_cast<const QGraphicsRectItem*>(&item)) {
        painter->drawRect(box->rect());
    }
}

bool hasSameScale(const QTransform& a, const QTransform& b)
{
    // exactly: one table of outlines serves all
    return std::equal_to<>()(a.m11(), b.m11()) && std::equal_to<>()(a.m22(), b.m22());
}

} // namespace

bool LightRaster::Geometry::operator==(const Geometry& other) const
{
    return view == other.view && device == other.device && size == other.size &&
           area == other.area && format == other.format;
}

QImage LightRaster::makeSheet(const Geometry& geometry)
{
    QImage sheet(geometry.size, geometry.format);
    // The clip that a window's own painter has: the clip's edges take part in the rounding.
    sheet.paintEngine()->setSystemClip(QRegion(geometry.area));
    return sheet;
}

void LightRaster::clear()
{
    *this = LightRaster();
}

bool LightRaster::build(const Geometry& geometry,
                        const std::vector<QAbstractGraphicsShapeItem*>& items)
{
    clear();
    m_geometry = geometry;
    if (items.empty() || geometry.area.isEmpty() ||
        !QRect(QPoint(), geometry.size).contains(geometry.area)) {
        return false;
    }
    const QTransform first = items.front()->deviceTransform(geometry.view) * geometry.device;
    if (first.type() > QTransform::TxScale || !measureOutline(first, *items.front())) {
        clear();
        return false;
    }
    QImage sheet = makeSheet(geometry);
    sheet.fill(kBlank);
    QRgb* const pixels = pixelsOf(&sheet);
    const QRectF area(geometry.area);
    m_top.assign(static_cast<std::size_t>(geometry.area.width()) *
                     static_cast<std::size_t>(geometry.area.height()),
                 0);
    qint64 read = 0;
    QPainter painter(&sheet);
    painter.setPen(items.front()->pen());
    painter.setBrush(QColor(kBrush));
    bool good = true;
    for (std::size_t i = 0; i < items.size() && good; ++i) {
        const QAbstractGraphicsShapeItem& item = *items[i];
        if (!item.isVisible()) {
            continue;
        }
        const QTransform transform = item.deviceTransform(geometry.view) * geometry.device;
        const QRectF reach =
            transform.mapRect(item.boundingRect()).adjusted(-kMargin, -kMargin, kMargin, kMargin) &
            area;
        if (reach.isEmpty()) {
            continue;
        }
        const QRect box = reach.toAlignedRect() & geometry.area;
        painter.setWorldTransform(transform);
        paintShape(&painter, item);
        read += static_cast<qint64>(box.width()) * box.height();
        good = hasSameScale(transform, first) && read <= kMostReadPixels &&
               readMarks(static_cast<quint32>(i), box, pixels) && m_nodes.size() <= kMostNodes;
    }
    painter.end();
    const auto* const end = pixels + static_cast<qint64>(sheet.width()) * sheet.height();
    if (!good || std::any_of(static_cast<const QRgb*>(pixels), end,
                             [](QRgb pixel) { return pixel != kBlank; })) {
        clear();
        return false;
    }
    collectRuns();
    m_stands = true;
    return true;
}

/// One line through a ramp of all levels tells what an outline of this scale leaves of each.
bool LightRaster::measureOutline(const QTransform& item, const QAbstractGraphicsShapeItem& sample)
{
    constexpr int kRows = 8;
    constexpr double kMiddle = 4.5;
    constexpr int kLead = 4; // pixels beside the ramp, for the ends of the line
    QImage ramp(256 + 2 * kLead, kRows, m_geometry.format);
    QRgb* const pixels = pixelsOf(&ramp);
    for (int y = 0; y < kRows; ++y) {
        for (int x = 0; x < ramp.width(); ++x) {
            const int level = qBound(0, x - kLead, 255);
            pixels[y * ramp.width() + x] = qRgb(level, level, level);
        }
    }
    QPainter painter(&ramp);
    painter.setPen(sample.pen());
    const QTransform scale = QTransform::fromScale(item.m11(), item.m22());
    bool invertible = false;
    const QTransform back = scale.inverted(&invertible);
    if (!invertible) {
        return false;
    }
    painter.setWorldTransform(scale);
    painter.drawLine(back.map(QPointF(0.0, kMiddle)), back.map(QPointF(ramp.width(), kMiddle)));
    painter.end();

    Table once{};
    const QRgb* row = pixels; // one that the line reached, or any if the line can't be seen
    for (int y = 0; y < kRows; ++y) {
        const QRgb* const line = pixels + static_cast<std::ptrdiff_t>(y) * ramp.width();
        if (qBlue(line[kLead + 255]) != 255) {
            row = line;
            break;
        }
    }
    Table table{};
    for (int c = 0; c < 256; ++c) {
        once[static_cast<std::size_t>(c)] = static_cast<uchar>(qBlue(row[kLead + c]));
        table[static_cast<std::size_t>(c)] = static_cast<uchar>(c);
    }
    m_levelOf.fill(-1);
    m_levelOf[255] = 0;
    m_levels.assign(1, table);
    while (once[table[255]] < table[255]) {
        for (uchar& c : table) {
            c = once[c];
        }
        m_levelOf[table[255]] = static_cast<int>(m_levels.size());
        m_levels.push_back(table);
    }
    return std::all_of(table.begin(), table.end(), [&once](uchar c) { return once[c] == c; });
}

/// Reads what a light painted, and blanks it.
bool LightRaster::readMarks(quint32 light, const QRect& box, QRgb* sheet)
{
    m_made.clear();
    const int stride = m_geometry.size.width();
    const QRect& area = m_geometry.area;
    for (int y = box.top(); y <= box.bottom(); ++y) {
        QRgb* const line = sheet + static_cast<qint64>(y) * stride;
        quint32* const top =
            m_top.data() + static_cast<qint64>(y - area.top()) * area.width() - area.left();
        for (int x = box.left(); x <= box.right(); ++x) {
            const QRgb pixel = line[x];
            if (pixel == kBlank) {
                continue;
            }
            line[x] = kBlank;
            const int rest = qBlue(pixel);
            if (pixel == kBlack) { // by the outline, whatever lies below
                top[x] = blackNode();
                continue;
            }
            const int level = m_levelOf[static_cast<std::size_t>(rest)];
            const bool filled = qRed(pixel) != 0;
            if (level < 0 || qRed(pixel) != (filled ? rest : 0) ||
                qGreen(pixel) != (filled ? 0 : rest)) {
                return false;
            }
            top[x] = stamped(light, top[x], filled, static_cast<quint32>(level));
        }
    }
    return true;
}

quint32 LightRaster::stamped(quint32 light, quint32 under, bool filled, quint32 level)
{
    if (filled) {
        return share(under, level << 1U | 1U, {light, level, under});
    }
    const quint32 last = static_cast<quint32>(m_levels.size()) - 1;
    if (under == blackNode()) {
        return under;
    }
    if (!isLight(under)) { // a number of outlines over the ground
        return std::min(under + level, last);
    }
    Node node = nodeAt(under);
    node.level = std::min(node.level + level, last);
    return share(under, level << 1U, node);
}

quint32 LightRaster::share(quint32 from, quint32 mark, const Node& node)
{
    const std::size_t low = m_made.size() > kMostShared ? m_made.size() - kMostShared : 0;
    for (std::size_t i = m_made.size(); i > low; --i) {
        const Made& made = m_made[i - 1];
        if (made.from == from && made.mark == mark) {
            return made.node;
        }
    }
    const quint32 number = firstNode() + static_cast<quint32>(m_nodes.size());
    m_nodes.push_back(node);
    m_made.push_back({from, mark, number});
    return number;
}

void LightRaster::collectRuns()
{
    const auto width = static_cast<std::size_t>(m_geometry.area.width());
    std::vector<uchar> used(m_nodes.size(), 0);
    for (std::size_t pixel = 0; pixel < m_top.size(); ++pixel) {
        const quint32 node = m_top[pixel];
        if (!isLight(node)) {
            if (node != 0) {
                m_outlined.push_back({static_cast<quint32>(pixel), node});
            }
            continue;
        }
        used[node - firstNode()] = 1;
        m_shown.push_back(node);
        const bool goesOn = pixel % width != 0 && isLight(m_top[pixel - 1]);
        if (goesOn) {
            ++m_runs.back().length;
        } else {
            m_runs.push_back({static_cast<quint32>(pixel), 1});
        }
    }
    for (std::size_t i = 0; i < used.size(); ++i) {
        if (used[i] != 0) {
            m_used.push_back(firstNode() + static_cast<quint32>(i));
        }
    }
    m_values.assign(firstNode() + m_nodes.size(), kBlack);
    m_top = std::vector<quint32>();
    m_made = std::vector<Made>();
}

void LightRaster::setGround(const QImage& ground)
{
    m_ground = ground.convertToFormat(QImage::Format_RGB32);
    m_picture = m_ground.copy();
    QRgb* const pixels = pixelsOf(&m_picture);
    for (const Outlined& outline : m_outlined) {
        pixels[outline.pixel] = onGround(outline.node, pixels[outline.pixel]);
    }
}

QRgb LightRaster::outlined(QRgb color, quint32 level) const
{
    const Table& table = m_levels[level];
    return qRgb(table[(color >> 16U) & 255U], table[(color >> 8U) & 255U], table[color & 255U]);
}

QRgb LightRaster::onGround(quint32 node, QRgb ground) const
{
    return node == blackNode() ? kBlack : outlined(ground, node);
}

void LightRaster::compose(const std::vector<QRgb>& colors)
{
    if (!composeOpaque(colors)) {
        composeThrough(colors);
    }
}

/// The usual frame. False, with nothing drawn, where a colour isn't opaque.
bool LightRaster::composeOpaque(const std::vector<QRgb>& colors)
{
    const quint32 first = firstNode();
    QRgb all = kBlack;
    for (const quint32 number : m_used) {
        const Node& node = m_nodes[number - first];
        const QRgb color = colors[node.light];
        all &= color;
        m_values[number] = node.level == 0 ? color : outlined(color, node.level);
    }
    if ((all >> 24U) != 255U) {
        return false;
    }
    QRgb* const pixels = pixelsOf(&m_picture);
    const QRgb* const values = m_values.data();
    const quint32* shown = m_shown.data();
    for (const Run& run : m_runs) {
        QRgb* const to = pixels + run.first;
        for (quint32 i = 0; i < run.length; ++i) {
            to[i] = values[shown[i]];
        }
        shown += run.length;
    }
    return true;
}

/// A frame in which some light lets through what lies below it.
void LightRaster::composeThrough(const std::vector<QRgb>& colors)
{
    m_seesGround.assign(m_values.size(), 0);
    std::fill_n(m_seesGround.begin(), blackNode(), uchar(1));
    const quint32 first = firstNode();
    for (std::size_t i = 0; i < m_nodes.size(); ++i) { // what lies below comes first
        const Node& node = m_nodes[i];
        const QRgb color = colors[node.light];
        const bool opaque = (color >> 24U) == 255U;
        const bool sees = !opaque && m_seesGround[node.below] != 0;
        m_seesGround[first + i] = sees ? 1 : 0;
        if (!sees) {
            m_values[first + i] =
                outlined(opaque ? color : over(color, m_values[node.below]), node.level);
        }
    }
    QRgb* const pixels = pixelsOf(&m_picture);
    const auto* const ground = reinterpret_cast<const QRgb*>(m_ground.constBits());
    const quint32* shown = m_shown.data();
    for (const Run& run : m_runs) {
        for (quint32 pixel = run.first; pixel < run.first + run.length; ++pixel, ++shown) {
            quint32 number = *shown;
            m_chain.clear();
            while (isLight(number) && m_seesGround[number] != 0) {
                m_chain.push_back(number);
                number = nodeAt(number).below;
            }
            QRgb color =
                m_seesGround[number] != 0 ? onGround(number, ground[pixel]) : m_values[number];
            for (auto link = m_chain.rbegin(); link != m_chain.rend(); ++link) {
                const Node& node = nodeAt(*link);
                color = outlined(over(colors[node.light], color), node.level);
            }
            pixels[pixel] = color;
        }
    }
}
