#include "host/nodes/polygon/creators/allPolygonCreatorNodes.h"
#include "host/nodes/polygon/creators/solidInputs.h"

#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/nurbs/SurfaceData.h"

#include "../../../support/ToyContext.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace host::nodes {
namespace {

using geometry::MeshData;
using ::test::ToyContext;

const NodeCompute& rowOf(std::string_view type)
{
    for (const NodeCompute* row : allPolygonCreatorNodes()) {
        if (row->type == type) {
            return *row;
        }
    }
    throw std::logic_error("no row " + std::string(type));
}

std::shared_ptr<const MeshData> made(ToyContext& context)
{
    auto mesh = context.compute("output").data<MeshData>();
    EXPECT_NE(mesh, nullptr);
    EXPECT_TRUE(mesh == nullptr || isConsistent(*mesh));
    return mesh;
}

struct Counts {
    std::size_t points, edges, faces, uvs;
    friend bool operator==(const Counts&, const Counts&) = default;
};

std::ostream& operator<<(std::ostream& stream, const Counts& counts)
{
    return stream << counts.points << ' ' << counts.edges << ' ' << counts.faces << ' '
                  << counts.uvs;
}

Counts countsOf(const MeshData& mesh)
{
    return {mesh.points->size(), mesh.topology->edges.size(), mesh.topology->faceCount(),
            mesh.uvSets.empty() ? 0 : mesh.uvSets[0].points->size()};
}

// What a scene stores when every attribute has its default: nothing. Counts by the layouts: a
// sphere of 20 by 20 has 19 rings of 20 and two poles; a pipe four rings; a pyramid five points.
TEST(PolygonCreators, MakeTheirUsualSolidsOfNothing)
{
    const std::map<std::string_view, Counts> expected{
        {"polyCube", {8, 12, 6, 14}},
        {"polySphere", {382, 780, 400, 439}},
        {"polyPlane", {121, 220, 100, 121}},
        {"polyCylinder", {40, 60, 22, 20 + 42 + 20}},
        {"polyCone", {21, 40, 21, 20 + 21 + 1}},
        {"polyTorus", {400, 800, 400, 441}},
        {"polyPipe", {80, 160, 80, 105}},
        {"polyPyramid", {5, 8, 5, 4 + 5 + 1}},
        {"polyPrism", {6, 9, 5, 3 + 8 + 3}},
        {"polyDisc", {61, 108, 48, 61}},
        {"polyPlatonic", {12, 30, 20, 15}},
    };
    for (const auto& [type, counts] : expected) {
        ToyContext context(rowOf(type));
        const auto mesh = made(context);
        EXPECT_EQ(countsOf(*mesh), counts) << type;
        EXPECT_EQ(mesh->currentUvSet, "map1") << type;
        EXPECT_EQ(context.timesUncomputed, 0) << type;
    }
}

TEST(PolygonCreators, NameTheirCoordinatesAsAsked)
{
    ToyContext context(rowOf("polyCube"));
    context.values["uvSetName"] = Value::of(std::string("paint"));
    EXPECT_EQ(made(context)->uvSets[0].name, "paint");
    context.set("createUVs", 0);
    EXPECT_TRUE(made(context)->uvSets.empty());
}

TEST(PolygonCreators, ReadSizesCellsAndAxis)
{
    ToyContext context(rowOf("polyCube"));
    context.set("width", 2);
    context.set("height", 4);
    context.set("depth", 6);
    context.set("subdivisionsHeight", 2);
    context.setVector("axis", 0, 0, 1);
    const auto mesh = made(context);
    EXPECT_EQ(countsOf(*mesh), (Counts{12, 20, 10, 20}));
    EXPECT_EQ((*mesh->points)[0], (Vec3f{-1, -3, -2}));
    context.set("heightBaseline", -1);
    EXPECT_EQ((*made(context)->points)[0], (Vec3f{-1, -3, 0}));
}

// Three, four or five sides; all edges as long as the side.
TEST(PolygonCreators, PyramidsHaveEdgesOfOneLength)
{
    for (int sides = 3; sides <= 5; ++sides) {
        ToyContext context(rowOf("polyPyramid"));
        context.set("numberOfSides", sides);
        context.set("sideLength", 3);
        const auto mesh = made(context);
        EXPECT_EQ(mesh->points->size(), static_cast<std::size_t>(sides) + 1);
        for (const auto& edge : mesh->topology->edges) {
            EXPECT_NEAR(
                length(toDouble((*mesh->points)[edge.start]) - toDouble((*mesh->points)[edge.end])),
                3, 1e-5);
        }
        for (const std::uint8_t isSmooth : mesh->edgeFlags()) {
            EXPECT_EQ(isSmooth, 0);
        }
    }
}

// Up to Maya 2022 the sides of a cylinder reached a little higher in the layout.
TEST(PolygonCreators, CylindersHaveTheFormerLayoutUnlessToldOtherwise)
{
    for (const std::string_view type : {"polyCylinder", "polyPrism", "polyHelix"}) {
        ToyContext context(rowOf(type));
        context.set("createUVs", 3);
        const auto highest = [&] {
            const auto mesh = made(context);
            const auto& corners = *mesh->uvSets[0].corners;
            // the third corner of the last face of the sides, which are followed by two caps
            const std::uint32_t last = mesh->topology->faceCount() - 3;
            const auto corner = mesh->topology->firstCorner(last) + 2;
            return (*mesh->uvSets[0].points)[static_cast<std::size_t>(corners[corner])].y;
        };
        EXPECT_FLOAT_EQ(highest(), 0.68843985F) << type;
        context.set("maya2022UVs", 0);
        EXPECT_FLOAT_EQ(highest(), 0.6875F) << type;
    }
}

TEST(PolygonCreators, PrismsAreGivenByTheirSide)
{
    ToyContext context(rowOf("polyPrism"));
    context.set("numderOfSides", 6);
    context.set("length", 5);
    context.set("sideLength", 2);
    const auto mesh = made(context);
    EXPECT_EQ(mesh->points->size(), 12);
    // a regular hexagon is as wide as its sides are long
    EXPECT_NEAR((*mesh->points)[5].x, 2, 1e-6);
    EXPECT_NEAR((*mesh->points)[5].y, -2.5, 1e-6);
}

/// Counts are tried apart: they take time.
bool isCount(std::string_view input)
{
    return input.starts_with("subdiv") || input.ends_with("Sides") || input.ends_with("Number") ||
           input == "sides" || input == "coils" || input == "polygonCount";
}

TEST(PolygonCreators, SurviveSizesAndCountsThatMakeNoSense)
{
    const double nothing = std::numeric_limits<double>::quiet_NaN();
    const double endless = std::numeric_limits<double>::infinity();
    for (const NodeCompute* row : allPolygonCreatorNodes()) {
        for (const double number : {nothing, endless, -endless, -7.0, 0.0}) {
            ToyContext context(*row);
            for (const std::string_view input : row->inputs) {
                context.set(input, isCount(input) && number == endless ? 3 : number);
            }
            const auto mesh = context.compute(row->outputs[0]).data<MeshData>();
            ASSERT_TRUE(mesh == nullptr || isConsistent(*mesh)) << row->type << ' ' << number;
            if (mesh != nullptr && std::isnan(number)) {
                for (const Vec3f& point : *mesh->points) {
                    ASSERT_TRUE(std::isfinite(point.x + point.y + point.z)) << row->type;
                }
            }
        }
    }
}

TEST(PolygonCreators, TellWhatIsNotKnown)
{
    for (const std::string_view type : {"polyHelix", "polyPlatonicSolid", "polyPrimitiveMisc"}) {
        ToyContext context(rowOf(type));
        EXPECT_NE(made(context), nullptr);
        EXPECT_EQ(context.timesUncomputed, 1) << type;
    }
    ToyContext cube(rowOf("polyCube"));
    cube.set("createUVs", 1);
    made(cube);
    EXPECT_EQ(cube.timesUncomputed, 1);
}

/// Of the ways to lay a solid out: not (0), with the lengths of its edges (1), filling a part of
/// the square (2), in the proportions of its edges (3), which is the same where it is twice as high
/// as its radius, or has all edges of one length.
TEST(PolygonCreators, TellOtherLayoutsOfTextureCoordinates)
{
    const auto lackOf = [](std::string_view type, int way, double height) {
        ToyContext context(rowOf(type));
        context.set("createUVs", way);
        context.set("height", height);
        made(context);
        return context.lack;
    };
    for (const std::string_view type : {"polyCylinder", "polyCone", "polyPrism", "polyPyramid"}) {
        EXPECT_EQ(lackOf(type, 0, 3), Lack::Unsaid) << type;
        EXPECT_EQ(lackOf(type, 1, 2), Lack::Textures) << type;
        EXPECT_EQ(lackOf(type, 2, 3), Lack::Unsaid) << type;
    }
    for (const std::string_view type : {"polyCylinder", "polyCone"}) {
        EXPECT_EQ(lackOf(type, 3, 2), Lack::Unsaid) << type;
        EXPECT_EQ(lackOf(type, 3, 3), Lack::Textures) << type;
    }
    EXPECT_EQ(lackOf("polyPrism", 3, 2), Lack::Textures);
    EXPECT_EQ(lackOf("polyPyramid", 3, 2), Lack::Unsaid);
    ToyContext torus(rowOf("polyTorus"));
    torus.set("reverseTexture", 1);
    made(torus);
    EXPECT_EQ(torus.lack, Lack::Textures);
    torus.set("createUVs", 0);
    made(torus);
    EXPECT_EQ(torus.timesUncomputed, 1U); // none, none turned
}

TEST(PolygonCreators, KnowTheKindsOfSolids)
{
    const std::size_t points[] = {20, 12, 6, 4};
    for (int kind = 0; kind < 4; ++kind) {
        ToyContext context(rowOf("polyPlatonicSolid"));
        context.set("solidType", kind);
        EXPECT_EQ(made(context)->points->size(), points[kind]);
    }
    ToyContext ball(rowOf("polyPrimitiveMisc"));
    ball.set("radius", 2);
    EXPECT_EQ((*made(ball)->points)[0], (Vec3f{0, 2, 0}));
}

TEST(PolyCreateFace, IsMadeOfStoredPoints)
{
    ToyContext context(rowOf("polyCreateFace"));
    NumericArray points(NumberStorage::Float, 3);
    points.store<float>(0, std::vector<float>{0,   0,   0, 2,   0, 0, 2, 2,   0, 0, 2, 0, //
                                              .5F, .5F, 0, .5F, 1, 0, 1, .5F, 0});
    context.arrays["vertices"] = &points;
    context.setElement("loop", {0}, 4);
    context.setElement("loop", {1}, -3);
    context.set("texture", 1);
    const auto mesh = made(context);
    EXPECT_EQ(countsOf(*mesh), (Counts{7, 7, 1, 7}));
    EXPECT_EQ(mesh->topology->loopCount(), 2);
    EXPECT_EQ((*mesh->uvSets[0].points)[6], (Vec2f{.5F, .25F}));
    context.set("subdivision", 2);
    made(context);
    EXPECT_EQ(context.timesUncomputed, 1);
}

// A bilinear patch two by one: one span each way.
TEST(NurbsTessellate, DividesAsTheFormatAsks)
{
    geometry::SurfaceData surface;
    surface.degreeU = 1;
    surface.degreeV = 1;
    surface.knotsU = {0, 1};
    surface.knotsV = {0, 1};
    surface.poles = {0, 0, 0, 0, 1, 0, 2, 0, 0, 2, 1, 0};
    ToyContext context(rowOf("nurbsTessellate"));
    EXPECT_TRUE(context.compute("outputPolygon").isEmpty());
    context.values["inputSurface"] = Value::of(surface);
    const auto faces = [&] {
        const auto mesh = context.compute("outputPolygon").data<MeshData>();
        EXPECT_NE(mesh, nullptr);
        EXPECT_TRUE(mesh == nullptr || isConsistent(*mesh));
        return mesh == nullptr ? 0 : mesh->topology->faceCount();
    };
    context.set("format", 2);
    context.set("uType", 3);
    context.set("uNumber", 4);
    context.set("vType", 2);
    context.set("vNumber", 3);
    EXPECT_EQ(faces(), 24); // triangles
    context.set("polygonType", 1);
    EXPECT_EQ(faces(), 12);
    context.set("format", 0);
    context.set("polygonCount", 100);
    EXPECT_EQ(faces(), 100);
    context.set("format", 3);
    EXPECT_EQ(faces(), 1);
    EXPECT_EQ(context.timesUncomputed, 4);
}

// A million cells in all: what one count takes the next ones cannot. More than there can be is
// taken for damage: the usual count stands in for it, or as many as there can be.
TEST(PolygonCreators, StopAtSoManyCells)
{
    const NodeCompute& row = rowOf("polyPlane");
    ToyContext context(row);
    context.set("subdivisionsWidth", 2e9);
    context.set("subdivisionsHeight", 2e9);
    SolidReader reader(context);
    const std::size_t width = row.inputs.size() - 2;
    ASSERT_EQ(row.inputs[width], "subdivisionsWidth");
    EXPECT_EQ(reader.cells(width, 10, 1), 10);
    EXPECT_EQ(reader.cells(width + 1, 10, 1), 10);
    EXPECT_EQ(context.timesUncomputed, 2);

    context.set("subdivisionsWidth", 1000); // 1048576 / 1000
    context.set("subdivisionsHeight", 1048);
    SolidReader second(context);
    EXPECT_EQ(second.cells(width, 10, 1), 1000);
    EXPECT_EQ(second.cells(width + 1, 10, 1), 1048);
    EXPECT_EQ(context.timesUncomputed, 2);

    context.set("subdivisionsWidth", 1 << 20);
    SolidReader third(context);
    EXPECT_EQ(third.cells(width, 10, 1), 1U << 20);
    EXPECT_EQ(third.cells(width + 1, 10, 1), 1);
    EXPECT_EQ(context.timesUncomputed, 3);
}

// A wire of 8 sides has 100 / 8 rings of points at most, 11 bands between them, however many its
// coils ask for; then nothing is left for its caps.
TEST(PolygonCreators, CellsThatFollowFromOthersStopThereToo)
{
    const NodeCompute& row = rowOf("polyPlane");
    ToyContext context(row);
    context.set("subdivisionsWidth", 8);
    context.set("subdivisionsHeight", 2);
    SolidReader reader(context, 100);
    EXPECT_EQ(reader.sides(row.inputs.size() - 2, 10, 3, 2), 8);
    EXPECT_EQ(context.timesUncomputed, 0);
    EXPECT_EQ(reader.derivedBands(5e8), 11);
    EXPECT_EQ(context.timesUncomputed, 1);
    EXPECT_EQ(reader.derivedBands(0), 1);
    EXPECT_EQ(context.timesUncomputed, 1);
    EXPECT_EQ(reader.bands(row.inputs.size() - 1, 10, 0, 2), 0);
    EXPECT_EQ(context.timesUncomputed, 2);
}

} // namespace
} // namespace host::nodes
