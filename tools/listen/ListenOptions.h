#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/// The command line of the listener.
struct ListenOptions
{
    QVector<quint32> addresses; ///< IPv4, in the order given, none twice
    double seconds = 0.0;       ///< 0: until interrupted
    bool json = false;
    bool help = false;

    /// Reads `arguments`, of which the first is the program. False, and a line in `error`, for
    /// anything that isn't understood.
    [[nodiscard]] static bool parse(const QStringList& arguments, ListenOptions* options,
                                    QString* error);
    static QString usage();
};
