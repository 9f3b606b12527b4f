// Code pages: which one a file is in, and its strings as UTF-8.
#include "tests/unit/host_file/readText.h"

#include "host/file/Codeset.h"

#include <gtest/gtest.h>

using host::file::Codeset;
using host::file::findCodePage;

namespace {

/// The UTF-8 text of a fileInfo value in a file with that code set line.
std::string valueOf(const std::string& codesetLine, const std::string& bytes)
{
    const std::string lines =
        test::readFile("//Maya ASCII 2018 scene\n" + codesetLine + "fileInfo \"k\" \"" + bytes +
                       "\";\ncreateNode time -n \"t\";\n");
    const std::string opening = "fileInfo \"k\" \"";
    const std::size_t end = lines.find("\"\ncreateNode time name \"t\"\n");
    return lines.starts_with(opening) && end != std::string::npos
               ? lines.substr(opening.size(), end - opening.size())
               : lines;
}

} // namespace

TEST(Codeset, IsNamedInTheFirstComments)
{
    EXPECT_EQ(findCodePage("//Maya ASCII 2018 scene\n//Name: x\n//Codeset: 932\r\n", false), 932u);
    EXPECT_EQ(findCodePage("//Maya\n//Codeset: UTF-8\n", false), 65001u);
    EXPECT_EQ(findCodePage("//Maya\n//Codeset: ANSI_X3.4-1968\n", false), 1252u);
    EXPECT_EQ(findCodePage("//Maya\n//Codeset: GB2312", false), 936u);
    EXPECT_EQ(findCodePage("//Maya\n//Codeset: Shift_JIS\n", false), 932u);
    EXPECT_EQ(findCodePage("//Maya\n//Codeset: something\n", false), 1252u);
    EXPECT_EQ(findCodePage("//Maya\n//Codeset:\n", false), 1252u);
}

TEST(Codeset, WithoutALineItIs1252OrUtf8BehindAMark)
{
    EXPECT_EQ(findCodePage("//Maya ASCII 4.0 scene\n", false), 1252u);
    EXPECT_EQ(findCodePage("//Maya ASCII 4.0 scene\n", true), 65001u);
    EXPECT_EQ(findCodePage("//Maya\nrequires maya;\n//Codeset: 932\n", false), 1252u);
}

TEST(Codeset, WesternEuropeanBytes)
{
    EXPECT_EQ(valueOf("//Codeset: 1252\n", "\xe9\x80\xff"), "\xc3\xa9\xe2\x82\xac\xc3\xbf");
    EXPECT_EQ(valueOf("", "caf\xe9"), "caf\xc3\xa9");
}

TEST(Codeset, Utf8PassesAndBrokenBytesAreReplaced)
{
    EXPECT_EQ(valueOf("//Codeset: UTF-8\n", "\xc3\xa9 \xe6\x97\xa5 \xf0\x9f\x98\x80"),
              "\xc3\xa9 \xe6\x97\xa5 \xf0\x9f\x98\x80");
    // A lone tail, a cut character, an overlong one, a surrogate: one U+FFFD for each byte.
    EXPECT_EQ(valueOf("//Codeset: UTF-8\n", "\x80"), "\xef\xbf\xbd");
    EXPECT_EQ(valueOf("//Codeset: UTF-8\n", "a\xe6\x97"), "a\xef\xbf\xbd\xef\xbf\xbd");
    EXPECT_EQ(valueOf("//Codeset: UTF-8\n", "\xc0\x80"), "\xef\xbf\xbd\xef\xbf\xbd");
    EXPECT_EQ(valueOf("//Codeset: UTF-8\n", "\xed\xa0\x80"),
              "\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd");
}

TEST(Codeset, CyrillicBytes)
{
    EXPECT_EQ(valueOf("//Codeset: 1251\n", "\xcf\xf0"), "\xd0\x9f\xd1\x80"); // U+041F U+0440
}

TEST(Codeset, SecondBytesThatLookLikeABackslashOrABarAreNone)
{
    // 932: 83 5C is U+30BD, 83 7C is U+30DD; 936: 81 5C is U+4E57; 950: A5 5C is U+529F.
    EXPECT_EQ(valueOf("//Codeset: 932\n", "\x83\x5c"), "\xe3\x82\xbd");
    EXPECT_EQ(valueOf("//Codeset: 932\n", "\x83\x7c\x83\x5c\\\"x"),
              "\xe3\x83\x9d\xe3\x82\xbd\\\"x");
    EXPECT_EQ(valueOf("//Codeset: 936\n", "\x81\x5c"), "\xe4\xb9\x97");
    EXPECT_EQ(valueOf("//Codeset: 950\n", "\xa5\x5c"), "\xe5\x8a\x9f");
    // 949: B0 A1 is U+AC00.
    EXPECT_EQ(valueOf("//Codeset: 949\n", "\xb0\xa1"), "\xea\xb0\x80");
}

TEST(Codeset, AnEscapedCharacterMayHaveTwoBytes)
{
    EXPECT_EQ(valueOf("//Codeset: 932\n", "\\\x83\x5c."), "\xe3\x82\xbd.");
}

TEST(Codeset, SingleBytesOfDoubleBytePages)
{
    EXPECT_EQ(valueOf("//Codeset: 932\n", "\xb1"), "\xef\xbd\xb1"); // half-width katakana U+FF71
}

TEST(Codeset, ALeadByteBeforeTheClosingQuoteIsReplaced)
{
    EXPECT_EQ(valueOf("//Codeset: 932\n", "a\x83"), "a\xef\xbf\xbd");
}

TEST(Codeset, InOtherPagesABackslashIsAlwaysAnEscape)
{
    EXPECT_EQ(valueOf("//Codeset: 1252\n", "\x83\\n"), "\xc6\x92\\n");
}

TEST(Codeset, PagesThatTheSystemLacksAreReplaced)
{
    Codeset codeset(12345);
    std::string utf8;
    codeset.append("a\xe9z", utf8);
    EXPECT_EQ(utf8, "a\xef\xbf\xbdz");
}

TEST(Codeset, UnknownWordsAndNamesAreUtf8Too)
{
    EXPECT_EQ(test::readFile("//Maya ASCII 2018 scene\ncreateNode time -n \"\xe9\"; \xe9 1;"),
              "createNode time name \"\xc3\xa9\"\nunknown \"\xc3\xa9\"\nend\n");
}
