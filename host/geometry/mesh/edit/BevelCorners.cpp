#include "host/geometry/mesh/edit/BevelCorners.h"

#include "host/geometry/mesh/edit/faceFrame.h"

#include <algorithm>
#include <limits>

namespace host::geometry {
namespace {

constexpr double kLeastSine = 0.01;

} // namespace

BevelCorners::BevelCorners(const MeshTopology& topology, const CornerLinks& links,
                           std::span<const Vec3d> points, const std::vector<bool>& isBeveled)
    : m_topology(topology)
    , m_links(links)
    , m_points(points)
    , m_isBeveled(isBeveled)
    , m_cornerOfVertex(topology.vertexCount, kNone)
    , m_placeOfFaceCorner(topology.corners.size())
    , m_placeOfEnd(2 * topology.edges.size())
    , m_normals(topology.faceCount())
    , m_hasNormal(topology.faceCount())
{
}

bool BevelCorners::make(std::span<const std::uint32_t> edges)
{
    const VertexFans fans(m_topology, m_links);
    const NumberLists cornersOf = cornersOfVertices(m_topology);
    for (const std::uint32_t edge : edges) {
        const MeshEdge& ends = m_topology.edges[edge];
        for (const std::uint32_t vertex : {ends.start, ends.end}) {
            if (m_cornerOfVertex[vertex] != kNone) {
                continue;
            }
            if (!fans.find(vertex, cornersOf.of(vertex), m_fan) ||
                !makeCorner(vertex, cornersOf.of(vertex))) {
                return false;
            }
        }
    }
    return true;
}

bool BevelCorners::makeCorner(std::uint32_t vertex, std::span<const std::uint32_t> faceCorners)
{
    BevelCorner corner;
    corner.vertex = vertex;
    corner.firstPlace = static_cast<std::uint32_t>(m_edges.size());
    corner.edgeCount = static_cast<std::uint32_t>(m_fan.edges.size());
    corner.cornerCount = static_cast<std::uint32_t>(faceCorners.size());
    corner.firstSlot = static_cast<std::uint32_t>(m_motions.size());
    for (const std::uint32_t edge : m_fan.edges) {
        corner.beveledCount += m_isBeveled[edge] ? 1 : 0;
    }
    const bool isEndOfOne = corner.beveledCount == 1 && corner.isClosed();
    if ((!corner.isClosed() && corner.beveledCount > 1) || (isEndOfOne && corner.edgeCount < 3)) {
        return false;
    }
    if (!isEndOfOne && corner.isClosed()) {
        turnToBeveled();
    }
    takeFan(corner);
    isEndOfOne ? makeEndSlots(corner) : makeGroupSlots(corner);
    m_cornerOfVertex[vertex] = static_cast<std::uint32_t>(m_corners.size());
    m_corners.push_back(corner);
    return true;
}

/// The fan begins at its first beveled edge.
void BevelCorners::turnToBeveled()
{
    const auto first = std::find_if(m_fan.edges.begin(), m_fan.edges.end(),
                                    [&](std::uint32_t edge) { return m_isBeveled[edge]; });
    const auto turn = first - m_fan.edges.begin();
    std::rotate(m_fan.edges.begin(), m_fan.edges.begin() + turn, m_fan.edges.end());
    std::rotate(m_fan.corners.begin(), m_fan.corners.begin() + turn, m_fan.corners.end());
}

void BevelCorners::takeFan(const BevelCorner& corner)
{
    m_edges.insert(m_edges.end(), m_fan.edges.begin(), m_fan.edges.end());
    m_faceCorners.insert(m_faceCorners.end(), m_fan.corners.begin(), m_fan.corners.end());
    m_faceCorners.resize(m_edges.size(), kNone);
    m_before.resize(m_edges.size());
    m_after.resize(m_edges.size());
    for (std::uint32_t place = 0; place < corner.edgeCount; ++place) {
        m_placeOfEnd[endOf(corner.vertex, m_fan.edges[place])] = place;
    }
    for (std::uint32_t place = 0; place < corner.cornerCount; ++place) {
        m_placeOfFaceCorner[m_fan.corners[place]] = place;
    }
}

std::uint32_t BevelCorners::addSlot(BevelCorner& corner, const Vec3d& motion)
{
    m_motions.push_back(motion);
    return corner.slotCount++;
}

void BevelCorners::setSlots(const BevelCorner& corner, std::uint32_t place, std::uint32_t slot)
{
    m_before[corner.firstPlace + place] = m_after[corner.firstPlace + place] = slot;
}

/// One beveled edge ends here: a slot on each of its neighbours, one that stays for all between.
void BevelCorners::makeEndSlots(BevelCorner& corner)
{
    const std::uint32_t count = corner.edgeCount;
    std::uint32_t beveled = 0;
    while (!isBeveled(corner, beveled)) {
        ++beveled;
    }
    const std::uint32_t ahead = (beveled + 1) % count;
    const std::uint32_t behind = (beveled + count - 1) % count;
    std::uint32_t middle = kNone;
    for (std::uint32_t place = 0; place < count; ++place) {
        if (place == beveled) {
            continue;
        }
        std::uint32_t slot = middle;
        if (place == ahead || place == behind) {
            slot = addSlot(corner, alongEdge(corner, place));
        } else if (middle == kNone) {
            slot = middle = addSlot(corner, Vec3d{});
        }
        setSlots(corner, place, slot);
    }
    m_before[corner.firstPlace + beveled] = after(corner, behind);
    m_after[corner.firstPlace + beveled] = before(corner, ahead);
}

/// A slot for all edges between two beveled ones, or between one and a border.
void BevelCorners::makeGroupSlots(BevelCorner& corner)
{
    const std::uint32_t count = corner.edgeCount;
    std::uint32_t place = 0;
    while (place < count) {
        std::uint32_t end = place + (isBeveled(corner, place) ? 1 : 0);
        const std::uint32_t firstOfGroup = end;
        while (end < count && !isBeveled(corner, end)) {
            ++end;
        }
        const std::uint32_t slot = addSlot(corner, motionOfGroup(corner, place, firstOfGroup, end));
        if (firstOfGroup > place) {
            m_after[corner.firstPlace + place] = slot;
        }
        for (std::uint32_t inside = firstOfGroup; inside < end; ++inside) {
            setSlots(corner, inside, slot);
        }
        if (end < count) {
            m_before[corner.firstPlace + end] = slot;
        } else if (corner.isClosed()) {
            m_before[corner.firstPlace] = slot;
        }
        place = end;
    }
}

/// `place`: the beveled edge before the group (or the group's first edge at a border).
Vec3d BevelCorners::motionOfGroup(const BevelCorner& corner, std::uint32_t place,
                                  std::uint32_t first, std::uint32_t end)
{
    const std::uint32_t count = corner.edgeCount;
    if (end - first == 1) {
        return alongEdge(corner, first);
    }
    const bool hasBefore = first > place;
    const bool hasAfter = end < count || corner.isClosed();
    Vec3d in;
    double sum = 0;
    if (hasBefore) {
        in = inwards(corner, place, false);
    }
    if (hasAfter) {
        const Vec3d other = inwards(corner, end % count, true);
        sum = hasBefore ? dot(in, other) : 0;
        in = in + other;
    }
    return in * (1 / std::max(1 + sum, kLeastSine));
}

Vec3d BevelCorners::directionOf(const BevelCorner& corner, std::uint32_t place) const
{
    const MeshEdge& ends = m_topology.edges[edge(corner, place)];
    const std::uint32_t other = ends.start == corner.vertex ? ends.end : ends.start;
    return normalized(m_points[other] - m_points[corner.vertex]);
}

/// Kept: a face may have very many corners.
Vec3d BevelCorners::normalOf(std::uint32_t face)
{
    if (!m_hasNormal[face]) {
        m_hasNormal[face] = true;
        m_normals[face] = faceNormal(m_topology, m_points, face);
    }
    return m_normals[face];
}

/// At a right angle to a beveled edge, in the face after it, or before.
Vec3d BevelCorners::inwards(const BevelCorner& corner, std::uint32_t place, bool isBefore)
{
    const std::uint32_t count = corner.cornerCount;
    const std::uint32_t sector = isBefore ? (place + count - 1) % count : place;
    const Vec3d normal = normalOf(m_links.face(faceCorner(corner, sector)));
    const Vec3d turned = normalized(cross(normal, directionOf(corner, place)));
    return isBefore ? turned * -1 : turned;
}

/// Along an edge that stays, so far that it is one unit from the beveled edges beside it.
Vec3d BevelCorners::alongEdge(const BevelCorner& corner, std::uint32_t place) const
{
    const std::uint32_t count = corner.edgeCount;
    const Vec3d direction = directionOf(corner, place);
    double sum = 0;
    int uses = 0;
    for (const std::uint32_t step : {std::uint32_t{1}, count - 1}) {
        const bool wraps = step == 1 ? place + 1 == count : place == 0;
        const std::uint32_t other = (place + step) % count;
        if ((!wraps || corner.isClosed()) && isBeveled(corner, other)) {
            const double sine = length(cross(direction, directionOf(corner, other)));
            sum += 1 / std::max(sine, kLeastSine);
            ++uses;
        }
    }
    return direction * (uses > 0 ? sum / uses : 0);
}

/// Sides of faces between two corners are looked at from the first one.
double BevelCorners::mostPossible() const
{
    double most = std::numeric_limits<double>::infinity();
    for (const BevelCorner& corner : m_corners) {
        for (std::uint32_t place = 0; place < corner.cornerCount; ++place) {
            const std::uint32_t here = faceCorner(corner, place);
            most = std::min(most, mostPossible(here));
            if (const std::uint32_t last = m_links.previous(here); at(last) == nullptr) {
                most = std::min(most, mostPossible(last));
            }
        }
    }
    return most;
}

/// At the side of a face that leaves one of its corners.
double BevelCorners::mostPossible(std::uint32_t from) const
{
    const std::uint32_t to = m_links.next(from);
    const Vec3d way =
        m_points[m_topology.cornerVertex(to)] - m_points[m_topology.cornerVertex(from)];
    const double size = length(way);
    const double rate = size > 0 ? dot(motionOut(from) - motionIn(to), way) / size : 0;
    return rate > kLeastSine * kLeastSine ? size / rate : std::numeric_limits<double>::infinity();
}

Vec3d BevelCorners::motionOut(std::uint32_t faceCorner) const
{
    const BevelCorner* const corner = at(faceCorner);
    return corner != nullptr ? motion(*corner, slotsAt(*corner, faceCorner).second) : Vec3d{};
}

Vec3d BevelCorners::motionIn(std::uint32_t faceCorner) const
{
    const BevelCorner* const corner = at(faceCorner);
    return corner != nullptr ? motion(*corner, slotsAt(*corner, faceCorner).first) : Vec3d{};
}

} // namespace host::geometry
