#include "ScnMerge.h"

#include "CSysCodeData.h"

void MergeScnTree(int& counter, CSysCodeData& target, const CSysCodeData& source)
{
    for (const CSysCodeData* child : source.GetChildren()) {
        if (target.ResetExistNodeMsg(child))
            MergeScnTree(counter, target, *child);
        else
            target.AddNewSysCodeByFullName(counter, child, child->GetFullName(), true);
    }
}
