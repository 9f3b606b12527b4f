#include "apps/maya2vistrel/Options.h"

#include "apps/maya2vistrel/exitStatus.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <vector>

namespace {

std::optional<Options> read(std::initializer_list<const char*> arguments, int* exitStatus = nullptr)
{
    std::vector<std::string> texts = {"maya2vistrel"};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    int status = kExitDone;
    const auto options = readOptions(static_cast<int>(pointers.size()), pointers.data(), status);
    if (exitStatus != nullptr) {
        *exitStatus = status;
    }
    return options;
}

/// The text that a command line gives the importer for a key; "(none)" when it gives none.
std::string setting(std::initializer_list<const char*> arguments, ImportKey key)
{
    const auto options = read(arguments);
    return options ? options->settings.getString(key, "(none)") : "(refused)";
}

} // namespace

TEST(Options, GivesTheCallersVersionAndNothingElseByDefault)
{
    const auto options = read({"a.ma"});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->settings.getInt(MAJOR_VERSION, -1), 7);
    EXPECT_EQ(options->settings.toArgumentStrings().size(), 2u);
    EXPECT_EQ(options->output, "a.ma.obx");
}

TEST(Options, EncodesEverySetting)
{
    EXPECT_EQ(setting({"a.ma", "--frame", "24"}, FRAME), "24");
    EXPECT_EQ(setting({"a.ma", "--frame", "-5"}, FRAME), "-5");
    EXPECT_EQ(setting({"a.ma", "--keep-hierarchy"}, COLLAPSE_HIERARCHY), "false");
    EXPECT_EQ(setting({"a.ma", "--split-layers"}, SPLIT_LAYERS), "true");
    EXPECT_EQ(setting({"a.ma", "--unique-materials"}, UNIQUE_MATERIALS), "true");
    EXPECT_EQ(setting({"a.ma", "--include-nurbs"}, INCLUDE_NURBS), "true");
    EXPECT_EQ(setting({"a.ma", "--no-tessellate"}, TESSELLATE), "false");
    EXPECT_EQ(setting({"a.ma", "--curve-radius", "0.25"}, CURVERADIUS), "0.25");
    EXPECT_EQ(setting({"a.ma", "--smooth-curves"}, SMOOTH_CURVES), "true");
    EXPECT_EQ(setting({"a.ma", "--extractor", "beta"}, EXPERIMENTAL), "beta");
    EXPECT_EQ(setting({"a.ma", "--extractor", "standard"}, EXPERIMENTAL), "(none)");
    EXPECT_EQ(setting({"a.ma", "--text"}, DEBUGOBX), "true");
    EXPECT_EQ(setting({"a.ma", "--log-level", "DEBUG4"}, LOGLEVEL), "DEBUG4");
    EXPECT_EQ(setting({"a.ma", "--log-level", "debug4"}, LOGLEVEL), "DEBUG4");
}

TEST(Options, TakesPathsThatBeginWithASlash)
{
    const auto options = read({"/scenes/a.ma", "-o", "/out/a.obx"});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->scene, "/scenes/a.ma");
    EXPECT_EQ(options->output, "/out/a.obx");
}

TEST(Options, RefusesFrameMinusOneBecauseItMeansNone)
{
    int status = kExitDone;
    EXPECT_FALSE(read({"a.ma", "--frame", "-1"}, &status));
    EXPECT_EQ(status, kExitUsage);
}

TEST(Options, EndsWithTwoOnWrongUsage)
{
    for (const auto& arguments : {std::initializer_list<const char*>{},
                                  {"a.ma", "--no-such-flag"},
                                  {"a.ma", "--frame", "soon"},
                                  {"a.ma", "--extractor", "gamma"},
                                  {"a.ma", "b.ma"}}) {
        int status = kExitDone;
        EXPECT_FALSE(read(arguments, &status));
        EXPECT_EQ(status, kExitUsage);
    }
}

TEST(Options, ShowsHelpThatLeadsWithExamples)
{
    testing::internal::CaptureStdout();
    int status = kExitUsage;
    EXPECT_FALSE(read({"--help"}, &status));
    const std::string help = testing::internal::GetCapturedStdout();
    EXPECT_EQ(status, kExitDone);
    ASSERT_NE(help.find("Examples:"), std::string::npos);
    EXPECT_LT(help.find("Examples:"), help.find("Options:"));
}
