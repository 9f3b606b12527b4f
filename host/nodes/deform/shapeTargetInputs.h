// The targets of a blend of shapes as its node stores them, made ready as they are needed.
#pragma once

#include "host/geometry/deform/shapeTargets.h"
#include "host/types/ComputeContext.h"

#include <array>
#include <cstdint>
#include <map>
#include <span>

namespace host::nodes {

/// Stored offsets of items, by geometry, target and item; made once, kept by the node.
class StoredTargets {
public:
    using Place = std::array<std::int32_t, 3>;

    /// The node's own.
    static std::shared_ptr<StoredTargets> of(ComputeContext& context);

    /// The offsets of an item, from the lists at two inputs: offsets, and the texts of their
    /// points. `brackets` as `pointBrackets` gives them.
    const geometry::PointDeltas& deltas(ComputeContext& context, std::size_t offsets,
                                        std::size_t components, const Place& place,
                                        std::span<const std::uint32_t> brackets);

private:
    std::map<Place, geometry::PointDeltas> m_items;
};

} // namespace host::nodes
