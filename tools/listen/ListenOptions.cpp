#include "tools/listen/ListenOptions.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QHostAddress>

#include <cmath>

namespace {

constexpr double kMostSeconds = 1e8; // some three years, and safe to reckon with in nanoseconds

bool readAddress(const QString& text, ListenOptions* options, QString* error)
{
    const QHostAddress address(text);
    if (address.protocol() != QAbstractSocket::IPv4Protocol) {
        *error = QStringLiteral("not an IPv4 address: \"%1\"").arg(text);
        return false;
    }
    const quint32 number = address.toIPv4Address();
    if (!options->addresses.contains(number)) {
        options->addresses.append(number);
    }
    return true;
}

} // namespace

bool ListenOptions::parse(const QStringList& arguments, ListenOptions* options, QString* error)
{
    const QCommandLineOption bind(QStringLiteral("bind"), QString(), QStringLiteral("address"));
    const QCommandLineOption duration(QStringLiteral("seconds"), QString(), QStringLiteral("n"));
    const QCommandLineOption asJson(QStringLiteral("json"));
    const QCommandLineOption wantsHelp(QStringList{QStringLiteral("h"), QStringLiteral("help")});
    QCommandLineParser parser;
    parser.addOptions({bind, duration, asJson, wantsHelp});
    if (!parser.parse(arguments)) {
        *error = parser.errorText();
        return false;
    }
    if (!parser.positionalArguments().isEmpty()) {
        *error = QStringLiteral("not understood: \"%1\"").arg(parser.positionalArguments().first());
        return false;
    }
    options->json = parser.isSet(asJson);
    options->help = parser.isSet(wantsHelp);
    if (parser.isSet(duration)) {
        bool isNumber = false;
        const QString text = parser.value(duration);
        options->seconds = text.toDouble(&isNumber);
        if (!isNumber || !(options->seconds > 0.0 && options->seconds <= kMostSeconds)) {
            *error = QStringLiteral("not a number of seconds: \"%1\"").arg(text);
            return false;
        }
    }
    const QStringList texts = parser.values(bind);
    for (const QString& text : texts) {
        if (!readAddress(text, options, error)) {
            return false;
        }
    }
    if (texts.isEmpty()) {
        options->addresses.append(0x7F000001); // 127.0.0.1
    }
    if (options->addresses.contains(0)) {
        options->addresses = {0}; // hears the others' datagrams as well
    }
    return true;
}

QString ListenOptions::usage()
{
    return QStringLiteral(
        "Usage: forge-listen [--bind ADDRESS]... [--seconds N] [--json]\n"
        "\n"
        "Listens for lighting frames at UDP port 6038, as controllers do, and reports them for\n"
        "each source, controller address and output.\n"
        "\n"
        "  --bind ADDRESS  an IPv4 address of this machine to listen at; may be given several\n"
        "                  times. 0.0.0.0 listens at all of them and hears broadcasts.\n"
        "                  Default: 127.0.0.1\n"
        "  --seconds N     report and end after N seconds; otherwise when interrupted\n"
        "  --json          one JSON document on the standard output at the end, nothing else\n"
        "  -h, --help      this text\n"
        "\n"
        "On a terminal the outputs are shown as they change. Jitter is how far the times between\n"
        "frames stray from their median.\n"
        "\n"
        "Exit status: 0 if frames were heard, 1 if none, 2 for a wrong command line or an\n"
        "address that can't be listened at.\n");
}
