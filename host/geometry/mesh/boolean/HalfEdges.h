// The surface that triangles make: who lies beyond which side.
#pragma once

#include "host/geometry/mesh/boolean/Solid.h"

#include <cstdint>
#include <span>
#include <vector>

namespace host::geometry {

/// Side i of triangle t, from its corner i to the next, is half-edge 3 t + i.
class HalfEdges {
public:
    explicit HalfEdges(std::span<const SolidTriangle> triangles);

    /// Whether every side has exactly one other side, that runs the other way.
    bool isClosed() const { return m_isClosed; }
    std::uint32_t count() const { return static_cast<std::uint32_t>(m_beyond.size()); }
    /// The same side seen from the other triangle.
    std::uint32_t beyond(std::uint32_t side) const { return m_beyond[side]; }
    std::uint32_t start(std::uint32_t side) const
    {
        return m_triangles[side / 3].corners[side % 3];
    }
    std::uint32_t end(std::uint32_t side) const { return start(next(side)); }
    /// The side that follows in the same triangle.
    static std::uint32_t next(std::uint32_t side) { return side % 3 == 2 ? side - 2 : side + 1; }

private:
    std::span<const SolidTriangle> m_triangles;
    std::vector<std::uint32_t> m_beyond;
    bool m_isClosed = true;
};

} // namespace host::geometry
