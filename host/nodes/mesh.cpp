// mesh: what comes in, else what the file stored, moved by the shape's own tweaks, and cut and
// shaded as the shape says.
#include "host/nodes/nodeTypes.h"
#include "host/nodes/pointOffsets.h"

#include <algorithm>
#include <array>

namespace host::nodes {
namespace {

constexpr std::array<std::string_view, 8> kInputs{
    "inMesh", "cachedInMesh", "pnts", "quadSplit", "vertexNormalMethod", "pntx", "pnty", "pntz"};
constexpr std::size_t kTweaks = 2;
constexpr std::size_t kTweakX = 5;
constexpr std::array<std::string_view, 2> kOutputs{"outMesh", "worldMesh"};
constexpr std::size_t kWorldMesh = 1;

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

/// Says of a mesh for the world which shape's instance it is, of others that it is none's.
Shared<geometry::MeshData> marked(const Shared<geometry::MeshData>& mesh,
                                  const geometry::ShapeMark& mark)
{
    if (mesh->shape == mark) {
        return mesh;
    }
    auto changed = std::make_shared<geometry::MeshData>(*mesh);
    changed->shape = mark;
    return changed;
}

Expected<Value> compute(ComputeContext& context)
{
    auto mesh = context.input(0).data<geometry::MeshData>();
    const bool isMade = mesh != nullptr;
    if (mesh == nullptr) {
        mesh = context.input(1).data<geometry::MeshData>();
    }
    const PointOffsets tweaks(context, kTweaks, kTweakX);
    const Value quadSplit = context.input(3);
    const Value normalMethod = context.input(4);
    if (mesh == nullptr || !context.isComplete()) {
        return Value();
    }
    if (isMade && !tweaks.areWithin(mesh->topology->vertexCount)) {
        context.noteLack(Lack::Components); // a sign that the history numbers otherwise
    }
    const bool isForWorld = context.output() == kWorldMesh;
    const geometry::ShapeMark mark =
        isForWorld ? geometry::ShapeMark{context.nodeNumber(), std::max(0, context.index())}
                   : geometry::ShapeMark{};
    return Value(marked(styled(tweaks.applied(mesh), quadSplit, normalMethod), mark));
}

} // namespace

constinit const NodeCompute kMesh{
    .type = "mesh", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
