#include "platform/largeArrays.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <numeric>
#include <vector>

namespace {

TEST(LargeArrays, HoldWhatIsWritten)
{
    platform::expectLargeArrays();
    platform::expectLargeArrays(); // a second call changes nothing
    for (const std::size_t count : {std::size_t{0}, std::size_t{1}, std::size_t{1000},
                                    std::size_t{300'000}, std::size_t{3'000'001}}) {
        std::vector<std::uint64_t> numbers(count);
        std::iota(numbers.begin(), numbers.end(), std::uint64_t{1});
        const std::uint64_t sum = std::accumulate(numbers.begin(), numbers.end(), std::uint64_t{0});
        EXPECT_EQ(sum, std::uint64_t{count} * (count + 1) / 2) << count;
    }
}

TEST(LargeArrays, AreAlignedLikeAnyBlock)
{
    platform::expectLargeArrays();
    for (const std::size_t bytes :
         {std::size_t{1}, std::size_t{5'000'000}, std::size_t{40'000'003}}) {
        const auto block = std::make_unique<std::byte[]>(bytes);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block.get()) % alignof(std::max_align_t), 0U)
            << bytes;
    }
}

} // namespace
