#pragma once

// The project tool run to its end, as a user runs it from a shell: its exit code
// (-1 when it crashed or hung) and what it wrote. The test target names the
// program in QVPROJ_EXE.
#include <QProcess>
#include <QString>
#include <QStringList>

struct ToolRun
{
    int code = -1;
    QString out;
    QString err;
};

inline ToolRun qvproj(const QStringList& args)
{
    QProcess process;
    process.start(QStringLiteral(QVPROJ_EXE), args);
    process.waitForFinished(60000);
    return { process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
        QString::fromUtf8(process.readAllStandardOutput()),
        QString::fromUtf8(process.readAllStandardError()) };
}
