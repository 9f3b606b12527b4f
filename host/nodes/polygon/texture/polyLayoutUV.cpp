// polyLayoutUV: the pieces of texture coordinates laid out side by side.
#include "host/nodes/polygon/texture/polygonTextureTypes.h"
#include "host/nodes/polygon/texture/uvInputs.h"
#include "host/nodes/polygon/texture/uvLayoutInputs.h"

namespace host::nodes {
namespace {

using geometry::MeshData;

constexpr auto kInputs = meshInputs("uvSetName", "layout", "scale", "percentageSpace",
                                    "rotateForBestFit", "flipReversed");
constexpr std::array<std::string_view, 1> kOutputs{"output"};
enum Position : std::size_t {
    kSetName = kFirstOwnInput,
    kLayout,
    kScale,
    kSpace,
    kRotates,
    kFlipsReversed
};

/// Where the pieces come to is only believed. Pieces are not taken apart where they overlap in
/// themselves, and turned by quarters only.
Expected<Value> compute(ComputeContext& context)
{
    const MeshTask task = takeMeshTask(context);
    const std::string setName = textInput(context, kSetName);
    geometry::UvLayout layout = readLayout(context, kLayout, kScale, kSpace);
    layout.laysDown = context.number(kRotates, 0) != 0;
    const bool flipsReversed = flagInput(context, kFlipsReversed, true);
    return computeOnFaces(context, task, [&](const auto& faces) {
        context.noteLack(Lack::Textures);
        return computeOnUvSet(context, task, setName, [&](const MeshData& mesh, std::size_t set) {
            return geometry::layOutUvs(mesh, set, faces, layout, flipsReversed);
        });
    });
}

} // namespace

constinit const NodeCompute kPolyLayoutUV{
    .type = "polyLayoutUV", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
