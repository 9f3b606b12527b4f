#include "host/geometry/nurbs/planarTrim.h"

#include "host/geometry/curve/arcs.h"
#include "host/geometry/nurbs/SurfaceEvaluator.h"
#include "tests/unit/host_geometry/curve/splineMaker.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

using host::Vec3d;
using host::geometry::CurveData;
using host::geometry::CurveEvaluator;
using host::geometry::PlanarTrimOptions;
using host::geometry::SurfaceData;
using host::geometry::SurfaceEvaluator;
using host::geometry::TrimBoundary;
using std::numbers::pi;
using test::expectNear;

CurveData circle(double x, double z, double radius, double sweep = 2 * pi)
{
    return host::geometry::curveOf(host::geometry::placed(host::geometry::nearArc(0, sweep, 8, 3),
                                                          {x, 5, z}, {radius, 0, 0},
                                                          {0, 0, -radius}),
                                   false);
}

/// Twice the area inside a boundary in (u, v), positive counter-clockwise, by fine chords; also
/// checks that pieces follow one another.
double areaOf(const TrimBoundary& boundary)
{
    double sum = 0;
    Vec3d before;
    bool isFirst = true;
    for (const auto& edge : boundary.edges) {
        for (const CurveData& piece : edge.curves2d) {
            EXPECT_EQ(piece.dimension, 2);
            const CurveEvaluator curve(piece);
            EXPECT_TRUE(curve.isValid());
            for (int i = 0; i <= 200; ++i) {
                const double share = i / 200.0;
                const Vec3d here =
                    curve.point(curve.start() + (curve.end() - curve.start()) * share);
                if (!isFirst) {
                    sum += before.x * here.y - here.x * before.y;
                    EXPECT_LT(host::length(here - before), 0.2);
                }
                before = here;
                isFirst = false;
            }
        }
    }
    return sum;
}

/// Every 2D curve lies over its 3D curve.
void expectOver(const SurfaceData& surface)
{
    const SurfaceEvaluator evaluator(surface);
    ASSERT_TRUE(evaluator.isValid());
    for (const auto& region : surface.trims) {
        for (const TrimBoundary& boundary : region->boundaries) {
            for (const auto& edge : boundary.edges) {
                const CurveEvaluator flat(edge.curves2d[0]);
                const CurveEvaluator spatial(edge.curves3d[0]);
                const double share = 0.3;
                const double along = edge.reversed ? 1 - share : share;
                const Vec3d at = flat.point(flat.start() + (flat.end() - flat.start()) * share);
                expectNear(
                    evaluator.point(at.x, at.y),
                    spatial.point(spatial.start() + (spatial.end() - spatial.start()) * along),
                    1e-12);
            }
        }
    }
}

TEST(PlanarTrim, FillsACircle)
{
    const SurfaceData disc = host::geometry::planarTrimSurface(std::vector{circle(3, 4, 2)}, {});
    ASSERT_EQ(disc.trims.size(), 1U);
    ASSERT_EQ(disc.trims[0]->boundaries.size(), 1U);
    EXPECT_EQ(disc.trims[0]->boundaries[0].type, 0);
    // An area in (u, v) is one in space through the sides of the rectangle.
    const SurfaceEvaluator plane(disc);
    const double sides = host::length(plane.point(1, 0) - plane.point(0, 0)) *
                         host::length(plane.point(0, 1) - plane.point(0, 0));
    EXPECT_NEAR(areaOf(disc.trims[0]->boundaries[0]) / 2 * sides, 4 * pi, 0.02);
    expectOver(disc);
    // Counter-clockwise from +x to -z is about +y.
    EXPECT_NEAR(plane.point(0.5, 0.5).y, 5, 1e-12);
    expectNear(plane.evaluate(0.5, 0.5).normal, {0, 1, 0});
}

