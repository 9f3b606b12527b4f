// Offsets of points as nodes store them: a multi of three numbers each, some of them connected.
#pragma once

#include "host/types/ComputeContext.h"

#include "host/geometry/mesh/MeshData.h"

#include <algorithm>
#include <vector>

namespace host::nodes {

/// Sparse offsets of points: what is stored, and what flows in.
class PointOffsets {
public:
    /// `offsets` is the position of the multi, those of its children x, y and z follow one another
    /// from `children` on.
    PointOffsets(ComputeContext& context, std::size_t offsets, std::size_t children);

    bool empty() const { return m_stored == nullptr && m_living.empty(); }
    /// True where none is for a point beyond so many.
    bool areWithin(std::size_t pointCount) const
    {
        return (m_stored == nullptr || m_stored->endIndex() <= pointCount) &&
               std::all_of(m_living.begin(), m_living.end(),
                           [pointCount](const Living& tweak) { return tweak.point < pointCount; });
    }
    /// The mesh with its points moved; the mesh itself where nothing moves.
    Shared<geometry::MeshData> applied(const Shared<geometry::MeshData>& mesh) const;

private:
    /// The offset of a point that something is connected to.
    struct Living {
        std::size_t point = 0;
        Vec3f offset;
    };

    const NumericArray* m_stored = nullptr;
    std::vector<Living> m_living;
};

} // namespace host::nodes
