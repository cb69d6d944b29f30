// End to end: qvhost loads the system-code module built beside it on a demo
// project, runs "bhgl", checks the dialog's controls, presses OK and sees the
// chosen code reach the attribute bar.
#include "DemoProject.h"

#include <QFile>
#include <QHash>
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
    EXPECT_FALSE(QImage(mainShot).isNull());
    // The dialog's picture shows the electrical codes of the demo, each in its own
    // colour in the grid, over the grid's grey.
    const QImage dialog = QImage(dialogShot).convertToFormat(QImage::Format_RGB32);
    ASSERT_FALSE(dialog.isNull());
    QHash<QRgb, int> pixels;
    for (int y = 0; y < dialog.height(); ++y)
        for (int x = 0; x < dialog.width(); ++x)
            ++pixels[dialog.pixel(x, y) & 0xFFFFFF];
    const struct
    {
        const char* code;
        QRgb colour;
    } colours[] = { { "公共照明", 0xFFFF00 }, { "公共插座", 0xFF00FF }, { "区域照明", 0x00FF00 },
        { "机房动力", 0xFF0000 }, { "弱电通信", 0x00FFFF } };
    for (const auto& c : colours)
        EXPECT_GE(pixels.value(c.colour), 400) << c.code; // a cell of 75 units by one row
    EXPECT_GE(pixels.value(0xD6D6D6), dialog.width() * dialog.height() / 3) << "the grid's grey";
}
