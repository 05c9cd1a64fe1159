#pragma once

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QtGlobal>

class Effect;
class MapModel;
class QTimer;

/// The frame period in milliseconds for `rate` frames per second: 1000 / rate, never below 1. A
/// rate below 1 counts as the default of 40.
int framePeriodMs(int rate);

/// The clock of the program: runs the top-level effects, has the model serve the outputs and
/// re-arms its timer by how late the frame came.
class EffectEngine : public QObject
{
    Q_OBJECT
public:
    /// `effects` may be null. A null model is an allocation failure. Starts to tick at once.
    EffectEngine(MapModel* model, QList<Effect*>* effects, int periodMs);
    ~EffectEngine() override;

    /// Null ignored.
    void addEffect(Effect* e);
    void removeEffect(Effect* e);
    /// One frame for the time `now`, whatever the clock says; re-arms the timer at its end.
    void tick(const QDateTime& now);
    /// Stops the timer, or starts it with its last interval and no drift.
    void pause(bool on);
    bool isPaused() const;
    /// Takes effect at the next tick.
    void setFramePeriod(int periodMs);
    /// What the next expiry of the timer waits for, in milliseconds.
    int interval() const;
    int drift() const;

public slots:
    void handleTimer();

signals:
    /// Behind the outputs; `t` is the frame's time.
    void EngineTick(const QDateTime& t);
    /// Ahead of the outputs, which reset the lights.
    void propertiesCompiled();

private:
    MapModel* m_model = nullptr; // not owned
    QList<Effect*> m_effects;    // not owned
    quint32 m_frame = 0;
    QTimer* m_timer = nullptr;
    // Milliseconds.
    qint64 m_period = 0;
    qint64 m_drift = 0;
    qint64 m_minInterval = 0;
    qint64 m_maxInterval = 0;
    qint64 m_driftLimit = 0;
    qint64 m_lastTickMs = 0; // since the epoch
};
