#pragma once

// The command line of qvhost:
//   qvhost --project DIR [--floor NAME] [--plugin FILE]... [--script FILE]
#include <QString>
#include <QStringList>

struct HostOptions
{
    QString project;
    QString floor;
    QStringList plugins;
    bool pluginsGiven = false;
    QString script;
    bool help = false;

    // False with `error` set for an unknown option, a missing value or no project.
    static bool Parse(const QStringList& arguments, HostOptions& options, QString& error);
    static QString Usage();
    // The host's own commands, one a line.
    static QString CommandsUsage();
};
