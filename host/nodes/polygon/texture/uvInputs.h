// What operations on texture coordinates have in common: the set that they work on.
#pragma once

#include "host/nodes/polygon/meshInputs.h"

#include "host/geometry/mesh/texture/UvEditor.h"

#include <string>

namespace host::nodes {

/// A text as an input; empty where there is none.
inline std::string textInput(ComputeContext& context, std::size_t position)
{
    const auto text = context.input(position).data<std::string>();
    return text != nullptr ? *text : std::string();
}

/// The result of an operation that is called with the mesh and the set of the name; passed on, as
/// an approximation, where the mesh does not have it, or the operation does not find what it names.
template<class Operation>
Value computeOnUvSet(ComputeContext& context, const MeshTask& task, const std::string& name,
                     const Operation& operation)
{
    const auto set = geometry::findUvSet(*task.mesh, name);
    return meshResult(context, task, set ? operation(*task.mesh, *set) : SharedMesh(),
                      Lack::Components);
}

/// The result of an operation on the faces that a node names, called with them once all inputs are
/// there; passed on where it names none, and as an approximation where the mesh does not have them.
template<class Operation>
Expected<Value> computeOnFaces(ComputeContext& context, const MeshTask& task,
                               const Operation& operation)
{
    if (!context.isComplete() || task.isIdle()) {
        return task.passed();
    }
    const auto faces =
        namedComponents(task, geometry::kFaceComponents, task.mesh->topology->faceCount());
    if (!faces) {
        return meshResult(context, task, nullptr, Lack::Components);
    }
    return faces->empty() ? task.passed() : operation(*faces);
}

/// The ids that a node names, as "map[...]" or as those that the corners of faces have. None where
/// it names what the mesh does not have, or other kinds.
inline std::optional<std::vector<std::uint32_t>> namedUvs(const MeshTask& task, std::size_t set)
{
    const geometry::MeshData& mesh = *task.mesh;
    const auto ids =
        namedComponents(task, geometry::kUvComponents, geometry::uvCount(mesh.uvSets[set]));
    if (ids) {
        return ids;
    }
    const auto faces = namedComponents(task, geometry::kFaceComponents, mesh.topology->faceCount());
    return faces ? std::optional(geometry::UvEditor(mesh, set).idsOfFaces(*faces)) : std::nullopt;
}

} // namespace host::nodes
