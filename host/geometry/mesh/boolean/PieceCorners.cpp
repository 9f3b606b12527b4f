#include "host/geometry/mesh/boolean/PieceCorners.h"

#include "host/geometry/mesh/edit/MeshLinks.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace host::geometry {

PieceCorners::PieceCorners(const CutMeshes& before, const Solid& solid,
                           std::span<const std::uint32_t> faces)
    : m_before(before), m_solid(solid), m_faces(faces), m_vertices(solid.points.size(), kNone)
{
    findSources();
    numberPoints();
}

void PieceCorners::findSources()
{
    std::vector<std::pair<std::uint32_t, std::uint32_t>> pairs;
    pairs.reserve(3 * m_solid.triangles.size());
    for (const SolidTriangle& triangle : m_solid.triangles) {
        for (const std::uint32_t point : triangle.corners) {
            pairs.emplace_back(point, triangle.source);
        }
    }
    std::sort(pairs.begin(), pairs.end());
    pairs.erase(std::unique(pairs.begin(), pairs.end()), pairs.end());
    m_firstSource.assign(m_solid.points.size() + 1, 0);
    for (const auto& [point, source] : pairs) {
        m_sources.push_back(source);
        m_firstSource[point + 1] = static_cast<std::uint32_t>(m_sources.size());
    }
    for (std::size_t point = 0; point < m_solid.points.size(); ++point) {
        m_firstSource[point + 1] = std::max(m_firstSource[point + 1], m_firstSource[point]);
    }
}

void PieceCorners::numberPoints()
{
    std::vector<std::uint8_t> isTaken(m_before.mesh.topology->vertexCount);
    for (std::uint32_t point = 0; point < m_vertices.size(); ++point) {
        for (const std::uint32_t source : sourcesOf(point)) {
            for (std::size_t corner = 0; corner < 3; ++corner) {
                if (placeAt(source, corner) == m_solid.points[point]) {
                    m_vertices[point] = std::min(m_vertices[point], vertexAt(source, corner));
                }
            }
        }
        // Two points come to one place where they were nearer than the grid is fine.
        const bool isFree = m_vertices[point] != kNone && isTaken[m_vertices[point]] == 0;
        if (isFree) {
            isTaken[m_vertices[point]] = 1;
        } else if (!sourcesOf(point).empty()) {
            m_newPoints.push_back(point);
        }
    }
    const auto keyOf = [&](std::uint32_t point) {
        const Vec3d& place = m_solid.points[point];
        return std::tuple(sourcesOf(point).front(), place.x, place.y, place.z, point);
    };
    std::sort(m_newPoints.begin(), m_newPoints.end(),
              [&](std::uint32_t a, std::uint32_t b) { return keyOf(a) < keyOf(b); });
    std::uint32_t number = m_before.mesh.topology->vertexCount;
    for (const std::uint32_t point : m_newPoints) {
        m_vertices[point] = number++;
    }
}

/// The lowest triangle before of the face of a triangle, on which a point of that triangle lies.
std::uint32_t PieceCorners::sourceWithin(std::uint32_t triangle, std::uint32_t point) const
{
    const auto& first = m_before.triangles.faceFirstTriangle;
    const std::uint32_t face = m_faces[triangle];
    for (const std::uint32_t source : sourcesOf(point)) {
        if (source >= first[face] && source < first[face + 1]) {
            return source;
        }
    }
    return m_solid.triangles[triangle].source;
}

std::uint32_t PieceCorners::sourceCorner(std::uint32_t triangle, std::uint32_t point) const
{
    const std::uint32_t source = sourceWithin(triangle, point);
    for (std::size_t corner = 0; corner < 3; ++corner) {
        if (placeAt(source, corner) == m_solid.points[point]) {
            return cornerAt(source, corner);
        }
    }
    return kNone;
}

