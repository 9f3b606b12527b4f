#include "host/geometry/tessellation/tessellate.h"

#include "host/geometry/nurbs/SurfaceEvaluator.h"
#include "tests/unit/host_geometry/tessellation/meshMeasures.h"
#include "tests/unit/host_geometry/tessellation/surfaceMaker.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>

namespace host::geometry {
namespace {

using std::numbers::pi;
using test::areaOf;
using test::boundary;
using test::circle;
using test::countAgainst;
using test::expectSound;
using test::line;
using test::openEdges;
using test::openEdgeSet;
using test::plane;
using test::polygon;
using test::wholeDomain;

TessellationSettings fine(double edgeDegrees)
{
    TessellationSettings settings;
    settings.edgeAngleTolerance = edgeDegrees * pi / 180;
    return settings;
}

RenderMesh meshOf(const SurfaceData& surface, const TessellationSettings& settings = {})
{
    const Tessellation result = tessellate(surface, settings);
    EXPECT_TRUE(result.notes.list().empty());
    expectSound(result.mesh);
    EXPECT_EQ(countAgainst(result.mesh), 0U);
    return result.mesh;
}

/// The mesh of a surface about which exactly one thing is odd.
RenderMesh noted(const SurfaceData& surface, TessellationNote note)
{
    const Tessellation result = tessellate(surface, {});
    EXPECT_EQ(result.notes.list(), std::vector<TessellationNote>{note});
    expectSound(result.mesh);
    EXPECT_EQ(countAgainst(result.mesh), 0U);
    return result.mesh;
}

/// A plane of many spans, so that there is a grid.
SurfaceData gridPlane(double size, std::size_t spans)
{
    SurfaceData surface;
    surface.degreeU = surface.degreeV = 1;
    for (std::size_t i = 0; i <= spans; ++i) {
        surface.knotsU.push_back(static_cast<double>(i) / static_cast<double>(spans));
        for (std::size_t k = 0; k <= spans; ++k) {
            const double step = size / static_cast<double>(spans);
            surface.poles.insert(surface.poles.end(),
                                 {static_cast<double>(i) * step, static_cast<double>(k) * step, 0});
        }
    }
    surface.knotsV = surface.knotsU;
    return surface;
}

TEST(TrimmedTessellation, ACircularHoleHasItsArea)
{
    for (const SurfaceData& base : {plane(10, 10), gridPlane(10, 17)}) {
        SurfaceData surface = base;
        test::trim(surface,
                   {wholeDomain(), boundary({test::reversed(circle(0.5, 0.5, 0.3))}, true)});
        EXPECT_NEAR(areaOf(meshOf(surface, fine(2))), 100 - 9 * pi, 1e-4 * 100);
        const double coarse = std::fabs(areaOf(meshOf(surface, fine(8))) - (100 - 9 * pi));
        const double finer = std::fabs(areaOf(meshOf(surface, fine(4))) - (100 - 9 * pi));
        EXPECT_LT(finer, coarse / 2);
    }
}

/// The least distance from the z axis of the middles of sides and faces.
double leastRadius(const RenderMesh& mesh)
{
    double least = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < mesh.indices.size(); i += 3) {
        const auto corner = [&](std::size_t k) { return mesh.positions[mesh.indices[i + k]]; };
        const Vec3f a = corner(0), b = corner(1), c = corner(2);
        const auto take = [&](double x, double y) {
            least = std::min(least, std::sqrt(x * x + y * y));
        };
        take((a.x + b.x) / 2.0, (a.y + b.y) / 2.0);
        take((b.x + c.x) / 2.0, (b.y + c.y) / 2.0);
        take((c.x + a.x) / 2.0, (c.y + a.y) / 2.0);
        take((a.x + b.x + c.x) / 3.0, (a.y + b.y + c.y) / 3.0);
    }
    return least;
}

TEST(TrimmedTessellation, OfALongPipeDoesNotCutThroughIt)
{
    // One span over a height of three diameters: u goes round in 0..4, v up in 0..1.
    const TrimBoundary whole = test::polygon({{0, 0}, {4, 0}, {4, 1}, {0, 1}});
    const TrimBoundary hole = boundary({test::reversed(circle(0.5, 0.3, 0.2))}, true);
    const TrimBoundary mitre = test::polygon({{0, 0}, {4, 0}, {4, 0.9}, {2, 0.4}, {0, 0.9}});
    for (const auto& boundaries : {std::vector{whole, hole}, std::vector{mitre}}) {
        SurfaceData pipe = test::cylinder(1, 6);
        test::trim(pipe, boundaries);
        const double diagonal = std::sqrt(4.0 + 4.0 + 36.0);
        EXPECT_GT(leastRadius(meshOf(pipe)), 1 - TessellationSettings().chordTolerance * diagonal);
    }
    // Boundaries along the lines of the grid need no more lines than none at all.
    SurfaceData plain = test::cylinder(1, 6);
    const std::size_t untrimmed = meshOf(plain).indices.size();
    test::trim(plain, {whole});
    EXPECT_EQ(meshOf(plain).indices.size(), untrimmed);
}

TEST(TrimmedTessellation, AnIslandInAHoleIsARegionOfItsOwn)
{
    SurfaceData surface = gridPlane(10, 12);
    test::trim(surface, {boundary({circle(0.5, 0.5, 0.45)}),
                         boundary({test::reversed(circle(0.5, 0.5, 0.3))}, true)});
    test::trim(surface, {boundary({circle(0.5, 0.5, 0.2)}),
                         boundary({test::reversed(circle(0.5, 0.5, 0.1))}, true)});
    const RenderMesh mesh = meshOf(surface, fine(1));
    EXPECT_NEAR(areaOf(mesh), 100 * pi * (0.45 * 0.45 - 0.09 + 0.04 - 0.01), 1e-4 * 100);
}

TEST(TrimmedTessellation, TheOpenEdgesAreTheBoundary)
{
    SurfaceData surface = gridPlane(10, 20);
    test::trim(surface, {wholeDomain(), boundary({test::reversed(circle(0.5, 0.5, 0.3))}, true)});
    const RenderMesh mesh = meshOf(surface);
    std::size_t onCircle = 0;
    std::size_t onBorder = 0;
    for (const auto& [from, to] : openEdgeSet(mesh)) {
        const auto radius = [](const test::Place& p) { return std::hypot(p[0] - 5, p[1] - 5); };
        if (std::fabs(radius(from) - 3) < 1e-5 && std::fabs(radius(to) - 3) < 1e-5) {
            ++onCircle;
            // The hole runs clockwise, the inside on its left.
            EXPECT_LT((from[0] - 5) * (to[1] - 5) - (from[1] - 5) * (to[0] - 5), 0);
        } else {
            ++onBorder;
            EXPECT_TRUE((from[0] == to[0] && (from[0] == 0 || from[0] == 10)) ||
                        (from[1] == to[1] && (from[1] == 0 || from[1] == 10)));
        }
    }
    EXPECT_EQ(onBorder, 80U); // the grid's lines
    // Halved from quarters until steps are 6 degrees at most: 2.8 degrees at least.
    EXPECT_GE(onCircle, 60U);
    EXPECT_LE(onCircle, 128U);
}

TEST(TrimmedTessellation, TheNumberOfTrianglesIsLinear)
{
    // Per boundary point one triangle, per point inside two (Euler): boundary points double with
    // halved steps, the grid stays.
    std::size_t last = 0;
    for (const double degrees : {8.0, 4.0, 2.0, 1.0, 0.5}) {
        SurfaceData surface = plane(10, 10);
        test::trim(surface,
                   {wholeDomain(), boundary({test::reversed(circle(0.5, 0.5, 0.3))}, true)});
        const std::size_t count = meshOf(surface, fine(degrees)).indices.size() / 3;
        EXPECT_LE(count, 2 * 360 / degrees + 4 + 2);
        EXPECT_TRUE(last == 0 || count <= 2 * last);
        last = count;
    }
}

TEST(TrimmedTessellation, DirectionsOfBoundariesDoNotMatter)
{
    for (int turned = 0; turned < 4; ++turned) {
        SurfaceData surface = gridPlane(10, 9);
        std::vector<PlanePosition> corners{{0.1, 0.1}, {0.9, 0.1}, {0.9, 0.9}, {0.1, 0.9}};
        if ((turned & 1) != 0) {
            std::reverse(corners.begin(), corners.end());
        }
        const CurveData hole = circle(0.5, 0.5, 0.2);
        test::trim(surface, {polygon(corners),
                             boundary({(turned & 2) != 0 ? hole : test::reversed(hole)}, true)});
        EXPECT_NEAR(areaOf(meshOf(surface, fine(1))), 64 - 4 * pi, 1e-4 * 64);
    }
}

TEST(TrimmedTessellation, HolesMayTouchTheBoundaryAndEachOther)
{
    SurfaceData surface = gridPlane(10, 7);
    test::trim(surface, {wholeDomain(), polygon({{0.5, 0}, {0.3, 0.4}, {0.7, 0.4}}, true),
                         polygon({{0.7, 0.4}, {0.6, 0.6}, {0.8, 0.6}}, true)});
    EXPECT_NEAR(areaOf(meshOf(surface)), 100 - 8 - 2, 1e-4);
}

TEST(TrimmedTessellation, ABoundaryThatCrossesItselfIsFilled)
{
    SurfaceData surface = gridPlane(10, 7);
    test::trim(surface, {polygon({{0.2, 0.2}, {0.8, 0.8}, {0.8, 0.2}, {0.2, 0.8}})});
    EXPECT_NEAR(areaOf(meshOf(surface)), 18, 1e-4); // two triangles of base 6 and height 3
    SurfaceData holed = gridPlane(10, 7);
    test::trim(holed,
               {wholeDomain(), polygon({{0.2, 0.2}, {0.8, 0.8}, {0.8, 0.2}, {0.2, 0.8}}, true)});
    EXPECT_NEAR(areaOf(meshOf(holed)), 82, 1e-4);
}

TEST(TrimmedTessellation, SmallGapsAreClosedAndLargeOnesLeaveTheBoundaryOut)
{
    SurfaceData small = plane(10, 10);
    test::trim(small, {boundary({line({0.2, 0.2}, {0.8, 0.2}), line({0.8, 0.201}, {0.8, 0.8}),
                                 line({0.8, 0.8}, {0.2, 0.8}), line({0.2, 0.8}, {0.2, 0.205})})});
    EXPECT_NEAR(areaOf(meshOf(small)), 36, 0.01);
    SurfaceData open = plane(10, 10);
    test::trim(open, {boundary({line({0.2, 0.2}, {0.8, 0.2}), line({0.8, 0.2}, {0.8, 0.8})})});
    EXPECT_NEAR(areaOf(noted(open, TessellationNote::OpenBoundary)), 100, 1e-4);
    SurfaceData openHole = plane(10, 10);
    test::trim(openHole,
               {wholeDomain(),
                boundary({line({0.2, 0.2}, {0.8, 0.2}), line({0.8, 0.2}, {0.8, 0.8})}, true)});
    EXPECT_NEAR(areaOf(noted(openHole, TessellationNote::OpenBoundary)), 100, 1e-4);
}

TEST(TrimmedTessellation, PiecesThatRunBackwardsAreTurned)
{
    SurfaceData surface = plane(10, 10);
    test::trim(surface, {boundary({line({0.8, 0.2}, {0.2, 0.2}), line({0.8, 0.2}, {0.8, 0.8}),
                                   line({0.2, 0.8}, {0.8, 0.8}), line({0.2, 0.8}, {0.2, 0.2})})});
    EXPECT_NEAR(areaOf(meshOf(surface)), 36, 1e-4);
}

TEST(TrimmedTessellation, AnEdgeWithoutParameterCurvesBecomesStraight)
{
    SurfaceData surface = plane(10, 10);
    TrimBoundary square = polygon({{0.2, 0.2}, {0.8, 0.2}, {0.8, 0.8}, {0.2, 0.8}});
    square.edges[1].curves2d.clear();
    test::trim(surface, {square});
    EXPECT_NEAR(areaOf(noted(surface, TessellationNote::MissingParameterEdge)), 36, 1e-4);
    square.edges[1] = polygon({{0.8, 0.2}, {0.8, 0.8}}).edges[0];
    square.edges[1].curves2d[0].poles[1] = std::numeric_limits<double>::quiet_NaN();
    SurfaceData damaged = plane(10, 10);
    test::trim(damaged, {square});
    EXPECT_NEAR(areaOf(noted(damaged, TessellationNote::MissingParameterEdge)), 36, 1e-4);
    // All of them missing: no boundary.
    for (TrimEdge& edge : square.edges) {
        edge.curves2d.clear();
    }
    SurfaceData none = plane(10, 10);
    test::trim(none, {square});
    EXPECT_NEAR(areaOf(noted(none, TessellationNote::MissingParameterEdge)), 100, 1e-4);
}

TEST(TrimmedTessellation, EdgesWithoutALengthAreHarmless)
{
    SurfaceData surface = plane(10, 10);
    test::trim(surface, {boundary({line({0.2, 0.2}, {0.8, 0.2}), line({0.8, 0.2}, {0.8, 0.2}),
                                   line({0.8, 0.2}, {0.8, 0.8}), line({0.8, 0.8}, {0.2, 0.2})})});
    EXPECT_NEAR(areaOf(meshOf(surface)), 18, 1e-4);
    SurfaceData nothing = plane(10, 10);
    test::trim(nothing, {boundary({line({0.2, 0.2}, {0.8, 0.2}), line({0.8, 0.2}, {0.2, 0.2})})});
    const Tessellation result = tessellate(nothing, {});
    EXPECT_TRUE(result.mesh.indices.empty());
    EXPECT_FALSE(result.notes.list().empty());
}

TEST(TrimmedTessellation, CurvesOutsideTheDomainFollowItsBorder)
{
    SurfaceData surface = gridPlane(10, 5);
    test::trim(surface, {polygon({{0.5, 0.2}, {3, 0.2}, {3, 0.8}, {0.5, 0.8}})});
    EXPECT_NEAR(areaOf(tessellate(surface, {}).mesh), 30, 1e-4);
    SurfaceData round = gridPlane(10, 5);
    test::trim(round, {boundary({circle(0.5, 1.0, 0.2)})});
    const RenderMesh mesh = noted(round, TessellationNote::OutsideDomain);
    EXPECT_NEAR(areaOf(mesh), 2 * pi, 0.05);
}

TEST(TrimmedTessellation, RegionsMeetWithoutACrack)
{
    // A cylinder cut along a wave; both pieces have the wave, run the other way.
    CurveData wave;
    wave.degree = 3;
    wave.dimension = 2;
    wave.spans = 3;
    wave.knots = {0, 0, 0, 1, 2, 3, 3, 3};
    wave.poles = {4, 0.5, 3.2, 0.9, 2.5, 0.1, 1.8, 0.8, 0.9, 0.2, 0, 0.5};
    SurfaceData surface = test::cylinder(2, 3);
    test::trim(surface, {boundary({line({0, 0}, {4, 0}), line({4, 0}, {4, 0.5}), wave,
                                   line({0, 0.5}, {0, 0})})});
    test::trim(surface, {boundary({test::reversed(wave), line({4, 0.5}, {4, 1}),
                                   line({4, 1}, {0, 1}), line({0, 1}, {0, 0.5})})});
    const RenderMesh mesh = meshOf(surface);
    EXPECT_NEAR(areaOf(mesh), 12 * pi, 0.01 * 12 * pi);
    // Only the two rims are open, 28 segments each; the seam and the wave are closed.
    EXPECT_EQ(openEdges(mesh), 56U);
}

TEST(TrimmedTessellation, TheCapOfASphereHasItsArea)
{
    // Above latitude 30 degrees: 2 pi r^2 (1 - sin 30). The height of the quadratic's parameter:
    // by symmetry its half is 45 degrees, so the sphere's own points tell.
    SurfaceData surface = test::sphere(2);
    const SurfaceEvaluator evaluator(surface);
    double low = 1;
    double high = 2;
    for (int i = 0; i < 50; ++i) {
        const double middle = 0.5 * (low + high);
        (evaluator.point(0, middle).z < 1 ? low : high) = middle;
    }
    test::trim(surface, {polygon({{0, low}, {4, low}, {4, 2}, {0, 2}})});
    TessellationSettings settings;
    settings.angleTolerance = 3 * pi / 180;
    const RenderMesh mesh = meshOf(surface, settings);
    EXPECT_NEAR(areaOf(mesh), 4 * pi, 0.005 * 4 * pi);
    // Only the circle of latitude is open: the seam closes and the pole is a point.
    for (const auto& [from, to] : openEdgeSet(mesh)) {
        EXPECT_NEAR(from[2], 1, 1e-5);
        EXPECT_NEAR(to[2], 1, 1e-5);
    }
}

TEST(TrimmedTessellation, RandomPolygonsKeepTheirArea)
{
    std::mt19937 random(11);
    const auto unit = [&] { return static_cast<double>(random() % 10000) / 10000; };
    for (int round = 0; round < 60; ++round) {
        SurfaceData surface = gridPlane(10, 1 + random() % 30);
        // A star round the middle with a star-shaped hole of half its size.
        const std::size_t count = 3 + random() % 40;
        std::vector<PlanePosition> outer;
        std::vector<PlanePosition> hole;
        double area = 0;
        for (std::size_t i = 0; i < count; ++i) {
            const double angle = 2 * pi * static_cast<double>(i) / static_cast<double>(count);
            const double r = 0.1 + 0.4 * unit();
            outer.push_back({0.5 + r * std::cos(angle), 0.5 + r * std::sin(angle)});
            hole.push_back({0.5 + r / 2 * std::cos(angle), 0.5 + r / 2 * std::sin(angle)});
        }
        for (std::size_t i = 0; i < count; ++i) {
            const PlanePosition& a = outer[i];
            const PlanePosition& b = outer[(i + 1) % count];
            area += 50 * (a.x * b.y - a.y * b.x);
        }
        test::trim(surface, {polygon(outer), polygon(hole, true)});
        const RenderMesh mesh = meshOf(surface);
        EXPECT_NEAR(areaOf(mesh), 0.75 * area, 1e-4);
    }
}

TEST(TrimmedTessellation, HostileRegionsEnd)
{
    std::mt19937 random(2);
    const auto unit = [&] { return static_cast<double>(random() % 10000) / 10000; };
    SurfaceData tangle = gridPlane(1, 30);
    std::vector<PlanePosition> corners;
    for (int i = 0; i < 200; ++i) {
        corners.push_back({unit(), unit()});
    }
    test::trim(tangle, {polygon(corners), polygon(corners, true)});
    // The hole is all there is, but for slivers between lines that cross again and again.
    EXPECT_LT(areaOf(tessellate(tangle, {}).mesh), 1e-5);
    SurfaceData many = gridPlane(1, 60);
    for (int i = 0; i < 300; ++i) {
        test::trim(many, {boundary({circle(unit(), unit(), 0.02)})});
    }
    expectSound(tessellate(many, {}).mesh);
    const double huge = std::numeric_limits<double>::max();
    SurfaceData wild = plane(1, 1);
    test::trim(wild, {polygon({{-huge, -huge}, {huge, 0}, {0, huge}})});
    expectSound(tessellate(wild, {}).mesh);
}

} // namespace
} // namespace host::geometry
