// Chunks of curves, surfaces, trim regions and lattices.
#include "tests/unit/host_file/readValueChunk.h"

#include <gtest/gtest.h>

using test::BinaryBytes;
using test::kMaya2011;
using test::kMaya2019;
using test::readValueChunk;

namespace {

std::string read(std::string_view tag, std::string_view payload, const std::string& plug = "zz")
{
    return readValueChunk(kMaya2019, tag, plug, payload, "NSRF");
}

std::string damaged(const std::string& tag, const std::string& reason)
{
    return "damaged \"" + tag + "\": " + reason + "\n";
}

/// A line's degree, spans, form, rational, dimension; then knots 0 1.
BinaryBytes lineHead(std::uint32_t dimension, unsigned isRational = 0, std::uint32_t spans = 1)
{
    return BinaryBytes().u32(1).u32(spans).u32(0).u8(isRational).u32(dimension).u32(2).f64s({0, 1});
}

BinaryBytes squareHead(unsigned isRational = 0, std::uint32_t dimension = 3)
{
    BinaryBytes bytes;
    bytes.u32(1).u32(1).u32(1).u32(1).u32(0).u32(2).u8(isRational).u32(dimension);
    return bytes.u32(2).f64s({0, 1}).u32(2).f64s({0, 2}).u32(4);
}

const std::vector<double> kCorners{0, 0, 0, 0, 1, 0, 1, 0, 0, 1, 1, 0};

/// A region with one boundary of one edge: a line in space and one in the parameter plane.
std::string trimRegion(std::size_t flagBytes, std::uint32_t spans = 1)
{
    const auto flag = [&](BinaryBytes& bytes, unsigned value) {
        flagBytes == 4 ? bytes.u32(value) : bytes.u8(value);
    };
    BinaryBytes bytes;
    bytes.u8(1).u32(1);            // turned, boundaries
    bytes.u32(0).u32(1).u32(0);    // outer, edges, one number each
    bytes.u32(1).raw(lineHead(3)); // curves in space
    bytes.u32(2).f64s({0, 0, 0, 1, 0, 0}).f64(0.5);
    flag(bytes, 1); // reversed
    bytes.i32(-1).u32(1).raw(lineHead(2, 0, spans)).u32(2).f64s({0, 0, 1, 0});
    flag(bytes, 1);
    return bytes.f64(0.25).bytes();
}

} // namespace

TEST(BinaryCurves, Layout)
{
    const std::string line = lineHead(3).u32(2).f64s({0, 0, 0, 1, 2, 3}).bytes();
    const std::string expected = "setAttr .zz curve 1 1 0 0 3 knots 2 0 1 poles 6 0 0 0 1 2 3\n";
    EXPECT_EQ(read("NRBC", line), expected);
    EXPECT_EQ(readValueChunk(kMaya2011, "NRBC", "zz", line), expected);
    // Coordinates and weight; parameters instead of coordinates.
    EXPECT_EQ(read("NRBC", lineHead(3, 1).u32(2).f64s({0, 0, 0, 1, 1, 2, 3, 0.5}).bytes()),
              "setAttr .zz curve 1 1 0 1 3 knots 2 0 1 poles 8 0 0 0 1 1 2 3 0.5\n");
    EXPECT_EQ(read("NRBC", lineHead(2).u32(2).f64s({0, 0, 1, 2}).bytes()),
              "setAttr .zz curve 1 1 0 0 2 knots 2 0 1 poles 4 0 0 1 2\n");
    EXPECT_EQ(read("NRBC", lineHead(2, 1).u32(2).f64s({0, 0, 1, 1, 2, 0.5}).bytes()),
              "setAttr .zz curve 1 1 0 1 2 knots 2 0 1 poles 6 0 0 1 1 2 0.5\n");
}

TEST(BinaryCurves, WhatDoesNotFit)
{
    const std::string line = lineHead(3).u32(2).f64s({0, 0, 0, 1, 2, 3}).bytes();
    EXPECT_EQ(read("NRBC", line.substr(0, line.size() - 1)),
              damaged("NRBC", "a count of 2 exceeds the chunk"));
    EXPECT_EQ(read("NRBC", lineHead(3).u32(1).f64s({0, 0, 0}).bytes()),
              damaged("NRBC", "the counts of a curve's knots and points do not fit its degree"));
    EXPECT_EQ(read("NRBC", lineHead(3, 1).u32(2).f64s({0, 0, 0, 1, 2, 3}).bytes()),
              damaged("NRBC", "a count of 8 exceeds the chunk"));
    EXPECT_EQ(read("NRBC", lineHead(4).bytes()),
              damaged("NRBC", "a whole number from 2 to 3 was expected"));
    EXPECT_EQ(read("NRBC", BinaryBytes().u32(0).bytes()),
              damaged("NRBC", "a whole number from 1 to 1000 was expected"));
    EXPECT_EQ(read("NRBC", BinaryBytes().u32(3).u32(1).u32(3).bytes()),
              damaged("NRBC", "a whole number from 0 to 2 was expected"));
    EXPECT_EQ(read("NRBC", BinaryBytes().u32(1).u32(1).u32(0).u8(0).u32(3).u32(0xffffffff).bytes()),
              damaged("NRBC", "a count of 4294967295 exceeds the chunk"));
}

