// mesh: what comes in, else what the file stored, moved by the shape's own tweaks.
#include "host/nodes/nodeTypes.h"

#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/mesh/normals.h"
#include "host/geometry/mesh/tweak.h"

#include <array>

namespace host::nodes {
namespace {

constexpr std::array<std::string_view, 3> kInputs{"inMesh", "cachedInMesh", "pnts"};
constexpr std::array<std::string_view, 2> kOutputs{"outMesh", "worldMesh"};
constexpr std::size_t kCoordinates = 3;

std::vector<geometry::OffsetRun> offsetRuns(const NumericArray& tweaks)
{
    std::vector<geometry::OffsetRun> runs;
    runs.reserve(tweaks.runs().size());
    for (const NumericArray::Run& run : tweaks.runs()) {
        runs.push_back({run.first, run.count, run.offset});
    }
    return runs;
}

/// The tweaks in single precision, in which points are.
std::vector<float> offsetBlock(const NumericArray& tweaks)
{
    if (const auto* floats = tweaks.numbers<float>()) {
        return *floats;
    }
    std::vector<float> block;
    if (const auto* doubles = tweaks.numbers<double>()) {
        block.reserve(doubles->size());
        for (const double number : *doubles) {
            block.push_back(static_cast<float>(number));
        }
    }
    return block;
}

Shared<geometry::MeshData> tweaked(const Shared<geometry::MeshData>& mesh,
                                   const NumericArray* tweaks)
{
    if (tweaks == nullptr || tweaks->empty() || tweaks->width() != kCoordinates) {
        return mesh;
    }
    auto moved = std::make_shared<geometry::MeshData>(*mesh);
    moved->points = std::make_shared<const std::vector<Vec3f>>(
        geometry::addOffsets(geometry::pointsOf(*mesh), offsetRuns(*tweaks), offsetBlock(*tweaks)));
    return moved;
}

Expected<Value> compute(ComputeContext& context)
{
    auto mesh = context.input(0).data<geometry::MeshData>();
    if (mesh == nullptr) {
        mesh = context.input(1).data<geometry::MeshData>();
    }
    if (mesh == nullptr || !context.isComplete()) {
        return Value();
    }
    return Value(tweaked(mesh, context.array(2)));
}

} // namespace

constinit const NodeCompute kMesh{
    .type = "mesh", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
