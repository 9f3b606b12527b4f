#include "host/geometry/mesh/PolygonCutter.h"

#include <algorithm>

namespace host::geometry {
namespace {

// The budget, in visits of a node; common shapes take ten to two hundred for each of their corners.
constexpr std::int64_t kVisitsPerCorner = 1000;
constexpr std::int64_t kLeastVisits = 1000000;
constexpr std::int64_t kVisitsPerTest = 8; ///< what a look into the grid costs before it finds any

void cutFan(std::uint32_t count, std::vector<std::uint32_t>& triangles)
{
    for (std::uint32_t i = 2; i < count; ++i) {
        triangles.insert(triangles.end(), {0, i - 1, i});
    }
}

} // namespace

void PolygonCutter::cut(std::span<const Vec3d> points, std::span<const std::uint32_t> loopEnds,
                        std::vector<std::uint32_t>& triangles)
{
    if (loopEnds.empty() || loopEnds[0] < 3) {
        return;
    }
    m_budget = kLeastVisits + kVisitsPerCorner * static_cast<std::int64_t>(points.size());
    if (!m_ring.layOut(points, loopEnds, m_budget)) {
        cutFan(loopEnds[0], triangles);
        return;
    }
    clip(triangles);
}

void PolygonCutter::clip(std::vector<std::uint32_t>& triangles)
{
    m_left = m_ring.size();
    m_start = m_ring.start();
    m_grid.build(m_ring, m_start);
    m_isQueued.assign(m_ring.nodes().size(), false);
    m_queue.clear();
    m_queueHead = 0;
    enqueueRing();
    clipQueued(triangles);
    while (m_left > 3) {
        cutOff(nodeToForce(), triangles);
        clipQueued(triangles);
    }
    if (m_left == 3) {
        cutOff(m_start, triangles);
    }
}

void PolygonCutter::enqueue(std::uint32_t node)
{
    if (!m_isQueued[node]) {
        m_isQueued[node] = true;
        m_queue.push_back(node);
    }
}

void PolygonCutter::enqueueRing()
{
    std::uint32_t node = m_start;
    do {
        enqueue(node);
        node = m_ring[node].next;
    } while (node != m_start);
}

/// Cuts ears until none is left. First in, first out: the cuts go round the polygon again and again
/// instead of turning about one corner. Whether a corner is an ear changes only with its neighbours
/// (J. O'Rourke, Computational Geometry in C), so that each cut asks for two more looks.
void PolygonCutter::clipQueued(std::vector<std::uint32_t>& triangles)
{
    while (m_queueHead < m_queue.size() && m_left > 3) {
        const std::uint32_t node = m_queue[m_queueHead++];
        m_isQueued[node] = false;
        if (isSpike(node) || isEar(node, Strictness::NothingTouches)) {
            cutOff(node, triangles);
        }
    }
}

void PolygonCutter::cutOff(std::uint32_t node, std::vector<std::uint32_t>& triangles)
{
    const std::uint32_t previous = m_ring[node].previous;
    const std::uint32_t next = m_ring[node].next;
    triangles.insert(triangles.end(),
                     {m_ring[previous].point, m_ring[node].point, m_ring[next].point});
    m_ring.unlink(node);
    m_isQueued[node] = true; // never again
    m_grid.remove(node);
    m_start = next;
    --m_left;
    for (const std::uint32_t neighbour : {previous, next}) {
        if (m_grid.has(neighbour) && m_ring.turnAt(neighbour) > 0) {
            m_grid.remove(neighbour);
        }
        enqueue(neighbour);
    }
    if (m_grid.isSparse() && m_left > 3) {
        m_grid.build(m_ring, m_start);
    }
}

/// Whether the ring turns back on itself at a node, or stays in its place: to cut this off changes
/// no area, and leaves a plainer ring.
bool PolygonCutter::isSpike(std::uint32_t node) const
{
    const PlanePoint& a = m_ring[m_ring[node].previous].place;
    const PlanePoint& b = m_ring[node].place;
    const PlanePoint& c = m_ring[m_ring[node].next].place;
    return m_ring.turnAt(node) == 0 && (a.x - b.x) * (c.x - b.x) >= 0 &&
           (a.y - b.y) * (c.y - b.y) >= 0;
}

bool PolygonCutter::isEar(std::uint32_t node, Strictness strictness)
{
    if (m_ring.turnAt(node) <= 0) {
        return false;
    }
    if (m_budget <= 0) {
        return true;
    }
    const PlanePoint& a = m_ring[m_ring[node].previous].place;
    const PlanePoint& b = m_ring[node].place;
    const PlanePoint& c = m_ring[m_ring[node].next].place;
    const double lowX = std::min({a.x, b.x, c.x});
    const double highX = std::max({a.x, b.x, c.x});
    const double lowY = std::min({a.y, b.y, c.y});
    const double highY = std::max({a.y, b.y, c.y});
    std::int64_t visits = kVisitsPerTest;
    const bool isBlocked = m_grid.anyNear({a, b, c}, [&](std::uint32_t other) {
        ++visits;
        const PlanePoint& p = m_ring[other].place;
        return p.x >= lowX && p.x <= highX && p.y >= lowY && p.y <= highY && m_grid.has(other) &&
               blocks(other, node, strictness);
    });
    m_budget -= visits;
    return !isBlocked;
}

/// Whether a reflex node is in the way of an ear: inside of it, on the cut, or on its border with
/// an edge that leads inside.
bool PolygonCutter::blocks(std::uint32_t other, std::uint32_t ear, Strictness strictness) const
{
    const std::uint32_t previous = m_ring[ear].previous;
    const std::uint32_t next = m_ring[ear].next;
    if (other == previous || other == ear || other == next) {
        return false;
    }
    const PlanePoint corners[3] = {m_ring[previous].place, m_ring[ear].place, m_ring[next].place};
    const PlanePoint& p = m_ring[other].place;
    int sides[3];
    for (int i = 0; i < 3; ++i) {
        sides[i] = turnOf(corners[i], corners[(i + 1) % 3], p);
        if (sides[i] < 0) {
            return false;
        }
    }
    // At the tip another corner with edges along the sides may be on either side of them.
    const bool isOnCut = sides[2] == 0 && p != corners[0] && p != corners[2];
    const bool isAtTip = p == corners[1];
    if ((isOnCut || isAtTip) && strictness == Strictness::NothingTouches) {
        return true;
    }
    const auto leadsInside = [&](const PlanePoint& q) {
        for (int i = 0; i < 3; ++i) {
            if (sides[i] == 0 && turnOf(corners[i], corners[(i + 1) % 3], q) <= 0) {
                return false;
            }
        }
        return true;
    };
    return leadsInside(m_ring[m_ring[other].previous].place) ||
           leadsInside(m_ring[m_ring[other].next].place);
}

/// The node to cut off when no ear is left, as in loops that touch or cross themselves: an ear that
/// is merely touched, else a node without area, else any that turns left.
std::uint32_t PolygonCutter::nodeToForce()
{
    if (m_budget <= 0) {
        return m_start;
    }
    m_budget -= m_left;
    std::uint32_t flat = m_start;
    std::uint32_t convex = m_start;
    bool hasFlat = false;
    bool hasConvex = false;
    std::uint32_t node = m_start;
    do {
        if (isEar(node, Strictness::NothingEnters)) {
            return node;
        }
        const int turn = m_ring.turnAt(node);
        if (turn == 0 && !hasFlat) {
            flat = node;
            hasFlat = true;
        }
        if (turn > 0 && !hasConvex) {
            convex = node;
            hasConvex = true;
        }
        node = m_ring[node].next;
    } while (node != m_start);
    return hasFlat ? flat : convex;
}

} // namespace host::geometry
