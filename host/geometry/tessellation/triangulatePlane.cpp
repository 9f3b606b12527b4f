#include "host/geometry/tessellation/triangulatePlane.h"

#include "host/geometry/tessellation/DelaunayMesh.h"
#include "host/geometry/tessellation/insertionOrder.h"

#include <algorithm>
#include <cmath>

namespace host::geometry {
namespace {

/// From the plane to the grid and back.
struct GridMap {
    PlanePosition low;
    double perStep = 0; ///< size of a grid step; 0 when all points are at one place

    GridPlace toGrid(const PlanePosition& position) const
    {
        const auto step = [&](double offset) {
            const double steps = std::floor(offset / perStep + 0.5);
            return 1 + std::clamp(static_cast<std::int64_t>(steps), std::int64_t{0}, kGridSize - 2);
        };
        return {step(position.x - low.x), step(position.y - low.y)};
    }
    PlanePosition toPlane(const GridPlace& place) const
    {
        return {low.x + static_cast<double>(place.x - 1) * perStep,
                low.y + static_cast<double>(place.y - 1) * perStep};
    }
};

GridMap mapOf(std::span<const PlanePosition> points)
{
    PlanePosition low = points.front();
    PlanePosition high = low;
    for (const PlanePosition& point : points) {
        low = {std::min(low.x, point.x), std::min(low.y, point.y)};
        high = {std::max(high.x, point.x), std::max(high.y, point.y)};
    }
    const double size = std::max(high.x - low.x, high.y - low.y);
    return {low, size / static_cast<double>(kGridSize - 2)};
}

Expected<void> check(std::span<const PlanePosition> points, std::span<const PlaneSegment> segments)
{
    if (points.size() > kMaxPlanePoints || segments.size() > 2 * kMaxPlanePoints) {
        return Error{ErrorCode::Limit, "too many points to triangulate", {}};
    }
    for (const PlanePosition& point : points) {
        constexpr double kLargest = 1e150;
        if (!(std::fabs(point.x) < kLargest && std::fabs(point.y) < kLargest)) {
            return Error{ErrorCode::BadInput, "a point is not finite", {}};
        }
    }
    for (const PlaneSegment& segment : segments) {
        if (segment.from >= points.size() || segment.to >= points.size()) {
            return Error{ErrorCode::BadInput, "a segment names no point", {}};
        }
    }
    return {};
}

/// One call at work.
class Filling {
public:
    Filling(std::span<const PlanePosition> points)
        : m_map(mapOf(points)), m_mesh(points.size(), kFreeSteps + kStepsPerPoint * points.size())
    {
    }

    bool hasExtent() const { return m_map.perStep > 0; }
    bool insert(std::span<const PlanePosition> points);
    bool keep(std::span<const PlaneSegment> segments);
    void collect(FillRule rule, std::size_t pointCount, PlaneTriangulation& result);

private:
    std::vector<std::uint8_t> insideTriangles(FillRule rule) const;
    std::vector<std::uint32_t> outputIndices(std::size_t pointCount,
                                             PlaneTriangulation& result) const;

