// Vertices moved by a common transformation and by transformations of the components' own frames.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/math/Matrix4.h"
#include "host/math/Vec.h"

#include <cstdint>
#include <memory>
#include <span>

namespace host::geometry {

enum class ComponentKind : std::uint8_t { Vertex, Edge, Face };

struct ComponentMove {
    /// Of everything, in `space`: the components' own transformation comes first.
    Matrix4 common;
    /// In the frame of each component: about its centre, z along its normal, x along
    /// `localDirection` as far as that lies across the normal.
    Vec3d localTranslate;
    Vec3d localRotate; ///< radians, x first
    Vec3d localScale{1, 1, 1};
    Vec3d localDirection{1, 0, 0};
    /// From the points of the mesh to the space in which all this is meant.
    Matrix4 space;
};

/// Moves the vertices of the components (ascending numbers below the count of their kind). The
/// normal of a vertex is that of its faces' areas, of an edge the sum of its faces' unit normals. A
/// vertex of several components moves by the mean of what they do.
std::shared_ptr<const MeshData> moveComponents(const MeshData& mesh, ComponentKind kind,
                                               std::span<const std::uint32_t> components,
                                               const ComponentMove& move);

} // namespace host::geometry
