// The reader's pool of extended-data lists: every key kept finds its own list
// again, through growth, whatever its length (short keys are held in place, long
// ones apart), and a key never kept finds nothing.
#include "DxfXDataPool.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {
DxfXDataPool::XData listOf(int n)
{
    return std::make_shared<const std::vector<ZcDbXDataApp>>(std::vector<ZcDbXDataApp> {
        { QStringLiteral("QVKS"), { ZcDbXDataValue::string(QStringLiteral("3\\%1").arg(n)) } } });
}

std::string keyOf(int n)
{
    // Lengths from 0 to 70 bytes: both sides of what a slot holds in place.
    std::string key = std::to_string(n);
    key.resize(std::size_t(n % 71), char('a' + n % 26));
    if (n % 71 >= 8)
        key.replace(0, std::to_string(n).size(), std::to_string(n));
    return key;
}
} // namespace

TEST(DxfXDataPool, KeptListsAreFoundAgainByTheirKeysAlone)
{
    DxfXDataPool pool;
    EXPECT_EQ(pool.find("nothing"), nullptr);
    std::vector<DxfXDataPool::XData> kept;
    std::vector<std::string> keys;
    for (int n = 0; n < 20000; ++n) {
        const std::string key = keyOf(n);
        if (pool.find(key))
            continue; // short keys repeat: the first list stays
        keys.push_back(key);
        kept.push_back(listOf(n));
        pool.insert(key, kept.back());
    }
    EXPECT_EQ(pool.size(), keys.size());
    EXPECT_GT(keys.size(), 15000u);
    for (std::size_t i = 0; i < keys.size(); ++i)
        ASSERT_EQ(pool.find(keys[i]), kept[i]) << keys[i];
    pool.insert(keys.front(), listOf(-1));
    EXPECT_EQ(pool.find(keys.front()), kept.front());
    EXPECT_EQ(pool.size(), keys.size());
    EXPECT_EQ(pool.find(keys.back() + "x"), nullptr);
    EXPECT_EQ(pool.find(std::string(200, 'q')), nullptr);
}
