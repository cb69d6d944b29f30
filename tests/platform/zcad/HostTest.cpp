// The host side of the SDK: loading applications, commands, documents, resource
// handles, the command line and selection sets.
#include "ZcEdCommandLoop.h"
#include "ZcSdk.h"

#include <gtest/gtest.h>

namespace {
// Collects what is printed on the command line while it lives.
class OutputCapture
{
public:
    OutputCapture()
    {
        m_previous = zcutSetOutputSink([this](const QString& text) { m_lines.append(text); });
    }
    ~OutputCapture() { zcutSetOutputSink(m_previous); }
    QStringList lines() const { return m_lines; }
    QString all() const { return m_lines.join(QString()); }

private:
    QStringList m_lines;
    ZcUtOutputSink m_previous;
};

class DocumentFixture : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_document = zcDocManagerPtr()->createDocument(&m_database, QStringLiteral("/tmp/1F.dxf"));
    }
    void TearDown() override
    {
        if (m_document)
            zcDocManagerPtr()->destroyDocument(m_document);
        zcDocManagerPtr()->resetResourceStack();
    }

    ZcDbDatabase m_database;
    ZcApDocument* m_document = nullptr;
};

int g_calls = 0;
void countCall()
{
    ++g_calls;
}
void pushWithoutPop()
{
    zcDocManagerPtr()->pushResourceHandle(&g_calls);
}
void pushAndPop()
{
    zcDocManagerPtr()->pushResourceHandle(&g_calls);
    zcDocManagerPtr()->popResourceHandle();
}
} // namespace

TEST(RxClasses, RegistryServicesAreFoundAndDerivedFromTheirClasses)
{
    ZcRxObject* linker = zcrxSysRegistry()->at(ZCRX_DYNAMIC_LINKER);
    ZcRxObject* commands = zcrxSysRegistry()->at(ZCRX_COMMAND_DOCK);
    ASSERT_NE(linker, nullptr);
    ASSERT_NE(commands, nullptr);
    EXPECT_TRUE(linker->isA()->isDerivedFrom(ZcRxDynamicLinker::desc()));
    EXPECT_FALSE(linker->isA()->isDerivedFrom(ZcEdCommandStack::desc()));
    EXPECT_TRUE(commands->isA()->isDerivedFrom(ZcRxObject::desc()));
    EXPECT_EQ(zcrxSysRegistry()->at(u"NoSuchService"), nullptr);

    ZcDbAttribute attribute;
    EXPECT_TRUE(attribute.isKindOf(ZcDbText::desc()));
    EXPECT_EQ(ZcDbMText::cast(&attribute), nullptr);
    EXPECT_EQ(attribute.isA()->name(), QStringLiteral("ZcDbAttribute"));
}

TEST(CommandStack, FindsCommandsByEitherNameWithoutRegardToCase)
{
    ZcEdCommandStack* stack = zcedRegCmds();
    ASSERT_EQ(stack->addCommand(u"QVCASE", u"_Global1", u"local1", 0, countCall), Zcad::eOk);
    EXPECT_EQ(stack->addCommand(u"QVCASE", u"_global1", u"other", 0, countCall), Zcad::eDuplicateKey);
    EXPECT_EQ(stack->addCommand(u"QVCASE", u"_x", u"y", 0, nullptr), Zcad::eInvalidInput);

    g_calls = 0;
    for (const char* typed : { "LOCAL1", "local1", "_GLOBAL1", "_global1", "global1" })
        EXPECT_TRUE(stack->invoke(QString::fromLatin1(typed))) << typed;
    EXPECT_EQ(g_calls, 5);
    EXPECT_FALSE(stack->invoke(QStringLiteral("_local1")));
    EXPECT_FALSE(stack->invoke(QStringLiteral("nothing")));

    EXPECT_EQ(stack->removeGroup(u"qvcase"), Zcad::eOk);
    EXPECT_EQ(stack->lookupCmd(QStringLiteral("local1")), nullptr);
    EXPECT_EQ(stack->removeGroup(u"QVCASE"), Zcad::eKeyNotFound);
}

