#include "host/geometry/mesh/edit/BevelPoints.h"

#include "host/geometry/mesh/edit/bevelArc.h"

#include <algorithm>
#include <cmath>

namespace host::geometry {
namespace {

/// The part of the most possible offset that is left.
constexpr double kLeft = 1e-4;

/// Where two strips meet two or more other edges, Maya makes faces in the corner.
bool meetAmongOthers(const BevelCorner& corner)
{
    constexpr std::uint32_t kStrips = 2;
    return corner.beveledCount == kStrips && corner.edgeCount >= kStrips + 2;
}

} // namespace

BevelPoints::BevelPoints(const Beveling& beveling, std::span<const Vec3d> points,
                         BevelCorners& corners, MeshRewriter& rewriter)
    : m_beveling(beveling)
    , m_points(points)
    , m_corners(corners)
    , m_rewriter(rewriter)
    , m_back(inverse(beveling.toSpace))
    , m_firstOfRound(corners.placeCount(), kNone)
{
    const double by = offset();
    m_places.reserve(corners.slotCount());
    for (const BevelCorner& corner : corners.all()) {
        for (std::uint32_t slot = 0; slot < corner.slotCount; ++slot) {
            corners.setPoint(corner, slot,
                             add(points[corner.vertex] + corners.motion(corner, slot) * by));
        }
        makeRounds(corner);
    }
    corners.forgetMotions();
}

double BevelPoints::offset() const
{
    const double most = m_corners.mostPossible() * (1 - kLeft);
    if (m_beveling.isFraction) {
        return std::isfinite(most) ? m_beveling.offset * most : 0;
    }
    return m_beveling.isFitted ? std::min(m_beveling.offset, most) : m_beveling.offset;
}

std::uint32_t BevelPoints::add(const Vec3d& place)
{
    m_rewriter.addPoint(toFloat(transformPoint(place, m_back)));
    m_places.push_back(place);
    return static_cast<std::uint32_t>(count() - 1);
}

/// With two slots one round serves all edges; it runs from the second slot to the first.
void BevelPoints::makeRounds(const BevelCorner& corner)
{
    m_areExact = m_areExact &&
                 (m_beveling.segments == 1 || (corner.hasOneRound() && !meetAmongOthers(corner)));
    if (corner.hasOneRound()) {
        m_firstOfRound[corner.firstPlace] = makeRound(corner, 1, 0);
        return;
    }
    for (std::uint32_t place = 0; place < corner.edgeCount; ++place) {
        if (m_corners.isBeveled(corner, place)) {
            m_firstOfRound[corner.firstPlace + place] =
                makeRound(corner, m_corners.before(corner, place), m_corners.after(corner, place));
        }
    }
}

std::uint32_t BevelPoints::makeRound(const BevelCorner& corner, std::uint32_t from,
                                     std::uint32_t to)
{
    const auto first = static_cast<std::uint32_t>(count());
    const Vec3d& tip = m_points[corner.vertex];
    for (std::uint32_t i = 1; i < m_beveling.segments; ++i) {
        add(bevelArc(tip, place(m_corners.point(corner, from)), place(m_corners.point(corner, to)),
                     static_cast<double>(i) / m_beveling.segments, m_beveling.depth));
    }
    return first;
}

void BevelPoints::addRound(const BevelCorner& corner, std::uint32_t place, std::uint32_t fromSlot,
                           std::vector<std::uint32_t>& points) const
{
    const bool isOnly = corner.hasOneRound();
    const std::uint32_t first = m_firstOfRound[corner.firstPlace + (isOnly ? 0 : place)];
    const std::uint32_t size = m_beveling.segments - 1;
    for (std::uint32_t i = 0; first != kNone && i < size; ++i) {
        points.push_back(first + (isOnly && fromSlot == 0 ? size - 1 - i : i));
    }
}

void BevelPoints::across(const MeshEdge& ends, std::uint32_t edge, bool isStart,
                         std::vector<std::uint32_t>& points) const
{
    const BevelCorner& corner = *m_corners.ofVertex(isStart ? ends.start : ends.end);
    const std::uint32_t place = m_corners.placeOfEdge(corner, edge);
    const std::uint32_t before = m_corners.before(corner, place);
    points.clear();
    points.push_back(m_corners.point(corner, before));
    addRound(corner, place, before, points);
    points.push_back(m_corners.point(corner, m_corners.after(corner, place)));
    // Counter-clockwise about its start an edge has its left face after it.
    if (isStart) {
        std::reverse(points.begin(), points.end());
    }
}

} // namespace host::geometry
