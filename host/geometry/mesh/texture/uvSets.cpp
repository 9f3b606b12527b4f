#include "host/geometry/mesh/texture/uvSets.h"

#include "host/geometry/mesh/texture/UvEditor.h"

#include <algorithm>
#include <optional>

namespace host::geometry {
namespace {

bool bearsName(const UvSet& set, std::string_view name)
{
    return set.name == name;
}

UvSet& setNamed(MeshData& mesh, std::string_view name)
{
    const auto found = std::find_if(mesh.uvSets.begin(), mesh.uvSets.end(),
                                    [name](const UvSet& set) { return bearsName(set, name); });
    return found != mesh.uvSets.end()
               ? *found
               : mesh.uvSets.emplace_back(UvSet{std::string(name), nullptr, nullptr});
}

} // namespace

std::shared_ptr<const MeshData> withUvSet(const MeshData& mesh, std::string_view name)
{
    auto result = std::make_shared<MeshData>(mesh);
    setNamed(*result, name);
    return result;
}

std::shared_ptr<const MeshData> withoutUvSet(const MeshData& mesh, std::size_t set)
{
    auto result = std::make_shared<MeshData>(mesh);
    const bool wasCurrent = result->currentUvSet == mesh.uvSets[set].name;
    result->uvSets.erase(result->uvSets.begin() + static_cast<std::ptrdiff_t>(set));
    if (wasCurrent) {
        result->currentUvSet = result->uvSets.empty() ? std::string() : result->uvSets[0].name;
    }
    return result;
}

std::shared_ptr<const MeshData> withCopiedUvSet(const MeshData& mesh, std::size_t set,
                                                std::string_view name)
{
    auto result = std::make_shared<MeshData>(mesh);
    UvSet& target = setNamed(*result, name);
    target.points = mesh.uvSets[set].points;
    target.corners = mesh.uvSets[set].corners;
    return result;
}

std::shared_ptr<const MeshData> withCopiedUvs(const MeshData& mesh, std::size_t set,
                                              std::string_view name,
                                              std::span<const std::uint32_t> faces)
{
    const UvSet& source = mesh.uvSets[set];
    UvEditor editor(mesh, findUvSet(mesh, name).value_or(mesh.uvSets.size()), name);
    const bool hasIds = source.corners != nullptr && !source.corners->empty();
    std::vector<std::int32_t> numbers(uvCount(source), -1);
    for (const std::uint32_t face : faces) {
        const std::uint32_t end = mesh.topology->endCorner(face);
        for (std::uint32_t corner = mesh.topology->firstCorner(face); corner < end; ++corner) {
            const std::int32_t id = hasIds ? (*source.corners)[corner] : -1;
            if (id >= 0 && numbers[static_cast<std::size_t>(id)] < 0) {
                numbers[static_cast<std::size_t>(id)] =
                    editor.add((*source.points)[static_cast<std::size_t>(id)]);
            }
            editor.corners()[corner] = id >= 0 ? numbers[static_cast<std::size_t>(id)] : -1;
        }
    }
    editor.removeUnused();
    return editor.finish();
}

} // namespace host::geometry
