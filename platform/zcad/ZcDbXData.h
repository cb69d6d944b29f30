#pragma once

// Extended data: per registered application, a list of values, each with its DXF
// group code (1000 string, 1002 control string, 1003 layer, 1005 handle,
// 1010-1013 points, 1040-1042 reals, 1070 16-bit and 1071 32-bit integers).
#include "ZcGePoint3d.h"

#include <QString>

#include <vector>

struct ZcDbXDataValue
{
    int code = 1000;
    QString text;
    double value[3] = { 0.0, 0.0, 0.0 };

    static ZcDbXDataValue string(const QString& s, int code = 1000) { return { code, s, { 0, 0, 0 } }; }
    static ZcDbXDataValue real(double v, int code = 1040) { return { code, {}, { v, 0, 0 } }; }
    static ZcDbXDataValue integer(qint32 v, int code = 1071) { return { code, {}, { double(v), 0, 0 } }; }
    static ZcDbXDataValue point(const ZcGePoint3d& p, int code = 1010)
    {
        return { code, {}, { p.x, p.y, p.z } };
    }

    bool isString() const { return (code >= 1000 && code <= 1009) || code == 1004; }
    bool isPoint() const { return code >= 1010 && code <= 1039; }
    qint32 toInt() const { return qint32(value[0]); }
    bool operator==(const ZcDbXDataValue& other) const
    {
        return code == other.code && text == other.text && value[0] == other.value[0]
            && value[1] == other.value[1] && value[2] == other.value[2];
    }
};

struct ZcDbXDataApp
{
    QString appName;
    std::vector<ZcDbXDataValue> values;
};
