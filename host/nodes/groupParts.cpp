// groupParts: puts the faces of a group, under the group's number, on the mesh that passes.
#include "host/nodes/nodeTypes.h"

#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/mesh/componentList.h"

#include <algorithm>
#include <array>

namespace host::nodes {
namespace {

using geometry::FaceGroup;
using geometry::MeshData;
using Faces = std::vector<std::uint32_t>;

constexpr std::array<std::string_view, 4> kInputs{"inputGeometry", "inputComponents", "groupId",
                                                  "inputRemoveComponent"};
constexpr std::array<std::string_view, 1> kOutputs{"outputGeometry"};

/// True when the list names faces; groups of vertices are the deformers' and nothing here.
bool namesFaces(const ComponentList& list)
{
    return std::any_of(list.components.begin(), list.components.end(),
                       [](const std::string& text) { return text.starts_with("f["); });
}

Faces facesOf(const Shared<ComponentList>& list, std::uint32_t faceCount)
{
    return list != nullptr ? geometry::parseFaceList(list->components, faceCount) : Faces();
}

Shared<MeshData> withGroup(const MeshData& mesh, std::int32_t id, Faces faces)
{
    auto result = std::make_shared<MeshData>(mesh);
    const auto same = std::find_if(result->groups.begin(), result->groups.end(),
                                   [id](const FaceGroup& group) { return group.id == id; });
    if (same == result->groups.end()) {
        result->groups.push_back({id, std::make_shared<const Faces>(std::move(faces))});
    } else {
        same->faces = std::make_shared<const Faces>(std::move(faces));
    }
    return result;
}

Expected<Value> compute(ComputeContext& context)
{
    const Value input = context.input(0);
    const auto added = context.input(1).data<ComponentList>();
    const double id = context.number(2, -1);
    const auto removed = context.input(3).data<ComponentList>();
    const auto mesh = input.data<MeshData>();
    if (!context.isComplete() || mesh == nullptr || added == nullptr || !namesFaces(*added) ||
        !(id >= 0 && id < 2147483648.0)) {
        return input;
    }
    const std::uint32_t faceCount = mesh->topology->faceCount();
    Faces faces;
    const Faces all = facesOf(added, faceCount);
    const Faces gone = facesOf(removed, faceCount);
    std::set_difference(all.begin(), all.end(), gone.begin(), gone.end(),
                        std::back_inserter(faces));
    return Value(withGroup(*mesh, static_cast<std::int32_t>(id), std::move(faces)));
}

} // namespace

constinit const NodeCompute kGroupParts{
    .type = "groupParts", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
