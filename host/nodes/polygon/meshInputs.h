// What operations on meshes have in common: the mesh that comes in, the components that the node
// names, and what is done when they do not fit.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/mesh/componentList.h"
#include "host/nodes/matrixValue.h"
#include "host/nodes/numberInputs.h"
#include "host/types/ComputeContext.h"

#include <array>
#include <optional>
#include <string_view>
#include <vector>

namespace host::nodes {

using SharedMesh = Shared<geometry::MeshData>;

/// The first inputs of every row of an operation, in this order.
enum MeshInput : std::size_t {
    kInputPolymesh,   ///< "inputPolymesh"
    kInputComponents, ///< "inputComponents"
    kNodeState,       ///< "nodeState"
    kFirstOwnInput
};

/// Inputs of a row: those that all operations have, then its own.
template<class... Names>
constexpr std::array<std::string_view, kFirstOwnInput + sizeof...(Names)>
meshInputs(const Names&... names)
{
    return {"inputPolymesh", "inputComponents", "nodeState", std::string_view(names)...};
}

struct MeshTask {
    SharedMesh mesh;                  ///< null: nothing comes in
    Shared<ComponentList> components; ///< null: none are named
    bool hasNoEffect = false;         ///< the node is switched off

    bool isIdle() const { return mesh == nullptr || hasNoEffect; }
    /// What comes in, as it is.
    Value passed() const { return mesh != nullptr ? Value(mesh) : Value(); }
};

/// The common inputs. Ask for the node's own ones as well before any work: see
/// `ComputeContext::isComplete`.
inline MeshTask takeMeshTask(ComputeContext& context)
{
    constexpr double kHasNoEffect = 1;
    MeshTask task;
    task.mesh = context.input(kInputPolymesh).data<geometry::MeshData>();
    task.components = context.input(kInputComponents).data<ComponentList>();
    task.hasNoEffect = context.number(kNodeState, 0) == kHasNoEffect;
    return task;
}

/// The components of one kind that the node names (`geometry::kFaceComponents`, ...), ascending.
/// None where it names what the mesh does not have, or other kinds: the operation cannot be carried
/// out, and its input is to be passed on as an approximation.
inline std::optional<std::vector<std::uint32_t>>
namedComponents(const MeshTask& task, std::string_view kind, std::size_t count)
{
    if (task.components == nullptr) {
        return std::vector<std::uint32_t>();
    }
    const auto& texts = task.components->components;
    const auto size = static_cast<std::uint32_t>(count);
    if (!geometry::doComponentsExist(texts, kind, size)) {
        return std::nullopt;
    }
    return geometry::parseComponentList(texts, kind, size);
}

/// The result of an operation; where there is none the input as it is, told as an approximation for
/// the reason given.
inline Value meshResult(ComputeContext& context, const MeshTask& task, SharedMesh result,
                        Lack lack = Lack::Input)
{
    if (result == nullptr) {
        context.noteLack(lack);
        return task.passed();
    }
    return Value(std::move(result));
}

} // namespace host::nodes
