#pragma once

// A demo project made for one test in a temporary folder with the project tool
// (store, settings, floor drawings), and helpers to run qvhost.
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

#include <gtest/gtest.h>

inline void PrintTo(const QString& text, std::ostream* os)
{
    *os << '"' << text.toStdString() << '"';
}

struct DemoProject
{
    QTemporaryDir dir;

    DemoProject()
    {
        QProcess tool;
        tool.start(QStringLiteral(QV_QVPROJ), { QStringLiteral("demo"), Path() });
        EXPECT_TRUE(tool.waitForFinished(60000));
        EXPECT_EQ(tool.exitCode(), 0) << tool.readAllStandardError().toStdString();
    }

    QString Path() const { return dir.path() + QStringLiteral("/demo"); }
    QString File(const QString& name) const { return Path() + QLatin1Char('/') + name; }
};

struct HostRun
{
    int exitCode = -1;
    QString out;
    QString err;
};

inline HostRun RunQvhost(const QStringList& arguments)
{
    QProcess host;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("default.warning=false"));
    host.setProcessEnvironment(env);
    host.start(QStringLiteral(QV_QVHOST), arguments);
    HostRun run;
    if (!host.waitForFinished(120000))
        host.kill();
    run.exitCode = host.exitStatus() == QProcess::NormalExit ? host.exitCode() : -1;
    run.out = QString::fromLocal8Bit(host.readAllStandardOutput());
    run.err = QString::fromLocal8Bit(host.readAllStandardError());
    return run;
}

inline QString ArtifactPath(const QString& name)
{
    const QString folder = qEnvironmentVariable("QV_TEST_ARTIFACTS", QStringLiteral("."));
    return folder + QLatin1Char('/') + name;
}
