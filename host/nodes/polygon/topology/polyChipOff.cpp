// polyChipOff: faces taken off a mesh, or copies of them.
#include "host/nodes/polygon/topology/extrusionInputs.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"

#include "host/geometry/mesh/edit/chipOffFaces.h"

namespace host::nodes {
namespace {

using geometry::MeshData;
using Numbers = std::vector<std::uint32_t>;

constexpr auto kInputs = extrusionInputs("duplicate", "offset");
enum Position : std::size_t { kDuplicate = kFirstExtrusionInput, kOffset };
constexpr std::array<std::string_view, 1> kOutputs{"output"};

Expected<Value> compute(ComputeContext& context)
{
    geometry::ChipOff chipOff;
    const ExtrusionMotion motion = readMotion(context);
    chipOff.motion = motion;
    chipOff.motion.offset = context.number(kOffset, 0);
    chipOff.isTogether = flagInput(context, kKeepFacesTogether, true);
    chipOff.duplicates = flagInput(context, kDuplicate, true);
    return computeOn(context, geometry::kFaceComponents,
                     [&](const MeshData& mesh, const Numbers& faces) {
                         noteUnless(context, motion.isWhole);
                         return chipOffFaces(mesh, faces, chipOff);
                     });
}

} // namespace

constinit const NodeCompute kPolyChipOff{
    .type = "polyChipOff", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
