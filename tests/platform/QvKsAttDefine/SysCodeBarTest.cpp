#include "CSysCodeData.h"
#include "IFaceBarCtrl.h"
#include "QvKsSysCodeBar.h"

#include <QDir>
#include <QFontDatabase>
#include <QLabel>
#include <QTest>
#include <QTreeWidget>
#include <gtest/gtest.h>

#include <memory>

namespace {

int g_dbClicks = 0;
QString g_codeAtDbClick;

void RecordDbClick()
{
    ++g_dbClicks;
    g_codeAtDbClick = IFaceBarCtrl::CurSysCode();
}

CSysCodeData* Add(CSysCodeData& parent, const QString& name, COLORREF color, int& counter)
{
    auto* node = new CSysCodeData;
    node->SetNodeName(name);
    node->SetMfcColor(color);
    parent.AddDataToChild(counter, node, true);
    return node;
}

// 给水 { 生活给水, 消防给水 { 室内消火栓 } }, 排水 { 污水 }, Abc
CSysCodeData WaterCodes()
{
    CSysCodeData root;
    int counter = 0;
    CSysCodeData* supply = Add(root, QStringLiteral("给水"), RGB(0, 128, 255), counter);
    Add(*supply, QStringLiteral("生活给水"), RGB(0, 200, 0), counter);
    CSysCodeData* fire = Add(*supply, QStringLiteral("消防给水"), RGB(255, 0, 0), counter);
    Add(*fire, QStringLiteral("室内消火栓"), RGB(200, 0, 0), counter);
    CSysCodeData* drain = Add(root, QStringLiteral("排水"), RGB(128, 64, 0), counter);
    Add(*drain, QStringLiteral("污水"), RGB(96, 96, 0), counter);
    Add(root, QStringLiteral("Abc"), RGB(255, 0, 255), counter);
    return root;
}

class SysCodeBar : public ::testing::Test
{
protected:
    void SetUp() override
    {
        g_dbClicks = 0;
        g_codeAtDbClick.clear();
        IFaceBarCtrl::SetSysCodes(QStringLiteral("给排水"), WaterCodes());
        IFaceBarCtrl::SetTreeItem(QString());
        m_bar.reset(IFaceBarCtrl::CreateSysCodeBar());
        m_bar->resize(260, 320);
        m_bar->show();
    }
    void TearDown() override
    {
        m_bar.reset();
        IFaceBarCtrl::RegDbClickSysFunc(nullptr);
        IFaceBarCtrl::SetSysCodeProvider(nullptr);
        IFaceBarCtrl::SetSysCodes(QString(), CSysCodeData());
    }

    QTreeWidget* Tree() const { return m_bar->findChild<QTreeWidget*>(QStringLiteral("sysCodeTree")); }
    QString SelectedCode() const
    {
        const QList<QTreeWidgetItem*> items = Tree()->selectedItems();
        return items.isEmpty() ? QString() : items.first()->data(0, Qt::UserRole).toString();
    }
    QPoint CentreOf(const QString& code) const
    {
        QTreeWidgetItem* item = m_bar->ItemOf(code);
        EXPECT_NE(item, nullptr) << code.toStdString();
        return Tree()->visualItemRect(item).center();
    }

