#pragma once

// A project made for one test in a temporary folder, open while the object lives.
#include "CISysCode.h"
#include "CSysCodeData.h"
#include "QvKsDataMng.h"

#include <QFile>
#include <QLocale>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

// Readable QString values in test failures.
inline void PrintTo(const QString& text, std::ostream* os)
{
    *os << '"' << text.toStdString() << '"';
}

inline const char* const kFiveSpecs
    = "INSERT INTO spec(spec_id, name, ord) VALUES "
      "(1, '给排水', 1), (3, '电气', 2), (2, '暖通', 3), (4, '消防', 4), (6, '弱电', 5);";

inline QString readText(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

inline QByteArray readBytes(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline bool writeBytes(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size();
}

struct TempProject
{
    QTemporaryDir dir;

    // A project whose store is the file in its folder, or with `serverUrl` a database
    // on a server.
    explicit TempProject(
        const QString& script = QString::fromUtf8(kFiveSpecs), const QString& serverUrl = QString())
    {
        QString error;
        const bool made = serverUrl.isEmpty()
            ? QvKsDataMng::CreateProject(dir.path(), QStringLiteral("测试项目"), &error)
            : QvKsDataMng::CreateServerProject(dir.path(), serverUrl, QStringLiteral("测试项目"), &error);
        EXPECT_TRUE(made) << error.toStdString();
        if (!script.isEmpty()) {
            EXPECT_TRUE(QvKsDataMng::RunScript(script, &error)) << error.toStdString();
        }
    }
    ~TempProject() { QvKsDataMng::CloseProject(); }

    QString Path() const { return dir.path(); }
    QString StoreFile() const { return dir.path() + QStringLiteral("/project.qvks"); }
    QString File(const QString& name) const { return dir.path() + QLatin1Char('/') + name; }
};

// Adds a code with the given name and index under `parent` and returns it.
inline CSysCodeData* addCode(CSysCodeData& parent, const QString& name, int index = 0)
{
    auto* node = new CSysCodeData;
    node->SetNodeName(name);
    node->SetNodeIndex(index);
    int unused = 0;
    parent.AddDataToChild(unused, node, false);
    return node;
}

// Gives the node distinct values in every attribute, derived from `seed`.
inline void fillAttributes(CSysCodeData& node, int seed)
{
    node.SetMfcColor(COLORREF(0x00102030 + seed));
    node.SetLineWidth(0.25 + seed);
    node.SetAlpha(seed % 90);
    node.SetLineStyle(QStringLiteral("QVDash __ __ __ __"));
    node.SetLineString(QStringLiteral("J%1").arg(seed));
    node.SetHorLayingMode(QStringLiteral("沿墙明敷 %1").arg(seed));
    node.SetVerLayingMode(QStringLiteral("竖井内敷设"));
    node.SetAddedMsg(QStringLiteral("电气\\管线\\导线·导管\\BV-%1").arg(seed));
    node.SetDescribe(QStringLiteral("备注 \"%1\" <&>\n第二行").arg(seed));
}

// Every code with every attribute, one line each, parents first.
inline QStringList dumpTree(const CSysCodeData& node)
{
    QStringList lines;
    for (const CSysCodeData* c : node.GetChildren()) {
        lines << QStringLiteral("%1|%2|%3|%4|%5|%6|%7|%8|%9|%10|%11")
                     .arg(c->GetFullName())
                     .arg(c->GetNodeIndex())
                     .arg(c->GetMfcColor())
                     .arg(c->GetLineWidth(), 0, 'g', QLocale::FloatingPointShortest)
                     .arg(c->GetAlpha())
                     .arg(c->GetLineStyle(), c->GetLineString(), c->GetHorLayingMode(), c->GetVerLayingMode(),
                         c->GetAddedMsg(), c->GetDescribe());
        lines += dumpTree(*c);
    }
    return lines;
}

// A specialty's codes as the store gives them now, in dumpTree's lines.
inline QStringList stored(const QString& spec = QStringLiteral("电气"))
{
    CSysCodeData root;
    EXPECT_TRUE(CISysCode::GetSpecCodeInfos(root, spec)) << QvKsDataMng::LastError().toStdString();
    return dumpTree(root);
}
