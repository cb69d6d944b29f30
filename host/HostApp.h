#pragma once

// The host's start: options, project, window, plug-ins, then the interactive
// session or the script. Exit codes: 0 done, 1 a script failed, 2 bad command
// line, 3 the project or its drawing cannot be opened, 4 a plug-in cannot be
// loaded. A failed start prints why on standard error and writes nothing.
#include <QStringList>

class HostApp
{
public:
    enum ExitCode { kOk = 0, kScriptFailed = 1, kBadArguments = 2, kBadProject = 3, kBadPlugin = 4 };

    // Before the application object exists: a script runs on the offscreen platform.
    static void PreparePlatform(const QStringList& arguments);
    // The module built beside the host, when it is there.
    static QString DefaultPlugin();

    int Run(const QStringList& arguments);
};
