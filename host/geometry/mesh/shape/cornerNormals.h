// Locked normals corner by corner: ids change when edges turn hard or soft and when faces turn,
// corners are what a normal was given to.
#pragma once

#include "host/geometry/mesh/MeshData.h"

#include <memory>
#include <span>
#include <vector>

namespace host::geometry {

/// In place of a normal that is not locked.
inline constexpr Vec3f kNotLocked{1e20F, 1e20F, 1e20F};

/// False for what files write in place of normals that are not locked, and for the zero vector.
bool isLockedNormal(const Vec3f& normal);

/// The locked normal of each corner of the mesh, `kNotLocked` where it has none; empty where the
/// mesh has no locked normals at all.
std::vector<Vec3f> lockedNormalsOfCorners(const MeshData& mesh);

/// The same by normal ids of the mesh (whose corners they are), as `MeshData` keeps them: where
/// the corners of one id differ the first locked one holds. Null when none is locked.
std::shared_ptr<const std::vector<Vec3f>> lockedNormalsById(const MeshData& mesh,
                                                            std::span<const Vec3f> ofCorners);

} // namespace host::geometry
