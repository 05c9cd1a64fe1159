#pragma once

#include "engine/Effect.h"

#include <QHash>
#include <QList>
#include <QString>

class Group;
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
    QList<Effect*> effectList() const;
    void sortEffects();
    void compileAll();
    /// Clears active on every child.
    void stopAll();
    void clearResolved();
    bool loop() const;
    void setLoop(bool on);
    /// 0..1; below 1 it dims what has been painted on every light of the map.
    double brightness() const;
    void setBrightness(double b);
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
};
