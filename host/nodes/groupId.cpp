// groupId: a number that no other group of the scene has.
#include "host/nodes/nodeTypes.h"

#include <array>

namespace host::nodes {
namespace {

constexpr std::array<std::string_view, 1> kOutputs{"groupId"};

Expected<Value> compute(ComputeContext& context)
{
    return Value(static_cast<double>(context.nodeNumber()));
}

} // namespace

constinit const NodeCompute kGroupId{
    .type = "groupId", .inputs = {}, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
