#include "effects/SelectionEffect.h"

#include "effects/EffectSupport.h"
#include "engine/EffectXml.h"
#include "map/Controller.h"
#include "map/Group.h"
#include "map/GroupLayout.h"
#include "map/Light.h"
#include "map/MapModel.h"

namespace {
constexpr int kExpectedLights = 15000;
}

SelectionEffect::SelectionEffect(MapModel* model, quint64 gid, QDomElement* element)
    : Effect(model, gid)
{
    setType(QStringLiteral("Selection"));
    SelectionEffect::fromXml(element);
}

QDomElement SelectionEffect::toXml(QDomDocument doc) const
{
    QDomElement element = doc.createElement(effectKeyText(EffectKey::Effect));
    writeBase(doc, element);
    EffectSupport::append(doc, element, EffectKey::FgColor, m_fgColor);
    EffectSupport::append(doc, element, EffectKey::BgColor, m_bgColor);
    return element;
}

QHash<quint64, Light*> SelectionEffect::allLights() const
{
    return model() != nullptr ? model()->lightsHash() : QHash<quint64, Light*>();
}

bool SelectionEffect::compile()
{
    m_selected.clear();
    m_unentered = allLights();
    m_highlightRow = 0;
    m_highlightActive = false;
    setCompiled(true);
    return true;
}

void SelectionEffect::enterLights()
{
    if (m_unentered.isEmpty()) {
        return;
    }
    m_selected.reserve(kExpectedLights);
    for (auto light = m_unentered.cbegin(); light != m_unentered.cend(); ++light) {
        m_selected.insert(light.key(), false);
    }
    m_unentered.clear();
}

void SelectionEffect::updateLights()
{
    if (m_highlightActive) {
        highlightNextRow();
    }
    const int layer = static_cast<int>(priority());
    const QHash<quint64, Light*> lights = allLights();
    for (auto light = lights.cbegin(); light != lights.cend(); ++light) {
        const bool selected = m_selected.value(light.key(), false);
        light.value()->mixColor(selected ? m_fgColor : m_bgColor, layer);
    }
}

void SelectionEffect::highlightNextRow()
{
    const int rows = m_highlightLayout != nullptr ? m_highlightLayout->rows : 0;
    ++m_highlightRow; // before the row is used: the second one is shown first
    if (m_highlightRow >= rows) {
        m_highlightRow = 0;
    }
    clearSelection();
    if (rows == 0) {
        return;
    }
    for (int i = 0; i < m_highlightLayout->counts[m_highlightRow]; ++i) {
        const Light* const light = m_highlightLayout->lights[m_highlightRow][i];
        const auto entry = light != nullptr ? m_selected.find(light->uid()) : m_selected.end();
        if (entry != m_selected.end()) {
            entry.value() = true; // silently, unlike every other change
        }
    }
}

void SelectionEffect::fromXml(QDomElement* element)
{
    if (element == nullptr) {
        return;
    }
    readBase(*element);
    for (QDomNode node = element->firstChild(); !node.isNull(); node = node.nextSibling()) {
        switch (effectKey(node.nodeName())) {
        case EffectKey::FgColor:
            setFgColor(EffectSupport::toColor(EffectXml::valueOf(node), Qt::red));
            break;
        case EffectKey::BgColor:
            setBgColor(EffectSupport::toColor(EffectXml::valueOf(node), Qt::black));
            break;
        default:
            break;
        }
    }
}

void SelectionEffect::setFgColor(const VelaColor& color)
{
    m_fgColor = color;
    SelectionEffect::compile();
}

void SelectionEffect::setBgColor(const VelaColor& color)
{
    m_bgColor = color;
    SelectionEffect::compile();
}

void SelectionEffect::handleNewLight(qulonglong uid)
{
    if (model() != nullptr && model()->light(uid) != nullptr) {
        enterLights();
        m_selected.insert(uid, false);
    }
}

void SelectionEffect::handleUpdatedLight(qulonglong uid)
{
    Q_UNUSED(uid)
    SelectionEffect::compile();
}

void SelectionEffect::handleDeletedLight(qulonglong uid)
{
    enterLights();
    m_selected.remove(uid);
}

void SelectionEffect::handleClearedMap()
{
    m_selected.clear();
    m_unentered.clear();
    m_highlightActive = false; // the layout went with the map
}

void SelectionEffect::setLightSelected(qulonglong uid, bool s)
{
    m_highlightActive = false;
    enterLights();
    const auto entry = m_selected.find(uid);
    if (entry != m_selected.end()) {
        entry.value() = s;
        emit lightSelectionChanged(uid, s);
    }
}

void SelectionEffect::setGroupSelected(qulonglong uid, bool s)
{
    m_highlightActive = false;
    const GroupLayout* const layout = EffectSupport::findLayout(model(), uid);
    if (layout == nullptr) {
        return;
    }
    for (int row = 0; row < layout->rows; ++row) {
        for (int i = 0; i < layout->counts[row]; ++i) {
            if (layout->lights[row][i] != nullptr) {
                setLightSelected(layout->lights[row][i]->uid(), s);
            }
        }
    }
}

void SelectionEffect::setControllerSelected(qulonglong uid, bool s)
{
    m_highlightActive = false;
    const Controller* const controller = model() != nullptr ? model()->controller(uid) : nullptr;
    if (controller == nullptr) {
        return;
    }
    const QList<quint64> lights = controller->lightUidList();
    for (const quint64 light : lights) {
        setLightSelected(light, s);
    }
}

void SelectionEffect::highlightGroup(qulonglong uid)
{
    const GroupLayout* const layout = EffectSupport::findLayout(model(), uid);
    if (layout == nullptr) {
        return;
    }
    m_highlightLayout = layout;
    m_highlightRow = 0;
    m_highlightActive = true;
}

void SelectionEffect::clearSelection()
{
    selectEvery(false);
}

void SelectionEffect::selectAll()
{
    selectEvery(true);
}

void SelectionEffect::selectEvery(bool s)
{
    enterLights();
    for (bool& selected : m_selected) {
        selected = s;
    }
    const QHash<quint64, bool> told = m_selected; // a slot may change the selection meanwhile
    for (auto entry = told.cbegin(); entry != told.cend(); ++entry) {
        emit lightSelectionChanged(entry.key(), s);
    }
}
