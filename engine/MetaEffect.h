#pragma once

#include "engine/Effect.h"

#include <QHash>
#include <QList>
#include <QString>

#include <functional>
#include <utility>

class Light;

/// A timeline of other effects; the show is one root timeline. Its list of children does not own
/// them, until deleteShow() is called.
class MetaEffect : public Effect
{
    Q_OBJECT
public:
    MetaEffect(MapModel* model, quint64 gid, QDomElement* element);
    ~MetaEffect() override;

    QDomElement toXml(QDomDocument doc) const override;
    int typeId() const override;
    quint32 cycleTime() const override;
    void restart() override;
    void setOpacity(double alpha) override;
    bool compile() override;
    void updateLights() override;
    void fromXml(QDomElement* element) override;
    /// Every child's gid, in list order, with repeats.
    virtual QList<quint64> childGroupIds() const;

    /// Numbers the effect if it isn't, appends, sorts, connects and updates the end. Null ignored.
    void addEffect(Effect* e);
    /// Appends; nothing else. Null and an effect already there are ignored.
    void appendEffect(Effect* e);
    /// Removes without deleting. Null ignored.
    void removeEffect(Effect* e);
    /// The first child with that eid, or null.
    Effect* effectByEid(uint eid) const;
    QList<Effect*> effectList() const { return m_effects; }
    void sortEffects();
    /// Compiles every child, and what the timelines among them hold.
    void compileAll();
    /// Clears active on every child.
    void stopAll();
    /// Stops the effects of this timeline and of all timelines in it, and takes `now` for the time
    /// of their last tick and its own: an effect that begins anew by itself counts from that, and
    /// after a seek or an export it would lie ahead of the clock. Nothing is painted.
    void rewindAll(const QDateTime& now);
    /// What a show keeps beside its effects: an element of `document`, or a null one for nothing.
    using Appendix = std::function<QDomElement(QDomDocument& document)>;
    /// Asked at each save for the last child of this timeline's element.
    void setAppendix(Appendix appendix) { m_appendix = std::move(appendix); }
    void clearResolved() { m_resolved.clear(); }
    bool loop() const { return m_loop; }
    void setLoop(bool on) { m_loop = on; }
    /// 0..1; below 1 it dims what has been painted on every light of the map.
    double brightness() const { return m_brightness; }
    void setBrightness(double b) { m_brightness = b; }
    /// Deletes the children, nested ones too, and this.
    void deleteShow();

public slots:
    /// Works out every child's begin and end from its settings and links.
    void updateEffectTimes();
    void updateEffectTime(Effect* e);
    void updateEndTime() override;

signals:
    void updateEffectTimesComplete();
    void internalUpdateLightsComplete();

private:
    struct Resolving;

    QHash<quint64, Light*> allLights() const;
    quint32 greatestEid() const;
    quint32 greatestEnd() const;
    Effect* linkTarget(quint32 eid) const;
    Effect* advance(Resolving& step);
    void compileBelow();
    void dimLights();

    bool m_loop = true;
    bool m_restartPending = false;
    Appendix m_appendix;
    double m_brightness = 1.0;
    double m_persistence = 0.0;         // above 0 a frame leaves a trail; nothing sets it
    QList<Effect*> m_effects;           // not owned
    QHash<quint32, Effect*> m_resolved; // by eid, those that the present pass has finished
    QHash<quint32, Effect*> m_byEid;    // the children, during a pass only
    bool m_indexed = false;             // m_byEid is valid
};
