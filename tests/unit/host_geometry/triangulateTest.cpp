#include "host/geometry/mesh/triangulate.h"
#include "host/geometry/mesh/normals.h"
#include "host/geometry/mesh/polygon.h"
#include "tests/unit/host_geometry/meshMaker.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>
#include <set>

namespace host::geometry {
namespace {

using test::Loop;
using test::meshOf;
using Triangles = std::vector<std::uint32_t>;

Triangulation cut(const MeshData& mesh, QuadSplit split = QuadSplit::BestShape)
{
    return triangulate(*mesh.topology, cornerVertices(*mesh.topology), pointsOf(mesh), split);
}

/// One face over all points, with holes after the given ends.
MeshData polygon(const std::vector<Vec3f>& points, const std::vector<std::uint32_t>& loopEnds)
{
    std::vector<Loop> loops;
    std::uint32_t first = 0;
    for (const std::uint32_t end : loopEnds) {
        Loop loop;
        for (; first < end; ++first) {
            loop.push_back(first);
        }
        loops.push_back(loop);
    }
    return meshOf(points, {loops});
}

MeshData polygon(const std::vector<Vec3f>& points)
{
    return polygon(points, {static_cast<std::uint32_t>(points.size())});
}

/// The shoelace formula for a loop in the plane z = 0.
double shoelace(const std::vector<Vec3f>& points, std::size_t first, std::size_t end)
{
    double twice = 0;
    for (std::size_t i = first; i < end; ++i) {
        const Vec3d a = toDouble(points[i]);
        const Vec3d b = toDouble(points[i + 1 == end ? first : i + 1]);
        twice += a.x * b.y - a.y * b.x;
    }
    return twice / 2;
}

/// Checks the number of triangles, that none is turned over and that they cover `area`.
void expectCover(const MeshData& mesh, double area, std::size_t triangleCount)
{
    const Triangulation result = cut(mesh);
    ASSERT_EQ(result.corners.size(), 3 * triangleCount);
    const auto vertices = cornerVertices(*mesh.topology);
    std::vector<Vec3d> outer;
    for (std::uint32_t corner = 0; corner < mesh.topology->loopStart[1]; ++corner) {
        outer.push_back(toDouble((*mesh.points)[vertices[corner]]));
    }
    const Vec3d normal = normalized(areaVector(outer));
    double covered = 0;
    double turnedOver = 0;
    for (std::size_t i = 0; i < result.corners.size(); i += 3) {
        std::array<Vec3d, 3> triangle;
        for (std::size_t k = 0; k < 3; ++k) {
            ASSERT_LT(result.corners[i + k], vertices.size());
            triangle[k] = toDouble((*mesh.points)[vertices[result.corners[i + k]]]);
        }
        const double signedArea = dot(areaVector(triangle), normal);
        covered += std::fabs(signedArea);
        turnedOver += signedArea < 0 ? -signedArea : 0;
    }
    EXPECT_NEAR(covered, area, 1e-9 * area);
    EXPECT_LE(turnedOver, 1e-12 * area);
}

TEST(Triangulate, TrianglesStayAsTheyAre)
{
    const MeshData mesh = polygon({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
    EXPECT_EQ(cut(mesh).corners, (Triangles{0, 1, 2}));
    EXPECT_EQ(cut(mesh).faceFirstTriangle, (Triangles{0, 1}));
}

TEST(Triangulate, RectanglesAreCutFromTheSecondToTheFourthCorner)
{
    const Triangles expected{0, 1, 3, 1, 2, 3};
    EXPECT_EQ(cut(polygon({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}})).corners, expected);
    EXPECT_EQ(cut(polygon({{0, 0, 0}, {5, 0, 0}, {5, 1, 0}, {0, 1, 0}})).corners, expected);
    // The same rectangle, begun at its next corner: the rule goes by the order of the corners.
    EXPECT_EQ(cut(polygon({{5, 0, 0}, {5, 1, 0}, {0, 1, 0}, {0, 0, 0}})).corners, expected);
}

TEST(Triangulate, SymmetricTrapezoidsAndParallelogramsAreTies)
{
    const Triangles expected{0, 1, 3, 1, 2, 3};
    EXPECT_EQ(cut(polygon({{0, 0, 0}, {4, 0, 0}, {3, 1, 0}, {1, 1, 0}})).corners, expected);
    EXPECT_EQ(cut(polygon({{1, 0, 0}, {3, 0, 0}, {4, 1, 0}, {0, 1, 0}})).corners, expected);
}

TEST(Triangulate, TheDiagonalWithTheLargerSmallestAngleWins)
{
    // A kite with its sharp ends at corners 0 and 2: the cut 0-2 would leave angles half as sharp.
    EXPECT_EQ(cut(polygon({{-3, 0, 0}, {0, -1, 0}, {3, 0, 0}, {0, 1, 0}})).corners,
              (Triangles{0, 1, 3, 1, 2, 3}));
    // The same kite begun at its next corner.
    EXPECT_EQ(cut(polygon({{0, -1, 0}, {3, 0, 0}, {0, 1, 0}, {-3, 0, 0}})).corners,
              (Triangles{0, 1, 2, 0, 2, 3}));
}

TEST(Triangulate, TheShorterDiagonalIsNotTheRule)
{
    // (0 0) (10 0) (x y) (3 3): the diagonal 1-3 is 7.62 long, shorter than 0-2 in both cases. Its
    // smallest angle is that at corner 1, atan(3/7) = 23.2 degrees, or what is left of it at corner
    // 3; that of 0-2 is the one at corner 0, atan(y/x).
    const auto quad = [](double x, double y) {
        return std::array<Vec3d, 4>{Vec3d{0, 0, 0}, {10, 0, 0}, {x, y, 0}, {3, 3, 0}};
    };
    EXPECT_EQ(bestDiagonal(quad(9, 3)), 1U);   // 18.4 against 23.2
    EXPECT_EQ(bestDiagonal(quad(8, 1.5)), 0U); // 10.6 against 23.2 - atan(1.5/5) = 6.5
}

TEST(Triangulate, AnglesWithinATenThousandthAreATie)
{
    // A square whose corner 1 is moved out by (d -d): 0-2 leaves 45 degrees as before, 1-3 leaves
    // about d radians less at corner 1.
    const auto quad = [](double d) {
        return std::array<Vec3d, 4>{Vec3d{0, 0, 0}, {1 + d, -d, 0}, {1, 1, 0}, {0, 1, 0}};
    };
    EXPECT_EQ(bestDiagonal(quad(0)), 1U);
    EXPECT_EQ(bestDiagonal(quad(5e-5)), 1U);
    EXPECT_EQ(bestDiagonal(quad(2e-3)), 0U);
}

TEST(Triangulate, ConcaveQuadsAreCutAtTheReflexCorner)
{
    // A dart; its reflex corner comes first, second, third and fourth.
    const std::vector<Vec3f> loop{{0, 0.5F, 0}, {2, -1, 0}, {0, 3, 0}, {-2, -1, 0}};
    for (std::size_t shift = 0; shift < 4; ++shift) {
        std::vector<Vec3f> turned;
        for (std::size_t i = 0; i < 4; ++i) {
            turned.push_back(loop[(i + 4 - shift) % 4]);
        }
        const MeshData mesh = polygon(turned);
        EXPECT_EQ(cut(mesh).corners,
                  shift % 2 == 0 ? (Triangles{0, 1, 2, 0, 2, 3}) : (Triangles{0, 1, 3, 1, 2, 3}))
            << "reflex corner " << shift;
        expectCover(mesh, std::fabs(shoelace(turned, 0, 4)), 2);
    }
}

TEST(Triangulate, QuadSplitOverridesTheBestShape)
{
    const MeshData kite = polygon({{0, -1, 0}, {3, 0, 0}, {0, 1, 0}, {-3, 0, 0}});
    EXPECT_EQ(cut(kite, QuadSplit::Left).corners, (Triangles{0, 1, 3, 1, 2, 3}));
    EXPECT_EQ(cut(kite, QuadSplit::Right).corners, (Triangles{0, 1, 2, 0, 2, 3}));
    const MeshData square = polygon({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}});
    EXPECT_EQ(cut(square, QuadSplit::Right).corners, (Triangles{0, 1, 2, 0, 2, 3}));
}

TEST(Triangulate, FacesOfFewerThanThreeCornersGiveNothing)
{
    const MeshData mesh = meshOf({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{{0, 1}}, {{0, 1, 2}}, {{0}}});
    EXPECT_EQ(cut(mesh).corners, (Triangles{2, 3, 4}));
    EXPECT_EQ(cut(mesh).faceFirstTriangle, (Triangles{0, 0, 1, 1}));
}

TEST(Triangulate, SkippedFacesHaveEmptyRuns)
{
    const MeshData mesh = meshOf(test::kCubePoints, test::kCubeFaces);
    const std::vector<std::uint32_t> skipped{0, 4};
    const Triangulation result = triangulate(*mesh.topology, cornerVertices(*mesh.topology),
                                             pointsOf(mesh), QuadSplit::BestShape, skipped);
    EXPECT_EQ(result.faceFirstTriangle, (Triangles{0, 0, 2, 4, 6, 6, 8}));
    EXPECT_EQ(result.corners[0], 4U);
}

TEST(Triangulate, LShapeIsCoveredExactly)
{
    // A 2 x 2 square without its upper right quarter: 3.
    const MeshData mesh =
        polygon({{0, 0, 0}, {2, 0, 0}, {2, 1, 0}, {1, 1, 0}, {1, 2, 0}, {0, 2, 0}});
    expectCover(mesh, 3, 4);
}

TEST(Triangulate, WindingFollowsTheFace)
{
    const MeshData mesh =
        polygon({{0, 2, 0}, {1, 2, 0}, {1, 1, 0}, {2, 1, 0}, {2, 0, 0}, {0, 0, 0}});
    expectCover(mesh, 3, 4); // against the face's own normal, (0 0 -1)
}

TEST(Triangulate, FlatCornersLeaveNoTriangleWithoutArea)
{
    // A 4 x 1 strip with three more corners on its lower side, begun at each corner in turn.
    const std::vector<Vec3f> loop{{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0},
                                  {4, 0, 0}, {4, 1, 0}, {0, 1, 0}};
    for (std::size_t shift = 0; shift < loop.size(); ++shift) {
        std::vector<Vec3f> turned;
        for (std::size_t i = 0; i < loop.size(); ++i) {
            turned.push_back(loop[(i + shift) % loop.size()]);
        }
        const MeshData mesh = polygon(turned);
        expectCover(mesh, 4, 5);
        const Triangulation result = cut(mesh);
        for (std::size_t i = 0; i < result.corners.size(); i += 3) {
            const std::array<Vec3d, 3> triangle{toDouble(turned[result.corners[i]]),
                                                toDouble(turned[result.corners[i + 1]]),
                                                toDouble(turned[result.corners[i + 2]])};
            EXPECT_GT(length(areaVector(triangle)), 0.1);
        }
    }
}

TEST(Triangulate, CombIsCovered)
{
    // Teeth of width 1 and height 10 on a bar of height 1, gaps of width 1.
    constexpr int kTeeth = 200;
    std::vector<Vec3f> points{{0, 0, 0}, {2.F * kTeeth - 1, 0, 0}};
    for (int tooth = kTeeth - 1; tooth >= 0; --tooth) {
        const auto x = static_cast<float>(2 * tooth);
        points.push_back({x + 1, 11, 0});
        points.push_back({x, 11, 0});
        if (tooth > 0) {
            points.push_back({x, 1, 0});
            points.push_back({x - 1, 1, 0});
        }
    }
    expectCover(polygon(points), 2. * kTeeth - 1 + 10. * kTeeth, points.size() - 2);
}

/// A loop that sees its centre from everywhere, with random radii.
std::vector<Vec3f> star(std::mt19937& random, int count, double least, const Vec3d& centre)
{
    std::vector<Vec3f> points;
    for (int i = 0; i < count; ++i) {
        const double radius = least + (1 - least) * static_cast<double>(random() % 1000) / 1000;
        const double angle = 2 * std::numbers::pi * i / count;
        points.push_back(
            toFloat(centre + Vec3d{radius * std::cos(angle), radius * std::sin(angle), 0}));
    }
    return points;
}

TEST(Triangulate, RandomStarsAreCoveredWithoutOverlap)
{
    std::mt19937 random(7);
    for (int round = 0; round < 400; ++round) {
        const int count = 5 + static_cast<int>(random() % 60);
        const std::vector<Vec3f> points = star(random, count, 0.05, {0, 0, 0});
        expectCover(polygon(points), shoelace(points, 0, points.size()), points.size() - 2);
        if (HasFailure()) {
            FAIL() << "round " << round;
        }
    }
}

TEST(Triangulate, StarsInTiltedPlanesAreCovered)
{
    std::mt19937 random(11);
    for (int round = 0; round < 200; ++round) {
        const int count = 5 + static_cast<int>(random() % 40);
        std::vector<Vec3f> points = star(random, count, 0.2, {0, 0, 0});
        std::vector<Vec3d> exact;
        const double tilt = static_cast<double>(random() % 100) / 25;
        for (Vec3f& point : points) {
            point =
                toFloat({point.x + 30, point.y * std::cos(tilt) - 20, point.y * std::sin(tilt)});
            exact.push_back(toDouble(point));
        }
        const double area = length(areaVector(exact));
        expectCover(polygon(points), area, points.size() - 2);
    }
}

TEST(Triangulate, SquareWithASquareHole)
{
    const std::vector<Vec3f> points{{0, 0, 0}, {3, 0, 0}, {3, 3, 0}, {0, 3, 0},
                                    {1, 1, 0}, {1, 2, 0}, {2, 2, 0}, {2, 1, 0}};
    expectCover(polygon(points, {4, 8}), 8, 8);
}

TEST(Triangulate, HolesMayRunEitherWay)
{
    const std::vector<Vec3f> points{{0, 0, 0}, {3, 0, 0}, {3, 3, 0}, {0, 3, 0},
                                    {1, 1, 0}, {2, 1, 0}, {2, 2, 0}, {1, 2, 0}};
    expectCover(polygon(points, {4, 8}), 8, 8);
}

TEST(Triangulate, HoleInATriangle)
{
    const std::vector<Vec3f> points{{0, 0, 0}, {8, 0, 0}, {0, 8, 0},
                                    {1, 1, 0}, {1, 3, 0}, {3, 1, 0}};
    expectCover(polygon(points, {3, 6}), 30, 6);
}

TEST(Triangulate, HolesBehindOneAnotherAndInConcavePolygons)
{
    // A U of width 9: the holes lie in its arms and in its base, in line.
    const std::vector<Vec3f> points{
        {0, 0, 0}, {9, 0, 0}, {9, 9, 0}, {6, 9, 0}, {6, 3, 0}, {3, 3, 0}, {3, 9, 0}, {0, 9, 0}, // U
        {1, 1, 0}, {2, 1, 0}, {2, 2, 0}, {1, 2, 0}, // base
        {4, 1, 0}, {5, 1, 0}, {5, 2, 0}, {4, 2, 0}, // base
        {7, 1, 0}, {8, 1, 0}, {8, 2, 0}, {7, 2, 0}, // base
        {1, 5, 0}, {2, 5, 0}, {2, 6, 0}, {1, 6, 0}  // arm
    };
    expectCover(polygon(points, {8, 12, 16, 20, 24}), 81 - 18 - 4, 24 + 2 * 4 - 2);
}

TEST(Triangulate, HolesThatTouchTheOuterLoopOrEachOther)
{
    // A 4 x 4 square; a diamond that touches its right side in one corner of the square's loop, and
    // one that touches the first.
    const std::vector<Vec3f> points{{0, 0, 0}, {4, 0, 0},    {4, 2, 0}, {4, 4, 0}, {0, 4, 0},
                                    {4, 2, 0}, {3, 1, 0},    {2, 2, 0}, {3, 3, 0}, {2, 2, 0},
                                    {1, 1, 0}, {0.5F, 2, 0}, {1, 3, 0}};
    expectCover(polygon(points, {5, 9, 13}), 16 - 2 - 1.5, 13 + 4 - 2);
}

TEST(Triangulate, HoleThatTouchesTheMiddleOfAnEdge)
{
    const std::vector<Vec3f> points{{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0},
                                    {4, 2, 0}, {3, 1, 0}, {2, 2, 0}, {3, 3, 0}};
    expectCover(polygon(points, {4, 8}), 14, 8);
}

TEST(Triangulate, RandomHolesOnAGridAreLeftOpen)
{
    std::mt19937 random(3);
    for (int round = 0; round < 100; ++round) {
        constexpr int kSide = 6;
        std::vector<Vec3f> points{{-1, -1, 0}, {kSide, -1, 0}, {kSide, kSide, 0}, {-1, kSide, 0}};
        std::vector<std::uint32_t> ends{4};
        double area = (kSide + 1) * (kSide + 1);
        for (int cell = 0; cell < kSide * kSide; ++cell) {
            if (random() % 3 == 0) {
                continue;
            }
            const Vec3d centre{static_cast<double>(cell % kSide), static_cast<double>(cell / kSide),
                               0};
            const std::size_t first = points.size();
            for (Vec3f point : star(random, 3 + static_cast<int>(random() % 9), 0.3, {0, 0, 0})) {
                point = toFloat(centre + toDouble(point) * 0.49);
                points.push_back(point);
            }
            area -= shoelace(points, first, points.size());
            ends.push_back(static_cast<std::uint32_t>(points.size()));
        }
        expectCover(polygon(points, ends), area, points.size() + 2 * (ends.size() - 1) - 2);
        if (HasFailure()) {
            FAIL() << "round " << round;
        }
    }
}

TEST(Triangulate, HolesWithoutAreaOrOutsideAreLeftOut)
{
    const std::vector<Vec3f> points{{0, 0, 0}, {3, 0, 0}, {3, 3, 0},    {1, 4, 0},
                                    {0, 3, 0}, {1, 1, 0}, {2, 1, 0},    // two corners
                                    {1, 2, 0}, {2, 2, 0}, {1.5F, 2, 0}, // in line
                                    {7, 7, 0}, {8, 7, 0}, {8, 8, 0}};   // outside
    expectCover(polygon(points, {5, 7, 10, 13}), 10.5, 3);
}

TEST(Triangulate, LoopThatBridgesToItsOwnHoleIsCovered)
{
    // The hole is cut in by a doubled edge from (3 3) to (2 2), as modellers do without hole loops.
    const std::vector<Vec3f> points{{0, 0, 0}, {3, 0, 0}, {3, 3, 0}, {2, 2, 0}, {2, 1, 0},
                                    {1, 1, 0}, {1, 2, 0}, {2, 2, 0}, {3, 3, 0}, {0, 3, 0}};
    expectCover(polygon(points), 8, 8);
}

TEST(Triangulate, LoopThatTouchesItselfInACornerIsCovered)
{
    // Two squares of area 4 that meet in (2 2).
    const std::vector<Vec3f> points{{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {4, 2, 0},
                                    {4, 4, 0}, {2, 4, 0}, {2, 2, 0}, {0, 2, 0}};
    expectCover(polygon(points), 8, 6);
}

TEST(Triangulate, SpikesAndRepeatedPointsAddNoArea)
{
    const std::vector<Vec3f> points{{0, 0, 0}, {2, 0, 0}, {2, 0, 0}, {2, 1, 0}, {5, 1, 0},
                                    {2, 1, 0}, {2, 2, 0}, {0, 2, 0}, {0, 2, 0}};
    expectCover(polygon(points), 4, 7);
}

TEST(Triangulate, PolygonsThatCannotBeCutStillGiveTheirNumber)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float huge = std::numeric_limits<float>::max();
    const std::vector<std::vector<Vec3f>> loops{
        {{0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {0, 0, 0}},    // a point
        {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}, {1.5F, 0, 0}}, // a line
        {{0, 0, 0}, {4, 0, 0}, {1, 3, 0}, {2, -2, 0}, {3, 3, 0}},   // a pentagram
        {{0, 0, 0}, {2, 2, 0}, {2, 0, 0}, {0, 2, 0}, {0, 1, 0}},    // a bow tie
        {{0, 0, 0}, {nan, 0, 0}, {2, 2, 0}, {0, 2, 0}, {0, 1, 0}},  //
        {{huge, 0, 0}, {0, huge, 0}, {-huge, 0, 0}, {0, -huge, 0}, {1, -huge, 0}},
        {{0, 0, 0}, {1, 0, 5}, {2, 0, 0}, {2, 2, 7}, {0, 2, 0}}, // far from plane
        {{0, 0, 0}, {1e-38F, 0, 0}, {1e-38F, 1e-38F, 0}, {0, 1e-38F, 0}, {0, 5e-39F, 0}},
    };
    for (const auto& loop : loops) {
        const Triangulation result = cut(polygon(loop));
        EXPECT_EQ(result.corners.size(), 9U);
        for (const std::uint32_t corner : result.corners) {
            EXPECT_LT(corner, 5U);
        }
    }
}

TEST(Triangulate, RandomTanglesEnd)
{
    std::mt19937 random(5);
    for (int round = 0; round < 300; ++round) {
        const std::size_t count = 5 + random() % 60;
        std::vector<Vec3f> points(count);
        for (Vec3f& point : points) {
            point = {static_cast<float>(random() % 8), static_cast<float>(random() % 8),
                     static_cast<float>(random() % 2)};
        }
        const auto outer = static_cast<std::uint32_t>(3 + random() % (count - 4));
        EXPECT_EQ(cut(polygon(points)).corners.size(), 3 * (count - 2));
        const Triangulation holed =
            cut(polygon(points, {outer, static_cast<std::uint32_t>(count)}));
        EXPECT_GE(holed.corners.size(), 3 * (outer - 2));
        EXPECT_LE(holed.corners.size(), 3 * count);
    }
}

/// The border of a random patch of cells, edge by edge on a lattice: an outer loop and holes full
/// of flat corners, which touch themselves and each other wherever cells meet in a corner only.
class Patch {
public:
    Patch(std::mt19937& random, int side, int cells)
        : m_side(side + 2), m_isIn(static_cast<std::size_t>(m_side * m_side))
    {
        std::vector<int> fringe{(side / 2 + 1) * m_side + side / 2 + 1};
        while (m_count < cells && !fringe.empty()) {
            const std::size_t pick = random() % fringe.size();
            const int cell = fringe[pick];
            fringe[pick] = fringe.back();
            fringe.pop_back();
            const int x = cell % m_side;
            const int y = cell / m_side;
            if (isIn(x, y) || x == 0 || y == 0 || x == m_side - 1 || y == m_side - 1) {
                continue;
            }
            m_isIn[static_cast<std::size_t>(cell)] = true;
            ++m_count;
            fringe.insert(fringe.end(), {cell - 1, cell + 1, cell - m_side, cell + m_side});
        }
    }

