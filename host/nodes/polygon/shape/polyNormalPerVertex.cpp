// polyNormalPerVertex: normals given by hand, for vertices and for their corners in single faces.
#include "host/nodes/polygon/meshInputs.h"
#include "host/nodes/polygon/shape/polygonShapeTypes.h"

#include "host/geometry/mesh/shape/lockNormals.h"

#include <algorithm>

namespace host::nodes {
namespace {

using geometry::GivenNormal;

constexpr auto kInputs = meshInputs("vertexNormal", "vertexNormalX", "vertexNormalY",
                                    "vertexNormalZ", "vertexFaceNormal", "vertexFaceNormalX",
                                    "vertexFaceNormalY", "vertexFaceNormalZ", "normalAdd");
constexpr std::array<std::string_view, 1> kOutputs{"output"};
constexpr std::size_t kVertices = kFirstOwnInput;
constexpr std::size_t kVertexNormal = kVertices + 1;
constexpr std::size_t kFaces = kVertices + 4;
constexpr std::size_t kFaceNormal = kVertices + 5;
constexpr std::size_t kAdds = kVertices + 8;
/// What stands where no normal was given.
constexpr float kNotGiven = -999;

/// Appends the normal of an element unless it was not given.
void append(ComputeContext& context, std::size_t first, std::span<const std::int32_t> indices,
            GivenNormal given, std::vector<GivenNormal>& list)
{
    const auto number = [&](std::size_t axis) {
        return static_cast<float>(context.element(first + axis, indices).number(kNotGiven));
    };
    given.normal = {number(0), number(1), number(2)};
    const bool isGiven =
        given.normal.x != kNotGiven || given.normal.y != kNotGiven || given.normal.z != kNotGiven;
    if (isGiven) {
        list.push_back(given);
    }
}

/// Those of whole vertices before those of their corners, which are the more particular.
std::vector<GivenNormal> givenNormals(ComputeContext& context)
{
    std::vector<GivenNormal> list;
    for (const std::int32_t vertex : context.elementIndices(kVertices)) {
        const std::array<std::int32_t, 1> outer{vertex};
        const auto number = static_cast<std::uint32_t>(vertex);
        append(context, kVertexNormal, outer, {number, geometry::kAllFaces, {}}, list);
        for (const std::int32_t face : context.elementIndices(kFaces, outer)) {
            const std::array<std::int32_t, 2> both{vertex, face};
            append(context, kFaceNormal, both, {number, static_cast<std::uint32_t>(face), {}},
                   list);
        }
    }
    return list;
}

bool isPartOf(const geometry::MeshTopology& topology, const GivenNormal& given)
{
    return given.vertex < topology.vertexCount &&
           (given.face == geometry::kAllFaces || given.face < topology.faceCount());
}

Expected<Value> compute(ComputeContext& context)
{
    const MeshTask task = takeMeshTask(context);
    const std::vector<GivenNormal> given = givenNormals(context);
    const bool adds = flagInput(context, kAdds, false);
    if (!context.isComplete() || task.isIdle() || given.empty()) {
        return task.passed();
    }
    const auto isKnown = [&](const GivenNormal& one) {
        return isPartOf(*task.mesh->topology, one);
    };
    if (!std::all_of(given.begin(), given.end(), isKnown)) {
        context.noteLack(Lack::Components);
    }
    return Value(adds ? geometry::addNormals(*task.mesh, given)
                      : geometry::lockNormals(*task.mesh, given));
}

} // namespace

constinit const NodeCompute kPolyNormalPerVertex{
    .type = "polyNormalPerVertex", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
