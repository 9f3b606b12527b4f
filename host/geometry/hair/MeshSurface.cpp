#include "host/geometry/hair/MeshSurface.h"

#include "host/geometry/mesh/normals.h"
#include "host/geometry/mesh/polygon.h"
#include "host/geometry/mesh/triangulate.h"

#include <algorithm>
#include <cmath>

namespace host::geometry {
namespace {

/// Cells along a side of the grid.
constexpr std::size_t kMaxResolution = 1024;

/// Entries of cells that a triangle may take on the average; a coarser grid is used otherwise.
constexpr std::size_t kMaxCellsPerTriangle = 16;

/// How far outside a triangle, in its own measure, a place may be and still count as on its rim.
constexpr double kRim = 1e-5;

const UvSet* findSet(const MeshData& mesh, std::string_view name)
{
    const auto named = [&](std::string_view wanted) -> const UvSet* {
        const auto found = std::find_if(mesh.uvSets.begin(), mesh.uvSets.end(),
                                        [&](const UvSet& set) { return set.name == wanted; });
        return found == mesh.uvSets.end() ? nullptr : &*found;
    };
    const UvSet* set = name.empty() ? nullptr : named(name);
    if (set == nullptr) {
        set = named(mesh.currentUvSet);
    }
    if (set == nullptr && !mesh.uvSets.empty()) {
        set = &mesh.uvSets.front();
    }
    const bool hasIds = set != nullptr && set->points != nullptr && set->corners != nullptr &&
                        set->corners->size() == mesh.topology->corners.size();
    return hasIds ? set : nullptr;
}

} // namespace

MeshSurface::MeshSurface(const MeshData& mesh, std::string_view uvSetName)
{
    if (const UvSet* set = findSet(mesh, uvSetName)) {
        gather(mesh, *set);
    }
    measure();
    sortIntoGrid();
}

void MeshSurface::gather(const MeshData& mesh, const UvSet& set)
{
    const MeshTopology& topology = *mesh.topology;
    const std::vector<std::uint32_t> vertices = cornerVertices(topology);
    const std::span<const Vec3f> points = pointsOf(mesh);
    if (points.size() < topology.vertexCount) {
        return;
    }
    const NormalIds ids = computeNormalIds(mesh);
    const std::vector<Vec3f> normals = computeNormals(
        topology, vertices, points, mesh.normalWeighting, ids, lockedNormalsOf(mesh));
    const Triangulation cut = triangulate(topology, vertices, points, mesh.quadSplit);
    for (std::size_t first = 0; first + 2 < cut.corners.size(); first += 3) {
        Triangle triangle{};
        bool isWhole = true;
        for (std::size_t i = 0; i < 3; ++i) {
            const std::uint32_t corner = cut.corners[first + i];
            const std::int32_t id = (*set.corners)[corner];
            if (id < 0) {
                isWhole = false;
                break;
            }
            const Vec2f uv = (*set.points)[static_cast<std::size_t>(id)];
            triangle.points[i] = points[vertices[corner]];
            triangle.normals[i] = normals[ids.ofCorner[corner]];
            triangle.uvs[i] = uv;
            isWhole = isWhole && std::isfinite(uv.x) && std::isfinite(uv.y);
        }
        if (isWhole) {
            m_triangles.push_back(triangle);
        }
    }
}

/// The cell in which a distance from the low side lies; distances outside count to the outer cells.
std::size_t MeshSurface::cellOf(double distance, double extent) const
{
    const double cell = extent > 0 ? distance / extent * static_cast<double>(m_resolution) : 0;
    return cell > 0
               ? static_cast<std::size_t>(std::min(cell, static_cast<double>(m_resolution - 1)))
               : 0;
}

MeshSurface::CellRange MeshSurface::cellsOf(const Triangle& triangle) const
{
    const Vec2f* uvs = triangle.uvs;
    const double lowU = std::min({uvs[0].x, uvs[1].x, uvs[2].x});
    const double highU = std::max({uvs[0].x, uvs[1].x, uvs[2].x});
    const double lowV = std::min({uvs[0].y, uvs[1].y, uvs[2].y});
    const double highV = std::max({uvs[0].y, uvs[1].y, uvs[2].y});
    // The rim counts to the triangle, so that its cells must know of it.
    const double marginU = (highU - lowU) * 2 * kRim;
    const double marginV = (highV - lowV) * 2 * kRim;
    return {cellOf(lowU - marginU - m_lowU, m_extentU), cellOf(highU + marginU - m_lowU, m_extentU),
            cellOf(lowV - marginV - m_lowV, m_extentV),
            cellOf(highV + marginV - m_lowV, m_extentV)};
}

template<class Act>
void MeshSurface::forEachCell(const Triangle& triangle, Act act) const
{
    const CellRange cells = cellsOf(triangle);
    for (std::size_t v = cells.firstV; v <= cells.lastV; ++v) {
        for (std::size_t u = cells.firstU; u <= cells.lastU; ++u) {
            act(v * m_resolution + u);
        }
    }
}

std::size_t MeshSurface::cellsTaken() const
{
    std::size_t total = 0;
    for (const Triangle& triangle : m_triangles) {
        total += cellsOf(triangle).count();
    }
    return total;
}

/// The box around all texture coordinates.
void MeshSurface::measure()
{
    if (m_triangles.empty()) {
        return;
    }
    double highU = m_lowU = m_triangles[0].uvs[0].x;
    double highV = m_lowV = m_triangles[0].uvs[0].y;
    for (const Triangle& triangle : m_triangles) {
        for (const Vec2f& uv : triangle.uvs) {
            m_lowU = std::min<double>(m_lowU, uv.x);
            highU = std::max<double>(highU, uv.x);
            m_lowV = std::min<double>(m_lowV, uv.y);
            highV = std::max<double>(highV, uv.y);
        }
    }
    m_extentU = highU - m_lowU;
    m_extentV = highV - m_lowV;
}

void MeshSurface::sortIntoGrid()
{
    const double side = std::sqrt(static_cast<double>(m_triangles.size()));
    m_resolution = std::clamp<std::size_t>(static_cast<std::size_t>(side), 1, kMaxResolution);
    while (m_resolution > 1 && cellsTaken() > kMaxCellsPerTriangle * m_triangles.size()) {
        m_resolution /= 2;
    }
    m_cellStart.assign(m_resolution * m_resolution + 1, 0);
    for (const Triangle& triangle : m_triangles) {
        forEachCell(triangle, [&](std::size_t cell) { ++m_cellStart[cell + 1]; });
    }
    for (std::size_t cell = 1; cell < m_cellStart.size(); ++cell) {
        m_cellStart[cell] += m_cellStart[cell - 1];
    }
    m_cellTriangles.resize(m_cellStart.back());
    std::vector<std::uint32_t> next(m_cellStart.begin(), m_cellStart.end() - 1);
    for (std::uint32_t number = 0; number < m_triangles.size(); ++number) {
        forEachCell(m_triangles[number],
                    [&](std::size_t cell) { m_cellTriangles[next[cell]++] = number; });
    }
}

MeshSurface::Hit MeshSurface::find(double u, double v) const
{
    const std::size_t cell =
        cellOf(v - m_lowV, m_extentV) * m_resolution + cellOf(u - m_lowU, m_extentU);
    Hit hit;
    double depth = -kRim; // how far inside the best triangle is
    for (std::uint32_t entry = m_cellStart[cell]; entry < m_cellStart[cell + 1]; ++entry) {
        const Triangle& triangle = m_triangles[m_cellTriangles[entry]];
        const double area = triangle.areaOfUvs();
        const double fromU = u - double{triangle.uvs[0].x};
        const double fromV = v - double{triangle.uvs[0].y};
        const double second = (fromU * triangle.side(2).v - fromV * triangle.side(2).u) / area;
        const double third = (fromV * triangle.side(1).u - fromU * triangle.side(1).v) / area;
        const double inside = std::min({1 - second - third, second, third});
        if (area == 0 || !(inside >= depth)) {
            continue;
        }
        hit = {&triangle, {1 - second - third, second, third}};
        if (inside >= 0) {
            break;
        }
        depth = inside;
    }
    return hit;
}

std::optional<SurfacePoint> MeshSurface::at(double u, double v) const
{
    if (m_triangles.empty() || !std::isfinite(u) || !std::isfinite(v)) {
        return std::nullopt;
    }
    const Hit hit = find(u, v);
    if (hit.triangle == nullptr) {
        return std::nullopt;
    }
    const Triangle& triangle = *hit.triangle;
    SurfacePoint point{};
    for (std::size_t i = 0; i < 3; ++i) {
        point.position = point.position + toDouble(triangle.points[i]) * hit.shares[i];
        point.normal = point.normal + toDouble(triangle.normals[i]) * hit.shares[i];
    }
    point.normal = normalized(point.normal);
    // The plane through the corners over their texture coordinates, by Cramer's rule.
    const Vec3d edge1 = toDouble(triangle.points[1]) - toDouble(triangle.points[0]);
    const Vec3d edge2 = toDouble(triangle.points[2]) - toDouble(triangle.points[0]);
    const double scale = 1 / triangle.areaOfUvs();
    point.du = (edge1 * triangle.side(2).v - edge2 * triangle.side(1).v) * scale;
    point.dv = (edge2 * triangle.side(1).u - edge1 * triangle.side(2).u) * scale;
    return point;
}

} // namespace host::geometry
