#include "host/geometry/mesh/MeshData.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <span>
#include <utility>

namespace host::geometry {
namespace {

std::size_t sizeOf(const auto& shared)
{
    return shared ? shared->size() : 0;
}

/// True when `starts` climbs from 0 to `total`.
bool isRunTable(std::span<const std::uint32_t> starts, std::size_t total)
{
    return !starts.empty() && starts.front() == 0 && starts.back() == total &&
           std::is_sorted(starts.begin(), starts.end());
}

bool hasValidEdges(const MeshTopology& topology)
{
    const std::uint32_t count = topology.vertexCount;
    return std::all_of(topology.edges.begin(), topology.edges.end(), [count](const MeshEdge& edge) {
        return edge.start < count && edge.end < count;
    });
}

bool hasValidReferences(const MeshTopology& topology)
{
    const std::size_t count = topology.edges.size();
    return std::all_of(
        topology.corners.begin(), topology.corners.end(), [count](std::int32_t reference) {
            return static_cast<std::size_t>(reference >= 0 ? reference : -(reference + 1)) < count;
        });
}

bool hasValidRuns(const MeshTopology& topology)
{
    if (topology.loopStart.empty()) {
        return topology.corners.empty() && topology.faceLoop.empty();
    }
    return isRunTable(topology.loopStart, topology.corners.size()) &&
           (topology.faceLoop.empty() || isRunTable(topology.faceLoop, topology.loopCount()));
}

bool hasClosedLoops(const MeshTopology& topology)
{
    for (std::uint32_t loop = 0; loop < topology.loopCount(); ++loop) {
        const std::uint32_t first = topology.loopStart[loop];
        const std::uint32_t end = topology.loopStart[loop + 1];
        for (std::uint32_t corner = first; corner < end; ++corner) {
            const std::int32_t reference = topology.corners[corner];
            const std::uint32_t reached =
                reference >= 0 ? topology.edges[static_cast<std::uint32_t>(reference)].end
                               : topology.edges[static_cast<std::uint32_t>(-(reference + 1))].start;
            if (reached != topology.cornerVertex(corner + 1 == end ? first : corner + 1)) {
                return false;
            }
        }
    }
    return true;
}

bool isValidUvSet(const UvSet& set, std::size_t cornerCount)
{
    if (sizeOf(set.corners) == 0) {
        return true;
    }
    const auto pointCount = static_cast<std::int64_t>(sizeOf(set.points));
    return set.corners->size() == cornerCount &&
           std::all_of(set.corners->begin(), set.corners->end(),
                       [pointCount](std::int32_t id) { return id >= -1 && id < pointCount; });
}

/// True when the numbers climb and exist; a missing list is an empty one.
bool isNumberList(const std::shared_ptr<const std::vector<std::uint32_t>>& numbers,
                  std::uint32_t count)
{
    if (sizeOf(numbers) == 0) {
        return true;
    }
    const bool isClimbing = std::adjacent_find(numbers->begin(), numbers->end(),
                                               std::greater_equal<>()) == numbers->end();
    return isClimbing && numbers->back() < count;
}

/// True when the numbers climb, exist and have a value each.
bool isCreaseList(std::span<const std::uint32_t> parts, std::size_t valueCount, std::size_t total)
{
    const bool isClimbing =
        std::adjacent_find(parts.begin(), parts.end(), std::greater_equal<>()) == parts.end();
    return isClimbing && parts.size() == valueCount && (parts.empty() || parts.back() < total);
}

bool hasValidCreases(const MeshData& mesh)
{
    if (mesh.creases == nullptr) {
        return true;
    }
    const MeshCreases& creases = *mesh.creases;
    return isCreaseList(creases.edges, creases.edgeValues.size(), mesh.topology->edges.size()) &&
           isCreaseList(creases.vertices, creases.vertexValues.size(), mesh.topology->vertexCount);
}

} // namespace

EdgeFlags MeshData::edgeFlags() const
{
    return edgeSmooth != nullptr ? *edgeSmooth : EdgeFlags(topology->edges.size(), 1);
}

std::shared_ptr<const EdgeFlags> shareEdgeFlags(EdgeFlags&& flags)
{
    const auto isHard = [](std::uint8_t flag) { return flag != 1; };
    return std::any_of(flags.begin(), flags.end(), isHard)
               ? std::make_shared<const EdgeFlags>(std::move(flags))
               : nullptr;
}

bool isConsistent(const MeshData& mesh)
{
    if (!mesh.topology || sizeOf(mesh.points) != mesh.topology->vertexCount) {
        return false;
    }
    const MeshTopology& topology = *mesh.topology;
    if (mesh.edgeSmooth != nullptr && mesh.edgeSmooth->size() != topology.edges.size()) {
        return false;
    }
    if (!hasValidEdges(topology) || !hasValidReferences(topology) || !hasValidRuns(topology) ||
        !hasClosedLoops(topology)) {
        return false;
    }
    return std::all_of(
               mesh.uvSets.begin(), mesh.uvSets.end(),
               [&](const UvSet& set) { return isValidUvSet(set, topology.corners.size()); }) &&
           isNumberList(mesh.invisibleFaces, topology.faceCount()) && hasValidCreases(mesh) &&
           std::all_of(mesh.groups.begin(), mesh.groups.end(),
                       [&](const FaceGroup& group) {
                           return isNumberList(group.faces, topology.faceCount());
                       }) &&
           std::all_of(mesh.pointGroups.begin(), mesh.pointGroups.end(),
                       [&](const PointGroup& group) {
                           return isNumberList(group.points, topology.vertexCount);
                       });
}

std::size_t ownedBytes(const MeshData& mesh)
{
    std::size_t bytes = 0;
    const auto add = [&](const auto& list) {
        if (list.use_count() == 1) {
            bytes += list->size() * sizeof((*list)[0]);
        }
    };
    if (mesh.topology.use_count() == 1) {
        const MeshTopology& topology = *mesh.topology;
        bytes += topology.edges.size() * sizeof(MeshEdge) +
                 topology.corners.size() * sizeof(std::int32_t) +
                 (topology.loopStart.size() + topology.faceLoop.size()) * sizeof(std::uint32_t);
    }
    add(mesh.edgeSmooth);
    add(mesh.points);
    add(mesh.lockedNormals);
    for (const UvSet& set : mesh.uvSets) {
        add(set.points);
        add(set.corners);
    }
    for (const FaceGroup& group : mesh.groups) {
        add(group.faces);
    }
    return bytes;
}

} // namespace host::geometry
