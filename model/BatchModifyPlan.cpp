#include "BatchModifyPlan.h"

#include "PipeInfoPath.h"

QList<int> BatchTargetRows(const QList<bool>& selectedRows)
{
    QList<int> rows;
    for (qsizetype row = selectedRows.size() - 1; row >= 0; --row) {
        if (selectedRows.at(row))
            rows.append(int(row));
    }
    return rows;
}

BatchRowChange BatchRowChangeFor(const BatchModifyValues& values)
{
    BatchRowChange change;
    change.strRowInfo = values.strPipeInfo;
    change.bSetColor = values.apply[kBatchColor];
    change.color = values.color;
    const std::array<std::pair<BatchField, QString>, 4> texts = { {
        { kBatchPipeInfo, PipeInfoDisplayName(values.strPipeInfo) },
        { kBatchHorMode, values.strHorMode },
        { kBatchVerMode, values.strVerMode },
        { kBatchRemark, values.strRemark },
    } };
    for (const auto& [field, text] : texts) {
        if (values.apply[field])
            change.texts.append({ field, text });
    }
    return change;
}