TEST_F(DocumentFixture, PluginIsLoadedItsCommandRunsAndItsQueuedStringRunsAfterwards)
{
    OutputCapture output;
    ZcRxDynamicLinker* linker = zcrxDynamicLinker();
    ASSERT_TRUE(linker->loadModule(QStringLiteral(QV_TEST_PLUGIN))) << linker->lastError().toStdString();
    EXPECT_TRUE(linker->loadModule(QStringLiteral(QV_TEST_PLUGIN)));
    EXPECT_EQ(output.lines().count(QStringLiteral("[plugin] init")), 1);
    EXPECT_TRUE(linker->isAppMDIAware(QStringLiteral(QV_TEST_PLUGIN)));
    EXPECT_FALSE(linker->isApplicationLocked(QStringLiteral(QV_TEST_PLUGIN)));

    const ZcEdCommand* command = zcedRegCmds()->lookupCmd(QStringLiteral("QVFIRST"));
    ASSERT_NE(command, nullptr);
    EXPECT_EQ(command->groupName(), QStringLiteral("QVTEST"));
    EXPECT_EQ(command->globalName(), QStringLiteral("_qvfirst"));

    ZcEdCommandLoop loop;
    EXPECT_EQ(loop.type(QStringLiteral("qvfirst")), 0) << "no blank yet: not submitted";
    EXPECT_EQ(loop.type(QStringLiteral(" ")), 2);
    const QStringList lines = output.lines();
    const qsizetype first = lines.indexOf(QStringLiteral("[plugin] first"));
    const qsizetype done = lines.indexOf(QStringLiteral("[plugin] first done"));
    const qsizetype second = lines.indexOf(QStringLiteral("[plugin] second"));
    ASSERT_GE(first, 0);
    EXPECT_LT(first, done);
    EXPECT_LT(done, second) << "the queued string runs only after the command returns";
    EXPECT_EQ(loop.history(), QStringList({ QStringLiteral("qvfirst"), QStringLiteral("qvsecond") }));

    // The plugin's reactor hears of a document being closed.
    zcDocManagerPtr()->destroyDocument(m_document);
    m_document = nullptr;
    EXPECT_TRUE(output.lines().contains(QStringLiteral("[plugin] closing 1F.dxf")));

    ASSERT_TRUE(linker->unloadModule(QStringLiteral(QV_TEST_PLUGIN)));
    EXPECT_TRUE(output.lines().contains(QStringLiteral("[plugin] unload")));
    EXPECT_EQ(zcedRegCmds()->lookupCmd(QStringLiteral("qvfirst")), nullptr);
    EXPECT_TRUE(linker->loadedModules().isEmpty());
}

TEST(DynamicLinker, RefusesFilesThatAreNoApplicationsOfThisHost)
{
    ZcRxDynamicLinker* linker = zcrxDynamicLinker();
    EXPECT_FALSE(linker->loadModule(QStringLiteral(QV_TEST_PLUGIN_OLDAPI)));
    EXPECT_TRUE(linker->lastError().contains(QStringLiteral("0x07E10000")))
        << linker->lastError().toStdString();
    EXPECT_TRUE(linker->lastError().contains(QStringLiteral("0x07E20028")));
    EXPECT_EQ(zcedRegCmds()->lookupCmd(QStringLiteral("qvfirst")), nullptr) << "never initialised";

    EXPECT_FALSE(linker->loadModule(QStringLiteral(QV_NOT_A_PLUGIN)));
    EXPECT_TRUE(linker->lastError().contains(QStringLiteral("zcrxEntryPoint")))
        << linker->lastError().toStdString();
    EXPECT_FALSE(linker->loadModule(QStringLiteral("/nonexistent/app.zrx")));
    EXPECT_FALSE(linker->lastError().isEmpty());
    EXPECT_TRUE(linker->loadedModules().isEmpty());
}

