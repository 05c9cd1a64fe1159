#pragma once

#include <QColor>
#include <QImage>
#include <QSlider>

#include <functional>

class QMouseEvent;
class QPainter;
class QPaintEvent;
class QPointF;

namespace VelaColorPickerLib {

/// A marker that shows on every colour: a black ring around a white one, with a dot in its middle
/// where `dotted`. `radius` is that of the outer ring, in pixels.
void paintMarkerRings(QPainter* painter, const QPointF& center, double radius, bool dotted);

/// A horizontal slider that paints along its track what each value would give. Mouse (a click goes
/// straight to its place), wheel and keyboard as of a QSlider.
class ColorTrack : public QSlider
{
    Q_OBJECT
public:
    using ColorAt = std::function<QColor(int value)>;

    explicit ColorTrack(QWidget* parent = nullptr);

    /// What the track shows at a value of the slider's range.
    void setColorAt(ColorAt colorAt);
    /// At how many evenly spread values the colour is asked for, with a gradient between them; 0
    /// (at first): at each pixel.
    void setStops(int stops);
    /// To be called when the colours are no longer what they were.
    void refresh();

    /// The painted bar, and the places of its values within the widget.
    QRect bar() const;
    int valueAt(int x) const;
    int xOf(int value) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void buildTrack(int width);
    int barHeight() const;

    ColorAt m_colorAt;
    int m_stops = 0;
    QImage m_track; // one row; null: to be built
};

} // namespace VelaColorPickerLib