TEST(BinarySurfaces, Layout)
{
    const std::string line = "setAttr .zz surface 1 1 0 2 0 knotsU 2 0 1 knotsV 2 0 2 poles 12 "
                             "0 0 0 0 1 0 1 0 0 1 1 0\n";
    EXPECT_EQ(read("NRBS", squareHead().f64s(kCorners).raw("N").bytes()), line);
    EXPECT_EQ(read("NRBS", squareHead().f64s(kCorners).raw("T").bytes()), line);
    EXPECT_EQ(read("NRBS", squareHead(1).f64s(std::vector<double>(16, 2)).raw("N").bytes()),
              "setAttr .zz surface 1 1 0 2 1 knotsU 2 0 1 knotsV 2 0 2 poles 16 "
              "2 2 2 2 2 2 2 2 2 2 2 2 2 2 2 2\n");
}

TEST(BinarySurfaces, WhatDoesNotFit)
{
    EXPECT_EQ(read("NRBS", squareHead().f64s(kCorners).raw("X").bytes()),
              damaged("NRBS", "N or T was expected behind a surface"));
    EXPECT_EQ(read("NRBS", squareHead().f64s(kCorners).bytes()),
              damaged("NRBS", "the chunk is too short"));
    EXPECT_EQ(read("NRBS", squareHead(0, 2).f64s(kCorners).raw("N").bytes()),
              damaged("NRBS", "a whole number from 3 to 3 was expected"));
    BinaryBytes three;
    three.u32(1).u32(1).u32(1).u32(1).u32(0).u32(0).u8(0).u32(3);
    three.u32(2).f64s({0, 1}).u32(2).f64s({0, 2}).u32(3).f64s(std::vector<double>(9, 0)).raw("N");
    EXPECT_EQ(read("NRBS", three.bytes()),
              damaged("NRBS", "the counts of a surface's knots and points do not fit its degrees"));
}

TEST(BinaryTrims, RegionsAreTriedByTheirAttribute)
{
    const std::string line = "setAttr .tf[0] trim 1 boundary 0 flags 1 0 edge "
                             "curve 1 1 0 0 3 knots 2 0 1 poles 6 0 0 0 1 0 0 0.5 1 -1 "
                             "curve 1 1 0 0 2 knots 2 0 1 poles 4 0 0 1 0 1 0.25\n";
    EXPECT_EQ(read("XXXX", trimRegion(4), "tf[0]"), line);
    EXPECT_EQ(read("YYYY", trimRegion(1), "tf[0]"), line);
    // The same bytes mean nothing where the attribute takes no trims.
    EXPECT_EQ(read("XXXX", trimRegion(4)), "unknown \"XXXX\"\n");
}

TEST(BinaryTrims, WhatDoesNotFitIsDropped)
{
    const std::string none = damaged("XXXX", "a trim region of a form that is not known");
    EXPECT_EQ(read("XXXX", trimRegion(4) + "x", "tf[0]"), none);
    EXPECT_EQ(read("XXXX", trimRegion(4).substr(1), "tf[0]"), none);
    EXPECT_EQ(read("XXXX", trimRegion(4, 2), "tf[0]"),
              none); // spans that are not those of the knots
    EXPECT_EQ(read("XXXX", BinaryBytes().u8(0).u32(0xffffffff).bytes(), "tf[0]"), none);
    EXPECT_EQ(read("XXXX", BinaryBytes().u8(0).u32(1).u32(0).u32(0x7fffffff).bytes(), "tf[0]"),
              none);
}

TEST(BinaryLattices, Layout)
{
    EXPECT_EQ(
        read("LATT", BinaryBytes().u16(2).u16(1).u16(1).f64s({0, 0, 0, 1, 1, 2, 3, 9}).bytes()),
        "setAttr .zz lattice 2 1 1 0 0 0 1 2 3\n");
    EXPECT_EQ(read("LATT", BinaryBytes().u16(2).u16(1).u16(1).f64s({0, 0, 0, 1}).bytes()),
              damaged("LATT", "a count of 2 exceeds the chunk"));
    EXPECT_EQ(read("LATT", BinaryBytes().u16(0).u16(1).u16(1).bytes()),
              damaged("LATT", "a lattice without points"));
    EXPECT_EQ(read("LATT", BinaryBytes().u16(0xffff).u16(0xffff).u16(0xffff).bytes()),
              damaged("LATT", "a count of 281462092005375 exceeds the chunk"));
}
