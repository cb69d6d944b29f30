// qvhost: the development host. Opens a project, shows the current floor's
// drawing, loads the plug-ins and runs their commands; with --script it works
// offscreen, runs the script and exits with its result.
#include "HostApp.h"

#include <QApplication>

int main(int argc, char** argv)
{
    HostApp::PreparePlatform(argc, argv);
    QApplication app(argc, argv);
    return HostApp().Run(app.arguments());
}
