// What clusters and soft modifications have in common: a handle that takes points along.
#pragma once

#include "host/nodes/deform/Deformation.h"

namespace host::nodes {

/// Positions of matrix, bindPreMatrix, geomMatrix and relative follow one another in a row.
inline constexpr std::size_t kHandleInputs = 4;

/// What the handle does to points of the geometry, in the geometry's own space: into the space in
/// which it was bound, back from where the handle was, along with it, and back.
inline Matrix4 handleMatrix(ComputeContext& context, std::size_t first,
                            const Deformation& deformation)
{
    const Matrix4 now = matrixOf(context.input(first));
    const Matrix4 bind = matrixOf(context.input(first + 1));
    const Value bound = context.element(first + 2, deformation.which());
    const Matrix4 move = bind * now;
    if (move == Matrix4{}) {
        return move;
    }
    const Matrix4 geometry = bound.isEmpty() ? deformation.worldMatrix() : matrixOf(bound);
    return geometry * move * inverse(geometry);
}

/// A relative handle leaves out what moved the nodes above it; which part of its matrix that is
/// does not reach the deformer: an approximation.
inline void noteRelative(ComputeContext& context, std::size_t first)
{
    if (flagInput(context, first + 3, false)) {
        context.noteUncomputed();
    }
}

} // namespace host::nodes
