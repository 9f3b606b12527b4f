// The space in which an operation works, given by a matrix.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/math/Matrix4.h"

#include <memory>

namespace host::nodes {

/// Whether what is taken into a space can be brought back. A shape that is scaled to nothing has a
/// world in which all its points are one.
inline bool hasWayBack(const Matrix4& space)
{
    return space == Matrix4{} || !(inverse(space) == Matrix4{});
}

/// An operation on a mesh and some of its components that works in a space; it gives none where
/// there is no way back.
template<class Operation>
auto inSpace(const Matrix4& space, const Operation& operation)
{
    using Result = std::shared_ptr<const geometry::MeshData>;
    return [&operation, isPossible = hasWayBack(space)](const geometry::MeshData& mesh,
                                                        const auto& components) {
        return isPossible ? Result(operation(mesh, components)) : Result();
    };
}

} // namespace host::nodes
