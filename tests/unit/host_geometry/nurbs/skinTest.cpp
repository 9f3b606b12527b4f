#include "host/geometry/nurbs/skin.h"

#include "host/geometry/curve/arcs.h"
#include "host/geometry/nurbs/SurfaceEvaluator.h"
#include "tests/unit/host_geometry/curve/splineMaker.h"

#include <cmath>
#include <numbers>

namespace {

using host::Vec3d;
using host::geometry::ExtrudeOptions;
using host::geometry::LoftOptions;
using host::geometry::rowsOf;
using host::geometry::SplineForm;
using host::geometry::SplineRows;
using host::geometry::SurfaceData;
using host::geometry::SurfaceEvaluator;
using std::numbers::pi;
using test::curve;
using test::expectNear;

SplineRows lineAt(double y, double z, double size = 1)
{
    return rowsOf(curve(1, {0, 1}, {0, y, z, size, y, z}));
}

TEST(Loft, IsStraightBetweenTwoCurves)
{
    const SurfaceData surface =
        host::geometry::lofted({lineAt(0, 0), lineAt(3, 0, 2)}, LoftOptions(), false);
    EXPECT_EQ(surface.degreeU, 1);
    EXPECT_EQ(surface.degreeV, 3);
    EXPECT_EQ(surface.knotsV, (std::vector<double>{0, 0, 0, 1, 1, 1}));
    const SurfaceEvaluator evaluator(surface);
    ASSERT_TRUE(evaluator.isValid());
    // Ruled: half way across, half way along: x = (0.5 + 1) / 2.
    expectNear(evaluator.point(0.5, 0.5), {0.75, 1.5, 0});
}

TEST(Loft, FollowsAParabolaThroughThreeCurves)
{
    // z = y^2 at y = 0, 1, 2, one apart: the cubic with the parabola's end slopes is the parabola.
    const SurfaceEvaluator surface(
        host::geometry::lofted({lineAt(0, 0), lineAt(1, 1), lineAt(2, 4)}, LoftOptions(), false));
    ASSERT_TRUE(surface.isValid());
    for (const double v : {0.0, 0.3, 1.0, 1.6, 2.0}) {
        expectNear(surface.point(0.5, v), {0.5, v, v * v});
    }
    LoftOptions linear;
    linear.degree = 1;
    linear.sectionSpans = 2;
    const SurfaceData folded =
        host::geometry::lofted({lineAt(0, 0), lineAt(1, 1), lineAt(2, 4)}, linear, false);
    EXPECT_EQ(folded.knotsV, (std::vector<double>{0, 0.5, 1, 1.5, 2}));
    expectNear(SurfaceEvaluator(folded).point(0, 1.5), {0, 1.5, 2.5});
}

TEST(Loft, ClosesThroughItsCurves)
{
    LoftOptions options;
    options.isClosed = true;
    const std::vector<SplineRows> around{lineAt(1, 0), lineAt(0, 1), lineAt(-1, 0), lineAt(0, -1)};
    const SurfaceData tube = host::geometry::lofted(around, options, false);
    EXPECT_EQ(tube.formV, SplineForm::Periodic);
    const SurfaceEvaluator evaluator(tube);
    ASSERT_TRUE(evaluator.isValid());
    expectNear(evaluator.point(0.5, 3), {0.5, 0, -1});
    expectNear(evaluator.point(0.5, 4), {0.5, 1, 0});
    options.degree = 1;
    EXPECT_TRUE(host::geometry::isValidSurface(host::geometry::lofted(around, options, false)));
}

TEST(Loft, SpacesCurvesByTheirDistance)
{
    LoftOptions options;
    options.isUniform = false;
    const SurfaceData surface =
        host::geometry::lofted({lineAt(0, 0), lineAt(3, 0), lineAt(4, 0)}, options, false);
    EXPECT_EQ(surface.knotsV, (std::vector<double>{0, 0, 0, 3, 4, 4, 4}));
}

TEST(Loft, NeedsTwoCurves)
{
    EXPECT_TRUE(host::geometry::lofted({lineAt(0, 0)}, LoftOptions(), false).poles.empty());
    EXPECT_TRUE(host::geometry::lofted({}, LoftOptions(), false).poles.empty());
    EXPECT_TRUE(
        host::geometry::lofted({lineAt(0, 0), SplineRows()}, LoftOptions(), false).poles.empty());
}

TEST(Extrude, MovesAProfileWithoutTurning)
{
    const SplineRows path = rowsOf(curve(2, {0, 0, 1, 1}, {5, 0, 0, 5, 1, 1, 5, 2, 0}));
    ExtrudeOptions options;
    options.turns = false;
    const SurfaceEvaluator surface(host::geometry::extruded(lineAt(7, 7), path, options, false));
    // Profile point + path point - path start: at the middle of the path (5, 1, 0.5).
    expectNear(surface.point(1, 0.5), {1, 8, 7.5});
    options.movesToPath = true;
    options.pivot = {0, 7, 7};
    const SurfaceEvaluator moved(host::geometry::extruded(lineAt(7, 7), path, options, false));
    expectNear(moved.point(0, 0), {5, 0, 0});
}

TEST(Extrude, SweepsATubeAlongACircle)
{
    // A circle of radius 0.25 about the point (1, 0, 0), across the path: every point of the tube
    // is near 0.25 away from the circle of radius 1.
    const SplineRows path = host::geometry::nearArc(0, pi, 8, 3);
    const SplineRows profile = host::geometry::placed(host::geometry::nearArc(0, 2 * pi, 8, 3),
                                                      {1, 0, 0}, {0.25, 0, 0}, {0, 0, 0.25});
    const SurfaceEvaluator tube(host::geometry::extruded(profile, path, ExtrudeOptions(), false));
    ASSERT_TRUE(tube.isValid());
    for (int i = 0; i <= 16; ++i) {
        for (int j = 0; j <= 40; ++j) {
            const Vec3d p = tube.point(i / 2.0, tube.endV() * j / 40);
            const double out = std::sqrt(p.x * p.x + p.y * p.y) - 1;
            EXPECT_NEAR(std::sqrt(out * out + p.z * p.z), 0.25, 1e-3);
        }
    }
    // A profile that runs clockwise about the path has its normals inwards.
    const auto at = tube.evaluate(0, 0);
    EXPECT_LT(host::dot(at.normal, at.position - Vec3d{1, 0, 0}), 0);
}

TEST(Extrude, ScalesAndTurnsAlongAStraightPath)
{
    const SplineRows path = rowsOf(curve(1, {0, 1}, {0, 0, 0, 0, 0, 4}));
    const SplineRows profile = rowsOf(curve(1, {0, 1}, {0, 0, 0, 1, 0, 0}));
    ExtrudeOptions options;
    options.scale = 3;
    options.rotation = pi / 2;
    const SurfaceEvaluator surface(host::geometry::extruded(profile, path, options, false));
    ASSERT_TRUE(surface.isValid());
    expectNear(surface.point(1, 0), {1, 0, 0});
    // At the end three times as long, a quarter turn about +z.
    expectNear(surface.point(1, 1), {0, 3, 4});
}

TEST(Extrude, TakesPathsWithoutLength)
{
    const SplineRows point = rowsOf(curve(1, {0, 1}, {1, 1, 1, 1, 1, 1}));
    EXPECT_TRUE(host::geometry::isValidSurface(
        host::geometry::extruded(lineAt(0, 0), point, ExtrudeOptions(), false)));
    EXPECT_TRUE(host::geometry::extruded(lineAt(0, 0), SplineRows(), ExtrudeOptions(), false)
                    .poles.empty());
}

} // namespace