TEST_F(DocumentFixture, ReactorsHearOfDestructionUntilRemoved)
{
    struct Recorder : ZcApDocManagerReactor
    {
        void documentToBeDestroyed(ZcApDocument* doc) override { destroyed.append(doc->fileName()); }
        void documentBecameCurrent(ZcApDocument*) override { ++current; }
        QStringList destroyed;
        int current = 0;
    } recorder;
    ZcApDocManager* manager = zcDocManagerPtr();
    manager->addReactor(&recorder);
    ZcDbDatabase other;
    ZcApDocument* second = manager->createDocument(&other, QStringLiteral("/tmp/2F.dxf"));
    EXPECT_EQ(manager->curDocument(), second);
    EXPECT_EQ(recorder.current, 1);
    manager->destroyDocument(second);
    EXPECT_EQ(recorder.destroyed, QStringList({ QStringLiteral("/tmp/2F.dxf") }));
    EXPECT_EQ(manager->curDocument(), m_document);

    manager->removeReactor(&recorder);
    manager->destroyDocument(m_document);
    m_document = nullptr;
    EXPECT_EQ(recorder.destroyed.size(), 1);
}

TEST_F(DocumentFixture, UnbalancedResourceHandlesAreDetected)
{
    ZcApDocManager* manager = zcDocManagerPtr();
    EXPECT_TRUE(manager->isResourceStackBalanced());
    manager->pushResourceHandle(&g_calls);
    EXPECT_EQ(manager->currentResourceHandle(), &g_calls);
    EXPECT_FALSE(manager->isResourceStackBalanced());
    manager->popResourceHandle();
    EXPECT_TRUE(manager->isResourceStackBalanced());
    manager->popResourceHandle();
    EXPECT_FALSE(manager->isResourceStackBalanced()) << "a pop without a push is a fault too";
    manager->resetResourceStack();

    OutputCapture output;
    zcedRegCmds()->addCommand(u"QVRES", u"_leaky", u"leaky", 0, pushWithoutPop);
    zcedRegCmds()->addCommand(u"QVRES", u"_tidy", u"tidy", 0, pushAndPop);
    ZcEdCommandLoop loop;
    loop.type(QStringLiteral("tidy\n"));
    EXPECT_TRUE(loop.lastCommandBalanced());
    loop.type(QStringLiteral("leaky\n"));
    EXPECT_FALSE(loop.lastCommandBalanced());
    EXPECT_EQ(loop.unbalancedCommands(), 1);
    EXPECT_TRUE(output.all().contains(QStringLiteral("LEAKY")));
    zcedRegCmds()->removeGroup(u"QVRES");
}

TEST_F(DocumentFixture, CommandLineReportsUnknownWordsAndQueuesOnlyForKnownDocuments)
{
    OutputCapture output;
    ZcEdCommandLoop loop;
    QStringList fallback;
    loop.setFallbackHandler([&](const QString& word) {
        fallback.append(word);
        return word == u"regen";
    });
    ZcApDocManager* manager = zcDocManagerPtr();
    EXPECT_EQ(manager->sendStringToExecute(m_document, u"fredraw regen ", false, true, false), Zcad::eOk);
    EXPECT_EQ(manager->sendStringToExecute(nullptr, u"regen "), Zcad::eInvalidInput);
    EXPECT_EQ(loop.runPending(), 2);
    EXPECT_EQ(fallback, QStringList({ QStringLiteral("fredraw"), QStringLiteral("regen") }));
    EXPECT_TRUE(output.all().contains(QStringLiteral("Unknown command \"FREDRAW\"")));
    EXPECT_FALSE(output.all().contains(QStringLiteral("\"REGEN\"")));
}

TEST(Printf, FormatsWideTextAndGoesToTheSink)
{
    OutputCapture output;
    const QString name = QStringLiteral("给水");
    zcutPrintf(u"\n请选择文字对象:%d %ls", 3, reinterpret_cast<const char16_t*>(name.utf16()));
    EXPECT_EQ(output.all(), QStringLiteral("\n请选择文字对象:3 给水"));
}

