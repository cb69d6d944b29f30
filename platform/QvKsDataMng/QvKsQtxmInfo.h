#pragma once

// Pipeline bill items (清单, "Qd") and quota items (定额, "De") of a floor. Each
// carries the full path of the system code it was measured for ("电气\公共照明"),
// so a renamed code is carried into the items by rewriting that path.
#include <QString>

struct SQvKsQdInfo
{
    qint64 nId = 0; // the store's id; identifies the item in SetQdInfo
    QString strFloor;
    QString strCode; // bill code, e.g. "030411001"
    int nIndex = 0; // serial of the item among those of the same code on the floor
    QString strName;
    QString strFeature;
    QString strUnit;
    double dQuantity = 0.0;
    QString strSysCode; // system-code full path

    // The name the dialog indexes items by: code, serial and name; empty for an
    // item without code and name.
    QString GetName() const;
};

struct SQvKsDeInfo
{
    qint64 nId = 0;
    QString strFloor;
    qint64 nQdId = 0; // the bill item it belongs to; 0 when none
    QString strCode; // quota code, e.g. "4-12-5"
    int nIndex = 0;
    QString strName;
    QString strUnit;
    double dQuantity = 0.0;
    QString strSysCode;

    QString GetName() const;
};
