#include "platform/windowsCommandLine.h"

#include <gtest/gtest.h>

namespace {

using platform::windowsCommandLine;

// The rules are those of the C runtime's manual, "Parsing C command-line arguments".
TEST(WindowsCommandLine, QuotesTheProgramAlways)
{
    EXPECT_EQ(windowsCommandLine("C:\\my tools\\a.exe", {}), "\"C:\\my tools\\a.exe\"");
}

TEST(WindowsCommandLine, LeavesPlainArgumentsAlone)
{
    EXPECT_EQ(windowsCommandLine("p", {"MTIgeA==", "C:\\a\\b\\"}), "\"p\" MTIgeA== C:\\a\\b\\");
}

TEST(WindowsCommandLine, QuotesEmptyArgumentsAndBlanks)
{
    EXPECT_EQ(windowsCommandLine("p", {"", "a b", "a\tb"}), "\"p\" \"\" \"a b\" \"a\tb\"");
}

TEST(WindowsCommandLine, EscapesQuotesAndTheBackslashesBeforeThem)
{
    EXPECT_EQ(windowsCommandLine("p", {"a\"b"}), "\"p\" \"a\\\"b\"");
    EXPECT_EQ(windowsCommandLine("p", {"a\\\"b"}), "\"p\" \"a\\\\\\\"b\"");
}

TEST(WindowsCommandLine, DoublesBackslashesBeforeTheClosingQuoteOnly)
{
    EXPECT_EQ(windowsCommandLine("p", {"a b\\"}), "\"p\" \"a b\\\\\"");
    EXPECT_EQ(windowsCommandLine("p", {"a\\b c"}), "\"p\" \"a\\b c\"");
}

} // namespace
