// The management dialog in qvhost when files cannot be written and the store cannot
// be read or written, driven as a drafter does it: the warning names the file and
// the reason in place of the notice, what was there stays, and a failing script
// ends without saving.
#include "ModuleScriptFixture.h"

#include "QvKsFileFaults.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>

namespace {

QByteArray ReadAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

class FileFailureScript : public ModuleScriptFixture
{
protected:
    void TearDown() override
    {
        QvKsFileFaults::Clear();
        ModuleScriptFixture::TearDown();
    }
    QString ExchangeFile() const
    {
        return project.File(QStringLiteral("Profile/系统编号/演示项目-电气.scn"));
    }
};

TEST_F(FileFailureScript, AnExportOnAFullDiskWarnsAndKeepsTheOldFile)
{
    const QByteArray good = ReadAll(ExchangeFile());
    ASSERT_TRUE(good.contains("公共照明"));
    QvKsFileFaults::FailNth(QvKsFileFaults::Step::Write, 1, ENOSPC);
    EXPECT_EQ(Run(QStringLiteral("command bhgl\n"
                                 "file %1\n"
                                 "click 205\n"
                                 "expect-box 无法写入文件 %1：磁盘空间已满\n"
                                 "cancel\n"
                                 "expect-title ")
                      .arg(ExchangeFile())),
        "");
    EXPECT_FALSE(History().contains(QStringLiteral("导出完成"))) << History().toStdString();
    EXPECT_TRUE(History().contains(QStringLiteral("[0x12030]: 无法写入文件")));
    EXPECT_EQ(ReadAll(ExchangeFile()), good);
    // With room again the same export goes through and says so.
    EXPECT_EQ(Run(QStringLiteral("command bhgl\n"
                                 "file %1\n"
                                 "click 205\n"
                                 "expect-box 导出完成\n"
                                 "cancel\n")
                      .arg(ExchangeFile())),
        "");
}

TEST_F(FileFailureScript, ASettingOnAFullDiskWarnsAndKeepsTheSettingsFile)
{
    const QString ini = project.File(QStringLiteral("Profile/SysCodeMng.ini"));
    const QByteArray before = ReadAll(ini);
    ASSERT_TRUE(before.contains("DispAddedMsg=1"));
    QvKsFileFaults::FailNthWrite(1);
    EXPECT_EQ(Run(QStringLiteral("command bhgl\n"
                                 "uncheck 206\n"
                                 "ok\n"
                                 "expect-box SysCodeMng.ini：磁盘空间已满\n"
                                 "expect-title ")),
        "");
    EXPECT_EQ(ReadAll(ini), before);
}

// A project shared with someone who planted a link at the default export name.
TEST_F(FileFailureScript, ALinkPlantedAtTheDefaultNameIsNotWrittenThrough)
{
    QTemporaryDir elsewhere;
    const QString victim = elsewhere.filePath(QStringLiteral("victim.txt"));
    QFile file(victim);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("not the project's");
    file.close();
    ASSERT_TRUE(QFile::remove(ExchangeFile()));
    ASSERT_TRUE(QFile::link(victim, ExchangeFile()));
    EXPECT_EQ(Run(QStringLiteral("command bhgl\n"
                                 "file %1\n"
                                 "click 205\n"
                                 "expect-box 该文件是指向别处的链接\n"
                                 "cancel\n")
                      .arg(ExchangeFile())),
        "");
    EXPECT_EQ(ReadAll(victim), QByteArray("not the project's"));
    EXPECT_TRUE(QFileInfo(ExchangeFile()).isSymLink());
}

TEST_F(FileFailureScript, AStoreWithoutTheCodesTableSaysSoAndOpensNoDialog)
{
    EXPECT_EQ(Run(QStringLiteral("sql DROP TABLE sys_code\n"
                                 "command bhgl\n"
                                 "expect-box 无法从项目数据中读取电气的系统编号\n"
                                 "expect-title ")),
        "");
    EXPECT_TRUE(History().contains(QStringLiteral("no such table"))) << History().toStdString();
}

// The store refuses every save (as one that cannot be written does): the script's
// cancel takes the default Yes once and is told; when the script then fails, the
// question is answered No, the dialog closes, and nothing was saved.
TEST_F(FileFailureScript, AScriptWhoseSaveKeepsFailingEndsWithoutSaving)
{
    const CSysCodeData before = StoredElectrical();
    const std::string failures
        = Run(QStringLiteral("sql CREATE TRIGGER refuse_insert BEFORE INSERT ON sys_code "
                             "BEGIN SELECT RAISE(ABORT, 'the store is read-only'); END\n"
                             "sql CREATE TRIGGER refuse_update BEFORE UPDATE ON sys_code "
                             "BEGIN SELECT RAISE(ABORT, 'the store is read-only'); END\n"
                             "sql CREATE TRIGGER refuse_delete BEFORE DELETE ON sys_code "
                             "BEGIN SELECT RAISE(ABORT, 'the store is read-only'); END\n"
                             "command bhgl\n"
                             "row 公共照明\n"
                             "click 203\n"
                             "expect-cell 公共照明 2\n"
                             "cancel\n"
                             "expect-box 系统编号未能保存\n"));
    EXPECT_NE(failures.find("waited with no line left to run"), std::string::npos) << failures;
    EXPECT_EQ(History().count(QStringLiteral("是否保存设置修改? -> Yes")), 1) << History().toStdString();
    EXPECT_EQ(History().count(QStringLiteral("是否保存设置修改? -> No")), 1);
    const CSysCodeData after = StoredElectrical();
    EXPECT_EQ(after.FindByFullName(QStringLiteral("公共照明"))->GetAddedMsg(),
        before.FindByFullName(QStringLiteral("公共照明"))->GetAddedMsg());
}

} // namespace
