#include "host/geometry/mesh/primitives/disc.h"
#include "host/geometry/mesh/primitives/divideFaces.h"

#include "host/math/angle.h"

#include <algorithm>
#include <numbers>

namespace host::geometry {
namespace {

/// The polygon of radius 1; its first point is left of +z, the others follow from there to the
/// right.
PolygonMesh polygon(std::uint32_t sides)
{
    PolygonMesh mesh;
    for (std::uint32_t k = 0; k < sides; ++k) {
        const double turn = (1.0 - 2.0 * k) / sides;
        const SineCosine at = sineCosine(std::numbers::pi * (0.5 + turn));
        mesh.points.push_back({at.cosine, 0, at.sine});
        mesh.faces.corners.push_back(k);
    }
    mesh.faces.endFace();
    return mesh;
}

void moveToCircle(PolygonMesh& mesh)
{
    for (const std::uint32_t point : mesh.newBorderPoints) {
        mesh.points[point] = normalized(mesh.points[point]);
    }
}

/// Triangles about the middle, each cut to bands from its outer edge inwards.
PolygonMesh banded(std::uint32_t sides, std::uint32_t cuts)
{
    const PolygonMesh outer = polygon(sides);
    PolygonMesh mesh;
    for (std::uint32_t band = 0; band <= cuts; ++band) {
        const double scale = 1 - static_cast<double>(band) / (cuts + 1);
        for (const Vec3d& point : outer.points) {
            mesh.points.push_back(point * scale);
        }
    }
    const auto center = static_cast<std::uint32_t>(mesh.points.size());
    mesh.points.push_back({});
    for (std::uint32_t band = 0; band <= cuts; ++band) {
        for (std::uint32_t k = 0; k < sides; ++k) {
            const std::uint32_t first = band * sides + k;
            const std::uint32_t second = band * sides + (k + 1) % sides;
            if (band == cuts) {
                mesh.faces.add({first, second, center});
            } else {
                mesh.faces.add({first, second, second + sides, first + sides});
            }
        }
    }
    return mesh;
}

/// Triangles about the middle, their outer edges cut.
PolygonMesh sliced(std::uint32_t sides, std::uint32_t cuts)
{
    const PolygonMesh outer = polygon(sides);
    PolygonMesh cut;
    for (std::uint32_t k = 0; k < sides; ++k) {
        const Vec3d& first = outer.points[k];
        const Vec3d& second = outer.points[(k + 1) % sides];
        for (std::uint32_t i = 0; i < cuts; ++i) {
            const double part = static_cast<double>(i) / cuts;
            cut.faces.corners.push_back(static_cast<std::uint32_t>(cut.points.size()));
            cut.points.push_back(first * (1 - part) + second * part);
        }
    }
    cut.faces.endFace();
    return dividedToPie(cut);
}

PolygonMesh divided(const DiscSettings& disc)
{
    if (disc.subdivisions == 0) {
        return polygon(disc.sides);
    }
    if (disc.division == DiscDivision::Caps) {
        return banded(disc.sides, disc.subdivisions);
    }
    if (disc.division == DiscDivision::Pie) {
        return sliced(disc.sides, disc.subdivisions);
    }
    PolygonMesh mesh = polygon(disc.sides);
    for (std::uint32_t i = 0; i < disc.subdivisions; ++i) {
        mesh = disc.division == DiscDivision::Triangles ? dividedToTriangles(mesh)
                                                        : dividedToQuads(mesh);
        if (disc.division == DiscDivision::Circle) {
            moveToCircle(mesh);
        }
    }
    return mesh;
}

} // namespace

std::uint64_t discFaceCount(const DiscSettings& settings)
{
    constexpr std::uint64_t kMost = std::uint64_t{1} << 31;
    const std::uint64_t sides = settings.sides;
    if (settings.subdivisions == 0) {
        return 1;
    }
    if (settings.division == DiscDivision::Caps || settings.division == DiscDivision::Pie) {
        const std::uint64_t more = settings.division == DiscDivision::Caps ? 1 : 0;
        return std::min(kMost, sides * (settings.subdivisions + more));
    }
    std::uint64_t count = sides * (settings.division == DiscDivision::Triangles ? 4 : 1);
    for (std::uint32_t i = 1; i < settings.subdivisions && count < kMost; ++i) {
        count *= 4;
    }
    return std::min(kMost, count);
}

std::shared_ptr<const MeshData> makeDisc(const DiscSettings& settings,
                                         const SolidPlacement& placement)
{
    const PolygonMesh mesh = divided(settings);
    SolidBuilder builder;
    for (const Vec3d& point : mesh.points) {
        builder.addPoint(point * settings.radius);
        builder.addUv(static_cast<float>(0.5 + 0.5 * point.x),
                      static_cast<float>(0.5 - 0.5 * point.z));
    }
    builder.addFaces(mesh.faces, mesh.faces.corners, true);
    return builder.finish(placement, 0);
}

} // namespace host::geometry
