// The nodes that do nothing but to colour meshes, or to write a user's data on them. A mesh here
// has neither, and nothing that reads one asks for them: so what comes out is exactly what comes
// in.
#include "host/nodes/polygon/texture/polygonTextureTypes.h"

#include <array>

namespace host::nodes {
namespace {

constexpr std::array<std::string_view, 1> kModifierInputs{"inputPolymesh"};
constexpr std::array<std::string_view, 1> kModifierOutputs{"output"};
constexpr std::array<std::string_view, 1> kSetInputs{"inputGeometry"};
constexpr std::array<std::string_view, 1> kSetOutputs{"outputGeometry"};
constexpr std::array<std::string_view, 1> kDataInputs{"inMesh"};
constexpr std::array<std::string_view, 1> kDataOutputs{"outMesh"};

Expected<Value> pass(ComputeContext& context)
{
    return context.input(0);
}

constexpr NodeCompute modifier(std::string_view type)
{
    return {.type = type, .inputs = kModifierInputs, .outputs = kModifierOutputs, .compute = pass};
}

constexpr NodeCompute colorSet(std::string_view type)
{
    return {.type = type, .inputs = kSetInputs, .outputs = kSetOutputs, .compute = pass};
}

} // namespace

constinit const NodeCompute kPolyBlindData{
    .type = "polyBlindData", .inputs = kDataInputs, .outputs = kDataOutputs, .compute = pass};
constinit const NodeCompute kPolyColorPerVertex = modifier("polyColorPerVertex");
constinit const NodeCompute kPolyColorDel = modifier("polyColorDel");
constinit const NodeCompute kPolyColorMod = modifier("polyColorMod");
constinit const NodeCompute kBlendColorSets = modifier("blendColorSets");
constinit const NodeCompute kCreateColorSet = colorSet("createColorSet");
constinit const NodeCompute kDeleteColorSet = colorSet("deleteColorSet");
constinit const NodeCompute kCopyColorSet = colorSet("copyColorSet");

} // namespace host::nodes
