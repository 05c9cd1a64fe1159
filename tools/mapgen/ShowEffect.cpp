#include "tools/mapgen/ShowEffect.h"

#include <algorithm>
#include <cmath>
#include <utility>

ShowEffect& ShowEffect::on(quint64 group)
{
    gid = group;
    return *this;
}

ShowEffect& ShowEffect::layer(quint32 value)
{
    priority = value;
    return *this;
}

ShowEffect& ShowEffect::fading(quint32 in, quint32 out)
{
    fadeIn = in;
    fadeOut = out;
    return *this;
}

ShowEffect& ShowEffect::at(quint32 time)
{
    startRule = Fixed;
    startFixedTime = time;
    return *this;
}

ShowEffect& ShowEffect::withStartOf(quint32 other, double offset)
{
    startRule = Linked;
    startLinkEid = other;
    startLinkStart = true;
    startLinkOffset = offset;
    return *this;
}

ShowEffect& ShowEffect::afterEndOf(quint32 other, double offset)
{
    withStartOf(other, offset);
    startLinkStart = false;
    return *this;
}

ShowEffect& ShowEffect::lasting(quint32 length)
{
    endRule = Fixed;
    endFixedTime = length;
    return *this;
}

ShowEffect& ShowEffect::untilStartOf(quint32 other, double offset)
{
    endRule = Linked;
    endLinkEid = other;
    endLinkStart = true;
    endLinkOffset = offset;
    return *this;
}

ShowEffect& ShowEffect::untilEndOf(quint32 other, double offset)
{
    untilStartOf(other, offset);
    endLinkStart = false;
    return *this;
}

ShowEffect& ShowEffect::cycles(quint32 count)
{
    endRule = Cycles;
    endCycleCount = count;
    return *this;
}

quint32 ShowEffect::add(ShowEffect effect)
{
    effect.eid = static_cast<quint32>(children.size()) + 1;
    children.push_back(std::move(effect));
    return children.back().eid;
}

namespace {

ShowEffect effect(const char* type, const QString& name)
{
    ShowEffect made;
    made.type = QString::fromLatin1(type);
    made.name = name;
    return made;
}

QString real(double value)
{
    return QString::number(value, 'g', 6);
}

QString flag(bool value)
{
    return value ? QStringLiteral("1") : QStringLiteral("0");
}

/// The five keys of a white, each ending in `suffix`.
void appendWhite(ShowEffect* target, WhiteSpec white, const char* suffix)
{
    const QString tail = QString::fromLatin1(suffix);
    target->parameters.append(
        {QStringLiteral("temperature") + tail, QString::number(white.temperature)});
    target->parameters.append(
        {QStringLiteral("intensity") + tail, QString::number(white.intensity)});
    target->parameters.append({QStringLiteral("inputType") + tail, QStringLiteral("0")});
    target->parameters.append({QStringLiteral("warm") + tail, QStringLiteral("127")});
    target->parameters.append({QStringLiteral("cool") + tail, QStringLiteral("127")});
}

void appendFade(ShowEffect* target, double seconds, bool fromClear, bool toClear)
{
    target->parameters.append({QStringLiteral("starttrans"), flag(fromClear)});
    target->parameters.append({QStringLiteral("endtrans"), flag(toClear)});
    target->parameters.append({QStringLiteral("time"), real(seconds)});
    target->cycleTime = static_cast<quint32>(seconds * 1000.0);
}

quint32 component16(int value)
{
    return static_cast<quint32>(value) * 257U;
}

} // namespace

namespace ShowEffects {

QString rgbText(const QColor& color, double alpha)
{
    return QString::asprintf(
        "aRgb;1;0;#%04x%04x%04x%04x", static_cast<quint32>(std::lround(alpha * 65535.0)),
        component16(color.red()), component16(color.green()), component16(color.blue()));
}

QString yxyText(double level, double x, double y)
{
    return QString::asprintf("aYxy;1;0;65535;%f;%f;%f", level, x, y);
}

ShowEffect timeline(const QString& name)
{
    return effect("Meta Effect", name);
}

ShowEffect fixedColor(const QString& name, const QString& color)
{
    ShowEffect made = effect("Fixed Color", name);
    made.parameters.append({QStringLiteral("color"), color});
    return made;
}

ShowEffect crossFade(const QString& name, const QString& from, const QString& to, double seconds,
                     bool fromClear, bool toClear)
{
    ShowEffect made = effect("Cross Fade", name);
    made.parameters.append({QStringLiteral("startcolor"), from});
    made.parameters.append({QStringLiteral("endcolor"), to});
    appendFade(&made, seconds, fromClear, toClear);
    return made;
}

ShowEffect fixedWhite(const QString& name, WhiteSpec white)
{
    ShowEffect made = effect("White Fixed Color", name);
    appendWhite(&made, white, "");
    return made;
}

ShowEffect whiteCrossFade(const QString& name, WhiteSpec from, WhiteSpec to, double seconds,
                          bool fromClear, bool toClear)
{
    ShowEffect made = effect("White Cross Fade", name);
    appendWhite(&made, from, "Start");
    appendWhite(&made, to, "End");
    appendFade(&made, seconds, fromClear, toClear);
    return made;
}

QColor along(const QVector<QColor>& stops, double t)
{
    const double place = qBound(0.0, t, 1.0) * (stops.size() - 1);
    const int index = std::min(static_cast<int>(place), stops.size() - 2);
    const double rest = place - index;
    const QColor& a = stops.at(index);
    const QColor& b = stops.at(index + 1);
    const auto mix = [rest](int from, int to) {
        return static_cast<int>(std::lround(from + (to - from) * rest));
    };
    return QColor(mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue()));
}

} // namespace ShowEffects
