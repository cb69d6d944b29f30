// The attribute-definition dialog and its store edits, on a small library.
#include "../QvKsDataMng/TempProject.h"

#include "AttDefStore.h"
#include "CQvTreeCtrl.h"
#include "MessageBoxRecorder.h"
#include "QvKsAttDefMainDlg.h"
#include "ShowAttDefMainDlg.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace {
const char* const kLibrary = "INSERT INTO att_category(cat_id, major, middle, small, name) VALUES "
                             "(1, 3, 0, 0, '电气'), (2, 3, 1, 0, '管线'), (3, 3, 1, 1, '导线·导管'), "
                             "(4, 1, 0, 0, '给排水'), (5, 1, 1, 0, '管道'), (6, 1, 1, 1, '给水管');"
                             "INSERT INTO att_member(cat_id, member_no, name) VALUES (3, 1, 'BV-2.5'), (3, "
                             "2, 'BV-4'), (6, 1, 'PPR');";

const QString kWires = QStringLiteral("电气\\管线\\导线·导管");

QStringList Members()
{
    QStringList categories;
    QStringList members;
    EXPECT_TRUE(AttDefStore::LoadPaths(categories, members));
    return members;
}

template <class T> T* Control(QWidget* dialog, int id)
{
    for (T* child : dialog->findChildren<T*>())
        if (child->property("controlId").toInt() == id)
            return child;
    return nullptr;
}
} // namespace

TEST(AttDefStore, AddAndRenameMembersInLibraryOrder)
{
    TempProject project(QString::fromUtf8(kLibrary));
    EXPECT_EQ(Members(),
        QStringList({ QStringLiteral("给排水\\管道\\给水管\\PPR"), kWires + QStringLiteral("\\BV-2.5"),
            kWires + QStringLiteral("\\BV-4") }));
    QString error;
    ASSERT_TRUE(AttDefStore::AddMember(kWires, QStringLiteral("BV-6"), error)) << error.toStdString();
    EXPECT_EQ(Members().last(), kWires + QStringLiteral("\\BV-6"));
    ASSERT_TRUE(
        AttDefStore::RenameMember(kWires + QStringLiteral("\\BV-2.5"), QStringLiteral("BV-1.5"), error));
    EXPECT_TRUE(Members().contains(kWires + QStringLiteral("\\BV-1.5")));
    EXPECT_FALSE(Members().contains(kWires + QStringLiteral("\\BV-2.5")));
}

TEST(AttDefStore, RefusedEditsChangeNothing)
{
    TempProject project(QString::fromUtf8(kLibrary));
    const QStringList before = Members();
    QString error;
    struct Case
    {
        bool add;
        QString path;
        QString name;
    };
    const Case cases[] = {
        { true, kWires, QString() },
        { true, kWires, QStringLiteral("  ") },
        { true, kWires, QStringLiteral("a\\b") },
        { true, kWires, QString(65, u'x') },
        { true, kWires, QStringLiteral("BV-4") },
        { true, QStringLiteral("电气\\管线"), QStringLiteral("X") },
        { true, QStringLiteral("电气\\管线\\没有"), QStringLiteral("X") },
        { false, kWires + QStringLiteral("\\BV-2.5"), QStringLiteral("BV-4") },
        { false, kWires + QStringLiteral("\\BV-9"), QStringLiteral("BV-10") },
        { false, kWires, QStringLiteral("X") },
        { true, QStringLiteral("'); DROP TABLE att_member; --"), QStringLiteral("X") },
    };
    for (const Case& c : cases) {
        error.clear();
        const bool ok = c.add ? AttDefStore::AddMember(c.path, c.name, error)
                              : AttDefStore::RenameMember(c.path, c.name, error);
        EXPECT_FALSE(ok) << c.path.toStdString() << " / " << c.name.toStdString();
        EXPECT_FALSE(error.isEmpty());
    }
    EXPECT_EQ(Members(), before);
}

TEST(AttDefDialog, OpensAtPathAndStoresAddedMember)
{
    TempProject project(QString::fromUtf8(kLibrary));
    QvKsAttDefMainDlg dialog { QString() };
    dialog.Reload(kWires + QStringLiteral("\\BV-4"));
    dialog.show();
    auto* name = Control<QLineEdit>(&dialog, QvKsAttDefMainDlg::kNameEdit);
    auto* add = Control<QPushButton>(&dialog, QvKsAttDefMainDlg::kAdd);
    auto* rename = Control<QPushButton>(&dialog, QvKsAttDefMainDlg::kRename);
    ASSERT_TRUE(name && add && rename);
    EXPECT_EQ(dialog.Tree()->GetItemDir(dialog.Tree()->currentItem()), kWires + QStringLiteral("\\BV-4"));
    EXPECT_EQ(name->text(), QStringLiteral("BV-4"));
    EXPECT_FALSE(add->isEnabled());
    EXPECT_TRUE(rename->isEnabled());

    dialog.Tree()->setCurrentItem(dialog.Tree()->GetItemByDir(kWires));
    EXPECT_TRUE(add->isEnabled());
    name->setText(QStringLiteral("BV-10"));
    QTest::mouseClick(add, Qt::LeftButton);
    EXPECT_TRUE(Members().contains(kWires + QStringLiteral("\\BV-10")));
    EXPECT_EQ(dialog.Tree()->GetItemDir(dialog.Tree()->currentItem()), kWires + QStringLiteral("\\BV-10"));
    EXPECT_TRUE(dialog.Changed());
    const QString artifacts = qEnvironmentVariable("QV_TEST_ARTIFACTS", QStringLiteral("."));
    dialog.grab().save(artifacts + QStringLiteral("/attdef-dialog.png"));
}

TEST(AttDefDialog, DuplicateNameWarnsAndKeepsLibrary)
{
    TempProject project(QString::fromUtf8(kLibrary));
    MessageBoxRecorder boxes;
    QvKsAttDefMainDlg dialog { QString() };
    dialog.Reload(kWires + QStringLiteral("\\BV-4"));
    Control<QLineEdit>(&dialog, QvKsAttDefMainDlg::kNameEdit)->setText(QStringLiteral("BV-2.5"));
    QTest::mouseClick(Control<QPushButton>(&dialog, QvKsAttDefMainDlg::kRename), Qt::LeftButton);
    ASSERT_EQ(boxes.boxes().size(), 1);
    EXPECT_TRUE(boxes.boxes()[0].text.contains(QStringLiteral("已存在")));
    EXPECT_EQ(boxes.boxes()[0].type, 0x12030u);
    EXPECT_TRUE(Members().contains(kWires + QStringLiteral("\\BV-4")));
    EXPECT_FALSE(dialog.Changed());
}

TEST(AttDefDialog, ShowLimitedToSpecialtyReturnsCancelWhenNothingChanged)
{
    TempProject project(QString::fromUtf8(kLibrary));
    int topLevels = -1;
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<QvKsAttDefMainDlg*>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        topLevels = dialog->Tree()->topLevelItemCount();
        QTest::mouseClick(Control<QPushButton>(dialog, QvKsAttDefMainDlg::kClose), Qt::LeftButton);
    });
    EXPECT_EQ(ShowAttDefMainDlg(true, kWires, nullptr, true), IDCANCEL);
    EXPECT_EQ(topLevels, 1);
}
