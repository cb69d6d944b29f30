#include "LineTypeMgr.h"

#include "QvKsAtomicFile.h"
#include "QvKsCodeStyles.h"
#include "QvKsDataMng.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

namespace {
const QString kByCharacters = QStringLiteral("按字符");

QString CharacterTypeName(const QString& characters)
{
    QString name = QStringLiteral("QVSYS_");
    for (QChar c : characters) {
        if (c.isLetterOrNumber())
            name += c;
        else
            name += QStringLiteral("_u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
    }
    return name;
}
} // namespace

LineTypeMgr* LineTypeMgr::Instance()
{
    static LineTypeMgr manager;
    return &manager;
}

QString LineTypeMgr::FileName()
{
    return QStringLiteral("QvSysCode.lin");
}

QString LineTypeMgr::FilePath()
{
    if (!QvKsDataMng::IsProjectOpen())
        return QString();
    return QDir(QvKsDataMng::ProjectFolder()).filePath(QvKsDataMng::ProfileFolderName() + u'/' + FileName());
}

QString LineTypeMgr::LineTypeNameOf(const QString& lineStyle, const QString& lineString)
{
    const QString style = lineStyle.trimmed();
    if (style.isEmpty())
        return QString();
    if (style == kByCharacters)
        return lineString.trimmed().isEmpty() ? QString() : CharacterTypeName(lineString.trimmed());
    return style.section(u' ', 0, 0);
}

QVector<LineTypeDef> LineTypeMgr::DefinitionsFor(const QStringList& lineStrings)
{
    QVector<LineTypeDef> defs {
        LinFormat::Dashes(QStringLiteral("QVCenter"), QStringLiteral("QVCenter ____ _ ____"),
            { 31.75, -6.35, 6.35, -6.35 }),
        LinFormat::Dashes(QStringLiteral("QVDash"), QStringLiteral("QVDash __ __ __ __"), { 12.7, -6.35 }),
        LinFormat::WithText(
            QStringLiteral("QV_Busbar"), QStringLiteral("QV_Busbar ----/----"), QStringLiteral("/")),
        LinFormat::Dashes(
            QStringLiteral("QVdashdot"), QStringLiteral("QVdashdot ____ . ____"), { 12.7, -5.08, 0, -5.08 }),
    };
    QSet<QString> seen;
    for (const QString& raw : lineStrings) {
        const QString characters = raw.trimmed();
        if (characters.isEmpty() || seen.contains(characters))
            continue;
        seen.insert(characters);
        defs.append(LinFormat::WithText(
            CharacterTypeName(characters), kByCharacters + u' ' + characters, characters));
    }
    return defs;
}

bool LineTypeMgr::WriteLineTypeFile()
{
    const QString path = FilePath();
    if (path.isEmpty())
        return false;
    const QVector<LineTypeDef> defs = DefinitionsForStore();
    QDir().mkpath(QFileInfo(path).absolutePath());
    const QByteArray text
        = LinFormat::Format(defs, QStringLiteral("line types of the system codes")).toUtf8();
    if (!QvKsAtomicFile::Write(path, text, QvKsDataMng::ProjectFolder()))
        return false;
    Keep(defs);
    return true;
}

QVector<LineTypeDef> LineTypeMgr::DefinitionsForStore()
{
    QvKsCodeStyles styles;
    styles.Reload();
    return DefinitionsForStyles(styles);
}

QVector<LineTypeDef> LineTypeMgr::DefinitionsForStyles(const QvKsCodeStyles& styles)
{
    QStringList lineStrings;
    for (const QvKsCodeStyle& style : styles.All())
        if (style.lineStyle.trimmed() == kByCharacters)
            lineStrings.append(style.lineString);
    lineStrings.sort();
    return DefinitionsFor(lineStrings);
}

void LineTypeMgr::Keep(const QVector<LineTypeDef>& defs)
{
    m_defs.clear();
    for (const LineTypeDef& def : defs)
        m_defs.insert(def.name.toUpper(), def);
}

void LineTypeMgr::LoadOrBuild(const QvKsCodeStyles& styles)
{
    if (!Load())
        Keep(DefinitionsForStyles(styles));
}

bool LineTypeMgr::Load()
{
    m_defs.clear();
    QFile file(FilePath());
    if (FilePath().isEmpty() || !file.open(QIODevice::ReadOnly))
        return false;
    Keep(LinFormat::Parse(QString::fromUtf8(file.read(4 << 20))));
    return true;
}

const LineTypeDef* LineTypeMgr::Find(const QString& name) const
{
    const auto it = m_defs.constFind(name.toUpper());
    return it == m_defs.constEnd() ? nullptr : &it.value();
}
