// One face out of given points.
#pragma once

#include "host/geometry/mesh/primitives/SolidBuilder.h"

#include <cstdint>
#include <memory>
#include <span>

namespace host::geometry {

/// A face whose outer loop has the first `loopSizes[0]` points; every further loop is a hole.
/// Points beyond the loops belong to the last one. Edges follow the points and are hard. Texture
/// coordinates, where asked for, are the view along the axis that the face looks along most,
/// stretched to the unit square.
///
/// Failure  null when a loop has fewer than three points, or there are not as many points as the
///          loops need.
std::shared_ptr<const MeshData> makeFace(std::span<const Vec3f> points,
                                         std::span<const std::uint32_t> loopSizes, bool hasUvs,
                                         std::string_view uvSetName);

} // namespace host::geometry
