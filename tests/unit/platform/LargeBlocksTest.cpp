#ifdef __linux__

#include "platform/LargeBlocks.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <span>

namespace {

using platform::LargeBlocks;

constexpr std::size_t kPage = LargeBlocks::kPageBytes;
constexpr std::size_t kSmallPage = 4096;

/// A number in each small page of a block.
class Marks {
public:
    Marks(void* block, std::size_t bytes)
        : m_numbers(static_cast<std::uint64_t*>(block), bytes / sizeof(std::uint64_t))
    {
    }
    void set(std::uint64_t first)
    {
        for (std::size_t i = 0; i < m_numbers.size(); i += kStep) {
            m_numbers[i] = first + i;
        }
    }
    bool has(std::uint64_t first) const
    {
        for (std::size_t i = 0; i < m_numbers.size(); i += kStep) {
            if (m_numbers[i] != first + i) {
                return false;
            }
        }
        return true;
    }
    std::uint64_t at(std::size_t byte) const { return m_numbers[byte / sizeof(std::uint64_t)]; }

private:
    static constexpr std::size_t kStep = kSmallPage / sizeof(std::uint64_t);
    std::span<std::uint64_t> m_numbers;
};

TEST(LargeBlocks, HoldWhatIsWrittenBesideOneAnother)
{
    LargeBlocks blocks;
    constexpr std::size_t kSizes[] = {1, 3 * kPage, 5 * kPage + 12345, 4 * kPage - 1};
    void* taken[4] = {};
    for (std::size_t i = 0; i < 4; ++i) {
        taken[i] = blocks.take(kSizes[i]);
        ASSERT_NE(taken[i], nullptr);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(taken[i]) % kPage, 0U);
        Marks(taken[i], kSizes[i]).set(1000 * i);
    }
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_TRUE(Marks(taken[i], kSizes[i]).has(1000 * i)) << i;
        EXPECT_TRUE(blocks.giveBack(taken[i]));
    }
}

TEST(LargeBlocks, UseTheirPagesAgain)
{
    LargeBlocks blocks;
    void* const first = blocks.take(6 * kPage);
    ASSERT_NE(first, nullptr);
    Marks(first, 6 * kPage).set(7);
    ASSERT_TRUE(blocks.giveBack(first));
    EXPECT_EQ(blocks.keptBytes(), 6 * kPage);

    void* const smaller = blocks.take(2 * kPage);
    ASSERT_NE(smaller, nullptr);
    EXPECT_EQ(blocks.keptBytes(), 4 * kPage);
    EXPECT_TRUE(Marks(smaller, 2 * kPage).has(7)); // the very pages, still written

    void* const larger = blocks.take(10 * kPage);
    ASSERT_NE(larger, nullptr);
    EXPECT_EQ(blocks.keptBytes(), 0U);
    EXPECT_EQ(Marks(larger, 10 * kPage).at(0), 7 + 2 * kPage / 8); // the third page of the first
    EXPECT_EQ(Marks(larger, 10 * kPage).at(4 * kPage), 0U);        // a new page
    Marks(larger, 10 * kPage).set(99);
    EXPECT_TRUE(Marks(smaller, 2 * kPage).has(7));
    EXPECT_TRUE(Marks(larger, 10 * kPage).has(99));
    EXPECT_TRUE(blocks.giveBack(smaller));
    EXPECT_TRUE(blocks.giveBack(larger)); // of several mappings
    EXPECT_EQ(blocks.keptBytes(), 12 * kPage);

    void* const whole = blocks.take(12 * kPage);
    ASSERT_NE(whole, nullptr);
    EXPECT_EQ(blocks.keptBytes(), 0U);
    Marks(whole, 12 * kPage).set(5);
    EXPECT_TRUE(Marks(whole, 12 * kPage).has(5));
    EXPECT_TRUE(blocks.giveBack(whole));
}

TEST(LargeBlocks, KeepNoMoreThanTheySay)
{
    LargeBlocks blocks;
    void* const huge = blocks.take(3 * LargeBlocks::kMostKeptBytes);
    ASSERT_NE(huge, nullptr);
    EXPECT_TRUE(blocks.giveBack(huge));
    EXPECT_EQ(blocks.keptBytes(), LargeBlocks::kMostKeptBytes);
    void* const small = blocks.take(kPage);
    EXPECT_TRUE(blocks.giveBack(small));
    EXPECT_EQ(blocks.keptBytes(), LargeBlocks::kMostKeptBytes);
}

TEST(LargeBlocks, KeepLargePagesOnly)
{
    LargeBlocks blocks;
    void* const block = blocks.take(2 * kPage + kPage / 2);
    EXPECT_TRUE(blocks.giveBack(block));
    EXPECT_EQ(blocks.keptBytes(), 2 * kPage);
}

TEST(LargeBlocks, KnowTheirOwn)
{
    LargeBlocks blocks;
    int number = 0;
    EXPECT_FALSE(blocks.giveBack(&number));
    EXPECT_FALSE(blocks.giveBack(reinterpret_cast<void*>(kPage)));
    void* const block = blocks.take(kPage);
    EXPECT_FALSE(blocks.giveBack(static_cast<char*>(block) + 16));
    EXPECT_TRUE(blocks.giveBack(block));
    EXPECT_FALSE(blocks.giveBack(block));
}

TEST(LargeBlocks, RefuseWhatIsTooLarge)
{
    LargeBlocks blocks;
    EXPECT_EQ(blocks.take(SIZE_MAX), nullptr);
    EXPECT_EQ(blocks.take(SIZE_MAX / 2), nullptr);
}

TEST(LargeBlocks, RefuseMoreThanTheirTableHolds)
{
    LargeBlocks blocks;
    void* taken[1000] = {};
    std::size_t count = 0;
    while (count < 1000 && (taken[count] = blocks.take(kPage)) != nullptr) {
        ++count;
    }
    EXPECT_GE(count, 16U);
    EXPECT_LT(count, 1000U);
    while (count > 0) {
        EXPECT_TRUE(blocks.giveBack(taken[--count]));
    }
    void* const again = blocks.take(kPage);
    EXPECT_NE(again, nullptr);
    EXPECT_TRUE(blocks.giveBack(again));
}

} // namespace

#endif
