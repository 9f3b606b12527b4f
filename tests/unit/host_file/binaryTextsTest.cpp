// Chunks of texts, arrays, components and matrices.
#include "tests/unit/host_file/readValueChunk.h"

#include <gtest/gtest.h>

using test::BinaryBytes;
using test::BinaryScene;
using test::kMaya2019;
using test::kMaya85;
using test::readValueChunk;

namespace {

std::string read(std::string_view tag, std::string_view payload, const std::string& plug = "zz")
{
    return readValueChunk(kMaya2019, tag, plug, payload);
}

std::string damaged(const std::string& tag, const std::string& reason)
{
    return "damaged \"" + tag + "\": " + reason + "\n";
}

std::string doubles(const std::vector<double>& numbers)
{
    return BinaryBytes().f64s(numbers).bytes();
}

using Ranges = std::vector<std::vector<std::int32_t>>;

std::string components(const std::string& kind, const Ranges& ranges)
{
    return read("CMP#", BinaryScene::componentList({{kind, ranges}}));
}

/// Parts of a pose: no rotation, no orientation, nothing but what is given.
struct Pose {
    std::vector<double> scale{1, 1, 1};
    std::vector<double> rotate{0, 0, 0};
    std::uint32_t order = 0;
    std::vector<double> translate{0, 0, 0};
    std::vector<double> jointOrient{0, 0, 0, 1};
    std::vector<double> inverseScale{1, 1, 1};
    unsigned compensates = 0;

    std::string bytes(bool isTight) const
    {
        const std::string padding(isTight ? 0 : 4, '\x55');
        BinaryBytes bytes;
        bytes.f64s(scale).f64s(rotate).u32(order).raw(padding).f64s(translate);
        bytes.f64s({0, 0, 0}); // shear
        for (int pivot = 0; pivot < 4; ++pivot) {
            bytes.f64s({0, 0, 0});
        }
        bytes.f64s({0, 0, 0, 1}).f64s(jointOrient).f64s(inverseScale).f64s({9, 9, 9, 9});
        return bytes.u8(1).u8(compensates).raw("\x66\x77").raw(padding).bytes();
    }
};

} // namespace

TEST(BinaryTexts, Strings)
{
    EXPECT_EQ(read("STR ", BinaryBytes().text("a \"b\"").bytes()),
              "setAttr .zz string \"a \\\"b\\\"\"\n");
    EXPECT_EQ(read("STR ", std::string(1, '\0')), "setAttr .zz string \"\"\n");
    EXPECT_EQ(readValueChunk(kMaya85, "STR ", "b", BinaryBytes().text("x").bytes(), "SCRP"),
              "setAttr .b string \"x\"\n");
    EXPECT_EQ(read("STR ", "abc"), damaged("STR ", "a text has no end"));
    EXPECT_EQ(read("STR ", BinaryBytes().text("a").text("b").bytes()),
              "setAttr .zz string \"a\"\n" + damaged("STR ", "2 bytes are left over"));
}

TEST(BinaryTexts, StringsOfOtherCharacterSets)
{
    EXPECT_EQ(read("STR ", BinaryBytes().text("\xc3\xa9").bytes()),
              "setAttr .zz string \"\xc3\xa9\"\n"); // UTF-8 as it stands
    EXPECT_EQ(read("STR ", BinaryBytes().text("\xe9").bytes()),
              "setAttr .zz string \"\xc3\xa9\"\n"); // code page 1252
}

TEST(BinaryTexts, StringsOfARange)
{
    EXPECT_EQ(read("STR ", BinaryBytes().text("a").text("b").bytes(), "zz[4:5]"),
              "setAttr .zz[4] string \"a\"\nsetAttr .zz[5] string \"b\"\n");
    EXPECT_EQ(read("STR ", BinaryBytes().text("a").bytes(), "zz[4:9000]"),
              "setAttr .zz[4] string \"a\"\n" + damaged("STR ", "a text has no end"));
}

TEST(BinaryTexts, RangesOfTooManyAreNotKept)
{
    // each element would take a hundred times its one byte
    EXPECT_EQ(read("STR ", std::string((1 << 20) + 1, '\0'), "zz[0:1048576]"),
              damaged("STR ", "more values of ranges than are kept"));
}

TEST(BinaryTexts, ListsOfStrings)
{
    EXPECT_EQ(read("STR#", BinaryBytes().u32(2).text("a").text("").bytes()),
              "setAttr .zz strings \"a\" \"\"\n");
    EXPECT_EQ(read("STR#", BinaryBytes().u32(0).bytes()), "setAttr .zz strings\n");
    EXPECT_EQ(read("STR#", BinaryBytes().u32(4000000000u).text("a").bytes()),
              damaged("STR#", "a count of 4000000000 exceeds the chunk"));
    EXPECT_EQ(read("ATAL", BinaryBytes().u32(2).text("alias").text("t[0]").bytes()),
              "setAttr .zz strings \"alias\" \"t[0]\"\n");
}

