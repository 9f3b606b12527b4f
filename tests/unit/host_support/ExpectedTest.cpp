#include "host/support/Expected.h"

#include <gtest/gtest.h>

#include <memory>

namespace host {
namespace {

Expected<int> half(int number)
{
    if (number % 2 != 0) {
        return Error{ErrorCode::BadInput, "an odd number", "here"};
    }
    return number / 2;
}

Expected<int> quarter(int number)
{
    HOST_TRY(once, half(number));
    HOST_TRY(twice, half(once));
    return twice;
}

TEST(Expected, HoldsAValueOrAnError)
{
    const auto good = half(8);
    ASSERT_TRUE(good);
    EXPECT_EQ(*good, 4);
    EXPECT_EQ(good.value(), 4);
    const auto bad = half(7);
    ASSERT_FALSE(bad);
    EXPECT_EQ(bad.error().code, ErrorCode::BadInput);
    EXPECT_EQ(bad.error().message, "an odd number");
    EXPECT_EQ(bad.error().where, "here");
}

TEST(Expected, GivesAFallbackInPlaceOfAnError)
{
    EXPECT_EQ(half(8).valueOr(-1), 4);
    EXPECT_EQ(half(7).valueOr(-1), -1);
}

TEST(Expected, PassesTheFirstErrorOn)
{
    EXPECT_EQ(quarter(12).valueOr(-1), 3);
    EXPECT_FALSE(quarter(6)) << "its half is odd";
    EXPECT_FALSE(quarter(5));
}

TEST(Expected, HoldsValuesThatCanOnlyMove)
{
    Expected<std::unique_ptr<int>> held(std::make_unique<int>(3));
    ASSERT_TRUE(held);
    EXPECT_EQ(**held, 3);
    const std::unique_ptr<int> taken = std::move(*held);
    EXPECT_EQ(*taken, 3);
}

TEST(Expected, OfAnErrorTypeKeepsTheTwoApart)
{
    const Expected<std::string> text(std::string("error"));
    EXPECT_TRUE(text);
    EXPECT_EQ(text->size(), 5u);
}

TEST(Expected, OfNothingIsSuccessOrAnError)
{
    const Expected<void> good;
    EXPECT_TRUE(good);
    const Expected<void> bad(Error{ErrorCode::Limit, "too deep", {}});
    ASSERT_FALSE(bad);
    EXPECT_EQ(bad.error().code, ErrorCode::Limit);
    EXPECT_EQ(Error{}.code, ErrorCode::Failure);
}

} // namespace
} // namespace host
