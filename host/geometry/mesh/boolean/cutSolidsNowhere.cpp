// For programs without the library: nothing is ever cut.
#include "host/geometry/mesh/boolean/cutSolids.h"

namespace host::geometry {

bool canCutSolids()
{
    return false;
}

std::optional<Solid> cutSolids(const Solid&, const Solid&, BooleanOperation, std::size_t&)
{
    return std::nullopt;
}

} // namespace host::geometry
