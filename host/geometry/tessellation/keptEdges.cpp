// The edges that a triangulation is made to keep.
#include "host/geometry/tessellation/DelaunayMesh.h"

#include <algorithm>

namespace host::geometry {

void DelaunayMesh::keep(std::uint32_t from, std::uint32_t to, const EdgeTurns& turns)
{
    m_lines.assign(1, {from, to, turns, 0});
    while (!m_lines.empty() && !isSpent()) {
        const Line line = m_lines.back();
        m_lines.pop_back();
        if (line.from != line.to) {
            advance(line);
        }
    }
}

void DelaunayMesh::keepEdge(std::uint32_t edge, const EdgeTurns& turns)
{
    const std::uint32_t other = m_twin[edge];
    m_turns[edge].outer += turns.outer;
    m_turns[edge].hole += turns.hole;
    m_isKept[edge] = 1;
    if (other != kNone) {
        m_turns[other] = -m_turns[edge];
        m_isKept[other] = 1;
    }
}

/// What the line meets first in the triangle left of an edge that begins where the line does.
DelaunayMesh::Start DelaunayMesh::startAround(std::uint32_t edge, const Line& line) const
{
    const GridPlace& from = m_places[line.from];
    const GridPlace& to = m_places[line.to];
    const std::uint32_t vertex = end(edge);
    const GridPlace& place = m_places[vertex];
    const std::int64_t turn = turnArea(from, to, place);
    const bool isAhead =
        (place.x - from.x) * (to.x - from.x) + (place.y - from.y) * (to.y - from.y) > 0;
    if (vertex == line.to || (turn == 0 && isAhead)) {
        return {Start::Kind::Edge, edge};
    }
    if (turn < 0 && turnArea(from, to, m_places[apex(edge)]) > 0) {
        return {Start::Kind::Crossing, next(edge)};
    }
    return {};
}

/// Looks round both ends of the line in turn, so that one end with many edges costs nothing. Turns
/// the line round when the answer is at its end.
DelaunayMesh::Start DelaunayMesh::findStart(Line& line)
{
    Line backward{line.to, line.from, -line.turns, line.bends};
    std::uint32_t here = m_vertexEdge[line.from];
    std::uint32_t there = m_vertexEdge[line.to];
    for (;;) {
        ++m_steps;
        Start start = startAround(here, line);
        if (start.kind != Start::Kind::Unknown) {
            return start;
        }
        start = startAround(there, backward);
        if (start.kind != Start::Kind::Unknown) {
            line = backward;
            return start;
        }
        here = m_twin[previous(here)];
        there = m_twin[previous(there)];
    }
}

/// Keeps the first piece of the line and leaves the others for later.
void DelaunayMesh::advance(Line line)
{
    const Start start = findStart(line);
    if (start.kind == Start::Kind::Edge) {
        keepEdge(start.edge, line.turns);
        m_lines.push_back({end(start.edge), line.to, line.turns, line.bends});
        return;
    }
    const bool isDetour = line.bends >= kMaxBends || m_crossings >= kMaxCrossings;
    const std::uint32_t crossed = walk(line, start.edge, isDetour);
    if (crossed != kNone) {
        resolveCrossing(line, crossed);
        return;
    }
    if (isDetour) {
        detour(line);
    } else {
        carve(line);
    }
    m_lines.push_back({m_reached, line.to, line.turns, line.bends});
}

std::uint32_t DelaunayMesh::walk(const Line& line, std::uint32_t firstCrossed, bool passesKept)
{
    const GridPlace& from = m_places[line.from];
    const GridPlace& to = m_places[line.to];
    m_channel.assign(1, firstCrossed / 3);
    m_right.assign(1, previous(firstCrossed));
    m_left.assign(1, next(firstCrossed));
    std::uint32_t crossed = firstCrossed;
    for (;;) {
        ++m_steps;
        if (m_isKept[crossed] != 0 && !passesKept) {
            return crossed;
        }
        const std::uint32_t edge = m_twin[crossed];
        m_channel.push_back(edge / 3);
        const std::int64_t turn = turnArea(from, to, m_places[apex(edge)]);
        if (turn >= 0) {
            m_left.push_back(previous(edge));
            crossed = next(edge);
        }
        if (turn <= 0) {
            m_right.push_back(next(edge));
            crossed = previous(edge);
        }
        if (turn == 0) {
            m_reached = apex(edge);
            return kNone;
        }
    }
}

/// The one of four vertices that is nearest to a place and at most `radius` away along both axes.
std::uint32_t DelaunayMesh::nearest(const GridPlace& place,
                                    const std::array<std::uint32_t, 4>& among,
                                    std::int64_t radius) const
{
    std::uint32_t best = kNone;
    for (const std::uint32_t vertex : among) {
        const std::int64_t dx = m_places[vertex].x - place.x;
        const std::int64_t dy = m_places[vertex].y - place.y;
        const std::int64_t distance = std::max(std::max(dx, -dx), std::max(dy, -dy));
        if (distance <= radius) {
            best = vertex;
            radius = distance - 1;
        }
    }
    return best;
}

/// Leads the line and the kept edge that it crosses through a common vertex: a new one, or one of
/// their ends when that is as near as the rounding of places. Lines that run close together could
/// cross again beside each new vertex; so the ends draw from farther away with each bend.
void DelaunayMesh::resolveCrossing(const Line& line, std::uint32_t crossed)
{
    ++m_crossings;
    const std::uint32_t first = m_origin[crossed];
    const std::uint32_t last = end(crossed);
    const GridPlace place =
        crossingPlace(m_places[line.from], m_places[line.to], m_places[first], m_places[last]);
    const int bends = line.bends + 1;
    const std::int64_t radius = bends > kFreeBends ? std::int64_t{1} << (bends - kFreeBends) : 0;
    std::uint32_t vertex = nearest(place, {first, last, line.from, line.to}, radius);
    if (vertex != first && vertex != last) {
        const EdgeTurns turns = m_turns[crossed];
        for (const std::uint32_t edge : {crossed, m_twin[crossed]}) {
            m_isKept[edge] = 0;
            m_turns[edge] = {};
        }
        m_lastTriangle = crossed / 3;
        vertex = vertex == kNone ? insert(place) : vertex;
        m_lines.push_back({first, vertex, turns, bends});
        m_lines.push_back({vertex, last, turns, bends});
    }
    // What is beyond the crossing has come no nearer to bending for ever.
    m_lines.push_back({vertex, line.to, line.turns, line.bends});
    m_lines.push_back({line.from, vertex, line.turns, bends});
}

/// Leads the line along the left side of the channel, as far as the vertex reached.
void DelaunayMesh::detour(const Line& line)
{
    m_hasDetours = true;
    for (const std::uint32_t edge : m_left) {
        keepEdge(edge, -line.turns);
    }
}

/// Saves what the edges round the channel carry: the left side from the vertex reached back to the
/// line's start, then the right side.
void DelaunayMesh::takeUpRim()
{
    std::reverse(m_left.begin(), m_left.end());
    m_rim.clear();
    m_rimPlace.resize(m_origin.size(), kNone);
    for (const std::vector<std::uint32_t>* chain : {&m_left, &m_right}) {
        for (const std::uint32_t edge : *chain) {
            m_rimPlace[edge] = static_cast<std::uint32_t>(m_rim.size());
            m_rim.push_back(side(edge));
        }
    }
    // An edge that juts into the channel is on the rim with both sides.
    m_rimPartner.assign(m_rim.size(), kNone);
    for (std::size_t i = 0; i < m_rim.size(); ++i) {
        if (m_rim[i].twin != kNone) {
            m_rimPartner[i] = m_rimPlace[m_rim[i].twin];
        }
    }
    for (const std::vector<std::uint32_t>* chain : {&m_left, &m_right}) {
        for (const std::uint32_t edge : *chain) {
            m_rimPlace[edge] = kNone;
        }
    }
}

/// Clears the channel, lays a kept edge through it and fills both sides again.
void DelaunayMesh::carve(const Line& line)
{
    takeUpRim();
    m_rimEdge.assign(m_rim.size(), kNone);
    const std::size_t middle = m_left.size();
    const std::uint32_t forth = fillSide(0, middle, line.from);
    const std::uint32_t back = fillSide(middle, m_rim.size(), m_reached);
    link(forth, back);
    for (std::size_t i = 0; i < m_rim.size(); ++i) {
        if (m_rimPartner[i] != kNone) {
            link(m_rimEdge[i], m_rimEdge[m_rimPartner[i]]);
        }
    }
    keepEdge(forth, line.turns);
    relax();
}

/// Fills the polygon of the rim's edges from place `first` to before `last`, which an edge from
/// `end` to the start of the rim closes; returns that edge. From every vertex of the rim a straight
/// way leads to the closing edge, so that cutting off each left turn at once never goes wrong
/// (G. Toussaint and D. Avis, On a Convex Hull Algorithm for Polygons).
std::uint32_t DelaunayMesh::fillSide(std::size_t first, std::size_t last, std::uint32_t end)
{
    m_walk.assign(1, {m_rim[first].origin, kNone, kNone});
    std::uint32_t closing = kNone;
    for (std::size_t i = first; i < last; ++i) {
        const std::uint32_t vertex = i + 1 < last ? m_rim[i + 1].origin : end;
        Step step{vertex, static_cast<std::uint32_t>(i), kNone};
        while (m_walk.size() > 1) {
            const Step corner = m_walk.back();
            const std::uint32_t before = m_walk[m_walk.size() - 2].vertex;
            if (turnArea(m_places[before], m_places[corner.vertex], m_places[vertex]) <= 0) {
                break;
            }
            m_walk.pop_back();
            ++m_steps;
            closing = 3 * m_channel.back();
            m_channel.pop_back();
            attach(closing + 1, before, corner);
            attach(closing + 2, corner.vertex, step);
            put(closing, {vertex, kNone, {}, false});
            step = {vertex, kNone, closing};
            m_toCheck.push_back(closing + 1);
            m_toCheck.push_back(closing + 2);
        }
        m_walk.push_back(step);
    }
    return closing;
}

/// Makes an edge of a new triangle be what a step of the walk leads along.
void DelaunayMesh::attach(std::uint32_t edge, std::uint32_t origin, const Step& step)
{
    if (step.rimPlace == kNone) {
        put(edge, {origin, step.edge, {}, false});
        return;
    }
    Side rim = m_rim[step.rimPlace];
    rim.twin = m_rimPartner[step.rimPlace] == kNone ? rim.twin : kNone;
    put(edge, rim);
    m_rimEdge[step.rimPlace] = edge;
}

/// Turns edges round those to check until Delaunay's condition holds, or enough has been done.
void DelaunayMesh::relax()
{
    std::size_t left = kTurnsPerCrossedEdge * m_rim.size();
    while (!m_toCheck.empty() && left > 0) {
        const std::uint32_t edge = m_toCheck.back();
        m_toCheck.pop_back();
        ++m_steps;
        const std::uint32_t other = m_twin[edge];
        if (other == kNone || m_isKept[edge] != 0 ||
            !isInCircle(m_places[m_origin[edge]], m_places[end(edge)], m_places[apex(edge)],
                        m_places[apex(other)])) {
            continue;
        }
        --left;
        flip(edge);
        for (const std::uint32_t turned : {edge, other}) {
            const std::uint32_t triangle = turned - turned % 3;
            m_toCheck.insert(m_toCheck.end(), {triangle, triangle + 1, triangle + 2});
        }
    }
    m_toCheck.clear();
}

} // namespace host::geometry