TEST(PlanarTrim, SortsHolesAndIslands)
{
    // A ring, an island in its hole, and a disc beside.
    const std::vector<CurveData> curves{circle(0, 0, 1), circle(0, 0, 4), circle(0, 0, 2),
                                        circle(20, 0, 3)};
    const SurfaceData surface = host::geometry::planarTrimSurface(curves, {});
    ASSERT_EQ(surface.trims.size(), 3U);
    std::vector<std::size_t> counts;
    for (const auto& region : surface.trims) {
        counts.push_back(region->boundaries.size());
        EXPECT_GT(areaOf(region->boundaries[0]), 0);
        for (std::size_t i = 1; i < region->boundaries.size(); ++i) {
            EXPECT_EQ(region->boundaries[i].type, 1);
            EXPECT_LT(areaOf(region->boundaries[i]), 0);
        }
    }
    std::sort(counts.begin(), counts.end());
    EXPECT_EQ(counts, (std::vector<std::size_t>{1, 1, 2}));
    expectOver(surface);
}

TEST(PlanarTrim, TakesARepeatedCurveOnce)
{
    // The third is the same polygon from another corner and the other way round.
    const std::vector<CurveData> curves{
        circle(0, 0, 4), circle(0, 0, 4),
        test::curve(1, {0, 1, 2, 3, 4}, {9, 5, 0, 11, 5, 0, 11, 5, 2, 9, 5, 2, 9, 5, 0}),
        test::curve(1, {0, 1, 2, 3, 4}, {11, 5, 2, 11, 5, 0, 9, 5, 0, 9, 5, 2, 11, 5, 2})};
    bool isCrossed = true;
    const SurfaceData surface = host::geometry::planarTrimSurface(curves, {}, &isCrossed);
    ASSERT_EQ(surface.trims.size(), 2U); // the disc and the square
    EXPECT_EQ(surface.trims[0]->boundaries.size(), 1U);
    EXPECT_EQ(surface.trims[1]->boundaries.size(), 1U);
    EXPECT_FALSE(isCrossed);
}

TEST(PlanarTrim, SaysWhereCurvesCross)
{
    bool isCrossed = false;
    host::geometry::planarTrimSurface(std::vector{circle(0, 0, 2), circle(3, 0, 2)}, {},
                                      &isCrossed);
    EXPECT_TRUE(isCrossed);
    // Beside one another, and one inside the other.
    host::geometry::planarTrimSurface(
        std::vector{circle(0, 0, 2), circle(5, 0, 2), circle(0, 0, 1)}, {}, &isCrossed);
    EXPECT_FALSE(isCrossed);
}

TEST(PlanarTrim, JoinsOpenCurves)
{
    // A half circle and the line that closes it, which runs the wrong way.
    const std::vector<CurveData> curves{circle(0, 0, 1, pi),
                                        test::curve(1, {0, 1}, {1, 5, 0, -1, 5, 0})};
    const SurfaceData half = host::geometry::planarTrimSurface(curves, {});
    ASSERT_EQ(half.trims.size(), 1U);
    ASSERT_EQ(half.trims[0]->boundaries[0].edges.size(), 2U);
    EXPECT_GT(areaOf(half.trims[0]->boundaries[0]), 0);
    expectOver(half);
}

TEST(PlanarTrim, KeepsTheOutsideWhenAsked)
{
    PlanarTrimOptions options;
    options.keepsOutside = true;
    const SurfaceData frame =
        host::geometry::planarTrimSurface(std::vector{circle(0, 0, 1)}, options);
    ASSERT_EQ(frame.trims.size(), 1U);
    ASSERT_EQ(frame.trims[0]->boundaries.size(), 2U);
    EXPECT_NEAR(areaOf(frame.trims[0]->boundaries[0]) / 2, 1, 1e-12);
    EXPECT_LT(areaOf(frame.trims[0]->boundaries[1]), 0);
    expectOver(frame);
}

TEST(PlanarTrim, NeedsAnArea)
{
    const auto none = [](const std::vector<CurveData>& curves) {
        return host::geometry::planarTrimSurface(curves, {}).poles.empty();
    };
    EXPECT_TRUE(none({}));
    EXPECT_TRUE(none({circle(0, 0, 1, pi)}));
    EXPECT_TRUE(none({circle(0, 0, 0)}));
    EXPECT_TRUE(none({CurveData()}));
}

} // namespace
