#include "WinFileDialog.h"

#include <gtest/gtest.h>

namespace {

struct ScopedHandler
{
    explicit ScopedHandler(FileDialogHandler handler)
        : previous(SetFileDialogHandler(std::move(handler)))
    { }
    ~ScopedHandler() { SetFileDialogHandler(std::move(previous)); }
    FileDialogHandler previous;
};

TEST(FileDialog, HandlerSeesTheRequestAndItsAnswerGetsTheDefaultExtension)
{
    FileDialogRequest seen;
    ScopedHandler scoped([&](const FileDialogRequest& request, QString& path) {
        seen = request;
        path = QStringLiteral("/tmp/out/P-电气");
        return true;
    });
    CFileDialog dialog(FALSE, QStringLiteral(".scn"), QStringLiteral("P-电气"),
        OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, QStringLiteral("*.scn|*.scn|"));
    dialog.m_strTitle = QStringLiteral("系统编号导出");
    dialog.m_strInitialDir = QStringLiteral("/tmp/out");
    ASSERT_EQ(dialog.DoModal(), IDOK);
    EXPECT_FALSE(seen.open);
    EXPECT_EQ(seen.title, QStringLiteral("系统编号导出"));
    EXPECT_EQ(seen.initialDir, QStringLiteral("/tmp/out"));
    EXPECT_EQ(seen.fileName, QStringLiteral("P-电气"));
    EXPECT_EQ(seen.flags, 6u);
    EXPECT_EQ(dialog.GetPathName(), QStringLiteral("/tmp/out/P-电气.scn"));
}

TEST(FileDialog, CancelOrAnEmptyAnswerIsCancelAndANamedExtensionIsKept)
{
    {
        ScopedHandler scoped([](const FileDialogRequest&, QString&) { return false; });
        CFileDialog dialog(TRUE, QStringLiteral("scn"));
        EXPECT_EQ(dialog.DoModal(), IDCANCEL);
        EXPECT_TRUE(dialog.GetPathName().isEmpty());
    }
    {
        ScopedHandler scoped([](const FileDialogRequest&, QString& path) {
            path = QStringLiteral("/a.b/codes.xml");
            return true;
        });
        CFileDialog dialog(TRUE, QStringLiteral("scn"));
        ASSERT_EQ(dialog.DoModal(), IDOK);
        EXPECT_EQ(dialog.GetPathName(), QStringLiteral("/a.b/codes.xml"));
    }
}

} // namespace
