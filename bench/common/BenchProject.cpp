#include "BenchProject.h"

#include "CISysCode.h"
#include "CSysCodeData.h"
#include "QvKsDataMng.h"

#include <algorithm>

namespace {
void AddCodes(CSysCodeData& parent, const QString& prefix, int count, int leaves, int& n, int depth)
{
    for (int i = 0; i < count; ++i) {
        auto* node = new CSysCodeData;
        node->SetNodeName(prefix + QString::number(i));
        node->SetMfcColor(COLORREF(++n * 2654435761u) & 0xFFFFFF);
        node->SetLineWidth(30);
        node->SetLineStyle(QStringLiteral("按字符"));
        node->SetLineString(QStringLiteral("WL"));
        node->SetAddedMsg(QStringLiteral("电气\\配管\\SC%1").arg(n % 50));
        node->SetDescribe(QStringLiteral("备注%1").arg(n));
        int counter = 0;
        parent.AddDataToChild(counter, node, false);
        if (depth == 0)
            AddCodes(*node, QStringLiteral("WL"), kBenchMiddle, leaves, n, 1);
        else if (depth == 1)
            AddCodes(*node, QStringLiteral("回路"), leaves, leaves, n, 2);
    }
}
} // namespace

int BenchLeaves(int size)
{
    const int upper = kBenchTop + kBenchTop * kBenchMiddle;
    const int middles = kBenchTop * kBenchMiddle;
    return std::max(1, (size - upper + middles / 2) / middles);
}

int BenchCodeCount(int size)
{
    return kBenchTop + kBenchTop * kBenchMiddle + kBenchTop * kBenchMiddle * BenchLeaves(size);
}

void MakeBenchCodeTree(CSysCodeData& root, int size)
{
    int n = 0;
    AddCodes(root, QStringLiteral("系统"), kBenchTop, BenchLeaves(size), n, 0);
}

QString BenchSpec(int size)
{
    return size >= kBenchLarge ? QStringLiteral("弱电") : QStringLiteral("电气");
}

QString BenchProjectSql()
{
    return QStringLiteral(
        "INSERT INTO spec(spec_id, name, ord) VALUES (3, '电气', 1), (5, '弱电', 2);"
        "UPDATE meta SET value = '电气' WHERE key = 'current_spec';"
        "UPDATE meta SET value = 'F0' WHERE key = 'current_floor';"
        "INSERT INTO floor(floor_id, name, ord, dwg_file) VALUES (100, 'F0', 0, 'F0.dxf');"
        "INSERT INTO lay_mode(floor_id, ord, name, code) VALUES"
        " (100, 1, '沿墙明敷', 'WE'), (100, 2, '穿管暗敷', 'SC'), (100, 3, '沿顶板明敷', 'CE'),"
        " (100, 4, '吊顶内敷设', 'SCE'), (100, 5, '地板内暗敷', 'FC'), (100, 6, '桥架敷设', 'CT'),"
        " (100, 7, '沿柱明敷', 'CLE'), (100, 8, '直埋', 'DB');"
        "INSERT INTO ver_lay_mode(ord, name) VALUES (1, '沿柱明敷'), (2, '沿墙明敷'),"
        " (3, '竖井内敷设'), (4, '穿管暗敷');");
}

void StoreBenchSpec(int size)
{
    CSysCodeData root;
    MakeBenchCodeTree(root, size);
    CISysCode::SetSpecCodeInfos(root, BenchSpec(size));
}

BenchProject::BenchProject()
{
    QvKsDataMng::CreateProject(m_dir.path(), QStringLiteral("基准"));
    QvKsDataMng::RunScript(BenchProjectSql());
}

QString BenchProject::Spec(int size)
{
    if (m_stored.insert(size).second)
        StoreBenchSpec(size);
    return BenchSpec(size);
}

BenchProject& TheBenchProject()
{
    static BenchProject project;
    return project;
}
