#pragma once

#include <QByteArray>
#include <QHash>
#include <QHostAddress>
#include <QList>
#include <QObject>
#include <QString>
#include <QtGlobal>

#include <array>
#include <memory>
#include <vector>

class CITPClient;
class DmxRecording;
class Light;
class MapModel;
class MapNode;
class QDomNode;
class Talvis;

/// One lighting controller of the network: owns a universe buffer for each of its ports, knows the
/// lights on it, and turns a finished frame into packets.
class Controller : public QObject
{
    Q_OBJECT
public:
    enum Type : int { IpController = 2, BroadcastController = 3 };
    enum Mode : int { LiveMode = 0, RecordingMode = 1 };

    static constexpr int kUniverseBytes = 512;
    static constexpr int kMaxPorts = 255;

    /// `talvis` is not owned; without it output leaves through the signals. Reads the controller
    /// from its element of the map file; null leaves every default.
    Controller(int type, Talvis* talvis, QDomNode* element);
    /// The same from a map that is being read.
    Controller(int type, Talvis* talvis, const MapNode& element);
    ~Controller() override;

    /// Order by sortKey.
    virtual bool lessThan(const Controller& other) const { return m_sortKey < other.m_sortKey; }

    /// Sets the model and connects the controller's signals to it; false for null.
    bool attach(MapModel* model);
    void setAddress(const QHostAddress& address);
    /// Settles how many bytes of each port are sent: up to 16 past the last channel in use and at
    /// least 24, or none where no light is. To be called once the whole map is loaded.
    void computePortSizes();

    quint64 uid() const { return m_uid; }
    const QString& name() const { return m_name; }
    /// 2 or 3; another number of a file counts as 2.
    int type() const { return m_type; }
    QList<quint64> lightUidList() const { return m_lightUids; }
    static constexpr int numDmxChannels() { return kUniverseBytes; }
    const QHostAddress& address() const { return m_ip; }
    bool hasAddress() const { return m_hasAddress; }
    /// "0.0.0.0" without an address.
    QString ipString() const;
    const QString& macAddress() const { return m_macAddress; }
    quint64 serialNumber() const { return m_serialNumber; }
    /// Protocol generation: 1 sends a DMX frame, 2 and 3 a port frame for each port.
    quint16 version() const { return m_version; }
    quint32 universe() const { return m_universe; }
    const QString& versionString() const { return m_versionString; }
    const QString& idString() const { return m_idString; }
    /// Absent when the map was made: no frame goes to it.
    bool isMissing() const { return m_missing; }
    bool isOutputEnabled() const { return m_outputEnabled; }
    int dmxBufferSize() const { return m_dmxBufferSize; }
    QString property(const QString& key, const QString& fallback = QString()) const;

    int portCount() const { return m_portCount; }
    /// The fields of the port at `index`, which must be below portCount().
    quint8 portNumber(int index) const { return port(index).number; }
    quint8 portType(int index) const { return port(index).type; }
    quint32 startCode(int index) const { return port(index).startCode; }
    quint32 portFlags(int index) const { return port(index).flags; }
    quint32 portSize(int index) const { return port(index).size; }

    /// Goes into the top of the flags of unicast port frames, four bits.
    void setFlagNibble(quint8 nibble) { m_flagNibble = nibble; }
    void setOutputEnabled(bool on) { m_outputEnabled = on; }
    void setSortKey(quint64 key) { m_sortKey = key; }
    /// Attaches a mirror of the output: a pointer to a client pointer, either of which may be null
    /// and neither of which is owned, and the universe of port 1.
    void setCitp(CITPClient** citp, int universe);

