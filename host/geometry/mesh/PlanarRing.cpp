#include "host/geometry/mesh/PlanarRing.h"

#include "host/geometry/mesh/polygon.h"

#include <algorithm>
#include <limits>

namespace host::geometry {
namespace {

constexpr double kGrid = 1099511627776.0; ///< 2^40 steps along the longer side

struct Box {
    double low = std::numeric_limits<double>::max();
    double high = std::numeric_limits<double>::lowest();
    void add(double value)
    {
        low = std::min(low, value);
        high = std::max(high, value);
    }
};

/// The sign of a * b - c * d for whole numbers below 2^41.
int signOfDifference(double a, double b, double c, double d)
{
    const double left = a * b;
    const double right = c * d;
    const double size = std::fabs(left) + std::fabs(right);
    const double difference = left - right;
    // Rounding moves each product by at most 2^-53 of itself; below 2^53 there is none.
    if (size < 9007199254740992.0 || std::fabs(difference) > size * 0x1p-50) {
        return difference > 0 ? 1 : difference < 0 ? -1 : 0;
    }
    constexpr int kHalf = 21;
    constexpr std::int64_t kMask = (std::int64_t(1) << kHalf) - 1;
    const auto high = [](double value) { return static_cast<std::int64_t>(value) >> kHalf; };
    const auto low = [](double value) { return static_cast<std::int64_t>(value) & kMask; };
    std::int64_t lower = low(a) * low(b) - low(c) * low(d);
    std::int64_t middle = high(a) * low(b) + low(a) * high(b) - high(c) * low(d) - low(c) * high(d);
    std::int64_t upper = high(a) * high(b) - high(c) * high(d);
    middle += lower >> kHalf;
    lower &= kMask;
    upper += middle >> kHalf;
    middle &= kMask;
    if (upper != 0) {
        return upper > 0 ? 1 : -1;
    }
    return (middle | lower) != 0 ? 1 : 0;
}

} // namespace

int turnOf(const PlanePoint& a, const PlanePoint& b, const PlanePoint& c)
{
    return signOfDifference(b.x - a.x, c.y - a.y, b.y - a.y, c.x - a.x);
}

int PlanarRing::turnAt(std::uint32_t node) const
{
    const Node& n = m_nodes[node];
    return turnOf(m_nodes[n.previous].place, n.place, m_nodes[n.next].place);
}

void PlanarRing::unlink(std::uint32_t node)
{
    const Node& n = m_nodes[node];
    m_nodes[n.previous].next = n.next;
    m_nodes[n.next].previous = n.previous;
}

void PlanarRing::place(std::span<const Vec3d> points, const Vec3d& normal)
{
    // The first axis is at right angles to the coordinate axis that the normal avoids most, so that
    // the places of a polygon in a coordinate plane are its coordinates.
    const Vec3d size{std::fabs(normal.x), std::fabs(normal.y), std::fabs(normal.z)};
    const Vec3d avoided = size.x <= size.y && size.x <= size.z ? Vec3d{1, 0, 0}
                          : size.y <= size.z                   ? Vec3d{0, 1, 0}
                                                               : Vec3d{0, 0, 1};
    const Vec3d u = normalized(cross(avoided, normal));
    const Vec3d v = cross(normal, u);
    Box across;
    Box along;
    m_nodes.resize(points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        const Vec3d offset = points[i] - points[0];
        m_nodes[i].place = {dot(offset, u), dot(offset, v)};
        m_nodes[i].point = static_cast<std::uint32_t>(i);
        across.add(m_nodes[i].place.x);
        along.add(m_nodes[i].place.y);
    }
    const double extent = std::max(across.high - across.low, along.high - along.low);
    const double scale = kGrid / extent;
    for (Node& node : m_nodes) {
        node.place.x = std::floor((node.place.x - across.low) * scale + 0.5);
        node.place.y = std::floor((node.place.y - along.low) * scale + 0.5);
    }
}

void PlanarRing::link(std::uint32_t first, std::uint32_t end, bool isReversed)
{
    for (std::uint32_t node = first; node < end; ++node) {
        const std::uint32_t before = node == first ? end - 1 : node - 1;
        const std::uint32_t after = node + 1 == end ? first : node + 1;
        m_nodes[node].previous = isReversed ? after : before;
        m_nodes[node].next = isReversed ? before : after;
    }
}

bool PlanarRing::layOut(std::span<const Vec3d> points, std::span<const std::uint32_t> loopEnds,
                        std::int64_t budget)
{
    const Vec3d normal = polygonPlane(points, loopEnds.first(1)).normal;
    const bool isFinite = std::all_of(points.begin(), points.end(), [&](const Vec3d& point) {
        return std::isfinite(dot(point - points[0], point - points[0]));
    });
    if (normal == Vec3d{} || !isFinite) {
        return false;
    }
    m_nodes.reserve(points.size() + 2 * loopEnds.size());
    place(points, normal);
    m_size = loopEnds[0];
    link(0, m_size, false);

    std::vector<Hole> holes;
    for (std::size_t loop = 1; loop < loopEnds.size(); ++loop) {
        const std::uint32_t first = loopEnds[loop - 1];
        const std::uint32_t end = loopEnds[loop];
        const double side = dot(areaVector(points.subspan(first, end - first)), normal);
        if (end - first < 3 || side == 0) {
            continue;
        }
        link(first, end, side > 0); // the face is outside of its holes
        std::uint32_t rightmost = first;
        for (std::uint32_t node = first; node < end; ++node) {
            if (m_nodes[node].place.x > m_nodes[rightmost].place.x) {
                rightmost = node;
            }
        }
        holes.push_back({rightmost, end - first});
    }
    // From the right, so that nothing but joined loops is between a hole and its bridge's end.
    std::stable_sort(holes.begin(), holes.end(), [this](const Hole& a, const Hole& b) {
        return m_nodes[a.rightmost].place.x > m_nodes[b.rightmost].place.x;
    });
    for (const Hole& hole : holes) {
        budget -= 4 * static_cast<std::int64_t>(m_size);
        if (budget < 0) {
            break;
        }
        joinHole(hole);
    }
    return true;
}

void PlanarRing::joinHole(const Hole& hole)
{
    const std::uint32_t from = hole.rightmost;
    const std::uint32_t to = bridgeEnd(from);
    if (to >= m_nodes.size()) {
        return;
    }
    // to -> from -> round the hole -> from' -> to' -> what followed `to`
    const auto fromTwin = static_cast<std::uint32_t>(m_nodes.size());
    const std::uint32_t toTwin = fromTwin + 1;
    m_nodes.push_back(m_nodes[from]);
    m_nodes.push_back(m_nodes[to]);
    m_nodes[m_nodes[from].previous].next = fromTwin;
    m_nodes[m_nodes[to].next].previous = toTwin;
    m_nodes[fromTwin].next = toTwin;
    m_nodes[toTwin].previous = fromTwin;
    m_nodes[to].next = from;
    m_nodes[from].previous = to;
    m_size += hole.size + 2;
}

bool PlanarRing::isInsideAt(std::uint32_t node, const PlanePoint& place) const
{
    const Node& n = m_nodes[node];
    const bool isLeftOfArriving = turnOf(m_nodes[n.previous].place, n.place, place) > 0;
    const bool isLeftOfLeaving = turnOf(n.place, m_nodes[n.next].place, place) > 0;
    return turnAt(node) > 0 ? isLeftOfArriving && isLeftOfLeaving
                            : isLeftOfArriving || isLeftOfLeaving;
}

/// A node at the same place, inside of whose corner the hole begins.
std::uint32_t PlanarRing::touchingNode(std::uint32_t from) const
{
    const Node& n = m_nodes[from];
    std::uint32_t node = start();
    do {
        if (m_nodes[node].place == n.place && (isInsideAt(node, m_nodes[n.next].place) ||
                                               isInsideAt(node, m_nodes[n.previous].place))) {
            return node;
        }
        node = m_nodes[node].next;
    } while (node != start());
    return static_cast<std::uint32_t>(m_nodes.size());
}

/// The start of the edge that is met first on the way to the right: one that climbs across the
/// height of `from`, as all edges do that have the polygon on their left there.
std::uint32_t PlanarRing::edgeToTheRight(std::uint32_t from) const
{
    const PlanePoint& place = m_nodes[from].place;
    auto nearest = static_cast<std::uint32_t>(m_nodes.size());
    double nearestX = std::numeric_limits<double>::max();
    std::uint32_t node = start();
    do {
        const PlanePoint& a = m_nodes[node].place;
        const PlanePoint& b = m_nodes[m_nodes[node].next].place;
        if (a.y <= place.y && b.y > place.y && turnOf(a, b, place) >= 0) {
            const double x = a.x + (place.y - a.y) * ((b.x - a.x) / (b.y - a.y));
            if (x < nearestX) {
                nearestX = x;
                nearest = node;
            }
        }
        node = m_nodes[node].next;
    } while (node != start());
    return nearest;
}

/// Of the end of the edge and the reflex nodes that stand before it, the one that is seen at the
/// smallest angle from the way to the right.
std::uint32_t PlanarRing::nearestInFront(std::uint32_t from, std::uint32_t edge) const
{
    const PlanePoint& eye = m_nodes[from].place;
    const PlanePoint& a = m_nodes[edge].place;
    const PlanePoint& b = m_nodes[m_nodes[edge].next].place;
    if (a.y == eye.y) {
        return edge;
    }
    const bool isAbove = b.x >= a.x;
    std::uint32_t best = isAbove ? m_nodes[edge].next : edge;
    const PlanePoint& goal = isAbove ? b : a;
    const int side = isAbove ? 1 : -1;
    std::uint32_t node = start();
    do {
        const PlanePoint& p = m_nodes[node].place;
        const bool isInFront = side * (p.y - eye.y) >= 0 && p.x > eye.x && turnOf(a, b, p) >= 0 &&
                               side * turnOf(eye, goal, p) <= 0;
        if (isInFront && node != best && turnAt(node) <= 0 && isInsideAt(node, eye)) {
            const int turn = side * turnOf(eye, m_nodes[best].place, p);
            if (turn < 0 || (turn == 0 && p.x < m_nodes[best].place.x)) {
                best = node;
            }
        }
        node = m_nodes[node].next;
    } while (node != start());
    return best;
}

/// The node at the place of `node` whose corner opens towards `from`: there are several where loops
/// touch or bridges end.
std::uint32_t PlanarRing::openTwin(std::uint32_t node, std::uint32_t from) const
{
    std::uint32_t twin = start();
    do {
        if (m_nodes[twin].place == m_nodes[node].place && isInsideAt(twin, m_nodes[from].place)) {
            return twin;
        }
        twin = m_nodes[twin].next;
    } while (twin != start());
    return node;
}

std::uint32_t PlanarRing::bridgeEnd(std::uint32_t from) const
{
    const std::uint32_t touching = touchingNode(from);
    if (touching < m_nodes.size()) {
        return touching;
    }
    const std::uint32_t edge = edgeToTheRight(from);
    if (edge >= m_nodes.size()) {
        return edge;
    }
    return openTwin(nearestInFront(from, edge), from);
}

} // namespace host::geometry