TEST(BinaryTexts, CharacterMaps)
{
    const std::string map =
        BinaryBytes().u32(2).text("a.tx").u8(1).u32(1).text("a.\"v").u8(0).u32(7).bytes();
    EXPECT_EQ(read("CHMP", map),
              R"(setAttr .zz opaque "characterMapping" "2 \"a.tx\" 1 1 \"a.\\\"v\" 0 7")"
              "\n");
    EXPECT_EQ(read("CHMP", BinaryBytes().u32(100).text("a").u8(0).u32(0).bytes()),
              damaged("CHMP", "a count of 100 exceeds the chunk"));
    EXPECT_EQ(read("CHMP", map.substr(0, map.size() - 1)),
              damaged("CHMP", "the chunk is too short"));
}

TEST(BinaryTexts, ReferenceEdits)
{
    BinaryBytes bytes;
    bytes.text("topRN").u32(1).text("aRN").u32(0); // those that failed
    bytes.u32(1).text("aRN").u32(3);
    bytes.u32(2).text("|x").text("t").text(" 1");
    bytes.u32(3).text("a.b").text("c.d").text("");
    bytes.u32(5).u32(4).text("p").text("q").text("r").text("s");
    EXPECT_EQ(read("REFE", bytes.bytes()),
              R"(setAttr .zz opaque "dataReferenceEdits" "\"topRN\" \"aRN\" 0 \"aRN\" 3 )"
              R"(2 \"|x\" \"t\" \" 1\" 3 \"a.b\" \"c.d\" \"\" )"
              R"(5 4 \"p\" \"q\" \"r\" \"s\"")"
              "\n");
    EXPECT_EQ(read("REFE", BinaryBytes().text("t").u32(0).u32(0).u8(0).bytes()),
              R"(setAttr .zz opaque "dataReferenceEdits" "\"t\"")"
              "\n" +
                  damaged("REFE", "1 bytes are left over"));
    const std::string unknown =
        BinaryBytes().text("t").u32(1).text("aRN").u32(1).u32(9).text("").text("").text("").bytes();
    EXPECT_EQ(read("REFE", unknown), damaged("REFE", "a reference edit of kind 9"));
}

TEST(BinaryArrays, FillTheChunk)
{
    EXPECT_EQ(read("DBL#", doubles({0.5, -1})), "setAttr .zz numbers 2 0.5 -1\n");
    EXPECT_EQ(read("FLT#", BinaryBytes().f32(0.5f).bytes()), "setAttr .zz numbers 1 0.5\n");
    EXPECT_EQ(read("I32#", BinaryBytes().i32(3).i32(-2).bytes()), "setAttr .zz integers 2 3 -2\n");
    EXPECT_EQ(read("I64#", BinaryBytes().i64(std::int64_t{1} << 40).i64(-2).bytes()),
              "setAttr .zz numbers 2 1099511627776 -2\n");
    EXPECT_EQ(read("VEC#", doubles({1, 2, 3, 4, 5, 6})), "setAttr .zz vectors 1 2 3 4 5 6\n");
    EXPECT_EQ(read("PNT#", doubles({1, 2, 3, 4})), "setAttr .zz points 1 2 3 4\n");
    EXPECT_EQ(read("MAT#", doubles(std::vector<double>(16, 2))),
              "setAttr .zz numbers 16 2 2 2 2 2 2 2 2 2 2 2 2 2 2 2 2\n");
}

TEST(BinaryArrays, MayHaveNoElements)
{
    EXPECT_EQ(read("DBL#", ""), "setAttr .zz numbers 0\n");
    EXPECT_EQ(read("I32#", ""), "setAttr .zz integers 0\n");
}

TEST(BinaryArrays, WholeElementsOnly)
{
    EXPECT_EQ(read("DBL#", "12345678a"), damaged("DBL#", "1 bytes are left over"));
    EXPECT_EQ(read("VEC#", doubles({1, 2, 3, 4})), damaged("VEC#", "8 bytes are left over"));
    EXPECT_EQ(read("PNT#", doubles({1})), damaged("PNT#", "8 bytes are left over"));
    EXPECT_EQ(read("DBL#", doubles({1, 2}), "zz[0:1]"),
              damaged("DBL#", "arrays of a range cannot be told apart"));
}

