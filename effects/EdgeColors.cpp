#include "effects/EdgeColors.h"

#include "color/DisplayColor.h"

#include <algorithm>

EdgeColors::EdgeColors(const PaintedColor& fg, const PaintedColor& bg, bool fgTransparent,
                       bool bgTransparent, double transparency)
    : m_fg(fg)
    , m_bg(bg)
    , m_fgShown(fg.screen)
    , m_bgShown(bg.screen)
    , m_fgTransparent(fgTransparent)
    , m_bgTransparent(bgTransparent)
    , m_fades(transparency > 0.0)
    , m_opacity(std::max(0.0, 1.0 - transparency))
{}

PaintedColor EdgeColors::foreground(double alpha) const
{
    return solid(m_fg, m_fgTransparent ? 0.0 : alpha);
}

PaintedColor EdgeColors::background(double alpha) const
{
    return solid(m_bg, m_bgTransparent ? 0.0 : alpha);
}

PaintedColor EdgeColors::between(double t, double fgShare) const
{
    double share = 1.0;
    if (m_fgTransparent) {
        share = m_bgTransparent ? 0.0 : t;
    } else if (m_bgTransparent) {
        share = fgShare;
    }
    PaintedColor painted;
    painted.color = interpolate(m_fg.color, m_bg.color, t);
    painted.color.setAlphaF(painted.color.alphaF() * share);
    VelaColor shown = interpolate(m_fgShown, m_bgShown, t);
    shown.setAlphaF(painted.color.alphaF());
    painted.screen = toDisplayQColor(shown);
    fade(&painted);
    return painted;
}

PaintedColor EdgeColors::solid(const PaintedColor& side, double alpha) const
{
    PaintedColor painted = side;
    painted.color.setAlphaF(alpha);
    painted.screen.setAlphaF(painted.color.alphaF());
    fade(&painted);
    return painted;
}

void EdgeColors::fade(PaintedColor* painted) const
{
    if (m_fades) {
        painted->color.setAlphaF(painted->color.alphaF() * m_opacity);
        painted->screen.setAlphaF(painted->screen.alphaF() * m_opacity);
    }
}
