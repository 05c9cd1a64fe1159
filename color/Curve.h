#pragma once

#include <QtGlobal>

#include <memory>

/// A dimming curve of fixtures: tables from linear drive to channel level and back. A table that is
/// null is the identity. Ids: 0 linear, 1 normal, 2 tungsten.
class Curve
{
public:
    Curve() = default;
    virtual ~Curve() = default;
    Curve(const Curve&) = delete;
    Curve& operator=(const Curve&) = delete;

    /// 256 entries, linear to level at 8 bits; null for the identity.
    const quint8* lut8() const { return m_lut8.get(); }
    /// 256 entries, level to linear at 8 bits, built on first use; null for the identity. A level
    /// that lut8 never gives has the entry of the next lower one.
    const quint8* reverse8() const;
    /// 65536 entries, linear to level at 16 bits; null for the identity.
    const quint16* lut16() const { return m_lut16.get(); }

protected:
    /// Fills lut8 and lut16 from 256 anchors, the levels of the linear values 0, 256, ... 65280.
    virtual void buildTables(const quint16* anchors);

private:
    std::unique_ptr<quint8[]> m_lut8;
    mutable std::unique_ptr<quint8[]> m_reverse8;
    std::unique_ptr<quint16[]> m_lut16;
};

class GammaCurveVelaNormal final : public Curve
{
public:
    GammaCurveVelaNormal();
};

class GammaCurveTungsten final : public Curve
{
public:
    GammaCurveTungsten();
};
