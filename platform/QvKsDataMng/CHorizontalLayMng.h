#pragma once

#include <QStringList>
#include <QVector>

struct SQvKsLayModeInfo
{
    QString strName; // e.g. "沿墙明敷"
    QString strCode; // e.g. "WE"
    QString strDescribe;
};

// Laying modes of pipes and lines.
class CHorizontalLayMng
{
public:
    // The horizontal laying modes of a floor, in order. False for an unknown floor.
    static bool GetAllLayModeInfos(const QString& floor, QVector<SQvKsLayModeInfo>& modes);
    // The vertical laying modes of the project, in order.
    static bool GetVerticalLayModeName(QStringList& names);
};
