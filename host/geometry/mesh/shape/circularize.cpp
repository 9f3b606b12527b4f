#include "host/geometry/mesh/shape/circularize.h"

#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/edit/faceFrame.h"
#include "host/geometry/mesh/polygon.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <unordered_map>

namespace host::geometry {
namespace {

void beginWithLowest(VertexLoop& loop)
{
    std::rotate(loop.begin(), std::min_element(loop.begin(), loop.end()), loop.end());
}

class Circle {
public:
    Circle(const VertexLoop& loop, const std::vector<Vec3d>& places)
    {
        std::vector<Vec3d> around;
        for (const std::uint32_t vertex : loop) {
            around.push_back(places[vertex]);
            m_center = m_center + places[vertex];
        }
        const double count = static_cast<double>(loop.size());
        m_center = m_center * (1 / count);
        const Vec3d normal = normalized(areaVector(around));
        m_frame = frameAlong(m_center, normal, around[0] - m_center);
        for (const Vec3d& place : around) {
            m_radius += length(place - m_center) / count;
        }
    }

    /// In the plane, from the direction of the first vertex.
    Vec3d at(double angle, double radialOffset, double normalOffset) const
    {
        const SineCosine turn = sineCosine(angle);
        const double radius = m_radius + radialOffset;
        return m_frame.toSpace({turn.cosine * radius, turn.sine * radius, normalOffset});
    }
    double directionOf(const Vec3d& place) const
    {
        const Vec3d local = m_frame.toLocal(place);
        const double angle = angleOf(std::fabs(local.y), local.x);
        return local.y < 0 ? -angle : angle;
    }

private:
    Vec3d m_center;
    LocalFrame m_frame;
    double m_radius = 0;
};

/// Turns loops counter-clockwise as the faces at their vertices look: by the sum of their normals.
void turnOutwards(const MeshData& mesh, std::vector<VertexLoop>& loops)
{
    const MeshTopology& topology = *mesh.topology;
    const std::vector<Vec3d> points = pointsInSpace(mesh, {});
    std::vector<std::uint32_t> loopOf(topology.vertexCount, kNone);
    std::vector<Vec3d> outward(loops.size());
    for (std::uint32_t i = 0; i < loops.size(); ++i) {
        for (const std::uint32_t vertex : loops[i]) {
            loopOf[vertex] = i;
        }
    }
    for (std::uint32_t face = 0; face < topology.faceCount(); ++face) {
        for (std::uint32_t corner = topology.firstCorner(face); corner < topology.endCorner(face);
             ++corner) {
            const std::uint32_t loop = loopOf[topology.cornerVertex(corner)];
            if (loop != kNone) {
                outward[loop] = outward[loop] + faceNormal(topology, points, face);
            }
        }
    }
    for (std::size_t i = 0; i < loops.size(); ++i) {
        std::vector<Vec3d> around;
        for (const std::uint32_t vertex : loops[i]) {
            around.push_back(points[vertex]);
        }
        if (dot(areaVector(around), outward[i]) < 0) {
            std::reverse(loops[i].begin(), loops[i].end());
        }
        beginWithLowest(loops[i]);
    }
}

} // namespace

std::vector<VertexLoop> loopsAroundFaces(const MeshTopology& topology,
                                         std::span<const std::uint32_t> faces)
{
    std::vector<std::uint32_t> uses(topology.edges.size());
    const auto eachCorner = [&](const auto& visit) {
        for (const std::uint32_t face : faces) {
            for (std::uint32_t corner = topology.firstCorner(face);
                 corner < topology.endCorner(face); ++corner) {
                visit(corner);
            }
        }
    };
    eachCorner([&](std::uint32_t corner) { ++uses[edgeOf(topology.corners[corner])]; });
    // Where the outline goes from a vertex; a vertex that it comes to twice ends it.
    std::unordered_map<std::uint32_t, std::uint32_t> next;
    const CornerLinks links(topology);
    eachCorner([&](std::uint32_t corner) {
        if (uses[edgeOf(topology.corners[corner])] == 1) {
            const auto [entry, isNew] = next.try_emplace(topology.cornerVertex(corner),
                                                         topology.cornerVertex(links.next(corner)));
            entry->second = isNew ? entry->second : kNone;
        }
    });
    std::vector<VertexLoop> loops;
    eachCorner([&](std::uint32_t corner) {
        const std::uint32_t first = topology.cornerVertex(corner);
        VertexLoop loop;
        auto at = next.find(first);
        while (at != next.end() && at->second != kNone) {
            loop.push_back(at->first);
            const std::uint32_t to = at->second;
            next.erase(at);
            at = next.find(to);
            if (to == first) {
                beginWithLowest(loop);
                loops.push_back(std::move(loop));
                return;
            }
        }
    });
    return loops;
}

EdgeLoops loopsOfEdges(const MeshData& mesh, std::span<const std::uint32_t> edges)
{
    const MeshTopology& topology = *mesh.topology;
    std::unordered_map<std::uint32_t, std::vector<std::uint32_t>> beside;
    for (const std::uint32_t edge : edges) {
        beside[topology.edges[edge].start].push_back(topology.edges[edge].end);
        beside[topology.edges[edge].end].push_back(topology.edges[edge].start);
    }
    EdgeLoops result;
    std::unordered_map<std::uint32_t, bool> isTaken;
    for (const std::uint32_t edge : edges) {
        const std::uint32_t first = topology.edges[edge].start;
        if (isTaken[first]) {
            continue;
        }
        VertexLoop loop;
        std::uint32_t last = first;
        std::uint32_t at = topology.edges[edge].end;
        loop.push_back(first);
        isTaken[first] = true;
        while (at != first && beside[at].size() == 2 && !isTaken[at]) {
            isTaken[at] = true;
            loop.push_back(at);
            const std::uint32_t next = beside[at][beside[at][0] == last ? 1 : 0];
            last = at;
            at = next;
        }
        if (at != first || beside[first].size() != 2 || loop.size() < 3) {
            result.isWhole = false;
            continue;
        }
        result.loops.push_back(std::move(loop));
    }
    turnOutwards(mesh, result.loops);
    return result;
}

std::shared_ptr<const MeshData> circularize(const MeshData& mesh, std::span<const VertexLoop> loops,
                                            const Circularity& circularity)
{
    const std::vector<Vec3d> places = pointsInSpace(mesh, circularity.toSpace);
    const Matrix4 back = inverse(circularity.toSpace);
    std::vector<Vec3f> points = *mesh.points;
    for (const VertexLoop& loop : loops) {
        if (loop.size() < 3) {
            continue;
        }
        const Circle circle(loop, places);
        const double step = 2 * std::numbers::pi / static_cast<double>(loop.size());
        for (std::size_t i = 0; i < loop.size(); ++i) {
            const double angle = circularity.isEven ? step * static_cast<double>(i)
                                                    : circle.directionOf(places[loop[i]]);
            const Vec3d place = circle.at(angle + circularity.twist, circularity.radialOffset,
                                          circularity.normalOffset);
            points[loop[i]] = toFloat(transformPoint(place, back));
        }
    }
    auto result = std::make_shared<MeshData>(mesh);
    result->points = std::make_shared<const std::vector<Vec3f>>(std::move(points));
    return result;
}

} // namespace host::geometry
