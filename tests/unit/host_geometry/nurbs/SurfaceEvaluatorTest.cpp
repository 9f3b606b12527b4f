#include "host/geometry/nurbs/SurfaceEvaluator.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using host::Vec3d;
using host::geometry::SplineForm;
using host::geometry::SurfaceData;
using host::geometry::SurfaceEvaluator;
using host::geometry::SurfacePoint;

void expectNear(const Vec3d& found, const Vec3d& expected, double tolerance = 1e-12)
{
    EXPECT_NEAR(found.x, expected.x, tolerance);
    EXPECT_NEAR(found.y, expected.y, tolerance);
    EXPECT_NEAR(found.z, expected.z, tolerance);
}

/// z = x y over the square 0..2 in both directions: u = x, v = y.
SurfaceData saddle()
{
    SurfaceData surface;
    surface.degreeU = surface.degreeV = 1;
    surface.knotsU = surface.knotsV = {0, 2};
    surface.poles = {0, 0, 0, 0, 2, 0, 2, 0, 0, 2, 2, 4};
    return surface;
}

/// An eighth of the unit sphere about z: u turns from x to y, v climbs from the equator to the
/// pole, two rational quarter circles multiplied with each other.
SurfaceData eighthOfASphere()
{
    const double w = std::sqrt(0.5);
    SurfaceData surface;
    surface.degreeU = surface.degreeV = 2;
    surface.knotsU = surface.knotsV = {0, 0, 1, 1};
    surface.rational = true;
    surface.poles = {1, 0, 0, 1, 1, 0, 1, w,     0, 0, 1, 1,  // meridian at x
                     1, 1, 0, w, 1, 1, 1, w * w, 0, 0, 1, w,  //
                     0, 1, 0, 1, 0, 1, 1, w,     0, 0, 1, 1}; // meridian at y
    return surface;
}

TEST(SurfaceEvaluator, EvaluatesASaddle)
{
    const SurfaceEvaluator surface(saddle());
    ASSERT_TRUE(surface.isValid());
    const SurfacePoint found = surface.evaluate(0.5, 1.5);
    expectNear(found.position, {0.5, 1.5, 0.75});
    expectNear(found.du, {1, 0, 1.5});
    expectNear(found.dv, {0, 1, 0.5});
    // (1, 0, 1.5) x (0, 1, 0.5) = (-1.5, -0.5, 1), of length sqrt(3.5).
    const double l = std::sqrt(3.5);
    expectNear(found.normal, {-1.5 / l, -0.5 / l, 1 / l});
    expectNear(surface.point(-1, 5), {0, 2, 0}); // clamped
}

TEST(SurfaceEvaluator, EvaluatesARationalSphereWithItsPole)
{
    const SurfaceEvaluator sphere(eighthOfASphere());
    ASSERT_TRUE(sphere.isValid());
    for (int i = 0; i <= 4; ++i) {
        for (int j = 0; j <= 4; ++j) {
            const SurfacePoint found = sphere.evaluate(i / 4.0, j / 4.0);
            EXPECT_NEAR(host::length(found.position), 1, 1e-14);
            // East x north points outwards; at the pole (j = 4) as its limit.
            expectNear(found.normal, found.position, 1e-7);
        }
    }
    expectNear(sphere.evaluate(0.5, 1).position, {0, 0, 1});
    expectNear(sphere.evaluate(0.5, 1).normal, {0, 0, 1});
    expectNear(sphere.evaluate(0.5, 1).du, {0, 0, 0});
}

TEST(SurfaceEvaluator, TakesTheSlantOfAConeAtItsTip)
{
    // From the tip (0, 0, 1) to a straight edge between (1, 0, 0) and (0, 1, 0): a flat triangle,
    // normal (1, 1, 1) / sqrt 3.
    SurfaceData triangle = saddle();
    triangle.poles = {1, 0, 0, 0, 0, 1, 0, 1, 0, 0, 0, 1};
    const SurfaceEvaluator surface(triangle);
    const double third = 1 / std::sqrt(3.0);
    expectNear(surface.evaluate(0.5, 0.5).normal, {third, third, third});
    expectNear(surface.evaluate(0.5, 2).normal, {third, third, third});
    // The tip at the start of v, and at either end of u.
    triangle.poles = {0, 0, 1, 0, 1, 0, 0, 0, 1, 1, 0, 0};
    expectNear(SurfaceEvaluator(triangle).evaluate(0.5, 0).normal, {third, third, third});
    triangle.poles = {0, 0, 1, 0, 0, 1, 1, 0, 0, 0, 1, 0};
    expectNear(SurfaceEvaluator(triangle).evaluate(0, 0.5).normal, {third, third, third});
    triangle.poles = {0, 1, 0, 1, 0, 0, 0, 0, 1, 0, 0, 1};
    expectNear(SurfaceEvaluator(triangle).evaluate(2, 0.5).normal, {third, third, third});
}

