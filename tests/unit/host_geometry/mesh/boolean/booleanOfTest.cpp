#include "host/geometry/mesh/boolean/booleanOf.h"

#include "host/geometry/mesh/boolean/cutSolids.h"
#include "host/geometry/mesh/primitives/roundSolids.h"
#include "host/math/rotation.h"
#include "tests/unit/host_geometry/mesh/boolean/booleanSolids.h"

#include <limits>
#include <random>

namespace host::geometry {
namespace {

using test::addGroup;
using test::cube;
using test::hardEdges;
using test::isClosed;
using test::Loop;
using test::loopsOf;
using test::Numbers;
using test::outerLoops;
using test::placed;
using test::pointAt;
using test::SharedMesh;
using test::volumeOf;

/// A cube of smooth edges whose faces' corners have the texture coordinates (0 0) (1 0) (1 1)
/// (0 1).
MeshData texturedCube()
{
    MeshData mesh = test::meshOf(test::kCubePoints, test::kCubeFaces, 1);
    const std::vector<Vec2f> square{{0, 0}, {1, 0}, {1, 1}, {0, 1}};
    std::vector<Vec2f> points;
    std::vector<std::int32_t> ids;
    for (std::int32_t corner = 0; corner < 24; ++corner) {
        points.push_back(square[static_cast<std::size_t>(corner % 4)]);
        ids.push_back(corner);
    }
    mesh.uvSets.push_back({"map1", std::make_shared<const std::vector<Vec2f>>(points),
                           std::make_shared<const std::vector<std::int32_t>>(ids)});
    return mesh;
}

SharedMesh combine(const std::vector<UnitedMesh>& parts, BooleanOperation operation)
{
    SharedMesh result = booleanOf(parts, operation, UvSetMerging::ByName);
    if (result != nullptr) {
        EXPECT_TRUE(isConsistent(*result));
    }
    return result;
}

/// What needs the library that cuts.
class BooleanOf : public testing::Test {
protected:
    void SetUp() override
    {
        if (!canCutSolids()) {
            GTEST_SKIP() << "built without the library that cuts";
        }
    }
};

/// Of two unit cubes, the second from (0 0 0) to (1 1 1), the cube from there to (.5 .5 .5) is
/// common: an eighth.
class TwoCubes : public BooleanOf {
protected:
    SharedMesh of(BooleanOperation operation)
    {
        return combine({placed(m_cube, {}), placed(m_cube, {.5, .5, .5})}, operation);
    }

