#include "host/geometry/mesh/shape/cornerNormals.h"

#include "host/geometry/mesh/normals.h"

#include <algorithm>
#include <cmath>

namespace host::geometry {

bool isLockedNormal(const Vec3f& normal)
{
    constexpr float kLargest = 1e19F;
    const bool isGiven = std::fabs(normal.x) < kLargest && std::fabs(normal.y) < kLargest &&
                         std::fabs(normal.z) < kLargest;
    return isGiven && (normal.x != 0 || normal.y != 0 || normal.z != 0);
}

std::vector<Vec3f> lockedNormalsOfCorners(const MeshData& mesh)
{
    const std::span<const Vec3f> locked = lockedNormalsOf(mesh);
    if (std::none_of(locked.begin(), locked.end(), isLockedNormal)) {
        return {};
    }
    const NormalIds ids = computeNormalIds(mesh);
    std::vector<Vec3f> ofCorners(mesh.topology->corners.size(), kNotLocked);
    for (std::size_t corner = 0; corner < ofCorners.size(); ++corner) {
        const std::uint32_t id = ids.ofCorner[corner];
        if (id < locked.size() && isLockedNormal(locked[id])) {
            ofCorners[corner] = locked[id];
        }
    }
    return ofCorners;
}

std::shared_ptr<const std::vector<Vec3f>> lockedNormalsById(const MeshData& mesh,
                                                            std::span<const Vec3f> ofCorners)
{
    if (std::none_of(ofCorners.begin(), ofCorners.end(), isLockedNormal)) {
        return nullptr;
    }
    const NormalIds ids = computeNormalIds(mesh);
    std::vector<Vec3f> byId(ids.count, kNotLocked);
    for (std::size_t corner = 0; corner < ofCorners.size(); ++corner) {
        Vec3f& normal = byId[ids.ofCorner[corner]];
        if (!isLockedNormal(normal) && isLockedNormal(ofCorners[corner])) {
            normal = ofCorners[corner];
        }
    }
    return std::make_shared<const std::vector<Vec3f>>(std::move(byId));
}

} // namespace host::geometry
