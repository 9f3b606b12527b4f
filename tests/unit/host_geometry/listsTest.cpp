#include "host/geometry/mesh/componentList.h"
#include "host/geometry/mesh/tweak.h"

#include <gtest/gtest.h>

namespace host::geometry {
namespace {

using Faces = std::vector<std::uint32_t>;

Faces parse(const std::vector<std::string>& texts, std::uint32_t faceCount)
{
    return parseFaceList(texts, faceCount);
}

TEST(FaceList, ReadsNumbersRangesAndAll)
{
    EXPECT_EQ(parse({"f[2]"}, 10), (Faces{2}));
    EXPECT_EQ(parse({"f[0:5]"}, 10), (Faces{0, 1, 2, 3, 4, 5}));
    EXPECT_EQ(parse({"f[*]"}, 3), (Faces{0, 1, 2}));
}

TEST(FaceList, IsAscendingAndNamesEachFaceOnce)
{
    EXPECT_EQ(parse({"f[7:8]", "f[1:3]", "f[2:4]", "f[7]", "f[0]"}, 10),
              (Faces{0, 1, 2, 3, 4, 7, 8}));
    EXPECT_EQ(parse({"f[0:8]", "f[2:3]", "f[5]"}, 10), (Faces{0, 1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST(FaceList, StopsAtTheFaceCount)
{
    EXPECT_EQ(parse({"f[2:9]"}, 4), (Faces{2, 3}));
    EXPECT_EQ(parse({"f[4]"}, 4), Faces{});
    EXPECT_EQ(parse({"f[0:4294967295]"}, 2), (Faces{0, 1}));
    EXPECT_EQ(parse({"f[1:99999999999999999999]"}, 2), (Faces{1}));
    EXPECT_EQ(parse({"f[*]", "f[0]"}, 0), Faces{});
}

TEST(FaceList, TurnsABackwardRangeRound)
{
    EXPECT_EQ(parse({"f[3:1]"}, 10), (Faces{1, 2, 3}));
}

TEST(FaceList, IgnoresOtherComponentsAndMalformedTexts)
{
    EXPECT_EQ(
        parse({"e[1]", "vtx[0:3]", "map[*]", "vtxFace[2][7]", "f", "f[", "f[]", "f[:]", "f[1:]",
               "f[:2]", "f[a]", "f[-1]", "f[1]x", "f[1][2]", "", "[1]", "f[1.5]", "cf[1]"},
              10),
        Faces{});
}

TEST(FaceList, BlanksRoundTheNumbersDoNotMatter)
{
    EXPECT_EQ(parse({" f[ 1 : 2 ] "}, 10), (Faces{1, 2}));
}

TEST(AddOffsets, AddsToTheGivenRunsOnly)
{
    const std::vector<Vec3f> points{{1, 1, 1}, {2, 2, 2}, {3, 3, 3}, {4, 4, 4}};
    const std::vector<float> block{0, 0, 5, 10, 20, 30, 1, 2, 3};
    const std::vector<OffsetRun> runs{{0, 1, 0}, {2, 2, 3}};
    const std::vector<Vec3f> expected{{1, 1, 6}, {2, 2, 2}, {13, 23, 33}, {5, 6, 7}};
    EXPECT_EQ(addOffsets(points, runs, block), expected);
}

TEST(AddOffsets, WithoutRunsThePointsAreTheSame)
{
    const std::vector<Vec3f> points{{1, 2, 3}};
    EXPECT_EQ(addOffsets(points, {}, {}), points);
}

TEST(AddOffsets, WhatIsBeyondThePointsOrTheBlockHasNoEffect)
{
    const std::vector<Vec3f> points{{1, 1, 1}, {2, 2, 2}};
    const std::vector<float> block{1, 1, 1, 2, 2, 2, 9};
    const std::vector<OffsetRun> runs{{1, 5, 0}, {2, 1, 0}, {0xffffffff, 0xffffffff, 0},
                                      {0, 3, 3}, {0, 1, 6}, {0, 1, 700}};
    const std::vector<Vec3f> expected{{3, 3, 3}, {3, 3, 3}};
    EXPECT_EQ(addOffsets(points, runs, block), expected);
}

} // namespace
} // namespace host::geometry
