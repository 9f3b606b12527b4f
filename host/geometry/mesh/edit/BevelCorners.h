// What becomes of the vertices of beveled edges: new ones about each, and which way they go.
#pragma once

#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/edit/vertexFan.h"
#include "host/math/Vec.h"

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace host::geometry {

/// A vertex where edges are beveled. Its edges and slots are runs in what all corners share; a slot
/// is a new vertex in place of it.
struct BevelCorner {
    std::uint32_t vertex = 0;
    std::uint32_t firstPlace = 0; ///< of its fan
    std::uint32_t edgeCount = 0;
    std::uint32_t cornerCount = 0; ///< of faces; one less than edges on a border
    std::uint32_t firstSlot = 0;
    std::uint32_t slotCount = 0;
    std::uint32_t beveledCount = 0;

    bool isClosed() const { return edgeCount == cornerCount; }
    /// With two slots one round lies between them, whatever the number of edges.
    bool hasOneRound() const { return slotCount == 2; }
};

class BevelCorners {
public:
    /// All must outlive this. `isBeveled`: by edge, each of two faces.
    BevelCorners(const MeshTopology& topology, const CornerLinks& links,
                 std::span<const Vec3d> points, const std::vector<bool>& isBeveled);

    /// Corners at both ends of the edges in turn; false where one cannot be beveled.
    bool make(std::span<const std::uint32_t> edges);
    /// The offset at which the first edge of a face has shrunk to a point; infinite where none
    /// does.
    double mostPossible() const;

    std::span<const BevelCorner> all() const { return m_corners; }
    /// Null where the vertex stays.
    const BevelCorner* ofVertex(std::uint32_t vertex) const
    {
        const std::uint32_t number = m_cornerOfVertex[vertex];
        return number == kNone ? nullptr : &m_corners[number];
    }
    const BevelCorner* at(std::uint32_t faceCorner) const
    {
        return ofVertex(m_topology.cornerVertex(faceCorner));
    }

    // --- the fan of a corner, place by place
    std::uint32_t edge(const BevelCorner& corner, std::uint32_t place) const
    {
        return m_edges[corner.firstPlace + place];
    }
    /// The face's corner between the edge and the next one.
    std::uint32_t faceCorner(const BevelCorner& corner, std::uint32_t place) const
    {
        return m_faceCorners[corner.firstPlace + place];
    }
    bool isBeveled(const BevelCorner& corner, std::uint32_t place) const
    {
        return m_isBeveled[edge(corner, place)];
    }
    /// The place of an edge that ends at the corner.
    std::uint32_t placeOfEdge(const BevelCorner& corner, std::uint32_t edge) const
    {
        return m_placeOfEnd[endOf(corner.vertex, edge)];
    }
    std::size_t placeCount() const { return m_edges.size(); }

    // --- slots: numbers within the corner
    /// On the clockwise side of an edge.
    std::uint32_t before(const BevelCorner& corner, std::uint32_t place) const
    {
        return m_before[corner.firstPlace + place];
    }
    /// On the other side; the same where the edge is not beveled.
    std::uint32_t after(const BevelCorner& corner, std::uint32_t place) const
    {
        return m_after[corner.firstPlace + place];
    }
    /// The slots of a face's corner: on the edge that arrives, and on the one that leaves.
    std::pair<std::uint32_t, std::uint32_t> slotsAt(const BevelCorner& corner,
                                                    std::uint32_t faceCorner) const
    {
        const std::uint32_t place = m_placeOfFaceCorner[faceCorner];
        const std::uint32_t next = place + 1 < corner.edgeCount ? place + 1 : 0;
        return {before(corner, next), after(corner, place)};
    }
    std::size_t slotCount() const { return m_motions.size(); }
    /// Where a slot goes, per unit of offset, while it has no point.
    const Vec3d& motion(const BevelCorner& corner, std::uint32_t slot) const
    {
        return m_motions[corner.firstSlot + slot];
    }
    /// Begins with the points of slots; `forgetMotions` ends it.
    void setPoint(const BevelCorner& corner, std::uint32_t slot, std::uint32_t point)
    {
        m_slotPoints.resize(m_motions.size());
        m_slotPoints[corner.firstSlot + slot] = point;
    }
    void forgetMotions() { std::vector<Vec3d>().swap(m_motions); }
    std::uint32_t point(const BevelCorner& corner, std::uint32_t slot) const
    {
        return m_slotPoints[corner.firstSlot + slot];
    }

private:
    std::size_t endOf(std::uint32_t vertex, std::uint32_t edge) const
    {
        return 2 * std::size_t{edge} + (m_topology.edges[edge].start == vertex ? 0 : 1);
    }
    bool makeCorner(std::uint32_t vertex, std::span<const std::uint32_t> faceCorners);
    void turnToBeveled();
    void takeFan(const BevelCorner& corner);
    void makeEndSlots(BevelCorner& corner);
    void makeGroupSlots(BevelCorner& corner);
    std::uint32_t addSlot(BevelCorner& corner, const Vec3d& motion);
    void setSlots(const BevelCorner& corner, std::uint32_t place, std::uint32_t slot);
    Vec3d motionOfGroup(const BevelCorner& corner, std::uint32_t place, std::uint32_t first,
                        std::uint32_t end);
    Vec3d directionOf(const BevelCorner& corner, std::uint32_t place) const;
    Vec3d inwards(const BevelCorner& corner, std::uint32_t place, bool isBefore);
    Vec3d normalOf(std::uint32_t face);
    Vec3d alongEdge(const BevelCorner& corner, std::uint32_t place) const;
    double mostPossible(std::uint32_t from) const;
    Vec3d motionOut(std::uint32_t faceCorner) const;
    Vec3d motionIn(std::uint32_t faceCorner) const;

    const MeshTopology& m_topology;
    const CornerLinks& m_links;
    std::span<const Vec3d> m_points;
    const std::vector<bool>& m_isBeveled;
    VertexFan m_fan; ///< of the corner that is being made
    std::vector<BevelCorner> m_corners;
    std::vector<std::uint32_t> m_cornerOfVertex;
    std::vector<std::uint32_t> m_placeOfFaceCorner;
    std::vector<std::uint32_t> m_placeOfEnd; ///< of an edge at its start (2 * edge) and at its end
    std::vector<Vec3d> m_normals;            ///< of faces, as far as they were asked for
    std::vector<bool> m_hasNormal;
    // fan after fan
    std::vector<std::uint32_t> m_edges;
    std::vector<std::uint32_t> m_faceCorners; ///< kNone after the last one of a border
    std::vector<std::uint32_t> m_before;
    std::vector<std::uint32_t> m_after;
    // corner after corner
    std::vector<Vec3d> m_motions;
    std::vector<std::uint32_t> m_slotPoints;
};

} // namespace host::geometry
