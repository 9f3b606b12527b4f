#include "host/graph/IdTable.h"

#include <gtest/gtest.h>

#include <set>

namespace host::graph {
namespace {

std::uint32_t findOwn(const IdTable& table, std::uint64_t hash, std::uint32_t owner,
                      std::size_t* probes = nullptr)
{
    return table.find(hash, [&](std::uint32_t known, std::uint32_t) {
        if (probes != nullptr) {
            ++*probes;
        }
        return known == owner;
    });
}

TEST(IdTable, FindsNothingWhenEmpty)
{
    IdTable table;
    EXPECT_EQ(findOwn(table, 5, 1), kNoId);
    table.erase(5, 1, 2);
    EXPECT_EQ(table.size(), 0u);
}

TEST(IdTable, TellsEqualHashesApartByTheirOwner)
{
    IdTable table;
    table.insert(5, 1, 10);
    table.insert(5, 2, 20);
    EXPECT_EQ(findOwn(table, 5, 1), 10u);
    EXPECT_EQ(findOwn(table, 5, 2), 20u);
    EXPECT_EQ(findOwn(table, 5, 3), kNoId);
    EXPECT_EQ(findOwn(table, 6, 1), kNoId);
}

TEST(IdTable, AgreesWithASetAfterInsertingAndErasingInAnyOrder)
{
    IdTable table;
    std::set<std::uint32_t> expected;
    std::uint32_t random = 1;
    for (int round = 0; round < 20000; ++round) {
        random = random * 1664525u + 1013904223u;
        const std::uint32_t id = (random >> 10) % 700;
        const std::uint64_t hash = id % 350; // crowded on purpose: every hash has two ids
        if (expected.insert(id).second) {
            table.insert(hash, id, id);
        } else {
            expected.erase(id);
            table.erase(hash, id, id);
        }
    }
    EXPECT_EQ(table.size(), expected.size());
    for (std::uint32_t id = 0; id < 700; ++id) {
        EXPECT_EQ(findOwn(table, id % 350, id), expected.count(id) != 0 ? id : kNoId) << id;
    }
}

TEST(IdTable, NeedsAboutOneComparisonPerSearchAtAnySize)
{
    IdTable table;
    std::size_t probes = 0;
    constexpr std::uint32_t kCount = 200000;
    for (std::uint32_t id = 0; id < kCount; ++id) {
        table.insert(mixBits(id), id, id);
    }
    for (std::uint32_t id = 0; id < kCount; ++id) {
        ASSERT_EQ(findOwn(table, mixBits(id), id, &probes), id);
    }
    EXPECT_LT(probes, kCount + kCount / 100);
}

} // namespace
} // namespace host::graph
