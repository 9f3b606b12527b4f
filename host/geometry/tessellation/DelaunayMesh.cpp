// The points of the triangulation; its kept edges are in keptEdges.cpp.
#include "host/geometry/tessellation/DelaunayMesh.h"

namespace host::geometry {

DelaunayMesh::DelaunayMesh(std::size_t pointCount, std::uint64_t allowance) : m_allowance(allowance)
{
    const std::size_t triangles = 2 * pointCount + 2;
    m_places.reserve(pointCount + kFrameVertices);
    m_vertexEdge.reserve(pointCount + kFrameVertices);
    m_origin.reserve(3 * triangles);
    m_twin.reserve(3 * triangles);
    m_turns.reserve(3 * triangles);
    m_isKept.reserve(3 * triangles);
    m_places = {{0, 0}, {kGridSize, 0}, {kGridSize, kGridSize}, {0, kGridSize}};
    m_vertexEdge.assign(kFrameVertices, 0);
    const std::uint32_t below = newTriangle();
    const std::uint32_t above = newTriangle();
    constexpr std::array<std::uint32_t, 6> kCorners{0, 1, 2, 0, 2, 3};
    for (std::uint32_t edge = 0; edge < 6; ++edge) {
        put(edge, {kCorners[edge], kNone, {}, false});
    }
    link(3 * below + 2, 3 * above);
}

std::uint32_t DelaunayMesh::newTriangle()
{
    const std::uint32_t triangle = triangleCount();
    m_origin.resize(m_origin.size() + 3, 0);
    m_twin.resize(m_twin.size() + 3, kNone);
    m_turns.resize(m_turns.size() + 3);
    m_isKept.resize(m_isKept.size() + 3, 0);
    return triangle;
}

void DelaunayMesh::put(std::uint32_t edge, const Side& side)
{
    m_origin[edge] = side.origin;
    m_vertexEdge[side.origin] = edge;
    m_turns[edge] = side.turns;
    m_isKept[edge] = side.isKept ? 1 : 0;
    m_twin[edge] = side.twin;
    if (side.twin != kNone) {
        m_twin[side.twin] = edge;
    }
}

void DelaunayMesh::link(std::uint32_t edge, std::uint32_t other)
{
    m_twin[edge] = other;
    m_twin[other] = edge;
}

std::uint32_t DelaunayMesh::insert(const GridPlace& place)
{
    const Location found = locate(place);
    m_lastTriangle = found.edge / 3;
    if (found.zeros == 2) {
        return m_origin[found.edge];
    }
    const auto vertex = static_cast<std::uint32_t>(m_places.size());
    m_places.push_back(place);
    m_vertexEdge.push_back(kNone);
    if (found.zeros == 1) {
        splitEdge(found.edge, vertex);
    } else {
        splitTriangle(found.edge / 3, vertex);
    }
    legalize();
    return vertex;
}

/// False when the place is beyond an edge of the triangle: then `location.edge` is that edge.
bool DelaunayMesh::locateIn(std::uint32_t triangle, const GridPlace& place,
                            Location& location) const
{
    // The edge to begin with changes from step to step, lest a walk goes round in circles.
    std::uint32_t edge = 3 * triangle + m_scramble % 3;
    std::array<bool, 3> isOn{};
    location = {edge, 0};
    for (int k = 0; k < 3; ++k, edge = next(edge)) {
        const std::int64_t turn = turnOfEdge(edge, place);
        if (turn < 0) {
            location.edge = edge;
            return false;
        }
        if (turn == 0) {
            isOn[edge % 3] = true;
            ++location.zeros;
            location.edge = edge;
        }
    }
    // On two edges: at the origin of the one whose predecessor is the other.
    if (location.zeros == 2) {
        while (!isOn[edge % 3] || !isOn[previous(edge) % 3]) {
            edge = next(edge);
        }
        location.edge = edge;
    }
    return true;
}

DelaunayMesh::Location DelaunayMesh::locate(const GridPlace& place)
{
    Location location;
    std::uint32_t triangle = m_lastTriangle;
    for (std::uint64_t left = 4 * std::uint64_t{triangleCount()} + 64; left > 0; --left) {
        ++m_steps;
        m_scramble = m_scramble * 1664525U + 1013904223U;
        m_scramble ^= m_scramble >> 13;
        if (locateIn(triangle, place, location)) {
            return location;
        }
        triangle = m_twin[location.edge] / 3;
    }
    for (triangle = 0; !locateIn(triangle, place, location); ++triangle) {
        ++m_steps;
    }
    return location;
}

/// Lays triangles from the `count` edges of a rim, which runs counter-clockwise round the vertex,
/// to the vertex.
void DelaunayMesh::fan(std::uint32_t vertex, const std::array<Side, 4>& rim,
                       const std::array<std::uint32_t, 4>& triangles, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t edge = 3 * triangles[i];
        put(edge, rim[i]);
        put(edge + 1, {rim[(i + 1) % count].origin, kNone, {}, false});
        put(edge + 2, {vertex, kNone, {}, false});
        m_toCheck.push_back(edge);
    }
    for (std::size_t i = 0; i < count; ++i) {
        link(3 * triangles[i] + 1, 3 * triangles[(i + 1) % count] + 2);
    }
}

