// polySplit: faces cut along a line that a hand drew. Lines of the other way to store them (split
// points with barycentric coordinates) and subdivided lines are left out.
#include "host/nodes/polygon/meshInputs.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"

#include "host/geometry/mesh/edit/splitFaces.h"

#include <algorithm>
#include <numbers>

namespace host::nodes {
namespace {

using geometry::SplitPoint;

constexpr auto kInputs =
    meshInputs("desc", "edge", "vertices", "subdivision", "smoothingAngle", "faceId");
constexpr std::array<std::string_view, 1> kOutputs{"output"};
enum Input : std::size_t {
    kDesc = kFirstOwnInput,
    kEdge,
    kVertices,
    kSubdivision,
    kSmoothingAngle,
    kFaceId ///< of a line stored with barycentric coordinates
};

/// A description below zero is an edge's number with the highest bit set, one from zero on the
/// number of a point inside a face.
constexpr double kEdgeBit = 2147483648.0;

/// Nothing where the line names what the mesh does not have.
std::optional<std::vector<SplitPoint>> readLine(ComputeContext& context, std::size_t edgeCount)
{
    const NumericArray* const descriptions = context.array(kDesc);
    const NumericArray* const parts = context.array(kEdge);
    const NumericArray* const places = context.array(kVertices);
    std::vector<SplitPoint> line;
    if (descriptions == nullptr || descriptions->endIndex() != descriptions->elementCount()) {
        return std::nullopt;
    }
    for (std::uint32_t i = 0; i < descriptions->elementCount(); ++i) {
        const double description = descriptions->number(i, 0);
        SplitPoint point;
        if (description < 0) {
            const double edge = description + kEdgeBit;
            if (!(edge >= 0 && edge < static_cast<double>(edgeCount))) {
                return std::nullopt;
            }
            point.edge = static_cast<std::uint32_t>(edge);
            const double part = parts != nullptr ? parts->number(i, 0) : 0;
            point.part = part > 0 ? std::min(part, 1.0) : 0;
        } else {
            const auto place = static_cast<std::uint32_t>(description);
            if (places == nullptr || !places->has(place)) {
                return std::nullopt;
            }
            point.place = {places->number(place, 0), places->number(place, 1),
                           places->number(place, 2)};
        }
        line.push_back(point);
    }
    return line;
}

Expected<Value> compute(ComputeContext& context)
{
    const MeshTask task = takeMeshTask(context);
    const double angle = context.number(kSmoothingAngle, 0);
    const bool isSubdivided = context.number(kSubdivision, 1) > 1;
    const bool isOtherLine = !context.elementIndices(kFaceId).empty();
    if (!context.isComplete() || task.isIdle()) {
        return task.passed();
    }
    const auto line = readLine(context, task.mesh->topology->edges.size());
    if (!line || isSubdivided) {
        const bool isKnown = !line && !isOtherLine;
        return meshResult(context, task, nullptr, isKnown ? Lack::Components : Lack::Setting);
    }
    return meshResult(context, task, geometry::splitFaces(*task.mesh, *line, angle));
}

} // namespace

constinit const NodeCompute kPolySplit{
    .type = "polySplit", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
