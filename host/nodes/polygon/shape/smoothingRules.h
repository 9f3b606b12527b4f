// Attributes that smoothing nodes and shapes have in common, as rules.
#pragma once

#include "host/geometry/mesh/shape/SubdivisionLevel.h"

#include <cstdint>

namespace host::nodes {

/// Numbers of the attributes boundaryRule, osdVertBoundary, keepMapBorders and osdFvarBoundary;
/// those of the two methods mean the same.
constexpr geometry::BorderRule borderRule(std::int32_t number)
{
    constexpr std::int32_t kEdges = 2;
    return number == kEdges ? geometry::BorderRule::Edges : geometry::BorderRule::EdgesAndCorners;
}

/// keepMapBorders: everything moves (0), what is inside (1), nothing (2).
constexpr geometry::UvRule uvRuleOfMapBorders(std::int32_t number)
{
    return number == 0   ? geometry::UvRule::Edges
           : number == 1 ? geometry::UvRule::FixedBorders
                         : geometry::UvRule::Linear;
}

/// osdFvarBoundary: nothing moves (0), borders move as well (1, 2), only what is inside (3).
constexpr geometry::UvRule uvRuleOfFvarBoundary(std::int32_t number)
{
    return number == 0                  ? geometry::UvRule::Linear
           : number == 1 || number == 2 ? geometry::UvRule::Edges
                                        : geometry::UvRule::FixedBorders;
}

} // namespace host::nodes
