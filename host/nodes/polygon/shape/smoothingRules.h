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

/// What decides over borders, by the names of the attributes.
struct BorderSettings {
    bool isOsd = false; ///< smoothed by the method that has rules of its own
    bool usesOsdBoundaryMethods = true;
    std::int32_t osdVertBoundary = 1;
    bool keepBorder = false;
    std::int32_t boundaryRule = 1;
};

/// The method with rules of its own goes by them unless it is told to take those of the other.
constexpr geometry::BorderRule borderRule(const BorderSettings& settings)
{
    return settings.isOsd && settings.usesOsdBoundaryMethods ? borderRule(settings.osdVertBoundary)
           : settings.keepBorder                             ? geometry::BorderRule::Fixed
                                                             : borderRule(settings.boundaryRule);
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
