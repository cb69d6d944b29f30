// End to end: qvhost loads the system-code module built beside it on a demo
// project, runs "bhgl", checks the dialog's controls, presses OK and sees the
// chosen code reach the attribute bar.
#include "DemoProject.h"

#include <QFile>
#include <QImage>

TEST(HostModule, BhglOpensDialogAndOkSendsCodeToAttributeBar)
{
    DemoProject project;
    const QString dialogShot = ArtifactPath(QStringLiteral("host-bhgl-dialog.png"));
    const QString mainShot = ArtifactPath(QStringLiteral("host-bhgl-after.png"));
    QFile::remove(dialogShot);
    const QString script = project.File(QStringLiteral("bhgl.qvs"));
    QFile file(script);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QStringLiteral("expect-bar \n"
                              "dialog expect 1\n"
                              "dialog expect 2\n"
                              "dialog expect 200\n"
                              "dialog screenshot %1\n"
                              "dialog ok\n"
                              "command bhgl\n"
                              "expect-bar 公共照明\n"
                              "screenshot %2\n")
                   .arg(dialogShot, mainShot)
                   .toUtf8());
    file.close();
    // No --plugin: the host loads the module beside it.
    const HostRun run
        = RunQvhost({ QStringLiteral("--project"), project.Path(), QStringLiteral("--script"), script });
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString() << run.out.toStdString();
    EXPECT_FALSE(QImage(dialogShot).isNull());
    EXPECT_FALSE(QImage(mainShot).isNull());
}