    int cellCount() const { return m_count; }

    /// Loops with the cells on their left. Where two cells meet in a corner only, a loop turns left
    /// (the cells stay apart) or right (the border touches itself).
    std::vector<std::vector<std::pair<int, int>>> loops(bool turnsLeft) const
    {
        constexpr int kX[4] = {1, 0, -1, 0};
        constexpr int kY[4] = {0, 1, 0, -1};
        std::set<std::array<int, 3>> walked;
        std::vector<std::vector<std::pair<int, int>>> result;
        for (int y = 1; y < m_side; ++y) {
            for (int x = 1; x < m_side; ++x) {
                for (int start = 0; start < 4; ++start) {
                    if (!isBorder(x, y, start) || walked.count({x, y, start}) != 0) {
                        continue;
                    }
                    std::vector<std::pair<int, int>> loop;
                    int atX = x, atY = y, heading = start;
                    while (walked.insert({atX, atY, heading}).second) {
                        loop.emplace_back(atX, atY);
                        atX += kX[heading];
                        atY += kY[heading];
                        const int first = turnsLeft ? 1 : 3;
                        for (const int turn : {first, 0, 4 - first}) {
                            if (isBorder(atX, atY, (heading + turn) % 4)) {
                                heading = (heading + turn) % 4;
                                break;
                            }
                        }
                    }
                    result.push_back(loop);
                }
            }
        }
        return result;
    }

private:
    bool isIn(int x, int y) const
    {
        return x >= 0 && y >= 0 && x < m_side && y < m_side &&
               m_isIn[static_cast<std::size_t>(y * m_side + x)];
    }
    /// Whether the lattice edge that leaves (x, y) has a cell on its left and none on its right.
    bool isBorder(int x, int y, int heading) const
    {
        const bool quadrant[4] = {isIn(x, y), isIn(x - 1, y), isIn(x - 1, y - 1), isIn(x, y - 1)};
        return quadrant[heading] && !quadrant[(heading + 3) % 4];
    }

