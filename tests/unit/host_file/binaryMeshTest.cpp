// MESH: whole meshes in one block. What is expected is what the text form would say, by hand.
#include "host/file/binary/values/meshWords.h"
#include "tests/unit/host_file/readBinaryFile.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

using test::BinaryBytes;
using test::BinaryMesh;
using test::BinaryScene;
using test::kMaya2011;
using test::kMaya2019;
using test::kMaya85;
using test::readChunks;

namespace {

/// Two triangles on the square 0 1 2 3, cut from 0 to 2.
BinaryMesh square()
{
    BinaryMesh mesh;
    mesh.points = {0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0};
    mesh.edges = {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {0, 2, true}};
    mesh.faces = {{{0, 1, -5}}, {{4, 2, 3}}};
    return mesh;
}

const std::string kSquarePoints =
    "setAttr .vt size 4\nsetAttr .vt[0:3] float x 3: 0 0 0 1 0 0 1 1 0 0 1 0\n";
const std::string kSquareEdges =
    "setAttr .ed size 5\nsetAttr .ed[0:4] int32 x 3: 0 1 1 1 2 1 2 3 1 3 0 1 0 2 0\n";
const std::string kSquareFaces = "setAttr .fc size 2\nsetAttr .fc[0:1] faces: f 0 1 -5 f 4 2 3\n";

std::string readMesh(const BinaryMesh& mesh, const char* plug = "o")
{
    const BinaryScene mb(kMaya2019);
    return readChunks(mb, mb.mesh(plug, mesh));
}

/// A block whose bytes are written one by one.
std::string readBlock(const std::string& block)
{
    const BinaryScene mb(kMaya2019);
    return readChunks(mb, mb.value("MESH", "o", block));
}

std::string damaged(const std::string& reason)
{
    return "damaged \"MESH\": " + reason + "\n";
}

/// The empty kinds of component data of four bytes each.
std::string noComponents(std::size_t kinds)
{
    return std::string(4 * kinds, '\0');
}

} // namespace

TEST(BinaryMesh, PointsEdgesAndFacesBecomeLists)
{
    EXPECT_EQ(readMesh(square()), kSquarePoints + kSquareEdges + kSquareFaces);
    EXPECT_EQ(readMesh(square(), "ci"), kSquarePoints + kSquareEdges + kSquareFaces);
}

TEST(BinaryMesh, OldVersionsHaveFewerKindsOfComponentData)
{
    for (const auto& manner : {kMaya85, kMaya2011}) {
        const BinaryScene mb(manner);
        EXPECT_EQ(readChunks(mb, mb.mesh("o", square())),
                  kSquarePoints + kSquareEdges + kSquareFaces);
    }
}

TEST(BinaryMesh, ACubeWithOneHardEdge)
{
    BinaryMesh cube;
    cube.points = {0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0, 0, 0, 1, 1, 0, 1, 1, 1, 1, 0, 1, 1};
    cube.edges = {{0, 1}, {1, 2}, {2, 3},       {3, 0}, {4, 5}, {5, 6},
                  {6, 7}, {7, 4}, {0, 4, true}, {1, 5}, {2, 6}, {3, 7}};
    cube.faces = {{{-4, -3, -2, -1}}, {{4, 5, 6, 7}},     {{0, 9, -5, -9}},
                  {{1, 10, -6, -10}}, {{2, 11, -7, -11}}, {{3, 8, -8, -12}}};
    EXPECT_EQ(readMesh(cube),
              "setAttr .vt size 8\nsetAttr .vt[0:7] float x 3: 0 0 0 1 0 0 1 1 0 0 1 0 0 0 1 1 0 "
              "1 1 1 1 0 1 1\n"
              "setAttr .ed size 12\nsetAttr .ed[0:11] int32 x 3: 0 1 1 1 2 1 2 3 1 3 0 1 4 5 1 5 6 "
              "1 6 7 1 7 4 1 0 4 0 1 5 1 2 6 1 3 7 1\n"
              "setAttr .fc size 6\nsetAttr .fc[0:5] faces: f -4 -3 -2 -1 f 4 5 6 7 f 0 9 -5 -9 "
              "f 1 10 -6 -10 f 2 11 -7 -11 f 3 8 -8 -12\n");
}

