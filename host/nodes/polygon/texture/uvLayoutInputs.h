// How nodes say in which way pieces of texture coordinates are laid out.
#pragma once

#include "host/types/ComputeContext.h"

#include "host/geometry/mesh/texture/layOutUvs.h"

namespace host::nodes {

/// The arrangement, the fit and the space in percent, from inputs of numbers.
inline geometry::UvLayout readLayout(ComputeContext& context, std::size_t arrangement,
                                     std::size_t fit, std::size_t space)
{
    constexpr double kPercent = 0.01;
    const double arrangementKind = context.number(arrangement, 2);
    const double fitKind = context.number(fit, 1);
    geometry::UvLayout layout;
    layout.arrangement = arrangementKind == 0   ? geometry::UvArrangement::None
                         : arrangementKind == 1 ? geometry::UvArrangement::AlongU
                                                : geometry::UvArrangement::Square;
    layout.fit = fitKind == 0   ? geometry::UvFit::None
                 : fitKind == 2 ? geometry::UvFit::Stretched
                                : geometry::UvFit::Uniform;
    layout.space = context.number(space, 0) * kPercent;
    return layout;
}

} // namespace host::nodes
