// polyTweakUV: offsets added to texture coordinates, and new ones for corners.
#include "host/nodes/polygon/texture/polygonTextureTypes.h"
#include "host/nodes/polygon/texture/uvInputs.h"

#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/texture/addCornerUvs.h"
#include "host/geometry/mesh/texture/moveUvs.h"

#include <algorithm>

namespace host::nodes {
namespace {

using geometry::MeshData;
using geometry::OffsetRun;

constexpr auto kInputs = meshInputs("uvTweak", "uvTweakU", "uvTweakV", "uvSetName", "newUV",
                                    "faceId", "vertexId", "newUValue", "newVValue");
constexpr std::array<std::string_view, 1> kOutputs{"output"};
enum Position : std::size_t {
    kTweak = kFirstOwnInput,
    kTweakU,
    kTweakV,
    kSetName,
    kNewUv,
    kFace,
    kVertex,
    kNewU,
    kNewV
};
constexpr std::size_t kNumbers = 2;

/// Offsets in single precision, one run after the other.
struct Offsets {
    std::vector<OffsetRun> runs;
    std::vector<float> block;
};

/// The stored ones, then those that flow in.
Offsets readOffsets(ComputeContext& context)
{
    Offsets offsets;
    const NumericArray* stored = context.array(kTweak);
    if (stored != nullptr && stored->width() == kNumbers) {
        for (const NumericArray::Run& run : stored->runs()) {
            offsets.runs.push_back({run.first, run.count, run.offset});
        }
        if (const auto* floats = stored->numbers<float>()) {
            offsets.block = *floats;
        } else if (const auto* doubles = stored->numbers<double>()) {
            for (const double number : *doubles) {
                offsets.block.push_back(static_cast<float>(number));
            }
        }
    }
    for (const std::int32_t index : context.connectedIndices(kTweak)) {
        if (index >= 0 && (stored == nullptr || !stored->has(static_cast<std::uint32_t>(index)))) {
            offsets.runs.push_back({static_cast<std::uint32_t>(index), 1, offsets.block.size()});
            for (const Position position : {kTweakU, kTweakV}) {
                offsets.block.push_back(
                    static_cast<float>(context.element(position, index).number()));
            }
        }
    }
    return offsets;
}

std::vector<geometry::CornerUv> readNewUvs(ComputeContext& context)
{
    std::vector<geometry::CornerUv> uvs;
    for (const std::int32_t index : context.elementIndices(kNewUv)) {
        const auto number = [&](Position position) {
            return context.element(position, index).number(0);
        };
        const double face = context.element(kFace, index).number(-1);
        const double vertex = number(kVertex);
        if (face >= 0 && face < geometry::kNone && vertex >= 0 && vertex < geometry::kNone) {
            uvs.push_back({static_cast<std::uint32_t>(face),
                           static_cast<std::uint32_t>(vertex),
                           {static_cast<float>(number(kNewU)), static_cast<float>(number(kNewV))}});
        }
    }
    return uvs;
}

bool areWithin(const std::vector<OffsetRun>& runs, const geometry::UvSet& set)
{
    const std::size_t count = set.points != nullptr ? set.points->size() : 0;
    return std::all_of(runs.begin(), runs.end(), [count](const OffsetRun& run) {
        return std::size_t{run.first} + run.count <= count;
    });
}

SharedMesh tweaked(const MeshData& mesh, std::size_t set, const Offsets& offsets)
{
    auto result = std::make_shared<MeshData>(mesh);
    if (mesh.uvSets[set].points != nullptr) {
        result->uvSets[set].points = std::make_shared<const std::vector<Vec2f>>(
            geometry::addUvOffsets(*mesh.uvSets[set].points, offsets.runs, offsets.block));
    }
    return result;
}

Expected<Value> compute(ComputeContext& context)
{
    const MeshTask task = takeMeshTask(context);
    const Offsets offsets = readOffsets(context);
    const std::string setName = textInput(context, kSetName);
    const std::vector<geometry::CornerUv> newUvs = readNewUvs(context);
    if (!context.isComplete() || task.isIdle() || (offsets.runs.empty() && newUvs.empty())) {
        return task.passed();
    }
    if (!newUvs.empty()) {
        context.noteLack(Lack::Textures); // their numbers are only believed
    }
    return computeOnUvSet(context, task, setName, [&](const MeshData& mesh, std::size_t set) {
        const SharedMesh grown =
            newUvs.empty() ? nullptr : geometry::addCornerUvs(mesh, set, newUvs);
        const MeshData& whole = grown != nullptr ? *grown : mesh;
        if (!areWithin(offsets.runs, whole.uvSets[set])) {
            context.noteLack(Lack::Components);
        }
        return tweaked(whole, set, offsets);
    });
}

} // namespace

constinit const NodeCompute kPolyTweakUV{
    .type = "polyTweakUV", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
