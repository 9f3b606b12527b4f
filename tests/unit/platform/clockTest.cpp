#include "platform/clock.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <thread>

namespace {

TEST(Clock, SaysHoursMinutesAndSecondsInTwoDigits)
{
    const std::optional<std::string> text = platform::localTimeText();
    ASSERT_TRUE(text);
    ASSERT_EQ(text->size(), 8U) << *text;
    const char* const shape = "dd:dd:dd";
    for (std::size_t i = 0; i < 8; ++i) {
        const char found = (*text)[i];
        EXPECT_TRUE(shape[i] == ':' ? found == ':' : found >= '0' && found <= '9') << *text;
    }
    EXPECT_LT(text->substr(0, 2), "24");
}

TEST(Clock, CountsMilliseconds)
{
    const std::uint32_t start = platform::tickMilliseconds();
    std::this_thread::sleep_for(std::chrono::milliseconds(120));
    const std::uint32_t elapsed = platform::tickMilliseconds() - start;
    EXPECT_GE(elapsed, 100U); // the coarse counter of Windows may lag by 16 ms
    EXPECT_LT(elapsed, 60000U);
}

} // namespace