TEST(BinaryMesh, HolesFollowTheirFace)
{
    BinaryMesh mesh = square();
    mesh.faces = {{{0, 1, 2}, {-4, -3}, {-1}}, {{3, 4}}};
    EXPECT_EQ(readMesh(mesh), kSquarePoints + kSquareEdges +
                                  "setAttr .fc size 2\n"
                                  "setAttr .fc[0:1] faces: f 0 1 2 h -4 -3 h -1 f 3 4\n");
}

TEST(BinaryMesh, SetsOfTextureCoordinatesGoAlongWithTheFaces)
{
    BinaryMesh mesh = square();
    mesh.uvSets = {{"map1", {0, 0, 1, 0, 1, 1}, {0, 1, 2, -1, -1, -1}},
                   {"none", {}, {}},
                   {"wide", {0.25F, 0.5F}, {0, 0, 0, 0, -1, 0}}};
    const std::string faces = "setAttr .fc size 2\nsetAttr .fc[0:1] faces: "
                              "f 0 1 -5 mu0 0 1 2 mu2 0 0 0 f 4 2 3 mu2 0 -1 0\n";
    EXPECT_EQ(readMesh(mesh), "setAttr .uvst[0].uvsn string \"map1\"\n"
                              "setAttr .uvst[0].uvsp size 3\n"
                              "setAttr .uvst[0].uvsp[0:2] float x 2: 0 0 1 0 1 1\n"
                              "setAttr .cuvs string \"map1\"\n"
                              "setAttr .uvst[1].uvsn string \"none\"\n"
                              "setAttr .uvst[2].uvsn string \"wide\"\n"
                              "setAttr .uvst[2].uvsp size 1\n"
                              "setAttr .uvst[2].uvsp[0] float x 2: 0.25 0.5\n" +
                                  kSquarePoints + kSquareEdges + faces);
}

TEST(BinaryMesh, CoordinatesThatCameAsAnAttributeAreNotToldAgain)
{
    const BinaryScene mb(kMaya2019);
    BinaryMesh mesh = square();
    mesh.uvSets = {{"map1", {0, 0, 1, 0, 1, 1}, {0, 1, 2, -1, -1, -1}}};
    const std::string twin = mb.floats("uvst[0].uvsp[0:2]", {0, 0, 1, 0, 1, 1}, 2);
    const std::string lines = readChunks(mb, twin + mb.mesh("o", mesh));
    EXPECT_EQ(lines.substr(lines.find("setAttr .vt")),
              kSquarePoints + kSquareEdges +
                  "setAttr .fc size 2\nsetAttr .fc[0:1] faces: f 0 1 -5 mu0 0 1 2 f 4 2 3\n");
    EXPECT_EQ(lines.find("uvsn"), std::string::npos);
    EXPECT_EQ(lines.find("cuvs"), std::string::npos);
    // The next node's coordinates are its own.
    const std::string both = test::readBinaryFile(
        mb.file(mb.header() + mb.node("DMSH", {"a"}, twin + mb.mesh("o", mesh)) +
                mb.node("DMSH", {"b"}, mb.mesh("o", mesh))));
    EXPECT_NE(both.substr(both.find("\"b\"")).find("setAttr .uvst[0].uvsn string \"map1\"\n"),
              std::string::npos);
}

TEST(BinaryMesh, NormalsStandBetweenEdgesAndFaces)
{
    BinaryMesh mesh = square();
    mesh.normals = {0, 0, 1, 1e20F, 1e20F, 1e20F};
    EXPECT_EQ(readMesh(mesh), kSquarePoints + kSquareEdges +
                                  "setAttr .n size 2\nsetAttr .n[0:1] float x 3: "
                                  "0 0 1 1e+20 1e+20 1e+20\n" +
                                  kSquareFaces);
}

