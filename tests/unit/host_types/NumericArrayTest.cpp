#include "host/types/NumericArray.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>

namespace host {
namespace {

template<class T>
void put(NumericArray& array, std::uint32_t first, std::vector<T> numbers)
{
    array.store<T>(first, std::span<const T>(numbers));
}

TEST(NumericArray, BeginsEmpty)
{
    const NumericArray array(NumberStorage::Double, 3);
    EXPECT_TRUE(array.empty());
    EXPECT_EQ(array.elementCount(), 0u);
    EXPECT_EQ(array.endIndex(), 0u);
    EXPECT_EQ(array.width(), 3u);
    EXPECT_EQ(array.storage(), NumberStorage::Double);
    EXPECT_FALSE(array.has(0));
    EXPECT_EQ(array.number(0, 0, 7.5), 7.5);
}

TEST(NumericArray, KeepsTheStorageOfItsKind)
{
    EXPECT_EQ(storageOf(AttributeKind::Enum), NumberStorage::Int32);
    EXPECT_EQ(storageOf(AttributeKind::Bool), NumberStorage::Int32);
    EXPECT_EQ(storageOf(AttributeKind::FloatAngle), NumberStorage::Float);
    EXPECT_EQ(storageOf(AttributeKind::Time), NumberStorage::Double);
    const NumericArray array(NumberStorage::Int32, 1);
    EXPECT_NE(array.numbers<std::int32_t>(), nullptr);
    EXPECT_EQ(array.numbers<float>(), nullptr);
    EXPECT_EQ(array.numbers<double>(), nullptr);
}

TEST(NumericArray, JoinsWhatIsAppendedInOrderIntoOneRun)
{
    NumericArray array(NumberStorage::Float, 2);
    put<float>(array, 0, {1, 2, 3, 4});
    put<float>(array, 2, {5, 6});
    ASSERT_EQ(array.runs().size(), 1u);
    EXPECT_EQ(array.runs()[0].first, 0u);
    EXPECT_EQ(array.runs()[0].count, 3u);
    EXPECT_EQ(array.elementCount(), 3u);
    EXPECT_EQ(array.endIndex(), 3u);
    EXPECT_EQ(array.number(2, 1), 6);
}

TEST(NumericArray, KeepsGapsAsSeparateRuns)
{
    NumericArray array(NumberStorage::Double, 1);
    put<double>(array, 3, {1, 2});
    put<double>(array, 10, {3});
    ASSERT_EQ(array.runs().size(), 2u);
    EXPECT_EQ(array.runs()[1].first, 10u);
    EXPECT_EQ(array.runs()[1].offset, 2u);
    EXPECT_TRUE(array.has(4));
    EXPECT_FALSE(array.has(5));
    EXPECT_EQ(array.number(5, 0, -1), -1);
    EXPECT_EQ(array.endIndex(), 11u);
    EXPECT_EQ(array.numbers<double>()->size(), 3u) << "memory follows the numbers, not the index";
}

TEST(NumericArray, StoresOverWhatWasThere)
{
    NumericArray array(NumberStorage::Double, 1);
    put<double>(array, 2, {1, 2, 3});                                    // 2 3 4
    put<double>(array, 8, {4, 5});                                       // 8 9
    put<double>(array, 0, {10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20}); // 0..10
    EXPECT_EQ(array.elementCount(), 11u);
    EXPECT_EQ(array.numbers<double>()->size(), 11u);
    for (std::uint32_t i = 0; i <= 10; ++i) {
        EXPECT_EQ(array.number(i, 0), 10 + i);
    }
    const auto& runs = array.runs();
    for (std::size_t i = 1; i < runs.size(); ++i) {
        EXPECT_LE(runs[i - 1].first + runs[i - 1].count, runs[i].first);
    }
}

TEST(NumericArray, AgreesWithAMapAfterAnyOrderOfStores)
{
    NumericArray array(NumberStorage::Int32, 2);
    std::map<std::uint32_t, std::pair<int, int>> expected;
    std::uint32_t random = 12345;
    for (int round = 0; round < 2000; ++round) {
        random = random * 1664525u + 1013904223u;
        const std::uint32_t first = (random >> 8) % 300;
        const std::uint32_t count = (random >> 20) % 9;
        std::vector<std::int32_t> numbers;
        for (std::uint32_t i = 0; i < count; ++i) {
            numbers.push_back(round);
            numbers.push_back(static_cast<std::int32_t>(i));
            expected[first + i] = {round, static_cast<int>(i)};
        }
        put<std::int32_t>(array, first, numbers);
    }
    EXPECT_EQ(array.elementCount(), expected.size());
    EXPECT_EQ(array.numbers<std::int32_t>()->size(), expected.size() * 2);
    EXPECT_EQ(array.endIndex(), expected.rbegin()->first + 1);
    for (std::uint32_t i = 0; i < 320; ++i) {
        const auto known = expected.find(i);
        ASSERT_EQ(array.has(i), known != expected.end()) << i;
        if (known != expected.end()) {
            EXPECT_EQ(array.number(i, 0), known->second.first);
            EXPECT_EQ(array.number(i, 1), known->second.second);
        }
    }
    std::size_t seen = 0;
    std::uint64_t end = 0;
    for (const auto& run : array.runs()) {
        EXPECT_GE(run.first, end);
        end = std::uint64_t{run.first} + run.count;
        seen += run.count;
    }
    EXPECT_EQ(seen, expected.size());
}

TEST(NumericArray, TakesElementsInDescendingOrder)
{
    NumericArray array(NumberStorage::Double, 1);
    constexpr std::uint32_t kCount = 200000;
    for (std::uint32_t i = kCount; i-- > 0;) {
        put<double>(array, i, {double(i)});
    }
    ASSERT_EQ(array.runs().size(), kCount);
    EXPECT_EQ(array.runs()[7].first, 7u);
    EXPECT_EQ(array.number(kCount - 1, 0), kCount - 1);
}

TEST(NumericArray, KeepsRunsCurrentWhenStoresAndQuestionsAlternate)
{
    NumericArray array(NumberStorage::Double, 1);
    put<double>(array, 5, {5});
    put<double>(array, 1, {1});
    EXPECT_EQ(array.runs().size(), 2u);
    put<double>(array, 6, {6}); // after the last element, but not after its numbers
    EXPECT_EQ(array.runs().size(), 3u);
    put<double>(array, 7, {7}); // continues the run of 6
    ASSERT_EQ(array.runs().size(), 3u);
    EXPECT_EQ(array.runs()[2].count, 2u);
    EXPECT_EQ(array.endIndex(), 8u);
}

TEST(NumericArray, FillsTheOtherNumbersOfANewElementWithZero)
{
    NumericArray array(NumberStorage::Float, 3);
    array.storeComponent(4, 1, 2.5);
    EXPECT_EQ(array.number(4, 0, 9), 0);
    EXPECT_EQ(array.number(4, 1, 9), 2.5);
    EXPECT_EQ(array.number(4, 2, 9), 0);
    array.storeComponent(4, 2, 3.5);
    EXPECT_EQ(array.elementCount(), 1u);
    EXPECT_EQ(array.number(4, 1), 2.5);
    EXPECT_EQ(array.number(4, 2), 3.5);
}

TEST(NumericArray, IgnoresComponentsOutsideTheWidth)
{
    NumericArray array(NumberStorage::Float, 3);
    array.storeComponent(0, 3, 1);
    EXPECT_TRUE(array.empty());
    array.storeComponent(0, 0, 1);
    EXPECT_EQ(array.number(0, 3, 9), 9);
}

TEST(NumericArray, LeavesOutAnIncompleteLastElement)
{
    NumericArray array(NumberStorage::Double, 3);
    put<double>(array, 0, {1, 2, 3, 4});
    EXPECT_EQ(array.elementCount(), 1u);
    EXPECT_EQ(array.numbers<double>()->size(), 3u);
}

TEST(NumericArray, LeavesOutElementsBeyondTheHighestIndex)
{
    NumericArray array(NumberStorage::Double, 1);
    put<double>(array, 0xfffffffe, {1, 2, 3});
    EXPECT_EQ(array.elementCount(), 1u);
    EXPECT_EQ(array.endIndex(), 0xffffffffu);
    put<double>(array, 0xffffffff, {1});
    EXPECT_EQ(array.elementCount(), 1u);
    put<double>(array, 0xfffffffd, {8, 9, 10});
    EXPECT_EQ(array.elementCount(), 2u);
    EXPECT_EQ(array.number(0xfffffffe, 0), 9);
}

TEST(NumericArray, ConvertsNumbersOfAnotherStorage)
{
    NumericArray array(NumberStorage::Int32, 1);
    put<double>(array, 0, {1.9, -1.9, 1e300, std::numeric_limits<double>::quiet_NaN()});
    EXPECT_EQ(array.number(0, 0), 1);
    EXPECT_EQ(array.number(1, 0), -1);
    EXPECT_EQ(array.number(2, 0), 2147483647);
    EXPECT_EQ(array.number(3, 0), 0);
}

TEST(NumericArray, MovesTheBlockOutWhenItIsExactlyTheRun)
{
    NumericArray array(NumberStorage::Float, 2);
    put<float>(array, 0, {1, 2, 3, 4});
    const float* block = array.numbers<float>()->data();
    const std::vector<float> dense = array.takeDense<float>(2, 0);
    EXPECT_EQ(dense.data(), block);
    EXPECT_EQ(dense, (std::vector<float>{1, 2, 3, 4}));
    EXPECT_TRUE(array.empty());
    EXPECT_TRUE(array.runs().empty());
    EXPECT_EQ(array.endIndex(), 0u);
}

TEST(NumericArray, FillsMissingElementsAndCutsSurplusOnes)
{
    NumericArray array(NumberStorage::Double, 2);
    put<double>(array, 1, {1, 2});
    put<double>(array, 3, {3, 4, 5, 6});
    EXPECT_EQ(array.takeDense<double>(4, -1), (std::vector<double>{-1, -1, 1, 2, -1, -1, 3, 4}));
    EXPECT_TRUE(array.empty());
    EXPECT_TRUE(array.numbers<double>()->empty());
    EXPECT_EQ(array.takeDense<double>(1, -1), (std::vector<double>{-1, -1}));
}

TEST(NumericArray, CanBeFilledAgainAfterItWasTaken)
{
    NumericArray array(NumberStorage::Double, 1);
    put<double>(array, 4, {4});
    put<double>(array, 2, {2});
    (void)array.takeDense<double>(5, 0);
    put<double>(array, 0, {7});
    ASSERT_EQ(array.runs().size(), 1u);
    EXPECT_EQ(array.runs()[0].offset, 0u);
    EXPECT_EQ(array.number(0, 0), 7);
    EXPECT_FALSE(array.has(2));
}

} // namespace

TEST(NumericArray, ReservesOnceForWhatIsToCome)
{
    NumericArray array(NumberStorage::Float, 2);
    array.reserveMore(100);
    const std::vector<float> two{1, 2, 3, 4};
    array.store<float>(0, two);
    const float* const place = array.numbers<float>()->data();
    EXPECT_GE(array.numbers<float>()->capacity(), 200u);
    for (std::uint32_t first = 2; first < 100; first += 2) {
        array.reserveMore(100 - first);
        array.store<float>(first, two);
    }
    EXPECT_EQ(array.numbers<float>()->data(), place);
    EXPECT_EQ(array.elementCount(), 100u);
    EXPECT_EQ(array.number(99, 1), 4);
    // A step smaller than what is there is left to the block's growth.
    const std::size_t capacity = array.numbers<float>()->capacity();
    array.reserveMore(99);
    EXPECT_EQ(array.numbers<float>()->capacity(), capacity);
    array.reserveMore(100);
    EXPECT_GE(array.numbers<float>()->capacity(), 400u);
}

} // namespace host