TEST(BinaryComponents, KindsAndRanges)
{
    EXPECT_EQ(components("CMDV", {{0, 7}, {9, 9}}),
              "setAttr .zz components \"vtx[0:7]\" \"vtx[9]\"\n");
    EXPECT_EQ(components("CMDE", {{3, 3}}), "setAttr .zz components \"e[3]\"\n");
    EXPECT_EQ(components("CMDF", {{-1, 41}}), "setAttr .zz components \"f[*]\"\n");
    EXPECT_EQ(components("CMDM", {{0, 1}}), "setAttr .zz components \"map[0:1]\"\n");
    EXPECT_EQ(components("CCCV", {{0, 1}}), "setAttr .zz components \"cv[0:1]\"\n");
    EXPECT_EQ(components("CCEP", {{2, 2}}), "setAttr .zz components \"ep[2]\"\n");
    EXPECT_EQ(components("CSCV", {{0, 3, 2, 2}, {-1, 5, 0, 1}}),
              "setAttr .zz components \"cv[0:3][2]\" \"cv[*][0:1]\"\n");
    EXPECT_EQ(components("CLAT", {{0, 1, 0, 4, 1, 1}}),
              "setAttr .zz components \"pt[0:1][0:4][1]\"\n");
    EXPECT_EQ(read("CMP#", BinaryScene::componentList({{"CMDV", {{1, 1}}}, {"CMDF", {}}})),
              "setAttr .zz components \"vtx[1]\"\n");
    EXPECT_EQ(read("CMP#", BinaryBytes().u32(0).bytes()), "setAttr .zz components\n");
}

TEST(BinaryComponents, WhatDoesNotFit)
{
    EXPECT_EQ(components("XYZW", {{0, 1}}), damaged("CMP#", "component kind XYZW"));
    EXPECT_EQ(components("CMDV", {{-2, 1}}), damaged("CMP#", "a range of components from -2 to 1"));
    EXPECT_EQ(components("CMDV", {{4, 3}}), damaged("CMP#", "a range of components from 4 to 3"));
    EXPECT_EQ(read("CMP#", BinaryBytes().u32(1).raw("CSCV").u32(2).i32(0).i32(0).bytes()),
              damaged("CMP#", "a count of 2 exceeds the chunk"));
    EXPECT_EQ(read("CMP#", BinaryBytes().u32(0xffffffff).raw("CMDV").u32(0).bytes()),
              damaged("CMP#", "a count of 4294967295 exceeds the chunk"));
}

TEST(BinaryMatrices, SixteenNumbers)
{
    std::vector<double> numbers(16);
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        numbers[i] = static_cast<double>(i);
    }
    EXPECT_EQ(read("MATR", doubles(numbers)),
              "setAttr .zz matrix 0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15\n");
    EXPECT_EQ(read("MATR", doubles(std::vector<double>(32, 1)), "zz[0:1]"),
              "setAttr .zz[0] matrix 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1\n"
              "setAttr .zz[1] matrix 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1\n");
    EXPECT_EQ(read("MATR", doubles({1, 2})), damaged("MATR", "a matrix of 16 bytes"));
}

TEST(BinaryMatrices, PosesAreComposed)
{
    for (const bool isTight : {false, true}) {
        Pose pose;
        pose.scale = {2, 3, 4};
        pose.translate = {5, 6, 7};
        ASSERT_EQ(pose.bytes(isTight).size(), isTight ? 320u : 328u);
        // Rows scaled, translation last.
        EXPECT_EQ(read("MATR", pose.bytes(isTight)),
                  "setAttr .zz matrix 2 0 0 0 0 3 0 0 0 0 4 0 5 6 7 1\n");
        Pose turned; // half a turn about x, as x y z w
        turned.jointOrient = {1, 0, 0, 0};
        EXPECT_EQ(read("MATR", turned.bytes(isTight)),
                  "setAttr .zz matrix 1 0 0 0 0 -1 0 0 0 0 -1 0 0 0 0 1\n");
    }
}

TEST(BinaryMatrices, ScaleIsCompensatedWhereTheByteSaysSo)
{
    Pose pose;
    pose.inverseScale = {2, 1, 1};
    const std::string identity = "setAttr .zz matrix 1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1\n";
    EXPECT_EQ(read("MATR", pose.bytes(false)), identity);
    pose.compensates = 1;
    EXPECT_EQ(read("MATR", pose.bytes(false)),
              "setAttr .zz matrix 0.5 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1\n");
    pose.compensates = 0xf0; // what the memory held
    EXPECT_EQ(read("MATR", pose.bytes(false)), identity);
}
