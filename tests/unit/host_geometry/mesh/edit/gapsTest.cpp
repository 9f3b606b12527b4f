// Numbers after parts are taken out: against counting the parts that stay before each one.
#include "host/geometry/mesh/edit/Gaps.h"

#include <gtest/gtest.h>

#include <numeric>
#include <random>

namespace host::geometry {
namespace {

using Numbers = std::vector<std::uint32_t>;

TEST(Gaps, TakeRunsOutOfLists)
{
    Gaps gaps(8);
    gaps.add(1, 2);
    gaps.add(2, 4); // goes on where the last one ends
    gaps.add(6, 6); // nothing
    gaps.add(7, 8);
    EXPECT_EQ(gaps.runs().size(), 2U);
    EXPECT_EQ(gaps.keptCount(), 4U);
    EXPECT_EQ(gaps.closed(Numbers{0, 1, 2, 3, 4, 5, 6, 7}), (Numbers{0, 4, 5, 6}));
    EXPECT_EQ(gaps.kept({0, 2, 3, 5, 7}), (Numbers{0, 2}));
    EXPECT_EQ(gaps.numberOf(3), kNone);
    EXPECT_EQ(gaps.numberOf(4), 1U);
    EXPECT_EQ(gaps.numberOf(6), 3U);
}

TEST(Gaps, NothingIsTakenOutWhereAllIsMarked)
{
    const Gaps gaps(std::vector<std::uint8_t>{1, 2, 1});
    EXPECT_TRUE(gaps.isEmpty());
    EXPECT_EQ(gaps.numberOf(2), 2U);
}

/// Checks all ways of renumbering with about `gone` of each ten thousand parts gone.
void checkRandom(unsigned seed, unsigned gone)
{
    constexpr std::uint32_t kCount = 3000;
    std::mt19937 random(seed);
    std::vector<std::uint8_t> isKept(kCount, 1);
    for (std::uint8_t& mark : isKept) {
        mark = random() % 10000 < gone ? 0 : 1;
    }
    const Gaps gaps(isKept);
    Numbers expected; // the new number of each part that stays, and which those are
    Numbers stay;
    for (std::uint32_t i = 0; i < kCount; ++i) {
        if (isKept[i] != 0) {
            EXPECT_EQ(gaps.numberOf(i), expected.size());
            expected.push_back(static_cast<std::uint32_t>(expected.size()));
            stay.push_back(i);
        } else {
            EXPECT_EQ(gaps.numberOf(i), kNone);
        }
    }
    EXPECT_EQ(gaps.keptCount(), stay.size());
    EXPECT_EQ(gaps.kept(stay), expected);
    Numbers numbers = stay;
    gaps.renumber(numbers);
    EXPECT_EQ(numbers, expected);
    std::vector<std::int32_t> ids{-1};
    std::vector<std::int32_t> references;
    std::vector<MeshEdge> ends;
    for (const std::uint32_t kept : stay) {
        ids.push_back(static_cast<std::int32_t>(kept));
        references.push_back(referenceTo(kept, kept % 2 == 1));
        ends.push_back({kept, stay.front()});
    }
    gaps.renumberIds(ids);
    gaps.renumberReferences(references);
    gaps.renumberEnds(ends);
    EXPECT_EQ(ids.front(), -1);
    for (std::size_t i = 0; i < stay.size(); ++i) {
        EXPECT_EQ(ids[i + 1], static_cast<std::int32_t>(expected[i]));
        EXPECT_EQ(references[i], referenceTo(expected[i], stay[i] % 2 == 1));
        EXPECT_EQ(ends[i].start, expected[i]);
        EXPECT_EQ(ends[i].end, 0U);
    }
    Numbers list(kCount);
    std::iota(list.begin(), list.end(), 0U);
    EXPECT_EQ(gaps.closed(list), stay);
    gaps.close(list);
    EXPECT_EQ(list, stay);
}

TEST(Gaps, FewAndManyGiveWhatCountingGives)
{
    for (unsigned seed = 0; seed < 10; ++seed) {
        checkRandom(seed, 5);   // one or two: taken out one by one
        checkRandom(seed, 100); // about thirty: looked up
        checkRandom(seed, 7000);
    }
}

} // namespace
} // namespace host::geometry
