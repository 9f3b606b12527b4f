#include "host/geometry/mesh/texture/projectionPlanes.h"

#include <array>
#include <cmath>
#include <span>

namespace host::geometry {
namespace {

constexpr double kHalfOfRoot3 = 0.86602540378443864676;
constexpr double kGolden = 1.6180339887498948482;

constexpr std::array<Vec3d, 4> kTetrahedron{{{1, 1, 1}, {-1, 1, -1}, {1, -1, -1}, {-1, -1, 1}}};
constexpr std::array<Vec3d, 5> kPrism{
    {{0, 0, 1}, {kHalfOfRoot3, 0, -0.5}, {-kHalfOfRoot3, 0, -0.5}, {0, 1, 0}, {0, -1, 0}}};
constexpr std::array<Vec3d, 8> kOctahedron{{{1, 1, 1},
                                            {-1, -1, -1},
                                            {-1, 1, 1},
                                            {1, -1, -1},
                                            {1, 1, -1},
                                            {-1, -1, 1},
                                            {-1, 1, -1},
                                            {1, -1, 1}}};
constexpr std::array<Vec3d, 12> kDodecahedron{{{0, 1, kGolden},
                                               {0, -1, -kGolden},
                                               {0, 1, -kGolden},
                                               {0, -1, kGolden},
                                               {kGolden, 0, 1},
                                               {-kGolden, 0, -1},
                                               {-kGolden, 0, 1},
                                               {kGolden, 0, -1},
                                               {1, kGolden, 0},
                                               {-1, -kGolden, 0},
                                               {-1, kGolden, 0},
                                               {1, -kGolden, 0}}};

constexpr std::array<ProjectionPlane, 6> kCube{{
    {{0, 0, -1}, {0, 1, 0}, {1, 0, 0}},
    {{0, 0, 1}, {0, 1, 0}, {-1, 0, 0}},
    {{1, 0, 0}, {0, 0, -1}, {0, 1, 0}},
    {{1, 0, 0}, {0, 0, 1}, {0, -1, 0}},
    {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
    {{1, 0, 0}, {0, -1, 0}, {0, 0, -1}},
}};

/// With y as far up as it can be; straight from above and below as in the cube.
ProjectionPlane planeFor(const Vec3d& direction)
{
    const Vec3d normal = direction * (1 / length(direction));
    if (normal.x == 0 && normal.z == 0) {
        return kCube[normal.y > 0 ? 2 : 3];
    }
    const double across = std::sqrt(normal.x * normal.x + normal.z * normal.z);
    const Vec3d right{normal.z / across, 0, -normal.x / across};
    return {right, cross(normal, right), normal};
}

std::vector<ProjectionPlane> planesFor(std::span<const Vec3d> directions)
{
    std::vector<ProjectionPlane> planes;
    for (const Vec3d& direction : directions) {
        planes.push_back(planeFor(direction));
    }
    return planes;
}

} // namespace

std::vector<ProjectionPlane> projectionPlanes(std::uint32_t count)
{
    switch (count) {
    case kTetrahedron.size():
        return planesFor(kTetrahedron);
    case kPrism.size():
        return planesFor(kPrism);
    case kOctahedron.size():
        return planesFor(kOctahedron);
    case kDodecahedron.size():
        return planesFor(kDodecahedron);
    default:
        return {kCube.begin(), kCube.end()};
    }
}

} // namespace host::geometry
