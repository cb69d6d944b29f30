// A failure at any write, sync, truncate or lock of the store's files during a
// save of a specialty (bill and quota item renames included) or an import: the
// caller reports failure and the store opens afterwards with its previous state
// whole. Each case runs once clean, then once per fault point until one run
// passes every point without failing.
#include "CAtt.h"
#include "CISysCode.h"
#include "CProj.h"
#include "CQtxmMng.h"
#include "FaultVfs.h"
#include "SysCodeMerge.h"
#include "TempProject.h"

#include <sqlite3.h>

#include <functional>

namespace {

const QString kElec = QStringLiteral("电气");
const QString kOldPath = QStringLiteral("电气\\公共照明");
const QString kNewPath = QStringLiteral("电气\\照明");

QString readDemoScript()
{
    return readText(QStringLiteral(QV_DEMO_SQL));
}

// Every row of every table, in storage order: the store's whole state.
QStringList snapshot(const QString& storeFile)
{
    QStringList rows;
    sqlite3* db = nullptr;
    if (sqlite3_open_v2(storeFile.toUtf8().constData(), &db, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK) {
        sqlite3_close(db);
        return { QStringLiteral("cannot open") };
    }
    QStringList tables;
    sqlite3_stmt* list = nullptr;
    sqlite3_prepare_v2(
        db, "SELECT name FROM sqlite_master WHERE type='table' ORDER BY name", -1, &list, nullptr);
    while (sqlite3_step(list) == SQLITE_ROW)
        tables << QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(list, 0)));
    sqlite3_finalize(list);
    for (const QString& table : tables) {
        sqlite3_stmt* stmt = nullptr;
        const QByteArray sql = "SELECT * FROM \"" + table.toUtf8() + "\"";
        sqlite3_prepare_v2(db, sql.constData(), -1, &stmt, nullptr);
        while (sqlite3_step(stmt) == SQLITE_ROW) {
            QStringList cells { table };
            for (int i = 0; i < sqlite3_column_count(stmt); ++i)
                cells << QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(stmt, i)));
            rows << cells.join(u'|');
        }
        sqlite3_finalize(stmt);
    }
    sqlite3_close(db);
    return rows;
}

// The dialog's save of 电气: the line type scale, 公共照明 renamed with its bill and
// quota items, a code added, all in one group of writes.
bool saveElectrical()
{
    if (!QvKsDataMng::BeginWrites())
        return false;
    bool ok = CISysCode::SetLineTypeScale(QStringLiteral("7"));
    QVector<SQvKsFloorData> floors;
    ok = ok && CProj().GetAllFloorData(floors);
    for (const SQvKsFloorData& floor : floors) {
        QVector<SQvKsQdInfo> qd;
        QVector<SQvKsDeInfo> de;
        ok = ok && CQtxmMng::GetAllQdInfos(floor.strName, qd) && CQtxmMng::GetAllDeInfos(floor.strName, de);
        for (SQvKsQdInfo& item : qd)
            if (item.strSysCode.startsWith(kOldPath))
                ok = ok && CQtxmMng::SetQdInfo((item.strSysCode.replace(kOldPath, kNewPath), item));
        for (SQvKsDeInfo& item : de)
            if (item.strSysCode.startsWith(kOldPath))
                ok = ok && CQtxmMng::SetQdDeInfo((item.strSysCode.replace(kOldPath, kNewPath), item));
    }
    ok = ok && CAtt::Save();
    CSysCodeData root;
    ok = ok && CISysCode::GetSpecCodeInfos(root, kElec);
    for (CSysCodeData* top : root.GetChildren())
        if (top->GetNodeName() == QStringLiteral("公共照明"))
            top->SetNodeName(QStringLiteral("照明"));
    addCode(root, QStringLiteral("新增"));
    ok = ok && CISysCode::SetSpecCodeInfos(root, kElec) && QvKsDataMng::CommitWrites();
    if (!ok)
        QvKsDataMng::RollbackWrites();
    return ok;
}

