#include "BenchProject.h"

#include "CISysCode.h"
#include "CSysCodeData.h"
#include "QvKsDataMng.h"

namespace {
void AddCodes(CSysCodeData& parent, const QString& prefix, int count, int& n, int depth)
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
            AddCodes(*node, QStringLiteral("WL"), kBenchMiddle, n, 1);
        else if (depth == 1)
            AddCodes(*node, QStringLiteral("回路"), kBenchLeaves, n, 2);
    }
}
} // namespace

void MakeBenchCodeTree(CSysCodeData& root)
{
    int n = 0;
    AddCodes(root, QStringLiteral("系统"), kBenchTop, n, 0);
}

BenchProject::BenchProject()
{
    QvKsDataMng::CreateProject(m_dir.path(), QStringLiteral("基准"));
    QvKsDataMng::RunScript(QStringLiteral("INSERT INTO spec(spec_id, name, ord) VALUES (3, '电气', 1);"
                                          "UPDATE meta SET value = '电气' WHERE key = 'current_spec';"));
    CSysCodeData root;
    MakeBenchCodeTree(root);
    CISysCode::SetSpecCodeInfos(root, Spec());
}

BenchProject& TheBenchProject()
{
    static BenchProject project;
    return project;
}
