// Where the new points of bevels are: at the slots of each corner, and on the rounds between.
#pragma once

#include "host/geometry/mesh/edit/BevelCorners.h"
#include "host/geometry/mesh/edit/MeshRewriter.h"
#include "host/geometry/mesh/edit/bevelEdges.h"

#include <cstdint>
#include <span>
#include <vector>

namespace host::geometry {

class BevelPoints {
public:
    /// Places all points; adds them to the rewriter: the slots of a corner, then its rounds.
    /// `points` are those of the mesh before, in the bevel's space. All must outlive this.
    BevelPoints(const Beveling& beveling, std::span<const Vec3d> points, BevelCorners& corners,
                MeshRewriter& rewriter);

    /// All points, the old ones first.
    std::size_t count() const { return m_points.size() + m_places.size(); }
    Vec3d place(std::uint32_t point) const
    {
        return point < m_points.size() ? m_points[point] : m_places[point - m_points.size()];
    }
    /// False where more than one segment meets more at a corner than strips can join, and where two
    /// strips meet two or more other edges.
    bool areExact() const { return m_areExact; }

    /// Adds the inner points of the round from a slot to the other side of an edge.
    void addRound(const BevelCorner& corner, std::uint32_t place, std::uint32_t fromSlot,
                  std::vector<std::uint32_t>& points) const;
    /// The points across a strip at one end of its edge, from the face on its left to the right.
    void across(const MeshEdge& ends, std::uint32_t edge, bool isStart,
                std::vector<std::uint32_t>& points) const;

private:
    double offset() const;
    std::uint32_t add(const Vec3d& place);
    void makeRounds(const BevelCorner& corner);
    std::uint32_t makeRound(const BevelCorner& corner, std::uint32_t from, std::uint32_t to);

    const Beveling& m_beveling;
    std::span<const Vec3d> m_points;
    BevelCorners& m_corners;
    MeshRewriter& m_rewriter;
    Matrix4 m_back;
    std::vector<Vec3d> m_places;               ///< of the new points, in the space
    std::vector<std::uint32_t> m_firstOfRound; ///< by place; the only one at a corner's first
    bool m_areExact = true;
};

} // namespace host::geometry
