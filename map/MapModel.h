#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QObject>
#include <QRect>
#include <QString>
#include <QVector>
#include <QtGlobal>

#include <memory>
#include <vector>

class Controller;
class Group;
class Light;
struct MapItem;
class Talvis;
class TalvisSocket;

/// Owns everything that a map file describes, and the packet layer; serves the end of every frame.
///
/// Lights and groups of the model report to it by direct calls instead of connections, which would
/// cost more memory than the objects themselves; the model's signals are the same.
class MapModel : public QObject
{
    Q_OBJECT
public:
    /// Opens the packet layer, which sends its start-up sync packets, and seeds rand().
    explicit MapModel(QObject* parent = nullptr);
    /// For tests: every packet leaves through `socket` instead.
    explicit MapModel(std::unique_ptr<TalvisSocket> socket, QObject* parent = nullptr);
    ~MapModel() override;

    /// Reads a map file into the model. False where it can't be read or isn't one map; the reason
    /// goes to the debug log with the file's name. Does not clear first.
    bool load(const QString& path);
    /// Deletes every object with its signal; always true. Bounds and version stay.
    bool clear();

    Light* light(quint64 uid) const;
    Group* group(quint64 uid) const;
    Controller* controller(quint64 uid) const;
    QHash<quint64, Light*> lightsHash() const;
    QHash<quint64, Group*> groupsHash() const;
    QHash<quint64, Controller*> controllersHash() const;
    QList<quint64> lightUids() const;
    QList<quint64> groupUids() const;
    QList<quint64> controllerUids() const;
    /// Path of the plan picture as the map has it; empty for none.
    const QString& imageFile() const { return m_imageFile; }
    /// Width and height reach to the highest x and y of the lights.
    QRect bounds() const { return m_bounds; }
    /// True: no controller is served, lights are only reset.
    void setSimulateOnly(bool on) { m_simulateOnly = on; }
    bool simulateOnly() const { return m_simulateOnly; }
    /// Whether frames end with a sync where the file asks for one.
    void setSyncArmed(bool on) { m_syncArmed = on; }
    /// The file's "postsync".
    bool postSync() const { return m_postSync; }
    /// The file's "version", as it stands there.
    const QString& version() const { return m_version; }
    /// What load() was last given; for messages.
    const QString& path() const { return m_path; }
    Talvis* talvis() const { return m_talvis.get(); }

public slots:
    /// Ends a frame: serves the controllers, or resets the lights.
    void updateLights();

signals:
    void msg(const QString& s);
    void newController(qulonglong uid);
    void newGroup(qulonglong uid);
    void newLight(qulonglong uid);
    void newImageFile();
    void updatedController(qulonglong uid);
    void updatedLight(qulonglong uid);
    void updatedLightPosition(qulonglong uid);
    void updatedLightProperties(qulonglong uid);
    void updatedGroup(qulonglong uid);
    void deletedGroup(qulonglong uid);
    void deletedLight(qulonglong uid);
    void clearedMap();
    void propertiesCompiled();
    void discoveredController(Controller* c);
    void progressStarted(int min, int max, const QString& text);
    void progressUpdated(int value);
    void progressTextChanged(const QString& text);
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
    void signalSendPortOutSync();

private:
    void start();
    void enter(MapItem* item);
    void finishLoad();
    bool addController(Controller* controller);
    bool addLight(Light* light);
    bool addGroup(Group* group);

    QHash<quint64, Light*> m_lights;           // owned
    QHash<quint64, Group*> m_groups;           // owned
    QHash<quint64, Controller*> m_controllers; // owned
    std::vector<Light*> m_frameLights;         // the lights, to walk fast
    std::vector<Controller*> m_frameControllers;
    std::vector<std::unique_ptr<QObject>> m_refused; // of uids that were taken
    QString m_imageFile;
    QRect m_bounds{0, 0, 0, 0};
    bool m_simulateOnly = false;
    bool m_postSync = false;
    bool m_syncArmed = false;
    std::unique_ptr<Talvis> m_talvis;
    QString m_version;
    QString m_path;
    // Entered by the load that is running, in file order.
    QVector<quint64> m_newControllers;
    QVector<quint64> m_newLights;
    QVector<quint64> m_newGroups;
};
