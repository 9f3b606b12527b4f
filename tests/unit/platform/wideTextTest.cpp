#include "platform/wideText.h"

#include <gtest/gtest.h>

namespace {

using platform::toUtf8;
using platform::toWide;

// UTF-8 forms by the table of RFC 3629, section 3.
TEST(WideText, TurnsOneTwoAndThreeByteCharactersIntoOneUnitEach)
{
    EXPECT_EQ(toWide("A\xc3\xa9\xe2\x82\xac"), L"A\u00e9\u20ac");
    EXPECT_EQ(toUtf8(L"A\u00e9\u20ac"), "A\xc3\xa9\xe2\x82\xac");
}

TEST(WideText, TurnsAFourByteCharacterIntoAPairWhereUnitsAreShort)
{
    const std::wstring wide = toWide("\xf0\x9f\x98\x80"); // U+1F600
    if (sizeof(wchar_t) == 2) {
        EXPECT_EQ(wide, (std::wstring{static_cast<wchar_t>(0xd83d), static_cast<wchar_t>(0xde00)}));
    } else {
        EXPECT_EQ(wide, std::wstring(1, static_cast<wchar_t>(0x1f600)));
    }
    EXPECT_EQ(toUtf8(wide), "\xf0\x9f\x98\x80");
}

TEST(WideText, EscapesForeignBytesOneByOne)
{
    EXPECT_EQ(toWide("\xff"), std::wstring(1, static_cast<wchar_t>(0xdcff)));
    EXPECT_EQ(toWide("a\xe9z"), (std::wstring{L'a', static_cast<wchar_t>(0xdce9), L'z'}));
}

TEST(WideText, GivesEveryByteSequenceBackUnchanged)
{
    const char* const texts[] = {"\xff\xfe",         "\xc0\x80",     "\xe2\x82",
                                 "\xed\xb2\x80",     "\xed\xa0\x80", "\xf4\x90\x80\x80",
                                 "\xf0\x80\x80\x80", "\x80",         "caf\xe9/\xe2\x82\xac"};
    for (const char* text : texts) {
        EXPECT_EQ(toUtf8(toWide(text)), text);
    }
}

TEST(WideText, KeepsZerosInside)
{
    const std::string text("a\0b", 3);
    EXPECT_EQ(toWide(text).size(), 3U);
    EXPECT_EQ(toUtf8(toWide(text)), text);
}

} // namespace
