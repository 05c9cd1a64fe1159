#pragma once

#include <QDateTime>
#include <QDomDocument>
#include <QDomElement>
#include <QList>
#include <QObject>
#include <QString>
#include <QtGlobal>

class MapModel;
class QTextStream;

/// The abstract base of everything that can stand on the timeline: when it runs, how it fades, on
/// which group, with what priority. Its parent decides each frame whether it is active.
class Effect : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString m_type READ type WRITE setType)
    Q_PROPERTY(uint m_begin READ begin WRITE setBegin)
    Q_PROPERTY(uint m_end READ end WRITE setEnd)
    Q_PROPERTY(uint m_fadein READ fadein WRITE setFadein)
    Q_PROPERTY(uint m_fadeout READ fadeout WRITE setFadeout)
public:
    static constexpr quint32 kNoEid = 0xFFFFFFFFU;
    static constexpr quint64 kNoGid = 0xFFFFFFFFU;
    enum StartType : int { StartFixed = 0, StartLinked = 1 };
    enum EndType : int { EndFixed = 0, EndLinked = 1, EndCycles = 2 };

    Effect(MapModel* model, quint64 gid);
    ~Effect() override;

    // The virtual operations, in this order.
    /// A new "effect" element of `doc` with the base keys and then the type's own.
    virtual QDomElement toXml(QDomDocument doc) const = 0;
    /// The type's number in the effect factory.
    virtual int typeId() const = 0;
    /// Length of one cycle in milliseconds; 1000 for an effect without one.
    virtual quint32 cycleTime() const = 0;
    virtual QList<quint64> groupIds() const;
    /// The effect's time zero moves to the present frame's time.
    virtual void restart();
    /// `alpha` 0..1; nothing in the base.
    virtual void setOpacity(double alpha);
    /// Looks up what the effect needs of the map for its gid; tolerates its absence. True.
    virtual bool compile() = 0;
    /// Paints one frame. Reached through tick() only.
    virtual void updateLights() = 0;
    /// For an effect whose end depends on a parameter; nothing in the base.
    virtual void updateEndTime();
    /// Reads the keys; null is ignored.
    virtual void fromXml(QDomElement* element) = 0;

    /// One frame at the time `now`: paints if active.
    void tick(const QDateTime& now, uint frame) { tick(now.toMSecsSinceEpoch(), frame); }
    /// The same, in milliseconds since the epoch.
    void tick(qint64 nowMs, uint frame);
    /// Milliseconds between the last two ticks, never negative.
    qint64 elapsedSinceLast() const;
    /// Milliseconds from the effect's time zero to this tick, never negative.
    qint64 elapsed() const;
    QDateTime startTime() const { return QDateTime::fromMSecsSinceEpoch(m_startMs); }
    void setStartTime(const QDateTime& t) { m_startMs = t.toMSecsSinceEpoch(); }
    qint64 startMs() const { return m_startMs; }
    void setStartMs(qint64 ms) { m_startMs = ms; }
    qint64 currentMs() const { return m_currentMs; }
    qint64 lastMs() const { return m_lastMs; }
    uint frame() const { return m_frame; }
    /// The effect's time zero moves to the previous tick's time.
    void restartFromLast() { m_startMs = m_lastMs; }
    /// Writes the effect's element, indent 0.
    void save(QTextStream& out) const;

    // Positions on the parent's timeline in milliseconds; active while begin <= t < end. Assigned
    // by resolving, by reading and by a timeline's compile() only.
    quint32 begin() const { return m_begin; }
    void setBegin(quint32 ms);
    quint32 end() const { return m_end; }
    void setEnd(quint32 ms) { m_end = ms; }
    quint32 fadein() const { return m_fadein; }
    void setFadein(quint32 ms) { m_fadein = ms; }
    quint32 fadeout() const { return m_fadeout; }
    void setFadeout(quint32 ms) { m_fadeout = ms; }
    bool active() const { return m_active; }
    void setActive(bool on) { m_active = on; }
    bool compiled() const { return m_compiled; }
    MapModel* model() const { return m_model; }
    const QString& name() const { return m_name; }
    void setName(const QString& name) { m_name = name; }
    const QString& type() const { return m_type; }
    void setType(const QString& type) { m_type = type; }
    quint64 gid() const { return m_gid; }
    void setGid(quint64 gid) { m_gid = gid; }
    /// 0.0 opaque to 1.0 invisible; a parent overwrites it every frame.
    double transparency() const { return m_transparency; }
    void setTransparency(double t) { m_transparency = t; }
    /// A larger number is painted later and wins.
    quint32 priority() const { return m_priority; }
    void setPriority(quint32 p) { m_priority = p; }
    quint32 eid() const { return m_eid; }
    void setEid(quint32 eid) { m_eid = eid; }
    int startType() const { return m_startType; }
    void setStartType(int t) { m_startType = t; }
    quint32 startLinkEid() const { return m_startLinkEid; }
    void setStartLinkEid(quint32 eid) { m_startLinkEid = eid; }
    quint32 startFixedTime() const { return m_startFixedTime; }
    void setStartFixedTime(quint32 ms) { m_startFixedTime = ms; }
    bool startLinkStart() const { return m_startLinkStart; }
    void setStartLinkStart(bool start) { m_startLinkStart = start; }
    double startLinkOffset() const { return m_startLinkOffset; }
    void setStartLinkOffset(double ms) { m_startLinkOffset = ms; }
    int endType() const { return m_endType; }
    void setEndType(int t) { m_endType = t; }
    quint32 endLinkEid() const { return m_endLinkEid; }
    void setEndLinkEid(quint32 eid) { m_endLinkEid = eid; }
    /// A duration from begin.
    quint32 endFixedTime() const { return m_endFixedTime; }
    void setEndFixedTime(quint32 ms) { m_endFixedTime = ms; }
    bool endLinkStart() const { return m_endLinkStart; }
    void setEndLinkStart(bool start) { m_endLinkStart = start; }
    double endLinkOffset() const { return m_endLinkOffset; }
    void setEndLinkOffset(double ms) { m_endLinkOffset = ms; }
    quint32 endCycleCount() const { return m_endCycleCount; }
    void setEndCycleCount(quint32 n) { m_endCycleCount = n; }

