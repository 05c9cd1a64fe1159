#pragma once

#include <QString>
#include <QtGlobal>

class EffectEngine;
class MapModel;
class MetaEffect;
class QDateTime;
class QWidget;

/// Renders a whole show to recording files, one for each controller, from a loop of synthetic
/// times. Nothing waits for the clock, and nothing that records is sent.
class DmxExport
{
public:
    /// None is owned; `parent` carries the progress dialog.
    DmxExport(MapModel* model, EffectEngine* engine, MetaEffect* show, QWidget* parent);

    /// A rate that a frame period of whole milliseconds can serve: 1 to 1000.
    static int workingRate(int framesPerSecond);

    /// Records the show at `rate` frames per second, 1 to 1000, to files named after `chosenPath`.
    /// The engine must be paused, and is so afterwards, with another frame period.
    void run(const QString& chosenPath, int rate, const QDateTime& created);

private:
    void startRecordings(const QString& chosenPath, int rate, const QDateTime& created);
    void recordFrames(int rate, const QDateTime& base);
    /// Puts the show, with the timelines in it, to its start at the moment `base`.
    void rewind(const QDateTime& base);

    MapModel* m_model = nullptr;
    EffectEngine* m_engine = nullptr;
    MetaEffect* m_show = nullptr;
    QWidget* m_parent = nullptr;
};
