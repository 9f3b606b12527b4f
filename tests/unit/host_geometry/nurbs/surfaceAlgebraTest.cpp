#include "host/geometry/nurbs/surfaceAlgebra.h"

#include "host/geometry/curve/knotAlgebra.h"
#include "host/geometry/nurbs/SurfaceEvaluator.h"
#include "host/geometry/nurbs/planarTrim.h"
#include "host/geometry/nurbs/primitives.h"
#include "host/geometry/nurbs/transformSpline.h"
#include "tests/unit/host_geometry/curve/splineMaker.h"

#include <cmath>

namespace {

using host::Vec3d;
using host::geometry::Reversal;
using host::geometry::RoundPrimitive;
using host::geometry::SplineRows;
using host::geometry::SurfaceData;
using host::geometry::SurfaceDirection;
using host::geometry::SurfaceEvaluator;
using test::expectNear;

SurfaceData halfSphere()
{
    RoundPrimitive primitive;
    primitive.spans = 4;
    primitive.endSweep = 3;
    return host::geometry::sphereSurface(primitive);
}

TEST(SurfaceAlgebra, InsertsKnotsInEitherDirectionWithoutMovingAnything)
{
    const SurfaceData sphere = halfSphere();
    for (const SurfaceDirection direction : {SurfaceDirection::U, SurfaceDirection::V}) {
        const SurfaceData finer = host::geometry::changed(
            sphere, direction, [](SplineRows& rows) { host::geometry::insertKnot(rows, 1.3, 2); });
        EXPECT_EQ(finer.poles.size() - sphere.poles.size(),
                  2 * 3 *
                      (direction == SurfaceDirection::U ? sphere.cvCountV() : sphere.cvCountU()));
        for (const double u : {0.1, 1.3, 3.9}) {
            for (const double v : {0.0, 1.3, 7.5}) {
                expectNear(SurfaceEvaluator(finer).point(u, v),
                           SurfaceEvaluator(sphere).point(u, v), 1e-14);
            }
        }
    }
}

TEST(SurfaceAlgebra, ReversesAndExchangesDirections)
{
    const SurfaceData sphere = halfSphere();
    const SurfaceEvaluator before(sphere);
    const double u = 0.7;
    const double v = 2.2;
    const Vec3d point = before.point(u, v);
    expectNear(SurfaceEvaluator(host::geometry::reversed(sphere, Reversal::U)).point(4 - u, v),
               point, 1e-14);
    expectNear(SurfaceEvaluator(host::geometry::reversed(sphere, Reversal::V)).point(u, 8 - v),
               point, 1e-14);
    expectNear(
        SurfaceEvaluator(host::geometry::reversed(sphere, Reversal::Both)).point(4 - u, 8 - v),
        point, 1e-14);
    const SurfaceEvaluator swapped(host::geometry::reversed(sphere, Reversal::Swap));
    expectNear(swapped.point(v, u), point, 1e-14);
    expectNear(swapped.evaluate(v, u).normal, before.evaluate(u, v).normal * -1, 1e-12);
}

/// The unit square in (u, v) with one boundary: a triangle, counter-clockwise.
SurfaceData trimmedSquare()
{
    const auto triangle = test::curve(1, {0, 1, 2, 3}, {0, 0, 0, 4, 0, 0, 0, 2, 0, 0, 0, 0});
    return host::geometry::planarTrimSurface(std::vector{triangle}, {});
}

double signedArea(const host::geometry::CurveData& loop)
{
    double sum = 0;
    for (std::size_t i = 0; i + 1 < loop.cvCount(); ++i) {
        const double* a = loop.poles.data() + 2 * i;
        sum += a[0] * a[3] - a[2] * a[1];
    }
    return sum / 2;
}

TEST(SurfaceAlgebra, TakesTrimsAlong)
{
    const SurfaceData square = trimmedSquare();
    ASSERT_EQ(square.trims.size(), 1U);
    EXPECT_NEAR(signedArea(square.trims[0]->boundaries[0].edges[0].curves2d[0]), 0.5, 1e-12);
    for (const Reversal reversal : {Reversal::U, Reversal::V, Reversal::Both, Reversal::Swap}) {
        const SurfaceData turned = host::geometry::reversed(square, reversal);
        ASSERT_EQ(turned.trims.size(), 1U);
        const auto& edge = turned.trims[0]->boundaries[0].edges[0];
        const SurfaceEvaluator surface(turned);
        const auto& loop = edge.curves2d[0];
        // Still counter-clockwise, and still over the same triangle in space.
        EXPECT_NEAR(signedArea(loop), 0.5, 1e-12);
        std::size_t corners = 0;
        for (std::size_t i = 0; i < 3; ++i) {
            const Vec3d p = surface.point(loop.poles[2 * i], loop.poles[2 * i + 1]);
            for (const Vec3d& corner : {Vec3d{0, 0, 0}, Vec3d{4, 0, 0}, Vec3d{0, 2, 0}}) {
                corners += host::length(p - corner) < 1e-12 ? 1 : 0;
            }
        }
        EXPECT_EQ(corners, 3U);
    }
}

TEST(SurfaceAlgebra, TakesCurvesOut)
{
    const SurfaceData sphere = halfSphere();
    const auto meridian = host::geometry::isoparametricCurve(sphere, SurfaceDirection::V, 2.5);
    const auto ring = host::geometry::isoparametricCurve(sphere, SurfaceDirection::U, 1.5);
    EXPECT_EQ(meridian.knots, sphere.knotsU);
    EXPECT_EQ(ring.knots, sphere.knotsV);
    const SurfaceEvaluator surface(sphere);
    expectNear(host::geometry::CurveEvaluator(meridian).point(1.1), surface.point(1.1, 2.5));
    expectNear(host::geometry::CurveEvaluator(ring).point(6.6), surface.point(1.5, 6.6));
}

TEST(SurfaceAlgebra, FindsTheNearestPoint)
{
    const SurfaceData sphere = host::geometry::exactSphere(RoundPrimitive());
    const Vec3d direction = host::normalized(Vec3d{0.3, -0.8, 0.5});
    const auto at = host::geometry::nearestParameters(sphere, direction * 3);
    expectNear(SurfaceEvaluator(sphere).point(at.u, at.v), direction, 1e-9);
    const SurfaceData plane = host::geometry::planeSurface({});
    const auto corner = host::geometry::nearestParameters(plane, {9, 1, 9});
    EXPECT_EQ(corner.u, 1);
    EXPECT_EQ(corner.v, 0);
}

TEST(SurfaceAlgebra, OffsetsAPlaneExactly)
{
    const SurfaceData moved = host::geometry::offset(host::geometry::planeSurface({}), 2.5);
    expectNear(SurfaceEvaluator(moved).point(0.3, 0.6), {-0.2, 2.5, -0.1});
    // A sphere of radius 1 becomes one of radius 1.5 at the places that are interpolated.
    const SurfaceData sphere = host::geometry::offset(halfSphere(), 0.5);
    EXPECT_NEAR(host::length(SurfaceEvaluator(sphere).point(2, 4)), 1.5, 1e-3);
}

TEST(TransformSpline, MovesControlPointsAndLeavesWeights)
{
    host::Matrix4 matrix = host::scaling({2, 3, 4}) * host::translation({1, 0, 0});
    const SurfaceData sphere = host::geometry::exactSphere(RoundPrimitive());
    const SurfaceEvaluator moved(host::geometry::transformed(sphere, matrix));
    const Vec3d before = SurfaceEvaluator(sphere).point(0.3, 1.7);
    expectNear(moved.point(0.3, 1.7), {2 * before.x + 1, 3 * before.y, 4 * before.z});
    const SurfaceData square = host::geometry::transformed(trimmedSquare(), matrix);
    const auto& edge = square.trims[0]->boundaries[0].edges[0];
    expectNear(host::geometry::CurveEvaluator(edge.curves3d[0]).point(1), {9, 0, 0});
    expectNear(host::geometry::CurveEvaluator(edge.curves2d[0]).point(1), {1, 0, 0});
}

} // namespace