TEST(SurfaceEvaluator, StepsInwardsWhereBothDerivativesAreParallel)
{
    // A corner whose two edges leave in one direction: du and dv at (0, 0) are both along x.
    SurfaceData surface = saddle();
    surface.poles = {0, 0, 0, 1, 0, 0, 2, 0, 0, 2, 2, 0};
    const Vec3d normal = SurfaceEvaluator(surface).evaluate(0, 0).normal;
    // (u, v) -> x = u + v / 2 - u v / 4 ..., y = u v / 2: du x dv = (x_u y_v - x_v y_u) along z
    // with x_u = 1 - v / 4, y_v = u / 2, x_v = 1/2 - u / 4, y_u = v / 2: on the diagonal u = v = h
    // that is h / 2 - h / 4 > 0.
    expectNear(normal, {0, 0, 1}, 1e-9);
}

TEST(SurfaceEvaluator, HasNoNormalOnAPointOrALine)
{
    SurfaceData surface = saddle();
    surface.poles.assign(12, 3.0);
    expectNear(SurfaceEvaluator(surface).evaluate(1, 1).normal, {0, 0, 0});
    surface.poles = {0, 0, 0, 1, 0, 0, 2, 0, 0, 3, 0, 0};
    expectNear(SurfaceEvaluator(surface).evaluate(1, 1).normal, {0, 0, 0});
}

TEST(SurfaceEvaluator, GivesInAGridWhatItGivesPointByPoint)
{
    const SurfaceEvaluator sphere(eighthOfASphere());
    const std::vector<double> us{0, 0.2, 1};
    const std::vector<double> vs{0.1, 0.5, 0.9, 1};
    std::vector<SurfacePoint> grid(us.size() * vs.size());
    std::vector<Vec3d> points(grid.size());
    sphere.evaluateGrid(us, vs, grid);
    sphere.pointGrid(us, vs, points);
    for (std::size_t i = 0; i < us.size(); ++i) {
        for (std::size_t j = 0; j < vs.size(); ++j) {
            const SurfacePoint single = sphere.evaluate(us[i], vs[j]);
            const SurfacePoint& found = grid[i * vs.size() + j];
            expectNear(found.position, single.position);
            expectNear(found.du, single.du);
            expectNear(found.dv, single.dv);
            expectNear(found.normal, single.normal);
            expectNear(points[i * vs.size() + j], single.position);
        }
    }
}

TEST(SurfaceEvaluator, WrapsAPeriodicDirection)
{
    // A quadratic ring in u, straight in v: at whole u the middles of neighbouring control points.
    SurfaceData tube;
    tube.degreeU = 2;
    tube.degreeV = 1;
    tube.formU = SplineForm::Periodic;
    tube.knotsU = {-1, 0, 1, 2, 3, 4, 5};
    tube.knotsV = {0, 1};
    for (const auto& [x, y] : std::vector<std::pair<double, double>>{
             {1, 1}, {-1, 1}, {-1, -1}, {1, -1}, {1, 1}, {-1, 1}}) {
        tube.poles.insert(tube.poles.end(), {x, y, 0, x, y, 3});
    }
    const SurfaceEvaluator surface(tube);
    ASSERT_TRUE(surface.isValid());
    expectNear(surface.point(5, 0.5), {-1, 0, 1.5});
    expectNear(surface.point(-1, 2), {1, 0, 3});
}

TEST(SurfaceEvaluator, RefusesRecordsThatDoNotFit)
{
    const auto isValid = [](const SurfaceData& data) { return SurfaceEvaluator(data).isValid(); };
    EXPECT_FALSE(isValid(SurfaceData()));
    SurfaceData surface = saddle();
    surface.poles.pop_back();
    EXPECT_FALSE(isValid(surface));
    surface = saddle();
    surface.poles.resize(9);
    EXPECT_FALSE(isValid(surface));
    surface = saddle();
    surface.knotsV = {2, 0};
    EXPECT_FALSE(isValid(surface));
    surface = saddle();
    surface.degreeU = 3;
    EXPECT_FALSE(isValid(surface));
    surface = saddle();
    surface.knotsU[1] = std::numeric_limits<double>::infinity();
    EXPECT_FALSE(isValid(surface));
    surface = saddle();
    surface.poles[4] = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(isValid(surface));
}

} // namespace
