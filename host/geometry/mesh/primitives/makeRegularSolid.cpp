#include "host/geometry/mesh/primitives/platonicSolids.h"
#include "host/geometry/mesh/primitives/solidTables.h"

#include "host/math/angle.h"

#include <algorithm>
#include <map>
#include <numbers>

namespace host::geometry {
namespace {

/// A signed angle by its sine and cosine, in turns: -1/2 to 1/2.
double turnOf(double sine, double cosine)
{
    const double angle = angleOf(std::fabs(sine), cosine) / (2 * std::numbers::pi);
    return sine < 0 ? -angle : angle;
}

/// Longitude about y from +z, and latitude, over the unit square.
Vec2f sphericalPlace(const Vec3d& point)
{
    const double across = std::sqrt(point.x * point.x + point.z * point.z);
    return {static_cast<float>(0.5 + turnOf(point.x, point.z)),
            static_cast<float>(0.5 + 2 * turnOf(point.y, across))};
}

/// One coordinate for each point, and further ones, a turn on, for faces across the seam.
std::vector<std::uint32_t> addSphericalUvs(SolidBuilder& builder, const PolygonMesh& mesh)
{
    std::vector<Vec2f> places;
    for (const Vec3d& point : mesh.points) {
        places.push_back(sphericalPlace(point));
        builder.addUv(places.back().x, places.back().y);
    }
    std::map<std::uint32_t, std::uint32_t> further;
    std::vector<std::uint32_t> ids;
    for (std::uint32_t number = 0; number < mesh.faces.size(); ++number) {
        const auto face = mesh.faces.face(number);
        float last = 0;
        for (const std::uint32_t point : face) {
            last = std::max(last, places[point].x);
        }
        for (const std::uint32_t point : face) {
            if (last - places[point].x <= 0.5F) {
                ids.push_back(point);
                continue;
            }
            const auto [entry, isNew] = further.try_emplace(point, builder.uvCount());
            if (isNew) {
                builder.addUv(places[point].x + 1, places[point].y);
            }
            ids.push_back(entry->second);
        }
    }
    return ids;
}

PolygonMesh divided(const RegularSolidSettings& settings)
{
    PolygonMesh mesh = regularSolid(settings.solid);
    for (std::uint32_t i = 0; i < settings.subdivisions; ++i) {
        const std::size_t old = mesh.points.size();
        mesh = settings.division == SolidDivision::Quads       ? dividedToQuads(mesh)
               : settings.division == SolidDivision::Triangles ? dividedToTriangles(mesh)
                                                               : dividedToPie(mesh);
        for (std::size_t k = old; k < mesh.points.size(); ++k) {
            const Vec3d& point = mesh.points[k];
            mesh.points[k] =
                point * (1 - settings.inflation) + normalized(point) * settings.inflation;
        }
    }
    return mesh;
}

} // namespace

std::uint64_t regularSolidFaceCount(const RegularSolidSettings& settings)
{
    constexpr std::uint64_t kMost = std::uint64_t{1} << 31;
    const PolygonMesh mesh = regularSolid(settings.solid);
    if (settings.subdivisions == 0) {
        return mesh.faces.size();
    }
    const bool isTriangular = mesh.faces.corners.size() == 3 * std::size_t{mesh.faces.size()};
    std::uint64_t count = mesh.faces.corners.size();
    std::uint64_t factor = 4;
    if (settings.division == SolidDivision::Pie) {
        factor = 3;
    } else if (settings.division == SolidDivision::Triangles) {
        count = isTriangular ? 4 * std::uint64_t{mesh.faces.size()} : 4 * count;
    }
    for (std::uint32_t i = 1; i < settings.subdivisions && count < kMost; ++i) {
        count *= factor;
    }
    return std::min(kMost, count);
}

double edgeOverRadius(RegularSolid solid)
{
    const PolygonMesh mesh = regularSolid(solid);
    const auto face = mesh.faces.face(0);
    return length(mesh.points[face[0]] - mesh.points[face[1]]);
}

std::shared_ptr<const MeshData> makeRegularSolid(const RegularSolidSettings& settings,
                                                 const SolidPlacement& placement)
{
    const PolygonMesh mesh = divided(settings);
    SolidBuilder builder;
    std::vector<std::uint32_t> uvs;
    if (settings.hasUvs) {
        uvs = addSphericalUvs(builder, mesh);
    }
    for (const Vec3d& point : mesh.points) {
        builder.addPoint(point * settings.radius);
    }
    builder.addFaces(mesh.faces, uvs, settings.isSmooth);
    return builder.finish(placement, -placement.heightBaseline * settings.radius);
}

} // namespace host::geometry
