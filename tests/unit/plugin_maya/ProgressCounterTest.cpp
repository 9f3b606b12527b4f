#include "plugins/maya/src/ProgressCounter.h"

#include "tests/unit/plugin_maya/SceneFixture.h"

namespace {

std::size_t linesOf(const std::string& text, const std::string& word)
{
    std::size_t count = 0;
    for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) {
        ++count;
    }
    return count;
}

std::string reportsOf(std::int32_t total, int steps)
{
    WrittenScene scene;
    ProgressCounter counter{&scene.layer(), total, 0, -1.0f};
    for (int i = 0; i < steps; ++i) {
        counter.step("shape");
    }
    return scene.text();
}

} // namespace

TEST(ProgressCounter, ReportsEveryStepOfThree)
{
    EXPECT_EQ(
        reportsOf(3, 3),
        "progress \"shape\" 0.333\n\nprogress \"shape\" 0.667\n\nprogress \"shape\" 1.000\n\n");
}

TEST(ProgressCounter, ReportsTheFirstStepAlways)
{
    EXPECT_EQ(reportsOf(100000, 1), "progress \"shape\" 0.000\n\n");
}

TEST(ProgressCounter, ReportsAtMostOncePerPercent)
{
    const std::string text = reportsOf(300, 300);
    EXPECT_LE(linesOf(text, "progress "), 101u);
    EXPECT_GE(linesOf(text, "progress "), 75u); // every third or fourth step
}

TEST(ProgressCounter, SurvivesATotalOfNothing)
{
    EXPECT_EQ(linesOf(reportsOf(0, 3), "progress "), 1u);
    EXPECT_EQ(linesOf(reportsOf(-1, 3), "progress "), 1u);
}

TEST(ProgressCounter, CountsWithoutAReporter)
{
    ProgressCounter counter{nullptr, 2, 0, -1.0f};
    counter.step("a");
    EXPECT_EQ(counter.done, 1);
    EXPECT_FLOAT_EQ(counter.lastReported, 0.5f);
}
