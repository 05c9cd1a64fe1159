#include "effects/CustomRainbowEffect.h"

#include "color/DisplayColor.h"
#include "color/Numeric.h"
#include "effects/EffectSupport.h"
#include "effects/FadeFactor.h"
#include "engine/EffectXml.h"
#include "map/GroupLayout.h"

#include <algorithm>

namespace {

quint32 lengthMs(const CustomRainbowEntry& entry)
{
    return wrapU32((entry.fade + entry.duration) * 1000.0);
}

quint32 roundedMs(double seconds)
{
    return wrapU32(seconds * 1000.0 + 0.5);
}

} // namespace

CustomRainbowEffect::CustomRainbowEffect(MapModel* model, quint64 gid, QDomElement* element)
    : Effect(model, gid)
{
    setType(QStringLiteral("Custom Rainbow"));
    CustomRainbowEffect::fromXml(element);
}

CustomRainbowEffect::~CustomRainbowEffect() = default;

QDomElement CustomRainbowEffect::toXml(QDomDocument doc) const
{
    QDomElement element = doc.createElement(effectKeyText(EffectKey::Effect));
    writeBase(doc, element);
    EffectXml::append(doc, element, EffectKey::GroupOffset, m_groupOffset);
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        const CustomRainbowEntry& entry = *m_entries[i];
        const auto append = [&](const char* prefix, const QString& value) {
            EffectXml::appendText(doc, element, QLatin1String(prefix) + QString::number(i), value);
        };
        append("color_", entry.color.toString());
        append("duration_", QString::number(entry.duration, 'g', 6));
        append("fade_", QString::number(entry.fade, 'g', 6));
        append("white_", QString::number(entry.white));
        append("trans_", QString::number(entry.trans, 'g', 6));
    }
    return element;
}

bool CustomRainbowEffect::compile()
{
    m_layout = EffectSupport::findLayout(model(), gid());
    m_cycleLength = cycleTime();
    emit cycleTimeChanged(m_cycleLength);
    setCompiled(true);
    return true;
}

void CustomRainbowEffect::updateParts()
{
    m_arePartsStale = false;
    quint32 sum = 0;
    quint32 greatest = 0;
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        const CustomRainbowEntry& entry = *m_entries[i];
        Part& part = m_parts[i];
        part.color = entry.color;
        part.shown = VelaColor(toDisplayQColor(entry.color));
        part.held = interpolate(entry.color, entry.color, 1.0);
        part.heldScreen = toDisplayQColor(interpolate(part.shown, part.shown, 1.0));
        part.fadeMs = entry.fade * 1000.0;
        sum += roundedMs(entry.duration);
        greatest = std::max(greatest, sum);
        m_ends[2 * i] = greatest;
        sum += roundedMs(entry.fade);
        greatest = std::max(greatest, sum);
        m_ends[2 * i + 1] = greatest;
    }
}

void CustomRainbowEffect::updateLights()
{
    if (m_cycleLength == 0 || m_layout == nullptr || m_parts.empty()) {
        return;
    }
    if (m_arePartsStale) {
        updateParts();
    }
    const quint32 e = static_cast<quint32>(elapsed());
    if (m_cycleLength <= e) {
        restartFromLast();
    }
    const double shift = m_groupOffset * 1000.0;
    const int layer = static_cast<int>(priority());
    // What the rows before have left stands where no entry takes a row's time: the ends are
    // rounded each, the length of the cycle is cut. Before any, that is an invalid colour.
    const VelaColor none;
    const QColor noneScreen = toDisplayQColor(none);
    VelaColor c = interpolate(none, none, 1.0);
    QColor q = EffectSupport::qInterpolate(noneScreen, noneScreen, 1.0);
    EffectSupport::fadeAlpha(*this, c, q);
    std::size_t shownEnd = m_ends.size();
    double shownFactor = 0.0;

    quint32 t = e % m_cycleLength;
    for (int row = 0; row < m_layout->rows; ++row) {
        t = wrapU32(shift + t) % m_cycleLength;
        const auto found = std::upper_bound(m_ends.cbegin(), m_ends.cend(), t);
        const std::size_t end = static_cast<std::size_t>(found - m_ends.cbegin());
        if (end < m_ends.size()) {
            const std::size_t from = end / 2;
            const Part& part = m_parts[from];
            const bool isHeld = end % 2 == 0;
            const double factor = isHeld ? 0.0 : fadeFactor(*found - t, part.fadeMs);
            if (end != shownEnd || factor != shownFactor) {
                shownEnd = end;
                shownFactor = factor;
                if (isHeld) {
                    c = part.held;
                    q = part.heldScreen;
                } else {
                    const Part& next = m_parts[from + 1 == m_parts.size() ? 0 : from + 1];
                    c = interpolate(part.color, next.color, 1.0 - factor);
                    q = toDisplayQColor(interpolate(part.shown, next.shown, 1.0 - factor));
                }
                EffectSupport::fadeAlpha(*this, c, q);
            }
        }
        EffectSupport::paintRow(*m_layout, row, c, q, layer);
    }
}

