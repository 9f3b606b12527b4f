// joint: the local matrix with joint orientation and segment scale compensation.
#include "host/nodes/matrixValue.h"
#include "host/nodes/nodeTypes.h"
#include "host/nodes/transformParts.h"

#include <algorithm>

namespace host::nodes {
namespace {

constexpr std::size_t kOrient = kChannelNames.size();
constexpr std::size_t kInverseScale = kOrient + 3;
constexpr std::size_t kCompensate = kOrient + 6;

constexpr auto kInputs = [] {
    std::array<std::string_view, kChannelNames.size() + 7> names{};
    std::copy(kChannelNames.begin(), kChannelNames.end(), names.begin());
    constexpr std::array<std::string_view, 7> kOwn{
        "jointOrientX",  "jointOrientY",  "jointOrientZ",          "inverseScaleX",
        "inverseScaleY", "inverseScaleZ", "segmentScaleCompensate"};
    std::copy(kOwn.begin(), kOwn.end(), names.begin() + kChannelNames.size());
    return names;
}();
constexpr std::array<std::string_view, 3> kOutputs{"matrix", "inverseMatrix", "xformMatrix"};

Expected<Value> compute(ComputeContext& context)
{
    const TransformParts parts = readTransformParts(context);
    const Vec3d orient = readVector(context, kOrient, 0);
    const Vec3d inverseScale = readVector(context, kInverseScale, 1);
    const bool compensates = context.number(kCompensate, 1) != 0;
    if (!context.isComplete()) {
        return Value();
    }
    const Matrix4 matrix = composeJoint(parts, orient, inverseScale, compensates);
    return matrixValue(context.output() == 1 ? inverse(matrix) : matrix);
}

} // namespace

constinit const NodeCompute kJoint{
    .type = "joint", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