    std::unique_ptr<QvKsSysCodeBar> m_bar;
};

struct RoundTrip
{
    const char16_t* given;
    const char16_t* current;
};

void PrintTo(const RoundTrip& c, std::ostream* os)
{
    *os << '"' << QString::fromUtf16(c.given).toStdString() << '"';
}

class SysCodeBarRoundTrip : public SysCodeBar, public ::testing::WithParamInterface<RoundTrip>
{ };

TEST_P(SysCodeBarRoundTrip, SetTreeItemMakesTheCodeCurrentAndSelected)
{
    const QString given = QString::fromUtf16(GetParam().given);
    const QString expected = QString::fromUtf16(GetParam().current);
    IFaceBarCtrl::SetTreeItem(QStringLiteral("排水&污水")); // something else current before
    IFaceBarCtrl::SetTreeItem(given);
    EXPECT_EQ(IFaceBarCtrl::CurSysCode(), expected) << given.toStdString();
    EXPECT_EQ(SelectedCode(), expected) << given.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Codes, SysCodeBarRoundTrip,
    ::testing::Values(RoundTrip { u"给水", u"给水" },
        RoundTrip { u"给水&消防给水&室内消火栓", u"给水&消防给水&室内消火栓" },
        RoundTrip { u"给水\\消防给水", u"给水&消防给水" }, RoundTrip { u"abc", u"Abc" },
        RoundTrip { u"给水&不存在", u"" }, RoundTrip { u"生活给水", u"" }, RoundTrip { u"", u"" },
        RoundTrip { u"&&", u"" }),
    [](const auto& info) { return "case" + std::to_string(info.index); });

TEST_F(SysCodeBar, ClickingACodeMakesItCurrent)
{
    QTest::mouseClick(Tree()->viewport(), Qt::LeftButton, {}, CentreOf(QStringLiteral("排水&污水")));
    EXPECT_EQ(IFaceBarCtrl::CurSysCode(), QStringLiteral("排水&污水"));
}

TEST_F(SysCodeBar, DoubleClickReachesTheCallbackWithThatCodeCurrent)
{
    IFaceBarCtrl::RegDbClickSysFunc(&RecordDbClick);
    IFaceBarCtrl::SetTreeItem(QStringLiteral("给水"));
    QWidget* viewport = Tree()->viewport();
    const QPoint pos = viewport->mapTo(m_bar.get(), CentreOf(QStringLiteral("给水&消防给水")));
    QTest::mouseDClick(m_bar->windowHandle(), Qt::LeftButton, {}, pos);
    QTRY_COMPARE(g_dbClicks, 1);
    EXPECT_EQ(g_codeAtDbClick, QStringLiteral("给水&消防给水"));
    EXPECT_TRUE(m_bar->ItemOf(QStringLiteral("给水&消防给水"))->isExpanded()); // not collapsed by it

    // Without a registered function a double-click only selects.
    IFaceBarCtrl::RegDbClickSysFunc(nullptr);
    QTest::mouseDClick(m_bar->windowHandle(), Qt::LeftButton, {},
        viewport->mapTo(m_bar.get(), CentreOf(QStringLiteral("Abc"))));
    QTRY_COMPARE(IFaceBarCtrl::CurSysCode(), QStringLiteral("Abc"));
    QTest::qWait(20);
    EXPECT_EQ(g_dbClicks, 1);
}

TEST_F(SysCodeBar, RefreshReadsTheProviderAndKeepsTheCurrentCodeWhileItExists)
{
    CSysCodeData codes = WaterCodes();
    bool answer = true;
    IFaceBarCtrl::SetSysCodeProvider([&](QString& spec, CSysCodeData& root) {
        spec = QStringLiteral("消防");
        root = codes;
        return answer;
    });
    IFaceBarCtrl::SetTreeItem(QStringLiteral("给水&生活给水"));
    codes.FindByFullName(QStringLiteral("排水"))->SetNodeName(QStringLiteral("雨水"));
    IFaceBarCtrl::ReFreshSysCodeBar();
    EXPECT_EQ(IFaceBarCtrl::CurSpec(), QStringLiteral("消防"));
    EXPECT_EQ(IFaceBarCtrl::CurSysCode(), QStringLiteral("给水&生活给水"));
    EXPECT_EQ(SelectedCode(), QStringLiteral("给水&生活给水"));
    EXPECT_NE(m_bar->ItemOf(QStringLiteral("雨水&污水")), nullptr);
    EXPECT_EQ(m_bar->ItemOf(QStringLiteral("排水&污水")), nullptr);

    // The current code renamed away: nothing is current any more.
    codes.FindByFullName(QStringLiteral("给水\\生活给水"))->SetNodeName(QStringLiteral("中水"));
    IFaceBarCtrl::ReFreshSysCodeBar();
    EXPECT_EQ(IFaceBarCtrl::CurSysCode(), QString());
    EXPECT_TRUE(Tree()->selectedItems().isEmpty());

    // A provider with nothing to give leaves the bar as it was.
    answer = false;
    codes.DeleteData();
    IFaceBarCtrl::ReFreshSysCodeBar();
    EXPECT_NE(m_bar->ItemOf(QStringLiteral("给水&中水")), nullptr);
}

TEST_F(SysCodeBar, StateWorksWithoutABar)
{
    m_bar.reset();
    IFaceBarCtrl::SetTreeItem(QStringLiteral("排水\\污水"));
    EXPECT_EQ(IFaceBarCtrl::CurSysCode(), QStringLiteral("排水&污水"));
    // A bar created later shows the current code.
    m_bar.reset(IFaceBarCtrl::CreateSysCodeBar());
    EXPECT_EQ(SelectedCode(), QStringLiteral("排水&污水"));
}

// Where a colour fills the row of a code in the bar's picture: the code's icon.
QRect ColourInRow(const QImage& shot, QRect row, COLORREF colour)
{
    const QColor wanted(GetRValue(colour), GetGValue(colour), GetBValue(colour));
    QRect found;
    for (int y = row.top(); y <= row.bottom(); ++y) {
        for (int x = row.left(); x <= row.right(); ++x) {
            if (shot.pixelColor(x, y) == wanted)
                found |= QRect(x, y, 1, 1);
        }
    }
    return found;
}

TEST_F(SysCodeBar, ScreenshotShowsEachCodeWithItsColourUnderItsParent)
{
    ASSERT_FALSE(QFontDatabase::families(QFontDatabase::SimplifiedChinese).isEmpty());
    EXPECT_EQ(m_bar->findChild<QLabel*>(QStringLiteral("specLabel"))->text(), QStringLiteral("专业：给排水"));
    IFaceBarCtrl::SetTreeItem(QStringLiteral("排水&污水"));
    const QImage shot = m_bar->grab().toImage();
    const QString dir = qEnvironmentVariable("QV_TEST_ARTIFACTS", QDir::tempPath());
    QDir().mkpath(dir);
    EXPECT_TRUE(shot.save(dir + QStringLiteral("/attribute_bar.png")));

    const struct
    {
        const char16_t* code;
        COLORREF colour;
        int depth;
    } rows[] = {
        { u"给水", RGB(0, 128, 255), 0 },
        { u"给水&生活给水", RGB(0, 200, 0), 1 },
        { u"给水&消防给水", RGB(255, 0, 0), 1 },
        { u"给水&消防给水&室内消火栓", RGB(200, 0, 0), 2 },
        { u"排水", RGB(128, 64, 0), 0 },
        { u"排水&污水", RGB(96, 96, 0), 1 },
        { u"Abc", RGB(255, 0, 255), 0 },
    };
    QWidget* viewport = Tree()->viewport();
    int lastTop = -1;
    int iconLeft[3] = { -1, -1, -1 };
    for (const auto& r : rows) {
        const QString code = QString::fromUtf16(r.code);
        SCOPED_TRACE(code.toStdString());
        QTreeWidgetItem* item = m_bar->ItemOf(code);
        ASSERT_NE(item, nullptr);
        // The whole width of the row, in the bar's picture.
        const QRect inView = Tree()->visualItemRect(item);
        const QRect row(
            viewport->mapTo(m_bar.get(), QPoint(0, inView.top())), QSize(viewport->width(), inView.height()));
        EXPECT_GT(row.top(), lastTop) << "rows stand in the order of the codes";
        lastTop = row.top();
        const QRect icon = ColourInRow(shot, row, r.colour);
        if (code == QStringLiteral("排水&污水")) {
            // The current code stands out: its row is filled with the highlight.
            const QColor highlight = Tree()->palette().color(QPalette::Active, QPalette::Highlight);
            EXPECT_EQ(shot.pixelColor(row.right() - 2, row.center().y()), highlight);
            continue;
        }
        EXPECT_NE(shot.pixelColor(row.right() - 2, row.center().y()),
            Tree()->palette().color(QPalette::Active, QPalette::Highlight));
        // A 12-pixel icon in a grey frame: its 10 by 10 inside is the code's colour.
        EXPECT_EQ(icon.size(), QSize(10, 10));
        // Each level stands further in than its parent, and siblings line up.
        if (iconLeft[r.depth] >= 0)
            EXPECT_EQ(icon.left(), iconLeft[r.depth]);
        iconLeft[r.depth] = icon.left();
        if (r.depth > 0)
            EXPECT_GT(icon.left(), iconLeft[r.depth - 1]);
    }
}

} // namespace