/// Whether a point lies on a side that the triangle has in common with another, which it then
/// touches too.
bool PieceCorners::findSide(std::uint32_t source, std::uint32_t point, Lie& lie) const
{
    for (const std::uint32_t other : sourcesOf(point)) {
        std::size_t common = 0;
        for (std::size_t corner = 0; other != source && corner < 3; ++corner) {
            const std::uint32_t vertex = vertexAt(source, corner);
            const bool isCommon = vertex == vertexAt(other, 0) || vertex == vertexAt(other, 1) ||
                                  vertex == vertexAt(other, 2);
            if (isCommon) {
                lie.corners[common++] = cornerAt(source, corner);
            }
        }
        if (common == 2) {
            return true;
        }
    }
    return false;
}

PieceCorners::Lie PieceCorners::lieOf(std::uint32_t source, std::uint32_t point) const
{
    Lie lie;
    const Vec3d& place = m_solid.points[point];
    const auto vertexOfCorner = [&](std::uint32_t corner) {
        return m_before.mesh.topology->cornerVertex(corner);
    };
    const auto placeOf = [&](std::uint32_t corner) {
        return m_before.grid.place((*m_before.mesh.points)[vertexOfCorner(corner)]);
    };
    if (findSide(source, point, lie)) {
        if (vertexOfCorner(lie.corners[0]) > vertexOfCorner(lie.corners[1])) {
            std::swap(lie.corners[0], lie.corners[1]); // seen alike from both sides
        }
        lie.isWithin = false;
        const Vec3d way = placeOf(lie.corners[1]) - placeOf(lie.corners[0]);
        const double share = dot(place - placeOf(lie.corners[0]), way) / dot(way, way);
        lie.weights = {1 - share, share, 0};
        return lie;
    }
    lie.corners = {cornerAt(source, 0), cornerAt(source, 1), cornerAt(source, 2)};
    const std::array<Vec3d, 3> places{placeAt(source, 0), placeAt(source, 1), placeAt(source, 2)};
    const Vec3d normal = cross(places[1] - places[0], places[2] - places[0]);
    for (std::size_t i = 0; i < 3; ++i) {
        const Vec3d& from = places[(i + 1) % 3];
        const Vec3d area = cross(places[(i + 2) % 3] - from, place - from);
        lie.weights[i] = dot(area, normal) / dot(normal, normal);
    }
    return lie;
}

std::int32_t PieceCorners::uvId(std::size_t set, std::uint32_t triangle, std::uint32_t point,
                                MeshRewriter& rewriter)
{
    if (const std::uint32_t corner = sourceCorner(triangle, point); corner != kNone) {
        return rewriter.uvId(set, corner);
    }
    const Lie lie = lieOf(sourceWithin(triangle, point), point);
    const std::size_t count = lie.isWithin ? 3 : 2;
    std::array<std::int32_t, 3> ids{};
    Vec3d sum;
    for (std::size_t i = 0; i < count; ++i) {
        ids[i] = rewriter.uvId(set, lie.corners[i]);
        if (ids[i] < 0) {
            return -1;
        }
        const Vec2f& uv = rewriter.uvPoints(set)[static_cast<std::size_t>(ids[i])];
        sum = sum + Vec3d{uv.x, uv.y, 0} * lie.weights[i];
    }
    // One on a side is shared by the faces that share the coordinates of its ends.
    const auto number = [](std::int32_t id) { return static_cast<std::uint64_t>(id); };
    const std::array<std::uint64_t, 4> key{
        set, point, lie.isWithin ? std::uint64_t{m_faces[triangle]} : number(ids[0]),
        lie.isWithin ? ~std::uint64_t{0} : number(ids[1])};
    const auto [entry, isNew] = m_newUvs.try_emplace(key, -1);
    if (isNew) {
        entry->second = rewriter.addUv(set, {static_cast<float>(sum.x), static_cast<float>(sum.y)});
    }
    return entry->second;
}

} // namespace host::geometry
