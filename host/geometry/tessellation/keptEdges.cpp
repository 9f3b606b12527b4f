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

/// Leads the line and the kept edge that it crosses through a common vertex.
void DelaunayMesh::resolveCrossing(const Line& line, std::uint32_t crossed)
{
    ++m_crossings;
    const std::uint32_t first = m_origin[crossed];
    const std::uint32_t last = end(crossed);
    const GridPlace place =
        crossingPlace(m_places[line.from], m_places[line.to], m_places[first], m_places[last]);
    const int bends = line.bends + 1;
    std::uint32_t vertex = place == m_places[first] ? first : last;
    if (place != m_places[first] && place != m_places[last]) {
        const EdgeTurns turns = m_turns[crossed];
        for (const std::uint32_t edge : {crossed, m_twin[crossed]}) {
            m_isKept[edge] = 0;
            m_turns[edge] = {};
        }
        m_lastTriangle = crossed / 3;
        vertex = insert(place);
        m_lines.push_back({first, vertex, turns, bends});
        m_lines.push_back({vertex, last, turns, bends});
    }
    m_lines.push_back({line.from, vertex, line.turns, bends});
    m_lines.push_back({vertex, line.to, line.turns, bends});
}

/// Leads the line along the left side of the channel, as far as the vertex reached.
void DelaunayMesh::detour(const Line& line)
{
    m_hasDetours = true;
    for (const std::uint32_t edge : m_left) {
        keepEdge(edge, -line.turns);
    }
}

/// Clears the channel, lays a kept edge through it and fills both sides again.
void DelaunayMesh::carve(const Line& line)
{
    std::vector<std::uint32_t>& left = m_left;
    std::reverse(left.begin(), left.end()); // round the left side from the vertex reached
    const std::uint32_t from = line.from;
    const std::uint32_t reached = m_reached;
    m_rim.clear();
    m_rimPlace.resize(m_origin.size(), kNone);
    for (const std::vector<std::uint32_t>* chain : {&m_left, &m_right}) {
        for (const std::uint32_t edge : *chain) {
            m_rimPlace[edge] = static_cast<std::uint32_t>(m_rim.size());
            m_rim.push_back(side(edge));
        }
    }
    // An edge that juts into the channel is on its rim with both sides.
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
    m_rimEdge.assign(m_rim.size(), kNone);
    const std::size_t middle = left.size();
    const std::uint32_t forth = fillSide(0, middle, from);
    const std::uint32_t back = fillSide(middle, m_rim.size(), reached);
    link(forth, back);
    for (std::size_t i = 0; i < m_rim.size(); ++i) {
        if (m_rimPartner[i] != kNone) {
            link(m_rimEdge[i], m_rimEdge[m_rimPartner[i]]);
        }
    }
    keepEdge(forth, line.turns);
}

/// The vertex of the rim between two of its places whose circle with them is empty.
std::size_t DelaunayMesh::apexBetween(const RimRange& range)
{
    const GridPlace& from = m_places[range.from];
    const GridPlace& to = m_places[m_rim[range.first].origin];
    std::size_t best = range.first + 1;
    bool isFound = false;
    for (std::size_t i = range.first + 1; i < range.last && !isSpent(); ++i) {
        ++m_steps;
        const GridPlace& place = m_places[m_rim[i].origin];
        const bool isBetter = !isFound
                                  ? turnArea(from, to, place) > 0
                                  : isInCircle(from, to, m_places[m_rim[best].origin], place) &&
                                        turnArea(from, to, place) > 0;
        if (isBetter) {
            best = i;
            isFound = true;
        }
    }
    return best;
}

/// Fills the polygon of the rim's edges from place `first` to before `last`, which begins with an
/// edge from `from` to the start of the rim (M. Anglada, An Improved Incremental Algorithm for
/// Constructing Restricted Delaunay Triangulations). Returns that edge.
std::uint32_t DelaunayMesh::fillSide(std::size_t first, std::size_t last, std::uint32_t from)
{
    std::uint32_t base = kNone;
    m_ranges.assign(1, {first, last, from, kNone});
    while (!m_ranges.empty()) {
        const RimRange range = m_ranges.back();
        m_ranges.pop_back();
        const std::size_t middle = apexBetween(range);
        const std::uint32_t apexVertex = m_rim[middle].origin;
        const std::uint32_t edge = 3 * m_channel.back();
        m_channel.pop_back();
        put(edge, {range.from, range.parent, {}, false});
        put(edge + 1, {m_rim[range.first].origin, kNone, {}, false});
        put(edge + 2, {apexVertex, kNone, {}, false});
        base = range.parent == kNone ? edge : base;
        fillPart({range.first, middle, apexVertex, edge + 1});
        fillPart({middle, range.last, range.from, edge + 2});
    }
    return base;
}

/// Puts the one edge of a range where its parent is, or leaves the range for later.
void DelaunayMesh::fillPart(const RimRange& range)
{
    if (range.last - range.first > 1) {
        m_ranges.push_back(range);
        return;
    }
    Side rim = m_rim[range.first];
    rim.twin = m_rimPartner[range.first] == kNone ? rim.twin : kNone;
    put(range.parent, rim);
    m_rimEdge[range.first] = range.parent;
}

} // namespace host::geometry
