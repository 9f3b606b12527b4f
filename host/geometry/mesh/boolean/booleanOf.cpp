#include "host/geometry/mesh/boolean/booleanOf.h"

#include "host/geometry/mesh/boolean/cutSolids.h"
#include "host/geometry/mesh/boolean/joinPieces.h"
#include "host/geometry/mesh/boolean/solidsOf.h"
#include "host/geometry/mesh/polygon.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <vector>

namespace host::geometry {
namespace {

using SharedMesh = std::shared_ptr<const MeshData>;

/// A result that crosses itself, or comes of a solid that does, is told by its volume.
bool isPlausible(double volume, double first, double second, BooleanOperation operation)
{
    constexpr double kShare = 1e-6;
    const double slack = kShare * (first + second);
    switch (operation) {
    case BooleanOperation::Union:
        return volume >= std::max(first, second) - slack && volume <= first + second + slack;
    case BooleanOperation::Difference:
        return volume >= std::max(first - second, 0.0) - slack && volume <= first + slack;
    case BooleanOperation::Intersection:
        return volume >= -slack && volume <= std::min(first, second) + slack;
    }
    return false;
}

/// What is left after each step.
class SolidFolder {
public:
    SolidFolder(std::vector<Solid> solids, BooleanOperation operation)
        : m_solids(std::move(solids)), m_operation(operation), m_areWhole(m_solids.size())
    {
        take(0);
    }

    /// False where it cannot be carried out.
    bool run();
    const Solid& left() const { return m_left; }
    /// Of each part: whether all of it is left, uncut.
    const std::vector<std::uint8_t>& areWhole() const { return m_areWhole; }

private:
    void take(std::size_t part);
    bool cut(const Solid& solid);

    std::vector<Solid> m_solids;
    BooleanOperation m_operation;
    std::vector<std::uint8_t> m_areWhole;
    Solid m_left;
    SolidBox m_box;
    std::size_t m_steps = 0;
    std::size_t m_meetings = kMostMeetingTriangles;
};

/// Puts a part beside what is there.
void SolidFolder::take(std::size_t part)
{
    const auto offset = static_cast<std::uint32_t>(m_left.points.size());
    const Solid& solid = m_solids[part];
    m_left.points.insert(m_left.points.end(), solid.points.begin(), solid.points.end());
    for (SolidTriangle triangle : solid.triangles) {
        for (std::uint32_t& corner : triangle.corners) {
            corner += offset;
        }
        m_left.triangles.push_back(triangle);
    }
    m_box = boxOfBoth(m_box, boxOf(solid));
    m_areWhole[part] = 1;
}

bool SolidFolder::cut(const Solid& solid)
{
    m_steps += m_left.triangles.size() + solid.triangles.size();
    if (m_steps > kMostBooleanSteps) {
        return false;
    }
    std::optional<Solid> left = cutSolids(m_left, solid, m_operation, m_meetings);
    if (!left || !isPlausible(volumeOf(*left), volumeOf(m_left), volumeOf(solid), m_operation)) {
        return false;
    }
    m_left = std::move(*left);
    m_box = boxOf(m_left);
    std::fill(m_areWhole.begin(), m_areWhole.end(), std::uint8_t{0});
    return true;
}

bool SolidFolder::run()
{
    for (std::size_t part = 1; part < m_solids.size(); ++part) {
        if (!areApart(m_box, boxOf(m_solids[part]))) {
            if (!cut(m_solids[part])) {
                return false;
            }
        } else if (m_operation == BooleanOperation::Union) {
            take(part);
        } else if (m_operation == BooleanOperation::Intersection) {
            std::fill(m_areWhole.begin(), m_areWhole.end(), std::uint8_t{0});
            m_left = {};
            m_box = {};
        }
    }
    return true;
}

bool areFinite(const MeshData& mesh)
{
    return std::all_of(mesh.points->begin(), mesh.points->end(), [](const Vec3f& point) {
        return std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.z);
    });
}

std::vector<std::uint32_t> firstFacesOf(std::span<const UnitedMesh> parts)
{
    std::vector<std::uint32_t> firstFaces;
    std::uint32_t next = 0;
    for (const UnitedMesh& part : parts) {
        firstFaces.push_back(next);
        next += part.mesh->topology->faceCount();
    }
    return firstFaces;
}

/// As many as `triangulate` makes, but for faces that it leaves out.
std::size_t triangleCountOf(const MeshTopology& topology)
{
    const std::size_t faces = topology.faceCount();
    const std::size_t sum = topology.corners.size() + 2 * std::size_t{topology.loopCount()};
    return sum - std::min(sum, 4 * faces);
}

} // namespace

std::shared_ptr<const MeshData> booleanOf(std::span<const UnitedMesh> parts,
                                          BooleanOperation operation, UvSetMerging merging)
{
    const SharedMesh united = uniteMeshes(parts, merging);
    if (united == nullptr || parts.size() == 1) {
        return united;
    }
    const MeshTopology& topology = *united->topology;
    if (triangleCountOf(topology) > kMostBooleanTriangles || !areFinite(*united)) {
        return nullptr;
    }
    const Triangulation triangles =
        triangulate(topology, cornerVertices(topology), *united->points, united->quadSplit);
    const std::vector<std::uint32_t> firstFaces = firstFacesOf(parts);
    const SolidGrid grid(*united->points);
    SolidFolder folder(solidsOf(*united, triangles, firstFaces, grid), operation);
    if (!folder.run()) {
        return nullptr;
    }
    const std::vector<std::uint8_t>& areWhole = folder.areWhole();
    if (std::find(areWhole.begin(), areWhole.end(), std::uint8_t{0}) == areWhole.end()) {
        return united;
    }
    return joinPieces({*united, triangles, grid, firstFaces, areWhole}, folder.left());
}

} // namespace host::geometry
