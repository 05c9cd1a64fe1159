#pragma once

#include "color/VelaColor.h"

#include <QColor>

/// A colour as the outputs get it and as the screen shows it.
struct PaintedColor
{
    VelaColor color;
    QColor screen;
};

/// The two colours of a moving edge in one frame, and what lies between them.
class EdgeColors
{
public:
    /// `transparency` of the effect: scales every alpha by 1.0 - transparency where it is above
    /// 0.0; one above 1.0 counts as 1.0.
    EdgeColors(const PaintedColor& fg, const PaintedColor& bg, bool fgTransparent,
               bool bgTransparent, double transparency);

    /// The foreground by itself, at that alpha, 0..1; invisible if it is set to be transparent.
    PaintedColor foreground(double alpha) const;
    PaintedColor background(double alpha) const;
    /// `t` of the way from the foreground to the background. A transparent side takes the alpha
    /// with it: `fgShare` is what a transparent background leaves, and `t` what a transparent
    /// foreground does.
    PaintedColor between(double t, double fgShare) const;

private:
    PaintedColor solid(const PaintedColor& side, double alpha) const;
    void fade(PaintedColor* painted) const;

    PaintedColor m_fg;
    PaintedColor m_bg;
    VelaColor m_fgShown; // the screen's 8 bits
    VelaColor m_bgShown;
    bool m_fgTransparent;
    bool m_bgTransparent;
    bool m_fades;
    double m_opacity;
};