TEST(Selection, QueuedSelectionsComeOutInOrderAndCancelsAreReported)
{
    ZcDbDatabase db;
    ZcDbBlockTableRecord* model = ZcDbBlockTableRecord::cast(db.modelSpaceId().object());
    const ZcDbObjectId a
        = model->appendOwned(std::make_unique<ZcDbText>(ZcGePoint3d(0, 0), QStringLiteral("WS")));
    const ZcDbObjectId b
        = model->appendOwned(std::make_unique<ZcDbText>(ZcGePoint3d(0, 5), QStringLiteral("1")));
    const ZcDbObjectId erased = model->appendOwned(std::make_unique<ZcDbLine>());
    ZcDbEntity* entity = nullptr;
    ASSERT_EQ(zcdbOpenObject(entity, erased, ZcDb::kForWrite), Zcad::eOk);
    entity->erase();
    entity->close();

    zcedSSQueueSelection({ b, erased, a });
    zcedSSQueueCancel();
    zcedSSQueueSelection({ erased });

    zds_name ss;
    ASSERT_EQ(zcedSSGet(u"-W-WP", nullptr, nullptr, nullptr, ss), RTNORM);
    EXPECT_EQ(zcedSSLastMode(), QStringLiteral("-W-WP"));
    qint32 length = 0;
    ASSERT_EQ(zcedSSLength(ss, &length), RTNORM);
    ASSERT_EQ(length, 2);
    zds_name name;
    ZcDbObjectId id;
    ASSERT_EQ(zcedSSName(ss, 0, name), RTNORM);
    ASSERT_EQ(zcdbGetObjectId(id, name), Zcad::eOk);
    EXPECT_EQ(id, b);
    EXPECT_EQ(zcedSSName(ss, 2, name), RTERROR);
    EXPECT_EQ(zcedSSOpenCount(), 1);
    EXPECT_EQ(zcedSSFree(ss), RTNORM);
    EXPECT_EQ(zcedSSFree(ss), RTERROR);
    EXPECT_EQ(zcedSSOpenCount(), 0);

    EXPECT_EQ(zcedSSGet(u"-W-WP", nullptr, nullptr, nullptr, ss), RTCAN);
    EXPECT_EQ(zcedSSGet(u"-W-WP", nullptr, nullptr, nullptr, ss), RTERROR) << "only erased objects";
    EXPECT_EQ(zcedSSGet(u"-W-WP", nullptr, nullptr, nullptr, ss), RTCAN) << "nothing queued, no window";

    auto previous = zcedSSSetInteractiveHandler([&](const QString& mode, std::vector<ZcDbObjectId>& picked) {
        picked = { a };
        return mode == u"-W-WP" ? RTNORM : RTCAN;
    });
    ASSERT_EQ(zcedSSGet(u"-W-WP", nullptr, nullptr, nullptr, ss), RTNORM);
    zcedSSFree(ss);
    zcedSSSetInteractiveHandler(previous);
}

TEST(Database, IdsOfADeletedDatabaseNameNothing)
{
    ZcDbObjectId id;
    {
        ZcDbDatabase db;
        id = db.modelSpaceId();
        EXPECT_TRUE(id.isValid());
        zcdbHostApplicationServices()->setWorkingDatabase(&db);
        EXPECT_EQ(zcdbHostApplicationServices()->workingDatabase(), &db);
        zcdbHostApplicationServices()->setWorkingDatabase(nullptr);
    }
    EXPECT_FALSE(id.isValid());
    ZcDbObject* object = nullptr;
    EXPECT_EQ(zcdbOpenObject(object, id, ZcDb::kForRead), Zcad::eKeyNotFound);
    EXPECT_EQ(zcdbOpenObject(object, ZcDbObjectId::kNull, ZcDb::kForRead), Zcad::eNullObjectId);
}
