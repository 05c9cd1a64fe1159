#pragma once

#include <QImage>
#include <QRect>
#include <QRgb>
#include <QSize>
#include <QTransform>

#include <array>
#include <cstddef>
#include <vector>

class QAbstractGraphicsShapeItem;
class QPainter;

/// A picture of many small shapes in which each pixel knows what covers it, so that new colours
/// cost one look-up a pixel instead of one painted shape a light.
///
/// Every shape is painted once, by a painter of the very geometry that the view's own has, on a
/// sheet of marking colours; what comes out tells for each pixel whether the brush reached it and
/// how many times the outline was blended over it. Thin outlines are blended in part, and the
/// painter's own blending is measured and kept as tables. What a pixel shows is then a node: a
/// shape's brush, a number of outlines over it, and the node below. Neighbouring pixels share
/// nodes.
class LightRaster
{
public:
    struct Geometry
    {
        QTransform view;   // scene to viewport
        QTransform device; // viewport to pixels of the paint device
        QSize size;        // of the paint device, in its pixels
        QRect area;        // pixels of the device that the viewport takes
        QImage::Format format = QImage::Format_Invalid; // of the device, 32 bits

        bool operator==(const Geometry& other) const;
        bool operator!=(const Geometry& other) const { return !(*this == other); }
    };

    /// An image that a painter treats as it treats the device of `geometry`.
    static QImage makeSheet(const Geometry& geometry);

    /// Works out what each pixel shows, items in painting order; hidden ones count for nothing.
    /// Items are ellipses or rectangles with the pen of the first one, moved but neither turned nor
    /// scaled. False, and nothing stands, where the painting does not come down to brush and
    /// outline as above, or where it would take unreasonable time or memory.
    bool build(const Geometry& geometry, const std::vector<QAbstractGraphicsShapeItem*>& items);
    /// What lies below all lights; opaque, of the size of the geometry's area.
    void setGround(const QImage& ground);
    /// Forgets everything.
    void clear();
    bool stands() const { return m_stands; }
    const Geometry& geometry() const { return m_geometry; }

    /// The picture with light i in colors[i], premultiplied. One that isn't opaque costs more.
    void compose(const std::vector<QRgb>& colors);
    /// As last composed.
    const QImage& picture() const { return m_picture; }

private:
    using Table = std::array<uchar, 256>;
    struct Node
    {
        quint32 light;
        quint32 level; // outlines over the brush
        quint32 below; // what shows through a brush that isn't opaque
    };
    struct Made // a node made for the light at hand, to be shared
    {
        quint32 from;
        quint32 mark;
        quint32 node;
    };
    struct Run
    {
        quint32 first; // pixel of the picture
        quint32 length;
    };
    struct Outlined // a pixel that only outlines reach
    {
        quint32 pixel;
        quint32 node;
    };

    quint32 blackNode() const { return static_cast<quint32>(m_levels.size()); }
    quint32 firstNode() const { return blackNode() + 1; }
    bool isLight(quint32 node) const { return node >= firstNode(); }
    const Node& nodeAt(quint32 node) const { return m_nodes[node - firstNode()]; }

    bool measureOutline(const QTransform& item, const QAbstractGraphicsShapeItem& sample);
    bool readMarks(quint32 light, const QRect& box, QRgb* sheet);
    quint32 stamped(quint32 light, quint32 under, bool filled, quint32 level);
    quint32 share(quint32 from, quint32 mark, const Node& node);
    void collectRuns();
    QRgb outlined(QRgb color, quint32 level) const;
    QRgb onGround(quint32 node, QRgb ground) const;
    bool composeOpaque(const std::vector<QRgb>& colors);
    void composeThrough(const std::vector<QRgb>& colors);

    Geometry m_geometry;
    bool m_stands = false;
    std::vector<Table> m_levels;      // [n][c]: c below n outlines; the last one changes no more
    std::array<int, 256> m_levelOf{}; // outlines that leave this of a full channel, -1 for none
    std::vector<Node> m_nodes;        // from firstNode() on; the numbers below are ground and black
    std::vector<quint32> m_top;       // node of each pixel of the area; only while building
    std::vector<Made> m_made;         // only while building
    std::vector<quint32> m_used;      // nodes that some pixel shows
    std::vector<Run> m_runs;          // pixels that show lights
    std::vector<quint32> m_shown;     // their nodes, run after run
    std::vector<Outlined> m_outlined;
    std::vector<QRgb> m_values;      // colour of each node in this frame
    std::vector<uchar> m_seesGround; // nodes without one colour of their own in this frame
    std::vector<quint32> m_chain;
    QImage m_ground;
    QImage m_picture;
};
