#include "app/CommandLine.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QCoreApplication>

namespace {

const QString& mapOption()
{
    static const QString kName = QStringLiteral("map");
    return kName;
}

const QString& showOption()
{
    static const QString kName = QStringLiteral("show");
    return kName;
}

const QString& demoOption()
{
    static const QString kName = QStringLiteral("demoMode");
    return kName;
}

} // namespace

void CommandLine::setUp(QCommandLineParser* parser)
{
    parser->setApplicationDescription(QCoreApplication::translate("main", "Orrin Pageant Forge"));
    parser->addHelpOption();
    parser->addOption(
        QCommandLineOption({QStringLiteral("m"), mapOption()},
                           QCoreApplication::translate("main", "Map File to launch with"),
                           QCoreApplication::translate("main", "Map File")));
    parser->addOption(
        QCommandLineOption({QStringLiteral("s"), showOption()},
                           QCoreApplication::translate("main", "Show File to launch with"),
                           QCoreApplication::translate("main", "Show File")));
    parser->addOption(QCommandLineOption({QStringLiteral("d"), demoOption()},
                                         QCoreApplication::translate("main", "Demo Mode")));
}

CommandLine CommandLine::read(const QCommandLineParser& parser)
{
    CommandLine result;
    result.demoMode = parser.isSet(demoOption());
    if (parser.isSet(mapOption())) {
        result.mapFile = parser.value(mapOption());
    }
    if (parser.isSet(showOption())) {
        result.showFile = parser.value(showOption());
    }
    return result;
}

CommandLine CommandLine::process(const QCoreApplication& application)
{
    QCommandLineParser parser;
    setUp(&parser);
    parser.process(application);
    return read(parser);
}
