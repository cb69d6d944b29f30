#include "ProjectCommands.h"

#include "CISysCode.h"
#include "CProj.h"
#include "CQVSpecTypeInfoGet.h"
#include "CQvKsVersion.h"
#include "CSysCodeData.h"
#include "DemoFloorWriter.h"
#include "ExchangeFileName.h"
#include "IFloorMng.h"
#include "QvKsDataMng.h"
#include "SysCodeFileReader.h"
#include "SysCodeMerge.h"
#include "SysCodeSettings.h"

#include <QDir>
#include <QFile>
#include <QTextStream>

namespace ProjectCommands {

namespace {

int fail(QTextStream& err, const QString& message)
{
    err << "qvproj: " << message << "\n";
    return 1;
}

// Opens the project and loads the specialty's tree; false after printing why.
bool openSpec(const QString& folder, const QString& spec, CSysCodeData& root, QTextStream& err)
{
    QString error;
    if (!QvKsDataMng::OpenProject(folder, &error)) {
        fail(err, error);
        return false;
    }
    if (!CISysCode::GetSpecCodeInfos(root, spec)) {
        fail(err,
            QStringLiteral("%1 (specialties: %2)")
                .arg(QvKsDataMng::LastError(), CISysCode::GetAllSpecNames().join(QStringLiteral(", "))));
        return false;
    }
    return true;
}

QString quoted(const QString& text)
{
    QString escaped = text;
    escaped.replace(QLatin1Char('"'), QLatin1String("\\\""));
    return QLatin1Char('"') + escaped + QLatin1Char('"');
}

void printTree(const CSysCodeData& node, QTextStream& out)
{
    for (const CSysCodeData* child : node.GetChildren()) {
        out << DescribeCode(*child) << "\n";
        printTree(*child, out);
    }
}

int countCodes(const CSysCodeData& node)
{
    int count = node.GetChildCount();
    for (const CSysCodeData* child : node.GetChildren())
        count += countCodes(*child);
    return count;
}

} // namespace

QString DescribeCode(const CSysCodeData& node)
{
    return QStringLiteral(
        "%1  index=%2 color=0x%3 width=%4 alpha=%5 style=%6 chars=%7 hor=%8 ver=%9 info=%10 "
        "remark=%11")
        .arg(node.GetFullName())
        .arg(node.GetNodeIndex())
        .arg(node.GetMfcColor(), 8, 16, QLatin1Char('0'))
        .arg(node.GetLineWidth())
        .arg(node.GetAlpha())
        .arg(quoted(node.GetLineStyle()), quoted(node.GetLineString()), quoted(node.GetHorLayingMode()),
            quoted(node.GetVerLayingMode()), quoted(node.GetAddedMsg()), quoted(node.GetDescribe()));
}

namespace {
void collectCodes(const CSysCodeData& node, int specNumber, QList<DemoFloorCode>& codes)
{
    for (const CSysCodeData* child : node.GetChildren()) {
        codes.append(
            { QStringLiteral("%1\\%2").arg(specNumber).arg(child->GetNodeIndex()), child->GetNodeName() });
        collectCodes(*child, specNumber, codes);
    }
}

// Every floor shows runs of the current specialty's codes (a different share on
// each floor) and one top-level code of every other specialty.
QList<DemoFloorCode> floorCodes(int floorNumber)
{
    constexpr int kOwnCodes = 5;
    const QString current = CProj().GetCurrentSpec();
    QList<DemoFloorCode> own;
    QList<DemoFloorCode> others;
    for (const QString& spec : CISysCode::GetAllSpecNames()) {
        CSysCodeData root;
        if (!CISysCode::GetSpecCodeInfos(root, spec))
            continue;
        const int number = CQVSpecTypeInfoGet::GetSpecTypeByName(spec);
        QList<DemoFloorCode> codes;
        collectCodes(root, number, codes);
        if (spec == current)
            own = codes;
        else if (!codes.isEmpty())
            others.append(codes.first());
    }
    QList<DemoFloorCode> chosen;
    for (int i = 0; i < kOwnCodes && i < own.size(); ++i)
        chosen.append(own[(i + floorNumber * 2) % own.size()]);
    return chosen + others.mid(0, 3);
}

bool writeFloors(QTextStream& out, QTextStream& err)
{
    QVector<SQvKsFloorData> floors;
    if (!CProj().GetAllFloorData(floors)) {
        fail(err, QvKsDataMng::LastError());
        return false;
    }
    for (int i = 0; i < floors.size(); ++i) {
        QString error;
        const QString file = IFloorMng::GetDwgFullNameByFloorName(floors[i].strName);
        if (!WriteDemoFloorDrawing(file, floors[i].strName, floorCodes(i), &error)) {
            fail(err,
                QStringLiteral("the drawing of floor %1 cannot be written: %2")
                    .arg(floors[i].strName, error));
            return false;
        }
        out << "floor " << floors[i].strName << ": "
            << QDir(QvKsDataMng::ProjectFolder()).relativeFilePath(file) << "\n";
    }
    return true;
}
} // namespace

int Demo(const QString& folder, QTextStream& out, QTextStream& err)
{
    const QDir dir(folder);
    if (dir.exists() && !dir.isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden))
        return fail(err,
            QStringLiteral("%1 is not empty; the demo project is made in a new or empty folder").arg(folder));
    QFile script(QStringLiteral(":/demo/demo.sql"));
    if (!script.open(QIODevice::ReadOnly))
        return fail(err, QStringLiteral("the demo script is missing from this build"));
    QString error;
    if (!QvKsDataMng::CreateProject(folder, QStringLiteral("演示项目"), &error)
        || !QvKsDataMng::RunScript(QString::fromUtf8(script.readAll()), &error)) {
        QvKsDataMng::CloseProject();
        return fail(err, error);
    }
    const QString profile
        = QvKsDataMng::ProjectFolder() + QLatin1Char('/') + QvKsDataMng::ProfileFolderName();
    if (const QvKsWriteStatus settings = SaveDispAddedMsgSetting(profile, 1, QvKsDataMng::ProjectFolder());
        !settings)
        return fail(err, settings.Describe());
    const QString prjName = CProj().GetPrjName();
    for (const QString& spec : CISysCode::GetAllSpecNames()) {
        CSysCodeData root;
        const QString file
            = QStringLiteral("%1/系统编号/%2.scn").arg(profile, DefaultExchangeFileName(prjName, spec));
        if (!CISysCode::GetSpecCodeInfos(root, spec) || !root.ExportData(file, spec))
            return fail(err, QvKsDataMng::LastError());
        out << spec << ": " << countCodes(root) << " codes\n";
    }
    if (!writeFloors(out, err)) {
        QvKsDataMng::CloseProject();
        return 1;
    }
    out << "demo project \"" << prjName << "\" made in " << QvKsDataMng::ProjectFolder() << "\n";
    QvKsDataMng::CloseProject();
    return 0;
}

