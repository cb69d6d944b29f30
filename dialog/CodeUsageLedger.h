#pragma once

// How many product entities use each code, floor by floor, as the drawings were
// scanned: what "使用情况" and a refused delete tell the user. Floors are listed in
// the order they were first scanned, the current floor first.
#include "UsedCodeIndexes.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <map>

class CodePathCounter;

class CodeUsageLedger
{
public:
    // `floor`'s drawing is being scanned: it takes its place in the order.
    void NoteScanned(const QString& floor);
    // The entities `counter` counted on `floor`, added to those counted there before;
    // the floor's counts by index path (lower case) after.
    const QHash<QString, int>& Add(const QString& floor, const CodePathCounter& counter);
    // The floors whose drawings use the code at index path `path`, "B1 12，1F 3", and
    // its entities over all of them in `count`.
    QString DescribeFloors(const QString& path, int& count) const;
    // The same for node `index` of specialty number `spec`; a code never saved (index
    // 0) is used by no drawing.
    QString DescribeCode(int spec, int index, int& count) const;

    // "2F：图纸无法读取：…", one line a floor whose entities are unknown.
    static QStringList DescribeUnreadable(const QList<UnreadableFloor>& floors);

private:
    std::map<QString, QHash<QString, int>> m_counts;
    QStringList m_floors;
};
