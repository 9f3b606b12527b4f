#include "host/geometry/mesh/primitives/roundSolids.h"
#include "host/geometry/mesh/primitives/lathe.h"

#include "solidMeasures.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace host::geometry {
namespace {

using std::numbers::pi;
using test::Numbers;

void expectNear(const Vec3f& point, double x, double y, double z)
{
    EXPECT_NEAR(point.x, x, 1e-6);
    EXPECT_NEAR(point.y, y, 1e-6);
    EXPECT_NEAR(point.z, z, 1e-6);
}

void expectNear(const Vec2f& point, double u, double v)
{
    EXPECT_NEAR(point.x, u, 1e-6);
    EXPECT_NEAR(point.y, v, 1e-6);
}

/// The area of a regular polygon of circumradius 1.
double polygonArea(double sides)
{
    return sides / 2 * std::sin(2 * pi / sides);
}

TEST(UnitRing, TurnsBackwardsAndEndsAtTheStart)
{
    const auto ring = unitRing(8);
    for (int k = 0; k < 8; ++k) {
        const double angle = -(k + 1) * pi / 4;
        expectNear(ring[static_cast<std::size_t>(k)], std::cos(angle), std::sin(angle));
    }
    EXPECT_EQ(ring[7], (Vec2f{1, 0}));
}

// Four sides, three rows: rings at heights -1/2 and 1/2 of radius sqrt(3)/2; points 0-3, 4-7, poles
// 8 and 9. Edges: rings 0-7, upright ones 8-11, lower spokes 12-15, upper ones 16-19.
TEST(Sphere, OfFourSidesAndThreeRows)
{
    SphereSettings settings;
    settings.axisCells = 4;
    settings.heightCells = 3;
    const auto sphere = makeSphere(settings, {});
    ASSERT_TRUE(isConsistent(*sphere));
    const double r = std::sqrt(3.0) / 2;
    ASSERT_EQ(sphere->points->size(), 10);
    expectNear((*sphere->points)[0], 0, -0.5, -r);
    expectNear((*sphere->points)[1], -r, -0.5, 0);
    expectNear((*sphere->points)[3], r, -0.5, 0);
    expectNear((*sphere->points)[6], 0, 0.5, r);
    expectNear((*sphere->points)[8], 0, -1, 0);
    expectNear((*sphere->points)[9], 0, 1, 0);
    const auto& edges = sphere->topology->edges;
    ASSERT_EQ(edges.size(), 20);
    EXPECT_EQ(edges[3].end, 0);
    EXPECT_EQ(edges[9].start, 1);
    EXPECT_EQ(edges[9].end, 5);
    EXPECT_EQ(edges[13].start, 8);
    EXPECT_EQ(edges[17].end, 9);
    EXPECT_EQ(test::faceVertices(*sphere, 0), (Numbers{0, 1, 5, 4}));
    EXPECT_EQ(test::faceVertices(*sphere, 3), (Numbers{3, 0, 4, 7}));
    EXPECT_EQ(test::faceVertices(*sphere, 4), (Numbers{1, 0, 8}));
    EXPECT_EQ(test::faceVertices(*sphere, 8), (Numbers{4, 5, 9}));
    EXPECT_EQ(test::hardEdgeCount(*sphere), 0);
    EXPECT_TRUE(test::isClosed(*sphere));
    EXPECT_EQ(test::eulerNumber(*sphere), 2);
    // two rows of five, then four tips below and four above
    ASSERT_EQ(sphere->uvSets[0].points->size(), 18);
    expectNear((*sphere->uvSets[0].points)[1], 0.25, 1.0 / 3);
    expectNear((*sphere->uvSets[0].points)[9], 1, 2.0 / 3);
    expectNear((*sphere->uvSets[0].points)[10], 0.125, 0);
    expectNear((*sphere->uvSets[0].points)[17], 0.875, 1);
    EXPECT_EQ(test::faceUvs(*sphere, 3), (Numbers{3, 4, 9, 8}));
    EXPECT_EQ(test::faceUvs(*sphere, 4), (Numbers{1, 0, 10}));
    EXPECT_EQ(test::faceUvs(*sphere, 11), (Numbers{8, 9, 17}));
}

TEST(Sphere, CanBePinchedAtItsPoles)
{
    SphereSettings settings;
    settings.uvs = SphereUvs::Pinched;
    const auto sphere = makeSphere(settings, {});
    ASSERT_TRUE(isConsistent(*sphere));
    EXPECT_EQ(sphere->uvSets[0].points->size(), 19 * 21 + 2);
    EXPECT_EQ(test::faceUvs(*sphere, 360), (Numbers{1, 0, 399}));
    EXPECT_EQ(test::faceUvs(*sphere, 399), (Numbers{397, 398, 400}));
    settings.uvs = SphereUvs::None;
    EXPECT_TRUE(makeSphere(settings, {})->uvSets.empty());
}

// Frustums and cones between polygons of 20 sides: height / 3 * area * (a a + a b + b b) each.
TEST(Sphere, HasTheVolumeOfItsFrustums)
{
    const auto sphere = makeSphere({}, {});
    ASSERT_TRUE(isConsistent(*sphere));
    double expected = 0;
    for (int i = 0; i < 20; ++i) {
        const double low = std::sin(i * pi / 20);
        const double high = std::sin((i + 1) * pi / 20);
        const double height = std::cos(i * pi / 20) - std::cos((i + 1) * pi / 20);
        expected += height / 3 * polygonArea(20) * (low * low + low * high + high * high);
    }
    EXPECT_NEAR(test::volumeOf(*sphere), expected, 1e-5);
    EXPECT_EQ(sphere->points->size(), 382);
    EXPECT_EQ(sphere->topology->edges.size(), 780);
}

TEST(Sphere, MayBeRaisedToItsBaseline)
{
    SphereSettings settings;
    settings.radius = 3;
    SolidPlacement placement;
    placement.heightBaseline = -1;
    const auto sphere = makeSphere(settings, placement);
    expectNear((*sphere->points)[380], 0, 0, 0);
    expectNear((*sphere->points)[381], 0, 6, 0);
}

// Three sides, two rows up, no cells on the caps: rings 0-2, 3-5, 6-8.
TEST(Cylinder, MayHaveOneFaceAtEachEnd)
{
    CylinderSettings settings;
    settings.axisCells = 3;
    settings.heightCells = 2;
    const auto cylinder = makeCylinder(settings, {});
    ASSERT_TRUE(isConsistent(*cylinder));
    EXPECT_EQ(cylinder->points->size(), 9);
    EXPECT_EQ(cylinder->topology->faceCount(), 8);
    expectNear((*cylinder->points)[0], -0.5, -1, -std::sqrt(3.0) / 2);
    expectNear((*cylinder->points)[4], -0.5, 0, std::sqrt(3.0) / 2);
    expectNear((*cylinder->points)[8], 1, 1, 0);
    EXPECT_EQ(test::faceVertices(*cylinder, 2), (Numbers{2, 0, 3, 5}));
    EXPECT_EQ(test::faceVertices(*cylinder, 6), (Numbers{0, 2, 1}));
    EXPECT_EQ(test::faceVertices(*cylinder, 7), (Numbers{6, 7, 8}));
    EXPECT_EQ(cylinder->edgeFlags(),
              (std::vector<std::uint8_t>{0, 0, 0, 1, 1, 1, 0, 0, 0, 1, 1, 1, 1, 1, 1}));
    EXPECT_TRUE(test::isClosed(*cylinder));
    EXPECT_NEAR(test::volumeOf(*cylinder), 2 * polygonArea(3), 1e-6);
    // the lower circle, three rows of four, the upper circle; no middles
    const auto& uvs = *cylinder->uvSets[0].points;
    ASSERT_EQ(uvs.size(), 3 + 12 + 3);
    expectNear(uvs[2], 0.65625, 0.15625);
    expectNear(uvs[3], 0.375, 0.3125);
    expectNear(uvs[10], 0.625, 0.5);
    expectNear(uvs[14], 0.625, 0.6875);
    EXPECT_EQ(test::faceUvs(*cylinder, 2), (Numbers{5, 6, 10, 9}));
    EXPECT_EQ(test::faceUvs(*cylinder, 6), (Numbers{0, 2, 1}));
    // seen from above, the upper circle turns the other way: points 6 7 8 take 16 15 17
    EXPECT_EQ(test::faceUvs(*cylinder, 7), (Numbers{16, 15, 17}));
}

// Four sides and two cells from the middle to the rim: rings of the lower cap (0-3), the rims (4-7,
// 8-11) and the upper cap (12-15), middles 16 and 17.
TEST(Cylinder, NumbersCapsAlongItsProfile)
{
    CylinderSettings settings;
    settings.axisCells = 4;
    settings.capCells = 2;
    const auto cylinder = makeCylinder(settings, {});
    ASSERT_TRUE(isConsistent(*cylinder));
    ASSERT_EQ(cylinder->points->size(), 18);
    expectNear((*cylinder->points)[3], 0.5, -1, 0);
    expectNear((*cylinder->points)[7], 1, -1, 0);
    expectNear((*cylinder->points)[11], 1, 1, 0);
    expectNear((*cylinder->points)[15], 0.5, 1, 0);
    expectNear((*cylinder->points)[16], 0, -1, 0);
    EXPECT_EQ(test::faceVertices(*cylinder, 0), (Numbers{0, 1, 5, 4}));
    EXPECT_EQ(test::faceVertices(*cylinder, 8), (Numbers{8, 9, 13, 12}));
    EXPECT_EQ(test::faceVertices(*cylinder, 12), (Numbers{1, 0, 16}));
    EXPECT_EQ(test::faceVertices(*cylinder, 16), (Numbers{12, 13, 17}));
    EXPECT_EQ(test::hardEdgeCount(*cylinder), 8); // the rims
    EXPECT_TRUE(test::isClosed(*cylinder));
    EXPECT_EQ(test::eulerNumber(*cylinder), 2);
    EXPECT_NEAR(test::volumeOf(*cylinder), 2 * polygonArea(4), 1e-6);
    // circles of 4 and 4, two rows of 5, circles of 4 and 4, two middles
    ASSERT_EQ(cylinder->uvSets[0].points->size(), 28);
    expectNear((*cylinder->uvSets[0].points)[3], 0.5 + 0.078125, 0.15625);
    expectNear((*cylinder->uvSets[0].points)[26], 0.5, 0.15625);
    EXPECT_EQ(test::faceUvs(*cylinder, 12), (Numbers{1, 0, 26}));
    EXPECT_EQ(test::faceUvs(*cylinder, 16), (Numbers{24, 23, 27}));
    settings.hasFormerUvs = true;
    const auto former = makeCylinder(settings, {});
    expectNear((*former->uvSets[0].points)[13], 0.375, 0.68843985);
    expectNear((*former->uvSets[0].points)[26], 0.5, 0.15);
    expectNear((*former->uvSets[0].points)[27], 0.5, 0.8375);
}

// Half spheres at both ends: the rings of a cap lie on them.
TEST(Cylinder, MayHaveRoundCaps)
{
    CylinderSettings settings;
    settings.radius = 2;
    settings.capCells = 3;
    settings.hasRoundCaps = true;
    const auto cylinder = makeCylinder(settings, {});
    ASSERT_TRUE(isConsistent(*cylinder));
    for (const std::size_t k : {19, 39}) { // 30 and 60 degrees from the axis
        const Vec3f& point = (*cylinder->points)[k];
        EXPECT_NEAR(point.x * point.x + (point.y + 1) * (point.y + 1), 4, 1e-5);
    }
    expectNear((*cylinder->points)[19], 1, -1 - std::sqrt(3.0), 0);
    expectNear((*cylinder->points)[120], 0, -3, 0);
    expectNear((*cylinder->points)[121], 0, 3, 0);
}

TEST(Cone, HasItsBaseBeforeItsSides)
{
    ConeSettings settings;
    settings.axisCells = 4;
    const auto cone = makeCone(settings, {});
    ASSERT_TRUE(isConsistent(*cone));
    ASSERT_EQ(cone->points->size(), 5);
    expectNear((*cone->points)[4], 0, 1, 0);
    EXPECT_EQ(test::faceVertices(*cone, 0), (Numbers{0, 3, 2, 1}));
    EXPECT_EQ(test::faceVertices(*cone, 1), (Numbers{0, 1, 4}));
    EXPECT_EQ(test::faceVertices(*cone, 4), (Numbers{3, 0, 4}));
    EXPECT_EQ(cone->edgeFlags(), (std::vector<std::uint8_t>{0, 0, 0, 0, 1, 1, 1, 1}));
    EXPECT_NEAR(test::volumeOf(*cone), 2 * polygonArea(4) / 3, 1e-6);
    // the circle, the row of the rim, the tip
    ASSERT_EQ(cone->uvSets[0].points->size(), 10);
    expectNear((*cone->uvSets[0].points)[3], 0.75, 0.25);
    expectNear((*cone->uvSets[0].points)[4], 0.25, 0.5);
    expectNear((*cone->uvSets[0].points)[8], 0.75, 0.5);
    expectNear((*cone->uvSets[0].points)[9], 0.5, 1);
    EXPECT_EQ(test::faceUvs(*cone, 0), (Numbers{0, 3, 2, 1}));
    EXPECT_EQ(test::faceUvs(*cone, 4), (Numbers{7, 8, 9}));
}

TEST(Cone, NarrowsEvenlyAlsoInItsLayout)
{
    ConeSettings settings;
    settings.heightCells = 2;
    settings.capCells = 2;
    settings.hasHardSides = true;
    const auto cone = makeCone(settings, {});
    ASSERT_TRUE(isConsistent(*cone));
    // rings: half way on the base, rim, half way up; then the middle of the base and the tip
    ASSERT_EQ(cone->points->size(), 62);
    expectNear((*cone->points)[19], 0.5, -1, 0);
    expectNear((*cone->points)[39], 1, -1, 0);
    expectNear((*cone->points)[59], 0.5, 0, 0);
    EXPECT_TRUE(test::isClosed(*cone));
    EXPECT_EQ(test::eulerNumber(*cone), 2);
    EXPECT_NEAR(test::volumeOf(*cone), 2 * polygonArea(20) / 3, 1e-5);
    // rim, twice the edges along the sides
    EXPECT_EQ(test::hardEdgeCount(*cone), 60);
    // circles of 20 and 20, rows of 21 and 21, the middle, the tip
    ASSERT_EQ(cone->uvSets[0].points->size(), 84);
    expectNear((*cone->uvSets[0].points)[61], 0.375, 0.75);
    expectNear((*cone->uvSets[0].points)[81], 0.625, 0.75);
    expectNear((*cone->uvSets[0].points)[82], 0.5, 0.25);
}

// Rings from the inner equator over the top: radius 2 - cos, height sin.
TEST(Torus, TurnsFromTheInnerSideOverTheTop)
{
    TorusSettings settings;
    settings.radius = 2;
    settings.sectionRadius = 1;
    settings.axisCells = 3;
    settings.tubeCells = 4;
    const auto torus = makeTorus(settings, {});
    ASSERT_TRUE(isConsistent(*torus));
    ASSERT_EQ(torus->points->size(), 12);
    expectNear((*torus->points)[0], -0.5, 0, -std::sqrt(3.0) / 2);
    expectNear((*torus->points)[2], 1, 0, 0);
    expectNear((*torus->points)[5], 2, 1, 0);
    expectNear((*torus->points)[8], 3, 0, 0);
    expectNear((*torus->points)[11], 2, -1, 0);
    EXPECT_EQ(test::faceVertices(*torus, 0), (Numbers{1, 0, 3, 4}));
    EXPECT_EQ(test::faceVertices(*torus, 2), (Numbers{0, 2, 5, 3}));
    EXPECT_EQ(test::faceVertices(*torus, 11), (Numbers{9, 11, 2, 0}));
    EXPECT_EQ(test::hardEdgeCount(*torus), 0);
    EXPECT_TRUE(test::isClosed(*torus));
    EXPECT_EQ(test::eulerNumber(*torus), 0);
    EXPECT_GT(test::volumeOf(*torus), 0);
    ASSERT_EQ(torus->uvSets[0].points->size(), 20);
    expectNear((*torus->uvSets[0].points)[0], 0, 1);
    expectNear((*torus->uvSets[0].points)[7], 1, 0.75);
    expectNear((*torus->uvSets[0].points)[19], 1, 0);
    EXPECT_EQ(test::faceUvs(*torus, 0), (Numbers{1, 0, 4, 5}));
    EXPECT_EQ(test::faceUvs(*torus, 11), (Numbers{15, 14, 18, 19}));
}

// The ring of a square tube, by the centroid rule: section area times its middle's way, for
// polygons times the ratio of polygon to circle.
TEST(Torus, TwistTurnsItsSections)
{
    TorusSettings settings;
    settings.radius = 2;
    settings.sectionRadius = 1;
    settings.axisCells = 64;
    settings.tubeCells = 4;
    const double ratio = polygonArea(64) / pi;
    EXPECT_NEAR(test::volumeOf(*makeTorus(settings, {})), 2 * (2 * pi * 2) * ratio, 1e-4);
    settings.twist = pi / 2;
    const auto twisted = makeTorus(settings, {});
    expectNear((*twisted->points)[63], 2, 1, 0);
    EXPECT_NEAR(test::volumeOf(*twisted), 2 * (2 * pi * 2) * ratio, 1e-4);
}

// Inner side, upper end, outer side, lower end; three points a ring from +x on, backwards. A pipe
// of height 4 reaches from -1 to 1.
TEST(Pipe, HasHalfItsHeightAndStartsInside)
{
    PipeSettings settings;
    settings.height = 4;
    settings.axisCells = 3;
    const auto pipe = makePipe(settings, {});
    ASSERT_TRUE(isConsistent(*pipe));
    ASSERT_EQ(pipe->points->size(), 12);
    expectNear((*pipe->points)[0], 0.5, -1, 0);
    expectNear((*pipe->points)[1], -0.25, -1, -std::sqrt(3.0) / 4);
    expectNear((*pipe->points)[3], 0.5, 1, 0);
    expectNear((*pipe->points)[6], 1, 1, 0);
    expectNear((*pipe->points)[9], 1, -1, 0);
    EXPECT_EQ(test::faceVertices(*pipe, 0), (Numbers{1, 0, 3, 4}));
    EXPECT_EQ(test::faceVertices(*pipe, 11), (Numbers{9, 11, 2, 0}));
    EXPECT_EQ(test::hardEdgeCount(*pipe), 12);
    EXPECT_TRUE(test::isClosed(*pipe));
    EXPECT_EQ(test::eulerNumber(*pipe), 0);
    EXPECT_NEAR(test::volumeOf(*pipe), 2 * polygonArea(3) * (1 - 0.25), 1e-6);
    EXPECT_EQ(pipe->uvSets[0].points->size(), 5 * 4);
}

TEST(Pipe, MayHaveRoundEnds)
{
    PipeSettings settings;
    settings.heightCells = 2;
    settings.capCells = 2;
    settings.hasRoundCaps = true;
    const auto pipe = makePipe(settings, {});
    ASSERT_TRUE(isConsistent(*pipe));
    ASSERT_EQ(pipe->points->size(), 20 * 8);
    expectNear((*pipe->points)[60], 0.75, 0.75, 0);   // the upper end's ridge
    expectNear((*pipe->points)[140], 0.75, -0.75, 0); // the lower one's
    EXPECT_EQ(test::hardEdgeCount(*pipe), 80);
    EXPECT_TRUE(test::isClosed(*pipe));
}

} // namespace
} // namespace host::geometry