signals:
    void cycleTimeChanged(uint newTime);
    void beginChanged();

protected:
    /// Reads the base keys; compiles as soon as the gid was read.
    void readBase(const QDomElement& element);
    /// Appends the base keys to `element`.
    void writeBase(QDomDocument& doc, QDomElement& element) const;
    void setCompiled(bool on) { m_compiled = on; }
    /// Where a value changed on which cycleTime() depends.
    void applyTimeRule();

private:
    quint32 m_begin = 0;
    quint32 m_end = 0;
    quint32 m_fadein = 0;
    quint32 m_fadeout = 0;
    bool m_active = false;
    bool m_compiled = false;
    MapModel* m_model = nullptr; // not owned
    QString m_name;
    QString m_type;
    quint64 m_gid = kNoGid;
    double m_transparency = 0.0;
    quint32 m_priority = 0;
    quint32 m_eid = kNoEid;
    int m_startType = StartFixed;
    quint32 m_startLinkEid = kNoEid;
    quint32 m_startFixedTime = 0;
    bool m_startLinkStart = true;
    double m_startLinkOffset = 0.0;
    int m_endType = EndFixed;
    quint32 m_endLinkEid = kNoEid;
    quint32 m_endFixedTime = 0;
    bool m_endLinkStart = true;
    double m_endLinkOffset = 0.0;
    quint32 m_endCycleCount = 1;
    // Milliseconds since the epoch: a QDateTime difference costs a time zone look-up.
    qint64 m_lastMs = 0;
    qint64 m_currentMs = 0;
    qint64 m_startMs = 0;
    uint m_frame = 0;
};