TEST(BinaryMesh, ColoursAreLeftOut)
{
    BinaryMesh mesh = square();
    mesh.colorSets = {{"a", {1, 0, 0, 1}, {0, 0, 0, -1, -1, -1}}, {"b", {}, {}}};
    EXPECT_EQ(readMesh(mesh), kSquarePoints + kSquareEdges + kSquareFaces);
}

TEST(BinaryMesh, ValuesOfComponentsFollowTheFaces)
{
    BinaryMesh mesh = square();
    const auto block = [](std::uint32_t component, const std::vector<std::uint32_t>& indices,
                          const std::vector<float>& values) {
        return BinaryBytes().u32(1).u32(component).counted(indices).counted(values).bytes();
    };
    mesh.components = BinaryBytes()
                          .u32(1)
                          .raw(block(0, {4, 1}, {2.5F, 1}))
                          .u32(1)
                          .raw(block(1, {3}, {0.5F}))
                          .u32(1)
                          .raw(block(3, {1}, {}))
                          .u32(2)
                          .raw(block(2, {}, {}))
                          .raw(block(2, {0, 2}, {1, 1}));
    EXPECT_EQ(readMesh(mesh), kSquarePoints + kSquareEdges + kSquareFaces +
                                  "setAttr .cd polyComponent edge indices 2 4 1 values 2 2.5 1\n"
                                  "setAttr .cvd polyComponent vertex indices 1 3 values 1 0.5\n"
                                  "setAttr .hfd polyComponent face indices 1 1 values 0\n"
                                  "setAttr .pd[1] polyComponent uv indices 2 0 2 values 2 1 1\n");
}

TEST(BinaryMesh, TagsOfGeometryAreSkipped)
{
    BinaryMesh mesh = square();
    mesh.tags = BinaryBytes()
                    .raw("gtag")
                    .u8(0)
                    .u32(2)
                    .text("front")
                    .raw(BinaryScene::componentList({{"CMDF", {{0, 1}}}}))
                    .text("none")
                    .raw(BinaryScene::componentList({}));
    EXPECT_EQ(readMesh(mesh), kSquarePoints + kSquareEdges + kSquareFaces);
}

TEST(BinaryMesh, AnEmptyBlockSaysNothing)
{
    EXPECT_EQ(readMesh({}), "");
}

TEST(BinaryMesh, TheNumberOfTextureIdsMayBeWrong)
{
    BinaryMesh mesh = square();
    mesh.uvSets = {{"map1", {0, 0}, {0, 0, 0, 0}}};
    const std::string reason = "a mesh has another number of texture coordinates than of corners";
    std::string lines = readMesh(mesh);
    // which corner has which cannot be told: none has any
    EXPECT_NE(lines.find("faces: f 0 1 -5 f 4 2 3\n" + damaged(reason)), std::string::npos)
        << lines;
    mesh.uvSets = {{"map1", {0, 0}, {0, 0, 0, 0, 0, 0, 7}}};
    lines = readMesh(mesh);
    EXPECT_NE(lines.find("faces: f 0 1 -5 f 4 2 3\n" + damaged(reason)), std::string::npos)
        << lines;
}

TEST(BinaryMesh, WhatIsWrongWithFacesIsToldAndTheOthersStay)
{
    BinaryMesh mesh = square();
    mesh.faces = {{{0, 1, 7}}, {{4, 2, 3}}};
    EXPECT_EQ(readMesh(mesh), kSquarePoints + kSquareEdges +
                                  "setAttr .fc size 2\nsetAttr .fc[0:1] faces: f 0 1 7 f 4 2 3\n" +
                                  damaged("a face of a mesh refers to an edge that is not there"));
    // The second face is open, and so is the hole of the first one.
    const auto block = [](const std::vector<std::uint32_t>& corners) {
        return BinaryBytes()
            .counted(std::vector<float>{})
            .counted(std::vector<std::uint32_t>{0, 0})
            .counted(corners)
            .u32(0)
            .u32(0)
            .u32(0)
            .raw(noComponents(4))
            .bytes();
    };
    const std::string edge = "setAttr .ed size 1\nsetAttr .ed[0] int32 x 3: 0 0 1\n";
    EXPECT_EQ(readBlock(block({0, 0x60000000, 0x80000000, 0})),
              edge + "setAttr .fc size 1\nsetAttr .fc[0] faces: f 0 0\n" +
                  damaged("the last face of a mesh has no end"));
    EXPECT_EQ(readBlock(block({0, 0x40000000, 0x80000000})),
              edge + damaged("the last face of a mesh has no end"));
    // A face that ends without its loop ending: it does.
    EXPECT_EQ(readBlock(block({0xa0000000, 0x60000000})),
              edge + "setAttr .fc size 2\nsetAttr .fc[0:1] faces: f -1 f 0\n");
}