struct StoreFaults : ::testing::Test
{
    QTemporaryDir dir;
    QString folder = dir.filePath(QStringLiteral("p"));
    QString store = folder + QLatin1Char('/') + QvKsDataMng::StoreFileName();
    QString pristine = dir.filePath(QStringLiteral("pristine.qvks"));
    QString scnFile = dir.filePath(QStringLiteral("electrical.scn"));
    QStringList before;

    void SetUp() override
    {
        FaultVfs::Install();
        FaultVfs::FailNth(0);
        QString error;
        ASSERT_TRUE(QvKsDataMng::CreateProject(folder, QStringLiteral("故障"), &error))
            << error.toStdString();
        ASSERT_TRUE(QvKsDataMng::RunScript(readDemoScript(), &error)) << error.toStdString();
        CSysCodeData root;
        ASSERT_TRUE(CISysCode::GetSpecCodeInfos(root, kElec));
        ASSERT_TRUE(root.ExportData(scnFile, kElec));
        QvKsDataMng::CloseProject();
        ASSERT_TRUE(QFile::copy(store, pristine));
        before = snapshot(store);
    }
    void TearDown() override
    {
        FaultVfs::FailNth(0);
        QvKsDataMng::CloseProject();
    }

    bool restoreAndOpen()
    {
        QFile::remove(store);
        QFile::remove(store + QStringLiteral("-journal"));
        QString error;
        return QFile::copy(pristine, store) && QvKsDataMng::OpenProject(folder, &error);
    }

    // Runs `operation` clean, then failing fault point 1, 2, …; returns the number
    // of fault points the clean run passed.
    int failEveryPoint(const std::function<bool()>& operation)
    {
        EXPECT_TRUE(restoreAndOpen());
        FaultVfs::FailNth(0);
        EXPECT_TRUE(operation()) << QvKsDataMng::LastError().toStdString();
        const int points = FaultVfs::Points();
        QvKsDataMng::CloseProject();
        const QStringList after = snapshot(store);
        EXPECT_NE(after, before);
        for (int n = 1; n <= points + 1; ++n) {
            SCOPED_TRACE(n);
            if (!restoreAndOpen())
                return 0;
            FaultVfs::FailNth(n);
            const bool ok = operation();
            const bool fired = FaultVfs::Fired();
            FaultVfs::FailNth(0);
            QvKsDataMng::CloseProject();
            QString error;
            EXPECT_TRUE(QvKsDataMng::OpenProject(folder, &error)) << error.toStdString();
            QvKsDataMng::CloseProject();
            if (!fired) {
                EXPECT_TRUE(ok);
                EXPECT_EQ(snapshot(store), after);
                EXPECT_EQ(n, points + 1);
                break;
            }
            EXPECT_FALSE(ok);
            EXPECT_EQ(snapshot(store), before);
        }
        return points;
    }
};

TEST_F(StoreFaults, SaveOfASpecialtyWithRenamedItemsLosesNothingAtAnyFaultPoint)
{
    const int points = failEveryPoint(saveElectrical);
    EXPECT_GE(points, 5);
    RecordProperty("fault_points", points);
}

TEST_F(StoreFaults, ImportLosesNothingAtAnyFaultPoint)
{
    const int points = failEveryPoint([this] {
        CSysCodeData root;
        CSysCodeData imported;
        if (!CISysCode::GetSpecCodeInfos(root, QStringLiteral("弱电")) || !imported.ImportData(scnFile))
            return false;
        int counter = root.GetNodeIndex();
        MergeSysCodeTree(counter, &root, &imported, true);
        return CISysCode::SetSpecCodeInfos(root, QStringLiteral("弱电"));
    });
    EXPECT_GE(points, 3);
    RecordProperty("fault_points", points);
}

} // namespace