    int m_side;
    int m_count = 0;
    std::vector<bool> m_isIn;
};

TEST(Triangulate, PatchesOfCellsThatTouchThemselvesAndTheirHolesAreCovered)
{
    std::mt19937 random(2024);
    int tested = 0;
    int withHoles = 0;
    for (int round = 0; round < 1500; ++round) {
        const int side = 3 + static_cast<int>(random() % 12);
        const Patch patch(random, side, 1 + static_cast<int>(random() % (side * side)));
        auto loops = patch.loops(round % 2 == 0);
        const auto twiceArea = [](const std::vector<std::pair<int, int>>& loop) {
            int sum = 0;
            for (std::size_t i = 0; i < loop.size(); ++i) {
                const auto& [ax, ay] = loop[i];
                const auto& [bx, by] = loop[(i + 1) % loop.size()];
                sum += ax * by - ay * bx;
            }
            return sum;
        };
        // Cells that touch in corners only and are parted there have several outer loops.
        if (std::count_if(loops.begin(), loops.end(),
                          [&](const auto& loop) { return twiceArea(loop) > 0; }) != 1) {
            continue;
        }
        std::stable_partition(loops.begin(), loops.end(),
                              [&](const auto& loop) { return twiceArea(loop) > 0; });
        std::vector<Vec3f> points;
        std::vector<std::uint32_t> ends;
        for (const auto& loop : loops) {
            for (const auto& [x, y] : loop) {
                // A slanted copy of the lattice: (1 x + 2 y, 3 y - x), five times the area.
                points.push_back({static_cast<float>(x + 2 * y), static_cast<float>(3 * y - x), 0});
            }
            ends.push_back(static_cast<std::uint32_t>(points.size()));
        }
        ++tested;
        withHoles += ends.size() > 1 ? 1 : 0;
        expectCover(polygon(points, ends), 5. * patch.cellCount(),
                    points.size() + 2 * (ends.size() - 1) - 2);
        if (HasFailure()) {
            FAIL() << "round " << round << ", " << patch.cellCount() << " cells";
        }
    }
    EXPECT_GT(tested, 1000);
    EXPECT_GT(withHoles, 150);
}

TEST(Triangulate, HugePolygonIsCoveredInShortTime)
{
    // 60,000 corners: a spiral band of forty turns, out along one side and back along the other.
    constexpr int kHalf = 30000;
    std::vector<Vec3f> points;
    const auto at = [](int i, double offset) {
        const double angle = 2 * std::numbers::pi * 40 * i / kHalf;
        const double radius = 1 + angle + offset;
        return toFloat({radius * std::cos(angle), radius * std::sin(angle), 0});
    };
    for (int i = 0; i < kHalf; ++i) {
        points.push_back(at(i, 2));
    }
    for (int i = kHalf - 1; i >= 0; --i) {
        points.push_back(at(i, 0));
    }
    expectCover(polygon(points), shoelace(points, 0, points.size()), points.size() - 2);
}

} // namespace
} // namespace host::geometry
