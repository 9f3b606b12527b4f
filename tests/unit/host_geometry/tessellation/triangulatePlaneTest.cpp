#include "host/geometry/tessellation/triangulatePlane.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <numeric>
#include <random>
#include <set>

namespace host::geometry {
namespace {

using Indices = std::vector<std::uint32_t>;
using Points = std::vector<PlanePosition>;

/// Loops and points inside, and what becomes of them.
struct Drawing {
    Points points;
    std::vector<PlaneSegment> segments;
    PlaneTriangulation result;

    Indices add(const Points& more)
    {
        Indices added(more.size());
        std::iota(added.begin(), added.end(), static_cast<std::uint32_t>(points.size()));
        points.insert(points.end(), more.begin(), more.end());
        return added;
    }
    void loop(const Points& corners, bool isHole = false)
    {
        appendLoop(add(corners), isHole, segments);
    }
    void fill(FillRule rule = FillRule::OuterMinusHoles)
    {
        auto filled = triangulatePlane(points, segments, rule);
        ASSERT_TRUE(filled) << filled.error().message;
        result = *filled;
        points.insert(points.end(), result.added.begin(), result.added.end());
    }
    std::size_t triangleCount() const { return result.triangles.size() / 3; }
    double area() const
    {
        double sum = 0;
        for (std::size_t i = 0; i < result.triangles.size(); i += 3) {
            sum += loopArea(points, std::span(result.triangles).subspan(i, 3));
        }
        return sum;
    }
};

Points circle(double x, double y, double radius, int count, bool isClockwise = false)
{
    Points points;
    for (int i = 0; i < count; ++i) {
        const double angle = (isClockwise ? -2 : 2) * 3.14159265358979323846 * i / count;
        points.push_back({x + radius * std::cos(angle), y + radius * std::sin(angle)});
    }
    return points;
}

/// Area of the regular polygon with corners on a circle.
double circleArea(double radius, int count)
{
    return 0.5 * count * radius * radius * std::sin(2 * 3.14159265358979323846 / count);
}

Points square(double x, double y, double size)
{
    return {{x, y}, {x + size, y}, {x + size, y + size}, {x, y + size}};
}

using EdgeUse = std::map<std::pair<std::uint32_t, std::uint32_t>, int>;

EdgeUse edgeUse(const Indices& triangles)
{
    EdgeUse use;
    for (std::size_t i = 0; i < triangles.size(); i += 3) {
        for (std::size_t k = 0; k < 3; ++k) {
            ++use[{triangles[i + k], triangles[i + (k + 1) % 3]}];
        }
    }
    return use;
}

/// No triangle is turned over, every directed edge is used once, merged points are not named.
/// Returns the number of edges without a twin.
std::size_t expectSound(const Drawing& drawing)
{
    const Indices& triangles = drawing.result.triangles;
    double size = 0;
    for (const PlanePosition& point : drawing.points) {
        size = std::max({size, std::fabs(point.x), std::fabs(point.y)});
    }
    for (std::size_t i = 0; i < triangles.size(); i += 3) {
        EXPECT_GT(loopArea(drawing.points, std::span(triangles).subspan(i, 3)),
                  -1e-8 * size * size);
    }
    for (const std::uint32_t index : triangles) {
        EXPECT_LT(index, drawing.points.size());
        if (index < drawing.result.standIn.size()) {
            EXPECT_EQ(drawing.result.standIn[index], index);
        }
    }
    std::size_t open = 0;
    const EdgeUse use = edgeUse(triangles);
    for (const auto& [edge, count] : use) {
        EXPECT_EQ(count, 1);
        open += use.count({edge.second, edge.first}) == 0 ? 1 : 0;
    }
    return open;
}

/// Area by the even-odd rule without any triangle: between neighbouring places of interest (corners
/// and crossings) the inside of a vertical line changes linearly, so its length in the middle times
/// the width is exact.
double evenOddArea(const Points& points, const std::vector<PlaneSegment>& segments)
{
    std::vector<double> places;
    for (const PlanePosition& point : points) {
        places.push_back(point.x);
    }
    for (std::size_t i = 0; i < segments.size(); ++i) {
        for (std::size_t k = 0; k < i; ++k) {
            const PlanePosition a = points[segments[i].from], b = points[segments[i].to];
            const PlanePosition c = points[segments[k].from], d = points[segments[k].to];
            const double det = (b.x - a.x) * (d.y - c.y) - (b.y - a.y) * (d.x - c.x);
            if (det != 0) {
                const double t = ((c.x - a.x) * (d.y - c.y) - (c.y - a.y) * (d.x - c.x)) / det;
                places.push_back(a.x + t * (b.x - a.x));
            }
        }
    }
    std::sort(places.begin(), places.end());
    double area = 0;
    for (std::size_t i = 0; i + 1 < places.size(); ++i) {
        const double x = 0.5 * (places[i] + places[i + 1]);
        std::vector<double> heights;
        for (const PlaneSegment& segment : segments) {
            const PlanePosition a = points[segment.from], b = points[segment.to];
            if ((a.x < x) != (b.x < x)) {
                heights.push_back(a.y + (x - a.x) / (b.x - a.x) * (b.y - a.y));
            }
        }
        std::sort(heights.begin(), heights.end());
        for (std::size_t k = 0; k + 1 < heights.size(); k += 2) {
            area += (heights[k + 1] - heights[k]) * (places[i + 1] - places[i]);
        }
    }
    return area;
}

TEST(TriangulatePlane, ATriangleAndASquareAreWhatTheyAre)
{
    Drawing triangle;
    triangle.loop({{0, 0}, {2, 0}, {0, 1}});
    triangle.fill();
    EXPECT_EQ(triangle.triangleCount(), 1U);
    EXPECT_DOUBLE_EQ(triangle.area(), 1);
    Drawing quad;
    quad.loop(square(-1, -1, 2));
    quad.fill();
    EXPECT_EQ(quad.triangleCount(), 2U);
    EXPECT_DOUBLE_EQ(quad.area(), 4);
}

TEST(TriangulatePlane, NothingGivesNothing)
{
    for (const Points& points : {Points{}, Points{{1, 1}}, Points{{1, 1}, {1, 1}, {1, 1}},
                                 Points{{0, 0}, {1, 1}, {2, 2}, {1, 1}}}) {
        Drawing drawing;
        drawing.loop(points);
        drawing.fill();
        EXPECT_EQ(drawing.triangleCount(), 0U);
    }
}

TEST(TriangulatePlane, HolesAndIslandsCountTheirTriangles)
{
    // n corners in h + 1 loops of one piece: n - 2 + 2 h triangles (Euler).
    Drawing drawing;
    drawing.loop(circle(0, 0, 10, 100));
    drawing.loop(circle(1, 1, 5, 60, true), true);
    drawing.loop(circle(-6, -5, 1, 20, true), true);
    drawing.fill();
    EXPECT_EQ(drawing.triangleCount(), 180U - 2 + 4);
    EXPECT_EQ(expectSound(drawing), 180U);
    EXPECT_NEAR(drawing.area(), circleArea(10, 100) - circleArea(5, 60) - circleArea(1, 20), 1e-9);
    // An island in the hole, by the even-odd rule.
    Drawing nested;
    nested.loop(circle(0, 0, 10, 100));
    nested.loop(circle(0, 0, 8, 80));
    nested.loop(circle(0, 0, 3, 30));
    nested.fill(FillRule::EvenOdd);
    EXPECT_NEAR(nested.area(), circleArea(10, 100) - circleArea(8, 80) + circleArea(3, 30), 1e-9);
    EXPECT_EQ(nested.triangleCount(), 180U + 30U - 2U);
}

TEST(TriangulatePlane, InnerPointsAreJoined)
{
    Drawing drawing;
    drawing.loop(square(0, 0, 10));
    drawing.add({{1, 1}, {5, 5}, {9, 2}, {20, 20}, {5, 5}});
    drawing.fill();
    // 4 corners and 3 distinct points inside: 2 * 3 + 4 - 2.
    EXPECT_EQ(drawing.triangleCount(), 8U);
    EXPECT_EQ(expectSound(drawing), 4U);
    EXPECT_EQ(drawing.result.standIn[8], 5U);
}

TEST(TriangulatePlane, TrianglesAreDelaunayBetweenTheLoops)
{
    // A 20 x 20 lattice, moved a little: no point may lie inside the circle of a triangle.
    Drawing drawing;
    drawing.loop(square(0, 0, 21));
    std::mt19937 random(1);
    Points inner;
    for (int i = 1; i <= 20; ++i) {
        for (int k = 1; k <= 20; ++k) {
            inner.push_back({i + static_cast<double>(random() % 1000) / 3000,
                             k + static_cast<double>(random() % 1000) / 3000});
        }
    }
    drawing.add(inner);
    drawing.fill();
    EXPECT_EQ(drawing.triangleCount(), 2U * 400 + 2);
    for (std::size_t i = 0; i < drawing.result.triangles.size(); i += 3) {
        const PlanePosition a = drawing.points[drawing.result.triangles[i]];
        const PlanePosition b = drawing.points[drawing.result.triangles[i + 1]];
        const PlanePosition c = drawing.points[drawing.result.triangles[i + 2]];
        const double d = 2 * ((b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x));
        const double bb = (b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y);
        const double cc = (c.x - a.x) * (c.x - a.x) + (c.y - a.y) * (c.y - a.y);
        const double x = ((c.y - a.y) * bb - (b.y - a.y) * cc) / d;
        const double y = ((b.x - a.x) * cc - (c.x - a.x) * bb) / d;
        for (const PlanePosition& p : drawing.points) {
            const double px = p.x - a.x - x, py = p.y - a.y - y;
            EXPECT_GT(px * px + py * py, (x * x + y * y) * (1 - 1e-6));
        }
    }
}

TEST(TriangulatePlane, LoopsMayTouchAtAPoint)
{
    // The hole touches the outer boundary in the middle of an edge, and another hole at a corner.
    Drawing drawing;
    drawing.loop(square(0, 0, 10));
    drawing.loop({{5, 0}, {3, 4}, {7, 4}}, true);
    drawing.loop({{7, 4}, {6, 6}, {8, 6}}, true);
    drawing.fill();
    expectSound(drawing);
    EXPECT_DOUBLE_EQ(drawing.area(), 100 - 8 - 2);
    EXPECT_TRUE(drawing.result.added.empty());
    EXPECT_EQ(drawing.result.standIn[7], 6U); // both are (7 4)
    // The touching loops are one walk round one piece: 5 places of the square, the one that the
    // hole touches with them, and 3 of each hole; 11 places make 11 - 2 triangles.
    EXPECT_EQ(drawing.triangleCount(), 9U);
}

TEST(TriangulatePlane, EdgesMayRunAlongEachOther)
{
    Drawing drawing;
    drawing.loop(square(0, 0, 10));
    drawing.loop({{2, 0}, {2, 5}, {6, 5}, {6, 0}}, true); // on the lower edge
    drawing.fill();
    expectSound(drawing);
    EXPECT_DOUBLE_EQ(drawing.area(), 80);
    Drawing whole;
    whole.loop(square(0, 0, 10));
    whole.loop({{0, 0}, {0, 10}, {10, 10}, {10, 0}}, true); // the hole is all there is
    whole.fill();
    EXPECT_EQ(whole.triangleCount(), 0U);
}

TEST(TriangulatePlane, CrossingsBecomePoints)
{
    Drawing bow; // two triangles of area 1 each, one of them clockwise
    bow.loop({{0, 0}, {2, 2}, {2, 0}, {0, 2}});
    bow.fill();
    ASSERT_EQ(bow.result.added.size(), 1U);
    EXPECT_NEAR(bow.result.added[0].x, 1, 1e-8);
    EXPECT_NEAR(bow.result.added[0].y, 1, 1e-8);
    EXPECT_NEAR(bow.area(), 2, 1e-7);
    EXPECT_EQ(bow.triangleCount(), 2U);
    // Two holes that overlap in a square of side 1, and one that reaches out of the loop.
    Drawing holes;
    holes.loop(square(0, 0, 10));
    holes.loop({{1, 1}, {1, 3}, {3, 3}, {3, 1}}, true);
    holes.loop({{2, 2}, {2, 4}, {4, 4}, {4, 2}}, true);
    holes.loop({{9, 5}, {9, 6}, {12, 6}, {12, 5}}, true);
    holes.fill();
    EXPECT_NEAR(holes.area(), 100 - 7 - 1, 1e-6);
    expectSound(holes);
}

TEST(TriangulatePlane, ALoopThatOverlapsItselfIsFilledOnce)
{
    // A pentagram: all of it by turns, without its middle by even and odd.
    Points star;
    for (int i = 0; i < 5; ++i) {
        const Points corner = circle(0, 0, 1, 5);
        star.push_back(corner[static_cast<std::size_t>(2 * i % 5)]);
    }
    const double pi = 3.14159265358979323846;
    // Inner pentagon of radius cos(72)/cos(36); the star is it and five triangles, ten times the
    // triangle of centre, tip and inner corner.
    const double inner = std::cos(2 * pi / 5) / std::cos(pi / 5);
    const double all = 10 * 0.5 * inner * std::sin(pi / 5);
    Drawing drawing;
    drawing.loop(star);
    drawing.fill();
    EXPECT_NEAR(drawing.area(), all, 1e-7);
    EXPECT_EQ(drawing.result.added.size(), 5U);
    Drawing odd;
    odd.loop(star);
    odd.fill(FillRule::EvenOdd);
    EXPECT_NEAR(odd.area(), all - circleArea(inner, 5), 1e-7);
}

TEST(TriangulatePlane, RandomSimpleLoopsHaveTheirShoelaceArea)
{
    std::mt19937 random(7);
    const auto unit = [&] { return static_cast<double>(random() % 100000) / 100000; };
    for (int round = 0; round < 60; ++round) {
        const int count = 3 + static_cast<int>(random() % 200);
        Points star = circle(0, 0, 1, count);
        for (PlanePosition& point : star) {
            const double r = 0.2 + unit();
            point = {3 + r * point.x, r * point.y - 1};
        }
        Drawing drawing;
        drawing.loop(star);
        drawing.add(circle(3, -1, 0.1, static_cast<int>(random() % 20)));
        const double expected = loopArea(drawing.points, drawing.add(star));
        drawing.fill();
        EXPECT_NEAR(drawing.area(), expected, 1e-9);
        EXPECT_EQ(expectSound(drawing), static_cast<std::size_t>(count));
    }
}

TEST(TriangulatePlane, RandomTanglesHaveTheirEvenOddArea)
{
    std::mt19937 random(3);
    for (int round = 0; round < 150; ++round) {
        // Every third drawing on a coarse lattice: many points meet, many edges overlap.
        const std::uint32_t lattice = round % 3 == 0 ? 6 : 100000;
        Drawing drawing;
        for (int loop = 0; loop < 1 + round % 3; ++loop) {
            Points corners(3 + random() % 12);
            for (PlanePosition& corner : corners) {
                corner = {static_cast<double>(random() % lattice) / lattice,
                          static_cast<double>(random() % lattice) / lattice};
            }
            drawing.loop(corners, loop % 2 == 1);
        }
        const double expected = evenOddArea(drawing.points, drawing.segments);
        drawing.fill(FillRule::EvenOdd);
        expectSound(drawing);
        EXPECT_NEAR(drawing.area(), expected, 1e-6) << round;
    }
}

TEST(TriangulatePlane, NeedlesAndNearMissesAreKept)
{
    // Many lines through almost one place, a few steps of the grid apart.
    std::mt19937 random(5);
    Drawing drawing;
    for (int i = 0; i < 40; ++i) {
        const double shift = static_cast<double>(random() % 7) * 1e-9;
        const double angle = 0.15 * i;
        const double x = std::cos(angle), y = std::sin(angle);
        drawing.loop({{x + shift, y}, {-x, shift - y}, {shift - y * 1e-9, x * 1e-9}});
    }
    const double expected = evenOddArea(drawing.points, drawing.segments);
    drawing.fill(FillRule::EvenOdd);
    expectSound(drawing);
    EXPECT_NEAR(drawing.area(), expected, 1e-6);
}

TEST(TriangulatePlane, LongEdgesCutThroughManyPoints)
{
    // A comb: two rows of 2,000 corners, and inner points that the long edges have to part.
    Drawing drawing;
    Points comb;
    const int teeth = 1000;
    for (int i = 0; i < teeth; ++i) {
        comb.push_back({i + 0.0, 0});
        comb.push_back({i + 0.5, 1000});
    }
    comb.push_back({teeth + 0.0, 0});
    comb.push_back({teeth + 0.0, -1});
    comb.push_back({0, -1});
    drawing.loop(comb);
    drawing.fill();
    EXPECT_EQ(drawing.triangleCount(), comb.size() - 2);
    EXPECT_NEAR(drawing.area(), teeth * 500.0 + teeth, 1e-3);
    expectSound(drawing);
}

TEST(TriangulatePlane, DamageIsRefused)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    const std::vector<PlaneSegment> none;
    for (const double number : {nan, infinity, -infinity, 1e300}) {
        const auto result = triangulatePlane(Points{{0, 0}, {number, 1}}, none, FillRule::EvenOdd);
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error().code, ErrorCode::BadInput);
    }
    EXPECT_FALSE(triangulatePlane(Points{{0, 0}, {1, 1}}, std::vector<PlaneSegment>{{0, 2, false}},
                                  FillRule::EvenOdd));
}

} // namespace
} // namespace host::geometry
