// Where the points of what is left come from, and the texture coordinates of new ones.
#pragma once

#include "host/geometry/mesh/boolean/HalfEdges.h"
#include "host/geometry/mesh/boolean/Solid.h"
#include "host/geometry/mesh/boolean/joinPieces.h"
#include "host/geometry/mesh/edit/MeshRewriter.h"

#include <array>
#include <cstdint>
#include <map>
#include <span>
#include <vector>

namespace host::geometry {

/// Points of a solid by the vertices of the meshes that it was cut of.
class PieceCorners {
public:
    /// `faces`: of each triangle of the solid.
    PieceCorners(const CutMeshes& before, const Solid& solid, std::span<const std::uint32_t> faces);

    /// The vertex that a point is; new ones count on from the vertices before, in the order of the
    /// lowest triangles on which they lie, then of their places.
    std::uint32_t vertexOf(std::uint32_t point) const { return m_vertices[point]; }
    bool isNew(std::uint32_t point) const
    {
        return m_vertices[point] >= m_before.mesh.topology->vertexCount;
    }
    /// New points, in the order of their numbers.
    std::span<const std::uint32_t> newPoints() const { return m_newPoints; }
    /// The corner before at which a corner of a triangle stands; kNone where it is new.
    std::uint32_t sourceCorner(std::uint32_t triangle, std::uint32_t point) const;
    /// The texture coordinate of a point in the face of a triangle, made where it is new.
    std::int32_t uvId(std::size_t set, std::uint32_t triangle, std::uint32_t point,
                      MeshRewriter& rewriter);

private:
    void findSources();
    void numberPoints();
    std::uint32_t vertexAt(std::uint32_t source, std::size_t corner) const
    {
        return m_before.mesh.topology->cornerVertex(cornerAt(source, corner));
    }
    std::uint32_t cornerAt(std::uint32_t source, std::size_t corner) const
    {
        return m_before.triangles.corners[3 * std::size_t{source} + corner];
    }
    Vec3d placeAt(std::uint32_t source, std::size_t corner) const
    {
        return m_before.grid.place((*m_before.mesh.points)[vertexAt(source, corner)]);
    }
    std::span<const std::uint32_t> sourcesOf(std::uint32_t point) const
    {
        return std::span(m_sources).subspan(m_firstSource[point],
                                            m_firstSource[point + 1] - m_firstSource[point]);
    }
    std::uint32_t sourceWithin(std::uint32_t triangle, std::uint32_t point) const;

    /// How a new point lies among the corners of the triangle before: on one of its sides or
    /// within.
    struct Lie {
        std::array<std::uint32_t, 3> corners{}; ///< of the mesh before
        std::array<double, 3> weights{};
        bool isWithin = true; ///< otherwise only the first two count
    };
    Lie lieOf(std::uint32_t source, std::uint32_t point) const;
    bool findSide(std::uint32_t source, std::uint32_t point, Lie& lie) const;

    const CutMeshes& m_before;
    const Solid& m_solid;
    std::span<const std::uint32_t> m_faces;
    std::vector<std::uint32_t> m_sources;     ///< triangles before on which each point lies
    std::vector<std::uint32_t> m_firstSource; ///< of each point, and their number
    std::vector<std::uint32_t> m_vertices;
    std::vector<std::uint32_t> m_newPoints;
    std::map<std::array<std::uint64_t, 4>, std::int32_t> m_newUvs;
};

} // namespace host::geometry
