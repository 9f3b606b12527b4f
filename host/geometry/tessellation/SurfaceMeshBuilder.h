// Collects the vertices and triangles of a surface.
#pragma once

#include "host/geometry/mesh/renderMesh.h"
#include "host/geometry/tessellation/GridLines.h"

namespace host::geometry {

class SurfaceMeshBuilder {
public:
    explicit SurfaceMeshBuilder(const SurfaceSheet& sheet);

    /// Lines of the grid whose points are evaluated together.
    static constexpr std::size_t kBlockLines = 16;

    const SurfaceSheet& sheet() const { return m_sheet; }
    std::uint32_t addVertex(const SurfacePoint& point, double u, double v);
    std::uint32_t addPoint(double u, double v) { return addVertex(m_sheet.at(u, v), u, v); }
    /// Counter-clockwise in the parameter plane.
    void addTriangle(std::uint32_t a, std::uint32_t b, std::uint32_t c)
    {
        m_mesh.indices.insert(m_mesh.indices.end(), {a, b, c});
    }
    /// The corners (u, v), (u', v), (u, v'), (u', v') of a cell.
    void addCell(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d,
                 bool swapsEdges);
    /// Every point of the lines, and two triangles per cell; lines that are twice have the normals
    /// of their sides.
    void addGrid(const GridLines& lines, bool swapsEdges);
    std::size_t triangleCount() const { return m_mesh.indices.size() / 3; }

    /// Turns what was added since triangle `firstTriangle` and vertex `firstVertex` over.
    void flip(std::size_t firstTriangle, std::size_t firstVertex);
    std::size_t vertexCount() const { return m_mesh.positions.size(); }

    /// The mesh as one face, without triangles that have two corners at one place (those at poles)
    /// or a corner that is not finite, and without vertices that no triangle uses. A vertex at
    /// which the surface has no normal takes that of its triangles.
    RenderMesh finish();

private:
    void dropDegenerate();
    void dropUnused();
    void completeNormals();

    const SurfaceSheet& m_sheet;
    double m_perU = 1, m_perV = 1; ///< of texture coordinates
    RenderMesh m_mesh;
};

} // namespace host::geometry
