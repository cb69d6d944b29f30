// What the module cannot read it says so, as a drafter meets it in qvhost on the demo
// project: a system-code file that is no such file is refused with the reason before
// any preview, and a floor whose drawing is cut off makes the delete of a code ask
// first and "使用情况" mark the floor.
#include "ModuleScriptFixture.h"

#include "ZcDbDatabase.h"

#include <QFile>

#include <sys/stat.h>

namespace {
class RefuseScript : public ModuleScriptFixture
{
protected:
    // Every stored electrical code by its full name.
    static QStringList StoredNames()
    {
        QStringList names;
        const auto visit = [&](auto&& self, const CSysCodeData& node) -> void {
            for (const CSysCodeData* child : node.GetChildren()) {
                names << child->GetFullName();
                self(self, *child);
            }
        };
        visit(visit, StoredElectrical());
        return names;
    }
};

TEST_F(RefuseScript, AnImportOfWhatCannotBeReadIsRefusedWithItsReason)
{
    const QStringList before = StoredNames();
    const QString garbage = project.File(QStringLiteral("random.scn"));
    QFile file(garbage);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    for (int i = 0; i < 3000; ++i)
        file.putChar(char((i * 7919 + 13) % 251));
    file.close();
    const QString names = project.File(QStringLiteral("names.scn"));
    file.setFileName(names);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("<SysCodeFile Version=\"3.2.0\">\n<Code Name=\"新回路\"/>\n<Code Name=\"照明&#10;回路\"/>\n"
               "</SysCodeFile>\n");
    file.close();
    const QString fifo = project.File(QStringLiteral("f.scn"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    EXPECT_EQ(Run(QStringLiteral("command bhgl\n"
                                 "file %1\n"
                                 "click 204\n"
                                 "expect-box 无法导入系统编号文件 random.scn：\n"
                                 "expect-title 系统编号管理\n"
                                 "file %2\n"
                                 "click 204\n"
                                 "expect-box line 3: the code name \"照明\\u000a回路\" is not legal\n"
                                 "expect-title 系统编号管理\n"
                                 "file %3\n"
                                 "click 204\n"
                                 "expect-box f.scn: a named pipe, not a regular file!\n"
                                 "expect-title 系统编号管理\n"
                                 "expect-rows 公共照明 | 公共插座 | 区域照明 | 机房动力 | 弱电通信\n"
                                 "ok\n"
                                 "expect-title ")
                      .arg(garbage, names, fifo)),
        "");
    EXPECT_FALSE(History().contains(QStringLiteral("导入完成")));
    EXPECT_EQ(StoredNames(), before);
}

// 2F.dxf cut to its first 6,000 bytes: the codes used only there are unknown, so
// deleting one asks first (No, the default, keeps it) and "使用情况" says why.
TEST_F(RefuseScript, AFloorThatCannotBeReadMakesTheDeleteAsk)
{
    session.Close();
    const QString twoF = project.File(QStringLiteral("2F.dxf"));
    QFile drawing(twoF);
    ASSERT_TRUE(drawing.open(QIODevice::ReadWrite));
    ASSERT_TRUE(drawing.resize(6000));
    drawing.close();
    ZcDbDatabase probe(false, true);
    ASSERT_NE(probe.readDwgFile(twoF), Zcad::eOk);
    const QString reason = probe.readError();
    QString error;
    ASSERT_TRUE(session.Open(project.Path(), QString(), error)) << error.toStdString();
    ASSERT_TRUE(session.LoadPlugin(QStringLiteral(QV_MODULE_PLUGIN), error)) << error.toStdString();

    const QString question
        = QStringLiteral("以下楼层的图纸缺失或无法读取，无法确认所选系统编号是否已被使用：\n"
                         "2F：图纸无法读取：%1\n是否仍然删除?")
              .arg(reason);
    EXPECT_EQ(
        Run(QStringLiteral("command bhgl\n"
                           "expand 区域照明\n"
                           "row 区域照明&车库照明\n"
                           "key Del\n"
                           "expect-box 2F：图纸无法读取：\n"
                           "expect-rows 公共照明 | 公共插座 | 区域照明 | >车库照明 | 机房动力 | 弱电通信\n"
                           "key Ctrl+U\n"
                           "expect-title 使用情况\n"
                           "expect-disabled 3202\n"
                           "expect-text 3203 已使用 7 个，未使用 6 个，已扫描全部楼层\n"
                           "expect-text 3204 2F 无法读取：图纸无法读取：%1\n"
                           "cancel\n"
                           "rclick 区域照明&车库照明\n"
                           "answer yes\n"
                           "menu 1002\n"
                           "expect-box 是否仍然删除?\n"
                           "expect-rows 公共照明 | 公共插座 | 区域照明 | 机房动力 | 弱电通信\n"
                           "ok\n"
                           "expect-title ")
                .arg(reason)),
        "");
    EXPECT_TRUE(History().contains(question)) << History().toStdString();
    EXPECT_TRUE(History().contains(QStringLiteral("[0x12134]")));
    EXPECT_EQ(StoredElectrical().FindByFullName(QStringLiteral("区域照明\\车库照明")), nullptr);
}
} // namespace
