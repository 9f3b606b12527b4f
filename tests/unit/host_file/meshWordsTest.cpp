#include "host/file/binary/values/meshWords.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace host::file::binary {
namespace {

/// Corners as a file has them: the highest byte first.
class Corners {
public:
    explicit Corners(const std::vector<std::uint32_t>& words)
    {
        for (const std::uint32_t word : words) {
            for (const int shift : {24, 16, 8, 0}) {
                m_bytes.push_back(static_cast<char>(word >> shift & 0xff));
            }
        }
    }
    Words words() const { return Words(std::span(m_bytes.data(), m_bytes.size())); }

private:
    std::string m_bytes;
};

constexpr std::uint32_t kBackwards = 0x80000000;
constexpr std::uint32_t kLast = kEndsLoop | kEndsFace;

TEST(MeshWords, CountsCornersByTheirFlags)
{
    // A triangle with a hole of three corners, and a square whose last corner ends the face alone.
    const Corners corners({1, 2 | kBackwards, 3 | kEndsLoop, 4, 5, 6 | kLast, //
                           7, 8, 9, 10 | kEndsFace});
    EXPECT_EQ(countEnds(corners.words(), kEndsFace), 2U);
    EXPECT_EQ(countEnds(corners.words(), kEndsLoop), 2U);
    EXPECT_EQ(countEnds(corners.words(), kEndsLoop | kEndsFace), 3U);
    EXPECT_EQ(countEnds(Corners({}).words(), kEndsFace), 0U);
}

TEST(MeshWords, KnowsFacesOfFourCorners)
{
    const std::uint32_t most = kEdgeNumber | kBackwards; // all bits but the flags
    EXPECT_TRUE(areQuads(Corners({}).words()));
    EXPECT_TRUE(areQuads(Corners({0, 1, 2, 3 | kLast}).words()));
    EXPECT_TRUE(areQuads(Corners({most, most, most, most | kEndsFace, 0, 0, 0, kLast}).words()));
    EXPECT_FALSE(areQuads(Corners({0, 1, 2 | kLast}).words()));
    EXPECT_FALSE(areQuads(Corners({0, 1, 2, 3, 4, 5, 6, 7 | kLast}).words())) << "eight corners";
    EXPECT_FALSE(areQuads(Corners({0, 1, 2, 3 | kEndsLoop, 4, 5, 6, 7 | kLast}).words()))
        << "a hole";
    for (const std::uint32_t flag : {kEndsFace, kEndsLoop}) {
        for (std::size_t at = 0; at < 3; ++at) {
            std::vector<std::uint32_t> words{0, 1, 2, 3 | kLast, 4, 5, 6, 7 | kLast};
            words[4 + at] |= flag;
            EXPECT_FALSE(areQuads(Corners(words).words())) << flag << " at " << at;
        }
    }
}

} // namespace
} // namespace host::file::binary
