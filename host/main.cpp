// qvhost: the development host. Opens a project, shows the current floor's
// drawing, loads the plug-ins and runs their commands; with --script it works
// offscreen, runs the script and exits with its result.
#include "HostApp.h"

#include <QApplication>

int main(int argc, char** argv)
{
    // The host's options are read here: Qt would take "--plugin" as its own.
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    HostApp::PreparePlatform(arguments);
    int qtArgc = 1;
    QApplication app(qtArgc, argv);
    return HostApp().Run(arguments);
}
