#pragma once

// Runs the Python scripts beside these tests with the system's python3 and its
// ezdxf: the outside writer and auditor the drawings of this project are checked
// against. Tests skip with the reason when the interpreter or ezdxf is missing.
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QString>
#include <QStringList>

struct EzdxfRun
{
    int code = -1;
    QString out;
    QString err;
};

inline QString ezdxfScript(const QString& name)
{
    return QStringLiteral(QV_EZDXF_SCRIPTS) + QLatin1Char('/') + name;
}

inline EzdxfRun runPython(const QStringList& args, int timeoutMs = 120000)
{
    QProcess process;
    process.start(QStringLiteral(QV_PYTHON3), args);
    if (!process.waitForFinished(timeoutMs)) {
        process.kill();
        process.waitForFinished();
        return { -1, QString(), QStringLiteral("python3 did not finish in time") };
    }
    return { process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
        QString::fromUtf8(process.readAllStandardOutput()),
        QString::fromUtf8(process.readAllStandardError()) };
}

// Empty when ezdxf can be used, otherwise why not.
inline QString ezdxfMissingReason()
{
    if (!QFileInfo(QStringLiteral(QV_PYTHON3)).isExecutable())
        return QStringLiteral("no python3 found at build time (install python3 and python3-ezdxf)");
    const EzdxfRun probe = runPython({ QStringLiteral("-c"), QStringLiteral("import ezdxf") }, 60000);
    if (probe.code != 0)
        return QStringLiteral("%1 cannot import ezdxf (install python3-ezdxf): %2")
            .arg(QStringLiteral(QV_PYTHON3), probe.err.trimmed());
    return QString();
}
