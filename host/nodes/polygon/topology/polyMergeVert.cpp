// polyMergeVert: near vertices become one.
#include "host/nodes/polygon/topology/componentOperation.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"
#include "host/nodes/polygon/workSpace.h"

#include "host/geometry/mesh/edit/clusterVertices.h"

namespace host::nodes {
namespace {

using geometry::MeshData;
using Numbers = std::vector<std::uint32_t>;

constexpr auto kInputs = meshInputs("inputMatrix", "worldSpace", "distance",
                                    "alwaysMergeTwoVertices", "mergeToComponents");
enum Position : std::size_t {
    kMatrix = kFirstOwnInput,
    kWorldSpace,
    kDistance,
    kAlwaysMergeTwo,
    kMergeTo
};
constexpr std::array<std::string_view, 1> kOutputs{"output"};

struct Merging {
    Matrix4 matrix; ///< leads to the space in which distances are measured
    double distance = 0;
    bool alwaysMergesTwo = false;
    Numbers mergeTo; ///< vertices at whose middle all others come together; empty: none
};

Numbers vertexList(const MeshData* mesh, const Shared<ComponentList>& list)
{
    if (mesh == nullptr || list == nullptr) {
        return {};
    }
    return geometry::parseComponentList(list->components, geometry::kVertexComponents,
                                        mesh->topology->vertexCount);
}

Merging takeMerging(ComputeContext& context)
{
    Merging merging;
    const Value matrix = context.input(kMatrix);
    if (context.number(kWorldSpace, 0) != 0) {
        merging.matrix = matrixOf(matrix);
    }
    merging.distance = context.number(kDistance, 0.01);
    merging.alwaysMergesTwo = context.number(kAlwaysMergeTwo, 0) != 0;
    const auto mesh = context.input(kInputPolymesh).data<MeshData>();
    merging.mergeTo = vertexList(mesh.get(), context.input(kMergeTo).data<ComponentList>());
    return merging;
}

SharedMesh merge(const MeshData& mesh, const Numbers& vertices, const Merging& merging)
{
    constexpr std::size_t kTwo = 2;
    if (!merging.mergeTo.empty()) {
        return joinVertices(mesh,
                            joinAll(mesh, vertices, geometry::meanPoint(mesh, merging.mergeTo)));
    }
    if (merging.alwaysMergesTwo && vertices.size() == kTwo) {
        return joinVertices(mesh, joinAll(mesh, vertices, geometry::meanPoint(mesh, vertices)));
    }
    const std::vector<Vec3d> places = geometry::placesIn(mesh, merging.matrix);
    return joinVertices(mesh, joinWithin(mesh, vertices, places, merging.distance));
}

Expected<Value> compute(ComputeContext& context)
{
    const Merging merging = takeMerging(context);
    return computeOn(context, geometry::kVertexComponents,
                     inSpace(merging.matrix, [&](const MeshData& mesh, const Numbers& vertices) {
                         return merge(mesh, vertices, merging);
                     }));
}

} // namespace

constinit const NodeCompute kPolyMergeVert{
    .type = "polyMergeVert", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