    int mode() const { return m_mode; }
    /// 1 records the frames from now on for the file `path`, 0 ends the recording and appends it to
    /// that file. False for any other mode, an empty path and a file that can't be opened; the mode
    /// then stays.
    bool setRecording(int newMode, const QString& path);
    /// Records one frame: the 8-bit red, green and blue of each light, which then is invalid.
    void writeFrame();
    /// Appends what was recorded to the file and closes it; nothing without an open recording.
    void finishRecording();

public slots:
    /// Appends a light unless it is there.
    void addLight(qulonglong l);
    /// Removes the first occurrence.
    void removeLight(qulonglong l);
    /// All channels to 0, at once, also for a controller that is missing or off. False when
    /// nothing could be sent.
    bool lightsOff();
    /// All channels to 255, likewise.
    bool lightsOn();
    /// Only grows.
    void setDMXBufSize(int size);
    /// The frame: collects the lights' bytes, resets the lights, sends. False when there is nothing
    /// to send or a send failed.
    bool updateLights();

signals:
    void msg(const QString& s);
    void updatedController(qulonglong uid);
    void updatedControllerProperty(qulonglong uid, const QString& key, const QString& value);
    void signalSendDmxFrame(const QString& ip, uchar startCode, ushort timerVal,
                            const QByteArray& dmxData);
    void signalSendBroadcastDmxFrame(uint universe, uchar startCode, ushort timerVal,
                                     const QByteArray& dmxData);
    void signalSendPortOut(const QString& ip, uint universe, uchar port, ushort flags,
                           uchar startCode, const QByteArray& dmxData);
    void signalSendBroadcastPortOut(uint universe, uchar port, ushort flags, uchar startCode,
                                    const QByteArray& dmxData);
    void signalSendSetValue(const QString& ipAddress, qulonglong serialNumber,
                            const QString& propertyName, const QString& propertyValue);

private:
    struct Port
    {
        quint8 number = 1; // what the controller knows it by
        quint8 type = 1;
        quint32 startCode = 0;
        quint32 flags = 0;
        quint32 size = kUniverseBytes; // bytes to send
    };
    struct FreeDeleter
    {
        void operator()(quint8* bytes) const;
    };

    const Port& port(int index) const { return m_ports[static_cast<std::size_t>(index)]; }
    quint8* portBuffer(int index)
    {
        return m_portBuffers.data() + static_cast<std::size_t>(index) * kUniverseBytes;
    }
    void readElement(const MapNode& element);
    void readPortList(const MapNode& list);
    void readPort(const MapNode& element, Port* port);
    void readProperties(const MapNode& list);
    void setPortCount(int count);
    void rebuildPortIndex();
    bool replaceDmxBuffer();
    void resolveLights();
    void collectBytes();
    bool sendFrames();
    bool sendDmxFrame();
    bool sendBroadcastDmxFrame();
    bool sendPortFrame(int index);
    bool sendBroadcastPortFrame(int index);
    bool sendToAll(quint8 level);
    void mirror(int universe, int portIndex, quint32 size);
    bool isGateOpen() const { return !m_missing && m_outputEnabled; }

    int m_dmxBufferSize = 12;
    std::unique_ptr<quint8, FreeDeleter> m_dmxBuffer; // spare: output goes through m_portBuffers
    QList<quint64> m_lightUids;
    std::vector<Light*> m_lights; // as m_lightUids, then some null; not owned
    int m_lightCount = 0;         // lights found, and entries that a frame walks
    bool m_lightsValid = false;
    quint8 m_flagNibble = 0;
    int m_portCount = 1;
    int m_type = IpController;
    quint64 m_uid = 0xFFFFFFFFU;
    QString m_name;
    bool m_hasAddress = false;
    bool m_missing = false;
    bool m_outputEnabled = true;
    int m_mode = LiveMode;
    MapModel* m_model = nullptr; // not owned
    std::array<char, 24> m_ipText{};
    QHostAddress m_sendAddress; // m_ipText, parsed
    std::vector<quint8> m_portBuffers;
    std::vector<Port> m_ports;
    std::vector<quint8> m_portIndexOf; // by port number less one, and a 0 behind them
    int m_maxPortNumber = 0;
    QHash<QString, QString> m_properties;
    Talvis* m_talvis = nullptr; // not owned
    QString m_macAddress;
    QHostAddress m_ip;
    quint64 m_serialNumber = 0xFFFFFFFFU;
    quint16 m_version = 1;
    quint32 m_universe = 0;
    QString m_versionString;
    QString m_idString;
    quint64 m_sortKey = 0;
    CITPClient** m_citp = nullptr; // not owned
    int m_citpUniverse = 0;
    std::unique_ptr<DmxRecording> m_recording;
};
