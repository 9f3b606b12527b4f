#include "platform/systemError.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(SystemError, MakesOneLine)
{
    const std::string text =
        platform::cannotText("open", "a.ma", 2); // 2 means missing on both systems
    EXPECT_EQ(text.find("cannot open \"a.ma\": "), 0U) << text;
    EXPECT_GT(text.size(), 25U);
    EXPECT_EQ(text.find_first_of("\r\n"), std::string::npos);
}

} // namespace
