// The outlines of what is left of faces.
#pragma once

#include "host/geometry/mesh/boolean/HalfEdges.h"
#include "host/geometry/mesh/boolean/Solid.h"

#include <cstdint>
#include <span>
#include <vector>

namespace host::geometry {

/// Triangles of one face that hang together make a piece; a piece has an outline of one or more
/// loops.
class PieceOutlines {
public:
    /// `faces`: of each triangle of the solid. Sides must be closed.
    PieceOutlines(const Solid& solid, const HalfEdges& sides, std::span<const std::uint32_t> faces);

    struct Loop {
        std::uint32_t piece = 0; ///< its lowest triangle
        std::uint32_t begin = 0; ///< in `path`
        std::uint32_t end = 0;
        Vec3d area; ///< half the sum of cross products round it
    };
    const std::vector<Loop>& loops() const { return m_loops; }
    /// Sides, loop after loop, as they follow each other.
    const std::vector<std::uint32_t>& path() const { return m_path; }
    /// The side of the border that follows, found by going round the end of this one.
    std::uint32_t nextOnBorder(std::uint32_t side) const;
    /// The sum of the triangles of a piece.
    const Vec3d& areaOf(std::uint32_t piece) const { return m_areas[piece]; }

    /// Leaves out points that only break the straight border of two pieces; `isKept`: of each
    /// point, 1 where it stays in any case. Loops keep at least three.
    void straighten(const std::vector<std::uint8_t>& isKept);

private:
    bool isInside(std::uint32_t side) const
    {
        return m_pieces[side / 3] == m_pieces[m_sides.beyond(side) / 3];
    }

    void walk(std::uint32_t first, std::vector<std::uint8_t>& isWalked);
    std::vector<std::uint8_t> findBreaks(const std::vector<std::uint8_t>& isKept) const;

    const Solid& m_solid;
    const HalfEdges& m_sides;
    std::vector<std::uint32_t> m_pieces;
    std::vector<Vec3d> m_areas;
    std::vector<Loop> m_loops;
    std::vector<std::uint32_t> m_path;
};

} // namespace host::geometry
