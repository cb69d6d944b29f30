#include "SysCodeMerge.h"

#include "CSysCodeData.h"

bool MergeSysCodeTree(int& counter, CSysCodeData* targetRoot, const CSysCodeData* source, bool isRoot)
{
    if (!targetRoot || !source)
        return false;
    if (!isRoot && !targetRoot->ResetExistNodeMsg(source))
        return targetRoot->AddNewSysCodeByFullName(counter, source, source->GetFullName(), true);
    // The target looks codes up by full name through its index, which adding keeps
    // current, so each imported code costs one look-up.
    bool placedAll = true;
    for (const CSysCodeData* child : source->GetChildren()) {
        if (!MergeSysCodeTree(counter, targetRoot, child, false))
            placedAll = false;
    }
    return placedAll;
}
