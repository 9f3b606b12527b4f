#include <maya/MString.h>
#include <maya/MStringArray.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

namespace {

void setVariable(const char* name, const char* value)
{
#ifdef _WIN32
    _putenv_s(name, value);
#else
    setenv(name, value, 1);
#endif
}

std::vector<std::string> pieces(const char* text, char separator)
{
    MStringArray array;
    MString(text).split(separator, array);
    std::vector<std::string> result;
    for (unsigned int i = 0; i < array.length(); ++i) {
        result.emplace_back(array[i].asUTF8());
    }
    return result;
}

TEST(MString, TakesNullAsEmptyText)
{
    EXPECT_EQ(MString(static_cast<const char*>(nullptr)), "");
    EXPECT_EQ(MString(static_cast<const wchar_t*>(nullptr)), "");
    MString text("full");
    EXPECT_TRUE(text.set(nullptr));
    EXPECT_EQ(text.length(), 0u);
    EXPECT_TRUE(text.setUTF8(nullptr));
    EXPECT_TRUE(text.setWChar(nullptr));
}

TEST(MString, TakesAtMostTheLengthGiven)
{
    EXPECT_EQ(MString("abcdef", 3), "abc");
    EXPECT_EQ(MString("ab", 30), "ab");
    EXPECT_EQ(MString("ab", -1), "");
    EXPECT_EQ(MString(L"abcdef", 3), "abc");
}

TEST(MString, CountsBytesAndCharacters)
{
    const MString text("\xC3\xA4\xF0\x9F\x98\x80x"); // a-umlaut, U+1F600, x
    EXPECT_EQ(text.length(), 7u);
    EXPECT_EQ(text.numChars(), 3);
}

TEST(MString, RefusesMalformedUtf8AndStaysAsItWas)
{
    // A lone continuation, a cut sequence, an overlong slash, a surrogate, beyond U+10FFFF, 0xFF.
    for (const char* bad :
         {"\x80", "a\xC3", "\xC0\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xFF"}) {
        MString text("before");
        EXPECT_FALSE(text.setUTF8(bad));
        EXPECT_EQ(text, "before");
    }
    MString text;
    EXPECT_TRUE(text.setUTF8("\xF4\x8F\xBF\xBF \xE2\x82\xAC"));
    EXPECT_EQ(text, "\xF4\x8F\xBF\xBF \xE2\x82\xAC");
}

TEST(MString, GoesThroughWideTextAndBack)
{
    const char* const original = "x\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80";
    const MString text(original);
    const std::wstring wide = text.asWChar();
    // U+1F600 is a pair of units where wchar_t has 16 bits.
    EXPECT_EQ(wide.size(), sizeof(wchar_t) == 2 ? 5u : 4u);
    EXPECT_EQ(wide[1], L'\x00E4');
    EXPECT_EQ(wide[2], L'\x20AC');
    if (sizeof(wchar_t) == 2) {
        EXPECT_EQ(static_cast<unsigned>(wide[3]), 0xD83Du);
        EXPECT_EQ(static_cast<unsigned>(wide[4]), 0xDE00u);
    }
    MString back;
    EXPECT_TRUE(back.setWChar(wide.c_str()));
    EXPECT_EQ(back, original);
    int length = 0;
    text.asWChar(length);
    EXPECT_EQ(length, static_cast<int>(wide.size()));
}

TEST(MString, ShowsItsNewWideTextAfterAChange)
{
    MString text("a");
    EXPECT_EQ(std::wstring(text.asWChar()), L"a");
    text += "b";
    EXPECT_EQ(std::wstring(text.asWChar()), L"ab");
    text = "c";
    EXPECT_EQ(std::wstring(text.asWChar()), L"c");
    const MString other("d");
    text = other;
    EXPECT_EQ(std::wstring(text.asWChar()), L"d");
}

TEST(MString, CutsBothEndsIncluded)
{
    const MString text("abcdef");
    EXPECT_EQ(text.substring(1, 3), "bcd");
    EXPECT_EQ(text.substring(0, 0), "a");
    EXPECT_EQ(text.substring(0, 5), "abcdef");
    EXPECT_EQ(text.substring(0, 6), "");
    EXPECT_EQ(text.substring(-1, 2), "");
    EXPECT_EQ(text.substring(3, 2), "");
    EXPECT_EQ(MString().substring(0, 0), "");
}

TEST(MString, FindsTheFirstAndTheLastOfAByte)
{
    EXPECT_EQ(MString("a/b/c").index('/'), 1);
    EXPECT_EQ(MString("a/b/c").rindex('/'), 3);
    EXPECT_EQ(MString("abc").index('/'), -1);
    EXPECT_EQ(MString("abc").rindex('/'), -1);
}

TEST(MString, SplitsWithoutEmptyPieces)
{
    EXPECT_EQ(pieces("|a|b", '|'), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(pieces("a||b|", '|'), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(pieces("ab", '|'), (std::vector<std::string>{"ab"}));
}

TEST(MString, FailsToSplitWhatHasNoPiece)
{
    MStringArray array;
    array.append(MString("old"));
    EXPECT_FALSE(MString("||").split('|', array));
    EXPECT_EQ(array.length(), 0u);
    EXPECT_FALSE(MString().split('|', array));
    EXPECT_TRUE(MString("a").split('|', array));
}

TEST(MString, ExpandsKnownVariablesOnly)
{
    setVariable("HOST_API_TEST_FOLDER", "/data");
    const auto expanded = [](const char* text) {
        return std::string(MString(text).expandEnvironmentVariablesAndTilde().asUTF8());
    };
    EXPECT_EQ(expanded("$HOST_API_TEST_FOLDER/x.ma"), "/data/x.ma");
    EXPECT_EQ(expanded("a${HOST_API_TEST_FOLDER}b"), "a/datab");
    EXPECT_EQ(expanded("$HOST_API_TEST_NOTHING/x"), "$HOST_API_TEST_NOTHING/x");
    EXPECT_EQ(expanded("${HOST_API_TEST_FOLDER"), "${HOST_API_TEST_FOLDER");
    EXPECT_EQ(expanded("cost $ 5 $"), "cost $ 5 $");
    EXPECT_EQ(expanded(""), "");
}

TEST(MString, ExpandsALeadingTildeOnly)
{
    setVariable("HOME", "/home/someone");
    const auto expanded = [](const char* text) {
        return std::string(MString(text).expandEnvironmentVariablesAndTilde().asUTF8());
    };
    EXPECT_EQ(expanded("~/x"), "/home/someone/x");
    EXPECT_EQ(expanded("~"), "/home/someone");
    EXPECT_EQ(expanded("a~/x"), "a~/x");
    EXPECT_EQ(expanded("~other/x"), "~other/x");
}

TEST(MString, AppendsTextsAndNumbers)
{
    MString text("n");
    text += 1;
    text += "-";
    text += 2u;
    text += MString("-");
    text += 0.5;
    EXPECT_EQ(text, "n1-2-0.5");
    EXPECT_EQ("a" + MString("b") + "c" + 0.25f + -3, "abc0.25-3");
}

TEST(MString, AppendsItself)
{
    MString text("ab");
    text += text;
    EXPECT_EQ(text, "abab");
}

TEST(MString, ComparesExactlyAndStreams)
{
    EXPECT_TRUE(MString("a") == MString("a"));
    EXPECT_TRUE(MString("a") != MString("A"));
    EXPECT_TRUE("a" == MString("a"));
    EXPECT_TRUE("b" != MString("a"));
    std::ostringstream stream;
    stream << MString("\xC3\xA4");
    EXPECT_EQ(stream.str(), "\xC3\xA4");
}

} // namespace
