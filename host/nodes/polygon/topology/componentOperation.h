// Operations whose only inputs are a mesh and the components of one kind.
#pragma once

#include "host/nodes/polygon/meshInputs.h"

#include <span>

namespace host::nodes {

/// How many components of a kind a mesh has.
inline std::size_t componentCount(const geometry::MeshData& mesh, std::string_view kind)
{
    return kind == geometry::kFaceComponents   ? mesh.topology->faceCount()
           : kind == geometry::kEdgeComponents ? mesh.topology->edges.size()
                                               : mesh.topology->vertexCount;
}

/// The components that a node names, of a mesh that is there.
inline std::optional<std::vector<std::uint32_t>> namedComponents(const MeshTask& task,
                                                                 std::string_view kind)
{
    return namedComponents(task, kind, componentCount(*task.mesh, kind));
}

/// Says inside an operation that settings are not supported: one that is not carried out lacks
/// nothing.
inline void noteUnless(ComputeContext& context, bool isSupported)
{
    if (!isSupported) {
        context.noteLack(Lack::Setting);
    }
}

/// The mesh after an operation, which is called with the mesh and the named components. What comes
/// in where there is nothing to do, and, told as an approximation, where it cannot be done.
template<class Operation>
Expected<Value> computeOn(ComputeContext& context, std::string_view kind,
                          const Operation& operation)
{
    const MeshTask task = takeMeshTask(context);
    if (!context.isComplete() || task.isIdle()) {
        return task.passed();
    }
    const auto components = namedComponents(task, kind);
    if (!components) {
        return meshResult(context, task, nullptr, Lack::Components);
    }
    return components->empty() ? task.passed()
                               : meshResult(context, task, operation(*task.mesh, *components));
}

} // namespace host::nodes
