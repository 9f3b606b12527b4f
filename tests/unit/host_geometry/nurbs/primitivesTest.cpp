#include "host/geometry/nurbs/primitives.h"

#include "host/geometry/nurbs/SurfaceEvaluator.h"
#include "tests/unit/host_geometry/curve/splineMaker.h"

#include <cmath>
#include <functional>
#include <numbers>

namespace {

using host::Vec3d;
using host::geometry::PlanePrimitive;
using host::geometry::RoundPrimitive;
using host::geometry::SplineForm;
using host::geometry::SurfaceData;
using host::geometry::SurfaceEvaluator;
using host::geometry::SurfacePoint;
using std::numbers::pi;
using test::expectNear;

Vec3d pole(const SurfaceData& surface, std::size_t u, std::size_t v)
{
    const std::size_t at = (u * surface.cvCountV() + v) * surface.stride();
    return {surface.poles[at], surface.poles[at + 1], surface.poles[at + 2]};
}

/// What `error` says of every point of a fine grid, and that the normal is `outwards` of it.
void expectOn(const SurfaceData& surface, const std::function<double(const Vec3d&)>& error,
              const std::function<Vec3d(const Vec3d&)>& outwards)
{
    const SurfaceEvaluator evaluator(surface);
    ASSERT_TRUE(evaluator.isValid());
    for (int i = 0; i <= 24; ++i) {
        for (int j = 0; j <= 24; ++j) {
            const SurfacePoint found = evaluator.evaluate(
                evaluator.startU() + (evaluator.endU() - evaluator.startU()) * i / 24,
                evaluator.startV() + (evaluator.endV() - evaluator.startV()) * j / 24);
            EXPECT_LT(std::fabs(error(found.position)), 1e-13);
            EXPECT_GT(host::dot(found.normal, host::normalized(outwards(found.position))), 0.999);
        }
    }
}

TEST(Primitives, SphereIsPointByPointThatOfSavedScenes)
{
    // Control points of a default sphere whose history was deleted.
    RoundPrimitive primitive;
    primitive.spans = 4;
    const SurfaceData sphere = host::geometry::sphereSurface(primitive);
    EXPECT_EQ(sphere.formU, SplineForm::Open);
    EXPECT_EQ(sphere.formV, SplineForm::Periodic);
    EXPECT_EQ(sphere.knotsU, (std::vector<double>{0, 0, 0, 1, 2, 3, 4, 4, 4}));
    EXPECT_EQ(sphere.knotsV, (std::vector<double>{-2, -1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
    ASSERT_EQ(sphere.poles.size(), 77U * 3);
    expectNear(pole(sphere, 0, 5), {0, -1, 0}, 1e-15);
    expectNear(pole(sphere, 1, 0), {0.19991679083637276, -1, -0.19991679083637284}, 1e-14);
    expectNear(pole(sphere, 1, 1), {0.28272503694690354, -1, 0}, 1e-14);
    expectNear(pole(sphere, 1, 3), {0, -1, 0.2827250369469036}, 1e-14);
    expectNear(pole(sphere, 2, 0),
               {0.61642997969058977, -0.78361162489122427, -0.61642997969058977}, 1e-14);
    expectNear(pole(sphere, 3, 2), {0.86720244749154174, 0, 0.86720244749154207}, 1e-14);
    expectNear(pole(sphere, 3, 3), {0, 0, 1.2264094625656805}, 1e-14);
}

TEST(Primitives, TorusIsPointByPointThatOfSavedScenes)
{
    RoundPrimitive primitive;
    primitive.spans = 4;
    primitive.heightRatio = 0.5;
    const SurfaceData torus = host::geometry::torusSurface(primitive);
    EXPECT_EQ(torus.formU, SplineForm::Periodic);
    EXPECT_EQ(torus.knotsU, (std::vector<double>{-2, -1, 0, 1, 2, 3, 4, 5, 6}));
    ASSERT_EQ(torus.poles.size(), 77U * 3);
    expectNear(pole(torus, 0, 0), {0.19590290622280596, 0, -0.19590290622280626}, 1e-14);
    expectNear(pole(torus, 1, 0), {0.78361162489122382, -0.75, -0.78361162489122504}, 1e-14);
    expectNear(pole(torus, 2, 1), {1.9393398282201788, 0, 0}, 1e-14);
    expectNear(pole(torus, 3, 2), {0.78361162489122416, 0.75, 0.78361162489122416}, 1e-14);
}

TEST(Primitives, CylinderAndConeRunFromBelowOverTheirLength)
{
    RoundPrimitive primitive;
    const SurfaceData cylinder = host::geometry::cylinderSurface(primitive);
    EXPECT_EQ(cylinder.knotsU, (std::vector<double>{0, 0, 0, 2, 2, 2}));
    expectNear(pole(cylinder, 0, 0), {0.78361162489122382, -1, -0.78361162489122504}, 1e-14);
    expectNear(pole(cylinder, 1, 1), {1.1081941875543879, -1.0 / 3, 0}, 1e-14);
    // Of a cone in saved scenes: the slant is sqrt 5 = 2.2360679774997898 long, and a third of the
    // way up the control points stand at two thirds: 0.73879612503625847.
    const SurfaceData cone = host::geometry::coneSurface(primitive);
    EXPECT_NEAR(cone.knotsU.back(), 2.2360679774997898, 1e-15);
    expectNear(pole(cone, 1, 1), {0.73879612503625847, -1.0 / 3, 0}, 1e-14);
    expectNear(pole(cone, 3, 4), {0, 1, 0}, 1e-15);
    primitive.spans = 8;
    const SurfaceData finer = host::geometry::cylinderSurface(primitive);
    EXPECT_EQ(finer.knotsU,
              (std::vector<double>{0, 0, 0, 0.25, 0.5, 0.75, 1, 1.25, 1.5, 1.75, 2, 2, 2}));
}

TEST(Primitives, PlaneRunsAcrossThenAlong)
{
    PlanePrimitive primitive;
    primitive.patchesU = 5;
    const SurfaceData plane = host::geometry::planeSurface(primitive);
    // Of a stored plane: -0.5 first in x, +0.5 in z, then towards -z; Greville parameters 1/15,
    // 1/5.
    expectNear(pole(plane, 0, 0), {-0.5, 0, 0.5}, 1e-15);
    expectNear(pole(plane, 0, 1), {-0.5, 0, 0.5 - 1.0 / 3}, 1e-15);
    expectNear(pole(plane, 1, 0), {-0.5 + 1.0 / 15, 0, 0.5}, 1e-15);
    expectNear(pole(plane, 2, 0), {-0.3, 0, 0.5}, 1e-15);
    expectNear(SurfaceEvaluator(plane).evaluate(0.2, 0.7).normal, {0, 1, 0});
}

TEST(Primitives, BoxFacesOutwards)
{
    PlanePrimitive primitive;
    primitive.pivot = {1, 2, 3};
    primitive.width = 2;
    primitive.lengthRatio = 3;
    const auto sides = host::geometry::boxSurfaces(primitive, 2);
    Vec3d sum;
    for (const SurfaceData& side : sides) {
        const SurfacePoint middle = SurfaceEvaluator(side).evaluate(0.5, 0.5);
        const Vec3d away = middle.position - primitive.pivot;
        EXPECT_NEAR(host::dot(host::normalized(away), middle.normal), 1, 1e-12);
        sum = sum + Vec3d{std::fabs(away.x), std::fabs(away.y), std::fabs(away.z)};
    }
    expectNear(sum, {2, 4, 6}); // two sides each at 1, 2 and 3
}

TEST(Primitives, NearOnesPassThroughTheTrueShapeAtTheirKnots)
{
    RoundPrimitive primitive;
    primitive.pivot = {3, -1, 2};
    primitive.axis = {1, 2, -2};
    primitive.radius = 2.5;
    primitive.startSweep = 0.5;
    primitive.endSweep = 4;
    primitive.spans = 3;
    const SurfaceEvaluator sphere(host::geometry::sphereSurface(primitive));
    for (int u = 0; u <= 3; ++u) {
        for (int v = 0; v <= 8; ++v) {
            EXPECT_NEAR(host::length(sphere.point(u, v) - primitive.pivot), 2.5, 1e-14);
        }
    }
}

TEST(Primitives, ExactOnesLieOnTheirQuadrics)
{
    RoundPrimitive primitive;
    const auto fromAxis = [](const Vec3d& p) { return std::sqrt(p.x * p.x + p.z * p.z); };
    expectOn(
        host::geometry::exactSphere(primitive), [](const Vec3d& p) { return host::length(p) - 1; },
        [](const Vec3d& p) { return p; });
    expectOn(
        host::geometry::exactCylinder(primitive), [&](const Vec3d& p) { return fromAxis(p) - 1; },
        [](const Vec3d& p) {
            return Vec3d{p.x, 0, p.z};
        });
    const auto onTorus = [&](const Vec3d& p) {
        const double out = fromAxis(p) - 1;
        return std::sqrt(out * out + p.y * p.y) - 0.25;
    };
    primitive.heightRatio = 0.25;
    expectOn(host::geometry::exactTorus(primitive), onTorus, [&](const Vec3d& p) {
        const double out = 1 - 1 / fromAxis(p);
        return Vec3d{p.x * out, p.y, p.z * out};
    });
    expectOn(
        host::geometry::exactDisc(primitive),
        [&](const Vec3d& p) { return std::fabs(p.y) + std::fmax(fromAxis(p) - 1, 0); },
        [](const Vec3d&) {
            return Vec3d{0, 1, 0};
        });
}

TEST(Primitives, ExactConeHasItsSlantUpToTheTip)
{
    // Height 2 over radius 1: radius (1 - y) / 2 at height y; normal (2, 1) / sqrt 5.
    const SurfaceEvaluator cone(host::geometry::exactCone(RoundPrimitive()));
    for (int i = 0; i <= 8; ++i) {
        const SurfacePoint found = cone.evaluate(cone.endU() * i / 8, 0);
        EXPECT_NEAR(found.position.x, (1 - found.position.y) / 2, 1e-14);
        expectNear(found.normal, {2 / std::sqrt(5.0), 1 / std::sqrt(5.0), 0}, 1e-9);
    }
}

TEST(Primitives, TakeOddNumbers)
{
    for (const double odd : {0.0, -1.0, std::nan(""), 1e300}) {
        RoundPrimitive primitive;
        primitive.radius = odd;
        primitive.sections = 1;
        primitive.spans = 0;
        primitive.endSweep = odd;
        primitive.axis = {0, 0, 0};
        for (const SurfaceData& surface :
             {host::geometry::sphereSurface(primitive), host::geometry::cylinderSurface(primitive),
              host::geometry::coneSurface(primitive), host::geometry::torusSurface(primitive)}) {
            if (odd == 0 || odd == -1) {
                EXPECT_TRUE(host::geometry::isValidSurface(surface)) << odd;
            }
        }
    }
    PlanePrimitive plane;
    plane.patchesU = 0;
    plane.patchesV = 2000000000;
    plane.degree = 7;
    EXPECT_TRUE(host::geometry::isValidSurface(host::geometry::planeSurface(plane)));
}

} // namespace
