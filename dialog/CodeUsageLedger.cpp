#include "CodeUsageLedger.h"

#include "CodePathCounter.h"

void CodeUsageLedger::NoteScanned(const QString& floor)
{
    if (!m_floors.contains(floor))
        m_floors.append(floor);
}

const QHash<QString, int>& CodeUsageLedger::Add(const QString& floor, const CodePathCounter& counter)
{
    NoteScanned(floor);
    QHash<QString, int>& counts = m_counts[floor];
    counter.AddTo(counts);
    return counts;
}

QString CodeUsageLedger::DescribeFloors(const QString& path, int& count) const
{
    count = 0;
    QStringList floors;
    for (const QString& floor : m_floors) {
        const auto counts = m_counts.find(floor);
        if (counts == m_counts.end())
            continue;
        if (const auto n = counts->second.constFind(path); n != counts->second.cend()) {
            count += n.value();
            floors << QStringLiteral("%1 %2").arg(floor).arg(n.value());
        }
    }
    return floors.join(QStringLiteral("，"));
}

QString CodeUsageLedger::DescribeCode(int spec, int index, int& count) const
{
    count = 0;
    if (index <= 0)
        return QString();
    return DescribeFloors(QString::asprintf("%d\\%d", spec, index), count);
}

QStringList CodeUsageLedger::DescribeUnreadable(const QList<UnreadableFloor>& floors)
{
    QStringList lines;
    for (const UnreadableFloor& floor : floors)
        lines << floor.floor + QStringLiteral("：") + floor.reason;
    return lines;
}
