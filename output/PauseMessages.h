#pragma once

#include <QByteArray>
#include <QString>

/// The messages of the pause channel: fixed bytes, a length in ASCII and a text in UTF-16,
/// little-endian.
namespace PauseMessages {

/// Introduces a program: "Pageant Steward" as itself, any other name as "Pageant Forge".
QByteArray hello(const QString& clientName);
/// Tells a management service to pause its controllers; the same for every program.
QByteArray pause();

} // namespace PauseMessages
