#include "TestProject.h"

#include "DxfWriter.h"
#include "QvKsDataMng.h"

#include <QFile>

namespace {
const char* const kStandardSql = R"sql(
UPDATE meta SET value = '电气' WHERE key = 'current_spec';
UPDATE meta SET value = '1F' WHERE key = 'current_floor';
INSERT INTO spec(spec_id, name, ord, max_index) VALUES
  (1, '给排水', 1, 1), (3, '电气', 2, 5), (2, '暖通', 3, 0), (4, '消防', 4, 0), (6, '弱电', 5, 0);
INSERT INTO floor(floor_id, name, ord, dwg_file) VALUES
  (1, 'B1', 1, 'B1.dxf'), (2, '1F', 2, '1F.dxf'), (3, '2F', 3, '2F.dxf');
INSERT INTO sys_code(spec_id, node_index, parent_index, ord, name, color, line_width, alpha, line_style,
                     line_string, hor_laying, ver_laying, added_msg, describe) VALUES
  (3, 1, 0, 0, '照明', 65535, 30, 0, '', '', 'CC', 'WC', '电气\配管\SC20', '一般照明'),
  (3, 2, 1, 0, 'WL1', 255, 2.5, 10, 'QVDash __ __ __ __', '', '', '', '', ''),
  (3, 3, 2, 0, '一层', 255, -1, 0, '', '', '', '', '', ''),
  (3, 4, 0, 1, '动力', 16711680, 30, 0, '', '', '', '', '', ''),
  (3, 5, 0, 2, '插座', 65280, 30, 0, '', '', '', '', '', ''),
  (1, 1, 0, 0, '给水', 65280, 1, 0, '按字符', 'J', '', '', '', '市政');
)sql";
} // namespace

TestProject::TestProject(const QString& extraSql)
{
    if (!m_dir.isValid() || !QvKsDataMng::CreateProject(m_dir.path(), QStringLiteral("测试项目")))
        return;
    // Every floor has its drawing, as in a real project: a floor whose drawing is
    // missing makes every delete of a saved code ask.
    m_open = QvKsDataMng::RunScript(QString::fromUtf8(kStandardSql))
        && (extraSql.isEmpty() || QvKsDataMng::RunScript(extraSql))
        && writeFloor(QStringLiteral("B1.dxf"), {}) && writeFloor(QStringLiteral("1F.dxf"), {})
        && writeFloor(QStringLiteral("2F.dxf"), {});
}

TestProject::~TestProject()
{
    QvKsDataMng::CloseProject();
}

bool TestProject::writeFloor(const QString& fileName, const QStringList& indexPaths) const
{
    QFile file(m_dir.filePath(fileName));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    DxfWriter writer(&file);
    writer.registerApp(QStringLiteral("QVKS"));
    double y = 0;
    for (const QString& path : indexPaths) {
        writer.addProductEntity(path, { ZcGePoint3d(0, y, 0), ZcGePoint3d(1000, y, 0) });
        y += 100;
    }
    return writer.finish();
}
