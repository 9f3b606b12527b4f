// Computations that stand in for real ones, on types of the tables.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/types/ComputeContext.h"

#include <array>
#include <memory>
#include <utility>
#include <vector>

namespace test {

/// addDoubleLinear: the sum of its inputs.
inline host::Expected<host::Value> computeSum(host::ComputeContext& context)
{
    return host::Value(context.number(0, 0) + context.number(1, 0));
}

/// multDoubleLinear: what it would be at the time; every tick counts one.
inline host::Expected<host::Value> computeTime(host::ComputeContext& context)
{
    return host::Value(static_cast<double>(context.time()));
}

/// reverse: refuses.
inline host::Expected<host::Value> computeNothing(host::ComputeContext&)
{
    return host::Error{host::ErrorCode::Failure, "refused", {}};
}

/// transform: its translation alone; and for joints, to tell the two apart, one more.
inline host::Expected<host::Value> computeShift(host::ComputeContext& context)
{
    return host::Value(context.number(0, 0));
}
inline host::Expected<host::Value> computeJointShift(host::ComputeContext& context)
{
    return host::Value(context.number(0, 0) + 1);
}

/// dagNode: how far down its path the node lies, in the translation along x.
inline host::Expected<host::Value> computeDepth(host::ComputeContext& context)
{
    host::Matrix4 matrix = context.parentWorldMatrix();
    matrix.m[3][0] += 1;
    return host::Value::of(matrix);
}

/// polySoftEdge: what comes in, with one vertex more.
inline host::Expected<host::Value> computeGrowth(host::ComputeContext& context)
{
    const auto given = context.input(0).data<host::geometry::MeshData>();
    if (given == nullptr) {
        return host::Value();
    }
    host::geometry::MeshData mesh = *given;
    auto topology = std::make_shared<host::geometry::MeshTopology>(*given->topology);
    auto points = std::make_shared<std::vector<host::Vec3f>>(*given->points);
    points->emplace_back();
    ++topology->vertexCount;
    mesh.topology = std::move(topology);
    mesh.points = std::move(points);
    return host::Value::of(mesh);
}

inline constexpr std::array<std::string_view, 2> kSumInputs{"input1", "input2"};
inline constexpr std::array<std::string_view, 1> kOutputNames{"output"};
inline constexpr std::array<std::string_view, 1> kReverseOutputs{"outputX"};
inline constexpr std::array<std::string_view, 1> kShiftInputs{"translateX"};
inline constexpr std::array<std::string_view, 1> kShiftOutputs{"rotatePivotX"};
inline constexpr std::array<std::string_view, 1> kDepthOutputs{"worldMatrix"};
inline constexpr std::array<std::string_view, 1> kMeshInputs{"inputPolymesh"};

inline const host::NodeCompute kToySum{"addDoubleLinear", kSumInputs, kOutputNames, computeSum};
inline const host::NodeCompute kToyTime{"multDoubleLinear", {}, kOutputNames, computeTime};
inline const host::NodeCompute kToyRefusal{"reverse", {}, kReverseOutputs, computeNothing};
inline const host::NodeCompute kToyShift{"transform", kShiftInputs, kShiftOutputs, computeShift};
inline const host::NodeCompute kToyJoint{"joint", kShiftInputs, kShiftOutputs, computeJointShift};
inline const host::NodeCompute kToyDepth{"dagNode", {}, kDepthOutputs, computeDepth};
inline const host::NodeCompute kToyGrowth{"polySoftEdge", kMeshInputs, kOutputNames, computeGrowth};

inline const std::array<const host::NodeCompute*, 7> kToyNodes{
    &kToyGrowth, &kToyDepth, &kToyJoint, &kToyRefusal, &kToyShift, &kToySum, &kToyTime};

} // namespace test
