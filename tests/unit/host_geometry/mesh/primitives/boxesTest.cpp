#include "host/geometry/mesh/primitives/boxes.h"

#include "../../meshMaker.h"
#include "solidMeasures.h"

namespace host::geometry {
namespace {

using test::Numbers;

using Edges = std::vector<std::array<std::uint32_t, 2>>;

Edges edgesOf(const MeshData& mesh)
{
    Edges edges;
    for (const MeshEdge& edge : mesh.topology->edges) {
        edges.push_back({edge.start, edge.end});
    }
    return edges;
}

TEST(Cube, OfOneCellEachWayIsTheWellKnownCube)
{
    const auto cube = makeCube({}, {});
    ASSERT_TRUE(isConsistent(*cube));
    EXPECT_EQ(*cube->points, test::kCubePoints);
    // along the four rows, then from row to row, left and right
    EXPECT_EQ(edgesOf(*cube), (Edges{{0, 1},
                                     {2, 3},
                                     {4, 5},
                                     {6, 7},
                                     {0, 2},
                                     {1, 3},
                                     {2, 4},
                                     {3, 5},
                                     {4, 6},
                                     {5, 7},
                                     {6, 0},
                                     {7, 1}}));
    EXPECT_EQ(cube->topology->corners,
              (std::vector<std::int32_t>{0, 5,  -2, -5,  1,   7,   -3, -7, 2,  9, -4, -9,
                                         3, 11, -1, -11, -12, -10, -8, -6, 10, 4, 6,  8}));
    EXPECT_EQ(test::hardEdgeCount(*cube), 12);
    ASSERT_EQ(cube->uvSets.size(), 1);
    EXPECT_EQ(cube->uvSets[0].name, "map1");
    EXPECT_EQ(cube->currentUvSet, "map1");
    // a column of five rows of two, a quarter apart; then the right arm, then the left one
    const std::vector<Vec2f> expected{{.375F, 0},   {.625F, 0},   {.375F, .25F}, {.625F, .25F},
                                      {.375F, .5F}, {.625F, .5F}, {.375F, .75F}, {.625F, .75F},
                                      {.375F, 1},   {.625F, 1},   {.875F, 0},    {.875F, .25F},
                                      {.125F, 0},   {.125F, .25F}};
    EXPECT_EQ(*cube->uvSets[0].points, expected);
    EXPECT_EQ(test::faceUvs(*cube, 3), (Numbers{6, 7, 9, 8}));
    EXPECT_EQ(test::faceUvs(*cube, 4), (Numbers{1, 10, 11, 3}));
    EXPECT_EQ(test::faceUvs(*cube, 5), (Numbers{12, 0, 2, 13}));
}

// Two cells each way: eight rows of three points (0-23), then the middles of the right side (24)
// and of the left one (25). Rows: front 0 1 2, over the top 3, back 4 5 6, below 7.
TEST(Cube, OfTwoCellsEachWayNumbersItsSidesFromTheBack)
{
    CubeSettings settings;
    settings.width = settings.height = settings.depth = 2;
    settings.widthCells = settings.heightCells = settings.depthCells = 2;
    const auto cube = makeCube(settings, {});
    ASSERT_TRUE(isConsistent(*cube));
    ASSERT_EQ(cube->points->size(), 26);
    EXPECT_EQ((*cube->points)[4], (Vec3f{0, 0, 1}));
    EXPECT_EQ((*cube->points)[10], (Vec3f{0, 1, 0}));
    EXPECT_EQ((*cube->points)[16], (Vec3f{0, 0, -1}));
    EXPECT_EQ((*cube->points)[22], (Vec3f{0, -1, 0}));
    EXPECT_EQ((*cube->points)[24], (Vec3f{1, 0, 0}));
    EXPECT_EQ((*cube->points)[25], (Vec3f{-1, 0, 0}));
    // 16 along rows, 24 from row to row, then those of the sides: along z from the back, then up
    const Edges edges = edgesOf(*cube);
    ASSERT_EQ(edges.size(), 48);
    EXPECT_EQ(Edges(edges.begin() + 40, edges.end()),
              (Edges{{17, 24}, {24, 5}, {23, 24}, {24, 11}, {15, 25}, {25, 3}, {21, 25}, {25, 9}}));
    // right side: cells from the back, lower row first; loops from the front lower corner
    EXPECT_EQ(test::faceVertices(*cube, 16), (Numbers{23, 20, 17, 24}));
    EXPECT_EQ(test::faceVertices(*cube, 17), (Numbers{2, 23, 24, 5}));
    EXPECT_EQ(test::faceVertices(*cube, 18), (Numbers{24, 17, 14, 11}));
    // left side: loops from the back lower corner
    EXPECT_EQ(test::faceVertices(*cube, 20), (Numbers{18, 21, 25, 15}));
    EXPECT_EQ(test::faceVertices(*cube, 23), (Numbers{25, 3, 6, 9}));
    // nine rows of three, then the arms row by row from the back
    ASSERT_EQ(cube->uvSets[0].points->size(), 39);
    EXPECT_EQ((*cube->uvSets[0].points)[27], (Vec2f{.875F, 0}));
    EXPECT_EQ((*cube->uvSets[0].points)[28], (Vec2f{.75F, 0}));
    EXPECT_EQ((*cube->uvSets[0].points)[29], (Vec2f{.875F, .125F}));
    EXPECT_EQ((*cube->uvSets[0].points)[34], (Vec2f{.25F, 0}));
    EXPECT_EQ(test::faceUvs(*cube, 16), (Numbers{28, 27, 29, 30}));
    EXPECT_EQ(test::faceUvs(*cube, 17), (Numbers{2, 28, 30, 5}));
    EXPECT_EQ(test::faceUvs(*cube, 23), (Numbers{36, 3, 6, 38}));
}

TEST(Cube, IsClosedAndHasTheVolumeOfABox)
{
    CubeSettings settings;
    settings.width = 3;
    settings.height = 5;
    settings.depth = 7;
    settings.widthCells = 2;
    settings.heightCells = 3;
    settings.depthCells = 4;
    const auto cube = makeCube(settings, {});
    ASSERT_TRUE(isConsistent(*cube));
    EXPECT_TRUE(test::isClosed(*cube));
    EXPECT_EQ(test::eulerNumber(*cube), 2);
    EXPECT_EQ(cube->topology->faceCount(), 2 * (2 * 3 + 2 * 4 + 3 * 4));
    EXPECT_EQ(test::hardEdgeCount(*cube), 4 * (2 + 3 + 4));
    EXPECT_NEAR(test::volumeOf(*cube), 3 * 5 * 7, 1e-4);
    EXPECT_NEAR(test::areaOf(*cube), 2 * (3 * 5 + 5 * 7 + 3 * 7), 1e-4);
}

TEST(Cube, OfNegativeSizeIsTurnedInsideOut)
{
    CubeSettings settings;
    settings.width = -1;
    EXPECT_NEAR(test::volumeOf(*makeCube(settings, {})), -1, 1e-6);
    settings.width = 0;
    EXPECT_NEAR(test::volumeOf(*makeCube(settings, {})), 0, 1e-6);
}

TEST(Cube, FillsTheSquareWithEachSide)
{
    CubeSettings settings;
    settings.uvs = CubeUvs::EachSide;
    settings.depthCells = 3;
    const auto cube = makeCube(settings, {});
    ASSERT_TRUE(isConsistent(*cube));
    EXPECT_EQ(cube->uvSets[0].points->size(), 2 * 4 + 4 * 8);
    // the right side: three faces from the back, which is on the right when one looks at it
    const auto uvOf = [&](std::uint32_t face, std::size_t corner) {
        return (*cube->uvSets[0].points)[test::faceUvs(*cube, face)[corner]];
    };
    const std::uint32_t right = 8;
    EXPECT_FLOAT_EQ(uvOf(right, 0).x, 2 / 3.0F);
    EXPECT_FLOAT_EQ(uvOf(right, 1).x, 1);
    EXPECT_EQ(uvOf(right + 2, 0), (Vec2f{0, 0}));
    EXPECT_EQ(uvOf(0, 2), (Vec2f{1, 1}));
}

TEST(Cube, StandsOnItsBaselineAndOnItsAxis)
{
    CubeSettings settings;
    settings.height = 4;
    settings.uvs = CubeUvs::None;
    SolidPlacement placement;
    placement.heightBaseline = -1; // the lower end
    const auto raised = makeCube(settings, placement);
    EXPECT_EQ((*raised->points)[0], (Vec3f{-.5F, 0, .5F}));
    EXPECT_EQ((*raised->points)[2], (Vec3f{-.5F, 4, .5F}));
    EXPECT_TRUE(raised->uvSets.empty());
    placement = {};
    placement.axis = {0, 0, 3}; // y to z, so z to -y
    const auto turned = makeCube(settings, placement);
    EXPECT_EQ((*turned->points)[0], (Vec3f{-.5F, -.5F, -2}));
    placement.axis = {1, 0, 0}; // y to x, so x to -y
    EXPECT_EQ((*makeCube(settings, placement)->points)[0], (Vec3f{-2, .5F, .5F}));
    placement.axis = {0, -1, 0};
    EXPECT_EQ((*makeCube(settings, placement)->points)[0], (Vec3f{-.5F, 2, -.5F}));
    placement.axis = {0, 0, 0};
    EXPECT_EQ((*makeCube(settings, placement)->points)[0], (Vec3f{-.5F, -2, .5F}));
}

// Two by one cells: points 0 1 2 in front, 3 4 5 behind.
TEST(Plane, NumbersPointByPoint)
{
    PlaneSettings settings;
    settings.width = 4;
    settings.height = 2;
    settings.widthCells = 2;
    settings.heightCells = 1;
    const auto plane = makePlane(settings, {});
    ASSERT_TRUE(isConsistent(*plane));
    EXPECT_EQ(*plane->points,
              (std::vector<Vec3f>{
                  {-2, 0, 1}, {0, 0, 1}, {2, 0, 1}, {-2, 0, -1}, {0, 0, -1}, {2, 0, -1}}));
    EXPECT_EQ(edgesOf(*plane), (Edges{{0, 1}, {0, 3}, {1, 2}, {1, 4}, {2, 5}, {3, 4}, {4, 5}}));
    EXPECT_EQ(plane->edgeFlags(), (std::vector<std::uint8_t>{0, 0, 0, 1, 0, 0, 0}));
    EXPECT_EQ(test::faceVertices(*plane, 0), (Numbers{0, 1, 4, 3}));
    EXPECT_EQ(test::faceVertices(*plane, 1), (Numbers{1, 2, 5, 4}));
    EXPECT_EQ(*plane->uvSets[0].points,
              (std::vector<Vec2f>{{0, 0}, {.5F, 0}, {1, 0}, {0, 1}, {.5F, 1}, {1, 1}}));
    EXPECT_EQ(test::areaVector(*plane, 0), (Vec3d{0, 4, 0}));
    settings.keepsAspect = true;
    EXPECT_EQ(makePlane(settings, {})->uvSets[0].points->back(), (Vec2f{1, .5F}));
}

TEST(Plane, OfManyCellsIsASheet)
{
    PlaneSettings settings;
    settings.widthCells = 5;
    settings.heightCells = 3;
    const auto plane = makePlane(settings, {});
    ASSERT_TRUE(isConsistent(*plane));
    EXPECT_EQ(test::eulerNumber(*plane), 1);
    EXPECT_EQ(test::hardEdgeCount(*plane), 16);
    EXPECT_NEAR(test::areaOf(*plane), 1, 1e-6);
    SolidPlacement placement;
    placement.axis = {0, 0, 1};
    EXPECT_EQ((*makePlane(settings, placement)->points)[0], (Vec3f{-.5F, -.5F, 0}));
}

} // namespace
} // namespace host::geometry
