#include "SysCodeCells.h"

#include "CSysCodeData.h"
#include "PipeInfoPath.h"
#include "SysCodeColumn.h"
#include "SysCodeDefaults.h"

bool IsTypedSysCodeColumn(int logical)
{
    return logical == kColLineWidth || logical == kColAlpha || logical == kColPipeInfo;
}

QVariant SysCodeCellValue(const CSysCodeData& code, int logical, bool electrical)
{
    switch (logical) {
    case kColName:
        return code.GetNodeName();
    case kColPipeInfo:
        return code.GetAddedMsg();
    case kColHorLaying:
        return code.GetHorLayingMode();
    case kColVerLaying:
        return code.GetVerLayingMode();
    case kColLineStyle:
        return code.GetLineStyle();
    case kColLineString:
        return code.GetLineString();
    case kColLineWidth:
        return EffectiveSysLineWidth(code.GetLineWidth(), electrical);
    case kColAlpha:
        return code.GetAlpha();
    case kColRemark:
        return code.GetDescribe();
    default:
        return QString();
    }
}

QString SysCodeValueText(int logical, const QVariant& value)
{
    switch (logical) {
    case kColLineWidth:
        return value.typeId() == QMetaType::Double ? QString::asprintf("%g", value.toDouble())
                                                   : value.toString();
    case kColAlpha:
        return value.typeId() == QMetaType::Int ? QString::asprintf("%d", value.toInt()) : value.toString();
    case kColPipeInfo:
        return PipeInfoDisplayName(value.toString());
    default:
        return value.toString();
    }
}

QVariant SysCodeTextValue(int logical, const QString& text)
{
    bool ok = false;
    switch (logical) {
    case kColLineWidth: {
        const double width = text.toDouble(&ok);
        return ok ? QVariant(width) : QVariant();
    }
    case kColAlpha: {
        const int alpha = text.toInt(&ok);
        return ok ? QVariant(alpha) : QVariant();
    }
    default:
        return text;
    }
}

void SetSysCodeField(CSysCodeData& code, int logical, const QVariant& value)
{
    switch (logical) {
    case kColName:
        code.SetNodeName(value.toString());
        break;
    case kColPipeInfo:
        code.SetAddedMsg(value.toString());
        break;
    case kColHorLaying:
        code.SetHorLayingMode(value.toString());
        break;
    case kColVerLaying:
        code.SetVerLayingMode(value.toString());
        break;
    case kColLineStyle:
        code.SetLineStyle(value.toString());
        break;
    case kColLineString:
        code.SetLineString(value.toString());
        break;
    case kColLineWidth:
        code.SetLineWidth(value.toDouble());
        break;
    case kColAlpha:
        code.SetAlpha(value.toInt());
        break;
    case kColRemark:
        code.SetDescribe(value.toString());
        break;
    default:
        break;
    }
}
