#include "SysCodeIndexPath.h"

#include "CISysCode.h"
#include "CQVSpecTypeInfoGet.h"
#include "CSysCodeData.h"

QString GetSysCodeIndexPath(QString& fullPath, bool& bSelCodeReplaced)
{
    const QString known = CISysCode::GetIndexPath(fullPath);
    if (!known.isEmpty())
        return known;
    const qsizetype cut = fullPath.indexOf(QLatin1Char('\\'));
    if (cut < 0)
        return QString();
    const QString spec = fullPath.left(cut);
    CSysCodeData root;
    if (!CISysCode::GetSpecCodeInfos(root, spec) || root.GetChildCount() == 0)
        return QString();
    const CSysCodeData* first = root.GetChild(0);
    bSelCodeReplaced = true;
    fullPath = spec + QLatin1Char('\\') + first->GetNodeName();
    return QString::asprintf(
        "%d\\%d", int(CQVSpecTypeInfoGet::GetSpecTypeByName(spec)), first->GetNodeIndex());
}
