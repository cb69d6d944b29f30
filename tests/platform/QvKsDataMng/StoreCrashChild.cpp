// The child of the crash test: imports a system-code file into 弱电 as the project
// tool does, killed by itself (SIGKILL) at the chosen fault point of the store's
// files. Prints the number of fault points when it lives to the end.
//   store_crash_child FOLDER FILE.scn KILL_AT
#include "CISysCode.h"
#include "CSysCodeData.h"
#include "FaultVfs.h"
#include "QvKsDataMng.h"
#include "SysCodeMerge.h"

#include <QCoreApplication>
#include <QStringList>

#include <cstdio>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 4)
        return 2;
    FaultVfs::Install();
    const QString spec = QStringLiteral("弱电");
    CSysCodeData root;
    CSysCodeData imported;
    if (!QvKsDataMng::OpenProject(args[1]) || !CISysCode::GetSpecCodeInfos(root, spec)
        || !imported.ImportData(args[2]))
        return 3;
    int counter = root.GetNodeIndex();
    MergeSysCodeTree(counter, &root, &imported, true);
    FaultVfs::KillAtNth(args[3].toInt());
    if (!CISysCode::SetSpecCodeInfos(root, spec))
        return 4;
    std::printf("%d\n", FaultVfs::Points());
    QvKsDataMng::CloseProject();
    return 0;
}
