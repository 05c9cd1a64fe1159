#pragma once

#include "color/VelaColor.h"
#include "map/LightPosition.h"

#include <QColor>
#include <QObject>
#include <QString>
#include <QtGlobal>

class DeviceDictionary;
class MapModel;
class PropertyMapper;
class QDomNode;

/// One addressable fixture of the map: effects paint into it, its controller asks it for bytes.
class Light : public QObject
{
    Q_OBJECT
public:
    /// Reads the light from its element of the map file; null leaves every default.
    explicit Light(QDomNode* element);
    ~Light() override;

    /// Sort order: controllers' IPv4 addresses, port, DMX address, serial number. False where
    /// either light's controller is missing.
    virtual bool lessThan(const Light& other) const;

    /// Connects the light's signals to those of `model`; null disconnects and keeps the model.
    void attach(MapModel* model);

    // --- Painting: once per frame and layer.
    /// Composites `c` over what has been painted with a lower priority, or averages it with what
    /// has the same one; drops it below a higher one.
    void mixColor(const VelaColor& c, int priority);
    /// The same for the simulation's colour. To be called behind mixColor, whose count it reads.
    void mixSimColor(const QColor& q, int priority);
    /// Keeps the painted colour for the next frame (`store`), or puts the kept one over this frame.
    void carryOver(bool store);
    /// Alpha of the painted colour, 0..1.
    void setAlpha(double a);
    /// Writes the light's bytes at its channel. Writes nothing for an invalid colour, or when the
    /// light would begin below 0 or end past `size`, in bytes.
    void writeDmx(quint8* buffer, int size);
    /// Ends a frame: valid opaque black, no layers.
    void reset();
    /// The painted colour, writable.
    VelaColor& mixColorRef();
    const QColor& simColor() const;
    bool hasSimColor() const;
    bool isPainted() const;

    quint64 uid() const;
    const QString& name() const;
    /// Port of its controller, counted from 0.
    quint8 port() const;
    quint32 lightNumber() const;
    quint64 controllerUid() const;
    LightPosition position() const;
    /// The number that picks the simulation's shape; -1 where the file's did not parse.
    qint32 fixtureCode() const;
    quint64 serialNumber() const;
    const QString& deviceName() const;
    bool forwardFlag() const;
    int tintweaveProfileId() const;
    int tintweaveIoMode() const;
    quint32 ioModeSet() const;
    quint32 ledChemistry() const;
    int channelCount() const;
    /// Bytes that the light occupies in the port buffer, from `channel()` on.
    int footprint() const;
    /// Start offset in the port buffer, counted from 0.
    int channel() const;
    /// Display value of a property by its display name, or `fallback`.
    QString property(const QString& key, const QString& fallback = QString()) const;
    /// Settles the layout anew and returns the index of the last byte (one less than the index
    /// after the light).
    int lastChannel();

signals:
    void msg(const QString& s);
    void updatedLight(qulonglong serialNumber); // carries the uid
    void updatedLightPosition(qulonglong serialNumber);
    void updatedLightProperty(qulonglong serialNumber, const QString& key, const QString& value);
};
