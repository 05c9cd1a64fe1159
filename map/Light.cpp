#include "map/Light.h"

#include "map/Controller.h"
#include "map/LightPool.h"
#include "map/MapModel.h"

#include <QHostAddress>

#include <new>
#include <tuple>

namespace {

LightPool& pool()
{
    static LightPool instance(sizeof(Light), alignof(Light));
    return instance;
}

/// The sanitizers watch each block by itself, and a class of its own may be larger.
bool isPooled([[maybe_unused]] std::size_t size)
{
#ifdef FORGE_SANITIZE
    return false;
#else
    return size == sizeof(Light);
#endif
}

} // namespace

Light::~Light() = default;

void* Light::operator new(std::size_t size)
{
    return isPooled(size) ? pool().take() : ::operator new(size, std::align_val_t(alignof(Light)));
}

void Light::operator delete(void* light, std::size_t size)
{
    if (isPooled(size)) {
        pool().giveBack(light);
    } else {
        ::operator delete(light, std::align_val_t(alignof(Light)));
    }
}

bool Light::lessThan(const Light& other) const
{
    const Controller* const mine =
        m_model == nullptr ? nullptr : m_model->controller(m_controllerUid);
    const Controller* const theirs =
        m_model == nullptr ? nullptr : m_model->controller(other.m_controllerUid);
    if (mine == nullptr || theirs == nullptr) {
        return false;
    }
    const QString key = QStringLiteral("DMX Address");
    const auto order = [&key](const Light& light, const Controller& controller) {
        return std::make_tuple(controller.address().toIPv4Address(), light.port(),
                               light.property(key).toLongLong(), light.serialNumber());
    };
    return order(*this, *mine) < order(other, *theirs);
}

void Light::attach(MapModel* model)
{
    if (m_model != nullptr) {
        disconnect(this, &Light::updatedLight, m_model, nullptr);
        disconnect(this, &Light::updatedLightPosition, m_model, nullptr);
        disconnect(this, &Light::msg, m_model, nullptr);
    }
    if (model == nullptr) {
        return;
    }
    m_model = model;
    connect(this, &Light::updatedLight, model, &MapModel::updatedLight);
    connect(this, &Light::updatedLightPosition, model, &MapModel::updatedLightPosition);
    connect(this, &Light::msg, model, &MapModel::msg);
}

QString Light::property(const QString& key, const QString& fallback) const
{
    if (m_addressIsChannel && key == QLatin1String("DMX Address")) {
        return QString::number(static_cast<qint64>(channel()) + 1);
    }
    return m_properties.value(key, fallback);
}
