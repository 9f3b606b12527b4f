// groupParts: puts the faces or vertices of a group, under the group's number, on the mesh that
// passes.
#include "host/nodes/nodeTypes.h"

#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/mesh/componentList.h"

#include <algorithm>
#include <array>

namespace host::nodes {
namespace {

using geometry::FaceGroup;
using geometry::MeshData;
using geometry::PointGroup;
using Faces = std::vector<std::uint32_t>;
using Points = std::vector<std::uint32_t>;

constexpr std::array<std::string_view, 4> kInputs{"inputGeometry", "inputComponents", "groupId",
                                                  "inputRemoveComponent"};
constexpr std::array<std::string_view, 1> kOutputs{"outputGeometry"};

bool names(const ComponentList& list, std::string_view kind)
{
    return std::any_of(list.components.begin(), list.components.end(),
                       [kind](const std::string& text) { return text.starts_with(kind); });
}

Faces facesOf(const Shared<ComponentList>& list, std::uint32_t faceCount)
{
    return list != nullptr ? geometry::parseFaceList(list->components, faceCount) : Faces();
}

std::vector<std::uint32_t> without(const std::vector<std::uint32_t>& all,
                                   const std::vector<std::uint32_t>& gone)
{
    std::vector<std::uint32_t> rest;
    std::set_difference(all.begin(), all.end(), gone.begin(), gone.end(), std::back_inserter(rest));
    return rest;
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

Points pointsOf(const Shared<ComponentList>& list, std::uint32_t pointCount)
{
    return list != nullptr ? geometry::parseComponentList(list->components,
                                                          geometry::kVertexComponents, pointCount)
                           : Points();
}

/// The mesh with a group of vertices, which deformers go by; as it is where the group is the whole.
Shared<MeshData> withPointGroup(const Shared<MeshData>& mesh, std::int32_t id, Points points)
{
    const auto isSame = [id](const PointGroup& group) { return group.id == id; };
    const bool isWhole = points.size() == mesh->topology->vertexCount;
    if (isWhole && std::none_of(mesh->pointGroups.begin(), mesh->pointGroups.end(), isSame)) {
        return mesh;
    }
    auto result = std::make_shared<MeshData>(*mesh);
    std::erase_if(result->pointGroups, isSame);
    if (!isWhole) {
        result->pointGroups.push_back({id, std::make_shared<const Points>(std::move(points))});
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
    if (!context.isComplete() || mesh == nullptr || added == nullptr ||
        !(id >= 0 && id < 2147483648.0)) {
        return input;
    }
    const auto number = static_cast<std::int32_t>(id);
    if (names(*added, "f[")) {
        const std::uint32_t count = mesh->topology->faceCount();
        return Value(
            withGroup(*mesh, number, without(facesOf(added, count), facesOf(removed, count))));
    }
    if (names(*added, "vtx[") || added->components.empty()) {
        const std::uint32_t count = mesh->topology->vertexCount;
        return Value(withPointGroup(mesh, number,
                                    without(pointsOf(added, count), pointsOf(removed, count))));
    }
    return input;
}

} // namespace

constinit const NodeCompute kGroupParts{
    .type = "groupParts", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
