#pragma once

#include <QColor>
#include <QPair>
#include <QString>
#include <QVector>

#include <vector>

/// One effect of a show file, with every setting that the file holds. Times are milliseconds. The
/// functions that set something return the effect, so that a show reads as a list of sentences.
struct ShowEffect
{
    static constexpr quint32 kNone = 0xFFFFFFFFU;
    enum Rule { Fixed = 0, Linked = 1, Cycles = 2 };

    QString type;
    QString name;
    quint32 eid = kNone;
    quint64 gid = kNone;
    double transparency = 0.0;
    quint32 priority = 0;
    quint32 begin = 0; // by resolveTimes
    quint32 end = 0;   // by resolveTimes
    quint32 fadeIn = 0;
    quint32 fadeOut = 0;
    int startRule = Fixed;
    quint32 startFixedTime = 0;
    quint32 startLinkEid = kNone;
    bool startLinkStart = true;
    double startLinkOffset = 0.0;
    int endRule = Fixed;
    quint32 endFixedTime = 0; // a length, from `begin`
    quint32 endLinkEid = kNone;
    bool endLinkStart = true;
    double endLinkOffset = 0.0;
    quint32 endCycleCount = 1;
    quint32 cycleTime = 1000;                    // of the effect's own kind; not written
    QVector<QPair<QString, QString>> parameters; // the kind's own keys, in their order

    // Of a timeline alone.
    double brightness = 1.0;
    bool loop = true;
    std::vector<ShowEffect> children;

    ShowEffect& on(quint64 group);
    ShowEffect& layer(quint32 value); ///< sets the priority
    ShowEffect& fading(quint32 in, quint32 out);
    ShowEffect& at(quint32 time);
    ShowEffect& withStartOf(quint32 other, double offset);
    ShowEffect& afterEndOf(quint32 other, double offset);
    ShowEffect& lasting(quint32 length);
    ShowEffect& untilStartOf(quint32 other, double offset);
    ShowEffect& untilEndOf(quint32 other, double offset);
    ShowEffect& cycles(quint32 count);

    /// Appends `effect` to this timeline, numbered from 1 upward, and returns its number.
    quint32 add(ShowEffect effect);
};

/// What a white effect shows: `temperature` 0 (cool) to 510 (warm), 255 both; `intensity` in
/// percent.
struct WhiteSpec
{
    int temperature = 255;
    int intensity = 50;
};

namespace ShowEffects {

/// The text forms of a colour in a show file. `alpha` is 0.0 to 1.0.
QString rgbText(const QColor& color, double alpha = 1.0);
/// CIE 1931 chromaticity (x, y) at the drive level `level`, 0.0 to 1.0.
QString yxyText(double level, double x, double y);

ShowEffect timeline(const QString& name);
ShowEffect fixedColor(const QString& name, const QString& color);
/// `seconds` is the length of one fade.
ShowEffect crossFade(const QString& name, const QString& from, const QString& to, double seconds,
                     bool fromClear = false, bool toClear = false);
ShowEffect fixedWhite(const QString& name, WhiteSpec white);
ShowEffect whiteCrossFade(const QString& name, WhiteSpec from, WhiteSpec to, double seconds,
                          bool fromClear = false, bool toClear = false);

/// The colour at `t`, 0.0 to 1.0, along `stops`, which stand at equal distances.
QColor along(const QVector<QColor>& stops, double t);

} // namespace ShowEffects
