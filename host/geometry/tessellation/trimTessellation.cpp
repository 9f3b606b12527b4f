#include "host/geometry/tessellation/trimTessellation.h"

#include "host/geometry/tessellation/TrimGrid.h"

#include <algorithm>

namespace host::geometry {
namespace {

constexpr std::uint32_t kNone = 0xffffffff;

/// The parameter plane, stretched to the surface's lengths.
class StretchedPlane {
public:
    explicit StretchedPlane(const SurfaceSheet& sheet)
        : m_low{sheet.evaluator().startU(), sheet.evaluator().startV()}
    {
        // A side of no length still needs places that can be told apart.
        constexpr double kSlimmest = 1.0 / 64;
        const double longer = std::max(sheet.lengthU(), sheet.lengthV());
        const double whole = longer > 0 ? longer : 1;
        m_perU =
            std::max(sheet.lengthU(), kSlimmest * whole) / (sheet.evaluator().endU() - m_low.x);
        m_perV =
            std::max(sheet.lengthV(), kSlimmest * whole) / (sheet.evaluator().endV() - m_low.y);
    }
    PlanePosition toPlane(double u, double v) const
    {
        return {(u - m_low.x) * m_perU, (v - m_low.y) * m_perV};
    }
    PlanePosition toParameters(const PlanePosition& place) const
    {
        return {m_low.x + place.x / m_perU, m_low.y + place.y / m_perV};
    }

private:
    PlanePosition m_low;
    double m_perU = 1, m_perV = 1;
};

/// Fills the loops: cells of the grid, and triangles between them and the loops.
class RegionFilling {
public:
    RegionFilling(std::span<const BoundaryLoop> loops, const SurfaceSheet& sheet,
                  const GridLines& lines)
        : m_loops(loops), m_plane(sheet), m_grid(lines, loops)
    {
    }

    bool triangulate();
    void build(bool swapsEdges, SurfaceMeshBuilder& builder);

private:
    void addLoops();
    void addNodes();
    void addOutline();
    void addNodeVertices(SurfaceMeshBuilder& builder);
    void addBlock(std::size_t i, std::size_t endI, std::size_t k, std::size_t endK,
                  SurfaceMeshBuilder& builder);
    bool hasNodes(std::size_t i, std::size_t endI, std::size_t k, std::size_t endK) const;
    bool isSurrounded(std::size_t i, std::size_t k) const
    {
        return i > 0 && k > 0 && m_grid.isCell(i - 1, k - 1) && m_grid.isCell(i, k - 1) &&
               m_grid.isCell(i - 1, k) && m_grid.isCell(i, k);
    }
    std::size_t nodeIndex(std::size_t i, std::size_t k) const { return i * m_grid.rows() + k; }

