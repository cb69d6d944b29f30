// The grid's Qt model on its own, as any Qt view or script drives it: rows put,
// taken and moved with Qt's calls, typed cells read and written by role, every
// change reported as Qt's model rules ask.
#include "CTreeListModel.h"

#include <QAbstractItemModelTester>
#include <gtest/gtest.h>

namespace {
class TreeListModelTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        CTreeListColumn name;
        name.title = QStringLiteral("名称");
        model.insertColumn(0, name);
        CTreeListColumn width;
        width.title = QStringLiteral("线宽");
        width.toText = [](const QVariant& v) { return QString::asprintf("%g", v.toDouble()); };
        width.fromText = [](const QString& text) {
            bool ok = false;
            const double value = text.toDouble(&ok);
            return ok ? QVariant(value) : QVariant();
        };
        model.insertColumn(1, width);
        for (const char* name : { "A", "B", "C" })
            model.setData(model.index(rowAfterInsert(QModelIndex()), 0), QString::fromUtf8(name));
    }

    int rowAfterInsert(const QModelIndex& parent)
    {
        const int row = model.rowCount(parent);
        EXPECT_TRUE(model.insertRows(row, 1, parent));
        return row;
    }

    QString names(const QModelIndex& parent = QModelIndex()) const
    {
        QStringList out;
        for (int r = 0; r < model.rowCount(parent); ++r) {
            const QModelIndex at = model.index(r, 0, parent);
            out << at.data().toString() + (model.rowCount(at) ? "(" + names(at) + ")" : QString());
        }
        return out.join(QLatin1Char(' '));
    }

    CTreeListModel model;
    QAbstractItemModelTester tester { &model, QAbstractItemModelTester::FailureReportingMode::Fatal };
};

TEST_F(TreeListModelTest, RowsArePutTakenAndMovedWithQtsCalls)
{
    const QModelIndex a = model.index(0, 0);
    ASSERT_TRUE(model.insertRows(0, 2, a));
    model.setData(model.index(0, 0, a), QStringLiteral("A1"));
    model.setData(model.index(1, 0, a), QStringLiteral("A2"));
    EXPECT_EQ(names(), QStringLiteral("A(A1 A2) B C"));

    ASSERT_TRUE(model.moveRows(QModelIndex(), 2, 1, QModelIndex(), 0));
    EXPECT_EQ(names(), QStringLiteral("C A(A1 A2) B"));
    ASSERT_TRUE(model.moveRows(QModelIndex(), 0, 1, QModelIndex(), 3));
    EXPECT_EQ(names(), QStringLiteral("A(A1 A2) B C"));
    ASSERT_TRUE(model.moveRows(model.index(0, 0), 1, 1, QModelIndex(), 1));
    EXPECT_EQ(names(), QStringLiteral("A(A1) A2 B C"));

    ASSERT_TRUE(model.removeRows(1, 2));
    EXPECT_EQ(names(), QStringLiteral("A(A1) C"));
}

TEST_F(TreeListModelTest, RefusesRowsOutsideTheTreeAndAnItemUnderItself)
{
    EXPECT_FALSE(model.insertRows(4, 1));
    EXPECT_FALSE(model.removeRows(2, 2));
    EXPECT_FALSE(model.moveRows(QModelIndex(), 0, 1, QModelIndex(), 9));
    const QModelIndex a = model.index(0, 0);
    model.insertRows(0, 1, a);
    EXPECT_FALSE(model.moveRows(QModelIndex(), 0, 1, model.index(0, 0, a), 0));
    EXPECT_EQ(names(), QStringLiteral("A() B C"));
}

TEST_F(TreeListModelTest, TypedCellsShowTheirValueAndReadTextsAsValues)
{
    const QModelIndex width = model.index(1, 1);
    ASSERT_TRUE(model.setData(width, 0.25));
    EXPECT_EQ(width.data(Qt::DisplayRole).toString(), QStringLiteral("0.25"));
    EXPECT_EQ(width.data(Qt::EditRole).toDouble(), 0.25);

    ASSERT_TRUE(model.setData(width, QStringLiteral("3.50")));
    EXPECT_EQ(width.data(Qt::DisplayRole).toString(), QStringLiteral("3.50"));
    EXPECT_EQ(width.data(Qt::EditRole).typeId(), QMetaType::Double);
    EXPECT_EQ(width.data(Qt::EditRole).toDouble(), 3.5);

    // A text that stands for no value is kept as it is, read back as text.
    ASSERT_TRUE(model.setData(width, QStringLiteral("宽")));
    EXPECT_EQ(width.data(Qt::EditRole).toString(), QStringLiteral("宽"));
    // An untyped column keeps what it is given as text.
    ASSERT_TRUE(model.setData(model.index(1, 0), 7));
    EXPECT_EQ(model.index(1, 0).data(Qt::EditRole).toString(), QStringLiteral("7"));
}
} // namespace
