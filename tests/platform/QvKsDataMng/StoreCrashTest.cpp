// kill -9 in the middle of a large import: a child process imports thousands of
// codes and is killed at points spread over its writes; the store then opens
// with the previous state whole.
#include "CISysCode.h"
#include "TempProject.h"

#include <QProcess>

namespace {

struct ChildRun
{
    bool crashed = false;
    int code = -1;
    QString out;
};

ChildRun runChild(const QString& folder, const QString& file, int killAt)
{
    QProcess child;
    child.start(QStringLiteral(QV_CRASH_CHILD), { folder, file, QString::number(killAt) });
    if (!child.waitForFinished(120000))
        child.kill();
    child.waitForFinished();
    return { child.exitStatus() == QProcess::CrashExit, child.exitCode(),
        QString::fromUtf8(child.readAllStandardOutput()).trimmed() };
}

// Every code of 弱电 with its attributes, and the highest index: what the import changes.
QStringList weakCurrent(const QString& folder)
{
    QString error;
    if (!QvKsDataMng::OpenProject(folder, &error))
        return { QStringLiteral("cannot open: ") + error };
    CSysCodeData root;
    CISysCode::GetSpecCodeInfos(root, QStringLiteral("弱电"));
    QStringList lines = dumpTree(root);
    lines << QString::number(root.GetNodeIndex());
    QvKsDataMng::CloseProject();
    return lines;
}

TEST(StoreCrash, KilledAnywhereInALargeImportTheStoreOpensWithThePreviousCodes)
{
    TempProject project(readText(QStringLiteral(QV_DEMO_SQL)));
    const QString folder = project.Path();
    const QString file = project.File(QStringLiteral("large.scn"));
    CSysCodeData large;
    for (int a = 0; a < 20; ++a) {
        CSysCodeData* top = addCode(large, QStringLiteral("T%1").arg(a));
        fillAttributes(*top, a);
        for (int b = 0; b < 20; ++b) {
            CSysCodeData* mid = addCode(*top, QStringLiteral("M%1").arg(b));
            for (int c = 0; c < 10; ++c)
                fillAttributes(*addCode(*mid, QStringLiteral("L%1").arg(c)), c);
        }
    }
    ASSERT_TRUE(large.ExportData(file, QString()));
    QvKsDataMng::CloseProject();
    const QString store = project.StoreFile();
    const QString pristine = project.File(QStringLiteral("pristine.qvks"));
    ASSERT_TRUE(QFile::copy(store, pristine));
    const QStringList before = weakCurrent(folder);
    ASSERT_FALSE(before.first().startsWith(QStringLiteral("cannot")));

    const ChildRun clean = runChild(folder, file, 0);
    ASSERT_FALSE(clean.crashed);
    ASSERT_EQ(clean.code, 0);
    const int points = clean.out.toInt();
    ASSERT_GT(points, 4);
    RecordProperty("fault_points", points);
    EXPECT_EQ(weakCurrent(folder).size(), before.size() + 20 * (1 + 20 * 11));

    for (const int killAt : { 1, 2, points / 4, points / 2, points * 3 / 4, points - 1, points }) {
        SCOPED_TRACE(killAt);
        QFile::remove(store);
        ASSERT_TRUE(QFile::copy(pristine, store));
        const ChildRun run = runChild(folder, file, killAt);
        EXPECT_TRUE(run.crashed);
        EXPECT_EQ(weakCurrent(folder), before);
    }
}

} // namespace
