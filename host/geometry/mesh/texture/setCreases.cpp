#include "host/geometry/mesh/texture/setCreases.h"

namespace host::geometry {
namespace {

/// Merges ascending lists; the new ones win.
void change(std::vector<std::uint32_t>& parts, std::vector<float>& values,
            std::span<const Crease> changes, std::size_t partCount)
{
    std::vector<std::uint32_t> mergedParts;
    std::vector<float> mergedValues;
    const auto add = [&](std::uint32_t part, float value) {
        if (part < partCount && value > 0) {
            mergedParts.push_back(part);
            mergedValues.push_back(value);
        }
    };
    std::size_t old = 0;
    for (const Crease& crease : changes) {
        for (; old < parts.size() && parts[old] <= crease.part; ++old) {
            add(parts[old], parts[old] < crease.part ? values[old] : 0);
        }
        add(crease.part, crease.value);
    }
    for (; old < parts.size(); ++old) {
        add(parts[old], values[old]);
    }
    parts = std::move(mergedParts);
    values = std::move(mergedValues);
}

} // namespace

std::shared_ptr<const MeshData> setCreases(const MeshData& mesh, std::span<const Crease> edges,
                                           std::span<const Crease> vertices)
{
    MeshCreases creases = mesh.creases != nullptr ? *mesh.creases : MeshCreases{};
    change(creases.edges, creases.edgeValues, edges, mesh.topology->edges.size());
    change(creases.vertices, creases.vertexValues, vertices, mesh.topology->vertexCount);
    auto result = std::make_shared<MeshData>(mesh);
    result->creases = std::make_shared<const MeshCreases>(std::move(creases));
    return result;
}

} // namespace host::geometry
