#include "host/geometry/tessellation/tessellate.h"
#include "tests/unit/host_geometry/tessellation/meshMeasures.h"
#include "tests/unit/host_geometry/tessellation/surfaceMaker.h"

#include <gtest/gtest.h>

#include <limits>

namespace host::geometry {
namespace {

using std::numbers::pi;
using test::areaOf;
using test::countAgainst;
using test::expectSound;
using test::openEdges;
using test::volumeOf;

/// Settings in which only the distance, or only the turn, counts.
TessellationSettings byChord(double tolerance)
{
    TessellationSettings settings;
    settings.chordTolerance = tolerance;
    settings.angleTolerance = settings.edgeAngleTolerance = kNoTolerance;
    settings.curvedSpanSegments = 1;
    return settings;
}
TessellationSettings byAngle(double angle)
{
    TessellationSettings settings = byChord(kNoTolerance);
    settings.angleTolerance = settings.edgeAngleTolerance = angle;
    return settings;
}

RenderMesh meshOf(const SurfaceData& surface, const TessellationSettings& settings = {})
{
    Tessellation result = tessellate(surface, settings);
    EXPECT_TRUE(result.notes.list().empty());
    expectSound(result.mesh);
    return result.mesh;
}

struct Shape {
    const char* name;
    SurfaceData surface;
    double area;
    double volume; ///< 0: open
};

std::vector<Shape> shapes()
{
    return {{"sphere", test::sphere(2), 16 * pi, 32 * pi / 3},
            {"cylinder", test::cylinder(2, 3), 12 * pi, 0},
            {"cone", test::cone(3, 4), 15 * pi, 0}, // slant height 5
            {"torus", test::torus(5, 1), 20 * pi * pi, 10 * pi * pi},
            {"disc", test::disc(2), 4 * pi, 0}};
}

TEST(Tessellate, AreasAndVolumesComeFourTimesNearerWithTwiceTheSegments)
{
    for (const Shape& shape : shapes()) {
        double lastArea = 0;
        double lastVolume = 0;
        for (const double degrees : {30.0, 15.0, 7.5, 3.75}) {
            const RenderMesh mesh = meshOf(shape.surface, byAngle(degrees * pi / 180));
            const double areaError = std::fabs(areaOf(mesh) - shape.area) / shape.area;
            // Cells span at most an angle a each way, so that their triangles' circles span a
            // sqrt(2) at most; areas seen from the centre are then right to a share of a^2 / 2.
            EXPECT_LT(areaError, std::pow(degrees * pi / 180, 2) / 2) << shape.name;
            const double volumeError =
                shape.volume > 0 ? std::fabs(volumeOf(mesh) - shape.volume) / shape.volume : 0;
            if (lastArea > 0) {
                EXPECT_LT(areaError, lastArea / 2) << shape.name;
                EXPECT_LE(volumeError, lastVolume / 2) << shape.name;
            }
            lastArea = areaError;
            lastVolume = volumeError;
        }
    }
}

TEST(Tessellate, NoTriangleIsFartherFromTheSphereThanTheToleranceSays)
{
    const double diagonal = 2 * std::sqrt(3.0);
    for (const double tolerance : {0.02, 0.01, 0.005, 0.0025}) {
        const RenderMesh mesh = meshOf(test::sphere(1), byChord(tolerance));
        double farthest = 0;
        for (std::size_t i = 0; i < mesh.indices.size(); i += 3) {
            const Vec3d middle = (toDouble(mesh.positions[mesh.indices[i]]) +
                                  toDouble(mesh.positions[mesh.indices[i + 1]]) +
                                  toDouble(mesh.positions[mesh.indices[i + 2]])) *
                                 (1.0 / 3);
            farthest = std::max(farthest, 1 - length(middle));
        }
        // Both directions bend: each keeps the tolerance on its own.
        EXPECT_LT(farthest, 2 * tolerance * diagonal);
        EXPECT_GT(farthest, 0.1 * tolerance * diagonal); // not finer than asked for either
    }
}

TEST(Tessellate, TheDefaultIsSane)
{
    // Quarter circles are single spans here: 90 degrees in steps of 15, run a little unevenly by
    // the rational quadratic, make 7 segments; 28 round, 14 from pole to pole, fans at the poles.
    const RenderMesh sphere = meshOf(test::sphere(2));
    EXPECT_EQ(sphere.indices.size() / 3, 2U * 28 * 14 - 2 * 28);
    // Nothing bends along the cylinder.
    EXPECT_EQ(meshOf(test::cylinder(1, 1)).indices.size() / 3, 2U * 28);
    EXPECT_EQ(meshOf(test::plane(3, 2)).indices.size() / 3, 2U);
    // z = 0.3 t (1 - t) over three units: turned by 11 degrees, and three chords would keep within
    // 0.003 of the diagonal; a visible bend has four segments.
    SurfaceData arch = test::plane(1, 1);
    arch.degreeU = 3;
    arch.knotsU = {0, 0, 0, 1, 1, 1};
    arch.poles = {0, 0, 0, 0, 1, 0, 1, 0, .1, 1, 1, .1, 2, 0, .1, 2, 1, .1, 3, 0, 0, 3, 1, 0};
    EXPECT_EQ(meshOf(arch).indices.size() / 3, 2U * 4);
}

TEST(Tessellate, ClosedSurfacesAreClosedByPosition)
{
    for (const Shape& shape : shapes()) {
        if (shape.volume > 0) {
            EXPECT_EQ(openEdges(meshOf(shape.surface)), 0U) << shape.name;
        }
    }
    // The rims alone are open: 28 segments each.
    EXPECT_EQ(openEdges(meshOf(test::cylinder(1, 1))), 56U);
    EXPECT_EQ(openEdges(meshOf(test::cone(1, 1))), 28U);
}

TEST(Tessellate, NormalsPointOutAndTrianglesTurnWithThem)
{
    const RenderMesh mesh = meshOf(test::sphere(2));
    for (std::size_t i = 0; i < mesh.positions.size(); ++i) {
        const Vec3d outward = normalized(toDouble(mesh.positions[i]));
        EXPECT_GT(dot(outward, toDouble(mesh.normals[i])), 1 - 1e-5);
    }
    EXPECT_EQ(countAgainst(mesh), 0U);
    TessellationSettings turned;
    turned.isOpposite = true;
    const RenderMesh inside = meshOf(test::sphere(2), turned);
    EXPECT_EQ(countAgainst(inside), 0U);
    EXPECT_NEAR(volumeOf(inside), -volumeOf(mesh), 1e-6);
    SurfaceData flipped = test::sphere(2);
    test::trim(flipped, {}, true); // no boundaries: all of it
    EXPECT_NEAR(volumeOf(meshOf(flipped)), -volumeOf(mesh), 0.05);
    EXPECT_NEAR(volumeOf(meshOf(flipped, turned)), volumeOf(mesh), 0.05);
}

TEST(Tessellate, TextureCoordinatesAreTheParametersOverTheDomain)
{
    SurfaceData surface = test::cylinder(1, 6);
    surface.knotsV = {-2, 4};
    const RenderMesh mesh = meshOf(surface);
    float lowest = 1;
    float highest = 0;
    for (std::size_t i = 0; i < mesh.positions.size(); ++i) {
        // Height runs evenly with v.
        EXPECT_NEAR(mesh.uvs[i].y, mesh.positions[i].z / 6, 1e-6);
        lowest = std::min(lowest, mesh.uvs[i].x);
        highest = std::max(highest, mesh.uvs[i].x);
    }
    // The seam has both.
    EXPECT_EQ(lowest, 0.0F);
    EXPECT_EQ(highest, 1.0F);
}

TEST(Tessellate, PolesAreFansWithAVertexPerTriangle)
{
    const RenderMesh mesh = meshOf(test::cone(2, 1));
    std::size_t atTip = 0;
    for (std::size_t i = 0; i < mesh.positions.size(); ++i) {
        if (mesh.positions[i] == Vec3f{0, 0, 1}) {
            ++atTip;
            EXPECT_EQ(mesh.uvs[i].y, 1.0F);
        }
    }
    EXPECT_EQ(atTip, 28U);
    EXPECT_EQ(mesh.indices.size() / 3, 28U);
}

TEST(Tessellate, ATwistedQuadIsCut)
{
    // z = x y over the unit square: its area is the integral of sqrt(1 + x^2 + y^2) there,
    // sqrt(3)/3 + 2/3 asinh-type terms; 1.2807891... by Simpson's rule below.
    SurfaceData saddle = test::plane(1, 1);
    saddle.poles[11] = 1;
    double area = 0;
    const int n = 200;
    for (int i = 0; i <= n; ++i) {
        for (int k = 0; k <= n; ++k) {
            const double weightX = i == 0 || i == n ? 1 : (i % 2 == 1 ? 4 : 2);
            const double weightY = k == 0 || k == n ? 1 : (k % 2 == 1 ? 4 : 2);
            const double x = static_cast<double>(i) / n, y = static_cast<double>(k) / n;
            area += weightX * weightY * std::sqrt(1 + x * x + y * y) / (9.0 * n * n);
        }
    }
    const RenderMesh coarse = meshOf(saddle);
    EXPECT_GT(coarse.indices.size(), 6U);
    EXPECT_NEAR(areaOf(coarse), area, 0.005);
    const double fine = areaOf(meshOf(saddle, byChord(1e-4)));
    EXPECT_NEAR(fine, area, 0.0005);
}

TEST(Tessellate, CreasesHaveTheNormalsOfBothSides)
{
    // A roof over the line x = 1, slopes of 45 degrees, two units deep; v along the ridge.
    SurfaceData roof = test::plane(1, 1);
    roof.knotsU = {0, 1, 2};
    roof.poles = {0, 0, 0, 0, 2, 0, 1, 0, 1, 1, 2, 1, 2, 0, 0, 2, 2, 0};
    const RenderMesh mesh = meshOf(roof);
    EXPECT_EQ(mesh.indices.size() / 3, 4U);
    EXPECT_EQ(mesh.positions.size(), 8U);
    EXPECT_EQ(openEdges(mesh), 6U); // closed along the ridge
    const float half = static_cast<float>(std::sqrt(0.5));
    for (std::size_t i = 0; i < mesh.indices.size(); ++i) {
        const Vec3f normal = mesh.normals[mesh.indices[i]];
        // Each triangle's three normals are its plane's.
        const Vec3d plane = normalized(test::areaVector(mesh, i - i % 3));
        EXPECT_NEAR(normal.x, plane.x, 1e-5);
        EXPECT_NEAR(std::fabs(normal.x), half, 1e-5);
        EXPECT_NEAR(normal.z, half, 1e-5);
    }
    // The same knots without a bend: one vertex a point.
    roof.poles[8] = roof.poles[11] = 0;
    EXPECT_EQ(meshOf(roof).positions.size(), 6U);
}

TEST(Tessellate, ExplicitNumbersAreKept)
{
    TessellationSettings settings = byChord(kNoTolerance);
    settings.u = {LineMode::PerSpan, 3};
    settings.v = {LineMode::PerSurface, 5};
    // Four spans of the circle, and one direction without any span inside.
    EXPECT_EQ(meshOf(test::cylinder(1, 1), settings).indices.size() / 3, 2U * 12 * 5);
    settings.u = {LineMode::PerSurface, 7};
    EXPECT_EQ(meshOf(test::cylinder(1, 1), settings).indices.size() / 3, 2U * 7 * 5);
    // Tolerances still refine: 12 segments of 30 degrees become 24 of about 15.
    settings = byAngle(17 * pi / 180);
    settings.u = {LineMode::PerSpan, 3};
    EXPECT_EQ(meshOf(test::cylinder(1, 1), settings).indices.size() / 3, 2U * 24);
    // By length: a line whose parameter runs unevenly is cut evenly.
    SurfaceData uneven = test::plane(4, 1);
    uneven.degreeU = 1;
    uneven.knotsU = {0, 1, 2};
    uneven.poles = {0, 0, 0, 0, 1, 0, 3, 0, 0, 3, 1, 0, 4, 0, 0, 4, 1, 0};
    settings = byChord(kNoTolerance);
    settings.u = {LineMode::PerSurfaceByLength, 4};
    const RenderMesh mesh = meshOf(uneven, settings);
    EXPECT_EQ(mesh.indices.size() / 3, 2U * 4);
    for (const Vec3f& place : mesh.positions) {
        EXPECT_NEAR(place.x, std::round(place.x), 1e-5);
    }
}

TEST(Tessellate, TheLimitOfTrianglesHolds)
{
    TessellationSettings settings = byAngle(0.01);
    settings.maxTriangles = 1000;
    const Tessellation result = tessellate(test::sphere(1), settings);
    EXPECT_LE(result.mesh.indices.size() / 3, 1000U);
    EXPECT_GT(result.mesh.indices.size() / 3, 200U);
    ASSERT_EQ(result.notes.list().size(), 1U);
    EXPECT_EQ(result.notes.list()[0], TessellationNote::Coarsened);
    expectSound(result.mesh);
}

TEST(Tessellate, DamagedSurfacesGiveNothing)
{
    SurfaceData none;
    SurfaceData damaged = test::sphere(1);
    damaged.poles[5] = std::numeric_limits<double>::quiet_NaN();
    SurfaceData shortened = test::sphere(1);
    shortened.poles.pop_back();
    for (const SurfaceData& surface : {none, damaged, shortened}) {
        const Tessellation result = tessellate(surface, {});
        EXPECT_TRUE(result.mesh.indices.empty());
        EXPECT_EQ(result.mesh.faceFirstTriangle, (std::vector<std::uint32_t>{0, 0}));
        EXPECT_EQ(result.notes.list().size(), 1U);
    }
    SurfaceData point = test::plane(0, 0);
    EXPECT_TRUE(tessellate(point, {}).mesh.indices.empty());
    SurfaceData thread = test::plane(1, 0);
    EXPECT_TRUE(tessellate(thread, {}).mesh.indices.empty());
}

} // namespace
} // namespace host::geometry
