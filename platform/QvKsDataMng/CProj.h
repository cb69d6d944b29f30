#pragma once

// The open project's own data: name, floors, current specialty and floor, colour
// display. A CProj is a light handle on the project open in the process; it holds
// nothing itself, so any number may be made.
#include <QString>
#include <QVector>

struct SQvKsFloorData
{
    QString strName; // first: callers that need the name only take this
    QString strDwgFile; // drawing file name, relative to the project folder
    double dElevation = 0.0;
    double dHeight = 0.0;
};

class CProj
{
public:
    // Floors in their order. False when no project is open.
    bool GetAllFloorData(QVector<SQvKsFloorData>& floors) const;
    QString GetCurFloorName() const;
    bool SetCurFloorName(const QString& floor);
    QString GetPrjName() const;
    // 1: entities are drawn in their system code's colour; 0: by layer.
    int GetColorShowType() const;
    bool SetColorShowType(int type);
    QString GetCurrentSpec() const;
    // Only a specialty of the project can become current.
    bool SetCurrentSpec(const QString& spec);
};
