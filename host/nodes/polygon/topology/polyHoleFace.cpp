// polyHoleFace: faces that are holes: they are there, but not to be seen.
#include "host/nodes/polygon/topology/componentOperation.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"

#include <algorithm>
#include <iterator>

namespace host::nodes {
namespace {

using Numbers = std::vector<std::uint32_t>;

constexpr auto kInputs = meshInputs("assignHole");
constexpr std::array<std::string_view, 1> kOutputs{"output"};
enum Input : std::size_t { kAssignHole = kFirstOwnInput };

SharedMesh withHoles(const geometry::MeshData& mesh, const Numbers& faces, bool areHoles)
{
    const Numbers before = mesh.invisibleFaces != nullptr ? *mesh.invisibleFaces : Numbers();
    Numbers holes;
    const auto into = std::back_inserter(holes);
    if (areHoles) {
        std::set_union(before.begin(), before.end(), faces.begin(), faces.end(), into);
    } else {
        std::set_difference(before.begin(), before.end(), faces.begin(), faces.end(), into);
    }
    auto result = std::make_shared<geometry::MeshData>(mesh);
    result->invisibleFaces = std::make_shared<const Numbers>(std::move(holes));
    return result;
}

Expected<Value> compute(ComputeContext& context)
{
    const bool areHoles = flagInput(context, kAssignHole, true);
    return computeOn(context, geometry::kFaceComponents,
                     [areHoles](const geometry::MeshData& mesh, const Numbers& faces) {
                         return withHoles(mesh, faces, areHoles);
                     });
}

} // namespace

constinit const NodeCompute kPolyHoleFace{
    .type = "polyHoleFace", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
