#include "host/nodes/deform/shapeTargetInputs.h"

#include "host/geometry/deform/componentOrder.h"

namespace host::nodes {
namespace {

using PointArray = std::vector<std::array<double, 4>>;

geometry::PointDeltas readDeltas(const Shared<PointArray>& offsets,
                                 const Shared<ComponentList>& components,
                                 std::span<const std::uint32_t> brackets)
{
    geometry::PointDeltas deltas;
    if (offsets == nullptr || components == nullptr) {
        return deltas;
    }
    deltas.points = geometry::namedPoints(components->components, brackets, offsets->size());
    deltas.offsets.reserve(deltas.points.size());
    for (std::size_t i = 0; i < deltas.points.size(); ++i) {
        const auto& [x, y, z, w] = (*offsets)[i];
        deltas.offsets.push_back({x, y, z});
    }
    return deltas;
}

} // namespace

std::shared_ptr<StoredTargets> StoredTargets::of(ComputeContext& context)
{
    std::shared_ptr<const void>& kept = context.kept();
    if (kept == nullptr) {
        kept = std::make_shared<StoredTargets>();
    }
    return std::static_pointer_cast<StoredTargets>(std::const_pointer_cast<void>(kept));
}

const geometry::PointDeltas& StoredTargets::deltas(ComputeContext& context, std::size_t offsets,
                                                   std::size_t components, const Place& place,
                                                   std::span<const std::uint32_t> brackets)
{
    const auto [entry, isNew] = m_items.try_emplace(place);
    if (isNew) {
        entry->second =
            readDeltas(context.element(offsets, place).data<PointArray>(),
                       context.element(components, place).data<ComponentList>(), brackets);
    }
    return entry->second;
}

} // namespace host::nodes