TEST(BinaryMesh, NumbersLeftOverAreToldAndTheOthersStay)
{
    const std::string block = BinaryBytes()
                                  .counted(std::vector<float>{1, 2, 3, 4})
                                  .counted(std::vector<std::uint32_t>{0, 0, 0})
                                  .u32(0)
                                  .u32(0)
                                  .u32(0)
                                  .u32(0)
                                  .raw(noComponents(4));
    EXPECT_EQ(readBlock(block), "setAttr .vt size 1\nsetAttr .vt[0] float x 3: 1 2 3\n"
                                "setAttr .ed size 1\nsetAttr .ed[0] int32 x 3: 0 0 1\n" +
                                    damaged("a list of a mesh has numbers left over"));
}

namespace {

/// A mesh that has some of everything.
BinaryMesh fullMesh()
{
    BinaryMesh mesh = square();
    mesh.faces = {{{0, 1}, {-5}}, {{4, 2, 3}}};
    mesh.normals = {0, 0, 1};
    mesh.uvSets = {{"m", {0, 0}, {0, 0, 0, 0, 0, 0}}};
    mesh.colorSets = {{"c", {1, 1, 1, 1}, {0, 0, 0, 0, 0, 0}}};
    mesh.components = BinaryBytes()
                          .u32(0)
                          .u32(0)
                          .u32(0)
                          .u32(1)
                          .u32(1)
                          .u32(2)
                          .counted(std::vector<std::uint32_t>{0})
                          .counted(std::vector<float>{1});
    mesh.tags = BinaryBytes().raw("gtag").u8(0).u32(1).text("t").raw(
        BinaryScene::componentList({{"CMDF", {{0, 1}}}}));
    return mesh;
}

} // namespace

TEST(BinaryMesh, EveryCountMayLie)
{
    const std::string block = BinaryScene(kMaya2019).meshBlock(fullMesh());
    const std::string sound = readBlock(block);
    EXPECT_EQ(sound.find("damaged"), std::string::npos) << sound;
    // Where the counts stand: behind the 12 points, 10 edge numbers, 6 corners, 3 normals and the
    // zero behind them, the set "m" with 2 numbers and 6 ids, the set "c" with 4 and 6, three empty
    // kinds of component data and one with an index and a value, the tag "t" with one entry of one
    // range.
    const std::vector<std::size_t> counts = {0,   52,  96,  124, 144, 154, 166, 194, 208, 228,
                                             256, 260, 264, 268, 280, 288, 301, 307, 315};
    for (const std::size_t at : counts) {
        ASSERT_LE(at + 4, block.size());
        for (const std::uint32_t lie : {0xffffffffU, 0x7fffffffU, 0x40000000U, 1000U}) {
            std::string bytes = block;
            bytes.replace(at, 4, BinaryBytes().u32(lie).bytes());
            EXPECT_NE(readBlock(bytes).find("damaged \"MESH\""), std::string::npos)
                << lie << " at " << at;
        }
    }
    EXPECT_EQ(block.size(), 327U);
}

TEST(BinaryMesh, EveryPrefixEndsQuietly)
{
    const std::string block = BinaryScene(kMaya2019).meshBlock(fullMesh());
    const std::string sound = readBlock(block);
    const std::string points = sound.substr(sound.find("setAttr .vt"), kSquarePoints.size());
    std::size_t whole = 0;
    for (std::size_t length = 1; length < block.size(); ++length) {
        const std::string lines = readBlock(block.substr(0, length));
        const bool isDamaged = lines.find("damaged \"MESH\"") != std::string::npos;
        whole += isDamaged ? 0 : 1;
        if (length >= 52) { // count and twelve numbers
            EXPECT_NE(lines.find(points), std::string::npos) << length;
        }
    }
    // Versions differ in how much follows the colours: after each of three empty kinds, after the
    // pins, and in front of them a block may end.
    EXPECT_EQ(whole, 5U);
}

