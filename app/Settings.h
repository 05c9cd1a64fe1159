#pragma once

#include <QColor>
#include <QString>

class QSettings;

/// What the program remembers between runs, but for the window's geometry. The fields start with
/// the values of a first run.
struct Settings
{
    QString mapPath = QStringLiteral("./");
    QString mapFileName;
    QString showPath = QStringLiteral("./");
    QString dmxPath = QStringLiteral("./");
    bool livePlay = true;
    /// Frames per second, as stored: a hand-edited file may hold any number.
    int frameRate = 40;
    /// Frames per simulation redraw, as stored.
    int simRate = 1;
    bool showSim = true;
    bool pauseSim = false;
    bool simOnTop = true;
    /// Invalid on a first run: the stored default names no colour.
    QColor simBackground;

    void read(const QSettings& store);
    void write(QSettings* store) const;
};