void DelaunayMesh::splitTriangle(std::uint32_t triangle, std::uint32_t vertex)
{
    const std::uint32_t edge = 3 * triangle;
    const std::array<Side, 4> rim{side(edge), side(edge + 1), side(edge + 2), Side{}};
    const std::uint32_t second = newTriangle();
    const std::uint32_t third = newTriangle();
    fan(vertex, rim, {triangle, second, third, 0}, 3);
}

void DelaunayMesh::splitEdge(std::uint32_t edge, std::uint32_t vertex)
{
    const std::uint32_t beyond = m_twin[edge];
    const Side here = side(edge);
    const Side there = side(beyond);
    const std::array<Side, 4> rim{side(next(edge)), side(previous(edge)), side(next(beyond)),
                                  side(previous(beyond))};
    const std::array<std::uint32_t, 4> triangles{edge / 3, newTriangle(), beyond / 3,
                                                 newTriangle()};
    fan(vertex, rim, triangles, 4);
    // Both halves carry on what the edge was: from its origin to the vertex, from there to its end.
    const std::array<std::uint32_t, 2> forward{3 * triangles[1] + 1, 3 * triangles[0] + 2};
    for (const std::uint32_t half : forward) {
        m_turns[half] = here.turns;
        m_isKept[half] = here.isKept ? 1 : 0;
        m_turns[m_twin[half]] = there.turns;
        m_isKept[m_twin[half]] = there.isKept ? 1 : 0;
    }
}

/// Turns edges until Delaunay's condition holds again round a new vertex, which is the apex of all
/// edges to check.
void DelaunayMesh::legalize()
{
    while (!m_toCheck.empty()) {
        const std::uint32_t edge = m_toCheck.back();
        m_toCheck.pop_back();
        ++m_steps;
        const std::uint32_t other = m_twin[edge];
        if (other == kNone || m_isKept[edge] != 0) {
            continue;
        }
        if (isInCircle(m_places[m_origin[edge]], m_places[end(edge)], m_places[apex(edge)],
                       m_places[apex(other)])) {
            flip(edge);
            m_toCheck.push_back(edge - edge % 3);
            m_toCheck.push_back(other - other % 3);
        }
    }
}

/// Replaces the edge by the one between the two apexes. The edges opposite to the apex of `edge`
/// come to lie first in both triangles.
void DelaunayMesh::flip(std::uint32_t edge)
{
    const std::uint32_t other = m_twin[edge];
    const Side afterEdge = side(next(edge));
    const Side beforeEdge = side(previous(edge));
    const Side afterOther = side(next(other));
    const Side beforeOther = side(previous(other));
    const std::uint32_t first = edge - edge % 3;
    const std::uint32_t second = other - other % 3;
    put(first, afterOther);
    put(first + 1, {beforeOther.origin, kNone, {}, false});
    put(first + 2, beforeEdge);
    put(second, beforeOther);
    put(second + 1, afterEdge);
    put(second + 2, {beforeEdge.origin, kNone, {}, false});
    link(first + 1, second + 2);
}

} // namespace host::geometry