    MeshData m_cube = texturedCube();
};

TEST_F(TwoCubes, united)
{
    const SharedMesh both = of(BooleanOperation::Union);
    ASSERT_NE(both, nullptr);
    EXPECT_NEAR(volumeOf(*both), 2 - .125, 1e-6);
    EXPECT_TRUE(isClosed(*both));
    // each cube loses the corner within the other, three edges of each enter a face of the other
    EXPECT_EQ(both->topology->vertexCount, 7u + 7u + 6u);
    EXPECT_EQ(both->topology->faceCount(), 12u);
    EXPECT_EQ(both->topology->edges.size(), 30u); // V - E + F = 2
    // the first cube's points but (.5 .5 .5), which has number 3, then the second's but (0 0 0)
    EXPECT_EQ((*both->points)[2], (Vec3f{-.5F, .5F, .5F}));
    EXPECT_EQ((*both->points)[3], (Vec3f{-.5F, .5F, -.5F}));
    EXPECT_EQ((*both->points)[7], (Vec3f{0, 0, 1}));
    EXPECT_EQ((*both->points)[13], (Vec3f{1, 0, 0}));
    for (const Vec3f& place : {Vec3f{.5F, .5F, 0}, Vec3f{.5F, 0, .5F}, Vec3f{0, .5F, .5F},
                               Vec3f{.5F, 0, 0}, Vec3f{0, .5F, 0}, Vec3f{0, 0, .5F}}) {
        EXPECT_GE(pointAt(*both, place), 14u);
        EXPECT_LT(pointAt(*both, place), 20u);
    }
}

TEST_F(TwoCubes, facesStandInTheirOrder)
{
    const SharedMesh both = of(BooleanOperation::Union);
    ASSERT_NE(both, nullptr);
    // The first cube's back, bottom and left faces are not touched: the corners of the vertices 4 5
    // 7 6, 6 7 1 0 and 6 0 2 4 of the cube; those above 3 move down by one.
    const std::vector<Loop> loops = outerLoops(*both);
    EXPECT_EQ(loops[2], (Loop{3, 4, 6, 5}));
    EXPECT_EQ(loops[3], (Loop{5, 6, 1, 0}));
    EXPECT_EQ(loops[5], (Loop{5, 0, 2, 3}));
    // the front loses a corner and has three instead of it, begins where it began
    EXPECT_EQ(loops[0], (Loop{0, 1, pointAt(*both, {.5F, 0, .5F}), pointAt(*both, {0, 0, .5F}),
                              pointAt(*both, {0, .5F, .5F}), 2}));
    // the second cube's front, from (0 0 1) to (1 1 1), is whole
    EXPECT_EQ(loops[6].size(), 4u);
    EXPECT_EQ(loops[6].front(), 7u);
    // Cuts are hard, all else stays smooth: a ring of six edges.
    EXPECT_EQ(hardEdges(*both), 6u);
}

TEST_F(TwoCubes, textureCoordinatesFollowThePlaces)
{
    const SharedMesh both = of(BooleanOperation::Union);
    ASSERT_NE(both, nullptr);
    ASSERT_EQ(both->uvSets.size(), 1u);
    const auto& ids = *both->uvSets[0].corners;
    const auto& uvs = *both->uvSets[0].points;
    // On the first cube's front, where x and y run from -.5, u = x + .5 and v = y + .5; on its
    // right face (1 7 5 3), where z runs down from .5, u = .5 - z and v = y + .5.
    for (const std::uint32_t face : {0u, 4u}) {
        for (std::uint32_t corner = both->topology->firstCorner(face);
             corner < both->topology->endCorner(face); ++corner) {
            const Vec3f& place = (*both->points)[both->topology->cornerVertex(corner)];
            const Vec2f& uv = uvs[static_cast<std::size_t>(ids[corner])];
            EXPECT_FLOAT_EQ(uv.x, face == 0 ? place.x + .5F : .5F - place.z);
            EXPECT_FLOAT_EQ(uv.y, place.y + .5F);
        }
    }
    // 24 + 24 corners less the six that are gone, three new ones in each of the six cut faces; no
    // faces share any, since they did not before.
    EXPECT_EQ(uvs.size(), 24u + 24u - 6u + 18u);
    // A face that is not touched keeps the ids of its corners, which move down by two.
    EXPECT_EQ(ids[both->topology->firstCorner(3)], 12 - 2);
}

TEST_F(TwoCubes, difference)
{
    const SharedMesh rest = of(BooleanOperation::Difference);
    ASSERT_NE(rest, nullptr);
    EXPECT_NEAR(volumeOf(*rest), 1 - .125, 1e-6);
    EXPECT_TRUE(isClosed(*rest));
    // seven corners of the first cube, one of the second, six between; the notch has three walls
    EXPECT_EQ(rest->topology->vertexCount, 7u + 1u + 6u);
    EXPECT_EQ(rest->topology->faceCount(), 6u + 3u);
    EXPECT_EQ(rest->topology->edges.size(), 21u);
    EXPECT_EQ((*rest->points)[7], (Vec3f{0, 0, 0}));
    // The second cube's back (4 5 7 6 from (0 1 0), counter-clockwise from behind), is the wall at
    // z = 0, now seen from the front: from (0 0 0) to the right.
    const Loop wall = loopsOf(*rest, 6)[0];
    EXPECT_EQ(wall, (Loop{7, pointAt(*rest, {.5F, 0, 0}), pointAt(*rest, {.5F, .5F, 0}),
                          pointAt(*rest, {0, .5F, 0})}));
}

TEST_F(TwoCubes, intersection)
{
    const SharedMesh common = of(BooleanOperation::Intersection);
    ASSERT_NE(common, nullptr);
    EXPECT_NEAR(volumeOf(*common), .125, 1e-7);
    EXPECT_TRUE(isClosed(*common));
    EXPECT_EQ(common->topology->vertexCount, 8u);
    EXPECT_EQ(common->topology->faceCount(), 6u);
    EXPECT_EQ(common->topology->edges.size(), 12u);
    EXPECT_EQ((*common->points)[0], (Vec3f{.5F, .5F, .5F})); // the first's, then the second's
    EXPECT_EQ((*common->points)[1], (Vec3f{0, 0, 0}));
    for (const float x : {0.F, .5F}) {
        for (const float y : {0.F, .5F}) {
            for (const float z : {0.F, .5F}) {
                EXPECT_NE(pointAt(*common, {x, y, z}), kNone);
            }
        }
    }
    EXPECT_EQ(hardEdges(*common), 6u); // between the first's three faces and the second's
}

TEST_F(TwoCubes, groupsGoAlong)
{
    MeshData second = texturedCube();
    addGroup(m_cube, 4, {0, 5});
    addGroup(second, 9, {2});
    const SharedMesh rest =
        combine({placed(m_cube, {}), placed(second, {.5, .5, .5})}, BooleanOperation::Difference);
    ASSERT_NE(rest, nullptr);
    ASSERT_EQ(rest->groups.size(), 2u);
    EXPECT_EQ(*rest->groups[0].faces, (Numbers{0, 5}));
    EXPECT_EQ(*rest->groups[1].faces, (Numbers{6})); // the wall at z = 0
}

TEST_F(BooleanOf, apart)
{
    const MeshData one = cube();
    const std::vector<UnitedMesh> parts{placed(one, {}), placed(one, {3, 0, 0})};
    EXPECT_EQ(combine(parts, BooleanOperation::Union)->topology->faceCount(), 12u);
    EXPECT_EQ(outerLoops(*combine(parts, BooleanOperation::Difference)), outerLoops(one));
    EXPECT_EQ(combine(parts, BooleanOperation::Intersection)->topology->faceCount(), 0u);
    EXPECT_EQ(combine(parts, BooleanOperation::Intersection)->topology->vertexCount, 0u);
    // their boxes meet, they do not: one above the other's cut-off edge is still outside
    const Matrix4 turned = eulerRotation({0, 0, .785398163397448}, RotationOrder::Xyz);
    const std::vector<UnitedMesh> close{{&one, turned}, placed(one, {.9, .9, 0})};
    EXPECT_NEAR(volumeOf(*combine(close, BooleanOperation::Union)), 2, 1e-6);
    EXPECT_NEAR(volumeOf(*combine(close, BooleanOperation::Difference)), 1, 1e-6);
    EXPECT_EQ(combine(close, BooleanOperation::Intersection)->topology->faceCount(), 0u);
}

TEST_F(BooleanOf, oneWithinTheOther)
{
    const MeshData one = cube();
    const std::vector<UnitedMesh> parts{{&one, scaling({2, 2, 2})}, placed(one, {})};
    EXPECT_EQ(outerLoops(*combine(parts, BooleanOperation::Union)), outerLoops(one));
    const SharedMesh hollow = combine(parts, BooleanOperation::Difference);
    EXPECT_EQ(hollow->topology->faceCount(), 12u);
    EXPECT_NEAR(volumeOf(*hollow), 7, 1e-6);
    // the inner cube's front, 0 1 3 2, is turned and begins where it began
    EXPECT_EQ(loopsOf(*hollow, 6)[0], (Loop{8, 10, 11, 9}));
    const SharedMesh inner = combine(parts, BooleanOperation::Intersection);
    EXPECT_EQ(outerLoops(*inner), outerLoops(one));
    EXPECT_NEAR(volumeOf(*inner), 1, 1e-6);
}

TEST_F(BooleanOf, throughAFaceIsAHole)
{
    const MeshData one = texturedCube();
    const std::vector<UnitedMesh> parts{placed(one, {}), {&one, scaling({.5, .5, 4})}};
    const SharedMesh ring = combine(parts, BooleanOperation::Difference);
    ASSERT_NE(ring, nullptr);
    EXPECT_NEAR(volumeOf(*ring), .75, 1e-6); // a quarter of the front is cut out
    EXPECT_TRUE(isClosed(*ring));
    EXPECT_EQ(ring->topology->faceCount(), 6u + 4u);
    EXPECT_EQ(ring->topology->vertexCount, 8u + 8u);
    EXPECT_EQ(ring->topology->edges.size(), 12u + 8u + 4u);
    const std::vector<Loop> front = loopsOf(*ring, 0);
    ASSERT_EQ(front.size(), 2u);
    EXPECT_EQ(front[0], (Loop{0, 1, 3, 2}));
    EXPECT_EQ(front[1].size(), 4u);
    EXPECT_EQ(loopsOf(*ring, 1).size(), 1u); // the top is whole
    EXPECT_EQ(loopsOf(*ring, 2).size(), 2u);
    // a quarter of the way from each side of the front: u and v are .25 or .75
    const auto& ids = *ring->uvSets[0].corners;
    for (std::uint32_t corner = 4; corner < 8; ++corner) {
        const Vec2f& uv = (*ring->uvSets[0].points)[static_cast<std::size_t>(ids[corner])];
        EXPECT_NEAR(std::abs(uv.x - .5F), .25, 1e-7);
        EXPECT_NEAR(std::abs(uv.y - .5F), .25, 1e-7);
    }
}

TEST_F(BooleanOf, facesThatTouch)
{
    const MeshData one = cube();
    const std::vector<UnitedMesh> flush{placed(one, {}), placed(one, {1, 0, 0})};
    const SharedMesh bar = combine(flush, BooleanOperation::Union);
    ASSERT_NE(bar, nullptr);
    EXPECT_NEAR(volumeOf(*bar), 2, 1e-6);
    EXPECT_TRUE(isClosed(*bar));
    EXPECT_EQ(bar->topology->vertexCount, 12u); // four of the second's are the first's
    EXPECT_EQ(bar->topology->faceCount(), 10u); // the two that touch are gone
    EXPECT_EQ(bar->topology->edges.size(), 20u);
    EXPECT_EQ(outerLoops(*combine(flush, BooleanOperation::Difference)), outerLoops(one));
    EXPECT_EQ(combine(flush, BooleanOperation::Intersection)->topology->faceCount(), 0u);

    const SharedMesh step =
        combine({placed(one, {}), placed(one, {1, .25, 0})}, BooleanOperation::Union);
    ASSERT_NE(step, nullptr);
    EXPECT_NEAR(volumeOf(*step), 2, 1e-6);
    EXPECT_TRUE(isClosed(*step));
    EXPECT_EQ(step->topology->faceCount(), 12u); // of both that touch a strip is left
    EXPECT_EQ(step->topology->vertexCount, 16u);
}

TEST_F(BooleanOf, theSameTwice)
{
    const MeshData one = cube();
    const std::vector<UnitedMesh> same{placed(one, {}), placed(one, {})};
    for (const auto operation : {BooleanOperation::Union, BooleanOperation::Intersection}) {
        EXPECT_EQ(outerLoops(*combine(same, operation)), outerLoops(one));
    }
    EXPECT_EQ(combine(same, BooleanOperation::Difference)->topology->faceCount(), 0u);
}

TEST_F(BooleanOf, severalParts)
{
    const MeshData one = cube();
    // a row of four, each half in the last: 1 + 3 halves
    const std::vector<UnitedMesh> row{placed(one, {}), placed(one, {.5, .1, .1}),
                                      placed(one, {1, 0, 0}), placed(one, {1.5, .1, .1})};
    const SharedMesh all = combine(row, BooleanOperation::Union);
    ASSERT_NE(all, nullptr);
    EXPECT_TRUE(isClosed(*all));
    // Two rows of 2 x 1 x 1, shifted by (.5 .1 .1), with 1.5 x .9 x .9 in common.
    EXPECT_NEAR(volumeOf(*all), 4 - 1.5 * .81, 1e-5);
    // from the first (1 1 1) go: .5 x .9 x .9 by the second, the third only touches
    EXPECT_NEAR(volumeOf(*combine({row[0], row[1], row[2]}, BooleanOperation::Difference)),
                1 - .5 * .81, 1e-6);
    // the first three have nothing in common: the first and the third only touch
    EXPECT_EQ(
        combine({row[0], row[1], row[2]}, BooleanOperation::Intersection)->topology->faceCount(),
        0u);
    // one that is far away stays whole beside those that are cut
    const SharedMesh three =
        combine({row[0], row[1], placed(one, {0, 9, 0})}, BooleanOperation::Union);
    EXPECT_NEAR(volumeOf(*three), 3 - .5 * .81, 1e-5);
    EXPECT_TRUE(isClosed(*three));
}

TEST_F(BooleanOf, whatIsInsideOutCountsForTheSolid)
{
    const MeshData one = cube();
    const std::vector<UnitedMesh> parts{{&one, scaling({-1, 1, 1})}, placed(one, {.5, .5, .5})};
    EXPECT_NEAR(volumeOf(*combine(parts, BooleanOperation::Union)), 2 - .125, 1e-6);
    EXPECT_NEAR(volumeOf(*combine(parts, BooleanOperation::Difference)), 1 - .125, 1e-6);
}

TEST_F(BooleanOf, refuses)
{
    const MeshData one = cube();
    const auto isRefused = [&](const MeshData& other, const Vec3d& at) {
        return combine({placed(one, {}), placed(other, at)}, BooleanOperation::Union) == nullptr;
    };
    // parts of the result would touch in an edge only, or in a point
    EXPECT_TRUE(isRefused(one, {1, 1, 0}));
    // a box without its front
    auto faces = test::kCubeFaces;
    faces.erase(faces.begin());
    const MeshData open = test::meshOf(test::kCubePoints, faces);
    EXPECT_TRUE(isRefused(open, {.5, .5, .5}));
    EXPECT_FALSE(isRefused(open, {3, 0, 0})); // nothing has to be cut
    // points that are no numbers
    auto points = test::kCubePoints;
    points[0].x = std::numeric_limits<float>::quiet_NaN();
    EXPECT_TRUE(isRefused(test::meshOf(points, test::kCubeFaces), {}));
    points[0].x = std::numeric_limits<float>::infinity();
    EXPECT_TRUE(isRefused(test::meshOf(points, test::kCubeFaces), {}));
    // a face without area
    points = test::kCubePoints;
    points[1] = points[0];
    EXPECT_TRUE(isRefused(test::meshOf(points, test::kCubeFaces), {.5, .5, .5}));
    // two cubes in one mesh, one half in the other, where a third cuts both
    const SharedMesh twins = uniteMeshes(std::vector{placed(one, {}), placed(one, {.5, .25, .25})},
                                         UvSetMerging::ByName);
    EXPECT_TRUE(isRefused(*twins, {.25, .5, .5}));
    EXPECT_EQ(booleanOf({}, BooleanOperation::Union, UvSetMerging::ByName), nullptr);
}

TEST_F(BooleanOf, refusesWhatIsTooLarge)
{
    SphereSettings settings;
    settings.axisCells = 400;
    settings.heightCells = 400;
    settings.uvs = SphereUvs::None;
    const SharedMesh sphere = makeSphere(settings, {});
    ASSERT_GT(sphere->topology->corners.size(), kMostBooleanTriangles);
    EXPECT_EQ(combine({placed(*sphere, {}), placed(cube(), {})}, BooleanOperation::Union), nullptr);
}

/// Boxes, spheres and rings of any size, turned and moved at random, so that most meet.
class Solids {
public:
    explicit Solids(unsigned seed) : m_random(seed)
    {
        SphereSettings sphere;
        sphere.axisCells = 11;
        sphere.heightCells = 7;
        TorusSettings torus;
        torus.axisCells = 9;
        torus.tubeCells = 7;
        m_meshes = {std::make_shared<const MeshData>(cube()), makeSphere(sphere, {}),
                    makeTorus(torus, {})};
    }
    UnitedMesh next(std::size_t kind)
    {
        const auto any = [&](double low, double high) {
            return low + (high - low) * static_cast<double>(m_random() % 65536) / 65536;
        };
        const Vec3d size{any(.5, 2), any(.5, 2), any(.5, 2)};
        const Vec3d angles{any(0, 6), any(0, 6), any(0, 6)};
        const Vec3d place{any(-1, 1), any(-1, 1), any(-1, 1)};
        return {m_meshes[kind % m_meshes.size()].get(),
                scaling(size) * eulerRotation(angles, RotationOrder::Xyz) * translation(place)};
    }

private:
    std::mt19937 m_random;
    std::vector<SharedMesh> m_meshes;
};

TEST_F(BooleanOf, volumesAddUp)
{
    Solids solids(7);
    std::size_t cuts = 0;
    for (std::size_t round = 0; round < 24; ++round) {
        const UnitedMesh a = solids.next(round);
        const UnitedMesh b = solids.next(round / 3);
        const SharedMesh both = combine({a, b}, BooleanOperation::Union);
        const SharedMesh rest = combine({a, b}, BooleanOperation::Difference);
        const SharedMesh common = combine({a, b}, BooleanOperation::Intersection);
        ASSERT_TRUE(both != nullptr && rest != nullptr && common != nullptr) << round;
        for (const SharedMesh& mesh : {both, rest, common}) {
            EXPECT_TRUE(isClosed(*mesh)) << round;
        }
        const double volumeA = volumeOf(*uniteMeshes(std::vector{a}, UvSetMerging::ByName));
        const double volumeB = volumeOf(*uniteMeshes(std::vector{b}, UvSetMerging::ByName));
        const double slack = 1e-5 * (volumeA + volumeB);
        EXPECT_NEAR(volumeOf(*both) + volumeOf(*common), volumeA + volumeB, slack) << round;
        EXPECT_NEAR(volumeOf(*rest) + volumeOf(*common), volumeA, slack) << round;
        cuts += common->topology->faceCount() > 0 ? 1 : 0;
    }
    EXPECT_GT(cuts, 12u);
}

TEST_F(BooleanOf, sameResultEveryTime)
{
    Solids solids(3);
    const UnitedMesh a = solids.next(1);
    const UnitedMesh b = solids.next(2);
    const SharedMesh first = combine({a, b}, BooleanOperation::Difference);
    ASSERT_NE(first, nullptr);
    for (int round = 0; round < 3; ++round) {
        const SharedMesh again = combine({a, b}, BooleanOperation::Difference);
        EXPECT_EQ(*again->points, *first->points);
        EXPECT_EQ(again->topology->corners, first->topology->corners);
        EXPECT_EQ(*again->uvSets[0].points, *first->uvSets[0].points);
    }
}

} // namespace
} // namespace host::geometry