TEST(BinaryMesh, ANodeWithoutSuchListsGetsNone)
{
    const BinaryScene mb(kMaya2019);
    const std::string code = "PTFR"; // polyTransfer
    const std::string lines = readChunks(mb, mb.mesh("op", square()), code);
    EXPECT_EQ(lines.find("vt"), std::string::npos);
    EXPECT_NE(lines.find("setAttr .op mesh"), std::string::npos) << lines;
}

TEST(BinaryMesh, OfAnotherAttributeIsAValueOfItsOwn)
{
    const std::string lines = readMesh(square(), "keep");
    EXPECT_EQ(lines.find(".vt"), std::string::npos);
    EXPECT_EQ(lines.find(".fc"), std::string::npos);
    EXPECT_NE(lines.find("setAttr .keep mesh"), std::string::npos) << lines;
}

TEST(BinaryMesh, LongListsArriveInPiecesOfWholeFaces)
{
    // 100,000 triangles on edge 0: 300,000 corners, which are more than two pieces; ids count up.
    class Collector : public test::NodeTableSink {
    public:
        std::vector<std::int64_t> firsts;
        std::vector<std::int32_t> ids;
        std::size_t corners = 0;
        std::size_t numbers = 0;
        std::int64_t nextPoint = 0;
        std::size_t cornersAhead = 300000;
        bool isInStep = true;

        void setAttribute(const host::file::SetAttribute& command) override
        {
            const host::PlugStep& step = command.plug.last();
            if (command.faces != nullptr) {
                firsts.push_back(step.first);
                isInStep = isInStep && command.cornersAhead == cornersAhead &&
                           command.elementsAhead == cornersAhead / 3;
                cornersAhead -= command.faces->corners.size();
                corners += command.faces->corners.size();
                for (const std::uint32_t size : command.faces->loopSizes) {
                    isInStep = isInStep && size == 3;
                }
                isInStep = isInStep && command.faces->corners.size() ==
                                           3 * command.faces->faceLoopCounts.size();
                const auto& all = command.faces->uvSets.at(0).ids;
                ids.insert(ids.end(), all.begin(), all.end());
            } else if (step.name == "vt") {
                isInStep = isInStep && step.first == nextPoint &&
                           command.elementsAhead == 30000 - static_cast<std::size_t>(nextPoint);
                nextPoint += static_cast<std::int64_t>(command.numbers.count());
                numbers += command.numbers.numberCount();
            }
        }
    };
    BinaryMesh mesh;
    mesh.points.assign(90000, 1.5F);
    mesh.edges = {{0, 0}};
    mesh.faces.assign(100000, {{0, 0, -1}});
    mesh.uvSets = {{"map1", {0, 0}, {}}};
    for (std::int32_t i = 0; i < 300000; ++i) {
        mesh.uvSets[0].corners.push_back(i);
    }
    const BinaryScene mb(kMaya2019);
    const std::string file = mb.file(mb.header() + mb.node("DMSH", {"a"}, mb.mesh("o", mesh)));
    Collector sink;
    ASSERT_TRUE(host::file::readBinary({file.data(), file.size()}, sink));
    EXPECT_TRUE(sink.damages.empty());
    EXPECT_TRUE(sink.isInStep);
    EXPECT_EQ(sink.numbers, 90000U);
    EXPECT_EQ(sink.corners, 300000U);
    EXPECT_GT(sink.firsts.size(), 2U);
    EXPECT_EQ(sink.firsts.front(), 0);
    ASSERT_EQ(sink.ids.size(), 300000U);
    for (std::int32_t i = 0; i < 300000; ++i) {
        ASSERT_EQ(sink.ids[static_cast<std::size_t>(i)], i);
    }
}
