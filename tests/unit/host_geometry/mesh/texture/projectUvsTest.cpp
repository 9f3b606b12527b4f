// Projections: places on the image worked out by hand, and the numbers that vertices get.
#include "host/geometry/mesh/texture/projectUvs.h"
#include "tests/unit/host_geometry/mesh/texture/uvMaker.h"

#include <limits>
#include <numbers>

namespace host::geometry {
namespace {

using std::numbers::pi;
using test::expectCorner;
using test::expectUv;
using test::Ids;
using test::idsOf;
using Faces = std::vector<std::uint32_t>;

UvProjection projection(UvProjectionKind kind = UvProjectionKind::Planar)
{
    UvProjection result;
    result.kind = kind;
    return result;
}

TEST(ProjectUvs, CentreAndSizesBecomeTheUnitSquare)
{
    UvProjection plane = projection();
    plane.center = {1, 0.5, 7};
    plane.width = 2;
    plane.height = 4;
    const MeshData mesh = test::twoSquares();
    const auto result = projectUvs(mesh, "", Faces{0, 1}, plane);
    // x 0..2 is all of the width; y 0..1 is a quarter of the height about the middle.
    ASSERT_EQ(idsOf(*result), (Ids{0, 1, 2, 3, 1, 4, 5, 2}));
    expectUv(*result, 0, 0, 0.375);
    expectUv(*result, 1, 0.5, 0.375);
    expectUv(*result, 2, 0.5, 0.625);
    expectUv(*result, 3, 0, 0.625);
    expectUv(*result, 4, 1, 0.375);
    expectUv(*result, 5, 1, 0.625);
    EXPECT_EQ(result->uvSets[0].points->size(), 6U);
    EXPECT_EQ(result->points, mesh.points);
}

TEST(ProjectUvs, FromAboveUGoesAlongXAndVAgainstZ)
{
    // A quarter turn about -x takes the projector's y axis to -z.
    const MeshData floor = test::meshOf({{0, 0, 0}, {0, 0, 1}, {1, 0, 1}}, {{{0, 1, 2}}});
    UvProjection plane = projection();
    plane.rotate = {-pi / 2, 0, 0};
    const auto result = projectUvs(floor, "", Faces{0}, plane);
    expectUv(*result, 0, 0.5, 0.5);
    expectUv(*result, 1, 0.5, -0.5);
    expectUv(*result, 2, 1.5, -0.5);
}

TEST(ProjectUvs, TheObjectsMatrixComesFirst)
{
    UvProjection plane = projection();
    plane.toSpace = scaling({10, 10, 10}) * translation({0, 6, 0});
    plane.center = {0, 6, 0};
    plane.width = 10;
    plane.height = 10;
    const auto result = projectUvs(test::twoSquares(), "map1", Faces{0}, plane);
    expectCorner(*result, 0, 0.5, 0.5);
    expectCorner(*result, 2, 1.5, 1.5);
}

TEST(ProjectUvs, TheImageIsScaledAndTurnedAboutItsCentre)
{
    UvProjection plane = projection();
    plane.imageCenter = {0.25F, 0.75F};
    plane.imageScaleU = 5;
    plane.imageScaleV = -2;
    const MeshData mesh = test::twoSquares();
    const auto scaled = projectUvs(mesh, "", Faces{0}, plane);
    expectCorner(*scaled, 2, 5.25, -1.25); // vertex 4 at (1 1)
    plane.imageAngle = pi / 2;
    const auto turned = projectUvs(mesh, "", Faces{0}, plane);
    expectCorner(*turned, 2, 2.25, 5.75); // (5 -2) turned is (2 5)
}

TEST(ProjectUvs, FreedIdsAreUsedAgainAndOtherFacesKeepTheirs)
{
    // Face 0 alone has 0 and 3; 1 and 4 stay with face 1. Two more ids come behind.
    const auto result = projectUvs(test::twoSquares(), "", Faces{0}, projection());
    EXPECT_EQ(idsOf(*result), (Ids{0, 3, 6, 7, 1, 2, 5, 4}));
    // A face of the cube gets the four ids that it had, in the order of its loop.
    MeshData pair = test::twoSquares();
    pair.uvSets.clear();
    test::addUvSet(pair, "map1", std::vector<Vec2f>(8), {7, 6, 5, 4, 0, 1, 2, 3});
    EXPECT_EQ(idsOf(*projectUvs(pair, "map1", Faces{0}, projection())),
              (Ids{4, 5, 6, 7, 0, 1, 2, 3}));
}

TEST(ProjectUvs, IdsWithoutACornerCloseUp)
{
    MeshData mesh = test::twoSquares();
    mesh.uvSets.clear();
    test::addUvSet(mesh, "map1", std::vector<Vec2f>(8), {0, 1, 2, 3, 4, 5, 6, 7});
    const auto result = projectUvs(mesh, "", Faces{0, 1}, projection());
    EXPECT_EQ(idsOf(*result), (Ids{0, 1, 2, 3, 1, 4, 5, 2}));
    EXPECT_EQ(result->uvSets[0].points->size(), 6U);
}

TEST(ProjectUvs, MakesTheSetWhereThereIsNone)
{
    MeshData bare = test::twoSquares();
    bare.uvSets.clear();
    bare.currentUvSet.clear();
    const auto usual = projectUvs(bare, "", Faces{1}, projection());
    ASSERT_EQ(usual->uvSets.size(), 1U);
    EXPECT_EQ(usual->uvSets[0].name, "map1");
    EXPECT_EQ(usual->currentUvSet, "map1");
    EXPECT_EQ(idsOf(*usual), (Ids{-1, -1, -1, -1, 0, 1, 2, 3}));
    const auto second = projectUvs(*usual, "other", Faces{0}, projection());
    ASSERT_EQ(second->uvSets.size(), 2U);
    EXPECT_EQ(idsOf(*second, 1), (Ids{0, 1, 2, 3, -1, -1, -1, -1}));
    EXPECT_TRUE(isConsistent(*second));
}

TEST(ProjectUvs, ACylinderIsUnrolledFromTheFront)
{
    // The sides of a prism of four: at +z, +x, -z and -x, from y = -1 to 1.
    const MeshData prism = test::meshOf({{0, -1, 1},
                                         {1, -1, 0},
                                         {0, -1, -1},
                                         {-1, -1, 0},
                                         {0, 1, 1},
                                         {1, 1, 0},
                                         {0, 1, -1},
                                         {-1, 1, 0}},
                                        {{{0, 1, 5, 4}}, {{2, 3, 7, 6}}});
    UvProjection cylinder = projection(UvProjectionKind::Cylindrical);
    cylinder.width = 2 * pi;
    cylinder.height = 2;
    const auto result = projectUvs(prism, "", Faces{0, 1}, cylinder);
    expectUv(*result, 0, 0.5, 0);
    expectUv(*result, 1, 0.75, 0);
    expectUv(*result, 2, 0.75, 1);
    // The other face goes from the back, u = 1, on to -x, which is one turn ahead of u = 0.25.
    EXPECT_EQ(idsOf(*result), (Ids{0, 1, 2, 3, 4, 5, 6, 7}));
    expectUv(*result, 4, 1, 0);
    expectUv(*result, 5, 1.25, 0);
}

TEST(ProjectUvs, OnASphereVIsTheLatitude)
{
    const double half = std::sqrt(0.5);
    const auto at = static_cast<float>(half);
    const MeshData triangle = test::meshOf({{0, 0, 2}, {at, at, 0}, {0, 3, 0}}, {{{0, 1, 2}}});
    UvProjection sphere = projection(UvProjectionKind::Spherical);
    sphere.width = pi;
    sphere.height = pi / 2;
    const auto result = projectUvs(triangle, "", Faces{0}, sphere);
    expectUv(*result, 0, 0.5, 0.5);
    expectUv(*result, 1, 1, 1);     // 90 degrees to the right, 45 up
    expectUv(*result, 2, 0.5, 1.5); // the pole
}

TEST(ProjectUvs, NumbersThatAreNoneDoNoHarm)
{
    UvProjection plane = projection();
    plane.width = 0; // counts as 1
    expectCorner(*projectUvs(test::twoSquares(), "", Faces{0}, plane), 1, 1.5, 0.5);
    plane.height = std::numeric_limits<double>::quiet_NaN();
    plane.rotate = {std::numeric_limits<double>::infinity(), 0, 0};
    const auto result = projectUvs(test::twoSquares(), "", Faces{0}, plane);
    EXPECT_TRUE(isConsistent(*result));
    expectCorner(*result, 1, 0, 0);
}

} // namespace
} // namespace host::geometry
