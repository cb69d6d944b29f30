// A team's project on a server, as its drafters meet it in the dialog: two hosts
// saving at once keep both sides' changes, and a server lost during a save leaves
// the store as it was and the dialog with every edit.
#include "ModuleScriptFixture.h"
#include "PgTestServer.h"
#include "QvKsDataMng.h"

#include <QFile>

namespace {

QString moveToServer(const QString& folder, const QString& url)
{
    QProcess tool;
    tool.start(QStringLiteral(QV_QVPROJ), { QStringLiteral("move-to-server"), folder, url });
    tool.waitForFinished(60000);
    return tool.exitCode() == 0 ? QString() : QString::fromUtf8(tool.readAllStandardError());
}

class ServerScript : public ModuleScriptFixture
{
protected:
    // The server the project is carried to before the host opens it.
    virtual PgTestServer* Server() { return PgTestServer::Get(); }

    void SetUp() override
    {
        PgTestServer* server = Server();
        if (!server)
            GTEST_SKIP() << PgTestServer::SkipReason().toStdString();
        ASSERT_EQ(moveToServer(project.Path(), server->NewDatabase()), QString());
        ModuleScriptFixture::SetUp();
    }

    const CSysCodeData* Stored(const CSysCodeData& root, const char16_t* fullName)
    {
        const CSysCodeData* code = root.FindByFullName(QString::fromUtf16(fullName));
        EXPECT_NE(code, nullptr);
        return code;
    }
};

TEST_F(ServerScript, TwoHostsSavingOneSpecialtyKeepBothDraftersChanges)
{
    // The other drafter, in a host of their own on another machine, changes another
    // code and saves while this dialog is open.
    const QString other = project.File(QStringLiteral("other.qvs"));
    QFile script(other);
    ASSERT_TRUE(script.open(QIODevice::WriteOnly));
    script.write("command bhgl\n"
                 "edit 公共插座 备注\n"
                 "type 乙的备注\n"
                 "click-outside\n"
                 "ok\n"
                 "expect-title \n");
    script.close();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    EXPECT_EQ(Run(QStringLiteral("command bhgl\n"
                                 "edit 公共照明&WL2 备注\n"
                                 "type 甲的备注\n"
                                 "click-outside\n"
                                 "run qvhost --project \"%1\" --plugin \"%2\" --script \"%3\"\n"
                                 "ok\n"
                                 "expect-box 公共插座：备注\n"
                                 "expect-title ")
                      .arg(project.Path(), QStringLiteral(QV_MODULE_PLUGIN), other)),
        "");
    const CSysCodeData root = StoredElectrical();
    EXPECT_EQ(Stored(root, u"公共照明\\WL2")->GetDescribe(), QStringLiteral("甲的备注"));
    EXPECT_EQ(Stored(root, u"公共插座")->GetDescribe(), QStringLiteral("乙的备注"));
}

class CutServerScript : public ServerScript
{
protected:
    PgTestServer* Server() override
    {
        QString why;
        own = PgTestServer::StartPrivate(why);
        return own.get();
    }
    std::unique_ptr<PgTestServer> own;
};

TEST_F(CutServerScript, AServerLostDuringTheSaveLeavesTheStoreAndTheDialogKeepsTheEdits)
{
    const QString before = Stored(StoredElectrical(), u"公共插座")->GetDescribe();
    // The server stops as the save writes its first row.
    QvKsDataMng::BeforeNthWrite(1, [this] { own->Stop(); });
    EXPECT_EQ(Run(QStringLiteral("command bhgl\n"
                                 "edit 公共插座 备注\n"
                                 "type 甲的备注\n"
                                 "click-outside\n"
                                 "ok\n"
                                 "expect-box 系统编号未能保存，修改仍保留在对话框中\n"
                                 "expect-title 系统编号管理\n"
                                 "expect-cell 公共插座 备注 甲的备注\n"
                                 "answer no\n"
                                 "cancel\n"
                                 "expect-title ")),
        "");
    QvKsDataMng::BeforeNthWrite(0, nullptr);
    ASSERT_TRUE(own->Start());
    EXPECT_EQ(Stored(StoredElectrical(), u"公共插座")->GetDescribe(), before);
}

} // namespace
