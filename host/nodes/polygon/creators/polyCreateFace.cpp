// polyCreateFace: one face out of stored points.
#include "host/nodes/polygon/creators/polygonCreatorTypes.h"
#include "host/nodes/wholeNumber.h"

#include "host/geometry/mesh/primitives/makeFace.h"

#include <algorithm>
#include <array>
#include <string>

namespace host::nodes {
namespace {

constexpr std::array<std::string_view, 6> kInputs{"vertices", "loop",      "subdivision",
                                                  "texture",  "uvSetName", "nodeState"};
constexpr std::array<std::string_view, 1> kOutputs{"output"};
enum Position : std::size_t { kVertices, kLoop, kSubdivision, kTexture, kUvSetName };

constexpr std::size_t kMostPoints = std::size_t{1} << 22;

std::vector<Vec3f> pointsOf(ComputeContext& context)
{
    std::vector<Vec3f> points;
    const NumericArray* stored = context.array(kVertices);
    if (stored == nullptr) {
        return points;
    }
    for (const NumericArray::Run& run : stored->runs()) {
        for (std::uint32_t i = run.first; i - run.first < run.count; ++i) {
            if (points.size() == kMostPoints) {
                context.noteUncomputed();
                return points;
            }
            points.push_back({static_cast<float>(stored->number(i, 0)),
                              static_cast<float>(stored->number(i, 1)),
                              static_cast<float>(stored->number(i, 2))});
        }
    }
    return points;
}

std::vector<std::uint32_t> loopsOf(ComputeContext& context)
{
    std::vector<std::uint32_t> sizes;
    for (const std::int32_t index : context.elementIndices(kLoop)) {
        // holes have negative sizes
        const int size = wholeNumber(context.element(kLoop, index).number(0), 0);
        sizes.push_back(static_cast<std::uint32_t>(std::abs(size)));
    }
    return sizes;
}

Expected<Value> compute(ComputeContext& context)
{
    const auto name = context.input(kUvSetName).data<std::string>();
    const bool hasUvs = context.number(kTexture, 0) != 0;
    const bool isDivided = context.number(kSubdivision, 1) > 1;
    const std::vector<std::uint32_t> loops = loopsOf(context);
    if (!context.isComplete()) {
        return Value();
    }
    if (isDivided) {
        context.noteUncomputed(); // its edges stay whole
    }
    const auto mesh = geometry::makeFace(pointsOf(context), loops, hasUvs,
                                         name != nullptr ? std::string_view(*name) : "map1");
    return mesh != nullptr ? Value(mesh) : Value();
}

} // namespace

constinit const NodeCompute kPolyCreateFace{
    .type = "polyCreateFace", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