    GridMap m_map;
    DelaunayMesh m_mesh;
    std::vector<std::uint32_t> m_vertexOf; ///< per point
};

bool Filling::insert(std::span<const PlanePosition> points)
{
    std::vector<GridPlace> places(points.size());
    std::transform(points.begin(), points.end(), places.begin(),
                   [&](const PlanePosition& point) { return m_map.toGrid(point); });
    m_vertexOf.resize(points.size());
    for (const std::uint32_t point : insertionOrder(places)) {
        m_vertexOf[point] = m_mesh.insert(places[point]);
        if (m_mesh.isSpent()) {
            return false;
        }
    }
    return true;
}

bool Filling::keep(std::span<const PlaneSegment> segments)
{
    for (const PlaneSegment& segment : segments) {
        const std::int32_t outer = segment.isHole ? 0 : 1;
        m_mesh.keep(m_vertexOf[segment.from], m_vertexOf[segment.to], {outer, 1 - outer});
        if (m_mesh.isSpent()) {
            return false;
        }
    }
    return true;
}

bool isInside(const EdgeTurns& turns, FillRule rule)
{
    return rule == FillRule::EvenOdd ? (turns.outer + turns.hole) % 2 != 0
                                     : turns.outer != 0 && turns.hole == 0;
}

/// Counts the turns round each triangle, from the corner of the square on. A triangle left of an
/// edge has the edge's turns more than the one on its right.
std::vector<std::uint8_t> Filling::insideTriangles(FillRule rule) const
{
    std::vector<EdgeTurns> turns(m_mesh.triangleCount());
    std::vector<std::uint8_t> isSeen(m_mesh.triangleCount(), 0);
    std::vector<std::uint32_t> queue;
    for (std::uint32_t edge = 0; queue.empty(); ++edge) {
        if (m_mesh.twin(edge) == DelaunayMesh::kNone) {
            queue.push_back(edge / 3);
            isSeen[edge / 3] = 1;
        }
    }
    while (!queue.empty()) {
        const std::uint32_t triangle = queue.back();
        queue.pop_back();
        for (std::uint32_t edge = 3 * triangle; edge < 3 * triangle + 3; ++edge) {
            const std::uint32_t twin = m_mesh.twin(edge);
            if (twin != DelaunayMesh::kNone && isSeen[twin / 3] == 0) {
                isSeen[twin / 3] = 1;
                const EdgeTurns& along = m_mesh.turns(edge);
                turns[twin / 3] = {turns[triangle].outer - along.outer,
                                   turns[triangle].hole - along.hole};
                queue.push_back(twin / 3);
            }
        }
    }
    for (std::size_t i = 0; i < turns.size(); ++i) {
        isSeen[i] = isInside(turns[i], rule) ? 1 : 0;
    }
    return isSeen;
}

/// Per vertex its index in the result, and the stand-ins and added points with it.
std::vector<std::uint32_t> Filling::outputIndices(std::size_t pointCount,
                                                  PlaneTriangulation& result) const
{
    std::vector<std::uint32_t> index(m_mesh.vertexCount(), DelaunayMesh::kNone);
    result.standIn.resize(pointCount);
    for (std::uint32_t point = 0; point < pointCount; ++point) {
        std::uint32_t& first = index[m_vertexOf[point]];
        first = std::min(first, point);
        result.standIn[point] = first;
    }
    for (std::uint32_t vertex = DelaunayMesh::kFrameVertices; vertex < index.size(); ++vertex) {
        if (index[vertex] == DelaunayMesh::kNone) {
            index[vertex] = static_cast<std::uint32_t>(pointCount + result.added.size());
            result.added.push_back(m_map.toPlane(m_mesh.place(vertex)));
        }
    }
    return index;
}

void Filling::collect(FillRule rule, std::size_t pointCount, PlaneTriangulation& result)
{
    const std::vector<std::uint8_t> inside = insideTriangles(rule);
    const std::vector<std::uint32_t> index = outputIndices(pointCount, result);
    result.hasDetours = m_mesh.hasDetours();
    result.triangles.reserve(3 *
                             static_cast<std::size_t>(std::count(inside.begin(), inside.end(), 1)));
    for (std::uint32_t edge = 0; edge < 3 * m_mesh.triangleCount(); ++edge) {
        if (inside[edge / 3] != 0) {
            result.triangles.push_back(index[m_mesh.origin(edge)]);
        }
    }
}

} // namespace

Expected<PlaneTriangulation> triangulatePlane(std::span<const PlanePosition> points,
                                              std::span<const PlaneSegment> segments, FillRule rule)
{
    if (const auto checked = check(points, segments); !checked) {
        return checked.error();
    }
    PlaneTriangulation result;
    if (points.empty()) {
        return result;
    }
    Filling filling(points);
    if (!filling.hasExtent()) {
        result.standIn.assign(points.size(), 0);
        return result;
    }
    if (!filling.insert(points) || !filling.keep(segments)) {
        return Error{ErrorCode::Limit, "loops too entangled to triangulate", {}};
    }
    filling.collect(rule, points.size(), result);
    return result;
}

void appendLoop(std::span<const std::uint32_t> loop, bool isHole,
                std::vector<PlaneSegment>& segments)
{
    for (std::size_t i = 0; i < loop.size(); ++i) {
        segments.push_back({loop[i], loop[i + 1 == loop.size() ? 0 : i + 1], isHole});
    }
}

double loopArea(std::span<const PlanePosition> points, std::span<const std::uint32_t> loop)
{
    double twice = 0;
    for (std::size_t i = 1; i + 1 < loop.size(); ++i) {
        const PlanePosition& origin = points[loop[0]];
        const PlanePosition& a = points[loop[i]];
        const PlanePosition& b = points[loop[i + 1]];
        twice += (a.x - origin.x) * (b.y - origin.y) - (a.y - origin.y) * (b.x - origin.x);
    }
    return twice / 2;
}

} // namespace host::geometry
