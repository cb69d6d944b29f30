// Two people saving one specialty: when the store changed since the grid was read,
// the grid's codes are merged with it before they are stored.
#include "SysCodeDlg.h"

#include "CAtt.h"
#include "CQtxmMng.h"
#include "CSysCodeMergeDlg.h"
#include "SysCodeThreeWayMerge.h"
#include "WinTypes.h"

#include <QHash>

bool SysCodeDlg::MergeWithStore(const CSysCodeData& base, const CSysCodeData& theirs, CSysCodeData& mine,
    QStringList& fromTheirs, std::vector<std::pair<QString, QString>>& renames)
{
    QList<SysCodeMergeChoice> choices;
    for (;;) {
        SysCodeThreeWayMerge merge = MergeSysCodeThreeWay(base, theirs, mine, choices);
        if (!merge.HasUndecided()) {
            mine = *merge.merged;
            fromTheirs << merge.fromTheirs;
            renames = std::move(merge.renames);
            return true;
        }
        // A choice can bring collisions of its own (a kept code meets a namesake):
        // the dialog is shown again with the earlier choices in place.
        CSysCodeMergeDlg dialog(merge.collisions, choices, this);
        if (dialog.DoModal() != IDOK)
            return false;
        choices = dialog.Choices();
    }
}

// Items are read again inside the save's transaction: someone else's save may have
// carried its own renames into them since the dialog opened.
bool SysCodeDlg::ApplyMergeRenames(
    const QString& spec, const std::vector<std::pair<QString, QString>>& renames)
{
    m_mapQdInfo.clear();
    m_mapDeInfo.clear();
    LoadPipelineInfo();
    QHash<QString, QString> pathOf;
    for (const auto& [before, after] : renames)
        pathOf.insert(spec + QLatin1Char('\\') + before, spec + QLatin1Char('\\') + after);
    // One look-up each: a swap of two names must not carry an item twice.
    return CarryRenamesIntoItems([&](const QString& path) { return pathOf.value(path, path); });
}

namespace {
template <typename Items, typename Store>
bool carryInto(Items& byFloor, const std::function<QString(const QString&)>& renamed, Store store)
{
    bool ok = true;
    for (auto& [floor, items] : byFloor) {
        for (auto& item : items) {
            const QString path = renamed(item.strSysCode);
            if (path == item.strSysCode)
                continue;
            item.strSysCode = path;
            ok = store(item) && ok;
        }
    }
    return ok;
}
} // namespace

bool SysCodeDlg::CarryRenamesIntoItems(const std::function<QString(const QString&)>& renamed)
{
    const bool bills = carryInto(m_mapQdInfo, renamed, &CQtxmMng::SetQdInfo);
    const bool quotas = carryInto(m_mapDeInfo, renamed, &CQtxmMng::SetQdDeInfo);
    return bills && quotas && CAtt::Save();
}
