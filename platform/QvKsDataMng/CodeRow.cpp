#include "CodeRow.h"

#include "CSysCodeData.h"

CodeRow::CodeRow(const CSysCodeData& code, int index, int parentIndex, int ord)
    : node(&code)
    , lineWidth(code.GetLineWidth())
{
    ints[kIndex] = index;
    ints[kParent] = parentIndex;
    ints[kColor] = qint64(code.GetMfcColor());
    ints[kAlpha] = code.GetAlpha();
    ints[kOrd] = ord;
    texts[kName] = code.GetNodeName().toUtf8();
    texts[6] = code.GetLineStyle().toUtf8();
    texts[7] = code.GetLineString().toUtf8();
    texts[8] = code.GetHorLayingMode().toUtf8();
    texts[9] = code.GetVerLayingMode().toUtf8();
    texts[10] = code.GetAddedMsg().toUtf8();
    texts[11] = code.GetDescribe().toUtf8();
}
