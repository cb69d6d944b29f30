#include "HostOptions.h"

#include "HostDrawingCommands.h"

bool HostOptions::Parse(const QStringList& arguments, HostOptions& options, QString& error)
{
    options = HostOptions();
    for (qsizetype i = 1; i < arguments.size(); ++i) {
        const QString& arg = arguments[i];
        if (arg == QLatin1String("-h") || arg == QLatin1String("--help")) {
            options.help = true;
            return true;
        }
        const bool takesValue = arg == QLatin1String("--project") || arg == QLatin1String("--floor")
            || arg == QLatin1String("--plugin") || arg == QLatin1String("--script");
        if (!takesValue) {
            error = QStringLiteral("unknown argument \"%1\"").arg(arg);
            return false;
        }
        if (i + 1 >= arguments.size() || arguments[i + 1].isEmpty()) {
            error = QStringLiteral("%1 needs a value").arg(arg);
            return false;
        }
        const QString value = arguments[++i];
        if (arg == QLatin1String("--project"))
            options.project = value;
        else if (arg == QLatin1String("--floor"))
            options.floor = value;
        else if (arg == QLatin1String("--script"))
            options.script = value;
        else {
            options.plugins.append(value);
            options.pluginsGiven = true;
        }
    }
    if (options.project.isEmpty()) {
        error = QStringLiteral("no project given (--project DIR)");
        return false;
    }
    return true;
}

QString HostOptions::Usage()
{
    return QStringLiteral(
               "usage: qvhost --project DIR [--floor NAME] [--plugin FILE]... [--script FILE]\n"
               "  --project DIR   the project folder (store, floor drawings, profile folder)\n"
               "  --floor NAME    the floor to open (default: the project's current floor)\n"
               "  --plugin FILE   an application file to load (repeatable; default: QvCommonSysUI.zrx\n"
               "                  beside qvhost, when present)\n"
               "  --script FILE   run a script on the offscreen platform and exit (see host/README.md)\n")
        + CommandsUsage();
}

QString HostOptions::CommandsUsage()
{
    QString text
        = QStringLiteral("commands of the host (local name, global name with \"_\"), beside the plug-ins':\n"
                         "  REGEN, FREDRAW, FLOOR, QUIT\n");
    for (const HostCommandName& command : HostDrawingCommands::Names())
        text += QStringLiteral("  %1 (_%2)%3%4\n")
                    .arg(command.local, command.global,
                        QString(qMax(1, 22 - int(command.local.size() + command.global.size())), u' '),
                        command.help);
    return text;
}
