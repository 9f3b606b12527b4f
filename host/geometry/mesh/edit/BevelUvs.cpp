#include "host/geometry/mesh/edit/BevelUvs.h"

#include <cmath>

namespace host::geometry {

BevelUvs::BevelUvs(MeshRewriter& rewriter, const CornerLinks& links, std::span<const Vec3d> points,
                   std::size_t pointCount)
    : m_rewriter(rewriter)
    , m_topology(*rewriter.before().topology)
    , m_links(links)
    , m_points(points)
    , m_sets(rewriter.uvSetCount())
{
    for (std::size_t set = 0; set < m_sets.size(); ++set) {
        m_sets[set].firstId = rewriter.uvPoints(set).size();
        m_sets[set].last.assign(pointCount, kNone);
        m_sets[set].near.resize(m_topology.corners.size());
    }
}

void BevelUvs::keep(std::uint32_t faceCorner, std::span<std::int32_t> ids) const
{
    for (std::size_t set = 0; set < ids.size(); ++set) {
        ids[set] = m_rewriter.uvId(set, faceCorner);
    }
}

void BevelUvs::near(std::uint32_t faceCorner, std::uint32_t point, const Vec3d& place,
                    std::span<std::int32_t> ids)
{
    // strips and faces beside each other ask for the same points one after the other
    for (std::size_t set = 0; set < ids.size(); ++set) {
        Near& known = m_sets[set].near[faceCorner];
        if (known.point != point) {
            known.point = findNear(set, faceCorner, place, known.place) ? point : kNone;
        }
        ids[set] = known.point == kNone ? -1 : copy(set, point, known.place);
    }
}

bool BevelUvs::findNear(std::size_t set, std::uint32_t faceCorner, const Vec3d& place,
                        Vec2f& found) const
{
    const std::int32_t here = m_rewriter.uvId(set, faceCorner);
    const std::int32_t next = m_rewriter.uvId(set, m_links.next(faceCorner));
    const std::int32_t last = m_rewriter.uvId(set, m_links.previous(faceCorner));
    if (here < 0 || next < 0 || last < 0) {
        return false;
    }
    const auto [along, back] = partsOf(faceCorner, place);
    const Vec2f a = uvPoint(set, here);
    const Vec2f b = uvPoint(set, next);
    const Vec2f c = uvPoint(set, last);
    const double x = a.x + along * (double{b.x} - a.x) + back * (double{c.x} - a.x);
    const double y = a.y + along * (double{b.y} - a.y) + back * (double{c.y} - a.y);
    found = {static_cast<float>(x), static_cast<float>(y)};
    return true;
}

void BevelUvs::between(std::span<const std::int32_t> first, std::span<const std::int32_t> last,
                       double part, std::uint32_t point, std::span<std::int32_t> ids)
{
    for (std::size_t set = 0; set < ids.size(); ++set) {
        ids[set] = -1;
        if (first[set] >= 0 && last[set] >= 0) {
            const Vec2f a = uvPoint(set, first[set]);
            const Vec2f b = uvPoint(set, last[set]);
            ids[set] = copy(set, point,
                            {static_cast<float>(a.x + part * (double{b.x} - a.x)),
                             static_cast<float>(a.y + part * (double{b.y} - a.y))});
        }
    }
}

Vec2f BevelUvs::uvPoint(std::size_t set, std::int32_t id) const
{
    return m_rewriter.uvPoints(set)[static_cast<std::size_t>(id)];
}

std::int32_t BevelUvs::copy(std::size_t set, std::uint32_t point, const Vec2f& place)
{
    constexpr float kSame = 1e-6F;
    Copies& copies = m_sets[set];
    std::uint32_t at = copies.last[point];
    for (std::uint32_t i = 0; at != kNone && i < kMostCompared; ++i) {
        const auto id = static_cast<std::int32_t>(copies.firstId + at);
        const Vec2f other = uvPoint(set, id);
        if (std::fabs(other.x - place.x) <= kSame && std::fabs(other.y - place.y) <= kSame) {
            return id;
        }
        at = copies.back[at];
    }
    const std::int32_t id = m_rewriter.addUv(set, place);
    if (!m_rewriter.isFull()) {
        copies.back.push_back(copies.last[point]);
        copies.last[point] = static_cast<std::uint32_t>(copies.back.size() - 1);
    }
    return id;
}

/// A point as parts of the ways from a face's corner to the next one and to the last one.
std::pair<double, double> BevelUvs::partsOf(std::uint32_t faceCorner, const Vec3d& place) const
{
    constexpr double kLeastSine = 0.01;
    const Vec3d& tip = m_points[m_topology.cornerVertex(faceCorner)];
    const Vec3d a = m_points[m_topology.cornerVertex(m_links.next(faceCorner))] - tip;
    const Vec3d b = m_points[m_topology.cornerVertex(m_links.previous(faceCorner))] - tip;
    const Vec3d way = place - tip;
    const double aa = dot(a, a);
    const double bb = dot(b, b);
    const double ab = dot(a, b);
    const double determinant = aa * bb - ab * ab;
    if (!(determinant > kLeastSine * kLeastSine * aa * bb)) {
        return {0, 0};
    }
    return {(dot(way, a) * bb - dot(way, b) * ab) / determinant,
            (dot(way, b) * aa - dot(way, a) * ab) / determinant};
}

} // namespace host::geometry
