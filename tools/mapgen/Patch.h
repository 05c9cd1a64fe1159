#pragma once

#include "tools/mapgen/FixtureTypes.h"
#include "tools/mapgen/Installation.h"

#include <QHash>
#include <QPointF>

/// Builds an installation: hands out uids, serial numbers and channels.
class Patch
{
public:
    static constexpr int kPortBytes = 512;
    /// The bytes of a port that fit in one unicast frame, which runs 15 bytes past the last one
    /// in use and never past 512.
    static constexpr int kFrameBytes = 497;

    Patch(const QString& imageFile, bool postSync);

    /// Adds a controller with ports numbered 1 to `portCount` and returns its index. `spec` gives
    /// the rest; its uid and ports are overwritten.
    int addController(ControllerSpec spec, int portCount);
    /// Adds a light, its centre on the plan at `centre` in pixels, behind the last light of the
    /// port, counted from 0, and a leaf group of the same uid. 0, and nothing is added, when the
    /// controller or port doesn't exist, the light would end past byte 512, or the product's
    /// serial numbers are used up.
    quint64 addLight(int controller, int port, const FixtureType& type, const QString& name,
                     QPointF centre);
    /// Adds a group of `kind` over the groups `children` and returns its uid.
    quint64 addGroup(GroupSpec::Kind kind, const QString& name, const QVector<quint64>& children);

    const Installation& installation() const { return m_installation; }

private:
    Installation m_installation;
    QVector<QVector<int>> m_used;         // bytes in use, by controller and port
    QHash<quint64, quint64> m_nextSerial; // by the product's first serial number
};