    std::span<const BoundaryLoop> m_loops;
    StretchedPlane m_plane;
    TrimGrid m_grid;
    std::vector<PlanePosition> m_points; ///< in the plane
    std::vector<PlanePosition> m_places; ///< parameters of the loops' points
    std::vector<PlaneSegment> m_segments;
    std::vector<std::uint32_t> m_pointOfNode;
    std::vector<std::uint32_t> m_vertexOfNode;
    std::vector<SurfacePoint> m_block;
    PlaneTriangulation m_filling;
};

void RegionFilling::addLoops()
{
    for (const BoundaryLoop& loop : m_loops) {
        std::vector<std::uint32_t> indices;
        for (const PlanePosition& place : loop.points) {
            indices.push_back(static_cast<std::uint32_t>(m_points.size()));
            m_points.push_back(m_plane.toPlane(place.x, place.y));
            m_places.push_back(place);
        }
        appendLoop(indices, loop.isHole, m_segments);
    }
}

/// Nodes that are not in the middle of four cells take part in the triangulation.
void RegionFilling::addNodes()
{
    m_pointOfNode.assign(m_grid.columns() * m_grid.rows(), kNone);
    for (std::size_t i = 0; i < m_grid.columns(); ++i) {
        for (std::size_t k = 0; k < m_grid.rows(); ++k) {
            if (m_grid.isNode(i, k) && !isSurrounded(i, k)) {
                m_pointOfNode[nodeIndex(i, k)] = static_cast<std::uint32_t>(m_points.size());
                m_points.push_back(m_plane.toPlane(m_grid.us()[i], m_grid.vs()[k]));
            }
        }
    }
}

/// The outline of the cells is a hole: each cell's sides clockwise, where no other cell is.
void RegionFilling::addOutline()
{
    const auto side = [&](std::size_t i, std::size_t k, std::size_t toI, std::size_t toK) {
        m_segments.push_back(
            {m_pointOfNode[nodeIndex(i, k)], m_pointOfNode[nodeIndex(toI, toK)], true});
    };
    for (std::size_t i = 0; i + 1 < m_grid.columns(); ++i) {
        for (std::size_t k = 0; k + 1 < m_grid.rows(); ++k) {
            if (!m_grid.isCell(i, k)) {
                continue;
            }
            if (i == 0 || !m_grid.isCell(i - 1, k)) {
                side(i, k, i, k + 1);
            }
            if (!m_grid.isCell(i, k + 1)) {
                side(i, k + 1, i + 1, k + 1);
            }
            if (!m_grid.isCell(i + 1, k)) {
                side(i + 1, k + 1, i + 1, k);
            }
            if (k == 0 || !m_grid.isCell(i, k - 1)) {
                side(i + 1, k, i, k);
            }
        }
    }
}

bool RegionFilling::triangulate()
{
    addLoops();
    addNodes();
    addOutline();
    auto filling = triangulatePlane(m_points, m_segments, FillRule::OuterMinusHoles);
    if (filling) {
        m_filling = std::move(*filling);
    }
    return bool(filling);
}

/// Adds the nodes that are used, block by block.
void RegionFilling::addNodeVertices(SurfaceMeshBuilder& builder)
{
    constexpr std::size_t kBlock = SurfaceMeshBuilder::kBlockLines;
    m_vertexOfNode.assign(m_grid.columns() * m_grid.rows(), kNone);
    for (std::size_t i = 0; i < m_grid.columns(); i += kBlock) {
        for (std::size_t k = 0; k < m_grid.rows(); k += kBlock) {
            const std::size_t endI = std::min(i + kBlock, m_grid.columns());
            const std::size_t endK = std::min(k + kBlock, m_grid.rows());
            if (hasNodes(i, endI, k, endK)) {
                addBlock(i, endI, k, endK, builder);
            }
        }
    }
}

/// Evaluates a block of nodes together.
void RegionFilling::addBlock(std::size_t i, std::size_t endI, std::size_t k, std::size_t endK,
                             SurfaceMeshBuilder& builder)
{
    const auto us = std::span(m_grid.us()).subspan(i, endI - i);
    const auto vs = std::span(m_grid.vs()).subspan(k, endK - k);
    m_block.resize(us.size() * vs.size());
    builder.sheet().block(us, vs, m_block);
    for (std::size_t n = 0; n < m_block.size(); ++n) {
        const std::size_t column = n / vs.size();
        const std::size_t row = n % vs.size();
        if (m_grid.isNode(i + column, k + row)) {
            m_vertexOfNode[nodeIndex(i + column, k + row)] =
                builder.addVertex(m_block[n], us[column], vs[row]);
        }
    }
}

bool RegionFilling::hasNodes(std::size_t i, std::size_t endI, std::size_t k, std::size_t endK) const
{
    for (; i < endI; ++i) {
        for (std::size_t row = k; row < endK; ++row) {
            if (m_grid.isNode(i, row)) {
                return true;
            }
        }
    }
    return false;
}

void RegionFilling::build(bool swapsEdges, SurfaceMeshBuilder& builder)
{
    std::vector<std::uint32_t> vertexOf(m_points.size(), kNone);
    for (std::size_t i = 0; i < m_places.size(); ++i) {
        if (m_filling.standIn[i] == i) {
            vertexOf[i] = builder.addPoint(m_places[i].x, m_places[i].y);
        }
    }
    addNodeVertices(builder);
    for (std::size_t node = 0; node < m_pointOfNode.size(); ++node) {
        if (m_pointOfNode[node] != kNone) {
            vertexOf[m_pointOfNode[node]] = m_vertexOfNode[node];
        }
    }
    for (const PlanePosition& added : m_filling.added) {
        const PlanePosition place = m_plane.toParameters(added);
        vertexOf.push_back(builder.addPoint(place.x, place.y));
    }
    for (std::size_t i = 0; i + 1 < m_grid.columns(); ++i) {
        for (std::size_t k = 0; k + 1 < m_grid.rows(); ++k) {
            if (m_grid.isCell(i, k)) {
                const std::uint32_t* node = &m_vertexOfNode[nodeIndex(i, k)];
                builder.addCell(node[0], node[m_grid.rows()], node[1], node[m_grid.rows() + 1],
                                swapsEdges);
            }
        }
    }
    const std::vector<std::uint32_t>& triangles = m_filling.triangles;
    for (std::size_t i = 0; i < triangles.size(); i += 3) {
        builder.addTriangle(vertexOf[triangles[i]], vertexOf[triangles[i + 1]],
                            vertexOf[triangles[i + 2]]);
    }
}

} // namespace

bool addTrimRegion(std::span<const BoundaryLoop> loops, const SurfaceSheet& sheet,
                   const GridLines& lines, const TessellationSettings& settings,
                   SurfaceMeshBuilder& builder)
{
    RegionFilling filling(loops, sheet, lines);
    if (!filling.triangulate()) {
        return false;
    }
    filling.build(settings.swapsEdges, builder);
    return true;
}

} // namespace host::geometry