int Print(const QString& folder, const QString& spec, QTextStream& out, QTextStream& err)
{
    CSysCodeData root;
    if (!openSpec(folder, spec, root, err))
        return 1;
    out << "# " << spec << ": " << countCodes(root) << " codes\n";
    printTree(root, out);
    QvKsDataMng::CloseProject();
    return 0;
}

int Export(
    const QString& folder, const QString& spec, const QString& file, QTextStream& out, QTextStream& err)
{
    CSysCodeData root;
    if (!openSpec(folder, spec, root, err))
        return 1;
    if (!root.ExportData(file, spec))
        return fail(err, QvKsDataMng::LastError());
    out << countCodes(root) << " codes of " << spec << " written to " << file << "\n";
    QvKsDataMng::CloseProject();
    return 0;
}

int Import(const QString& folder, const QString& spec, const QString& file, bool anySpec, QTextStream& out,
    QTextStream& err)
{
    CSysCodeData root;
    if (!openSpec(folder, spec, root, err))
        return 1;
    CSysCodeData imported;
    const SysCodeFileResult read = LoadSysCodeFile(file, imported);
    if (read.status == SysCodeFileStatus::Newer)
        return fail(err,
            QStringLiteral("%1 was written by a newer version (%2; this is %3): not imported")
                .arg(file, read.version, CQvKsVersion::Current().ToString()));
    if (read.status != SysCodeFileStatus::Read)
        return fail(err, QStringLiteral("%1 is not imported: %2").arg(file, read.reason));
    // The tool cannot ask, as the dialog does: a file of another specialty goes in
    // only when the command line says so.
    if (IsForAnotherSpec(read, spec) && !anySpec)
        return fail(err,
            QStringLiteral(
                "%1 holds codes of %2, not of %3: not imported (--any-spec imports it all the same)")
                .arg(file, read.spec, spec));
    // The specialty is read again inside the write, so that a save made since it
    // was opened (a drafter's OK) is merged into, never overwritten.
    if (!QvKsDataMng::BeginWrites())
        return fail(err, QvKsDataMng::LastError());
    if (!CISysCode::GetSpecCodeInfos(root, spec)) {
        const QString why = QvKsDataMng::LastError();
        QvKsDataMng::RollbackWrites();
        return fail(err, why);
    }
    const int before = countCodes(root);
    int counter = root.GetNodeIndex();
    MergeSysCodeTree(counter, &root, &imported, true);
    if (!CISysCode::SetSpecCodeInfos(root, spec) || !QvKsDataMng::CommitWrites()) {
        const QString why = QvKsDataMng::LastError();
        QvKsDataMng::RollbackWrites();
        return fail(err, why);
    }
    out << countCodes(imported) << " codes read from " << file << "; " << countCodes(root) - before
        << " added to " << spec << ", the others updated\n";
    QvKsDataMng::CloseProject();
    return 0;
}

} // namespace ProjectCommands