void CustomRainbowEffect::fromXml(QDomElement* element)
{
    if (element == nullptr) {
        return;
    }
    readBase(*element);
    for (QDomNode node = element->firstChild(); !node.isNull(); node = node.nextSibling()) {
        const QString key = node.nodeName();
        if (effectKey(key) == EffectKey::GroupOffset) {
            m_groupOffset = EffectXml::toDouble(EffectXml::valueOf(node), 1.0);
            compile();
        } else if (key.contains(QLatin1Char('_'))) {
            readEntryKey(key, EffectXml::valueOf(node));
        }
    }
}

/// A key such as "color_0". One that counts on from the entries there are begins the next.
void CustomRainbowEffect::readEntryKey(const QString& key, const QString& value)
{
    const int index = key.mid(key.lastIndexOf(QLatin1Char('_')) + 1).toInt();
    const QString name = key.left(key.indexOf(QLatin1Char('_')));
    if (index >= 0 && static_cast<std::size_t>(index) == m_entries.size()) {
        addEntry(CustomRainbowEntry());
    }
    if (name.contains(QLatin1String("color"))) {
        setColor(index, EffectSupport::toColor(value, Qt::red));
    } else if (name.contains(QLatin1String("duration"))) {
        setDuration(index, EffectXml::toDouble(value, 0.0));
    } else if (name.contains(QLatin1String("fade"))) {
        setFade(index, EffectXml::toDouble(value, 0.0));
    } else if (name.contains(QLatin1String("white"))) {
        setWhite(index, EffectXml::toUInt(value, 0));
    } else if (name.contains(QLatin1String("trans"))) {
        setTrans(index, EffectXml::toDouble(value, 0.0));
    }
}

void CustomRainbowEffect::addEntry(const CustomRainbowEntry& entry)
{
    m_entries.push_back(std::make_unique<CustomRainbowEntry>(entry));
    m_entriesMs += lengthMs(entry);
    m_parts.resize(m_entries.size());
    m_ends.resize(2 * m_entries.size());
    m_arePartsStale = true;
    compile();
}

void CustomRainbowEffect::removeEntry(int i)
{
    const CustomRainbowEntry* const entry = entryAt(i);
    if (entry != nullptr) {
        m_entriesMs -= lengthMs(*entry);
        m_entries.erase(m_entries.begin() + i);
        m_parts.resize(m_entries.size());
        m_ends.resize(2 * m_entries.size());
        m_arePartsStale = true;
    }
    compile();
}

CustomRainbowEntry* CustomRainbowEffect::entryAt(int i)
{
    return i >= 0 && static_cast<std::size_t>(i) < m_entries.size()
               ? m_entries[static_cast<std::size_t>(i)].get()
               : nullptr;
}

void CustomRainbowEffect::setColor(int i, const VelaColor& color)
{
    CustomRainbowEntry* const entry = entryAt(i);
    if (entry != nullptr) {
        entry->color = color;
        m_arePartsStale = true;
        applyTimeRule();
    }
}

template <typename Change>
void CustomRainbowEffect::changeTimes(int i, Change change)
{
    CustomRainbowEntry* const entry = entryAt(i);
    if (entry != nullptr) {
        m_entriesMs -= lengthMs(*entry);
        change(*entry);
        m_entriesMs += lengthMs(*entry);
        m_arePartsStale = true;
        applyTimeRule();
    }
    m_cycleLength = cycleTime();
    emit cycleTimeChanged(m_cycleLength);
}

void CustomRainbowEffect::setDuration(int i, double seconds)
{
    changeTimes(i, [seconds](CustomRainbowEntry& entry) { entry.duration = seconds; });
}

void CustomRainbowEffect::setFade(int i, double seconds)
{
    changeTimes(i, [seconds](CustomRainbowEntry& entry) { entry.fade = seconds; });
}

void CustomRainbowEffect::setTrans(int i, double trans)
{
    CustomRainbowEntry* const entry = entryAt(i);
    if (entry != nullptr) {
        entry->trans = trans;
    }
}

void CustomRainbowEffect::setWhite(int i, quint32 white)
{
    CustomRainbowEntry* const entry = entryAt(i);
    if (entry != nullptr && white < 256) {
        entry->white = white;
    }
}

VelaColor CustomRainbowEffect::color(int i) const
{
    return i >= 0 && static_cast<std::size_t>(i) < m_entries.size()
               ? m_entries[static_cast<std::size_t>(i)]->color
               : VelaColor(Qt::black);
}

QList<const CustomRainbowEntry*> CustomRainbowEffect::entryList() const
{
    QList<const CustomRainbowEntry*> list;
    list.reserve(static_cast<int>(m_entries.size()));
    for (const auto& entry : m_entries) {
        list.append(entry.get());
    }
    return list;
}
