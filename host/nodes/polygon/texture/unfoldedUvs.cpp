// Unfold3DUnfold: texture coordinates that were unfolded. How is not computed; but the node stores
// what came of it, so that it can be set again on the same mesh.
#include "host/nodes/polygon/texture/polygonTextureTypes.h"
#include "host/nodes/polygon/texture/uvInputs.h"

#include "host/geometry/mesh/texture/transferUvs.h"

namespace host::nodes {
namespace {

constexpr std::array<std::string_view, 8> kInputs{
    "inMesh",          "nodeState",          "uvSetName", "meshInfoExists",
    "uvCountsOfFaces", "uvIdsOfFaceCorners", "storedUs",  "storedVs"};
constexpr std::array<std::string_view, 1> kOutputs{"outMesh"};
enum Input : std::size_t {
    kInMesh,
    kState,
    kSetName,
    kHasResult,
    kCounts, ///< runs: so many faces of so many corners
    kIds,
    kUs,
    kVs
};

using Whole = std::vector<std::int32_t>;
using Real = std::vector<double>;

/// True where runs of faces and corners are those of the mesh.
bool areFacesOf(const geometry::MeshTopology& topology, const Whole& runs)
{
    std::uint32_t face = 0;
    for (std::size_t i = 0; i + 1 < runs.size(); i += 2) {
        for (std::int32_t count = 0; count < runs[i]; ++count, ++face) {
            if (face >= topology.faceCount() ||
                topology.endCorner(face) - topology.firstCorner(face) !=
                    static_cast<std::uint32_t>(runs[i + 1])) {
                return false;
            }
        }
    }
    return face == topology.faceCount();
}

Expected<Value> compute(ComputeContext& context)
{
    constexpr double kHasNoEffect = 1;
    MeshTask task;
    task.mesh = context.input(kInMesh).data<geometry::MeshData>();
    task.hasNoEffect = context.number(kState, 0) == kHasNoEffect;
    const std::string setName = textInput(context, kSetName);
    const bool hasResult = flagInput(context, kHasResult, false);
    const auto counts = context.input(kCounts).data<Whole>();
    const auto ids = context.input(kIds).data<Whole>();
    const auto us = context.input(kUs).data<Real>();
    const auto vs = context.input(kVs).data<Real>();
    if (!context.isComplete() || task.isIdle()) {
        return task.passed();
    }
    const bool isThere =
        hasResult && counts != nullptr && ids != nullptr && us != nullptr && vs != nullptr;
    const auto set = geometry::findUvSet(*task.mesh, setName);
    if (!isThere || !set || !areFacesOf(*task.mesh->topology, *counts)) {
        return meshResult(context, task, nullptr, Lack::Textures);
    }
    return meshResult(context, task, geometry::withStoredUvs(*task.mesh, *set, {*us, *vs, *ids}),
                      Lack::Textures);
}

} // namespace

constinit const NodeCompute kUnfold3DUnfold{
    .type = "Unfold3DUnfold", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
