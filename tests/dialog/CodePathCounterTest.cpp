// Counting entities per code path: shared texts known by their address, separate
// copies of one text, more distinct paths than the cache holds, and paths lowered.
#include "CodePathCounter.h"

#include <gtest/gtest.h>

#include <vector>

namespace {
QHash<QString, int> CountAll(const std::vector<QString>& paths)
{
    CodePathCounter counter;
    for (const QString& path : paths)
        counter.Add(path);
    QHash<QString, int> usage;
    counter.AddTo(usage);
    return usage;
}

TEST(CodePathCounter, SharedTextsAndSeparateCopiesOfOneTextCountAsOnePath)
{
    const QString shared = QStringLiteral("3\\12");
    QString copy = QStringLiteral("3\\1");
    copy += QLatin1Char('2'); // the same text in a buffer of its own
    const QHash<QString, int> usage = CountAll({ shared, shared, copy, shared, QStringLiteral("3\\7") });
    EXPECT_EQ(usage, (QHash<QString, int> { { "3\\12", 4 }, { "3\\7", 1 } }));
}

TEST(CodePathCounter, MorePathsThanTheCacheHoldsAreAllCountedExactly)
{
    std::vector<QString> texts;
    for (int i = 0; i < 5000; ++i)
        texts.push_back(QStringLiteral("3\\%1").arg(i));
    std::vector<QString> paths;
    for (int round = 0; round < 3; ++round)
        for (int i = 0; i < 5000; i += 1 + round)
            paths.push_back(round == 1 ? QString(texts[std::size_t(i)].data(), texts[std::size_t(i)].size())
                                       : texts[std::size_t(i)]);
    const QHash<QString, int> usage = CountAll(paths);
    ASSERT_EQ(usage.size(), 5000);
    EXPECT_EQ(usage.value(QStringLiteral("3\\0")), 3);
    EXPECT_EQ(usage.value(QStringLiteral("3\\1")), 1);
    EXPECT_EQ(usage.value(QStringLiteral("3\\3")), 2);
    EXPECT_EQ(usage.value(QStringLiteral("3\\4998")), 3);
}

TEST(CodePathCounter, PathsAreLoweredAndAddedToWhatAFloorAlreadyHas)
{
    CodePathCounter counter;
    counter.Add(QStringLiteral("3\\A1"));
    counter.Add(QStringLiteral("3\\a1"));
    QHash<QString, int> usage { { "3\\a1", 5 } };
    counter.AddTo(usage);
    EXPECT_EQ(usage, (QHash<QString, int> { { "3\\a1", 7 } }));
}

TEST(CodePathCounter, ATextFreedAndItsAddressReusedIsNotTakenForTheOldPath)
{
    CodePathCounter counter;
    for (int i = 0; i < 2000; ++i) {
        // Each text lives only for its own call: a later one may get its address.
        counter.Add(QString::number(i % 2 ? 1 : 2));
    }
    QHash<QString, int> usage;
    counter.AddTo(usage);
    EXPECT_EQ(usage, (QHash<QString, int> { { "1", 1000 }, { "2", 1000 } }));
}
} // namespace
