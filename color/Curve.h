#pragma once

#include <QtGlobal>

#include <memory>

/// A dimming curve of fixtures as tables: the curve itself (forward) and its inverse. A table that
/// is null is the identity. Ids: 0 linear, 1 normal, 2 tungsten.
class Curve
{
public:
    Curve() = default;
    virtual ~Curve() = default;
    Curve(const Curve&) = delete;
    Curve& operator=(const Curve&) = delete;

    /// 256 entries, forward; null for the identity.
    const quint8* lut8() const { return m_lut8.get(); }
    /// 256 entries, the inverse of lut8, built on first use; null for the identity. Of several
    /// values with one lut8 entry the highest is taken; an entry that lut8 never gives has the
    /// value of the next lower one.
    const quint8* reverse8() const;
    /// 65536 entries, forward; null for the identity.
    const quint16* lut16() const { return m_lut16.get(); }

protected:
    /// Called by the constructor of a class that has tables; the linear curve has none.
    virtual void buildTables() {}
    /// Fills lut8 and lut16 from 256 anchors, the entries of lut16 at 0, 256, ... 65280.
    void fillTables(const quint16* anchors);

private:
    std::unique_ptr<quint8[]> m_lut8;
    mutable std::unique_ptr<quint8[]> m_reverse8;
    std::unique_ptr<quint16[]> m_lut16;
};

/// The dimming curve of colour fixtures, close to a quadratic.
class GammaCurveVelaNormal final : public Curve
{
public:
    GammaCurveVelaNormal();

protected:
    void buildTables() override;
};

/// Emulates the dimming of a tungsten lamp, close to the power 2.5.
class GammaCurveTungsten final : public Curve
{
public:
    GammaCurveTungsten();

protected:
    void buildTables() override;
};
