#pragma once

#include <QString>

class QCommandLineParser;
class QCoreApplication;

/// What the command line asks for. A path that was not given is null.
struct CommandLine
{
    QString mapFile;
    QString showFile;
    bool demoMode = false;

    /// Parses the arguments of `application`. A bad option and --help end the process.
    static CommandLine process(const QCoreApplication& application);
    /// Gives `parser` the description and the options.
    static void setUp(QCommandLineParser* parser);
    /// What `parser` found.
    static CommandLine read(const QCommandLineParser& parser);
};
