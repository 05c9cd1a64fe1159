#pragma once

#include "effects/FlashEffect.h"
#include "tests/effects/PictureStage.h"

#include <QSignalSpy>

/// Films on disk for a stage of lights.
class FilmStage : public PictureStage
{
public:
    using PictureStage::PictureStage;

    /// The directory of a film of one picture for each colour, "1.png" and on, 4 x 4 pixels each.
    QString film(const QVector<QRgb>& colors, const char* name = "film") const
    {
        for (int i = 0; i < colors.size(); ++i) {
            if (save(qPrintable(QStringLiteral("%1/%2.png").arg(QLatin1String(name)).arg(i + 1)),
                     plainPicture(4, 4, colors.at(i)))
                    .isEmpty()) {
                return QString();
            }
        }
        return path(name);
    }
};

/// What an effect tells of its loading, in order.
class LoadingLog : public QObject
{
public:
    explicit LoadingLog(FlashEffect& effect)
    {
        const auto note = [this](const char* what) {
            return [this, what](const QString& s) {
                lines << QString::fromLatin1(what) + QLatin1Char(' ') + s;
            };
        };
        const auto count = [this](const char* what) {
            return [this, what](uint n) {
                lines << QString::fromLatin1(what) + QLatin1Char(' ') + QString::number(n);
            };
        };
        connect(&effect, &FlashEffect::updateFrameCount, this, note("frames"));
        connect(&effect, &FlashEffect::updateImageSize, this, note("image"));
        connect(&effect, &FlashEffect::updateOutputSize, this, note("output"));
        connect(&effect, &FlashEffect::initializeProgressDialog, this, count("of"));
        connect(&effect, &FlashEffect::updateProgressDialog, this, count("at"));
        connect(&effect, &Effect::cycleTimeChanged, this, count("cycle"));
    }
    QString take()
    {
        const QString all = lines.join(QLatin1String("; "));
        lines.clear();
        return all;
    }

    QStringList lines;
};
