// mesh: what comes in, else what the file stored, moved by the shape's own tweaks, and cut and
// shaded as the shape says.
#include "host/nodes/nodeTypes.h"

#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/mesh/normals.h"
#include "host/geometry/mesh/tweak.h"

#include <array>

namespace host::nodes {
namespace {

constexpr std::array<std::string_view, 8> kInputs{
    "inMesh", "cachedInMesh", "pnts", "quadSplit", "vertexNormalMethod", "pntx", "pnty", "pntz"};
constexpr std::size_t kTweaks = 2;
constexpr std::size_t kTweakX = 5;
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

/// The offset of a point that something is connected to.
struct LivingTweak {
    std::size_t point = 0;
    Vec3f offset;
};

std::vector<LivingTweak> livingTweaks(ComputeContext& context)
{
    std::vector<LivingTweak> tweaks;
    for (const std::int32_t index : context.connectedIndices(kTweaks)) {
        const Vec3d offset{context.element(kTweakX, index).number(),
                           context.element(kTweakX + 1, index).number(),
                           context.element(kTweakX + 2, index).number()};
        tweaks.push_back({static_cast<std::size_t>(index), toFloat(offset)});
    }
    return tweaks;
}

Vec3f sum(const Vec3f& a, const Vec3f& b)
{
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

Shared<geometry::MeshData> tweaked(const Shared<geometry::MeshData>& mesh,
                                   const NumericArray* tweaks,
                                   const std::vector<LivingTweak>& living)
{
    const bool isStored = tweaks != nullptr && !tweaks->empty() && tweaks->width() == kCoordinates;
    if (!isStored && living.empty()) {
        return mesh;
    }
    const std::span<const Vec3f> before = geometry::pointsOf(*mesh);
    std::vector<Vec3f> points(before.begin(), before.end());
    if (isStored) {
        points = geometry::addOffsets(before, offsetRuns(*tweaks), offsetBlock(*tweaks));
    }
    for (const LivingTweak& tweak : living) {
        if (tweak.point < points.size()) {
            points[tweak.point] = sum(before[tweak.point], tweak.offset);
        }
    }
    auto moved = std::make_shared<geometry::MeshData>(*mesh);
    moved->points = std::make_shared<const std::vector<Vec3f>>(std::move(points));
    return moved;
}

/// An enumeration's value, or `fallback` where the number is none of its `count` values.
template<class T>
T enumerated(const Value& value, int count, T fallback)
{
    const double number = value.number(-1);
    return number >= 0 && number < count ? static_cast<T>(number) : fallback;
}

/// How this shape has quads cut and normals weighed, whatever shape the mesh was stored in.
Shared<geometry::MeshData> styled(const Shared<geometry::MeshData>& mesh, const Value& quadSplit,
                                  const Value& vertexNormalMethod)
{
    const auto split = enumerated(quadSplit, 3, mesh->quadSplit);
    const auto weighting = enumerated(vertexNormalMethod, 4, mesh->normalWeighting);
    if (split == mesh->quadSplit && weighting == mesh->normalWeighting) {
        return mesh;
    }
    auto changed = std::make_shared<geometry::MeshData>(*mesh);
    changed->quadSplit = split;
    changed->normalWeighting = weighting;
    return changed;
}

Expected<Value> compute(ComputeContext& context)
{
    auto mesh = context.input(0).data<geometry::MeshData>();
    if (mesh == nullptr) {
        mesh = context.input(1).data<geometry::MeshData>();
    }
    const std::vector<LivingTweak> living = livingTweaks(context);
    const Value quadSplit = context.input(3);
    const Value normalMethod = context.input(4);
    if (mesh == nullptr || !context.isComplete()) {
        return Value();
    }
    return Value(styled(tweaked(mesh, context.array(kTweaks), living), quadSplit, normalMethod));
}

} // namespace

constinit const NodeCompute kMesh{
    .type = "mesh", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
