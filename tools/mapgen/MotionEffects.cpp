#include "tools/mapgen/MotionEffects.h"

namespace {

/// Collects the keys of one effect in their order.
class Keys
{
public:
    Keys(const char* type, const QString& name)
    {
        m_made.type = QString::fromLatin1(type);
        m_made.name = name;
    }
    Keys& text(const QString& key, const QString& value)
    {
        m_made.parameters.append({key, value});
        return *this;
    }
    Keys& text(const char* key, const QString& value)
    {
        return text(QString::fromLatin1(key), value);
    }
    Keys& color(const char* key, const QColor& value)
    {
        return text(key, ShowEffects::rgbText(value));
    }
    Keys& whole(const char* key, int value) { return text(key, QString::number(value)); }
    Keys& flag(const char* key, bool value) { return whole(key, value ? 1 : 0); }
    Keys& real(const char* key, double value) { return text(key, QString::number(value, 'g', 6)); }
    ShowEffect lasting(double cycle)
    {
        m_made.cycleTime = static_cast<quint32>(cycle * 1000.0);
        return m_made;
    }

private:
    ShowEffect m_made;
};

} // namespace

namespace ShowEffects {

ShowEffect chasingRainbow(const QString& name, const QColor& start, double cycle, double step)
{
    return Keys("Chasing Rainbow", name)
        .color("startcolor", start)
        .flag("reversecolor", false)
        .flag("reversedir", false)
        .real("groupoffset", step)
        .real("cycletime", cycle)
        .lasting(cycle);
}

ShowEffect customRainbow(const QString& name, const QVector<RainbowStop>& stops, double step)
{
    Keys keys("Custom Rainbow", name);
    keys.real("groupoffset", step);
    double cycle = 0.0;
    for (int i = 0; i < stops.size(); ++i) {
        const RainbowStop& stop = stops.at(i);
        const QString index = QString::number(i);
        keys.text(QStringLiteral("color_") + index, rgbText(stop.color));
        keys.text(QStringLiteral("duration_") + index, QString::number(stop.hold, 'g', 6));
        keys.text(QStringLiteral("fade_") + index, QString::number(stop.fade, 'g', 6));
        keys.text(QStringLiteral("white_") + index, QStringLiteral("0"));
        keys.text(QStringLiteral("trans_") + index, QStringLiteral("0"));
        cycle += stop.hold + stop.fade;
    }
    return keys.lasting(cycle);
}

ShowEffect randomColor(const QString& name, const QColor& start, double time, double fade,
                       double step)
{
    constexpr int kColors = 24;
    return Keys("Random Color", name)
        .color("startcolor", start)
        .real("time", time)
        .real("fadetime", fade)
        .whole("cyclecount", kColors)
        .real("offset", step)
        .lasting(kColors * time);
}

ShowEffect streak(const QString& name, const QColor& color, double cycle, StreakSpec spec)
{
    return Keys("Streak", name)
        .color("fgcolor", color)
        .color("bgcolor", Qt::black)
        .whole("width", spec.width)
        .whole("fwdtail", spec.forwardTail)
        .whole("revtail", spec.reverseTail)
        .flag("reverse", spec.reverse)
        .real("cycletime", cycle)
        .flag("fgtrans", false)
        .flag("bgtrans", true)
        .flag("wrap", spec.wrap)
        .lasting(cycle);
}

ShowEffect sweep(const QString& name, const QColor& color, double cycle, bool reverse)
{
    return Keys("Sweep", name)
        .color("fgcolor", color)
        .color("bgcolor", Qt::black)
        .real("cycletime", cycle)
        .flag("reverse", reverse)
        .flag("fgtrans", false)
        .flag("bgtrans", true)
        .lasting(cycle);
}

ShowEffect sparkle(const QString& name, const QColor& color, int density, int decay)
{
    constexpr double kBursts = 10.0;
    return Keys("Sparkle", name)
        .whole("decay", decay)
        .whole("density", density)
        .real("cycletime", kBursts)
        .color("sparklecolor", color)
        .color("bgcolor", color) // clear at rest, so that a spark dies away in its own colour
        .flag("sparkletrans", false)
        .flag("bgtrans", true)
        .lasting(kBursts);
}

ShowEffect sparkleGroup(const QString& name, const QColor& color, const QColor& background,
                        int density, int decay)
{
    constexpr double kBursts = 10.0;
    return Keys("Sparkle Group", name)
        .whole("decay", decay)
        .whole("density", density)
        .real("cycletime", kBursts)
        .text("sparklecolor", color.name())
        .text("bgcolor", background.name())
        .flag("sparkletrans", false)
        .flag("bgtrans", false)
        .lasting(kBursts);
}

ShowEffect imageScroll(const QString& name, const QString& file, double cycle, ImagePlace from,
                       ImagePlace to, bool clear)
{
    return Keys("Image Scroll", name)
        .text("imagefile", file)
        .real("cycletime", cycle)
        .real("startx", from.x)
        .real("starty", from.y)
        .real("endx", to.x)
        .real("endy", to.y)
        .real("startscale", from.scale)
        .real("endscale", to.scale)
        .flag("smooth", true)
        .color("transcolor", Qt::black)
        .flag("transenabled", clear)
        .color("bgcolor", Qt::black)
        .lasting(cycle);
}

ShowEffect animation(const QString& name, const QString& folder, int framesPerSecond,
                     int frameCount, bool clear)
{
    return Keys("Animation", name)
        .text("animationdir", folder)
        .flag("preload", true)
        .whole("fps", framesPerSecond)
        .real("xoffset", 0.0)
        .real("yoffset", 0.0)
        .real("scale", 1.0)
        .color("transcolor", Qt::black)
        .flag("transenabled", clear)
        .flag("smooth", !clear) // else black would be mixed into the edges
        .lasting(static_cast<double>(frameCount) / framesPerSecond);
}

ShowEffect burst(const QString& name, double cycle, int width, QPointF centre)
{
    return Keys("XYBurst", name)
        .real("cycletime", cycle)
        .whole("width", width)
        .real("centerx", centre.x())
        .real("centery", centre.y())
        .flag("cycledir", false)
        .flag("rainbowdir", false)
        .lasting(cycle);
}

ShowEffect spiral(const QString& name, double cycle, int twist, int arms, QPointF centre,
                  bool clockwise)
{
    return Keys("XYSpiral", name)
        .real("cycletime", cycle)
        .whole("twist", twist)
        .whole("number", arms)
        .flag("clockwise", clockwise)
        .real("centerx", centre.x())
        .real("centery", centre.y())
        .lasting(cycle);
}

ShowEffect text(const QString& name, const QString& words, const QColor& background, double cycle)
{
    return Keys("Text", name)
        .text("text", words)
        .text("font", QStringLiteral("DejaVu Sans"))
        .whole("fontsize", 100)
        .flag("bold", true)
        .flag("italic", false)
        .flag("smooth", false)
        .text("fgcolor", QColor(Qt::white).name())
        .flag("fgtrans", false)
        .text("bgcolor", background.name())
        .flag("bgtrans", false)
        .real("cycletime", cycle)
        .lasting(cycle);
}

ShowEffect selection(const QString& name, const QColor& background)
{
    return Keys("Selection", name)
        .color("fgcolor", Qt::white)
        .color("bgcolor", background)
        .lasting(1.0);
}

} // namespace ShowEffects
